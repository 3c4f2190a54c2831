#pragma once

// The protocol database kartulo.db: one named SQLite connection for the whole
// run, the four tables, and the statements that read and write them. Every
// write says whether it worked; transaktion() groups writes so that they
// happen together or not at all. Knows nothing of windows.

#include "core/db/spieleintrag.h"
#include "core/db/zeilen.h"

#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>
#include <optional>

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
    // statements fail instead of changing a file that is not ours.
    Zustand oeffnen();
    // Drops the four tables, then closes and removes the connection.
    void zuruecksetzen();

    // Why the last oeffnen() gave Unbenutzbar or Fremd, or why the last write
    // or transaction failed: the driver's text.
    QString fehler() const { return m_fehler; }

    // Runs the writes of arbeit as one transaction: committed when arbeit
    // returns true, rolled back otherwise. False when anything failed.
    bool transaktion(const std::function<bool()> &arbeit);

    // The rows of SpielListe ordered by their number.
    QVector<SpielEintrag> spiele() const;
    std::optional<ListenKopf> kopfLesen() const;

    bool einfuegen(const SpielEintrag &eintrag);
    bool aendern(const SpielEintrag &eintrag);
    // Deletes the row and renumbers the rows after it up to letzte down by
    // one, in ascending order so that no two rows share a number on the way.
    bool entfernen(int zeile, int letzte);
    bool spielListeLeeren();
    bool kopfSchreiben(const ListenKopf &kopf);
    bool kopfLeeren();
    bool teilnehmerLeeren();
    bool teilnehmerEinfuegen(const Teilnehmer &teilnehmer);

    // The club's player registry.
    QStringList spielerNamen() const;
    std::optional<SpielerDatensatz> spielerNachName(const QString &name) const;
    bool spielerLeeren();
    bool spielerEintragen(const SpielerDatensatz &spieler);
    // Registers a player unless the name is known; a taken member number
    // moves on to the next free one (0 counts as 1). The number the player has
    // in the registry, or 0 when nothing could be read or written.
    int spielerHinzufuegen(const SpielerDatensatz &spieler);

private:
    bool ausfuehren(const QString &statement);
    QString schemaFehler() const;
    void schliessen();

    QString m_datenVerzeichnis;
    QSqlDatabase m_db;
    QString m_fehler;
};
