// The wire format without sockets: what the frame reader, the hello and
// beacon reader and the peer list reader accept and what they refuse.

#include "velmora/protokoll.h"

#include <QtEndian>
#include <QtTest>

using namespace Velmora;

namespace {

QByteArray kopf(quint32 laenge, quint8 art)
{
    QByteArray daten(5, '\0');
    qToBigEndian(laenge, daten.data());
    daten[4] = char(art);
    return daten;
}

QByteArray hallo()
{
    return rahmen(Art::Hallo, kennungKodieren({QStringLiteral("Tabulor"), 42, 4711}));
}

Kennung tabulor()
{
    return {QStringLiteral("Tabulor"), 0x0102030405060708ULL, 4711};
}

} // namespace

class TestVelmoraProtokoll : public QObject
{
    Q_OBJECT

private slots:
    void rahmenlesen_data();
    void rahmenlesen();
    void nachrichtGrenze_data();
    void nachrichtGrenze();
    void rahmenBytes_data();
    void rahmenBytes();
    void kennung_data();
    void kennung();
    void programmname_data();
    void programmname();
    void nachbarn_data();
    void nachbarn();
    void utf8_data();
    void utf8();
};

void TestVelmoraProtokoll::rahmenlesen_data()
{
    QTest::addColumn<QByteArray>("strom");
    QTest::addColumn<int>("stueck");
    QTest::addColumn<QList<QByteArray>>("nutzlasten");
    QTest::addColumn<bool>("kaputt");

    const QByteArray text = QByteArrayLiteral("Grand Hand \xe2\x99\xa3");
    const QByteArray folge = hallo() + rahmen(Art::Ping) + rahmen(Art::Nachricht, text) +
                             rahmen(Art::Nachricht) + rahmen(Art::Pong);
    const QByteArray halloNutzlast = hallo().mid(5);
    const QList<QByteArray> erwartet{halloNutzlast, {}, text, {}, {}};
    QTest::newRow("folge am stück") << folge << 0 << erwartet << false;
    QTest::newRow("folge byteweise") << folge << 1 << erwartet << false;
    QTest::newRow("folge in dreien") << folge << 3 << erwartet << false;
    QTest::newRow("halber rahmen wartet") << hallo() + rahmen(Art::Nachricht, text).left(9) << 0
                                          << QList<QByteArray>{halloNutzlast} << false;
    QTest::newRow("kopf ohne art wartet")
        << hallo() + kopf(7, 2).left(4) << 1 << QList<QByteArray>{halloNutzlast} << false;

    QTest::newRow("müll") << QByteArrayLiteral("GET / HTTP/1.1\r\n\r\n") << 0 << QList<QByteArray>{}
                          << true;
    QTest::newRow("länge null") << QByteArray(4, '\0') << 0 << QList<QByteArray>{} << true;
    QTest::newRow("riesige länge") << QByteArray(4, '\xff') << 0 << QList<QByteArray>{} << true;
    QTest::newRow("nachricht vor hallo")
        << rahmen(Art::Nachricht, text) << 0 << QList<QByteArray>{} << true;
    QTest::newRow("ping vor hallo") << rahmen(Art::Ping) << 0 << QList<QByteArray>{} << true;
    QTest::newRow("hallo zu lang") << kopf(1 + 17 + 256, 1) << 0 << QList<QByteArray>{} << true;
    QTest::newRow("hallo längste") << kopf(1 + 17 + 255, 1) << 0 << QList<QByteArray>{} << false;
    QTest::newRow("zweites hallo")
        << hallo() + hallo() << 0 << QList<QByteArray>{halloNutzlast} << true;
    QTest::newRow("ping mit inhalt")
        << hallo() + kopf(2, 3) + "x" << 0 << QList<QByteArray>{halloNutzlast} << true;
    QTest::newRow("pong mit inhalt")
        << hallo() + kopf(2, 4) + "x" << 0 << QList<QByteArray>{halloNutzlast} << true;
    QTest::newRow("art null") << hallo() + kopf(1, 0) << 0 << QList<QByteArray>{halloNutzlast}
                              << true;
    QTest::newRow("art unbekannt")
        << hallo() + kopf(1, 6) << 0 << QList<QByteArray>{halloNutzlast} << true;
    QTest::newRow("nachbarliste zu lang") << hallo() + kopf(1 + 2 + 14 * 1024 + 1, 5) << 0
                                          << QList<QByteArray>{halloNutzlast} << true;
    QTest::newRow("nachbarliste längste")
        << hallo() + kopf(1 + 2 + 14 * 1024, 5) << 0 << QList<QByteArray>{halloNutzlast} << false;
    QTest::newRow("kaputt bleibt kaputt") << hallo() + kopf(1, 9) + rahmen(Art::Ping) << 1
                                          << QList<QByteArray>{halloNutzlast} << true;
}

