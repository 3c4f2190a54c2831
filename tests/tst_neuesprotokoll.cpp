// A new protocol from the "Neu" page to the start of the series, the header
// fields, and the standings lines after each game.

#include "app/mainwindow.h"
#include "helpers/fensterhilfe.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QSqlQuery>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
#include <QToolButton>

using namespace TestProtokoll;
using namespace Fenster;

namespace {

QStringList punkte(MainWindow &fenster)
{
    QStringList zeilen;
    for (const char *name : {"lePunkte1", "lePunkte2", "lePunkte3", "lePunkte4"})
        zeilen << fenster.findChild<QLineEdit *>(name)->text();
    return zeilen;
}

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

void neuOeffnen(MainWindow &fenster)
{
    MeldungsBeantworter antworten;
    fenster.findChild<QAction *>("actionNeu")->trigger();
    QCOMPARE(antworten.texte, QStringList{"Neues Protokoll?"});
}

void felderSetzen(MainWindow &fenster, const QStringList &namen, const QString &tisch,
                  const QString &serie)
{
    const char *felder[] = {"leNeuSpieler1", "leNeuSpieler2", "leNeuSpieler3", "leNeuSpieler4"};
    for (int i = 0; i < 4; ++i)
        fenster.findChild<QLineEdit *>(felder[i])->setText(namen.value(i));
    fenster.findChild<QLineEdit *>("leNeuTischNr")->setText(tisch);
    fenster.findChild<QLineEdit *>("leNeuSerie")->setText(serie);
}

QSettings store()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Ormindo"),
                     QStringLiteral("Kartulo"));
}

} // namespace

class TstNeuesProtokoll : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void neuSeite();
    void bestaetigen_data();
    void bestaetigen();
    void zuWenigSpieler();
    void verbotenerName();
    void abbruchLaesstListe();
    void serieStarten();
    void gruppenId_data();
    void gruppenId();
    void listenName();
    void spielstand_data();
    void spielstand();
};

void TstNeuesProtokoll::init()
{
    TestUmgebung::allesLoeschen();
    QVERIFY(anlegen(4, 48, 0, 5));
    QVERIFY(sql({QStringLiteral("INSERT INTO SpielListe (Zeile, Spiel, Spieler2)VALUES (1, 12, "
                                "24)")}));
}

