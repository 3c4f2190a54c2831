// The table on the club network: every message, forged, misplaced or bad, taken only
// from whom it may come in the state it belongs to; who joins and leaves; what the
// table sends back. The namespace has loopback only, so the table is 127.0.0.1.

#include "app/link/netzsteuerung.h"
#include "core/link/paarung.h"
#include "helpers/faelle.h"
#include "helpers/fensterhilfe.h"
#include "velmora/client.h"

#include <QtWidgets>

using namespace Fenster;

namespace {

const QString Manager = QStringLiteral("Tabulor@10.0.0.9:4000");
const QString Manager2 = QStringLiteral("Tabulor@10.0.0.8:4000");
const QString Tisch = QStringLiteral("Kartulo@10.0.0.12:4000");
const QString Tisch2 = QStringLiteral("Kartulo@10.0.0.13:4000");

// The state of this table in the names of the rows below.
void vorbereiten(MainWindow &fenster, const QString &zustand)
{
    fenster.newParticipant(Tisch);
    if (zustand == "Manager")
        fenster.newParticipant(Manager);
    if (zustand == "Anfrage" || zustand == "Zweitliste")
        zweitlisteTisch(fenster, "7");
    if (zustand == "Zweitliste")
        fenster.appendMessage(Tisch, "9:127.0.0.1:$7@1@SpielerEnde");
    if (zustand == "Erstliste")
        fenster.appendMessage(Tisch2, "8:127.0.0.1:$5");
}

// Everything a message could change, as "what=value".
QStringList zustand(Probe &fenster)
{
    QStringList tische;
    const QMap<QString, int> &tischVon = fenster.findChild<NetzSteuerung *>()->tischVonAdresse();
    for (auto it = tischVon.cbegin(); it != tischVon.cend(); ++it)
        tische << QStringLiteral("%1:%2").arg(it.key()).arg(it.value());
    return {
        "Meldungen=" + fenster.antworten.texte.join(QLatin1Char('|')),
        "Register=" + lesen("SELECT Name FROM Spieler").join(QLatin1Char(',')),
        QStringLiteral("Rangliste=%1").arg(modell(&fenster, "tvRangliste")->rowCount()),
        QStringLiteral("Spiele=%1").arg(TestProtokoll::zeilen("SpielListe")),
        "Gruppe=" + text(&fenster, "cmbGruppenId"),
        "Kosten=" +
            texte(&fenster, {"lePlKosten1", "lePlKosten2", "lePlKosten3", "lePlKosten4",
                             "leKartengeld", "leVerlSpiele1Bis5", "leVerlSpieleAb6", "lePreisSkat",
                             "leGewSpieleAbzglVerlSpiele", "leVerlSpieleDerGegenspieler3",
                             "leVerlSpieleDerGegenspieler4", "leListenName"})
                .join(QLatin1Char('|')),
        "Neu1=" + text(&fenster, "leNeuSpieler1"),
        "Liste=" + text(&fenster, "lblListe"),
        "Tische=" + tische.join(QLatin1Char(',')),
        QStringLiteral("Verbinden=%1").arg(kind<QAction>(&fenster, "actionVerbinden")->isEnabled()),
        QStringLiteral("Zweitliste=%1").arg(fenster.findChild<Paarung *>()->gepaarterTisch())};
}

// A participant of its own on the link that records what the window sends.
struct Horcher
{
    explicit Horcher(const QString &name = QStringLiteral("Horcher")) : client(name)
    {
        QObject::connect(&client, &Client::newMessage,
                         [this](const QString &, const QString &text) { texte << text; });
    }
    QStringList typ(int n) const
    {
        return texte.filter(QRegularExpression(QStringLiteral("^%1:").arg(n)));
    }
    Client client;
    QStringList texte;
};

} // namespace

class TstNetz : public QObject
{
    Q_OBJECT

private slots:
    void init() { TestUmgebung::allesLoeschen(); }
    void nachrichten_data();
    void nachrichten();
    void auslosung();
    void einmalEineBox();
    void kommenUndGehen();
    void gesendet();
    void zweitliste();
    void schluessel();
    void verbindung_data();
    void verbindung();
    void abendMitManager();
    void zweitlisteAnfragen();
};

void TstNetz::nachrichten_data()
{
    Faelle::laden("netznachrichten.tsv");
}

