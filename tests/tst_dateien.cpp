// XML protocol and journal against their files in data/ and back, damaged
// files, and the player file with its cleaned names.

#include "core/files/skatjornal.h"
#include "core/files/spielerdatei.h"
#include "core/files/xmlprotokoll.h"
#include "helpers/faelle.h"
#include "helpers/testprotokoll.h"
#include "helpers/testumgebung.h"

#include <QTemporaryDir>

namespace {

QByteArray dateiInhalt(const QString &pfad)
{
    QFile datei(pfad);
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray("<nicht lesbar>");
}

// Names with every character that needs care in XML; costs all different, so a swapped
// attribute shows.
XmlDaten turnierListe()
{
    XmlDaten d;
    d.kopf = {5, 2, 48, 0, 0, QDate(2024, 5, 3), QStringLiteral("Herbst'24")};
    d.kosten = {0.5, 1.5, 2.5, 3.5, 1.2, 0.6, 1.1, 12.5, 20, 45, 35};
    d.verein = QStringLiteral("Skatclub Grün-Weiß 1896 e.V.");
    d.spiele = TestProtokoll::abend(48, 4);
    d.spieler = {{1017, "Anna Bergmann", "Ja", "Ja"},
                 {233, "Jörg \"Jo\" Weiß & Söhne", "Ja", "Nein"},
                 {4, "Carl <Köhler>", "Nein", "Ja"},
                 {1290, "Dora O'Neill", "Ja", "Ja"}};
    return d;
}

// A result list of three that has just been started: no games yet.
XmlDaten ergebnisListeOhneSpiele()
{
    XmlDaten d;
    d.kopf = {12, 1, 36, 1, 0, QDate(2024, 12, 31), QString()};
    d.kosten.kartengeld = 1.5;
    d.kosten.platz4 = 3.0;
    d.verein = QStringLiteral("MeinVerein");
    d.spieler = {{11, "Eva", "Ja", "Ja"}, {12, "Max", "Nein", "Nein"}, {13, "Ute", "Ja", "Nein"}};
    return d;
}

// What a file gives: the problem with its line, or what was read, written again.
QString gelesen(const QByteArray &inhalt)
{
    const auto ergebnis = XmlProtokoll::lesen(inhalt);
    if (const auto *fehler = std::get_if<XmlFehler>(&ergebnis))
        return QStringLiteral("Zeile %1: %2").arg(fehler->zeile).arg(fehler->text);
    return XmlProtokoll::schreiben(std::get<XmlDaten>(ergebnis));
}

// The journal of the golden files tests/data/jornal.json and jornal.dat; Bert's Grand was
// entered without a bid, which comes back as 18.
QVector<JornalEintrag> jornalAbend(bool gelesen)
{
    using TestProtokoll::zeile;
    return {{JornalEintrag::Normal, zeile("Zeile=1 Mit=2 Hand=1 Gewonnen=48 Reizung=20"), 48,
             "Anna", "Dora"},
            {JornalEintrag::Geaendert,
             zeile(QStringLiteral("Zeile=2 Ohne=1 Verloren=96 Reizung=%1").arg(gelesen ? 18 : 0)),
             48, "Bert", "Anna"},
            {JornalEintrag::Normal, zeile("Eingepasst=1"), 0, "", "Bert"},
            {JornalEintrag::Geloescht, zeile("Zeile=3 Offen=1 Verloren=92 Reizung=46"), 46,
             QStringLiteral(u"J\u00FCrgen"), "Carl"}};
}

} // namespace

class TstDateien : public QObject
{
    Q_OBJECT

private slots:
    void xmlVorlage();
    void xmlLesen_data();
    void xmlLesen();
    void jornalVorlage();
    void jornalLesen_data();
    void jornalLesen();
    void spielerDatei_data();
    void spielerDatei();
};

