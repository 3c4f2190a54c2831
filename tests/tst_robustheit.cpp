// Bad input at the window's fields, docks and tables: empty, a megabyte, half a character,
// control characters, text like a statement. Files and network texts: tst_dateien and
// tst_nachricht; docs/robustness.md lists the places with their tests.

#include "app/files/dockfileview.h"
#include "app/players/namensdelegate.h"
#include "app/widgets/eingabedock.h"
#include "core/files/xmlprotokoll.h"
#include "helpers/faelle.h"
#include "helpers/fensterhilfe.h"

#include <QtWidgets>

using namespace Fenster;

namespace {

// Opens the named input dock as a scorer does; no name: the window itself.
QWidget *dockOeffnen(MainWindow &fenster, const QString &dock)
{
    if (dock == "DockZweitliste")
        fenster.startZweitProtokoll();
    else if (!dock.isEmpty())
        kind<QAction>(&fenster, dock == "DockZeitLimit" ? "actionTurnier" : "actionBierlachs")
            ->trigger();
    return dock.isEmpty() ? &fenster : kind<QWidget>(&fenster, qPrintable(dock));
}

} // namespace

class TstRobustheit : public QObject
{
    Q_OBJECT

private slots:
    void init() { TestUmgebung::allesLoeschen(); }
    void eingefuegt_data();
    void eingefuegt();
    void neueNamen_data();
    void neueNamen();
    void teilnehmerTabelle_data();
    void teilnehmerTabelle();
    void spielerDatei_data();
    void spielerDatei();
    void langeListe();
};

void TstRobustheit::eingefuegt_data()
{
    Faelle::laden("eingefuegt.tsv");
}

// What a field keeps when its text is deleted or pasted over: names and the club name 40
// characters, other line edits 32 767, number fields and docks digits only, the bid field no
// key at all. The club name is stored as its field shows it. A dock confirmed says what it took.
void TstRobustheit::eingefuegt()
{
    QFETCH(QString, feld);
    QFETCH(QString, eingabe);
    QFETCH(bool, ok);
    Probe fenster(4);
    QWidget *ort = dockOeffnen(fenster, feld.section(QLatin1Char('/'), 0, -2));
    auto *widget = kind<QWidget>(ort, qPrintable(feld.section(QLatin1Char('/'), -1)));
    QVERIFY(widget);
    auto *zeile = qobject_cast<QLineEdit *>(widget) ? qobject_cast<QLineEdit *>(widget)
                                                    : widget->findChild<QLineEdit *>();
    const QString vorher = zeile->text();
    zeile->selectAll();
    if (eingabe.isNull()) {
        QTest::keyClick(zeile, Qt::Key_Delete);
    } else if (ok) {
        QTest::keyClicks(zeile, eingabe);
    } else {
        QApplication::clipboard()->setText(eingabe);
        QTest::keyClick(zeile, Qt::Key_V, Qt::ControlModifier);
    }
    QFETCH(QString, danach);
    if (ok) {
        QVERIFY(qobject_cast<EingabeDock *>(ort));
        klick(ort, "pbDockOk");
        if (ort->objectName() == "DockZeitLimit") {
            kind<QPushButton>(&fenster, "pbStartSpiel")->setEnabled(true);
            klick(&fenster, "pbStartSpiel");
        }
        const QStringList gezeigt =
            fenster.antworten.texte + texte(&fenster, {"leMeldungRot", "lblModus"});
        QVERIFY2(gezeigt.contains(danach), qPrintable(gezeigt.join(" | ")));
        return;
    }
    QCOMPARE(zeile->text(), danach.isNull() ? vorher : danach);
    if (feld == "leListenName")
        QCOMPARE(Fenster::einstellungen().value("vereinsname").toString(), zeile->text());
}

void TstRobustheit::neueNamen_data()
{
    Faelle::laden("neuenamen.tsv");
}