// A message changes exactly what its row says, or nothing; one from the wrong sender,
// in the wrong state or too large is refused, counted and named on the status line.
// Bytes that are no UTF-8 never leave the link (tst_velmora_netz).
void TstNetz::nachrichten()
{
    QFETCH(QString, von);
    QFETCH(QString, vorher);
    QFETCH(QStringList, texte);
    QFETCH(QStringList, danach);
    Probe fenster(4);
    vorbereiten(fenster, vorher);
    const QStringList anfang = zustand(fenster);
    const int bisher = fenster.findChild<NetzSteuerung *>()->abgewiesen();
    for (const QString &text : texte)
        fenster.appendMessage(von, text);
    fenster.CheckRecordGegenRecordVonErsterListe();

    const QStringList ende = zustand(fenster);
    if (danach.isEmpty())
        QCOMPARE(ende, anfang);
    for (const QString &erwartet : danach)
        QVERIFY2(ende.contains(erwartet), qPrintable(ende.join("; ").left(1000)));
    QTEST(fenster.findChild<NetzSteuerung *>()->abgewiesen() - bisher, "abgewiesen");
    QTEST(status(fenster), "meldung");
}

// A draw fills the "Neu" page for the scorer to confirm and sets the manager's
// group; on a fresh list, only the one the page asked for.
void TstNetz::auslosung()
{
    const QString sitze = "@31|Erika Muster|Ja|Nein@32|Otto Normal|Nein|Ja@33|Eva Lang|Ja|Ja";
    for (const bool frisch : {false, true}) {
        TestUmgebung::allesLoeschen();
        Probe fenster(frisch ? 0 : 4);
        fenster.newParticipant(Manager);
        if (frisch) {
            neuSeite(&fenster, {}, "pbAnfordern", "9", "3");
            // Not what was asked for: another series.
            fenster.appendMessage(Manager, "6:127.0.0.1:Gruppe B$9@2" + sitze);
        }
        const QString tisch = frisch ? "9" : "5", serie = frisch ? "3" : "2";
        fenster.appendMessage(Manager, "6:127.0.0.1:Gruppe B$" + tisch + "@" + serie + sitze);
        QCOMPARE(fenster.antworten.texte,
                 frisch ? QStringList({"Neues Protokoll?",
                                       "Sind Tischnr 9 und Seriennr 3 richtig gesetzt?",
                                       "Auslosung noch nicht abgeschlossen\noder Tisch 9 nicht "
                                       "vorhanden!"})
                        : QStringList({"Neues Protokoll?"}));
        QCOMPARE(seite(&fenster), QStringLiteral("tabNeu"));
        QCOMPARE(texte(&fenster, {"leNeuSpieler1", "leNeuSpieler2", "leNeuSpieler3",
                                  "leNeuSpieler4", "leNeuTischNr", "leNeuSerie"}),
                 QStringList({"Erika Muster", "Otto Normal", "Eva Lang", "", tisch, serie}));
        QVERIFY(TestProtokoll::spalte("Spieler", "MgldNr").contains(32));
        QCOMPARE(text(&fenster, "cmbGruppenId"), QStringLiteral("Gruppe B"));
        QVERIFY(!kind<QWidget>(&fenster, "cmbGruppenId")->isEnabled());
    }
}

// A flood cannot stack boxes: while one kind is open, the next goes to the status
// line. Outside a tournament the table keeps to itself.
void TstNetz::einmalEineBox()
{
    Probe fenster(4);
    Client *client = fenster.findChild<Client *>();
    emit client->newParticipant(Manager);
    QStringList waehrend;
    QTimer::singleShot(0, &fenster, [&] {
        for (const char *text : {"3:127.0.0.1:$8", "6:127.0.0.1:$9@1"})
            fenster.appendMessage(Manager, text);
        waehrend << status(fenster);
    });
    fenster.appendMessage(Manager, "3:127.0.0.1:$7");
    // The draw's box opens inside the first; which is answered first does not matter.
    QStringList boxen = fenster.antworten.texte;
    boxen.sort();
    QCOMPARE(boxen,
             QStringList({"Auslosung noch nicht abgeschlossen\noder Tisch 5 nicht vorhanden!",
                          "Tisch 7 ist schon vergeben!"}));
    QCOMPARE(waehrend, QStringList({"Tisch 8 ist schon vergeben!"}));
    for (const auto modus : {&MainWindow::onSetModusErgebnis, &MainWindow::onSetModusBierlachs,
                             &MainWindow::onSetModusTurnier}) {
        (fenster.*modus)();
        emit client->newMessage(Manager, "3:127.0.0.1:$6");
    }
    QCOMPARE(fenster.antworten.texte.mid(2), QStringList({"Tisch 6 ist schon vergeben!"}));
}

