#include "core/files/xmlprotokoll.h"

#include "core/files/spielerdatei.h"
#include "core/game/spielspalten.h"

#include <QSaveFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <array>
#include <climits>
#include <cmath>
#include <optional>

namespace {

using S = SpielEintrag;

const QString datumsFormat = QStringLiteral("dd-MM-yyyy");
const QString wurzelName = QStringLiteral("Kartulo");
const QString spieleName = QStringLiteral("spiele");
const QString spielName = QStringLiteral("spiel");
const QString spielerPraefix = QStringLiteral("spieler");
constexpr int maxSpieler = 4;

// The cost and point attributes in file order. Files of earlier evenings must keep
// opening, so names and order stay as they are. Money is a double, points an int.
struct KostenAttribut
{
    QString name;
    double KostenWerte::*geld;
    int KostenWerte::*punkte;
};

const std::array<KostenAttribut, 11> &kostenAttribute()
{
    using K = KostenWerte;
    static const std::array<KostenAttribut, 11> attribute{{
        {QStringLiteral("kartengeld"), &K::kartengeld, nullptr},
        {QStringLiteral("verlsp1-5"), &K::verlSpiel1Bis5, nullptr},
        {QStringLiteral("verlspab6"), &K::verlSpielAb6, nullptr},
        {QStringLiteral("preisskat"), &K::preisskat, nullptr},
        {QStringLiteral("gewsp-verlsp"), nullptr, &K::gewSpieleMinusVerlSpiele},
        {QStringLiteral("verlspgegensp_4"), nullptr, &K::verlSpieleDerGegenSpieler4},
        {QStringLiteral("verlspgegensp_3"), nullptr, &K::verlSpieleDerGegenSpieler3},
        {QStringLiteral("platz1"), &K::platz1, nullptr},
        {QStringLiteral("platz2"), &K::platz2, nullptr},
        {QStringLiteral("platz3"), &K::platz3, nullptr},
        {QStringLiteral("platz4"), &K::platz4, nullptr},
    }};
    return attribute;
}

QString flagText(bool wert)
{
    return wert ? QStringLiteral("ja") : QStringLiteral("nein");
}

// Seat number of a player element "spieler1".."spieler4", 0 for any other name.
int spielerNummer(const QStringRef &name)
{
    if (!name.startsWith(spielerPraefix))
        return 0;
    bool ok = false;
    const int nummer = name.mid(spielerPraefix.size()).toInt(&ok);
    return ok && nummer >= 1 && nummer <= maxSpieler ? nummer : 0;
}

// Reads one document token by token. The first problem ends the reading; until the
// whole text has been read nothing is handed out.
class Leser
{
public:
    explicit Leser(const QByteArray &inhalt) : m_xml(inhalt), m_leer(inhalt.trimmed().isEmpty()) {}

    std::variant<XmlDaten, XmlFehler> lesen();

private:
    bool kopfLesen();
    bool spielerLesen(int nummer);
    bool spielLesen();

    // The attribute as a number; a missing or empty attribute gives the default.
    std::optional<int> zahl(const QString &attribut, int standard);
    // Remembers the problem at the current line; always false, for "return fehler(...)".
    bool fehler(const QString &text);

