#pragma once

// Which message this table takes, from whom and in which state: one rule per
// type, decided before anything acts on a message. The sender is the
// participant the link says the message came from, never what its text
// claims; the lists a message carries are bounded.

#include "core/link/nachricht.h"

#include <QString>

class Paarung;

namespace Empfang {

constexpr int hoechstSpieler = 1000; // a player list (type 4)
constexpr int hoechstSitze = 4;      // a draw, a second list's players, a table's results
constexpr int hoechsteNamenslaenge = 64;

const QString &tischProgramm();   // "Kartulo"
const QString &managerProgramm(); // "Tabulor"

// What the table knows when a message arrives.
struct Lage
{
    QString managerId;   // the manager's participant id; empty without one
    bool anMich = false; // the address field names this table
    QString gruppe;
    int tischNr = 0;
    int serie = 0;
    int spieler = 4; // of the list, for copied games
    const Paarung *paarung = nullptr;
};

struct Urteil
{
    enum Art
    {
        Annehmen,
        Uebergehen, // not for this table, or for nobody: dropped silently
        Abweisen    // from the wrong sender, in the wrong state, or too much: counted
    };
    Art art = Uebergehen;
    QString grund; // why it was refused, for the status line
};

Urteil pruefen(const QString &absenderId, const Nachricht &nachricht, const Lage &lage);

} // namespace Empfang
