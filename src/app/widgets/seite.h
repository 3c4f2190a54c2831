#pragma once

// The pages of the window's tab row, by what they show, for the parts of the
// window that ask for one to be shown.
enum class Seite
{
    Einstellungen,
    Uebersicht,
    Spieleintrag,
    SpieleListe,
    Spielstaende,
    Neu,
    Beschreibung
};
