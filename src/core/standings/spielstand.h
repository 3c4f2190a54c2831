#pragma once

// The running scores of the three or four seats, computed from the rows of
// SpielListe: each seat's won and lost games and points, the score shown in
// its field (plain or with Seeger-Fabian points) and its line. Bierlachs
// below keeps the same tallies per round of a Bierlachs evening.

#include "core/db/spieleintrag.h"

#include <QString>
#include <QVector>

#include <array>

struct SitzBilanz
{
    int gewonnen = 0;
    int verloren = 0;
    int punkte = 0;
};

// Index = seat 0..3.
using Bilanzen = std::array<SitzBilanz, 4>;

// Each seat's shown score after one game, index = seat 0..3.
using Stand = std::array<int, 4>;

// A seat's Seeger-Fabian score: its points, the won-minus-lost term and the
// term for the games its opponents lost, with the two factors in force.
struct FabianWertung
{
    int gewMinusVerl = 0;
    int gegner = 0;
    int gesamt = 0;
};
FabianWertung fabianWertung(const SitzBilanz &eigene, int verloreneDerGegner,
                            int faktorGewMinusVerl, int faktorGegner);

// The three factors of the Fabian evaluation, from the settings store.
struct FabianFaktoren
{
    int gewMinusVerl = 50; // per won game minus lost game
    int gegner3 = 40;      // per game lost by an opponent, 3-player list
    int gegner4 = 30;      // the same in a 4-player list
};

class Spielstand
{
public:
    // Tally per seat: a negative value in the seat's column counts a lost game,
    // a positive one a won game, 0 (another declarer, passed in) nothing; the
    // points are the sum of the column. Seats from `spieler` on stay 0, whatever
    // their column holds.
    static Bilanzen bilanzen(const QVector<SpielEintrag> &spiele, int spieler);

    // The score shown for a seat: its points, or with mitFabian
    // points + gewMinusVerl * (won - lost) + opponent factor * (games lost by
    // the other seats of the list). The caller decides when Fabian points
    // apply (tournament mode only). A seat outside the list shows 0.
    static int angezeigt(const Bilanzen &b, int sitz, int spieler, bool mitFabian,
                         const FabianFaktoren &f);

    // The seat's line for its score field: "Name: score-Gwon-Vlost".
    static QString zeile(const QString &name, int angezeigt, const SitzBilanz &bilanz);

    // The shown scores after each game in turn, as angezeigt() gives them.
    static QVector<Stand> verlauf(const QVector<SpielEintrag> &spiele, int spieler, bool mitFabian,
                                  const FabianFaktoren &f);
};

// One round of a Bierlachs evening.
struct BierlachsRunde
{
    int ersteZeile = 1;   // Zeile of the round's first game
    int letzteZeile = 0;  // Zeile of its last game so far (0 while empty)
    Bilanzen bilanz{};    // won/lost/points of this round only
    bool beendet = false; // some seat reached 0 or below
};

// Bierlachs is played in rounds. Every player starts a round with the maximum
// points and plays them down: a won game counts down, a lost one (stored
// negative and doubled) counts up again, so a seat's remaining points are the
// maximum minus the sum of its column in this round. The round ends with the
// game after which some seat is at 0 or below; the next game starts a new
// round with everyone back at the maximum. Whoever has the most points left
// in a finished round is the Bierlachs and pays the beer.
class Bierlachs
{
public:
    // The rounds of the list in order. A finished round with no game after it
    // comes last; the next game entered opens the new one. A maximum <= 0 means
    // one endless round; an empty list gives one empty round starting at Zeile 1.
    static QVector<BierlachsRunde> runden(const QVector<SpielEintrag> &spiele, int spieler,
                                          int maxPunkte);

    // Points the seat has left in the round.
    static int rest(const BierlachsRunde &runde, int sitz, int maxPunkte);

    // The seat that pays: most points left, the lower seat on a tie; -1 while
    // the round is not finished.
    static int bierlachs(const BierlachsRunde &runde, int spieler, int maxPunkte);

    // The seat's line in Bierlachs mode: "Name: rest Gwon Vlost".
    static QString zeile(const QString &name, int rest, const SitzBilanz &bilanz);

    // The points each seat has left after each game in turn; every seat
    // starts again at the maximum with the first game of a new round.
    static QVector<Stand> verlauf(const QVector<SpielEintrag> &spiele, int spieler, int maxPunkte);
};
