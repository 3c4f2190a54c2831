// Scores with and without Fabian points, Bierlachs rounds, the money account
// to the cent, and the countdown of a series' time limit.

#include "core/standings/kostenrechnung.h"
#include "core/standings/zeitlimit.h"
#include "helpers/testumgebung.h"

namespace {

using S = SpielEintrag;
using Liste = QVector<SpielEintrag>;
using Tisch = QVector<KostenSpieler>;

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

// Seat 1 wins 24 and 36, seat 2 loses a game of 18 (stored -36), seat 3 plays
// nothing; a passed-in round in between counts for nobody.
Liste beispiel()
{
    SpielEintrag eingepasst = spiel(3, 0, 0, 0);
    eingepasst.setze(S::Eingepasst, 1);
    return {spiel(1, 24, 0, 0), spiel(2, 0, -36, 0), eingepasst, spiel(4, 36, 0, 0)};
}

KostenSpieler spieler(const QString &name, int mgldNr, int gewonnen, int verloren, int punkte,
                      const QString &mitglied = QStringLiteral("Ja"),
                      const QString &preisskat = QStringLiteral("Ja"))
{
    return {name, mgldNr, mitglied, preisskat, {gewonnen, verloren, punkte}};
}

KostenSpieler nurPunkte(int punkte, const QString &mitglied = QStringLiteral("Ja"))
{
    return spieler(QStringLiteral("X"), 0, 0, 0, punkte, mitglied);
}

// Anna 1360, Bert 640, Carl -110 with the default factors (50, 40); Bert plays no Preisskat.
Tisch dreierTisch()
{
    return {spieler("Anna", 11, 10, 2, 520), spieler("Bert", 12, 6, 4, 180, "Ja", "Nein"),
            spieler("Carl", 13, 3, 7, -150)};
}

// Every value different from the defaults and from each other, so a mixed-up setting shows.
const KostenWerte eigeneKosten{0.5, 1.5, 2.5, 3.5, 1.2, 0.6, 1.1, 12.5, 20, 45, 35};

QString zeile(const KostenErgebnis &e, KostenErgebnis::Zeile z)
{
    return e.zeilen[static_cast<size_t>(z)].join(QStringLiteral(" | "));
}

template <typename Zahlen> QString alsText(const Zahlen &zahlen)
{
    QStringList teile;
    for (auto z : zahlen)
        teile << QString::number(z);
    return teile.join(QLatin1Char(' '));
}

// A round as one text: rows, state, points left of all four seats and who pays.
QString alsText(const BierlachsRunde &runde, int spieler, int maxPunkte)
{
    QVector<int> rest;
    for (int sitz = 0; sitz < 4; ++sitz)
        rest << Bierlachs::rest(runde, sitz, maxPunkte);
    return QStringLiteral("%1-%2 %3 Rest %4 Bierlachs %5")
        .arg(runde.ersteZeile)
        .arg(runde.letzteZeile)
        .arg(runde.beendet ? QStringLiteral("beendet") : QStringLiteral("laeuft"), alsText(rest))
        .arg(Bierlachs::bierlachs(runde, spieler, maxPunkte));
}

} // namespace

Q_DECLARE_METATYPE(Tisch)
Q_DECLARE_METATYPE(KostenWerte)
Q_DECLARE_METATYPE(Liste)

class TstAbrechnung : public QObject
{
    Q_OBJECT

private slots:
    void spielstand_data();
    void spielstand();
    void bierlachsRunden_data();
    void bierlachsRunden();
    void fusszeilen_data();
    void fusszeilen();
    void plaetze_data();
    void plaetze();
    void serien_data();
    void serien();
    void beschreibungen();
    void zeitlimit_data();
    void zeitlimit();
};

