// The bid dock: 64 buttons in the order of the bid values, laid out twelve to
// a row, each reporting its value when tapped and "Abbruch" reporting 0.

#include "game/dockreizung.h"
#include "helpers/testumgebung.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QGridLayout>
#include <QSet>
#include <QSignalSpy>
#include <QToolButton>

namespace {

QButtonGroup *gruppe(const DockReizung &dock)
{
    return dock.findChild<QButtonGroup *>();
}

QGridLayout *gitter(const DockReizung &dock)
{
    return qobject_cast<QGridLayout *>(dock.widget() ? dock.widget()->layout() : nullptr);
}

// Every value a Skat game can be worth: suit games 9 to 12 times 2 to 18, grand
// 24 times 2 to 11 (both with every matador and every extra up to ouvert), and
// the four null games.
QSet<int> gueltigeReizwerte()
{
    QSet<int> werte{23, 35, 46, 59};
    for (int grundwert : {9, 10, 11, 12, 24}) {
        const int hoechsterFaktor = grundwert == 24 ? 11 : 18;
        for (int faktor = 2; faktor <= hoechsterFaktor; ++faktor)
            werte.insert(grundwert * faktor);
    }
    return werte;
}

} // namespace

class TstDockReizung : public QObject
{
    Q_OBJECT

private slots:
    void aufbau();
    void werteInGitterReihenfolge();
    void nurGueltigeReizwerte();
    void knopf_data();
    void knopf();
    void klick_data();
    void klick();
};

void TstDockReizung::aufbau()
{
    DockReizung dock;
    QCOMPARE(dock.objectName(), QStringLiteral("DockReizung"));
    QVERIFY(gruppe(dock));
    QCOMPARE(gruppe(dock)->buttons().size(), 64);
    QCOMPARE(dock.findChildren<QToolButton *>().size(), 64);
    QGridLayout *layout = gitter(dock);
    QVERIFY(layout);
    QCOMPARE(layout->count(), 64);
    QCOMPARE(layout->horizontalSpacing(), 5);
    QCOMPARE(layout->verticalSpacing(), 5);
    QCOMPARE(layout->rowCount(), 6);
    QCOMPARE(layout->columnCount(), 12);
    for (QAbstractButton *knopf : gruppe(dock)->buttons()) {
        QVERIFY2(knopf->minimumWidth() >= 48 && knopf->minimumHeight() >= 40,
                 qPrintable(knopf->text()));
    }
}

void TstDockReizung::werteInGitterReihenfolge()
{
    DockReizung dock;
    QGridLayout *layout = gitter(dock);
    QVERIFY(layout);
    QVector<int> ids;
    for (int zeile = 0; zeile < layout->rowCount(); ++zeile) {
        for (int spalte = 0; spalte < layout->columnCount(); ++spalte) {
            QLayoutItem *item = layout->itemAtPosition(zeile, spalte);
            if (!item)
                continue;
            auto *knopf = qobject_cast<QAbstractButton *>(item->widget());
            QVERIFY(knopf);
            ids.append(gruppe(dock)->id(knopf));
        }
    }
    const QVector<int> erwartet{18,  20,  22,  23,  24,  27,  30,  33,  35,  36,  40,  44,  45,
                                46,  48,  50,  54,  55,  59,  60,  63,  66,  70,  72,  77,  80,
                                81,  84,  88,  90,  96,  99,  100, 108, 110, 117, 120, 121, 126,
                                130, 132, 135, 140, 143, 144, 150, 153, 154, 156, 160, 162, 165,
                                168, 170, 176, 180, 187, 192, 198, 204, 216, 240, 264, 0};
    QCOMPARE(ids, erwartet);
}

void TstDockReizung::nurGueltigeReizwerte()
{
    DockReizung dock;
    QSet<int> ids;
    for (QAbstractButton *knopf : gruppe(dock)->buttons()) {
        const int id = gruppe(dock)->id(knopf);
        if (id == 0) {
            QCOMPARE(knopf->text(), QStringLiteral("Abbruch"));
            continue;
        }
        // Every value button shows its own value.
        QCOMPARE(knopf->text(), QString::number(id));
        ids.insert(id);
    }
    QCOMPARE(ids, gueltigeReizwerte());
}

void TstDockReizung::knopf_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("zeile");
    QTest::addColumn<int>("spalte");
    QTest::newRow("18") << 18 << "18" << 0 << 0;
    QTest::newRow("44 am Zeilenende") << 44 << "44" << 0 << 11;
    QTest::newRow("45 am Zeilenanfang") << 45 << "45" << 1 << 0;
    QTest::newRow("99") << 99 << "99" << 2 << 7;
    QTest::newRow("204") << 204 << "204" << 4 << 11;
    QTest::newRow("216") << 216 << "216" << 5 << 0;
    QTest::newRow("240") << 240 << "240" << 5 << 1;
    QTest::newRow("264") << 264 << "264" << 5 << 2;
    QTest::newRow("Abbruch") << 0 << "Abbruch" << 5 << 3;
}

void TstDockReizung::knopf()
{
    QFETCH(int, id);
    DockReizung dock;
    QAbstractButton *knopf = gruppe(dock)->button(id);
    QVERIFY(knopf);
    QTEST(knopf->text(), "text");
    const int index = gitter(dock)->indexOf(knopf);
    QVERIFY(index >= 0);
    int zeile = -1;
    int spalte = -1;
    int zeilen = 0;
    int spalten = 0;
    gitter(dock)->getItemPosition(index, &zeile, &spalte, &zeilen, &spalten);
    QTEST(zeile, "zeile");
    QTEST(spalte, "spalte");
    QCOMPARE(zeilen, 1);
    QCOMPARE(spalten, 1);
}

void TstDockReizung::klick_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("wert");
    QTest::newRow("18") << "18" << 18;
    QTest::newRow("23") << "23" << 23;
    QTest::newRow("121") << "121" << 121;
    QTest::newRow("264") << "264" << 264;
    QTest::newRow("Abbruch") << "Abbruch" << 0;
}

void TstDockReizung::klick()
{
    QFETCH(QString, text);
    QFETCH(int, wert);
    DockReizung dock;
    dock.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dock));

    QToolButton *gewaehlt = nullptr;
    for (QToolButton *knopf : dock.findChildren<QToolButton *>()) {
        if (knopf->text() == text)
            gewaehlt = knopf;
    }
    QVERIFY(gewaehlt);

    QSignalSpy spy(&dock, &DockReizung::reizWertSelected);
    QTest::mouseClick(gewaehlt, Qt::LeftButton);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), wert);
}

KARTULO_TEST_MAIN(TstDockReizung)
#include "tst_dockreizung.moc"
