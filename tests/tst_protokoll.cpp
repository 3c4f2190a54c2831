// The header of a list through the window: a new protocol from the "Neu" page
// to the start of the series, group id, list name and standings lines; the
// seats with three or four players; the registry filled from the player file,
// a manager's list or a double click, and the names refused; the play modes
// with their docks, the time limit across a restart and a Bierlachs evening.

#include "app/mainwindow.h"
#include "app/players/namensdelegate.h"
#include "helpers/fensterhilfe.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"

#include <QSqlQuery>
#include <QtWidgets>

using namespace TestProtokoll;
using namespace Fenster;

namespace {

// A running 4-player list of table 5 with one game entered.
void laufendeListe()
{
    QVERIFY(anlegen(4, 48, 0, 5));
    QVERIFY(sql({"INSERT INTO SpielListe (Zeile, Spiel, Spieler2) VALUES (1, 12, 24)"}));
}

// The participants table as the window shows it, "number name" per seat.
QStringList teilnehmer(MainWindow &fenster)
{
    const QAbstractItemModel *model = fenster.findChild<QTableView *>("tblViewSpieler")->model();
    QStringList namen;
    for (int zeile = 0; zeile < model->rowCount(); ++zeile)
        namen << QStringLiteral("%1 %2")
                     .arg(model->index(zeile, 0).data().toInt())
                     .arg(model->index(zeile, 1).data().toString());
    return namen;
}

QStringList registerNamen()
{
    QStringList namen;
    QSqlQuery query(QSqlDatabase::database(QStringLiteral("kartulo_connection_name")));
    query.exec(QStringLiteral("SELECT MgldNr, Name, Mitglied, Preisskat FROM Spieler"));
    while (query.next())
        namen << QStringLiteral("%1 %2 %3 %4")
                     .arg(query.value(0).toInt())
                     .arg(query.value(1).toString())
                     .arg(query.value(2).toInt())
                     .arg(query.value(3).toInt());
    return namen;
}

QStringList punkte(MainWindow &fenster)
{
    return {text(&fenster, "lePunkte1"), text(&fenster, "lePunkte2"), text(&fenster, "lePunkte3"),
            text(&fenster, "lePunkte4")};
}

void neuOeffnen(MainWindow &fenster)
{
    MeldungsBeantworter antworten;
    fenster.findChild<QAction *>("actionNeu")->trigger();
    QCOMPARE(antworten.texte, QStringList{"Neues Protokoll?"});
}

void felderSetzen(MainWindow &fenster, const QStringList &namen, const QString &tisch,
                  const QString &serie)
{
    for (int i = 0; i < 4; ++i)
        fenster.findChild<QLineEdit *>(QStringLiteral("leNeuSpieler%1").arg(i + 1))
            ->setText(namen.value(i));
    fenster.findChild<QLineEdit *>("leNeuTischNr")->setText(tisch);
    fenster.findChild<QLineEdit *>("leNeuSerie")->setText(serie);
}

QString modusText(MainWindow &fenster)
{
    return fenster.findChild<QLabel *>("lblModus")->text();
}

void dockBestaetigen(MainWindow &fenster, const char *dock, const QString &wert)
{
    auto *d = fenster.findChild<QDockWidget *>(dock);
    QVERIFY(d);
    d->findChild<QLineEdit *>("leWert")->setText(wert);
    d->findChild<QPushButton *>("pbDockOk")->click();
}

} // namespace

class TstProtokoll : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void bestaetigen_data();
    void bestaetigen();
    void verworfen_data();
    void verworfen();
    void serieStarten();
    void gruppenId_data();
    void gruppenId();
    void listenName();
    void spielstand_data();
    void spielstand();
    void sitzWechsel_data();
    void sitzWechsel();
    void listenTyp_data();
    void listenTyp();
    void spielerRegister_data();
    void spielerRegister();
    void verboteneNamen_data();
    void verboteneNamen();
    void modusWechsel();
    void zeitLimitDock_data();
    void zeitLimitDock();
    void zeitLimitNachNeustart_data();
    void zeitLimitNachNeustart();
    void bierlachsAbend();
};

