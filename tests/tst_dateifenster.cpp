// Costs and files through the window: cost fields, footer, PDF and XML per
// mode, the backup copy, and loading through the picker.

#include "app/files/dockfileview.h"
#include "helpers/fensterhilfe.h"

#include <QtWidgets>

using namespace TestProtokoll;
using namespace Fenster;

namespace {

QStringList blattTexte(MainWindow &fenster)
{
    QStringList texte;
    for (QGraphicsItem *item : kind<QGraphicsView>(&fenster, "gvSpieleListe")->scene()->items())
        if (auto *text = dynamic_cast<QGraphicsTextItem *>(item))
            texte << text->toPlainText();
        else if (auto *einfach = dynamic_cast<QGraphicsSimpleTextItem *>(item))
            texte << einfach->text();
    return texte;
}

// What a load must bring back and a refused one must leave: table, series and games.
QList<int> inhalt()
{
    return spalte("Settings", "TischNr") + spalte("Settings", "Serie") +
           spalte("SpielListe", "Spiel");
}

// A file a minute younger than anything the window writes now; flushed first, so that closing
// does not set the time back.
void schreiben(const QString &name, const QByteArray &inhalt)
{
    QFile datei(TestUmgebung::datenVerzeichnis() + "/" + name);
    QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size());
    QVERIFY(datei.flush() && datei.setFileTime(QDateTime::currentDateTime().addSecs(60),
                                               QFileDevice::FileModificationTime));
}

} // namespace

class TstDateiFenster : public QObject
{
    Q_OBJECT

private slots:
    void init() { TestUmgebung::allesLoeschen(); }
    void blattUndSpeichern();
    void speichernUndLaden();
};

// The account at the foot of the sheet belongs to a tournament; saving names the PDF and writes
// the XML beside it, except on a Bierlachs evening. A cost with a decimal comma is stored at
// once and redraws its line (the manager's costs: tst_netz).
void TstDateiFenster::blattUndSpeichern()
{
    for (const int modus : {0, 1, 2}) {
        TestUmgebung::allesLoeschen();
        Probe fenster(3, 36, modus, 12);
        eingeben(&fenster, Spiel{"tbKreuz", 0, true, ""});
        eingeben(&fenster, Spiel{"tbKaro", 1, false, ""});
        const QStringList texte = blattTexte(fenster);
        // Anna: 24 + 50 + 40 = 114 points. Bernd, third, pays card money 1.00, one
        // lost game 1.00, place 2.50 and the prize game 10.00.
        QCOMPARE(texte.contains("114"), modus == 0);
        QCOMPARE(texte.contains("14.50"), modus == 0);

        fenster.onSaveListe(true);
        const QString pdf = TestUmgebung::datenVerzeichnis() + "/Skat20-11-2026_S1_T12.pdf";
        // Each game asked and announced the dealer before.
        QCOMPARE(fenster.antworten.titel.mid(4) + fenster.antworten.texte.mid(4),
                 modus == 2 ? QStringList() : QStringList({"INFO", "Datei\n" + pdf}));
        QFile blatt(pdf);
        const QByteArray inhalt = blatt.open(QIODevice::ReadOnly) ? blatt.readAll() : "";
        // One A4 page, portrait.
        QCOMPARE(inhalt.startsWith("%PDF-") && inhalt.count("/MediaBox [0 0 595") == 1, modus != 2);
        QCOMPARE(QFile::exists(QString(pdf).replace(".pdf", ".xml")), modus != 2);
        if (modus == 0) {
            QVERIFY(texte.contains("Kartengeld 1.0 Euro"));
            kind<QLineEdit>(&fenster, "leKartengeld")->setText(QStringLiteral("1,5"));
            QVERIFY(blattTexte(fenster).contains("Kartengeld 1.5 Euro"));
            QCOMPARE(einstellungen().value("Kartengeld").toString(), QStringLiteral("1.5"));
        }
    }
}

