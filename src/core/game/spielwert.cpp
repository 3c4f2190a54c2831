#include "core/game/spielwert.h"

#include "core/game/spielbeschreibung.h"

namespace {

// Only a real seat has a score column; any other seat writes nothing.
void spielerWertSetzen(SpielEintrag &eintrag, int sitz, int wert)
{
    if (sitz < 0 || sitz > 3)
        return;
    eintrag.setze(static_cast<SpielEintrag::Spalte>(SpielEintrag::Spieler1 + sitz), wert);
}

void farbeOderGrand(const SpielEingabe &eingabe, const Spielangaben &a, int reizung,
                    SpielwertErgebnis &ergebnis)
{
    namespace Text = SpielBeschreibung;
    SpielEintrag &e = ergebnis.eintrag;
    const int anzahl = a.anzahl;
    QString text;
    if (a.matadore == Matadore::Mit) {
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
        {a.hand, SpielEintrag::Hand, Text::hand},
        {a.offen, SpielEintrag::Offen, Text::offen},
        {a.schneider, SpielEintrag::Schneider, Text::schneider},
        {a.schneiderAngesagt, SpielEintrag::AngSchneider, Text::schneiderAngesagt},
        {a.schwarz, SpielEintrag::Schwarz, Text::schwarz},
        {a.schwarzAngesagt, SpielEintrag::AngSchwarz, Text::schwarzAngesagt},
    };
    for (const auto &extra : extras) {
        if (!extra.gesetzt)
            continue;
        ++faktor;
        e.setze(extra.spalte, true);
        text += extra.fragment(faktor);
    }

    const int basis = a.art ? grundwert(*a.art) : 0;
    const int wert = faktor * basis;
    e.setze(SpielEintrag::Spiel, basis);
    text += Text::wert(basis, wert);

    int ergebnisWert = wert;
    if (a.gewonnen.value_or(false)) {
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
    spielerWertSetzen(e, a.sitz, ergebnisWert);
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

void nullSpiel(const SpielEingabe &eingabe, int reizung, SpielwertErgebnis &ergebnis)
{
    const Spielangaben &a = eingabe.angaben;
    SpielEintrag &e = ergebnis.eintrag;
    e.setze(SpielEintrag::Spiel, 23);
    if (a.sitz < 0) {
        ergebnis.art = SpielwertErgebnis::OhneSpieler;
        return;
    }

    const NullVariante variante = nullVariante(a.offen, a.hand);
    e.setze(SpielEintrag::Hand, a.hand);
    e.setze(SpielEintrag::Offen, a.offen);
    if (a.gewonnen.value_or(false)) {
        if (reizung > variante.wert) {
            ergebnis.art = SpielwertErgebnis::Ueberreizt;
            ergebnis.meldung = QString::fromLatin1(variante.ueberreizt).arg(reizung);
            return;
        }
        e.setze(SpielEintrag::Gewonnen, variante.wert);
        spielerWertSetzen(e, a.sitz, variante.wert);
        ergebnis.beschreibung =
            QString::fromLatin1(variante.gewonnen).arg(eingabe.spielerKnopfText);
    } else {
        // Unlike a suit game, a lost Null is never held against the bid.
        e.setze(SpielEintrag::Verloren, 2 * variante.wert);
        spielerWertSetzen(e, a.sitz, -2 * variante.wert);
        ergebnis.beschreibung =
            QString::fromLatin1(variante.verloren).arg(eingabe.spielerKnopfText);
    }
}

} // namespace

SpielwertErgebnis Spielwert::berechne(const SpielEingabe &eingabe)
{
    SpielwertErgebnis ergebnis;
    const int reizung = eingabe.reizText.toInt();
    if (!eingabe.reizText.isEmpty())
        ergebnis.eintrag.setze(SpielEintrag::Reizung, reizung);

    const Spielangaben &a = eingabe.angaben;
    if (a.art == Spielart::Eingepasst) {
        ergebnis.eintrag.setze(SpielEintrag::Eingepasst, true);
        ergebnis.beschreibung = SpielBeschreibung::eingepasst();
    } else if (a.art == Spielart::Null) {
        nullSpiel(eingabe, reizung, ergebnis);
    } else if (a.art == Spielart::Grand && a.offen) {
        // A Grand ouvert always counts as Hand, Schneider and Schwarz, both announced.
        Spielangaben ouvert = a;
        ouvert.hand = ouvert.schneider = ouvert.schneiderAngesagt = true;
        ouvert.schwarz = ouvert.schwarzAngesagt = true;
        farbeOderGrand(eingabe, ouvert, reizung, ergebnis);
        ergebnis.wartenStarten = false;
    } else {
        farbeOderGrand(eingabe, a, reizung, ergebnis);
    }
    return ergebnis;
}

QString Spielwert::zeileFehler(const SpielEintrag &zeile, int spieler)
{
    using S = SpielEintrag;
    for (S::Spalte flag : {S::Hand, S::Schneider, S::AngSchneider, S::Schwarz, S::AngSchwarz,
                           S::Offen, S::Eingepasst})
        if (zeile[flag] != 0 && zeile[flag] != 1)
            return QStringLiteral("Merkmal nicht 0 oder 1");
    // The bid field takes any number, the bid dock at most 264.
    if (zeile[S::Reizung] < 0 || zeile[S::Reizung] > 9999)
        return QStringLiteral("Reizwert ausserhalb 0 bis 9999");
    if (zeile.flag(S::Eingepasst)) {
        SpielEintrag eingepasst;
        eingepasst.setze(S::Zeile, zeile[S::Zeile]);
        eingepasst.setze(S::Eingepasst, true);
        eingepasst.setze(S::Reizung, zeile[S::Reizung]);
        return zeile == eingepasst ? QString() : QStringLiteral("eingepasst, aber mit Werten");
    }
    SpielEingabe eingabe;
    Spielangaben &a = eingabe.angaben;
    a = Spielangaben::ausEintrag(zeile);
    if (!a.art)
        return QStringLiteral("keine Spielart");
    const int hoechstMatadore = a.art == Spielart::Grand ? 4 : 11;
    const bool ohneMatadore = zeile[S::Mit] == 0 && zeile[S::Ohne] == 0;
    if (a.art == Spielart::Null ? !ohneMatadore
                                : (zeile[S::Mit] != 0) == (zeile[S::Ohne] != 0) || a.anzahl < 1 ||
                                      a.anzahl > hoechstMatadore)
        return QStringLiteral("Matadore passen nicht zur Spielart");
    int alleinspieler = 0;
    for (int sitz = 0; sitz < 4; ++sitz)
        alleinspieler += zeile.spielerWert(sitz) != 0;
    if (alleinspieler != 1 || a.sitz >= spieler)
        return QStringLiteral("kein Alleinspieler am Tisch");
    if (zeile[S::Reizung] != 0)
        eingabe.reizText = QString::number(zeile[S::Reizung]);
    SpielwertErgebnis ergebnis = berechne(eingabe);
    if (ergebnis.art != SpielwertErgebnis::Berechnet)
        return QStringLiteral("ueberreizt");
    ergebnis.eintrag.setze(S::Zeile, zeile[S::Zeile]);
    return ergebnis.eintrag == zeile ? QString() : QStringLiteral("Spielwert passt nicht");
}