void TstProtokoll::init()
{
    TestUmgebung::allesLoeschen();
    QFile::remove(TestUmgebung::heimVerzeichnis() + "/Documents/KartuloSpieler.txt");
    QFile::remove(TestUmgebung::heimVerzeichnis() + "/Downloads/KartuloSpieler.txt");
}

void TstProtokoll::bestaetigen_data()
{
    QTest::addColumn<bool>("behalten");
    QTest::addColumn<QStringList>("namen");
    QTest::addColumn<QStringList>("erwartet");
    QTest::addColumn<int>("spiele");
    QTest::newRow("behalten") << true << QStringList()
                              << QStringList{"100 Anna", "101 Bernd", "102 Clara", "103 Dora"}
                              << 48;
    QTest::newRow("vier, mit Luecke") << false << QStringList{"Dora", "", "Anna", "Bernd", "Fritz"}
                                      << QStringList{"103 Dora", "100 Anna", "101 Bernd"} << 36;
}

void TstProtokoll::bestaetigen()
{
    QFETCH(bool, behalten);
    QFETCH(QStringList, namen);
    laufendeListe();
    MainWindow fenster;
    neuOeffnen(fenster);
    felderSetzen(fenster, namen, QStringLiteral("7"), QStringLiteral("zwei"));
    fenster.findChild<QCheckBox *>("chkSpielerBeibehalten")->setChecked(behalten);
    MeldungsBeantworter antworten;
    klick(&fenster, "pbOk");
    QVERIFY(antworten.titel.isEmpty());

    QTEST(teilnehmer(fenster), "erwartet");
    QCOMPARE(zeilen("SpielListe"), 0);
    QCOMPARE(zeilen("Settings"), 0);
    QTEST(fenster.findChild<QSpinBox *>("spbSpielAnzahl")->value(), "spiele");
    QCOMPARE(fenster.findChild<QSpinBox *>("spbTischNr")->value(), 7);
    QCOMPARE(fenster.findChild<QSpinBox *>("spbSerie")->value(), 0);
    auto *tabs = fenster.findChild<QTabWidget *>("tabWidget");
    QCOMPARE(tabs->currentIndex(), 0);
    QCOMPARE(tabs->indexOf(fenster.findChild<QWidget *>("tabNeu")), -1);
    for (int i = 1; i <= 3; ++i)
        QVERIFY(!tabs->isTabEnabled(i));
    QVERIFY(fenster.findChild<QPushButton *>("pbStartSpiel")->isEnabled());
    QVERIFY(fenster.findChild<QSpinBox *>("spbSpielAnzahl")->isEnabled());
    QCOMPARE(fenster.findChild<QLabel *>("lblListe")->text(), QStringLiteral("Erstliste Tisch 7"));
    QCOMPARE(punkte(fenster), QStringList({"", "", "", ""}));
    QCOMPARE(fenster.statusBar()->currentMessage(),
             QStringLiteral("Geber %1").arg(teilnehmer(fenster).first().section(' ', 1)));
}

void TstProtokoll::verworfen_data()
{
    QTest::addColumn<QStringList>("namen");
    QTest::addColumn<QByteArray>("knopf");
    QTest::addColumn<QString>("warnung");
    QTest::addColumn<bool>("listeBleibt");
    QTest::newRow("zu wenig Spieler")
        << QStringList{"Anna", "Bernd"} << QByteArray("pbOk")
        << "es muessen mindestens 3 Spieler eingetragen werden!" << false;
    QTest::newRow("verbotener Name")
        << QStringList{"Anna", "Be:rnd", "Clara"} << QByteArray("pbOk")
        << "Das Zeichen \":\" ist in Spielernamen nicht erlaubt." << true;
    QTest::newRow("Abbruch") << QStringList{"Eva", "Fritz", "Gerd"} << QByteArray("pbAbbruch") << ""
                             << true;
}

