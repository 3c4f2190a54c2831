// Real instances on the link, each a process with its own list: the second
// pairs with the first, copies its games, is compared game by game, and is
// released again; and an evening at a venue through its broker loses nothing
// when the broker or the manager goes away. A manager coming back and a first
// list dropping its second list: tst_netz.

#include "helpers/velmorahilfe.h"

#include <QtNetwork>

#include <memory>
#include <unistd.h>

namespace {

// A table (kartulo_tisch), steered line by line.
struct Tisch : Prozess
{
    Tisch() : Prozess({}, QStringLiteral(KARTULO_TISCH)) {}
    ~Tisch() override
    {
        closeWriteChannel();
        waitForFinished(5000);
    }

    // Sends the commands one by one, each once the one before is done.
    bool befehl(const QStringList &texte)
    {
        for (const QString &text : texte) {
            const QString fertig = "OK " + text.section(' ', 0, 0);
            const int vorher = zeilen.count(fertig);
            sagen(text);
            if (!QTest::qWaitFor([&] { return zeilen.count(fertig) > vorher; }, 10000))
                return false;
        }
        return true;
    }

    // What the command last printed after its own name in capitals.
    QString frage(const QString &text)
    {
        const QString art = text.toUpper() + ' ';
        const QStringList passend =
            befehl({text}) ? zeilen.filter(QRegularExpression('^' + art)) : QStringList();
        return passend.isEmpty() ? QString() : passend.last().mid(art.size());
    }

    QStringList boxen() const { return zeilen.filter(QRegularExpression("^BOX ")); }
};

// The manager as velmora-cli sees the link: one line per event.
struct Manager : Prozess
{
    explicit Manager(const QStringList &mehr = {})
        : Prozess(QStringList{"--name", "Tabulor"} + mehr)
    {
    }

    // How many messages of that type arrived whose text holds the piece.
    int anzahl(int typ, const QString &stueck) const
    {
        const QRegularExpression nachricht(QStringLiteral(" MSG \\S+ %1:").arg(typ));
        return zeilen.filter(nachricht).filter(stueck).size();
    }
    bool hat(int typ, const QString &stueck) const { return anzahl(typ, stueck) > 0; }
};

// A venue's broker, set up as an organiser does, on a free port of loopback.
struct Server : Prozess
{
    explicit Server(const QString &ordner)
        : Prozess({"-c", einrichten(ordner)}, QStringLiteral("mosquitto")), ordner(ordner)
    {
        QFile psk(ordner + "/psk");
        psk.open(QIODevice::ReadOnly);
        for (const QByteArray &zeile : psk.readAll().split('\n'))
            schluessel.insert(zeile.split(':').value(0), zeile.split(':').value(1));
    }
    void laufen() { start(QStringLiteral("mosquitto"), {"-c", ordner + "/mosquitto.conf"}); }
    QStringList als(const QString &kennung) const
    {
        return {"--broker",       QStringLiteral("127.0.0.1:%1").arg(port),
                "--psk-identity", kennung,
                "--psk-file",     ordner + "/psk"};
    }
    QString tisch(const QString &kennung) const
    {
        return QStringLiteral("verbindung 127.0.0.1:%1 %2 %3")
            .arg(QString::number(port), kennung, schluessel.value(kennung.toLatin1()));
    }

    static QString einrichten(const QString &ordner)
    {
        QTcpServer frei;
        frei.listen(QHostAddress::LocalHost);
        port = frei.serverPort();
        frei.close();
        QProcess::execute(QStringLiteral(VELMORA_CLI),
                          {"--venue-setup", ordner, "--tables", "3", "--event", "Test", "--port",
                           QString::number(port), "--address", "127.0.0.1"});
        // Run by root the broker would turn into a user who cannot read the keys.
        QFile konf(ordner + "/mosquitto.conf");
        if (::getuid() == 0 && konf.open(QIODevice::Append))
            konf.write("user root\n");
        return konf.fileName();
    }

