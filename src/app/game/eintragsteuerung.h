#pragma once

// The entry page: the panel on which the scorer sets each game, its value
// and description, entering it into the list (by button or after the wait),
// loading a stored game back for correction, the overview of the games with
// deleting one from it, the bid button and dock on the tool bar, and the
// dealer with the declarer buttons it leaves free.

#include "app/widgets/seite.h"
#include "core/db/spieleintrag.h"

#include <QLineEdit>
#include <QObject>
#include <QPushButton>

#include <QPointer>
#include <QTimer>
#include <memory>

namespace Ui {
class EintragSeite;
class UebersichtSeite;
} // namespace Ui

class DockReizung;
class Einstellungen;
class ListenDienst;
class QButtonGroup;
class QDockWidget;
class QModelIndex;
class Uebersicht;
struct ListenAenderung;
struct SpielEingabe;
struct Spielangaben;

class EintragSteuerung : public QObject
{
    Q_OBJECT

public:
    // Builds the entry page and the overview on the pages given.
    EintragSteuerung(QObject *parent, QWidget *eintragSeite, QWidget *uebersichtSeite,
                     ListenDienst &dienst, Einstellungen &einstellungen);
    ~EintragSteuerung() override;

    // The bid button and its field, for the tool bar.
    QPushButton *reizungKnopf() const { return m_pbReizung; }
    QLineEdit *reizwertFeld() const { return m_leReizwert; }
    // Shows the standings below the panel.
    void spielstandEinsetzen(QWidget *anzeige);
    // Shows the chart of the evening below the overview's table, which keeps the larger part.
    void verlaufEinsetzen(QWidget *anzeige);

    void onFertig();
    void onSchneider(bool gesetzt);
    void onSchwarz(bool gesetzt);
    void onGrang(bool gesetzt);
    void onNull(bool gesetzt);
    void onEingepasst(bool gesetzt);
    void spielInListeEintragen();
    // Loads a stored game onto the panel for correction.
    void spielInPanel(const SpielEintrag &eintrag);
    void onUebersichtDoubleClicked(const QModelIndex &index);
    void onSpielEintragBearbeiten();
    void onSpielEintragLoeschen();
    void onDockReizung();
    void onSelectedReizWert(int wert);
    // Leaves the stored game as it is; the next game is appended again.
    void korrekturAbbrechen();

    // The dealer line has arrived: frees the declarer buttons and shows it,
    // or tells that the round is complete.
    void kartengeberZeigen(const QString &text);
    // Announces the dealer of the next game.
    void geberAnsagen();
    // Announces the first seat as dealer, on the status line only.
    void ersterGeberAnsagen();
    // Until the next game is confirmed, the dealer goes to the status line only.
    void geberAnsageUnterdruecken();
    // A saved list was opened: the dealer on the status line, his button locked.
    void wiederherstellen();
    void laufzustandSetzen(bool laufend);

signals:
    // All planned games are played; the manager link decides what follows.
    void rundenEnde();
    void kartengeber(const QString &text);
    void hervorheben(int sitz);
    // A game was entered or corrected and the panel is free again.
    void spielUebernommen();
    void seiteZeigen(Seite seite);
    void statusMeldung(const QString &text, int dauer);
    // A dock to place at the top of the window.
    void dockZeigen(QDockWidget *dock);

private:
    void gruppenAnlegen();
    void listeGeaendert(const ListenAenderung &aenderung);
    SpielEingabe panelLesen() const;
    void panelStellungAnwenden(const Spielangaben &angaben);
    void nullKnoepfeSperren(bool gesperrt);
    void panelZuruecksetzen();
    void beschreibungZeigen(const QString &text);
    void naechsteNummerZeigen();
    void korrekturBeenden();
    void spielerKnoepfeBeschriften();
    void spielerKnoepfeFreigeben();
    bool eintragen();
    void warnen(const QString &text);
    void nichtGespeichert(const QString &grund);
    void kopfZeigen();

    QWidget *m_seite;
    std::unique_ptr<Ui::EintragSeite> m_ui;
    std::unique_ptr<Ui::UebersichtSeite> m_uebersichtUi;
    QPushButton *m_pbReizung;
    QLineEdit *m_leReizwert;
    ListenDienst &m_dienst;
    Einstellungen &m_einstellungen;
    Uebersicht *m_uebersicht;

    QButtonGroup *m_matadorModus = nullptr;
    QButtonGroup *m_matadorAnzahl = nullptr;
    QButtonGroup *m_ergebnis = nullptr;
    QButtonGroup *m_spieler = nullptr;
    QButtonGroup *m_spielTyp = nullptr;
    QPointer<DockReizung> m_dockReizung;
    QTimer m_wartenTimer;

    SpielEintrag m_aktuellesSpiel;
    bool m_bearbeitungsModus = false;
    int m_bearbeiteteZeile = 0;
    // Set while a list is restored or prepared and by seat moves, so the
    // dealer box follows entered games and deletions only.
    bool m_geberAnsageUnterdrueckt = false;
};
