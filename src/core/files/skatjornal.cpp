#include "core/files/skatjornal.h"

#include "core/game/spielspalten.h"

#include <QCborMap>
#include <QCborValue>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonValue>
#include <QSaveFile>

#include <climits>
#include <cmath>

namespace {

const QString datumsFormat = QStringLiteral("dd-MM-yyyy");

// The journal has always stored "geändert" and "gelöscht" as Latin-1 bytes read
// as UTF-8, so the umlaut became U+FFFD; readers of the files rely on exactly
// this text, hence the literal replacement character instead of the umlaut.
const QString typNormal = QStringLiteral("normal");
const QString typGeaendert = QStringLiteral(u"ge\uFFFDndert");
const QString typGeloescht = QStringLiteral(u"gel\uFFFDscht");
// The same words spelled correctly, accepted when reading.
const QString typGeaendertUmlaut = QStringLiteral(u"ge\u00E4ndert");
const QString typGeloeschtUmlaut = QStringLiteral(u"gel\u00F6scht");

// Everything load() takes from a file, filled completely before the journal
// itself is touched.
struct Inhalt
{
    QDate datum;
    int tischNr = 0;
    int serie = 0;
    QVector<JornalEintrag> eintraege;
};

QJsonObject alsJson(const JornalEintrag &e)
{
    QJsonObject objekt;
    switch (e.status) {
    case JornalEintrag::Normal:
        objekt.insert(QStringLiteral("type"), typNormal);
        break;
    case JornalEintrag::Geaendert:
        objekt.insert(QStringLiteral("type"), typGeaendert);
        break;
    case JornalEintrag::Geloescht:
        objekt.insert(QStringLiteral("type"), typGeloescht);
        break;
    default:
        break;
    }

    if (e.spiel.flag(SpielEintrag::Eingepasst)) {
        // A passed-in round has no game, value or bid: only who dealt.
        objekt.insert(QStringLiteral("eingepasst"), true);
        objekt.insert(QStringLiteral("geber"), e.geber);
        return objekt;
    }

    objekt.insert(QStringLiteral("spielwert"), e.spielwert);
    for (const SpaltenAngabe &s : spielSpalten()) {
        if (!s.jornal)
            continue;
        const int wert = e.spiel[s.spalte];
        if (wert != 0)
            objekt.insert(QLatin1String(s.jornal), s.flag ? QJsonValue(true) : QJsonValue(wert));
        else if (s.jornalFuerNull)
            objekt.insert(QLatin1String(s.jornal), *s.jornalFuerNull);
    }
    objekt.insert(QStringLiteral("spieler"), e.spieler);
    objekt.insert(QStringLiteral("geber"), e.geber);
    return objekt;
}

// JSON knows only doubles; an integer is one without a fraction that fits an int.
bool ganzeZahl(const QJsonValue &wert, int *zahl)
{
    if (!wert.isDouble())
        return false;
    const double d = wert.toDouble();
    if (d < INT_MIN || d > INT_MAX || std::trunc(d) != d)
        return false;
    *zahl = static_cast<int>(d);
    return true;
}

// The readers of single keys: a key left out gives 0, false or an empty text;
// a value of another type makes the whole file unreadable.
bool liesZahl(const QJsonObject &objekt, const QString &schluessel, int *zahl)
{
    const QJsonValue wert = objekt.value(schluessel);
    if (wert.isUndefined()) {
        *zahl = 0;
        return true;
    }
    return ganzeZahl(wert, zahl);
}

bool liesFlag(const QJsonObject &objekt, const QString &schluessel, bool *flag)
{
    const QJsonValue wert = objekt.value(schluessel);
    if (wert.isUndefined()) {
        *flag = false;
        return true;
    }
    if (!wert.isBool())
        return false;
    *flag = wert.toBool();
    return true;
}

bool liesText(const QJsonObject &objekt, const QString &schluessel, QString *text)
{
    const QJsonValue wert = objekt.value(schluessel);
    if (wert.isUndefined()) {
        text->clear();
        return true;
    }
    if (!wert.isString())
        return false;
    *text = wert.toString();
    return true;
}

bool liesStatus(const QJsonObject &objekt, int *status)
{
    const QJsonValue wert = objekt.value(QStringLiteral("type"));
    if (wert.isUndefined()) {
        // A status without a text of its own was written without "type".
        *status = JornalEintrag::Normal;
        return true;
    }
    if (!wert.isString())
        return false;
    const QString typ = wert.toString();
    if (typ == typNormal)
        *status = JornalEintrag::Normal;
    else if (typ == typGeaendert || typ == typGeaendertUmlaut)
        *status = JornalEintrag::Geaendert;
    else if (typ == typGeloescht || typ == typGeloeschtUmlaut)
        *status = JornalEintrag::Geloescht;
    else
        return false; // an unknown mark would be read as an ordinary entry
    return true;
}

bool ausJson(const QJsonObject &o, JornalEintrag *e)
{
    if (!liesStatus(o, &e->status) || !liesZahl(o, QStringLiteral("spielwert"), &e->spielwert) ||
        !liesText(o, QStringLiteral("spieler"), &e->spieler) ||
        !liesText(o, QStringLiteral("geber"), &e->geber))
        return false;
    for (const SpaltenAngabe &s : spielSpalten()) {
        if (!s.jornal)
            continue;
        const QString schluessel = QLatin1String(s.jornal);
        int zahl = 0;
        bool flag = false;
        if (s.flag ? !liesFlag(o, schluessel, &flag) : !liesZahl(o, schluessel, &zahl))
            return false;
        e->spiel.setze(s.spalte, s.flag ? int(flag) : zahl);
    }
    return true;
}

// The header is always written whole, so each of its four keys must be there.
bool ausDokument(const QJsonObject &dokument, Inhalt *inhalt)
{
    const QJsonValue liste = dokument.value(QStringLiteral("skatliste"));
    if (!liste.isObject())
        return false;
    const QJsonObject kopf = liste.toObject();

    const QJsonValue datum = kopf.value(QStringLiteral("Datum"));
    if (!datum.isString())
        return false;
    // A journal without a date is written with an empty text.
    if (!datum.toString().isEmpty()) {
        inhalt->datum = QDate::fromString(datum.toString(), datumsFormat);
        if (!inhalt->datum.isValid())
            return false;
    }
    if (!ganzeZahl(kopf.value(QStringLiteral("tischnr")), &inhalt->tischNr) ||
        !ganzeZahl(kopf.value(QStringLiteral("seriennr")), &inhalt->serie))
        return false;

    const QJsonValue spiele = kopf.value(QStringLiteral("spiele"));
    if (!spiele.isArray())
        return false;
    const QJsonArray feld = spiele.toArray();
    inhalt->eintraege.reserve(feld.size());
    for (const QJsonValue &wert : feld) {
        JornalEintrag eintrag;
        if (!wert.isObject() || !ausJson(wert.toObject(), &eintrag))
            return false;
        inhalt->eintraege.append(eintrag);
    }
    return true;
}

bool ausBytes(const QByteArray &bytes, SkatJornal::Form form, QJsonObject *dokument)
{
    if (form == SkatJornal::Json) {
        QJsonParseError fehler;
        const QJsonDocument doc = QJsonDocument::fromJson(bytes, &fehler);
        if (fehler.error != QJsonParseError::NoError || !doc.isObject())
            return false;
        *dokument = doc.object();
        return true;
    }
    QCborParserError fehler;
    const QCborValue wert = QCborValue::fromCbor(bytes, &fehler);
    // fromCbor stops after the first item; anything behind it is damage too.
    if (fehler.error != QCborError::NoError || fehler.offset != bytes.size() || !wert.isMap())
        return false;
    *dokument = wert.toMap().toJsonObject();
    return true;
}

void warnungSpeichern()
{
    qWarning("Kann Jornaldatei nicht speichern.");
}

void warnungLaden()
{
    qWarning("Kann Jornaldatei nicht laden.");
}

} // namespace

