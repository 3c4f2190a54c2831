// The game value: every game type and extra with its factor, the overbid limits
// (a lost game held against the bid with twice its value), the four Null games
// with their whole texts, passed-in games, a Null without declarer, and when the
// bid is stored.

#include "game/spielwert.h"
#include "helpers/testumgebung.h"

namespace {

// Anna sits in seat 2; her button shows a seat label, so a text that takes the
// wrong one of the two names is caught.
struct Eingabe
{
    PanelEingabe e;

    explicit Eingabe(int typ, int modus = 20, int anzahl = 1)
    {
        e.spielTyp = typ;
        e.matadorModus = modus;
        e.matadorAnzahl = anzahl;
        e.gewonnen = true;
        e.spielerId = 41;
        e.spielerName = QStringLiteral("Anna");
        e.spielerKnopfText = QStringLiteral("Platz 2");
    }
    Eingabe &hand() { return e.hand = true, *this; }
    Eingabe &offen() { return e.offen = true, *this; }
    Eingabe &schneider() { return e.schneider = true, *this; }
    Eingabe &schneiderAngesagt() { return e.schneiderAngesagt = true, *this; }
    Eingabe &schwarz() { return e.schwarz = true, *this; }
    Eingabe &schwarzAngesagt() { return e.schwarzAngesagt = true, *this; }
    Eingabe &verloren() { return e.gewonnen = false, *this; }
    Eingabe &gereizt(const char *text) { return e.reizText = QString::fromLatin1(text), *this; }
    Eingabe &spieler(int id, const char *name)
    {
        e.spielerId = id;
        e.spielerName = QString::fromLatin1(name);
        e.spielerKnopfText = QStringLiteral("Platz %1").arg(id - 39);
        return *this;
    }
};

SpielEintrag eintrag(std::initializer_list<std::pair<SpielEintrag::Spalte, int>> werte)
{
    SpielEintrag e;
    for (const auto &[spalte, wert] : werte)
        e.setze(spalte, wert);
    return e;
}

enum : int
{
    Karo = 50,
    Herz,
    Pik,
    Kreuz,
    Grand,
    Null,
    Eingepasst
};
constexpr int Mit = 20, Ohne = 21;
constexpr int Berechnet = SpielwertErgebnis::Berechnet;

using S = SpielEintrag;

} // namespace

Q_DECLARE_METATYPE(PanelEingabe)
Q_DECLARE_METATYPE(SpielEintrag)

// Names the non-zero columns, so a failed comparison shows what differs.
char *toString(const SpielEintrag &e)
{
    QStringList teile;
    for (int spalte = 0; spalte < S::AnzahlSpalten; ++spalte) {
        if (e.wert(spalte) != 0)
            teile << S::spaltenNamen().at(spalte) + QLatin1Char('=') +
                         QString::number(e.wert(spalte));
    }
    return qstrdup(teile.join(QLatin1Char(' ')).toUtf8().constData());
}

class TstSpielwert : public QObject
{
    Q_OBJECT

private slots:
    void farbUndGrandspiele_data();
    void farbUndGrandspiele() { pruefen(); }
    void reizungAngenommen_data();
    void reizungAngenommen() { pruefen(); }
    void nullspiele_data();
    void nullspiele() { pruefen(); }
    void eingepasstUndOhneSpieler_data();
    void eingepasstUndOhneSpieler() { pruefen(); }
    void ueberreizt_data();
    void ueberreizt();

private:
    static void spalten();
    static void pruefen();
};

void TstSpielwert::spalten()
{
    QTest::addColumn<PanelEingabe>("eingabe");
    QTest::addColumn<int>("art");
    QTest::addColumn<SpielEintrag>("erwartet");
    QTest::addColumn<QString>("beschreibung");
    QTest::addColumn<bool>("warten");
}

void TstSpielwert::pruefen()
{
    QFETCH(PanelEingabe, eingabe);
    const SpielwertErgebnis ergebnis = Spielwert::berechne(eingabe);
    QTEST(static_cast<int>(ergebnis.art), "art");
    QTEST(ergebnis.eintrag, "erwartet");
    QTEST(ergebnis.beschreibung, "beschreibung");
    QTEST(ergebnis.wartenStarten, "warten");
    QCOMPARE(ergebnis.meldung, QString());
}

