// Keeping a list through the window (numbering and list end: tst_listendienst):
// the dealer announced, refusals, the wait timer, corrections, the bid dock.

#include "app/game/dockreizung.h"
#include "core/service/listendienst.h"
#include "helpers/faelle.h"
#include "helpers/fensterhilfe.h"

#include <QtCharts>
#include <QtWidgets>

using namespace TestProtokoll;
using namespace Fenster;

namespace {

const QStringList Namen{"Anna", "Bernd", "Clara", "Dora"};

// The game types in turn with the value they store in the "Spiel" column.
const std::pair<const char *, int> Typen[] = {{"tbKaro", 9},      {"tbHerz", 10},  {"tbPik", 11},
                                              {"tbKreuz", 12},    {"tbGrang", 24}, {"tbNull", 23},
                                              {"tbEingepasst", 0}};

// Game n of a list: every third lost, the declarer never the dealer.
Spiel spielNummer(int n, int spieler)
{
    return Spiel{Typen[n % 7].first, n % spieler, n % 3 != 0, QString()};
}

} // namespace

class TstListenfuehrung : public QObject
{
    Q_OBJECT

private slots:
    void init() { TestUmgebung::allesLoeschen(); }
    void ganzeListe_data();
    void ganzeListe();
    void zusaetze_data();
    void zusaetze();
    void ablehnungen();
    void wartezeit();
    void korrigieren();
    void reizungsDock();
    void verlauf_data();
    void verlauf();
};

void TstListenfuehrung::zusaetze_data()
{
    Faelle::laden("zusaetze.tsv");
}

// What the panel's extra buttons add reaches the stored value; the next game
// starts from a clean panel, won and without extras.
void TstListenfuehrung::zusaetze()
{
    QFETCH(QStringList, knoepfe);
    QFETCH(int, wert);
    Probe fenster(4);
    for (const QString &knopf :
         knoepfe + QStringList{"tbSpieler2", "pbFertig", "pbInListeEintragen"})
        klick(&fenster, qPrintable(knopf));
    eingeben(&fenster, Spiel{"tbKreuz", 2, true, ""});
    QCOMPARE(spalte("SpielListe", "Gewonnen") + spalte("SpielListe", "Verloren"),
             QList<int>({qMax(wert, 0), 24, qMax(-wert, 0), 0}));
}

void TstListenfuehrung::ganzeListe_data()
{
    Faelle::laden("ganzeliste.tsv");
}

void TstListenfuehrung::ganzeListe()
{
    QFETCH(int, spieler);
    QFETCH(int, anzahl);
    Probe fenster(spieler, anzahl);
    QList<int> spiele;
    for (int n = 1; n <= anzahl; ++n) {
        eingeben(&fenster, spielNummer(n, spieler));
        const QStringList neu = fenster.antworten.texte.mid(2 * n - 2);
        QVERIFY2(neu.value(0).endsWith("\nErgebnis korrekt?"), qPrintable(neu.join(" / ")));
        QCOMPARE(neu.value(1), n == anzahl ? QStringLiteral("Rundenende erreicht!")
                                           : "Geber " + Namen.at(n % spieler));
        spiele << Typen[n % 7].second;
    }
    QCOMPARE(spalte("SpielListe", "Spiel"), spiele);
    QCOMPARE(modell(&fenster, "tblViewUebersicht")->rowCount(), anzahl);

    // One game more is refused.
    eingeben(&fenster, spielNummer(anzahl + 1, spieler));
    QCOMPARE(fenster.antworten.titel.mid(2 * anzahl), QStringList({"FRAGE", "INFORMATION"}));
    QCOMPARE(fenster.antworten.texte.last(),
             QStringLiteral("Anzahl von %1 Spielen erreicht.").arg(anzahl));
    QCOMPARE(text(&fenster, "leSpielBeschreibung"),
             QStringLiteral("%1 Spiele gespielt. ListenEnde.").arg(anzahl));
    // A new list does not show the last one's text.
    kind<QAction>(&fenster, "actionNeu")->trigger();
    klick(&fenster, "pbOk");
    QCOMPARE(text(&fenster, "leSpielBeschreibung"), QString());
}

