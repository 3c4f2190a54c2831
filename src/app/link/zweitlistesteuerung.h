#pragma once

// The second list: a second scorer at the same table keeps the list again on
// another device, paired with the first list over the link. It copies the
// players and the games already entered, and every later game of the first
// list is compared with the one entered here; each difference is shown, none
// is corrected.

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>

class EingabeDock;
class ListenDienst;
class NetzSteuerung;
class QMainWindow;
class Werkzeugleiste;

namespace Ui {
class MainWindow;
}

class ZweitlisteSteuerung : public QObject
{
    Q_OBJECT

public:
    ZweitlisteSteuerung(QMainWindow *fenster, Ui::MainWindow &ui, Werkzeugleiste &leiste,
                        ListenDienst &dienst, NetzSteuerung &netz);
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

private:
    QMainWindow *m_fenster;
    Ui::MainWindow &m_ui;
    Werkzeugleiste &m_leiste;
    ListenDienst &m_dienst;
    NetzSteuerung &m_netz;
    QPointer<EingabeDock> m_dock;
    QStringList m_ersteListeZeile;
    QTimer m_pruefTimer;
};
