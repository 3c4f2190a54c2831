#pragma once

// A whole protocol (header, costs, players and every game row) as an XML
// file: the copy saved beside the PDF, the periodic backup and a file the
// scorer opens to continue a list. Writing and reading live here in one place
// so that whatever Kartulo writes it can read back unchanged.

#include "game/spieleintrag.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDate>
#include <QString>
#include <QStringList>
#include <QVector>

#include <variant>

// One participant; the flags as the participants table stores them ("Ja"/"Nein").
struct XmlSpieler
{
    int mgldNr = 0;
    QString name;
    QString mitglied;
    QString preisskat;
};

struct XmlDaten
{
    QDate datum; // invalid when the file has none; the caller picks a date
    int tischNr = 0;
    int serie = 0;
    int spielAnzahl = 48;
    int modus = 0; // 1 is a result list, every other mode is written as a tournament
    // The eleven cost and point texts as their fields show them, in file order: kartengeld,
    // verlsp1-5, verlspab6, preisskat, gewsp-verlsp, verlspgegensp_4, verlspgegensp_3,
    // platz1 to platz4.
    QStringList kosten;
    QString verein;
    QString gruppe;
    QVector<XmlSpieler> spieler;
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
    // Number of cost and point attributes of the root element.
    static constexpr int anzahlKosten = 11;

    // The document: root "Kartulo" with the header, "spieler1".."spielerN", then "spiele"
    // with one "spiel" per row. Flags are "ja"/"nein", numbers plain decimals, the date
    // "dd-MM-yyyy". The text ends with the closing root tag, without a line end.
    static QString schreiben(const XmlDaten &daten);

    // Parses the whole text before it answers, so the result is either the complete protocol
    // or one error, never a part of a file. What a file leaves out takes a default: numbers 0
    // (spielanzahl 48), cost texts "0", game flags false, player flags "Nein", a nameless
    // player "Spieler N", a game without number the one after the previous game; a missing
    // date stays invalid. A game flag is set by "ja" in any case. A number, cost or date that
    // is there but does not parse is an error, since such a file is damaged and reading 0
    // would silently put wrong scores into the list.
    static std::variant<XmlDaten, XmlFehler> lesen(const QByteArray &inhalt);

    // Writes the text as UTF-8 plus one line end through a temporary file that replaces the
    // target only when everything was written, so a crash or a full disk never leaves half a
    // file where the last good copy was. False when nothing was replaced.
    static bool dateiSchreiben(const QString &pfad, const QString &text);

    // How the file picker tells a protocol from other XML files: the root's start tag.
    static bool istProtokoll(const QByteArray &inhalt);
};
