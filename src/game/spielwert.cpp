#include "game/spielwert.h"

#include "game/panelstellung.h"
#include "game/spielbeschreibung.h"

namespace {

// Only a real declarer button has a score column; any other id writes nothing.
void spielerWertSetzen(SpielEintrag &eintrag, int spielerId, int wert)
{
    if (spielerId < PanelId::Spieler1 || spielerId > PanelId::Spieler4)
        return;
    eintrag.setze(
        static_cast<SpielEintrag::Spalte>(SpielEintrag::Spieler1 + spielerId - PanelId::Spieler1),
        wert);
}

int grundwert(int spielTyp)
{
    switch (spielTyp) {
    case PanelId::Karo:
        return 9;
    case PanelId::Herz:
        return 10;
    case PanelId::Pik:
        return 11;
    case PanelId::Kreuz:
        return 12;
    case PanelId::Grand:
        return 24;
    default:
        return 0;
    }
}

void farbeOderGrand(const PanelEingabe &eingabe, int reizung, SpielwertErgebnis &ergebnis)
{
    namespace Text = SpielBeschreibung;
    SpielEintrag &e = ergebnis.eintrag;
    const int anzahl = eingabe.matadorAnzahl;
    QString text;
    if (eingabe.matadorModus == PanelId::Mit) {
        e.setze(SpielEintrag::Mit, anzahl);
        text = Text::mit(anzahl);
    } else {
        e.setze(SpielEintrag::Ohne, anzahl);
        text = Text::ohne(anzahl);
    }

    // Each extra raises the factor by one, in the order the scorers read them; none
    // implies another here, the panel's toggles keep them consistent.
    int faktor = anzahl + 1;
    const struct
    {
        bool gesetzt;
        SpielEintrag::Spalte spalte;
        QString (*fragment)(int);
    } extras[] = {
        {eingabe.hand, SpielEintrag::Hand, Text::hand},
        {eingabe.offen, SpielEintrag::Offen, Text::offen},
        {eingabe.schneider, SpielEintrag::Schneider, Text::schneider},
        {eingabe.schneiderAngesagt, SpielEintrag::AngSchneider, Text::schneiderAngesagt},
        {eingabe.schwarz, SpielEintrag::Schwarz, Text::schwarz},
        {eingabe.schwarzAngesagt, SpielEintrag::AngSchwarz, Text::schwarzAngesagt},
    };
    for (const auto &extra : extras) {
        if (!extra.gesetzt)
            continue;
        ++faktor;
        e.setze(extra.spalte, true);
        text += extra.fragment(faktor);
    }

    const int basis = grundwert(eingabe.spielTyp);
    const int wert = faktor * basis;
    e.setze(SpielEintrag::Spiel, basis);
    text += Text::wert(basis, wert);

    int ergebnisWert = wert;
    if (eingabe.gewonnen) {
        e.setze(SpielEintrag::Gewonnen, wert);
    } else {
        e.setze(SpielEintrag::Verloren, 2 * wert);
        text += Text::verloren(2 * wert);
        ergebnisWert = -2 * wert;
    }

    // A lost game counts double, so it is held against the bid with twice its value.
    if (reizung != 0 && qAbs(ergebnisWert) < reizung) {
        ergebnis.art = SpielwertErgebnis::Ueberreizt;
        ergebnis.meldung =
            QStringLiteral("Spiel ueberreizt!\nGereizt %1 Spiel %2").arg(reizung).arg(ergebnisWert);
        return;
    }
    spielerWertSetzen(e, eingabe.spielerId, ergebnisWert);
    ergebnis.beschreibung = text + Text::spieler(eingabe.spielerName);
    ergebnis.wartenStarten = true;
}

// The Null games have fixed values and whole texts of their own; their uneven
// spelling ("Verloren" only for Nullovert Hand) is what scorers are used to.
struct NullVariante
{
    int wert;
    const char *gewonnen;
    const char *verloren;
    const char *ueberreizt;
};

NullVariante nullVariante(bool offen, bool hand)
{
    if (offen && hand)
        return {59, "Nullovert Hand 59 Punkte Spieler %1",
                "Nullovert Hand Verloren -118 Punkte Spieler %1",
                "Nullovert Hand ueberreizt!\nGereizt %1 Spiel 59"};
    if (offen)
        return {46, "Nullovert 46 Punkte Spieler %1", "Nullovert verloren -92 Punkte Spieler %1",
                "Nullovert ueberreizt!\nGereizt %1 Spiel 46"};
    if (hand)
        return {35, "Null Hand 35 Punkte Spieler %1", "Null Hand verloren -70 Punkte Spieler %1",
                "Null Hand ueberreizt!\nGereizt %1 Spiel 35"};
    return {23, "Null 23 Punkte Spieler %1", "Null verloren -46 Punkte Spieler %1",
            "Null ueberreizt!\nGereizt %1 Spiel 23"};
}

void nullSpiel(const PanelEingabe &eingabe, int reizung, SpielwertErgebnis &ergebnis)
{
    SpielEintrag &e = ergebnis.eintrag;
    e.setze(SpielEintrag::Spiel, 23);
    if (eingabe.spielerId == PanelId::Keine) {
        ergebnis.art = SpielwertErgebnis::OhneSpieler;
        return;
    }

    const NullVariante variante = nullVariante(eingabe.offen, eingabe.hand);
    e.setze(SpielEintrag::Hand, eingabe.hand);
    e.setze(SpielEintrag::Offen, eingabe.offen);
    if (eingabe.gewonnen) {
        if (reizung > variante.wert) {
            ergebnis.art = SpielwertErgebnis::Ueberreizt;
            ergebnis.meldung = QString::fromLatin1(variante.ueberreizt).arg(reizung);
            return;
        }
        e.setze(SpielEintrag::Gewonnen, variante.wert);
        spielerWertSetzen(e, eingabe.spielerId, variante.wert);
        ergebnis.beschreibung =
            QString::fromLatin1(variante.gewonnen).arg(eingabe.spielerKnopfText);
    } else {
        // Unlike a suit game, a lost Null is never held against the bid.
        e.setze(SpielEintrag::Verloren, 2 * variante.wert);
        spielerWertSetzen(e, eingabe.spielerId, -2 * variante.wert);
        ergebnis.beschreibung =
            QString::fromLatin1(variante.verloren).arg(eingabe.spielerKnopfText);
    }
}

} // namespace

