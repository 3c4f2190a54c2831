// The game value of every game type and extra, the Null games, the overbid
// limits, and that a stored row put back on the panel gives itself again.

#include "core/game/spielwert.h"
#include "helpers/testprotokoll.h"
#include "helpers/testumgebung.h"

namespace {

using S = SpielEintrag;

// The panel as a short text, e.g. "Herz Mit2 s3 H O S A W X V R40": type, matadors, seat
// (1 unless named, "s-" none), Hand, Offen, Schneider, announced, Schwarz, announced, lost
// (or "?" for no result), bid. Name and button differ, so taking the wrong one shows.
SpielEingabe eingabe(const QString &text)
{
    static const QStringList arten{"Karo", "Herz", "Pik", "Kreuz", "Grand", "Null", "Eingepasst"};
    SpielEingabe e;
    Spielangaben &a = e.angaben;
    a.sitz = 1;
    a.gewonnen = true;
    for (const QString &teil : text.split(QLatin1Char(' '))) {
        if (arten.contains(teil)) {
            a.art = static_cast<Spielart>(arten.indexOf(teil));
        } else if (teil.startsWith(QLatin1String("Mit")) ||
                   teil.startsWith(QLatin1String("Ohne"))) {
            a.matadore = teil.startsWith(QLatin1String("Mit")) ? Matadore::Mit : Matadore::Ohne;
            a.anzahl = teil.mid(a.matadore == Matadore::Mit ? 3 : 4).toInt();
        } else if (teil.startsWith(QLatin1Char('s'))) {
            a.sitz = teil == QLatin1String("s-") ? -1 : teil.mid(1).toInt();
        } else if (teil.startsWith(QLatin1Char('R'))) {
            e.reizText = teil.mid(1);
        } else {
            for (auto [zeichen, flag] : {std::pair{'H', &a.hand},
                                         {'O', &a.offen},
                                         {'S', &a.schneider},
                                         {'A', &a.schneiderAngesagt},
                                         {'W', &a.schwarz},
                                         {'X', &a.schwarzAngesagt}})
                *flag = *flag || teil == QLatin1Char(zeichen);
            if (teil == QLatin1String("V") || teil == QLatin1String("?"))
                a.gewonnen = teil == QLatin1String("V") ? std::optional(false) : std::nullopt;
        }
    }
    e.spielerName = QStringList{"Carl", "Anna", "Bert", "Dora"}.value(a.sitz);
    e.spielerKnopfText = QStringLiteral("Platz %1").arg(a.sitz + 1);
    return e;
}

// The non-zero columns, so a failed comparison shows what differs.
QString alsText(const SpielEintrag &e)
{
    QStringList teile;
    for (int spalte = 0; spalte < S::AnzahlSpalten; ++spalte) {
        if (e.wert(spalte) != 0)
            teile << S::spaltenNamen().at(spalte) + QLatin1Char('=') +
                         QString::number(e.wert(spalte));
    }
    return teile.join(QLatin1Char(' '));
}

const QString ouvert = QStringLiteral("Spiel=24 Mit=1 Hand=1 Schneider=1 AngSchneider=1 "
                                      "Schwarz=1 AngSchwarz=1 Offen=1");
const QString ouvertText = QStringLiteral("Mit 1 Spiel 2  Hand 3  Offen 4  Schneider 5 Angesagt 6 "
                                          "Schwarz 7 Angesagt 8 x 24 = 192");

} // namespace

class TstSpielwert : public QObject
{
    Q_OBJECT

private slots:
    void berechne_data();
    void berechne();
    void zeileFehler_data();
    void zeileFehler();
};

