// The table on the club network as the window sees it: what the manager and
// other tables send, who joins and leaves, and the switch that stops messages.
// The test namespace has no address but loopback, so this table calls itself
// 127.0.0.1.

#include "app/mainwindow.h"
#include "helpers/fensterhilfe.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"

#include <QtWidgets>

using namespace Fenster;

namespace {

const QString Manager = QStringLiteral("Tabulor@10.0.0.9:4000");
const QString Tisch = QStringLiteral("Kartulo@10.0.0.12:4000");

// Table 5, series 1, four players, a running tournament list.
void laufendeListe()
{
    QVERIFY(TestProtokoll::anlegen(4, 48, 0, 5));
}

QString status(MainWindow &fenster)
{
    return fenster.statusBar()->currentMessage();
}

} // namespace

class TstNetz : public QObject
{
    Q_OBJECT

private slots:
    void init() { TestUmgebung::allesLoeschen(); }
    void vomManager_data();
    void vomManager();
    void auslosung();
    void kosten();
    void kommenUndGehen();
    void zweitlisteOhneTisch();
};

void TstNetz::vomManager_data()
{
    QTest::addColumn<QString>("von");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("meldung");
    QTest::newRow("vergeben") << Manager << "3:127.0.0.1:$7"
                              << "Tisch 7 ist schon vergeben!";
    QTest::newRow("anderer Tisch") << Manager << "3:10.0.0.1:$7"
                                   << "";
    QTest::newRow("von einem Tisch") << Tisch << "3:127.0.0.1:$7"
                                     << "";
    QTest::newRow("fremdes Programm") << "Fremd@10.0.0.3:1"
                                      << "3:127.0.0.1:$7"
                                      << "";
    QTest::newRow("kaputt") << Manager << "3:127.0.0.1:$7$8"
                            << "";
    QTest::newRow("leerer Absender") << ""
                                     << "3:127.0.0.1:$7"
                                     << "";
    QTest::newRow("Auslosung ohne eigenen Tisch")
        << Manager << "6:127.0.0.1:G$9@1@1|Anna|Ja|Ja@2|Bernd|Ja|Ja@3|Clara|Ja|Ja"
        << "Auslosung noch nicht abgeschlossen\noder Tisch 5 nicht vorhanden!";
    QTest::newRow("Auslosung zu wenige") << Manager << "6:127.0.0.1:G$5@1@1|Anna|Ja|Ja"
                                         << "Auslosung noch nicht abgeschlossen\noder Tisch 5 "
                                            "nicht vorhanden!";
    QTest::newRow("Tischnummer vom Manager") << Manager << "12:127.0.0.1:$9"
                                             << "";
}

// Only the manager's types are taken from the manager, only what is addressed
// to this table, and nothing from a third program or a broken text.
void TstNetz::vomManager()
{
    QFETCH(QString, von);
    QFETCH(QString, text);
    QFETCH(QString, meldung);
    laufendeListe();
    MeldungsBeantworter antworten;
    MainWindow fenster;
    fenster.appendMessage(von, text);
    QCOMPARE(antworten.texte.join("|"), meldung);
}

// A draw for this table fills the "Neu" page for the scorer to confirm and
// gives the table the manager's group.
void TstNetz::auslosung()
{
    laufendeListe();
    MeldungsBeantworter antworten;
    MainWindow fenster;
    fenster.appendMessage(Manager, "6:127.0.0.1:Gruppe B$5@2@31|Erika Muster|Ja|Nein@32|Otto "
                                   "Normal|Nein|Ja@33|Eva Lang|Ja|Ja");
    QCOMPARE(antworten.texte, QStringList({"Neues Protokoll?"}));
    QCOMPARE(kind<QTabWidget>(&fenster, "tabWidget")->currentWidget()->objectName(),
             QStringLiteral("tabNeu"));
    QStringList felder;
    for (const char *name : {"leNeuSpieler1", "leNeuSpieler2", "leNeuSpieler3", "leNeuSpieler4",
                             "leNeuTischNr", "leNeuSerie"})
        felder << text(&fenster, name);
    QCOMPARE(felder, QStringList({"Erika Muster", "Otto Normal", "Eva Lang", "", "5", "2"}));
    QVERIFY(TestProtokoll::spalte("Spieler", "MgldNr").contains(32));
    auto *gruppen = kind<QComboBox>(&fenster, "cmbGruppenId");
    QCOMPARE(gruppen->currentText(), QStringLiteral("Gruppe B"));
    QVERIFY(!gruppen->isEnabled());
}

