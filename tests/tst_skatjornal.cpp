// The change journal: which keys an entry object has, the three "type" texts
// down to their bytes, entries from stored game rows, the byte form of both
// files, save and load in both forms, and damaged or missing files that must
// leave the journal untouched.

#include "game/spieleintrag.h"
#include "helpers/testumgebung.h"
#include "sheets/skatjornal.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

namespace {

using S = SpielEintrag;

// An entry of a game, the fields in their order in JornalEintrag; schneider and schwarz
// stay unset.
JornalEintrag spiel(int status, int spielnr, int spielwert, int mit, int ohne, int gewonnen,
                    int verloren, int reizwert, const QString &spieler, const QString &geber,
                    bool hand = false, bool offen = false)
{
    return {status, spielnr, spielwert, mit,      ohne,     hand,  false,   false, false,
            false,  offen,   gewonnen,  verloren, reizwert, false, spieler, geber};
}

// Kreuz with 2, Hand, won: 12 * 4.
const JornalEintrag kreuzHand =
    spiel(JornalEintrag::Normal, 1, 48, 2, 0, 48, 0, 20, "Anna", "Dora", true);
// Grand without 1, lost, entered without a bid.
const JornalEintrag grandVerloren =
    spiel(JornalEintrag::Geaendert, 2, 48, 0, 1, 0, 96, 0, "Bert", "Anna");
// Null ouvert, lost, by a player with an umlaut in his name.
const JornalEintrag nullOuvertVerloren = spiel(JornalEintrag::Geloescht, 3, 46, 0, 0, 0, 92, 46,
                                               QStringLiteral(u"J\u00FCrgen"), "Carl", false, true);
// Grand with 1, Hand, won: 24 * 3.
const JornalEintrag grandHand =
    spiel(JornalEintrag::Normal, 5, 72, 1, 0, 72, 0, 48, "Carl", "Bert", true);

JornalEintrag eingepasst(const QString &geber = QStringLiteral("Bert"))
{
    JornalEintrag e;
    e.eingepasst = true;
    e.geber = geber;
    return e;
}

using Eintraege = QVector<JornalEintrag>;

// The evening of the golden files tests/data/jornal.json and jornal.dat.
Eintraege beispielEintraege()
{
    return {kreuzHand, grandVerloren, eingepasst(), nullOuvertVerloren};
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

QByteArray dateiInhalt(const QString &pfad)
{
    QFile datei(pfad);
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
}

// Date, table, series and entries of a journal against what they should be.
void pruefen(const SkatJornal &jornal, const QDate &datum, int tischNr, int serie,
             const Eintraege &erwartet)
{
    QCOMPARE(jornal.datum(), datum);
    QCOMPARE(jornal.tischNr(), tischNr);
    QCOMPARE(jornal.serie(), serie);
    QCOMPARE(jornal.eintraege().toList(), erwartet.toList());
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
    QStringList text;
    for (int wert : {e.status, e.spielnr, e.spielwert, e.mit, e.ohne, int(e.hand), int(e.schneider),
                     int(e.schneiderangesagt), int(e.schwarz), int(e.schwarzangesagt), int(e.offen),
                     e.gewonnen, e.verloren, e.reizwert, int(e.eingepasst)})
        text << QString::number(wert);
    text << e.spieler << e.geber;
    return qstrdup(text.join(QLatin1Char('|')).toUtf8().constData());
}

class TstSkatJornal : public QObject
{
    Q_OBJECT

private slots:
    void eintragsForm_data();
    void eintragsForm();
    void ausSpiel_data();
    void ausSpiel();
    void goldeneDateien_data();
    void goldeneDateien();
    void rundreise_data();
    void rundreise();
    void beschaedigt_data();
    void beschaedigt();
};

void TstSkatJornal::eintragsForm_data()
{
    QTest::addColumn<JornalEintrag>("eintrag");
    QTest::addColumn<QJsonObject>("erwartet");

    // Game number, bid and declarer in memory do not reach the file.
    JornalEintrag passe = eingepasst();
    passe.spielnr = 4;
    passe.reizwert = 20;
    passe.spieler = "Anna";
    QTest::newRow("eingepasst") << passe
                                << QJsonObject{
                                       {"type", "normal"}, {"eingepasst", true}, {"geber", "Bert"}};
    const QString geaendert = QStringLiteral(u"ge\uFFFDndert");
    QTest::newRow("ohne Reizwert")
        << grandVerloren << QJsonObject{{"type", geaendert}, {"spielnr", 2},   {"spielwert", 48},
                                        {"ohne", 1},         {"verloren", 96}, {"reizwert", 18},
                                        {"spieler", "Bert"}, {"geber", "Anna"}};
    // No schneider, schwarz or offen, and neither "ohne" nor "verloren" when 0.
    QTest::newRow("Grand Hand gewonnen")
        << grandHand << QJsonObject{{"type", "normal"}, {"spielnr", 5},      {"spielwert", 72},
                                    {"mit", 1},         {"hand", true},      {"gewonnen", 72},
                                    {"reizwert", 48},   {"spieler", "Carl"}, {"geber", "Bert"}};
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

// Status and both names are passed through; the rest comes from the stored row.
void TstSkatJornal::ausSpiel_data()
{
    QTest::addColumn<SpielEintrag>("zeile");
    QTest::addColumn<JornalEintrag>("erwartet");
    QTest::addColumn<int>("sitz");

    const S kreuz = zeile({{S::Zeile, 1},
                           {S::Spiel, 12},
                           {S::Mit, 2},
                           {S::Hand, 1},
                           {S::Gewonnen, 48},
                           {S::Spieler2, 48},
                           {S::Reizung, 20}});
    QTest::newRow("Kreuz mit 2 Hand gewonnen") << kreuz << kreuzHand << 1;
    // A lost game stores twice its value as Verloren.
    QTest::newRow("Grand ohne 1 verloren, ohne Reizung")
        << zeile(
               {{S::Zeile, 2}, {S::Spiel, 24}, {S::Ohne, 1}, {S::Verloren, 96}, {S::Spieler3, -96}})
        << grandVerloren << 2;
    // No declarer; the row's number is kept in memory.
    JornalEintrag passe = eingepasst("Carl");
    passe.spielnr = 4;
    QTest::newRow("eingepasst") << zeile({{S::Zeile, 4}, {S::Eingepasst, 1}}) << passe << -1;
}

void TstSkatJornal::ausSpiel()
{
    QFETCH(SpielEintrag, zeile);
    QFETCH(JornalEintrag, erwartet);
    QCOMPARE(JornalEintrag::ausSpiel(zeile, erwartet.status, erwartet.spieler, erwartet.geber),
             erwartet);
    QTEST(JornalEintrag::spielerSitz(zeile), "sitz");
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
    const QByteArray golden = dateiInhalt(datei);
    QVERIFY(!golden.isEmpty());

    // Writing the example evening gives the file byte for byte ...
    QTemporaryDir ordner;
    SkatJornal jornal;
    jornal.setPath(ordner.filePath("jornal"));
    fuellen(jornal, beispielDatum, 5, 2, beispielEintraege());
    QVERIFY(jornal.save(form));
    QCOMPARE(dateiInhalt(SkatJornal::dateiPfad(jornal.path(), form)), golden);
    // The three type texts are the words' Latin-1 bytes read as UTF-8: each umlaut became
    // U+FFFD, and readers of the files rely on exactly these bytes.
    for (const char *typ : {"normal", "ge\xEF\xBF\xBDndert", "gel\xEF\xBF\xBDscht"})
        QVERIFY2(golden.contains(typ), typ);

    // ... and reading the file gives the evening back.
    SkatJornal gelesen;
    gelesen.setPath(QFileInfo(datei).absolutePath() + "/jornal");
    QVERIFY(gelesen.load(form));
    pruefen(gelesen, beispielDatum, 5, 2, beispielGelesen());
}

void TstSkatJornal::rundreise_data()
{
    QTest::addColumn<QDate>("datum");
    QTest::addColumn<Eintraege>("eintraege");
    QTest::addColumn<Eintraege>("erwartet");

    QTest::newRow("leer, ohne Datum") << QDate() << Eintraege() << Eintraege();
    QTest::newRow("Abend") << beispielDatum << beispielEintraege() << beispielGelesen();
    JornalEintrag namen = grandHand;
    namen.status = JornalEintrag::Geloescht;
    namen.spieler = QStringLiteral(u"J\u00FCrgen \"JJ\" \u00D6l\u00DFner");
    namen.geber = QStringLiteral(u"\u674E \\ / \U0001F0A1");
    QTest::newRow("Namen mit Sonderzeichen")
        << QDate(1999, 12, 31) << Eintraege{namen} << Eintraege{namen};
}

// Saved in both forms, each file gives the journal back, and both give the same document.
void TstSkatJornal::rundreise()
{
    QFETCH(QDate, datum);
    QFETCH(Eintraege, eintraege);
    QFETCH(Eintraege, erwartet);

    QTemporaryDir ordner;
    const QString basis = ordner.filePath("jornal");
    SkatJornal jornal;
    jornal.setPath(basis);
    fuellen(jornal, datum, 120, 9, eintraege);
    QVERIFY(jornal.save(SkatJornal::Json));
    QVERIFY(jornal.save(SkatJornal::Binaer));

    QStringList dokumente;
    for (SkatJornal::Form form : {SkatJornal::Json, SkatJornal::Binaer}) {
        // Loading replaces whatever the journal held before.
        SkatJornal gelesen;
        gelesen.setPath(basis);
        fuellen(gelesen, QDate(2000, 1, 1), 99, 99, {grandHand});
        QVERIFY(gelesen.load(form));
        pruefen(gelesen, datum, 120, 9, erwartet);
        dokumente << kompakt(gelesen.dokument());
    }
    QCOMPARE(dokumente.at(1), dokumente.at(0));
    QCOMPARE(dokumente.at(0), kompakt(jornal.dokument()));
}

void TstSkatJornal::beschaedigt_data()
{
    QTest::addColumn<SkatJornal::Form>("form");
    QTest::addColumn<QByteArray>("inhalt"); // null: there is no file

    const QByteArray gut = dateiInhalt(QFINDTESTDATA("data/jornal.json"));

    QTest::newRow("JSON, Datei fehlt") << SkatJornal::Json << QByteArray();
    QTest::newRow("JSON, Muell") << SkatJornal::Json << QByteArray("Kein Jornal.\n");
    QTest::newRow("JSON, abgeschnitten") << SkatJornal::Json << gut.left(gut.size() / 2);
    // A valid header, then an entry that is no object: nothing of the file may be taken.
    QTest::newRow("JSON, andere Form")
        << SkatJornal::Json << QByteArray(gut).replace("\"spiele\": [", "\"spiele\": [1, ");
    QTest::newRow("CBOR, Muell") << SkatJornal::Binaer << QByteArray("\xFF\xFE\x00\x13garbage", 11);
}

void TstSkatJornal::beschaedigt()
{
    QFETCH(SkatJornal::Form, form);
    QFETCH(QByteArray, inhalt);

    QTemporaryDir ordner;
    const QString basis = ordner.filePath("jornal");
    if (!inhalt.isNull()) {
        QFile datei(SkatJornal::dateiPfad(basis, form));
        QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size());
    }

    // A journal different from the example in every header value and entry.
    SkatJornal jornal;
    jornal.setPath(basis);
    const Eintraege vorher{grandHand, eingepasst("Dora")};
    fuellen(jornal, QDate(2025, 3, 1), 8, 3, vorher);

    QTest::ignoreMessage(QtWarningMsg, "Kann Jornaldatei nicht laden.");
    QVERIFY(!jornal.load(form));
    pruefen(jornal, QDate(2025, 3, 1), 8, 3, vorher);
}

KARTULO_TEST_MAIN(TstSkatJornal)
#include "tst_skatjornal.moc"
