// Running scores: the tallies per seat, plain and Seeger-Fabian scores in 3- and 4-player
// lists, passed-in rows, the seat lines; and the rounds of a Bierlachs evening with their
// remaining points and who pays.

#include "helpers/testumgebung.h"
#include "standings/spielstand.h"

namespace {

using S = SpielEintrag;

// One row: its Zeile and the four seat columns.
SpielEintrag spiel(int zeile, int s1, int s2, int s3, int s4 = 0)
{
    SpielEintrag e;
    e.setze(S::Zeile, zeile);
    e.setze(S::Spieler1, s1);
    e.setze(S::Spieler2, s2);
    e.setze(S::Spieler3, s3);
    e.setze(S::Spieler4, s4);
    return e;
}

// A passed-in round: the flag, and nothing in any seat column.
SpielEintrag eingepasst(int zeile)
{
    SpielEintrag e = spiel(zeile, 0, 0, 0);
    e.setze(S::Eingepasst, 1);
    return e;
}

using Liste = QVector<SpielEintrag>;

// Seat 1 wins 24 and 36, seat 2 loses a game of 18 (stored -36), seat 3 plays nothing.
Liste beispiel()
{
    return {spiel(1, 24, 0, 0), spiel(2, 0, -36, 0), spiel(3, 36, 0, 0)};
}

// "points Gwon Vlost" of all four seats, so a failure shows every seat at once.
QString alsText(const Bilanzen &b)
{
    QStringList teile;
    for (const SitzBilanz &s : b)
        teile << QStringLiteral("%1 G%2 V%3").arg(s.punkte).arg(s.gewonnen).arg(s.verloren);
    return teile.join(QStringLiteral(" | "));
}

// A round as one text: its rows, state, remaining points, won and lost of all four seats
// and who pays.
QString alsText(const BierlachsRunde &runde, int spieler, int maxPunkte)
{
    QStringList rest, gewonnen, verloren;
    for (int sitz = 0; sitz < 4; ++sitz) {
        rest << QString::number(Bierlachs::rest(runde, sitz, maxPunkte));
        gewonnen << QString::number(runde.bilanz[static_cast<size_t>(sitz)].gewonnen);
        verloren << QString::number(runde.bilanz[static_cast<size_t>(sitz)].verloren);
    }
    return QStringLiteral("Zeile %1-%2 %3; Rest %4; G %5; V %6; Bierlachs %7")
        .arg(QString::number(runde.ersteZeile), QString::number(runde.letzteZeile),
             runde.beendet ? QStringLiteral("beendet") : QStringLiteral("laeuft"),
             rest.join(QLatin1Char(' ')), gewonnen.join(QLatin1Char(' ')),
             verloren.join(QLatin1Char(' ')),
             QString::number(Bierlachs::bierlachs(runde, spieler, maxPunkte)));
}

const QStringList namen{QStringLiteral("Anna"), QStringLiteral("Bert"), QStringLiteral("Carl"),
                        QStringLiteral("Dora")};

} // namespace

Q_DECLARE_METATYPE(SpielEintrag)

class TstSpielstand : public QObject
{
    Q_OBJECT

private slots:
    void bilanzen_data();
    void bilanzen();
    void angezeigt_data();
    void angezeigt();
    void angezeigtSitzAusserhalb();
    void zeilen_data();
    void zeilen();
    void zeile_data();
    void zeile();

    void bierlachsRunden_data();
    void bierlachsRunden();
    void bierlachsZeile_data();
    void bierlachsZeile();
};

