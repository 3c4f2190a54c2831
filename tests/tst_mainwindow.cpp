// The main window as a scorer meets it: a first start, a restart with a saved
// protocol or within a running time limit, the reset, closing, a damaged
// database, the about box, a stored game loaded back onto the entry panel,
// and the window size and zoom limits.

#include "app/mainwindow.h"
#include "core/db/statements.h"
#include "helpers/fensterhilfe.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"

#include <QtWidgets>

Q_DECLARE_METATYPE(QMessageBox::StandardButton)

namespace {

// A 3-player list of table 5, series 2, in result mode, with two games.
void gespeichertesProtokoll()
{
    QVERIFY(TestProtokoll::anlegen(3, 36, 1, 5));
    QVERIFY(
        TestProtokoll::sql({"UPDATE Settings SET Serie = 2, Gruppe = 'Gruppe X'",
                            QLatin1String(Sql::InsertSpielListePrefix) +
                                "VALUES (1, 12, 2, 0, 1, 0, 0, 0, 0, 0, 48, 0, 0, 48, 0, 0, 0, 18)",
                            QLatin1String(Sql::InsertSpielListePrefix) +
                                "VALUES (2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0)"}));
}

template <typename T> T *kind(QObject *fenster, const char *name)
{
    T *widget = fenster->findChild<T *>(QLatin1String(name));
    if (!widget)
        qWarning("kein %s", name);
    return widget;
}

bool anfangszustand(MainWindow &fenster)
{
    auto *tabs = kind<QTabWidget>(&fenster, "tabWidget");
    return tabs->currentWidget()->objectName() == QLatin1String("tabBeschreibung") &&
           !tabs->isTabEnabled(1) && !tabs->isTabEnabled(2) && !tabs->isTabEnabled(3) &&
           tabs->isTabEnabled(0);
}

} // namespace

class TstMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void ersterStart();
    void wiederhergestellt();
    void zeitLimitFarbe_data();
    void zeitLimitFarbe();
    void zuruecksetzen_data();
    void zuruecksetzen();
    void beenden_data();
    void beenden();
    void beschaedigteDatenbank_data();
    void beschaedigteDatenbank();
    void info();
    void spielInPanel();
    void kleinerBildschirm_data();
    void kleinerBildschirm();
    void zoomGrenzen();
};

void TstMainWindow::init()
{
    TestUmgebung::allesLoeschen();
}

void TstMainWindow::ersterStart()
{
    MeldungsBeantworter antworten;
    MainWindow fenster;
    QVERIFY(antworten.titel.isEmpty());
    QVERIFY(QFile::exists(TestUmgebung::datenbankDatei()));
    for (const char *tabelle : {"SpielListe", "Teilnehmer", "Settings", "Spieler"})
        QCOMPARE(TestProtokoll::zeilen(QLatin1String(tabelle)), 0);
    QVERIFY(anfangszustand(fenster));
    QCOMPARE(fenster.windowTitle(), QStringLiteral("Kartulo"));
    QCOMPARE(QCoreApplication::organizationName(), QStringLiteral("Ormindo"));
    QCOMPARE(QCoreApplication::applicationName(), QStringLiteral("Kartulo"));

    QSettings s = Fenster::einstellungen();
    QCOMPARE(s.value("databasepath").toString(), TestUmgebung::datenVerzeichnis());
    QCOMPARE(s.value("sicherheitskopieintervall").toInt(), 5);
    QVERIFY(s.contains("kartengeld"));
    QVERIFY(!s.contains("Kartengeld"));
    QCOMPARE(s.value("vereinsname").toString(), QStringLiteral("MeinVerein"));
    QCOMPARE(kind<QLineEdit>(&fenster, "leListenName")->text(), QStringLiteral("MeinVerein"));
    QCOMPARE(kind<QDateEdit>(&fenster, "deDatum")->date(), QDate::currentDate());
    // The help collection lies beside the test programs, as beside kartulo.
    auto *browser = fenster.findChild<QTextBrowser *>();
    QVERIFY(browser);
    QVERIFY2(browser->source().path().endsWith(QLatin1String("/kurzanleitung.html")),
             qPrintable(browser->source().toString()));
}

