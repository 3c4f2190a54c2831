#pragma once

// A game in the terms the scorer sets it on the entry panel: type, matadors,
// the extras, the result and the declarer's seat. The panel maps its buttons to
// these and back; a stored row gives the angaben it was entered with.

#include "core/db/spieleintrag.h"

#include <optional>

enum class Spielart
{
    Karo,
    Herz,
    Pik,
    Kreuz,
    Grand,
    Null,
    Eingepasst
};

enum class Matadore
{
    Mit,
    Ohne
};

struct Spielangaben
{
    std::optional<Spielart> art;
    std::optional<Matadore> matadore;
    int anzahl = 0; // matadors counted, 1..11; 0 when none is chosen
    bool hand = false;
    bool offen = false;
    bool schneider = false;
    bool schneiderAngesagt = false;
    bool schwarz = false;
    bool schwarzAngesagt = false;
    std::optional<bool> gewonnen;
    int sitz = -1; // declarer's seat 0..3, -1 for none

    // What a stored row selects. A row names no matadors (Null, passed in),
    // no result or no declarer where its columns are 0; a base value that no
    // game has gives no type.
    static Spielangaben ausEintrag(const SpielEintrag &eintrag);
};

// Base value of a suit or Grand game; 0 for Null and a passed-in round.
int grundwert(Spielart art);
