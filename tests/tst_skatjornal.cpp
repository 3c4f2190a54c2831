// The change journal: which keys an entry object has, the three "type" texts
// down to their bytes, entries from stored game rows, reading what other
// writers may leave out, the byte form of both files, save and load in both
// forms, and damaged or missing files that must leave the journal untouched.

#include "game/spieleintrag.h"
#include "helpers/testumgebung.h"
#include "sheets/skatjornal.h"

#include <QCborArray>
#include <QCborMap>
#include <QCborValue>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

namespace {

using S = SpielEintrag;

JornalEintrag spiel(int status, int spielnr, int spielwert, const QString &spieler,
                    const QString &geber, int reizwert)
{
    JornalEintrag e;
    e.status = status;
    e.spielnr = spielnr;
    e.spielwert = spielwert;
    e.spieler = spieler;
    e.geber = geber;
    e.reizwert = reizwert;
    return e;
}

// Kreuz with 2, Hand, won: 12 * 4.
JornalEintrag kreuzHand()
{
    JornalEintrag e = spiel(JornalEintrag::Normal, 1, 48, "Anna", "Dora", 20);
    e.mit = 2;
    e.hand = true;
    e.gewonnen = 48;
    return e;
}

// Grand without 1, lost, entered without a bid.
JornalEintrag grandVerloren()
{
    JornalEintrag e = spiel(JornalEintrag::Geaendert, 2, 48, "Bert", "Anna", 0);
    e.ohne = 1;
    e.verloren = 96;
    return e;
}

JornalEintrag eingepasst(const QString &geber = QStringLiteral("Bert"))
{
    JornalEintrag e;
    e.eingepasst = true;
    e.geber = geber;
    return e;
}

// Null ouvert, lost, by a player with an umlaut in his name.
JornalEintrag nullOuvertVerloren()
{
    JornalEintrag e =
        spiel(JornalEintrag::Geloescht, 3, 46, QStringLiteral(u"J\u00FCrgen"), "Carl", 46);
    e.offen = true;
    e.verloren = 92;
    return e;
}

// Grand with 1, Hand, won: 24 * 3.
JornalEintrag grandHand()
{
    JornalEintrag e = spiel(JornalEintrag::Normal, 5, 72, "Carl", "Bert", 48);
    e.mit = 1;
    e.hand = true;
    e.gewonnen = 72;
    return e;
}

using Eintraege = QVector<JornalEintrag>;

// The evening of the golden files tests/data/jornal.json and jornal.dat.
Eintraege beispielEintraege()
{
    return {kreuzHand(), grandVerloren(), eingepasst(), nullOuvertVerloren()};
}

// The same entries after a trip through a file: the missing bid comes back as 18.
Eintraege beispielGelesen()
{
    Eintraege e = beispielEintraege();
    e[1].reizwert = 18;
    return e;
}

const QDate beispielDatum(2026, 11, 14);

void fuellen(SkatJornal &jornal, const QDate &datum, int tischNr, int serie,
             const Eintraege &eintraege)
{
    jornal.setKopf(datum, tischNr, serie);
    jornal.leeren();
    for (const JornalEintrag &e : eintraege)
        jornal.anhaengen(e);
}

QString kompakt(const QJsonObject &objekt)
{
    return QString::fromUtf8(QJsonDocument(objekt).toJson(QJsonDocument::Compact));
}

QJsonObject beispielDokument()
{
    SkatJornal jornal;
    fuellen(jornal, beispielDatum, 5, 2, beispielEintraege());
    return jornal.dokument();
}

// The example document with one key of "skatliste" replaced (Undefined removes it).
QJsonObject mitListe(const QString &schluessel, const QJsonValue &wert)
{
    QJsonObject dokument = beispielDokument();
    QJsonObject liste = dokument.value("skatliste").toObject();
    liste.insert(schluessel, wert);
    dokument.insert("skatliste", liste);
    return dokument;
}

// The example document with one key of its first entry replaced.
QJsonObject mitEintrag(const QString &schluessel, const QJsonValue &wert)
{
    QJsonObject dokument = beispielDokument();
    QJsonObject liste = dokument.value("skatliste").toObject();
    QJsonArray spiele = liste.value("spiele").toArray();
    QJsonObject erstes = spiele.at(0).toObject();
    erstes.insert(schluessel, wert);
    spiele.replace(0, erstes);
    liste.insert("spiele", spiele);
    dokument.insert("skatliste", liste);
    return dokument;
}

QByteArray alsJson(const QJsonObject &dokument)
{
    return QJsonDocument(dokument).toJson();
}

QByteArray alsCbor(const QJsonObject &dokument)
{
    return QCborValue::fromJsonValue(dokument).toCbor();
}

// A file holding one entry object given as JSON text, with a valid header.
QByteArray mitEinemEintrag(const QByteArray &eintrag)
{
    return R"({"skatliste": {"Datum": "14-11-2026", "tischnr": 5, "seriennr": 2, "spiele": [)" +
           eintrag + "]}}";
}

bool schreiben(const QString &pfad, const QByteArray &bytes)
{
    QFile datei(pfad);
    return datei.open(QIODevice::WriteOnly) && datei.write(bytes) == bytes.size();
}

QByteArray dateiInhalt(const QString &pfad)
{
    QFile datei(pfad);
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
}

S zeile(std::initializer_list<std::pair<S::Spalte, int>> werte)
{
    S e;
    for (const auto &[spalte, wert] : werte)
        e.setze(spalte, wert);
    return e;
}

} // namespace

