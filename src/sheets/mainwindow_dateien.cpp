// Protocol files: the XML copy beside the PDF, the backup copy, loading a
// protocol back, and the change journal.

#include "app/mainwindow.h"

#include "sheets/dockfileview.h"
#include "sheets/skatjornal.h"
#include "sheets/xmlprotokoll.h"
#include "standings/spielmodus.h"
#include "ui_mainwindow.h"

#include <QActionGroup>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QSqlTableModel>

XmlDaten MainWindow::xmlDaten() const
{
    XmlDaten daten;
    daten.datum = ui->deDatum->date();
    daten.tischNr = ui->spbTischNr->value();
    daten.serie = ui->spbSerie->value();
    daten.spielAnzahl = ui->spbSpielAnzahl->value();
    daten.modus = modus;
    for (const QLineEdit *feld : kostenFelderInDateiReihenfolge())
        daten.kosten << feld->text();
    daten.verein = vereinsname;
    daten.gruppe = gruppenId;
    for (int zeile = 0; teilnehmerModel && zeile < teilnehmerModel->rowCount(); ++zeile) {
        const auto wert = [&](int spalte) { return teilnehmerModel->index(zeile, spalte).data(); };
        daten.spieler.append(
            {wert(0).toInt(), wert(1).toString(), wert(2).toString(), wert(3).toString()});
    }
    daten.spiele = datenbank->spiele();
    return daten;
}

QList<QLineEdit *> MainWindow::kostenFelderInDateiReihenfolge() const
{
    return {ui->leKartengeld,
            ui->leVerlSpiele1Bis5,
            ui->leVerlSpieleAb6,
            ui->lePreisSkat,
            ui->leGewSpieleAbzglVerlSpiele,
            ui->leVerlSpieleDerGegenspieler4,
            ui->leVerlSpieleDerGegenspieler3,
            ui->lePlKosten1,
            ui->lePlKosten2,
            ui->lePlKosten3,
            ui->lePlKosten4};
}

void MainWindow::xmlSpeichern(const QString &pfad)
{
    if (pfad.isEmpty())
        return;
    XmlProtokoll::dateiSchreiben(pfad, XmlProtokoll::schreiben(xmlDaten()));
}

void MainWindow::onSicherheitsKopieSpeichern()
{
    const QString verzeichnis = Einstellungen::datenVerzeichnis();
    QDir().mkpath(verzeichnis);
    xmlSpeichern(QStringLiteral("%1/xmlsicherheitskopie.xml").arg(verzeichnis));
}

void MainWindow::onLoadXml()
{
    const QString verzeichnis = Einstellungen::datenVerzeichnis();
    QDir().mkpath(verzeichnis);
    // On a tablet the picker dock is easier to hit than a file dialog.
    if (!grosserBildschirm) {
        if (dockFileView)
            return;
        dockFileView = new DockFileView(verzeichnis, this);
        dockFileView->setFeatures(QDockWidget::NoDockWidgetFeatures);
        addDockWidget(Qt::TopDockWidgetArea, dockFileView);
        connect(dockFileView, &DockFileView::accept, this, &MainWindow::onLoadXmlOk);
        connect(dockFileView, &DockFileView::reject, this, &MainWindow::onLoadXmlAbbruch);
        dockFileView->show();
        return;
    }
    const QString pfad =
        QFileDialog::getOpenFileName(this, QStringLiteral("XML-Datei oeffnen..."), verzeichnis,
                                     QStringLiteral("XML-Dateien (*.xml)"));
    if (!pfad.isEmpty())
        xmlImportieren(pfad);
}

void MainWindow::onLoadXmlOk()
{
    if (!dockFileView)
        return;
    const QString datei = dockFileView->ausgewaehlteDatei();
    dockFileView->hide();
    if (!datei.isEmpty())
        xmlImportieren(QStringLiteral("%1/%2").arg(Einstellungen::datenVerzeichnis(), datei));
    onLoadXmlAbbruch();
}

void MainWindow::onLoadXmlAbbruch()
{
    if (!dockFileView)
        return;
    removeDockWidget(dockFileView);
    dockFileView->deleteLater();
    dockFileView = nullptr;
}

