// The money account of a table: the eight footer rows of a 3- and a 4-player list to the cent,
// the place order (equal totals, non-members, no fourth place at three), the lost-game fee
// around the sixth game, series 0, 1 and 2, the manager's result texts, money typed with a
// decimal comma and the lines of the rules block.

#include "helpers/testumgebung.h"
#include "standings/kostenrechnung.h"

namespace {

KostenSpieler spieler(const QString &name, int mgldNr, int gewonnen, int verloren, int punkte,
                      const QString &mitglied = QStringLiteral("Ja"),
                      const QString &preisskat = QStringLiteral("Ja"))
{
    KostenSpieler s;
    s.name = name;
    s.mgldNr = mgldNr;
    s.mitglied = mitglied;
    s.preisskat = preisskat;
    s.bilanz.gewonnen = gewonnen;
    s.bilanz.verloren = verloren;
    s.bilanz.punkte = punkte;
    return s;
}

// A player whose total is his points alone: no games won or lost.
KostenSpieler nurPunkte(const QString &name, int punkte,
                        const QString &mitglied = QStringLiteral("Ja"))
{
    return spieler(name, 0, 0, 0, punkte, mitglied);
}

using Tisch = QVector<KostenSpieler>;

// Anna 1360, Bert 640, Carl -110 with the default factors (50, 40); Bert plays no Preisskat.
Tisch dreierTisch()
{
    return {spieler("Anna", 11, 10, 2, 520), spieler("Bert", 12, 6, 4, 180, "Ja", "Nein"),
            spieler("Carl", 13, 3, 7, -150)};
}

// Every value different from the defaults and from each other, so a mixed-up setting shows.
KostenWerte eigeneKosten()
{
    KostenWerte k;
    k.platz1 = 0.5;
    k.platz2 = 1.5;
    k.platz3 = 2.5;
    k.platz4 = 3.5;
    k.kartengeld = 1.2;
    k.verlSpiel1Bis5 = 0.6;
    k.verlSpielAb6 = 1.1;
    k.preisskat = 12.5;
    k.gewSpieleMinusVerlSpiele = 20;
    k.verlSpieleDerGegenSpieler3 = 45;
    k.verlSpieleDerGegenSpieler4 = 35;
    return k;
}

// One footer row of all players, so a failure shows the whole row at once.
QString zeile(const KostenErgebnis &e, KostenErgebnis::Zeile z)
{
    return e.zeilen[static_cast<size_t>(z)].join(QStringLiteral(" | "));
}

QStringList alleZeilen(const KostenErgebnis &e)
{
    QStringList zeilen;
    for (const QStringList &z : e.zeilen)
        zeilen << z.join(QStringLiteral(" | "));
    return zeilen;
}

QString alsText(const QVector<double> &betraege)
{
    QStringList teile;
    for (double b : betraege)
        teile << QString::number(b, 'f', 2);
    return teile.join(QStringLiteral(" | "));
}

} // namespace

Q_DECLARE_METATYPE(KostenSpieler)
Q_DECLARE_METATYPE(KostenWerte)

class TstKostenrechnung : public QObject
{
    Q_OBJECT

private slots:
    void fusszeilen_data();
    void fusszeilen();
    void plaetze_data();
    void plaetze();
    void verloreneSpiele_data();
    void verloreneSpiele();
    void serien_data();
    void serien();
    void ergebnisTexte_data();
    void ergebnisTexte();
    void geldWert_data();
    void geldWert();
    void beschreibungen_data();
    void beschreibungen();
};

