// The settings store after a start: every key with its default, and the
// quirks club machines rely on.

#include "app/einstellungen.h"
#include "helpers/testumgebung.h"

#include <QSettings>

class TstEinstellungen : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void ersterStart_data();
    void ersterStart();
    void kartengeldKleinGeschrieben();
    void vorhandeneWerteBleiben();
    void intervallImmerFuenf();
    void datenVerzeichnis();

private:
    QSettings store{QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Ormindo"),
                    QStringLiteral("Kartulo")};
};

void TstEinstellungen::init()
{
    store.clear();
}

void TstEinstellungen::ersterStart_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("wert");
    QTest::newRow("platz1") << "platz1" << QVariant(0.0);
    QTest::newRow("platz2") << "platz2" << QVariant(1.5);
    QTest::newRow("platz3") << "platz3" << QVariant(2.5);
    QTest::newRow("platz4") << "platz4" << QVariant(3.0);
    QTest::newRow("kartengeld") << "kartengeld" << QVariant(1.0);
    QTest::newRow("VerlSpiel1Bis5") << "VerlSpiel1Bis5" << QVariant(1.0);
    QTest::newRow("VerlSpielAb6") << "VerlSpielAb6" << QVariant(2.0);
    QTest::newRow("Preisskat") << "Preisskat" << QVariant(10.0);
    QTest::newRow("GewSpieleMinusVerlSpiele") << "GewSpieleMinusVerlSpiele" << QVariant(50);
    QTest::newRow("VerlSpieleDerGegenSpieler3") << "VerlSpieleDerGegenSpieler3" << QVariant(40);
    QTest::newRow("VerlSpieleDerGegenSpieler4") << "VerlSpieleDerGegenSpieler4" << QVariant(30);
    QTest::newRow("sicherheitskopieintervall") << "sicherheitskopieintervall" << QVariant(5);
    QTest::newRow("spielstandmitfabianpunkten") << "spielstandmitfabianpunkten" << QVariant(true);
    QTest::newRow("vereinsname") << "vereinsname" << QVariant(QStringLiteral("MeinVerein"));
    QTest::newRow("databasepath") << "databasepath" << QVariant(QStringLiteral("/daten/Kartulo"));
}

void TstEinstellungen::ersterStart()
{
    QFETCH(QString, key);
    QFETCH(QVariant, wert);
    Einstellungen(store).laden(QStringLiteral("/daten/Kartulo"));
    store.sync();
    // Read back through a second store, as the next start would.
    QSettings neu(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Ormindo"),
                  QStringLiteral("Kartulo"));
    QVERIFY2(neu.contains(key), qPrintable(key));
    QCOMPARE(neu.value(key).toString(), wert.toString());
    QVERIFY(!neu.contains(QStringLiteral("spielstopzeit")));
}

void TstEinstellungen::kartengeldKleinGeschrieben()
{
    Einstellungen e(store);
    e.laden(QString());
    QVERIFY(!store.contains(QStringLiteral("Kartengeld")));
    QVERIFY(store.contains(QStringLiteral("kartengeld")));
    QCOMPARE(e.kosten().kartengeld, 1.0);

    // A value under the capitalised key is the one that counts.
    store.setValue(QStringLiteral("Kartengeld"), 0.5);
    store.setValue(QStringLiteral("kartengeld"), 3.0);
    Einstellungen zweiter(store);
    zweiter.laden(QString());
    QCOMPARE(zweiter.kosten().kartengeld, 0.5);
}

void TstEinstellungen::vorhandeneWerteBleiben()
{
    store.setValue(QStringLiteral("platz2"), 2.0);
    store.setValue(QStringLiteral("VerlSpielAb6"), 2.5);
    store.setValue(QStringLiteral("VerlSpieleDerGegenSpieler4"), 25);
    store.setValue(QStringLiteral("spielstandmitfabianpunkten"), false);
    store.setValue(QStringLiteral("vereinsname"), QStringLiteral("Skatfreunde 1970"));
    Einstellungen e(store);
    e.laden(QString());
    QCOMPARE(e.kosten().platz2, 2.0);
    QCOMPARE(e.kosten().verlSpielAb6, 2.5);
    QCOMPARE(store.value(QStringLiteral("VerlSpielAb6")).toDouble(), 2.5);
    QCOMPARE(e.kosten().verlSpieleDerGegenSpieler4, 25);
    QCOMPARE(e.mitFabianpunkten(), false);
    QCOMPARE(e.vereinsname(), QStringLiteral("Skatfreunde 1970"));
}

void TstEinstellungen::intervallImmerFuenf()
{
    Einstellungen e(store);
    QCOMPARE(e.sicherheitskopieIntervallMs(), 300000);
    store.setValue(QStringLiteral("sicherheitskopieintervall"), 1);
    e.laden(QString());
    QCOMPARE(store.value(QStringLiteral("sicherheitskopieintervall")).toInt(), 5);
    QCOMPARE(e.sicherheitskopieIntervallMs(), 300000);
}

void TstEinstellungen::datenVerzeichnis()
{
    QCOMPARE(Einstellungen::datenVerzeichnis(), TestUmgebung::datenVerzeichnis());
}

KARTULO_TEST_MAIN(TstEinstellungen)
#include "tst_einstellungen.moc"
