// The entry panel: its button groups and the game record shown on it.

#include "app/mainwindow.h"

#include "game/panelstellung.h"
#include "game/spielwert.h"
#include "ui_mainwindow.h"

#include <QButtonGroup>
#include <QMessageBox>

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

    connect(ui->pbFertig, &QPushButton::clicked, this, &MainWindow::onFertig);
    connect(ui->tbSchneider, &QToolButton::toggled, this, &MainWindow::onSchneider);
    connect(ui->tbSchneiderSchwarz, &QToolButton::toggled, this, &MainWindow::onSchwarz);
    connect(ui->tbGrang, &QToolButton::toggled, this, &MainWindow::onGrang);
    connect(ui->tbNull, &QToolButton::toggled, this, &MainWindow::onNull);
    connect(ui->tbEingepasst, &QToolButton::toggled, this, &MainWindow::onEingepasst);

    onSchneider(false);
    onSchwarz(false);
    ui->tbKreuz->setChecked(true);
    ui->tbMit->setChecked(true);
    ui->tb1->setChecked(true);
    ui->tbGewonnen->setChecked(true);
}

void MainWindow::onSchneider(bool gesetzt)
{
    ui->tbSchneiderSchwarz->setChecked(false);
    ui->tbSchneiderAngesagt->setChecked(false);
    ui->tbSchneiderSchwarz->setEnabled(gesetzt);
    ui->tbSchneiderAngesagt->setEnabled(gesetzt);
}

void MainWindow::onSchwarz(bool gesetzt)
{
    if (!gesetzt)
        ui->tbSchwarzAngesagt->setChecked(false);
    ui->tbSchwarzAngesagt->setEnabled(gesetzt);
}

void MainWindow::onGrang(bool gesetzt)
{
    // A Grand has at most four jacks to count.
    for (int anzahl = 5; anzahl <= 11; ++anzahl)
        bgMatadorAnzahl->button(anzahl)->setEnabled(!gesetzt);
}

void MainWindow::nullKnoepfeSperren(bool gesperrt)
{
    for (QAbstractButton *knopf : bgMatadorAnzahl->buttons())
        knopf->setEnabled(!gesperrt);
    for (QAbstractButton *knopf :
         {static_cast<QAbstractButton *>(ui->tbMit), static_cast<QAbstractButton *>(ui->tbOhne),
          static_cast<QAbstractButton *>(ui->tbSchneider),
          static_cast<QAbstractButton *>(ui->tbSchneiderAngesagt),
          static_cast<QAbstractButton *>(ui->tbSchneiderSchwarz),
          static_cast<QAbstractButton *>(ui->tbSchwarzAngesagt)})
        knopf->setEnabled(!gesperrt);
}

void MainWindow::onNull(bool gesetzt)
{
    nullKnoepfeSperren(gesetzt);
}

void MainWindow::onEingepasst(bool gesetzt)
{
    nullKnoepfeSperren(gesetzt);
    for (QAbstractButton *knopf :
         {static_cast<QAbstractButton *>(ui->tbHand), static_cast<QAbstractButton *>(ui->tbOffen),
          static_cast<QAbstractButton *>(ui->tbGewonnen),
          static_cast<QAbstractButton *>(ui->tbVerloren)})
        knopf->setEnabled(!gesetzt);
}