    QXmlStreamReader m_xml;
    bool m_leer;
    XmlDaten m_daten;
    XmlFehler m_fehler;
};

std::variant<XmlDaten, XmlFehler> Leser::lesen()
{
    int tiefe = 0;
    bool inSpiele = false;
    bool wurzelGesehen = false;
    while (!m_xml.atEnd()) {
        m_xml.readNext();
        if (m_xml.isEndElement()) {
            if (tiefe == 2)
                inSpiele = false;
            --tiefe;
            continue;
        }
        if (!m_xml.isStartElement())
            continue;
        ++tiefe;
        const QStringRef name = m_xml.name();
        bool ok = true;
        if (tiefe == 1) {
            wurzelGesehen = true;
            if (name != wurzelName)
                ok = fehler(XmlProtokoll::tr("Keine Kartulo-Protokolldatei (das Wurzelelement "
                                             "heisst \"%1\").")
                                .arg(name.toString()));
            else
                ok = kopfLesen();
        } else if (tiefe == 2) {
            inSpiele = name == spieleName;
            if (const int nummer = spielerNummer(name))
                ok = spielerLesen(nummer);
        } else if (tiefe == 3 && inSpiele && name == spielName) {
            ok = spielLesen();
        }
        // Anything else is an element of a later version or a hand edit: skipped.
        if (!ok)
            return m_fehler;
    }
    if (m_xml.hasError()) {
        if (m_leer) {
            m_fehler.zeile = 1;
            m_fehler.text = XmlProtokoll::tr("Die Datei ist leer.");
            return m_fehler;
        }
        if (wurzelGesehen && m_xml.error() == QXmlStreamReader::PrematureEndOfDocumentError)
            fehler(XmlProtokoll::tr("Die Datei bricht mitten im Protokoll ab (%1)")
                       .arg(m_xml.errorString()));
        else
            fehler(
                XmlProtokoll::tr("Die Datei ist kein gueltiges XML (%1)").arg(m_xml.errorString()));
        return m_fehler;
    }
    return m_daten;
}

bool Leser::fehler(const QString &text)
{
    m_fehler.zeile = m_xml.lineNumber();
    m_fehler.text = text;
    return false;
}

std::optional<int> Leser::zahl(const QString &attribut, int standard)
{
    const QStringRef text = m_xml.attributes().value(attribut);
    if (text.isEmpty())
        return standard;
    bool ok = false;
    const int wert = text.toInt(&ok, 10);
    if (ok)
        return wert;
    fehler(XmlProtokoll::tr("Das Attribut \"%1\" von <%2> ist keine Zahl: \"%3\"")
               .arg(attribut, m_xml.name().toString(), text.toString()));
    return std::nullopt;
}

bool Leser::kopfLesen()
{
    const QXmlStreamAttributes attribute = m_xml.attributes();
    ListenKopf &kopf = m_daten.kopf;
    const QString datum = attribute.value(QStringLiteral("datum")).toString();
    if (!datum.isEmpty()) {
        kopf.datum = QDate::fromString(datum, datumsFormat);
        if (!kopf.datum.isValid())
            return fehler(XmlProtokoll::tr("Das Attribut \"datum\" ist kein Datum der Form "
                                           "TT-MM-JJJJ: \"%1\"")
                              .arg(datum));
    }
    for (auto [attribut, ziel] : {std::pair{QStringLiteral("tischnr"), &kopf.tischNr},
                                  std::pair{QStringLiteral("serie"), &kopf.serie},
                                  std::pair{QStringLiteral("spielanzahl"), &kopf.anzahlSpiele}}) {
        const std::optional<int> wert = zahl(attribut, *ziel);
        if (!wert)
            return false;
        *ziel = *wert;
    }
    kopf.modus = attribute.value(QStringLiteral("modus")) == QLatin1String("Ergebnis") ? 1 : 0;
    for (const KostenAttribut &k : kostenAttribute()) {
        const QString text = attribute.value(k.name).toString();
        double wert = 0.0;
        // The money fields take a decimal comma as well as a point.
        bool ok = text.isEmpty();
        if (!ok)
            wert = QString(text).replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&ok);
        // Points go into an int; "1e300" or "nan" there is as damaged as "abc".
        if (ok && k.punkte)
            ok = std::trunc(wert) >= INT_MIN && std::trunc(wert) <= INT_MAX;
        if (!ok)
            return fehler(XmlProtokoll::tr("Das Attribut \"%1\" von <%2> ist keine Zahl: \"%3\"")
                              .arg(k.name, m_xml.name().toString(), text));
        if (k.geld)
            m_daten.kosten.*k.geld = wert;
        else
            m_daten.kosten.*k.punkte = static_cast<int>(wert);
    }
    m_daten.verein = attribute.value(QStringLiteral("verein")).toString();
    kopf.gruppe = attribute.value(QStringLiteral("gruppe")).toString();
    // The group heads every network message, which these characters divide.
    for (const QChar zeichen : {u':', u'$', u'@'})
        kopf.gruppe.remove(zeichen);
    return true;
}

bool Leser::spielerLesen(int nummer)
{
    // The seats follow from the order: a gap or a repeated seat would shift every score.
    if (nummer != m_daten.spieler.size() + 1)
        return fehler(
            XmlProtokoll::tr("Das Element <%1> steht an falscher Stelle, erwartet wird <%2%3>.")
                .arg(m_xml.name().toString(), spielerPraefix)
                .arg(m_daten.spieler.size() + 1));
    const QXmlStreamAttributes attribute = m_xml.attributes();
    Teilnehmer spieler;
    const std::optional<int> mgldNr = zahl(QStringLiteral("mgldnr"), 0);
    if (!mgldNr)
        return false;
    spieler.mgldNr = *mgldNr;
    spieler.name = SpielerDatei::bereinigt(attribute.value(QStringLiteral("name")).toString());
    if (spieler.name.isEmpty())
        spieler.name = QStringLiteral("Spieler %1").arg(nummer);
    spieler.mitglied = attribute.value(QStringLiteral("mitglied")).toString();
    if (spieler.mitglied.isEmpty())
        spieler.mitglied = QStringLiteral("Nein");
    spieler.preisskat = attribute.value(QStringLiteral("preisskat")).toString();
    if (spieler.preisskat.isEmpty())
        spieler.preisskat = QStringLiteral("Nein");
    m_daten.spieler << spieler;
    return true;
}

