#pragma once

// The list being kept at this table: its games, its header and its
// participants, with the database and the journal behind them. Every change
// goes through one of the operations below, is one transaction that happens
// whole or not at all, and is announced by geaendert() once it is stored, so
// that every view of the list follows it; so is a change of the player
// registry and of the settings. Knows nothing of widgets.

#include "core/db/protokolldatenbank.h"
#include "core/files/skatjornal.h"
#include "core/files/xmlprotokoll.h"

#include <QObject>
#include <QStringList>
#include <QVector>

#include <memory>
#include <optional>

class Einstellungen;
class QAbstractItemModel;
class QSqlRecord;
class QSqlTableModel;

struct ListenAenderung
{
    Q_GADGET

public:
    enum Art
    {
        SpielNeu,       // zeile: the game entered
        SpielGeaendert, // zeile: the game corrected
        SpielEntfernt,  // zeile: the number the deleted game had
        Kopf,           // the header as it stands (not yet stored)
        Teilnehmer,     // a participant's name or flags
        Sitzordnung,    // seats moved, or the list type changed
        ListeNeu,       // the whole list: opened, reset, new protocol, import
        Register,       // players registered or the registry replaced
        Einstellungen   // costs, club name, Fabian points or backup interval
    };
    Q_ENUM(Art)
    Art art;
    int zeile = 0;
};

// What an operation answers: nothing, or why it did not happen; and what the
// scorer should know although it worked.
struct DienstErgebnis
{
    DienstErgebnis() = default;
    // A failure, with its reason.
    DienstErgebnis(const QString &grund) : fehler(grund) {}

    QString fehler;
    QString hinweis;
    bool ok() const { return fehler.isNull(); }
};

struct EintragErgebnis
{
    enum Art
    {
        Eingetragen,
        ListenEnde, // the tournament list is full; nothing was stored
        Fehler
    };
    Art art = Eingetragen;
    int zeile = 0; // the number the game got
    QString fehler;
};

class ListenDienst : public QObject
{
    Q_OBJECT

public:
    // The settings give the costs and the club name that protocol files carry;
    // their changes are announced as the list's.
    ListenDienst(const QString &datenVerzeichnis, const Einstellungen &einstellungen,
                 QObject *parent = nullptr);
    ~ListenDienst() override;

    // Opens kartulo.db and loads what it holds; games without a registry
    // (OhneSpieler) stay in the file but not in the list. The list is usable
    // unless the answer is Unbenutzbar or Fremd; fehler() then says why.
    ProtokollDatenbank::Zustand oeffnen();
    ProtokollDatenbank::Zustand zustand() const { return m_zustand; }
    // Archives the list, drops the tables and opens the empty database again.
    // A database that was not usable is only opened again, never written, so
    // that a file moved aside makes room for a fresh one.
    DienstErgebnis zuruecksetzen();
    QString dateiName() const;
    QString fehler() const;
    bool benutzbar() const;
    // Why the list cannot be written now, for the scorer: the file and the
    // driver's reason, and for a file that is not usable what to do about it.
    QString fehlerText() const;
    // What the scorer can do about a database that is not usable; empty when it is.
    QString ausweg() const;

    // The games in the order they are stored.
    const QVector<SpielEintrag> &spiele() const { return m_spiele; }
    std::optional<SpielEintrag> spiel(int zeile) const;
    // The number of the last stored game, 0 for an empty list.
    int letzteZeile() const;
    // The seat that deals the next game: the games so far modulo the players.
    int geber() const;
    int listenTyp() const { return m_listenTyp; }

    // The header as it stands; kopfAendern() changes it in memory only,
    // kopfSchreiben() stores it.
    const ListenKopf &kopf() const { return m_kopf; }
    void kopfAendern(const ListenKopf &kopf);
    DienstErgebnis kopfSchreiben();

    // The participants in seating order, for the table view; edits made there
    // are kept until the list stores them (series start, first game, seat move).
    QAbstractItemModel *teilnehmerModell() const;
    int anzahlTeilnehmer() const;
    QString teilnehmerName(int sitz) const;
    QVector<Teilnehmer> teilnehmer() const;
    DienstErgebnis sitzeTauschen(int sitz, int nachbar);
    // 3 or 4 players: drops the fourth participant or adds an empty one, and
    // sets the number of games (36 or 48 in a tournament, else 10).
    DienstErgebnis listenTypSetzen(int spieler);
    // A new participant row: member and prize skat "Ja", the seat's number
    // for the first four rows, and an empty name for the scorer to type.
    static void teilnehmerVorbelegen(int zeile, QSqlRecord &record);

    // The club's player registry.
    QStringList spielerNamen() const;
    DienstErgebnis registerErsetzen(const QVector<SpielerDatensatz> &spieler);
    // The registry number of the player, registered first when the name is new.
    int spielerHinzufuegen(const SpielerDatensatz &spieler);

    // Stores the game as the next row and writes it to the journal. The first
    // game also stores the header and the participants, and archives games an
    // earlier list left in the file. A tournament list that is full refuses
    // it; other lists grow by ten games.
    EintragErgebnis spielEintragen(const SpielEintrag &spiel);
    // Rewrites the stored game with the same number.
    DienstErgebnis spielAendern(const SpielEintrag &spiel);
    // Deletes the game and moves the later ones up by one number.
    DienstErgebnis spielEntfernen(int zeile);
    // Empties list and header for table and series; with namen, the
    // participants become those players (registered when new), else they stay.
    // A list holding games is archived first.
    DienstErgebnis neuesProtokoll(int tischNr, int serie, const std::optional<QStringList> &namen);
    // Stores participants and header and begins the journal of the series;
    // refused while fewer than three participants have a name.
    DienstErgebnis serieStarten();
    // Replaces list, header and participants by those of a protocol file and
    // continues its journal; the list it replaces is archived. Games whose
    // numbers repeat or skip are numbered in file order, and the answer's
    // hinweis says so. The registry stays.
    DienstErgebnis protokollErsetzen(ListenKopf kopf, const QVector<Teilnehmer> &teilnehmer,
                                     QVector<SpielEintrag> spiele);

    // The whole list as a protocol file holds it.
    XmlDaten protokollDaten() const;
    DienstErgebnis xmlSpeichern(const QString &pfad) const;
    // The copy every few minutes, "xmlsicherheitskopie.xml" in the data directory.
    DienstErgebnis sicherungSchreiben() const;
    // Where lists are archived before they are emptied.
    QString archivVerzeichnis() const;
    // The folder the list, its journal, backups and exports live in.
    QString datenVerzeichnis() const { return m_datenVerzeichnis; }

signals:
    void geaendert(const ListenAenderung &aenderung);

private:
    void teilnehmerModellAnlegen();
    bool teilnehmerSpeichern(const QVector<Teilnehmer> &teilnehmer);
    // Writes a list holding games, or the games the file holds, into the archive;
    // the reason when it could not.
    QString archivieren() const;
    void listeGeladen();
    void melden(ListenAenderung::Art art, int zeile = 0);
    void jornalFortsetzen();
    void jornalStarten();
    void jornalEintragen(const SpielEintrag &spiel, int status);

    QString m_datenVerzeichnis;
    const Einstellungen &m_einstellungen;
    std::unique_ptr<ProtokollDatenbank> m_db;
    ProtokollDatenbank::Zustand m_zustand = ProtokollDatenbank::Zustand::Unbenutzbar;
    QSqlTableModel *m_teilnehmer = nullptr;
    QVector<SpielEintrag> m_spiele;
    ListenKopf m_kopf;
    int m_listenTyp = 4;
    SkatJornal m_jornal;
};
