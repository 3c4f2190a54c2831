#include "app/mainwindow.h"

#include "app/version.h"
#include "help/helpwidget.h"
#include "sheets/skatjornal.h"
#include "sheets/spielblatt.h"
#include "ui_mainwindow.h"
#include "velmora/client.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QSqlTableModel>
#include <QStandardItemModel>
#include <QToolBar>

namespace {

const char *const ToolButtonStil =
    "QToolButton {border:2px solid #8f8f91;border-radius: 6px;background-color: "
    "qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1, stop: 0 #eee8aa, stop: 1 "
    "#b0b76b);}QToolButton:checked {background-color: qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1, "
    "stop: 0 #008fff, stop: 1 #87ceeb);}";

void textFarbeSetzen(QLineEdit *feld, const QColor &farbe)
{
    QPalette palette = feld->palette();
    for (auto gruppe : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        palette.setColor(gruppe, QPalette::Text, farbe);
    feld->setPalette(palette);
}

} // namespace

MainWindow::MainWindow(QWidget *parent) : QMainWindow(parent), ui(new Ui::MainWindow)
{
    // The images live in this static library; nothing else would pull them in.
    Q_INIT_RESOURCE(kartulo);
    ui->setupUi(this);
    // The new-protocol page is shown only while a protocol is being prepared.
    tabNeuSeite = ui->tabNeu;
    ui->tabWidget->removeTab(ui->tabWidget->indexOf(tabNeuSeite));
    tabNeuSeite->hide();

    anwendungsIdentitaetSetzen();
    einstellungenLaden();
    listenWidgetsVerbinden();
    werkzeugleisteAnlegen();
    signaleVerbinden();
    menuesVerbinden();
    client = new Client(QStringLiteral("Kartulo"), this);
    bildschirmAnpassen();
    tabellenEinrichten();
    timerAnlegen();
    datenbankOeffnen();

    setWindowTitle(QStringLiteral("Kartulo"));
    setMinimumSize(size());

    const QString verzeichnis = Einstellungen::datenVerzeichnis();
    if (!verzeichnis.isEmpty())
        QDir().mkpath(verzeichnis);
    if (verzeichnis.isEmpty())
        QMessageBox::warning(this, QStringLiteral("WARNUNG"),
                             QStringLiteral("Hat Kartulo Berechtigung zum Speichern von Daten?"));
}

MainWindow::~MainWindow()
{
    // The model holds the connection, which the database closes when it goes.
    delete teilnehmerModel;
}

void MainWindow::anwendungsIdentitaetSetzen()
{
    QCoreApplication::setOrganizationName(Einstellungen::organisationsName());
    QCoreApplication::setApplicationName(Einstellungen::anwendungsName());
    QCoreApplication::setOrganizationDomain(Einstellungen::organisationsDomain());
}

void MainWindow::einstellungenLaden()
{
    settings = std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                           Einstellungen::organisationsName(),
                                           Einstellungen::anwendungsName());
    datenVerzeichnis = Einstellungen::datenVerzeichnis();
    if (!datenVerzeichnis.isEmpty() && !QDir(datenVerzeichnis).exists())
        QDir().mkpath(datenVerzeichnis);
    einstellungen = std::make_unique<Einstellungen>(*settings);
    einstellungen->laden(datenVerzeichnis);
    kosten = einstellungen->kosten();
    vereinsname = einstellungen->vereinsname();
}

void MainWindow::listenWidgetsVerbinden()
{
    connect(ui->pbVergroessern, &QPushButton::clicked, this, &MainWindow::onZoomIn);
    connect(ui->pbVerkleinern, &QPushButton::clicked, this, &MainWindow::onZoomOut);
    connect(ui->cmbBierlachs, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &MainWindow::bierlachsIndexChanged);
    connect(ui->tblViewUebersicht, &QTableView::doubleClicked, this,
            &MainWindow::onUebersichtDoubleClicked);
    ui->tblViewUebersicht->addAction(ui->actionEintragAendern);
    ui->tblViewUebersicht->addAction(ui->actionEintragLoeschen);
    connect(ui->actionEintragAendern, &QAction::triggered, this,
            &MainWindow::onSpielEintragBearbeiten);
    connect(ui->actionEintragLoeschen, &QAction::triggered, this,
            &MainWindow::onSpielEintragLoeschen);
    connect(ui->tabWidget, &QTabWidget::currentChanged, this, &MainWindow::onTabChanged);
}

void MainWindow::werkzeugleisteAnlegen()
{
    auto *leiste = new QToolBar(this);
    leiste->setObjectName(QStringLiteral("toolBar"));
    leiste->setMovable(false);
    addToolBar(Qt::TopToolBarArea, leiste);

    auto *inhalt = new QWidget(leiste);
    auto *layout = new QHBoxLayout(inhalt);
    layout->setContentsMargins(4, 2, 4, 2);

    lblListe = new QLabel(QStringLiteral("Liste"), inhalt);
    lblListe->setObjectName(QStringLiteral("lblListe"));
    pbReizung = new QPushButton(QStringLiteral("Reizung"), inhalt);
    pbReizung->setObjectName(QStringLiteral("pbReizung"));
    leReizwert = new QLineEdit(inhalt);
    leReizwert->setObjectName(QStringLiteral("leReizwert"));
    leReizwert->setReadOnly(true);
    leReizwert->setValidator(new QIntValidator(18, 264, leReizwert));
    leReizwert->setMaximumWidth(100);
    lblModus = new QLabel(QStringLiteral("Turniermodus"), inhalt);
    lblModus->setObjectName(QStringLiteral("lblModus"));
    lblModus->setAlignment(Qt::AlignCenter);
    leMeldungRot = new QLineEdit(inhalt);
    leMeldungRot->setObjectName(QStringLiteral("leMeldungRot"));
    leMeldungRot->setReadOnly(true);
    textFarbeSetzen(leMeldungRot, Qt::red);
    leMeldungGruen = new QLineEdit(inhalt);
    leMeldungGruen->setObjectName(QStringLiteral("leMeldungGruen"));
    leMeldungGruen->setReadOnly(true);
    textFarbeSetzen(leMeldungGruen, Qt::darkGreen);

    layout->addWidget(lblListe, 10);
    layout->addWidget(pbReizung, 10);
    layout->addWidget(leReizwert, 10);
    layout->addWidget(lblModus, 10);
    layout->addWidget(leMeldungRot, 20);
    layout->addWidget(leMeldungGruen, 40);
    leiste->addWidget(inhalt);
    connect(pbReizung, &QPushButton::clicked, this, &MainWindow::onDockReizung);
}