void TstMainWindow::wiederhergestellt()
{
    gespeichertesProtokoll();
    MeldungsBeantworter antworten;
    MainWindow fenster;
    QVERIFY(antworten.titel.isEmpty());
    auto *tabs = kind<QTabWidget>(&fenster, "tabWidget");
    for (int i = 1; i <= 3; ++i)
        QVERIFY(tabs->isTabEnabled(i));
    QCOMPARE(kind<QSpinBox>(&fenster, "spbTischNr")->value(), 5);
    QCOMPARE(kind<QSpinBox>(&fenster, "spbSerie")->value(), 2);
    QCOMPARE(kind<QSpinBox>(&fenster, "spbSpielAnzahl")->value(), 36);
    QVERIFY(!kind<QSpinBox>(&fenster, "spbSpielAnzahl")->isEnabled());
    QVERIFY(!kind<QPushButton>(&fenster, "pbStartSpiel")->isEnabled());
    QCOMPARE(kind<QDateEdit>(&fenster, "deDatum")->date(), QDate(2026, 11, 20));
    auto *gruppe = kind<QComboBox>(&fenster, "cmbGruppenId");
    QCOMPARE(gruppe->currentText(), QStringLiteral("Gruppe X"));
    QVERIFY(!gruppe->isEnabled());
    QCOMPARE(kind<QLabel>(&fenster, "lblListe")->text(), QStringLiteral("Erstliste Tisch 5"));
    QCOMPARE(kind<QLabel>(&fenster, "lblModus")->text(), QStringLiteral("Ergebnis Mode"));
    QVERIFY(kind<QAction>(&fenster, "actionErgebnis")->isChecked());
    QVERIFY(kind<QToolButton>(&fenster, "tbSpieler4")->isHidden());

    auto *uebersicht = kind<QTableView>(&fenster, "tblViewUebersicht");
    QCOMPARE(uebersicht->model()->rowCount(), 2);
    QCOMPARE(uebersicht->model()->columnCount(), 18);
    QCOMPARE(uebersicht->model()->headerData(6, Qt::Horizontal).toString(),
             QStringLiteral("AngSchn"));
    QCOMPARE(uebersicht->model()->index(0, 13).data().toString(), QStringLiteral("48"));
    QCOMPARE(uebersicht->model()->index(1, 0).data().toString(), QStringLiteral("2"));
    QCOMPARE(uebersicht->model()->index(1, 16).data().toString(), QStringLiteral("1"));
    QVERIFY(uebersicht->isColumnHidden(15));

    auto *teilnehmer = kind<QTableView>(&fenster, "tblViewSpieler");
    QCOMPARE(teilnehmer->model()->rowCount(), 3);
    QCOMPARE(teilnehmer->model()->headerData(0, Qt::Horizontal).toString(),
             QStringLiteral("MtgldNr"));
    QCOMPARE(teilnehmer->model()->headerData(1, Qt::Horizontal).toString(),
             QStringLiteral("Spielername"));
}

void TstMainWindow::zeitLimitFarbe_data()
{
    QTest::addColumn<int>("minuten");
    QTest::addColumn<QColor>("farbe");
    QTest::newRow("30 Minuten gruen") << 30 << QColor(Qt::darkGreen);
    QTest::newRow("10 Minuten rot") << 10 << QColor(Qt::red);
}

// A countdown resumed after a restart looks as it did while it ran, in the shown window.
void TstMainWindow::zeitLimitFarbe()
{
    QFETCH(int, minuten);
    QFETCH(QColor, farbe);
    QVERIFY(TestProtokoll::anlegen(4, 48));
    // Half a minute more, since "hh:mm" drops the seconds of the stop time.
    Fenster::einstellungen().setValue(
        "spielstopzeit", QTime::currentTime().addSecs(minuten * 60 + 30).toString("hh:mm"));
    // A style sheet in force before the window is built, as after an earlier window or with
    // a style of the desktop, polishes the fields while they are made.
    qApp->setStyleSheet(QStringLiteral("QToolTip { color: black; }"));
    MainWindow fenster;
    fenster.show();
    QVERIFY(QTest::qWaitForWindowExposed(&fenster));
    auto *feld = kind<QLineEdit>(&fenster, "leMeldungRot");
    QVERIFY2(feld->text() == QStringLiteral("Verbleibende Zeit %1 Minuten").arg(minuten) ||
                 feld->text() == QStringLiteral("Verbleibende Zeit %1 Minuten").arg(minuten - 1),
             qPrintable(feld->text()));
    for (auto gruppe : {QPalette::Active, QPalette::Inactive})
        QCOMPARE(feld->palette().color(gruppe, QPalette::Text), farbe);
}