void TstAbrechnung::spielstand_data()
{
    QTest::addColumn<Liste>("spiele");
    QTest::addColumn<int>("spieler");
    QTest::addColumn<int>("gewMinusVerl");
    QTest::addColumn<QString>("punkte");
    QTest::addColumn<QString>("fabian");

    // 60 + 50*2 + 40*1, -36 + 50*(-1) + 0, 0 + 0 + 40*1.
    QTest::newRow("3 Spieler") << beispiel() << 3 << 50 << "60 -36 0 0"
                               << "200 -86 40 0";
    // At a table of four 30 per game an opponent lost, and seat 4 gets it too.
    QTest::newRow("als 4er-Liste") << beispiel() << 4 << 50 << "60 -36 0 0"
                                   << "190 -86 30 30";
    QTest::newRow("eigener Faktor") << beispiel() << 3 << 100 << "60 -36 0 0"
                                    << "300 -136 40 0";
    // Seat 4 of a 3-player list neither scores nor counts as an opponent.
    QTest::newRow("Sitz 4 der 3er-Liste")
        << Liste{spiel(1, 24, 0, 0, -36), spiel(2, 0, -36, 0, 48), spiel(3, 36, 0, 0, -40)} << 3
        << 50 << "60 -36 0 0"
        << "200 -86 40 0";
    QTest::newRow("gewonnen und verloren am selben Sitz")
        << Liste{spiel(1, 24, 0, 0, 0), spiel(2, -48, 0, 0, 0), spiel(3, 0, 0, 0, 30)} << 4 << 50
        << "-24 0 0 30"
        << "-24 30 30 110";
}

void TstAbrechnung::spielstand()
{
    QFETCH(Liste, spiele);
    QFETCH(int, spieler);
    QFETCH(int, gewMinusVerl);
    const Bilanzen b = Spielstand::bilanzen(spiele, spieler);
    const FabianFaktoren f{gewMinusVerl, 40, 30};
    QVector<int> punkte, fabian;
    for (int sitz = 0; sitz < 4; ++sitz) {
        punkte << Spielstand::angezeigt(b, sitz, spieler, false, f);
        fabian << Spielstand::angezeigt(b, sitz, spieler, true, f);
    }
    QTEST(alsText(punkte), "punkte");
    QTEST(alsText(fabian), "fabian");
    // Each point of the chart is what the fields showed after that game.
    const QVector<Stand> verlauf = Spielstand::verlauf(spiele, spieler, true, f);
    QCOMPARE(verlauf.size(), spiele.size());
    for (int n = 1; n <= spiele.size(); ++n) {
        const Bilanzen bisher = Spielstand::bilanzen(spiele.mid(0, n), spieler);
        for (int sitz = 0; sitz < 4; ++sitz)
            QCOMPARE(verlauf.at(n - 1)[sitz],
                     Spielstand::angezeigt(bisher, sitz, spieler, true, f));
    }
    QCOMPARE(Spielstand::angezeigt(b, -1, spieler, true, f), 0);
    QCOMPARE(Spielstand::angezeigt(b, 4, 4, true, f), 0);
    // The seat's line shows the score handed in; a "%" in a name is the name's.
    QCOMPARE(Spielstand::zeile(QStringLiteral("Ute %2"), -86, b[1]),
             QLatin1String("Ute %2: -86-G") + QString::number(b[1].gewonnen) + QLatin1String("-V") +
                 QString::number(b[1].verloren));
}

void TstAbrechnung::bierlachsRunden_data()
{
    QTest::addColumn<Liste>("spiele");
    QTest::addColumn<int>("spieler");
    QTest::addColumn<int>("maxPunkte");
    QTest::addColumn<QStringList>("erwartet");

    QTest::newRow("leere Liste") << Liste() << 3 << 100
                                 << QStringList{"1-0 laeuft Rest 100 100 100 100 Bierlachs -1"};
    QTest::newRow("endet genau bei 0")
        << Liste{spiel(1, 60, 0, 0), spiel(2, 0, 24, 0), spiel(3, 40, 0, 0)} << 3 << 100
        << QStringList{"1-3 beendet Rest 0 76 100 100 Bierlachs 2"};
    QTest::newRow("1 Punkt uebrig") << Liste{spiel(1, 60, 0, 0), spiel(2, 39, 0, 0)} << 3 << 100
                                    << QStringList{"1-2 laeuft Rest 1 100 100 100 Bierlachs -1"};
    // Bert and Carl both keep 100 in the first round: the lower seat pays.
    QTest::newRow("neue Runde nach beendeter")
        << Liste{spiel(1, 60, 0, 0), spiel(2, 40, 0, 0), spiel(3, 0, 24, 0), spiel(5, 0, 0, -36)}
        << 3 << 100
        << QStringList{"1-2 beendet Rest 0 100 100 100 Bierlachs 1",
                       "3-5 laeuft Rest 100 76 136 100 Bierlachs -1"};
    QTest::newRow("4 Spieler, Sitz 4 beendet")
        << Liste{spiel(1, 0, 0, 30, 0), spiel(2, 0, 0, 0, 100)} << 4 << 100
        << QStringList{"1-2 beendet Rest 100 100 70 0 Bierlachs 0"};
    // Seat 4 is empty at a table of three, though it would have the most left.
    QTest::newRow("3 Spieler, Sitz 4 zaehlt nicht")
        << Liste{spiel(1, 0, 60, 0, 100), spiel(2, 0, 0, 30), spiel(3, 110, 0, 0)} << 3 << 110
        << QStringList{"1-3 beendet Rest 0 50 80 110 Bierlachs 2"};
    QTest::newRow("Maximum 0: eine Runde")
        << Liste{spiel(1, 600, 0, 0), spiel(2, 0, -36, 0)} << 3 << 0
        << QStringList{"1-2 laeuft Rest -600 36 0 0 Bierlachs -1"};
}

