#pragma once

// The fragments the description of a game is put together from. Their blanks
// are uneven on purpose (some end with one, some begin with one), and scorers
// know the texts in exactly this form.

#include <QString>

namespace SpielBeschreibung {

QString mit(int matadore);
QString ohne(int matadore);
QString hand(int faktor);
QString offen(int faktor);
QString schneider(int faktor);
QString schneiderAngesagt(int faktor);
QString schwarz(int faktor);
QString schwarzAngesagt(int faktor);
QString wert(int grundwert, int spielwert);
QString verloren(int doppelterWert);
QString spieler(const QString &name);
QString eingepasst();

} // namespace SpielBeschreibung
