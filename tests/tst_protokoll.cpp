// A new protocol to the start of its series, the seats, the registry, the play modes with
// their docks, the time limit and a Bierlachs round (its restart: tst_mainwindow).

#include "helpers/fensterhilfe.h"

#include <QtWidgets>

using namespace TestProtokoll;
using namespace Fenster;

namespace {

// Types a value into the named input dock and confirms it.
void dockFuellen(MainWindow &fenster, const char *dock, const QString &wert)
{
    auto *d = kind<QDockWidget>(&fenster, dock);
    QVERIFY(d);
    kind<QLineEdit>(d, "leWert")->setText(wert);
    klick(d, "pbDockOk");
}

} // namespace

class TstProtokoll : public QObject
{
    Q_OBJECT

private slots:
    void init() { TestUmgebung::allesLoeschen(); }
    void neuesProtokoll();
    void spielerRegister();
    void modusUndDocks();
};

// From the "Neu" page to the start of a series: cancelling and a refused name
// leave the running list alone, OK replaces it, and the start asks first.
void TstProtokoll::neuesProtokoll()
{
    QVERIFY(anlegen(4, 48, 0, 5));
    QVERIFY(sql({"INSERT INTO SpielListe (Zeile, Spiel, Spieler2) VALUES (1, 12, 24)"}));
    MainWindow fenster;
    auto *tabs = kind<QTabWidget>(&fenster, "tabWidget");
    MeldungsBeantworter antworten;
    neuSeite(&fenster, {"Eva", "Fritz", "Gerd"}, "pbAbbruch");
    QCOMPARE(seite(&fenster), QStringLiteral("tabEinstellungen"));
    neuSeite(&fenster, {"Anna", "Be:rnd", "Clara"}, "pbOk");
    // The page stays open for a correction.
    QCOMPARE(seite(&fenster), QStringLiteral("tabNeu"));
    QCOMPARE(zeilen("SpielListe"), 1);
    QCOMPARE(kind<QSpinBox>(&fenster, "spbTischNr")->value(), 5);
    // Fewer than three names are taken, with a warning.
    neuSeite(&fenster, {"Anna", "Bernd"}, "pbOk");
    QCOMPARE(zellen(modell(&fenster, "tblViewSpieler"), 1), QStringList({"Anna", "Bernd"}));
    // A series of two is not started.
    klick(&fenster, "pbStartSpiel");
    QVERIFY(!tabs->isTabEnabled(2) && zeilen("Settings") == 0);
    // Empty fields are skipped.
    neuSeite(&fenster, {"Dora", "", "Anna", "Bernd"}, "pbOk");
    QCOMPARE(antworten.titel,
             QStringList({"FRAGE", "FRAGE", "WARNUNG", "WARNUNG", "FRAGE", "WARNUNG", "FRAGE"}));
    const QString zuWenige = QStringLiteral("es muessen mindestens 3 Spieler eingetragen werden!");
    QCOMPARE(antworten.texte.mid(2),
             QStringList({"Das Zeichen \":\" ist in Spielernamen nicht erlaubt.", zuWenige,
                          "Sind Mitglied- und Preisskat-Eintragungen korrekt?\nSerie Starten?",
                          zuWenige, "Neues Protokoll?"}));
    QCOMPARE(zellen(modell(&fenster, "tblViewSpieler"), 1), QStringList({"Dora", "Anna", "Bernd"}));
    QCOMPARE(seite(&fenster), QStringLiteral("tabEinstellungen"));
    QCOMPARE(tabs->indexOf(kind<QWidget>(&fenster, "tabNeu")), -1);
    QCOMPARE(text(&fenster, "lblListe"), QStringLiteral("Erstliste Tisch 7"));
    QCOMPARE(status(fenster), QStringLiteral("Geber Dora"));
    // The header may be changed until the series starts; a group id with a
    // forbidden character is refused and the last one kept.
    auto *anzahl = kind<QSpinBox>(&fenster, "spbSpielAnzahl");
    auto *start = kind<QPushButton>(&fenster, "pbStartSpiel");
    auto *gruppe = kind<QComboBox>(&fenster, "cmbGruppenId");
    QVERIFY(start->isEnabled() && anzahl->isEnabled() && gruppe->isEnabled());
    for (const char *text : {"Herr's", "A:B", "A$", "@A"}) {
        gruppe->setEditText(QLatin1String(text));
        QCOMPARE(gruppe->currentText(), QStringLiteral("Herr's"));
    }
    QCOMPARE(antworten.titel.mid(7), QStringList({"WARNUNG", "WARNUNG", "WARNUNG"}));

    antworten.antworte(QMessageBox::No);
    start->click();
    QCOMPARE(antworten.texte.last(),
             QStringLiteral("Sind Mitglied- und Preisskat-Eintragungen korrekt?\nSerie Starten?"));
    QCOMPARE(zeilen("Settings"), 0);
    start->click();
    QCOMPARE(seite(&fenster), QStringLiteral("tabSpieleintrag"));
    QVERIFY(!start->isEnabled() && !anzahl->isEnabled());
    QCOMPARE(lesen("SELECT TischNr || ' ' || Serie || ' ' || AnzahlSpiele || ' ' || Gruppe "
                   "FROM Settings"),
             QStringList{"7 2 36 Herr's"});
    QCOMPARE(text(&fenster, "lePunkte1"), QStringLiteral("Dora: 0-G0-V0"));
    // A tournament series starts its time limit at once.
    QVERIFY(kind<QTimer>(&fenster, "restZeitTimer")->isActive());
    QCOMPARE(text(&fenster, "leMeldungRot"), QStringLiteral("Verbleibende Zeit 120 Minuten"));
    QVERIFY(
        QTime::fromString(einstellungen().value("spielstopzeit").toString(), "hh:mm").isValid());
}