void TstProtokoll::verworfen()
{
    QFETCH(QStringList, namen);
    QFETCH(QByteArray, knopf);
    QFETCH(QString, warnung);
    QFETCH(bool, listeBleibt);
    laufendeListe();
    MainWindow fenster;
    neuOeffnen(fenster);
    felderSetzen(fenster, namen, "9", "9");
    MeldungsBeantworter antworten;
    klick(&fenster, knopf.constData());
    QCOMPARE(antworten.titel, warnung.isEmpty() ? QStringList() : QStringList{"WARNUNG"});
    QCOMPARE(antworten.texte, warnung.isEmpty() ? QStringList() : QStringList{warnung});
    if (!listeBleibt)
        return;
    // Nothing of the running list was touched.
    QCOMPARE(zeilen("SpielListe"), 1);
    QCOMPARE(zeilen("Teilnehmer"), 4);
    QCOMPARE(zeilen("Settings"), 1);
    QCOMPARE(teilnehmer(fenster).size(), 4);
    QCOMPARE(fenster.findChild<QSpinBox *>("spbTischNr")->value(), 5);
    auto *tabs = fenster.findChild<QTabWidget *>("tabWidget");
    QVERIFY(tabs->isTabEnabled(2));
    // A refused name leaves the page open for a correction.
    const int neuSeite = tabs->indexOf(fenster.findChild<QWidget *>("tabNeu"));
    QCOMPARE(neuSeite, warnung.isEmpty() ? -1 : 5);
    QCOMPARE(tabs->currentIndex(), warnung.isEmpty() ? 0 : 5);
}

void TstProtokoll::serieStarten()
{
    laufendeListe();
    MainWindow fenster;
    neuOeffnen(fenster);
    felderSetzen(fenster, {"Anna", "Bernd", "Clara"}, "4", "2");
    klick(&fenster, "pbOk");

    MeldungsBeantworter antworten;
    antworten.antworte(QMessageBox::No);
    klick(&fenster, "pbStartSpiel");
    QCOMPARE(antworten.texte,
             QStringList{"Sind Mitglied- und Preisskat-Eintragungen korrekt?\nSerie Starten?"});
    QCOMPARE(zeilen("Settings"), 0);

    klick(&fenster, "pbStartSpiel");
    auto *tabs = fenster.findChild<QTabWidget *>("tabWidget");
    QCOMPARE(tabs->currentWidget()->objectName(), QStringLiteral("tabSpieleintrag"));
    QVERIFY(!fenster.findChild<QPushButton *>("pbStartSpiel")->isEnabled());
    QCOMPARE(spalte("Settings", "TischNr"), QList<int>{4});
    QCOMPARE(spalte("Settings", "Serie"), QList<int>{2});
    QCOMPARE(spalte("Settings", "AnzahlSpiele"), QList<int>{36});
    QCOMPARE(punkte(fenster).mid(0, 3),
             QStringList({"Anna: 0-G0-V0", "Bernd: 0-G0-V0", "Clara: 0-G0-V0"}));
    // A tournament series starts its time limit at once.
    QVERIFY(fenster.findChild<QTimer *>("restZeitTimer")->isActive());
    QCOMPARE(text(&fenster, "leMeldungRot"), QStringLiteral("Verbleibende Zeit 120 Minuten"));
    QVERIFY(
        QTime::fromString(einstellungen().value("spielstopzeit").toString(), "hh:mm").isValid());
}

void TstProtokoll::gruppenId_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("erlaubt");
    QTest::newRow("normal") << "Gruppe A" << true;
    QTest::newRow("Apostroph") << "Herr's" << true;
    QTest::newRow("Doppelpunkt") << "A:B" << false;
    QTest::newRow("Dollar") << "A$" << false;
    QTest::newRow("At") << "@A" << false;
}

void TstProtokoll::gruppenId()
{
    QFETCH(QString, text);
    QFETCH(bool, erlaubt);
    laufendeListe();
    MainWindow fenster;
    auto *gruppe = fenster.findChild<QComboBox *>("cmbGruppenId");
    gruppe->setEnabled(true);
    gruppe->setEditText(QStringLiteral("Vorher"));
    MeldungsBeantworter antworten;
    gruppe->setEditText(text);
    QCOMPARE(antworten.titel.isEmpty(), erlaubt);
    QCOMPARE(gruppe->currentText(), erlaubt ? text : QStringLiteral("Vorher"));

    // The group id goes into the header as it was accepted.
    MeldungsBeantworter schliessen;
    fenster.close();
    QSqlQuery query(QSqlDatabase::database("kartulo_connection_name"));
    QVERIFY(query.exec("SELECT Gruppe FROM Settings") && query.next());
    QCOMPARE(query.value(0).toString(), erlaubt ? text : QStringLiteral("Vorher"));
}

