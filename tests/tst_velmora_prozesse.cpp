// velmora-cli as a peer in another process: finding each other, messages
// both ways with the event key, standard input, a hung peer and its return,
// and two network namespaces joined by a veth pair, where nothing goes over
// loopback. And the broker velmora-cli --venue-setup prepares, with who may
// send what.

#include "helpers/velmorahilfe.h"

#include <QNetworkInterface>
#include <QProcess>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QtTest>

#include <csignal>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int lange = 20000;

// One velmora-cli (or a command that ends in one) and what it printed.
class Partner
{
public:
    Partner(const QString &programm, const QStringList &argumente)
    {
        QObject::connect(&prozess, &QProcess::readyReadStandardOutput, [this] {
            while (prozess.canReadLine())
                zeilen.append(QString::fromUtf8(prozess.readLine()).chopped(1));
        });
        prozess.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        prozess.start(programm, argumente);
    }
    explicit Partner(const QStringList &argumente) : Partner(QStringLiteral(VELMORA_CLI), argumente)
    {
    }
    ~Partner()
    {
        if (prozess.state() != QProcess::NotRunning) {
            ::kill(pid_t(prozess.processId()), SIGCONT);
            prozess.kill();
            prozess.waitForFinished();
        }
    }
    bool hat(const QString &ereignis) const { return anzahl(ereignis) > 0; }
    // Counts printed lines, time stamps left aside.
    int anzahl(const QString &ereignis) const
    {
        int anzahl = 0;
        for (const QString &zeile : zeilen)
            anzahl += zeile.mid(13) == ereignis;
        return anzahl;
    }

    QProcess prozess;
    QStringList zeilen;
};

int ausfuehren(const QString &befehl)
{
    return QProcess::execute(QStringLiteral("sh"), {QStringLiteral("-c"), befehl});
}

} // namespace

class TestVelmoraProzesse : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cliPartner();
    void haengenderPartner();
    void zweiNetze();
    void einrichtung_data();
    void einrichtung();
};

void TestVelmoraProzesse::initTestCase()
{
    qputenv("VELMORA_PING_MS", "250");
    qputenv("VELMORA_TIMEOUT_MS", "1500");
    qputenv("VELMORA_HELLO_MS", "1000");
}

void TestVelmoraProzesse::cliPartner()
{
    // Both ends keyed: each message below arrives only with a valid tag.
    QTemporaryFile schluessel;
    QVERIFY(schluessel.open());
    schluessel.write("geheim\r\n");
    schluessel.flush();
    Teilnehmer kartulo(QStringLiteral("Kartulo"));
    kartulo.client.setKey("geheim");
    Partner tabulor({QStringLiteral("--exit-on-eof"), QStringLiteral("--full"),
                     QStringLiteral("--key-file"), schluessel.fileName(), QStringLiteral("erste"),
                     QStringLiteral("zweite")});
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.neu.count(), 1, lange);
    const QString id = kartulo.neu.at(0).at(0).toString();
    QVERIFY(id.startsWith(QStringLiteral("Tabulor@127.0.0.1:")));
    QTRY_VERIFY_WITH_TIMEOUT(tabulor.hat(QStringLiteral("JOIN ") + kartulo.id()), lange);
    QVERIFY(tabulor.hat(QStringLiteral("SELF ") + id));

    // The arguments wait for the first participant, then go in order.
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.post.count(), 2, lange);
    QCOMPARE(kartulo.post.at(0), (QList<QVariant>{id, QStringLiteral("erste")}));
    QCOMPARE(kartulo.post.at(1), (QList<QVariant>{id, QStringLiteral("zweite")}));

    const QString lang(250, u'x');
    kartulo.client.sendMessage(QStringLiteral("Null ouvert\nHand ") + lang);
    const QString von = QStringLiteral("MSG ") + kartulo.id() + u' ';
    QTRY_VERIFY_WITH_TIMEOUT(tabulor.hat(von + QStringLiteral("Null ouvert\\nHand ") + lang),
                             lange);

    tabulor.prozess.write("\xc3\xbc"
                          "ber stdin\n\nnoch eine\n");
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.post.count(), 4, lange);
    QCOMPARE(kartulo.post.at(2).at(1).toString(), QStringLiteral("\u00fcber stdin"));
    QCOMPARE(kartulo.post.at(3).at(1).toString(), QStringLiteral("noch eine"));
    kartulo.client.setKey("anders");
    kartulo.client.sendMessage(QStringLiteral("gefälscht"));
    QTRY_VERIFY_WITH_TIMEOUT(tabulor.hat(QStringLiteral("REJECT ") + kartulo.id()), lange);

    tabulor.prozess.closeWriteChannel();
    QTRY_COMPARE_WITH_TIMEOUT(tabulor.prozess.state(), QProcess::NotRunning, lange);
    QCOMPARE(tabulor.prozess.exitCode(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.weg.count(), 1, lange);
    QCOMPARE(Teilnehmer::ids(kartulo.weg), QStringList{id});

    // A key file holding nothing but a line end is no key.
    QVERIFY(schluessel.resize(0) && schluessel.seek(0) && schluessel.write("\n") == 1);
    schluessel.flush();
    Partner ohneSchluessel({QStringLiteral("--key-file"), schluessel.fileName()});
    QTRY_COMPARE_WITH_TIMEOUT(ohneSchluessel.prozess.state(), QProcess::NotRunning, lange);
    QCOMPARE(ohneSchluessel.prozess.exitCode(), 2);
}

