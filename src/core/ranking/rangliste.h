#pragma once

// The ranking of a club evening across its tables: every player's latest
// result as the tables send it, the seating proposed for the next series, and
// the two files the organiser prints or imports into a spreadsheet.

#include <QDate>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

struct RanglistenZeile
{
    QString name;
    QString tisch;
    QString serie;
    QString punkte;
    QString gewonnen;
    QString verloren;
    QString kosten;
    QString platz = QStringLiteral("-"); // "table - seat" once evaluated

    bool operator==(const RanglistenZeile &o) const
    {
        return name == o.name && tisch == o.tisch && serie == o.serie && punkte == o.punkte &&
               gewonnen == o.gewonnen && verloren == o.verloren && kosten == o.kosten &&
               platz == o.platz;
    }
};

// The ranking as results come in, "name|table|series|points|won|lost|costs|-|place"
// each: a name already in the ranking updates its row's table to costs, a new
// one is added. Rows stay ordered by table number as text (so table 10 comes
// before table 2), rows of one table in the order they came. A row is found by
// its name at once, so each result costs only its own row, however many
// tables report.
class RanglistenStand
{
public:
    // Where a result went: the row it updated, moved from von when its table
    // changed, or (von -1) the row it was added as.
    struct Schritt
    {
        int von = -1;
        int nach = 0;
    };

    Schritt aufnehmen(const QString &ergebnis);
    const QVector<RanglistenZeile> &zeilen() const { return m_zeilen; }
    void leeren();
    // Proposes the seating of the next series (Rangliste::tischreihenfolgeAuswerten).
    void tischreihenfolgeAuswerten();

private:
    void zeilenZaehlen(int von, int bis);

    QVector<RanglistenZeile> m_zeilen;
    QHash<QString, int> m_zeileVon;
};

namespace Rangliste {

// Seats per table for n players, tables 1, 2, ... in order: as many tables
// of four as the rest after taking tables of three allows, the tables of
// three after them. Counts that do not split (1, 2, 3, 5) still get tables
// of three, with seats left empty.
QVector<int> tischplan(int spieler);

// Proposes the seating of the next series: the best player at table 1 seat
// 1, and so on; on equal points the earlier row goes first.
void tischreihenfolgeAuswerten(QVector<RanglistenZeile> &zeilen);

// The two ranking files, rows in the order given; lines end with "\n".
QString textDatei(const QVector<RanglistenZeile> &zeilen);
QString tabellenDatei(const QVector<RanglistenZeile> &zeilen);

// "%1Serie%1_Text.txt" and "%1Serie%1_Excel.txt" with the date as dd-MM-yy
// in both places.
QString textDateiName(const QDate &datum);
QString tabellenDateiName(const QDate &datum);

} // namespace Rangliste