void TstMainWindow::zuruecksetzen_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("antwort");
    QTest::addColumn<int>("spiele");
    QTest::newRow("Nein") << QMessageBox::No << 2;
    QTest::newRow("Ja") << QMessageBox::Yes << 0;
}

void TstMainWindow::zuruecksetzen()
{
    QFETCH(QMessageBox::StandardButton, antwort);
    QFETCH(int, spiele);
    gespeichertesProtokoll();
    MainWindow fenster;
    MeldungsBeantworter antworten;
    antworten.antworte(antwort);
    kind<QAction>(&fenster, "actionDatenbankZuruecksetzen")->trigger();
    QCOMPARE(antworten.titel, QStringList{"FRAGE"});
    QCOMPARE(antworten.texte, QStringList{"Datenbank zuruecksetzen?"});
    QCOMPARE(TestProtokoll::zeilen("SpielListe"), spiele);
    auto *uebersicht = kind<QTableView>(&fenster, "tblViewUebersicht");
    QCOMPARE(uebersicht->model()->rowCount(), spiele);
    if (antwort == QMessageBox::Yes) {
        for (const char *tabelle : {"Teilnehmer", "Settings", "Spieler"})
            QCOMPARE(TestProtokoll::zeilen(QLatin1String(tabelle)), 0);
        QVERIFY(anfangszustand(fenster));
        QCOMPARE(kind<QTableView>(&fenster, "tblViewSpieler")->model()->rowCount(), 0);
    } else {
        QCOMPARE(TestProtokoll::zeilen("Teilnehmer"), 3);
        QVERIFY(!anfangszustand(fenster));
    }
}

void TstMainWindow::beenden_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("antwort");
    QTest::newRow("Nein") << QMessageBox::No;
    QTest::newRow("Ja") << QMessageBox::Yes;
}

void TstMainWindow::beenden()
{
    QFETCH(QMessageBox::StandardButton, antwort);
    MainWindow fenster;
    fenster.show();
    kind<QSpinBox>(&fenster, "spbTischNr")->setValue(9);
    MeldungsBeantworter antworten;
    antworten.antworte(antwort);
    const bool geschlossen = fenster.close();
    QCOMPARE(antworten.titel, QStringList{"FRAGE"});
    QCOMPARE(antworten.texte, QStringList{"Kartulo beenden?"});
    QCOMPARE(geschlossen, antwort == QMessageBox::Yes);
    QCOMPARE(fenster.isVisible(), antwort != QMessageBox::Yes);
    QSettings s = Fenster::einstellungen();
    if (antwort == QMessageBox::Yes) {
        QCOMPARE(s.value("spielstopzeit").toString(), QStringLiteral("openend"));
        QCOMPARE(TestProtokoll::zeilen("Settings"), 1);
    } else {
        QVERIFY(!s.contains("spielstopzeit"));
        QCOMPARE(TestProtokoll::zeilen("Settings"), 0);
    }
}

void TstMainWindow::beschaedigteDatenbank_data()
{
    QTest::addColumn<QByteArray>("inhalt");
    QTest::newRow("Text") << QByteArray("Einkaufsliste: Brot, Milch\n");
    QTest::newRow("kaputter Kopf") << QByteArray("SQLite format 3").append(2000, '\x7f');
}

void TstMainWindow::beschaedigteDatenbank()
{
    QFETCH(QByteArray, inhalt);
    QDir().mkpath(TestUmgebung::datenVerzeichnis());
    QFile datei(TestUmgebung::datenbankDatei());
    QVERIFY(datei.open(QIODevice::WriteOnly));
    datei.write(inhalt);
    datei.close();

    MeldungsBeantworter antworten;
    {
        MainWindow fenster;
        QCOMPARE(antworten.titel, QStringList{"WARNUNG"});
        QVERIFY(antworten.texte.first().contains(TestUmgebung::datenbankDatei()));
        QVERIFY(anfangszustand(fenster));
        // A reset must not touch the file either.
        antworten.antworte(QMessageBox::Yes);
        kind<QAction>(&fenster, "actionDatenbankZuruecksetzen")->trigger();
    }
    QVERIFY(datei.open(QIODevice::ReadOnly));
    QCOMPARE(datei.readAll(), inhalt);
}