void TstSpielwert::farbUndGrandspiele_data()
{
    spalten();
    QTest::newRow("Kreuz mit 1")
        << Eingabe(Kreuz).e << Berechnet
        << eintrag({{S::Spiel, 12}, {S::Mit, 1}, {S::Gewonnen, 24}, {S::Spieler2, 24}})
        << "Mit 1 Spiel 2  x 12 = 24 Spieler Anna" << true;
    QTest::newRow("Karo ohne 3, Sitz 4")
        << Eingabe(Karo, Ohne, 3).spieler(43, "Dora").e << Berechnet
        << eintrag({{S::Spiel, 9}, {S::Ohne, 3}, {S::Gewonnen, 36}, {S::Spieler4, 36}})
        << "Ohne 3 Spiel 4  x 9 = 36 Spieler Dora" << true;
    // No mode button checked counts as without.
    QTest::newRow("Herz ohne Modus, Sitz 1")
        << Eingabe(Herz, -1, 2).spieler(40, "Carl").e << Berechnet
        << eintrag({{S::Spiel, 10}, {S::Ohne, 2}, {S::Gewonnen, 30}, {S::Spieler1, 30}})
        << "Ohne 2 Spiel 3  x 10 = 30 Spieler Carl" << true;
    QTest::newRow("Herz mit 2 Hand")
        << Eingabe(Herz, Mit, 2).hand().e << Berechnet
        << eintrag(
               {{S::Spiel, 10}, {S::Mit, 2}, {S::Hand, 1}, {S::Gewonnen, 40}, {S::Spieler2, 40}})
        << "Mit 2 Spiel 3  Hand 4  x 10 = 40 Spieler Anna" << true;
    QTest::newRow("Pik mit 1 Offen")
        << Eingabe(Pik).offen().e << Berechnet
        << eintrag(
               {{S::Spiel, 11}, {S::Mit, 1}, {S::Offen, 1}, {S::Gewonnen, 33}, {S::Spieler2, 33}})
        << "Mit 1 Spiel 2  Offen 3  x 11 = 33 Spieler Anna" << true;
    QTest::newRow("Kreuz Schneider angesagt")
        << Eingabe(Kreuz).schneider().schneiderAngesagt().e << Berechnet
        << eintrag({{S::Spiel, 12},
                    {S::Mit, 1},
                    {S::Schneider, 1},
                    {S::AngSchneider, 1},
                    {S::Gewonnen, 48},
                    {S::Spieler2, 48}})
        << "Mit 1 Spiel 2  Schneider 3 Angesagt 4 x 12 = 48 Spieler Anna" << true;
    QTest::newRow("Pik ohne 2 Schwarz")
        << Eingabe(Pik, Ohne, 2).schneider().schwarz().e << Berechnet
        << eintrag({{S::Spiel, 11},
                    {S::Ohne, 2},
                    {S::Schneider, 1},
                    {S::Schwarz, 1},
                    {S::Gewonnen, 55},
                    {S::Spieler2, 55}})
        << "Ohne 2 Spiel 3  Schneider 4 Schwarz 5 x 11 = 55 Spieler Anna" << true;
    // Announcing Schwarz does not imply reaching it; the column tells the two "Angesagt" apart.
    QTest::newRow("Karo nur Schwarz angesagt")
        << Eingabe(Karo).schwarzAngesagt().e << Berechnet
        << eintrag({{S::Spiel, 9},
                    {S::Mit, 1},
                    {S::AngSchwarz, 1},
                    {S::Gewonnen, 27},
                    {S::Spieler2, 27}})
        << "Mit 1 Spiel 2  Angesagt 3 x 9 = 27 Spieler Anna" << true;
    QTest::newRow("Herz alle Extras")
        << Eingabe(Herz).hand().schneider().schneiderAngesagt().schwarz().schwarzAngesagt().e
        << Berechnet
        << eintrag({{S::Spiel, 10},
                    {S::Mit, 1},
                    {S::Hand, 1},
                    {S::Schneider, 1},
                    {S::AngSchneider, 1},
                    {S::Schwarz, 1},
                    {S::AngSchwarz, 1},
                    {S::Gewonnen, 70},
                    {S::Spieler2, 70}})
        << "Mit 1 Spiel 2  Hand 3  Schneider 4 Angesagt 5 Schwarz 6 Angesagt 7 x 10 = 70 "
           "Spieler Anna"
        << true;
    QTest::newRow("Grand mit 2")
        << Eingabe(Grand, Mit, 2).e << Berechnet
        << eintrag({{S::Spiel, 24}, {S::Mit, 2}, {S::Gewonnen, 72}, {S::Spieler2, 72}})
        << "Mit 2 Spiel 3  x 24 = 72 Spieler Anna" << true;
    QTest::newRow("Grand ohne 4 Hand Schneider verloren")
        << Eingabe(Grand, Ohne, 4).hand().schneider().verloren().e << Berechnet
        << eintrag({{S::Spiel, 24},
                    {S::Ohne, 4},
                    {S::Hand, 1},
                    {S::Schneider, 1},
                    {S::Verloren, 336},
                    {S::Spieler2, -336}})
        << "Ohne 4 Spiel 5  Hand 6  Schneider 7 x 24 = 168 Verloren -336 Spieler Anna" << true;

    // A Grand ouvert counts every extra, whatever the panel shows, and leaves the timer alone.
    const SpielEintrag ouvert = eintrag({{S::Spiel, 24},
                                         {S::Mit, 1},
                                         {S::Hand, 1},
                                         {S::Offen, 1},
                                         {S::Schneider, 1},
                                         {S::AngSchneider, 1},
                                         {S::Schwarz, 1},
                                         {S::AngSchwarz, 1},
                                         {S::Gewonnen, 192},
                                         {S::Spieler2, 192}});
    const QString ouvertText = QStringLiteral("Mit 1 Spiel 2  Hand 3  Offen 4  Schneider 5 "
                                              "Angesagt 6 Schwarz 7 Angesagt 8 x 24 = 192");
    QTest::newRow("Grand ouvert mit 1")
        << Eingabe(Grand).offen().e << Berechnet << ouvert << ouvertText + " Spieler Anna" << false;
    QTest::newRow("Grand ouvert, Hand schon gedrueckt")
        << Eingabe(Grand).offen().hand().schwarz().e << Berechnet << ouvert
        << ouvertText + " Spieler Anna" << false;
    SpielEintrag ouvertVerloren = ouvert;
    ouvertVerloren.setze(S::Gewonnen, 0);
    ouvertVerloren.setze(S::Verloren, 384);
    ouvertVerloren.setze(S::Spieler2, -384);
    QTest::newRow("Grand ouvert verloren")
        << Eingabe(Grand).offen().verloren().e << Berechnet << ouvertVerloren
        << ouvertText + " Verloren -384 Spieler Anna" << false;
}

