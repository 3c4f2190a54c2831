// Costs and files through the window: the cost fields on the settings tab,
// the rules lines and the footer on the sheet, the manager's cost push, the
// PDF and XML beside each other, the backup copy, loading a list back through
// the picker, a damaged file that leaves the running list alone, and the
// journal of an evening.

#include "app/files/dockfileview.h"
#include "app/mainwindow.h"
#include "core/files/skatjornal.h"
#include "core/files/xmlprotokoll.h"
#include "helpers/fensterhilfe.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"

#include <QtWidgets>

using namespace TestProtokoll;
using namespace Fenster;

namespace {

QStringList blattTexte(MainWindow &fenster)
{
    QStringList texte;
    const QGraphicsScene *szene = fenster.findChild<QGraphicsView *>("gvSpieleListe")->scene();
    for (QGraphicsItem *item : szene ? szene->items() : QList<QGraphicsItem *>()) {
        if (auto *text = dynamic_cast<QGraphicsTextItem *>(item))
            texte << text->toPlainText();
        else if (auto *einfach = dynamic_cast<QGraphicsSimpleTextItem *>(item))
            texte << einfach->text();
    }
    return texte;
}

void tippen(MainWindow &fenster, const char *feld, const QString &text)
{
    auto *edit = fenster.findChild<QLineEdit *>(feld);
    edit->clear();
    QTest::keyClicks(edit, text);
}

// A 4-player evening of 48 varied rows, written straight into the table.
void abendAnlegen()
{
    QVERIFY(anlegen(4, 48, 0, 5));
    QStringList statements{"UPDATE Settings SET Serie = 2, Gruppe = 'Herbst''s'",
                           "UPDATE Teilnehmer SET Mitglied = 'Nein' WHERE Name = 'Clara'"};
    for (const SpielEintrag &e : abend(48, 4))
        statements << e.insertStatement();
    QVERIFY(sql(statements));
}

// Everything of a list that a round trip must keep, table by table.
QStringList inhalt()
{
    QStringList teile;
    for (const char *name :
         {"Zeile", "Spiel", "Mit", "Ohne", "Hand", "Gewonnen", "Verloren", "Spieler1", "Spieler2",
          "Spieler3", "Spieler4", "Eingepasst", "Reizung"}) {
        QStringList werte;
        for (int wert : spalte("SpielListe", QLatin1String(name)))
            werte << QString::number(wert);
        teile << QStringLiteral("%1: %2").arg(QLatin1String(name), werte.join(' '));
    }
    for (const char *name : {"TischNr", "Serie", "AnzahlSpiele", "Modus"})
        teile << QStringLiteral("%1: %2")
                     .arg(QLatin1String(name))
                     .arg(spalte("Settings", QLatin1String(name)).value(0));
    teile << "Teilnehmer " + QString::number(zeilen("Teilnehmer"));
    return teile;
}

QByteArray lesen(const QString &pfad)
{
    QFile datei(pfad);
    datei.open(QIODevice::ReadOnly);
    return datei.readAll();
}

void schreiben(const QString &name, const QByteArray &inhalt)
{
    QFile datei(TestUmgebung::datenVerzeichnis() + "/" + name);
    QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size());
}

} // namespace

class TstDateiFenster : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void dezimalkomma_data();
    void dezimalkomma();
    void beschreibungen();
    void fussNurImTurnier_data();
    void fussNurImTurnier();
    void managerKosten_data();
    void managerKosten();
    void speichern_data();
    void speichern();
    void speichernUndLaden();
    void sicherheitskopie();
    void auswahlUndAbbruch();
    void kaputteDatei();
    void jornalDesAbends();
};

void TstDateiFenster::init()
{
    TestUmgebung::allesLoeschen();
    QDir(TestUmgebung::datenVerzeichnis()).removeRecursively();
}

void TstDateiFenster::dezimalkomma_data()
{
    QTest::addColumn<QByteArray>("feld");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("eingabe");
    QTest::addColumn<double>("wert");
    QTest::newRow("Kartengeld") << QByteArray("leKartengeld") << "Kartengeld"
                                << "1,5" << 1.5;
    QTest::newRow("Platz 3") << QByteArray("lePlKosten3") << "platz3"
                             << "2,5" << 2.5;
    QTest::newRow("ab 6") << QByteArray("leVerlSpieleAb6") << "VerlSpielAb6"
                          << "3.5" << 3.5;
}

