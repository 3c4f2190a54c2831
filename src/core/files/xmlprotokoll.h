#pragma once

// A whole protocol (header, costs, players and every game row) as an XML
// file: the copy saved beside the PDF, the periodic backup and a file the
// scorer opens to continue a list. Writing and reading live here in one place
// so that whatever Kartulo writes it can read back unchanged.

#include "core/db/spieleintrag.h"
#include "core/db/zeilen.h"
#include "core/standings/kostenrechnung.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QString>
#include <QVector>

#include <variant>

struct XmlDaten
{
    // The date is invalid when the file has none and the caller picks one. Mode 1 is a
    // result list, every other mode is written as a tournament; the Bierlachs points are
    // not kept.
    ListenKopf kopf;
    KostenWerte kosten;
    QString verein;
    QVector<Teilnehmer> spieler;
    QVector<SpielEintrag> spiele;
};

// Why a file could not be read: the line of the problem and a German text for the scorer
// (the caller puts the line in front of it).
struct XmlFehler
{
    qint64 zeile = 0;
    QString text;
};

class XmlProtokoll
{
    Q_DECLARE_TR_FUNCTIONS(XmlProtokoll)

public:
    // The document: root "Kartulo" with the header, "spieler1".."spielerN", then "spiele"
    // with one "spiel" per row. Flags are "ja"/"nein", numbers plain decimals, the date
    // "dd-MM-yyyy", money with a point as its field shows it. The text ends with the closing root
    // tag, without a line end.
    static QString schreiben(const XmlDaten &daten);

    // Parses the whole text before it answers, so the result is either the complete protocol
    // or one error, never a part of a file. What a file leaves out takes a default: numbers 0
    // (spielanzahl 48), costs 0, game flags false, player flags "Nein", a nameless
    // player "Spieler N", a game without number the one after the previous game; a missing
    // date stays invalid. Names are cleaned as every player name (SpielerDatei::bereinigt)
    // and the group loses ':', '$' and '@', which divide the network messages. A game flag
    // is set by "ja" in any case. A number, cost or date that is there but does not parse is
    // an error, since such a file is damaged and reading 0 would silently put wrong scores
    // into the list.
    static std::variant<XmlDaten, XmlFehler> lesen(const QByteArray &inhalt);

    // Writes the text as UTF-8 plus one line end through a temporary file that replaces the
    // target only when everything was written, so a crash or a full disk never leaves half a
    // file where the last good copy was. False when nothing was replaced; fehler then holds
    // the system's reason.
    static bool dateiSchreiben(const QString &pfad, const QString &text, QString *fehler = nullptr);

    // How the file picker tells a protocol from other XML files: the root's start tag.
    static bool istProtokoll(const QByteArray &inhalt);
};