Q_DECLARE_METATYPE(JornalEintrag)
Q_DECLARE_METATYPE(SpielEintrag)
Q_DECLARE_METATYPE(SkatJornal::Form)

// All fields, so a failed comparison shows what differs.
char *toString(const JornalEintrag &e)
{
    const QString text =
        QStringLiteral("status=%1 spielnr=%2 spielwert=%3 mit=%4 ohne=%5 flags=%6%7%8%9%10%11 "
                       "gewonnen=%12 verloren=%13 reizwert=%14 eingepasst=%15 spieler=\"%16\" "
                       "geber=\"%17\"")
            .arg(e.status)
            .arg(e.spielnr)
            .arg(e.spielwert)
            .arg(e.mit)
            .arg(e.ohne)
            .arg(int(e.hand))
            .arg(int(e.schneider))
            .arg(int(e.schneiderangesagt))
            .arg(int(e.schwarz))
            .arg(int(e.schwarzangesagt))
            .arg(int(e.offen))
            .arg(e.gewonnen)
            .arg(e.verloren)
            .arg(e.reizwert)
            .arg(int(e.eingepasst))
            .arg(e.spieler, e.geber);
    return qstrdup(text.toUtf8().constData());
}

class TstSkatJornal : public QObject
{
    Q_OBJECT

private slots:
    void eintragsForm_data();
    void eintragsForm();
    void typTexte_data();
    void typTexte();
    void ausSpiel_data();
    void ausSpiel();
    void lesen_data();
    void lesen();
    void goldeneDateien_data();
    void goldeneDateien();
    void rundreise_data();
    void rundreise();
    void formenGleich_data();
    void formenGleich();
    void beschaedigt_data();
    void beschaedigt();
    void speichernFehlschlag_data();
    void speichernFehlschlag();

private:
    void rundreiseZeilen(SkatJornal::Form form, const char *name);
};

