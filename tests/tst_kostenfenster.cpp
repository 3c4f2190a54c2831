// The cost settings on the settings tab, the sheet with its footer in the
// window, the manager's cost push, and saving the PDF.

#include "app/mainwindow.h"
#include "helpers/fensterhilfe.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"

#include <QAction>
#include <QFile>
#include <QGraphicsScene>
#include <QGraphicsSimpleTextItem>
#include <QGraphicsTextItem>
#include <QGraphicsView>
#include <QLineEdit>
#include <QSettings>
#include <QSpinBox>

using namespace TestProtokoll;
using namespace Fenster;

namespace {

QSettings store()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Ormindo"),
                     QStringLiteral("Kartulo"));
}

QStringList blattTexte(MainWindow &fenster)
{
    QStringList texte;
    const QGraphicsScene *szene = fenster.findChild<QGraphicsView *>("gvSpieleListe")->scene();
    if (!szene)
        return texte;
    for (QGraphicsItem *item : szene->items()) {
        if (auto *text = dynamic_cast<QGraphicsTextItem *>(item))
            texte << text->toPlainText();
        else if (auto *einfach = dynamic_cast<QGraphicsSimpleTextItem *>(item))
            texte << einfach->text();
    }
    return texte;
}

void tippen(MainWindow &fenster, const char *feld, const QString &text)
{
    auto *edit = fenster.findChild<QLineEdit *>(feld);
    edit->clear();
    QTest::keyClicks(edit, text);
}

} // namespace

class TstKostenfenster : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void startwerte();
    void dezimalkomma_data();
    void dezimalkomma();
    void validatoren_data();
    void validatoren();
    void beschreibungen();
    void fussNurImTurnier_data();
    void fussNurImTurnier();
    void managerKosten_data();
    void managerKosten();
    void speichern_data();
    void speichern();
};

void TstKostenfenster::init()
{
    TestUmgebung::allesLoeschen();
    QDir(TestUmgebung::datenVerzeichnis()).removeRecursively();
}

void TstKostenfenster::startwerte()
{
    MainWindow fenster;
    QCOMPARE(fenster.findChild<QLineEdit *>("lePlKosten2")->text(), QStringLiteral("1.5"));
    QCOMPARE(fenster.findChild<QLineEdit *>("leKartengeld")->text(), QStringLiteral("1.0"));
    QCOMPARE(fenster.findChild<QLineEdit *>("lePreisSkat")->text(), QStringLiteral("10.0"));
    QCOMPARE(fenster.findChild<QLineEdit *>("leVerlSpieleDerGegenspieler4")->text(),
             QStringLiteral("30"));
    // Filling the fields stores nothing: the card money stays under its start-up key.
    QVERIFY(!store().contains("Kartengeld"));
    QVERIFY(store().contains("kartengeld"));
}

void TstKostenfenster::dezimalkomma_data()
{
    QTest::addColumn<QByteArray>("feld");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("eingabe");
    QTest::addColumn<double>("wert");
    QTest::newRow("Kartengeld") << QByteArray("leKartengeld") << "Kartengeld"
                                << "1,5" << 1.5;
    QTest::newRow("Platz 3") << QByteArray("lePlKosten3") << "platz3"
                             << "2,5" << 2.5;
    QTest::newRow("ab 6") << QByteArray("leVerlSpieleAb6") << "VerlSpielAb6"
                          << "3.5" << 3.5;
    QTest::newRow("Preisskat") << QByteArray("lePreisSkat") << "Preisskat"
                               << "12" << 12.0;
}

void TstKostenfenster::dezimalkomma()
{
    QFETCH(QByteArray, feld);
    QFETCH(QString, key);
    QFETCH(QString, eingabe);
    QFETCH(double, wert);
    MainWindow fenster;
    tippen(fenster, feld.constData(), eingabe);
    QCOMPARE(fenster.findChild<QLineEdit *>(feld.constData())->text(), eingabe);
    QCOMPARE(store().value(key).toDouble(), wert);
}

void TstKostenfenster::validatoren_data()
{
    QTest::addColumn<QByteArray>("feld");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("gueltig");
    QTest::newRow("Platz 0") << QByteArray("lePlKosten1") << "0" << true;
    QTest::newRow("Platz 100,0") << QByteArray("lePlKosten4") << "100,0" << true;
    QTest::newRow("Platz 100,5") << QByteArray("lePlKosten4") << "100,5" << false;
    QTest::newRow("Kartengeld 0,4") << QByteArray("leKartengeld") << "0,4" << false;
    QTest::newRow("Kartengeld 0,5") << QByteArray("leKartengeld") << "0,5" << true;
    QTest::newRow("Faktor 0") << QByteArray("leGewSpieleAbzglVerlSpiele") << "0" << false;
    QTest::newRow("Faktor 200") << QByteArray("leVerlSpieleDerGegenspieler3") << "200" << true;
    QTest::newRow("Faktor 201") << QByteArray("leVerlSpieleDerGegenspieler3") << "201" << false;
}

void TstKostenfenster::validatoren()
{
    QFETCH(QByteArray, feld);
    QFETCH(QString, text);
    MainWindow fenster;
    auto *edit = fenster.findChild<QLineEdit *>(feld.constData());
    edit->setText(text);
    QTEST(edit->hasAcceptableInput(), "gueltig");
}

