// The three play modes with their docks, the time limit across a restart,
// and a Bierlachs evening played down round by round.

#include "app/mainwindow.h"
#include "helpers/fensterhilfe.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"

#include <QAction>
#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QStatusBar>
#include <QTimer>

using namespace TestProtokoll;
using namespace Fenster;

namespace {

QSettings store()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Ormindo"),
                     QStringLiteral("Kartulo"));
}

QString modusText(MainWindow &fenster)
{
    return fenster.findChild<QLabel *>("lblModus")->text();
}

void dockBestaetigen(MainWindow &fenster, const char *dock, const QString &wert)
{
    auto *d = fenster.findChild<QDockWidget *>(dock);
    QVERIFY(d);
    d->findChild<QLineEdit *>("leWert")->setText(wert);
    d->findChild<QPushButton *>("pbDockOk")->click();
}

} // namespace

class TstSpielmodi : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void modusWechsel();
    void zeitLimitDock_data();
    void zeitLimitDock();
    void bierlachsDock();
    void zeitLimitNachNeustart_data();
    void zeitLimitNachNeustart();
    void bierlachsAbend();
};

void TstSpielmodi::init()
{
    TestUmgebung::allesLoeschen();
}

void TstSpielmodi::modusWechsel()
{
    QVERIFY(anlegen(4, 48));
    {
        MainWindow fenster;
        auto *bierlachs = fenster.findChild<QComboBox *>("cmbBierlachs");
        fenster.findChild<QAction *>("actionErgebnis")->trigger();
        QCOMPARE(modusText(fenster), QStringLiteral("Ergebnis Modus"));
        QVERIFY(bierlachs->isHidden());
        fenster.findChild<QAction *>("actionBierlachs")->trigger();
        QCOMPARE(modusText(fenster), QStringLiteral("Bierlachs Modus - 0 Maxpunkte"));
        QVERIFY(!bierlachs->isHidden());
        fenster.findChild<QAction *>("actionTurnier")->trigger();
        QCOMPARE(modusText(fenster), QStringLiteral("Turnier Modus"));
        QVERIFY(bierlachs->isHidden());

        // The mode goes into the header and comes back with the restore label.
        fenster.findChild<QAction *>("actionErgebnis")->trigger();
        MeldungsBeantworter antworten;
        fenster.close();
    }
    MainWindow neu;
    QCOMPARE(modusText(neu), QStringLiteral("Ergebnis Mode"));
}

void TstSpielmodi::zeitLimitDock_data()
{
    QTest::addColumn<QString>("eingabe");
    QTest::addColumn<int>("minuten");
    QTest::newRow("leer") << "" << 120;
    QTest::newRow("45") << "45" << 45;
}

void TstSpielmodi::zeitLimitDock()
{
    QFETCH(QString, eingabe);
    QVERIFY(anlegen(4, 48));
    MainWindow fenster;
    fenster.findChild<QAction *>("actionTurnier")->trigger();
    fenster.findChild<QAction *>("actionTurnier")->trigger();
    QCOMPARE(fenster.findChildren<QDockWidget *>("DockZeitLimit").size(), 1);
    auto *dock = fenster.findChild<QDockWidget *>("DockZeitLimit");
    QCOMPARE(dock->features(), QDockWidget::NoDockWidgetFeatures);
    QCOMPARE(fenster.dockWidgetArea(dock), Qt::TopDockWidgetArea);
    QCOMPARE(dock->findChild<QLabel *>()->text(),
             QStringLiteral("Zeitlimit pro Serie in Minuten eingeben..."));
    QCOMPARE(dock->findChild<QLineEdit *>("leWert")->text(), QStringLiteral("120"));
    dockBestaetigen(fenster, "DockZeitLimit", eingabe);
    QTRY_VERIFY(!fenster.findChild<QDockWidget *>("DockZeitLimit"));

    // Starting a series shows the limit just set.
    MeldungsBeantworter antworten;
    fenster.findChild<QPushButton *>("pbStartSpiel")->setEnabled(true);
    klick(&fenster, "pbStartSpiel");
    QFETCH(int, minuten);
    QCOMPARE(fenster.findChild<QLineEdit *>("leMeldungRot")->text(),
             QStringLiteral("Verbleibende Zeit %1 Minuten").arg(minuten));
}

