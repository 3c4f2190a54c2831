// Participants and registry through the window: seat moves and the dealer,
// switching between three and four players, loading the player file and
// manager lists, registering one player, and names that are refused.

#include "app/mainwindow.h"
#include "app/players/namensdelegate.h"
#include "helpers/fensterhilfe.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"

#include <QDir>
#include <QLineEdit>
#include <QListView>
#include <QSpinBox>
#include <QSqlQuery>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QTableView>
#include <QToolButton>

using namespace TestProtokoll;
using namespace Fenster;

namespace {

QStringList teilnehmerNamen(MainWindow &fenster)
{
    const QAbstractItemModel *model = fenster.findChild<QTableView *>("tblViewSpieler")->model();
    QStringList namen;
    for (int zeile = 0; zeile < model->rowCount(); ++zeile)
        namen << model->index(zeile, 1).data().toString();
    return namen;
}

QStringList registerNamen()
{
    QStringList namen;
    QSqlDatabase db = QSqlDatabase::database(QStringLiteral("kartulo_connection_name"));
    QSqlQuery query(db);
    query.exec(QStringLiteral("SELECT MgldNr, Name, Mitglied, Preisskat FROM Spieler"));
    while (query.next())
        namen << QStringLiteral("%1 %2 %3 %4")
                     .arg(query.value(0).toInt())
                     .arg(query.value(1).toString())
                     .arg(query.value(2).toInt())
                     .arg(query.value(3).toInt());
    return namen;
}

void dateiSchreiben(const QString &pfad, const QByteArray &inhalt)
{
    QDir().mkpath(QFileInfo(pfad).path());
    QFile datei(pfad);
    QVERIFY(datei.open(QIODevice::WriteOnly));
    datei.write(inhalt);
}

} // namespace

class TstSitzordnung : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void sitzWechsel_data();
    void sitzWechsel();
    void listenTyp_data();
    void listenTyp();
    void spielerDatei_data();
    void spielerDatei();
    void managerListe();
    void einSpielerDazu_data();
    void einSpielerDazu();
    void verboteneNamen_data();
    void verboteneNamen();
    void registerInSpielerfelder();
};

void TstSitzordnung::init()
{
    TestUmgebung::allesLoeschen();
    QFile::remove(TestUmgebung::heimVerzeichnis() + "/Documents/KartuloSpieler.txt");
    QFile::remove(TestUmgebung::heimVerzeichnis() + "/Downloads/KartuloSpieler.txt");
}

void TstSitzordnung::sitzWechsel_data()
{
    QTest::addColumn<int>("zeile");
    QTest::addColumn<bool>("hoch");
    QTest::addColumn<QStringList>("namen");
    QTest::addColumn<int>("auswahl");
    QTest::newRow("erster hoch") << 0 << true << QStringList{"Anna", "Bernd", "Clara", "Dora"} << 0;
    QTest::newRow("letzter runter")
        << 3 << false << QStringList{"Anna", "Bernd", "Clara", "Dora"} << 3;
    QTest::newRow("zweiter hoch") << 1 << true << QStringList{"Bernd", "Anna", "Clara", "Dora"}
                                  << 0;
    QTest::newRow("dritter runter")
        << 2 << false << QStringList{"Anna", "Bernd", "Dora", "Clara"} << 3;
}

void TstSitzordnung::sitzWechsel()
{
    QFETCH(int, zeile);
    QFETCH(bool, hoch);
    QFETCH(QStringList, namen);
    QFETCH(int, auswahl);
    QVERIFY(anlegen(4, 48));
    MainWindow fenster;
    MeldungsBeantworter antworten;
    auto *tabelle = fenster.findChild<QTableView *>("tblViewSpieler");
    tabelle->setCurrentIndex(tabelle->model()->index(zeile, 1));
    if (hoch)
        fenster.onUp();
    else
        fenster.onDown();
    QCOMPARE(teilnehmerNamen(fenster), namen);
    QCOMPARE(spalte("Teilnehmer", "MgldNr").size(), 4);
    QCOMPARE(tabelle->currentIndex().row(), auswahl);
    if (zeile != auswahl) {
        QCOMPARE(fenster.statusBar()->currentMessage(),
                 QStringLiteral("Geber %1").arg(namen.first()));
        QCOMPARE(fenster.findChild<QToolButton *>("tbSpieler1")->text(), namen.first());
    }
    // Re-seating is announced on the status line only.
    QVERIFY(antworten.titel.isEmpty());
}

