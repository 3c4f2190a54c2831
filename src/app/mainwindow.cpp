#include "app/mainwindow.h"

#include "app/help/helpwidget.h"
#include "app/version.h"
#include "app/widgets/dlgsettings.h"
#include "app/widgets/werkzeugleiste.h"
#include "core/link/empfang.h"
#include "core/link/paarung.h"
#include "core/service/listendienst.h"
#include "ui_mainwindow.h"
#include "velmora/client.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QScreen>
#include <QTabBar>
#include <QTranslator>

namespace {

const char *const ToolButtonStil =
    "QToolButton {border:2px solid #8f8f91;border-radius: 6px;background-color: "
    "qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1, stop: 0 #eee8aa, stop: 1 "
    "#b0b76b);}QToolButton:checked {background-color: qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1, "
    "stop: 0 #008fff, stop: 1 #87ceeb);}";

} // namespace

MainWindow::MainWindow(QWidget *parent) : QMainWindow(parent), ui(new Ui::MainWindow)
{
    // The images live in this static library; nothing else would pull them in.
    Q_INIT_RESOURCE(kartulo);
    ui->setupUi(this);
    anwendungsIdentitaetSetzen();
    qtUebersetzungLaden();

    const QString verzeichnis = Einstellungen::datenVerzeichnis();
    if (!verzeichnis.isEmpty())
        QDir().mkpath(verzeichnis);
    m_einstellungen = new Einstellungen(this);
    m_einstellungen->laden(verzeichnis);

    m_leiste = new Werkzeugleiste(this);
    addToolBar(Qt::TopToolBarArea, m_leiste);
    // Known before the parts are built: on a tablet a file is picked in a dock.
    const QScreen *bildschirm = QGuiApplication::primaryScreen();
    m_grosserBildschirm = !bildschirm || !istKleinerBildschirm(bildschirm->availableSize());
    // Every tab stays in view; the window is at least as wide as their row.
    ui->tabWidget->tabBar()->setUsesScrollButtons(false);
    m_hilfe = new HelpWidget(ui->tabBeschreibung);
    ui->vlBeschreibung->addWidget(m_hilfe);

    m_dienst = new ListenDienst(verzeichnis, *m_einstellungen, this);
    m_paarung = new Paarung(this);
    m_kopf = new KopfSteuerung(this, ui->tabNeu, *m_dienst, *m_einstellungen);
    m_sitze = new SitzSteuerung(this, *m_dienst);
    m_eintrag = new EintragSteuerung(this, ui->tabSpieleintrag, ui->tabUebersicht, *m_dienst,
                                     *m_einstellungen);
    m_stand = new StandSteuerung(this, *m_dienst, *m_einstellungen);
    m_modus = new ModusSteuerung(this, *m_dienst, *m_einstellungen);
    m_blatt = new BlattSteuerung(this, ui->tabSpieleListe, *m_dienst, *m_einstellungen);
    m_verlauf = new VerlaufSteuerung(this, *m_dienst, *m_einstellungen);
    m_dateien = new DateiSteuerung(this, m_grosserBildschirm, *m_dienst, *m_einstellungen);
    m_client = new Client(Empfang::tischProgramm(), this);
    m_netz = new NetzSteuerung(this, *m_dienst, *m_einstellungen, *m_paarung, *m_client);
    m_verbindung = new VerbindungsSteuerung(this, *m_client, *m_einstellungen);
    m_rang = new RanglistenSteuerung(this, ui->tabSpielstaende, *m_dienst);
    m_zweit = new ZweitlisteSteuerung(this, *m_dienst, *m_paarung);
    teileEinsetzen();
    // The touch font and the button style reach every page at once, now that all are built.
    bildschirmAnpassen();
    teileVerbinden();
    seitenVerbinden();
    menuesVerbinden();
    datenbankOeffnen(m_dienst->oeffnen());

    setWindowTitle(QStringLiteral("Kartulo"));
    fensterGroesseWaehlen();
    setMinimumSize(size());
    if (verzeichnis.isEmpty())
        QMessageBox::warning(this, QStringLiteral("WARNUNG"),
                             QStringLiteral("Hat Kartulo Berechtigung zum Speichern von Daten?"));
}