void TstAbrechnung::bierlachsRunden()
{
    QFETCH(Liste, spiele);
    QFETCH(int, spieler);
    QFETCH(int, maxPunkte);
    QStringList runden;
    const QVector<Stand> verlauf = Bierlachs::verlauf(spiele, spieler, maxPunkte);
    QCOMPARE(verlauf.size(), spiele.size());
    for (const BierlachsRunde &runde : Bierlachs::runden(spiele, spieler, maxPunkte)) {
        runden << alsText(runde, spieler, maxPunkte);
        // The chart's point at a round's last game is what the round leaves each seat.
        for (int i = 0; i < spiele.size(); ++i)
            for (int sitz = 0;
                 sitz < spieler && spiele.at(i)[SpielEintrag::Zeile] == runde.letzteZeile; ++sitz)
                QCOMPARE(verlauf.at(i)[sitz], Bierlachs::rest(runde, sitz, maxPunkte));
    }
    QTEST(runden, "erwartet");
    QCOMPARE(Bierlachs::zeile(QStringLiteral("Bert %1"), -8, {12, 3, 999}),
             QStringLiteral("Bert %1: -8 G12 V3"));
}

void TstAbrechnung::fusszeilen_data()
{
    QTest::addColumn<Tisch>("tisch");
    QTest::addColumn<KostenWerte>("kosten");
    QTest::addColumn<QStringList>("erwartet");

    // Anna: 8*50, (4+7)*40, 520+400+440; Bert: 2*50, (2+7)*40; Carl: -4*50, (2+4)*40.
    // Carl's 7 lost games: 5*1.00 + 2*2.00.
    QTest::newRow("3 Spieler, Standardwerte")
        << dreierTisch() << KostenWerte()
        << QStringList{"400 | 100 | -200",     "440 | 360 | 240",     "1360 | 640 | -110",
                       "1.00 | 1.00 | 1.00",   "2.00 | 4.00 | 9.00",  "0.00 | 1.50 | 2.50",
                       "10.00 | 0.00 | 10.00", "13.00 | 6.50 | 22.50"};
    // 12 games lost in all, factor 35 for the opponents at a table of four.
    // Carl's 6 lost games: 5*0.60 + 1*1.10.
    QTest::newRow("4 Spieler, eigene Werte")
        << Tisch{spieler("Anna", 21, 8, 1, 430), spieler("Bert", 22, 5, 3, 120, "Ja", "Nein"),
                 spieler("Carl", 23, 2, 6, -210), spieler("Dora", 24, 4, 2, 260)}
        << eigeneKosten
        << QStringList{"140 | 40 | -80 | 40",          "385 | 315 | 210 | 350",
                       "955 | 475 | -80 | 650",        "1.20 | 1.20 | 1.20 | 1.20",
                       "0.60 | 1.80 | 4.10 | 1.20",    "0.50 | 2.50 | 3.50 | 1.50",
                       "12.50 | 0.00 | 12.50 | 12.50", "14.80 | 5.50 | 21.30 | 16.40"};
}

void TstAbrechnung::fusszeilen()
{
    QFETCH(Tisch, tisch);
    QFETCH(KostenWerte, kosten);
    const KostenErgebnis e = Kostenrechnung::berechne(tisch, kosten, 1, 5);
    QStringList zeilen;
    for (const QStringList &z : e.zeilen)
        zeilen << z.join(QStringLiteral(" | "));
    QTEST(zeilen, "erwartet");
    QCOMPARE(alsText(e.gesamt),
             QString(zeilen.at(KostenErgebnis::Gesamt)).remove(QLatin1String("| ")));
}

