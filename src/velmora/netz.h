#pragma once

#include "velmora/anschluss.h"
#include "velmora/verbindung.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QTcpServer>

namespace Velmora {

class Suche;

struct Einstellungen
{
    Zeiten zeiten;
    quint16 udpPort = standardUdpPort;
};

// The protocol's values, unless VELMORA_PING_MS, VELMORA_TIMEOUT_MS,
// VELMORA_HELLO_MS or VELMORA_UDP_PORT say otherwise; tests shorten the
// waits and keep networks apart with them.
Einstellungen einstellungenAusUmgebung();

// This machine's address on the LAN: the first IPv4 address of the first
// interface that is up, running, can broadcast and is not loopback;
// 127.0.0.1 without one.
QString lanAdresse();

// The mesh as one participant sees it: at most one established link per
// other participant, whether it was found by beacon or by a neighbour's list.
class Netz : public Anschluss
{
    Q_OBJECT

public:
    Netz(const QString &programm, const Einstellungen &einstellungen, QObject *parent);

    QString eigeneId() const override;
    QStringList teilnehmer() const override;
    QString eigeneAdresse() const override { return m_eigeneAdresse; }
    QString lokaleAdresse(const QString &id) const override;
    void senden(const QString &text) override;
    void schluesselSetzen(const QByteArray &schluessel) override { m_schluessel = schluessel; }
    int anzahlAbgewiesen() const override { return m_abgewiesen; }

private:
    void annehmen();
    void verdrahten(Verbindung *verbindung);
    bool bekannt(quint64 instanz, quint32 adresse, quint16 port) const;
    void verbinden(quint32 adresse, quint16 port, quint64 instanz);
    void halloErhalten(Verbindung *verbindung);
    void gesiegeltErhalten(Verbindung *von, const Gesiegelt &post);
    void abweisen(const QString &id);
    void aufnehmen(Verbindung *verbindung);
    void beendet(Verbindung *verbindung);
    void nachbarnVerteilen();
    void nachbarnAnrufen();
    void adresseLesen();

    Einstellungen m_einstellungen;
    Kennung m_eigene;
    QString m_eigeneAdresse;
    QTcpServer m_server;
    QHash<quint64, Verbindung *> m_stehend;
    QHash<quint64, Verbindung *> m_ausgehend;
    QSet<Verbindung *> m_eingehend;
    QByteArray m_schluessel;
    quint64 m_zaehler = 0;
    // The highest counter accepted from each sender this run, kept when it
    // leaves, so a recording of it cannot be played back on its return.
    QHash<QString, quint64> m_zuletzt;
    int m_abgewiesen = 0;
};

} // namespace Velmora
