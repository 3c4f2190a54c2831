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
#include <QTimer>

#include <memory>

class Client;
class HelpWidget;
class QActionGroup;
class QButtonGroup;
class QLabel;
class QLineEdit;
class QPushButton;
class QSettings;
class QSqlTableModel;
class QStandardItemModel;
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

    // List menu entries of the file, header and settings subsystems
    void onNewProtokoll();
    void onLoadXml();
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
    void onZeigeRestZeitLimit();

    // Game entry
    void onWartenAufEintrag();
    void showKartengeber(QString text);

    // Standings
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
    void kopfLesen();
    void kopfSchreiben();
    void setzeLaufzustand(bool laufend);
    void setzeListenTyp(int spieler);

    // Game record on the entry panel
    void panelStellungAnwenden(const PanelStellung &stellung);

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
    bool serieLaeuft = false;
    int geber = 0;

    QSqlTableModel *teilnehmerModel = nullptr;
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