void TstKostenrechnung::fusszeilen_data()
{
    QTest::addColumn<Tisch>("tisch");
    QTest::addColumn<KostenWerte>("kosten");
    QTest::addColumn<QStringList>("erwartet");
    QTest::addColumn<QVector<int>>("gesamt");
    QTest::addColumn<QVector<int>>("platz");

    // Anna: 8*50, (4+7)*40, 520+400+440; Bert: 2*50, (2+7)*40; Carl: -4*50, (2+4)*40.
    // Carl's 7 lost games: 5*1.00 + 2*2.00.
    QTest::newRow("3 Spieler, Standardwerte")
        << dreierTisch() << KostenWerte()
        << QStringList{"400 | 100 | -200",     "440 | 360 | 240",     "1360 | 640 | -110",
                       "1.00 | 1.00 | 1.00",   "2.00 | 4.00 | 9.00",  "0.00 | 1.50 | 2.50",
                       "10.00 | 0.00 | 10.00", "13.00 | 6.50 | 22.50"}
        << QVector<int>{1360, 640, -110} << QVector<int>{1, 2, 3};

    // 12 games lost in all, factor 35 for the opponents at a table of four.
    // Anna: 7*20, 11*35, 430+140+385; Bert: 2*20, 9*35; Carl: -4*20, 6*35; Dora: 2*20, 10*35.
    // Carl's 6 lost games: 5*0.60 + 1*1.10.
    QTest::newRow("4 Spieler, eigene Werte")
        << Tisch{spieler("Anna", 21, 8, 1, 430), spieler("Bert", 22, 5, 3, 120, "Ja", "Nein"),
                 spieler("Carl", 23, 2, 6, -210), spieler("Dora", 24, 4, 2, 260)}
        << eigeneKosten()
        << QStringList{"140 | 40 | -80 | 40",          "385 | 315 | 210 | 350",
                       "955 | 475 | -80 | 650",        "1.20 | 1.20 | 1.20 | 1.20",
                       "0.60 | 1.80 | 4.10 | 1.20",    "0.50 | 2.50 | 3.50 | 1.50",
                       "12.50 | 0.00 | 12.50 | 12.50", "14.80 | 5.50 | 21.30 | 16.40"}
        << QVector<int>{955, 475, -80, 650} << QVector<int>{1, 3, 4, 2};

    // The same three players with the factors of the settings: 20 and 45 instead of 50 and 40.
    // Anna: 8*20, 11*45; Bert: 2*20, 9*45; Carl: -4*20, 6*45.
    QTest::newRow("3 Spieler, eigene Werte")
        << dreierTisch() << eigeneKosten()
        << QStringList{"160 | 40 | -80",       "495 | 405 | 270",     "1175 | 625 | 40",
                       "1.20 | 1.20 | 1.20",   "1.20 | 2.40 | 5.20",  "0.50 | 1.50 | 2.50",
                       "12.50 | 0.00 | 12.50", "15.40 | 5.10 | 21.40"}
        << QVector<int>{1175, 625, 40} << QVector<int>{1, 2, 3};
}

void TstKostenrechnung::fusszeilen()
{
    QFETCH(Tisch, tisch);
    QFETCH(KostenWerte, kosten);
    const KostenErgebnis e = Kostenrechnung::berechne(tisch, kosten, 1, 5);
    QTEST(alleZeilen(e), "erwartet");
    QTEST(e.gesamt, "gesamt");
    QTEST(e.platz, "platz");
    // The sums kept as numbers are the ones printed.
    QCOMPARE(alsText(e.summe), zeile(e, KostenErgebnis::Summe));
}

