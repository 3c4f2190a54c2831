// Several clients in one process on loopback, and a hand-made peer for what
// a real client never sends: discovery, one link per pair, order and size of
// messages, bad input, presence, the mesh built from peer lists alone, and
// the event key.

#include "helpers/velmorahilfe.h"
#include "velmora/protokoll.h"

#include <QHostAddress>
#include <QRandomGenerator>
#include <QtEndian>
#include <QtTest>

#include <memory>
#include <vector>

using namespace Velmora;

namespace {

constexpr int lange = 20000;
// The shortened waits every client of this test runs with (see initTestCase).
constexpr int stilleMs = 1500;

// Speaks the wire format by hand.
class Attrappe
{
public:
    explicit Attrappe(quint16 port, bool pongen = false, const QHostAddress &von = {})
        : m_pongen(pongen)
    {
        QObject::connect(&socket, &QTcpSocket::readyRead, [this] { lesen(); });
        if (!von.isNull())
            socket.bind(von);
        socket.connectToHost(QHostAddress::LocalHost, port);
    }
    void hallo()
    {
        const Kennung kennung{QStringLiteral("Attrappe"), QRandomGenerator::global()->generate64(),
                              9};
        socket.write(rahmen(Art::Hallo, kennungKodieren(kennung)));
    }
    QString id() const
    {
        return teilnehmerId(QStringLiteral("Attrappe"), socket.localAddress().toIPv4Address(), 9);
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
            if (gelesen.art == Art::Ping) {
                ++pings;
                if (m_pongen)
                    socket.write(rahmen(Art::Pong));
            }
            pongs += gelesen.art == Art::Pong;
        }
    }

    Rahmenleser m_leser;
    bool m_pongen;
};

QByteArray halloRahmen()
{
    return rahmen(Art::Hallo, kennungKodieren({QStringLiteral("Attrappe"), 7, 9}));
}

// A client on a beacon port of its own: nobody hears it, it hears nobody.
std::unique_ptr<Teilnehmer> ohneBaken(const char *udpPort, const char *name)
{
    const Umgebung eigenerPort("VELMORA_UDP_PORT", udpPort);
    return std::make_unique<Teilnehmer>(QString::fromLatin1(name));
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
    void initTestCase();
    void entdecken();
    void reihenfolge();
    void fremdeingaben_data();
    void fremdeingaben();
    void halboffen();
    void stille();
    void stau();
    void nachbarlisten();
    void schluessel_data();
    void schluessel();
};

void TestVelmoraNetz::initTestCase()
{
    qputenv("VELMORA_PING_MS", "250");
    qputenv("VELMORA_TIMEOUT_MS", QByteArray::number(stilleMs));
    qputenv("VELMORA_HELLO_MS", "1000");
}

void TestVelmoraNetz::entdecken()
{
    // Three, so that two of them share a program name.
    const QStringList namen{"Kartulo", "Tabulor", "Kartulo"};
    std::vector<std::unique_ptr<Teilnehmer>> alle;
    for (const QString &name : namen)
        alle.push_back(std::make_unique<Teilnehmer>(name));
    const int andere = namen.size() - 1;
    for (const auto &teilnehmer : alle) {
        QTRY_COMPARE_WITH_TIMEOUT(teilnehmer->neu.count(), andere, lange);
        // Both ends dial at once; one link per pair survives.
        QTRY_COMPARE_WITH_TIMEOUT(teilnehmer->verbundeneSockets(), andere, lange);
    }
    for (const auto &teilnehmer : alle) {
        QStringList erwartet;
        for (const auto &anderer : alle) {
            if (anderer != teilnehmer)
                erwartet.append(anderer->id());
        }
        erwartet.sort();
        QStringList gesehen = teilnehmer->ids(teilnehmer->neu);
        gesehen.sort();
        QCOMPARE(gesehen, erwartet);
        QCOMPARE(teilnehmer->client.participants(), erwartet);
        QVERIFY(teilnehmer->id().startsWith(teilnehmer->client.programName() + "@127.0.0.1:"));
        QCOMPARE(teilnehmer->weg.count(), 0);
    }
}

