#pragma once

// The endpoint every table instance joins the others with: the serverless
// mesh on a club's LAN, or a venue's broker. All messages reach every other
// participant; addressing happens inside the message text. Participant ids
// have the form "name@<IPv4>:<port>" on the LAN and
// "name@<IPv4>:<identity>" at a venue (docs/lan-protocol.md). Everything
// happens on the thread that owns the client; do not delete it from its own
// signals.

#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>
#include <tuple>

namespace Velmora {
class Anschluss;
}

// How the client reaches the others. Kept in the library's own
// configuration file (velmora.ini in the user's configuration folder under
// "Ormindo"), so every program of the event on one machine shares it.
struct LinkSettings
{
    enum class Mode
    {
        Lan,
        Venue
    };
    Mode mode = Mode::Lan;
    // The broker as "host" or "host:port"; 8883 when no port is given.
    QString broker;
    // The identity the venue's key belongs to: tabulor, tisch01, ...
    QString identity;
    // The pre-shared key's bytes.
    QByteArray key;

    static LinkSettings load();
    // False when the file could not be written; nothing changed then.
    bool save() const;
    // Host and port of `broker`; nothing when it names no usable broker.
    std::optional<std::pair<QString, quint16>> brokerAddress() const;
    // Whether a venue link can be made of these: a broker, an identity of
    // letters, digits, '-' and '_', and a key of at least 8 bytes.
    bool venueComplete() const;
    // An identity the broker's files can hold: 1 to 64 letters, digits, '-', '_'.
    static bool identityValid(const QString &identity);
    // A key as printed on a slip or kept in a psk file: hex digits, blanks
    // and dashes between them allowed; nothing for anything else.
    static std::optional<QByteArray> keyFromText(const QString &text);
    bool operator==(const LinkSettings &other) const;
};

class Client : public QObject
{
    Q_OBJECT

public:
    // With the link the configuration file names.
    explicit Client(const QString &programName, QObject *parent = nullptr);
    Client(const QString &programName, const LinkSettings &settings, QObject *parent = nullptr);
    ~Client() override;

    LinkSettings linkSettings() const { return m_settings; }
    // Takes the other link: everyone known leaves, the new link finds its own.
    // Incomplete venue settings leave the client on the LAN.
    void setLinkSettings(const LinkSettings &settings);
    LinkSettings::Mode linkMode() const;
    // Whether the broker is reached; always true on the LAN.
    bool linkOpen() const;

    QString programName() const { return m_programName; }
    // This participant's id as others on the LAN most likely see it: the
    // program name, ownAddress() and the listening port.
    QString participantId() const;
    // Ids of the participants connected right now.
    QStringList participants() const;

    // The IPv4 address this participant goes by until a connection says
    // otherwise: the first address of the first interface that is up,
    // running, can broadcast and is not loopback, the interface the beacons
    // go out on; 127.0.0.1 without one. Read again every beacon round;
    // ownAddressChanged() tells when it moved.
    QString ownAddress() const;
    // The local end of the established connection to that participant, the
    // address it sees this one at; empty when there is no such connection.
    QString localAddress(const QString &participantId) const;

    // Delivers the text to every other participant; up to 8 MiB of UTF-8.
    void sendMessage(const QString &message);

    // The event key. When it is not empty, every message sent carries a tag
    // made with it, and a message that arrives without a valid tag, or with a
    // counter its sender already used, is dropped and counted
    // (docs/lan-protocol.md, "Event key"). Empty, the default: nothing is
    // tagged and a tag that arrives is not checked.
    void setKey(const QByteArray &key);
    // Messages dropped for want of a valid tag since the client was made.
    int rejectedMessages() const;

signals:
    void newParticipant(const QString &participantId);
    void newMessage(const QString &participantId, const QString &message);
    void participantLeft(const QString &participantId);
    void ownAddressChanged(const QString &address);
    // A message from that participant was dropped for want of a valid tag.
    void messageRejected(const QString &participantId);
    // The broker came or went; `reason` says why it cannot be reached.
    void linkStateChanged(bool open, const QString &reason);
    // The broker refused a message this client sent, for `reason`.
    void sendRefused(const QString &reason);

private:
    void anschliessen();

    QString m_programName;
    LinkSettings m_settings;
    QByteArray m_key;
    Velmora::Anschluss *m_anschluss = nullptr;
    bool m_offen = true;
};

namespace Kartulo {

// One game row without its row number, in table column order: Spiel, Mit,
// Ohne, Hand, Schneider, AngSchneider, Schwarz, AngSchwarz, Offen, Gewonnen,
// Verloren, Spieler1..Spieler4, Eingepasst, Reizung.
using SpielTupel = std::tuple<int, int, int, bool, bool, bool, bool, bool, bool, int, int, int, int,
                              int, int, bool, int>;

// The seventeen payload items of a row message: decimal texts in the same
// order, flags as "1"/"0", so every receiver reads each with toInt().
QStringList mapFromSpiel(const SpielTupel &spiel);

} // namespace Kartulo