void TstDateiFenster::dezimalkomma()
{
    QFETCH(QByteArray, feld);
    QFETCH(QString, key);
    QFETCH(QString, eingabe);
    QFETCH(double, wert);
    MainWindow fenster;
    tippen(fenster, feld.constData(), eingabe);
    QCOMPARE(text(&fenster, feld.constData()), eingabe);
    QCOMPARE(einstellungen().value(key).toDouble(), wert);
}

void TstDateiFenster::beschreibungen()
{
    QVERIFY(anlegen(4, 48));
    MainWindow fenster;
    QVERIFY(blattTexte(fenster).contains("Platz: 1=0.0, 2=1.5, 3=2.5, 4=3.0 Euro"));
    QVERIFY(blattTexte(fenster).contains("Kartengeld 1.0 Euro"));
    tippen(fenster, "leKartengeld", "2,5");
    QVERIFY(blattTexte(fenster).contains("Kartengeld 2.5 Euro"));
    tippen(fenster, "lePlKosten1", "1");
    // After an edit the place line goes without its "Euro".
    QVERIFY(blattTexte(fenster).contains("Platz: 1=1.0, 2=1.5, 3=2.5, 4=3.0"));
    tippen(fenster, "leVerlSpieleDerGegenspieler4", "25");
    QVERIFY(blattTexte(fenster).contains("Punkte verl. Spiele der Gegenspieler * 25"));
}

void TstDateiFenster::fussNurImTurnier_data()
{
    QTest::addColumn<int>("modus");
    QTest::addColumn<bool>("fuss");
    QTest::newRow("Turnier") << 0 << true;
    QTest::newRow("Ergebnis") << 1 << false;
}

void TstDateiFenster::fussNurImTurnier()
{
    QFETCH(int, modus);
    QFETCH(bool, fuss);
    QVERIFY(anlegen(3, 36, modus));
    MainWindow fenster;
    MeldungsBeantworter antworten;
    eingeben(&fenster, Spiel{"tbKreuz", 0, true, ""});
    eingeben(&fenster, Spiel{"tbKaro", 1, false, ""});
    const QStringList texte = blattTexte(fenster);
    // Anna: 24 + 50 + 40 = 114 points. Bernd, third, pays card money 1.00, one
    // lost game 1.00, place 2.50 and the prize game 10.00.
    QCOMPARE(texte.contains("114"), fuss);
    QCOMPARE(texte.contains("14.50"), fuss);
}

void TstDateiFenster::managerKosten_data()
{
    QTest::addColumn<QStringList>("werte");
    QTest::addColumn<bool>("uebernommen");
    const QString felder = "0.5|1.0|2.0|3.5|1.5|1.0|2.5|15.0|60|45|35|Skatclub Nord";
    QTest::newRow("passt") << QStringList{"5", "1", felder} << true;
    QTest::newRow("anderer Tisch") << QStringList{"6", "1", felder} << false;
    QTest::newRow("andere Serie") << QStringList{"5", "2", felder} << false;
    QTest::newRow("zu kurz") << QStringList{"5", "1"} << false;
}

void TstDateiFenster::managerKosten()
{
    QFETCH(QStringList, werte);
    QFETCH(bool, uebernommen);
    QVERIFY(anlegen(4, 48, 0, 5));
    MainWindow fenster;
    fenster.kostenVomManager(werte);
    QSettings s = einstellungen();
    QCOMPARE(s.value("Preisskat").toDouble() == 15.0, uebernommen);
    QCOMPARE(s.value("VerlSpieleDerGegenSpieler4").toInt() == 35, uebernommen);
    QCOMPARE(s.value("platz4").toDouble() == 3.5, uebernommen);
    QCOMPARE(text(&fenster, "leListenName") == "Skatclub Nord", uebernommen);
    QCOMPARE(s.value("vereinsname").toString() == "Skatclub Nord", uebernommen);
}

void TstDateiFenster::speichern_data()
{
    QTest::addColumn<int>("modus");
    QTest::addColumn<bool>("fragen");
    QTest::newRow("Turnier, mit Hinweis") << 0 << true;
    QTest::newRow("Turnier, still") << 0 << false;
    QTest::newRow("Bierlachs") << 2 << true;
}

