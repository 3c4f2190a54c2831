// velmora-cli as a peer in another process: finding each other, messages
// both ways with the event key, standard input, a hung peer and its return,
// two network namespaces joined by a veth pair, where nothing goes over
// loopback; and the broker --venue-setup prepares, with who may send what.

#include "helpers/faelle.h"
#include "helpers/velmorahilfe.h"

#include <QNetworkInterface>
#include <QProcess>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTemporaryFile>

#include <csignal>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// One velmora-cli (or a command that ends in one) and the events it printed.
struct Partner : Prozess
{
    using Prozess::Prozess;
    bool hat(const QString &ereignis) const { return anzahl(ereignis) > 0; }
    // Counts printed lines, time stamps left aside.
    int anzahl(const QString &ereignis) const
    {
        return int(std::count_if(zeilen.begin(), zeilen.end(),
                                 [&](const QString &zeile) { return zeile.mid(13) == ereignis; }));
    }
};

int ausfuehren(const QString &befehl)
{
    return QProcess::execute("sh", {"-c", befehl});
}

} // namespace

class TestVelmoraProzesse : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { kurzeFristen(); }
    void cliPartner();
    void haengenderPartner();
    void zweiNetze();
    void einrichtung_data() { Faelle::laden("velmora_einrichtung.tsv"); }
    void einrichtung();
};

void TestVelmoraProzesse::cliPartner()
{
    // Both ends keyed: each message below arrives only with a valid tag.
    QTemporaryFile schluessel;
    QVERIFY(schluessel.open() && schluessel.write("geheim\r\n") == 8 && schluessel.flush());
    Teilnehmer kartulo("Kartulo");
    kartulo.client.setKey("geheim");
    Partner tabulor(
        {"--exit-on-eof", "--full", "--key-file", schluessel.fileName(), "erste", "zweite"});
    WARTEN_AUF(kartulo.neu.count(), 1);
    const QString id = kartulo.neu.at(0).at(0).toString();
    QVERIFY(id.startsWith("Tabulor@127.0.0.1:"));
    WARTEN(tabulor.hat("JOIN " + kartulo.id()));
    QVERIFY(tabulor.hat("SELF " + id));

    // The arguments wait for the first participant, then go in order; so do
    // the lines of standard input, empty ones left out.
    tabulor.write("\xc3\xbc"
                  "ber stdin\n\nnoch eine\n");
    const QStringList erwartet{id + " erste", id + " zweite", id + " \u00fcber stdin",
                               id + " noch eine"};
    WARTEN_AUF(zeilen(kartulo.post), erwartet);
    const QString lang(250, u'x');
    kartulo.client.sendMessage("Null ouvert\nHand " + lang);
    WARTEN(tabulor.hat("MSG " + kartulo.id() + " Null ouvert\\nHand " + lang));

    tabulor.closeWriteChannel();
    WARTEN_AUF(tabulor.state(), QProcess::NotRunning);
    QCOMPARE(tabulor.exitCode(), 0);
    WARTEN_AUF(zeilen(kartulo.weg), QStringList{id});

    // A key file holding nothing but a line end is no key.
    QVERIFY(schluessel.resize(0) && schluessel.seek(0) && schluessel.write("\n") == 1);
    schluessel.flush();
    Partner ohneSchluessel({"--key-file", schluessel.fileName()});
    WARTEN_AUF(ohneSchluessel.state(), QProcess::NotRunning);
    QCOMPARE(ohneSchluessel.exitCode(), 2);
}

void TestVelmoraProzesse::haengenderPartner()
{
    Teilnehmer kartulo("Kartulo");
    Partner tabulor({"--quiet-after", "0.5"});
    WARTEN_AUF(kartulo.neu.count(), 1);
    WARTEN(tabulor.hat("QUIET"));

    // Stopped, it keeps its connection open but answers nothing.
    WARTEN_AUF(zeilen(kartulo.weg), zeilen(kartulo.neu));
    ::kill(pid_t(tabulor.processId()), SIGCONT);
    WARTEN_AUF(kartulo.neu.count(), 2);
    QCOMPARE(kartulo.neu.at(1), kartulo.neu.at(0));
    WARTEN_AUF(tabulor.anzahl("JOIN " + kartulo.id()), 2);
    QVERIFY(tabulor.hat("LEAVE " + kartulo.id()));
    QCOMPARE(kartulo.weg.count(), 1);
}