// No declarer, an overbid game and the dealer (whose button is not offered) are refused on
// the panel. A game another program's lock keeps out of the database is reported with file
// and reason and stays on the panel; nothing moves on until it is stored.
void TstListenfuehrung::ablehnungen()
{
    Probe fenster(4);
    auto *geber = kind<QToolButton>(&fenster, "tbSpieler1");
    QVERIFY(!geber->isEnabled());
    for (const Spiel &spiel : {Spiel{"tbKreuz", -1, true, ""}, Spiel{"tbKaro", 1, true, "20"},
                               Spiel{"tbHerz", 0, true, ""}}) {
        geber->setEnabled(true);
        eingeben(&fenster, spiel);
        QVERIFY(!kind<QPushButton>(&fenster, "pbInListeEintragen")->isEnabled());
    }
    QCOMPARE(fenster.antworten.titel, QStringList({"WARNUNG", "INFORMATION", "WARNUNG"}));
    QCOMPARE(fenster.antworten.texte,
             QStringList({"Kein Spieler selektiert!", "Spiel ueberreizt!\nGereizt 20 Spiel 18",
                          "Anna hat gegeben!"}));
    QCOMPARE(zeilen("SpielListe"), 0);

    eingeben(&fenster, spielNummer(1, 4));
    const QString vorher = status(fenster);
    fenster.antworten.texte.clear();
    {
        Sperre sperre(Sperre::Schreiben);
        QVERIFY(sperre.gehalten());
        eingeben(&fenster, spielNummer(2, 4));
    }
    QCOMPARE(fenster.antworten.texte.size(), 2);
    QVERIFY2(fenster.antworten.texte.last().contains(TestUmgebung::datenbankDatei()) &&
                 fenster.antworten.texte.last().contains("locked"),
             qPrintable(fenster.antworten.texte.last()));
    QCOMPARE(status(fenster), vorher);
    // Still the number of the game that waits to be entered.
    QCOMPARE(kind<QLCDNumber>(&fenster, "lcdNumber")->intValue(), 2);
    QVERIFY(kind<QToolButton>(&fenster, "tbPik")->isChecked());
    QVERIFY(!kind<QToolButton>(&fenster, "tbSpieler2")->isEnabled());
    klick(&fenster, "pbInListeEintragen");
    QCOMPARE(fenster.antworten.texte.mid(2).value(1), QStringLiteral("Geber Clara"));
    QCOMPARE(spalte("SpielListe", "Spiel"), QList<int>({10, 11}));
    QCOMPARE(spalte("SpielListe", "Spieler3"), QList<int>({0, 22}));
}

// Fertig starts the wait timer, which enters the game by itself; a "No" to the
// question keeps the game on the panel for another try.
void TstListenfuehrung::wartezeit()
{
    Probe fenster(3, 36);
    fenster.antworten.antworte(QMessageBox::No);
    auto *warten = kind<QTimer>(&fenster, "wartenTimer");
    QVERIFY(warten && warten->isSingleShot());
    for (const char *name : {"tbPik", "tbMit", "tb1", "tbSpieler2", "pbFertig"})
        klick(&fenster, name);
    QVERIFY(warten->isActive());
    warten->start(5);
    QTRY_COMPARE(fenster.antworten.titel, QStringList{"FRAGE"});
    QCOMPARE(zeilen("SpielListe"), 0);
    QVERIFY(kind<QToolButton>(&fenster, "tbPik")->isChecked());

    // Entered by hand, the timer must not enter it a second time.
    klick(&fenster, "pbFertig");
    QVERIFY(warten->isActive());
    klick(&fenster, "pbInListeEintragen");
    QVERIFY(!warten->isActive());
    QCOMPARE(spalte("SpielListe", "Spieler2"), QList<int>{22});

    // A game waiting when another list comes is not entered into it.
    for (const char *name : {"tbPik", "tbMit", "tb1", "tbSpieler2", "pbFertig"})
        klick(&fenster, name);
    QVERIFY(warten->isActive());
    QVERIFY(fenster.findChild<ListenDienst *>()->neuesProtokoll(5, 2, std::nullopt).ok());
    QVERIFY(!warten->isActive());
    QVERIFY(!kind<QPushButton>(&fenster, "pbInListeEintragen")->isEnabled());
}

