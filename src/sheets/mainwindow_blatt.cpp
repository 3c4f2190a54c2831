// The score sheet on the "Spieleliste" tab, its footer account, and the PDF.

#include "app/mainwindow.h"

#include "sheets/pdfexport.h"
#include "sheets/spielblatt.h"
#include "standings/kostenrechnung.h"
#include "standings/spielmodus.h"
#include "standings/spielstand.h"
#include "ui_mainwindow.h"

#include <QDir>
#include <QMessageBox>
#include <QSqlTableModel>
#include <QStandardPaths>

Spielblatt *MainWindow::aktuellesBlatt() const
{
    return listenTyp == 3 ? blatt3.get() : blatt4.get();
}

BlattKopf MainWindow::blattKopf() const
{
    BlattKopf kopf;
    kopf.datum = ui->deDatum->date();
    kopf.serie = ui->spbSerie->value();
    kopf.tischNr = ui->spbTischNr->value();
    return kopf;
}

void MainWindow::blattNeuZeichnen()
{
    std::unique_ptr<Spielblatt> &blatt = listenTyp == 3 ? blatt3 : blatt4;
    if (!blatt)
        blatt = std::make_unique<Spielblatt>(listenTyp);
    QVector<BlattSpieler> spieler;
    for (int sitz = 0; teilnehmerModel && sitz < teilnehmerModel->rowCount(); ++sitz)
        spieler.append({teilnehmerName(sitz), teilnehmerModel->index(sitz, 0).data().toInt()});
    blatt->leerZeichnen(blattKopf(), spieler,
                        Kostenrechnung::beschreibungen(kosten, listenTyp, true));
    ui->gvSpieleListe->setScene(blatt->scene());
    blattFuellen();
}

void MainWindow::blattKopfZeichnen()
{
    if (Spielblatt *blatt = aktuellesBlatt())
        blatt->kopfZeichnen(blattKopf());
}

QVector<SpielEintrag> MainWindow::blattSpiele() const
{
    const QVector<SpielEintrag> spiele = datenbank->spiele();
    if (modus != Spielmodus::Bierlachs)
        return spiele;
    // A Bierlachs sheet shows the round chosen on the selector.
    const QVector<BierlachsRunde> runden = Bierlachs::runden(spiele, listenTyp, bierlachsMaxPunkte);
    const BierlachsRunde runde = runden.value(ui->cmbBierlachs->currentIndex(), runden.last());
    QVector<SpielEintrag> auswahl;
    for (const SpielEintrag &spiel : spiele) {
        const int zeile = spiel[SpielEintrag::Zeile];
        if (zeile >= runde.ersteZeile && zeile <= runde.letzteZeile)
            auswahl.append(spiel);
    }
    return auswahl;
}

void MainWindow::blattFuellen()
{
    Spielblatt *blatt = aktuellesBlatt();
    if (!blatt || !teilnehmerModel)
        return;
    const QVector<SpielEintrag> spiele = blattSpiele();
    std::array<QStringList, 8> fuss{};
    // The money account belongs to tournament lists only.
    if (modus == Spielmodus::Turnier) {
        const Bilanzen bilanzen = Spielstand::bilanzen(spiele, listenTyp);
        QVector<KostenSpieler> spieler;
        for (int sitz = 0; sitz < teilnehmerModel->rowCount() && sitz < listenTyp; ++sitz) {
            KostenSpieler s;
            s.name = teilnehmerName(sitz);
            s.mgldNr = teilnehmerModel->index(sitz, 0).data().toInt();
            s.mitglied = teilnehmerModel->index(sitz, 2).data().toString();
            s.preisskat = teilnehmerModel->index(sitz, 3).data().toString();
            s.bilanz = bilanzen.at(sitz);
            spieler.append(s);
        }
        const KostenErgebnis ergebnis = Kostenrechnung::berechne(
            spieler, kosten, ui->spbSerie->value(), ui->spbTischNr->value());
        fuss = ergebnis.zeilen;
        if (!hasSecondList && !secondListPending)
            ergebnisseMelden(ergebnis.ergebnisTexte);
    }
    blatt->zeilenFuellen(spiele, fuss);
}

void MainWindow::ergebnisseMelden(const QStringList &ergebnisse)
{
    letzteErgebnisse = ergebnisse;
}

void MainWindow::onSaveListe()
{
    onSaveListe(true);
}

void MainWindow::onSaveListe(bool frageDateiname)
{
    if (modus == Spielmodus::Bierlachs)
        return;
    const QString verzeichnis = Einstellungen::datenVerzeichnis();
    QDir().mkpath(verzeichnis);
    const QString name =
        pdfDateiName(ui->deDatum->date(), ui->spbSerie->value(), ui->spbTischNr->value());
    pdfPfad = QStringLiteral("%1/%2").arg(verzeichnis, name);
    xmlPfad = QStringLiteral("%1/%2").arg(
        verzeichnis, QString(name).replace(QLatin1String(".pdf"), QLatin1String(".xml")));
    if (frageDateiname)
        QMessageBox::information(this, tr("INFO"), tr("Datei\n%1").arg(pdfPfad), QMessageBox::Ok);
    pdfSchreiben(ui->gvSpieleListe, pdfPfad);
    xmlSpeichern(xmlPfad);
}