void TstProtokoll::listenName()
{
    laufendeListe();
    MainWindow fenster;
    auto *name = fenster.findChild<QLineEdit *>("leListenName");
    name->clear();
    QTest::keyClicks(name, "Skatfreunde");
    QCOMPARE(einstellungen().value("vereinsname").toString(), QStringLiteral("Skatfreunde"));
}

void TstProtokoll::spielstand_data()
{
    QTest::addColumn<int>("modus");
    QTest::addColumn<bool>("fabian");
    QTest::addColumn<QStringList>("erwartet");
    // Anna wins 24 and 36, Bernd loses 18 (stored -36), in a list of three.
    QTest::newRow("Turnier mit Fabian")
        << 0 << true << QStringList{"Anna: 200-G2-V0", "Bernd: -86-G0-V1", "Clara: 40-G0-V0"};
    QTest::newRow("Turnier ohne Fabian")
        << 0 << false << QStringList{"Anna: 60-G2-V0", "Bernd: -36-G0-V1", "Clara: 0-G0-V0"};
    QTest::newRow("Ergebnis") << 1 << true
                              << QStringList{"Anna: 60-G2-V0", "Bernd: -36-G0-V1",
                                             "Clara: 0-G0-V0"};
}

void TstProtokoll::spielstand()
{
    QFETCH(int, modus);
    QFETCH(bool, fabian);
    einstellungen().setValue("spielstandmitfabianpunkten", fabian);
    QVERIFY(anlegen(3, 36, modus));
    MainWindow fenster;
    MeldungsBeantworter antworten;
    eingeben(&fenster, Spiel{"tbKreuz", 0, true, ""});
    eingeben(&fenster, Spiel{"tbKaro", 1, false, ""});
    // Kreuz with 2 is worth 36: set two jacks by hand.
    klick(&fenster, "tbKreuz");
    klick(&fenster, "tb2");
    klick(&fenster, "tbSpieler1");
    klick(&fenster, "pbFertig");
    klick(&fenster, "pbInListeEintragen");
    QTEST(QStringList(punkte(fenster).mid(0, 3)), "erwartet");
}

void TstProtokoll::sitzWechsel_data()
{
    QTest::addColumn<int>("zeile");
    QTest::addColumn<bool>("hoch");
    QTest::addColumn<QStringList>("namen");
    QTest::addColumn<int>("auswahl");
    const QStringList vorher{"100 Anna", "101 Bernd", "102 Clara", "103 Dora"};
    QTest::newRow("erster hoch") << 0 << true << vorher << 0;
    QTest::newRow("letzter runter") << 3 << false << vorher << 3;
    QTest::newRow("zweiter hoch") << 1 << true
                                  << QStringList{"101 Bernd", "100 Anna", "102 Clara", "103 Dora"}
                                  << 0;
    QTest::newRow("dritter runter")
        << 2 << false << QStringList{"100 Anna", "101 Bernd", "103 Dora", "102 Clara"} << 3;
}

void TstProtokoll::sitzWechsel()
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
    QCOMPARE(teilnehmer(fenster), namen);
    QCOMPARE(spalte("Teilnehmer", "MgldNr").size(), 4);
    QCOMPARE(tabelle->currentIndex().row(), auswahl);
    if (zeile != auswahl) {
        const QString geber = namen.first().section(' ', 1);
        QCOMPARE(fenster.statusBar()->currentMessage(), QStringLiteral("Geber %1").arg(geber));
        QCOMPARE(fenster.findChild<QToolButton *>("tbSpieler1")->text(), geber);
    }
    // Re-seating is announced on the status line only.
    QVERIFY(antworten.titel.isEmpty());
}

void TstProtokoll::listenTyp_data()
{
    QTest::addColumn<int>("modus");
    QTest::addColumn<int>("spiele3");
    QTest::addColumn<int>("spiele4");
    QTest::newRow("Turnier") << 0 << 36 << 48;
    QTest::newRow("Ergebnis") << 1 << 10 << 10;
}