    static inline quint16 port = 0;
    QString ordner;
    QHash<QByteArray, QByteArray> schluessel;
};

// Pairs the table as table 5's second list and waits for the copied games.
void paaren(Tisch &zweite, int teilnehmer, int spiele)
{
    QTRY_COMPARE_WITH_TIMEOUT(zweite.frage("teilnehmer"), QString::number(teilnehmer), 10000);
    QVERIFY(zweite.befehl({"zweitliste 5"}));
    QTRY_COMPARE_WITH_TIMEOUT(zweite.frage("zeilen"), QString::number(spiele), 10000);
}

} // namespace

class TstZweitliste : public QObject
{
    Q_OBJECT

private slots:
    // The tables of this program find each other and no other test's.
    void initTestCase()
    {
        qputenv("VELMORA_UDP_PORT",
                QByteArray::number(30000 + QCoreApplication::applicationPid() % 20000));
    }
    void paarenVergleichenFreigeben();
    void veranstaltung();
};

void TstZweitliste::paarenVergleichenFreigeben()
{
    Tisch erste;
    Tisch zweite;
    QVERIFY(erste.befehl({"liste 5", "spiel tbKreuz 1 1", "spiel tbGrang 2 1"}));
    QVERIFY(zweite.befehl({"liste 5"}));
    // The second list pairs and gets the two games already entered.
    paaren(zweite, 1, 2);
    QCOMPARE(zweite.frage("beschriftung"), QStringLiteral("Zweitliste Tisch 5"));

    // Game 3 the same on both: no message. Game 4 won on the first list, lost
    // on the second: one box per differing field, in table order.
    QVERIFY(zweite.befehl({"spiel tbKreuz 3 1"}) && erste.befehl({"spiel tbKreuz 3 1"}));
    QVERIFY(zweite.befehl({"spiel tbKreuz 0 0"}) && erste.befehl({"spiel tbKreuz 0 1"}));
    QTRY_COMPARE_WITH_TIMEOUT(zweite.boxen().filter("FEHLER").size(), 3, 15000);
    QCOMPARE(zweite.boxen().filter("FEHLER"),
             QStringList({"BOX FEHLER|Eintrag bei Spiel 4 Gewonnen 0 <> Gewonnen 24.",
                          "BOX FEHLER|Eintrag bei Spiel 4 Verloren 48 <> Verloren 0.",
                          "BOX FEHLER|Eintrag bei Spiel 4 Spieler1 -48 <> Spieler1 24."}));

    // Released, the list kept as a copy; the first list is told.
    QVERIFY(zweite.befehl({"antwort ja", "antwort nein", "freigeben"}));
    QCOMPARE(zweite.frage("beschriftung"), QStringLiteral("Kopie von Tisch 5"));
    QCOMPARE(zweite.frage("zeilen"), QStringLiteral("4"));
    QTRY_VERIFY_WITH_TIMEOUT(erste.boxen().contains("BOX INFO|ZweitListe hat sich abgemeldet."),
                             10000);
}