void TstSitzordnung::listenTyp_data()
{
    QTest::addColumn<int>("modus");
    QTest::addColumn<int>("spiele3");
    QTest::addColumn<int>("spiele4");
    QTest::newRow("Turnier") << 0 << 36 << 48;
    QTest::newRow("Ergebnis") << 1 << 10 << 10;
    QTest::newRow("Bierlachs") << 2 << 10 << 10;
}

void TstSitzordnung::listenTyp()
{
    QFETCH(int, modus);
    QVERIFY(anlegen(4, 48, modus));
    MainWindow fenster;
    auto *anzahl = fenster.findChild<QSpinBox *>("spbSpielAnzahl");
    klick(&fenster, "tb3erListe");
    QCOMPARE(teilnehmerNamen(fenster), QStringList({"Anna", "Bernd", "Clara"}));
    QCOMPARE(zeilen("Teilnehmer"), 3);
    QTEST(anzahl->value(), "spiele3");
    QVERIFY(fenster.findChild<QToolButton *>("tbSpieler4")->isHidden());
    QVERIFY(fenster.findChild<QTableView *>("tblViewUebersicht")->isColumnHidden(15));

    klick(&fenster, "tb4erListe");
    QCOMPARE(teilnehmerNamen(fenster), QStringList({"Anna", "Bernd", "Clara", ""}));
    QCOMPARE(spalte("Teilnehmer", "MgldNr"), QList<int>({100, 101, 102, 4}));
    QTEST(anzahl->value(), "spiele4");
    QVERIFY(!fenster.findChild<QToolButton *>("tbSpieler4")->isHidden());
    QVERIFY(!fenster.findChild<QTableView *>("tblViewUebersicht")->isColumnHidden(15));
    const QAbstractItemModel *model = fenster.findChild<QTableView *>("tblViewSpieler")->model();
    QCOMPARE(model->index(3, 2).data().toString(), QStringLiteral("Ja"));
    QCOMPARE(model->index(3, 3).data().toString(), QStringLiteral("Ja"));
}

void TstSitzordnung::spielerDatei_data()
{
    QTest::addColumn<QString>("ordner");
    QTest::addColumn<QByteArray>("inhalt");
    QTest::addColumn<QStringList>("register");
    QTest::newRow("Dokumente") << "Documents" << QByteArray("b\nA\na\n")
                               << QStringList{"100 A 1 1", "101 a 1 1", "102 b 1 1"};
    QTest::newRow("Downloads, CRLF und BOM")
        << "Downloads" << QByteArray("\xEF\xBB\xBFJürgen\r\n\r\nO'Neill\r\n")
        << QStringList{"100 Jürgen 1 1", "101 O'Neill 1 1"};
}

void TstSitzordnung::spielerDatei()
{
    QFETCH(QString, ordner);
    QFETCH(QByteArray, inhalt);
    QVERIFY(anlegen(3, 36));
    dateiSchreiben(TestUmgebung::heimVerzeichnis() + "/" + ordner + "/KartuloSpieler.txt", inhalt);
    MainWindow fenster;
    fenster.spielerAusTextDateiLaden();
    QTEST(registerNamen(), "register");
    auto *liste = fenster.findChild<QListView *>("lvRegistrierteSpieler");
    auto *model = qobject_cast<QStandardItemModel *>(liste->model());
    QCOMPARE(model->rowCount(), registerNamen().size());
    QCOMPARE(model->horizontalHeaderItem(0)->text(), QStringLiteral("Vorname Nachname"));
}