void TestVelmoraProzesse::haengenderPartner()
{
    Teilnehmer kartulo(QStringLiteral("Kartulo"));
    Partner tabulor({QStringLiteral("--quiet-after"), QStringLiteral("0.5")});
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.neu.count(), 1, lange);
    QTRY_VERIFY_WITH_TIMEOUT(tabulor.hat(QStringLiteral("QUIET")), lange);

    // Stopped, it keeps its connection open but answers nothing.
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.weg.count(), 1, lange);
    QCOMPARE(Teilnehmer::ids(kartulo.weg), Teilnehmer::ids(kartulo.neu));

    ::kill(pid_t(tabulor.prozess.processId()), SIGCONT);
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.neu.count(), 2, lange);
    QCOMPARE(kartulo.neu.at(1), kartulo.neu.at(0));
    QTRY_COMPARE_WITH_TIMEOUT(tabulor.anzahl(QStringLiteral("JOIN ") + kartulo.id()), 2, lange);
    QVERIFY(tabulor.hat(QStringLiteral("LEAVE ") + kartulo.id()));
    QCOMPARE(kartulo.weg.count(), 1);
}

void TestVelmoraProzesse::zweiNetze()
{
    const QString ip = QStandardPaths::findExecutable(QStringLiteral("ip"));
    const QString unshare = QStandardPaths::findExecutable(QStringLiteral("unshare"));
    if (::geteuid() != 0 || ip.isEmpty() || unshare.isEmpty())
        QSKIP("needs root in the test's network namespace, ip and unshare");
    // Never touch a real machine's interfaces: only a namespace of loopback alone will do.
    const auto netze = QNetworkInterface::allInterfaces();
    for (const QNetworkInterface &netz : netze) {
        if (!netz.flags().testFlag(QNetworkInterface::IsLoopBack))
            QSKIP("runs only in a private network namespace (scripts/netns.sh)");
    }
    // Started before the network is there, Kartulo goes by loopback until it comes.
    Teilnehmer kartulo(QStringLiteral("Kartulo"));
    QCOMPARE(kartulo.client.ownAddress(), QStringLiteral("127.0.0.1"));
    QSignalSpy umgezogen(&kartulo.client, &Client::ownAddressChanged);
    if (ausfuehren(QStringLiteral("ip link add vlm0 type veth peer name vlm1")) != 0)
        QSKIP("no veth pairs here");
    const auto abbauen = qScopeGuard([] { ausfuehren(QStringLiteral("ip link del vlm0")); });
    QCOMPARE(ausfuehren(QStringLiteral("ip addr add 10.77.0.2/24 dev vlm0 && ip link set vlm0 up")),
             0);

    // Tabulor gets a namespace of its own, and the other end of the pair only
    // once it goes by loopback too.
    const QString innen = QStringLiteral(
        "ip link set lo up; (while ! ip link show vlm1 >/dev/null 2>&1; do sleep 0.05; done; "
        "ip addr add 10.77.0.3/24 dev vlm1 && ip link set vlm1 up) & "
        "exec \"$0\" --name Tabulor 'ueber die Leitung'");
    Partner tabulor(unshare, {QStringLiteral("-n"), QStringLiteral("--"), QStringLiteral("sh"),
                              QStringLiteral("-c"), innen, QStringLiteral(VELMORA_CLI)});
    QTRY_VERIFY_WITH_TIMEOUT(
        !tabulor.zeilen.filter(QStringLiteral(" SELF Tabulor@127.0.0.1:")).isEmpty(), lange);
    QCOMPARE(
        ausfuehren(QStringLiteral("ip link set vlm1 netns %1").arg(tabulor.prozess.processId())),
        0);

    QTRY_COMPARE_WITH_TIMEOUT(kartulo.neu.count(), 1, lange);
    const QString id = kartulo.neu.at(0).at(0).toString();
    QVERIFY2(id.startsWith(QStringLiteral("Tabulor@10.77.0.3:")), qPrintable(id));
    QCOMPARE(kartulo.id(), QStringLiteral("Kartulo@10.77.0.2:%1").arg(kartulo.port()));
    QCOMPARE(umgezogen.count(), 1);
    QCOMPARE(kartulo.client.localAddress(id), QStringLiteral("10.77.0.2"));
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.post.count(), 1, lange);
    QCOMPARE(kartulo.post.at(0), (QList<QVariant>{id, QStringLiteral("ueber die Leitung")}));
    QTRY_VERIFY_WITH_TIMEOUT(tabulor.hat(QStringLiteral("JOIN ") + kartulo.id()), lange);
    // Its own address moved from loopback to the pair's end, and it says so.
    QVERIFY(tabulor.hat(QStringLiteral("SELF ") + id));
    kartulo.client.sendMessage(QStringLiteral("zurück"));
    QTRY_VERIFY_WITH_TIMEOUT(
        tabulor.hat(QStringLiteral("MSG ") + kartulo.id() + QStringLiteral(" zurück")), lange);
}