// Files from earlier evenings must keep opening, so the document may not drift. The writer
// replaces a longer old copy whole; a copy that cannot be written (in a missing folder, over
// a folder) says why and leaves the last one as it was; and nothing is left beside it.
void TstDateien::xmlVorlage()
{
    QTemporaryDir ort;
    const QString pfad = ort.filePath(QStringLiteral("vorlage.xml"));
    QByteArray vorlage;
    for (auto [daten, datei] : {std::pair{turnierListe(), "data/protokoll48.xml"},
                                {ergebnisListeOhneSpiele(), "data/protokoll_ohne_spiele.xml"}}) {
        QVERIFY(XmlProtokoll::dateiSchreiben(pfad, QString(20000, QLatin1Char('x'))));
        QVERIFY(XmlProtokoll::dateiSchreiben(pfad, XmlProtokoll::schreiben(daten)));
        QCOMPARE(QDir(ort.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList{"vorlage.xml"});
        vorlage = dateiInhalt(QFINDTESTDATA(datei));
        const QByteArray geschrieben = dateiInhalt(pfad);
        QCOMPARE(geschrieben.split('\n'), vorlage.split('\n'));
        QCOMPARE(gelesen(geschrieben), XmlProtokoll::schreiben(daten));
        QVERIFY(XmlProtokoll::istProtokoll(geschrieben));
    }
    QVERIFY(QDir(ort.path()).mkdir(QStringLiteral("ordner.xml")));
    for (const char *ziel : {"fehlt/vorlage.xml", "ordner.xml"}) {
        QString fehler;
        QVERIFY(!XmlProtokoll::dateiSchreiben(ort.filePath(QLatin1String(ziel)),
                                              QStringLiteral("neu"), &fehler));
        QVERIFY2(!fehler.isEmpty(), ziel);
    }
    QCOMPARE(QDir(ort.path()).entryList(QDir::Files), QStringList{"vorlage.xml"});
    QCOMPARE(dateiInhalt(pfad), vorlage);
}

void TstDateien::xmlLesen_data()
{
    Faelle::laden("xmllesen.tsv");
}

void TstDateien::xmlLesen()
{
    QFETCH(QByteArray, inhalt);
    QFETCH(QStringList, imText);
    const QString text = gelesen(inhalt);
    for (const QString &teil : imText)
        QVERIFY2(text.contains(teil), qPrintable(text.left(600)));
    QTEST(int(text.count(QLatin1String("<spiel "))), "spiele");
}

// The evening in both forms of the journal.
void TstDateien::jornalVorlage()
{
    for (auto [form, datei] : {std::pair{SkatJornal::Json, QFINDTESTDATA("data/jornal.json")},
                               {SkatJornal::Binaer, QFINDTESTDATA("data/jornal.dat")}}) {
        const QByteArray golden = dateiInhalt(datei);
        // Writing the evening gives the file byte for byte ...
        QTemporaryDir ordner;
        SkatJornal jornal;
        jornal.setPath(ordner.filePath("jornal"));
        jornal.setKopf(QDate(2026, 11, 14), 5, 2);
        for (const JornalEintrag &e : jornalAbend(false))
            jornal.anhaengen(e);
        QVERIFY(jornal.save(form));
        QCOMPARE(dateiInhalt(SkatJornal::dateiPfad(jornal.path(), form)), golden);
        // The type texts are the words' Latin-1 bytes read as UTF-8, as readers expect.
        for (const char *typ : {"normal", "ge\xEF\xBF\xBDndert", "gel\xEF\xBF\xBDscht"})
            QVERIFY2(golden.contains(typ), typ);
        // ... and reading the file replaces whatever the journal held with the evening.
        SkatJornal gelesen;
        gelesen.setPath(QFileInfo(datei).absolutePath() + "/jornal");
        gelesen.anhaengen(jornalAbend(true).first());
        QVERIFY(gelesen.load(form));
        QCOMPARE(gelesen.datum(), QDate(2026, 11, 14));
        QCOMPARE(gelesen.tischNr(), 5);
        QCOMPARE(gelesen.serie(), 2);
        QVERIFY(gelesen.eintraege() == jornalAbend(true) &&
                !(jornalAbend(true) == jornalAbend(false)));
        // The bytes without the file read the same.
        SkatJornal ausBytes;
        QVERIFY(ausBytes.lesen(golden, form));
        QVERIFY(ausBytes.eintraege() == gelesen.eintraege() && ausBytes.serie() == 2);
    }
    // An entry from a stored row: status and both names are passed through, the rest comes
    // from the row.
    const SpielEintrag grand =
        TestProtokoll::zeile("Zeile=2 Spiel=24 Ohne=1 Verloren=96 Spieler3=-96");
    QVERIFY(JornalEintrag::ausSpiel(grand, JornalEintrag::Geaendert, "Bert", "Anna") ==
            jornalAbend(false).at(1));
    const SpielEintrag nullOuvert =
        TestProtokoll::zeile("Zeile=3 Spiel=23 Offen=1 Verloren=92 Spieler4=-92 Reizung=46");
    QVERIFY(JornalEintrag::ausSpiel(nullOuvert, JornalEintrag::Geloescht,
                                    QStringLiteral(u"J\u00FCrgen"),
                                    "Carl") == jornalAbend(false).at(3));
    QCOMPARE(JornalEintrag::spielerSitz(grand), 2);
    QCOMPARE(JornalEintrag::spielerSitz(SpielEintrag()), -1);
}

void TstDateien::jornalLesen_data()
{
    Faelle::laden("jornallesen.tsv");
}

void TstDateien::jornalLesen()
{
    QFETCH(QString, form);
    QFETCH(QByteArray, inhalt);
    QFETCH(QByteArray, ersetzt);
    QFETCH(QByteArray, durch);
    QFETCH(QString, spieler);
    const bool cbor = form == QLatin1String("CBOR");
    const SkatJornal::Form f = cbor ? SkatJornal::Binaer : SkatJornal::Json;
    if (!ersetzt.isEmpty())
        inhalt = Faelle::datei(cbor ? "jornal.dat" : "jornal.json").replace(ersetzt, durch);
    QTemporaryDir ordner;
    const QString basis = ordner.filePath("jornal");
    if (!inhalt.isNull()) {
        QFile datei(SkatJornal::dateiPfad(basis, f));
        QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size());
    }
    SkatJornal jornal;
    jornal.setPath(basis);
    jornal.setKopf(QDate(2025, 3, 1), 8, 3);
    jornal.anhaengen(jornalAbend(false).at(2));
    if (spieler.isNull())
        QTest::ignoreMessage(QtWarningMsg, "Kann Jornaldatei nicht laden.");
    QCOMPARE(jornal.load(f), !spieler.isNull());
    QCOMPARE(jornal.tischNr(), spieler.isNull() ? 8 : 1);
    QCOMPARE(jornal.eintraege().size(), 1);
    QCOMPARE(jornal.eintraege().at(0).spieler, spieler.isNull() ? QString() : spieler);
}