void TstSkatJornal::eintragsForm_data()
{
    QTest::addColumn<JornalEintrag>("eintrag");
    QTest::addColumn<QJsonObject>("erwartet");

    const QString geaendert = QStringLiteral(u"ge\uFFFDndert");

    // Game number, bid and declarer in memory do not reach the file.
    JornalEintrag passe = eingepasst();
    passe.spielnr = 4;
    passe.reizwert = 20;
    passe.spieler = "Anna";
    QTest::newRow("eingepasst") << passe
                                << QJsonObject{
                                       {"type", "normal"}, {"eingepasst", true}, {"geber", "Bert"}};
    passe.status = JornalEintrag::Geaendert;
    QTest::newRow("eingepasst, geaendert")
        << passe << QJsonObject{{"type", geaendert}, {"eingepasst", true}, {"geber", "Bert"}};

    QTest::newRow("ohne Reizwert")
        << grandVerloren() << QJsonObject{{"type", geaendert}, {"spielnr", 2},   {"spielwert", 48},
                                          {"ohne", 1},         {"verloren", 96}, {"reizwert", 18},
                                          {"spieler", "Bert"}, {"geber", "Anna"}};
    QTest::newRow("Grand Hand gewonnen")
        << grandHand() << QJsonObject{{"type", "normal"}, {"spielnr", 5},      {"spielwert", 72},
                                      {"mit", 1},         {"hand", true},      {"gewonnen", 72},
                                      {"reizwert", 48},   {"spieler", "Carl"}, {"geber", "Bert"}};

    // Kreuz with 1, every modifier: 12 * 9.
    JornalEintrag alles = spiel(JornalEintrag::Normal, 6, 108, "Dora", "Carl", 96);
    alles.mit = 1;
    alles.hand = alles.schneider = alles.schneiderangesagt = true;
    alles.schwarz = alles.schwarzangesagt = alles.offen = true;
    alles.gewonnen = 108;
    QTest::newRow("alle Modifikatoren") << alles
                                        << QJsonObject{{"type", "normal"},
                                                       {"spielnr", 6},
                                                       {"spielwert", 108},
                                                       {"mit", 1},
                                                       {"hand", true},
                                                       {"schneider", true},
                                                       {"schneiderangesagt", true},
                                                       {"schwarz", true},
                                                       {"schwarzangesagt", true},
                                                       {"offen", true},
                                                       {"gewonnen", 108},
                                                       {"reizwert", 96},
                                                       {"spieler", "Dora"},
                                                       {"geber", "Carl"}};

    // Each flag alone, so a key written for the wrong flag shows.
    JornalEintrag schneider = spiel(JornalEintrag::Normal, 7, 33, "Anna", "Bert", 18);
    schneider.mit = 1;
    schneider.schneider = true;
    schneider.gewonnen = 33;
    QTest::newRow("nur Schneider")
        << schneider << QJsonObject{{"type", "normal"}, {"spielnr", 7},      {"spielwert", 33},
                                    {"mit", 1},         {"schneider", true}, {"gewonnen", 33},
                                    {"reizwert", 18},   {"spieler", "Anna"}, {"geber", "Bert"}};
    JornalEintrag angesagt = schneider;
    angesagt.schneider = false;
    angesagt.schneiderangesagt = true;
    angesagt.schwarzangesagt = true;
    QTest::newRow("nur angesagt") << angesagt
                                  << QJsonObject{{"type", "normal"},
                                                 {"spielnr", 7},
                                                 {"spielwert", 33},
                                                 {"mit", 1},
                                                 {"schneiderangesagt", true},
                                                 {"schwarzangesagt", true},
                                                 {"gewonnen", 33},
                                                 {"reizwert", 18},
                                                 {"spieler", "Anna"},
                                                 {"geber", "Bert"}};

    QTest::newRow("Null ouvert verloren")
        << nullOuvertVerloren()
        << QJsonObject{{"type", QStringLiteral(u"gel\uFFFDscht")},
                       {"spielnr", 3},
                       {"spielwert", 46},
                       {"offen", true},
                       {"verloren", 92},
                       {"reizwert", 46},
                       {"spieler", QStringLiteral(u"J\u00FCrgen")},
                       {"geber", "Carl"}};

    JornalEintrag unbekannt = kreuzHand();
    unbekannt.status = 3;
    QTest::newRow("unbekannter Status ohne type")
        << unbekannt
        << QJsonObject{{"spielnr", 1},   {"spielwert", 48}, {"mit", 2},          {"hand", true},
                       {"gewonnen", 48}, {"reizwert", 20},  {"spieler", "Anna"}, {"geber", "Dora"}};
    unbekannt.status = -1;
    QTest::newRow("negativer Status ohne type")
        << unbekannt
        << QJsonObject{{"spielnr", 1},   {"spielwert", 48}, {"mit", 2},          {"hand", true},
                       {"gewonnen", 48}, {"reizwert", 20},  {"spieler", "Anna"}, {"geber", "Dora"}};

    // Number, value, bid and both names are written even when 0 or empty.
    QTest::newRow("leerer Eintrag")
        << JornalEintrag() << QJsonObject{{"type", "normal"}, {"spielnr", 0},  {"spielwert", 0},
                                          {"reizwert", 18},   {"spieler", ""}, {"geber", ""}};
}

void TstSkatJornal::eintragsForm()
{
    QFETCH(JornalEintrag, eintrag);
    QFETCH(QJsonObject, erwartet);
    SkatJornal jornal;
    jornal.anhaengen(eintrag);
    const QJsonArray spiele =
        jornal.dokument().value("skatliste").toObject().value("spiele").toArray();
    QCOMPARE(spiele.size(), 1);
    // Compact text lists the keys sorted, so a missing or extra key shows.
    QCOMPARE(kompakt(spiele.at(0).toObject()), kompakt(erwartet));
}

void TstSkatJornal::typTexte_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QVector<uint>>("codepunkte");
    QTest::addColumn<QByteArray>("latin1");
    QTest::addColumn<QByteArray>("utf8");

    QTest::newRow("normal") << int(JornalEintrag::Normal)
                            << QVector<uint>{'n', 'o', 'r', 'm', 'a', 'l'} << QByteArray("normal")
                            << QByteArray("normal");
    QTest::newRow("geaendert") << int(JornalEintrag::Geaendert)
                               << QVector<uint>{'g', 'e', 0xFFFD, 'n', 'd', 'e', 'r', 't'}
                               << QByteArray("ge\xE4"
                                             "ndert")
                               << QByteArray("ge\xEF\xBF\xBD"
                                             "ndert");
    QTest::newRow("geloescht") << int(JornalEintrag::Geloescht)
                               << QVector<uint>{'g', 'e', 'l', 0xFFFD, 's', 'c', 'h', 't'}
                               << QByteArray("gel\xF6"
                                             "scht")
                               << QByteArray("gel\xEF\xBF\xBD"
                                             "scht");
}

