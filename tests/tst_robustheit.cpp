// Bad input at every place that takes text: empty, a megabyte, bytes that are
// no UTF-8, control characters, and text that looks like a statement or a
// message of its own. docs/robustness.md lists the places with their tests.

#include "app/files/dockfileview.h"
#include "app/mainwindow.h"
#include "app/players/namensdelegate.h"
#include "core/db/protokolldatenbank.h"
#include "core/files/xmlprotokoll.h"
#include "helpers/fensterhilfe.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"

#include <QSqlQuery>
#include <QtWidgets>

using namespace Fenster;

namespace {

const QString Einschleusung = QStringLiteral("x'; DROP TABLE SpielListe; --");
const QString Steuerzeichen = QStringLiteral("A") + QChar(u'\0') + QStringLiteral("B\x1b\t\r\nC");
const QString Megabyte(1 << 20, QLatin1Char('x'));
// 39 letters and a playing card: a field of 40 keeps half of the card.
const QString Karte = QString(39, QLatin1Char('a')) + QStringLiteral(u"\U0001F0A1");

// One column of a table as text, read through the window's connection.
QStringList lesen(const QString &abfrage)
{
    QStringList werte;
    QSqlQuery query(QSqlDatabase::database(ProtokollDatenbank::verbindungsName()));
    query.exec(abfrage);
    while (query.next())
        werte << query.value(0).toString();
    return werte;
}

} // namespace

class TstRobustheit : public QObject
{
    Q_OBJECT

private slots:
    void init() { TestUmgebung::allesLoeschen(); }
    void anweisungen_data();
    void anweisungen();
    void neueNamen_data();
    void neueNamen();
    void teilnehmerTabelle_data();
    void teilnehmerTabelle();
    void spielerDatei_data();
    void spielerDatei();
    void xmlDatei_data();
    void xmlDatei();
    void langeListe();
};

void TstRobustheit::anweisungen_data()
{
    QTest::addColumn<QString>("gruppe");
    QTest::addColumn<QString>("gespeichert");
    QTest::addColumn<QString>("name");
    QTest::newRow("leer") << ""
                          << ""
                          << "";
    QTest::newRow("1 MB") << Megabyte << Megabyte << QString(40, QLatin1Char('x'));
    QTest::newRow("halbes Zeichen")
        << QString(QChar(0xD800)) + "x" << QString(QChar(0xFFFD)) + "x" << QString();
    QTest::newRow("Steuerzeichen")
        << Steuerzeichen << QString(Steuerzeichen).remove(QChar(u'\0')) << "A B  C";
    QTest::newRow("Einschleusung") << Einschleusung << Einschleusung << Einschleusung;
}

// Group ids and player names are pasted into literal statements: a quote is
// doubled and a NUL, where SQLite would end the statement, is left out. Names
// reach the store cleaned (at most 40 characters, no control characters).
void TstRobustheit::anweisungen()
{
    QFETCH(QString, gruppe);
    QFETCH(QString, name);
    QDir().mkpath(TestUmgebung::datenVerzeichnis());
    ProtokollDatenbank db(TestUmgebung::datenVerzeichnis());
    QCOMPARE(db.oeffnen(), ProtokollDatenbank::Zustand::Neu);
    ListenKopf kopf;
    kopf.gruppe = gruppe;
    QVERIFY2(db.kopfSchreiben(kopf), qPrintable(db.fehler()));
    QTEST(db.kopfLesen().value_or(ListenKopf()).gruppe, "gespeichert");
    if (!name.isEmpty()) {
        const int nummer = db.spielerHinzufuegen({0, name, true, true});
        QVERIFY(nummer > 0);
        QCOMPARE(db.spielerHinzufuegen({0, name, true, true}), nummer);
        QCOMPARE(db.spielerNamen(), QStringList{name});
    }
    QCOMPARE(db.verbindung().tables().size(), 4);
}

void TstRobustheit::neueNamen_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("tisch");
    QTest::addColumn<QString>("teilnehmer");
    QTest::addColumn<int>("tischNr");
    QTest::newRow("leer") << "Eva"
                          << ""
                          << "Eva" << 0;
    QTest::newRow("1 MB") << Megabyte << Megabyte << QString(40, QLatin1Char('x')) << 0;
    QTest::newRow("halbes Zeichen") << Karte << "7" << QString(39, QLatin1Char('a')) << 7;
    QTest::newRow("Steuerzeichen") << Steuerzeichen << "7\t"
                                   << "A B    C" << 7;
    QTest::newRow("Einschleusung")
        << Einschleusung << "7'; DROP TABLE Settings; --" << Einschleusung << 0;
}