void TestVelmoraProzesse::zweiNetze()
{
    if (::geteuid() != 0 ||
        ausfuehren("command -v ip >/dev/null && command -v unshare >/dev/null") != 0)
        QSKIP("needs root in the test's network namespace, ip and unshare");
    // Never touch a real machine's interfaces: only a namespace of loopback alone will do.
    for (const QNetworkInterface &netz : QNetworkInterface::allInterfaces()) {
        if (!netz.flags().testFlag(QNetworkInterface::IsLoopBack))
            QSKIP("runs only in a private network namespace (scripts/netns.sh)");
    }
    // Started before the network is there, Kartulo goes by loopback until it comes.
    Teilnehmer kartulo("Kartulo");
    QCOMPARE(kartulo.client.ownAddress(), "127.0.0.1");
    QSignalSpy umgezogen(&kartulo.client, &Client::ownAddressChanged);
    if (ausfuehren("ip link add vlm0 type veth peer name vlm1") != 0)
        QSKIP("no veth pairs here");
    const auto abbauen = qScopeGuard([] { ausfuehren("ip link del vlm0"); });
    QCOMPARE(ausfuehren("ip addr add 10.77.0.2/24 dev vlm0 && ip link set vlm0 up"), 0);

    // Tabulor gets a namespace of its own, and the other end of the pair only
    // once it goes by loopback too.
    const QString innen =
        "ip link set lo up; (while ! ip link show vlm1 >/dev/null 2>&1; do sleep 0.05; done; "
        "ip addr add 10.77.0.3/24 dev vlm1 && ip link set vlm1 up) & "
        "exec \"$0\" --name Tabulor 'ueber die Leitung'";
    Partner tabulor({"-n", "--", "sh", "-c", innen, VELMORA_CLI}, "unshare");
    WARTEN(!tabulor.zeilen.filter(" SELF Tabulor@127.0.0.1:").isEmpty());
    QCOMPARE(ausfuehren(QString("ip link set vlm1 netns %1").arg(tabulor.processId())), 0);

    WARTEN_AUF(kartulo.neu.count(), 1);
    const QString id = kartulo.neu.at(0).at(0).toString();
    QVERIFY2(id.startsWith("Tabulor@10.77.0.3:"), qPrintable(id));
    QCOMPARE(kartulo.id(), QString("Kartulo@10.77.0.2:%1").arg(kartulo.port()));
    QCOMPARE(umgezogen.count(), 1);
    QCOMPARE(kartulo.client.localAddress(id), "10.77.0.2");
    WARTEN_AUF(zeilen(kartulo.post), QStringList{id + " ueber die Leitung"});
    WARTEN(tabulor.hat("JOIN " + kartulo.id()));
    // Its own address moved from loopback to the pair's end, and it says so.
    QVERIFY(tabulor.hat("SELF " + id));
    kartulo.client.sendMessage("zurück");
    WARTEN(tabulor.hat("MSG " + kartulo.id() + " zurück"));
}