// The manager's arrival swaps the "Neu" page to asking it for players and shows
// the standings; its leaving undoes it. The first manager stays the one; one
// back from the same address keeps ranking and page. Other tables are counted.
void TstNetz::kommenUndGehen()
{
    Probe fenster(4);
    fenster.show();
    auto *anfordern = kind<QPushButton>(&fenster, "pbAnfordern");
    auto *datei = kind<QPushButton>(&fenster, "pbSpielerAusTextdatei");
    QAbstractItemModel *rangliste = modell(&fenster, "tvRangliste");
    QVERIFY(anfordern->isHidden() && !datei->isHidden());

    fenster.newParticipant("Fremd@10.0.0.3:1");
    fenster.rechnerAbmeldung("Fremd@10.0.0.3:1");
    QCOMPARE(status(fenster), QStringLiteral("Kein Kontakt zu anderen Protokollen."));

    fenster.newParticipant(Manager);
    QCOMPARE(status(fenster), QStringLiteral("Verbunden Tabulor 10.0.0.9"));
    QCOMPARE(seite(&fenster), QStringLiteral("tabSpielstaende"));
    QVERIFY(!anfordern->isHidden() && datei->isHidden());
    QVERIFY(!kind<QLineEdit>(&fenster, "leNeuSpieler1")->isEnabled());
    QVERIFY(kind<QMenu>(&fenster, "menuZweitliste")->isEnabled());
    QCOMPARE(rangliste->rowCount(), 4);
    fenster.appendMessage(Tisch, "7:10.0.0.12:$Otto|7|1|10|1|0|0|-");

    fenster.newParticipant(Manager2);
    QCOMPARE(status(fenster), "Weiterer Tabulor " + Manager2 + " wird nicht beachtet.");
    fenster.newParticipant(Tisch);
    QCOMPARE(status(fenster), QStringLiteral("Kontakt zu anderen Protokollen."));
    fenster.newParticipant(Manager2);
    QCOMPARE(status(fenster), QStringLiteral("Kontakt zu anderen Protokollen."));
    fenster.rechnerAbmeldung(Manager2);
    QVERIFY(!anfordern->isHidden());

    fenster.rechnerAbmeldung(Manager);
    QCOMPARE(status(fenster), QStringLiteral("Getrennt Tabulor."));
    QVERIFY(anfordern->isHidden() && !datei->isHidden());
    QVERIFY(kind<QLineEdit>(&fenster, "leNeuSpieler1")->isEnabled());
    fenster.rechnerAbmeldung(Tisch);
    QCOMPARE(status(fenster), QStringLiteral("Kein Kontakt zu anderen Protokollen."));

    seiteZeigen(&fenster, "tabSpieleintrag");
    fenster.newParticipant(QStringLiteral("Tabulor@10.0.0.9:4001"));
    QCOMPARE(status(fenster), QStringLiteral("Verbunden Tabulor 10.0.0.9"));
    QCOMPARE(seite(&fenster), QStringLiteral("tabSpieleintrag"));
    QCOMPARE(rangliste->rowCount(), 5);
    QVERIFY(!anfordern->isHidden());
}