// Costs are taken for this table's address, group, table and series only.
void TstNetz::kosten()
{
    laufendeListe();
    MainWindow fenster;
    const QString werte = "0.5|1.0|2.0|3.5|0.7|1.0|2.5|15.0|60|45|35|Skatclub Nord";
    for (const QString &text :
         QStringList{"15:10.0.0.1:$5@1@" + werte, "15:127.0.0.1:Andere$5@1@" + werte,
                     "15:127.0.0.1:$6@1@" + werte, "15:127.0.0.1:$5@1"})
        fenster.appendMessage(Manager, text);
    QCOMPARE(text(&fenster, "leKartengeld"), QStringLiteral("1.0"));
    fenster.appendMessage(Manager, "15:127.0.0.1:$5@1@" + werte);
    QCOMPARE(text(&fenster, "leKartengeld"), QStringLiteral("0.7"));
    QCOMPARE(text(&fenster, "leListenName"), QStringLiteral("Skatclub Nord"));
    // A value no scorer could type is not taken either; the field shows what counts.
    fenster.appendMessage(Manager,
                          "15:127.0.0.1:$5@1@0.5|1.0|2.0|3.5|0,2|1.0|2.5|15.0|60|45|35|Nord");
    QCOMPARE(text(&fenster, "leKartengeld"), QStringLiteral("0.7"));
    QVERIFY2(status(fenster).startsWith("Kartengeld: nur 0,5 bis 100,0"),
             qPrintable(status(fenster)));
}

// The manager's arrival swaps the "Neu" page to asking it for players and
// shows the standings; its leaving undoes it. Other tables are only counted.
void TstNetz::kommenUndGehen()
{
    laufendeListe();
    MainWindow fenster;
    fenster.show();
    auto *anfordern = kind<QPushButton>(&fenster, "pbAnfordern");
    auto *datei = kind<QPushButton>(&fenster, "pbSpielerAusTextdatei");
    QVERIFY(anfordern->isHidden() && !datei->isHidden());

    fenster.newParticipant(Manager);
    QCOMPARE(status(fenster), QStringLiteral("Verbunden Tabulor 10.0.0.9"));
    QCOMPARE(kind<QTabWidget>(&fenster, "tabWidget")->currentWidget()->objectName(),
             QStringLiteral("tabSpielstaende"));
    QVERIFY(!anfordern->isHidden() && datei->isHidden());
    QVERIFY(!kind<QLineEdit>(&fenster, "leNeuSpieler1")->isEnabled());
    QVERIFY(kind<QMenu>(&fenster, "menuZweitliste")->isEnabled());

    fenster.newParticipant(Tisch);
    QCOMPARE(status(fenster), QStringLiteral("Kontakt zu anderen Protokollen."));
    fenster.newParticipant("Fremd@10.0.0.3:1");
    QCOMPARE(status(fenster), QStringLiteral("Kontakt zu anderen Protokollen."));

    fenster.rechnerAbmeldung(Manager);
    QCOMPARE(status(fenster), QStringLiteral("Getrennt Tabulor."));
    QVERIFY(anfordern->isHidden() && !datei->isHidden());
    QVERIFY(kind<QLineEdit>(&fenster, "leNeuSpieler1")->isEnabled());
    fenster.rechnerAbmeldung(Tisch);
    QCOMPARE(status(fenster), QStringLiteral("Kein Kontakt zu anderen Protokollen."));
}

// The second list's request needs a table number, and only one pairing at a time.
void TstNetz::zweitlisteOhneTisch()
{
    laufendeListe();
    MeldungsBeantworter antworten;
    MainWindow fenster;
    fenster.startZweitProtokoll();
    auto *dock = kind<QDockWidget>(&fenster, "DockZweitliste");
    QVERIFY(dock);
    QCOMPARE(dock->findChild<QLabel *>()->text(), QStringLiteral("Tischnummer eingeben..."));
    dock->findChild<QLineEdit *>()->setText("0");
    fenster.onZweitListenTischNrOk();
    QVERIFY(kind<QDockWidget>(&fenster, "DockZweitliste"));
    dock->findChild<QLineEdit *>()->setText("7");
    fenster.onZweitListenTischNrOk();
    QTRY_VERIFY(!kind<QDockWidget>(&fenster, "DockZweitliste"));
    fenster.startZweitProtokoll();
    QCOMPARE(antworten.texte, QStringList({"Es wurde keine Tischnummer eingegeben!",
                                           "Zweitliste ist schon gesetzt!"}));
    // Released without a first list answering: the request can be made again.
    antworten.antworte(QMessageBox::Yes);
    antworten.antworte(QMessageBox::No);
    fenster.onZweitListeFreigeben();
    QCOMPARE(kind<QLabel>(&fenster, "lblListe")->text(), QStringLiteral("Kopie von Tisch 7"));
    fenster.startZweitProtokoll();
    QVERIFY(kind<QDockWidget>(&fenster, "DockZweitliste"));
    // Closing a second list releases it without asking more than whether to close.
    kind<QDockWidget>(&fenster, "DockZweitliste")->findChild<QLineEdit *>()->setText("8");
    fenster.onZweitListenTischNrOk();
    antworten.texte.clear();
    fenster.show();
    QVERIFY(fenster.close());
    QCOMPARE(antworten.texte, QStringList({"Kartulo beenden?"}));
}

KARTULO_TEST_MAIN(TstNetz)
#include "tst_netz.moc"
