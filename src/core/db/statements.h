#pragma once

// The statement texts that more than one module issues. They are kept
// character for character as the tables were first created (mixed case,
// missing blanks and all), so every copy of kartulo.db in the club matches.

#include "core/db/spieleintrag.h"

#include <QString>
#include <QVector>

namespace Sql {

inline constexpr char CreateSpielListe[] =
    "create table SpielListe (Zeile int, Spiel int, Mit int, Ohne int, Hand boolean, Schneider "
    "boolean,AngSchneider boolean, Schwarz boolean, AngSchwarz boolean, Offen boolean, Gewonnen "
    "int, Verloren int, Spieler1 int, Spieler2 int,Spieler3 int, Spieler4 int, Eingepasst "
    "boolean, Reizung int)";

inline constexpr char CreateTeilnehmer[] = "CREATE TABLE Teilnehmer (MgldNr int NOT NULL, Name "
                                           "varchar(40) NOT NULL, Mitglied boolean, Preisskat "
                                           "boolean)";

inline constexpr char CreateSettings[] =
    "CREATE TABLE Settings (Zeile int, TischNr int, Serie int, AnzahlSpiele int, Modus int, "
    "BlPunkte int, Datum DATE, Gruppe varchar(20))";

inline constexpr char CreateSpieler[] = "CREATE TABLE Spieler (MgldNr int NOT NULL, Name "
                                        "varchar(40) NOT NULL, Mitglied boolean, Preisskat "
                                        "boolean)";

// Followed directly, without a blank, by the VALUES part.
inline constexpr char InsertSpielListePrefix[] =
    "insert into SpielListe (Zeile, Spiel, Mit, Ohne, Hand, Schneider, AngSchneider, Schwarz, "
    "AngSchwarz, Offen, Gewonnen, Verloren, Spieler1, Spieler2, Spieler3, Spieler4, Eingepasst, "
    "Reizung)";

inline constexpr char InsertSpielListeValues[] =
    "VALUES (%1, %2, %3, %4, %5, %6, %7, %8, %9, %10, %11, %12, %13, %14, %15, %16, %17, %18)";

// The insert of one game, its values written in as numbers.
inline QString spielEinfuegen(const SpielEintrag &eintrag)
{
    QString werte = QString::fromLatin1(InsertSpielListeValues);
    for (int spalte = 0; spalte < SpielEintrag::AnzahlSpalten; ++spalte)
        werte = werte.arg(eintrag.wert(spalte));
    return QLatin1String(InsertSpielListePrefix) + werte;
}

// Text pasted between single quotes into a statement; a quote in a name
// would otherwise end the literal and the statement would fail. SQLite reads
// a statement only up to a NUL and miscounts one holding half a character, so
// a NUL is left out and a half character becomes U+FFFD.
inline QString quoted(const QString &text)
{
    const QVector<uint> zeichen = text.toUcs4();
    return QString::fromUcs4(zeichen.constData(), zeichen.size())
        .remove(QChar(u'\0'))
        .replace(QLatin1Char('\''), QLatin1String("''"));
}

} // namespace Sql
