// Several clients in one process on loopback, and a hand-made peer for what
// a real client never sends: discovery, one link per pair, order and size of
// messages, bad input, presence, the mesh built from peer lists alone, and
// the event key.

#include "helpers/faelle.h"
#include "helpers/velmorahilfe.h"
#include "velmora/protokoll.h"

#include <QHostAddress>
#include <QRandomGenerator>
#include <QtTest>

#include <memory>
#include <vector>

using namespace Velmora;

namespace {

// Speaks the wire format by hand and answers each ping.
class Attrappe
{
public:
    explicit Attrappe(quint16 port, const QHostAddress &von = QHostAddress(QHostAddress::LocalHost))
    {
        QObject::connect(&socket, &QTcpSocket::readyRead, [this] { lesen(); });
        socket.bind(von);
        socket.connectToHost(QHostAddress::LocalHost, port);
        socket.waitForConnected(lange);
    }
    void hallo(const QByteArray &danach = {})
    {
        const Kennung kennung{"Attrappe", QRandomGenerator::global()->generate64(), 9};
        socket.write(rahmen(Art::Hallo, kennungKodieren(kennung)) + danach);
    }
    QString id() const
    {
        return teilnehmerId("Attrappe", socket.localAddress().toIPv4Address(), 9);
    }
    void gesiegelt(const QByteArray &schluessel, quint64 zaehler, const QByteArray &text)
    {
        const QByteArray mitSiegel =
            gesiegeltKodieren(zaehler, siegel(schluessel, id(), zaehler, text), text);
        socket.write(rahmen(Art::Gesiegelt, mitSiegel));
    }

    QTcpSocket socket;
    int pings = 0;
    int pongs = 0;

private:
    void lesen()
    {
        m_leser.anhaengen(socket.readAll());
        Rahmen gelesen;
        while (m_leser.naechster(gelesen)) {
            pings += gelesen.art == Art::Ping;
            pongs += gelesen.art == Art::Pong;
            if (gelesen.art == Art::Ping)
                socket.write(rahmen(Art::Pong));
        }
    }

