#pragma once

// One row of a benchmark table, and the table as the README shows it.

#include <QString>
#include <QTextStream>
#include <QVector>

struct Ergebnis
{
    QString fall;
    QString messwert;
    QString ziel;
    bool erfuellt = true;
};

// Prints the table to standard output; 0 when every case met its target.
inline int tabelleAusgeben(const QVector<Ergebnis> &ergebnisse)
{
    QTextStream aus(stdout);
    aus << "| Fall | Messwert | Ziel | erfuellt |\n|---|---:|---:|:---:|\n";
    bool alle = true;
    for (const Ergebnis &e : ergebnisse) {
        aus << "| " << e.fall << " | " << e.messwert << " | " << e.ziel << " | "
            << (e.erfuellt ? "ja" : "NEIN") << " |\n";
        alle = alle && e.erfuellt;
    }
    return alle ? 0 : 1;
}
