// The wire format without sockets: what the frame, hello and peer list
// readers accept and refuse, and the bytes docs/lan-protocol.md shows; at a
// venue, the topic of each message and whom one is from, the numbers that
// drop one brought twice, and the broker and key a scorer types.

#include "helpers/faelle.h"
#include "helpers/velmorahilfe.h"
#include "velmora/protokoll.h"
#include "velmora/themen.h"

using namespace Velmora;

class TestVelmoraProtokoll : public QObject
{
    Q_OBJECT

private slots:
    void rahmenlesen_data() { Faelle::laden("velmora_rahmen.tsv"); }
    void rahmenlesen();
    void siegel_data() { Faelle::laden("velmora_siegel.tsv"); }
    void siegel();
    void kennung_data() { Faelle::laden("velmora_kennung.tsv"); }
    void kennung();
    void programmname_data() { Faelle::laden("velmora_programmname.tsv"); }
    void programmname();
    void nachbarn_data() { Faelle::laden("velmora_nachbarn.tsv"); }
    void nachbarn();
    void themen_data() { Faelle::laden("velmora_themen.tsv"); }
    void themen();
    void doppelt();
    void zugang_data() { Faelle::laden("velmora_zugang.tsv"); }
    void zugang();
};

void TestVelmoraProtokoll::rahmenlesen()
{
    QFETCH(bool, hallo);
    QFETCH(QString, strom);
    QFETCH(bool, byteweise);
    QFETCH(QStringList, danach);

    const Kennung tabulor{"Tabulor", 0x0102030405060708, 4711};
    const QByteArray vorn = hallo ? rahmen(Art::Hallo, kennungKodieren(tabulor)) : QByteArray();
    const QByteArray daten = vorn + hex(strom);
    QList<QByteArray> erwartet;
    if (hallo)
        erwartet << vorn.mid(5);
    for (const QString &nutzlast : qAsConst(danach))
        erwartet << hex(nutzlast);

    Rahmenleser leser;
    QList<QByteArray> gelesen;
    QByteArray wieder;
    const int schritt = byteweise ? 1 : daten.size();
    Rahmen r;
    for (int i = 0; i < daten.size(); i += schritt) {
        leser.anhaengen(daten.mid(i, schritt));
        for (; leser.naechster(r); wieder += rahmen(r.art, r.nutzlast))
            gelesen << r.nutzlast;
    }
    QVERIFY(gelesen == erwartet);
    // Written again, the frames read give the bytes they came as.
    QVERIFY(daten.startsWith(wieder));
    QTEST(leser.kaputt(), "kaputt");
    // A broken stream keeps nothing; a lying header never waits for its body.
    if (leser.kaputt())
        QCOMPARE(leser.gepuffert(), 0);
}

void TestVelmoraProtokoll::siegel()
{
    QFETCH(QString, schluessel);
    QFETCH(QString, absender);
    QFETCH(QString, zaehler);
    QFETCH(QString, text);
    const quint64 z = zaehler.toULongLong();
    const QByteArray tag = Velmora::siegel(schluessel.toUtf8(), absender, z, text.toUtf8());
    QTEST(gesiegeltKodieren(z, tag, text.toUtf8()), "nutzlast");
}

void TestVelmoraProtokoll::kennung()
{
    QFETCH(QByteArray, daten);
    const std::optional<Kennung> gelesen = kennungLesen(daten);
    QTEST(gelesen.has_value(), "gueltig");
    // Written again it gives the same bytes, so every field was read.
    if (gelesen)
        QCOMPARE(kennungKodieren(*gelesen), daten);
}

void TestVelmoraProtokoll::programmname()
{
    QFETCH(QString, wunsch);
    QFETCH(QString, name);
    QCOMPARE(Velmora::programmname(wunsch), name);
    // Every name it hands out passes the other side's check.
    QVERIFY(kennungLesen(kennungKodieren({name, 1, 1})).has_value());
}

void TestVelmoraProtokoll::nachbarn()
{
    QFETCH(QString, daten);
    QFETCH(int, anzahl);
    const std::optional<QVector<Nachbar>> gelesen = nachbarnLesen(hex(daten));
    QCOMPARE(gelesen ? gelesen->size() : -1, anzahl);
    if (!gelesen)
        return;
    QCOMPARE(nachbarnKodieren(*gelesen), hex(daten));
    // However many it knows, it sends no more than the other side reads.
    const QVector<Nachbar> mehr = *gelesen + QVector<Nachbar>(hoechsteNachbarn, {1, 1, 1});
    QCOMPARE(nachbarnLesen(nachbarnKodieren(mehr)).value_or(QVector<Nachbar>()).size(),
             hoechsteNachbarn);
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

void TestVelmoraProtokoll::zugang()
{
    QFETCH(QString, server);
    QFETCH(QString, schluessel);
    LinkSettings einstellungen;
    einstellungen.mode = LinkSettings::Mode::Venue;
    einstellungen.broker = server;
    einstellungen.identity = "tisch01";
    einstellungen.key = LinkSettings::keyFromText(schluessel).value_or(QByteArray());
    const auto gelesen = einstellungen.brokerAddress();
    QTEST(gelesen ? gelesen->first + ' ' + QString::number(gelesen->second) : QString(), "adresse");
    QTEST(einstellungen.venueComplete(), "vollstaendig");
}

QTEST_GUILESS_MAIN(TestVelmoraProtokoll)
#include "tst_velmora_protokoll.moc"
