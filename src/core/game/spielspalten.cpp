#include "core/game/spielspalten.h"

#include "core/game/spielangaben.h"

namespace {

using S = SpielEintrag;
using A = Spielangaben;

// A game entered without a bid goes into the journal with the lowest bid of
// the game; readers of the journal rely on it.
constexpr int kleinsterReizwert = 18;

// "angesschneider" next to "angschwarz" is how the first XML files spelled it,
// and every file since. The journal spells the announcements out. A
// Schneider difference is reported with the Hand text and the own Hand
// value, and the Spieler4 text has no full stop: both are what scorers know
// from the paper cross-check and are kept.
const std::array<SpaltenAngabe, S::AnzahlSpalten> tabelle{{
    {S::Zeile, false, -1, "nr", "spielnr", 0, nullptr, nullptr, S::Zeile},
    {S::Spiel, false, 0, "spiel", nullptr, std::nullopt, nullptr,
     "Eintrag bei Spiel %3 Spielwert %1 <> Spielwert %2.", S::Spiel},
    {S::Mit, false, 1, "mit", "mit", std::nullopt, nullptr,
     "Eintrag bei Spiel %3 Mit %1 <> Mit %2.", S::Mit},
    {S::Ohne, false, 2, "ohne", "ohne", std::nullopt, nullptr,
     "Eintrag bei Spiel %3 Ohne %1 <> Ohne %2.", S::Ohne},
    {S::Hand, true, 3, "hand", "hand", std::nullopt, &A::hand,
     "Eintrag bei Spiel %3 Hand %1 <> Hand %2.", S::Hand},
    {S::Schneider, true, 4, "schneider", "schneider", std::nullopt, &A::schneider,
     "Eintrag bei Spiel %3 Hand %1 <> Hand %2.", S::Hand},
    {S::AngSchneider, true, 5, "angesschneider", "schneiderangesagt", std::nullopt,
     &A::schneiderAngesagt, "Eintrag bei Spiel %3 AngSchneider %1 <> AngSchneider %2.",
     S::AngSchneider},
    {S::Schwarz, true, 6, "schwarz", "schwarz", std::nullopt, &A::schwarz,
     "Eintrag bei Spiel %3 Schwarz %1 <> Schwarz %2.", S::Schwarz},
    {S::AngSchwarz, true, 7, "angschwarz", "schwarzangesagt", std::nullopt, &A::schwarzAngesagt,
     "Eintrag bei Spiel %3 AngSchwarz %1 <> AngSchwarz %2.", S::AngSchwarz},
    {S::Offen, true, 8, "offen", "offen", std::nullopt, &A::offen,
     "Eintrag bei Spiel %3 Offen %1 <> Offen %2.", S::Offen},
    {S::Gewonnen, false, 9, "gewonnen", "gewonnen", std::nullopt, nullptr,
     "Eintrag bei Spiel %3 Gewonnen %1 <> Gewonnen %2.", S::Gewonnen},
    {S::Verloren, false, 10, "verloren", "verloren", std::nullopt, nullptr,
     "Eintrag bei Spiel %3 Verloren %1 <> Verloren %2.", S::Verloren},
    {S::Spieler1, false, 11, "spieler1", nullptr, std::nullopt, nullptr,
     "Eintrag bei Spiel %3 Spieler1 %1 <> Spieler1 %2.", S::Spieler1},
    {S::Spieler2, false, 12, "spieler2", nullptr, std::nullopt, nullptr,
     "Eintrag bei Spiel %3 Spieler2 %1 <> Spieler2 %2.", S::Spieler2},
    {S::Spieler3, false, 13, "spieler3", nullptr, std::nullopt, nullptr,
     "Eintrag bei Spiel %3 Spieler3 %1 <> Spieler3 %2.", S::Spieler3},
    {S::Spieler4, false, 14, "spieler4", nullptr, std::nullopt, nullptr,
     "Eintrag bei Spiel %3 Spieler4 %1 <> Spieler4 %2", S::Spieler4},
    {S::Eingepasst, true, 15, "eingepasst", "eingepasst", std::nullopt, nullptr,
     "Eintrag bei Spiel %3 Eingepasst %1 <> Eingepasst %2.", S::Eingepasst},
    {S::Reizung, false, 16, "reizung", "reizwert", kleinsterReizwert, nullptr,
     "Eintrag bei Spiel %3 Reizung %1 <> Reizung %2.", S::Reizung},
}};

} // namespace

const std::array<SpaltenAngabe, SpielEintrag::AnzahlSpalten> &spielSpalten()
{
    return tabelle;
}
