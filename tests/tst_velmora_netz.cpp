// Clients in one process on loopback, and a hand-made peer for what a real
// client never sends: discovery, one link per pair, order and size of
// messages, bad input, presence, the mesh from peer lists alone, the event key.

#include "helpers/faelle.h"
#include "helpers/velmorahilfe.h"
#include "velmora/protokoll.h"

#include <QHostAddress>
#include <QRandomGenerator>

#include <algorithm>
#include <memory>
#include <vector>

using namespace Velmora;

namespace {

// Speaks the wire format by hand, from loopback or the address given, and
// answers each ping.
struct Attrappe : QTcpSocket
{
    explicit Attrappe(quint16 port, const QString &von = "127.0.0.1") : id("Attrappe@" + von + ":9")
    {
        connect(this, &QTcpSocket::readyRead, [this] {
            leser.anhaengen(readAll());
            for (Rahmen gelesen; leser.naechster(gelesen);) {
                pongs += gelesen.art == Art::Pong;
                if (gelesen.art == Art::Ping)
                    write(rahmen(Art::Pong));
            }
        });
        bind(QHostAddress(von));
        connectToHost(QHostAddress::LocalHost, port);
        waitForConnected(lange);
    }
    void hallo(const QByteArray &danach = {})
    {
        const Kennung kennung{"Attrappe", QRandomGenerator::global()->generate64(), 9};
        write(rahmen(Art::Hallo, kennungKodieren(kennung)) + danach);
    }

    const QString id;
    Rahmenleser leser;
    int pongs = 0;
};

// A peer list naming one client on loopback.
QByteArray liste(quint16 port)
{
    return rahmen(Art::Nachbarn, nachbarnKodieren({{0x7f000001, port, port}}));
}

// A client on a beacon port of its own: nobody hears it, it hears nobody.
std::unique_ptr<Teilnehmer> ohneBaken(const char *udpPort, const char *name)
{
    const Umgebung eigenerPort("VELMORA_UDP_PORT", udpPort);
    return std::make_unique<Teilnehmer>(name);
}

} // namespace

class TestVelmoraNetz : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { kurzeFristen(); }
    void entdecken();
    void fremdeingaben_data() { Faelle::laden("velmora_fremdeingaben.tsv"); }
    void fremdeingaben();
    void halboffen();
    void stille();
    void stau();
    void schluessel_data() { Faelle::laden("velmora_schluessel.tsv"); }
    void schluessel();
};

void TestVelmoraNetz::entdecken()
{
    // Three, so that two of them share a program name.
    std::vector<std::unique_ptr<Teilnehmer>> alle;
    for (const char *name : {"Kartulo", "Tabulor", "Kartulo"})
        alle.push_back(std::make_unique<Teilnehmer>(name));
    QStringList ids;
    for (const auto &teilnehmer : alle)
        ids << teilnehmer->id();
    ids.sort();
    for (const auto &teilnehmer : alle) {
        WARTEN_AUF(teilnehmer->neu.count(), 2);
        // Both ends dial at once; one link per pair survives.
        WARTEN_AUF(teilnehmer->verbundeneSockets(), 2);
        QStringList andere = ids;
        andere.removeOne(teilnehmer->id());
        QStringList gesehen = zeilen(teilnehmer->neu);
        gesehen.sort();
        QCOMPARE(gesehen, andere);
        QCOMPARE(teilnehmer->client.participants(), andere);
        QVERIFY(teilnehmer->id().startsWith(teilnehmer->client.programName() + "@127.0.0.1:"));
        QCOMPARE(teilnehmer->weg.count(), 0);
    }

    // Messages arrive in order, whole, up to 8 MiB of UTF-8 each.
    Teilnehmer &kartulo = *alle[0];
    Teilnehmer &tabulor = *alle[1];
    QStringList gesendet;
    for (int i = 0; i < 300; ++i)
        gesendet.append(QString::number(i) + " Grand Hand \u2663 \u00fcber");
    // Exactly 8 MiB, the euro sign taking three bytes.
    gesendet.insert(150, QString(hoechsteNachricht - 3, u'x') + QChar(0x20ac));
    gesendet.append(QString());
    for (const QString &text : qAsConst(gesendet))
        kartulo.client.sendMessage(text);
    // One byte more is refused, though it has fewer characters.
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("8388609 bytes not sent"));
    kartulo.client.sendMessage(QString(hoechsteNachricht - 2, u'x') + QChar(0x20ac));
    gesendet.append("danach");
    kartulo.client.sendMessage(gesendet.last());
    tabulor.client.sendMessage("zurück");

    QTRY_COMPARE_WITH_TIMEOUT(tabulor.post.count(), gesendet.size(), 60000);
    for (QString &text : gesendet)
        text.prepend(kartulo.id() + ' ');
    QVERIFY(zeilen(tabulor.post) == gesendet);
    WARTEN_AUF(zeilen(kartulo.post), QStringList{tabulor.id() + " zurück"});
}

