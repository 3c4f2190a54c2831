// Running scores, play modes with their docks, and the time limit.

#include "app/mainwindow.h"

#include "standings/spielmodus.h"
#include "standings/spielstand.h"
#include "standings/zeitlimit.h"
#include "ui_mainwindow.h"

#include <QDockWidget>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QStatusBar>

QList<QLineEdit *> MainWindow::punkteFelder() const
{
    return {ui->lePunkte1, ui->lePunkte2, ui->lePunkte3, ui->lePunkte4};
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

void MainWindow::setPunkteHighlited(int sitz)
{
    const QList<QLineEdit *> felder = punkteFelder();
    for (int i = 0; i < felder.size(); ++i) {
        QPalette palette = felder.at(i)->palette();
        palette.setColor(QPalette::Disabled, QPalette::Text, Qt::black);
        palette.setColor(QPalette::Disabled, QPalette::Base, i == sitz ? Qt::green : Qt::white);
        felder.at(i)->setPalette(palette);
    }
}

void MainWindow::onSpielStandsAnzeigeAufNullSetzen()
{
    for (QLineEdit *feld : punkteFelder())
        feld->clear();
}

void MainWindow::punkteZeilenSenden(const QStringList &zeilen)
{
    emit messageSumme1(zeilen.value(0));
    emit messageSumme2(zeilen.value(1));
    emit messageSumme3(zeilen.value(2));
    emit messageSumme4(zeilen.value(3));
}

void MainWindow::spielStandAktualisieren(bool geberAnsagen)
{
    const QVector<SpielEintrag> spiele = datenbank->spiele();
    if (modus == Spielmodus::Bierlachs) {
        bierlachsStandAnzeigen(spiele);
    } else {
        const Bilanzen bilanzen = Spielstand::bilanzen(spiele, listenTyp);
        const bool fabian = modus == Spielmodus::Turnier && einstellungen->mitFabianpunkten();
        const FabianFaktoren faktoren{kosten.gewSpieleMinusVerlSpiele,
                                      kosten.verlSpieleDerGegenSpieler3,
                                      kosten.verlSpieleDerGegenSpieler4};
        QStringList zeilen;
        for (int sitz = 0; sitz < 4; ++sitz)
            zeilen << Spielstand::zeile(
                teilnehmerName(sitz),
                Spielstand::angezeigt(bilanzen, sitz, listenTyp, fabian, faktoren),
                bilanzen.at(sitz));
        punkteZeilenSenden(zeilen);
    }
    if (geberAnsagen)
        emit messageKartengeber(QStringLiteral("Geber %1").arg(teilnehmerName(geber)));
}

void MainWindow::bierlachsStandAnzeigen(const QVector<SpielEintrag> &spiele)
{
    const QVector<BierlachsRunde> runden = Bierlachs::runden(spiele, listenTyp, bierlachsMaxPunkte);
    {
        // One entry per round; the newest is shown.
        const QSignalBlocker sperre(ui->cmbBierlachs);
        ui->cmbBierlachs->clear();
        for (int runde = 1; runde <= runden.size(); ++runde)
            ui->cmbBierlachs->addItem(QStringLiteral("Runde %1").arg(runde));
        ui->cmbBierlachs->setCurrentIndex(runden.size() - 1);
    }
    bierlachsRundeAnzeigen(runden.last());
}

void MainWindow::bierlachsRundeAnzeigen(const BierlachsRunde &runde)
{
    QStringList zeilen;
    for (int sitz = 0; sitz < 4; ++sitz)
        zeilen << Bierlachs::zeile(teilnehmerName(sitz),
                                   Bierlachs::rest(runde, sitz, bierlachsMaxPunkte),
                                   runde.bilanz.at(sitz));
    punkteZeilenSenden(zeilen);
}

void MainWindow::bierlachsIndexChanged(int index)
{
    const QVector<BierlachsRunde> runden =
        Bierlachs::runden(datenbank->spiele(), listenTyp, bierlachsMaxPunkte);
    if (index >= 0 && index < runden.size())
        bierlachsRundeAnzeigen(runden.at(index));
    blattFuellen();
}

void MainWindow::bierlachsRundenEnde(int zeile)
{
    const QVector<BierlachsRunde> runden =
        Bierlachs::runden(datenbank->spiele(), listenTyp, bierlachsMaxPunkte);
    const BierlachsRunde &letzte = runden.last();
    if (!letzte.beendet || letzte.letzteZeile != zeile)
        return;
    const int zahler = Bierlachs::bierlachs(letzte, listenTyp, bierlachsMaxPunkte);
    statusBar()->showMessage(QStringLiteral("Bierlachs: %1").arg(teilnehmerName(zahler)));
    if (QMessageBox::question(this, QStringLiteral("FRAGE"),
                              QStringLiteral("Rundenende! Neue Runde?"),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    // The next game opens the new round; until then every seat shows the full points.
    BierlachsRunde neu;
    bierlachsRundeAnzeigen(neu);
}

QDockWidget *MainWindow::eingabeDock(const QString &name, const QString &text, int wert, int von,
                                     int bis, void (MainWindow::*beiOk)(),
                                     void (MainWindow::*beiAbbruch)())
{
    auto *dock = new QDockWidget(this);
    dock->setObjectName(name);
    dock->setFeatures(QDockWidget::NoDockWidgetFeatures);
    dock->setAllowedAreas(Qt::TopDockWidgetArea);
    auto *inhalt = new QWidget(dock);
    auto *layout = new QHBoxLayout(inhalt);
    auto *feld = new QLineEdit(QStringLiteral("%1").arg(wert), inhalt);
    feld->setObjectName(QStringLiteral("leWert"));
    feld->setValidator(new QIntValidator(von, bis, feld));
    auto *ok = new QPushButton(QStringLiteral("Ok"), inhalt);
    ok->setObjectName(QStringLiteral("pbDockOk"));
    ok->setAutoDefault(true);
    auto *abbruch = new QPushButton(QStringLiteral("Abbruch"), inhalt);
    abbruch->setObjectName(QStringLiteral("pbDockAbbruch"));
    layout->addWidget(new QLabel(text, inhalt), 20);
    layout->addWidget(feld, 20);
    layout->addWidget(ok, 30);
    layout->addWidget(abbruch, 30);
    connect(ok, &QPushButton::clicked, this, beiOk);
    connect(abbruch, &QPushButton::clicked, this, beiAbbruch);
    dock->setWidget(inhalt);
    addDockWidget(Qt::TopDockWidgetArea, dock);
    return dock;
}

void MainWindow::dockEntfernen(QPointer<QDockWidget> &dock)
{
    if (!dock)
        return;
    removeDockWidget(dock);
    dock->deleteLater();
    dock = nullptr;
}

void MainWindow::onSetModusTurnier()
{
    modus = Spielmodus::Turnier;
    lblModus->setText(Spielmodus::menuText(modus, bierlachsMaxPunkte));
    blattFuellen();
    ui->cmbBierlachs->setVisible(false);
    if (!dockZeitLimit)
        dockZeitLimit = eingabeDock(QStringLiteral("DockZeitLimit"),
                                    QStringLiteral("Zeitlimit pro Serie in Minuten eingeben..."),
                                    zeitLimitMinuten, 0, 1000, &MainWindow::onZeitLimitOk,
                                    &MainWindow::onZeitLimitAbbruch);
    dockZeitLimit->show();
}

void MainWindow::onSetModusErgebnis()
{
    modus = Spielmodus::Ergebnis;
    lblModus->setText(Spielmodus::menuText(modus, bierlachsMaxPunkte));
    blattFuellen();
    ui->cmbBierlachs->setVisible(false);
}

void MainWindow::onSetModusBierlachs()
{
    modus = Spielmodus::Bierlachs;
    lblModus->setText(Spielmodus::menuText(modus, bierlachsMaxPunkte));
    blattFuellen();
    ui->cmbBierlachs->setVisible(true);
    if (!dockBierlachs)
        dockBierlachs = eingabeDock(
            QStringLiteral("DockBierlachs"), QStringLiteral("Bierlachs Maximal Punkte eingeben..."),
            bierlachsMaxPunkte, 100, 1000, &MainWindow::onBierlachsModusMaxPunkteOk,
            &MainWindow::onBierlachsModusMaxPunkteAbbruch);
    dockBierlachs->show();
}

void MainWindow::onZeitLimitOk()
{
    const QString text = dockZeitLimit->findChild<QLineEdit *>(QStringLiteral("leWert"))->text();
    zeitLimitMinuten = text.isEmpty() ? 120 : text.toInt();
    dockEntfernen(dockZeitLimit);
}

void MainWindow::onZeitLimitAbbruch()
{
    dockEntfernen(dockZeitLimit);
}

void MainWindow::onBierlachsModusMaxPunkteOk()
{
    const QString text = dockBierlachs->findChild<QLineEdit *>(QStringLiteral("leWert"))->text();
    if (text.isEmpty())
        return;
    bierlachsMaxPunkte = text.toInt();
    dockEntfernen(dockBierlachs);
    lblModus->setText(Spielmodus::menuText(modus, bierlachsMaxPunkte));
    QCoreApplication::processEvents();
}

void MainWindow::onBierlachsModusMaxPunkteAbbruch()
{
    dockEntfernen(dockBierlachs);
}

void MainWindow::restZeitZeigen(const QString &text, bool rot)
{
    QPalette palette = leMeldungRot->palette();
    for (auto gruppe : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        palette.setColor(gruppe, QPalette::Text, rot ? Qt::red : Qt::darkGreen);
    leMeldungRot->setPalette(palette);
    leMeldungRot->setText(text);
}

void MainWindow::zeitLimitStarten(bool starten)
{
    if (modus != Spielmodus::Turnier)
        return;
    restZeitZeigen(leMeldungRot->text(), false);
    if (!starten)
        return;
    stopZeit = Zeitlimit::stopZeit(QTime::currentTime(), zeitLimitMinuten);
    restZeitZeigen(QStringLiteral("Verbleibende Zeit %1 Minuten").arg(zeitLimitMinuten), false);
    restZeitTimer.start();
    settings->setValue(QStringLiteral("spielstopzeit"), Zeitlimit::alsText(stopZeit));
}

void MainWindow::onZeigeRestZeitLimit()
{
    const ZeitAnzeige anzeige =
        Zeitlimit::schritt(QTime::currentTime(), stopZeit, zeitLimitMinuten);
    if (anzeige.zustand == ZeitAnzeige::Ueberschritten) {
        restZeitTimer.stop();
        leMeldungRot->setText(anzeige.text);
        return;
    }
    restZeitZeigen(anzeige.text, anzeige.rot);
    if (anzeige.zustand == ZeitAnzeige::Abgelaufen) {
        restZeitTimer.stop();
        QMessageBox::information(this, QStringLiteral("INFO"),
                                 QStringLiteral("Spielzeit abgelaufen!"), QMessageBox::Ok);
    }
}

void MainWindow::zeitLimitWiederherstellen()
{
    const QTime gespeichert =
        Zeitlimit::ausText(settings->value(QStringLiteral("spielstopzeit")).toString());
    if (!gespeichert.isValid() || !Zeitlimit::fortsetzen(QTime::currentTime(), gespeichert))
        return;
    stopZeit = gespeichert;
    restZeitTimer.start();
    onZeigeRestZeitLimit();
}