void TestVelmoraNetz::reihenfolge()
{
    Teilnehmer kartulo(QStringLiteral("Kartulo"));
    Teilnehmer tabulor(QStringLiteral("Tabulor"));
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.neu.count(), 1, lange);
    QTRY_COMPARE_WITH_TIMEOUT(tabulor.neu.count(), 1, lange);

    QStringList gesendet;
    for (int i = 0; i < 300; ++i)
        gesendet.append(QString::number(i) + QStringLiteral(" Grand Hand \u2663 \u00fcber"));
    // Exactly 8 MiB of UTF-8, the euro sign taking three bytes.
    gesendet.insert(150, QString(hoechsteNachricht - 3, u'x') + QChar(0x20ac));
    gesendet.append(QString());
    for (const QString &text : qAsConst(gesendet))
        kartulo.client.sendMessage(text);
    // One byte more is refused, though it has fewer characters.
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("8388609 bytes not sent"));
    kartulo.client.sendMessage(QString(hoechsteNachricht - 2, u'x') + QChar(0x20ac));
    gesendet.append(QStringLiteral("danach"));
    kartulo.client.sendMessage(gesendet.last());
    tabulor.client.sendMessage(QStringLiteral("zurück"));

    QTRY_COMPARE_WITH_TIMEOUT(tabulor.post.count(), gesendet.size(), 60000);
    for (int i = 0; i < gesendet.size(); ++i) {
        QCOMPARE(tabulor.post.at(i).at(0).toString(), kartulo.id());
        QVERIFY2(tabulor.post.at(i).at(1).toString() == gesendet.at(i),
                 qPrintable(QString::number(i)));
    }
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.post.count(), 1, lange);
    QCOMPARE(kartulo.post.at(0), (QList<QVariant>{tabulor.id(), QStringLiteral("zurück")}));
}

void TestVelmoraNetz::fremdeingaben_data()
{
    QTest::addColumn<QByteArray>("eingabe");
    QTest::addColumn<bool>("begruesst");

    QByteArray fremdeVersion = halloRahmen();
    fremdeVersion[5 + 5] = 2;
    QByteArray zuLang(5, '\0');
    qToBigEndian<quint32>(hoechsteNachricht + 2, zuLang.data());
    zuLang[4] = char(Art::Nachricht);

    QTest::newRow("müll") << QByteArray("GET / HTTP/1.1\r\nHost: kartulo\r\n\r\n") << false;
    QTest::newRow("fremde version") << fremdeVersion << false;
    QTest::newRow("halbes hallo, dann stille") << halloRahmen().left(10) << false;
    QTest::newRow("hallo, dann zu lange nachricht") << halloRahmen() + zuLang << true;
    QTest::newRow("hallo, dann kein utf8")
        << halloRahmen() + rahmen(Art::Nachricht, "\xff") << true;
    QTest::newRow("hallo, dann kaputte liste")
        << halloRahmen() + rahmen(Art::Nachbarn, QByteArray("\0\2abc", 5)) << true;
}

void TestVelmoraNetz::fremdeingaben()
{
    QFETCH(QByteArray, eingabe);
    QFETCH(bool, begruesst);

    // Only the bad frame may end a link that said hello, never its silence.
    const Umgebung geduldig("VELMORA_TIMEOUT_MS", "600000");
    Teilnehmer kartulo(QStringLiteral("Kartulo"));
    Teilnehmer tabulor(QStringLiteral("Tabulor"));
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.neu.count(), 1, lange);

    QTcpSocket fremd;
    fremd.connectToHost(QHostAddress::LocalHost, kartulo.port());
    QTRY_COMPARE_WITH_TIMEOUT(fremd.state(), QAbstractSocket::ConnectedState, lange);
    fremd.write(eingabe);
    QTRY_COMPARE_WITH_TIMEOUT(fremd.state(), QAbstractSocket::UnconnectedState, lange);

    const QString attrappe = QStringLiteral("Attrappe@127.0.0.1:9");
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.weg.count(), begruesst ? 1 : 0, lange);
    const QStringList erwartet =
        begruesst ? QStringList{tabulor.id(), attrappe} : QStringList{tabulor.id()};
    QCOMPARE(kartulo.ids(kartulo.neu), erwartet);
    if (begruesst)
        QCOMPARE(kartulo.ids(kartulo.weg), QStringList{attrappe});
    // Only that link went; the client goes on with the others.
    QCOMPARE(kartulo.client.participants(), QStringList{tabulor.id()});
    tabulor.client.sendMessage(QStringLiteral("noch da"));
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.post.count(), 1, lange);
    QCOMPARE(kartulo.post.at(0), (QList<QVariant>{tabulor.id(), QStringLiteral("noch da")}));
}

