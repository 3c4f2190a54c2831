// The list header and the way to a new protocol: the set-up page, its
// confirmation and the start of the series.

#include "app/mainwindow.h"

#include "players/spielerdatei.h"
#include "standings/spielmodus.h"
#include "ui_mainwindow.h"

#include <QLabel>
#include <QMessageBox>
#include <QSettings>
#include <QSqlRecord>
#include <QSqlTableModel>
#include <QStandardItemModel>
#include <QStatusBar>

namespace {
// They separate the fields of every network message.
const QString GruppenVerbot = QStringLiteral(":$@");
} // namespace

void MainWindow::kopfLesen()
{
    const std::optional<ListenKopf> kopf = datenbank->kopfLesen();
    if (!kopf)
        return;
    ui->spbTischNr->setValue(kopf->tischNr);
    ui->spbSerie->setValue(kopf->serie);
    ui->spbSpielAnzahl->setValue(kopf->anzahlSpiele);
    bierlachsMaxPunkte = kopf->blPunkte;
    ui->deDatum->setDate(kopf->datum);
    modus = kopf->modus;
    gruppenId = kopf->gruppe;
    if (!gruppenId.isEmpty() && ui->cmbGruppenId->findText(gruppenId, Qt::MatchFixedString) < 0) {
        ui->cmbGruppenId->addItem(gruppenId);
        ui->cmbGruppenId->setCurrentIndex(ui->cmbGruppenId->count() - 1);
        ui->cmbGruppenId->setEnabled(false);
    }
    // Once a header is stored the planned number of games is fixed.
    ui->spbSpielAnzahl->setEnabled(false);
}

void MainWindow::kopfSchreiben()
{
    ListenKopf kopf;
    kopf.tischNr = ui->spbTischNr->value();
    kopf.serie = ui->spbSerie->value();
    kopf.anzahlSpiele = ui->spbSpielAnzahl->value();
    kopf.modus = modus;
    kopf.blPunkte = bierlachsMaxPunkte;
    kopf.datum = ui->deDatum->date();
    kopf.gruppe = gruppenId;
    datenbank->kopfSchreiben(kopf);
}

void MainWindow::setzeLaufzustand(bool laufend)
{
    if (laufend)
        ui->tblViewSpieler->clearSelection();
    for (QWidget *feld :
         {static_cast<QWidget *>(ui->pbUp), static_cast<QWidget *>(ui->pbDown),
          static_cast<QWidget *>(ui->spbSerie), static_cast<QWidget *>(ui->spbTischNr),
          static_cast<QWidget *>(ui->spbSpielAnzahl), static_cast<QWidget *>(ui->pbStartSpiel)})
        feld->setEnabled(!laufend);
    for (int index = 1; index <= 3; ++index)
        ui->tabWidget->setTabEnabled(index, laufend);
    ui->gbSpielTyp->setEnabled(laufend);
    ui->gbMatadore->setEnabled(laufend);
    ui->gbZusatz->setEnabled(laufend);
    ui->gbErgebnis->setEnabled(laufend);
    ui->gbAlleinspieler->setEnabled(laufend);
    ui->pbFertig->setEnabled(laufend);
    serieLaeuft = laufend;
}

void MainWindow::onTischNr(int nummer)
{
    ui->leTischnrAnzeige->setText(QString::number(nummer));
    blattKopfZeichnen();
}

void MainWindow::onSerie(int nummer)
{
    ui->leSerie->setText(QString::number(nummer));
    blattKopfZeichnen();
}

void MainWindow::onListenName(QString name)
{
    vereinsname = name;
    settings->setValue(QStringLiteral("vereinsname"), name);
    blattKopfZeichnen();
}

