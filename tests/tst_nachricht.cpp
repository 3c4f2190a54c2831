// The text format of the club network, read and written, participant ids,
// and the pairing of a first and a second list.

#include "core/link/nachricht.h"
#include "core/link/paarung.h"

#include <QtTest>

class TstNachricht : public QObject
{
    Q_OBJECT

private slots:
    void lesen_data();
    void lesen();
    void schreiben();
    void kennung_data();
    void kennung();
    void paarung();
};

void TstNachricht::lesen_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("lesbar");
    QTest::addColumn<int>("typ");
    QTest::addColumn<QString>("adresse");
    QTest::addColumn<QString>("gruppe");
    QTest::addColumn<QStringList>("inhalt");
    QTest::newRow("ein Eintrag") << "12:10.0.0.5:A$7" << true << 12 << "10.0.0.5"
                                 << "A" << QStringList{"7"};
    QTest::newRow("leerer Inhalt") << "12:10.0.0.5:A$" << true << 12 << "10.0.0.5"
                                   << "A" << QStringList{""};
    QTest::newRow("leere Gruppe, leere Eintraege") << "7:1.2.3.4:$a@@b@" << true << 7 << "1.2.3.4"
                                                   << "" << QStringList{"a", "", "b", ""};
    QTest::newRow("Blatt bis zum ersten @")
        << "17:1.2.3.4:G$Skat.pdf@eJx@@z" << true << 17 << "1.2.3.4"
        << "G" << QStringList{"Skat.pdf", "eJx@@z"};
    QTest::newRow("Blatt ohne Daten") << "17:1.2.3.4:G$Skat.pdf" << true << 17 << "1.2.3.4"
                                      << "G" << QStringList{"Skat.pdf"};
    QTest::newRow("@ trennt sonst") << "16:1.2.3.4:G$a@b" << true << 16 << "1.2.3.4"
                                    << "G" << QStringList{"a", "b"};
    QTest::newRow("Typ keine Zahl") << "x:1.2.3.4:G$a" << true << 0 << "1.2.3.4"
                                    << "G" << QStringList{"a"};
    QTest::newRow("zwei $") << "12:1.2.3.4:A$7$8" << false << 0 << ""
                            << "" << QStringList();
    QTest::newRow("kein $") << "12:1.2.3.4:A" << false << 0 << ""
                            << "" << QStringList();
    QTest::newRow("zwei Kopffelder") << "12:1.2.3.4$7" << false << 0 << ""
                                     << "" << QStringList();
    QTest::newRow("vier Kopffelder") << "12:1.2.3.4:A:B$7" << false << 0 << ""
                                     << "" << QStringList();
    QTest::newRow("leer") << "" << false << 0 << ""
                          << "" << QStringList();
}

void TstNachricht::lesen()
{
    QFETCH(QString, text);
    QFETCH(bool, lesbar);
    const std::optional<Nachricht> n = Nachricht::lesen(text);
    QCOMPARE(n.has_value(), lesbar);
    if (!n)
        return;
    QTEST(n->typ, "typ");
    QTEST(n->adresse, "adresse");
    QTEST(n->gruppe, "gruppe");
    QTEST(n->inhalt, "inhalt");
}

// What is written reads back the same; items follow "$" and each other with "@".
void TstNachricht::schreiben()
{
    Nachricht n;
    n.typ = Nachricht::SpielerAnfordern;
    n.adresse = QStringLiteral("192.168.1.20");
    n.gruppe = QStringLiteral("Gruppe 2");
    n.inhalt = QStringList{"5", "2"};
    QCOMPARE(n.text(), QStringLiteral("5:192.168.1.20:Gruppe 2$5@2"));
    const std::optional<Nachricht> zurueck = Nachricht::lesen(n.text());
    QVERIFY(zurueck);
    QCOMPARE(zurueck->text(), n.text());
    n.inhalt.clear();
    QCOMPARE(n.text(), QStringLiteral("5:192.168.1.20:Gruppe 2$"));
}

