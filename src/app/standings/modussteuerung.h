#pragma once

// The play mode of the list (tournament, result list, Bierlachs) chosen in the
// "Modus" menu, the mode label of the tool bar, the two docks that ask for the
// time limit and the Bierlachs points, and the countdown of a tournament
// series' time limit, which survives a restart within the limit.

#include <QLabel>
#include <QLineEdit>
#include <QObject>
#include <QPointer>
#include <QTime>
#include <QTimer>

class EingabeDock;
class Einstellungen;
class ListenDienst;
class QDockWidget;
struct ListenAenderung;

class ModusSteuerung : public QObject
{
    Q_OBJECT

public:
    ModusSteuerung(QObject *parent, ListenDienst &dienst, Einstellungen &einstellungen);

    // The mode label and the countdown field, for the tool bar.
    QLabel *modusLabel() const { return m_lblModus; }
    QLineEdit *meldungsFeld() const { return m_leMeldungRot; }

    void onSetModusTurnier();
    void onSetModusErgebnis();
    void onSetModusBierlachs();
    void onZeitLimitOk();
    void onZeitLimitAbbruch();
    void onBierlachsModusMaxPunkteOk();
    void onBierlachsModusMaxPunkteAbbruch();
    void onZeigeRestZeitLimit();

    // A series starts: the time limit begins, or the Bierlachs points show.
    void serieGestartet();
    // A saved list was opened: its mode and a countdown that still runs.
    void wiederherstellen();
    // A protocol file replaced the list.
    void protokollGeladen();

signals:
    // The list's mode (a Spielmodus value), for the menu to show it chosen.
    void modusGewaehlt(int modus);
    // A dock to place at the top of the window.
    void dockZeigen(QDockWidget *dock);

private:
    void listeGeaendert(const ListenAenderung &aenderung);
    void modusSetzen(int modus);
    void modusZeigen(const QString &text);
    void restZeitZeigen(const QString &text, bool rot);
    void zeitLimitStarten();

    QLabel *m_lblModus;
    QLineEdit *m_leMeldungRot;
    ListenDienst &m_dienst;
    Einstellungen &m_einstellungen;
    QPointer<EingabeDock> m_dockZeitLimit;
    QPointer<EingabeDock> m_dockBierlachs;
    int m_zeitLimitMinuten = 120;
    QTime m_stopZeit;
    QTimer m_restZeitTimer;
    // The points the label shows, so it follows when the list sets them.
    int m_blPunkte;
};