// The "Neu" page: a name is cut by its field and cleaned, then registered and
// seated; a table number that is no number is table 0.
void TstRobustheit::neueNamen()
{
    QFETCH(QString, name);
    QFETCH(QString, tisch);
    Probe fenster(4);
    neuSeite(&fenster, {name, "Bernd", "Clara"}, "pbOk", tisch);
    QCOMPARE(fenster.antworten.texte, QStringList{"Neues Protokoll?"});
    QTEST(lesen("SELECT Name FROM Teilnehmer").value(0), "teilnehmer");
    QTEST(lesen("SELECT Name FROM Spieler WHERE MgldNr = 1").value(0), "teilnehmer");
    QTEST(kind<QSpinBox>(&fenster, "spbTischNr")->value(), "tischNr");
    QCOMPARE(TestProtokoll::zeilen("SpielListe"), 0);
}

void TstRobustheit::teilnehmerTabelle_data()
{
    Faelle::laden("teilnehmertabelle.tsv");
}

// A name typed into the participants table is cleaned as on the "Neu" page;
// a separator of the network texts is refused with a warning.
void TstRobustheit::teilnehmerTabelle()
{
    QFETCH(QString, eingabe);
    QFETCH(QString, name);
    MeldungsBeantworter antworten;
    QStandardItemModel modell(1, 2);
    modell.setData(modell.index(0, 1), "Anna");
    QLineEdit feld(eingabe);
    NamensDelegate().setModelData(&feld, &modell, modell.index(0, 1));
    QCOMPARE(modell.index(0, 1).data().toString(), name.isNull() ? "Anna" : name);
    QCOMPARE(antworten.texte,
             name.isNull() ? QStringList{"Das Zeichen \":\" ist in Spielernamen nicht erlaubt."}
                           : QStringList());
}

void TstRobustheit::spielerDatei_data()
{
    Faelle::laden("spielerregister.tsv");
}

// "KartuloSpieler.txt" replaces the registry, an empty file too; how names
// are cleaned is in tst_dateien.
void TstRobustheit::spielerDatei()
{
    QFETCH(QByteArray, inhalt);
    QVERIFY(TestProtokoll::anlegen(4, 48));
    QFile datei(TestUmgebung::datenVerzeichnis() + "/../KartuloSpieler.txt");
    QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size());
    datei.close();
    MainWindow fenster;
    klick(&fenster, "pbSpielerAusTextdatei");
    QTEST(lesen("SELECT Name FROM Spieler"), "namen");
}

// A file of 1 MB may hold 130 000 games. The overview takes them row by row; a cell filled into
// an empty row relaid the whole table out, for minutes at every start.
void TstRobustheit::langeListe()
{
    QVERIFY(TestProtokoll::anlegen(4, 48));
    XmlDaten daten;
    daten.spieler = {{1, "A", "Ja", "Ja"}, {2, "B", "Ja", "Ja"}, {3, "C", "Ja", "Ja"}};
    daten.spiele = TestProtokoll::abend(300, 3);
    QVERIFY(XmlProtokoll::dateiSchreiben(TestUmgebung::datenVerzeichnis() + "/lang.xml",
                                         XmlProtokoll::schreiben(daten)));
    Probe fenster;
    QAbstractItemModel *uebersicht = modell(&fenster, "tblViewUebersicht");
    QSignalSpy neuAusgelegt(uebersicht, &QAbstractItemModel::layoutChanged);
    kind<QAction>(&fenster, "actionLaden")->trigger();
    klick(fenster.findChild<DockFileView *>(), "pbOk");
    QCOMPARE(uebersicht->rowCount(), 300);
    QCOMPARE(uebersicht->index(299, 0).data().toString(), QStringLiteral("300"));
    QCOMPARE(neuAusgelegt.count(), 0);
}

KARTULO_TEST_MAIN(TstRobustheit)
#include "tst_robustheit.moc"