void TstNachricht::kennung_data()
{
    QTest::addColumn<QString>("kennung");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("adresse");
    QTest::newRow("Tisch") << "Kartulo@192.168.1.20:29871"
                           << "Kartulo"
                           << "192.168.1.20";
    QTest::newRow("Adresse nicht vorn") << "Tabulor@laptop:10.0.0.7:4000"
                                        << "Tabulor"
                                        << "10.0.0.7";
    QTest::newRow("keine Adresse") << "Tabulor@laptop:4000"
                                   << "Tabulor"
                                   << "";
    QTest::newRow("keine IPv4") << "Kartulo@300.1.2.3:1"
                                << "Kartulo"
                                << "";
    QTest::newRow("ohne @") << "Kartulo"
                            << ""
                            << "";
    QTest::newRow("zwei @") << "Kartulo@a@10.0.0.1:1"
                            << ""
                            << "";
}

void TstNachricht::kennung()
{
    QFETCH(QString, kennung);
    const Kennung k = Kennung::aus(kennung);
    QTEST(k.name, "name");
    QTEST(k.adresse, "adresse");
}

// Both sides of a pairing through their states: table asked for, a second
// list waiting for its answer, second list, first list, whether results may
// go out, and the peers' addresses.
void TstNachricht::paarung()
{
    Paarung p;
    QSignalSpy geaendert(&p, &Paarung::geaendert);
    const auto zustand = [&p] {
        return QStringLiteral("%1 %2%3%4%5 %6|%7")
            .arg(p.gepaarterTisch())
            .arg(p.angefragt())
            .arg(p.istZweitliste())
            .arg(p.istErsteListe())
            .arg(p.ergebnisseErlaubt())
            .arg(p.ersteListeAdresse(), p.zweitlisteAdresse());
    };
    QCOMPARE(zustand(), QStringLiteral("0 0001 |"));
    p.anfragen(7);
    QCOMPARE(zustand(), QStringLiteral("7 1100 |"));
    p.ersteListeGefunden("Kartulo@10.0.0.5:4000");
    QCOMPARE(zustand(), QStringLiteral("7 0100 10.0.0.5|"));
    p.trennen();
    QCOMPARE(zustand(), QStringLiteral("7 1100 |"));
    p.alsKopieBehalten();
    QCOMPARE(zustand(), QStringLiteral("0 0001 |"));
    QCOMPARE(p.letzterTisch(), 7);
    p.zweitlisteAngenommen("Kartulo@10.0.0.6:4000");
    QCOMPARE(zustand(), QStringLiteral("0 0010 |10.0.0.6"));
    p.anfrageVergessen();
    p.trennen();
    QCOMPARE(zustand(), QStringLiteral("0 0001 |"));
    // A bare address, as a caller of the window's slot may give it, names itself.
    p.anfragen(8);
    p.ersteListeGefunden("10.0.0.7");
    QCOMPARE(zustand(), QStringLiteral("8 0100 10.0.0.7|"));
    p.aufheben();
    QCOMPARE(zustand(), QStringLiteral("0 0001 |"));
    QCOMPARE(p.letzterTisch(), 7);
    // A first list takes a second list once its list has started, and only one.
    using A = Paarung::Antwort;
    QCOMPARE(p.anfrageBeantworten("Kartulo@10.0.0.8:4000", false), A::NichtGestartet);
    QCOMPARE(p.anfrageBeantworten("Kartulo@10.0.0.8:4000", true), A::Angenommen);
    QCOMPARE(p.anfrageBeantworten("Kartulo@10.0.0.9:4000", true), A::SchonGepaart);
    QCOMPARE(zustand(), QStringLiteral("0 0010 |10.0.0.8"));
    QCOMPARE(geaendert.count(), 12);
}

QTEST_GUILESS_MAIN(TstNachricht)
#include "tst_nachricht.moc"
