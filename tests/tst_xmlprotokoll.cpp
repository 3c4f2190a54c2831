// The XML protocol file: the document of a known list byte for byte against the files in
// data/ and back, damaged and foreign files with the line of the problem, what a file may
// leave out, recognising protocol files, the file writer, and the import into kartulo.db
// with its rollback.

#include "db/protokolldatenbank.h"
#include "helpers/testprotokoll.h"
#include "helpers/testumgebung.h"
#include "sheets/xmlprotokoll.h"

#include <QDir>
#include <QFile>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>

using TestProtokoll::abend;

namespace {

// A tournament list of four with a name of each kind that needs care in XML: "&", quotes,
// angle brackets, umlauts and an apostrophe (which stays as it is in a double-quoted
// attribute). Every cost differs from the others, so a swapped attribute shows.
XmlDaten turnierListe(int anzahlSpiele = 48)
{
    XmlDaten d;
    d.datum = QDate(2024, 5, 3);
    d.tischNr = 5;
    d.serie = 2;
    d.kosten = QStringList{"1.20", "0.60", "1.10", "12.50", "20",  "35",
                           "45",   "0.50", "1.50", "2.50",  "3.50"};
    d.verein = QStringLiteral("Skatclub Grün-Weiß 1896 e.V.");
    d.gruppe = QStringLiteral("Herbst'24");
    d.spiele = abend(anzahlSpiele, 4);
    d.spieler = {{1017, "Anna Bergmann", "Ja", "Ja"},
                 {233, "Jörg \"Jo\" Weiß & Söhne", "Ja", "Nein"},
                 {4, "Carl <Köhler>", "Nein", "Ja"},
                 {1290, "Dora O'Neill", "Ja", "Ja"}};
    return d;
}

// A result list of three that has just been started: no games yet, costs as typed with a
// decimal comma.
XmlDaten ergebnisListeOhneSpiele()
{
    XmlDaten d;
    d.datum = QDate(2024, 12, 31);
    d.tischNr = 12;
    d.serie = 1;
    d.spielAnzahl = 36;
    d.modus = 1;
    d.kosten = QStringList{"1,5", "1", "2", "10", "50", "30", "40", "0", "1,5", "2,5", "3"};
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

QByteArray dateiInhalt(const QString &pfad)
{
    QFile datei(pfad);
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray("<nicht lesbar>");
}

// Every table of kartulo.db the import touches, row by row, in storage order.
QStringList tabellen(const QSqlDatabase &db)
{
    QStringList zeilen;
    for (const char *name : {"SpielListe", "Settings", "Teilnehmer", "Spieler"}) {
        QSqlQuery query(db);
        query.exec(QStringLiteral("SELECT * FROM ") + QLatin1String(name));
        while (query.next()) {
            QStringList werte{QLatin1String(name)};
            for (int i = 0; i < query.record().count(); ++i)
                werte << query.value(i).toString();
            zeilen << werte.join(QLatin1Char('|'));
        }
    }
    return zeilen;
}

} // namespace

Q_DECLARE_METATYPE(XmlDaten)

class TstXmlProtokoll : public QObject
{
    Q_OBJECT

private slots:
    void vorlage_data();
    void vorlage();
    void lesen_data();
    void lesen();
    void istProtokoll_data();
    void istProtokoll();
    void dateiSchreibenFehlschlag();
    void ersetzen_data();
    void ersetzen();
};

void TstXmlProtokoll::vorlage_data()
{
    QTest::addColumn<XmlDaten>("daten");
    QTest::addColumn<QString>("datei");

    QTest::newRow("Turnierliste, 48 Spiele") << turnierListe() << "data/protokoll48.xml";
    QTest::newRow("Ergebnisliste ohne Spiele")
        << ergebnisListeOhneSpiele() << "data/protokoll_ohne_spiele.xml";
}

// The files in data/ were checked by hand: attribute names and order, "ja"/"nein", the
// date, the escaped name characters, UTF-8 umlauts and the empty <spiele/>. Files from
// earlier evenings must keep opening, so the document may not drift. The file is the text
// as UTF-8 plus one line end.
void TstXmlProtokoll::vorlage()
{
    QFETCH(XmlDaten, daten);
    QFETCH(QString, datei);
    const QByteArray erwartet = dateiInhalt(QFINDTESTDATA(datei));

    // The writer replaces a longer old copy whole and leaves no temporary file beside it.
    QTemporaryDir ort;
    const QString pfad = ort.filePath(QStringLiteral("vorlage.xml"));
    QVERIFY(XmlProtokoll::dateiSchreiben(pfad, QString(20000, QLatin1Char('x'))));
    QVERIFY(XmlProtokoll::dateiSchreiben(pfad, XmlProtokoll::schreiben(daten)));
    QCOMPARE(QDir(ort.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{"vorlage.xml"});
    const QByteArray geschrieben = dateiInhalt(pfad);
    // As lines first, so that a difference is shown where it is.
    QCOMPARE(geschrieben.split('\n'), erwartet.split('\n'));
    QCOMPARE(geschrieben, erwartet);
    // Read back, the file gives the same list, names and every game included.
    QCOMPARE(gelesen(geschrieben), XmlProtokoll::schreiben(daten));
}

void TstXmlProtokoll::lesen_data()
{
    QTest::addColumn<QByteArray>("inhalt");
    QTest::addColumn<QStringList>("imText");

    // A damaged or foreign file is refused with the line of the problem.
    QTest::newRow("leere Datei") << QByteArray() << QStringList{"Zeile 1: ", "leer"};
    QTest::newRow("Tag nicht geschlossen")
        << QByteArray("<Kartulo>\n<spiele>\n<spiel nr=\"1\">\n</spiele>\n</Kartulo>\n")
        << QStringList{"Zeile 4: ", "Opening and ending tag mismatch"};
    // The 48-game file cut in the middle of the row of game 19 (line 26).
    const QByteArray voll = dateiInhalt(QFINDTESTDATA("data/protokoll48.xml"));
    const QByteArray abgeschnitten = voll.left(voll.indexOf("<spiel nr=\"19\"") + 50);
    QTest::newRow("abgeschnitten") << abgeschnitten << QStringList{"Zeile 26: ", "bricht mitten"};
    QTest::newRow("fremde Wurzel")
        << QByteArray("<?xml version=\"1.0\"?>\n<Protokoll datum=\"03-05-2024\">\n</Protokoll>\n")
        << QStringList{"Zeile 2: ", "Keine Kartulo-Protokolldatei"};
    QTest::newRow("gewonnen abc im dritten Spiel")
        << QByteArray("<Kartulo>\n<spiele>\n<spiel/>\n<spiel/>\n<spiel gewonnen=\"abc\"/>")
        << QStringList{"Zeile 5: ", "\"gewonnen\" von <spiel> ist keine Zahl: \"abc\""};

    // What a file leaves out takes its default; written again, the document shows it.
    QTest::newRow("nur die Wurzel")
        << QByteArray("<Kartulo/>")
        << QStringList{"<Kartulo datum=\"\" tischnr=\"0\" serie=\"0\" modus=\"Turnier\" "
                       "spielanzahl=\"48\" kartengeld=\"0\" verlsp1-5=\"0\"",
                       "platz4=\"0\" verein=\"\" gruppe=\"\">"};
    QTest::newRow("Spieler 2 ohne Namen")
        << QByteArray("<Kartulo><spieler1 name=\"Anna\"/><spieler2 mgldnr=\"7\" mitglied=\"Ja\"/>"
                      "</Kartulo>")
        << QStringList{
               "<spieler1 mgldnr=\"0\" name=\"Anna\" mitglied=\"Nein\" preisskat=\"Nein\"/>",
               "<spieler2 mgldnr=\"7\" name=\"Spieler 2\" mitglied=\"Ja\" "
               "preisskat=\"Nein\"/>"};
    // A game without a number is the one after the previous game.
    QTest::newRow("Spiele ohne Nummer")
        << QByteArray("<Kartulo><spiele><spiel spiel=\"12\"/><spiel nr=\"7\"/><spiel/>"
                      "</spiele></Kartulo>")
        << QStringList{"<spiel nr=\"1\" spiel=\"12\" mit=\"0\" ohne=\"0\" hand=\"nein\"",
                       "<spiel nr=\"7\" spiel=\"0\"", "<spiel nr=\"8\" spiel=\"0\"",
                       "eingepasst=\"nein\" reizung=\"0\"/>"};
}

void TstXmlProtokoll::lesen()
{
    QFETCH(QByteArray, inhalt);
    QFETCH(QStringList, imText);
    const QString text = gelesen(inhalt);
    for (const QString &teil : imText)
        QVERIFY2(text.contains(teil), qPrintable(text));
}

void TstXmlProtokoll::istProtokoll_data()
{
    QTest::addColumn<QByteArray>("inhalt");
    QTest::addColumn<bool>("erwartet");

    QTest::newRow("geschriebenes Protokoll")
        << XmlProtokoll::schreiben(turnierListe(2)).toUtf8() << true;
    QTest::newRow("andere XML-Datei")
        << QByteArray("<?xml version=\"1.0\"?>\n<Protokoll name=\"Kartulo\"/>") << false;
    QTest::newRow("anderer Name mit gleichem Anfang")
        << QByteArray("<KartuloListe datum=\"\"/>") << false;
}

void TstXmlProtokoll::istProtokoll()
{
    QFETCH(QByteArray, inhalt);
    QTEST(XmlProtokoll::istProtokoll(inhalt), "erwartet");
}

// A backup that cannot be written leaves its last copy as it was and nothing beside it.
void TstXmlProtokoll::dateiSchreibenFehlschlag()
{
    QTemporaryDir ort;
    const QString altPfad = ort.filePath(QStringLiteral("kopie.xml"));
    QVERIFY(XmlProtokoll::dateiSchreiben(altPfad, QStringLiteral("alt")));
    QVERIFY(!XmlProtokoll::dateiSchreiben(ort.filePath(QStringLiteral("fehlt/kopie.xml")),
                                          XmlProtokoll::schreiben(turnierListe())));
    QCOMPARE(dateiInhalt(altPfad), QByteArray("alt\n"));
    QCOMPARE(QDir(ort.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{"kopie.xml"});
}

void TstXmlProtokoll::ersetzen_data()
{
    QTest::addColumn<QString>("sabotage");

    QTest::newRow("erfolgreich") << QString();
    QTest::newRow("letztes Spiel abgelehnt")
        << "CREATE TRIGGER sperre BEFORE INSERT ON SpielListe WHEN NEW.Zeile = 48 BEGIN SELECT "
           "RAISE(ABORT, 'Spiel gesperrt'); END";
}

// The import replaces the running list whole, or, when a statement fails, not at all; the
// player registry is never touched.
void TstXmlProtokoll::ersetzen()
{
    QFETCH(QString, sabotage);
    QTemporaryDir ort;
    ProtokollDatenbank db(ort.path());
    QCOMPARE(db.oeffnen(), ProtokollDatenbank::Zustand::Neu);
    XmlDaten alt = ergebnisListeOhneSpiele();
    alt.spiele = abend(3, 3);
    QVERIFY(db.protokollErsetzen(alt));
    db.spielerEintragen(1, QStringLiteral("Registriert"), true, false);
    if (!sabotage.isEmpty())
        QVERIFY(QSqlQuery(db.verbindung()).exec(sabotage));
    const QStringList vorher = tabellen(db.verbindung());

    const XmlDaten daten = turnierListe();
    QString fehler;
    const bool ersetzt = db.protokollErsetzen(daten, &fehler);
    QCOMPARE(ersetzt, sabotage.isEmpty());
    if (!ersetzt) {
        QVERIFY2(fehler.contains(QLatin1String("Spiel gesperrt")), qPrintable(fehler));
        QCOMPARE(tabellen(db.verbindung()), vorher);
        // No transaction is left open, which would swallow every later entry.
        QVERIFY(db.verbindung().transaction());
        QVERIFY(db.verbindung().rollback());
        return;
    }
    QCOMPARE(db.spiele(), daten.spiele);
    QCOMPARE(tabellen(db.verbindung()).mid(daten.spiele.size()),
             (QStringList{"Settings|1|5|2|48|0|0|2024-05-03|Herbst'24",
                          "Teilnehmer|1017|Anna Bergmann|Ja|Ja",
                          "Teilnehmer|233|Jörg \"Jo\" Weiß & Söhne|Ja|Nein",
                          "Teilnehmer|4|Carl <Köhler>|Nein|Ja",
                          "Teilnehmer|1290|Dora O'Neill|Ja|Ja", vorher.last()}));
}

KARTULO_TEST_MAIN(TstXmlProtokoll)
#include "tst_xmlprotokoll.moc"
