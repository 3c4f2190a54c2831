#pragma once

// The participants of the list on the settings tab: their table with the name
// and flag editors, moving a player one seat up or down, the choice between a
// list of three and one of four players, and the button that starts the series.

#include <QGroupBox>
#include <QObject>

#include <memory>

namespace Ui {
class TeilnehmerGruppe;
}

class ListenDienst;
class MySortFilterProxyModel;
struct ListenAenderung;

class SitzSteuerung : public QObject
{
    Q_OBJECT

public:
    SitzSteuerung(QObject *parent, ListenDienst &dienst);
    ~SitzSteuerung() override;

    // The group box for the settings tab; whoever lays it out takes it over.
    QGroupBox *gruppe() const { return m_gruppe; }

    void onUp();
    void onDown();
    void on3erListe(bool gewaehlt);
    void on4erListe(bool gewaehlt);
    void laufzustandSetzen(bool laufend);

signals:
    // The seats changed; the first seat deals now.
    void sitzeGetauscht();
    // The scorer asks to start the series.
    void serieStartenGewuenscht();

private:
    void listeGeaendert(const ListenAenderung &aenderung);
    int gewaehlterSitz() const;
    void sitzeTauschen(int sitz, int nachbar);
    void listenTypSetzen(int spieler);

    QGroupBox *m_gruppe;
    std::unique_ptr<Ui::TeilnehmerGruppe> m_ui;
    ListenDienst &m_dienst;
    MySortFilterProxyModel *m_proxy;
};