void TstSkatJornal::typTexte()
{
    QFETCH(int, status);
    QFETCH(QVector<uint>, codepunkte);
    QFETCH(QByteArray, latin1);
    QFETCH(QByteArray, utf8);

    QTemporaryDir ordner;
    SkatJornal jornal;
    jornal.setPath(ordner.filePath("jornal"));
    JornalEintrag e = kreuzHand();
    e.status = status;
    jornal.anhaengen(e);

    const QString typ = jornal.dokument()
                            .value("skatliste")
                            .toObject()
                            .value("spiele")
                            .toArray()
                            .at(0)
                            .toObject()
                            .value("type")
                            .toString();
    QCOMPARE(typ.toUcs4(), codepunkte);
    // The text is the word's Latin-1 bytes read as UTF-8.
    QCOMPARE(typ, QString::fromUtf8(latin1));

    QVERIFY(jornal.save(SkatJornal::Json));
    const QByteArray json = dateiInhalt(ordner.filePath("jornal.json"));
    QVERIFY2(json.contains("\"type\": \"" + utf8 + '"'), json.constData());
    // In CBOR a text string shorter than 24 bytes starts with 0x60 plus its length.
    QVERIFY(jornal.save(SkatJornal::Binaer));
    const QByteArray cbor = dateiInhalt(ordner.filePath("jornal.dat"));
    QVERIFY(cbor.contains(char(0x60 + utf8.size()) + utf8));
}

void TstSkatJornal::ausSpiel_data()
{
    QTest::addColumn<SpielEintrag>("zeile");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("spieler");
    QTest::addColumn<QString>("geber");
    QTest::addColumn<JornalEintrag>("erwartet");
    QTest::addColumn<int>("sitz");

    QTest::newRow("Kreuz mit 2 Hand gewonnen") << zeile({{S::Zeile, 1},
                                                         {S::Spiel, 12},
                                                         {S::Mit, 2},
                                                         {S::Hand, 1},
                                                         {S::Gewonnen, 48},
                                                         {S::Spieler2, 48},
                                                         {S::Reizung, 20}})
                                               << int(JornalEintrag::Normal) << "Anna"
                                               << "Dora" << kreuzHand() << 1;
    QTest::newRow("Grand ohne 1 verloren, ohne Reizung")
        << zeile(
               {{S::Zeile, 2}, {S::Spiel, 24}, {S::Ohne, 1}, {S::Verloren, 96}, {S::Spieler3, -96}})
        << int(JornalEintrag::Geaendert) << "Bert"
        << "Anna" << grandVerloren() << 2;

    JornalEintrag null = spiel(JornalEintrag::Normal, 3, 23, "Carl", "Bert", 23);
    null.verloren = 46;
    QTest::newRow("Null verloren") << zeile({{S::Zeile, 3},
                                             {S::Spiel, 23},
                                             {S::Verloren, 46},
                                             {S::Spieler1, -46},
                                             {S::Reizung, 23}})
                                   << int(JornalEintrag::Normal) << "Carl"
                                   << "Bert" << null << 0;

    JornalEintrag nullOuvertHand = spiel(JornalEintrag::Geloescht, 9, 59, "Dora", "Anna", 59);
    nullOuvertHand.hand = true;
    nullOuvertHand.offen = true;
    nullOuvertHand.verloren = 118;
    QTest::newRow("Null ouvert Hand verloren, Sitz 4") << zeile({{S::Zeile, 9},
                                                                 {S::Spiel, 23},
                                                                 {S::Hand, 1},
                                                                 {S::Offen, 1},
                                                                 {S::Verloren, 118},
                                                                 {S::Spieler4, -118},
                                                                 {S::Reizung, 59}})
                                                       << int(JornalEintrag::Geloescht) << "Dora"
                                                       << "Anna" << nullOuvertHand << 3;

    // Each announced flag with its own column: Schneider announced, Schwarz only reached.
    JornalEintrag kreuz = spiel(JornalEintrag::Normal, 10, 72, "Anna", "Carl", 60);
    kreuz.mit = 1;
    kreuz.hand = kreuz.schneider = kreuz.schneiderangesagt = kreuz.schwarz = true;
    kreuz.gewonnen = 72;
    QTest::newRow("Hand, Schneider angesagt, Schwarz") << zeile({{S::Zeile, 10},
                                                                 {S::Spiel, 12},
                                                                 {S::Mit, 1},
                                                                 {S::Hand, 1},
                                                                 {S::Schneider, 1},
                                                                 {S::AngSchneider, 1},
                                                                 {S::Schwarz, 1},
                                                                 {S::Gewonnen, 72},
                                                                 {S::Spieler1, 72},
                                                                 {S::Reizung, 60}})
                                                       << int(JornalEintrag::Normal) << "Anna"
                                                       << "Carl" << kreuz << 0;

    JornalEintrag pik = spiel(JornalEintrag::Normal, 11, 33, "Bert", "Dora", 22);
    pik.mit = 1;
    pik.schwarzangesagt = true;
    pik.gewonnen = 33;
    QTest::newRow("nur Schwarz angesagt") << zeile({{S::Zeile, 11},
                                                    {S::Spiel, 11},
                                                    {S::Mit, 1},
                                                    {S::AngSchwarz, 1},
                                                    {S::Gewonnen, 33},
                                                    {S::Spieler2, 33},
                                                    {S::Reizung, 22}})
                                          << int(JornalEintrag::Normal) << "Bert"
                                          << "Dora" << pik << 1;

    // No declarer; the row's number and bid are kept in memory.
    JornalEintrag passe = eingepasst("Carl");
    passe.spielnr = 4;
    QTest::newRow("eingepasst") << zeile({{S::Zeile, 4}, {S::Eingepasst, 1}})
                                << int(JornalEintrag::Normal) << QString() << "Carl" << passe << -1;
}