// A game corrected through the overview comes back on the panel and is stored
// under its number without the wait timer; a deleted row closes the gap.
void TstListenfuehrung::korrigieren()
{
    Probe fenster(4);
    for (int n = 1; n <= 5; ++n)
        eingeben(&fenster, Spiel{Typen[n % 7].first, n % 4, n != 3, n == 2 ? "20" : ""});
    QVERIFY(!kind<QToolButton>(&fenster, "tbSpieler2")->isEnabled());

    fenster.antworten.texte.clear();
    auto *tabelle = kind<QTableView>(&fenster, "tblViewUebersicht");
    tabelle->setCurrentIndex(tabelle->model()->index(1, 5));
    fenster.onSpielEintragBearbeiten();
    QCOMPARE(fenster.antworten.texte.value(0), QStringLiteral("Spiel Nr 2 bearbeiten?"));
    QCOMPARE(kind<QLCDNumber>(&fenster, "lcdNumber")->intValue(), 2);
    QVERIFY(kind<QToolButton>(&fenster, "tbPik")->isChecked());
    QVERIFY(kind<QToolButton>(&fenster, "tbSpieler3")->isChecked());
    QCOMPARE(text(&fenster, "leReizwert"), QStringLiteral("20"));
    auto *korrektur = kind<QGroupBox>(&fenster, "gbKorrektur");
    QVERIFY(!korrektur->isHidden());
    QCOMPARE(text(&fenster, "lblKorrektur"), QStringLiteral("Korrektur Spiel 2"));
    // A correction may name the present dealer, Bernd, as declarer.
    QVERIFY(kind<QToolButton>(&fenster, "tbSpieler2")->isEnabled());
    for (const char *name : {"tbVerloren", "tbSpieler2", "pbFertig"})
        klick(&fenster, name);
    QVERIFY(!kind<QTimer>(&fenster, "wartenTimer")->isActive());
    klick(&fenster, "pbInListeEintragen");
    QCOMPARE(spalte("SpielListe", "Spieler2"), QList<int>({20, -44, 0, 0, 23}));
    QCOMPARE(spalte("SpielListe", "Spieler3"), QList<int>({0, 0, 0, 0, 0}));
    QCOMPARE(tabelle->model()->index(1, 13).data().toString(), QStringLiteral("-44"));
    QVERIFY(korrektur->isHidden());
    QVERIFY(!kind<QToolButton>(&fenster, "tbSpieler2")->isEnabled());

    tabelle->setCurrentIndex(tabelle->model()->index(2, 2));
    fenster.onSpielEintragLoeschen();
    // Bernd still deals after the correction; with four games left, Anna deals the fifth.
    QCOMPARE(fenster.antworten.texte.mid(2),
             QStringList({"Geber Bernd", "Zeile 3 wirklich entfernen?", "Geber Anna"}));
    QCOMPARE(spalte("SpielListe", "Spiel"), QList<int>({10, 11, 24, 23}));
    QCOMPARE(tabelle->model()->rowCount(), 4);
    QCOMPARE(tabelle->model()->index(3, 0).data().toString(), QStringLiteral("4"));
    QVERIFY(!kind<QToolButton>(&fenster, "tbSpieler1")->isEnabled());
    // A correction given up leaves the game; the next new game follows on as game 5.
    tabelle->setCurrentIndex(tabelle->model()->index(0, 0));
    fenster.onSpielEintragBearbeiten();
    QVERIFY(!korrektur->isHidden());
    klick(&fenster, "pbKorrekturAbbrechen");
    QVERIFY(korrektur->isHidden());
    QCOMPARE(kind<QLCDNumber>(&fenster, "lcdNumber")->intValue(), 5);
    QVERIFY(!kind<QToolButton>(&fenster, "tbSpieler1")->isEnabled());
    eingeben(&fenster, Spiel{"tbKaro", 1, true, ""});
    QCOMPARE(spalte("SpielListe", "Spiel"), QList<int>({10, 11, 24, 23, 9}));
}