SpielwertErgebnis Spielwert::berechne(const PanelEingabe &eingabe)
{
    SpielwertErgebnis ergebnis;
    const int reizung = eingabe.reizText.toInt();
    if (!eingabe.reizText.isEmpty())
        ergebnis.eintrag.setze(SpielEintrag::Reizung, reizung);

    switch (eingabe.spielTyp) {
    case PanelId::Eingepasst:
        ergebnis.eintrag.setze(SpielEintrag::Eingepasst, true);
        ergebnis.beschreibung = SpielBeschreibung::eingepasst();
        break;
    case PanelId::Null:
        nullSpiel(eingabe, reizung, ergebnis);
        break;
    default:
        if (eingabe.spielTyp == PanelId::Grand && eingabe.offen) {
            // A Grand ouvert always counts as Hand, Schneider and Schwarz, both announced.
            PanelEingabe ouvert = eingabe;
            ouvert.hand = ouvert.schneider = ouvert.schneiderAngesagt = true;
            ouvert.schwarz = ouvert.schwarzAngesagt = true;
            farbeOderGrand(ouvert, reizung, ergebnis);
            ergebnis.wartenStarten = false;
        } else {
            farbeOderGrand(eingabe, reizung, ergebnis);
        }
        break;
    }
    return ergebnis;
}
