// The wire format without sockets: what the frame reader, the hello and
// beacon reader and the peer list reader accept and what they refuse, and
// the bytes docs/lan-protocol.md shows, a tag among them; at a venue, the
// topic each message goes to and whom one that arrives is from, the numbers
// that drop a message brought twice, and the broker and key a scorer types.

#include "velmora/client.h"
#include "velmora/protokoll.h"
#include "velmora/themen.h"

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
    void rahmenBytes_data();
    void rahmenBytes();
    void kennung_data();
    void kennung();
    void programmname_data();
    void programmname();
    void nachbarn_data();
    void nachbarn();
    void themen_data();
    void themen();
    void doppelt();
    void zugang_data();
    void zugang();
};

void TestVelmoraProtokoll::rahmenlesen_data()
{
    QTest::addColumn<QByteArray>("strom");
    QTest::addColumn<bool>("byteweise");
    QTest::addColumn<QList<QByteArray>>("nutzlasten");
    QTest::addColumn<bool>("kaputt");

    const QByteArray text = QByteArrayLiteral("Grand Hand \xe2\x99\xa3");
    const QByteArray gross(hoechsteNachricht, 'x');
    const QByteArray h = hallo();
    const QList<QByteArray> nurHallo{h.mid(5)};
    auto zeile = [](const char *name, const QByteArray &strom, const QList<QByteArray> &nutzlasten,
                    bool kaputt, bool byteweise = false) {
        QTest::newRow(name) << strom << byteweise << nutzlasten << kaputt;
    };
    const QByteArray folge = h + rahmen(Art::Ping) + rahmen(Art::Nachricht, text) +
                             rahmen(Art::Nachricht) + rahmen(Art::Pong);
    const QList<QByteArray> erwartet{h.mid(5), {}, text, {}, {}};
    zeile("folge am stück", folge, erwartet, false);
    zeile("folge byteweise", folge, erwartet, false, true);
    zeile("halber rahmen wartet", h + rahmen(Art::Nachricht, text).left(9), nurHallo, false);
    zeile("nachricht 8 MiB", h + rahmen(Art::Nachricht, gross), {h.mid(5), gross}, false);
    zeile("nachricht 8 MiB und ein byte", h + kopf(hoechsteNachricht + 2, 2), nurHallo, true);
    zeile("müll", "GET / HTTP/1.1\r\n\r\n", {}, true);
    zeile("länge null", QByteArray(4, '\0'), {}, true);
    zeile("nachricht vor hallo", rahmen(Art::Nachricht, text), {}, true);
    zeile("hallo zu lang", kopf(1 + 17 + 256, 1), {}, true);
    zeile("hallo längste", kopf(1 + 17 + 255, 1), {}, false);
    zeile("zweites hallo", h + h, nurHallo, true);
    zeile("ping mit inhalt", h + kopf(2, 3) + "x", nurHallo, true);
    zeile("art unbekannt", h + kopf(1, 7), nurHallo, true);
    zeile("nachbarliste zu lang", h + kopf(1 + 2 + 14 * 1024 + 1, 5), nurHallo, true);
    zeile("nachbarliste längste", h + kopf(1 + 2 + 14 * 1024, 5), nurHallo, false);
    const QByteArray siegelKopf(zaehlerGroesse + siegelGroesse, 's');
    zeile("gesiegelt ohne text", h + rahmen(Art::Gesiegelt, siegelKopf), {h.mid(5), siegelKopf},
          false);
    zeile("gesiegelt ohne ganzes siegel", h + kopf(40, 6), nurHallo, true);
    zeile("gesiegelt 8 MiB", h + kopf(1 + 40 + hoechsteNachricht, 6), nurHallo, false);
    zeile("gesiegelt 8 MiB und ein byte", h + kopf(1 + 40 + hoechsteNachricht + 1, 6), nurHallo,
          true);
    zeile("gesiegelt vor hallo", rahmen(Art::Gesiegelt, siegelKopf), {}, true);
    zeile("kaputt bleibt kaputt", h + kopf(1, 9) + rahmen(Art::Ping), nurHallo, true, true);
}

void TestVelmoraProtokoll::rahmenlesen()
{
    QFETCH(QByteArray, strom);
    QFETCH(bool, byteweise);
    QFETCH(QList<QByteArray>, nutzlasten);
    QFETCH(bool, kaputt);

    Rahmenleser leser;
    QList<QByteArray> gelesen;
    const int schritt = byteweise ? 1 : strom.size();
    Rahmen rahmen;
    for (int i = 0; i < strom.size(); i += schritt) {
        leser.anhaengen(strom.mid(i, schritt));
        while (leser.naechster(rahmen))
            gelesen.append(rahmen.nutzlast);
    }
    QVERIFY(gelesen == nutzlasten);
    QCOMPARE(leser.kaputt(), kaputt);
    // A broken stream keeps nothing; a lying header never waits for its body.
    if (kaputt)
        QCOMPARE(leser.gepuffert(), 0);
}

