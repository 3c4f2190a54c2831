// The main window as a scorer meets it: a first start, a restart with a saved
// protocol, the reset, closing, a damaged database, and a stored game loaded
// back onto the entry panel.

#include "app/mainwindow.h"
#include "core/db/statements.h"
#include "helpers/fensterhilfe.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"

#include <QActionGroup>
#include <QComboBox>
#include <QDateEdit>
#include <QFile>
#include <QGraphicsView>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLCDNumber>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QSqlQuery>
#include <QTabWidget>
#include <QTableView>
#include <QTextBrowser>
#include <QToolBar>
#include <QToolButton>

Q_DECLARE_METATYPE(QMessageBox::StandardButton)

namespace {

QSettings store()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Ormindo"),
                     QStringLiteral("Kartulo"));
}

// A 3-player list of table 5, series 2, in result mode, with two games.
void gespeichertesProtokoll()
{
    QVERIFY(TestProtokoll::sql(
        {QString::fromLatin1(Sql::CreateSpielListe), QString::fromLatin1(Sql::CreateTeilnehmer),
         QString::fromLatin1(Sql::CreateSettings), QString::fromLatin1(Sql::CreateSpieler),
         "INSERT INTO Spieler VALUES (100, 'Anna', 1, 1)",
         "INSERT INTO Spieler VALUES (101, 'Bernd', 1, 1)",
         "INSERT INTO Spieler VALUES (102, 'Clara', 1, 0)",
         "INSERT INTO Teilnehmer VALUES (100, 'Anna', 1, 1)",
         "INSERT INTO Teilnehmer VALUES (101, 'Bernd', 1, 1)",
         "INSERT INTO Teilnehmer VALUES (102, 'Clara', 1, 0)",
         "INSERT INTO Settings VALUES (1, 5, 2, 36, 1, 0, '2026-11-20', 'Gruppe X')",
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
    void tabsUndMenues();
    void werkzeugleiste();
    void wiederhergestellt();
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

    QSettings s = store();
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

void TstMainWindow::tabsUndMenues()
{
    MainWindow fenster;
    auto *tabs = kind<QTabWidget>(&fenster, "tabWidget");
    QStringList namen, titel;
    for (int i = 0; i < tabs->count(); ++i) {
        namen << tabs->widget(i)->objectName();
        titel << tabs->tabText(i);
    }
    QCOMPARE(namen, QStringList({"tabEinstellungen", "tabUebersicht", "tabSpieleintrag",
                                 "tabSpieleListe", "tabSpielstaende", "tabBeschreibung"}));
    QCOMPARE(titel, QStringList({"Einstellungen", "Spielübersicht", "Spieleintrag", "Spieleliste",
                                 "Spielstaende", "Beschreibung"}));
    QVERIFY(kind<QWidget>(&fenster, "tabNeu")->isHidden());

    QStringList menues;
    for (QAction *menu : fenster.menuBar()->actions()) {
        QStringList eintraege;
        for (QAction *aktion : menu->menu()->actions())
            eintraege << (aktion->isSeparator() ? QStringLiteral("-") : aktion->text());
        menues << menu->text() + ": " + eintraege.join('|');
        for (QAction *aktion : menu->menu()->actions())
            QVERIFY(aktion->shortcut().isEmpty());
    }
    QCOMPARE(menues, QStringList({"Liste: Neu|-|Laden|Speichern|Datenbank zuruecksetzen|Info "
                                  "Kartulo|Einstellungen",
                                  "Zweitliste: Verbinden|Trennen|Leeren",
                                  "Modus: Turnier|Ergebnis|Bierlachs"}));
    QVERIFY(!fenster.menuBar()->actions().at(1)->isEnabled());

    auto *turnier = kind<QAction>(&fenster, "actionTurnier");
    auto *bierlachs = kind<QAction>(&fenster, "actionBierlachs");
    QVERIFY(turnier->isChecked());
    QVERIFY(turnier->actionGroup() && turnier->actionGroup()->isExclusive());
    bierlachs->trigger();
    QVERIFY(bierlachs->isChecked());
    QVERIFY(!turnier->isChecked());
    QCOMPARE(kind<QLabel>(&fenster, "lblModus")->text(),
             QStringLiteral("Bierlachs Modus - 500 Maxpunkte"));
}

void TstMainWindow::werkzeugleiste()
{
    MainWindow fenster;
    auto *leiste = kind<QToolBar>(&fenster, "toolBar");
    QCOMPARE(fenster.toolBarArea(leiste), Qt::TopToolBarArea);
    auto *layout =
        qobject_cast<QHBoxLayout *>(kind<QLabel>(&fenster, "lblListe")->parentWidget()->layout());
    QVERIFY(layout);
    QStringList namen;
    QList<int> stretch;
    for (int i = 0; i < layout->count(); ++i) {
        namen << layout->itemAt(i)->widget()->objectName();
        stretch << layout->stretch(i);
    }
    QCOMPARE(namen, QStringList({"lblListe", "pbReizung", "leReizwert", "lblModus", "leMeldungRot",
                                 "leMeldungGruen"}));
    QCOMPARE(stretch, QList<int>({10, 10, 10, 10, 20, 40}));
    QCOMPARE(kind<QLabel>(&fenster, "lblListe")->text(), QStringLiteral("Liste"));
    QCOMPARE(kind<QPushButton>(&fenster, "pbReizung")->text(), QStringLiteral("Reizung"));
    QCOMPARE(kind<QLabel>(&fenster, "lblModus")->text(), QStringLiteral("Turniermodus"));
    auto *reizwert = kind<QLineEdit>(&fenster, "leReizwert");
    QVERIFY(reizwert->isReadOnly());
    QCOMPARE(reizwert->maximumWidth(), 100);
    auto *validator = qobject_cast<const QIntValidator *>(reizwert->validator());
    QVERIFY(validator);
    QCOMPARE(validator->bottom(), 18);
    QCOMPARE(validator->top(), 264);
    const QPalette rot = kind<QLineEdit>(&fenster, "leMeldungRot")->palette();
    const QPalette gruen = kind<QLineEdit>(&fenster, "leMeldungGruen")->palette();
    for (auto gruppe : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QCOMPARE(rot.color(gruppe, QPalette::Text), QColor(Qt::red));
        QCOMPARE(gruen.color(gruppe, QPalette::Text), QColor(Qt::darkGreen));
    }
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
    QSettings s = store();
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
    const QStringList alle{"tbKaro",
                           "tbHerz",
                           "tbPik",
                           "tbKreuz",
                           "tbGrang",
                           "tbNull",
                           "tbEingepasst",
                           "tbMit",
                           "tbOhne",
                           "tb1",
                           "tb4",
                           "tbHand",
                           "tbOffen",
                           "tbSchneider",
                           "tbSchneiderAngesagt",
                           "tbSchneiderSchwarz",
                           "tbSchwarzAngesagt",
                           "tbGewonnen",
                           "tbVerloren",
                           "tbSpieler1",
                           "tbSpieler2",
                           "tbSpieler3"};
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
    QTest::newRow("Tablet") << QSize(1280, 800) << true;
    QTest::newRow("Monitor") << QSize(1920, 1080) << false;
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
