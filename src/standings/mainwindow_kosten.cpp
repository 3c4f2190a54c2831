// The money and factor settings of the account and their line edits.

#include "app/mainwindow.h"

#include "sheets/spielblatt.h"
#include "standings/geldvalidator.h"
#include "standings/kostenrechnung.h"
#include "ui_mainwindow.h"

#include <QIntValidator>
#include <QSettings>

void MainWindow::kostenFelderEinrichten()
{
    for (QLineEdit *feld : {ui->lePlKosten1, ui->lePlKosten2, ui->lePlKosten3, ui->lePlKosten4})
        feld->setValidator(new GeldValidator(0.0, 100.0, feld));
    for (QLineEdit *feld :
         {ui->leKartengeld, ui->leVerlSpiele1Bis5, ui->leVerlSpieleAb6, ui->lePreisSkat})
        feld->setValidator(new GeldValidator(0.5, 100.0, feld));
    for (QLineEdit *feld : {ui->leGewSpieleAbzglVerlSpiele, ui->leVerlSpieleDerGegenspieler3,
                            ui->leVerlSpieleDerGegenspieler4})
        feld->setValidator(new QIntValidator(1, 200, feld));

    // Filled before the slots are connected: only an edit stores a value.
    const auto geld = [](double wert) { return QString::number(wert, 'f', 1); };
    ui->lePlKosten1->setText(geld(kosten.platz1));
    ui->lePlKosten2->setText(geld(kosten.platz2));
    ui->lePlKosten3->setText(geld(kosten.platz3));
    ui->lePlKosten4->setText(geld(kosten.platz4));
    ui->leKartengeld->setText(geld(kosten.kartengeld));
    ui->leVerlSpiele1Bis5->setText(geld(kosten.verlSpiel1Bis5));
    ui->leVerlSpieleAb6->setText(geld(kosten.verlSpielAb6));
    ui->lePreisSkat->setText(geld(kosten.preisskat));
    ui->leGewSpieleAbzglVerlSpiele->setText(QString::number(kosten.gewSpieleMinusVerlSpiele));
    ui->leVerlSpieleDerGegenspieler3->setText(QString::number(kosten.verlSpieleDerGegenSpieler3));
    ui->leVerlSpieleDerGegenspieler4->setText(QString::number(kosten.verlSpieleDerGegenSpieler4));

    connect(ui->lePlKosten1, &QLineEdit::textChanged, this, &MainWindow::onKostenPlatz1);
    connect(ui->lePlKosten2, &QLineEdit::textChanged, this, &MainWindow::onKostenPlatz2);
    connect(ui->lePlKosten3, &QLineEdit::textChanged, this, &MainWindow::onKostenPlatz3);
    connect(ui->lePlKosten4, &QLineEdit::textChanged, this, &MainWindow::onKostenPlatz4);
    connect(ui->leKartengeld, &QLineEdit::textChanged, this, &MainWindow::onKartenGeld);
    connect(ui->leVerlSpiele1Bis5, &QLineEdit::textChanged, this, &MainWindow::onVerlSpiel1Bis5);
    connect(ui->leVerlSpieleAb6, &QLineEdit::textChanged, this, &MainWindow::onVerlSpielAb6);
    connect(ui->lePreisSkat, &QLineEdit::textChanged, this, &MainWindow::onPreisSkat);
    connect(ui->leGewSpieleAbzglVerlSpiele, &QLineEdit::textChanged, this,
            &MainWindow::onPunkteGewSpiele);
    connect(ui->leVerlSpieleDerGegenspieler3, &QLineEdit::textChanged, this,
            &MainWindow::onPunkteVerlSpieleGegenSpieler3);
    connect(ui->leVerlSpieleDerGegenspieler4, &QLineEdit::textChanged, this,
            &MainWindow::onPunkteVerlSpieleGegenSpieler4);
}

void MainWindow::kostenGeaendert(int beschreibung, bool platzMitEuro)
{
    if (Spielblatt *blatt = aktuellesBlatt())
        blatt->beschreibungSetzen(
            beschreibung,
            Kostenrechnung::beschreibungen(kosten, listenTyp, platzMitEuro).value(beschreibung));
    blattFuellen();
}

