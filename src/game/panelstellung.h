#pragma once

// Which buttons of the entry panel a stored game selects when it is loaded
// back for editing. The ids are those of the panel's button groups.

#include "game/spieleintrag.h"

#include <QVector>

namespace PanelId {
enum : int
{
    Mit = 20,
    Ohne = 21,
    Gewonnen = 30,
    Verloren = 31,
    Spieler1 = 40,
    Spieler4 = 43,
    Karo = 50,
    Herz = 51,
    Pik = 52,
    Kreuz = 53,
    Grand = 54,
    Null = 55,
    Eingepasst = 56,
    Keine = -1
};
}

struct PanelStellung
{
    int spielTyp = PanelId::Keine;
    int matadorModus = PanelId::Keine;
    int matadorAnzahl = PanelId::Keine;
    bool hand = false;
    bool schneider = false;
    bool schneiderAngesagt = false;
    bool schwarz = false;
    bool schwarzAngesagt = false;
    bool offen = false;
    int ergebnis = PanelId::Keine;
    // Declarer buttons to check, in seat order (a valid row names one).
    QVector<int> spieler;

    static PanelStellung ausEintrag(const SpielEintrag &eintrag);
};

// Game type button for a stored base value; Keine for anything else.
int spielTypFuerGrundwert(int grundwert);