void TestVelmoraProtokoll::rahmenBytes_data()
{
    QTest::addColumn<QByteArray>("rahmen");
    QTest::addColumn<QByteArray>("hex");
    QTest::newRow("ping") << rahmen(Art::Ping) << QByteArray("0000000103");
    QTest::newRow("nachricht") << rahmen(Art::Nachricht, "Hallo")
                               << QByteArray("000000060248616c6c6f");
    QTest::newRow("hallo") << rahmen(Art::Hallo, kennungKodieren(tabulor())).left(9)
                           << QByteArray("000000190156454c4d");
    const quint64 zaehler = 1700000000000000;
    const QByteArray siegelWieDort =
        siegel("geheim", QStringLiteral("Kartulo@192.168.1.20:40123"), zaehler, "Hallo");
    QTest::newRow("gesiegelt wie in lan-protocol.md")
        << rahmen(Art::Gesiegelt, gesiegeltKodieren(zaehler, siegelWieDort, "Hallo"))
        << QByteArray("0000002e0600060a24181e4000"
                      "5ce5d6a74ddca1eedead2ed0cb52ccaa60a1db6e037fe0e60c3d4ab5ce7d91e6"
                      "48616c6c6f");
}

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
    QTest::newRow("wie in lan-protocol.md")
        << QByteArray::fromHex("56454C4D00010102030405060708126707546162756C6F72") << true;
    QTest::newRow("fremde magie") << geaendert(0, 'X') << false;
    QTest::newRow("version 2") << geaendert(5, 2) << false;
    QTest::newRow("version 257") << geaendert(4, 1) << false;
    QTest::newRow("ein byte zu kurz") << gut.chopped(1) << false;
    QTest::newRow("ein byte zu lang") << QByteArray(gut).append('x') << false;
    QTest::newRow("namenslänge zu groß") << geaendert(16, 8) << false;
    QTest::newRow("port null") << kennungKodieren({QStringLiteral("Tabulor"), 1, 0}) << false;
    QTest::newRow("leerer name") << mitName({}) << false;
    QTest::newRow("name mit @") << mitName("Tab@lor") << false;
    QTest::newRow("name kein utf8") << mitName("Tab\xfflor") << false;
    QTest::newRow("umlaut im namen") << mitName(QStringLiteral("T\u00e4bulor").toUtf8()) << true;
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

    // Address, port and instance id of both entries, byte for byte.
    const QByteArray gut = QByteArray::fromHex("0002"
                                               "7f00000112671122334455667788"
                                               "0a4d0003ffff0000000000000001");
    QTest::newRow("zwei") << gut << 2;
    QTest::newRow("keiner") << nachbarnKodieren({}) << 0;
    QTest::newRow("eins zu wenig") << gut.chopped(14) << -1;
    QTest::newRow("ein byte zu viel") << QByteArray(gut).append('x') << -1;
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
    if (gelesen)
        QCOMPARE(nachbarnKodieren(*gelesen), daten);
}

// "ziel": a text tisch01 at 10.0.0.1 sends, to its topic ("+" kept by the
// broker); "von": a topic arriving at tisch01, to its sender.
void TestVelmoraProtokoll::themen_data()
{
    QTest::addColumn<QString>("art");
    QTest::addColumn<QString>("ein");
    QTest::addColumn<QString>("aus");
    const auto ziel = [](const char *name, const char *text, const char *thema) {
        QTest::newRow(name) << "ziel" << text << thema;
    };
    const auto von = [](const char *name, const char *thema, const char *wer) {
        QTest::newRow(name) << "von" << thema << wer;
    };
    ziel("12 an alle", "12:10.0.0.1:$5", "velmora/alle/tisch01");
    ziel("13 eigene adresse", "13:10.0.0.1:G$5@1@1", "velmora/alle/tisch01");
    ziel("7 ergebnisse", "7:10.0.0.1:$A|5|1", "+velmora/stand/ergebnisse/tisch01");
    ziel("4 spieler", "4:10.0.0.1:$1|A|Ja|Ja", "+velmora/stand/spieler/tisch01");
    ziel("6 auslosung", "6:10.0.0.2:G$5@1", "+velmora/stand/auslosung/10.0.0.2/tisch01");
    ziel("15 kosten", "15:10.0.0.2:G$5@1@x", "+velmora/stand/kosten/10.0.0.2/tisch01");
    ziel("9 an tisch02", "9:10.0.0.2:$5@1", "velmora/an/tisch02/tisch01");
    ziel("5 an die leitung", "5:10.0.0.1:$5@1", "velmora/an/tabulor/tisch01");
    ziel("17 an die leitung", "17:10.0.0.1:$S.pdf@eJw=", "velmora/an/tabulor/tisch01");
    ziel("14 an tisch02", "14:10.0.0.2:$12@1", "velmora/an/tisch02/tisch01");
    ziel("9 an unbekannt", "9:10.0.0.7:$5@1", "velmora/alle/tisch01");
    ziel("11 an tisch02", "11:10.0.0.2:$", "velmora/an/tisch02/tisch01");
    ziel("12 ueber tisch02 an alle", "12:10.0.0.2:$5", "velmora/alle/tisch01");
    ziel("13 an tisch02 auch an alle", "13:10.0.0.2:$5@1@1", "velmora/alle/tisch01");
    ziel("6 mit # in der adresse", "6:#:G$5@1", "velmora/alle/tisch01");
    ziel("kein kopf", "hallo", "velmora/alle/tisch01");
    von("alle", "velmora/alle/tisch02", "tisch02");
    von("eigener eingang", "velmora/an/tisch01/tabulor", "tabulor");
    von("fremder eingang", "velmora/an/tisch02/tabulor", "");
    von("kosten", "velmora/stand/kosten/10.0.0.1/tabulor", "tabulor");
    von("ergebnisse", "velmora/stand/ergebnisse/tisch02", "tisch02");
    von("fremder stand", "velmora/stand/sonst/tisch02", "");
    von("zu tief", "velmora/alle/tisch02/x", "");
    von("leerer absender", "velmora/alle/", "");
    von("anderer baum", "andere/alle/tisch02", "");
    von("anwesenheit", "velmora/da/tisch02", "");
}

