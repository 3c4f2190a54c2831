// Entering a computed game into the list, the dealer, editing and deleting
// entries, and the bid dock.

#include "app/mainwindow.h"

#include "game/dockreizung.h"
#include "game/panelstellung.h"
#include "sheets/skatjornal.h"
#include "standings/spielmodus.h"
#include "ui_mainwindow.h"

#include <QButtonGroup>
#include <QLabel>
#include <QMessageBox>
#include <QSettings>
#include <QSqlTableModel>
#include <QStandardItemModel>
#include <QStatusBar>

void MainWindow::onWartenAufEintrag()
{
    spielInListeEintragen();
}

void MainWindow::spielInListeEintragen()
{
    wartenTimer.stop();
    ui->pbInListeEintragen->setEnabled(false);
    if (QMessageBox::question(this, QStringLiteral("FRAGE"),
                              QStringLiteral("%1\n%2").arg(ui->leSpielBeschreibung->text(),
                                                           QStringLiteral("Ergebnis korrekt?")),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    geberAnsageUnterdrueckt = false;

    const int spielNummer = datenbank->letzteZeile() + 1;
    if (spielNummer == 1) {
        // A Bierlachs list needs points to play down from.
        if (modus == Spielmodus::Bierlachs && bierlachsMaxPunkte <= 0) {
            bierlachsMaxPunkte = 500;
            lblModus->setText(Spielmodus::menuText(modus, bierlachsMaxPunkte));
        }
        kopfSchreiben();
        teilnehmerModel->submitAll();
    }

    if (bearbeitungsModus) {
        if (!leReizwert->text().isEmpty())
            aktuellesSpiel.setze(SpielEintrag::Reizung, leReizwert->text().toInt());
        aktuellesSpiel.setze(SpielEintrag::Zeile, bearbeiteteZeile);
        datenbank->aendern(aktuellesSpiel);
        jornalEintragen(aktuellesSpiel, JornalEintrag::Geaendert);
        bearbeitungsModus = false;
    } else {
        if (ui->spbSpielAnzahl->value() < spielNummer) {
            if (modus == Spielmodus::Turnier) {
                const int geplant = ui->spbSpielAnzahl->value();
                QMessageBox::information(
                    this, QStringLiteral("INFORMATION"),
                    QStringLiteral("Anzahl von %1 Spielen erreicht.").arg(geplant));
                ui->leSpielBeschreibung->setText(
                    QStringLiteral("%1 Spiele gespielt. ListenEnde.").arg(geplant));
                settings->setValue(QStringLiteral("spielstopzeit"), QStringLiteral("openend"));
                return;
            }
            // Result and Bierlachs lists go on in steps of ten games.
            ui->spbSpielAnzahl->setValue(ui->spbSpielAnzahl->value() + 10);
        }
        aktuellesSpiel.setze(SpielEintrag::Zeile, spielNummer);
        datenbank->einfuegen(aktuellesSpiel);
        jornalEintragen(aktuellesSpiel, JornalEintrag::Normal);
    }

    uebersichtFuellen();
    blattFuellen();
    setPunkteHighlited(bgSpieler->checkedId() - PanelId::Spieler1);
    panelZuruecksetzen();
    const int anzahl = datenbank->anzahlEintraege();
    if (anzahl > 0)
        geber = anzahl % listenTyp;
    spielStandAktualisieren(true);
    if (modus == Spielmodus::Bierlachs)
        bierlachsRundenEnde(datenbank->letzteZeile());

    ui->lcdNumber->display(spielNummer);
    aktuellesSpiel = SpielEintrag();
    aktuellesSpiel.setze(SpielEintrag::Zeile, spielNummer);
    ui->spbSpielAnzahl->setEnabled(false);
    leReizwert->clear();
}

void MainWindow::spielerKnoepfeFreigeben()
{
    const QList<QToolButton *> knoepfe{ui->tbSpieler1, ui->tbSpieler2, ui->tbSpieler3,
                                       ui->tbSpieler4};
    for (int sitz = 0; sitz < 3; ++sitz)
        knoepfe.at(sitz)->setEnabled(true);
    if (listenTyp == 4) {
        // At a table of four the dealer sits out this game.
        knoepfe.at(3)->setEnabled(true);
        knoepfe.at(geber)->setEnabled(false);
    }
}

void MainWindow::showKartengeber(QString text)
{
    spielerKnoepfeFreigeben();
    if (uebersichtModel->rowCount() != ui->spbSpielAnzahl->value()) {
        statusBar()->showMessage(text);
        if (!geberAnsageUnterdrueckt)
            QMessageBox::information(this, QStringLiteral("INFO"), text);
        return;
    }
    QMessageBox::information(this, QStringLiteral("INFORMATION"),
                             QStringLiteral("Rundenende erreicht!"));
}

void MainWindow::onUebersichtDoubleClicked(QModelIndex index)
{
    const int zeile = index.row() + 1;
    if (!uebersichtModel->item(index.row(), 0))
        return;
    if (QMessageBox::question(this, QStringLiteral("FRAGE"),
                              QStringLiteral("Spiel Nr %1 bearbeiten?").arg(zeile),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    if (listenTyp == 4) {
        for (QToolButton *knopf : {ui->tbSpieler1, ui->tbSpieler2, ui->tbSpieler3, ui->tbSpieler4})
            knopf->setEnabled(true);
    }
    const std::optional<SpielEintrag> eintrag = datenbank->spiel(zeile);
    if (!eintrag || (*eintrag)[SpielEintrag::Zeile] != zeile)
        return;
    aktuellesSpiel = *eintrag;
    bearbeiteteZeile = zeile;
    spielInPanel(*eintrag);
    // The stored bid stays unless the scorer changes it.
    const int reizung = (*eintrag)[SpielEintrag::Reizung];
    leReizwert->setText(reizung > 0 ? QString::number(reizung) : QString());
    ui->pbInListeEintragen->setEnabled(false);
    ui->tabWidget->setCurrentWidget(ui->tabSpieleintrag);
}

void MainWindow::onSpielEintragBearbeiten()
{
    const QModelIndex index = ui->tblViewUebersicht->currentIndex();
    if (index.row() >= 0 && index.column() >= 0)
        onUebersichtDoubleClicked(index);
}

void MainWindow::onSpielEintragLoeschen()
{
    const QModelIndex index = ui->tblViewUebersicht->currentIndex();
    if (!index.isValid() || index.row() < 0 || index.column() < 0)
        return;
    const int zeile = uebersichtModel->item(index.row(), 0)->text().toInt();
    if (QMessageBox::question(this, QStringLiteral("FRAGE"),
                              QStringLiteral("Zeile %1 wirklich entfernen?").arg(zeile),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    if (const std::optional<SpielEintrag> geloescht = datenbank->spiel(zeile))
        jornalEintragen(*geloescht, JornalEintrag::Geloescht);
    datenbank->entfernen(zeile);
    uebersichtFuellen();
    blattFuellen();
    geber = datenbank->anzahlEintraege() % listenTyp;
    spielStandAktualisieren(true);
}

void MainWindow::onDockReizung()
{
    if (dockReizung)
        return;
    dockReizung = new DockReizung(this);
    dockReizung->setFeatures(QDockWidget::NoDockWidgetFeatures);
    dockReizung->setAllowedAreas(Qt::TopDockWidgetArea);
    addDockWidget(Qt::TopDockWidgetArea, dockReizung);
    connect(dockReizung, &DockReizung::reizWertSelected, this, &MainWindow::onSelectedReizWert);
    dockReizung->show();
}

void MainWindow::onSelectedReizWert(int value)
{
    if (dockReizung) {
        removeDockWidget(dockReizung);
        dockReizung->deleteLater();
        dockReizung = nullptr;
    }
    if (value == 0)
        leReizwert->clear();
    else
        leReizwert->setText(QStringLiteral("%1").arg(value));
}
