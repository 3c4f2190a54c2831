// A table and the tournament manager on one machine, over the real link: the
// window and a manager-side client in one process find each other on
// loopback, and every message of an evening goes both ways. The test
// namespace has no address but loopback, so the table calls itself 127.0.0.1.

#include "app/mainwindow.h"
#include "helpers/fensterhilfe.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"
#include "velmora/client.h"

#include <QtWidgets>

using namespace Fenster;

class TstVerbindung : public QObject
{
    Q_OBJECT

private slots:
    void init() { TestUmgebung::allesLoeschen(); }
    void abendMitManager();
    void zweitlisteAnfragen();
};

void TstVerbindung::abendMitManager()
{
    // Three players, three games: the third ends the round.
    QVERIFY(TestProtokoll::anlegen(3, 3, 0, 5));
    MeldungsBeantworter antworten;
    auto fenster = std::make_unique<MainWindow>();
    Client manager(QStringLiteral("Tabulor"));
    QStringList tische;
    QStringList empfangen;
    connect(&manager, &Client::newParticipant, this, [&](const QString &id) { tische << id; });
    connect(&manager, &Client::newMessage, this,
            [&](const QString &, const QString &text) { empfangen << text; });
    QTRY_COMPARE_WITH_TIMEOUT(tische.size(), 1, 10000);
    QVERIFY2(tische.first().startsWith("Kartulo@127.0.0.1:"), qPrintable(tische.first()));
    QTRY_VERIFY_WITH_TIMEOUT(fenster->statusBar()->currentMessage().startsWith("Verbunden Tabulor"),
                             10000);

    // The manager's player list and costs reach the table.
    manager.sendMessage("4:127.0.0.1:$12|Erika Muster|Ja|Nein@13|Otto Normal|Nein|Ja");
    QTRY_COMPARE(TestProtokoll::spalte("Spieler", "MgldNr"), QList<int>({12, 13}));
    QCOMPARE(TestProtokoll::spalte("Spieler", "Mitglied"), QList<int>({1, 0}));
    QCOMPARE(TestProtokoll::spalte("Spieler", "Preisskat"), QList<int>({0, 1}));
    manager.sendMessage(
        "15:127.0.0.1:$5@1@0.5|1.0|2.0|3.5|0.7|1.0|2.5|15.0|60|45|35|Skatclub Nord");
    QTRY_COMPARE(text(fenster.get(), "leKartengeld"), QStringLiteral("0.7"));

    // The table asks for its players.
    kind<QLineEdit>(fenster.get(), "leNeuTischNr")->setText("5");
    kind<QLineEdit>(fenster.get(), "leNeuSerie")->setText("1");
    fenster->spielerdatenAnfordern();
    QTRY_VERIFY(empfangen.contains("5:127.0.0.1:$5@1"));

    // Each game sends its row and the results; the third ends the round and,
    // asked, sends the sheet.
    for (int spiel = 0; spiel < 3; ++spiel)
        eingeben(fenster.get(), Spiel{"tbKreuz", (spiel + 1) % 3, true, ""});
    QTRY_VERIFY(empfangen.contains(
        QStringLiteral("13:127.0.0.1:$5@1@3@12@1@0@0@0@0@0@0@0@24@0@24@0@0@0@0@0")));
    QTRY_VERIFY(!empfangen.filter(QRegularExpression("^17:127.0.0.1:\\$")).isEmpty());
    const QStringList ergebnisse = empfangen.filter(QRegularExpression("^7:127.0.0.1:\\$"));
    QVERIFY(!ergebnisse.isEmpty());
    QVERIFY2(ergebnisse.last().contains("Bernd|5|1|"), qPrintable(ergebnisse.last()));
    QVERIFY(antworten.texte.contains("Rundenende erreicht!\nDaten nach Tabulor kopieren?"));

    const QString pdf = TestUmgebung::datenVerzeichnis() + "/Skat20-11-2026_S1_T5.pdf";
    QVERIFY(empfangen.contains("16:127.0.0.1:$Skat20-11-2026_S1_T5.pdf"));
    const QString blatt = empfangen.filter(QRegularExpression("^17:127.0.0.1:\\$")).last();
    const QString daten = blatt.section('@', 1);
    QVERIFY(blatt.startsWith("17:127.0.0.1:$Skat20-11-2026_S1_T5.pdf@"));
    QFile datei(pdf);
    QVERIFY(datei.open(QIODevice::ReadOnly));
    QCOMPARE(qUncompress(QByteArray::fromBase64(daten.toLatin1())), datei.readAll());

    // The table leaves: the manager sees it go.
    QStringList gegangen;
    connect(&manager, &Client::participantLeft, this, [&](const QString &id) { gegangen << id; });
    fenster.reset();
    QTRY_COMPARE_WITH_TIMEOUT(gegangen, tische, 10000);
}