void TstProtokoll::listenTyp()
{
    QFETCH(int, modus);
    QVERIFY(anlegen(4, 48, modus));
    MainWindow fenster;
    auto *anzahl = fenster.findChild<QSpinBox *>("spbSpielAnzahl");
    auto *uebersicht = fenster.findChild<QTableView *>("tblViewUebersicht");
    klick(&fenster, "tb3erListe");
    QCOMPARE(teilnehmer(fenster), QStringList({"100 Anna", "101 Bernd", "102 Clara"}));
    QCOMPARE(zeilen("Teilnehmer"), 3);
    QTEST(anzahl->value(), "spiele3");
    QVERIFY(fenster.findChild<QToolButton *>("tbSpieler4")->isHidden());
    QVERIFY(uebersicht->isColumnHidden(15));

    klick(&fenster, "tb4erListe");
    QCOMPARE(teilnehmer(fenster), QStringList({"100 Anna", "101 Bernd", "102 Clara", "4 "}));
    QCOMPARE(spalte("Teilnehmer", "MgldNr"), QList<int>({100, 101, 102, 4}));
    QTEST(anzahl->value(), "spiele4");
    QVERIFY(!fenster.findChild<QToolButton *>("tbSpieler4")->isHidden());
    QVERIFY(!uebersicht->isColumnHidden(15));
    const QAbstractItemModel *model = fenster.findChild<QTableView *>("tblViewSpieler")->model();
    QCOMPARE(model->index(3, 2).data().toString(), QStringLiteral("Ja"));
    QCOMPARE(model->index(3, 3).data().toString(), QStringLiteral("Ja"));
}

void TstProtokoll::spielerRegister_data()
{
    QTest::addColumn<QString>("ordner"); // none: a manager's list, one entry a line
    QTest::addColumn<QByteArray>("inhalt");
    QTest::addColumn<QStringList>("register");
    QTest::addColumn<QStringList>("felder");
    QTest::newRow("Dokumente") << "Documents" << QByteArray("b\nA\na\n")
                               << QStringList{"100 A 1 1", "101 a 1 1", "102 b 1 1"}
                               << QStringList{"a", "A", ""};
    QTest::newRow("Downloads, CRLF und BOM")
        << "Downloads" << QByteArray("\xEF\xBB\xBFJürgen\r\n\r\nO'Neill\r\n")
        << QStringList{"100 Jürgen 1 1", "101 O'Neill 1 1"} << QStringList{"O'Neill", "Jürgen", ""};
    QTest::newRow("Manager") << "" << QByteArray("7|Eva|Ja|Nein\n\n8|Fritz|ja|Ja\nx|Gerd|Ja|Ja")
                             << QStringList{"7 Eva 1 0", "8 Fritz 0 1", "0 Gerd 1 1"}
                             << QStringList{"Fritz", "Eva", ""};
}

void TstProtokoll::spielerRegister()
{
    QFETCH(QString, ordner);
    QFETCH(QByteArray, inhalt);
    QVERIFY(anlegen(3, 36));
    QFile datei(TestUmgebung::heimVerzeichnis() + "/" + ordner + "/KartuloSpieler.txt");
    if (!ordner.isEmpty()) {
        QVERIFY(QDir(TestUmgebung::heimVerzeichnis()).mkpath(ordner));
        QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size());
        datei.close();
    }
    MainWindow fenster;
    // An empty list from the manager leaves the registry alone.
    fenster.ladeSpielerListe({});
    QCOMPARE(zeilen("Spieler"), 3);
    if (ordner.isEmpty())
        fenster.ladeSpielerListe(QString::fromUtf8(inhalt).split('\n'));
    else
        fenster.spielerAusTextDateiLaden();
    QTEST(registerNamen(), "register");
    auto *liste = fenster.findChild<QListView *>("lvRegistrierteSpieler");
    auto *model = qobject_cast<QStandardItemModel *>(liste->model());
    QCOMPARE(model->rowCount(), registerNamen().size());
    QCOMPARE(model->horizontalHeaderItem(0)->text(), QStringLiteral("Vorname Nachname"));

    // A double click puts a registered name into the first free field, once.
    fenster.onSpielerDoubleClicked(model->index(1, 0));
    fenster.onSpielerDoubleClicked(model->index(1, 0));
    fenster.onSpielerDoubleClicked(model->index(0, 0));
    QTEST(QStringList({text(&fenster, "leNeuSpieler1"), text(&fenster, "leNeuSpieler2"),
                       text(&fenster, "leNeuSpieler3")}),
          "felder");
}

