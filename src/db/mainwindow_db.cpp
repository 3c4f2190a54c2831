// Opening, restoring and resetting the protocol database.

#include "app/mainwindow.h"

#include "help/helpwidget.h"
#include "standings/spielmodus.h"
#include "ui_mainwindow.h"

#include <QActionGroup>
#include <QLabel>
#include <QMessageBox>
#include <QSqlTableModel>
#include <QStandardItemModel>
#include <QStatusBar>

void MainWindow::datenbankOeffnen()
{
    datenbank = std::make_unique<ProtokollDatenbank>(datenVerzeichnis);
    switch (datenbank->oeffnen()) {
    case ProtokollDatenbank::Zustand::Unbenutzbar:
    case ProtokollDatenbank::Zustand::Fremd:
        // The file is left alone; the window goes on without a protocol.
        QMessageBox::warning(this, QStringLiteral("WARNUNG"),
                             QStringLiteral("Die Datenbank\n%1\nkann nicht benutzt werden.\n%2")
                                 .arg(datenbank->dateiName(), datenbank->fehler()));
        anfangszustandZeigen();
        return;
    case ProtokollDatenbank::Zustand::Neu:
        teilnehmerModellEinrichten();
        aktuellesSpiel = SpielEintrag();
        anfangszustandZeigen();
        return;
    case ProtokollDatenbank::Zustand::OhneSpieler:
        teilnehmerModellEinrichten();
        anfangszustandZeigen();
        return;
    case ProtokollDatenbank::Zustand::Gespeichert:
        teilnehmerModellEinrichten();
        protokollWiederherstellen();
        return;
    }
}

void MainWindow::anfangszustandZeigen()
{
    ui->tabWidget->setCurrentWidget(ui->tabBeschreibung);
    helpWidget->zeigeSeite(QStringLiteral("Kurzanleitung"));
    for (int index = 1; index <= 3; ++index)
        ui->tabWidget->setTabEnabled(index, false);
}

void MainWindow::protokollWiederherstellen()
{
    geberAnsageUnterdrueckt = true;
    const int teilnehmer = teilnehmerModel->rowCount();
    if (teilnehmer == 3)
        on3erListe(true);
    else if (teilnehmer == 4)
        on4erListe(true);
    kopfLesen();
    blattNeuZeichnen();
    uebersichtFuellen();
    setzeLaufzustand(true);
    lblModus->setText(Spielmodus::wiederherstellungsText(modus, bierlachsMaxPunkte));
    ui->cmbBierlachs->setVisible(modus == Spielmodus::Bierlachs);
    const QList<QAction *> modusAktionen = modusGruppe->actions();
    if (modus >= 0 && modus < modusAktionen.size())
        modusAktionen.at(modus)->setChecked(true);
    if (ui->spbTischNr->value() != 0)
        lblListe->setText(QStringLiteral("Erstliste Tisch %1").arg(ui->spbTischNr->value()));
    geber = datenbank->anzahlEintraege() % listenTyp;
    spielerKnoepfeFreigeben();
    ui->lcdNumber->display(datenbank->letzteZeile());
    spielStandAktualisieren(false);
    statusBar()->showMessage(QStringLiteral("Geber %1").arg(teilnehmerName(geber)));
    zeitLimitWiederherstellen();
    jornalWiederherstellen();
}

void MainWindow::uebersichtFuellen()
{
    uebersichtModel->removeRows(0, uebersichtModel->rowCount());
    for (const SpielEintrag &eintrag : datenbank->spiele()) {
        QList<QStandardItem *> zeile;
        for (int spalte = 0; spalte < SpielEintrag::AnzahlSpalten; ++spalte)
            zeile << new QStandardItem(QStringLiteral("%1").arg(eintrag.wert(spalte)));
        uebersichtModel->appendRow(zeile);
    }
}

void MainWindow::onDeleteDatabase()
{
    if (QMessageBox::question(this, QStringLiteral("FRAGE"),
                              QStringLiteral("Datenbank zuruecksetzen?"),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    // The model holds a handle on the connection, which is about to go.
    delete teilnehmerModel;
    teilnehmerModel = nullptr;
    datenbank->zuruecksetzen();
    uebersichtModel->removeRows(0, uebersichtModel->rowCount());
    datenbankOeffnen();
}