void TestVelmoraProtokoll::rahmenlesen()
{
    QFETCH(QByteArray, strom);
    QFETCH(int, stueck);
    QFETCH(QList<QByteArray>, nutzlasten);
    QFETCH(bool, kaputt);

    Rahmenleser leser;
    QList<QByteArray> gelesen;
    const int schritt = stueck > 0 ? stueck : strom.size();
    Rahmen rahmen;
    for (int i = 0; i < strom.size(); i += schritt) {
        leser.anhaengen(strom.mid(i, schritt));
        while (leser.naechster(rahmen))
            gelesen.append(rahmen.nutzlast);
    }
    QCOMPARE(gelesen, nutzlasten);
    QCOMPARE(leser.kaputt(), kaputt);
    // A broken stream keeps nothing; a lying header never waits for its body.
    if (kaputt)
        QCOMPARE(leser.gepuffert(), 0);
}

void TestVelmoraProtokoll::nachrichtGrenze_data()
{
    QTest::addColumn<int>("groesse");
    QTest::addColumn<bool>("angenommen");
    QTest::newRow("8 MiB") << hoechsteNachricht << true;
    QTest::newRow("8 MiB und ein Byte") << hoechsteNachricht + 1 << false;
}

void TestVelmoraProtokoll::nachrichtGrenze()
{
    QFETCH(int, groesse);
    QFETCH(bool, angenommen);

    Rahmenleser leser;
    Rahmen gelesen;
    leser.anhaengen(hallo());
    QVERIFY(leser.naechster(gelesen));
    if (angenommen) {
        const QByteArray inhalt(groesse, 'x');
        leser.anhaengen(rahmen(Art::Nachricht, inhalt));
        QVERIFY(leser.naechster(gelesen));
        QCOMPARE(gelesen.art, Art::Nachricht);
        QCOMPARE(gelesen.nutzlast, inhalt);
    } else {
        leser.anhaengen(kopf(quint32(groesse) + 1, quint8(Art::Nachricht)));
        QVERIFY(!leser.naechster(gelesen));
    }
    QCOMPARE(leser.kaputt(), !angenommen);
}

void TestVelmoraProtokoll::rahmenBytes_data()
{
    QTest::addColumn<QByteArray>("rahmen");
    QTest::addColumn<QByteArray>("hex");
    QTest::newRow("ping") << rahmen(Art::Ping) << QByteArray("0000000103");
    QTest::newRow("pong") << rahmen(Art::Pong) << QByteArray("0000000104");
    QTest::newRow("nachricht") << rahmen(Art::Nachricht, "Hallo")
                               << QByteArray("000000060248616c6c6f");
    QTest::newRow("hallo") << rahmen(Art::Hallo, kennungKodieren(tabulor())).left(9)
                           << QByteArray("000000190156454c4d");
}

// The bytes docs/lan-protocol.md shows other makers.
void TestVelmoraProtokoll::rahmenBytes()
{
    QFETCH(QByteArray, rahmen);
    QFETCH(QByteArray, hex);
    QCOMPARE(rahmen.toHex(), hex);
}

void TestVelmoraProtokoll::kennung_data()
{
    QTest::addColumn<QByteArray>("daten");
    QTest::addColumn<bool>("gueltig");

    const QByteArray gut = kennungKodieren(tabulor());
    auto geaendert = [&gut](int stelle, char wert) {
        QByteArray daten = gut;
        daten[stelle] = wert;
        return daten;
    };
    auto mitName = [](const QByteArray &name) -> QByteArray {
        QByteArray daten = kennungKodieren(tabulor()).left(16);
        return daten + char(name.size()) + name;
    };
    QTest::newRow("gültig") << gut << true;
    QTest::newRow("wie in lan-protocol.md")
        << QByteArray::fromHex("56454C4D00010102030405060708126707546162756C6F72") << true;
    QTest::newRow("fremde magie") << geaendert(0, 'X') << false;
    QTest::newRow("version 2") << geaendert(5, 2) << false;
    QTest::newRow("version 0") << geaendert(5, 0) << false;
    QTest::newRow("version 257") << geaendert(4, 1) << false;
    QTest::newRow("ein byte zu kurz") << gut.chopped(1) << false;
    QTest::newRow("ein byte zu lang") << QByteArray(gut).append('x') << false;
    QTest::newRow("namenslänge zu groß") << geaendert(16, 8) << false;
    QTest::newRow("port null") << kennungKodieren({QStringLiteral("Tabulor"), 1, 0}) << false;
    QTest::newRow("leerer name") << mitName({}) << false;
    QTest::newRow("name mit @") << mitName("Tab@lor") << false;
    QTest::newRow("name kein utf8") << mitName("Tab\xfflor") << false;
    QTest::newRow("umlaut im namen") << mitName("T\xc3\xa4"
                                                "bulor")
                                     << true;
    QTest::newRow("leer") << QByteArray() << false;
}