// A first list answers a second list's request: refused while its list has
// not started, then the players and every game so far, then refused again
// as it has its second list. Every answer goes to the address the request
// came from, not the one its text claims.
void TstVerbindung::zweitlisteAnfragen()
{
    MeldungsBeantworter antworten;
    auto fenster = std::make_unique<MainWindow>();
    Client zweite(QStringLiteral("Kartulo"));
    QStringList empfangen;
    connect(&zweite, &Client::newMessage, this,
            [&](const QString &, const QString &text) { empfangen << text; });
    QTRY_COMPARE_WITH_TIMEOUT(zweite.participants().size(), 1, 10000);

    // Table 0 without a list: a request for table 0 is refused.
    zweite.sendMessage("8:10.1.1.1:$0");
    QTRY_COMPARE(
        empfangen.filter(QRegularExpression("^10:")),
        QStringList({"10:127.0.0.1:$0@Protokoll in Erstliste wurde noch nicht gestartet!"}));
    zweite.sendMessage("8:10.1.1.1:$7");
    fenster.reset();
    empfangen.clear();

    TestUmgebung::allesLoeschen();
    QVERIFY(TestProtokoll::anlegen(3, 36, 0, 5));
    fenster = std::make_unique<MainWindow>();
    eingeben(fenster.get(), Spiel{"tbKreuz", 1, true, ""});
    QTRY_COMPARE_WITH_TIMEOUT(zweite.participants().size(), 1, 10000);
    zweite.sendMessage("8:10.1.1.1:$5");
    QTRY_VERIFY(!empfangen.filter(QRegularExpression("^14:")).isEmpty());
    QCOMPARE(empfangen.filter(QRegularExpression("^9:")),
             QStringList({"9:127.0.0.1:$5@1@100|Anna|Ja|Ja@101|Bernd|Ja|Ja@102|Clara|Ja|Ja@"
                          "SpielerEnde"}));
    QCOMPARE(empfangen.filter(QRegularExpression("^14:")),
             QStringList({"14:127.0.0.1:$12@1@0@0@0@0@0@0@0@24@0@0@24@0@0@0@0"}));
    zweite.sendMessage("8:10.1.1.2:$5");
    QTRY_COMPARE(empfangen.filter(QRegularExpression("^10:")),
                 QStringList({"10:127.0.0.1:$5@Tisch 5 hat schon Zweitliste!"}));

    // A corrected game goes to the second list again, to be compared anew.
    fenster->onUebersichtDoubleClicked(
        kind<QTableView>(fenster.get(), "tblViewUebersicht")->model()->index(0, 0));
    for (const char *knopf : {"tbVerloren", "pbFertig", "pbInListeEintragen"})
        klick(fenster.get(), knopf);
    QTRY_COMPARE(empfangen.filter(QRegularExpression("^13:127\\.0\\.0\\.1:\\$5@1@1@")),
                 QStringList({"13:127.0.0.1:$5@1@1@12@1@0@0@0@0@0@0@0@0@48@0@-48@0@0@0@0"}));
}

KARTULO_TEST_MAIN(TstVerbindung)
#include "tst_verbindung.moc"