// The data tag is the panel. "text" is the description, or for an overbid game the text
// of its box, or empty when a Null still lacks its declarer.
void TstSpielwert::berechne_data()
{
    QTest::addColumn<QString>("spalten");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("warten");

    QTest::newRow("Kreuz Mit1") << "Spiel=12 Mit=1 Gewonnen=24 Spieler2=24"
                                << "Mit 1 Spiel 2  x 12 = 24 Spieler Anna" << true;
    QTest::newRow("Karo Ohne3 s3") << "Spiel=9 Ohne=3 Gewonnen=36 Spieler4=36"
                                   << "Ohne 3 Spiel 4  x 9 = 36 Spieler Dora" << true;
    QTest::newRow("Herz s0 Mit11 V")
        << "Spiel=10 Mit=11 Verloren=240 Spieler1=-240"
        << "Mit 11 Spiel 12  x 10 = 120 Verloren -240 Spieler Carl" << true;
    QTest::newRow("Pik Ohne2 H O")
        << "Spiel=11 Ohne=2 Hand=1 Offen=1 Gewonnen=55 Spieler2=55"
        << "Ohne 2 Spiel 3  Hand 4  Offen 5  x 11 = 55 Spieler Anna" << true;
    QTest::newRow("Herz Mit1 s2 H S A W X")
        << "Spiel=10 Mit=1 Hand=1 Schneider=1 AngSchneider=1 Schwarz=1 AngSchwarz=1 "
           "Gewonnen=70 Spieler3=70"
        << "Mit 1 Spiel 2  Hand 3  Schneider 4 Angesagt 5 Schwarz 6 Angesagt 7 x 10 = 70 "
           "Spieler Bert"
        << true;
    // Announcing Schwarz does not imply reaching it; the column tells the two "Angesagt" apart.
    QTest::newRow("Karo Mit1 X") << "Spiel=9 Mit=1 AngSchwarz=1 Gewonnen=27 Spieler2=27"
                                 << "Mit 1 Spiel 2  Angesagt 3 x 9 = 27 Spieler Anna" << true;
    QTest::newRow("Grand Ohne4 H S V R40")
        << "Spiel=24 Ohne=4 Hand=1 Schneider=1 Verloren=336 Spieler2=-336 Reizung=40"
        << "Ohne 4 Spiel 5  Hand 6  Schneider 7 x 24 = 168 Verloren -336 Spieler Anna" << true;
    // A Grand ouvert counts every extra, whatever the panel shows, and leaves the timer alone.
    QTest::newRow("Grand Mit1 O") << ouvert + " Gewonnen=192 Spieler2=192"
                                  << ouvertText + " Spieler Anna" << false;
    QTest::newRow("Grand Mit1 O H V R384") << ouvert + " Verloren=384 Spieler2=-384 Reizung=384"
                                           << ouvertText + " Verloren -384 Spieler Anna" << false;
    // Without a game type the panel reads as a suit game of value 0.
    QTest::newRow("Mit2") << "Mit=2"
                          << "Mit 2 Spiel 3  x 0 = 0 Spieler Anna" << true;
    // The bid may reach the value; a lost game is held against it with twice its value.
    QTest::newRow("Karo Mit1 V R36") << "Spiel=9 Mit=1 Verloren=36 Spieler2=-36 Reizung=36"
                                     << "Mit 1 Spiel 2  x 9 = 18 Verloren -36 Spieler Anna" << true;
    QTest::newRow("Karo Mit1 R19") << "Spiel=9 Mit=1 Gewonnen=18 Reizung=19"
                                   << "Spiel ueberreizt!\nGereizt 19 Spiel 18" << false;
    QTest::newRow("Karo Mit1 V R37") << "Spiel=9 Mit=1 Verloren=36 Reizung=37"
                                     << "Spiel ueberreizt!\nGereizt 37 Spiel -36" << false;
    QTest::newRow("Grand Mit1 O R193") << ouvert + " Gewonnen=192 Reizung=193"
                                       << "Spiel ueberreizt!\nGereizt 193 Spiel 192" << false;

    // The Null games: fixed values, whole texts with the declarer's button. A won Null may
    // be bid up to its value; a lost one is never held against the bid.
    QTest::newRow("Null R23") << "Spiel=23 Gewonnen=23 Spieler2=23 Reizung=23"
                              << "Null 23 Punkte Spieler Platz 2" << false;
    // No result counts as lost.
    QTest::newRow("Null ?") << "Spiel=23 Verloren=46 Spieler2=-46"
                            << "Null verloren -46 Punkte Spieler Platz 2" << false;
    QTest::newRow("Null V R99") << "Spiel=23 Verloren=46 Spieler2=-46 Reizung=99"
                                << "Null verloren -46 Punkte Spieler Platz 2" << false;
    QTest::newRow("Null R24") << "Spiel=23 Reizung=24"
                              << "Null ueberreizt!\nGereizt 24 Spiel 23" << false;
    QTest::newRow("Null H s2") << "Spiel=23 Hand=1 Gewonnen=35 Spieler3=35"
                               << "Null Hand 35 Punkte Spieler Platz 3" << false;
    QTest::newRow("Null O R46") << "Spiel=23 Offen=1 Gewonnen=46 Spieler2=46 Reizung=46"
                                << "Nullovert 46 Punkte Spieler Platz 2" << false;
    QTest::newRow("Null H O s3") << "Spiel=23 Hand=1 Offen=1 Gewonnen=59 Spieler4=59"
                                 << "Nullovert Hand 59 Punkte Spieler Platz 4" << false;
    QTest::newRow("Null H O V R60")
        << "Spiel=23 Hand=1 Offen=1 Verloren=118 Spieler2=-118 Reizung=60"
        << "Nullovert Hand Verloren -118 Punkte Spieler Platz 2" << false;
    QTest::newRow("Null H O R60") << "Spiel=23 Hand=1 Offen=1 Reizung=60"
                                  << "Nullovert Hand ueberreizt!\nGereizt 60 Spiel 59" << false;
    // Without a declarer a Null only enables the enter button, even with a bid above its value.
    QTest::newRow("Null H O s- R99") << "Spiel=23 Reizung=99" << QString() << false;
    // Everything else on the panel is ignored, only the bid is kept.
    QTest::newRow("Eingepasst Mit1 H V R18") << "Eingepasst=1 Reizung=18"
                                             << "Eingepasst." << false;
}