void TestVelmoraProtokoll::kennung()
{
    QFETCH(QByteArray, daten);
    QFETCH(bool, gueltig);

    const std::optional<Kennung> gelesen = kennungLesen(daten);
    QCOMPARE(gelesen.has_value(), gueltig);
    if (gueltig) {
        QCOMPARE(gelesen->instanz, tabulor().instanz);
        QCOMPARE(gelesen->port, tabulor().port);
        QCOMPARE(kennungKodieren(*gelesen), daten);
    }
}

void TestVelmoraProtokoll::programmname_data()
{
    QTest::addColumn<QString>("wunsch");
    QTest::addColumn<QString>("name");
    QTest::newRow("unverändert") << QStringLiteral("Kartulo") << QStringLiteral("Kartulo");
    QTest::newRow("ohne @") << QStringLiteral("a@b@c") << QStringLiteral("a_b_c");
    QTest::newRow("leer") << QString() << QStringLiteral("Velmora");
    QTest::newRow("255 bytes") << QString(255, u'x') << QString(255, u'x');
    QTest::newRow("256 bytes") << QString(256, u'x') << QString(255, u'x');
    QTest::newRow("umlaute zählen doppelt") << QString(200, u'ä') << QString(127, u'ä');
}

void TestVelmoraProtokoll::programmname()
{
    QFETCH(QString, wunsch);
    QFETCH(QString, name);
    QCOMPARE(Velmora::programmname(wunsch), name);
    // Every name it hands out passes the other side's check.
    QVERIFY(kennungLesen(kennungKodieren({name, 1, 1})).has_value());
}

void TestVelmoraProtokoll::nachbarn_data()
{
    QTest::addColumn<QByteArray>("daten");
    QTest::addColumn<int>("anzahl");

    const QVector<Nachbar> zwei{{0x7f000001, 4711, 0x1122334455667788ULL}, {0x0a4d0003, 65535, 1}};
    const QByteArray gut = nachbarnKodieren(zwei);
    QTest::newRow("zwei") << gut << 2;
    QTest::newRow("keiner") << nachbarnKodieren({}) << 0;
    QTest::newRow("eins zu wenig") << gut.chopped(14) << -1;
    QTest::newRow("ein byte zu viel") << QByteArray(gut).append('x') << -1;
    QTest::newRow("ohne anzahl") << QByteArray(1, '\0') << -1;
    QByteArray zuViele(2, '\0');
    qToBigEndian<quint16>(1025, zuViele.data());
    zuViele.append(QByteArray(1025 * 14, '\1'));
    QTest::newRow("1025 einträge") << zuViele << -1;
    QTest::newRow("höchstens 1024 gesendet")
        << nachbarnKodieren(QVector<Nachbar>(1030, Nachbar{1, 1, 1})) << 1024;
}

void TestVelmoraProtokoll::nachbarn()
{
    QFETCH(QByteArray, daten);
    QFETCH(int, anzahl);

    const std::optional<QVector<Nachbar>> gelesen = nachbarnLesen(daten);
    QCOMPARE(gelesen ? gelesen->size() : -1, anzahl);
    if (anzahl == 2) {
        QCOMPARE(gelesen->at(0).adresse, 0x7f000001u);
        QCOMPARE(gelesen->at(0).port, quint16(4711));
        QCOMPARE(gelesen->at(0).instanz, 0x1122334455667788ULL);
        QCOMPARE(gelesen->at(1).adresse, 0x0a4d0003u);
        QCOMPARE(gelesen->at(1).port, quint16(65535));
        QCOMPARE(gelesen->at(1).instanz, 1ULL);
    }
}

void TestVelmoraProtokoll::utf8_data()
{
    QTest::addColumn<QByteArray>("daten");
    QTest::addColumn<bool>("gueltig");
    QTest::newRow("umlaute") << QByteArrayLiteral("Gr\xc3\xbc\xc3\x9f"
                                                  "e")
                             << true;
    QTest::newRow("leer") << QByteArray() << true;
    QTest::newRow("ff") << QByteArrayLiteral("a\xff") << false;
    QTest::newRow("abgeschnitten") << QByteArrayLiteral("a\xc3") << false;
    QTest::newRow("überlang") << QByteArrayLiteral("\xc0\xaf") << false;
    QTest::newRow("surrogat") << QByteArrayLiteral("\xed\xa0\x80") << false;
}

void TestVelmoraProtokoll::utf8()
{
    QFETCH(QByteArray, daten);
    QFETCH(bool, gueltig);
    const std::optional<QString> text = utf8Lesen(daten);
    QCOMPARE(text.has_value(), gueltig);
    if (gueltig)
        QCOMPARE(text->toUtf8(), daten);
}

QTEST_GUILESS_MAIN(TestVelmoraProtokoll)
#include "tst_velmora_protokoll.moc"