    Rahmenleser m_leser;
};

// A peer list naming one client on loopback.
QByteArray liste(quint16 port)
{
    const quint32 lo = QHostAddress(QHostAddress::LocalHost).toIPv4Address();
    return rahmen(Art::Nachbarn, nachbarnKodieren({{lo, port, port}}));
}

// A client on a beacon port of its own: nobody hears it, it hears nobody.
std::unique_ptr<Teilnehmer> ohneBaken(const char *udpPort, const char *name)
{
    const Umgebung eigenerPort("VELMORA_UDP_PORT", udpPort);
    return std::make_unique<Teilnehmer>(name);
}

int getrennt(const std::vector<std::unique_ptr<QTcpSocket>> &sockets)
{
    int anzahl = 0;
    for (const auto &socket : sockets)
        anzahl += socket->state() == QAbstractSocket::UnconnectedState;
    return anzahl;
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
    for (const auto &teilnehmer : alle) {
        WARTEN_AUF(teilnehmer->neu.count(), 2);
        // Both ends dial at once; one link per pair survives.
        WARTEN_AUF(teilnehmer->verbundeneSockets(), 2);
    }
    for (const auto &teilnehmer : alle) {
        QStringList erwartet;
        for (const auto &anderer : alle) {
            if (anderer != teilnehmer)
                erwartet.append(anderer->id());
        }
        erwartet.sort();
        QStringList gesehen = Teilnehmer::zeilen(teilnehmer->neu);
        gesehen.sort();
        QCOMPARE(gesehen, erwartet);
        QCOMPARE(teilnehmer->client.participants(), erwartet);
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
    QVERIFY(Teilnehmer::zeilen(tabulor.post) == gesendet);
    WARTEN_AUF(Teilnehmer::zeilen(kartulo.post), QStringList{tabulor.id() + " zurück"});
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
    const QString attrappe = fremd.id();
    if (begruesst)
        fremd.hallo();
    fremd.socket.write(hex(eingabe));
    WARTEN_AUF(fremd.socket.state(), QAbstractSocket::UnconnectedState);
    WARTEN_AUF(kartulo.weg.count(), begruesst ? 1 : 0);
    QCOMPARE(Teilnehmer::zeilen(kartulo.weg), begruesst ? QStringList{attrappe} : QStringList());
    QCOMPARE(Teilnehmer::zeilen(kartulo.neu),
             QStringList{tabulor.id()} + kartulo.zeilen(kartulo.weg));
    // Only that link went; the client goes on with the others.
    QCOMPARE(kartulo.client.participants(), QStringList{tabulor.id()});
    tabulor.client.sendMessage("noch da");
    WARTEN_AUF(Teilnehmer::zeilen(kartulo.post), QStringList{tabulor.id() + " noch da"});
}

void TestVelmoraNetz::halboffen()
{
    const Umgebung geduldig("VELMORA_HELLO_MS", "600000");
    Teilnehmer kartulo("Kartulo");
    auto oeffnen = [&kartulo](int anzahl) {
        std::vector<std::unique_ptr<QTcpSocket>> sockets;
        for (int i = 0; i < anzahl; ++i) {
            sockets.push_back(std::make_unique<QTcpSocket>());
            sockets.back()->connectToHost(QHostAddress::LocalHost, kartulo.port());
        }
        return sockets;
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
    WARTEN_AUF(attrappe.pongs, 1);
    WARTEN(attrappe.pings >= 2);
    QTest::qWait(2 * stilleMs);
    QCOMPARE(kartulo.weg.count(), 0);
    QCOMPARE(attrappe.socket.state(), QAbstractSocket::ConnectedState);
}

void TestVelmoraNetz::stau()
{
    const Umgebung geduldig("VELMORA_TIMEOUT_MS", "600000");
    Teilnehmer kartulo("Kartulo");
    QTcpSocket traege;
    traege.setReadBufferSize(1);
    traege.connectToHost(QHostAddress::LocalHost, kartulo.port());
    QVERIFY(traege.waitForConnected(lange));
    traege.write(rahmen(Art::Hallo, kennungKodieren({"Attrappe", 7, 9})));
    WARTEN_AUF(kartulo.neu.count(), 1);

    // A peer that does not read may not make the sender hold more than 64 MiB.
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
    Attrappe attrappe(kartulo->port(), QHostAddress("127.0.0.2"));
    attrappe.hallo(liste(tabulor->port()));
    Attrappe zuDora(dora->port());
    zuDora.hallo(liste(kartulo->port()));
    WARTEN_AUF(kartulo->client.participants().size(), 3);
    WARTEN_AUF(tabulor->client.participants().size(), 2);
    WARTEN_AUF(dora->client.participants().size(), 3);

    const QString von = zaehler.isEmpty()
                            ? kartulo->client.participants().filter("Tabulor@").value(0)
                            : attrappe.id();
    if (zaehler.isEmpty())
        tabulor->client.sendMessage("Grand Hand");
    for (const QString &z : qAsConst(zaehler))
        attrappe.gesiegelt(absender.toUtf8(), z.toULongLong(), "Grand Hand");
    const int gesendet = zaehler.isEmpty() ? 1 : zaehler.size();
    WARTEN_AUF(kartulo->post.count() + abgewiesen.count(), gesendet);
    // Each from the sender as Kartulo knows it, each text whole.
    QCOMPARE(Teilnehmer::zeilen(kartulo->post).count(von + " Grand Hand"), zugestellt);
    QCOMPARE(Teilnehmer::zeilen(abgewiesen).count(von), gesendet - zugestellt);
    QCOMPARE(kartulo->client.rejectedMessages(), gesendet - zugestellt);
    // A dropped message leaves the link alone.
    QCOMPARE(kartulo->weg.count(), 0);
    QVERIFY(kartulo->client.participants().contains(von));
}

QTEST_GUILESS_MAIN(TestVelmoraNetz)
#include "tst_velmora_netz.moc"