void TstProtokoll::verboteneNamen_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("zeichen");
    QTest::newRow("Strich") << "Anna|B"
                            << "|";
    QTest::newRow("erlaubt") << "O'Hara-Müller"
                             << "";
}

void TstProtokoll::verboteneNamen()
{
    QFETCH(QString, name);
    QFETCH(QString, zeichen);
    QStandardItemModel model(1, 2);
    model.setData(model.index(0, 1), QStringLiteral("alt"));
    NamensDelegate delegate;
    QWidget eltern;
    QWidget *editor = delegate.createEditor(&eltern, QStyleOptionViewItem(), model.index(0, 1));
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

void TstProtokoll::modusWechsel()
{
    QVERIFY(anlegen(4, 48));
    {
        MainWindow fenster;
        auto *bierlachs = fenster.findChild<QComboBox *>("cmbBierlachs");
        fenster.findChild<QAction *>("actionErgebnis")->trigger();
        QCOMPARE(modusText(fenster), QStringLiteral("Ergebnis Modus"));
        QVERIFY(bierlachs->isHidden());
        fenster.findChild<QAction *>("actionBierlachs")->trigger();
        QCOMPARE(modusText(fenster), QStringLiteral("Bierlachs Modus - 0 Maxpunkte"));
        QVERIFY(!bierlachs->isHidden());

        auto *dock = fenster.findChild<QDockWidget *>("DockBierlachs");
        QVERIFY(dock);
        QCOMPARE(dock->findChild<QLabel *>()->text(),
                 QStringLiteral("Bierlachs Maximal Punkte eingeben..."));
        // An empty field changes nothing, the dock stays.
        dockBestaetigen(fenster, "DockBierlachs", "");
        QVERIFY(fenster.findChild<QDockWidget *>("DockBierlachs"));
        dockBestaetigen(fenster, "DockBierlachs", "300");
        QCOMPARE(modusText(fenster), QStringLiteral("Bierlachs Modus - 300 Maxpunkte"));
        QTRY_VERIFY(!fenster.findChild<QDockWidget *>("DockBierlachs"));
        fenster.findChild<QAction *>("actionBierlachs")->trigger();
        fenster.findChild<QDockWidget *>("DockBierlachs")
            ->findChild<QPushButton *>("pbDockAbbruch")
            ->click();
        QCOMPARE(modusText(fenster), QStringLiteral("Bierlachs Modus - 300 Maxpunkte"));

        fenster.findChild<QAction *>("actionTurnier")->trigger();
        QCOMPARE(modusText(fenster), QStringLiteral("Turnier Modus"));
        QVERIFY(bierlachs->isHidden());
        // The mode goes into the header and comes back with the restore label.
        fenster.findChild<QAction *>("actionErgebnis")->trigger();
        MeldungsBeantworter antworten;
        fenster.close();
    }
    MainWindow neu;
    QCOMPARE(modusText(neu), QStringLiteral("Ergebnis Mode"));
}

void TstProtokoll::zeitLimitDock_data()
{
    QTest::addColumn<QString>("eingabe");
    QTest::addColumn<int>("minuten");
    QTest::newRow("leer") << "" << 120;
    QTest::newRow("45") << "45" << 45;
}

void TstProtokoll::zeitLimitDock()
{
    QFETCH(QString, eingabe);
    QVERIFY(anlegen(4, 48));
    MainWindow fenster;
    fenster.findChild<QAction *>("actionTurnier")->trigger();
    fenster.findChild<QAction *>("actionTurnier")->trigger();
    QCOMPARE(fenster.findChildren<QDockWidget *>("DockZeitLimit").size(), 1);
    auto *dock = fenster.findChild<QDockWidget *>("DockZeitLimit");
    QCOMPARE(dock->features(), QDockWidget::NoDockWidgetFeatures);
    QCOMPARE(fenster.dockWidgetArea(dock), Qt::TopDockWidgetArea);
    QCOMPARE(dock->findChild<QLabel *>()->text(),
             QStringLiteral("Zeitlimit pro Serie in Minuten eingeben..."));
    QCOMPARE(dock->findChild<QLineEdit *>("leWert")->text(), QStringLiteral("120"));
    dockBestaetigen(fenster, "DockZeitLimit", eingabe);
    QTRY_VERIFY(!fenster.findChild<QDockWidget *>("DockZeitLimit"));

    // Starting a series shows the limit just set.
    MeldungsBeantworter antworten;
    fenster.findChild<QPushButton *>("pbStartSpiel")->setEnabled(true);
    klick(&fenster, "pbStartSpiel");
    QFETCH(int, minuten);
    QCOMPARE(text(&fenster, "leMeldungRot"),
             QStringLiteral("Verbleibende Zeit %1 Minuten").arg(minuten));
}

void TstProtokoll::zeitLimitNachNeustart_data()
{
    QTest::addColumn<QString>("gespeichert");
    QTest::addColumn<bool>("laeuft");
    const QTime jetzt = QTime::currentTime();
    QTest::newRow("30 Minuten voraus") << jetzt.addSecs(30 * 60 + 30).toString("hh:mm") << true;
    QTest::newRow("vorbei") << jetzt.addSecs(-20 * 60).toString("hh:mm") << false;
    QTest::newRow("openend") << "openend" << false;
    QTest::newRow("kaputt") << "halb neun" << false;
}

void TstProtokoll::zeitLimitNachNeustart()
{
    QFETCH(QString, gespeichert);
    QFETCH(bool, laeuft);
    QVERIFY(anlegen(4, 48));
    einstellungen().setValue("spielstopzeit", gespeichert);
    MainWindow fenster;
    QCOMPARE(fenster.findChild<QTimer *>("restZeitTimer")->isActive(), laeuft);
    const QString text = Fenster::text(&fenster, "leMeldungRot");
    if (laeuft)
        QVERIFY2(text == "Verbleibende Zeit 30 Minuten" || text == "Verbleibende Zeit 29 Minuten",
                 qPrintable(text));
    else
        QCOMPARE(text, QString());
}

void TstProtokoll::bierlachsAbend()
{
    QVERIFY(anlegen(3, 10, 2));
    QVERIFY(sql({"UPDATE Settings SET BlPunkte = 100"}));
    MainWindow fenster;
    QCOMPARE(modusText(fenster), QStringLiteral("Bierlachs Modus - 100 MaxPunkte"));
    auto *lePunkte1 = fenster.findChild<QLineEdit *>("lePunkte1");
    QCOMPARE(lePunkte1->text(), QStringLiteral("Anna: 100 G0 V0"));

    MeldungsBeantworter antworten;
    // Anna plays Grand with one (48) twice and is at 4; Bernd loses a Karo (36 up).
    eingeben(&fenster, Spiel{"tbGrang", 0, true, ""});
    QCOMPARE(lePunkte1->text(), QStringLiteral("Anna: 52 G1 V0"));
    eingeben(&fenster, Spiel{"tbKaro", 1, false, ""});
    QCOMPARE(text(&fenster, "lePunkte2"), QStringLiteral("Bernd: 136 G0 V1"));
    QVERIFY(!antworten.texte.contains("Rundenende! Neue Runde?"));
    eingeben(&fenster, Spiel{"tbGrang", 0, true, ""});
    QCOMPARE(lePunkte1->text(), QStringLiteral("Anna: 4 G2 V0"));
    eingeben(&fenster, Spiel{"tbKaro", 0, true, ""});
    QCOMPARE(antworten.texte.count("Rundenende! Neue Runde?"), 1);
    QCOMPARE(fenster.statusBar()->currentMessage(), QStringLiteral("Bierlachs: Bernd"));
    QCOMPARE(lePunkte1->text(), QStringLiteral("Anna: 100 G0 V0"));

    // The next game counts in round 2; round 1 stays on the selector.
    eingeben(&fenster, Spiel{"tbHerz", 2, true, ""});
    auto *runden = fenster.findChild<QComboBox *>("cmbBierlachs");
    QCOMPARE(runden->count(), 2);
    QCOMPARE(text(&fenster, "lePunkte3"), QStringLiteral("Clara: 80 G1 V0"));
    runden->setCurrentIndex(0);
    QCOMPARE(lePunkte1->text(), QStringLiteral("Anna: -14 G3 V0"));
    QCOMPARE(antworten.texte.count("Rundenende! Neue Runde?"), 1);
}

KARTULO_TEST_MAIN(TstProtokoll)
#include "tst_protokoll.moc"
