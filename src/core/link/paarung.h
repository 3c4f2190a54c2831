#pragma once

// Who is paired with whom: this table as a first list with the second list
// that copies it, or as a second list with the first list it copies. Peers
// are known by their participant ids, so a message can be held against the
// connection it came on. Every change is announced.

#include <QObject>
#include <QString>

class Paarung : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // How a first list answers a table that asks to keep its list again.
    enum class Antwort
    {
        Angenommen,
        SchonGepaart,
        NichtGestartet
    };
    Q_ENUM(Antwort)

    // Second list: the first list's table asked for; 0 when not a second list.
    int gepaarterTisch() const { return m_gepaarterTisch; }
    // Second list: the table of the last pairing kept as a copy.
    int letzterTisch() const { return m_letzterTisch; }
    // The pairing is in force, on either side.
    bool hatZweitliste() const { return m_hatZweitliste; }
    // First list: the attached second list's id; second list: the first list's.
    QString zweitliste() const { return m_zweitliste; }
    QString ersteListe() const { return m_ersteListe; }
    // The addresses those ids name, where the rows and the sign-off go.
    QString zweitlisteAdresse() const;
    QString ersteListeAdresse() const;

    bool istZweitliste() const { return m_gepaarterTisch > 0; }
    // A second list that asked and has no answer yet.
    bool angefragt() const { return istZweitliste() && !m_hatZweitliste; }
    bool istErsteListe() const { return m_hatZweitliste && !istZweitliste(); }
    // A table's results are built only while neither flag is set and it is
    // no second list: a second list's are the first list's again, typing
    // errors included.
    bool ergebnisseErlaubt() const { return !m_hatZweitliste && !m_wartet && !istZweitliste(); }

    // Second list: the request for that table went out.
    void anfragen(int tisch);
    // First list: takes the asking table as its second list, unless one is
    // attached (the request is then forgotten) or the list has not started.
    Antwort anfrageBeantworten(const QString &id, bool gestartet);
    // Second list: the first list answered with its players.
    void ersteListeGefunden(const QString &id);
    // First list: a second list's request was accepted.
    void zweitlisteAngenommen(const QString &id);
    // Either side: the peer is dropped; a second list still knows its table.
    void trennen();
    // A second list's request is forgotten (a first list that is asked again).
    void anfrageVergessen();
    // Second list: released, the list kept as a copy of that table.
    void alsKopieBehalten();
    // Unpaired on both sides; the table of a kept copy is remembered.
    void aufheben();

signals:
    void geaendert();

private:
    int m_gepaarterTisch = 0;
    int m_letzterTisch = 0;
    bool m_hatZweitliste = false;
    bool m_wartet = false;
    QString m_zweitliste;
    QString m_ersteListe;
};