void TestVelmoraNetz::fremdeingaben()
{
    QFETCH(bool, begruesst);
    QFETCH(QString, eingabe);
    // Only the bad frame may end a link that said hello, never its silence.
    const Umgebung geduldig("VELMORA_TIMEOUT_MS", "600000");
    Teilnehmer kartulo("Kartulo");
    Teilnehmer tabulor("Tabulor");
    WARTEN_AUF(kartulo.neu.count(), 1);

    Attrappe fremd(kartulo.port());
    const QString attrappe = fremd.id;
    if (begruesst)
        fremd.hallo();
    fremd.write(hex(eingabe));
    WARTEN_AUF(fremd.state(), QAbstractSocket::UnconnectedState);
    WARTEN_AUF(kartulo.weg.count(), begruesst ? 1 : 0);
    QCOMPARE(zeilen(kartulo.weg), begruesst ? QStringList{attrappe} : QStringList());
    QCOMPARE(zeilen(kartulo.neu), QStringList{tabulor.id()} + zeilen(kartulo.weg));
    // Only that link went; the client goes on with the others.
    QCOMPARE(kartulo.client.participants(), QStringList{tabulor.id()});
    tabulor.client.sendMessage("noch da");
    WARTEN_AUF(zeilen(kartulo.post), QStringList{tabulor.id() + " noch da"});
}

void TestVelmoraNetz::halboffen()
{
    const Umgebung geduldig("VELMORA_HELLO_MS", "600000");
    Teilnehmer kartulo("Kartulo");
    // Hand-made peers that say nothing, and how many of them Kartulo turned away.
    const auto oeffnen = [&kartulo](int anzahl) {
        std::vector<std::unique_ptr<Attrappe>> stumm(anzahl);
        for (auto &attrappe : stumm)
            attrappe = std::make_unique<Attrappe>(kartulo.port());
        return stumm;
    };
    const auto getrennt = [](const std::vector<std::unique_ptr<Attrappe>> &stumm) {
        return std::count_if(stumm.cbegin(), stumm.cend(), [](const auto &attrappe) {
            return attrappe->state() == QAbstractSocket::UnconnectedState;
        });
    };
    // Sixteen may wait for their hello; more are turned away at once.
    auto stumm = oeffnen(20);
    WARTEN_AUF(getrennt(stumm), 4);
    WARTEN_AUF(kartulo.verbundeneSockets(), 16);
    // Closed ones free their places.
    stumm.clear();
    WARTEN_AUF(kartulo.verbundeneSockets(), 0);
    auto wieder = oeffnen(17);
    WARTEN_AUF(getrennt(wieder), 1);
    WARTEN_AUF(kartulo.verbundeneSockets(), 16);
}