void TestVelmoraNetz::halboffen()
{
    const Umgebung geduldig("VELMORA_HELLO_MS", "600000");
    Teilnehmer kartulo(QStringLiteral("Kartulo"));

    auto oeffnen = [&kartulo](int anzahl) {
        std::vector<std::unique_ptr<QTcpSocket>> sockets;
        for (int i = 0; i < anzahl; ++i) {
            sockets.push_back(std::make_unique<QTcpSocket>());
            sockets.back()->connectToHost(QHostAddress::LocalHost, kartulo.port());
        }
        return sockets;
    };
    auto stumm = oeffnen(20);
    QTRY_COMPARE_WITH_TIMEOUT(getrennt(stumm), 4, lange);
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.verbundeneSockets(), 16, lange);

    // Closed ones free their places.
    stumm.clear();
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.verbundeneSockets(), 0, lange);
    auto wieder = oeffnen(17);
    QTRY_COMPARE_WITH_TIMEOUT(getrennt(wieder), 1, lange);
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.verbundeneSockets(), 16, lange);
}

// A peer that answers each ping stays however long it says nothing else; one
// that stops answering goes (tst_velmora_prozesse::haengenderPartner).
void TestVelmoraNetz::stille()
{
    Teilnehmer kartulo(QStringLiteral("Kartulo"));
    Attrappe attrappe(kartulo.port(), true);
    QTRY_COMPARE_WITH_TIMEOUT(attrappe.socket.state(), QAbstractSocket::ConnectedState, lange);
    attrappe.hallo();
    attrappe.socket.write(rahmen(Art::Ping));
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.neu.count(), 1, lange);
    QTRY_COMPARE_WITH_TIMEOUT(attrappe.pongs, 1, lange);
    QTRY_VERIFY_WITH_TIMEOUT(attrappe.pings >= 2, lange);
    QTest::qWait(2 * stilleMs);
    QCOMPARE(kartulo.weg.count(), 0);
    QCOMPARE(attrappe.socket.state(), QAbstractSocket::ConnectedState);
}

void TestVelmoraNetz::stau()
{
    const Umgebung geduldig("VELMORA_TIMEOUT_MS", "600000");
    Teilnehmer kartulo(QStringLiteral("Kartulo"));
    QTcpSocket traege;
    traege.setReadBufferSize(1);
    traege.connectToHost(QHostAddress::LocalHost, kartulo.port());
    QTRY_COMPARE_WITH_TIMEOUT(traege.state(), QAbstractSocket::ConnectedState, lange);
    traege.write(halloRahmen());
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.neu.count(), 1, lange);

    // A peer that does not read may not make the sender hold more than 64 MiB.
    const QString achtMiB(hoechsteNachricht, u'x');
    for (int i = 0; i < 9; ++i)
        kartulo.client.sendMessage(achtMiB);
    QTRY_COMPARE_WITH_TIMEOUT(kartulo.weg.count(), 1, lange);
}

void TestVelmoraNetz::nachbarlisten()
{
    const auto a = ohneBaken("29901", "Kartulo");
    const auto b = ohneBaken("29902", "Tabulor");
    const auto c = ohneBaken("29903", "Kartulo");

    Attrappe zuA(a->port());
    Attrappe zuC(c->port());
    QTRY_COMPARE_WITH_TIMEOUT(zuA.socket.state(), QAbstractSocket::ConnectedState, lange);
    QTRY_COMPARE_WITH_TIMEOUT(zuC.socket.state(), QAbstractSocket::ConnectedState, lange);
    const quint32 lo = QHostAddress(QHostAddress::LocalHost).toIPv4Address();
    zuA.hallo();
    zuA.socket.write(rahmen(Art::Nachbarn, nachbarnKodieren({{lo, b->port(), 77}})));
    zuC.hallo();
    zuC.socket.write(rahmen(Art::Nachbarn, nachbarnKodieren({{lo, a->port(), 78}})));

    // B and C meet only through the list A hands on.
    QTRY_VERIFY_WITH_TIMEOUT(b->client.participants().contains(c->id()), lange);
    QTRY_VERIFY_WITH_TIMEOUT(c->client.participants().contains(b->id()), lange);
    QVERIFY(b->client.participants().contains(a->id()));
    QVERIFY(a->client.participants().contains(b->id()));
    QVERIFY(a->client.participants().contains(c->id()));
}