MainWindow::~MainWindow()
{
    // The parts show the list, so they go before it.
    for (QObject *teil : std::initializer_list<QObject *>{m_zweit, m_rang, m_verbindung, m_netz,
                                                          m_dateien, m_verlauf, m_blatt, m_modus,
                                                          m_stand, m_eintrag, m_sitze, m_kopf})
        delete teil;
}

void MainWindow::anwendungsIdentitaetSetzen()
{
    QCoreApplication::setOrganizationName(Einstellungen::organisationsName());
    QCoreApplication::setApplicationName(Einstellungen::anwendungsName());
    QCoreApplication::setOrganizationDomain(Einstellungen::organisationsDomain());
}

void MainWindow::qtUebersetzungLaden()
{
    // Qt's own texts (the buttons of every message box, the context menus) in German,
    // installed once per application, whoever builds the window.
    const QString name = QStringLiteral("kartulo_qtbase_de");
    if (qApp->findChild<QTranslator *>(name))
        return;
    auto *uebersetzung = new QTranslator(qApp);
    uebersetzung->setObjectName(name);
    if (uebersetzung->load(QStringLiteral("qtbase_de"),
                           QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(uebersetzung);
}

bool MainWindow::istKleinerBildschirm(const QSize &verfuegbar)
{
    return qMin(verfuegbar.width(), verfuegbar.height()) < 1000;
}

void MainWindow::bildschirmAnpassen()
{
    const QScreen *bildschirm = QGuiApplication::primaryScreen();
    if (!bildschirm)
        return;
    if (!m_grosserBildschirm) {
        QFont schrift = QApplication::font();
        schrift.setPixelSize(20);
        setFont(schrift);
    } else {
        qApp->setStyleSheet(QStringLiteral("QCheckBox::indicator{width:50px; height:50px;}"));
    }
    // Replaces the sheet above on a large screen as well; the buttons matter more.
    qApp->setStyleSheet(QLatin1String(ToolButtonStil));
}

void MainWindow::fensterGroesseWaehlen()
{
    const QScreen *bildschirm = QGuiApplication::primaryScreen();
    if (!bildschirm)
        return;
    const QSize verfuegbar = bildschirm->availableSize();
    if (m_grosserBildschirm) {
        resize(minimumSizeHint().expandedTo(QSize(1280, 860)).boundedTo(verfuegbar * 0.9));
        return;
    }
    // A tablet: the whole screen. The smallest size that keeps the pages whole
    // stays the minimum, so the window can still be maximised under a title bar.
    resize(minimumSizeHint().boundedTo(verfuegbar));
    setWindowState(windowState() | Qt::WindowMaximized);
}

void MainWindow::teileEinsetzen()
{
    // The settings tab: the header and the seating side by side, the account
    // and the link below, in the order the focus moves through them.
    ui->glEinstellungen->addWidget(m_kopf->gruppe(), 0, 0);
    ui->glEinstellungen->addWidget(m_blatt->kostenGruppe(), 1, 0, 1, 2);
    ui->glEinstellungen->addWidget(m_verbindung->gruppe(), 2, 0, 1, 2);
    ui->glEinstellungen->addWidget(m_sitze->gruppe(), 0, 1);
    m_eintrag->spielstandEinsetzen(m_stand->anzeige());
    m_blatt->rundenwahlEinsetzen(m_stand->rundenWahl());
    m_eintrag->verlaufEinsetzen(m_verlauf->anzeige());
    m_leiste->teileEinsetzen(m_eintrag->reizungKnopf(), m_eintrag->reizwertFeld(),
                             m_modus->modusLabel(), m_modus->meldungsFeld());
    statusBar()->addPermanentWidget(m_verbindung->anzeige());
}

void MainWindow::teileVerbinden()
{
    connect(this, &MainWindow::messageKartengeber, this, &MainWindow::showKartengeber);
    connect(this, &MainWindow::messageSumme1, this, &MainWindow::setPunkte1);
    connect(this, &MainWindow::messageSumme2, this, &MainWindow::setPunkte2);
    connect(this, &MainWindow::messageSumme3, this, &MainWindow::setPunkte3);
    connect(this, &MainWindow::messageSumme4, this, &MainWindow::setPunkte4);
    connect(this, &MainWindow::spielStandsAnzeigeAufNullSetzen, this,
            &MainWindow::onSpielStandsAnzeigeAufNullSetzen);
    connect(ui->tabWidget, &QTabWidget::currentChanged, this, &MainWindow::onTabChanged);
    connect(m_stand, &StandSteuerung::rundeGewaehlt, this, &MainWindow::bierlachsIndexChanged);

    connect(m_eintrag, &EintragSteuerung::kartengeber, this, &MainWindow::messageKartengeber);
    connect(m_eintrag, &EintragSteuerung::hervorheben, this, &MainWindow::setPunkteHighlited);
    connect(m_eintrag, &EintragSteuerung::spielUebernommen, m_stand,
            &StandSteuerung::rundenEndePruefen);
    connect(m_stand, &StandSteuerung::zeilen, this, &MainWindow::punkteZeilenSenden);

    connect(m_kopf, &KopfSteuerung::laufzustandGeaendert, m_sitze,
            &SitzSteuerung::laufzustandSetzen);
    connect(m_kopf, &KopfSteuerung::laufzustandGeaendert, m_eintrag,
            &EintragSteuerung::laufzustandSetzen);
    connect(m_kopf, &KopfSteuerung::laufzustandGeaendert, m_stand,
            &StandSteuerung::laufzustandSetzen);
    connect(m_kopf, &KopfSteuerung::protokollWirdVorbereitet, m_eintrag,
            &EintragSteuerung::geberAnsageUnterdruecken);
    connect(m_kopf, &KopfSteuerung::protokollVorbereitet, m_eintrag,
            &EintragSteuerung::ersterGeberAnsagen);
    connect(m_kopf, &KopfSteuerung::protokollVorbereitet, this,
            &MainWindow::spielStandsAnzeigeAufNullSetzen);
    connect(m_kopf, &KopfSteuerung::laufzustandGeaendert, m_zweit,
            &ZweitlisteSteuerung::laufzustandSetzen);
    connect(m_kopf, &KopfSteuerung::serieGestartet, m_modus, &ModusSteuerung::serieGestartet);
    connect(m_sitze, &SitzSteuerung::serieStartenGewuenscht, this, &MainWindow::onStartSpiel);
    connect(m_kopf, &KopfSteuerung::listeBenannt, m_leiste, &Werkzeugleiste::listeBenennen);
    connect(m_kopf, &KopfSteuerung::spielerdatenGewuenscht, this,
            &MainWindow::spielerdatenAnfordern);
    connect(m_kopf, &KopfSteuerung::neueListeAngaben, m_netz, &NetzSteuerung::neueListeAngaben);
    connect(m_netz, &NetzSteuerung::spielerVomManager, m_kopf, &KopfSteuerung::namenSperren);
    connect(m_sitze, &SitzSteuerung::sitzeGetauscht, m_eintrag,
            &EintragSteuerung::ersterGeberAnsagen);
    connect(m_dateien, &DateiSteuerung::protokollGeladen, m_kopf, &KopfSteuerung::protokollGeladen);
    connect(m_dateien, &DateiSteuerung::protokollGeladen, m_modus,
            &ModusSteuerung::protokollGeladen);
    connect(m_dateien, &DateiSteuerung::protokollGeladen, m_eintrag,
            &EintragSteuerung::geberAnsagen);

    connect(m_eintrag, &EintragSteuerung::rundenEnde, this, &MainWindow::rundenEnde);
    connect(m_netz, &NetzSteuerung::spielerListe, m_kopf, &KopfSteuerung::ladeSpielerListe);
    connect(m_netz, &NetzSteuerung::gruppe, m_kopf, &KopfSteuerung::gruppeVorgeben);
    connect(m_netz, &NetzSteuerung::auslosung, m_kopf, &KopfSteuerung::auslosungZeigen);
    connect(m_netz, &NetzSteuerung::kosten, m_blatt, &BlattSteuerung::kostenVomManager);
    connect(m_blatt, &BlattSteuerung::ergebnisse, this, [this](const QStringList &ergebnisse) {
        // Built only while no pairing holds them back: a second list's are
        // its first list's again.
        if (!m_paarung->ergebnisseErlaubt())
            return;
        m_rang->aufnehmen(ergebnisse);
        m_netz->ergebnisseSenden(ergebnisse);
    });
    connect(m_netz, &NetzSteuerung::ergebnisseGefragt, m_blatt, &BlattSteuerung::neuBerechnen);
    connect(m_netz, &NetzSteuerung::ergebnisseEmpfangen, m_rang, &RanglistenSteuerung::aufnehmen);
    connect(m_kopf, &KopfSteuerung::protokollVorbereitet, m_zweit,
            [this] { m_zweit->clearProtokoll(false); });
    connect(m_rang, &RanglistenSteuerung::ergebnisseSenden, m_netz,
            &NetzSteuerung::ergebnisseSenden);
    connect(m_netz, &NetzSteuerung::managerErstmals, m_rang, &RanglistenSteuerung::leeren);

    // The second list: the link hands it what concerns the pairing, it sends through the link.
    connect(m_netz, &NetzSteuerung::zweitlisteSpieler, m_zweit,
            &ZweitlisteSteuerung::starteZweitListe);
    connect(m_netz, &NetzSteuerung::ersteListeZeile, m_zweit, &ZweitlisteSteuerung::zeileEmpfangen);
    connect(m_netz, &NetzSteuerung::ersteListeKopie, m_zweit, &ZweitlisteSteuerung::kopieEmpfangen);
    connect(m_netz, &NetzSteuerung::zweitlisteAngefragt, m_zweit,
            &ZweitlisteSteuerung::anfrageBeantworten);
    connect(m_netz, &NetzSteuerung::zweitlisteAbgelehnt, m_zweit, &ZweitlisteSteuerung::abgelehnt);
    connect(m_netz, &NetzSteuerung::partnerAbgemeldet, m_zweit, &ZweitlisteSteuerung::abgemeldet);
    connect(m_zweit, &ZweitlisteSteuerung::senden, m_netz, &NetzSteuerung::senden);
    connect(m_zweit, &ZweitlisteSteuerung::vonHierSenden, m_netz, &NetzSteuerung::vonHierSenden);
    connect(m_zweit, &ZweitlisteSteuerung::zeilenKopieren, m_netz, &NetzSteuerung::zeilenKopieren);
    connect(m_zweit, &ZweitlisteSteuerung::listeBenannt, m_leiste, &Werkzeugleiste::listeBenennen);
    // Another second list may be asked for while none is paired.
    connect(m_paarung, &Paarung::geaendert, this,
            [this] { ui->actionVerbinden->setEnabled(!m_paarung->hatZweitliste()); });
}

void MainWindow::seitenVerbinden()
{
    // The "Neu" page is shown only while a protocol is being prepared.
    ui->tabWidget->removeTab(ui->tabWidget->indexOf(ui->tabNeu));
    ui->tabNeu->hide();
    connect(m_kopf, &KopfSteuerung::seiteZeigen, this, &MainWindow::seiteZeigen);
    connect(m_eintrag, &EintragSteuerung::seiteZeigen, this, &MainWindow::seiteZeigen);
    connect(m_kopf, &KopfSteuerung::neuSeiteOffen, this, &MainWindow::neuSeiteZeigen);
    connect(m_kopf, &KopfSteuerung::seitenFreigeben, this, [this](bool frei) {
        for (int index = 1; index <= 3; ++index)
            ui->tabWidget->setTabEnabled(index, frei);
    });
    // Only the first manager of the evening takes the scorer to the ranking.
    connect(m_netz, &NetzSteuerung::managerErstmals, this, [this] {
        if (ui->tabWidget->indexOf(ui->tabSpielstaende) < 0)
            ui->tabWidget->insertTab(4, ui->tabSpielstaende, QStringLiteral("Spielstaende"));
        ui->tabWidget->setTabEnabled(ui->tabWidget->indexOf(ui->tabSpielstaende), true);
        seiteZeigen(Seite::Spielstaende);
    });
    connect(m_netz, &NetzSteuerung::managerGeaendert, this, [this](bool verbunden) {
        if (verbunden)
            ui->menuZweitliste->setEnabled(true);
    });

    connect(m_eintrag, &EintragSteuerung::dockZeigen, this, &MainWindow::dockZeigen);
    connect(m_modus, &ModusSteuerung::dockZeigen, this, &MainWindow::dockZeigen);
    connect(m_dateien, &DateiSteuerung::dockZeigen, this, &MainWindow::dockZeigen);
    connect(m_zweit, &ZweitlisteSteuerung::dockZeigen, this, &MainWindow::dockZeigen);
    connect(m_eintrag, &EintragSteuerung::statusMeldung, this, &MainWindow::statusZeigen);
    connect(m_stand, &StandSteuerung::statusMeldung, this, &MainWindow::statusZeigen);
    connect(m_blatt, &BlattSteuerung::statusMeldung, this, &MainWindow::statusZeigen);
    connect(m_netz, &NetzSteuerung::statusMeldung, this, &MainWindow::statusZeigen);
    connect(m_verbindung, &VerbindungsSteuerung::statusMeldung, this, &MainWindow::statusZeigen);
    connect(m_zweit, &ZweitlisteSteuerung::statusMeldung, this, &MainWindow::statusZeigen);
    connect(m_dateien, &DateiSteuerung::hinweis, this, [this](const QString &hinweis) {
        statusBar()->showMessage(
            QStringLiteral("%1 %2").arg(hinweis, statusBar()->currentMessage()));
    });
}

void MainWindow::seiteZeigen(Seite seite)
{
    QWidget *const seiten[] = {ui->tabEinstellungen, ui->tabUebersicht,   ui->tabSpieleintrag,
                               ui->tabSpieleListe,   ui->tabSpielstaende, ui->tabNeu,
                               ui->tabBeschreibung};
    ui->tabWidget->setCurrentWidget(seiten[static_cast<int>(seite)]);
}

void MainWindow::neuSeiteZeigen(bool offen)
{
    QTabWidget *reiter = ui->tabWidget;
    if (offen) {
        reiter->insertTab(5, ui->tabNeu, QStringLiteral("Neu"));
        reiter->setTabEnabled(5, true);
        ui->tabNeu->show();
        reiter->setCurrentWidget(ui->tabNeu);
        return;
    }
    const int index = reiter->indexOf(ui->tabNeu);
    if (index >= 0) {
        reiter->setTabEnabled(index, false);
        reiter->removeTab(index);
    }
    ui->tabNeu->hide();
    reiter->setCurrentIndex(0);
}

void MainWindow::statusZeigen(const QString &text, int dauer)
{
    statusBar()->showMessage(text, dauer);
}

void MainWindow::dockZeigen(QDockWidget *dock)
{
    addDockWidget(Qt::TopDockWidgetArea, dock);
}

void MainWindow::menuesVerbinden()
{
    connect(ui->actionNeu, &QAction::triggered, this, &MainWindow::onNewProtokoll);
    connect(ui->actionLaden, &QAction::triggered, this, &MainWindow::onLoadXml);
    connect(ui->actionSpeichern, &QAction::triggered, this,
            QOverload<>::of(&MainWindow::onSaveListe));
    connect(ui->actionDatenbankZuruecksetzen, &QAction::triggered, this,
            &MainWindow::onDeleteDatabase);
    connect(ui->actionInfoKartulo, &QAction::triggered, this, &MainWindow::infoKartulo);
    connect(ui->actionEinstellungen, &QAction::triggered, this, &MainWindow::onEinstellungen);
    connect(ui->actionVerbinden, &QAction::triggered, this, &MainWindow::startZweitProtokoll);
    connect(ui->actionTrennen, &QAction::triggered, this,
            QOverload<>::of(&MainWindow::onZweitListeFreigeben));
    connect(ui->actionLeeren, &QAction::triggered, this, &MainWindow::onClearProtokoll);
    connect(ui->actionTurnier, &QAction::triggered, this, &MainWindow::onSetModusTurnier);
    connect(ui->actionErgebnis, &QAction::triggered, this, &MainWindow::onSetModusErgebnis);
    connect(ui->actionBierlachs, &QAction::triggered, this, &MainWindow::onSetModusBierlachs);
    m_modi = new QActionGroup(this);
    m_modi->setExclusive(true);
    for (QAction *aktion : {ui->actionTurnier, ui->actionErgebnis, ui->actionBierlachs})
        m_modi->addAction(aktion);
    ui->actionTurnier->setChecked(true);
    connect(m_modus, &ModusSteuerung::modusGewaehlt, this, [this](int modus) {
        if (QAction *aktion = m_modi->actions().value(modus))
            aktion->setChecked(true);
    });
    // Usable only once a tournament manager is connected.
    ui->menuZweitliste->setEnabled(false);
}

void MainWindow::datenbankOeffnen(ProtokollDatenbank::Zustand zustand)
{
    using Zustand = ProtokollDatenbank::Zustand;
    // The guide is there to read whether or not a list is resumed.
    m_hilfe->zeigeSeite(QStringLiteral("Kurzanleitung"));
    if (zustand == Zustand::Gespeichert) {
        m_kopf->wiederherstellen();
        m_modus->wiederherstellen();
        m_eintrag->wiederherstellen();
        return;
    }
    if (zustand == Zustand::Unbenutzbar || zustand == Zustand::Fremd) {
        // The file is left alone; the window goes on without a protocol.
        QMessageBox::warning(this, QStringLiteral("WARNUNG"), m_dienst->fehlerText());
        statusBar()->showMessage(m_dienst->ausweg());
    }
    m_kopf->anfangszustand();
}

void MainWindow::onDeleteDatabase()
{
    if (QMessageBox::question(this, QStringLiteral("FRAGE"),
                              QStringLiteral("Datenbank zuruecksetzen?"),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    const DienstErgebnis ergebnis = m_dienst->zuruecksetzen();
    if (!ergebnis.ok()) {
        QMessageBox::warning(this, QStringLiteral("WARNUNG"), ergebnis.fehler);
        return;
    }
    m_zweit->clearProtokoll(false);
    datenbankOeffnen(m_dienst->zustand());
}

void MainWindow::punkteZeilenSenden(const QStringList &zeilen)
{
    emit messageSumme1(zeilen.value(0));
    emit messageSumme2(zeilen.value(1));
    emit messageSumme3(zeilen.value(2));
    emit messageSumme4(zeilen.value(3));
}

void MainWindow::onSpielStandsAnzeigeAufNullSetzen()
{
    m_stand->leeren();
    m_rang->onSpielStandsAnzeigeAufNullSetzen();
}

void MainWindow::onEinstellungen()
{
    // The standings and the backup follow the store through the list's announcements.
    DlgSettings dialog(*m_einstellungen, m_netz->wlanBenutzt(), this);
    connect(&dialog, &DlgSettings::wlanBenutzen, this, &MainWindow::onWlanBenutzen);
    dialog.exec();
}

void MainWindow::rundenEnde()
{
    if (!m_netz->rundenEndeFragen())
        return;
    onSaveListe(false);
    m_netz->blattSenden(m_blatt->pdfPfad());
}

void MainWindow::bierlachsIndexChanged(int index)
{
    m_stand->rundeZeigen(index);
    m_blatt->rundeWaehlen(index);
}

void MainWindow::onSaveListe(bool frageDateiname)
{
    const QString xmlPfad = m_blatt->pdfSpeichern(frageDateiname);
    if (!xmlPfad.isEmpty())
        m_dateien->xmlSpeichern(xmlPfad);
}

void MainWindow::onTeilnehmerInserted(int row, QSqlRecord &record)
{
    ListenDienst::teilnehmerVorbelegen(row, record);
}

void MainWindow::infoKartulo()
{
    const QString version =
        QStringLiteral("%1.%2.%3").arg(Version::Major).arg(Version::Minor).arg(Version::Patch);
    QMessageBox::information(this, QStringLiteral("Kartulo"),
                             QStringLiteral("Ormindo Vereinssoftware\n"
                                            "Version %1\n"
                                            "www.ormindo.de\n"
                                            "Anregungen - Fehler melden\n"
                                            "kartulo@ormindo.de")
                                 .arg(version),
                             QMessageBox::Ok);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    const auto antwort = QMessageBox::question(this, QStringLiteral("FRAGE"),
                                               QStringLiteral("%1 beenden?").arg(windowTitle()),
                                               QMessageBox::Yes | QMessageBox::No);
    if (antwort != QMessageBox::Yes) {
        event->ignore();
        return;
    }
    m_kopf->schliessen();
    // A second list tells its first list that it goes.
    m_zweit->onZweitListeFreigeben(false);
    m_einstellungen->spielstopzeitSetzen(QStringLiteral("openend"));
    event->accept();
}
