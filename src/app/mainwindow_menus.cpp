// The menu bar and the slots of its entries that belong to no other folder.

#include "app/mainwindow.h"

#include "ui_mainwindow.h"

#include <QActionGroup>
#include <QLabel>

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

    modusGruppe = new QActionGroup(this);
    modusGruppe->setExclusive(true);
    for (QAction *aktion : {ui->actionTurnier, ui->actionErgebnis, ui->actionBierlachs})
        modusGruppe->addAction(aktion);
    ui->actionTurnier->setChecked(true);

    // Usable only once a tournament manager is connected.
    ui->menuZweitliste->setEnabled(false);
}

// Entries whose work arrives with their own subsystems; until then choosing
// them changes nothing.
void MainWindow::onEinstellungen() {}
void MainWindow::startZweitProtokoll() {}
void MainWindow::onZweitListeFreigeben()
{
    onZweitListeFreigeben(true);
}
void MainWindow::onZweitListeFreigeben(bool ask)
{
    Q_UNUSED(ask);
}
void MainWindow::onClearProtokoll() {}
void MainWindow::CheckRecordGegenRecordVonErsterListe() {}
