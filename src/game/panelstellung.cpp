#include "game/panelstellung.h"

int spielTypFuerGrundwert(int grundwert)
{
    switch (grundwert) {
    case 9:
        return PanelId::Karo;
    case 10:
        return PanelId::Herz;
    case 11:
        return PanelId::Pik;
    case 12:
        return PanelId::Kreuz;
    case 23:
        return PanelId::Null;
    case 24:
        return PanelId::Grand;
    default:
        return PanelId::Keine;
    }
}

PanelStellung PanelStellung::ausEintrag(const SpielEintrag &eintrag)
{
    PanelStellung stellung;
    stellung.spielTyp = spielTypFuerGrundwert(eintrag[SpielEintrag::Spiel]);
    if (eintrag[SpielEintrag::Mit] > 0) {
        stellung.matadorModus = PanelId::Mit;
        stellung.matadorAnzahl = eintrag[SpielEintrag::Mit];
    }
    if (eintrag[SpielEintrag::Ohne] > 0) {
        stellung.matadorModus = PanelId::Ohne;
        stellung.matadorAnzahl = eintrag[SpielEintrag::Ohne];
    }
    stellung.hand = eintrag.flag(SpielEintrag::Hand);
    stellung.schneider = eintrag.flag(SpielEintrag::Schneider);
    stellung.schneiderAngesagt = eintrag.flag(SpielEintrag::AngSchneider);
    stellung.schwarz = eintrag.flag(SpielEintrag::Schwarz);
    stellung.schwarzAngesagt = eintrag.flag(SpielEintrag::AngSchwarz);
    stellung.offen = eintrag.flag(SpielEintrag::Offen);
    if (eintrag[SpielEintrag::Gewonnen] != 0)
        stellung.ergebnis = PanelId::Gewonnen;
    else if (eintrag[SpielEintrag::Verloren] != 0)
        stellung.ergebnis = PanelId::Verloren;
    for (int sitz = 0; sitz < 4; ++sitz) {
        if (eintrag.spielerWert(sitz) != 0)
            stellung.spieler.append(PanelId::Spieler1 + sitz);
    }
    return stellung;
}