void TstKostenfenster::beschreibungen()
{
    QVERIFY(anlegen(4, 48));
    MainWindow fenster;
    QVERIFY(blattTexte(fenster).contains("Platz: 1=0.0, 2=1.5, 3=2.5, 4=3.0 Euro"));
    QVERIFY(blattTexte(fenster).contains("Kartengeld 1.0 Euro"));
    tippen(fenster, "leKartengeld", "2,5");
    QVERIFY(blattTexte(fenster).contains("Kartengeld 2.5 Euro"));
    tippen(fenster, "lePlKosten1", "1");
    // After an edit the place line goes without its "Euro".
    QVERIFY(blattTexte(fenster).contains("Platz: 1=1.0, 2=1.5, 3=2.5, 4=3.0"));
    tippen(fenster, "leVerlSpieleDerGegenspieler4", "25");
    QVERIFY(blattTexte(fenster).contains("Punkte verl. Spiele der Gegenspieler * 25"));
}

void TstKostenfenster::fussNurImTurnier_data()
{
    QTest::addColumn<int>("modus");
    QTest::addColumn<bool>("fuss");
    QTest::newRow("Turnier") << 0 << true;
    QTest::newRow("Ergebnis") << 1 << false;
}

void TstKostenfenster::fussNurImTurnier()
{
    QFETCH(int, modus);
    QFETCH(bool, fuss);
    QVERIFY(anlegen(3, 36, modus));
    MainWindow fenster;
    MeldungsBeantworter antworten;
    eingeben(&fenster, Spiel{"tbKreuz", 0, true, ""});
    eingeben(&fenster, Spiel{"tbKaro", 1, false, ""});
    const QStringList texte = blattTexte(fenster);
    // Anna: 24 + 50 + 40 = 114 points. Bernd, third, pays card money 1.00, one
    // lost game 1.00, place 2.50 and the prize game 10.00.
    QCOMPARE(texte.contains("114"), fuss);
    QCOMPARE(texte.contains("14.50"), fuss);
}

void TstKostenfenster::managerKosten_data()
{
    QTest::addColumn<QStringList>("werte");
    QTest::addColumn<bool>("uebernommen");
    const QString felder = "0.5|1.0|2.0|3.5|1.5|1.0|2.5|15.0|60|45|35|Skatclub Nord";
    QTest::newRow("passt") << QStringList{"5", "1", felder} << true;
    QTest::newRow("anderer Tisch") << QStringList{"6", "1", felder} << false;
    QTest::newRow("andere Serie") << QStringList{"5", "2", felder} << false;
    QTest::newRow("zu kurz") << QStringList{"5", "1"} << false;
}

void TstKostenfenster::managerKosten()
{
    QFETCH(QStringList, werte);
    QFETCH(bool, uebernommen);
    QVERIFY(anlegen(4, 48, 0, 5));
    MainWindow fenster;
    fenster.kostenVomManager(werte);
    QSettings s = store();
    QCOMPARE(s.value("Preisskat").toDouble() == 15.0, uebernommen);
    QCOMPARE(s.value("VerlSpieleDerGegenSpieler4").toInt() == 35, uebernommen);
    QCOMPARE(s.value("platz4").toDouble() == 3.5, uebernommen);
    QCOMPARE(fenster.findChild<QLineEdit *>("leListenName")->text() == "Skatclub Nord",
             uebernommen);
    QCOMPARE(s.value("vereinsname").toString() == "Skatclub Nord", uebernommen);
}

void TstKostenfenster::speichern_data()
{
    QTest::addColumn<int>("modus");
    QTest::addColumn<bool>("fragen");
    QTest::newRow("Turnier, mit Hinweis") << 0 << true;
    QTest::newRow("Turnier, still") << 0 << false;
    QTest::newRow("Bierlachs") << 2 << true;
}

void TstKostenfenster::speichern()
{
    QFETCH(int, modus);
    QFETCH(bool, fragen);
    QVERIFY(anlegen(4, 48, modus, 12));
    QVERIFY(sql({"UPDATE Settings SET Serie = 10, Datum = '2026-03-01'"}));
    MainWindow fenster;
    QDir(TestUmgebung::datenVerzeichnis()).removeRecursively();
    MeldungsBeantworter antworten;
    fenster.onSaveListe(fragen);
    const QString pdf = TestUmgebung::datenVerzeichnis() + "/Skat01-03-2026_S10_T12.pdf";
    if (modus == 2) {
        QVERIFY(antworten.titel.isEmpty());
        QVERIFY(!QFile::exists(pdf));
        return;
    }
    QCOMPARE(antworten.titel, fragen ? QStringList{"INFO"} : QStringList{});
    if (fragen)
        QCOMPARE(antworten.texte.first(), "Datei\n" + pdf);
    QFile datei(pdf);
    QVERIFY(datei.open(QIODevice::ReadOnly));
    QVERIFY(datei.read(5) == "%PDF-");
}

KARTULO_TEST_MAIN(TstKostenfenster)
#include "tst_kostenfenster.moc"