void TstListenfuehrung::reizungsDock()
{
    Probe fenster(3, 36);
    klick(&fenster, "pbReizung");
    klick(&fenster, "pbReizung");
    QCOMPARE(fenster.findChildren<DockReizung *>().size(), 1);

    const auto bieten = [&](const QString &text) {
        for (auto *k : fenster.findChild<DockReizung *>()->findChildren<QToolButton *>())
            if (k->text() == text)
                return k->click();
    };
    bieten("18");
    QCOMPARE(text(&fenster, "leReizwert"), QStringLiteral("18"));
    QTRY_COMPARE(fenster.findChildren<DockReizung *>().size(), 0);

    klick(&fenster, "pbReizung");
    bieten("Abbruch");
    QCOMPARE(text(&fenster, "leReizwert"), QString());
}

void TstListenfuehrung::verlauf_data()
{
    Faelle::laden("verlauf.tsv");
}

// The chart of the evening: a line per seat, named by its player, ending
// where its score field stands, also after a correction and a deletion.
void TstListenfuehrung::verlauf()
{
    QFETCH(int, modus);
    QFETCH(bool, fabian);
    QVERIFY(mitSpielen(12, modus, {"UPDATE Settings SET BlPunkte=60"}));
    einstellungen().setValue("spielstandmitfabianpunkten", fabian);
    Probe fenster;
    // Drawn while in view only.
    fenster.show();
    kind<QTabWidget>(&fenster, "tabWidget")->setCurrentIndex(1);
    const QList<QtCharts::QAbstractSeries *> linien =
        kind<QtCharts::QChartView>(&fenster, "chartSpielverlauf")->chart()->series();
    QCOMPARE(linien.size(), 4);
    const auto pruefen = [&](int anzahl) {
        for (int sitz = 0; sitz < 4; ++sitz) {
            const auto *linie = static_cast<QtCharts::QLineSeries *>(linien.at(sitz));
            // "Name: 143-G1-V0", in a Bierlachs evening "Name: 41 G1 V0".
            const QString feld =
                text(&fenster, qPrintable(QStringLiteral("lePunkte%1").arg(sitz + 1)));
            QCOMPARE(linie->name(), feld.section(": ", 0, 0));
            QCOMPARE(linie->at(0).x(), 1.0);
            QCOMPARE(
                linie->at(linie->count() - 1),
                QPointF(anzahl,
                        feld.section(": ", 1).section(QRegularExpression("[ -]G"), 0, 0).toInt()));
        }
    };
    pruefen(12);
    QVERIFY(modus != 2 || kind<QComboBox>(&fenster, "cmbBierlachs")->count() > 2);
    auto *dienst = fenster.findChild<ListenDienst *>();
    SpielEintrag spiel = *dienst->spiel(12);
    spiel.setze(SpielEintrag::Spieler1, spiel.spielerWert(0) - 48);
    QVERIFY(dienst->spielAendern(spiel).ok());
    pruefen(12);
    QVERIFY(dienst->spielEntfernen(2).ok());
    pruefen(11);
}

KARTULO_TEST_MAIN(TstListenfuehrung)
#include "tst_listenfuehrung.moc"