void TstSitzordnung::managerListe()
{
    QVERIFY(anlegen(3, 36));
    MainWindow fenster;
    fenster.ladeSpielerListe({});
    QCOMPARE(zeilen("Spieler"), 3);
    fenster.ladeSpielerListe({"7|Eva|Ja|Nein", "", "8|Fritz|ja|Ja", "x|Gerd|Ja|Ja"});
    QCOMPARE(registerNamen(), QStringList({"7 Eva 1 0", "8 Fritz 0 1", "0 Gerd 1 1"}));
}

void TstSitzordnung::einSpielerDazu_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("nummer");
    QTest::addColumn<int>("anzahl");
    QTest::newRow("bekannt") << "5|Bernd|Ja|Ja" << 101 << 3;
    QTest::newRow("Nummer frei") << "5|Eva|Ja|Nein" << 5 << 4;
    QTest::newRow("Nummer besetzt") << "101|Eva|Ja|Ja" << 103 << 4;
    QTest::newRow("ohne Nummer") << "0|O'Brien|Nein|Ja" << 1 << 4;
}

void TstSitzordnung::einSpielerDazu()
{
    QFETCH(QString, text);
    QVERIFY(anlegen(3, 36));
    QVERIFY(sql({"INSERT INTO Spieler VALUES (102, 'Zoe', 1, 1)"}));
    MainWindow fenster;
    QTEST(fenster.spielerHinzufuegen(text), "nummer");
    QFETCH(int, anzahl);
    QCOMPARE(zeilen("Spieler"), anzahl + 1);
}

void TstSitzordnung::verboteneNamen_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("zeichen");
    QTest::newRow("Strich") << "Anna|B"
                            << "|";
    QTest::newRow("At") << "a@b"
                        << "@";
    QTest::newRow("Dollar") << "Geld$"
                            << "$";
    QTest::newRow("Doppelpunkt") << "Dr: X"
                                 << ":";
    QTest::newRow("erlaubt") << "O'Hara-Müller"
                             << "";
}

void TstSitzordnung::verboteneNamen()
{
    QFETCH(QString, name);
    QFETCH(QString, zeichen);
    QStandardItemModel model(1, 2);
    model.setData(model.index(0, 1), QStringLiteral("alt"));
    NamensDelegate delegate;
    QWidget eltern;
    QStyleOptionViewItem option;
    QWidget *editor = delegate.createEditor(&eltern, option, model.index(0, 1));
    qobject_cast<QLineEdit *>(editor)->setText(name);
    MeldungsBeantworter antworten;
    delegate.setModelData(editor, &model, model.index(0, 1));
    if (zeichen.isEmpty()) {
        QVERIFY(antworten.titel.isEmpty());
        QCOMPARE(model.index(0, 1).data().toString(), name);
    } else {
        QCOMPARE(antworten.titel, QStringList{"WARNUNG"});
        QVERIFY(antworten.texte.first().contains("\"" + zeichen + "\""));
        QCOMPARE(model.index(0, 1).data().toString(), QStringLiteral("alt"));
    }
}

void TstSitzordnung::registerInSpielerfelder()
{
    QVERIFY(anlegen(4, 48));
    MainWindow fenster;
    fenster.ladeSpielerListe({"1|Eva|Ja|Ja", "2|Fritz|Ja|Ja"});
    auto *liste = fenster.findChild<QListView *>("lvRegistrierteSpieler");
    fenster.onSpielerDoubleClicked(liste->model()->index(1, 0));
    fenster.onSpielerDoubleClicked(liste->model()->index(1, 0));
    fenster.onSpielerDoubleClicked(liste->model()->index(0, 0));
    QCOMPARE(fenster.findChild<QLineEdit *>("leNeuSpieler1")->text(), QStringLiteral("Fritz"));
    QCOMPARE(fenster.findChild<QLineEdit *>("leNeuSpieler2")->text(), QStringLiteral("Eva"));
    QCOMPARE(fenster.findChild<QLineEdit *>("leNeuSpieler3")->text(), QString());
}

KARTULO_TEST_MAIN(TstSitzordnung)
#include "tst_sitzordnung.moc"