// Moving a seat, at the ends too, keeps the name selected and names a new dealer on the status
// line only; three seats hide the fourth button and column. A manager's list replaces the
// registry; a double click puts a name into the first free "Neu" field, once.
void TstProtokoll::spielerRegister()
{
    Probe fenster(4);
    auto *tabelle = kind<QTableView>(&fenster, "tblViewSpieler");
    const std::tuple<int, bool, const char *, int> zuege[] = {
        {0, true, "Anna Bernd Clara Dora", 0},
        {3, false, "Anna Bernd Clara Dora", 3},
        {1, true, "Bernd Anna Clara Dora", 0},
        {2, false, "Bernd Anna Dora Clara", 3}};
    for (const auto &[zeile, hoch, namen, auswahl] : zuege) {
        tabelle->setCurrentIndex(tabelle->model()->index(zeile, 1));
        hoch ? fenster.onUp() : fenster.onDown();
        QCOMPARE(zellen(tabelle->model(), 1).join(' '), QLatin1String(namen));
        QCOMPARE(tabelle->currentIndex().row(), auswahl);
    }
    QCOMPARE(status(fenster), QStringLiteral("Geber Bernd"));
    QCOMPARE(kind<QToolButton>(&fenster, "tbSpieler1")->text(), QStringLiteral("Bernd"));
    QVERIFY(fenster.antworten.titel.isEmpty());

    auto *vierter = kind<QToolButton>(&fenster, "tbSpieler4");
    auto *uebersicht = kind<QTableView>(&fenster, "tblViewUebersicht");
    for (const bool vier : {false, true}) {
        klick(&fenster, vier ? "tb4erListe" : "tb3erListe");
        QCOMPARE(zellen(tabelle->model(), 1).size(), vier ? 4 : 3);
        QCOMPARE(vierter->isHidden(), !vier);
        QCOMPARE(uebersicht->isColumnHidden(15), !vier);
    }

    fenster.ladeSpielerListe({"7|Eva|Ja|Nein", "", "8|Fritz|ja|Ja", "x|Gerd|Ja|Ja"});
    QCOMPARE(lesen("SELECT MgldNr || ' ' || Name || ' ' || Mitglied || ' ' || Preisskat "
                   "FROM Spieler"),
             QStringList({"7 Eva 1 0", "8 Fritz 0 1", "0 Gerd 1 1"}));
    for (int zeile : {1, 1, 0})
        fenster.onSpielerDoubleClicked(modell(&fenster, "lvRegistrierteSpieler")->index(zeile, 0));
    QCOMPARE(texte(&fenster, {"leNeuSpieler1", "leNeuSpieler2", "leNeuSpieler3"}),
             QStringList({"Fritz", "Eva", ""}));
}

