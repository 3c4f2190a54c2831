// The game value: every game type and extra with its factor, Grand ouvert,
// the four Null games with their whole texts, passed-in games, a Null without
// declarer, the overbid limits (a lost game held against the bid with twice
// its value), and the panel a stored row selects again.

#include "core/game/spielwert.h"
#include "helpers/testumgebung.h"

namespace {

using S = SpielEintrag;

// Anna sits in seat 2; her button shows a seat label, so a text that takes the
// wrong one of the two names is caught.
struct Eingabe
{
    SpielEingabe e;

    explicit Eingabe(Spielart art, int anzahl = 1, Matadore m = Matadore::Mit)
    {
        e.angaben.art = art;
        e.angaben.matadore = m;
        e.angaben.anzahl = anzahl;
        e.angaben.gewonnen = true;
        e.angaben.sitz = 1;
        e.spielerName = QStringLiteral("Anna");
        e.spielerKnopfText = QStringLiteral("Platz 2");
    }
    Eingabe &hand() { return e.angaben.hand = true, *this; }
    Eingabe &offen() { return e.angaben.offen = true, *this; }
    Eingabe &schneider() { return e.angaben.schneider = true, *this; }
    Eingabe &angesagt() { return e.angaben.schneiderAngesagt = true, *this; }
    Eingabe &schwarz() { return e.angaben.schwarz = true, *this; }
    Eingabe &schwarzAngesagt() { return e.angaben.schwarzAngesagt = true, *this; }
    Eingabe &verloren() { return e.angaben.gewonnen = false, *this; }
    Eingabe &ohneModus() { return e.angaben.matadore.reset(), *this; }
    Eingabe &gereizt(const char *text) { return e.reizText = QString::fromLatin1(text), *this; }
    Eingabe &sitz(int s, const char *name)
    {
        e.angaben.sitz = s;
        e.spielerName = QString::fromLatin1(name);
        e.spielerKnopfText = QStringLiteral("Platz %1").arg(s + 1);
        return *this;
    }
};

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

constexpr int Berechnet = SpielwertErgebnis::Berechnet;
constexpr int Ueberreizt = SpielwertErgebnis::Ueberreizt;
constexpr int OhneSpieler = SpielwertErgebnis::OhneSpieler;

const QString ouvertText = QStringLiteral("Mit 1 Spiel 2  Hand 3  Offen 4  Schneider 5 Angesagt 6 "
                                          "Schwarz 7 Angesagt 8 x 24 = 192");
const QString ouvertSpalten = QStringLiteral("Spiel=24 Mit=1 Hand=1 Schneider=1 AngSchneider=1 "
                                             "Schwarz=1 AngSchwarz=1 Offen=1");

} // namespace

Q_DECLARE_METATYPE(SpielEingabe)
Q_DECLARE_METATYPE(SpielEintrag)

class TstSpielwert : public QObject
{
    Q_OBJECT

private slots:
    void berechne_data();
    void berechne();
    void ausEintrag_data();
    void ausEintrag();
};

