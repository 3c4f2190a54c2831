#pragma once

// Computes the value of one game from the entry panel's state; knows nothing of widgets.
// The main window reads its buttons into a PanelEingabe, and shows the result: the
// description, the overbid box, or nothing but an enabled enter button.

#include "game/spieleintrag.h"

#include <QString>

struct PanelEingabe
{
    // Game type button id: 50 Karo, 51 Herz, 52 Pik, 53 Kreuz, 54 Grand, 55 Null,
    // 56 Eingepasst; -1 none.
    int spielTyp = -1;
    int matadorModus = -1;  // 20 Mit, 21 Ohne, -1 none (anything but 20 counts as "Ohne")
    int matadorAnzahl = -1; // checked id of the count group 1..11, -1 none
    bool hand = false, offen = false, schneider = false, schneiderAngesagt = false, schwarz = false,
         schwarzAngesagt = false;
    bool gewonnen = false;    // tbGewonnen checked (otherwise counts as lost)
    int spielerId = -1;       // declarer button id 40..43, -1 none
    QString spielerName;      // suit/Grand text: name of the declarer (seating model column 1)
    QString spielerKnopfText; // Null texts: the text of the checked declarer button
    QString reizText;         // the bid field's text ("" when empty)
};

struct SpielwertErgebnis
{
    enum Art
    {
        Berechnet,
        Ueberreizt,
        OhneSpieler
    };
    Art art = Berechnet;
    SpielEintrag eintrag; // the current record (Zeile left 0); fields not set stay 0
    QString beschreibung; // text for leSpielBeschreibung (empty when overbid)
    QString meldung;      // overbid box text (title "INFORMATION"), else empty
    // Restart the wait timer: only on the plain suit and Grand path (the caller skips it in
    // edit mode). Grand ouvert, Null and passed-in games leave it alone.
    bool wartenStarten = false;
};

class Spielwert
{
public:
    static SpielwertErgebnis berechne(const PanelEingabe &eingabe);
};
