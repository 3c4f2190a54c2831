// Protocol files through the window: the XML beside the PDF, the backup
// copy, loading a list back through the picker, damaged files that leave
// the running list alone, and the journal of an evening.

#include "app/files/dockfileview.h"
#include "app/mainwindow.h"
#include "core/files/skatjornal.h"
#include "core/files/xmlprotokoll.h"
#include "helpers/fensterhilfe.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"

#include <QAction>
#include <QDockWidget>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QTimer>
#include <QTreeView>

using namespace TestProtokoll;
using namespace Fenster;

namespace {

// A 4-player evening of 48 varied rows, written straight into the table.
void abendAnlegen()
{
    QVERIFY(anlegen(4, 48, 0, 5));
    QStringList statements{"UPDATE Settings SET Serie = 2, Gruppe = 'Herbst''s'",
                           "UPDATE Teilnehmer SET Mitglied = 'Nein' WHERE Name = 'Clara'"};
    for (int n = 1; n <= 48; ++n) {
        SpielEintrag e;
        e.setze(SpielEintrag::Zeile, n);
        if (n % 9 == 0) {
            e.setze(SpielEintrag::Eingepasst, true);
        } else {
            const int wert = 9 + n % 4;
            e.setze(SpielEintrag::Spiel, wert);
            e.setze(n % 2 ? SpielEintrag::Mit : SpielEintrag::Ohne, 1 + n % 3);
            e.setze(SpielEintrag::Hand, n % 5 == 0);
            const bool gewonnen = n % 3 != 0;
            const int spielwert = wert * (2 + n % 3);
            e.setze(gewonnen ? SpielEintrag::Gewonnen : SpielEintrag::Verloren,
                    gewonnen ? spielwert : 2 * spielwert);
            e.setze(static_cast<SpielEintrag::Spalte>(SpielEintrag::Spieler1 + n % 4),
                    gewonnen ? spielwert : -2 * spielwert);
            e.setze(SpielEintrag::Reizung, n % 4 ? 18 + n : 0);
        }
        statements << e.insertStatement();
    }
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

} // namespace

class TstXmlFenster : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void speichernUndLaden();
    void sicherheitskopie();
    void auswahlZeigtNurProtokolle();
    void abbruchAendertNichts();
    void kaputteDateien_data();
    void kaputteDateien();
    void jornalDesAbends();
};

void TstXmlFenster::init()
{
    TestUmgebung::allesLoeschen();
    QDir(TestUmgebung::datenVerzeichnis()).removeRecursively();
}

void TstXmlFenster::speichernUndLaden()
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

void TstXmlFenster::sicherheitskopie()
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

void TstXmlFenster::auswahlZeigtNurProtokolle()
{
    abendAnlegen();
    MainWindow fenster;
    fenster.onSicherheitsKopieSpeichern();
    QFile fremd(TestUmgebung::datenVerzeichnis() + "/fremd.xml");
    QVERIFY(fremd.open(QIODevice::WriteOnly));
    fremd.write("<?xml version=\"1.0\"?>\n<Einkauf><Brot/></Einkauf>\n");
    fremd.close();
    fenster.onLoadXml();
    auto *dock = fenster.findChild<DockFileView *>();
    QVERIFY(dock);
    const QAbstractItemModel *dateien = dock->findChild<QTreeView *>()->model();
    QCOMPARE(dateien->rowCount(), 1);
    QCOMPARE(dateien->index(0, 0).data().toString(), QStringLiteral("xmlsicherheitskopie.xml"));
    QCOMPARE(dateien->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Namen"));
}

void TstXmlFenster::abbruchAendertNichts()
{
    abendAnlegen();
    MainWindow fenster;
    fenster.onSicherheitsKopieSpeichern();
    QVERIFY(sql({"DELETE FROM SpielListe WHERE Zeile > 40"}));
    const QStringList vorher = inhalt();
    fenster.onLoadXml();
    fenster.findChild<DockFileView *>()->findChild<QPushButton *>("pbAbbruch")->click();
    QTRY_VERIFY(!fenster.findChild<DockFileView *>());
    QCOMPARE(inhalt(), vorher);
}

void TstXmlFenster::kaputteDateien_data()
{
    QTest::addColumn<QByteArray>("datei");
    QTest::addColumn<int>("zeile");
    const QByteArray kopf =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Kartulo datum=\"01-03-2026\" "
        "tischnr=\"1\">\n<spieler1 name=\"A\"/>\n<spiele>\n";
    QTest::newRow("abgeschnitten") << kopf + "<spiel nr=\"1\" spiel=\"12\"" << 5;
    QTest::newRow("falsch verschachtelt") << kopf + "<spiel nr=\"1\">\n</spiele>\n</Kartulo>\n"
                                          << 6;
    QTest::newRow("Zahl kaputt")
        << kopf + "<spiel nr=\"1\" spiel=\"zwoelf\"/>\n</spiele>\n</Kartulo>\n"
        << 5;
}

void TstXmlFenster::kaputteDateien()
{
    QFETCH(QByteArray, datei);
    QFETCH(int, zeile);
    abendAnlegen();
    MainWindow fenster;
    const QStringList vorher = inhalt();
    QFile kaputt(TestUmgebung::datenVerzeichnis() + "/kaputt.xml");
    QVERIFY(kaputt.open(QIODevice::WriteOnly));
    kaputt.write(datei);
    kaputt.close();

    MeldungsBeantworter antworten;
    fenster.onLoadXml();
    auto *dock = fenster.findChild<DockFileView *>();
    QCOMPARE(dock->ausgewaehlteDatei(), QStringLiteral("kaputt.xml"));
    dock->onOk();
    QCOMPARE(antworten.titel, QStringList{"WARNUNG"});
    QVERIFY2(antworten.texte.first().contains(QStringLiteral("Zeile %1:").arg(zeile)),
             qPrintable(antworten.texte.first()));
    QVERIFY(antworten.texte.first().contains("kaputt.xml"));
    QCOMPARE(inhalt(), vorher);
    QCOMPARE(fenster.findChild<QLabel *>("lblListe")->text(), QStringLiteral("Erstliste Tisch 5"));
}

void TstXmlFenster::jornalDesAbends()
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

KARTULO_TEST_MAIN(TstXmlFenster)
#include "tst_xmlfenster.moc"
