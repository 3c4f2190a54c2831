#pragma once

// One row of SpielListe: one game (or one passed-in round) of the score
// sheet. It is the current game the entry panel fills, the row written on
// entry or edit, and the source of standings and messages. Every field is an
// integer; flags are 0 or 1 and nothing is ever null.

#include <QString>
#include <QStringList>

#include <array>

class QSqlRecord;

class SpielEintrag
{
public:
    // Column order of the table; the index of each column in a row.
    enum Spalte
    {
        Zeile,
        Spiel,
        Mit,
        Ohne,
        Hand,
        Schneider,
        AngSchneider,
        Schwarz,
        AngSchwarz,
        Offen,
        Gewonnen,
        Verloren,
        Spieler1,
        Spieler2,
        Spieler3,
        Spieler4,
        Eingepasst,
        Reizung,
        AnzahlSpalten
    };

    static const QStringList &spaltenNamen();

    // A record read from the table: a null or missing field becomes 0.
    static SpielEintrag ausRecord(const QSqlRecord &record);

    int operator[](Spalte spalte) const { return m_werte[spalte]; }
    int wert(int spalte) const { return m_werte.at(static_cast<size_t>(spalte)); }
    void setze(Spalte spalte, int wert) { m_werte[spalte] = wert; }
    void setze(Spalte spalte, bool wert) { m_werte[spalte] = wert ? 1 : 0; }
    bool flag(Spalte spalte) const { return m_werte[spalte] != 0; }

    // Score column of seat 0..3.
    int spielerWert(int sitz) const { return m_werte[Spieler1 + sitz]; }

    bool operator==(const SpielEintrag &other) const { return m_werte == other.m_werte; }
    bool operator!=(const SpielEintrag &other) const { return !(*this == other); }

private:
    std::array<int, AnzahlSpalten> m_werte{};
};
