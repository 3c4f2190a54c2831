#pragma once

// The three play modes and the texts of the mode label.

#include <QString>

namespace Spielmodus {

enum : int
{
    Turnier = 0,
    Ergebnis = 1,
    Bierlachs = 2
};

// Label after choosing the mode in the menu.
QString menuText(int modus, int bierlachsMaxPunkte);
// Label after a saved list was restored; its spellings differ from the menu's
// and are kept, since lists in the club were filed with both.
QString wiederherstellungsText(int modus, int bierlachsMaxPunkte);

} // namespace Spielmodus