void TstSkatJornal::ausSpiel()
{
    QFETCH(SpielEintrag, zeile);
    QFETCH(int, status);
    QFETCH(QString, spieler);
    QFETCH(QString, geber);
    QTEST(JornalEintrag::ausSpiel(zeile, status, spieler, geber), "erwartet");
    QTEST(JornalEintrag::spielerSitz(zeile), "sitz");
}

void TstSkatJornal::lesen_data()
{
    QTest::addColumn<QByteArray>("eintrag");
    QTest::addColumn<JornalEintrag>("erwartet");

    JornalEintrag nurGeber;
    nurGeber.geber = "Bert";
    QTest::newRow("ohne type, nur geber") << QByteArray(R"({"geber": "Bert"})") << nurGeber;
    QTest::newRow("leeres Objekt") << QByteArray("{}") << JornalEintrag();
    QTest::newRow("false und 0 ausgeschrieben")
        << QByteArray(R"({"type": "normal", "mit": 0, "hand": false, "eingepasst": false})")
        << JornalEintrag();

    JornalEintrag geaendert;
    geaendert.status = JornalEintrag::Geaendert;
    JornalEintrag geloescht;
    geloescht.status = JornalEintrag::Geloescht;
    QTest::newRow("geaendert mit U+FFFD") << QByteArray("{\"type\": \"ge\xEF\xBF\xBD"
                                                        "ndert\"}")
                                          << geaendert;
    QTest::newRow("geloescht mit U+FFFD") << QByteArray("{\"type\": \"gel\xEF\xBF\xBD"
                                                        "scht\"}")
                                          << geloescht;
    QTest::newRow("geaendert als Escape")
        << QByteArray(R"({"type": "ge\ufffdndert"})") << geaendert;
    QTest::newRow("geaendert mit Umlaut")
        << QByteArray("{\"type\": \"ge\xC3\xA4ndert\"}") << geaendert;
    QTest::newRow("geloescht mit Umlaut")
        << QByteArray("{\"type\": \"gel\xC3\xB6scht\"}") << geloescht;

    QTest::newRow("eingepasst") << QByteArray(
                                       R"({"type": "normal", "eingepasst": true, "geber": "Bert"})")
                                << eingepasst();
    // 18 cannot be told from a missing bid and stays 18.
    QTest::newRow("alle Schluessel, Reizwert 18")
        << QByteArray(R"({"type": "ge\ufffdndert", "spielnr": 2, "spielwert": 48, "ohne": 1,
                        "verloren": 96, "reizwert": 18, "spieler": "Bert", "geber": "Anna"})")
        << [] {
               JornalEintrag e = grandVerloren();
               e.reizwert = 18;
               return e;
           }();
    JornalEintrag alleFlags = spiel(JornalEintrag::Normal, 6, 108, "Dora", "Carl", 96);
    alleFlags.mit = 1;
    alleFlags.hand = alleFlags.schneider = alleFlags.schneiderangesagt = true;
    alleFlags.schwarz = alleFlags.schwarzangesagt = alleFlags.offen = true;
    alleFlags.gewonnen = 108;
    QTest::newRow("alle Flags") << QByteArray(
                                       R"({"spielnr": 6, "spielwert": 108, "mit": 1, "hand": true,
                        "schneider": true, "schneiderangesagt": true, "schwarz": true,
                        "schwarzangesagt": true, "offen": true, "gewonnen": 108,
                        "reizwert": 96, "spieler": "Dora", "geber": "Carl"})")
                                << alleFlags;

    JornalEintrag nummer;
    nummer.spielnr = 3;
    QTest::newRow("unbekannter Schluessel")
        << QByteArray(R"({"kommentar": "x", "spielnr": 3})") << nummer;
    QTest::newRow("Zahl mit Nachkommanull") << QByteArray(R"({"spielnr": 3.0})") << nummer;
}

void TstSkatJornal::lesen()
{
    QFETCH(QByteArray, eintrag);
    QTemporaryDir ordner;
    QVERIFY(schreiben(ordner.filePath("jornal.json"), mitEinemEintrag(eintrag)));
    SkatJornal jornal;
    jornal.setPath(ordner.filePath("jornal"));
    QVERIFY(jornal.load(SkatJornal::Json));
    QCOMPARE(jornal.eintraege().size(), 1);
    QTEST(jornal.eintraege().at(0), "erwartet");
}

