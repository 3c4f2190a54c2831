// The ranking in the window: results of this table and of others, the reset
// at a new list, the seating proposal, the files, and the projector view.

#include "helpers/fensterhilfe.h"

#include <QtWidgets>

using namespace Fenster;

class TstRangFenster : public QObject
{
    Q_OBJECT

private slots:
    void init() { TestUmgebung::allesLoeschen(); }
    void ergebnisse();
    void leinwand();
};

// Another table's results and this table's own meet in one list, coloured by table. Both files
// land in the data directory under the date's name after their question; one that cannot be
// written is named with its reason. A new list starts this table at zero.
void TstRangFenster::ergebnisse()
{
    Probe fenster(3, 36, 0, 2);
    fenster.appendMessage("Kartulo@10.0.0.12:4000",
                          "7:10.0.0.12:$Otto|1|1|120|3|0|4.5|-|1@Eva|1|1|-30|0|2|8|-|2");
    eingeben(&fenster, Spiel{"tbKreuz", 1, true, ""});
    QAbstractItemModel *rangliste = modell(&fenster, "tvRangliste");
    QCOMPARE(zellen(rangliste, 0), QStringList({"Otto", "Eva", "Anna", "Bernd", "Clara"}));
    QCOMPARE(zellen(rangliste, 1), QStringList({"1", "1", "2", "2", "2"}));
    QCOMPARE(zellen(rangliste, 7), QStringList({"-", "-", "-", "-", "-"}));
    // A name the stretched column cuts shows whole as the cell's tip.
    QCOMPARE(rangliste->index(1, 0).data(Qt::ToolTipRole).toString(), QStringLiteral("Eva"));
    const QColor ungerade = rangliste->index(0, 0).data(Qt::BackgroundRole).value<QBrush>().color();
    const QColor gerade = rangliste->index(2, 6).data(Qt::BackgroundRole).value<QBrush>().color();
    QCOMPARE(ungerade, QColor(Qt::cyan));
    QCOMPARE(gerade, QColor(Qt::lightGray));
    QVERIFY(!rangliste->index(0, 7).data(Qt::BackgroundRole).isValid());

    const QString name = TestUmgebung::datenVerzeichnis() + "/20-11-26Serie20-11-26_";
    fenster.antworten.texte.clear();
    fenster.antworten.antworte(QMessageBox::No);
    fenster.onSaveRangliste();
    QVERIFY(!QFile::exists(name + "Text.txt"));
    QFile tabelle(name + "Excel.txt");
    QVERIFY(tabelle.open(QIODevice::ReadOnly));
    QCOMPARE(tabelle.readAll().split('\n').mid(0, 2),
             QList<QByteArray>({"Name,Tisch,Serie,Punkte,Gewonnen,Verloren,Kosten,Tisch-Platz",
                                "Otto,1,1,120,3,0,4.5,-"}));
    QCOMPARE(fenster.antworten.texte,
             QStringList({"Als Textdatei speichern?", "Als Excel-Import-Datei speichern?",
                          "Datei " + name + "Excel.txt abgespeichert!"}));
    fenster.antworten.titel.clear();
    fenster.antworten.texte.clear();
    QVERIFY(QDir().mkdir(name + "Text.txt"));
    fenster.antworten.antworte(QMessageBox::Yes);
    fenster.antworten.antworte(QMessageBox::No);
    fenster.onSaveRangliste();
    QCOMPARE(fenster.antworten.titel.value(1), QStringLiteral("WARNUNG"));
    QVERIFY2(fenster.antworten.texte.value(1).startsWith("Die Datei\n" + name + "Text.txt\n"),
             qPrintable(fenster.antworten.texte.value(1)));

    fenster.onTischreihenfolgeAuswerten();
    QCOMPARE(zellen(rangliste, 7).mid(0, 2), QStringList({"1 - 1", "2 - 2"}));

    fenster.onSpielStandsAnzeigeAufNullSetzen();
    QCOMPARE(zellen(rangliste, 0), QStringList({"Anna", "Bernd", "Clara"}));
    QCOMPARE(zellen(rangliste, 3), QStringList({"0", "0", "0"}));
}

// The projector view fills its screen, follows the ranking, best on top, in large light type
// on dark; Esc or, on a tablet without keys, its own button closes it.
void TstRangFenster::leinwand()
{
    Probe fenster(3, 36, 0, 2);
    fenster.appendMessage("Kartulo@10.0.0.12:4000", "7:10.0.0.12:$Otto|1|1|20|3|0|4.5|-|1");
    for (const bool taste : {true, false}) {
        klick(&fenster, "pbLeinwand");
        QPointer<QWidget> leinwand;
        for (QWidget *w : QApplication::topLevelWidgets())
            if (w->objectName() == "leinwand" && w->isVisible())
                leinwand = w;
        QVERIFY(leinwand);
        QVERIFY(leinwand->windowState() & Qt::WindowFullScreen);
        auto *tabelle = kind<QTableView>(leinwand, "tblLeinwand");
        fenster.appendMessage("Kartulo@10.0.0.13:4000", "7:10.0.0.13:$Eva|3|1|50|2|0|1|-|1");
        QCOMPARE(zellen(tabelle->model()).mid(0, 2), QStringList({"Eva", "Otto"}));
        QVERIFY(tabelle->font().pixelSize() >= 28);
        // Numbered by place, in the projector's colours rather than the page's.
        QCOMPARE(tabelle->model()->headerData(1, Qt::Vertical).toInt(), 2);
        QVERIFY(!tabelle->model()->index(0, 0).data(Qt::BackgroundRole).isValid());
        taste ? QTest::keyClick(leinwand, Qt::Key_Escape) : klick(leinwand, "pbLeinwandSchliessen");
        QTRY_VERIFY(leinwand.isNull());
    }
}

KARTULO_TEST_MAIN(TstRangFenster)
#include "tst_rangfenster.moc"