// An answer goes to the address the request came from, whatever its text claims;
// number and results go again to a manager that comes (back), without a new game.
void TstNetz::gesendet()
{
    Probe fenster(4);
    Horcher horcher;
    QTRY_COMPARE_WITH_TIMEOUT(horcher.client.participants().size(), 1, 10000);

    fenster.newParticipant(Manager);
    QTRY_COMPARE(horcher.typ(12), QStringList({"12:127.0.0.1:$5"}));
    QTRY_COMPARE(horcher.typ(7).size(), 1);
    QVERIFY2(horcher.typ(7).first().startsWith("7:127.0.0.1:$Anna|5|1|0|0|0|"),
             qPrintable(horcher.typ(7).first()));
    // Drawn again, the sheet has the same results: nothing goes out. A game changes them.
    fenster.bierlachsIndexChanged(-1);
    eingeben(&fenster, Spiel{"tbKreuz", 1, true, ""});
    QTRY_COMPARE(horcher.typ(13).size(), 1);
    QCOMPARE(horcher.typ(7).size(), 2);
    QVERIFY2(horcher.typ(7).last().contains("@Bernd|5|1|74|1|0|"),
             qPrintable(horcher.typ(7).last()));

    fenster.appendMessage(Tisch, "8:10.0.0.99:$5");
    QTRY_COMPARE(horcher.typ(9),
                 QStringList({"9:10.0.0.12:$5@1@100|Anna|Ja|Ja@101|Bernd|Ja|Ja@102|Clara|Ja|Ja@"
                              "103|Dora|Ja|Ja@SpielerEnde"}));
    // Paired, the first list holds its results back; dropping the second sends them.
    eingeben(&fenster, Spiel{"tbKreuz", 2, true, ""});
    QTRY_COMPARE(horcher.typ(13).size(), 2);
    QCOMPARE(horcher.typ(7).size(), 2);
    QVERIFY(!kind<QAction>(&fenster, "actionVerbinden")->isEnabled());
    fenster.antworten.antworte(QMessageBox::Yes);
    fenster.onClearProtokoll();
    QVERIFY(fenster.antworten.texte.contains("Trennung von Zweitliste?"));
    QVERIFY(kind<QAction>(&fenster, "actionVerbinden")->isEnabled());
    QTRY_COMPARE(horcher.typ(7).size(), 3);
    QVERIFY2(horcher.typ(7).last().contains("@Clara|5|1|74|1|0|"),
             qPrintable(horcher.typ(7).last()));
    // A manager coming back has them again; another second list may pair.
    fenster.rechnerAbmeldung(Manager);
    fenster.newParticipant(Manager);
    QTRY_COMPARE(horcher.typ(12).size(), 2);
    QTRY_COMPARE(horcher.typ(7).size(), 4);
    fenster.appendMessage(Tisch2, "8:10.0.0.98:$5");
    QTRY_COMPARE(horcher.typ(9).size(), 2);
}

// The second list's request needs a table, one pairing at a time. Paired, it
// copies the first list's games but sends neither them, its results nor its
// sheet: those are the first list's. Released, it can ask again; closed, it
// releases without asking more than whether to close.
void TstNetz::zweitliste()
{
    Probe fenster(4, 4, 0, 5);
    Horcher horcher;
    QTRY_COMPARE_WITH_TIMEOUT(horcher.client.participants().size(), 1, 10000);
    fenster.newParticipant(Tisch);
    fenster.startZweitProtokoll();
    auto *dock = kind<QDockWidget>(&fenster, "DockZweitliste");
    QVERIFY(dock);
    QCOMPARE(dock->findChild<QLabel *>()->text(), QStringLiteral("Tischnummer eingeben..."));
    zweitlisteTisch(fenster, "0");
    QVERIFY(kind<QDockWidget>(&fenster, "DockZweitliste"));
    zweitlisteTisch(fenster, "7");
    QTRY_VERIFY(!kind<QDockWidget>(&fenster, "DockZweitliste"));
    QTRY_COMPARE(horcher.typ(8), QStringList({"8:127.0.0.1:$7"}));
    fenster.startZweitProtokoll();
    QCOMPARE(fenster.antworten.texte, QStringList({"Es wurde keine Tischnummer eingegeben!",
                                                   "Zweitliste ist schon gesetzt!"}));

    fenster.appendMessage(Tisch, "9:127.0.0.1:$7@1@SpielerEnde");
    fenster.newParticipant(Manager);
    fenster.appendMessage(Tisch, "14:127.0.0.1:$12@1@0@0@0@0@0@0@0@24@0@24@0@0@0@0@0");
    // The first list's rows are compared by themselves: the same game says nothing.
    auto *vergleich = kind<QTimer>(&fenster, "checkTimer");
    vergleich->setInterval(5);
    fenster.appendMessage(Tisch, "13:127.0.0.1:$7@1@1@12@1@0@0@0@0@0@0@0@24@0@24@0@0@0@0@0");
    QTRY_VERIFY(!vergleich->isActive());
    fenster.appendMessage(Tisch, "13:127.0.0.1:$7@1@1@12@2@0@0@0@0@0@0@0@24@0@24@0@0@0@0@0");
    QTRY_COMPARE(fenster.antworten.texte.mid(2),
                 QStringList{"Eintrag bei Spiel 1 Mit 1 <> Mit 2."});
    // Three more games fill the list: the sheet is the first list's to send.
    for (const int sitz : {2, 3, 0})
        eingeben(&fenster, Spiel{"tbKreuz", sitz, true, ""});
    QCOMPARE(TestProtokoll::zeilen("SpielListe"), 4);
    QVERIFY(fenster.antworten.texte.contains("Rundenende erreicht!"));
    fenster.onZweitListeFreigeben(false);
    QTRY_COMPARE(horcher.typ(11), QStringList({"11:10.0.0.12:$"}));
    for (const int typ : {7, 13, 16, 17})
        QCOMPARE(horcher.typ(typ), QStringList());

    // Paired again and released, kept as a copy: the request can be made again.
    fenster.appendMessage(Tisch, "9:127.0.0.1:$7@1@SpielerEnde");
    fenster.antworten.antworte(QMessageBox::Yes);
    fenster.antworten.antworte(QMessageBox::No);
    fenster.onZweitListeFreigeben();
    QCOMPARE(text(&fenster, "lblListe"), QStringLiteral("Kopie von Tisch 7"));
    fenster.startZweitProtokoll();
    QVERIFY(kind<QDockWidget>(&fenster, "DockZweitliste"));
    zweitlisteTisch(fenster, "8");
    fenster.antworten.texte.clear();
    fenster.show();
    QVERIFY(fenster.close());
    QCOMPARE(fenster.antworten.texte, QStringList({"Kartulo beenden?"}));
}

