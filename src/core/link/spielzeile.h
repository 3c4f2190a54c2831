#pragma once

// A game row on the club network, after the column table: the tuple the LAN
// library turns into the seventeen items of a row message, the game read
// back from those items, and the second list's cross-check of its own row
// against the first list's.

#include "core/db/spieleintrag.h"

#include <QStringList>

#include <optional>
#include <tuple>

namespace SpielZeile {

// The row without Zeile, in item order; exactly the library's SpielTupel.
using Tupel = std::tuple<int, int, int, bool, bool, bool, bool, bool, bool, int, int, int, int, int,
                         int, bool, int>;

// Items of a row message (type 14); a compared row (type 13) has the table,
// the series and Zeile before them.
constexpr int anzahlItems = std::tuple_size<Tupel>::value;
constexpr int zeileItem = 2;
constexpr int ersteSpielItem = 3;

Tupel tupel(const SpielEintrag &spiel);

// The game of the seventeen items from item ab on (Zeile left 0); empty
// unless all seventeen are whole numbers.
std::optional<SpielEintrag> spielAus(const QStringList &inhalt, int ab);

// The texts of every difference between the own row and the items of the
// first list's compared row, in column order.
QStringList abweichungen(const SpielEintrag &eigenes, const QStringList &ersteListe);

} // namespace SpielZeile
