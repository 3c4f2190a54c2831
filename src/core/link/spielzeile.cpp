#include "core/link/spielzeile.h"

#include "core/game/spielspalten.h"

#include <array>
#include <utility>

namespace SpielZeile {

namespace {

// The column of each item.
std::array<SpielEintrag::Spalte, anzahlItems> spaltenDerItems()
{
    std::array<SpielEintrag::Spalte, anzahlItems> spalten{};
    for (const SpaltenAngabe &s : spielSpalten()) {
        if (s.item >= 0)
            spalten.at(static_cast<std::size_t>(s.item)) = s.spalte;
    }
    return spalten;
}

template <std::size_t... I> Tupel tupelAus(const SpielEintrag &spiel, std::index_sequence<I...>)
{
    static const std::array<SpielEintrag::Spalte, anzahlItems> spalten = spaltenDerItems();
    // A flag element takes 0 or 1 as false or true.
    return Tupel{static_cast<std::tuple_element_t<I, Tupel>>(spiel[spalten[I]])...};
}

} // namespace

Tupel tupel(const SpielEintrag &spiel)
{
    return tupelAus(spiel, std::make_index_sequence<anzahlItems>());
}

std::optional<SpielEintrag> spielAus(const QStringList &inhalt, int ab)
{
    if (ab < 0 || inhalt.size() < ab + anzahlItems)
        return std::nullopt;
    SpielEintrag spiel;
    for (const SpaltenAngabe &s : spielSpalten()) {
        if (s.item < 0)
            continue;
        bool ok = false;
        const int wert = inhalt.at(ab + s.item).toInt(&ok);
        if (!ok)
            return std::nullopt;
        spiel.setze(s.spalte, wert);
    }
    return spiel;
}

QStringList abweichungen(const SpielEintrag &eigenes, const QStringList &ersteListe)
{
    QStringList texte;
    for (const SpaltenAngabe &s : spielSpalten()) {
        if (!s.abweichung)
            continue;
        const int empfangen = ersteListe.value(ersteSpielItem + s.item).toInt();
        if (eigenes[s.spalte] == empfangen)
            continue;
        texte << QString::fromLatin1(s.abweichung)
                     .arg(eigenes[s.abweichungsWert])
                     .arg(empfangen)
                     .arg(eigenes[SpielEintrag::Zeile]);
    }
    return texte;
}

} // namespace SpielZeile