void TestVelmoraProzesse::einrichtung()
{
    QFETCH(QString, tische);
    QFETCH(bool, pskDa);
    QFETCH(int, code);
    QTemporaryDir temp;
    const QString ordner = temp.filePath(pskDa ? QString() : "neu");
    QFile datei(ordner + "/psk");
    QVERIFY(!pskDa || (datei.open(QIODevice::WriteOnly) && datei.write("alt:00\n") == 7));
    datei.close();
    QTcpServer frei;
    QVERIFY(frei.listen(QHostAddress::LocalHost));
    const QString port = QString::number(frei.serverPort());
    frei.close();
    QProcess einrichtung;
    einrichtung.start(VELMORA_CLI, {"--venue-setup", ordner, "--tables", tische, "--event",
                                    "Herbst 2026", "--port", port});
    QVERIFY(einrichtung.waitForFinished(lange));
    QCOMPARE(einrichtung.exitCode(), code);
    const QString konf = ordner + "/mosquitto.conf";
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
        QCOMPARE(::stat(qPrintable(ordner + geheim), &angaben), 0);
        QCOMPARE(angaben.st_mode & 0777, 0600u);
    }
    QString muster;
    for (const char *name : {"tabulor", "tisch01", "tisch02", "tisch03"})
        muster += QString("%1:(?<%1>[0-9a-f]{32})\n").arg(name);
    QVERIFY(datei.open(QIODevice::ReadOnly));
    const auto psk = QRegularExpression('^' + muster + '$').match(datei.readAll());
    QVERIFY(psk.hasMatch());
    const QStringList alle = psk.capturedTexts().mid(1);
    QCOMPARE(QSet<QString>(alle.cbegin(), alle.cend()).size(), 4);
    QFile acl(ordner + "/acl");
    QVERIFY(acl.open(QIODevice::ReadOnly));
    // Each table reads what all may read and its own inbox, writes under its name only.
    QVERIFY(acl.readAll().contains(Faelle::datei("velmora_acl_tisch02.txt")));

    const QString mosquitto = QStandardPaths::findExecutable(
        "mosquitto", qEnvironmentVariable("PATH").split(u':') << "/usr/sbin");
    if (mosquitto.isEmpty() || QStandardPaths::findExecutable("mosquitto_pub").isEmpty())
        QSKIP("needs mosquitto and mosquitto-clients");
    // As root it would become the mosquitto user, who may not read psk.
    QVERIFY(::geteuid() != 0 || ausfuehren("echo 'user root' >>'" + konf + "'") == 0);
    Partner broker({"-c", konf}, mosquitto);
    // As identity id, with the key of the identity named, or with none.
    const auto mqtt = [&](const QString &id, const QString &schluessel) {
        QStringList argumente{"-V", "5", "-q", "1", "-h", "127.0.0.1", "-p", port};
        if (!schluessel.isEmpty())
            argumente << "--psk-identity" << id << "--psk" << psk.captured(schluessel);
        return argumente;
    };
    // What mosquitto_pub said, "ok" for nothing and exit code 0, when tisch01
    // sent with that identity's key; the message, its topic, is kept for later
    // subscribers.
    const auto senden = [&](const QString &schluessel, const QString &thema) -> QString {
        QProcess pub;
        pub.start("mosquitto_pub",
                  mqtt("tisch01", schluessel) + QStringList{"-r", "-t", thema, "-m", thema});
        pub.waitForFinished(lange);
        const QString gesagt = QString::fromUtf8(pub.readAllStandardError()).trimmed();
        return pub.exitCode() == 0 && gesagt.isEmpty() ? "ok" : gesagt;
    };
    // Tried until the broker listens; the kept message then tells when the
    // subscription stands.
    WARTEN_AUF(senden("tisch01", "velmora/da/tisch01"), "ok");
    Partner tabulor(mqtt("tabulor", "tabulor") + QStringList{"-t", "velmora/#", "-v"},
                    "mosquitto_sub");
    WARTEN_AUF(tabulor.zeilen.size(), 1);
    // The link itself drops what comes without the sender's number.
    Partner velmora({"--broker", "127.0.0.1:" + port, "--psk-identity", "tabulor", "--psk-file",
                     ordner + "/psk"});
    WARTEN(velmora.hat("LINK open"));

    QFETCH(QString, wer);
    QFETCH(QString, thema);
    QFETCH(QString, antwort);
    const QString gesagt = senden(wer, thema);
    // Taken says nothing; a refusal names its reason.
    QVERIFY2(antwort == "ok" ? gesagt == antwort : gesagt.contains(antwort), qPrintable(gesagt));
    // Then one to the manager: what was taken before it has come by then.
    QCOMPARE(senden("tisch01", "velmora/an/tabulor/tisch01"), "ok");
    QStringList erhalten{"velmora/da/tisch01 velmora/da/tisch01", "velmora/da/tabulor online"};
    if (antwort == "ok")
        erhalten << thema + ' ' + thema;
    erhalten << "velmora/an/tabulor/tisch01 velmora/an/tabulor/tisch01";
    WARTEN_AUF(tabulor.zeilen, erhalten);
    // None of the messages taken has the number the link asks for.
    WARTEN_AUF(velmora.anzahl("REJECT tisch01"), erhalten.size() - 2);
}

QTEST_GUILESS_MAIN(TestVelmoraProzesse)
#include "tst_velmora_prozesse.moc"