void TstSkatJornal::goldeneDateien_data()
{
    QTest::addColumn<SkatJornal::Form>("form");
    QTest::addColumn<QString>("datei");

    QTest::newRow("JSON") << SkatJornal::Json << QFINDTESTDATA("data/jornal.json");
    QTest::newRow("CBOR") << SkatJornal::Binaer << QFINDTESTDATA("data/jornal.dat");
}

void TstSkatJornal::goldeneDateien()
{
    QFETCH(SkatJornal::Form, form);
    QFETCH(QString, datei);
    QVERIFY(!datei.isEmpty());
    const QByteArray golden = dateiInhalt(datei);
    QVERIFY(!golden.isEmpty());

    // Writing the example evening gives the file byte for byte ...
    QTemporaryDir ordner;
    SkatJornal jornal;
    jornal.setPath(ordner.filePath("jornal"));
    fuellen(jornal, beispielDatum, 5, 2, beispielEintraege());
    QVERIFY(jornal.save(form));
    QCOMPARE(dateiInhalt(SkatJornal::dateiPfad(jornal.path(), form)), golden);

    // ... and reading the file gives the evening back.
    SkatJornal gelesen;
    gelesen.setPath(QFileInfo(datei).absolutePath() + "/jornal");
    QVERIFY(gelesen.load(form));
    QCOMPARE(gelesen.datum(), beispielDatum);
    QCOMPARE(gelesen.tischNr(), 5);
    QCOMPARE(gelesen.serie(), 2);
    const Eintraege erwartet = beispielGelesen();
    QCOMPARE(gelesen.eintraege().size(), erwartet.size());
    for (int i = 0; i < erwartet.size(); ++i)
        QCOMPARE(gelesen.eintraege().at(i), erwartet.at(i));
}

void TstSkatJornal::rundreiseZeilen(SkatJornal::Form form, const char *name)
{
    const auto zeile = [&](const char *fall) -> QTestData & {
        return QTest::addRow("%s, %s", name, fall) << form;
    };

    zeile("leer, ohne Datum") << QDate() << 0 << 0 << Eintraege() << Eintraege();
    zeile("Abend") << beispielDatum << 5 << 2 << beispielEintraege() << beispielGelesen();

    // The file keeps only the dealer of a passed-in round.
    JornalEintrag passe = eingepasst();
    passe.status = JornalEintrag::Geloescht;
    passe.spielnr = 4;
    passe.reizwert = 20;
    passe.spieler = "Anna";
    JornalEintrag passeGelesen = eingepasst();
    passeGelesen.status = JornalEintrag::Geloescht;
    zeile("eingepasst ohne Spielnummer")
        << QDate(2027, 1, 31) << 12 << 3 << Eintraege{passe} << Eintraege{passeGelesen};

    // A status without a text of its own comes back as an ordinary entry.
    JornalEintrag unbekannt = kreuzHand();
    unbekannt.status = 5;
    zeile("unbekannter Status") << beispielDatum << 1 << 1 << Eintraege{unbekannt}
                                << Eintraege{kreuzHand()};

    JornalEintrag namen = grandHand();
    namen.spieler = QStringLiteral(u"J\u00FCrgen \"JJ\" \u00D6l\u00DFner");
    namen.geber = QStringLiteral(u"\u674E \\ / \U0001F0A1");
    zeile("Namen mit Sonderzeichen")
        << QDate(1999, 12, 31) << 120 << 9 << Eintraege{namen} << Eintraege{namen};
}

void TstSkatJornal::rundreise_data()
{
    QTest::addColumn<SkatJornal::Form>("form");
    QTest::addColumn<QDate>("datum");
    QTest::addColumn<int>("tischNr");
    QTest::addColumn<int>("serie");
    QTest::addColumn<Eintraege>("eintraege");
    QTest::addColumn<Eintraege>("erwartet");

    rundreiseZeilen(SkatJornal::Json, "JSON");
    rundreiseZeilen(SkatJornal::Binaer, "CBOR");
}

void TstSkatJornal::rundreise()
{
    QFETCH(SkatJornal::Form, form);
    QFETCH(QDate, datum);
    QFETCH(int, tischNr);
    QFETCH(int, serie);
    QFETCH(Eintraege, eintraege);
    QFETCH(Eintraege, erwartet);

    QTemporaryDir ordner;
    const QString basis = ordner.filePath("jornal");
    // A longer older file must be replaced, not overwritten from the start.
    QVERIFY(schreiben(SkatJornal::dateiPfad(basis, form), QByteArray(100000, 'x')));

    SkatJornal jornal;
    jornal.setPath(basis);
    fuellen(jornal, datum, tischNr, serie, eintraege);
    QVERIFY(jornal.save(form));

    SkatJornal gelesen;
    gelesen.setPath(basis);
    gelesen.setKopf(QDate(2000, 1, 1), 99, 99);
    gelesen.anhaengen(grandHand());
    QVERIFY(gelesen.load(form));
    QCOMPARE(gelesen.datum(), datum);
    QCOMPARE(gelesen.tischNr(), tischNr);
    QCOMPARE(gelesen.serie(), serie);
    QCOMPARE(gelesen.eintraege().size(), erwartet.size());
    for (int i = 0; i < erwartet.size(); ++i)
        QCOMPARE(gelesen.eintraege().at(i), erwartet.at(i));
}

