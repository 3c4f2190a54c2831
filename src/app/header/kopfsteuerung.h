#pragma once

// The list header on the settings tab (table, series, number of games, date,
// list name, group id), the page that prepares a new protocol with the club's
// player registry, the start of a series, and the set-up and running states
// of the window that follow from it.

#include <QObject>

class Einstellungen;
class ListenDienst;
class QLabel;
class QLineEdit;
class QMainWindow;
class QModelIndex;
class QStandardItemModel;
class QWidget;
class Werkzeugleiste;
struct ListenAenderung;

namespace Ui {
class MainWindow;
}

class KopfSteuerung : public QObject
{
    Q_OBJECT

public:
    KopfSteuerung(QMainWindow *fenster, Ui::MainWindow &ui, Werkzeugleiste &leiste,
                  ListenDienst &dienst, Einstellungen &einstellungen);

    void onTischNr(int nummer);
    void onSerie(int nummer);
    void onListenName(const QString &name);
    void onChangeGruppenId(const QString &gruppe);
    void onNewProtokoll();
    void onNeuesProtokollOk();
    void onNeuesProtokollAbbruch();
    void setTabWidgetNeuToHide();
    void onStartSpiel();

    void spielerAusTextDateiLaden();
    void ladeSpielerListe(const QStringList &liste);
    // The group the manager gives this table: shown and no longer chosen here.
    void gruppeVorgeben(const QString &gruppe);
    // The manager's draw for this table: the players are registered and the
    // "Neu" page is filled for the scorer to confirm.
    void auslosungZeigen(int tischNr, int serie, const QStringList &sitze);
    // Registers one player given as "number|name|member|prize skat" unless
    // the name is known; the member number, 0 when nothing was read.
    int spielerHinzufuegen(const QString &text);
    void onSpielerSelected();
    void onSpielerDoubleClicked(const QModelIndex &index);

    // No list to continue: tabs 1 to 3 stay closed.
    void anfangszustand();
    // A saved list was opened and runs on.
    void wiederherstellen();
    // A protocol file replaced the list.
    void protokollGeladen();
    // The window closes: the header as it stands is stored.
    void schliessen();

signals:
    void laufzustandGeaendert(bool laufend);
    void protokollWirdVorbereitet();
    void protokollVorbereitet();
    void serieGestartet();

private:
    void felderVerbinden();
    void listeGeaendert(const ListenAenderung &aenderung);
    void kopfZeigen();
    void kopfAusFeldern();
    void setzeLaufzustand(bool laufend);
    QList<QLineEdit *> neueSpielerFelder() const;
    void spielerListeFuellen(const QString &kopf);
    void warnen(const QString &text);

    QMainWindow *m_fenster;
    Ui::MainWindow &m_ui;
    QLabel *m_lblListe;
    ListenDienst &m_dienst;
    Einstellungen &m_einstellungen;
    QWidget *m_tabNeu;
    QStandardItemModel *m_spielerListe;
};