void TstSpielstand::bilanzen_data()
{
    QTest::addColumn<Liste>("spiele");
    QTest::addColumn<int>("spieler");
    QTest::addColumn<QString>("erwartet");

    QTest::newRow("leere Liste") << Liste() << 3 << "0 G0 V0 | 0 G0 V0 | 0 G0 V0 | 0 G0 V0";
    QTest::newRow("Beispiel, 3 Spieler")
        << beispiel() << 3 << "60 G2 V0 | -36 G0 V1 | 0 G0 V0 | 0 G0 V0";
    QTest::newRow("eingepasste Zeilen aendern nichts")
        << Liste{eingepasst(1), spiel(2, 24, 0, 0), eingepasst(3), spiel(4, 0, -36, 0),
                 eingepasst(5), spiel(6, 36, 0, 0), eingepasst(7)}
        << 3 << "60 G2 V0 | -36 G0 V1 | 0 G0 V0 | 0 G0 V0";
    QTest::newRow("gewonnen und verloren am selben Sitz")
        << Liste{spiel(1, 24, 0, 0), spiel(2, -48, 0, 0), spiel(3, 0, 0, 23)} << 3
        << "-24 G1 V1 | 0 G0 V0 | 23 G1 V0 | 0 G0 V0";
    // Whatever stands in the fourth column of a 3-player list is not counted.
    QTest::newRow("Sitz 4 der 3er-Liste bleibt 0")
        << Liste{spiel(1, 0, 0, 0, 40), spiel(2, 24, 0, 0, -60)} << 3
        << "24 G1 V0 | 0 G0 V0 | 0 G0 V0 | 0 G0 V0";
    QTest::newRow("4 Spieler") << Liste{spiel(1, 24, 0, 0, 0), spiel(2, 0, 0, 0, 40),
                                        spiel(3, 0, 0, 0, -60), spiel(4, 0, 0, -46, 0)}
                               << 4 << "24 G1 V0 | 0 G0 V0 | -46 G0 V1 | -20 G1 V1";
}

void TstSpielstand::bilanzen()
{
    QFETCH(Liste, spiele);
    QFETCH(int, spieler);
    QTEST(alsText(Spielstand::bilanzen(spiele, spieler)), "erwartet");
}

void TstSpielstand::angezeigt_data()
{
    QTest::addColumn<Liste>("spiele");
    QTest::addColumn<int>("spieler");
    QTest::addColumn<bool>("mitFabian");
    QTest::addColumn<int>("gewMinusVerl");
    QTest::addColumn<int>("gegner3");
    QTest::addColumn<int>("gegner4");
    QTest::addColumn<QVector<int>>("erwartet");

    QTest::newRow("Beispiel, nur Punkte")
        << beispiel() << 3 << false << 50 << 40 << 30 << QVector<int>{60, -36, 0, 0};
    // 60 + 50*2 + 40*1, -36 + 50*(-1) + 0, 0 + 0 + 40*1.
    QTest::newRow("Beispiel, mit Fabian")
        << beispiel() << 3 << true << 50 << 40 << 30 << QVector<int>{200, -86, 40, 0};
    QTest::newRow("Beispiel mit eingepassten Zeilen, mit Fabian")
        << Liste{eingepasst(1), spiel(2, 24, 0, 0), spiel(3, 0, -36, 0),
                 eingepasst(4), spiel(5, 36, 0, 0), eingepasst(6)}
        << 3 << true << 50 << 40 << 30 << QVector<int>{200, -86, 40, 0};
    // The same games at a table of four: 30 per game an opponent lost, and seat 4 gets it too.
    QTest::newRow("Beispiel als 4er-Liste, mit Fabian")
        << beispiel() << 4 << true << 50 << 40 << 30 << QVector<int>{190, -86, 30, 30};
    QTest::newRow("4 Spieler, mit Fabian")
        << Liste{spiel(1, 24, 0, 0, 0), spiel(2, 0, -36, 0, 0), spiel(3, 0, 0, -46, 0),
                 spiel(4, 0, 0, 0, 30)}
        << 4 << true << 50 << 40 << 30 << QVector<int>{134, -56, -66, 140};
    QTest::newRow("4 Spieler, nur Punkte")
        << Liste{spiel(1, 24, 0, 0, 0), spiel(2, 0, -36, 0, 0), spiel(3, 0, 0, -46, 0),
                 spiel(4, 0, 0, 0, 30)}
        << 4 << false << 50 << 40 << 30 << QVector<int>{24, -36, -46, 30};
    // Factors from the settings, all different, so a mixed-up factor shows.
    QTest::newRow("eigene Faktoren, 3 Spieler")
        << beispiel() << 3 << true << 100 << 7 << 9 << QVector<int>{267, -136, 7, 0};
    QTest::newRow("eigene Faktoren, 4 Spieler")
        << beispiel() << 4 << true << 100 << 7 << 9 << QVector<int>{269, -136, 9, 9};
    // Seat 4 of a 3-player list neither scores nor counts as an opponent.
    QTest::newRow("Sitz 4 der 3er-Liste, mit Fabian")
        << Liste{spiel(1, 24, 0, 0, -36), spiel(2, 0, -36, 0, 48), spiel(3, 36, 0, 0, -40)} << 3
        << true << 50 << 40 << 30 << QVector<int>{200, -86, 40, 0};
}

