#pragma once

// The one window of Kartulo. It owns the protocol database, the settings
// store, the models, the LAN client and the timers, and wires the widgets to
// the domain classes; its slots read widgets, call the domain and show the
// result. Each subsystem keeps its slots in a file of its own folder.

#include "app/einstellungen.h"
#include "db/protokolldatenbank.h"
#include "game/spieleintrag.h"

#include <QDate>
#include <QMainWindow>
#include <QModelIndex>
#include <QPointer>
#include <QTime>
#include <QTimer>

#include <memory>

class Client;
class Spielblatt;
struct BlattKopf;
class DockFileView;
class DockReizung;
class SkatJornal;
struct XmlDaten;
class HelpWidget;
class MySortFilterProxyModel;
class QActionGroup;
class QButtonGroup;
class QDockWidget;
class QLabel;
class QLineEdit;
class QPushButton;
class QSettings;
class QSqlRecord;
class QSqlTableModel;
class QStandardItemModel;
struct BierlachsRunde;
struct PanelEingabe;
struct PanelStellung;

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
    void spielInPanel(const SpielEintrag &eintrag);
    // Values pushed by the tournament manager: table, series and the twelve
    // cost fields joined with "|"; another table's or series' values are ignored.
    void kostenVomManager(const QStringList &werte);

    // Registers one player given as "number|name|member|prize skat" unless
    // the name is known; returns the member number, 0 when nothing was read.
    int spielerHinzufuegen(const QString &text);

signals:
    void messageKartengeber(QString text);
    void messageSumme1(QString text);
    void messageSumme2(QString text);
    void messageSumme3(QString text);
    void messageSumme4(QString text);
    void spielStandsAnzeigeAufNullSetzen();