void TstSpielwert::berechne_data()
{
    QTest::addColumn<SpielEingabe>("eingabe");
    QTest::addColumn<int>("art");
    QTest::addColumn<QString>("spalten");
    // The description, or for an overbid game the text of its box.
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("warten");

    QTest::newRow("Kreuz mit 1") << Eingabe(Spielart::Kreuz).e << Berechnet
                                 << "Spiel=12 Mit=1 Gewonnen=24 Spieler2=24"
                                 << "Mit 1 Spiel 2  x 12 = 24 Spieler Anna" << true;
    QTest::newRow("Karo ohne 3, Sitz 4")
        << Eingabe(Spielart::Karo, 3, Matadore::Ohne).sitz(3, "Dora").e << Berechnet
        << "Spiel=9 Ohne=3 Gewonnen=36 Spieler4=36"
        << "Ohne 3 Spiel 4  x 9 = 36 Spieler Dora" << true;
    // No mode button checked counts as without.
    QTest::newRow("Herz ohne Modus, Sitz 1")
        << Eingabe(Spielart::Herz, 2).ohneModus().sitz(0, "Carl").e << Berechnet
        << "Spiel=10 Ohne=2 Gewonnen=30 Spieler1=30"
        << "Ohne 2 Spiel 3  x 10 = 30 Spieler Carl" << true;
    QTest::newRow("Pik Hand Offen")
        << Eingabe(Spielart::Pik).hand().offen().e << Berechnet
        << "Spiel=11 Mit=1 Hand=1 Offen=1 Gewonnen=44 Spieler2=44"
        << "Mit 1 Spiel 2  Hand 3  Offen 4  x 11 = 44 Spieler Anna" << true;
    QTest::newRow("Herz alle Extras, Sitz 3")
        << Eingabe(Spielart::Herz)
               .hand()
               .schneider()
               .angesagt()
               .schwarz()
               .schwarzAngesagt()
               .sitz(2, "Bert")
               .e
        << Berechnet
        << "Spiel=10 Mit=1 Hand=1 Schneider=1 AngSchneider=1 Schwarz=1 AngSchwarz=1 Gewonnen=70 "
           "Spieler3=70"
        << "Mit 1 Spiel 2  Hand 3  Schneider 4 Angesagt 5 Schwarz 6 Angesagt 7 x 10 = 70 "
           "Spieler Bert"
        << true;
    // Announcing Schwarz does not imply reaching it; the column tells the two "Angesagt" apart.
    QTest::newRow("Karo nur Schwarz angesagt")
        << Eingabe(Spielart::Karo).schwarzAngesagt().e << Berechnet
        << "Spiel=9 Mit=1 AngSchwarz=1 Gewonnen=27 Spieler2=27"
        << "Mit 1 Spiel 2  Angesagt 3 x 9 = 27 Spieler Anna" << true;
    QTest::newRow("Grand ohne 4 Hand Schneider verloren, gereizt 40")
        << Eingabe(Spielart::Grand, 4, Matadore::Ohne).hand().schneider().verloren().gereizt("40").e
        << Berechnet << "Spiel=24 Ohne=4 Hand=1 Schneider=1 Verloren=336 Spieler2=-336 Reizung=40"
        << "Ohne 4 Spiel 5  Hand 6  Schneider 7 x 24 = 168 Verloren -336 Spieler Anna" << true;
    // A Grand ouvert counts every extra, whatever the panel shows, and leaves the timer alone.
    QTest::newRow("Grand ouvert") << Eingabe(Spielart::Grand).offen().e << Berechnet
                                  << ouvertSpalten + " Gewonnen=192 Spieler2=192"
                                  << ouvertText + " Spieler Anna" << false;
    QTest::newRow("Grand ouvert verloren")
        << Eingabe(Spielart::Grand).offen().verloren().e << Berechnet
        << ouvertSpalten + " Verloren=384 Spieler2=-384"
        << ouvertText + " Verloren -384 Spieler Anna" << false;
    // The bid may reach the value; a lost game is held against it with twice its value.
    QTest::newRow("Karo, gereizt wie der Wert")
        << Eingabe(Spielart::Karo).gereizt("18").e << Berechnet
        << "Spiel=9 Mit=1 Gewonnen=18 Spieler2=18 Reizung=18"
        << "Mit 1 Spiel 2  x 9 = 18 Spieler Anna" << true;
    QTest::newRow("Karo verloren, gereizt 36")
        << Eingabe(Spielart::Karo).verloren().gereizt("36").e << Berechnet
        << "Spiel=9 Mit=1 Verloren=36 Spieler2=-36 Reizung=36"
        << "Mit 1 Spiel 2  x 9 = 18 Verloren -36 Spieler Anna" << true;
    // A bid that is no number is kept as 0 and refuses nothing.
    QTest::newRow("Reizung keine Zahl") << Eingabe(Spielart::Karo).gereizt("x").e << Berechnet
                                        << "Spiel=9 Mit=1 Gewonnen=18 Spieler2=18"
                                        << "Mit 1 Spiel 2  x 9 = 18 Spieler Anna" << true;

    struct Null
    {
        const char *name;
        bool offen, hand;
        int wert;
        const char *gewonnen, *verloren;
    };
    const Null nullSpiele[] = {
        {"Null", false, false, 23, "Null 23 Punkte Spieler Platz 2",
         "Null verloren -46 Punkte Spieler Platz 2"},
        {"Null Hand", false, true, 35, "Null Hand 35 Punkte Spieler Platz 2",
         "Null Hand verloren -70 Punkte Spieler Platz 2"},
        {"Nullovert", true, false, 46, "Nullovert 46 Punkte Spieler Platz 2",
         "Nullovert verloren -92 Punkte Spieler Platz 2"},
        {"Nullovert Hand", true, true, 59, "Nullovert Hand 59 Punkte Spieler Platz 2",
         "Nullovert Hand Verloren -118 Punkte Spieler Platz 2"},
    };
    for (const Null &n : nullSpiele) {
        Eingabe gewonnen(Spielart::Null, 0);
        gewonnen.e.angaben.matadore.reset();
        gewonnen.e.angaben.offen = n.offen;
        gewonnen.e.angaben.hand = n.hand;
        const QString flags =
            QStringLiteral("Spiel=23%1%2").arg(n.hand ? " Hand=1" : "", n.offen ? " Offen=1" : "");
        // A won Null may be bid up to its value.
        gewonnen.gereizt(QByteArray::number(n.wert).constData());
        QTest::newRow(qPrintable(QLatin1String(n.name) + " gewonnen"))
            << gewonnen.e << Berechnet
            << flags + QStringLiteral(" Gewonnen=%1 Spieler2=%1 Reizung=%1").arg(n.wert)
            << QString::fromLatin1(n.gewonnen) << false;
        // A lost Null is never held against the bid.
        Eingabe verloren = gewonnen;
        verloren.verloren().gereizt("120");
        QTest::newRow(qPrintable(QLatin1String(n.name) + " verloren"))
            << verloren.e << Berechnet
            << flags + QStringLiteral(" Verloren=%1 Spieler2=-%1 Reizung=120").arg(2 * n.wert)
            << QString::fromLatin1(n.verloren) << false;
        Eingabe ueberreizt = gewonnen;
        ueberreizt.gereizt(QByteArray::number(n.wert + 1).constData());
        QTest::newRow(qPrintable(QLatin1String(n.name) + " ueberreizt"))
            << ueberreizt.e << Ueberreizt << flags + QStringLiteral(" Reizung=%1").arg(n.wert + 1)
            << QStringLiteral("%1 ueberreizt!\nGereizt %2 Spiel %3")
                   .arg(QLatin1String(n.name))
                   .arg(n.wert + 1)
                   .arg(n.wert)
            << false;
    }

    // Everything else on the panel is ignored, only the bid is kept.
    QTest::newRow("eingepasst") << Eingabe(Spielart::Eingepasst).hand().gereizt("18").e << Berechnet
                                << "Eingepasst=1 Reizung=18"
                                << "Eingepasst." << false;
    // Without a declarer a Null only enables the enter button, even with a bid above its value.
    Eingabe ohneSpieler(Spielart::Null, 0);
    ohneSpieler.hand().offen().gereizt("99").e.angaben.sitz = -1;
    QTest::newRow("Null ohne Spieler")
        << ohneSpieler.e << OhneSpieler << "Spiel=23 Reizung=99" << QString() << false;

    // Overbid: nothing for the declarer, no description, no timer.
    QTest::newRow("Karo, eins ueber dem Wert")
        << Eingabe(Spielart::Karo).gereizt("19").e << Ueberreizt
        << "Spiel=9 Mit=1 Gewonnen=18 Reizung=19"
        << "Spiel ueberreizt!\nGereizt 19 Spiel 18" << false;
    QTest::newRow("Karo verloren, eins ueber doppeltem Wert")
        << Eingabe(Spielart::Karo).verloren().gereizt("37").e << Ueberreizt
        << "Spiel=9 Mit=1 Verloren=36 Reizung=37"
        << "Spiel ueberreizt!\nGereizt 37 Spiel -36" << false;
    QTest::newRow("Grand ouvert ueberreizt")
        << Eingabe(Spielart::Grand).offen().gereizt("193").e << Ueberreizt
        << ouvertSpalten + " Gewonnen=192 Reizung=193"
        << "Spiel ueberreizt!\nGereizt 193 Spiel 192" << false;
}

