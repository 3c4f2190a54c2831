// Participants and seating, the list type, and the player registry.

#include "app/mainwindow.h"

#include "players/combodelegate.h"
#include "players/mysortfilterproxymodel.h"
#include "players/namensdelegate.h"
#include "players/spielerdatei.h"
#include "standings/spielmodus.h"
#include "ui_mainwindow.h"

#include <QButtonGroup>
#include <QFile>
#include <QHeaderView>
#include <QMessageBox>
#include <QSqlRecord>
#include <QSqlTableModel>
#include <QStandardItemModel>
#include <QStandardPaths>

void MainWindow::teilnehmerModellEinrichten()
{
    delete teilnehmerModel;
    teilnehmerModel = new QSqlTableModel(this, datenbank->verbindung());
    teilnehmerModel->setTable(QStringLiteral("Teilnehmer"));
    teilnehmerModel->setEditStrategy(QSqlTableModel::OnManualSubmit);
    connect(teilnehmerModel, &QSqlTableModel::primeInsert, this, &MainWindow::onTeilnehmerInserted);
    connect(teilnehmerModel, &QSqlTableModel::dataChanged, this, &MainWindow::teilnehmerGeaendert);
    teilnehmerModel->select();
    const QStringList koepfe{QStringLiteral("MtgldNr"), QStringLiteral("Spielername"),
                             QStringLiteral("Mitglied"), QStringLiteral("Preisskat")};
    for (int spalte = 0; spalte < koepfe.size(); ++spalte)
        teilnehmerModel->setHeaderData(spalte, Qt::Horizontal, koepfe.at(spalte));
    teilnehmerProxy->setSourceModel(teilnehmerModel);
    spielerKnoepfeBeschriften();
}

void MainWindow::teilnehmerTabelleEinrichten()
{
    teilnehmerProxy = new MySortFilterProxyModel(this);
    ui->tblViewSpieler->setModel(teilnehmerProxy);
    ui->tblViewSpieler->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    ui->tblViewSpieler->horizontalHeader()->setStretchLastSection(true);
    auto *flaggen = new ComboDelegate(this);
    ui->tblViewSpieler->setItemDelegateForColumn(2, flaggen);
    ui->tblViewSpieler->setItemDelegateForColumn(3, flaggen);
    ui->tblViewSpieler->setItemDelegateForColumn(1, new NamensDelegate(this));
    connect(ui->pbUp, &QPushButton::clicked, this, &MainWindow::onUp);
    connect(ui->pbDown, &QPushButton::clicked, this, &MainWindow::onDown);
    auto *listenTypen = new QButtonGroup(this);
    listenTypen->addButton(ui->tb3erListe, 3);
    listenTypen->addButton(ui->tb4erListe, 4);
    connect(ui->tb3erListe, &QToolButton::toggled, this, &MainWindow::on3erListe);
    connect(ui->tb4erListe, &QToolButton::toggled, this, &MainWindow::on4erListe);

    spielerListeModel = new QStandardItemModel(this);
    spielerListeModel->setHorizontalHeaderLabels({QStringLiteral("Name")});
    ui->lvRegistrierteSpieler->setModel(spielerListeModel);
    connect(ui->lvRegistrierteSpieler, &QListView::clicked, this, &MainWindow::onSpielerSelected);
    connect(ui->lvRegistrierteSpieler, &QListView::doubleClicked, this,
            &MainWindow::onSpielerDoubleClicked);
    connect(ui->pbSpielerAusTextdatei, &QPushButton::clicked, this,
            &MainWindow::spielerAusTextDateiLaden);
}

QString MainWindow::teilnehmerName(int sitz) const
{
    if (!teilnehmerModel)
        return QString();
    return teilnehmerModel->index(sitz, 1).data().toString();
}

void MainWindow::teilnehmerGeaendert()
{
    spielerKnoepfeBeschriften();
    blattNeuZeichnen();
}

void MainWindow::spielerKnoepfeBeschriften()
{
    const QList<QToolButton *> knoepfe{ui->tbSpieler1, ui->tbSpieler2, ui->tbSpieler3,
                                       ui->tbSpieler4};
    for (int sitz = 0; sitz < knoepfe.size(); ++sitz) {
        const QString name = teilnehmerName(sitz);
        knoepfe.at(sitz)->setText(name.isEmpty() ? QStringLiteral("Spieler %1").arg(sitz + 1)
                                                 : name);
    }
}

void MainWindow::onTeilnehmerInserted(int row, QSqlRecord &record)
{
    record.setValue(QStringLiteral("Mitglied"), QStringLiteral("Ja"));
    record.setValue(QStringLiteral("Preisskat"), QStringLiteral("Ja"));
    if (row >= 0 && row <= 3)
        record.setValue(QStringLiteral("MgldNr"), row + 1);
    // NOT NULL: the scorer types the name into the empty cell.
    record.setValue(QStringLiteral("Name"), QString(QLatin1String("")));
    for (int feld = 0; feld < record.count(); ++feld)
        record.setGenerated(feld, true);
}

int MainWindow::gewaehlterSitz() const
{
    const QModelIndex index = ui->tblViewSpieler->currentIndex();
    if (!index.isValid())
        return -1;
    return teilnehmerProxy->mapToSource(index).row();
}