void TstAbrechnung::plaetze_data()
{
    QTest::addColumn<Tisch>("tisch");
    QTest::addColumn<QString>("platz");
    QTest::addColumn<QString>("platzgeld");

    QTest::newRow("4 Spieler, Gleichstand: unterer Sitz vorn")
        << Tisch{nurPunkte(50), nurPunkte(300), nurPunkte(100), nurPunkte(300)} << "4 1 3 2"
        << "3.50 | 0.50 | 2.50 | 1.50";
    // Anna 100 + 20 + 45 = 165, Bert 185 - 20 + 0 = 165: the points alone would put Bert first.
    QTest::newRow("gleiche Gesamtpunkte")
        << Tisch{spieler("Anna", 1, 1, 0, 100), spieler("Bert", 2, 0, 1, 185), nurPunkte(0)}
        << "1 2 3"
        << "0.50 | 1.50 | 2.50";
    // Dora is last but only third among the members: nobody pays the fourth place.
    QTest::newRow("Nichtmitglied in der Mitte")
        << Tisch{nurPunkte(400), nurPunkte(300, "Nein"), nurPunkte(200), nurPunkte(100)}
        << "1 0 2 3"
        << "0.50 | 0.00 | 1.50 | 2.50";
    QTest::newRow("nur \"Ja\" ist Mitglied")
        << Tisch{nurPunkte(400, "ja"), nurPunkte(300, ""), nurPunkte(200, "Ja "), nurPunkte(100)}
        << "0 0 0 1"
        << "0.00 | 0.00 | 0.00 | 0.50";
}

void TstAbrechnung::plaetze()
{
    QFETCH(Tisch, tisch);
    const KostenErgebnis e = Kostenrechnung::berechne(tisch, eigeneKosten, 1, 1);
    QTEST(alsText(e.platz), "platz");
    QTEST(zeile(e, KostenErgebnis::Platzgeld), "platzgeld");
}

void TstAbrechnung::serien_data()
{
    QTest::addColumn<int>("serie");
    QTest::addColumn<QStringList>("erwartet");

    // Rows: card money, Preisskat, sum, and the result texts with the manager's amount
    // (name, table, series, total, won, lost, cost without Preisskat, "-", member number).
    QTest::newRow("Serie 1") << 1
                             << QStringList{
                                    "1.00 | 1.00 | 1.00",         "10.00 | 0.00 | 10.00",
                                    "13.00 | 6.50 | 22.50",       "Anna|7|1|1360|10|2|3.00|-|11",
                                    "Bert|7|1|640|6|4|6.50|-|12", "Carl|7|1|-110|3|7|12.50|-|13"};
    // Card money up to series 1, Preisskat and the manager's amount in series 1 only.
    QTest::newRow("Serie 0") << 0
                             << QStringList{
                                    "1.00 | 1.00 | 1.00",         "0.00 | 0.00 | 0.00",
                                    "3.00 | 6.50 | 12.50",        "Anna|7|0|1360|10|2|0.00|-|11",
                                    "Bert|7|0|640|6|4|0.00|-|12", "Carl|7|0|-110|3|7|0.00|-|13"};
    QTest::newRow("Serie 2") << 2
                             << QStringList{
                                    "0.00 | 0.00 | 0.00",         "0.00 | 0.00 | 0.00",
                                    "2.00 | 5.50 | 11.50",        "Anna|7|2|1360|10|2|0.00|-|11",
                                    "Bert|7|2|640|6|4|0.00|-|12", "Carl|7|2|-110|3|7|0.00|-|13"};
}

void TstAbrechnung::serien()
{
    QFETCH(int, serie);
    const KostenErgebnis e = Kostenrechnung::berechne(dreierTisch(), KostenWerte(), serie, 7);
    const QStringList zeilen =
        QStringList{zeile(e, KostenErgebnis::Kartengeld), zeile(e, KostenErgebnis::Preisskat),
                    zeile(e, KostenErgebnis::Summe)} +
        e.ergebnisTexte;
    QTEST(zeilen, "erwartet");
}

void TstAbrechnung::beschreibungen()
{
    QCOMPARE(Kostenrechnung::beschreibungen(KostenWerte(), 3, true),
             QStringList({"Punkte gew Spiele abzgl verl. Spiele * 50",
                          "Punkte verl. Spiele der Gegenspieler * 40", "Kartengeld 1.0 Euro",
                          "Verlorene Spiele 1-5 1.0 ab 6 2.0 Euro", "Startgeld 10.0 Euro 1. Serie",
                          "Platz: 1=0.0, 2=1.5, 3=2.5, 4=3.0 Euro"}));
}