void MainWindow::onChangeGruppenId(QString gruppe)
{
    for (const QChar zeichen : GruppenVerbot) {
        if (gruppe.contains(zeichen)) {
            QMessageBox::warning(this, QStringLiteral("WARNUNG"),
                                 QStringLiteral("Das Zeichen \"%1\" ist in der Gruppen-ID nicht "
                                                "erlaubt.")
                                     .arg(zeichen));
            const QSignalBlocker sperre(ui->cmbGruppenId);
            ui->cmbGruppenId->setEditText(gruppenId);
            return;
        }
    }
    gruppenId = gruppe;
}

void MainWindow::kopfFelderVerbinden()
{
    connect(ui->spbTischNr, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &MainWindow::onTischNr);
    connect(ui->spbSerie, QOverload<int>::of(&QSpinBox::valueChanged), this, &MainWindow::onSerie);
    connect(ui->leListenName, &QLineEdit::textChanged, this, &MainWindow::onListenName);
    connect(ui->cmbGruppenId, &QComboBox::currentTextChanged, this, &MainWindow::onChangeGruppenId);
    connect(ui->pbStartSpiel, &QPushButton::clicked, this, &MainWindow::onStartSpiel);
    connect(ui->pbOk, &QPushButton::clicked, this, &MainWindow::onNeuesProtokollOk);
    connect(ui->pbAbbruch, &QPushButton::clicked, this, &MainWindow::onNeuesProtokollAbbruch);
    onTischNr(ui->spbTischNr->value());
    onSerie(ui->spbSerie->value());
}

QList<QLineEdit *> MainWindow::neueSpielerFelder() const
{
    return {ui->leNeuSpieler1, ui->leNeuSpieler2, ui->leNeuSpieler3, ui->leNeuSpieler4};
}

