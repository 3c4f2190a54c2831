// Keeping a list through the window as a scorer does: entering whole lists of
// three and four players, the end of the list per mode, refusals, the dealer,
// the wait timer, editing and deleting entries, and the bid dock.

#include "app/game/dockreizung.h"
#include "app/mainwindow.h"
#include "helpers/fensterhilfe.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"

#include <QtWidgets>

using namespace TestProtokoll;
using namespace Fenster;

namespace {

const QStringList Namen{"Anna", "Bernd", "Clara", "Dora"};

// The value the declarer's column must hold: suit and Grand with one jack
// (factor 2), Null 23, lost games doubled.
int erwarteterWert(const Spiel &spiel)
{
    const QMap<QString, int> grundwert{
        {"tbKaro", 9}, {"tbHerz", 10}, {"tbPik", 11}, {"tbKreuz", 12}, {"tbGrang", 24}};
    const QString typ = QLatin1String(spiel.typ);
    if (typ == QLatin1String("tbEingepasst"))
        return 0;
    const int wert = typ == QLatin1String("tbNull") ? 23 : 2 * grundwert.value(typ);
    return spiel.gewonnen ? wert : -2 * wert;
}

// Game n of a list: game types in turn, every third lost, the declarer never
// the dealer.
Spiel spielNummer(int n, int spieler)
{
    static const char *const typen[] = {"tbKaro",  "tbHerz", "tbPik",       "tbKreuz",
                                        "tbGrang", "tbNull", "tbEingepasst"};
    return Spiel{typen[n % 7], n % spieler, n % 3 != 0, QString()};
}

QList<int> spielerWerte(int sitz)
{
    return spalte(QStringLiteral("SpielListe"), QStringLiteral("Spieler%1").arg(sitz + 1));
}

// Each row's value over all seats: only the declarer's column is non-zero.
QList<int> zeilenWerte(int spieler)
{
    QList<int> summen = spielerWerte(0);
    for (int sitz = 1; sitz < spieler; ++sitz)
        for (int zeile = 0; zeile < summen.size(); ++zeile)
            summen[zeile] += spielerWerte(sitz).value(zeile);
    return summen;
}

} // namespace

class TstListenfuehrung : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void ganzeListe_data();
    void ganzeListe();
    void ergebnisModusVerlaengert();
    void ablehnungen_data();
    void ablehnungen();
    void gebenderSpielerImBearbeiten();
    void neinAendertNichts();
    void wartezeitTraegtEin();
    void bearbeiten();
    void loeschen();
    void reizungsDock();
};

void TstListenfuehrung::init()
{
    TestUmgebung::allesLoeschen();
}

void TstListenfuehrung::ganzeListe_data()
{
    QTest::addColumn<int>("spieler");
    QTest::addColumn<int>("anzahl");
    QTest::newRow("4 Spieler, 48 Spiele") << 4 << 48;
    QTest::newRow("3 Spieler, 36 Spiele") << 3 << 36;
}

void TstListenfuehrung::ganzeListe()
{
    QFETCH(int, spieler);
    QFETCH(int, anzahl);
    QVERIFY(anlegen(spieler, anzahl));
    MainWindow fenster;
    MeldungsBeantworter antworten;

    QVector<QList<int>> erwartet(spieler);
    QList<int> nummern;
    int eingepasst = 0;
    for (int n = 1; n <= anzahl; ++n) {
        const Spiel spiel = spielNummer(n, spieler);
        eingepasst += QLatin1String(spiel.typ) == QLatin1String("tbEingepasst");
        antworten.texte.clear();
        eingeben(&fenster, spiel);
        QVERIFY2(antworten.texte.value(0).endsWith("\nErgebnis korrekt?"),
                 qPrintable(antworten.texte.join(" / ")));
        const QString ansage = n == anzahl ? QStringLiteral("Rundenende erreicht!")
                                           : QStringLiteral("Geber %1").arg(Namen.at(n % spieler));
        QCOMPARE(antworten.texte.value(1), ansage);
        for (int sitz = 0; sitz < spieler; ++sitz)
            erwartet[sitz] << (sitz == spiel.sitz ? erwarteterWert(spiel) : 0);
        nummern << n;
    }
    QCOMPARE(spalte("SpielListe", "Zeile"), nummern);
    for (int sitz = 0; sitz < spieler; ++sitz)
        QCOMPARE(spielerWerte(sitz), erwartet.at(sitz));
    QCOMPARE(spalte("SpielListe", "Eingepasst").count(1), eingepasst);
    QCOMPARE(fenster.findChild<QTableView *>("tblViewUebersicht")->model()->rowCount(), anzahl);
    QVERIFY(!fenster.findChild<QSpinBox *>("spbSpielAnzahl")->isEnabled());

    // One game more is refused.
    antworten.texte.clear();
    antworten.titel.clear();
    eingeben(&fenster, spielNummer(anzahl + 1, spieler));
    QCOMPARE(antworten.titel, QStringList({"FRAGE", "INFORMATION"}));
    QCOMPARE(antworten.texte.at(1), QStringLiteral("Anzahl von %1 Spielen erreicht.").arg(anzahl));
    QCOMPARE(text(&fenster, "leSpielBeschreibung"),
             QStringLiteral("%1 Spiele gespielt. ListenEnde.").arg(anzahl));
    QCOMPARE(zeilen("SpielListe"), anzahl);
}