JornalEintrag JornalEintrag::ausSpiel(const SpielEintrag &spiel, int status, const QString &spieler,
                                      const QString &geber)
{
    JornalEintrag e;
    e.status = status;
    for (const SpaltenAngabe &s : spielSpalten()) {
        if (s.jornal && s.flag)
            e.spiel.setze(s.spalte, spiel.flag(s.spalte));
        else if (s.jornal)
            e.spiel.setze(s.spalte, spiel[s.spalte]);
    }
    const int gewonnen = spiel[SpielEintrag::Gewonnen];
    // A lost game stores twice its value as Verloren.
    e.spielwert = gewonnen != 0 ? gewonnen : spiel[SpielEintrag::Verloren] / 2;
    e.spieler = spieler;
    e.geber = geber;
    return e;
}

int JornalEintrag::spielerSitz(const SpielEintrag &spiel)
{
    for (int sitz = 0; sitz < 4; ++sitz) {
        if (spiel.spielerWert(sitz) != 0)
            return sitz;
    }
    return -1;
}

bool JornalEintrag::operator==(const JornalEintrag &o) const
{
    return status == o.status && spiel == o.spiel && spielwert == o.spielwert &&
           spieler == o.spieler && geber == o.geber;
}

SkatJornal::SkatJornal(QObject *parent) : QObject(parent) {}