void MainWindow::signaleVerbinden()
{
    connect(this, &MainWindow::messageKartengeber, this, &MainWindow::showKartengeber);
    connect(this, &MainWindow::messageSumme1, this, &MainWindow::setPunkte1);
    connect(this, &MainWindow::messageSumme2, this, &MainWindow::setPunkte2);
    connect(this, &MainWindow::messageSumme3, this, &MainWindow::setPunkte3);
    connect(this, &MainWindow::messageSumme4, this, &MainWindow::setPunkte4);
    connect(this, &MainWindow::spielStandsAnzeigeAufNullSetzen, this,
            &MainWindow::onSpielStandsAnzeigeAufNullSetzen);
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
    if (istKleinerBildschirm(bildschirm->availableSize())) {
        grosserBildschirm = false;
        QFont schrift = QApplication::font();
        schrift.setPixelSize(20);
        setFont(schrift);
    } else {
        qApp->setStyleSheet(QStringLiteral("QCheckBox::indicator{width:50px; height:50px;}"));
    }
    // Replaces the sheet above on a large screen as well; the buttons matter more.
    qApp->setStyleSheet(QLatin1String(ToolButtonStil));
}

void MainWindow::tabellenEinrichten()
{
    uebersichtModel = new QStandardItemModel(this);
    uebersichtModel->setHorizontalHeaderLabels(
        {QStringLiteral("Nr"), QStringLiteral("Spiel"), QStringLiteral("Mit"),
         QStringLiteral("Ohne"), QStringLiteral("Hand"), QStringLiteral("Schneider"),
         QStringLiteral("AngSchn"), QStringLiteral("Schwarz"), QStringLiteral("AngSchw"),
         QStringLiteral("Offen"), QStringLiteral("Gew"), QStringLiteral("Verl"),
         QStringLiteral("Spieler1"), QStringLiteral("Spieler2"), QStringLiteral("Spieler3"),
         QStringLiteral("Spieler4"), QStringLiteral("Eingepasst"), QStringLiteral("Reizung")});
    ui->tblViewUebersicht->setModel(uebersichtModel);
    jornal = new SkatJornal(this);
    teilnehmerTabelleEinrichten();
    kopfFelderVerbinden();
    kostenFelderEinrichten();
    ui->deDatum->setDate(listenDatum);
    ui->leListenName->setText(vereinsname);
    panelGruppenAnlegen();
    connect(ui->pbInListeEintragen, &QPushButton::clicked, this,
            &MainWindow::spielInListeEintragen);
    helpWidget = new HelpWidget(ui->tabBeschreibung);
    ui->vlBeschreibung->addWidget(helpWidget);
}

void MainWindow::timerAnlegen()
{
    // Named children, so the timers can be looked up like any widget.
    for (auto [timer, name] :
         {std::pair{&wartenTimer, "wartenTimer"},
          std::pair{&sicherheitskopieTimer, "sicherheitskopieTimer"},
          std::pair{&checkTimer, "checkTimer"}, std::pair{&restZeitTimer, "restZeitTimer"}}) {
        timer->setParent(this);
        timer->setObjectName(QLatin1String(name));
    }
    wartenTimer.setSingleShot(true);
    wartenTimer.setInterval(10000);
    connect(&wartenTimer, &QTimer::timeout, this, &MainWindow::onWartenAufEintrag);

    sicherheitskopieTimer.setInterval(einstellungen->sicherheitskopieIntervallMs());
    connect(&sicherheitskopieTimer, &QTimer::timeout, this,
            &MainWindow::onSicherheitsKopieSpeichern);
    sicherheitskopieTimer.start();

    checkTimer.setInterval(5000);
    connect(&checkTimer, &QTimer::timeout, this, &MainWindow::CheckRecordGegenRecordVonErsterListe);

    restZeitTimer.setInterval(300000);
    connect(&restZeitTimer, &QTimer::timeout, this, &MainWindow::onZeigeRestZeitLimit);
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
    kopfSchreiben();
    settings->setValue(QStringLiteral("spielstopzeit"), QStringLiteral("openend"));
    event->accept();
}

void MainWindow::onTabChanged(int index)
{
    Q_UNUSED(index);
}

void MainWindow::onZoomIn()
{
    zoomFaktor += 0.2;
    // At the limits the factor is clamped but the view keeps its last scale,
    // so the next step in the other direction shows at once.
    if (zoomFaktor > 5.0) {
        zoomFaktor = 5.0;
        return;
    }
    ui->gvSpieleListe->setTransform(QTransform::fromScale(zoomFaktor, zoomFaktor));
}

void MainWindow::onZoomOut()
{
    zoomFaktor -= 0.2;
    if (zoomFaktor < 0.5) {
        zoomFaktor = 0.5;
        return;
    }
    ui->gvSpieleListe->setTransform(QTransform::fromScale(zoomFaktor, zoomFaktor));
}