// With an event key, what comes without it or with another is dropped and
// counted; the same key goes through. The key is kept in the store.
void TstNetz::schluessel()
{
    Probe fenster(4);
    auto *feld = kind<QLineEdit>(&fenster, "leTurnierschluessel");
    feld->setText("Herbstturnier");
    emit feld->editingFinished();
    QCOMPARE(einstellungen().value("turnierschluessel").toString(),
             QStringLiteral("Herbstturnier"));
    Client ohne(QStringLiteral("Kartulo")), falsch(QStringLiteral("Kartulo")),
        richtig(QStringLiteral("Kartulo"));
    falsch.setKey("Sommerturnier");
    richtig.setKey("Herbstturnier");
    for (Client *client : {&ohne, &falsch, &richtig})
        QTRY_COMPARE_WITH_TIMEOUT(client->participants().size(), 3, 10000);
    ohne.sendMessage("7:127.0.0.1:$Otto|7|1|0|0|0|0|-");
    falsch.sendMessage("7:127.0.0.1:$Eva|7|1|0|0|0|0|-");
    richtig.sendMessage("7:127.0.0.1:$Ida|7|1|0|0|0|0|-");
    QAbstractItemModel *rangliste = modell(&fenster, "tvRangliste");
    QTRY_COMPARE(rangliste->rowCount(), 5);
    QTRY_COMPARE(status(fenster),
                 QStringLiteral("2 Nachrichten ohne gueltigen Schluessel verworfen"));
    QCOMPARE(rangliste->match(rangliste->index(0, 0), Qt::DisplayRole, "Ida").size(), 1);
}

// The link typed on the settings page: what cannot be used is refused with a
// box and changes nothing; what can is kept in the link's own file and used.
void TstNetz::verbindung_data()
{
    Faelle::laden("verbindung.tsv");
}

