#include "core/game/spielangaben.h"

#include "core/game/spielspalten.h"

namespace {

std::optional<Spielart> artFuerGrundwert(int wert)
{
    switch (wert) {
    case 9:
        return Spielart::Karo;
    case 10:
        return Spielart::Herz;
    case 11:
        return Spielart::Pik;
    case 12:
        return Spielart::Kreuz;
    case 23:
        return Spielart::Null;
    case 24:
        return Spielart::Grand;
    default:
        return std::nullopt;
    }
}

} // namespace

int grundwert(Spielart art)
{
    switch (art) {
    case Spielart::Karo:
        return 9;
    case Spielart::Herz:
        return 10;
    case Spielart::Pik:
        return 11;
    case Spielart::Kreuz:
        return 12;
    case Spielart::Grand:
        return 24;
    case Spielart::Null:
    case Spielart::Eingepasst:
        break;
    }
    return 0;
}

Spielangaben Spielangaben::ausEintrag(const SpielEintrag &eintrag)
{
    Spielangaben a;
    a.art = artFuerGrundwert(eintrag[SpielEintrag::Spiel]);
    if (eintrag[SpielEintrag::Mit] > 0) {
        a.matadore = Matadore::Mit;
        a.anzahl = eintrag[SpielEintrag::Mit];
    }
    if (eintrag[SpielEintrag::Ohne] > 0) {
        a.matadore = Matadore::Ohne;
        a.anzahl = eintrag[SpielEintrag::Ohne];
    }
    for (const SpaltenAngabe &s : spielSpalten()) {
        if (s.angabe)
            a.*s.angabe = eintrag.flag(s.spalte);
    }
    if (eintrag[SpielEintrag::Gewonnen] != 0)
        a.gewonnen = true;
    else if (eintrag[SpielEintrag::Verloren] != 0)
        a.gewonnen = false;
    for (int sitz = 0; sitz < 4; ++sitz) {
        if (eintrag.spielerWert(sitz) != 0)
            a.sitz = sitz;
    }
    return a;
}
