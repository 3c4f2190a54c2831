#pragma once

// Builds kartulo.db contents for the tests and reads them back through a
// connection of its own.

#include "core/db/statements.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace TestProtokoll {

// Runs the statements on kartulo.db; returns false and warns on the first failure.
bool sql(const QStringList &statements);
// Number of rows of a table, -1 when it cannot be read.
int zeilen(const QString &tabelle);
// A game row from "Spalte=Wert ..." with the column names of SpielListe.
SpielEintrag zeile(const QString &spalten);
// The first column of a query's rows as text.
QStringList lesen(const QString &abfrage);
// One column of a table as integers, in storage order.
QList<int> spalte(const QString &tabelle, const QString &spalte);
// The games of SpielListe whole, in storage order.
QVector<SpielEintrag> gespeichert();

// Holds kartulo.db as another program would, until it goes: a write lock
// blocks every write, a read lock lets writes wait for the commit and fail there.
class Sperre
{
public:
    enum Art
    {
        Lesen,
        Schreiben,
        Ausschliesslich // not even reading
    };
    explicit Sperre(Art art);
    ~Sperre();
    Sperre(const Sperre &) = delete;
    Sperre &operator=(const Sperre &) = delete;
    bool gehalten() const { return m_gehalten; }

private:
    bool m_gehalten = false;
};

// A running list: the four tables, the players Anna, Bernd, Clara (and Dora
// with four players) in registry and seating, and the header row.
bool anlegen(int spieler, int anzahlSpiele, int modus = 0, int tischNr = 5);

// The same plausible evening every call, valued by the program itself: suit,
// Grand, Null and passed-in games, some lost, the dealer never declaring.
QVector<SpielEintrag> abend(int anzahl, int spieler);

} // namespace TestProtokoll
