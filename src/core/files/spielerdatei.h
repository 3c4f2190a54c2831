#pragma once

// Reads the player names Kartulo fills its registry with: the text file
// "KartuloSpieler.txt" (one name per line) and the entries of a player list
// sent by the tournament manager. Every name is cleaned the same way, since the
// network messages and ranking texts use '|', '@', '$' and ':' as separators.

#include "core/db/zeilen.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

class SpielerDatei
{
public:
    // Longest name the tables store (varchar(40)).
    static constexpr int maxNamensLaenge = 40;

    // The file name looked for in the documents and downloads folders.
    static QString dateiName();

    // The names of the file's content, cleaned and sorted case-sensitively
    // ("A" < "a" < "b"). The file is UTF-8, with or without byte-order mark,
    // with LF or CRLF line ends; a line ends at its first NUL byte, and lines
    // that are blank after cleaning are dropped. Duplicates are kept.
    static QStringList namenAusDatei(const QByteArray &inhalt);

    // One entry "nummer|name|mitglied|preisskat" of a manager list; nullopt
    // for an empty or blank entry. An unparsable number becomes 0; a flag is
    // true exactly when its part is "Ja". A shorter entry gives what it has:
    // missing parts keep the defaults (number 0, empty name, both flags true,
    // as for players from the file); parts after the fourth are ignored. The
    // name is cleaned but may end up empty, which the caller has to refuse.
    static std::optional<SpielerDatensatz> ausListenEintrag(const QString &eintrag);

    // The forbidden characters '|', '@', '$', ':' found in the name, each once,
    // in the order they first occur; empty for a clean name.
    static QString verboteneZeichen(const QString &name);

    // The name without forbidden characters and halves of characters, control
    // characters as blanks, without leading and trailing blanks, cut to
    // maxNamensLaenge characters.
    static QString bereinigt(const QString &name);
};