void TstSkatJornal::formenGleich_data()
{
    QTest::addColumn<QDate>("datum");
    QTest::addColumn<int>("tischNr");
    QTest::addColumn<int>("serie");
    QTest::addColumn<Eintraege>("eintraege");

    QTest::newRow("leer") << QDate() << 0 << 0 << Eintraege();
    QTest::newRow("Abend") << beispielDatum << 5 << 2 << beispielEintraege();
    JornalEintrag namen = grandHand();
    namen.spieler = QStringLiteral(u"\u00D6l\u00DFner \U0001F0A1");
    namen.status = JornalEintrag::Geaendert;
    QTest::newRow("Sonderzeichen, leerer Geber")
        << QDate(2027, 2, 28) << 7 << 1 << Eintraege{namen, eingepasst("")};
}

void TstSkatJornal::formenGleich()
{
    QFETCH(QDate, datum);
    QFETCH(int, tischNr);
    QFETCH(int, serie);
    QFETCH(Eintraege, eintraege);

    QTemporaryDir ordner;
    const QString basis = ordner.filePath("jornal");
    SkatJornal jornal;
    jornal.setPath(basis);
    fuellen(jornal, datum, tischNr, serie, eintraege);
    QVERIFY(jornal.save(SkatJornal::Json));
    QVERIFY(jornal.save(SkatJornal::Binaer));

    SkatJornal ausJson;
    ausJson.setPath(basis);
    QVERIFY(ausJson.load(SkatJornal::Json));
    SkatJornal ausCbor;
    ausCbor.setPath(basis);
    QVERIFY(ausCbor.load(SkatJornal::Binaer));

    QCOMPARE(kompakt(ausCbor.dokument()), kompakt(ausJson.dokument()));
    QCOMPARE(ausCbor.dokument(), ausJson.dokument());
    // Reading loses nothing the file holds: the loaded journal writes the same document.
    QCOMPARE(kompakt(ausJson.dokument()), kompakt(jornal.dokument()));
}

void TstSkatJornal::beschaedigt_data()
{
    QTest::addColumn<SkatJornal::Form>("form");
    QTest::addColumn<bool>("vorhanden");
    QTest::addColumn<QByteArray>("inhalt");

    const auto json = [](const char *name, const QByteArray &inhalt) {
        QTest::addRow("JSON, %s", name) << SkatJornal::Json << true << inhalt;
    };
    const auto cbor = [](const char *name, const QByteArray &inhalt) {
        QTest::addRow("CBOR, %s", name) << SkatJornal::Binaer << true << inhalt;
    };
    const QByteArray gut = alsJson(beispielDokument());
    const QByteArray gutCbor = alsCbor(beispielDokument());

    QTest::newRow("JSON, Datei fehlt") << SkatJornal::Json << false << QByteArray();
    QTest::newRow("CBOR, Datei fehlt") << SkatJornal::Binaer << false << QByteArray();

    json("leere Datei", QByteArray());
    json("Muell", "Das ist kein Jornal.\n");
    json("abgeschnitten", gut.left(gut.size() / 2));
    json("Fehler hinter dem Ende", gut + "}");
    json("Feld statt Objekt", "[{\"skatliste\": {}}]");
    json("ohne skatliste", alsJson(QJsonObject{{"liste", beispielDokument().value("skatliste")}}));
    json("skatliste kein Objekt", R"({"skatliste": [1, 2]})");
    json("skatliste leer", R"({"skatliste": {}})");
    json("spiele fehlt", alsJson(mitListe("spiele", QJsonValue::Undefined)));
    json("spiele kein Feld", alsJson(mitListe("spiele", QJsonObject{{"0", QJsonObject()}})));
    json("Eintrag kein Objekt", alsJson(mitListe("spiele", QJsonArray{1, 2})));
    json("Eintrag null", alsJson(mitListe("spiele", QJsonArray{QJsonValue::Null})));
    json("tischnr als Text", alsJson(mitListe("tischnr", "5")));
    json("tischnr fehlt", alsJson(mitListe("tischnr", QJsonValue::Undefined)));
    json("seriennr gebrochen", alsJson(mitListe("seriennr", 2.5)));
    json("seriennr zu gross", alsJson(mitListe("seriennr", 1e12)));
    json("Datum als Zahl", alsJson(mitListe("Datum", 14112026)));
    json("Datum in anderer Form", alsJson(mitListe("Datum", "2026-11-14")));
    json("Datum fehlt", alsJson(mitListe("Datum", QJsonValue::Undefined)));
    json("spielnr als Text", alsJson(mitEintrag("spielnr", "1")));
    json("hand als Zahl", alsJson(mitEintrag("hand", 1)));
    json("spieler als Zahl", alsJson(mitEintrag("spieler", 7)));
    json("geber null", alsJson(mitEintrag("geber", QJsonValue::Null)));
    json("type unbekannt", alsJson(mitEintrag("type", "neu")));
    json("type leer", alsJson(mitEintrag("type", "")));
    json("type als Zahl", alsJson(mitEintrag("type", 1)));
    json("CBOR in der JSON-Datei", gutCbor);

    cbor("leere Datei", QByteArray());
    cbor("Muell", QByteArray("\xFF\xFE\x00\x13garbage", 11));
    cbor("abgeschnitten", gutCbor.left(gutCbor.size() / 2));
    cbor("Anhang hinter dem Ende", gutCbor + QByteArray(1, '\0'));
    cbor("Feld statt Map", QCborArray{1, 2}.toCborValue().toCbor());
    cbor("Zahl statt Map", QCborValue(42).toCbor());
    cbor("ohne skatliste", QCborMap{{"liste", 1}}.toCborValue().toCbor());
    cbor("spiele kein Feld", alsCbor(mitListe("spiele", "keine")));
    cbor("tischnr als Text", alsCbor(mitListe("tischnr", "5")));
    cbor("hand als Zahl", alsCbor(mitEintrag("hand", 1)));
    cbor("JSON in der CBOR-Datei", gut);
}