void TstListenfuehrung::ergebnisModusVerlaengert()
{
    QVERIFY(anlegen(3, 10, 1));
    MainWindow fenster;
    MeldungsBeantworter antworten;
    for (int n = 1; n <= 11; ++n)
        eingeben(&fenster, spielNummer(n, 3));
    QCOMPARE(zeilen("SpielListe"), 11);
    QCOMPARE(fenster.findChild<QSpinBox *>("spbSpielAnzahl")->value(), 20);
    QVERIFY(!antworten.texte.contains("Anzahl von 10 Spielen erreicht."));
}

void TstListenfuehrung::ablehnungen_data()
{
    QTest::addColumn<QByteArray>("typ");
    QTest::addColumn<int>("sitz");
    QTest::addColumn<QString>("reizung");
    QTest::addColumn<QString>("titel");
    QTest::addColumn<QString>("text");
    QTest::newRow("kein Spieler") << QByteArray("tbKreuz") << -1 << ""
                                  << "WARNUNG"
                                  << "Kein Spieler selektiert!";
    QTest::newRow("ueberreizt") << QByteArray("tbKaro") << 1 << "20"
                                << "INFORMATION"
                                << "Spiel ueberreizt!\nGereizt 20 Spiel 18";
}

void TstListenfuehrung::ablehnungen()
{
    QFETCH(QByteArray, typ);
    QFETCH(int, sitz);
    QFETCH(QString, reizung);
    QVERIFY(anlegen(4, 48));
    MainWindow fenster;
    MeldungsBeantworter antworten;
    eingeben(&fenster, Spiel{typ.constData(), sitz, true, reizung});
    QCOMPARE(antworten.titel.size(), 1);
    QTEST(antworten.titel.first(), "titel");
    QTEST(antworten.texte.first(), "text");
    QVERIFY(!fenster.findChild<QPushButton *>("pbInListeEintragen")->isEnabled());
    QCOMPARE(zeilen("SpielListe"), 0);
}

void TstListenfuehrung::gebenderSpielerImBearbeiten()
{
    QVERIFY(anlegen(4, 48));
    MainWindow fenster;
    MeldungsBeantworter antworten;
    // Anna deals the first game: her button is not offered ...
    auto *anna = fenster.findChild<QToolButton *>("tbSpieler1");
    QVERIFY(!anna->isEnabled());
    QCOMPARE(anna->text(), QStringLiteral("Anna"));
    // ... and refused should it be pressed anyway.
    anna->setEnabled(true);
    eingeben(&fenster, Spiel{"tbHerz", 0, true, ""});
    QCOMPARE(antworten.texte, QStringList{"Anna hat gegeben!"});

    // Correcting a game may name the present dealer as declarer.
    eingeben(&fenster, Spiel{"tbHerz", 1, true, ""});
    eingeben(&fenster, Spiel{"tbHerz", 2, true, ""});
    QCOMPARE(zeilen("SpielListe"), 2);
    auto *uebersicht = fenster.findChild<QTableView *>("tblViewUebersicht");
    fenster.onUebersichtDoubleClicked(uebersicht->model()->index(0, 3));
    QVERIFY(fenster.findChild<QToolButton *>("tbSpieler3")->isEnabled());
    eingeben(&fenster, Spiel{"tbHerz", 2, true, ""});
    QCOMPARE(spielerWerte(2), QList<int>({20, 20}));
    QCOMPARE(spielerWerte(1), QList<int>({0, 0}));
}

void TstListenfuehrung::neinAendertNichts()
{
    QVERIFY(anlegen(3, 36));
    MainWindow fenster;
    MeldungsBeantworter antworten;
    antworten.antworte(QMessageBox::No);
    eingeben(&fenster, Spiel{"tbPik", 1, true, ""});
    QCOMPARE(antworten.titel, QStringList{"FRAGE"});
    QCOMPARE(zeilen("SpielListe"), 0);
    // The panel keeps the game; a second Fertig offers it again.
    QVERIFY(fenster.findChild<QToolButton *>("tbPik")->isChecked());
    klick(&fenster, "pbFertig");
    klick(&fenster, "pbInListeEintragen");
    QCOMPARE(spielerWerte(1), QList<int>{22});
}

void TstListenfuehrung::wartezeitTraegtEin()
{
    QVERIFY(anlegen(3, 36));
    MainWindow fenster;
    MeldungsBeantworter antworten;
    auto *warten = fenster.findChild<QTimer *>("wartenTimer");
    QVERIFY(warten);
    QVERIFY(warten->isSingleShot());
    QCOMPARE(warten->interval(), 10000);
    klick(&fenster, "tbGrang");
    klick(&fenster, "tbSpieler2");
    klick(&fenster, "pbFertig");
    QVERIFY(warten->isActive());
    warten->start(5);
    QTRY_COMPARE(zeilen("SpielListe"), 1);
    QCOMPARE(antworten.titel.count("FRAGE"), 1);
    QVERIFY(!warten->isActive());
}

