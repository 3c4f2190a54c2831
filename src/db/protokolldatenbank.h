#pragma once

// The protocol database kartulo.db: one named SQLite connection for the whole
// run, the four tables, and the statements that read and write the list and
// its header. Knows nothing of windows; the main window decides what to show.

#include "game/spieleintrag.h"
#include "players/spielerdatei.h"

#include <QDate>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

struct XmlDaten;

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
};

class ProtokollDatenbank
{
public:
    enum class Zustand
    {
        Unbenutzbar, // no connection could be opened
        Fremd,       // not SQLite, or tables of another shape: left untouched
        Neu,         // tables were just created
        OhneSpieler, // the player registry is empty: nothing to restore
        Gespeichert  // a saved protocol is there to restore
    };

    static QString datenbankName() { return QStringLiteral("kartulo"); }
    static QString verbindungsName() { return QStringLiteral("kartulo_connection_name"); }

    explicit ProtokollDatenbank(const QString &datenVerzeichnis);
    ~ProtokollDatenbank();
    ProtokollDatenbank(const ProtokollDatenbank &) = delete;
    ProtokollDatenbank &operator=(const ProtokollDatenbank &) = delete;

    QString dateiName() const;
    QSqlDatabase verbindung() const { return m_db; }

    // Opens the file, creates missing tables in a fresh file and tells what
    // was found. Unbenutzbar and Fremd close the connection again, so later
    // statements fail quietly instead of changing a file that is not ours.
    Zustand oeffnen();
    // Why the last oeffnen() gave Unbenutzbar or Fremd.
    QString fehler() const { return m_fehler; }

    // Drops the four tables, then closes and removes the connection.
    void zuruecksetzen();

    int letzteZeile() const;
    int anzahlEintraege() const;
    QVector<SpielEintrag> spiele() const;
    std::optional<SpielEintrag> spiel(int zeile) const;
    void einfuegen(const SpielEintrag &eintrag);
    void aendern(const SpielEintrag &eintrag);
    // Deletes the row and renumbers all later rows down by one, in ascending
    // order so that no two rows share a number on the way.
    void entfernen(int zeile);

    void spielListeLeeren();

    std::optional<ListenKopf> kopfLesen() const;
    void kopfSchreiben(const ListenKopf &kopf);
    void kopfLeeren();

    void teilnehmerLeeren();

    // Replaces list, header and participants by a protocol read from a file, in one
    // transaction: after a failing statement everything is as before and *fehler says why.
    // The player registry is left alone.
    bool protokollErsetzen(const XmlDaten &daten, QString *fehler = nullptr);

    // The club's player registry.
    QStringList spielerNamen() const;
    void spielerLeeren();
    void spielerEintragen(int mgldNr, const QString &name, bool mitglied, bool preisskat);
    // Registers a player unless the name is known; a taken member number
    // moves on to the next free one (0 counts as 1). Returns the number the
    // player has in the registry, or 0 when nothing could be read.
    int spielerHinzufuegen(int mgldNr, const QString &name, bool mitglied, bool preisskat);
    std::optional<SpielerDatensatz> spielerNachName(const QString &name) const;

private:
    bool ausfuehren(const QString &statement) const;
    QString schemaFehler() const;
    void schliessen();

    QString m_datenVerzeichnis;
    QSqlDatabase m_db;
    QString m_fehler;
};
