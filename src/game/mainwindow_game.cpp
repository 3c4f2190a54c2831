// The entry panel: its button groups and the game record shown on it.

#include "app/mainwindow.h"

#include "game/panelstellung.h"
#include "ui_mainwindow.h"

#include <QButtonGroup>
#include <QStatusBar>

void MainWindow::panelGruppenAnlegen()
{
    bgMatadorModus = new QButtonGroup(this);
    bgMatadorModus->addButton(ui->tbMit, PanelId::Mit);
    bgMatadorModus->addButton(ui->tbOhne, PanelId::Ohne);

    bgMatadorAnzahl = new QButtonGroup(this);
    const QList<QToolButton *> anzahl{ui->tb1, ui->tb2, ui->tb3, ui->tb4,  ui->tb5, ui->tb6,
                                      ui->tb7, ui->tb8, ui->tb9, ui->tb10, ui->tb11};
    for (int i = 0; i < anzahl.size(); ++i)
        bgMatadorAnzahl->addButton(anzahl.at(i), i + 1);

    bgErgebnis = new QButtonGroup(this);
    bgErgebnis->addButton(ui->tbGewonnen, PanelId::Gewonnen);
    bgErgebnis->addButton(ui->tbVerloren, PanelId::Verloren);

    bgSpieler = new QButtonGroup(this);
    const QList<QToolButton *> spieler{ui->tbSpieler1, ui->tbSpieler2, ui->tbSpieler3,
                                       ui->tbSpieler4};
    for (int sitz = 0; sitz < spieler.size(); ++sitz)
        bgSpieler->addButton(spieler.at(sitz), PanelId::Spieler1 + sitz);

    bgSpielTyp = new QButtonGroup(this);
    const QList<QToolButton *> typen{ui->tbKaro,  ui->tbHerz, ui->tbPik,       ui->tbKreuz,
                                     ui->tbGrang, ui->tbNull, ui->tbEingepasst};
    for (int i = 0; i < typen.size(); ++i)
        bgSpielTyp->addButton(typen.at(i), PanelId::Karo + i);

    ui->tbKreuz->setChecked(true);
    ui->tbMit->setChecked(true);
    ui->tb1->setChecked(true);
    ui->tbGewonnen->setChecked(true);
}

void MainWindow::spielInPanel(const SpielEintrag &eintrag)
{
    bearbeitungsModus = true;
    ui->lcdNumber->display(eintrag[SpielEintrag::Zeile]);
    panelStellungAnwenden(PanelStellung::ausEintrag(eintrag));
}

void MainWindow::panelStellungAnwenden(const PanelStellung &stellung)
{
    // A value that selects no button of an exclusive group must clear it.
    const auto waehle = [](QButtonGroup *gruppe, int id) {
        if (QAbstractButton *knopf = gruppe->button(id)) {
            knopf->setChecked(true);
            return;
        }
        if (QAbstractButton *gewaehlt = gruppe->checkedButton()) {
            gruppe->setExclusive(false);
            gewaehlt->setChecked(false);
            gruppe->setExclusive(true);
        }
    };
    waehle(bgSpielTyp, stellung.spielTyp);
    if (stellung.matadorModus != PanelId::Keine) {
        waehle(bgMatadorModus, stellung.matadorModus);
        waehle(bgMatadorAnzahl, stellung.matadorAnzahl);
    }
    ui->tbHand->setChecked(stellung.hand);
    ui->tbSchneider->setChecked(stellung.schneider);
    ui->tbSchneiderAngesagt->setChecked(stellung.schneiderAngesagt);
    ui->tbSchneiderSchwarz->setChecked(stellung.schwarz);
    ui->tbSchwarzAngesagt->setChecked(stellung.schwarzAngesagt);
    ui->tbOffen->setChecked(stellung.offen);
    if (stellung.ergebnis != PanelId::Keine)
        waehle(bgErgebnis, stellung.ergebnis);
    for (int id : stellung.spieler)
        waehle(bgSpieler, id);
}

void MainWindow::onWartenAufEintrag() {}

void MainWindow::showKartengeber(QString text)
{
    statusBar()->showMessage(text);
}

void MainWindow::setPunkte1(QString text)
{
    ui->lePunkte1->setText(text);
}

void MainWindow::setPunkte2(QString text)
{
    ui->lePunkte2->setText(text);
}

void MainWindow::setPunkte3(QString text)
{
    ui->lePunkte3->setText(text);
}

void MainWindow::setPunkte4(QString text)
{
    ui->lePunkte4->setText(text);
}
