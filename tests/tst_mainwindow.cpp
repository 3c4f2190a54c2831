// The main window as a scorer meets it: first start and closing, a restart with a saved protocol
// or a running time limit, the reset, a damaged database, and the settings dialog.

#include "app/files/dockfileview.h"
#include "app/widgets/dlgsettings.h"
#include "core/db/statements.h"
#include "helpers/faelle.h"
#include "helpers/fensterhilfe.h"
#include "velmora/client.h"

#include <QtWidgets>

using namespace Fenster;

namespace {

// A 3-player list of table 5, series 2, in result mode, with two games.
void gespeichertesProtokoll()
{
    QVERIFY(TestProtokoll::anlegen(3, 36, 1, 5));
    QVERIFY(TestProtokoll::sql(
        {"UPDATE Settings SET Serie = 2, Gruppe = 'Gruppe X'",
         QLatin1String(Sql::InsertSpielListePrefix) +
             "VALUES (1, 12, 2, 0, 1, 0, 0, 0, 0, 0, 48, 0, 0, 48, 0, 0, 0, 18), "
             "(2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0)"}));
}

// Page shown, which of the first four may open, and the rows in database and window.
QString zustand(MainWindow &fenster)
{
    auto *tabs = kind<QTabWidget>(&fenster, "tabWidget");
    QString text = seite(&fenster) + ' ';
    for (int i = 0; i < 4; ++i)
        text += tabs->isTabEnabled(i) ? '1' : '0';
    for (const char *tabelle : {"SpielListe", "Teilnehmer", "Settings", "Spieler"})
        text += ' ' + QString::number(TestProtokoll::zeilen(QLatin1String(tabelle)));
    for (const char *ansicht : {"tblViewUebersicht", "tblViewSpieler"})
        text += ' ' + QString::number(modell(&fenster, ansicht)->rowCount());
    return text;
}

const QString Anfang = QStringLiteral("tabBeschreibung 1000 0 0 0 0 0 0");
const QString Offen = QStringLiteral("tabBeschreibung 1111 2 3 1 3 2 3");

} // namespace

class TstMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void init() { TestUmgebung::allesLoeschen(); }
    void ersterStart();
    void wiederhergestellt();
    void zeitLimit_data();
    void zeitLimit();
    void beschaedigteDatenbank_data();
    void beschaedigteDatenbank();
    void einstellungsDialog();
};

// A first start, then closing: only a real close stores the header and ends the time limit.
void TstMainWindow::ersterStart()
{
    Probe fenster;
    QVERIFY(fenster.antworten.titel.isEmpty());
    QCOMPARE(zustand(fenster), Anfang);
    // The store is found under the application's names only if the window set them.
    QCOMPARE(einstellungen().value("databasepath").toString(), TestUmgebung::datenVerzeichnis());
    QCOMPARE(text(&fenster, "leListenName"), QStringLiteral("MeinVerein"));
    QCOMPARE(kind<QDateEdit>(&fenster, "deDatum")->date(), QDate::currentDate());

    fenster.show();
    kind<QSpinBox>(&fenster, "spbTischNr")->setValue(9);
    for (const bool ja : {false, true}) {
        fenster.antworten.antworte(ja ? QMessageBox::Yes : QMessageBox::No);
        QCOMPARE(fenster.close(), ja);
        QCOMPARE(fenster.isVisible(), !ja);
        QCOMPARE(einstellungen().value("spielstopzeit").toString(), QString(ja ? "openend" : ""));
        QCOMPARE(TestProtokoll::spalte("Settings", "TischNr"), ja ? QList<int>{9} : QList<int>());
    }
    QCOMPARE(fenster.antworten.titel + fenster.antworten.texte,
             QStringList({"FRAGE", "FRAGE", "Kartulo beenden?", "Kartulo beenden?"}));
}

