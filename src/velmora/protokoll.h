#pragma once

// The wire format of the LAN link (docs/lan-protocol.md): beacon and hello,
// frames, peer lists. Bytes in, values out, so every rule can be checked
// without a socket.

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

namespace Velmora {

constexpr quint16 standardUdpPort = 29871;
constexpr char multicastGruppe[] = "239.255.77.29";
constexpr quint16 protokollVersion = 1;
constexpr char magie[] = "VELM";

constexpr int laengenfeld = 4;
constexpr int hoechsteNachricht = 8 * 1024 * 1024;
constexpr int hoechsterName = 255;
constexpr int hoechsteNachbarn = 1024;
constexpr int nachbarGroesse = 14;
constexpr int zaehlerGroesse = 8;
constexpr int siegelGroesse = 32;

enum class Art : quint8
{
    Hallo = 1,
    Nachricht = 2,
    Ping = 3,
    Pong = 4,
    Nachbarn = 5,
    Gesiegelt = 6
};

// Who a beacon or a hello speaks for; both carry the same bytes.
struct Kennung
{
    QString programm;
    quint64 instanz = 0;
    quint16 port = 0;
};

// A program name every peer accepts: no '@', at most 255 bytes, not empty.
QString programmname(const QString &wunsch);

QByteArray kennungKodieren(const Kennung &kennung);
// Nothing for foreign bytes, another protocol version or a bad name.
std::optional<Kennung> kennungLesen(const QByteArray &daten);

struct Nachbar
{
    quint32 adresse = 0;
    quint16 port = 0;
    quint64 instanz = 0;
};

// "<program>@<dotted IPv4>:<port>", how participants name each other.
QString teilnehmerId(const QString &programm, quint32 adresse, quint16 port);

QByteArray nachbarnKodieren(const QVector<Nachbar> &nachbarn);
std::optional<QVector<Nachbar>> nachbarnLesen(const QByteArray &daten);

// Nothing unless the bytes are complete, valid UTF-8.
std::optional<QString> utf8Lesen(const QByteArray &daten);

// A message tagged with the event key: its sender's counter, the tag and the
// text, as the payload of a TAGGED frame carries them.
struct Gesiegelt
{
    quint64 zaehler = 0;
    QByteArray siegel;
    QByteArray utf8;
    QString text;
};

QByteArray gesiegeltKodieren(quint64 zaehler, const QByteArray &siegel, const QByteArray &utf8);
// Nothing for a payload shorter than counter and tag or a text that is no UTF-8.
std::optional<Gesiegelt> gesiegeltLesen(const QByteArray &nutzlast);
// The tag over the sender's id as the receiver knows it, the counter and the
// text; the id binds the tag to one sender, the counter to one sending.
QByteArray siegel(const QByteArray &schluessel, const QString &absender, quint64 zaehler,
                  const QByteArray &utf8);
// Whether the post carries the tag the key makes, compared in a time that
// does not tell a forger how many bytes were right.
bool siegelStimmt(const QByteArray &schluessel, const QString &absender, const Gesiegelt &post);

QByteArray rahmen(Art art, const QByteArray &nutzlast = {});

struct Rahmen
{
    Art art = Art::Ping;
    QByteArray nutzlast;
};

// Cuts a byte stream into frames. The first frame must be a hello and no
// later one may be; a frame longer than its type allows is refused from its
// header on, so no more than one permitted frame is ever buffered.
class Rahmenleser
{
public:
    void anhaengen(const QByteArray &daten);
    // False while no frame is complete, and for good once the stream broke.
    bool naechster(Rahmen &rahmen);
    bool kaputt() const { return m_kaputt; }
    qint64 gepuffert() const { return m_puffer.size() - m_anfang; }

private:
    bool kopfPasst(quint32 laenge, quint8 art) const;

    QByteArray m_puffer;
    int m_anfang = 0;
    bool m_halloGelesen = false;
    bool m_kaputt = false;
};

} // namespace Velmora
