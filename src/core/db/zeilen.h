#pragma once

// The rows of the tables Settings, Teilnehmer and Spieler as plain values.

#include <QDate>
#include <QString>

// The single row of table Settings.
struct ListenKopf
{
    int tischNr = 0;
    int serie = 0;
    int anzahlSpiele = 48;
    int modus = 0;
    int blPunkte = 0;
    QDate datum;
    QString gruppe;

    bool operator==(const ListenKopf &o) const
    {
        return tischNr == o.tischNr && serie == o.serie && anzahlSpiele == o.anzahlSpiele &&
               modus == o.modus && blPunkte == o.blPunkte && datum == o.datum && gruppe == o.gruppe;
    }
    bool operator!=(const ListenKopf &o) const { return !(*this == o); }
};

// One participant as table Teilnehmer stores it: the flags are the texts "Ja"
// and "Nein" that the participants table shows.
struct Teilnehmer
{
    int mgldNr = 0;
    QString name;
    QString mitglied;
    QString preisskat;
};

// One player of the club's registry (table Spieler).
struct SpielerDatensatz
{
    int mgldNr = 0;
    QString name;
    bool mitglied = true;
    bool preisskat = true;
};