void TstListenfuehrung::bearbeiten()
{
    QVERIFY(anlegen(3, 36));
    MainWindow fenster;
    MeldungsBeantworter antworten;
    for (int n = 1; n <= 3; ++n)
        eingeben(&fenster, Spiel{"tbKreuz", n % 3, true, n == 2 ? "24" : ""});

    antworten.texte.clear();
    auto *uebersicht = fenster.findChild<QTableView *>("tblViewUebersicht");
    uebersicht->setCurrentIndex(uebersicht->model()->index(1, 5));
    fenster.onSpielEintragBearbeiten();
    QCOMPARE(antworten.texte.value(0), QStringLiteral("Spiel Nr 2 bearbeiten?"));
    QCOMPARE(fenster.findChild<QLCDNumber *>("lcdNumber")->intValue(), 2);
    QVERIFY(fenster.findChild<QToolButton *>("tbSpieler3")->isChecked());
    auto *warten = fenster.findChild<QTimer *>("wartenTimer");
    klick(&fenster, "tbVerloren");
    klick(&fenster, "pbFertig");
    QVERIFY(!warten->isActive());
    klick(&fenster, "pbInListeEintragen");

    QCOMPARE(spalte("SpielListe", "Zeile"), QList<int>({1, 2, 3}));
    QCOMPARE(spielerWerte(2), QList<int>({0, -48, 0}));
    QCOMPARE(spalte("SpielListe", "Verloren"), QList<int>({0, 48, 0}));
    QCOMPARE(spalte("SpielListe", "Reizung"), QList<int>({0, 24, 0}));
    QCOMPARE(uebersicht->model()->index(1, 14).data().toString(), QStringLiteral("-48"));

    // The next new game follows on as game 4.
    eingeben(&fenster, Spiel{"tbKaro", 0, true, ""});
    QCOMPARE(spalte("SpielListe", "Zeile"), QList<int>({1, 2, 3, 4}));
}

void TstListenfuehrung::loeschen()
{
    QVERIFY(anlegen(4, 48));
    MainWindow fenster;
    MeldungsBeantworter antworten;
    QList<int> werte;
    for (int n = 1; n <= 5; ++n) {
        const Spiel spiel = spielNummer(n, 4);
        eingeben(&fenster, spiel);
        werte << erwarteterWert(spiel);
    }
    QCOMPARE(zeilenWerte(4), werte);

    antworten.texte.clear();
    auto *uebersicht = fenster.findChild<QTableView *>("tblViewUebersicht");
    uebersicht->setCurrentIndex(uebersicht->model()->index(2, 2));
    fenster.onSpielEintragLoeschen();
    QCOMPARE(antworten.texte.value(0), QStringLiteral("Zeile 3 wirklich entfernen?"));
    // Four games left: the fifth game is dealt by seat 4 % 4 = 0.
    QCOMPARE(antworten.texte.value(1), QStringLiteral("Geber Anna"));

    QCOMPARE(spalte("SpielListe", "Zeile"), QList<int>({1, 2, 3, 4}));
    werte.removeAt(2);
    QCOMPARE(zeilenWerte(4), werte);
    QCOMPARE(uebersicht->model()->rowCount(), 4);
    QCOMPARE(uebersicht->model()->index(3, 0).data().toString(), QStringLiteral("4"));
    QVERIFY(!fenster.findChild<QToolButton *>("tbSpieler1")->isEnabled());
}

void TstListenfuehrung::reizungsDock()
{
    QVERIFY(anlegen(3, 36));
    MainWindow fenster;
    klick(&fenster, "pbReizung");
    klick(&fenster, "pbReizung");
    QCOMPARE(fenster.findChildren<DockReizung *>().size(), 1);
    auto *dock = fenster.findChild<DockReizung *>();
    QCOMPARE(fenster.dockWidgetArea(dock), Qt::TopDockWidgetArea);
    QCOMPARE(dock->features(), QDockWidget::NoDockWidgetFeatures);

    const auto knopf = [&](const QString &text) {
        for (auto *k : fenster.findChild<DockReizung *>()->findChildren<QToolButton *>())
            if (k->text() == text)
                return k;
        return static_cast<QToolButton *>(nullptr);
    };
    knopf("18")->click();
    QCOMPARE(text(&fenster, "leReizwert"), QStringLiteral("18"));
    QTRY_COMPARE(fenster.findChildren<DockReizung *>().size(), 0);

    klick(&fenster, "pbReizung");
    knopf("Abbruch")->click();
    QCOMPARE(text(&fenster, "leReizwert"), QString());
}

KARTULO_TEST_MAIN(TstListenfuehrung)
#include "tst_listenfuehrung.moc"
