#pragma once

// The LAN endpoint every table instance joins the club network with. All
// messages are broadcast to every other participant; addressing happens
// inside the message text. Participant ids have the form
// "name@<IPv4>:<port>" (docs/lan-protocol.md). Everything happens on the
// thread that owns the client; do not delete it from its own signals.

#include <QObject>
#include <QString>
#include <QStringList>

#include <tuple>

namespace Velmora {
class Netz;
}

class Client : public QObject
{
    Q_OBJECT

public:
    explicit Client(const QString &programName, QObject *parent = nullptr);

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

private:
    QString m_programName;
    Velmora::Netz *m_netz;
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
