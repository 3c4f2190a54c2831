#pragma once

// The one table of the columns of a game row and what every other shape of
// the row makes of each: the row message's items, the XML protocol file, the
// journal, the entry panel's toggles and the second list's cross-check. Code
// that turns a row into another shape loops over it instead of naming columns.

#include "core/db/spieleintrag.h"

#include <array>
#include <optional>

struct Spielangaben;

struct SpaltenAngabe
{
    SpielEintrag::Spalte spalte;
    bool flag; // 0 or 1
    // Place among the seventeen items of a row message; -1 for Zeile, which
    // travels apart or not at all.
    int item;
    const char *xml;    // attribute of a game in the XML protocol files
    const char *jornal; // key in the journal; nullptr: not journalled
    // What the journal writes for 0; none: the key is left out.
    std::optional<int> jornalFuerNull;
    // The toggle of the entry panel; nullptr: the column is no toggle.
    bool Spielangaben::*angabe;
    // Text of a difference in the second list's cross-check, %1 the own
    // value of column `abweichungsWert`, %2 the first list's, %3 the game;
    // nullptr: not compared.
    const char *abweichung;
    SpielEintrag::Spalte abweichungsWert;
};

// In column order, one for every column of SpielListe.
const std::array<SpaltenAngabe, SpielEintrag::AnzahlSpalten> &spielSpalten();