// A saved protocol comes back; a reset answered "No" leaves it, "Yes" empties all.
void TstMainWindow::wiederhergestellt()
{
    gespeichertesProtokoll();
    Probe fenster;
    QVERIFY(fenster.antworten.titel.isEmpty());
    QCOMPARE(zustand(fenster), Offen);
    QCOMPARE(texte(&fenster, {"spbTischNr", "spbSerie", "spbSpielAnzahl", "deDatum", "cmbGruppenId",
                              "lblListe", "lblModus"}),
             QStringList(
                 {"5", "2", "36", "20.11.2026", "Gruppe X", "Erstliste Tisch 5", "Ergebnis Mode"}));
    // A running series keeps its header.
    for (const char *name : {"spbSpielAnzahl", "pbStartSpiel", "cmbGruppenId"})
        QVERIFY2(!kind<QWidget>(&fenster, name)->isEnabled(), name);
    // Three players: no fourth declarer button, no fourth column.
    auto *uebersicht = kind<QTableView>(&fenster, "tblViewUebersicht");
    QVERIFY(kind<QToolButton>(&fenster, "tbSpieler4")->isHidden() &&
            uebersicht->isColumnHidden(15));
    QCOMPARE(uebersicht->model()->index(0, 13).data().toString(), QStringLiteral("48"));
    QCOMPARE(modell(&fenster, "tblViewSpieler")->index(2, 1).data(), "Clara");
    // The game to come is the third.
    QCOMPARE(kind<QLCDNumber>(&fenster, "lcdNumber")->intValue(), 3);

    for (const bool ja : {false, true}) {
        fenster.antworten.antworte(ja ? QMessageBox::Yes : QMessageBox::No);
        kind<QAction>(&fenster, "actionDatenbankZuruecksetzen")->trigger();
        QCOMPARE(zustand(fenster), ja ? Anfang : Offen);
    }
    QCOMPARE(
        fenster.antworten.titel + fenster.antworten.texte,
        QStringList({"FRAGE", "FRAGE", "Datenbank zuruecksetzen?", "Datenbank zuruecksetzen?"}));
}

void TstMainWindow::zeitLimit_data()
{
    Faelle::laden("restzeit.tsv");
}

// A stop time still ahead runs on after a restart and looks as it did while it
// ran, in the shown window; one passed is not resumed.
void TstMainWindow::zeitLimit()
{
    QFETCH(int, minuten);
    QFETCH(QString, farbe);
    QVERIFY(TestProtokoll::anlegen(4, 48));
    // Half a minute more, since "hh:mm" drops the seconds of the stop time.
    const QTime stop = QTime::currentTime().addSecs(minuten * 60 + 30);
    einstellungen().setValue("spielstopzeit", stop.toString("hh:mm"));
    // A style sheet in force before the window is built, as after an earlier window or with
    // a style of the desktop, polishes the fields while they are made.
    qApp->setStyleSheet(QStringLiteral("QToolTip { color: black; }"));
    MainWindow fenster;
    fenster.show();
    QVERIFY(QTest::qWaitForWindowExposed(&fenster));
    auto *timer = fenster.findChild<QTimer *>("restZeitTimer");
    QCOMPARE(timer->isActive(), minuten > 0);
    auto *feld = kind<QLineEdit>(&fenster, "leMeldungRot");
    const QString rest = QStringLiteral("Verbleibende Zeit %1 Minuten");
    QVERIFY2((minuten < 0 ? QStringList{""} : QStringList{rest.arg(minuten), rest.arg(minuten - 1)})
                 .contains(feld->text()),
             qPrintable(feld->text()));
    if (minuten < 0)
        return;
    for (auto gruppe : {QPalette::Active, QPalette::Inactive})
        QCOMPARE(feld->palette().color(gruppe, QPalette::Text), QColor(farbe));
    // The next step falls on the stop time less whole five minutes, not five from now.
    const QTime schritt = QTime::currentTime().addMSecs(timer->remainingTime());
    QCOMPARE(qRound(schritt.msecsTo(QTime(stop.hour(), stop.minute())) / 1000.0) % 300, 0);
}

void TstMainWindow::beschaedigteDatenbank_data()
{
    Faelle::laden("fremdedatenbank.tsv");
}