void TstNetz::verbindung()
{
    QFETCH(QString, server);
    QFETCH(QString, kennung);
    QFETCH(QString, schluessel);
    QFETCH(QString, meldung);
    QFETCH(QString, anzeige);
    Probe fenster(4);
    auto *stand = kind<QLabel>(&fenster, "lblVerbindungsart");
    QCOMPARE(stand->text(), QStringLiteral("Verbindung: LAN (ohne Server)"));
    auto *serverFeld = kind<QLineEdit>(&fenster, "leServer");
    QVERIFY(!serverFeld->isEnabled());
    kind<QComboBox>(&fenster, "cmbVerbindung")->setCurrentIndex(1);
    QVERIFY(serverFeld->isEnabled());
    serverFeld->setText(server);
    kind<QLineEdit>(&fenster, "leKennung")->setText(kennung);
    kind<QLineEdit>(&fenster, "leZugangsschluessel")->setText(schluessel);
    kind<QPushButton>(&fenster, "pbVerbindungUebernehmen")->click();
    QCOMPARE(fenster.antworten.titel,
             meldung.isEmpty() ? QStringList() : QStringList{"Verbindung"});
    QVERIFY(fenster.antworten.texte.join("").contains(meldung));
    const LinkSettings gespeichert = LinkSettings::load();
    QCOMPARE(gespeichert.mode == LinkSettings::Mode::Venue, meldung.isEmpty());
    if (!meldung.isEmpty())
        return;
    QCOMPARE(gespeichert.identity, kennung);
    QCOMPARE(gespeichert.key.toHex(), QByteArray("0011223344556677"));
    // Nobody listens on port 9: the label says so, with the reason.
    QTRY_VERIFY(stand->text().startsWith(anzeige + " ("));
    QCOMPARE(fenster.findChild<Client *>()->linkMode(), LinkSettings::Mode::Venue);
    // A window opened anew has it.
    QCOMPARE(texte(std::make_unique<MainWindow>().get(), {"cmbVerbindung", "leKennung"}),
             QStringList({text(&fenster, "cmbVerbindung"), kennung}));
    // Back to the LAN: the venue's data stay for next time.
    kind<QComboBox>(&fenster, "cmbVerbindung")->setCurrentIndex(0);
    kind<QPushButton>(&fenster, "pbVerbindungUebernehmen")->click();
    QCOMPARE(stand->text(), QStringLiteral("Verbindung: LAN (ohne Server)"));
    QCOMPARE(LinkSettings::load().identity, kennung);
    QCOMPARE(LinkSettings::load().key, gespeichert.key);
    QCOMPARE(LinkSettings::load().mode, LinkSettings::Mode::Lan);
    QVERIFY(!serverFeld->isEnabled());
}

// A table and the manager over the real link, in one process on loopback:
// every message of an evening goes both ways.
void TstNetz::abendMitManager()
{
    // Three players, three games: the third ends the round.
    QVERIFY(TestProtokoll::anlegen(3, 3, 0, 5));
    MeldungsBeantworter antworten;
    auto fenster = std::make_unique<MainWindow>();
    std::optional<Horcher> manager(QStringLiteral("Tabulor"));
    QTRY_COMPARE_WITH_TIMEOUT(manager->client.participants().size(), 1, 10000);
    QCOMPARE(manager->client.participants().value(0).section(':', 0, 0),
             QStringLiteral("Kartulo@127.0.0.1"));
    QTRY_VERIFY_WITH_TIMEOUT(status(*fenster).startsWith("Verbunden Tabulor"), 10000);

    // The manager's player list reaches the table.
    manager->client.sendMessage("4:127.0.0.1:$12|Erika Muster|Ja|Nein@13|Otto Normal|Nein|Ja");
    QTRY_COMPARE(TestProtokoll::spalte("Spieler", "MgldNr"), QList<int>({12, 13}));

    // The table asks for its players.
    kind<QLineEdit>(fenster.get(), "leNeuTischNr")->setText("5");
    kind<QLineEdit>(fenster.get(), "leNeuSerie")->setText("1");
    fenster->spielerdatenAnfordern();
    QTRY_VERIFY(manager->texte.contains("5:127.0.0.1:$5@1"));

    // Each game sends its row and results; the third ends the round and sends the sheet.
    for (int spiel = 0; spiel < 3; ++spiel)
        eingeben(fenster.get(), Spiel{"tbKreuz", (spiel + 1) % 3, true, ""});
    QTRY_VERIFY(manager->texte.contains(
        QStringLiteral("13:127.0.0.1:$5@1@3@12@1@0@0@0@0@0@0@0@24@0@24@0@0@0@0@0")));
    QTRY_VERIFY(!manager->typ(17).isEmpty());
    QVERIFY(!manager->typ(7).isEmpty());
    QVERIFY2(manager->typ(7).last().startsWith("7:127.0.0.1:$") &&
                 manager->typ(7).last().contains("Bernd|5|1|"),
             qPrintable(manager->typ(7).last()));
    QVERIFY(antworten.texte.contains("Rundenende erreicht!\nDaten nach Tabulor kopieren?"));

    QVERIFY(manager->texte.contains("16:127.0.0.1:$Skat20-11-2026_S1_T5.pdf"));
    const QString blatt = manager->typ(17).last();
    QVERIFY(blatt.startsWith("17:127.0.0.1:$Skat20-11-2026_S1_T5.pdf@"));
    QFile datei(TestUmgebung::datenVerzeichnis() + "/Skat20-11-2026_S1_T5.pdf");
    QVERIFY(datei.open(QIODevice::ReadOnly));
    QCOMPARE(qUncompress(QByteArray::fromBase64(blatt.section('@', 1).toLatin1())),
             datei.readAll());

    // The manager leaves: the table sees it go.
    manager.reset();
    QTRY_COMPARE_WITH_TIMEOUT(status(*fenster), QStringLiteral("Getrennt Tabulor."), 10000);
}