void TstKostenrechnung::plaetze_data()
{
    QTest::addColumn<Tisch>("tisch");
    QTest::addColumn<QVector<int>>("platz");
    QTest::addColumn<QString>("platzgeld");

    // With the place fees 0.50, 1.50, 2.50, 3.50 a non-member's 0.00 is no place's fee.
    QTest::newRow("absteigend, 3 Spieler")
        << Tisch{nurPunkte("Anna", 300), nurPunkte("Bert", 200), nurPunkte("Carl", 100)}
        << QVector<int>{1, 2, 3} << "0.50 | 1.50 | 2.50";
    QTest::newRow("3 Spieler zahlen nie Platz 4")
        << Tisch{nurPunkte("Anna", 100), nurPunkte("Bert", 200), nurPunkte("Carl", 300)}
        << QVector<int>{3, 2, 1} << "2.50 | 1.50 | 0.50";
    QTest::newRow("4 Spieler, alle Plaetze")
        << Tisch{nurPunkte("Anna", 50), nurPunkte("Bert", 400), nurPunkte("Carl", 100),
                 nurPunkte("Dora", 250)}
        << QVector<int>{4, 1, 3, 2} << "3.50 | 0.50 | 2.50 | 1.50";
    // Anna 100 + 20 + 45 = 165, Bert 185 - 20 + 0 = 165: the points alone would put Bert first.
    QTest::newRow("gleiche Gesamtpunkte, unterer Sitz vorn")
        << Tisch{spieler("Anna", 1, 1, 0, 100), spieler("Bert", 2, 0, 1, 185),
                 spieler("Carl", 3, 0, 0, 0)}
        << QVector<int>{1, 2, 3} << "0.50 | 1.50 | 2.50";
    QTest::newRow("Gleichstand Sitz 2 und 4")
        << Tisch{nurPunkte("Anna", 50), nurPunkte("Bert", 300), nurPunkte("Carl", 100),
                 nurPunkte("Dora", 300)}
        << QVector<int>{4, 1, 3, 2} << "3.50 | 0.50 | 2.50 | 1.50";
    QTest::newRow("Gleichstand hinten")
        << Tisch{nurPunkte("Anna", 500), nurPunkte("Bert", -20), nurPunkte("Carl", -20)}
        << QVector<int>{1, 2, 3} << "0.50 | 1.50 | 2.50";
    QTest::newRow("alle gleich") << Tisch{nurPunkte("Anna", 0), nurPunkte("Bert", 0),
                                          nurPunkte("Carl", 0), nurPunkte("Dora", 0)}
                                 << QVector<int>{1, 2, 3, 4} << "0.50 | 1.50 | 2.50 | 3.50";
    QTest::newRow("negative Gesamtpunkte")
        << Tisch{nurPunkte("Anna", -300), nurPunkte("Bert", -100), nurPunkte("Carl", -200)}
        << QVector<int>{3, 1, 2} << "2.50 | 0.50 | 1.50";
    QTest::newRow("Nichtmitglied vorn")
        << Tisch{nurPunkte("Anna", 500, "Nein"), nurPunkte("Bert", 300), nurPunkte("Carl", 100)}
        << QVector<int>{0, 1, 2} << "0.00 | 0.50 | 1.50";
    // Dora is last but only third among the members: nobody pays the fourth place.
    QTest::newRow("Nichtmitglied in der Mitte, 4 Spieler")
        << Tisch{nurPunkte("Anna", 400), nurPunkte("Bert", 300, "Nein"), nurPunkte("Carl", 200),
                 nurPunkte("Dora", 100)}
        << QVector<int>{1, 0, 2, 3} << "0.50 | 0.00 | 1.50 | 2.50";
    QTest::newRow("Nichtmitglied hinten, 4 Spieler")
        << Tisch{nurPunkte("Anna", 400), nurPunkte("Bert", 300), nurPunkte("Carl", 200),
                 nurPunkte("Dora", -100, "Nein")}
        << QVector<int>{1, 2, 3, 0} << "0.50 | 1.50 | 2.50 | 0.00";
    QTest::newRow("nur \"Ja\" ist Mitglied")
        << Tisch{nurPunkte("Anna", 400, "ja"), nurPunkte("Bert", 300, ""),
                 nurPunkte("Carl", 200, "Ja "), nurPunkte("Dora", 100)}
        << QVector<int>{0, 0, 0, 1} << "0.00 | 0.00 | 0.00 | 0.50";
    QTest::newRow("keine Mitglieder")
        << Tisch{nurPunkte("Anna", 300, "Nein"), nurPunkte("Bert", 200, "Nein"),
                 nurPunkte("Carl", 100, "Nein")}
        << QVector<int>{0, 0, 0} << "0.00 | 0.00 | 0.00";
}

void TstKostenrechnung::plaetze()
{
    QFETCH(Tisch, tisch);
    const KostenErgebnis e = Kostenrechnung::berechne(tisch, eigeneKosten(), 1, 1);
    QTEST(e.platz, "platz");
    QTEST(zeile(e, KostenErgebnis::Platzgeld), "platzgeld");
}

void TstKostenrechnung::verloreneSpiele_data()
{
    QTest::addColumn<int>("verloren");
    QTest::addColumn<double>("satz1Bis5");
    QTest::addColumn<double>("satzAb6");
    QTest::addColumn<QString>("erwartet");

    QTest::newRow("keins") << 0 << 1.0 << 2.0 << "0.00";
    QTest::newRow("1") << 1 << 0.6 << 1.1 << "0.60";
    QTest::newRow("5, Standard") << 5 << 1.0 << 2.0 << "5.00";
    QTest::newRow("5, eigene Saetze") << 5 << 0.6 << 1.1 << "3.00";
    QTest::newRow("6, Standard") << 6 << 1.0 << 2.0 << "7.00";
    QTest::newRow("6, eigene Saetze") << 6 << 0.6 << 1.1 << "4.10";
    QTest::newRow("7, Standard") << 7 << 1.0 << 2.0 << "9.00";
    QTest::newRow("12, eigene Saetze") << 12 << 0.6 << 1.1 << "10.70";
    // A cheaper rate from the sixth game on is the club's choice and is charged as set.
    QTest::newRow("6, zweiter Satz kleiner") << 6 << 2.0 << 0.5 << "10.50";
}

