// The evening's ranking: results taken in, the seating proposed for the next
// series, and both files byte for byte.

#include "core/ranking/rangliste.h"
#include "helpers/faelle.h"

#include <QDate>
#include <QRandomGenerator>
#include <QtTest>

namespace {

// One field of every row, e.g. the names.
QStringList spalte(const QVector<RanglistenZeile> &zeilen, QString RanglistenZeile::*feld)
{
    QStringList liste;
    for (const RanglistenZeile &z : zeilen)
        liste << z.*feld;
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
    void dateien();
};

// A name in the ranking is updated, a new one added; the rows stay as a
// stable sort by table text orders them after each result, which a plain
// list sorted anew after every result shows, over an evening of players
// changing tables.
void TstRangliste::aufnehmen()
{
    RanglistenStand stand;
    for (const char *e :
         {"Anna|2|1|50|2|1|3.5|-|1", "Bernd|10|1|20|1|0|1|-|2", "Clara|1|1|0|0|0|0|-"})
        stand.aufnehmen(e);
    QCOMPARE(spalte(stand.zeilen(), &RanglistenZeile::name),
             QStringList({"Clara", "Bernd", "Anna"}));
    const RanglistenStand::Schritt schritt = stand.aufnehmen("Anna|2|2|80|3|1|4|-|1");
    QCOMPARE(QPair(schritt.von, schritt.nach), QPair(2, 2));
    QCOMPARE(stand.zeilen().at(2), (RanglistenZeile{"Anna", "2", "2", "80", "3", "1", "4", "-"}));

    QVector<RanglistenZeile> vergleich = stand.zeilen();
    QRandomGenerator zufall(7);
    for (int i = 0; i < 400; ++i) {
        const QString name = QStringLiteral("S%1").arg(zufall.bounded(12));
        const QString tisch = QString::number(zufall.bounded(1, 13));
        const QString ergebnis = QStringLiteral("%1|%2|1|%3|0|0|0|-").arg(name, tisch).arg(i);
        const auto gleich = [&](const RanglistenZeile &z) { return z.name == name; };
        const auto alt = std::find_if(vergleich.begin(), vergleich.end(), gleich);
        if (alt == vergleich.end())
            vergleich.append({name, tisch, "1", QString::number(i), "0", "0", "0", "-"});
        else
            *alt = {name, tisch, "1", QString::number(i), "0", "0", "0", "-"};
        std::stable_sort(vergleich.begin(), vergleich.end(),
                         [](const auto &a, const auto &b) { return a.tisch < b.tisch; });
        const RanglistenStand::Schritt s = stand.aufnehmen(ergebnis);
        QCOMPARE(stand.zeilen(), vergleich);
        QCOMPARE(stand.zeilen().at(s.nach).name, name);
    }
    stand.leeren();
    QVERIFY(stand.zeilen().isEmpty());
    QCOMPARE(stand.aufnehmen("Anna|1|1|0|0|0|0|-").von, -1);
}

void TstRangliste::tischplan_data()
{
    Faelle::laden("tischplan.tsv");
}

// The tables for the players of an evening, and their seats: best first, equal points
// keeping the model's order.
void TstRangliste::tischplan()
{
    QFETCH(QStringList, punkte);
    QStringList tische;
    for (int groesse : Rangliste::tischplan(punkte.size()))
        tische << QString::number(groesse);
    QTEST(tische, "tische");
    RanglistenStand stand;
    for (int i = 0; i < punkte.size(); ++i)
        stand.aufnehmen(QStringLiteral("S%1|1|1|%2|0|0|0|-").arg(i).arg(punkte.at(i)));
    stand.tischreihenfolgeAuswerten();
    QTEST(spalte(stand.zeilen(), &RanglistenZeile::platz), "plaetze");
}

void TstRangliste::dateien()
{
    const QVector<RanglistenZeile> zeilen{
        {"Anna Schmidt", "1", "2", "1234", "12", "3", "8.5", "1 - 1"},
        {"Bernd Keller", "10", "2", "-17", "4", "9", "13.5", "-"},
        {"Clara Vogt", "2", "x", "0", "0", "0", "120", "2 - 3"}};
    // Bernd's cost is rounded to its column; Clara's, of seven characters, fills it up to the
    // lost games.
    QCOMPARE(Rangliste::textDatei(zeilen), QString::fromUtf8(Faelle::datei("rangliste.txt")));
    QCOMPARE(Rangliste::tabellenDatei(zeilen), QString::fromUtf8(Faelle::datei("rangliste.csv")));
    QCOMPARE(Rangliste::textDatei({}).count('\n'), 2);
    QCOMPARE(Rangliste::textDateiName(QDate(2026, 11, 14)),
             QStringLiteral("14-11-26Serie14-11-26_Text.txt"));
    QCOMPARE(Rangliste::tabellenDateiName(QDate(2026, 11, 14)),
             QStringLiteral("14-11-26Serie14-11-26_Excel.txt"));
}

QTEST_GUILESS_MAIN(TstRangliste)
#include "tst_rangliste.moc"