void TstNeuesProtokoll::neuSeite()
{
    MainWindow fenster;
    neuOeffnen(fenster);
    auto *tabs = fenster.findChild<QTabWidget *>("tabWidget");
    QCOMPARE(tabs->indexOf(fenster.findChild<QWidget *>("tabNeu")), 5);
    QCOMPARE(tabs->tabText(5), QStringLiteral("Neu"));
    QCOMPARE(tabs->currentIndex(), 5);
    const QAbstractItemModel *register_ =
        fenster.findChild<QListView *>("lvRegistrierteSpieler")->model();
    QCOMPARE(register_->rowCount(), 4);
    QCOMPARE(register_->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Name"));
    QCOMPARE(fenster.findChild<QSpinBox *>("spbSpielAnzahl")->value(), 48);
    QVERIFY(!fenster.findChild<QCheckBox *>("chkSpielerBeibehalten")->isChecked());
}

void TstNeuesProtokoll::bestaetigen_data()
{
    QTest::addColumn<bool>("behalten");
    QTest::addColumn<QStringList>("namen");
    QTest::addColumn<QStringList>("erwartet");
    QTest::addColumn<int>("spiele");
    QTest::newRow("behalten") << true << QStringList()
                              << QStringList{"100 Anna", "101 Bernd", "102 Clara", "103 Dora"}
                              << 48;
    QTest::newRow("drei neue") << false << QStringList{"Clara", "Eva", "O'Neill"}
                               << QStringList{"102 Clara", "1 Eva", "2 O'Neill"} << 36;
    QTest::newRow("vier, mit Luecke") << false << QStringList{"Dora", "", "Anna", "Bernd", "Fritz"}
                                      << QStringList{"103 Dora", "100 Anna", "101 Bernd"} << 36;
}

void TstNeuesProtokoll::bestaetigen()
{
    QFETCH(bool, behalten);
    QFETCH(QStringList, namen);
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

void TstNeuesProtokoll::zuWenigSpieler()
{
    MainWindow fenster;
    neuOeffnen(fenster);
    felderSetzen(fenster, {"Anna", "Bernd"}, "3", "1");
    MeldungsBeantworter antworten;
    klick(&fenster, "pbOk");
    QCOMPARE(antworten.titel, QStringList{"WARNUNG"});
    QCOMPARE(antworten.texte, QStringList{"es muessen mindestens 3 Spieler eingetragen werden!"});
}

void TstNeuesProtokoll::verbotenerName()
{
    MainWindow fenster;
    neuOeffnen(fenster);
    felderSetzen(fenster, {"Anna", "Be:rnd", "Clara"}, "3", "1");
    MeldungsBeantworter antworten;
    klick(&fenster, "pbOk");
    QCOMPARE(antworten.titel, QStringList{"WARNUNG"});
    QVERIFY(antworten.texte.first().contains("\":\""));
    // Nothing of the running list was touched.
    QCOMPARE(zeilen("SpielListe"), 1);
    QCOMPARE(zeilen("Teilnehmer"), 4);
    QCOMPARE(zeilen("Settings"), 1);
}

void TstNeuesProtokoll::abbruchLaesstListe()
{
    MainWindow fenster;
    neuOeffnen(fenster);
    felderSetzen(fenster, {"Eva", "Fritz", "Gerd"}, "9", "9");
    klick(&fenster, "pbAbbruch");
    auto *tabs = fenster.findChild<QTabWidget *>("tabWidget");
    QCOMPARE(tabs->indexOf(fenster.findChild<QWidget *>("tabNeu")), -1);
    QCOMPARE(tabs->currentIndex(), 0);
    QCOMPARE(zeilen("SpielListe"), 1);
    QCOMPARE(teilnehmer(fenster).size(), 4);
    QCOMPARE(fenster.findChild<QSpinBox *>("spbTischNr")->value(), 5);
    QVERIFY(tabs->isTabEnabled(2));
}

void TstNeuesProtokoll::serieStarten()
{
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
    QCOMPARE(fenster.findChild<QLineEdit *>("leMeldungRot")->text(),
             QStringLiteral("Verbleibende Zeit 120 Minuten"));
    QVERIFY(QTime::fromString(store().value("spielstopzeit").toString(), "hh:mm").isValid());
}

void TstNeuesProtokoll::gruppenId_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("erlaubt");
    QTest::newRow("normal") << "Gruppe A" << true;
    QTest::newRow("Apostroph") << "Herr's" << true;
    QTest::newRow("Doppelpunkt") << "A:B" << false;
    QTest::newRow("Dollar") << "A$" << false;
    QTest::newRow("At") << "@A" << false;
}

void TstNeuesProtokoll::gruppenId()
{
    QFETCH(QString, text);
    QFETCH(bool, erlaubt);
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

void TstNeuesProtokoll::listenName()
{
    MainWindow fenster;
    auto *name = fenster.findChild<QLineEdit *>("leListenName");
    name->clear();
    QTest::keyClicks(name, "Skatfreunde");
    QCOMPARE(store().value("vereinsname").toString(), QStringLiteral("Skatfreunde"));
}

void TstNeuesProtokoll::spielstand_data()
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

void TstNeuesProtokoll::spielstand()
{
    QFETCH(int, modus);
    QFETCH(bool, fabian);
    TestUmgebung::allesLoeschen();
    store().setValue("spielstandmitfabianpunkten", fabian);
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

KARTULO_TEST_MAIN(TstNeuesProtokoll)
#include "tst_neuesprotokoll.moc"