void MainWindow::onNewProtokoll()
{
    if (QMessageBox::question(this, QStringLiteral("FRAGE"), QStringLiteral("Neues Protokoll?"),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    geberAnsageUnterdrueckt = true;
    ui->tabWidget->insertTab(5, tabNeuSeite, QStringLiteral("Neu"));
    ui->tabWidget->setTabEnabled(5, true);
    tabNeuSeite->show();
    ui->tabWidget->setCurrentWidget(tabNeuSeite);

    spielerListeFuellen(QStringLiteral("Name"));
    for (QLineEdit *feld : neueSpielerFelder())
        feld->clear();
    ui->chkSpielerBeibehalten->setChecked(false);

    const bool dreiSpieler = teilnehmerModel && teilnehmerModel->rowCount() == 3;
    listenTyp = dreiSpieler ? 3 : 4;
    ui->spbSpielAnzahl->setValue(dreiSpieler ? 36 : 48);
}

void MainWindow::onNeuesProtokollAbbruch()
{
    setTabWidgetNeuToHide();
}

void MainWindow::setTabWidgetNeuToHide()
{
    const int index = ui->tabWidget->indexOf(tabNeuSeite);
    if (index >= 0) {
        ui->tabWidget->setTabEnabled(index, false);
        ui->tabWidget->removeTab(index);
    }
    tabNeuSeite->hide();
    ui->tabWidget->setCurrentIndex(0);
}

void MainWindow::onNeuesProtokollOk()
{
    const bool behalten = ui->chkSpielerBeibehalten->isChecked();
    QStringList namen;
    if (!behalten) {
        for (QLineEdit *feld : neueSpielerFelder()) {
            const QString name = feld->text().trimmed();
            const QString verboten = SpielerDatei::verboteneZeichen(name);
            // Refused before anything is emptied, so the running list stays.
            if (!verboten.isEmpty()) {
                QMessageBox::warning(this, QStringLiteral("WARNUNG"),
                                     QStringLiteral("Das Zeichen \"%1\" ist in Spielernamen "
                                                    "nicht erlaubt.")
                                         .arg(verboten.left(1)));
                feld->setFocus();
                return;
            }
            if (!name.isEmpty())
                namen << name;
        }
    }

    ui->spbTischNr->setValue(ui->leNeuTischNr->text().toInt());
    ui->spbSerie->setValue(ui->leNeuSerie->text().toInt());
    if (!behalten) {
        datenbank->teilnehmerLeeren();
        teilnehmerModel->select();
    }
    datenbank->spielListeLeeren();
    datenbank->kopfLeeren();
    ui->deDatum->setDate(QDate::currentDate());
    ui->lcdNumber->display(1);

    if (!behalten) {
        for (const QString &name : qAsConst(namen))
            teilnehmerAnhaengen(name);
        if (namen.size() < 3)
            QMessageBox::warning(this, QStringLiteral("WARNUNG"),
                                 QStringLiteral("es muessen mindestens 3 Spieler eingetragen "
                                                "werden!"));
    }

    if (modus != Spielmodus::Bierlachs)
        bierlachsMaxPunkte = 0;
    listenTypAnzeigen(teilnehmerModel->rowCount() == 3 ? 3 : 4);
    ui->spbSpielAnzahl->setValue(listenTyp == 3 ? 36 : 48);

    teilnehmerModel->submitAll();
    uebersichtFuellen();
    blattNeuZeichnen();
    aktuellesSpiel = SpielEintrag();
    geber = 0;
    geberAnsageUnterdrueckt = true;
    spielerKnoepfeBeschriften();
    emit messageKartengeber(QStringLiteral("Geber %1").arg(teilnehmerName(0)));

    setzeLaufzustand(false);
    emit spielStandsAnzeigeAufNullSetzen();
    setTabWidgetNeuToHide();
    lblListe->setText(QStringLiteral("Erstliste Tisch %1").arg(ui->spbTischNr->value()));
}

void MainWindow::listenTypAnzeigen(int spieler)
{
    listenTyp = spieler;
    ui->tblViewUebersicht->setColumnHidden(SpielEintrag::Spieler4, listenTyp == 3);
    ui->tbSpieler4->setVisible(listenTyp == 4);
    ui->lePunkte4->setVisible(listenTyp == 4);
    const QSignalBlocker sperre3(ui->tb3erListe);
    const QSignalBlocker sperre4(ui->tb4erListe);
    (listenTyp == 3 ? ui->tb3erListe : ui->tb4erListe)->setChecked(true);
}

void MainWindow::teilnehmerAnhaengen(const QString &name)
{
    const int nummer = spielerHinzufuegen(QStringLiteral("0|%1|Ja|Ja").arg(name));
    const std::optional<SpielerDatensatz> spieler = datenbank->spielerNachName(name);
    const int zeile = teilnehmerModel->rowCount();
    teilnehmerModel->insertRow(zeile);
    const auto setze = [&](int spalte, const QVariant &wert) {
        teilnehmerModel->setData(teilnehmerModel->index(zeile, spalte), wert);
    };
    const auto jaNein = [](bool wert) {
        return wert ? QStringLiteral("Ja") : QStringLiteral("Nein");
    };
    setze(0, spieler ? spieler->mgldNr : nummer);
    setze(1, name);
    setze(2, jaNein(!spieler || spieler->mitglied));
    setze(3, jaNein(!spieler || spieler->preisskat));
}

void MainWindow::onStartSpiel()
{
    if (QMessageBox::question(
            this, QStringLiteral("FRAGE"),
            QStringLiteral("Sind Mitglied- und Preisskat-Eintragungen korrekt?\nSerie Starten?"),
            QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    setzeLaufzustand(true);
    ui->tabWidget->setCurrentWidget(ui->tabSpieleintrag);
    teilnehmerModel->submitAll();
    kopfSchreiben();
    jornalStarten();
    blattNeuZeichnen();
    spielStandAktualisieren(false);
    if (modus == Spielmodus::Turnier)
        zeitLimitStarten(true);
    else if (modus == Spielmodus::Bierlachs && bierlachsMaxPunkte > 0)
        lblModus->setText(Spielmodus::menuText(modus, bierlachsMaxPunkte));
}