// A first list answers a second list's request, to the address it came from: refused
// until its list has started, then the players and every game, then refused again.
void TstNetz::zweitlisteAnfragen()
{
    MeldungsBeantworter antworten;
    auto fenster = std::make_unique<MainWindow>();
    Horcher zweite(QStringLiteral("Kartulo"));
    QTRY_COMPARE_WITH_TIMEOUT(zweite.client.participants().size(), 1, 10000);

    // Table 0 without a list: a request for table 0 is refused.
    zweite.client.sendMessage("8:10.1.1.1:$0");
    QTRY_COMPARE(zweite.typ(10), QStringList({"10:127.0.0.1:$0@Protokoll in Erstliste wurde noch "
                                              "nicht gestartet!"}));
    zweite.client.sendMessage("8:10.1.1.1:$7");
    // The table leaves: the other sees it go.
    fenster.reset();
    QTRY_VERIFY_WITH_TIMEOUT(zweite.client.participants().isEmpty(), 10000);
    zweite.texte.clear();

    TestUmgebung::allesLoeschen();
    QVERIFY(TestProtokoll::anlegen(3, 36, 0, 5));
    fenster = std::make_unique<MainWindow>();
    QTRY_COMPARE_WITH_TIMEOUT(zweite.client.participants().size(), 1, 10000);
    eingeben(fenster.get(), Spiel{"tbKreuz", 1, true, ""});
    eingeben(fenster.get(), Spiel{"tbGrang", 2, false, ""});
    zweite.client.sendMessage("8:10.1.1.1:$5");
    QTRY_COMPARE(zweite.typ(14).size(), 2);
    QCOMPARE(zweite.typ(9),
             QStringList({"9:127.0.0.1:$5@1@100|Anna|Ja|Ja@101|Bernd|Ja|Ja@102|Clara|Ja|Ja@"
                          "SpielerEnde"}));
    QCOMPARE(zweite.typ(14), QStringList({"14:127.0.0.1:$12@1@0@0@0@0@0@0@0@24@0@0@24@0@0@0@0",
                                          "14:127.0.0.1:$24@1@0@0@0@0@0@0@0@0@96@0@0@-96@0@0@0"}));
    zweite.client.sendMessage("8:10.1.1.2:$5");
    QTRY_COMPARE(zweite.typ(10), QStringList({"10:127.0.0.1:$5@Tisch 5 hat schon Zweitliste!"}));

    // A corrected game goes to the second list again, to be compared anew.
    fenster->onUebersichtDoubleClicked(modell(fenster.get(), "tblViewUebersicht")->index(0, 0));
    for (const char *knopf : {"tbVerloren", "pbFertig", "pbInListeEintragen"})
        klick(fenster.get(), knopf);
    QTRY_COMPARE(zweite.typ(13).size(), 3);
    QCOMPARE(zweite.typ(13).last(),
             QStringLiteral("13:127.0.0.1:$5@1@1@12@1@0@0@0@0@0@0@0@0@48@0@-48@0@0@0@0"));
}

KARTULO_TEST_MAIN(TstNetz)
#include "tst_netz.moc"