public slots:
    // Protocol database
    void onDeleteDatabase();

    // Main window
    void infoKartulo();
    void onTabChanged(int index);
    void onZoomIn();
    void onZoomOut();
    void bierlachsIndexChanged(int index);

    // List header and new protocol
    void onTischNr(int nummer);
    void onSerie(int nummer);
    void onListenName(QString name);
    void onChangeGruppenId(QString gruppe);
    void onNewProtokoll();
    void onNeuesProtokollOk();
    void onNeuesProtokollAbbruch();
    void setTabWidgetNeuToHide();
    void onStartSpiel();

    // Protocol files
    void onLoadXml();
    void onLoadXmlOk();
    void onLoadXmlAbbruch();
    void onSaveListe();
    void onSaveListe(bool frageDateiname);
    void onEinstellungen();

    // Second list
    void startZweitProtokoll();
    void onZweitListeFreigeben();
    void onZweitListeFreigeben(bool ask);
    void onClearProtokoll();
    void CheckRecordGegenRecordVonErsterListe();

    // Play modes and time limit
    void onSetModusTurnier();
    void onSetModusErgebnis();
    void onSetModusBierlachs();
    void onZeitLimitOk();
    void onZeitLimitAbbruch();
    void onBierlachsModusMaxPunkteOk();
    void onBierlachsModusMaxPunkteAbbruch();
    void onZeigeRestZeitLimit();

    // Game entry
    void onFertig();
    void onSchneider(bool gesetzt);
    void onSchwarz(bool gesetzt);
    void onGrang(bool gesetzt);
    void onNull(bool gesetzt);
    void onEingepasst(bool gesetzt);
    void spielInListeEintragen();
    void onWartenAufEintrag();
    void showKartengeber(QString text);
    void onUebersichtDoubleClicked(QModelIndex index);
    void onSpielEintragBearbeiten();
    void onSpielEintragLoeschen();
    void onDockReizung();
    void onSelectedReizWert(int value);

    // Players and seating
    void onUp();
    void onDown();
    void on3erListe(bool gewaehlt);
    void on4erListe(bool gewaehlt);
    void onTeilnehmerInserted(int row, QSqlRecord &record);
    void spielerAusTextDateiLaden();
    void ladeSpielerListe(QStringList liste);
    void onSpielerSelected();
    void onSpielerDoubleClicked(QModelIndex index);

    // Cost account settings
    void onKostenPlatz1(QString text);
    void onKostenPlatz2(QString text);
    void onKostenPlatz3(QString text);
    void onKostenPlatz4(QString text);
    void onKartenGeld();
    void onVerlSpiel1Bis5();
    void onVerlSpielAb6();
    void onPreisSkat();
    void onPunkteGewSpiele(QString text);
    void onPunkteVerlSpieleGegenSpieler3(QString text);
    void onPunkteVerlSpieleGegenSpieler4(QString text);

    // Standings
    void onSpielStandsAnzeigeAufNullSetzen();
    void setPunkteHighlited(int sitz);
    void setPunkte1(QString text);
    void setPunkte2(QString text);
    void setPunkte3(QString text);
    void setPunkte4(QString text);

    // Files
    void onSicherheitsKopieSpeichern();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    // Construction
    void anwendungsIdentitaetSetzen();
    void einstellungenLaden();
    void listenWidgetsVerbinden();
    void werkzeugleisteAnlegen();
    void signaleVerbinden();
    void menuesVerbinden();
    void bildschirmAnpassen();
    void tabellenEinrichten();
    void timerAnlegen();
    void panelGruppenAnlegen();

    // Protocol database
    void datenbankOeffnen();
    void protokollWiederherstellen();
    void teilnehmerModellEinrichten();
    void anfangszustandZeigen();
    void uebersichtFuellen();

    // List header
    void kopfFelderVerbinden();
    void kopfLesen();
    void kopfSchreiben();
    void setzeLaufzustand(bool laufend);
    QList<QLineEdit *> neueSpielerFelder() const;
    void teilnehmerAnhaengen(const QString &name);

    // Cost account and score sheet
    enum Beschreibung
    {
        BeschreibungGewonnen,
        BeschreibungGegenspieler,
        BeschreibungKartengeld,
        BeschreibungVerloren,
        BeschreibungPreisskat,
        BeschreibungPlatz
    };
    void kostenFelderEinrichten();
    void kostenGeaendert(int beschreibung, bool platzMitEuro);
    void geldSetzen(double &wert, const char *key, const QString &text, int beschreibung);
    void faktorSetzen(int &wert, const char *key, const QString &text, int beschreibung);
    Spielblatt *aktuellesBlatt() const;
    BlattKopf blattKopf() const;
    void blattNeuZeichnen();
    void blattKopfZeichnen();
    QVector<SpielEintrag> blattSpiele() const;
    void blattFuellen();
    void ergebnisseMelden(const QStringList &ergebnisse);
    void teilnehmerGeaendert();
    void listenTypAnzeigen(int spieler);

    // Protocol files and journal
    XmlDaten xmlDaten() const;
    QList<QLineEdit *> kostenFelderInDateiReihenfolge() const;
    void xmlSpeichern(const QString &pfad);
    void xmlImportieren(const QString &pfad);
    void jornalStarten();
    void jornalWiederherstellen();
    void jornalEintragen(const SpielEintrag &spiel, int status);

    // Standings, modes and time limit
    QList<QLineEdit *> punkteFelder() const;
    void punkteZeilenSenden(const QStringList &zeilen);
    void spielStandAktualisieren(bool geberAnsagen);
    void bierlachsStandAnzeigen(const QVector<SpielEintrag> &spiele);
    void bierlachsRundeAnzeigen(const BierlachsRunde &runde);
    void bierlachsRundenEnde(int zeile);
    // A one-line dock asking for a number, with "Ok" and "Abbruch".
    QDockWidget *eingabeDock(const QString &name, const QString &text, int wert, int von, int bis,
                             void (MainWindow::*beiOk)(), void (MainWindow::*beiAbbruch)());
    void dockEntfernen(QPointer<QDockWidget> &dock);
    void restZeitZeigen(const QString &text, bool rot);
    void zeitLimitStarten(bool starten);
    void zeitLimitWiederherstellen();

    // Game record on the entry panel
    void panelStellungAnwenden(const PanelStellung &stellung);
    PanelEingabe panelLesen() const;
    void nullKnoepfeSperren(bool gesperrt);
    void panelZuruecksetzen();
    void spielerKnoepfeFreigeben();

    // Players
    void teilnehmerTabelleEinrichten();
    QString teilnehmerName(int sitz) const;
    void spielerKnoepfeBeschriften();
    int gewaehlterSitz() const;
    void sitzeTauschen(int sitz, int nachbar);
    void spielerListeFuellen(const QString &kopf);

    std::unique_ptr<Ui::MainWindow> ui;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<Einstellungen> einstellungen;
    std::unique_ptr<ProtokollDatenbank> datenbank;
    QString datenVerzeichnis;

    KostenWerte kosten;
    QString vereinsname;
    QString gruppenId;
    int listenTyp = 4;
    QDate listenDatum = QDate::currentDate();
    int modus = 0;
    int bierlachsMaxPunkte = 500;
    int zeitLimitMinuten = 120;
    bool grosserBildschirm = true;
    double zoomFaktor = 1.0;

    SpielEintrag aktuellesSpiel;
    bool bearbeitungsModus = false;
    int bearbeiteteZeile = 0;
    bool serieLaeuft = false;
    int geber = 0;
    // Set while a list is restored or prepared and by seat moves, so the
    // dealer box follows entered games and deletions only.
    bool geberAnsageUnterdrueckt = false;

    QSqlTableModel *teilnehmerModel = nullptr;
    MySortFilterProxyModel *teilnehmerProxy = nullptr;
    QStandardItemModel *spielerListeModel = nullptr;
    DockReizung *dockReizung = nullptr;
    DockFileView *dockFileView = nullptr;
    SkatJornal *jornal = nullptr;
    QPointer<QDockWidget> dockZeitLimit;
    QPointer<QDockWidget> dockBierlachs;
    QTime stopZeit;
    std::unique_ptr<Spielblatt> blatt3;
    std::unique_ptr<Spielblatt> blatt4;
    QString pdfPfad;
    QString xmlPfad;
    // Pairing with a second list; while either is set no results are reported.
    bool hasSecondList = false;
    bool secondListPending = false;
    QStringList letzteErgebnisse;
    QStandardItemModel *uebersichtModel = nullptr;
    Client *client = nullptr;
    HelpWidget *helpWidget = nullptr;
    QWidget *tabNeuSeite = nullptr;

    QLabel *lblListe = nullptr;
    QPushButton *pbReizung = nullptr;
    QLineEdit *leReizwert = nullptr;
    QLabel *lblModus = nullptr;
    QLineEdit *leMeldungRot = nullptr;
    QLineEdit *leMeldungGruen = nullptr;
    QActionGroup *modusGruppe = nullptr;

    QButtonGroup *bgMatadorModus = nullptr;
    QButtonGroup *bgMatadorAnzahl = nullptr;
    QButtonGroup *bgErgebnis = nullptr;
    QButtonGroup *bgSpieler = nullptr;
    QButtonGroup *bgSpielTyp = nullptr;

    QTimer wartenTimer;
    QTimer sicherheitskopieTimer;
    QTimer checkTimer;
    QTimer restZeitTimer;
};