// Saving writes PDF and XML without a word; the backup runs on a timer. The picker lists protocol
// files, newest first: cancelling or a damaged file leaves the list, the backup restores it.
void TstDateiFenster::speichernUndLaden()
{
    QVERIFY(mitSpielen(48, 0, {"UPDATE Settings SET Serie = 2"}));
    const QList<int> abend = inhalt();
    Probe fenster;
    fenster.onSaveListe(false);
    const QString name = TestUmgebung::datenVerzeichnis() + "/Skat20-11-2026_S2_T5";
    QVERIFY(QFile::exists(name + ".pdf") && QFile::exists(name + ".xml"));
    const auto *timer = kind<QTimer>(&fenster, "sicherheitskopieTimer");
    QVERIFY(timer->isActive() && timer->interval() == 300000);
    fenster.onSicherheitsKopieSpeichern();
    schreiben("fremd.xml", "<?xml version=\"1.0\"?>\n<Einkauf><Brot/></Einkauf>\n");
    schreiben("kaputt.xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Kartulo "
                            "datum=\"01-03-2026\" tischnr=\"1\">\n<spieler1 name=\"A\"/>\n"
                            "<spiele>\n<spiel nr=\"1\" spiel=\"12\"");
    QVERIFY(sql({"DELETE FROM SpielListe WHERE Zeile > 40"}));
    const QList<int> gekuerzt = inhalt();

    for (const char *datei : {"", "kaputt.xml", "xmlsicherheitskopie.xml"}) {
        kind<QAction>(&fenster, "actionLaden")->trigger();
        auto *dock = fenster.findChild<DockFileView *>();
        QVERIFY(dock);
        auto *ansicht = dock->findChild<QTreeView *>();
        const QStringList dateien = zellen(ansicht->model());
        QCOMPARE(dateien.value(0), QStringLiteral("kaputt.xml"));
        QCOMPARE(QSet<QString>(dateien.begin() + 1, dateien.end()),
                 QSet<QString>({"xmlsicherheitskopie.xml", "Skat20-11-2026_S2_T5.xml"}));
        ansicht->setCurrentIndex(ansicht->model()->index(dateien.indexOf(datei), 0));
        klick(dock, *datei ? "pbOk" : "pbAbbruch");
        QTRY_VERIFY(!fenster.findChild<DockFileView *>());
        QCOMPARE(inhalt(), qstrcmp(datei, "xmlsicherheitskopie.xml") == 0 ? abend : gekuerzt);
    }
    // A new protocol leaves the list in the archive, where the picker finds it.
    kind<QAction>(&fenster, "actionNeu")->trigger();
    kind<QCheckBox>(&fenster, "chkSpielerBeibehalten")->setChecked(true);
    klick(&fenster, "pbOk");
    QCOMPARE(zeilen("SpielListe"), 0);
    kind<QAction>(&fenster, "actionLaden")->trigger();
    auto *ansicht = fenster.findChild<DockFileView *>()->findChild<QTreeView *>();
    const QModelIndex archiviert = ansicht->model()->index(ansicht->model()->rowCount() - 1, 0);
    QVERIFY2(archiviert.data().toString().startsWith("archiv/Skat2026-11-20_S2_T5_"),
             qPrintable(archiviert.data().toString()));
    ansicht->doubleClicked(archiviert);
    QTRY_VERIFY(!fenster.findChild<DockFileView *>());
    QCOMPARE(inhalt(), abend);
    // Saving and cancelling said nothing; the full list loaded ends the round.
    QCOMPARE(fenster.antworten.titel.mid(0, 2), QStringList({"WARNUNG", "INFORMATION"}));
    QVERIFY2(fenster.antworten.texte.first().contains(
                 "/kaputt.xml\nist kein lesbares Protokoll.\nZeile 5:"),
             qPrintable(fenster.antworten.texte.first()));
    QCOMPARE(fenster.antworten.texte.last(), QStringLiteral("Rundenende erreicht!"));
    QCOMPARE(text(&fenster, "lblListe"), QStringLiteral("XML-Liste Tisch 5"));
    QCOMPARE(modell(&fenster, "tblViewUebersicht")->rowCount(), 48);

    // A folder where a file should go: each save names its file and the reason.
    fenster.antworten.texte.clear();
    for (const char *endung : {".pdf", ".xml"})
        QVERIFY(QFile::remove(name + endung) && QDir().mkdir(name + endung));
    fenster.onSaveListe(false);
    QCOMPARE(fenster.antworten.texte.size(), 2);
    const QRegularExpression grund("^Die Datei\n.*/Skat20-11-2026_S2_T5\\.(pdf|xml)\n"
                                   "kann nicht geschrieben werden:\n.+");
    for (const QString &meldung : fenster.antworten.texte)
        QVERIFY2(meldung.contains(grund), qPrintable(meldung));
}

KARTULO_TEST_MAIN(TstDateiFenster)
#include "tst_dateifenster.moc"