// The "Neu" page: a name is cut by its field and cleaned, then registered and
// seated; a table number that is no number is table 0.
void TstRobustheit::neueNamen()
{
    QFETCH(QString, name);
    QFETCH(QString, tisch);
    QVERIFY(TestProtokoll::anlegen(4, 48));
    MeldungsBeantworter antworten;
    MainWindow fenster;
    kind<QAction>(&fenster, "actionNeu")->trigger();
    const QStringList namen{name, "Bernd", "Clara"};
    for (int i = 0; i < namen.size(); ++i)
        fenster.findChild<QLineEdit *>(QStringLiteral("leNeuSpieler%1").arg(i + 1))
            ->setText(namen.at(i));
    kind<QLineEdit>(&fenster, "leNeuTischNr")->setText(tisch);
    kind<QLineEdit>(&fenster, "leNeuSerie")->setText("2");
    klick(&fenster, "pbOk");
    QCOMPARE(antworten.texte, QStringList{"Neues Protokoll?"});
    QTEST(lesen("SELECT Name FROM Teilnehmer").value(0), "teilnehmer");
    QTEST(lesen("SELECT Name FROM Spieler WHERE MgldNr = 1").value(0), "teilnehmer");
    QTEST(kind<QSpinBox>(&fenster, "spbTischNr")->value(), "tischNr");
    QCOMPARE(TestProtokoll::zeilen("SpielListe"), 0);
}

void TstRobustheit::teilnehmerTabelle_data()
{
    QTest::addColumn<QString>("eingabe");
    QTest::addColumn<QString>("name"); // null: refused, the old name stays
    QTest::newRow("leer") << ""
                          << "";
    QTest::newRow("1 MB") << Megabyte << QString(40, QLatin1Char('x'));
    QTest::newRow("halbes Zeichen") << Karte << QString(39, QLatin1Char('a'));
    QTest::newRow("Steuerzeichen") << Steuerzeichen << "A B    C";
    QTest::newRow("Trennzeichen") << "A:B" << QString();
    QTest::newRow("Einschleusung") << Einschleusung << Einschleusung;
}

// A name typed into the participants table is cleaned as on the "Neu" page;
// a separator of the network texts is refused with a warning.
void TstRobustheit::teilnehmerTabelle()
{
    QFETCH(QString, eingabe);
    QFETCH(QString, name);
    MeldungsBeantworter antworten;
    QStandardItemModel modell(1, 2);
    modell.setData(modell.index(0, 1), "Anna");
    QLineEdit feld(eingabe);
    NamensDelegate().setModelData(&feld, &modell, modell.index(0, 1));
    QCOMPARE(modell.index(0, 1).data().toString(), name.isNull() ? "Anna" : name);
    QCOMPARE(antworten.texte,
             name.isNull() ? QStringList{"Das Zeichen \":\" ist in Spielernamen nicht erlaubt."}
                           : QStringList());
}

void TstRobustheit::spielerDatei_data()
{
    QTest::addColumn<QByteArray>("inhalt");
    QTest::addColumn<QStringList>("namen");
    QTest::newRow("leer") << QByteArray() << QStringList();
    QTest::newRow("1 MB") << Megabyte.toUtf8() << QStringList{QString(40, QLatin1Char('x'))};
    QTest::newRow("kein UTF-8") << QByteArray("J\xf6rg\nAnna\xff")
                                << QStringList{QStringLiteral(u"Anna\uFFFD"),
                                               QStringLiteral(u"J\uFFFDrg")};
    QTest::newRow("Steuerzeichen")
        << QByteArray("\x1b[31mAnna\tBerg\n") << QStringList{"[31mAnna Berg"};
    QTest::newRow("Einschleusung")
        << Einschleusung.toUtf8() + "\nA:B|C@D$E" << QStringList{"ABCDE", Einschleusung};
}

// "KartuloSpieler.txt" replaces the registry, an empty file too, with the
// names cleaned; NUL bytes, line ends and separators are in tst_dateien.
void TstRobustheit::spielerDatei()
{
    QFETCH(QByteArray, inhalt);
    QVERIFY(TestProtokoll::anlegen(4, 48));
    QFile datei(TestUmgebung::datenVerzeichnis() + "/../KartuloSpieler.txt");
    QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size());
    datei.close();
    MainWindow fenster;
    klick(&fenster, "pbSpielerAusTextdatei");
    QTEST(lesen("SELECT Name FROM Spieler"), "namen");
}