void MainWindow::geldSetzen(double &wert, const char *key, const QString &text, int beschreibung)
{
    wert = Kostenrechnung::geldWert(text);
    settings->setValue(QLatin1String(key), wert);
    kostenGeaendert(beschreibung, false);
}

void MainWindow::faktorSetzen(int &wert, const char *key, const QString &text, int beschreibung)
{
    wert = text.toInt(nullptr, 10);
    settings->setValue(QLatin1String(key), wert);
    kostenGeaendert(beschreibung, false);
}

void MainWindow::onKostenPlatz1(QString text)
{
    geldSetzen(kosten.platz1, "platz1", text, BeschreibungPlatz);
}

void MainWindow::onKostenPlatz2(QString text)
{
    geldSetzen(kosten.platz2, "platz2", text, BeschreibungPlatz);
}

void MainWindow::onKostenPlatz3(QString text)
{
    geldSetzen(kosten.platz3, "platz3", text, BeschreibungPlatz);
}

void MainWindow::onKostenPlatz4(QString text)
{
    geldSetzen(kosten.platz4, "platz4", text, BeschreibungPlatz);
}

void MainWindow::onKartenGeld()
{
    geldSetzen(kosten.kartengeld, "Kartengeld", ui->leKartengeld->text(), BeschreibungKartengeld);
}

void MainWindow::onVerlSpiel1Bis5()
{
    geldSetzen(kosten.verlSpiel1Bis5, "VerlSpiel1Bis5", ui->leVerlSpiele1Bis5->text(),
               BeschreibungVerloren);
}

void MainWindow::onVerlSpielAb6()
{
    geldSetzen(kosten.verlSpielAb6, "VerlSpielAb6", ui->leVerlSpieleAb6->text(),
               BeschreibungVerloren);
}

void MainWindow::onPreisSkat()
{
    geldSetzen(kosten.preisskat, "Preisskat", ui->lePreisSkat->text(), BeschreibungPreisskat);
}

void MainWindow::onPunkteGewSpiele(QString text)
{
    faktorSetzen(kosten.gewSpieleMinusVerlSpiele, "GewSpieleMinusVerlSpiele", text,
                 BeschreibungGewonnen);
}

void MainWindow::onPunkteVerlSpieleGegenSpieler3(QString text)
{
    faktorSetzen(kosten.verlSpieleDerGegenSpieler3, "VerlSpieleDerGegenSpieler3", text,
                 BeschreibungGegenspieler);
}

void MainWindow::onPunkteVerlSpieleGegenSpieler4(QString text)
{
    faktorSetzen(kosten.verlSpieleDerGegenSpieler4, "VerlSpieleDerGegenSpieler4", text,
                 BeschreibungGegenspieler);
}

void MainWindow::kostenVomManager(const QStringList &werte)
{
    if (werte.size() != 3 || werte.at(0).toInt() != ui->leTischnrAnzeige->text().toInt() ||
        werte.at(1).toInt() != ui->leSerie->text().toInt())
        return;
    const QStringList felder = werte.at(2).split(QLatin1Char('|'));
    const QList<QLineEdit *> ziele{ui->lePlKosten1,
                                   ui->lePlKosten2,
                                   ui->lePlKosten3,
                                   ui->lePlKosten4,
                                   ui->leKartengeld,
                                   ui->leVerlSpiele1Bis5,
                                   ui->leVerlSpieleAb6,
                                   ui->lePreisSkat,
                                   ui->leGewSpieleAbzglVerlSpiele,
                                   ui->leVerlSpieleDerGegenspieler3,
                                   ui->leVerlSpieleDerGegenspieler4,
                                   ui->leListenName};
    // Each edit fires its slot, so the values are stored as if typed.
    for (int i = 0; i < ziele.size() && i < felder.size(); ++i)
        ziele.at(i)->setText(felder.at(i));
}
