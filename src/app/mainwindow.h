#pragma once

// The one window of Kartulo. It builds the frame (tab row, tool bar, menus,
// status line, help pane), creates the list and the parts of the window that
// show and change it, each on its own pages, lays out what they build and
// wires them together in one place. Its slots are the window's interface; each
// hands the work to the part that owns the widgets concerned.

#include "app/files/dateisteuerung.h"
#include "app/game/eintragsteuerung.h"
#include "app/header/kopfsteuerung.h"
#include "app/link/netzsteuerung.h"
#include "app/link/verbindungssteuerung.h"
#include "app/link/zweitlistesteuerung.h"
#include "app/players/sitzsteuerung.h"
#include "app/ranking/ranglistensteuerung.h"
#include "app/sheets/blattsteuerung.h"
#include "app/sheets/verlaufsteuerung.h"
#include "app/standings/modussteuerung.h"
#include "app/standings/standsteuerung.h"
#include "app/widgets/seite.h"
#include "core/db/protokolldatenbank.h"

#include <QMainWindow>
#include <QModelIndex>

#include <memory>

class Client;
class HelpWidget;
class ListenDienst;
class Paarung;
class QActionGroup;
class QDockWidget;
class QSqlRecord;
class Werkzeugleiste;

namespace Ui {
class MainWindow;
}

class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    // Whether a screen this small gets the large touch font instead of the
    // check-box style sheet.
    static bool istKleinerBildschirm(const QSize &verfuegbar);

    // Loads a stored game onto the entry panel for editing.
    void spielInPanel(const SpielEintrag &eintrag) { m_eintrag->spielInPanel(eintrag); }
    // Values pushed by the tournament manager: table, series and the twelve
    // cost fields joined with "|"; another table's or series' values are ignored.
    void kostenVomManager(const QStringList &werte) { m_blatt->kostenVomManager(werte); }
    // Registers one player given as "number|name|member|prize skat" unless
    // the name is known; returns the member number, 0 when nothing was read.
    int spielerHinzufuegen(const QString &text) { return m_kopf->spielerHinzufuegen(text); }

signals:
    void messageKartengeber(QString text);
    void messageSumme1(QString text);
    void messageSumme2(QString text);
    void messageSumme3(QString text);
    void messageSumme4(QString text);
    void spielStandsAnzeigeAufNullSetzen();