void TstMainWindow::info()
{
    MainWindow fenster;
    MeldungsBeantworter antworten;
    kind<QAction>(&fenster, "actionInfoKartulo")->trigger();
    QCOMPARE(antworten.titel, QStringList{"Kartulo"});
    const QStringList zeilen = antworten.texte.value(0).split('\n');
    QVERIFY(zeilen.size() >= 5);
    QCOMPARE(zeilen.at(1), QStringLiteral("Version 5.1.6"));
    QVERIFY(zeilen.indexOf("Anregungen - Fehler melden") > 1);
}

void TstMainWindow::spielInPanel()
{
    gespeichertesProtokoll();
    MainWindow fenster;
    SpielEintrag grand;
    grand.setze(SpielEintrag::Zeile, 12);
    grand.setze(SpielEintrag::Spiel, 24);
    grand.setze(SpielEintrag::Ohne, 4);
    grand.setze(SpielEintrag::Hand, true);
    grand.setze(SpielEintrag::Schneider, true);
    grand.setze(SpielEintrag::Verloren, 336);
    grand.setze(SpielEintrag::Spieler3, -336);
    fenster.spielInPanel(grand);

    QCOMPARE(kind<QLCDNumber>(&fenster, "lcdNumber")->intValue(), 12);
    const QStringList gewaehlt{"tbGrang",     "tbOhne",     "tb4",       "tbHand",
                               "tbSchneider", "tbVerloren", "tbSpieler3"};
    const QStringList alle =
        QStringLiteral("tbKaro tbHerz tbPik tbKreuz tbGrang tbNull tbEingepasst tbMit tbOhne tb1 "
                       "tb4 tbHand tbOffen tbSchneider tbSchneiderAngesagt tbSchneiderSchwarz "
                       "tbSchwarzAngesagt tbGewonnen tbVerloren tbSpieler1 tbSpieler2 tbSpieler3")
            .split(' ');
    for (const QString &name : alle)
        QVERIFY2(kind<QToolButton>(&fenster, qPrintable(name))->isChecked() ==
                     gewaehlt.contains(name),
                 qPrintable(name));

    // A passed-in round clears the game type, the result stays as it was.
    SpielEintrag eingepasst;
    eingepasst.setze(SpielEintrag::Zeile, 13);
    eingepasst.setze(SpielEintrag::Eingepasst, true);
    fenster.spielInPanel(eingepasst);
    for (const char *typ : {"tbGrang", "tbKreuz", "tbEingepasst"})
        QVERIFY(!kind<QToolButton>(&fenster, typ)->isChecked());
    QVERIFY(!kind<QToolButton>(&fenster, "tbHand")->isChecked());
    QCOMPARE(kind<QLCDNumber>(&fenster, "lcdNumber")->intValue(), 13);
}

void TstMainWindow::kleinerBildschirm_data()
{
    QTest::addColumn<QSize>("groesse");
    QTest::addColumn<bool>("klein");
    QTest::newRow("999 hoch") << QSize(1600, 999) << true;
    QTest::newRow("999 breit") << QSize(999, 1600) << true;
    QTest::newRow("1000") << QSize(1000, 1000) << false;
}

void TstMainWindow::kleinerBildschirm()
{
    QFETCH(QSize, groesse);
    QTEST(MainWindow::istKleinerBildschirm(groesse), "klein");
}

void TstMainWindow::zoomGrenzen()
{
    MainWindow fenster;
    auto *ansicht = fenster.findChild<QGraphicsView *>(QStringLiteral("gvSpieleListe"));
    for (int i = 0; i < 25; ++i)
        fenster.onZoomIn();
    QVERIFY(qAbs(ansicht->transform().m11() - 4.8) < 1e-9);
    fenster.onZoomOut();
    QVERIFY(qAbs(ansicht->transform().m11() - 4.8) < 1e-9);
    for (int i = 0; i < 30; ++i)
        fenster.onZoomOut();
    QVERIFY(qAbs(ansicht->transform().m11() - 0.6) < 1e-9);
    fenster.onZoomIn();
    QVERIFY(qAbs(ansicht->transform().m22() - 0.7) < 1e-9);
}

KARTULO_TEST_MAIN(TstMainWindow)
#include "tst_mainwindow.moc"
