// The evening's ranking: results taken in, the seating proposed for the next
// series, and both files byte for byte.

#include "core/ranking/rangliste.h"

#include <QDate>
#include <QtTest>

namespace {

QStringList namen(const QVector<RanglistenZeile> &zeilen)
{
    QStringList liste;
    for (const RanglistenZeile &z : zeilen)
        liste << z.name;
    return liste;
}

QStringList plaetze(const QVector<RanglistenZeile> &zeilen)
{
    QStringList liste;
    for (const RanglistenZeile &z : zeilen)
        liste << z.platz;
    return liste;
}

} // namespace

class TstRangliste : public QObject
{
    Q_OBJECT

private slots:
    void aufnehmen();
    void tischplan_data();
    void tischplan();
    void reihenfolge();
    void dateien();
};

// A name in one row is updated, anything else appended; tables sort as text.
void TstRangliste::aufnehmen()
{
    QVector<RanglistenZeile> zeilen;
    Rangliste::aufnehmen(
        zeilen, {"Anna|2|1|50|2|1|3.5|-|1", "Bernd|10|1|20|1|0|1|-|2", "Clara|1|1|0|0|0|0|-"});
    QCOMPARE(namen(zeilen), QStringList({"Clara", "Bernd", "Anna"}));
    QCOMPARE(zeilen.at(2).platz, QStringLiteral("-"));
    zeilen[2].platz = "1 - 1";
    Rangliste::aufnehmen(zeilen, {"Anna|2|2|80|3|1|4|-|1"});
    QCOMPARE(zeilen.size(), 3);
    QCOMPARE(zeilen.at(2), (RanglistenZeile{"Anna", "2", "2", "80", "3", "1", "4", "1 - 1"}));
    // Twice the same name: no row is updated any more, each result is added.
    zeilen.append(zeilen.at(2));
    Rangliste::aufnehmen(zeilen, {"Anna|3|1|9|0|0|0|-"});
    QCOMPARE(namen(zeilen), QStringList({"Clara", "Bernd", "Anna", "Anna", "Anna"}));
    QCOMPARE(zeilen.at(4).punkte, QStringLiteral("9"));
    QCOMPARE(zeilen.at(2).punkte, QStringLiteral("80"));
}

void TstRangliste::tischplan_data()
{
    QTest::addColumn<int>("spieler");
    QTest::addColumn<QVector<int>>("tische");
    QTest::newRow("0") << 0 << QVector<int>{};
    for (int n : {1, 2, 3})
        QTest::addRow("%d", n) << n << QVector<int>{3};
    QTest::newRow("4") << 4 << QVector<int>{4};
    QTest::newRow("5") << 5 << QVector<int>{3, 3};
    QTest::newRow("6") << 6 << QVector<int>{3, 3};
    QTest::newRow("7") << 7 << QVector<int>{4, 3};
    QTest::newRow("9") << 9 << QVector<int>{3, 3, 3};
    QTest::newRow("11") << 11 << QVector<int>{4, 4, 3};
    QTest::newRow("12") << 12 << QVector<int>{4, 4, 4};
    QTest::newRow("13") << 13 << QVector<int>{4, 3, 3, 3};
}

void TstRangliste::tischplan()
{
    QFETCH(int, spieler);
    QTEST(Rangliste::tischplan(spieler), "tische");
}

// Best first; equal points keep the model's order; a fifth player of five
// goes to the second table of three.
void TstRangliste::reihenfolge()
{
    QVector<RanglistenZeile> zeilen;
    Rangliste::aufnehmen(zeilen, {"A|1|1|10|0|0|0|-", "B|1|1|30|0|0|0|-", "C|1|1|30|0|0|0|-",
                                  "D|2|1|x|0|0|0|-", "E|2|1|-5|0|0|0|-"});
    Rangliste::tischreihenfolgeAuswerten(zeilen);
    QCOMPARE(plaetze(zeilen), QStringList({"1 - 3", "1 - 1", "1 - 2", "2 - 1", "2 - 2"}));
    // Seven: a table of four, then one of three.
    zeilen.clear();
    QStringList sieben;
    for (int i = 0; i < 7; ++i)
        sieben << QStringLiteral("S%1|1|1|%2|0|0|0|-").arg(i).arg(i);
    Rangliste::aufnehmen(zeilen, sieben);
    Rangliste::tischreihenfolgeAuswerten(zeilen);
    QCOMPARE(plaetze(zeilen),
             QStringList({"2 - 3", "2 - 2", "2 - 1", "1 - 4", "1 - 3", "1 - 2", "1 - 1"}));
}

void TstRangliste::dateien()
{
    const QVector<RanglistenZeile> zeilen{
        {"Anna Schmidt", "1", "2", "1234", "12", "3", "8.5", "1 - 1"},
        {"Bernd Keller", "10", "2", "-17", "4", "9", "13.5", "-"},
        {"Clara Vogt", "2", "x", "0", "0", "0", "120", "2 - 3"}};
    QCOMPARE(Rangliste::textDatei(zeilen),
             QStringLiteral(
                 "Name                      Tisch Serie Punkte  Gew Verl Kosten Tisch-Platz\n"
                 "-------------------------------------------------------------------------\n"
                 "Anna Schmidt                  1     2   1234   12    3    8.5      1 - 1\n"
                 "Bernd Keller                 10     2    -17    4    9     14          -\n"
                 // A cost of seven characters fills its column to the lost games.
                 "Clara Vogt                    2     0      0    0    01.2e+02      2 - 3\n"));
    QCOMPARE(Rangliste::tabellenDatei(zeilen),
             QStringLiteral("Name,Tisch,Serie,Punkte,Gewonnen,Verloren,Kosten,Tisch-Platz\n"
                            "Anna Schmidt,1,2,1234,12,3,8.5,1 - 1\n"
                            "Bernd Keller,10,2,-17,4,9,14,-\n"
                            "Clara Vogt,2,0,0,0,0,1.2e+02,2 - 3\n"));
    QCOMPARE(Rangliste::textDatei({}).count('\n'), 2);
    QCOMPARE(Rangliste::textDateiName(QDate(2026, 11, 14)),
             QStringLiteral("14-11-26Serie14-11-26_Text.txt"));
    QCOMPARE(Rangliste::tabellenDateiName(QDate(2026, 11, 14)),
             QStringLiteral("14-11-26Serie14-11-26_Excel.txt"));
}

QTEST_GUILESS_MAIN(TstRangliste)
#include "tst_rangliste.moc"