void MainWindow::onFertig()
{
    const int spielerId = bgSpieler->checkedId();
    const int spielTyp = bgSpielTyp->checkedId();
    if (!ui->tbEingepasst->isChecked() && spielerId == PanelId::Keine) {
        QMessageBox::warning(this, QStringLiteral("WARNUNG"),
                             QStringLiteral("Kein Spieler selektiert!"));
        return;
    }
    if (!bearbeitungsModus && listenTyp == 4 && geber == spielerId - PanelId::Spieler1) {
        QMessageBox::warning(
            this, QStringLiteral("WARNUNG"),
            QStringLiteral("%1 hat gegeben!").arg(bgSpieler->checkedButton()->text()));
        return;
    }
    // Without a game type or, for suit and Grand, a number of jacks the value
    // would be 0: such a row is never written.
    if (spielTyp == PanelId::Keine) {
        QMessageBox::warning(this, QStringLiteral("WARNUNG"),
                             QStringLiteral("Kein Spiel selektiert!"));
        return;
    }
    if (spielTyp < PanelId::Null && bgMatadorAnzahl->checkedId() == PanelId::Keine) {
        QMessageBox::warning(this, QStringLiteral("WARNUNG"),
                             QStringLiteral("Keine Spitzen selektiert!"));
        return;
    }
    const bool grandOuvert = spielTyp == PanelId::Grand && ui->tbOffen->isChecked();
    if (grandOuvert) {
        for (QToolButton *knopf : {ui->tbHand, ui->tbSchneider, ui->tbSchneiderSchwarz,
                                   ui->tbSchneiderAngesagt, ui->tbSchwarzAngesagt})
            knopf->setChecked(true);
    }

    const SpielwertErgebnis ergebnis = Spielwert::berechne(panelLesen());
    aktuellesSpiel = ergebnis.eintrag;
    switch (ergebnis.art) {
    case SpielwertErgebnis::OhneSpieler:
        ui->pbInListeEintragen->setEnabled(true);
        return;
    case SpielwertErgebnis::Ueberreizt:
        if (spielTyp != PanelId::Null)
            ui->leSpielBeschreibung->setText(ergebnis.beschreibung);
        QMessageBox::information(this, QStringLiteral("INFORMATION"), ergebnis.meldung);
        return;
    case SpielwertErgebnis::Berechnet:
        ui->leSpielBeschreibung->setText(ergebnis.beschreibung);
        if (ergebnis.wartenStarten && !bearbeitungsModus)
            wartenTimer.start();
        ui->pbInListeEintragen->setEnabled(true);
        return;
    }
}

PanelEingabe MainWindow::panelLesen() const
{
    PanelEingabe eingabe;
    eingabe.spielTyp = bgSpielTyp->checkedId();
    eingabe.matadorModus = bgMatadorModus->checkedId();
    eingabe.matadorAnzahl = bgMatadorAnzahl->checkedId();
    eingabe.hand = ui->tbHand->isChecked();
    eingabe.offen = ui->tbOffen->isChecked();
    eingabe.schneider = ui->tbSchneider->isChecked();
    eingabe.schneiderAngesagt = ui->tbSchneiderAngesagt->isChecked();
    eingabe.schwarz = ui->tbSchneiderSchwarz->isChecked();
    eingabe.schwarzAngesagt = ui->tbSchwarzAngesagt->isChecked();
    eingabe.gewonnen = ui->tbGewonnen->isChecked();
    eingabe.spielerId = bgSpieler->checkedId();
    if (eingabe.spielerId != PanelId::Keine) {
        eingabe.spielerName = teilnehmerName(eingabe.spielerId - PanelId::Spieler1);
        eingabe.spielerKnopfText = bgSpieler->checkedButton()->text();
    }
    eingabe.reizText = leReizwert->text();
    return eingabe;
}

void MainWindow::panelZuruecksetzen()
{
    ui->tbKreuz->setChecked(true);
    ui->tbMit->setChecked(true);
    ui->tb1->setChecked(true);
    for (QToolButton *knopf : {ui->tbHand, ui->tbSchneider, ui->tbSchneiderSchwarz,
                               ui->tbSchneiderAngesagt, ui->tbSchwarzAngesagt, ui->tbOffen})
        knopf->setChecked(false);
    ui->tbGewonnen->setChecked(true);
    if (QAbstractButton *spieler = bgSpieler->checkedButton()) {
        bgSpieler->setExclusive(false);
        spieler->setChecked(false);
        bgSpieler->setExclusive(true);
    }
    ui->pbInListeEintragen->setEnabled(false);
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