void TstDateiFenster::speichern()
{
    QFETCH(int, modus);
    QFETCH(bool, fragen);
    QVERIFY(anlegen(4, 48, modus, 12));
    QVERIFY(sql({"UPDATE Settings SET Serie = 10, Datum = '2026-03-01'"}));
    MainWindow fenster;
    QDir(TestUmgebung::datenVerzeichnis()).removeRecursively();
    MeldungsBeantworter antworten;
    fenster.onSaveListe(fragen);
    const QString pdf = TestUmgebung::datenVerzeichnis() + "/Skat01-03-2026_S10_T12.pdf";
    if (modus == 2) {
        QVERIFY(antworten.titel.isEmpty());
        QVERIFY(!QFile::exists(pdf));
        return;
    }
    QCOMPARE(antworten.titel, fragen ? QStringList{"INFO"} : QStringList{});
    if (fragen)
        QCOMPARE(antworten.texte.first(), "Datei\n" + pdf);
    QVERIFY(lesen(pdf).startsWith("%PDF-"));
}

void TstDateiFenster::speichernUndLaden()
{
    abendAnlegen();
    const QStringList vorher = inhalt();
    const QString pdf = TestUmgebung::datenVerzeichnis() + "/Skat20-11-2026_S2_T5.pdf";
    const QString xml = TestUmgebung::datenVerzeichnis() + "/Skat20-11-2026_S2_T5.xml";
    {
        MainWindow fenster;
        fenster.onSaveListe(false);
        QVERIFY(QFile::exists(pdf));
        QVERIFY(QFile::exists(xml));
        QVERIFY(lesen(xml).contains("gruppe=\"Herbst's\""));
        MeldungsBeantworter antworten;
        fenster.onDeleteDatabase();
        QCOMPARE(zeilen("SpielListe"), 0);

        fenster.findChild<QAction *>("actionLaden")->trigger();
        auto *dock = fenster.findChild<DockFileView *>();
        QVERIFY(dock);
        QCOMPARE(dock->windowTitle(), QStringLiteral("XML Protokoll Dateien"));
        QCOMPARE(dock->ausgewaehlteDatei(), QStringLiteral("Skat20-11-2026_S2_T5.xml"));
        dock->findChild<QPushButton *>("pbOk")->click();
        QTRY_VERIFY(!fenster.findChild<DockFileView *>());

        QCOMPARE(inhalt(), vorher);
        QCOMPARE(fenster.findChild<QLabel *>("lblListe")->text(),
                 QStringLiteral("XML-Liste Tisch 5"));
        QCOMPARE(fenster.findChild<QTableView *>("tblViewUebersicht")->model()->rowCount(), 48);
        QCOMPARE(fenster.findChild<QSpinBox *>("spbSerie")->value(), 2);
        // The list is full: the dealer line gives way to the end of the round.
        QVERIFY(antworten.texte.contains("Rundenende erreicht!"));
    }
    // Written again from the loaded list, the file is the same to the byte.
    const QByteArray erste = lesen(xml);
    MainWindow fenster;
    fenster.onSaveListe(false);
    QCOMPARE(lesen(xml), erste);
}

void TstDateiFenster::sicherheitskopie()
{
    abendAnlegen();
    MainWindow fenster;
    auto *timer = fenster.findChild<QTimer *>("sicherheitskopieTimer");
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 300000);
    fenster.onSicherheitsKopieSpeichern();
    const QByteArray kopie = lesen(TestUmgebung::datenVerzeichnis() + "/xmlsicherheitskopie.xml");
    const auto daten = XmlProtokoll::lesen(kopie);
    QVERIFY(std::holds_alternative<XmlDaten>(daten));
    QCOMPARE(std::get<XmlDaten>(daten).spiele.size(), 48);
    QCOMPARE(std::get<XmlDaten>(daten).kopf.tischNr, 5);
    QVERIFY(kopie.endsWith("</Kartulo>\n"));
}

