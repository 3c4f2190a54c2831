#pragma once

// Computes the value of one game from what the entry panel shows; knows
// nothing of widgets. The result is the row to store and the description, the
// overbid text, or nothing but the note that a Null still lacks its declarer.

#include "core/db/spieleintrag.h"
#include "core/game/spielangaben.h"

#include <QString>

struct SpielEingabe
{
    Spielangaben angaben;
    QString spielerName;      // suit and Grand texts: the declarer's name
    QString spielerKnopfText; // Null texts: the text of the declarer's button
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
    QString beschreibung; // text for the description line (empty when overbid)
    QString meldung;      // overbid box text (title "INFORMATION"), else empty
    // Restart the wait timer: only on the plain suit and Grand path (the caller skips it in
    // edit mode). Grand ouvert, Null and passed-in games leave it alone.
    bool wartenStarten = false;
};

class Spielwert
{
public:
    // A game without type counts as a suit game of value 0; without a
    // matador mode it counts as "Ohne"; without a result as lost.
    static SpielwertErgebnis berechne(const SpielEingabe &eingabe);

    // Why a row is not a game the panel could have entered in a list of that
    // many players: a flag other than 0 or 1, matadors the type does not
    // have, a declarer missing or outside the seats, an overbid, or a value
    // that does not follow from the rest. Empty for a good row.
    static QString zeileFehler(const SpielEintrag &zeile, int spieler);
};