public slots:
    // Protocol database and main window
    void onDeleteDatabase();
    void infoKartulo();
    void onTabChanged(int index) { Q_UNUSED(index); }
    void onZoomIn() { m_blatt->onZoomIn(); }
    void onZoomOut() { m_blatt->onZoomOut(); }
    void bierlachsIndexChanged(int index);

    // List header and new protocol
    void onTischNr(int nummer) { m_kopf->onTischNr(nummer); }
    void onSerie(int nummer) { m_kopf->onSerie(nummer); }
    void onListenName(QString name) { m_kopf->onListenName(name); }
    void onChangeGruppenId(QString gruppe) { m_kopf->onChangeGruppenId(gruppe); }
    void onNewProtokoll() { m_kopf->onNewProtokoll(); }
    void onNeuesProtokollOk() { m_kopf->onNeuesProtokollOk(); }
    void onNeuesProtokollAbbruch() { m_kopf->onNeuesProtokollAbbruch(); }
    void setTabWidgetNeuToHide() { m_kopf->setTabWidgetNeuToHide(); }
    void onStartSpiel() { m_kopf->onStartSpiel(); }

    // Protocol files
    void onLoadXml() { m_dateien->onLoadXml(); }
    void onLoadXmlOk() { m_dateien->onLoadXmlOk(); }
    void onLoadXmlAbbruch() { m_dateien->onLoadXmlAbbruch(); }
    void onSaveListe() { onSaveListe(true); }
    void onSaveListe(bool frageDateiname);
    void onSicherheitsKopieSpeichern() { m_dateien->onSicherheitsKopieSpeichern(); }

    void onEinstellungen();
    // Second list
    void startZweitProtokoll() { m_zweit->startZweitProtokoll(); }
    void onZweitListenTischNrOk() { m_zweit->onZweitListenTischNrOk(); }
    void onZweitListenTischNrAbbruch() { m_zweit->onZweitListenTischNrAbbruch(); }
    void starteZweitListe(QString ersteListe, QStringList inhalt)
    {
        m_zweit->starteZweitListe(ersteListe, inhalt);
    }
    void onZweitListeFreigeben() { onZweitListeFreigeben(true); }
    void onZweitListeFreigeben(bool ask) { m_zweit->onZweitListeFreigeben(ask); }
    void onClearProtokoll() { m_zweit->onClearProtokoll(); }
    void clearProtokoll(bool leeren) { m_zweit->clearProtokoll(leeren); }
    void CheckRecordGegenRecordVonErsterListe() { m_zweit->CheckRecordGegenRecordVonErsterListe(); }

    // Play modes and time limit
    void onSetModusTurnier() { m_modus->onSetModusTurnier(); }
    void onSetModusErgebnis() { m_modus->onSetModusErgebnis(); }
    void onSetModusBierlachs() { m_modus->onSetModusBierlachs(); }
    void onZeitLimitOk() { m_modus->onZeitLimitOk(); }
    void onZeitLimitAbbruch() { m_modus->onZeitLimitAbbruch(); }
    void onBierlachsModusMaxPunkteOk() { m_modus->onBierlachsModusMaxPunkteOk(); }
    void onBierlachsModusMaxPunkteAbbruch() { m_modus->onBierlachsModusMaxPunkteAbbruch(); }
    void onZeigeRestZeitLimit() { m_modus->onZeigeRestZeitLimit(); }

    // Game entry
    void onFertig() { m_eintrag->onFertig(); }
    void onSchneider(bool gesetzt) { m_eintrag->onSchneider(gesetzt); }
    void onSchwarz(bool gesetzt) { m_eintrag->onSchwarz(gesetzt); }
    void onGrang(bool gesetzt) { m_eintrag->onGrang(gesetzt); }
    void onNull(bool gesetzt) { m_eintrag->onNull(gesetzt); }
    void onEingepasst(bool gesetzt) { m_eintrag->onEingepasst(gesetzt); }
    void spielInListeEintragen() { m_eintrag->spielInListeEintragen(); }
    void onWartenAufEintrag() { m_eintrag->spielInListeEintragen(); }
    void showKartengeber(QString text) { m_eintrag->kartengeberZeigen(text); }
    void onUebersichtDoubleClicked(QModelIndex index)
    {
        m_eintrag->onUebersichtDoubleClicked(index);
    }
    void onSpielEintragBearbeiten() { m_eintrag->onSpielEintragBearbeiten(); }
    void onSpielEintragLoeschen() { m_eintrag->onSpielEintragLoeschen(); }
    void onDockReizung() { m_eintrag->onDockReizung(); }
    void onSelectedReizWert(int value) { m_eintrag->onSelectedReizWert(value); }

    // Players and seating
    void onUp() { m_sitze->onUp(); }
    void onDown() { m_sitze->onDown(); }
    void on3erListe(bool gewaehlt) { m_sitze->on3erListe(gewaehlt); }
    void on4erListe(bool gewaehlt) { m_sitze->on4erListe(gewaehlt); }
    void onTeilnehmerInserted(int row, QSqlRecord &record);
    void spielerAusTextDateiLaden() { m_kopf->spielerAusTextDateiLaden(); }
    void ladeSpielerListe(QStringList liste) { m_kopf->ladeSpielerListe(liste); }
    void onSpielerSelected() { m_kopf->onSpielerSelected(); }
    void onSpielerDoubleClicked(QModelIndex index) { m_kopf->onSpielerDoubleClicked(index); }

    // Cost account settings
    void onKostenPlatz1(QString text) { m_blatt->kostenEingegeben(Kosten::Platz1, text); }
    void onKostenPlatz2(QString text) { m_blatt->kostenEingegeben(Kosten::Platz2, text); }
    void onKostenPlatz3(QString text) { m_blatt->kostenEingegeben(Kosten::Platz3, text); }
    void onKostenPlatz4(QString text) { m_blatt->kostenEingegeben(Kosten::Platz4, text); }
    void onKartenGeld() { m_blatt->kostenEingegeben(Kosten::Kartengeld); }
    void onVerlSpiel1Bis5() { m_blatt->kostenEingegeben(Kosten::VerlSpiel1Bis5); }
    void onVerlSpielAb6() { m_blatt->kostenEingegeben(Kosten::VerlSpielAb6); }
    void onPreisSkat() { m_blatt->kostenEingegeben(Kosten::Preisskat); }
    void onPunkteGewSpiele(QString text)
    {
        m_blatt->kostenEingegeben(Kosten::GewSpieleMinusVerlSpiele, text);
    }
    void onPunkteVerlSpieleGegenSpieler3(QString text)
    {
        m_blatt->kostenEingegeben(Kosten::VerlSpieleDerGegenSpieler3, text);
    }
    void onPunkteVerlSpieleGegenSpieler4(QString text)
    {
        m_blatt->kostenEingegeben(Kosten::VerlSpieleDerGegenSpieler4, text);
    }

    // Standings
    void onSpielStandsAnzeigeAufNullSetzen();
    // Ranking
    void onTischreihenfolgeAuswerten() { m_rang->onTischreihenfolgeAuswerten(); }
    void onSaveRangliste() { m_rang->onSaveRangliste(); }
    void setPunkteHighlited(int sitz) { m_stand->hervorheben(sitz); }
    void setPunkte1(QString text) { m_stand->punkteSetzen(0, text); }
    void setPunkte2(QString text) { m_stand->punkteSetzen(1, text); }
    void setPunkte3(QString text) { m_stand->punkteSetzen(2, text); }
    void setPunkte4(QString text) { m_stand->punkteSetzen(3, text); }
    // Manager link
    void appendMessage(QString von, QString text) { m_netz->appendMessage(von, text); }
    void newParticipant(QString kennung) { m_netz->newParticipant(kennung); }
    void rechnerAbmeldung(QString kennung) { m_netz->rechnerAbmeldung(kennung); }
    void spielerdatenAnfordern() { m_netz->spielerdatenAnfordern(); }
    void onWlanBenutzen(bool benutzen) { m_netz->onWlanBenutzen(benutzen); }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    using Kosten = Einstellungen::Kosten;

    void anwendungsIdentitaetSetzen();
    void qtUebersetzungLaden();
    void bildschirmAnpassen();
    void fensterGroesseWaehlen();
    void teileEinsetzen();
    void teileVerbinden();
    void seitenVerbinden();
    void menuesVerbinden();
    void seiteZeigen(Seite seite);
    void neuSeiteZeigen(bool offen);
    void statusZeigen(const QString &text, int dauer);
    void dockZeigen(QDockWidget *dock);
    void datenbankOeffnen(ProtokollDatenbank::Zustand zustand);
    void punkteZeilenSenden(const QStringList &zeilen);
    void rundenEnde();

    std::unique_ptr<Ui::MainWindow> ui;
    Einstellungen *m_einstellungen;
    ListenDienst *m_dienst;
    Werkzeugleiste *m_leiste;
    HelpWidget *m_hilfe;
    Paarung *m_paarung;
    Client *m_client;
    QActionGroup *m_modi;
    bool m_grosserBildschirm = true;

    KopfSteuerung *m_kopf;
    SitzSteuerung *m_sitze;
    EintragSteuerung *m_eintrag;
    StandSteuerung *m_stand;
    ModusSteuerung *m_modus;
    BlattSteuerung *m_blatt;
    VerlaufSteuerung *m_verlauf;
    DateiSteuerung *m_dateien;
    NetzSteuerung *m_netz;
    VerbindungsSteuerung *m_verbindung;
    RanglistenSteuerung *m_rang;
    ZweitlisteSteuerung *m_zweit;
};