void TestVelmoraProzesse::einrichtung_data()
{
    QTest::addColumn<QString>("tische");
    QTest::addColumn<bool>("pskDa");
    QTest::addColumn<int>("code");
    QTest::newRow("drei Tische") << QStringLiteral("3") << false << 0;
    QTest::newRow("kein Tisch") << QStringLiteral("0") << false << 2;
    QTest::newRow("Schlüssel schon da") << QStringLiteral("3") << true << 2;
}

void TestVelmoraProzesse::einrichtung()
{
    QFETCH(QString, tische);
    QFETCH(bool, pskDa);
    QFETCH(int, code);
    QTemporaryDir temp;
    const QString ordner = temp.filePath(pskDa ? QString() : QStringLiteral("neu"));
    QFile datei(ordner + QStringLiteral("/psk"));
    QVERIFY(!pskDa || (datei.open(QIODevice::WriteOnly) && datei.write("alt:00\n") == 7));
    datei.close();
    QTcpServer frei;
    QVERIFY(frei.listen(QHostAddress::LocalHost));
    const QString port = QString::number(frei.serverPort());
    frei.close();
    QProcess einrichtung;
    einrichtung.start(QStringLiteral(VELMORA_CLI),
                      {QStringLiteral("--venue-setup"), ordner, QStringLiteral("--tables"), tische,
                       QStringLiteral("--event"), QStringLiteral("Herbst 2026"),
                       QStringLiteral("--port"), port});
    QVERIFY(einrichtung.waitForFinished(lange));
    QCOMPARE(einrichtung.exitCode(), code);
    const QString konf = ordner + QStringLiteral("/mosquitto.conf");
    if (code != 0) {
        QVERIFY(!einrichtung.readAllStandardError().isEmpty());
        QVERIFY(!QFile::exists(konf));
        QCOMPARE(datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray(),
                 QByteArray(pskDa ? "alt:00\n" : ""));
        return;
    }
    QVERIFY(einrichtung.readAllStandardOutput().contains("mosquitto -c " + konf.toUtf8()));

    // Keys for the owner alone, one per identity, each its own.
    for (const char *geheim : {"/psk", "/zugaenge.pdf"}) {
        struct stat angaben;
        QCOMPARE(::stat(qPrintable(ordner + QLatin1String(geheim)), &angaben), 0);
        QCOMPARE(angaben.st_mode & 0777, 0600u);
    }
    QVERIFY(datei.open(QIODevice::ReadOnly));
    const auto psk = QRegularExpression(QStringLiteral("^tabulor:(%1)\ntisch01:(%1)\ntisch02:(%1)\n"
                                                       "tisch03:(%1)\n$")
                                            .arg(QStringLiteral("[0-9a-f]{32}")))
                         .match(QString::fromLatin1(datei.readAll()));
    QVERIFY(psk.hasMatch());
    const QStringList schluessel = psk.capturedTexts().mid(1);
    QCOMPARE(QSet<QString>(schluessel.cbegin(), schluessel.cend()).size(), 4);
    QFile acl(ordner + QStringLiteral("/acl"));
    QVERIFY(acl.open(QIODevice::ReadOnly));
    QVERIFY(acl.readAll().contains("\nuser tisch02\ntopic read velmora/da/#\n"
                                   "topic read velmora/alle/#\ntopic read velmora/stand/#\n"
                                   "topic read velmora/an/tisch02/#\n"
                                   "topic write velmora/da/tisch02\n"
                                   "topic write velmora/alle/tisch02\n"
                                   "topic write velmora/an/+/tisch02\n"
                                   "topic write velmora/stand/ergebnisse/tisch02\n"));

    const QString mosquitto = QStandardPaths::findExecutable(
        QStringLiteral("mosquitto"), qEnvironmentVariable("PATH").split(u':')
                                         << QStringLiteral("/usr/sbin"));
    if (mosquitto.isEmpty() ||
        QStandardPaths::findExecutable(QStringLiteral("mosquitto_pub")).isEmpty())
        QSKIP("needs mosquitto and mosquitto-clients");
    // As root it would become the mosquitto user, who may not read psk.
    QFile anhang(konf);
    QVERIFY(::geteuid() != 0 ||
            (anhang.open(QIODevice::Append) && anhang.write("user root\n") == 10));
    anhang.close();
    Partner broker(mosquitto, {QStringLiteral("-c"), konf});
    const auto mqtt = [&](const QString &id, const QString &schluessel) {
        return QStringLiteral("-V 5 -q 1 -h 127.0.0.1 -p %1 --psk-identity %2 --psk %3")
            .arg(port, id, schluessel)
            .split(u' ');
    };
    // Exit code and what mosquitto_pub said; the message, its topic, is kept for
    // those who subscribe later.
    const auto senden = [&](const QString &schluessel, const QString &thema) -> QString {
        QProcess pub;
        pub.start(QStringLiteral("mosquitto_pub"),
                  mqtt(QStringLiteral("tisch01"), schluessel) +
                      QStringList{QStringLiteral("-r"), QStringLiteral("-t"), thema,
                                  QStringLiteral("-m"), thema});
        pub.waitForFinished(lange);
        return QString::number(pub.exitCode()) + u' ' +
               QString::fromUtf8(pub.readAllStandardError());
    };
    // Tried until the broker listens; the kept message then tells when the
    // subscription stands.
    const QString eigener = schluessel.at(1);
    QTRY_COMPARE_WITH_TIMEOUT(senden(eigener, QStringLiteral("velmora/da/tisch01")),
                              QStringLiteral("0 "), lange);
    Partner tabulor(
        QStringLiteral("mosquitto_sub"),
        mqtt(QStringLiteral("tabulor"), schluessel.at(0)) +
            QStringList{QStringLiteral("-t"), QStringLiteral("velmora/#"), QStringLiteral("-v")});
    QTRY_COMPARE_WITH_TIMEOUT(tabulor.zeilen.size(), 1, lange);
    // The link itself drops what comes without the sender's number.
    Partner velmora({QStringLiteral("--broker"), QStringLiteral("127.0.0.1:") + port,
                     QStringLiteral("--psk-identity"), QStringLiteral("tabulor"),
                     QStringLiteral("--psk-file"), ordner + QStringLiteral("/psk")});
    QTRY_VERIFY_WITH_TIMEOUT(velmora.hat(QStringLiteral("LINK open")), lange);
    QCOMPARE(senden(eigener, QStringLiteral("velmora/alle/tisch01")), QStringLiteral("0 "));
    QVERIFY(senden(eigener, QStringLiteral("velmora/alle/tisch02")).contains("Not authorized"));
    QVERIFY(senden(eigener, QStringLiteral("velmora/stand/spieler/tabulor"))
                .contains("Not authorized"));
    QVERIFY(senden(schluessel.at(2), QStringLiteral("velmora/da/x")).contains("TLS error"));
    QProcess ohne;
    ohne.start(QStringLiteral("mosquitto_pub"),
               {QStringLiteral("-V"), QStringLiteral("5"), QStringLiteral("-h"),
                QStringLiteral("127.0.0.1"), QStringLiteral("-p"), port, QStringLiteral("-t"),
                QStringLiteral("velmora/alle/tisch01"), QStringLiteral("-m"), QStringLiteral("x")});
    QVERIFY(ohne.waitForFinished(lange) && ohne.exitCode() != 0);
    QCOMPARE(senden(eigener, QStringLiteral("velmora/an/tabulor/tisch01")), QStringLiteral("0 "));
    const QStringList erhalten{
        QStringLiteral("velmora/da/tisch01 velmora/da/tisch01"),
        QStringLiteral("velmora/da/tabulor online"),
        QStringLiteral("velmora/alle/tisch01 velmora/alle/tisch01"),
        QStringLiteral("velmora/an/tabulor/tisch01 velmora/an/tabulor/tisch01")};
    QTRY_COMPARE_WITH_TIMEOUT(tabulor.zeilen, erhalten, lange);
    QTRY_COMPARE_WITH_TIMEOUT(velmora.anzahl(QStringLiteral("REJECT tisch01")), 2, lange);
}

QTEST_GUILESS_MAIN(TestVelmoraProzesse)
#include "tst_velmora_prozesse.moc"
