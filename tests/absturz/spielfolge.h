#pragma once

// The game the crash writer enters as number zeile. Every column is filled
// from the number, so that a row read back after a kill shows whether it was
// written whole and under its own number.

#include "core/db/spieleintrag.h"

inline SpielEintrag spielFuerZeile(int zeile)
{
    using S = SpielEintrag;
    SpielEintrag e;
    e.setze(S::Zeile, zeile);
    e.setze(S::Spiel, 9 + zeile % 4);
    e.setze(S::Mit, zeile % 5);
    e.setze(S::Ohne, zeile % 3);
    for (int spalte = S::Hand; spalte <= S::Offen; ++spalte)
        e.setze(static_cast<S::Spalte>(spalte), ((zeile >> (spalte - S::Hand)) & 1) == 1);
    e.setze(S::Gewonnen, zeile % 7);
    e.setze(S::Verloren, zeile % 11);
    e.setze(static_cast<S::Spalte>(S::Spieler1 + zeile % 4), zeile % 2 ? zeile * 3 : -zeile * 3);
    e.setze(S::Eingepasst, zeile % 13 == 0);
    e.setze(S::Reizung, 18 + zeile % 40);
    return e;
}
