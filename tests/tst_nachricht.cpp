// The text format of the club network, from the link's bytes and back, a game row's
// items, participant ids, and the pairing of a first and a second list.

#include "core/link/nachricht.h"
#include "core/link/paarung.h"
#include "core/link/spielzeile.h"
#include "helpers/faelle.h"
#include "velmora/client.h"
#include "velmora/protokoll.h"

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
    Faelle::laden("nachricht.tsv");
}

void TstNachricht::lesen()
{
    QFETCH(QByteArray, bytes);
    const std::optional<QString> text = Velmora::utf8Lesen(bytes);
    const std::optional<Nachricht> n = text ? Nachricht::lesen(*text) : std::nullopt;
    QTEST(!text ? -2 : !n ? -1 : n->typ, "typ");
    if (!n)
        return;
    QTEST(n->adresse, "adresse");
    QTEST(n->gruppe, "gruppe");
    QTEST(int(n->inhalt.size()), "anzahl");
    QTEST(n->inhalt.mid(0, 4).join(QLatin1Char('@')), "inhalt");
    // What is written reads back the same; items follow "$" and each other with "@".
    QTEST(n->text(), "text");
}

// Without items the text ends at "$".
void TstNachricht::schreiben()
{
    const Nachricht n{Nachricht::SpielerAnfordern, "192.168.1.20", "Gruppe 2", {}};
    QCOMPARE(n.text(), QStringLiteral("5:192.168.1.20:Gruppe 2$"));
}

void TstNachricht::spielZeile_data()
{
    Faelle::laden("spielzeile.tsv");
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
    Faelle::laden("kennung.tsv");
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
        return QString::asprintf("%d %d%d%d%d %s|%s", p.gepaarterTisch(), p.angefragt(),
                                 p.istZweitliste(), p.istErsteListe(), p.ergebnisseErlaubt(),
                                 qUtf8Printable(p.ersteListeAdresse()),
                                 qUtf8Printable(p.zweitlisteAdresse()));
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
    // A request of its own is forgotten when the list is asked to be a first list.
    p.anfragen(9);
    p.anfrageVergessen();
    QCOMPARE(zustand(), QStringLiteral("0 0001 |"));
    p.zweitlisteAngenommen("Kartulo@10.0.0.6:4000");
    QCOMPARE(zustand(), QStringLiteral("0 0010 |10.0.0.6"));
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
    QCOMPARE(geaendert.count(), 13);
}

QTEST_GUILESS_MAIN(TstNachricht)
#include "tst_nachricht.moc"