void MainWindow::xmlImportieren(const QString &pfad)
{
    QFile datei(pfad);
    if (!datei.open(QIODevice::ReadOnly)) {
        QMessageBox::warning(this, QStringLiteral("WARNUNG"),
                             QStringLiteral("Die Datei\n%1\nkann nicht gelesen werden.").arg(pfad));
        return;
    }
    const auto gelesen = XmlProtokoll::lesen(datei.readAll());
    if (const auto *fehler = std::get_if<XmlFehler>(&gelesen)) {
        QMessageBox::warning(this, QStringLiteral("WARNUNG"),
                             QStringLiteral("Die Datei\n%1\nist kein lesbares Protokoll.\nZeile "
                                            "%2: %3\nDie laufende Liste bleibt unveraendert.")
                                 .arg(pfad)
                                 .arg(fehler->zeile)
                                 .arg(fehler->text));
        return;
    }
    const XmlDaten &daten = std::get<XmlDaten>(gelesen);
    QString fehlerText;
    if (!datenbank->protokollErsetzen(daten, &fehlerText)) {
        QMessageBox::warning(this, QStringLiteral("WARNUNG"),
                             QStringLiteral("Das Protokoll\n%1\nkonnte nicht uebernommen "
                                            "werden.\n%2")
                                 .arg(pfad, fehlerText));
        return;
    }

    ui->spbTischNr->setValue(daten.tischNr);
    ui->spbSerie->setValue(daten.serie);
    ui->spbSpielAnzahl->setValue(daten.spielAnzahl);
    ui->deDatum->setDate(daten.datum.isValid() ? daten.datum : QDate::currentDate());
    const QList<QLineEdit *> felder = kostenFelderInDateiReihenfolge();
    for (int i = 0; i < felder.size() && i < daten.kosten.size(); ++i)
        felder.at(i)->setText(daten.kosten.at(i));
    ui->leListenName->setText(daten.verein);
    ui->cmbGruppenId->setEditText(daten.gruppe);

    modus = daten.modus == Spielmodus::Ergebnis ? Spielmodus::Ergebnis : Spielmodus::Turnier;
    lblModus->setText(Spielmodus::menuText(modus, bierlachsMaxPunkte));
    ui->cmbBierlachs->setVisible(false);
    modusGruppe->actions().at(modus)->setChecked(true);
    lblListe->setText(QStringLiteral("XML-Liste Tisch %1").arg(daten.tischNr));

    teilnehmerModel->select();
    listenTypAnzeigen(teilnehmerModel->rowCount() == 3 ? 3 : 4);
    spielerKnoepfeBeschriften();
    uebersichtFuellen();
    blattNeuZeichnen();
    setzeLaufzustand(true);
    geber = datenbank->anzahlEintraege() % listenTyp;
    jornalWiederherstellen();
    spielStandAktualisieren(true);
}

void MainWindow::jornalStarten()
{
    jornal->setPath(QStringLiteral("%1/jornal").arg(Einstellungen::datenVerzeichnis()));
    jornal->setKopf(ui->deDatum->date(), ui->spbTischNr->value(), ui->spbSerie->value());
    jornal->leeren();
    jornal->save(SkatJornal::Json);
}

void MainWindow::jornalWiederherstellen()
{
    jornal->setPath(QStringLiteral("%1/jornal").arg(Einstellungen::datenVerzeichnis()));
    // A journal of another list is not continued.
    const bool vorhanden = QFile::exists(SkatJornal::dateiPfad(jornal->path(), SkatJornal::Json));
    if (vorhanden && jornal->load(SkatJornal::Json) && jornal->datum() == ui->deDatum->date() &&
        jornal->tischNr() == ui->spbTischNr->value() && jornal->serie() == ui->spbSerie->value())
        return;
    jornal->setKopf(ui->deDatum->date(), ui->spbTischNr->value(), ui->spbSerie->value());
    jornal->leeren();
}

void MainWindow::jornalEintragen(const SpielEintrag &spiel, int status)
{
    const int sitz = JornalEintrag::spielerSitz(spiel);
    const QString spieler = sitz >= 0 ? teilnehmerName(sitz) : QString();
    const int zeile = spiel[SpielEintrag::Zeile];
    const QString spielGeber = teilnehmerName(zeile > 0 ? (zeile - 1) % listenTyp : geber);
    jornal->anhaengen(JornalEintrag::ausSpiel(spiel, status, spieler, spielGeber));
    jornal->save(SkatJornal::Json);
}
