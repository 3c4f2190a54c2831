#pragma once

// The one text format of the club network: "type:address:group$item0@item1...".
// There is no escaping, so "$" and ":" never go into the header and "@" never
// into an item; only the file of a score sheet (type 17) may hold "@", and is
// read as everything after the first one.

#include <QString>
#include <QStringList>

#include <optional>

struct Nachricht
{
    enum Typ
    {
        Unlesbar = 0,
        TischVergeben = 3,
        SpielerListe = 4,
        SpielerAnfordern = 5,
        Auslosung = 6,
        Ergebnisse = 7,
        ZweitlisteAnfrage = 8,
        ZweitlisteSpieler = 9,
        ZweitlisteAbgelehnt = 10,
        ZweitlisteAbgemeldet = 11,
        TischNummer = 12,
        Zeile = 13,
        ZeileKopie = 14,
        Kosten = 15,
        BlattName = 16,
        BlattDatei = 17
    };

    int typ = Unlesbar;
    QString adresse;
    QString gruppe;
    QStringList inhalt;

    QString text() const;

    // Empty for a text that is not one message (not exactly one "$", not
    // exactly three header fields); a type that is no number reads as 0.
    static std::optional<Nachricht> lesen(const QString &text);
};

// "Programname@rest": the program's name, and the first ":"-piece of the rest
// that is an IPv4 address. Both empty unless the id splits at "@" into two.
struct Kennung
{
    QString name;
    QString adresse;

    static Kennung aus(const QString &kennung);
};
