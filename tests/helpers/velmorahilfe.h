#pragma once

// For the LAN tests: short waits for the clients, a client with its signals
// recorded, environment variables set for the clients made meanwhile, and
// the bytes of the case tables.

#include "velmora/client.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QtTest>

// How long a test waits for what the network brings, and how long a client
// waits for a silent peer (kurzeFristen()).
constexpr int lange = 20000;
constexpr int stilleMs = 1500;
#define WARTEN(bedingung) QTRY_VERIFY_WITH_TIMEOUT(bedingung, lange)
#define WARTEN_AUF(ist, soll) QTRY_COMPARE_WITH_TIMEOUT(ist, soll, lange)

// Pings, the silence that ends a link and the wait for a hello, short
// enough that a test sees a peer go.
inline void kurzeFristen()
{
    qputenv("VELMORA_PING_MS", "250");
    qputenv("VELMORA_TIMEOUT_MS", QByteArray::number(stilleMs));
    qputenv("VELMORA_HELLO_MS", "1000");
}

// Bytes in the case tables, written in hex as text so that \(..\){N} may repeat them.
inline QByteArray hex(const QString &text)
{
    return QByteArray::fromHex(text.toLatin1());
}

// Sets an environment variable for the clients and processes made while it lives.
struct Umgebung
{
    Umgebung(const char *name, const QByteArray &wert) : name(name), alt(qgetenv(name))
    {
        qputenv(name, wert);
    }
    ~Umgebung() { qputenv(name, alt); }

    const char *const name;
    const QByteArray alt;
};

// One line per signal, its arguments joined by blanks: "id" or "id text".
inline QStringList zeilen(const QSignalSpy &spy)
{
    QStringList liste;
    for (const QList<QVariant> &signal : spy)
        liste.append(QVariant(signal).toStringList().join(u' '));
    return liste;
}

struct Teilnehmer
{
    explicit Teilnehmer(const QString &name)
        : client(name), neu(&client, &Client::newParticipant),
          weg(&client, &Client::participantLeft), post(&client, &Client::newMessage)
    {
    }
    QString id() const { return client.participantId(); }
    quint16 port() const { return quint16(id().section(u':', -1).toUInt()); }
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

// A program in a process of its own (velmora-cli unless named) and what it
// printed, line by line.
struct Prozess : QProcess
{
    explicit Prozess(const QStringList &argumente, const QString &programm = VELMORA_CLI)
    {
        connect(this, &QProcess::readyReadStandardOutput, [this] {
            while (canReadLine())
                zeilen.append(QString::fromUtf8(readLine()).chopped(1));
        });
        setProcessChannelMode(QProcess::ForwardedErrorChannel);
        start(programm, argumente);
    }
    ~Prozess() override { beenden(); }
    void beenden()
    {
        kill();
        waitForFinished();
    }
    void sagen(const QString &zeile) { write((zeile + '\n').toUtf8()); }

    QStringList zeilen;
};
