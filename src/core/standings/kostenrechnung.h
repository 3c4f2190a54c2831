#pragma once

// The money account at the foot of a table's sheet: each player's final points with the
// Seeger-Fabian terms, the place order of the members, card money, lost-game and place fees,
// the prize-game start fee, and the result text for the ranking and the tournament manager.
// Also the lines of the sheet's rules block that describe these settings.

#include "core/standings/spielstand.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <QVector>

#include <array>

// The money and point settings of the account; the defaults are those of a
// first start.
struct KostenWerte
{
    double platz1 = 0.0;
    double platz2 = 1.5;
    double platz3 = 2.5;
    double platz4 = 3.0;
    double kartengeld = 1.0;
    double verlSpiel1Bis5 = 1.0;
    double verlSpielAb6 = 2.0;
    double preisskat = 10.0;
    int gewSpieleMinusVerlSpiele = 50;
    int verlSpieleDerGegenSpieler3 = 40;
    int verlSpieleDerGegenSpieler4 = 30;

    bool operator==(const KostenWerte &o) const
    {
        return platz1 == o.platz1 && platz2 == o.platz2 && platz3 == o.platz3 &&
               platz4 == o.platz4 && kartengeld == o.kartengeld &&
               verlSpiel1Bis5 == o.verlSpiel1Bis5 && verlSpielAb6 == o.verlSpielAb6 &&
               preisskat == o.preisskat && gewSpieleMinusVerlSpiele == o.gewSpieleMinusVerlSpiele &&
               verlSpieleDerGegenSpieler3 == o.verlSpieleDerGegenSpieler3 &&
               verlSpieleDerGegenSpieler4 == o.verlSpieleDerGegenSpieler4;
    }
};

// One player of the table as the account needs it.
struct KostenSpieler
{
    QString name;
    int mgldNr = 0;
    QString mitglied;  // participant flag text; a member exactly when it equals "Ja"
    QString preisskat; // plays the prize game exactly when it equals "Ja"
    SitzBilanz bilanz; // won, lost, sum of the player's column (from Spielstand::bilanzen)
};

struct KostenErgebnis
{
    // The footer rows, in the order of the sheet.
    enum Zeile
    {
        GewMinusVerl,   // (won - lost) * factor
        GegnerVerloren, // games the others lost * factor of the table size
        Gesamt,         // "Gesamtpunkte = Endergebnis"
        Kartengeld,
        VerlSpiele,
        Platzgeld,
        Preisskat,
        Summe // rows Kartengeld to Preisskat
    };

    std::array<QStringList, 8> zeilen; // zeilen[r][p]: text of footer row r for player p
    QVector<int> gesamt;               // row 2 per player
    QVector<int> platz;                // place 1..n per player, 0 for a non-member
    QVector<double> summe;             // row 7 per player
    QVector<double> managerBetrag;     // the second amount (rows 3..5 in series 1, else 0)
    QStringList ergebnisTexte;         // "%1|%2|%3|%4|%5|%6|%7|-|%8" per player
};

class Kostenrechnung
{
    Q_DECLARE_TR_FUNCTIONS(Kostenrechnung)

public:
    // The footer of a table of 3 or 4 players (spieler.size()), in seat order. Only members
    // are placed; among equal totals the lower seat takes the better place. Card money is
    // due up to series 1 (series 0 included), the Preisskat in series 1 only, and the
    // manager's amount is rows 3 to 5 in series 1 and 0 in every other.
    static KostenErgebnis berechne(const QVector<KostenSpieler> &spieler, const KostenWerte &kosten,
                                   int serie, int tischNr);

    // Money typed with a decimal comma: "1,5" -> 1.5; empty or partial text -> 0.
    static double geldWert(const QString &text);
    // Money as its field shows it: one decimal ("1.0", "2.5"), more only where
    // the amount has them.
    static QString geldText(double betrag);

    // The six description lines of the sheet's rules block, in this order: won minus lost
    // factor, opponents' factor (of the table size), card money, lost-game fees, Preisskat,
    // place fees. The place line ends in " Euro" only when the sheet is first drawn
    // (platzMitEuro); an edit of a place fee rewrites it without.
    static QStringList beschreibungen(const KostenWerte &kosten, int spieler, bool platzMitEuro);
};