void TstSpielmodi::bierlachsDock()
{
    QVERIFY(anlegen(3, 10, 1));
    MainWindow fenster;
    fenster.findChild<QAction *>("actionBierlachs")->trigger();
    auto *dock = fenster.findChild<QDockWidget *>("DockBierlachs");
    QVERIFY(dock);
    QCOMPARE(dock->findChild<QLabel *>()->text(),
             QStringLiteral("Bierlachs Maximal Punkte eingeben..."));
    // An empty field changes nothing, the dock stays.
    dockBestaetigen(fenster, "DockBierlachs", "");
    QVERIFY(fenster.findChild<QDockWidget *>("DockBierlachs"));
    dockBestaetigen(fenster, "DockBierlachs", "300");
    QCOMPARE(modusText(fenster), QStringLiteral("Bierlachs Modus - 300 Maxpunkte"));
    QTRY_VERIFY(!fenster.findChild<QDockWidget *>("DockBierlachs"));

    fenster.findChild<QAction *>("actionBierlachs")->trigger();
    fenster.findChild<QDockWidget *>("DockBierlachs")
        ->findChild<QPushButton *>("pbDockAbbruch")
        ->click();
    QCOMPARE(modusText(fenster), QStringLiteral("Bierlachs Modus - 300 Maxpunkte"));
}

void TstSpielmodi::zeitLimitNachNeustart_data()
{
    QTest::addColumn<QString>("gespeichert");
    QTest::addColumn<bool>("laeuft");
    const QTime jetzt = QTime::currentTime();
    QTest::newRow("30 Minuten voraus") << jetzt.addSecs(30 * 60 + 30).toString("hh:mm") << true;
    QTest::newRow("vorbei") << jetzt.addSecs(-20 * 60).toString("hh:mm") << false;
    QTest::newRow("openend") << "openend" << false;
    QTest::newRow("kaputt") << "halb neun" << false;
}

void TstSpielmodi::zeitLimitNachNeustart()
{
    QFETCH(QString, gespeichert);
    QFETCH(bool, laeuft);
    QVERIFY(anlegen(4, 48));
    store().setValue("spielstopzeit", gespeichert);
    MainWindow fenster;
    QCOMPARE(fenster.findChild<QTimer *>("restZeitTimer")->isActive(), laeuft);
    const QString text = fenster.findChild<QLineEdit *>("leMeldungRot")->text();
    if (laeuft)
        QVERIFY2(text == "Verbleibende Zeit 30 Minuten" || text == "Verbleibende Zeit 29 Minuten",
                 qPrintable(text));
    else
        QCOMPARE(text, QString());
}

void TstSpielmodi::bierlachsAbend()
{
    QVERIFY(anlegen(3, 10, 2));
    QVERIFY(sql({"UPDATE Settings SET BlPunkte = 100"}));
    MainWindow fenster;
    QCOMPARE(modusText(fenster), QStringLiteral("Bierlachs Modus - 100 MaxPunkte"));
    auto *lePunkte1 = fenster.findChild<QLineEdit *>("lePunkte1");
    QCOMPARE(lePunkte1->text(), QStringLiteral("Anna: 100 G0 V0"));

    MeldungsBeantworter antworten;
    // Anna plays Grand with one (48) twice and is at 4; Bernd loses a Karo (36 up).
    eingeben(&fenster, Spiel{"tbGrang", 0, true, ""});
    QCOMPARE(lePunkte1->text(), QStringLiteral("Anna: 52 G1 V0"));
    eingeben(&fenster, Spiel{"tbKaro", 1, false, ""});
    QCOMPARE(fenster.findChild<QLineEdit *>("lePunkte2")->text(),
             QStringLiteral("Bernd: 136 G0 V1"));
    QVERIFY(!antworten.texte.contains("Rundenende! Neue Runde?"));
    eingeben(&fenster, Spiel{"tbGrang", 0, true, ""});
    QCOMPARE(lePunkte1->text(), QStringLiteral("Anna: 4 G2 V0"));
    eingeben(&fenster, Spiel{"tbKaro", 0, true, ""});
    QCOMPARE(antworten.texte.count("Rundenende! Neue Runde?"), 1);
    QCOMPARE(fenster.statusBar()->currentMessage(), QStringLiteral("Bierlachs: Bernd"));
    QCOMPARE(lePunkte1->text(), QStringLiteral("Anna: 100 G0 V0"));

    // The next game counts in round 2; round 1 stays on the selector.
    eingeben(&fenster, Spiel{"tbHerz", 2, true, ""});
    auto *runden = fenster.findChild<QComboBox *>("cmbBierlachs");
    QCOMPARE(runden->count(), 2);
    QCOMPARE(fenster.findChild<QLineEdit *>("lePunkte3")->text(),
             QStringLiteral("Clara: 80 G1 V0"));
    runden->setCurrentIndex(0);
    QCOMPARE(lePunkte1->text(), QStringLiteral("Anna: -14 G3 V0"));
    QCOMPARE(antworten.texte.count("Rundenende! Neue Runde?"), 1);
}

KARTULO_TEST_MAIN(TstSpielmodi)
#include "tst_spielmodi.moc"