void TstRobustheit::xmlDatei_data()
{
    QTest::addColumn<QByteArray>("inhalt");
    QTest::addColumn<QString>("gelesen");
    const auto spieler = [](const QByteArray &name, const QByteArray &kopf = {}) -> QByteArray {
        return kopf + "<Kartulo><spieler1 name=\"" + name + "\"/></Kartulo>";
    };
    QByteArray lawine = "<!DOCTYPE Kartulo [<!ENTITY e0 \"xxxxxxxxxx\">";
    for (int i = 1; i < 10; ++i)
        lawine += QStringLiteral("<!ENTITY e%1 \"%2\">")
                      .arg(i)
                      .arg(QStringLiteral("&e%1;").arg(i - 1).repeated(10))
                      .toUtf8();
    lawine += "]>";
    QTest::newRow("leer") << QByteArray(" \r\n") << "Zeile 1: Die Datei ist leer.";
    QTest::newRow("1 MB Name") << spieler(Megabyte.toUtf8())
                               << "Spieler: " + QString(40, QLatin1Char('x')) + ";";
    QTest::newRow("1 MB Spiele") << "<Kartulo><spiele>" + QByteArray("<spiel/>").repeated(130000) +
                                        "</spiele></Kartulo>"
                                 << "Spiele: 130000";
    QTest::newRow("kein UTF-8") << spieler("J\xf6rg")
                                << "Zeile 1: Die Datei ist kein gueltiges XML";
    QTest::newRow("Latin-1 angesagt")
        << spieler("J\xf6rg", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>")
        << QStringLiteral(u"Spieler: J\u00F6rg;");
    QTest::newRow("NUL-Byte") << QByteArray("<Kartulo>\0</Kartulo>", 20)
                              << "Zeile 1: Die Datei ist kein gueltiges XML";
    QTest::newRow("Verweis auf ESC") << spieler("A&#27;B") << "(Invalid character reference.)";
    QTest::newRow("Tabulator, Zeilenende")
        << spieler("Anna&#9;Berg&#13;&#10;") << "Spieler: Anna Berg;";
    QTest::newRow("Entitaet") << spieler("&n;", "<!DOCTYPE Kartulo [<!ENTITY n \"Anna\">]>")
                              << "Spieler: Anna;";
    QTest::newRow("Entitaetenlawine") << spieler("&e9;", lawine) << "entity expansion limit";
    QTest::newRow("externe Entitaet")
        << spieler("&n;", "<!DOCTYPE Kartulo [<!ENTITY n SYSTEM \"file:///etc/passwd\">]>")
        << "Reference to external entity";
    QTest::newRow("Trennzeichen")
        << QByteArray("<Kartulo gruppe=\"A:B$C@D\"><spieler1 name=\"An|na@x$y:z\"/></Kartulo>")
        << "Spieler: Annaxyz; Gruppe: ABCD;";
    QTest::newRow("Einschleusung")
        << spieler("x&apos;; DROP TABLE SpielListe; --") << "Spieler: " + Einschleusung + ";";
}

// A protocol file is read whole or refused with its line; names and group
// come cleaned, entities of the file itself are expanded within a limit.
// Refused files leave the list as it was (tst_dateifenster).
void TstRobustheit::xmlDatei()
{
    QFETCH(QByteArray, inhalt);
    QFETCH(QString, gelesen);
    const auto ergebnis = XmlProtokoll::lesen(inhalt);
    QString text;
    if (const auto *fehler = std::get_if<XmlFehler>(&ergebnis)) {
        text = QStringLiteral("Zeile %1: %2").arg(fehler->zeile).arg(fehler->text);
    } else {
        const XmlDaten &daten = std::get<XmlDaten>(ergebnis);
        QStringList namen;
        for (const Teilnehmer &t : daten.spieler)
            namen << t.name;
        text = QStringLiteral("Spieler: %1; Gruppe: %2; Spiele: %3")
                   .arg(namen.join(QLatin1Char(',')), daten.kopf.gruppe)
                   .arg(daten.spiele.size());
    }
    QVERIFY2(text.contains(gelesen), qPrintable(text.left(200)));
}

// A file of 1 MB may hold 130 000 games. The overview takes them row by row;
// a cell filled into an empty row relaid the whole table out, which took
// minutes for such a file, and again at every start.
void TstRobustheit::langeListe()
{
    QVERIFY(TestProtokoll::anlegen(4, 48));
    XmlDaten daten;
    daten.spieler = {{1, "A", "Ja", "Ja"}, {2, "B", "Ja", "Ja"}, {3, "C", "Ja", "Ja"}};
    daten.spiele = TestProtokoll::abend(300, 3);
    QVERIFY(XmlProtokoll::dateiSchreiben(TestUmgebung::datenVerzeichnis() + "/lang.xml",
                                         XmlProtokoll::schreiben(daten)));
    MeldungsBeantworter antworten;
    MainWindow fenster;
    QAbstractItemModel *uebersicht = kind<QTableView>(&fenster, "tblViewUebersicht")->model();
    QSignalSpy neuAusgelegt(uebersicht, &QAbstractItemModel::layoutChanged);
    kind<QAction>(&fenster, "actionLaden")->trigger();
    klick(fenster.findChild<DockFileView *>(), "pbOk");
    QCOMPARE(uebersicht->rowCount(), 300);
    QCOMPARE(uebersicht->index(299, 0).data().toString(), QStringLiteral("300"));
    QCOMPARE(neuAusgelegt.count(), 0);
}

KARTULO_TEST_MAIN(TstRobustheit)
#include "tst_robustheit.moc"