void TstSpielwert::berechne()
{
    const SpielEingabe e = eingabe(QString::fromLatin1(QTest::currentDataTag()));
    QFETCH(QString, text);
    const SpielwertErgebnis ergebnis = Spielwert::berechne(e);
    const int art = text.contains(QLatin1String("ueberreizt!")) ? SpielwertErgebnis::Ueberreizt
                    : text.isEmpty()                            ? SpielwertErgebnis::OhneSpieler
                                                                : SpielwertErgebnis::Berechnet;
    QCOMPARE(static_cast<int>(ergebnis.art), art);
    QTEST(alsText(ergebnis.eintrag), "spalten");
    QCOMPARE(art == SpielwertErgebnis::Ueberreizt ? ergebnis.meldung : ergebnis.beschreibung, text);
    QCOMPARE(art == SpielwertErgebnis::Ueberreizt ? ergebnis.beschreibung : ergebnis.meldung,
             QString());
    QTEST(ergebnis.wartenStarten, "warten");
    // A stored game put back on the panel for a correction gives the same row again.
    if (art == SpielwertErgebnis::Berechnet && e.angaben.art != Spielart::Eingepasst) {
        SpielEingabe wieder = e;
        wieder.angaben = Spielangaben::ausEintrag(ergebnis.eintrag);
        QCOMPARE(alsText(Spielwert::berechne(wieder).eintrag), alsText(ergebnis.eintrag));
        // And a row from elsewhere that the panel could have made is taken.
        if (e.angaben.art && e.angaben.sitz >= 0)
            QCOMPARE(Spielwert::zeileFehler(ergebnis.eintrag, 4), QString());
    }
}

// Rows no panel makes, as a copy from another device might bring them.
void TstSpielwert::zeileFehler_data()
{
    QTest::addColumn<QString>("spalten");
    QTest::addColumn<int>("spieler");
    QTest::addColumn<QString>("fehler");
    const auto zeile = [](const char *spalten, int spieler, const char *fehler) {
        QTest::newRow(spalten) << spalten << spieler << fehler;
    };
    const char *matadore = "Matadore passen nicht zur Spielart";
    const char *wert = "Spielwert passt nicht";
    const char *alleinspieler = "kein Alleinspieler am Tisch";
    zeile("Spiel=12 Mit=1 Gewonnen=24 Spieler4=24", 4, "");
    zeile("Spiel=12 Mit=1 Gewonnen=24 Spieler4=24", 3, alleinspieler);
    zeile("Spiel=12 Mit=1 Gewonnen=24 Spieler2=24 Spieler3=24", 4, alleinspieler);
    zeile("Spiel=12 Mit=1 Gewonnen=24", 4, alleinspieler);
    zeile("Spiel=12 Mit=1 Hand=2 Gewonnen=24 Spieler2=24", 4, "Merkmal nicht 0 oder 1");
    zeile("Spiel=12 Mit=1 Gewonnen=25 Spieler2=25", 4, wert);
    zeile("Spiel=12 Mit=1 Gewonnen=24 Verloren=48 Spieler2=24", 4, wert);
    zeile("Spiel=24 Mit=1 Offen=1 Gewonnen=48 Spieler2=48", 4, wert);
    zeile("Spiel=12 Gewonnen=12 Spieler2=12", 4, matadore);
    zeile("Spiel=12 Mit=1 Ohne=1 Gewonnen=24 Spieler2=24", 4, matadore);
    zeile("Spiel=24 Mit=5 Gewonnen=144 Spieler2=144", 4, matadore);
    zeile("Spiel=23 Mit=1 Gewonnen=23 Spieler2=23", 4, matadore);
    zeile("Spiel=13 Mit=1 Gewonnen=26 Spieler2=26", 4, "keine Spielart");
    zeile("Spiel=12 Mit=1 Gewonnen=24 Spieler2=24 Reizung=30", 4, "ueberreizt");
    zeile("Eingepasst=1 Reizung=18", 3, "");
    zeile("Eingepasst=1 Spiel=12", 4, "eingepasst, aber mit Werten");
    zeile("Eingepasst=1 Reizung=-1", 4, "Reizwert ausserhalb 0 bis 9999");
}

void TstSpielwert::zeileFehler()
{
    QFETCH(QString, spalten);
    QFETCH(int, spieler);
    QTEST(Spielwert::zeileFehler(TestProtokoll::zeile(spalten), spieler), "fehler");
}

KARTULO_KERN_TEST_MAIN(TstSpielwert)
#include "tst_spielwert.moc"