void TstSpielstand::angezeigt()
{
    QFETCH(Liste, spiele);
    QFETCH(int, spieler);
    QFETCH(bool, mitFabian);
    QFETCH(int, gewMinusVerl);
    QFETCH(int, gegner3);
    QFETCH(int, gegner4);
    FabianFaktoren f;
    f.gewMinusVerl = gewMinusVerl;
    f.gegner3 = gegner3;
    f.gegner4 = gegner4;
    const Bilanzen b = Spielstand::bilanzen(spiele, spieler);
    QVector<int> gezeigt;
    for (int sitz = 0; sitz < 4; ++sitz)
        gezeigt << Spielstand::angezeigt(b, sitz, spieler, mitFabian, f);
    QTEST(gezeigt, "erwartet");
}

// Even a tally handed in for a seat outside the list shows nothing there.
void TstSpielstand::angezeigtSitzAusserhalb()
{
    Bilanzen b{};
    b[0] = {1, 1, 10};
    b[3] = {2, 0, 50};
    const FabianFaktoren f;
    QCOMPARE(Spielstand::angezeigt(b, 3, 3, true, f), 0);
    QCOMPARE(Spielstand::angezeigt(b, 3, 3, false, f), 0);
    QCOMPARE(Spielstand::angezeigt(b, -1, 3, true, f), 0);
    QCOMPARE(Spielstand::angezeigt(b, 4, 4, true, f), 0);
    // The same tally in a 4-player list does count: 50 + 50*2 + 30*1.
    QCOMPARE(Spielstand::angezeigt(b, 3, 4, true, f), 180);
}

void TstSpielstand::zeilen_data()
{
    QTest::addColumn<Liste>("spiele");
    QTest::addColumn<int>("spieler");
    QTest::addColumn<bool>("mitFabian");
    QTest::addColumn<QStringList>("erwartet");

    QTest::newRow("ohne Fabian") << beispiel() << 3 << false
                                 << QStringList{"Anna: 60-G2-V0", "Bert: -36-G0-V1",
                                                "Carl: 0-G0-V0"};
    QTest::newRow("mit Fabian") << beispiel() << 3 << true
                                << QStringList{"Anna: 200-G2-V0", "Bert: -86-G0-V1",
                                               "Carl: 40-G0-V0"};
    QTest::newRow("4 Spieler mit Fabian")
        << Liste{spiel(1, 24, 0, 0, 0), spiel(2, 0, -36, 0, 0), spiel(3, 0, 0, -46, 0),
                 spiel(4, 0, 0, 0, 30)}
        << 4 << true
        << QStringList{"Anna: 134-G1-V0", "Bert: -56-G0-V1", "Carl: -66-G0-V1", "Dora: 140-G1-V0"};
}

// From the rows to the texts of the score fields, as the main window builds them.
void TstSpielstand::zeilen()
{
    QFETCH(Liste, spiele);
    QFETCH(int, spieler);
    QFETCH(bool, mitFabian);
    const Bilanzen b = Spielstand::bilanzen(spiele, spieler);
    QStringList zeilen;
    for (int sitz = 0; sitz < spieler; ++sitz) {
        const int wert = Spielstand::angezeigt(b, sitz, spieler, mitFabian, FabianFaktoren());
        zeilen << Spielstand::zeile(namen.at(sitz), wert, b[static_cast<size_t>(sitz)]);
    }
    QTEST(zeilen, "erwartet");
}

void TstSpielstand::zeile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("wert");
    QTest::addColumn<int>("gewonnen");
    QTest::addColumn<int>("verloren");
    QTest::addColumn<QString>("erwartet");

    QTest::newRow("Zahlen getrennt") << "Anna" << 1234 << 12 << 7 << "Anna: 1234-G12-V7";
    QTest::newRow("negativ") << "Bert" << -86 << 0 << 1 << "Bert: -86-G0-V1";
    QTest::newRow("leerer Name") << "" << 0 << 0 << 0 << ": 0-G0-V0";
    // A percent sign in a name is the name's, not a placeholder.
    QTest::newRow("Prozent im Namen") << "Ute %2" << 5 << 1 << 0 << "Ute %2: 5-G1-V0";
}