void TestVelmoraProtokoll::themen()
{
    QFETCH(QString, art);
    QFETCH(QString, ein);
    QFETCH(QString, aus);
    if (art == "von") {
        QCOMPARE(Themen::absender(ein, "tisch01"), aus);
        return;
    }
    const auto identitaet = [](const QString &adresse) {
        return adresse == "10.0.0.2" ? QStringLiteral("tisch02") : QString();
    };
    const Themen::Ziel ziel = Themen::ziel(ein, "tisch01", "10.0.0.1", identitaet);
    QCOMPARE((ziel.behalten ? "+" : "") + ziel.thema, aus);
}

void TestVelmoraProtokoll::doppelt()
{
    Themen::Doppelfilter filter;
    QVERIFY(filter.neu("tisch01", 5));
    QVERIFY(!filter.neu("tisch01", 5));
    QVERIFY(filter.neu("tisch02", 5));
    QVERIFY(filter.neu("tisch01", 4));
    // A long evening keeps the newest numbers; older ones count as seen.
    for (quint64 n = 100; n < 100 + 20000; ++n)
        QVERIFY(filter.neu("tisch01", n));
    QVERIFY(!filter.neu("tisch01", 6));
    QVERIFY(!filter.neu("tisch01", 100 + 19999));
    QVERIFY(filter.neu("tisch01", 100 + 20000));
}

void TestVelmoraProtokoll::zugang_data()
{
    QTest::addColumn<QString>("server");
    QTest::addColumn<QString>("schluessel");
    QTest::addColumn<QString>("adresse");
    QTest::addColumn<bool>("vollstaendig");
    const QString acht = "0011 2233 4455 6677";
    QTest::newRow("mit port") << "10.0.0.1:1883" << acht << "10.0.0.1 1883" << true;
    QTest::newRow("ohne port") << "turnier.local" << acht << "turnier.local 8883" << true;
    QTest::newRow("port 0") << "10.0.0.1:0" << acht << "" << false;
    QTest::newRow("port zu gross") << "10.0.0.1:65536" << acht << "" << false;
    QTest::newRow("leer") << "" << acht << "" << false;
    QTest::newRow("leerzeichen im namen") << "a b" << acht << "" << false;
    QTest::newRow("schluessel mit strichen") << "h"
                                             << "00-11-22-33-44-55-66-77"
                                             << "h 8883" << true;
    QTest::newRow("schluessel zu kurz") << "h"
                                        << "00112233445566"
                                        << "h 8883" << false;
    QTest::newRow("schluessel kein hex") << "h"
                                         << "0011 2233 4455 667g"
                                         << "h 8883" << false;
    QTest::newRow("ungerade ziffern") << "h"
                                      << "0011 2233 4455 6677 8"
                                      << "h 8883" << false;
}

void TestVelmoraProtokoll::zugang()
{
    QFETCH(QString, server);
    QFETCH(QString, schluessel);
    QFETCH(QString, adresse);
    QFETCH(bool, vollstaendig);
    LinkSettings einstellungen;
    einstellungen.mode = LinkSettings::Mode::Venue;
    einstellungen.broker = server;
    einstellungen.identity = "tisch01";
    einstellungen.key = LinkSettings::keyFromText(schluessel).value_or(QByteArray());
    const auto gelesen = einstellungen.brokerAddress();
    QCOMPARE(gelesen ? gelesen->first + ' ' + QString::number(gelesen->second) : QString(),
             adresse);
    QCOMPARE(einstellungen.venueComplete(), vollstaendig);
}

QTEST_GUILESS_MAIN(TestVelmoraProtokoll)
#include "tst_velmora_protokoll.moc"