bool Leser::spielLesen()
{
    const QXmlStreamAttributes attribute = m_xml.attributes();
    SpielEintrag spiel;
    // A row without number follows the previous one, as rows are numbered without gaps; none
    // can follow the highest number an int holds.
    const int vorige = m_daten.spiele.isEmpty() ? 0 : m_daten.spiele.last()[S::Zeile];
    const bool ohneNummer = attribute.value(QStringLiteral("nr")).isEmpty();
    if (ohneNummer && vorige == INT_MAX)
        return fehler(XmlProtokoll::tr("Auf Spiel Nr. %1 folgt ein Spiel ohne Nummer; eine "
                                       "hoehere Nummer gibt es nicht.")
                          .arg(vorige));
    const int naechsteZeile = ohneNummer ? vorige + 1 : 0;
    for (const SpaltenAngabe &a : spielSpalten()) {
        const QString name = QLatin1String(a.xml);
        if (a.flag) {
            spiel.setze(a.spalte, attribute.value(name).compare(QLatin1String("ja"),
                                                                Qt::CaseInsensitive) == 0);
            continue;
        }
        const std::optional<int> wert = zahl(name, a.spalte == S::Zeile ? naechsteZeile : 0);
        if (!wert)
            return false;
        spiel.setze(a.spalte, *wert);
    }
    m_daten.spiele << spiel;
    return true;
}

} // namespace

QString XmlProtokoll::schreiben(const XmlDaten &daten)
{
    QString text;
    // About 300 characters per game row; one allocation for a long result list.
    text.reserve(1000 + 300 * daten.spiele.size());
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();

    xml.writeStartElement(wurzelName);
    const ListenKopf &kopf = daten.kopf;
    xml.writeAttribute(QStringLiteral("datum"), kopf.datum.toString(datumsFormat));
    xml.writeAttribute(QStringLiteral("tischnr"), QString::number(kopf.tischNr));
    xml.writeAttribute(QStringLiteral("serie"), QString::number(kopf.serie));
    xml.writeAttribute(QStringLiteral("modus"),
                       kopf.modus == 1 ? QStringLiteral("Ergebnis") : QStringLiteral("Turnier"));
    xml.writeAttribute(QStringLiteral("spielanzahl"), QString::number(kopf.anzahlSpiele));
    for (const KostenAttribut &k : kostenAttribute())
        xml.writeAttribute(k.name, k.geld ? Kostenrechnung::geldText(daten.kosten.*k.geld)
                                          : QString::number(daten.kosten.*k.punkte));
    xml.writeAttribute(QStringLiteral("verein"), daten.verein);
    xml.writeAttribute(QStringLiteral("gruppe"), kopf.gruppe);

    for (int i = 0; i < daten.spieler.size(); ++i) {
        const Teilnehmer &spieler = daten.spieler.at(i);
        xml.writeEmptyElement(spielerPraefix + QString::number(i + 1));
        xml.writeAttribute(QStringLiteral("mgldnr"), QString::number(spieler.mgldNr));
        xml.writeAttribute(QStringLiteral("name"), spieler.name);
        xml.writeAttribute(QStringLiteral("mitglied"), spieler.mitglied);
        xml.writeAttribute(QStringLiteral("preisskat"), spieler.preisskat);
    }

    xml.writeStartElement(spieleName);
    for (const SpielEintrag &spiel : daten.spiele) {
        xml.writeEmptyElement(spielName);
        for (const SpaltenAngabe &a : spielSpalten())
            xml.writeAttribute(QLatin1String(a.xml), a.flag ? flagText(spiel.flag(a.spalte))
                                                            : QString::number(spiel[a.spalte]));
    }
    xml.writeEndElement();

    // Not writeEndDocument(): it adds a line end, and the file gets exactly one.
    xml.writeEndElement();
    return text;
}

std::variant<XmlDaten, XmlFehler> XmlProtokoll::lesen(const QByteArray &inhalt)
{
    return Leser(inhalt).lesen();
}

bool XmlProtokoll::dateiSchreiben(const QString &pfad, const QString &text, QString *fehler)
{
    QSaveFile datei(pfad);
    const auto gescheitert = [&] {
        if (fehler)
            *fehler = datei.errorString();
        datei.cancelWriting();
        return false;
    };
    if (!datei.open(QIODevice::WriteOnly | QIODevice::Text))
        return gescheitert();
    QByteArray bytes = text.toUtf8();
    bytes += '\n';
    // commit() flushes as well, but Qt 5.15 renames the file even when that last flush
    // fails (a full disk): flushing here first keeps the old copy in that case.
    if (datei.write(bytes) != bytes.size() || !datei.flush() || !datei.commit())
        return gescheitert();
    return true;
}

bool XmlProtokoll::istProtokoll(const QByteArray &inhalt)
{
    return inhalt.contains("<Kartulo ");
}
