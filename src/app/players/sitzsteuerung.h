#pragma once

// The participants of the list on the settings tab: their table with the name
// and flag editors, moving a player one seat up or down, and the choice
// between a list of three and one of four players.

#include <QObject>

class ListenDienst;
class MySortFilterProxyModel;
class QMainWindow;
struct ListenAenderung;

namespace Ui {
class MainWindow;
}

class SitzSteuerung : public QObject
{
    Q_OBJECT

public:
    SitzSteuerung(QMainWindow *fenster, Ui::MainWindow &ui, ListenDienst &dienst);

    void onUp();
    void onDown();
    void on3erListe(bool gewaehlt);
    void on4erListe(bool gewaehlt);
    void laufzustandSetzen(bool laufend);

signals:
    // The seats changed; the first seat deals now.
    void sitzeGetauscht();

private:
    void listeGeaendert(const ListenAenderung &aenderung);
    int gewaehlterSitz() const;
    void sitzeTauschen(int sitz, int nachbar);
    void listenTypSetzen(int spieler);

    QMainWindow *m_fenster;
    Ui::MainWindow &m_ui;
    ListenDienst &m_dienst;
    MySortFilterProxyModel *m_proxy;
};