// Three tables and the manager through the broker as on the LAN: the broker killed and back, the
// manager away a while, lose and double nothing; a late table has its draw and costs at once.
void TstZweitliste::veranstaltung()
{
    if (QStandardPaths::findExecutable(QStringLiteral("mosquitto")).isEmpty())
        QSKIP("no mosquitto");
    QTemporaryDir ordner;
    Server server(ordner.path());
    QVERIFY(server.schluessel.contains("tisch03"));
    auto manager = std::make_unique<Manager>(server.als("tabulor"));
    // Its session begins at its first connection; the broker may still be starting.
    QTRY_VERIFY_WITH_TIMEOUT(!manager->zeilen.filter(" LINK open").isEmpty(), 5000);
    Tisch fuenf, zweite;
    QVERIFY(fuenf.befehl({"liste 5", server.tisch("tisch01")}));
    const QString stand =
        QStringLiteral("Verbindung: Veranstaltung, Server 127.0.0.1:%1 als tisch01");
    QTRY_COMPARE_WITH_TIMEOUT(fuenf.frage("stand"), stand.arg(server.port), 5000);
    QVERIFY(fuenf.befehl({"spiel tbKreuz 1 1"}));
    QTRY_VERIFY_WITH_TIMEOUT(manager->hat(7, "Bernd|5|1|74|1|0|") && manager->hat(13, "$5@1@1@"),
                             10000);

    QVERIFY(zweite.befehl({"liste 5", server.tisch("tisch02")}));
    paaren(zweite, 2, 1);

    // The broker killed mid-game and back: the game entered meanwhile arrives
    // once. (It keeps the sessions it saved, which it does every second.)
    QTest::qWait(2500);
    server.beenden();
    QVERIFY(fuenf.befehl({"spiel tbGrang 2 1"}));
    server.laufen();
    QElapsedTimer uhr;
    uhr.start();
    QTRY_COMPARE_WITH_TIMEOUT(manager->anzahl(13, "$5@1@2@"), 1, 15000);

    qInfo("Spiel nach Neustart des Servers beim Manager nach %lld ms", uhr.elapsed());

    // The manager away for two games: back, it has them and the standings.
    manager.reset();
    QVERIFY(fuenf.befehl({"spiel tbKreuz 3 1", "spiel tbKreuz 1 0"}));
    manager = std::make_unique<Manager>(server.als("tabulor"));
    QTRY_VERIFY_WITH_TIMEOUT(manager->hat(13, "$5@1@3@") && manager->hat(13, "$5@1@4@"), 10000);
    // Paired, the table sends no results; those it sent before are kept.
    QTRY_VERIFY_WITH_TIMEOUT(manager->hat(7, "Bernd|5|1|74|1|0|"), 5000);
    QCOMPARE(manager->anzahl(13, "$5@1@3@") + manager->anzahl(13, "$5@1@4@"), 2);

    // Draw and costs kept by the broker: a table that starts later has them at once.
    manager->sagen("6:127.0.0.9:G$7@1@1|A|Ja|Ja@2|B|Ja|Ja@3|C|Ja|Ja");
    manager->sagen("15:127.0.0.9:G$7@1@0.5|1.0|2.0|3.5|0.7|1.0|2.5|15.0|60|45|35|Club");
    QTest::qWait(500);
    uhr.restart();
    Manager spaet(server.als("tisch03"));
    QTRY_VERIFY_WITH_TIMEOUT(spaet.hat(6, "$7@1@1|A") && spaet.hat(15, "$7@1@0.5"), 2000);
    qInfo("Auslosung und Kosten beim spaeten Tisch nach %lld ms", uhr.elapsed());

    // A table writing the manager's state: the broker refuses, the table is told.
    spaet.sagen("4:127.0.0.1:$1|Falsch|Ja|Ja");
    QTRY_VERIFY_WITH_TIMEOUT(!spaet.zeilen.filter(" REFUSED Not authorized").isEmpty(), 5000);
    QVERIFY(!manager->hat(4, "Falsch"));

    // A manager that knows only the LAN reaches the tables through the bridge.
    manager.reset();
    Manager lan;
    Manager bruecke(server.als("tabulor") << "--bridge");
    QTRY_VERIFY_WITH_TIMEOUT(
        spaet.zeilen.filter(QRegularExpression(" JOIN \\S+:tabulor$")).size() == 2, 10000);
    spaet.sagen("12:127.0.0.1:$9");
    lan.sagen("3:127.0.0.1:$9");
    QTRY_VERIFY_WITH_TIMEOUT(lan.hat(12, "$9") && spaet.hat(3, "$9"), 5000);
}

QTEST_GUILESS_MAIN(TstZweitliste)
#include "tst_zweitliste.moc"
