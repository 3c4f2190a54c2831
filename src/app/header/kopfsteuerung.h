#pragma once

// The list header on the settings tab (table, series, number of games, date,
// list name, group id), the page that prepares a new protocol with the club's
// player registry, the start of a series, and the set-up and running states
// of the window that follow from it.

#include "app/widgets/seite.h"

#include <QGroupBox>
#include <QObject>

#include <memory>

namespace Ui {
class KopfGruppe;
class NeuSeite;
} // namespace Ui

class Einstellungen;
class ListenDienst;
class QLineEdit;
class QModelIndex;
class QStandardItemModel;
struct ListenAenderung;

class KopfSteuerung : public QObject
{
    Q_OBJECT

public:
    // Builds the "Neu" page on the page given and the header's group box.
    KopfSteuerung(QObject *parent, QWidget *neuSeite, ListenDienst &dienst,
                  Einstellungen &einstellungen);
    ~KopfSteuerung() override;

    // The group box for the settings tab; whoever lays it out takes it over.
    QGroupBox *gruppe() const { return m_gruppe; }

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
    // With a manager the players come from its draw: the "Neu" page asks for
    // them instead of reading a file, and its name fields are not typed into.
    void namenSperren(bool sperren);
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
    void seiteZeigen(Seite seite);
    // Entry, overview and sheet are open only while a series runs.
    void seitenFreigeben(bool frei);
    // The "Neu" page is opened (shown as the current tab) or closed.
    void neuSeiteOffen(bool offen);
    // What the "Neu" page asks for, while it is open: table and series as typed.
    void neueListeAngaben(bool offen, const QString &tisch, const QString &serie);
    // The tool bar's name of the list being kept.
    void listeBenannt(const QString &text);
    // The manager is asked for the players of the table and series on the "Neu" page.
    void spielerdatenGewuenscht();

private:
    void felderVerbinden();
    void listeGeaendert(const ListenAenderung &aenderung);
    void kopfZeigen();
    void kopfAusFeldern();
    void setzeLaufzustand(bool laufend);
    QList<QLineEdit *> neueSpielerFelder() const;
    void spielerListeFuellen(const QString &kopf);
    void warnen(const QString &text);
    void neuSeiteSetzen(bool offen);
    void angabenMelden();

    QGroupBox *m_gruppe;
    std::unique_ptr<Ui::KopfGruppe> m_ui;
    std::unique_ptr<Ui::NeuSeite> m_neu;
    ListenDienst &m_dienst;
    Einstellungen &m_einstellungen;
    QStandardItemModel *m_spielerListe;
    bool m_neuOffen = false;
};