void TstSkatJornal::beschaedigt()
{
    QFETCH(SkatJornal::Form, form);
    QFETCH(bool, vorhanden);
    QFETCH(QByteArray, inhalt);

    QTemporaryDir ordner;
    const QString basis = ordner.filePath("jornal");
    if (vorhanden)
        QVERIFY(schreiben(SkatJornal::dateiPfad(basis, form), inhalt));

    // A journal different from the example in every header value and entry.
    SkatJornal jornal;
    jornal.setPath(basis);
    const Eintraege vorher{grandHand(), eingepasst("Dora")};
    fuellen(jornal, QDate(2025, 3, 1), 8, 3, vorher);
    const QJsonObject dokumentVorher = jornal.dokument();

    QTest::ignoreMessage(QtWarningMsg, "Kann Jornaldatei nicht laden.");
    QVERIFY(!jornal.load(form));

    QCOMPARE(jornal.path(), basis);
    QCOMPARE(jornal.datum(), QDate(2025, 3, 1));
    QCOMPARE(jornal.tischNr(), 8);
    QCOMPARE(jornal.serie(), 3);
    QCOMPARE(jornal.eintraege().size(), vorher.size());
    for (int i = 0; i < vorher.size(); ++i)
        QCOMPARE(jornal.eintraege().at(i), vorher.at(i));
    QCOMPARE(kompakt(jornal.dokument()), kompakt(dokumentVorher));
}

void TstSkatJornal::speichernFehlschlag_data()
{
    QTest::addColumn<SkatJornal::Form>("form");
    QTest::addColumn<QString>("basis");
    QTest::addColumn<bool>("zielIstOrdner");

    QTest::newRow("JSON, Ordner fehlt") << SkatJornal::Json << "fehlt/jornal" << false;
    QTest::newRow("CBOR, Ordner fehlt") << SkatJornal::Binaer << "fehlt/jornal" << false;
    QTest::newRow("JSON, Ziel ist ein Ordner") << SkatJornal::Json << "jornal" << true;
    QTest::newRow("CBOR, Ziel ist ein Ordner") << SkatJornal::Binaer << "jornal" << true;
    QTest::newRow("JSON, kein Pfad") << SkatJornal::Json << QString() << false;
    QTest::newRow("CBOR, kein Pfad") << SkatJornal::Binaer << QString() << false;
}

void TstSkatJornal::speichernFehlschlag()
{
    QFETCH(SkatJornal::Form, form);
    QFETCH(QString, basis);
    QFETCH(bool, zielIstOrdner);

    QTemporaryDir ordner;
    SkatJornal jornal;
    if (!basis.isEmpty())
        jornal.setPath(ordner.filePath(basis));
    if (zielIstOrdner)
        QVERIFY(QDir().mkpath(SkatJornal::dateiPfad(jornal.path(), form)));
    fuellen(jornal, beispielDatum, 5, 2, beispielEintraege());

    QTest::ignoreMessage(QtWarningMsg, "Kann Jornaldatei nicht speichern.");
    QVERIFY(!jornal.save(form));
    // Nothing was written beside the target, not even a left-over temporary file.
    const QStringList uebrig = QDir(ordner.path()).entryList(QDir::Files | QDir::Hidden);
    QVERIFY2(uebrig.isEmpty(), qPrintable(uebrig.join(", ")));
    if (basis.isEmpty())
        QVERIFY(!QFile::exists(".json") && !QFile::exists(".dat"));
}

KARTULO_TEST_MAIN(TstSkatJornal)
#include "tst_skatjornal.moc"