void TstDateiFenster::auswahlUndAbbruch()
{
    abendAnlegen();
    MainWindow fenster;
    fenster.onSicherheitsKopieSpeichern();
    schreiben("fremd.xml", "<?xml version=\"1.0\"?>\n<Einkauf><Brot/></Einkauf>\n");
    QVERIFY(sql({"DELETE FROM SpielListe WHERE Zeile > 40"}));
    const QStringList vorher = inhalt();
    // Only protocol files are offered.
    fenster.onLoadXml();
    auto *dock = fenster.findChild<DockFileView *>();
    QVERIFY(dock);
    const QAbstractItemModel *dateien = dock->findChild<QTreeView *>()->model();
    QCOMPARE(dateien->rowCount(), 1);
    QCOMPARE(dateien->index(0, 0).data().toString(), QStringLiteral("xmlsicherheitskopie.xml"));
    QCOMPARE(dateien->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Namen"));
    dock->findChild<QPushButton *>("pbAbbruch")->click();
    QTRY_VERIFY(!fenster.findChild<DockFileView *>());
    QCOMPARE(inhalt(), vorher);
}

void TstDateiFenster::kaputteDatei()
{
    abendAnlegen();
    MainWindow fenster;
    const QStringList vorher = inhalt();
    schreiben("kaputt.xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Kartulo "
                            "datum=\"01-03-2026\" tischnr=\"1\">\n<spieler1 name=\"A\"/>\n"
                            "<spiele>\n<spiel nr=\"1\" spiel=\"12\"");

    MeldungsBeantworter antworten;
    fenster.onLoadXml();
    auto *dock = fenster.findChild<DockFileView *>();
    QCOMPARE(dock->ausgewaehlteDatei(), QStringLiteral("kaputt.xml"));
    dock->onOk();
    QCOMPARE(antworten.titel, QStringList{"WARNUNG"});
    QVERIFY2(antworten.texte.first().contains("Zeile 5:"), qPrintable(antworten.texte.first()));
    QVERIFY(antworten.texte.first().contains("kaputt.xml"));
    QCOMPARE(inhalt(), vorher);
    QCOMPARE(fenster.findChild<QLabel *>("lblListe")->text(), QStringLiteral("Erstliste Tisch 5"));
}

void TstDateiFenster::jornalDesAbends()
{
    QVERIFY(anlegen(3, 36, 0, 4));
    MainWindow fenster;
    MeldungsBeantworter antworten;
    fenster.findChild<QPushButton *>("pbStartSpiel")->setEnabled(true);
    klick(&fenster, "pbStartSpiel");
    eingeben(&fenster, Spiel{"tbKreuz", 0, true, "24"});
    eingeben(&fenster, Spiel{"tbEingepasst", -1, true, ""});
    eingeben(&fenster, Spiel{"tbGrang", 2, false, ""});
    auto *uebersicht = fenster.findChild<QTableView *>("tblViewUebersicht");
    fenster.onUebersichtDoubleClicked(uebersicht->model()->index(0, 0));
    klick(&fenster, "tbVerloren");
    klick(&fenster, "pbFertig");
    klick(&fenster, "pbInListeEintragen");
    uebersicht->setCurrentIndex(uebersicht->model()->index(1, 0));
    fenster.onSpielEintragLoeschen();

    SkatJornal jornal;
    jornal.setPath(TestUmgebung::datenVerzeichnis() + "/jornal");
    QVERIFY(jornal.load(SkatJornal::Json));
    QCOMPARE(jornal.tischNr(), 4);
    QList<int> status;
    QStringList spieler;
    for (const JornalEintrag &e : jornal.eintraege()) {
        status << e.status;
        spieler << e.spieler + "/" + e.geber;
    }
    QCOMPARE(status, QList<int>({0, 0, 0, 1, 2}));
    QCOMPARE(spieler, QStringList({"Anna/Anna", "/Bernd", "Clara/Clara", "Anna/Anna", "/Bernd"}));
    QCOMPARE(jornal.eintraege().at(3).verloren, 48);
    QCOMPARE(jornal.eintraege().at(3).reizwert, 24);
    const QByteArray datei = lesen(TestUmgebung::datenVerzeichnis() + "/jornal.json");
    QVERIFY(datei.contains("ge\xEF\xBF\xBDndert"));
    QVERIFY(datei.contains("gel\xEF\xBF\xBDscht"));
}

KARTULO_TEST_MAIN(TstDateiFenster)
#include "tst_dateifenster.moc"