void MainWindow::sitzeTauschen(int sitz, int nachbar)
{
    const QSqlRecord oben = teilnehmerModel->record(sitz);
    const QSqlRecord unten = teilnehmerModel->record(nachbar);
    for (int spalte = 0; spalte < 4; ++spalte) {
        teilnehmerModel->setData(teilnehmerModel->index(sitz, spalte), unten.value(spalte));
        teilnehmerModel->setData(teilnehmerModel->index(nachbar, spalte), oben.value(spalte));
        teilnehmerModel->submitAll();
    }
    teilnehmerModel->select();
    teilnehmerGeaendert();
    ui->tblViewSpieler->selectRow(
        teilnehmerProxy->mapFromSource(teilnehmerModel->index(nachbar, 0)).row());
    uebersichtFuellen();
    geberAnsageUnterdrueckt = true;
    emit messageKartengeber(QStringLiteral("Geber %1").arg(teilnehmerName(0)));
}

void MainWindow::onUp()
{
    const int sitz = gewaehlterSitz();
    if (sitz < 1)
        return;
    sitzeTauschen(sitz, sitz - 1);
}

void MainWindow::onDown()
{
    const int sitz = gewaehlterSitz();
    if (sitz < 0 || sitz >= teilnehmerModel->rowCount() - 1)
        return;
    sitzeTauschen(sitz, sitz + 1);
}

void MainWindow::on3erListe(bool gewaehlt)
{
    if (!gewaehlt)
        return;
    listenTyp = 3;
    ui->spbSpielAnzahl->setValue(modus == Spielmodus::Turnier ? 36 : 10);
    if (teilnehmerModel && teilnehmerModel->rowCount() == 4) {
        teilnehmerModel->removeRow(3);
        teilnehmerModel->submitAll();
    }
    ui->tblViewUebersicht->setColumnHidden(SpielEintrag::Spieler4, true);
    ui->tbSpieler4->setVisible(false);
    ui->lePunkte4->setVisible(false);
    const QSignalBlocker sperre(ui->tb3erListe);
    ui->tb3erListe->setChecked(true);
    spielerKnoepfeBeschriften();
    blattNeuZeichnen();
}

void MainWindow::on4erListe(bool gewaehlt)
{
    if (!gewaehlt)
        return;
    listenTyp = 4;
    ui->spbSpielAnzahl->setValue(modus == Spielmodus::Turnier ? 48 : 10);
    ui->tblViewUebersicht->setColumnHidden(SpielEintrag::Spieler4, false);
    ui->tbSpieler4->setVisible(true);
    ui->lePunkte4->setVisible(true);
    if (teilnehmerModel && teilnehmerModel->rowCount() == 3) {
        teilnehmerModel->insertRow(3);
        teilnehmerModel->submitAll();
    }
    const QSignalBlocker sperre(ui->tb4erListe);
    ui->tb4erListe->setChecked(true);
    spielerKnoepfeBeschriften();
    blattNeuZeichnen();
}

void MainWindow::spielerListeFuellen(const QString &kopf)
{
    spielerListeModel->clear();
    spielerListeModel->setHorizontalHeaderLabels({kopf});
    for (const QString &name : datenbank->spielerNamen())
        spielerListeModel->appendRow(new QStandardItem(name));
}

void MainWindow::spielerAusTextDateiLaden()
{
    const QString dateiName = QStringLiteral("KartuloSpieler.txt");
    QString pfad = QStandardPaths::locate(QStandardPaths::DocumentsLocation, dateiName);
    if (pfad.isEmpty())
        pfad = QStandardPaths::locate(QStandardPaths::DownloadLocation, dateiName);
    QFile datei(pfad);
    if (pfad.isEmpty() || !datei.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    const QStringList namen = SpielerDatei::namenAusDatei(datei.readAll());
    datenbank->spielerLeeren();
    for (int i = 0; i < namen.size(); ++i)
        datenbank->spielerEintragen(100 + i, namen.at(i), true, true);
    spielerListeFuellen(QStringLiteral("Vorname Nachname"));
}

void MainWindow::ladeSpielerListe(QStringList liste)
{
    if (liste.isEmpty())
        return;
    datenbank->spielerLeeren();
    for (const QString &eintrag : qAsConst(liste)) {
        const std::optional<SpielerDatensatz> spieler = SpielerDatei::ausListenEintrag(eintrag);
        if (spieler && !spieler->name.isEmpty())
            datenbank->spielerEintragen(spieler->mgldNr, spieler->name, spieler->mitglied,
                                        spieler->preisskat);
    }
    spielerListeFuellen(QStringLiteral("Vorname Nachname"));
}

int MainWindow::spielerHinzufuegen(const QString &text)
{
    const std::optional<SpielerDatensatz> spieler = SpielerDatei::ausListenEintrag(text);
    if (!spieler || spieler->name.isEmpty())
        return 0;
    return datenbank->spielerHinzufuegen(spieler->mgldNr, spieler->name, spieler->mitglied,
                                         spieler->preisskat);
}

void MainWindow::onSpielerSelected()
{
    onSpielerDoubleClicked(ui->lvRegistrierteSpieler->currentIndex());
}

void MainWindow::onSpielerDoubleClicked(QModelIndex index)
{
    if (!index.isValid())
        return;
    const QString name = index.data().toString();
    const QList<QLineEdit *> felder{ui->leNeuSpieler1, ui->leNeuSpieler2, ui->leNeuSpieler3,
                                    ui->leNeuSpieler4};
    // A name already placed is not placed twice; otherwise it fills the first free field.
    for (QLineEdit *feld : felder) {
        if (feld->text() == name)
            return;
    }
    for (QLineEdit *feld : felder) {
        if (feld->isEnabled() && !feld->isHidden() && feld->text().isEmpty()) {
            feld->setText(name);
            return;
        }
    }
}