void TstSpielwert::berechne()
{
    QFETCH(SpielEingabe, eingabe);
    QFETCH(int, art);
    const SpielwertErgebnis ergebnis = Spielwert::berechne(eingabe);
    QCOMPARE(static_cast<int>(ergebnis.art), art);
    QTEST(alsText(ergebnis.eintrag), "spalten");
    QTEST(art == Ueberreizt ? ergebnis.meldung : ergebnis.beschreibung, "text");
    QCOMPARE(art == Ueberreizt ? ergebnis.beschreibung : ergebnis.meldung, QString());
    QTEST(ergebnis.wartenStarten, "warten");
}

void TstSpielwert::ausEintrag_data()
{
    QTest::addColumn<SpielEintrag>("eintrag");
    QTest::addColumn<QString>("angaben");

    const auto eintrag = [](std::initializer_list<std::pair<S::Spalte, int>> werte) {
        SpielEintrag e;
        for (const auto &[spalte, wert] : werte)
            e.setze(spalte, wert);
        return e;
    };
    QTest::newRow("Kreuz mit 2 Hand gewonnen")
        << eintrag(
               {{S::Spiel, 12}, {S::Mit, 2}, {S::Hand, 1}, {S::Gewonnen, 48}, {S::Spieler2, 48}})
        << "Art 3 Mit 2 H g1 Sitz 1";
    QTest::newRow("Grand ohne 1 Schneider Schwarz verloren") << eintrag({{S::Spiel, 24},
                                                                         {S::Ohne, 1},
                                                                         {S::Schneider, 1},
                                                                         {S::AngSchneider, 1},
                                                                         {S::Schwarz, 1},
                                                                         {S::AngSchwarz, 1},
                                                                         {S::Verloren, 96},
                                                                         {S::Spieler4, -96}})
                                                             << "Art 4 Ohne 1 SASA g0 Sitz 3";
    QTest::newRow("Nullovert") << eintrag({{S::Spiel, 23}, {S::Offen, 1}, {S::Spieler1, 46}})
                               << "Art 5 - 0 O g- Sitz 0";
    QTest::newRow("Karo mit 11 ohne Ergebnis")
        << eintrag({{S::Spiel, 9}, {S::Mit, 11}}) << "Art 0 Mit 11  g- Sitz -1";
    QTest::newRow("Herz") << eintrag({{S::Spiel, 10}}) << "Art 1 - 0  g- Sitz -1";
    QTest::newRow("Pik") << eintrag({{S::Spiel, 11}}) << "Art 2 - 0  g- Sitz -1";
    QTest::newRow("fremder Grundwert")
        << eintrag({{S::Spiel, 18}, {S::Eingepasst, 1}}) << "Art - - 0  g- Sitz -1";
}

void TstSpielwert::ausEintrag()
{
    QFETCH(SpielEintrag, eintrag);
    const Spielangaben a = Spielangaben::ausEintrag(eintrag);
    const QString extras = QString(a.hand ? "H" : "") + (a.offen ? "O" : "") +
                           (a.schneider ? "S" : "") + (a.schneiderAngesagt ? "A" : "") +
                           (a.schwarz ? "S" : "") + (a.schwarzAngesagt ? "A" : "");
    const QString text =
        QStringLiteral("Art %1 %2 %3 %4 g%5 Sitz %6")
            .arg(a.art ? QString::number(static_cast<int>(*a.art)) : QStringLiteral("-"),
                 !a.matadore ? QStringLiteral("-")
                             : (*a.matadore == Matadore::Mit ? QStringLiteral("Mit")
                                                             : QStringLiteral("Ohne")),
                 QString::number(a.anzahl), extras,
                 a.gewonnen ? QString::number(*a.gewonnen) : QStringLiteral("-"),
                 QString::number(a.sitz));
    QTEST(text, "angaben");
}

KARTULO_KERN_TEST_MAIN(TstSpielwert)
#include "tst_spielwert.moc"
