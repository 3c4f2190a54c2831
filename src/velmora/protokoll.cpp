#include "velmora/protokoll.h"

#include <QHostAddress>
#include <QMessageAuthenticationCode>
#include <QTextCodec>
#include <QtEndian>

namespace Velmora {

namespace {

constexpr int kennungOhneName = 4 + 2 + 8 + 2 + 1;
constexpr quint32 hoechsterHallo = 1 + kennungOhneName + hoechsterName;
constexpr quint32 siegelKopf = zaehlerGroesse + siegelGroesse;
constexpr quint32 hoechsterRahmen = 1 + siegelKopf + quint32(hoechsteNachricht);

template <typename T> void schreiben(QByteArray &ziel, T wert)
{
    char bytes[sizeof(T)];
    qToBigEndian(wert, bytes);
    ziel.append(bytes, sizeof(T));
}

// Reads big-endian fields front to back and refuses to run past the end.
class Leser
{
public:
    explicit Leser(const QByteArray &daten) : m_daten(daten) {}

    template <typename T> bool zahl(T &wert)
    {
        if (rest() < int(sizeof(T)))
            return false;
        wert = qFromBigEndian<T>(m_daten.constData() + m_pos);
        m_pos += sizeof(T);
        return true;
    }
    bool bytes(int anzahl, QByteArray &wert)
    {
        if (rest() < anzahl)
            return false;
        wert = m_daten.mid(m_pos, anzahl);
        m_pos += anzahl;
        return true;
    }
    int rest() const { return m_daten.size() - m_pos; }

private:
    const QByteArray &m_daten;
    int m_pos = 0;
};

} // namespace

QString programmname(const QString &wunsch)
{
    QString name = wunsch;
    name.replace(QLatin1Char('@'), QLatin1Char('_'));
    while (name.toUtf8().size() > hoechsterName)
        name.chop(1);
    return name.isEmpty() ? QStringLiteral("Velmora") : name;
}

QByteArray kennungKodieren(const Kennung &kennung)
{
    const QByteArray name = kennung.programm.toUtf8();
    QByteArray daten(magie, 4);
    schreiben<quint16>(daten, protokollVersion);
    schreiben<quint64>(daten, kennung.instanz);
    schreiben<quint16>(daten, kennung.port);
    schreiben<quint8>(daten, quint8(name.size()));
    daten.append(name);
    return daten;
}

std::optional<Kennung> kennungLesen(const QByteArray &daten)
{
    Leser leser(daten);
    QByteArray kopf, name;
    quint16 version = 0;
    quint8 namenslaenge = 0;
    Kennung kennung;
    if (!leser.bytes(4, kopf) || kopf != QByteArray(magie, 4) || !leser.zahl(version) ||
        version != protokollVersion || !leser.zahl(kennung.instanz) || !leser.zahl(kennung.port) ||
        !leser.zahl(namenslaenge) || !leser.bytes(namenslaenge, name) || leser.rest() != 0)
        return std::nullopt;
    const std::optional<QString> programm = utf8Lesen(name);
    // The application splits participant ids at '@', so a name must not hold one.
    if (kennung.port == 0 || !programm || programm->isEmpty() || programm->contains(u'@'))
        return std::nullopt;
    kennung.programm = *programm;
    return kennung;
}

QString teilnehmerId(const QString &programm, quint32 adresse, quint16 port)
{
    return programm % QLatin1Char('@') % QHostAddress(adresse).toString() % QLatin1Char(':') %
           QString::number(port);
}

QByteArray nachbarnKodieren(const QVector<Nachbar> &nachbarn)
{
    const int anzahl = qMin(nachbarn.size(), hoechsteNachbarn);
    QByteArray daten;
    schreiben<quint16>(daten, quint16(anzahl));
    for (int i = 0; i < anzahl; ++i) {
        schreiben<quint32>(daten, nachbarn[i].adresse);
        schreiben<quint16>(daten, nachbarn[i].port);
        schreiben<quint64>(daten, nachbarn[i].instanz);
    }
    return daten;
}

std::optional<QVector<Nachbar>> nachbarnLesen(const QByteArray &daten)
{
    Leser leser(daten);
    quint16 anzahl = 0;
    if (!leser.zahl(anzahl) || anzahl > hoechsteNachbarn || leser.rest() != anzahl * nachbarGroesse)
        return std::nullopt;
    QVector<Nachbar> nachbarn(anzahl);
    for (Nachbar &nachbar : nachbarn) {
        leser.zahl(nachbar.adresse);
        leser.zahl(nachbar.port);
        leser.zahl(nachbar.instanz);
    }
    return nachbarn;
}

std::optional<QString> utf8Lesen(const QByteArray &daten)
{
    QTextCodec::ConverterState zustand;
    const QString text =
        QTextCodec::codecForMib(106)->toUnicode(daten.constData(), daten.size(), &zustand);
    if (zustand.invalidChars != 0 || zustand.remainingChars != 0)
        return std::nullopt;
    return text;
}

QByteArray gesiegeltKodieren(quint64 zaehler, const QByteArray &siegel, const QByteArray &utf8)
{
    QByteArray daten;
    daten.reserve(int(siegelKopf) + utf8.size());
    schreiben<quint64>(daten, zaehler);
    daten.append(siegel);
    daten.append(utf8);
    return daten;
}

std::optional<Gesiegelt> gesiegeltLesen(const QByteArray &nutzlast)
{
    Leser leser(nutzlast);
    Gesiegelt post;
    if (!leser.zahl(post.zaehler) || !leser.bytes(siegelGroesse, post.siegel) ||
        !leser.bytes(leser.rest(), post.utf8))
        return std::nullopt;
    std::optional<QString> text = utf8Lesen(post.utf8);
    if (!text)
        return std::nullopt;
    post.text = std::move(*text);
    return post;
}

QByteArray siegel(const QByteArray &schluessel, const QString &absender, quint64 zaehler,
                  const QByteArray &utf8)
{
    QByteArray kopf = absender.toUtf8();
    kopf.append('\n');
    schreiben<quint64>(kopf, zaehler);
    QMessageAuthenticationCode code(QCryptographicHash::Sha256, schluessel);
    code.addData(kopf);
    code.addData(utf8);
    return code.result();
}

bool siegelStimmt(const QByteArray &schluessel, const QString &absender, const Gesiegelt &post)
{
    const QByteArray richtig = siegel(schluessel, absender, post.zaehler, post.utf8);
    if (post.siegel.size() != richtig.size())
        return false;
    char unterschied = 0;
    for (int i = 0; i < richtig.size(); ++i)
        unterschied |= char(richtig[i] ^ post.siegel[i]);
    return unterschied == 0;
}

QByteArray rahmen(Art art, const QByteArray &nutzlast)
{
    QByteArray daten;
    daten.reserve(laengenfeld + 1 + nutzlast.size());
    schreiben<quint32>(daten, quint32(1 + nutzlast.size()));
    schreiben<quint8>(daten, quint8(art));
    daten.append(nutzlast);
    return daten;
}

void Rahmenleser::anhaengen(const QByteArray &daten)
{
    if (m_kaputt)
        return;
    m_puffer.remove(0, m_anfang);
    m_anfang = 0;
    m_puffer.append(daten);
}

bool Rahmenleser::kopfPasst(quint32 laenge, quint8 art) const
{
    if (!m_halloGelesen)
        return art == quint8(Art::Hallo) && laenge <= hoechsterHallo;
    switch (Art(art)) {
    case Art::Nachricht:
        return laenge <= 1 + quint32(hoechsteNachricht);
    case Art::Ping:
    case Art::Pong:
        return laenge == 1;
    case Art::Nachbarn:
        return laenge <= 1 + 2 + quint32(hoechsteNachbarn * nachbarGroesse);
    case Art::Gesiegelt:
        return laenge >= 1 + siegelKopf && laenge <= hoechsterRahmen;
    case Art::Hallo:
        break;
    }
    return false;
}

bool Rahmenleser::naechster(Rahmen &rahmen)
{
    const qint64 vorhanden = gepuffert();
    if (m_kaputt || vorhanden < laengenfeld)
        return false;
    const char *kopf = m_puffer.constData() + m_anfang;
    const quint32 laenge = qFromBigEndian<quint32>(kopf);
    // Length and type are judged before the body arrives, so a lying
    // header costs no memory.
    const bool passt = laenge >= 1 && laenge <= hoechsterRahmen &&
                       (vorhanden == laengenfeld || kopfPasst(laenge, quint8(kopf[laengenfeld])));
    if (!passt) {
        m_kaputt = true;
        m_puffer.clear();
        m_anfang = 0;
        return false;
    }
    if (vorhanden < laengenfeld + qint64(laenge))
        return false;
    rahmen.art = Art(quint8(kopf[laengenfeld]));
    rahmen.nutzlast = m_puffer.mid(m_anfang + laengenfeld + 1, int(laenge) - 1);
    m_anfang += laengenfeld + int(laenge);
    m_halloGelesen = true;
    return true;
}

} // namespace Velmora