// The mode actions with their labels and input docks. A Bierlachs round ends when the
// declarer's points run out: the scorer is asked once and the loser named.
void TstProtokoll::modusUndDocks()
{
    Probe fenster(3, 36);
    const auto modus = [&](const char *aktion) {
        kind<QAction>(&fenster, aktion)->trigger();
        return text(&fenster, "lblModus");
    };
    auto *runden = kind<QComboBox>(&fenster, "cmbBierlachs");
    QCOMPARE(modus("actionErgebnis"), QStringLiteral("Ergebnis Modus"));
    QVERIFY(runden->isHidden());
    QCOMPARE(modus("actionBierlachs"), QStringLiteral("Bierlachs Modus - 0 Maxpunkte"));
    QVERIFY(!runden->isHidden());
    // An empty field changes nothing, the dock stays.
    dockFuellen(fenster, "DockBierlachs", "");
    QVERIFY(kind<QDockWidget>(&fenster, "DockBierlachs"));
    dockFuellen(fenster, "DockBierlachs", "100");
    QCOMPARE(text(&fenster, "lblModus"), QStringLiteral("Bierlachs Modus - 100 Maxpunkte"));
    QTRY_VERIFY(!kind<QDockWidget>(&fenster, "DockBierlachs"));
    // Anna plays Grand with one (48) twice and is at 4; Bernd loses a Karo (36 up).
    for (const Spiel &spiel : {Spiel{"tbGrang", 0, true, ""}, Spiel{"tbKaro", 1, false, ""},
                               Spiel{"tbGrang", 0, true, ""}})
        eingeben(&fenster, spiel);
    QVERIFY(!fenster.antworten.texte.contains("Rundenende! Neue Runde?"));
    eingeben(&fenster, Spiel{"tbKaro", 0, true, ""});
    QCOMPARE(fenster.antworten.texte.count("Rundenende! Neue Runde?"), 1);
    QCOMPARE(status(fenster), QStringLiteral("Bierlachs: Bernd"));
    QCOMPARE(text(&fenster, "lePunkte1"), QStringLiteral("Anna: 100 G0 V0"));

    modus("actionTurnier");
    QCOMPARE(modus("actionTurnier"), QStringLiteral("Turnier Modus"));
    QVERIFY(runden->isHidden());
    QCOMPARE(fenster.findChildren<QDockWidget *>("DockZeitLimit").size(), 1);
    auto *dock = kind<QDockWidget>(&fenster, "DockZeitLimit");
    QCOMPARE(dock->features(), QDockWidget::NoDockWidgetFeatures);
    QCOMPARE(fenster.dockWidgetArea(dock), Qt::TopDockWidgetArea);
    QCOMPARE(text(dock, "leWert"), QStringLiteral("120"));
    dockFuellen(fenster, "DockZeitLimit", "45");
    QTRY_VERIFY(!kind<QDockWidget>(&fenster, "DockZeitLimit"));
    // Starting a series shows the limit just set.
    kind<QPushButton>(&fenster, "pbStartSpiel")->setEnabled(true);
    klick(&fenster, "pbStartSpiel");
    QCOMPARE(text(&fenster, "leMeldungRot"), QStringLiteral("Verbleibende Zeit 45 Minuten"));

    // The mode goes into the header on closing (its restore: tst_mainwindow).
    modus("actionErgebnis");
    fenster.close();
    QCOMPARE(spalte("Settings", "Modus"), QList<int>{1});
}

KARTULO_TEST_MAIN(TstProtokoll)
#include "tst_protokoll.moc"