// The data tag is "now stop limit", times as "hh:mm:ss" and "hh:mm".
void TstAbrechnung::zeitlimit_data()
{
    QTest::addColumn<QString>("anzeige");
    QTest::newRow("20:00:00 20:16 120") << "Verbleibende Zeit 16 Minuten gruen laeuft weiter";
    // 15 minutes 59 seconds are 15 whole minutes.
    QTest::newRow("20:00:01 20:16 120") << "Verbleibende Zeit 15 Minuten rot laeuft weiter";
    QTest::newRow("20:15:00 20:16 120") << "Verbleibende Zeit 1 Minuten rot laeuft weiter";
    QTest::newRow("20:15:01 20:16 120") << "Verbleibende Zeit 0 Minuten rot abgelaufen weiter";
    QTest::newRow("20:20:00 20:16 120") << "Verbleibende Zeit -4 Minuten rot abgelaufen vorbei";
    // Further away than the limit, e.g. stored before the limit was lowered.
    QTest::newRow("20:00:00 22:01 120") << "Spielzeit ueberschritten! gruen ueberschritten weiter";
    // Only the time of day is kept: up to 12 hours behind now counts as after midnight,
    // more than 12 hours ahead as passed.
    QTest::newRow("23:50:00 00:40 120") << "Verbleibende Zeit 50 Minuten gruen laeuft weiter";
    QTest::newRow("08:00:00 20:00 720") << "Verbleibende Zeit 720 Minuten gruen laeuft weiter";
    QTest::newRow("07:59:59 20:00 720") << "Verbleibende Zeit -719 Minuten rot abgelaufen vorbei";
    QTest::newRow("20:00:00 08:00 720") << "Verbleibende Zeit -720 Minuten rot abgelaufen vorbei";
    QTest::newRow("20:00:59 08:00 720") << "Verbleibende Zeit 719 Minuten gruen laeuft weiter";
    QTest::newRow("20:00:00 -- 120") << "Verbleibende Zeit 0 Minuten rot abgelaufen vorbei";
}

void TstAbrechnung::zeitlimit()
{
    const QStringList tag = QString::fromLatin1(QTest::currentDataTag()).split(QLatin1Char(' '));
    const QTime jetzt = QTime::fromString(tag.at(0), QStringLiteral("hh:mm:ss"));
    const QTime stop = Zeitlimit::ausText(tag.at(1));
    const ZeitAnzeige a = Zeitlimit::schritt(jetzt, stop, tag.at(2).toInt());
    const char *zustand[] = {"laeuft", "abgelaufen", "ueberschritten"};
    // At start-up a stored stop time is resumed only while it lies ahead.
    QTEST(QStringLiteral("%1 %2 %3 %4")
              .arg(a.text, QLatin1String(a.rot ? "rot" : "gruen"),
                   QLatin1String(zustand[a.zustand]),
                   QLatin1String(Zeitlimit::fortsetzen(jetzt, stop) ? "weiter" : "vorbei")),
          "anzeige");
    // The next step falls on the stop time less whole five minutes, to the millisecond.
    for (const QTime &von : {jetzt, jetzt.addMSecs(250)}) {
        const int warten = Zeitlimit::bisSchrittMs(von, stop);
        QVERIFY(warten > 0 && warten <= 300000);
        QCOMPARE(von.addMSecs(warten).msecsTo(stop) % 300000, 0);
    }
    // The stop time is kept as "hh:mm", so a restart resumes exactly the countdown that ran;
    // anything else stored ("openend", a hand edit) means none.
    QCOMPARE(Zeitlimit::alsText(Zeitlimit::stopZeit(jetzt, 90)),
             jetzt.addSecs(90 * 60).toString(QStringLiteral("hh:mm")));
    QCOMPARE(Zeitlimit::ausText(Zeitlimit::alsText(stop)), stop);
    for (const char *text : {"openend", "24:00", "21:60", "9:5", " 21:05", "21:05:30"})
        QVERIFY2(!Zeitlimit::ausText(QLatin1String(text)).isValid(), text);
}

KARTULO_KERN_TEST_MAIN(TstAbrechnung)
#include "tst_abrechnung.moc"