void TstMainWindow::beschaedigteDatenbank()
{
    QFETCH(QByteArray, inhalt);
    QDir().mkpath(TestUmgebung::datenVerzeichnis());
    QFile datei(TestUmgebung::datenbankDatei());
    QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size());
    datei.close();
    QVERIFY(QFile::copy(QFINDTESTDATA("data/protokoll48.xml"),
                        TestUmgebung::datenVerzeichnis() + "/protokoll.xml"));
    MeldungsBeantworter antworten;
    {
        MainWindow fenster;
        QCOMPARE(antworten.titel, QStringList{"WARNUNG"});
        QVERIFY(antworten.texte.first().contains(TestUmgebung::datenbankDatei()));
        QCOMPARE(zustand(fenster), QStringLiteral("tabBeschreibung 1000 -1 -1 -1 -1 0 0"));
        QVERIFY(status(fenster).contains("beiseite"));
        // Every action, each answered "Yes", is refused and leaves the file alone.
        klick(&fenster, "pbStartSpiel");
        kind<QAction>(&fenster, "actionNeu")->trigger();
        klick(&fenster, "pbOk");
        kind<QAction>(&fenster, "actionLaden")->trigger();
        klick(fenster.findChild<DockFileView *>(), "pbOk");
        kind<QAction>(&fenster, "actionDatenbankZuruecksetzen")->trigger();
        QVERIFY(fenster.close());
        QCOMPARE(antworten.titel, QStringList({"WARNUNG", "FRAGE", "WARNUNG", "FRAGE", "WARNUNG",
                                               "WARNUNG", "FRAGE", "WARNUNG", "FRAGE"}));
        QVERIFY(antworten.texte.at(5).contains("/protokoll.xml\nkonnte nicht"));
        QCOMPARE(zustand(fenster), QStringLiteral("tabBeschreibung 1000 -1 -1 -1 -1 0 0"));
    }
    QVERIFY(datei.open(QIODevice::ReadOnly));
    QCOMPARE(datei.readAll(), inhalt);
}

// "Liste -> Einstellungen": while it is open, WLAN off drops the manager's messages; the Fabian
// switch is stored at once, even closed without OK, and rewrites the standings.
void TstMainWindow::einstellungsDialog()
{
    QVERIFY(mitSpielen(4));
    Probe fenster;
    Client *client = fenster.findChild<Client *>();
    emit client->newParticipant("Tabulor@10.0.0.9:4000");
    const QString vorher = text(&fenster, "lePunkte1");
    QTimer::singleShot(100, [&] {
        auto *dialog = fenster.findChild<DlgSettings *>();
        QVERIFY(dialog);
        const auto schliessen = qScopeGuard([dialog] { dialog->close(); });
        QCOMPARE(dialog->objectName() + dialog->windowTitle(), QStringLiteral("DlgSettingsDialog"));
        QCOMPARE(dialog->size(), QSize(267, 225));
        QCOMPARE(dialog->palette().color(QPalette::Window), QColor(Qt::cyan));
        QCOMPARE(texte(dialog, {"chkSpielstandsAnzeige", "chkWlanBenutzen"}),
                 QStringList({"Spielstand mit Fabianpunkten", "WLAN benutzen"}));
        auto *fabian = kind<QCheckBox>(dialog, "chkSpielstandsAnzeige");
        auto *wlan = kind<QCheckBox>(dialog, "chkWlanBenutzen");
        QVERIFY(fabian->isChecked() && wlan->isChecked());
        QCOMPARE(kind<QDialogButtonBox>(dialog, "buttonBox")->buttons().size(), 1);
        wlan->setChecked(false);
        emit client->newMessage("Tabulor@10.0.0.9:4000", "3:127.0.0.1:$7");
        fabian->setChecked(false);
        QCOMPARE(einstellungen().value("spielstandmitfabianpunkten").toBool(), false);
        fenster.findChild<Einstellungen *>()->sicherheitskopieIntervallSetzen(7);
    });
    fenster.onEinstellungen();
    QVERIFY(fenster.antworten.texte.isEmpty());
    QVERIFY(!fenster.findChild<DlgSettings *>());
    QVERIFY2(text(&fenster, "lePunkte1") != vorher, qPrintable(vorher));
    QCOMPARE(kind<QTimer>(&fenster, "sicherheitskopieTimer")->interval(), 7 * 60000);
    fenster.onWlanBenutzen(true);
    emit client->newMessage("Tabulor@10.0.0.9:4000", "3:127.0.0.1:$7");
    QCOMPARE(fenster.antworten.texte, QStringList({"Tisch 7 ist schon vergeben!"}));
}

KARTULO_TEST_MAIN(TstMainWindow)
#include "tst_mainwindow.moc"