void TstSpielstand::zeile()
{
    QFETCH(QString, name);
    QFETCH(int, wert);
    QFETCH(int, gewonnen);
    QFETCH(int, verloren);
    SitzBilanz bilanz;
    bilanz.gewonnen = gewonnen;
    bilanz.verloren = verloren;
    bilanz.punkte = 999; // the line shows the score handed in, never the plain points
    QTEST(Spielstand::zeile(name, wert, bilanz), "erwartet");
}

void TstSpielstand::bierlachsRunden_data()
{
    QTest::addColumn<Liste>("spiele");
    QTest::addColumn<int>("spieler");
    QTest::addColumn<int>("maxPunkte");
    QTest::addColumn<QStringList>("erwartet");

    QTest::newRow("leere Liste") << Liste() << 3 << 100
                                 << QStringList{"Zeile 1-0 laeuft; Rest 100 100 100 100; "
                                                "G 0 0 0 0; V 0 0 0 0; Bierlachs -1"};
    QTest::newRow("endet genau bei 0")
        << Liste{spiel(1, 60, 0, 0), spiel(2, 0, 24, 0), spiel(3, 40, 0, 0)} << 3 << 100
        << QStringList{"Zeile 1-3 beendet; Rest 0 76 100 100; G 2 1 0 0; V 0 0 0 0; "
                       "Bierlachs 2"};
    QTest::newRow("1 Punkt uebrig, laeuft weiter")
        << Liste{spiel(1, 60, 0, 0), spiel(2, 39, 0, 0)} << 3 << 100
        << QStringList{"Zeile 1-2 laeuft; Rest 1 100 100 100; G 2 0 0 0; V 0 0 0 0; "
                       "Bierlachs -1"};
    QTest::newRow("unter 0, keine neue Runde ohne weiteres Spiel")
        << Liste{spiel(1, 60, 0, 0), spiel(2, 48, 0, 0)} << 3 << 100
        << QStringList{"Zeile 1-2 beendet; Rest -8 100 100 100; G 2 0 0 0; V 0 0 0 0; "
                       "Bierlachs 1"};
    // Counted down by the lost 36 Anna would be at 4 and out with the 48.
    QTest::newRow("verlorenes Spiel hebt den Rest")
        << Liste{spiel(1, 60, 0, 0), spiel(2, -36, 0, 0), spiel(3, 48, 0, 0), spiel(4, 0, 30, 0)}
        << 3 << 100
        << QStringList{"Zeile 1-4 laeuft; Rest 28 70 100 100; G 2 1 0 0; V 1 0 0 0; "
                       "Bierlachs -1"};
    // Bert and Carl both keep 100 in the first round: the lower seat pays.
    QTest::newRow("neue Runde nach beendeter")
        << Liste{spiel(1, 60, 0, 0), spiel(2, 40, 0, 0), spiel(3, 0, 24, 0), eingepasst(4),
                 spiel(5, 0, 0, -36)}
        << 3 << 100
        << QStringList{"Zeile 1-2 beendet; Rest 0 100 100 100; G 2 0 0 0; V 0 0 0 0; "
                       "Bierlachs 1",
                       "Zeile 3-5 laeuft; Rest 100 76 136 100; G 0 1 0 0; V 0 0 1 0; "
                       "Bierlachs -1"};
    QTest::newRow("drei Runden")
        << Liste{spiel(1, 120, 0, 0), spiel(2, 0, 100, 0), spiel(3, 0, 0, 24), spiel(4, 0, 0, 70),
                 spiel(5, 0, -46, 0)}
        << 3 << 100
        << QStringList{"Zeile 1-1 beendet; Rest -20 100 100 100; G 1 0 0 0; V 0 0 0 0; "
                       "Bierlachs 1",
                       "Zeile 2-2 beendet; Rest 100 0 100 100; G 0 1 0 0; V 0 0 0 0; "
                       "Bierlachs 0",
                       "Zeile 3-5 laeuft; Rest 100 146 6 100; G 0 0 2 0; V 0 1 0 0; "
                       "Bierlachs -1"};
    QTest::newRow("Gleichstand um den Bierlachs, 4 Spieler")
        << Liste{spiel(1, 0, 0, 30, 0), spiel(2, 0, 0, 0, 100)} << 4 << 100
        << QStringList{"Zeile 1-2 beendet; Rest 100 100 70 0; G 0 0 1 1; V 0 0 0 0; "
                       "Bierlachs 0"};
    // Seat 4 is empty at a table of three, though it would have the most left.
    QTest::newRow("3 Spieler, Sitz 4 zahlt nicht")
        << Liste{spiel(1, 0, 60, 0), spiel(2, 0, 0, 30), spiel(3, 70, 0, 0), spiel(4, 40, 0, 0)}
        << 3 << 110
        << QStringList{"Zeile 1-4 beendet; Rest 0 50 80 110; G 2 1 1 0; V 0 0 0 0; "
                       "Bierlachs 2"};
    QTest::newRow("Sitz 4 der 3er-Liste beendet keine Runde")
        << Liste{spiel(1, 0, 0, 0, 100), spiel(2, 0, 24, 0, 60)} << 3 << 100
        << QStringList{"Zeile 1-2 laeuft; Rest 100 76 100 100; G 0 1 0 0; V 0 0 0 0; "
                       "Bierlachs -1"};
    QTest::newRow("Maximum 0: eine Runde")
        << Liste{spiel(1, 60, 0, 0), spiel(2, 40, 0, 0), spiel(3, 0, -36, 0)} << 3 << 0
        << QStringList{"Zeile 1-3 laeuft; Rest -100 36 0 0; G 2 0 0 0; V 0 1 0 0; "
                       "Bierlachs -1"};
    QTest::newRow("negatives Maximum: eine Runde")
        << Liste{spiel(1, 600, 0, 0), spiel(2, 0, 600, 0)} << 3 << -1
        << QStringList{"Zeile 1-2 laeuft; Rest -601 -601 -1 -1; G 1 1 0 0; V 0 0 0 0; "
                       "Bierlachs -1"};
    // The rows say where a round starts, not their position in the list.
    QTest::newRow("Zeilen aus den Eintraegen")
        << Liste{spiel(7, 500, 0, 0), spiel(9, 0, 18, 0), spiel(12, 0, 0, 20)} << 3 << 500
        << QStringList{"Zeile 7-7 beendet; Rest 0 500 500 500; G 1 0 0 0; V 0 0 0 0; "
                       "Bierlachs 1",
                       "Zeile 9-12 laeuft; Rest 500 482 480 500; G 0 1 1 0; V 0 0 0 0; "
                       "Bierlachs -1"};
}

