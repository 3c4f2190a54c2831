// "Liste -> Einstellungen": the Fabian switch is stored at once, even when the
// dialog is closed without OK; the WLAN switch stops and resumes the
// manager's messages while the dialog is open; the standings and the backup
// interval follow the settings store.

#include "app/mainwindow.h"
#include "app/widgets/dlgsettings.h"
#include "core/service/einstellungen.h"
#include "helpers/fensterhilfe.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"
#include "velmora/client.h"

#include <QtWidgets>

using namespace Fenster;

class TstEinstellungsdialog : public QObject
{
    Q_OBJECT

private slots:
    void init() { TestUmgebung::allesLoeschen(); }
    void schalter();
    void imFenster();
};

void TstEinstellungsdialog::schalter()
{
    QSettings store = einstellungen();
    Einstellungen speicher;
    speicher.mitFabianpunktenSetzen(true);
    DlgSettings dialog(speicher, true);
    QCOMPARE(dialog.objectName(), QStringLiteral("DlgSettings"));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Dialog"));
    QCOMPARE(dialog.size(), QSize(267, 225));
    QCOMPARE(dialog.palette().color(QPalette::Window), QColor(Qt::cyan));
    auto *fabian = kind<QCheckBox>(&dialog, "chkSpielstandsAnzeige");
    auto *wlan = kind<QCheckBox>(&dialog, "chkWlanBenutzen");
    QCOMPARE(fabian->text(), QStringLiteral("Spielstand mit Fabianpunkten"));
    QCOMPARE(wlan->text(), QStringLiteral("WLAN benutzen"));
    QVERIFY(fabian->isChecked() && wlan->isChecked());
    QCOMPARE(kind<QDialogButtonBox>(&dialog, "buttonBox")->buttons().size(), 1);

    QSignalSpy netz(&dialog, &DlgSettings::wlanBenutzen);
    fabian->setChecked(false);
    wlan->setChecked(false);
    QCOMPARE(store.value("spielstandmitfabianpunkten").toBool(), false);
    QCOMPARE(netz.takeFirst(), QVariantList{false});
    dialog.show();
    dialog.close();
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QCOMPARE(einstellungen().value("spielstandmitfabianpunkten").toBool(), false);
}

// Through the window: while the dialog is open, WLAN off drops the manager's
// messages; Fabian points off rewrite the standings.
void TstEinstellungsdialog::imFenster()
{
    QVERIFY(TestProtokoll::anlegen(4, 48));
    QStringList spiele;
    for (const SpielEintrag &e : TestProtokoll::abend(4, 4))
        spiele << Sql::spielEinfuegen(e);
    QVERIFY(TestProtokoll::sql(spiele));
    Probe fenster;
    Client *client = fenster.findChild<Client *>();
    emit client->newParticipant("Tabulor@10.0.0.9:4000");
    const QString vorher = text(&fenster, "lePunkte1");
    QTimer::singleShot(100, [&] {
        auto *dialog = fenster.findChild<DlgSettings *>();
        QVERIFY(dialog);
        kind<QCheckBox>(dialog, "chkWlanBenutzen")->setChecked(false);
        emit client->newMessage("Tabulor@10.0.0.9:4000", "3:127.0.0.1:$7");
        kind<QCheckBox>(dialog, "chkSpielstandsAnzeige")->setChecked(false);
        fenster.findChild<Einstellungen *>()->sicherheitskopieIntervallSetzen(7);
        kind<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Ok)->click();
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

KARTULO_TEST_MAIN(TstEinstellungsdialog)
#include "tst_einstellungsdialog.moc"