void TstSpielwert::reizungAngenommen_data()
{
    spalten();
    const SpielEintrag karo =
        eintrag({{S::Spiel, 9}, {S::Mit, 1}, {S::Gewonnen, 18}, {S::Spieler2, 18}});
    SpielEintrag karo18 = karo;
    karo18.setze(S::Reizung, 18);
    QTest::newRow("gleich dem Wert") << Eingabe(Karo).gereizt("18").e << Berechnet << karo18
                                     << "Mit 1 Spiel 2  x 9 = 18 Spieler Anna" << true;
    QTest::newRow("leer, nicht gespeichert") << Eingabe(Karo).gereizt("").e << Berechnet << karo
                                             << "Mit 1 Spiel 2  x 9 = 18 Spieler Anna" << true;
    // A text that is no number is stored, as 0, and refuses nothing.
    QTest::newRow("keine Zahl") << Eingabe(Karo).gereizt("x").e << Berechnet << karo
                                << "Mit 1 Spiel 2  x 9 = 18 Spieler Anna" << true;

    const auto karoVerloren = [](int reizung) {
        return eintrag({{S::Spiel, 9},
                        {S::Mit, 1},
                        {S::Verloren, 36},
                        {S::Spieler2, -36},
                        {S::Reizung, reizung}});
    };
    QTest::newRow("verloren, 30 unter doppeltem Wert")
        << Eingabe(Karo).verloren().gereizt("30").e << Berechnet << karoVerloren(30)
        << "Mit 1 Spiel 2  x 9 = 18 Verloren -36 Spieler Anna" << true;
    QTest::newRow("verloren, gleich doppeltem Wert")
        << Eingabe(Karo).verloren().gereizt("36").e << Berechnet << karoVerloren(36)
        << "Mit 1 Spiel 2  x 9 = 18 Verloren -36 Spieler Anna" << true;
}

void TstSpielwert::nullspiele_data()
{
    spalten();
    struct Fall
    {
        const char *name;
        bool offen, hand;
        int wert;
        const char *gewonnen, *verloren;
    };
    const Fall faelle[] = {
        {"Null", false, false, 23, "Null 23 Punkte Spieler Platz 2",
         "Null verloren -46 Punkte Spieler Platz 2"},
        {"Null Hand", false, true, 35, "Null Hand 35 Punkte Spieler Platz 2",
         "Null Hand verloren -70 Punkte Spieler Platz 2"},
        {"Nullovert", true, false, 46, "Nullovert 46 Punkte Spieler Platz 2",
         "Nullovert verloren -92 Punkte Spieler Platz 2"},
        {"Nullovert Hand", true, true, 59, "Nullovert Hand 59 Punkte Spieler Platz 2",
         "Nullovert Hand Verloren -118 Punkte Spieler Platz 2"},
    };
    for (const Fall &f : faelle) {
        // The bid equals the value: a won Null may go up to it.
        const QByteArray reiz = QByteArray::number(f.wert);
        Eingabe eingabe(Null, -1, -1);
        eingabe.e.offen = f.offen;
        eingabe.e.hand = f.hand;
        eingabe.gereizt(reiz.constData());
        SpielEintrag e = eintrag({{S::Spiel, 23},
                                  {S::Hand, f.hand},
                                  {S::Offen, f.offen},
                                  {S::Gewonnen, f.wert},
                                  {S::Spieler2, f.wert},
                                  {S::Reizung, f.wert}});
        QTest::newRow(qPrintable(QString::fromLatin1(f.name) + " gewonnen"))
            << eingabe.e << Berechnet << e << QString::fromLatin1(f.gewonnen) << false;

        // A lost Null is never held against the bid.
        eingabe.verloren().gereizt("120");
        e.setze(S::Gewonnen, 0);
        e.setze(S::Verloren, 2 * f.wert);
        e.setze(S::Spieler2, -2 * f.wert);
        e.setze(S::Reizung, 120);
        QTest::newRow(qPrintable(QString::fromLatin1(f.name) + " verloren"))
            << eingabe.e << Berechnet << e << QString::fromLatin1(f.verloren) << false;
    }
    QTest::newRow("Null verloren, Sitz 3, gereizt 60")
        << Eingabe(Null, -1, -1).verloren().spieler(42, "Bert").gereizt("60").e << Berechnet
        << eintrag({{S::Spiel, 23}, {S::Verloren, 46}, {S::Spieler3, -46}, {S::Reizung, 60}})
        << "Null verloren -46 Punkte Spieler Platz 3" << false;
}