void TstSpielstand::bierlachsRunden()
{
    QFETCH(Liste, spiele);
    QFETCH(int, spieler);
    QFETCH(int, maxPunkte);
    QStringList runden;
    for (const BierlachsRunde &runde : Bierlachs::runden(spiele, spieler, maxPunkte))
        runden << alsText(runde, spieler, maxPunkte);
    QTEST(runden, "erwartet");
}

void TstSpielstand::bierlachsZeile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("rest");
    QTest::addColumn<int>("gewonnen");
    QTest::addColumn<int>("verloren");
    QTest::addColumn<QString>("erwartet");

    QTest::newRow("laufend") << "Anna" << 28 << 2 << 1 << "Anna: 28 G2 V1";
    QTest::newRow("unter 0") << "Bert" << -8 << 12 << 0 << "Bert: -8 G12 V0";
    QTest::newRow("Prozent im Namen") << "Ute %3" << 500 << 0 << 0 << "Ute %3: 500 G0 V0";
}

void TstSpielstand::bierlachsZeile()
{
    QFETCH(QString, name);
    QFETCH(int, rest);
    QFETCH(int, gewonnen);
    QFETCH(int, verloren);
    SitzBilanz bilanz;
    bilanz.gewonnen = gewonnen;
    bilanz.verloren = verloren;
    bilanz.punkte = 999; // the line shows the remaining points handed in
    QTEST(Bierlachs::zeile(name, rest, bilanz), "erwartet");
}

KARTULO_TEST_MAIN(TstSpielstand)
#include "tst_spielstand.moc"