// A peer that answers each ping stays however long it says nothing else; one
// that stops answering goes (tst_velmora_prozesse::haengenderPartner).
void TestVelmoraNetz::stille()
{
    Teilnehmer kartulo("Kartulo");
    Attrappe attrappe(kartulo.port());
    attrappe.hallo(rahmen(Art::Ping));
    WARTEN_AUF(kartulo.neu.count(), 1);
    // It answers Kartulo's pings, and Kartulo its own.
    WARTEN_AUF(attrappe.pongs, 1);
    QTest::qWait(2 * stilleMs);
    QCOMPARE(kartulo.weg.count(), 0);
    QCOMPARE(attrappe.state(), QAbstractSocket::ConnectedState);
}

void TestVelmoraNetz::stau()
{
    const Umgebung geduldig("VELMORA_TIMEOUT_MS", "600000");
    Teilnehmer kartulo("Kartulo");
    // A peer that reads next to nothing may not make the sender hold more than 64 MiB.
    Attrappe traege(kartulo.port());
    traege.setReadBufferSize(1);
    traege.hallo();
    WARTEN_AUF(kartulo.neu.count(), 1);
    for (int i = 0; i < 9; ++i)
        kartulo.client.sendMessage(QString(hoechsteNachricht, u'x'));
    WARTEN_AUF(kartulo.weg.count(), 1);
}

void TestVelmoraNetz::schluessel()
{
    QFETCH(QString, empfaenger);
    QFETCH(QString, absender);
    QFETCH(QStringList, zaehler);
    QFETCH(int, zugestellt);

    // Without beacons the mesh comes from peer lists alone. Kartulo hears of
    // Tabulor from a hand-made peer at 127.0.0.2 and so reaches Tabulor there,
    // not at the address Tabulor goes by: the tag must name the link's own
    // address. Dora hears of Kartulo alone and meets Tabulor through the list
    // Kartulo hands on.
    const auto kartulo = ohneBaken("29911", "Kartulo");
    const auto tabulor = ohneBaken("29912", "Tabulor");
    const auto dora = ohneBaken("29913", "Kartulo");
    kartulo->client.setKey(empfaenger.toUtf8());
    tabulor->client.setKey(absender.toUtf8());
    QSignalSpy abgewiesen(&kartulo->client, &Client::messageRejected);
    Attrappe attrappe(kartulo->port(), "127.0.0.2");
    attrappe.hallo(liste(tabulor->port()));
    Attrappe zuDora(dora->port());
    zuDora.hallo(liste(kartulo->port()));
    WARTEN_AUF(kartulo->client.participants().size(), 3);
    WARTEN_AUF(tabulor->client.participants().size(), 2);
    WARTEN_AUF(dora->client.participants().size(), 3);

    const QString von = zaehler.isEmpty()
                            ? kartulo->client.participants().filter("Tabulor@").value(0)
                            : attrappe.id;
    if (zaehler.isEmpty())
        tabulor->client.sendMessage("Grand Hand");
    for (const QString &z : qAsConst(zaehler)) {
        const QByteArray tag = siegel(absender.toUtf8(), von, z.toULongLong(), "Grand Hand");
        attrappe.write(
            rahmen(Art::Gesiegelt, gesiegeltKodieren(z.toULongLong(), tag, "Grand Hand")));
    }
    const int gesendet = zaehler.isEmpty() ? 1 : zaehler.size();
    WARTEN_AUF(kartulo->post.count() + abgewiesen.count(), gesendet);
    // Each from the sender as Kartulo knows it, each text whole.
    QCOMPARE(zeilen(kartulo->post).count(von + " Grand Hand"), zugestellt);
    QCOMPARE(zeilen(abgewiesen).count(von), gesendet - zugestellt);
    QCOMPARE(kartulo->client.rejectedMessages(), gesendet - zugestellt);
    // A dropped message leaves the link alone.
    QCOMPARE(kartulo->weg.count(), 0);
    QVERIFY(kartulo->client.participants().contains(von));
}

QTEST_GUILESS_MAIN(TestVelmoraNetz)
#include "tst_velmora_netz.moc"