void SkatJornal::setPath(const QString &basisPfad)
{
    m_basisPfad = basisPfad;
}

QString SkatJornal::path() const
{
    return m_basisPfad;
}

void SkatJornal::setKopf(const QDate &datum, int tischNr, int serie)
{
    m_datum = datum;
    m_tischNr = tischNr;
    m_serie = serie;
}

void SkatJornal::anhaengen(const JornalEintrag &eintrag)
{
    m_eintraege.append(eintrag);
}

void SkatJornal::leeren()
{
    m_eintraege.clear();
}

QJsonObject SkatJornal::dokument() const
{
    QJsonArray spiele;
    for (const JornalEintrag &e : m_eintraege)
        spiele.append(alsJson(e));
    QJsonObject liste;
    liste.insert(QStringLiteral("Datum"), m_datum.toString(datumsFormat));
    liste.insert(QStringLiteral("tischnr"), m_tischNr);
    liste.insert(QStringLiteral("seriennr"), m_serie);
    liste.insert(QStringLiteral("spiele"), spiele);
    return QJsonObject{{QStringLiteral("skatliste"), liste}};
}

QString SkatJornal::dateiPfad(const QString &basisPfad, Form form)
{
    return basisPfad + (form == Json ? QStringLiteral(".json") : QStringLiteral(".dat"));
}

bool SkatJornal::save(Form form) const
{
    // Without a path the file would land in the working directory as ".json".
    if (m_basisPfad.isEmpty()) {
        warnungSpeichern();
        return false;
    }
    const QByteArray bytes = form == Json ? QJsonDocument(dokument()).toJson()
                                          : QCborValue::fromJsonValue(dokument()).toCbor();
    QSaveFile datei(dateiPfad(m_basisPfad, form));
    if (!datei.open(QIODevice::WriteOnly)) {
        warnungSpeichern();
        return false;
    }
    if (datei.write(bytes) != bytes.size()) {
        datei.cancelWriting();
        warnungSpeichern();
        return false;
    }
    if (!datei.commit()) {
        warnungSpeichern();
        return false;
    }
    return true;
}

bool SkatJornal::load(Form form)
{
    QFile datei(dateiPfad(m_basisPfad, form));
    if (m_basisPfad.isEmpty() || !datei.open(QIODevice::ReadOnly)) {
        warnungLaden();
        return false;
    }
    return lesen(datei.readAll(), form);
}

bool SkatJornal::lesen(const QByteArray &bytes, Form form)
{
    QJsonObject dokument;
    Inhalt inhalt;
    if (!ausBytes(bytes, form, &dokument) || !ausDokument(dokument, &inhalt)) {
        warnungLaden();
        return false;
    }
    m_datum = inhalt.datum;
    m_tischNr = inhalt.tischNr;
    m_serie = inhalt.serie;
    m_eintraege.swap(inhalt.eintraege);
    return true;
}