void TstKostenrechnung::verloreneSpiele()
{
    QFETCH(int, verloren);
    QFETCH(double, satz1Bis5);
    QFETCH(double, satzAb6);
    KostenWerte kosten;
    kosten.verlSpiel1Bis5 = satz1Bis5;
    kosten.verlSpielAb6 = satzAb6;
    // The games are lost in the first seat; the others lost nothing and pay nothing.
    const Tisch tisch{spieler("Anna", 1, 0, verloren, -100), nurPunkte("Bert", 0),
                      nurPunkte("Carl", 0)};
    const KostenErgebnis e = Kostenrechnung::berechne(tisch, kosten, 2, 1);
    QFETCH(QString, erwartet);
    QCOMPARE(zeile(e, KostenErgebnis::VerlSpiele), erwartet + QStringLiteral(" | 0.00 | 0.00"));
}

void TstKostenrechnung::serien_data()
{
    QTest::addColumn<int>("serie");
    QTest::addColumn<QStringList>("erwartet");

    // dreierTisch with the defaults: lost-game fees 2.00, 4.00, 9.00; places 1, 2, 3 pay
    // 0.00, 1.50, 2.50; Bert plays no Preisskat. Rows: card money, Preisskat, sum, manager.
    QTest::newRow("Serie 1") << 1
                             << QStringList{"1.00 | 1.00 | 1.00", "10.00 | 0.00 | 10.00",
                                            "13.00 | 6.50 | 22.50", "3.00 | 6.50 | 12.50"};
    // Card money up to series 1, Preisskat and the manager's amount in series 1 only.
    QTest::newRow("Serie 0") << 0
                             << QStringList{"1.00 | 1.00 | 1.00", "0.00 | 0.00 | 0.00",
                                            "3.00 | 6.50 | 12.50", "0.00 | 0.00 | 0.00"};
    QTest::newRow("Serie 2") << 2
                             << QStringList{"0.00 | 0.00 | 0.00", "0.00 | 0.00 | 0.00",
                                            "2.00 | 5.50 | 11.50", "0.00 | 0.00 | 0.00"};
    QTest::newRow("Serie 5") << 5
                             << QStringList{"0.00 | 0.00 | 0.00", "0.00 | 0.00 | 0.00",
                                            "2.00 | 5.50 | 11.50", "0.00 | 0.00 | 0.00"};
}

void TstKostenrechnung::serien()
{
    QFETCH(int, serie);
    const KostenErgebnis e = Kostenrechnung::berechne(dreierTisch(), KostenWerte(), serie, 4);
    const QStringList zeilen{zeile(e, KostenErgebnis::Kartengeld),
                             zeile(e, KostenErgebnis::Preisskat), zeile(e, KostenErgebnis::Summe),
                             alsText(e.managerBetrag)};
    QTEST(zeilen, "erwartet");
    // Points and places do not depend on the series.
    QCOMPARE(e.gesamt, (QVector<int>{1360, 640, -110}));
    QCOMPARE(e.platz, (QVector<int>{1, 2, 3}));
}

void TstKostenrechnung::ergebnisTexte_data()
{
    QTest::addColumn<Tisch>("tisch");
    QTest::addColumn<int>("serie");
    QTest::addColumn<int>("tischNr");
    QTest::addColumn<QStringList>("erwartet");

    // Name, table, series, total, won, lost, cost without Preisskat, "-", member number.
    QTest::newRow("Serie 1") << dreierTisch() << 1 << 7
                             << QStringList{"Anna|7|1|1360|10|2|3.00|-|11",
                                            "Bert|7|1|640|6|4|6.50|-|12",
                                            "Carl|7|1|-110|3|7|12.50|-|13"};
    QTest::newRow("Serie 2") << dreierTisch() << 2 << 12
                             << QStringList{"Anna|12|2|1360|10|2|0.00|-|11",
                                            "Bert|12|2|640|6|4|0.00|-|12",
                                            "Carl|12|2|-110|3|7|0.00|-|13"};
    // Bert pays no place fee, so Carl moves up to place 2: 1.00 + 9.00 + 1.50.
    Tisch ohneBert = dreierTisch();
    ohneBert[1].mitglied = QStringLiteral("Nein");
    QTest::newRow("Nichtmitglied, Serie 1")
        << ohneBert << 1 << 7
        << QStringList{"Anna|7|1|1360|10|2|3.00|-|11", "Bert|7|1|640|6|4|5.00|-|12",
                       "Carl|7|1|-110|3|7|11.50|-|13"};
    // A "%" in a name stays as typed.
    QTest::newRow("Prozent im Namen")
        << Tisch{spieler("Ute %2", 7, 1, 0, 24), spieler("Max %1", 0, 0, 1, -48),
                 spieler("Eva", 1234, 0, 0, 0), spieler("Jan", 8, 0, 0, 0)}
        << 3 << 2
        << QStringList{"Ute %2|2|3|104|1|0|0.00|-|7", "Max %1|2|3|-98|0|1|0.00|-|0",
                       "Eva|2|3|30|0|0|0.00|-|1234", "Jan|2|3|30|0|0|0.00|-|8"};
}

