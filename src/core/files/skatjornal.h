#pragma once

// The change journal of the list: one entry per game entry, marked as ordinary,
// changed or deleted, written as a whole beside the database as JSON
// ("<base>.json") or as the same data in CBOR ("<base>.dat"), so that other
// programs can follow the list without reading kartulo.db.

#include "core/db/spieleintrag.h"

#include <QByteArray>
#include <QDate>
#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QVector>

struct JornalEintrag
{
    enum Status
    {
        Normal = 0,
        Geaendert = 1,
        Geloescht = 2
    };
    int status = Normal; // any other value is kept but written without "type"
    // The columns the column table gives a journal key (Zeile as "spielnr",
    // Reizung as "reizwert", 0 = not entered, written as 18); the others stay 0.
    SpielEintrag spiel;
    int spielwert = 0; // the game value: Gewonnen when won, Verloren / 2 when lost
    QString spieler;   // declarer's name
    QString geber;     // dealer's name

    // From a stored game row: the declarer is the seat whose column is non-zero
    // (see spielerSitz); the caller passes that seat's name and the dealer's.
    static JornalEintrag ausSpiel(const SpielEintrag &spiel, int status, const QString &spieler,
                                  const QString &geber);
    // Seat 0..3 of the declarer of a stored row; -1 for a passed-in game.
    static int spielerSitz(const SpielEintrag &spiel);

    bool operator==(const JornalEintrag &other) const;
    bool operator!=(const JornalEintrag &other) const { return !(*this == other); }
};

class SkatJornal : public QObject
{
    Q_OBJECT

public:
    enum Form
    {
        Json,  // "<base>.json"
        Binaer // "<base>.dat", CBOR
    };

    explicit SkatJornal(QObject *parent = nullptr);

    // Base path of the files, without extension (the program uses "<datadir>/jornal").
    void setPath(const QString &basisPfad);
    QString path() const;

    void setKopf(const QDate &datum, int tischNr, int serie);
    QDate datum() const { return m_datum; }
    int tischNr() const { return m_tischNr; }
    int serie() const { return m_serie; }

    void anhaengen(const JornalEintrag &eintrag);
    // Empties the entries; path and header stay.
    void leeren();
    const QVector<JornalEintrag> &eintraege() const { return m_eintraege; }

    // {"skatliste": {"Datum", "tischnr", "seriennr", "spiele"}}
    QJsonObject dokument() const;

    // Replaces the file of the form through a QSaveFile, so a failed write
    // leaves the previous journal as it was. False (with a warning) when the
    // file cannot be written.
    bool save(Form form) const;
    // Takes header and entries from the file of the form. A file that cannot
    // be read or is not a journal gives a warning and false, and the journal
    // in memory stays exactly as it was.
    bool load(Form form);
    // The same from the bytes of such a file, read by the caller.
    bool lesen(const QByteArray &bytes, Form form);

    static QString dateiPfad(const QString &basisPfad, Form form);

private:
    QString m_basisPfad;
    QDate m_datum;
    int m_tischNr = 0;
    int m_serie = 0;
    QVector<JornalEintrag> m_eintraege;
};