void TestVelmoraNetz::schluessel_data()
{
    QTest::addColumn<QByteArray>("empfaenger");
    QTest::addColumn<QByteArray>("absender");
    // None: Tabulor, a client, sends one message; else the hand-made peer
    // sends one tagged with each counter.
    QTest::addColumn<QList<quint64>>("zaehler");
    QTest::addColumn<int>("zugestellt");

    const QByteArray geheim("geheim");
    QTest::newRow("gleicher schlüssel") << geheim << geheim << QList<quint64>{} << 1;
    QTest::newRow("falscher schlüssel") << geheim << QByteArray("anders") << QList<quint64>{} << 0;
    QTest::newRow("ohne siegel") << geheim << QByteArray() << QList<quint64>{} << 0;
    QTest::newRow("empfänger ohne schlüssel") << QByteArray() << geheim << QList<quint64>{} << 1;
    QTest::newRow("zähler wiederholt") << geheim << geheim << QList<quint64>{5, 5, 4, 6} << 2;
}

void TestVelmoraNetz::schluessel()
{
    QFETCH(QByteArray, empfaenger);
    QFETCH(QByteArray, absender);
    QFETCH(QList<quint64>, zaehler);
    QFETCH(int, zugestellt);

    const auto kartulo = ohneBaken("29911", "Kartulo");
    const auto tabulor = ohneBaken("29912", "Tabulor");
    kartulo->client.setKey(empfaenger);
    tabulor->client.setKey(absender);
    QSignalSpy abgewiesen(&kartulo->client, &Client::messageRejected);
    // Kartulo reaches Tabulor at 127.0.0.2 through this peer's list, not at
    // the address Tabulor goes by: the tag must name the link's own address.
    Attrappe attrappe(kartulo->port(), false, QHostAddress(QStringLiteral("127.0.0.2")));
    QTRY_COMPARE_WITH_TIMEOUT(attrappe.socket.state(), QAbstractSocket::ConnectedState, lange);
    attrappe.hallo();
    const quint32 lo = QHostAddress(QHostAddress::LocalHost).toIPv4Address();
    attrappe.socket.write(rahmen(Art::Nachbarn, nachbarnKodieren({{lo, tabulor->port(), 77}})));
    QTRY_COMPARE_WITH_TIMEOUT(kartulo->neu.count(), 2, lange);
    QTRY_COMPARE_WITH_TIMEOUT(tabulor->neu.count(), 1, lange);

    const QByteArray text("Grand Hand");
    if (zaehler.isEmpty())
        tabulor->client.sendMessage(QString::fromUtf8(text));
    for (const quint64 z : qAsConst(zaehler))
        attrappe.gesiegelt(absender, z, text);
    const int gesendet = zaehler.isEmpty() ? 1 : zaehler.size();
    QTRY_COMPARE_WITH_TIMEOUT(kartulo->post.count() + abgewiesen.count(), gesendet, lange);
    QCOMPARE(kartulo->post.count(), zugestellt);
    QCOMPARE(kartulo->client.rejectedMessages(), gesendet - zugestellt);
    const QString von = zaehler.isEmpty() ? Teilnehmer::ids(kartulo->neu).at(1) : attrappe.id();
    QCOMPARE((Teilnehmer::ids(kartulo->post) + Teilnehmer::ids(abgewiesen)).count(von), gesendet);
    for (const QList<QVariant> &signal : qAsConst(kartulo->post))
        QCOMPARE(signal.at(1).toString(), QString::fromUtf8(text));
    // A dropped message leaves the link alone.
    QCOMPARE(kartulo->weg.count(), 0);
    QVERIFY(kartulo->client.participants().contains(von));
}

QTEST_GUILESS_MAIN(TestVelmoraNetz)
#include "tst_velmora_netz.moc"