void TstDateien::spielerDatei_data()
{
    Faelle::laden("spielerdatei.tsv");
}

void TstDateien::spielerDatei()
{
    QFETCH(QByteArray, inhalt);
    QTEST(SpielerDatei::namenAusDatei(inhalt), "namen");
    // Each forbidden character once, in the order it first occurs.
    QCOMPARE(SpielerDatei::verboteneZeichen(QStringLiteral("a:b$c@d|e@: (x), 100%")),
             QStringLiteral(":$@|"));
    // A manager's entry "number|name|member|prize skat": only "Ja" is yes, a short entry
    // keeps the defaults, a blank one is none.
    const std::optional<SpielerDatensatz> s = SpielerDatei::ausListenEintrag(" x1 | D@ra: |ja|Ja");
    QVERIFY(s && s->mgldNr == 0 && s->name == QLatin1String("Dra") && !s->mitglied && s->preisskat);
    const std::optional<SpielerDatensatz> kurz = SpielerDatei::ausListenEintrag(" 42 |Carl|Nein");
    QVERIFY(kurz && kurz->mgldNr == 42 && !kurz->mitglied && kurz->preisskat);
    QVERIFY(!SpielerDatei::ausListenEintrag(QStringLiteral("  ")));
}

KARTULO_TEST_MAIN(TstDateien)
#include "tst_dateien.moc"