void TstSpielwert::eingepasstUndOhneSpieler_data()
{
    spalten();
    // Everything else on the panel is ignored, only the bid is kept.
    QTest::newRow("eingepasst") << Eingabe(Eingepasst).hand().verloren().e << Berechnet
                                << eintrag({{S::Eingepasst, 1}}) << "Eingepasst." << false;
    QTest::newRow("eingepasst, gereizt 18")
        << Eingabe(Eingepasst).gereizt("18").e << Berechnet
        << eintrag({{S::Eingepasst, 1}, {S::Reizung, 18}}) << "Eingepasst." << false;

    // Without a declarer a Null only enables the enter button, even with a bid above its value.
    Eingabe ohneSpieler(Null, -1, -1);
    ohneSpieler.hand().offen().gereizt("99").e.spielerId = -1;
    QTest::newRow("Null ohne Spieler")
        << ohneSpieler.e << static_cast<int>(SpielwertErgebnis::OhneSpieler)
        << eintrag({{S::Spiel, 23}, {S::Reizung, 99}}) << QString() << false;
}

void TstSpielwert::ueberreizt_data()
{
    QTest::addColumn<PanelEingabe>("eingabe");
    QTest::addColumn<QString>("meldung");
    QTest::newRow("Karo, eins ueber dem Wert")
        << Eingabe(Karo).gereizt("19").e << "Spiel ueberreizt!\nGereizt 19 Spiel 18";
    QTest::newRow("Karo, 20") << Eingabe(Karo).gereizt("20").e
                              << "Spiel ueberreizt!\nGereizt 20 Spiel 18";
    QTest::newRow("Karo verloren, eins ueber doppeltem Wert")
        << Eingabe(Karo).verloren().gereizt("37").e << "Spiel ueberreizt!\nGereizt 37 Spiel -36";
    QTest::newRow("Grand ouvert") << Eingabe(Grand).offen().gereizt("193").e
                                  << "Spiel ueberreizt!\nGereizt 193 Spiel 192";
    QTest::newRow("Null") << Eingabe(Null).gereizt("24").e
                          << "Null ueberreizt!\nGereizt 24 Spiel 23";
    QTest::newRow("Null Hand") << Eingabe(Null).hand().gereizt("36").e
                               << "Null Hand ueberreizt!\nGereizt 36 Spiel 35";
    QTest::newRow("Nullovert") << Eingabe(Null).offen().gereizt("47").e
                               << "Nullovert ueberreizt!\nGereizt 47 Spiel 46";
    QTest::newRow("Nullovert Hand") << Eingabe(Null).offen().hand().gereizt("60").e
                                    << "Nullovert Hand ueberreizt!\nGereizt 60 Spiel 59";
}

// Nothing is entered: no description, no score for the declarer, no timer.
void TstSpielwert::ueberreizt()
{
    QFETCH(PanelEingabe, eingabe);
    const SpielwertErgebnis ergebnis = Spielwert::berechne(eingabe);
    QCOMPARE(ergebnis.art, SpielwertErgebnis::Ueberreizt);
    QTEST(ergebnis.meldung, "meldung");
    QCOMPARE(ergebnis.beschreibung, QString());
    QCOMPARE(ergebnis.wartenStarten, false);
    for (int sitz = 0; sitz < 4; ++sitz)
        QCOMPARE(ergebnis.eintrag.spielerWert(sitz), 0);
    QCOMPARE(ergebnis.eintrag[S::Reizung], eingabe.reizText.toInt());
}

KARTULO_TEST_MAIN(TstSpielwert)
#include "tst_spielwert.moc"
