// The text format of the club network, read and written, a game row's
// items, participant ids, and the pairing of a first and a second list.

#include "core/link/nachricht.h"
#include "core/link/paarung.h"
#include "core/link/spielzeile.h"
#include "velmora/client.h"

#include <QtTest>

class TstNachricht : public QObject
{
    Q_OBJECT

private slots:
    void lesen_data();
    void lesen();
    void schreiben();
    void spielZeile_data();
    void spielZeile();
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

void TstNachricht::spielZeile_data()
{
    QTest::addColumn<QString>("items");
    QTest::addColumn<QString>("eigenes"); // the second list's own game 4; "": the same
    QTest::addColumn<QStringList>("abweichungen");
    QTest::newRow("Kreuz ohne 2 Hand verloren") << "12@0@2@1@0@0@0@0@0@0@96@0@-96@0@0@0@18"
                                                << "" << QStringList();
    // Schneider is told with the Hand text and value, Spieler4 without a full stop.
    QTest::newRow("Grand ouvert") << "24@4@0@1@1@1@1@1@1@264@0@0@0@0@264@0@48"
                                  << "24@4@0@1@0@1@1@1@1@264@0@264@0@0@0@0@48"
                                  << QStringList{"Eintrag bei Spiel 4 Hand 1 <> Hand 1.",
                                                 "Eintrag bei Spiel 4 Spieler1 264 <> Spieler1 0.",
                                                 "Eintrag bei Spiel 4 Spieler4 0 <> Spieler4 264"};
    QTest::newRow("eingepasst") << "0@0@0@0@0@0@0@0@0@0@0@0@0@0@0@1@0"
                                << "" << QStringList();
}

// Item i is column i + 1, after Zeile: read from a copy (type 14) and from a
// compared row (type 13), not from 16 items, sent as the same items again,
// compared with the own row.
void TstNachricht::spielZeile()
{
    QFETCH(QString, items);
    QFETCH(QString, eigenes);
    const auto zeile = [](const QString &spalten) {
        SpielEintrag e;
        for (int i = 0; i < SpielEintrag::AnzahlSpalten; ++i)
            e.setze(SpielEintrag::Spalte(i), spalten.section('@', i, i).toInt());
        return e;
    };
    const QStringList inhalt = items.split('@');
    const QStringList verglichen = QStringList{"5", "1", "4"} + inhalt;
    const std::optional<SpielEintrag> gelesen = SpielZeile::spielAus(inhalt, 0);
    QVERIFY(gelesen && *gelesen == zeile("0@" + items));
    QVERIFY(!SpielZeile::spielAus(inhalt.mid(1), 0));
    QVERIFY(SpielZeile::spielAus(verglichen, SpielZeile::ersteSpielItem) == gelesen);
    QCOMPARE(Kartulo::mapFromSpiel(SpielZeile::tupel(*gelesen)), inhalt);
    QTEST(SpielZeile::abweichungen(zeile("4@" + (eigenes.isEmpty() ? items : eigenes)), verglichen),
          "abweichungen");
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
