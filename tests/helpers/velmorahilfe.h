#pragma once

// For the LAN tests: a client with its signals recorded, and environment
// variables set for the clients made meanwhile.

#include "velmora/client.h"

#include <QSignalSpy>
#include <QTcpSocket>

// Sets an environment variable for the clients and processes made while it lives.
class Umgebung
{
public:
    Umgebung(const char *name, const QByteArray &wert) : m_name(name), m_alt(qgetenv(name))
    {
        qputenv(name, wert);
    }
    ~Umgebung() { qputenv(m_name, m_alt); }

private:
    const char *m_name;
    QByteArray m_alt;
};

struct Teilnehmer
{
    explicit Teilnehmer(const QString &name)
        : client(name), neu(&client, &Client::newParticipant),
          weg(&client, &Client::participantLeft), post(&client, &Client::newMessage)
    {
    }
    QString id() const { return client.participantId(); }
    quint16 port() const { return quint16(id().section(u':', -1).toUInt()); }
    static QStringList ids(const QSignalSpy &spy)
    {
        QStringList liste;
        for (const QList<QVariant> &signal : spy)
            liste.append(signal.at(0).toString());
        return liste;
    }
    int verbundeneSockets() const
    {
        int anzahl = 0;
        for (const QTcpSocket *socket : client.findChildren<QTcpSocket *>())
            anzahl += socket->state() == QAbstractSocket::ConnectedState;
        return anzahl;
    }

    Client client;
    QSignalSpy neu;
    QSignalSpy weg;
    QSignalSpy post;
};