void TstKostenrechnung::ergebnisTexte()
{
    QFETCH(Tisch, tisch);
    QFETCH(int, serie);
    QFETCH(int, tischNr);
    QTEST(Kostenrechnung::berechne(tisch, KostenWerte(), serie, tischNr).ergebnisTexte, "erwartet");
}

void TstKostenrechnung::geldWert_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("erwartet");

    QTest::newRow("Dezimalkomma") << "1,5" << 1.5;
    QTest::newRow("Dezimalpunkt") << "1.5" << 1.5;
    QTest::newRow("ganze Zahl") << "10" << 10.0;
    QTest::newRow("fuehrende Null") << "0,5" << 0.5;
    QTest::newRow("leer") << "" << 0.0;
    QTest::newRow("nur Komma") << "," << 0.0;
    QTest::newRow("nur Minus") << "-" << 0.0;
    QTest::newRow("Buchstaben") << "abc" << 0.0;
}

void TstKostenrechnung::geldWert()
{
    QFETCH(QString, text);
    QTEST(Kostenrechnung::geldWert(text), "erwartet");
}

void TstKostenrechnung::beschreibungen_data()
{
    QTest::addColumn<KostenWerte>("kosten");
    QTest::addColumn<int>("spieler");
    QTest::addColumn<bool>("platzMitEuro");
    QTest::addColumn<QStringList>("erwartet");

    QTest::newRow("Standard, 3 Spieler, erstes Zeichnen")
        << KostenWerte() << 3 << true
        << QStringList{"Punkte gew Spiele abzgl verl. Spiele * 50",
                       "Punkte verl. Spiele der Gegenspieler * 40",
                       "Kartengeld 1.0 Euro",
                       "Verlorene Spiele 1-5 1.0 ab 6 2.0 Euro",
                       "Startgeld 10.0 Euro 1. Serie",
                       "Platz: 1=0.0, 2=1.5, 3=2.5, 4=3.0 Euro"};
    QTest::newRow("Standard, 4 Spieler, nach Aenderung")
        << KostenWerte() << 4 << false
        << QStringList{"Punkte gew Spiele abzgl verl. Spiele * 50",
                       "Punkte verl. Spiele der Gegenspieler * 30",
                       "Kartengeld 1.0 Euro",
                       "Verlorene Spiele 1-5 1.0 ab 6 2.0 Euro",
                       "Startgeld 10.0 Euro 1. Serie",
                       "Platz: 1=0.0, 2=1.5, 3=2.5, 4=3.0"};
    QTest::newRow("eigene Werte, 3 Spieler")
        << eigeneKosten() << 3 << false
        << QStringList{"Punkte gew Spiele abzgl verl. Spiele * 20",
                       "Punkte verl. Spiele der Gegenspieler * 45",
                       "Kartengeld 1.2 Euro",
                       "Verlorene Spiele 1-5 0.6 ab 6 1.1 Euro",
                       "Startgeld 12.5 Euro 1. Serie",
                       "Platz: 1=0.5, 2=1.5, 3=2.5, 4=3.5"};
    QTest::newRow("eigene Werte, 4 Spieler")
        << eigeneKosten() << 4 << true
        << QStringList{"Punkte gew Spiele abzgl verl. Spiele * 20",
                       "Punkte verl. Spiele der Gegenspieler * 35",
                       "Kartengeld 1.2 Euro",
                       "Verlorene Spiele 1-5 0.6 ab 6 1.1 Euro",
                       "Startgeld 12.5 Euro 1. Serie",
                       "Platz: 1=0.5, 2=1.5, 3=2.5, 4=3.5 Euro"};
}

void TstKostenrechnung::beschreibungen()
{
    QFETCH(KostenWerte, kosten);
    QFETCH(int, spieler);
    QFETCH(bool, platzMitEuro);
    QTEST(Kostenrechnung::beschreibungen(kosten, spieler, platzMitEuro), "erwartet");
}

KARTULO_TEST_MAIN(TstKostenrechnung)
#include "tst_kostenrechnung.moc"
