#pragma once

// The second list: a second scorer at the same table keeps the list again on
// another device, paired with the first list over the link. It copies the
// players and the games already entered, and every later game of the first
// list is compared with the one entered here; each difference is shown, none
// is corrected. This part alone changes the pairing, on both sides of it.

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>

class EingabeDock;
class ListenDienst;
class Paarung;
class QDockWidget;
class QWidget;

class ZweitlisteSteuerung : public QObject
{
    Q_OBJECT

public:
    // Boxes open over the widget given, which also owns this part.
    ZweitlisteSteuerung(QWidget *eltern, ListenDienst &dienst, Paarung &paarung);
    ~ZweitlisteSteuerung() override;

    void startZweitProtokoll();
    void onZweitListenTischNrOk();
    void onZweitListenTischNrAbbruch();
    // Type 9 from the first list: its address and table, series, players.
    void starteZweitListe(const QString &ersteListe, const QStringList &inhalt);
    void onZweitListeFreigeben(bool fragen);
    void onClearProtokoll();
    // Drops the pairing; with leeren the own list is emptied as well.
    void clearProtokoll(bool leeren);
    void CheckRecordGegenRecordVonErsterListe();

    // A row of the first list to compare (type 13) or to copy (type 14).
    void zeileEmpfangen(const QStringList &inhalt);
    void kopieEmpfangen(const QStringList &inhalt);
    // First list: a table asks to keep this list again (its participant id).
    void anfrageBeantworten(const QString &von);
    // The first list refused, or the second list left.
    void abgelehnt();
    void abgemeldet();
    void laufzustandSetzen(bool laufend);

signals:
    void senden(int typ, const QString &adresse, const QStringList &inhalt);
    // Sent as coming from this table's own address.
    void vonHierSenden(int typ, const QStringList &inhalt);
    // The games so far go to the second list accepted at that address.
    void zeilenKopieren(const QString &adresse);
    void listeBenannt(const QString &text);
    void statusMeldung(const QString &text, int dauer);
    void dockZeigen(QDockWidget *dock);

private:
    QWidget *m_eltern;
    ListenDienst &m_dienst;
    Paarung &m_paarung;
    bool m_laufend = false;
    QPointer<EingabeDock> m_dock;
    QStringList m_ersteListeZeile;
    QTimer m_pruefTimer;
};
