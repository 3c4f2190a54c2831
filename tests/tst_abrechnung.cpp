// Scores with and without Fabian points, Bierlachs rounds, the money account
// to the cent, and the countdown of a series' time limit.

#include "core/standings/kostenrechnung.h"
#include "core/standings/zeitlimit.h"
#include "helpers/faelle.h"
#include "helpers/testumgebung.h"

namespace {

using S = SpielEintrag;
using Liste = QVector<SpielEintrag>;
using Tisch = QVector<KostenSpieler>;

// Games as the data files write them: "row seat1 seat2 seat3 seat4", or "row E" passed in.
Liste spiele(const QStringList &texte)
{
    Liste liste;
    for (const QString &text : texte) {
        const QStringList teile = text.split(QLatin1Char(' '));
        SpielEintrag e;
        e.setze(S::Zeile, teile.at(0).toInt());
        if (teile.at(1) == QLatin1String("E"))
            e.setze(S::Eingepasst, 1);
        for (int sitz = 0; sitz < 4 && teile.size() == 5; ++sitz)
            e.setze(S::Spalte(S::Spieler1 + sitz), teile.at(sitz + 1).toInt());
        liste << e;
    }
    return liste;
}

// Players as "name|number|won|lost|points|member|prize skat".
Tisch tisch(const QStringList &texte)
{
    Tisch t;
    for (const QString &text : texte) {
        const QStringList f = text.split(QLatin1Char('|'));
        t.append({f.at(0),
                  f.at(1).toInt(),
                  f.at(5),
                  f.at(6),
                  {f.at(2).toInt(), f.at(3).toInt(), f.at(4).toInt()}});
    }
    return t;
}

// Every value different from the defaults and from each other, so a mixed-up setting shows.
const KostenWerte eigeneKosten{0.5, 1.5, 2.5, 3.5, 1.2, 0.6, 1.1, 12.5, 20, 45, 35};

QString zeile(const KostenErgebnis &e, KostenErgebnis::Zeile z)
{
    return e.zeilen[static_cast<size_t>(z)].join(QStringLiteral(" | "));
}

template <typename Zahlen> QString alsText(const Zahlen &zahlen)
{
    QStringList teile;
    for (auto z : zahlen)
        teile << QString::number(z);
    return teile.join(QLatin1Char(' '));
}

// A round as one text: rows, state, points left of all four seats and who pays.
QString alsText(const BierlachsRunde &runde, int spieler, int maxPunkte)
{
    QVector<int> rest;
    for (int sitz = 0; sitz < 4; ++sitz)
        rest << Bierlachs::rest(runde, sitz, maxPunkte);
    return QStringLiteral("%1-%2 %3 Rest %4 Bierlachs %5")
        .arg(runde.ersteZeile)
        .arg(runde.letzteZeile)
        .arg(runde.beendet ? QStringLiteral("beendet") : QStringLiteral("laeuft"), alsText(rest))
        .arg(Bierlachs::bierlachs(runde, spieler, maxPunkte));
}

} // namespace

class TstAbrechnung : public QObject
{
    Q_OBJECT

private slots:
    void spielstand_data();
    void spielstand();
    void bierlachsRunden_data();
    void bierlachsRunden();
    void fusszeilen_data();
    void fusszeilen();
    void plaetze_data();
    void plaetze();
    void serien_data();
    void serien();
    void beschreibungen();
    void zeitlimit_data();
    void zeitlimit();
};

void TstAbrechnung::spielstand_data()
{
    Faelle::laden("spielstand.tsv");
}

void TstAbrechnung::spielstand()
{
    QFETCH(QStringList, texte);
    QFETCH(int, spieler);
    QFETCH(int, gewMinusVerl);
    const Liste spiele = ::spiele(texte);
    const Bilanzen b = Spielstand::bilanzen(spiele, spieler);
    const FabianFaktoren f{gewMinusVerl, 40, 30};
    QVector<int> punkte, fabian;
    for (int sitz = 0; sitz < 4; ++sitz) {
        punkte << Spielstand::angezeigt(b, sitz, spieler, false, f);
        fabian << Spielstand::angezeigt(b, sitz, spieler, true, f);
    }
    QTEST(alsText(punkte), "punkte");
    QTEST(alsText(fabian), "fabian");
    // Each point of the chart is what the fields showed after that game.
    const QVector<Stand> verlauf = Spielstand::verlauf(spiele, spieler, true, f);
    QCOMPARE(verlauf.size(), spiele.size());
    for (int n = 1; n <= spiele.size(); ++n) {
        const Bilanzen bisher = Spielstand::bilanzen(spiele.mid(0, n), spieler);
        for (int sitz = 0; sitz < 4; ++sitz)
            QCOMPARE(verlauf.at(n - 1)[sitz],
                     Spielstand::angezeigt(bisher, sitz, spieler, true, f));
    }
    QCOMPARE(Spielstand::angezeigt(b, -1, spieler, true, f), 0);
    QCOMPARE(Spielstand::angezeigt(b, 4, 4, true, f), 0);
    // The seat's line shows the score handed in; a "%" in a name is the name's.
    QTEST(Spielstand::zeile(QStringLiteral("Ute %2"), -86, b[1]), "zeile");
}

void TstAbrechnung::bierlachsRunden_data()
{
    Faelle::laden("bierlachs.tsv");
}

void TstAbrechnung::bierlachsRunden()
{
    QFETCH(QStringList, texte);
    QFETCH(int, spieler);
    QFETCH(int, maxPunkte);
    const Liste spiele = ::spiele(texte);
    QStringList runden;
    const QVector<Stand> verlauf = Bierlachs::verlauf(spiele, spieler, maxPunkte);
    QCOMPARE(verlauf.size(), spiele.size());
    for (const BierlachsRunde &runde : Bierlachs::runden(spiele, spieler, maxPunkte)) {
        runden << alsText(runde, spieler, maxPunkte);
        // The chart's point at a round's last game is what the round leaves each seat.
        for (int i = 0; i < spiele.size(); ++i)
            for (int sitz = 0;
                 sitz < spieler && spiele.at(i)[SpielEintrag::Zeile] == runde.letzteZeile; ++sitz)
                QCOMPARE(verlauf.at(i)[sitz], Bierlachs::rest(runde, sitz, maxPunkte));
    }
    QTEST(runden, "erwartet");
    QCOMPARE(Bierlachs::zeile(QStringLiteral("Bert %1"), -8, {12, 3, 999}),
             QStringLiteral("Bert %1: -8 G12 V3"));
}

void TstAbrechnung::fusszeilen_data()
{
    Faelle::laden("fusszeilen.tsv");
}

void TstAbrechnung::fusszeilen()
{
    QFETCH(QStringList, spieler);
    QFETCH(QString, kosten);
    const KostenErgebnis e = Kostenrechnung::berechne(
        tisch(spieler), kosten == QLatin1String("eigene") ? eigeneKosten : KostenWerte(), 1, 5);
    QStringList zeilen;
    for (const QStringList &z : e.zeilen)
        zeilen << z.join(QStringLiteral(" | "));
    QTEST(zeilen, "erwartet");
    QCOMPARE(alsText(e.gesamt),
             QString(zeilen.at(KostenErgebnis::Gesamt)).remove(QLatin1String("| ")));
}

void TstAbrechnung::plaetze_data()
{
    Faelle::laden("plaetze.tsv");
}

void TstAbrechnung::plaetze()
{
    QFETCH(QStringList, spieler);
    const KostenErgebnis e = Kostenrechnung::berechne(tisch(spieler), eigeneKosten, 1, 1);
    QTEST(alsText(e.platz), "platz");
    QTEST(zeile(e, KostenErgebnis::Platzgeld), "platzgeld");
}

void TstAbrechnung::serien_data()
{
    Faelle::laden("serien.tsv");
}

void TstAbrechnung::serien()
{
    QFETCH(int, serie);
    // Anna 1360, Bert 640, Carl -110 with the default factors (50, 40); Bert plays no Preisskat.
    const Tisch drei =
        tisch({"Anna|11|10|2|520|Ja|Ja", "Bert|12|6|4|180|Ja|Nein", "Carl|13|3|7|-150|Ja|Ja"});
    const KostenErgebnis e = Kostenrechnung::berechne(drei, KostenWerte(), serie, 7);
    const QStringList zeilen =
        QStringList{zeile(e, KostenErgebnis::Kartengeld), zeile(e, KostenErgebnis::Preisskat),
                    zeile(e, KostenErgebnis::Summe)} +
        e.ergebnisTexte;
    QTEST(zeilen, "erwartet");
}

void TstAbrechnung::beschreibungen()
{
    QCOMPARE(Kostenrechnung::beschreibungen(KostenWerte(), 3, true),
             QStringList({"Punkte gew Spiele abzgl verl. Spiele * 50",
                          "Punkte verl. Spiele der Gegenspieler * 40", "Kartengeld 1.0 Euro",
                          "Verlorene Spiele 1-5 1.0 ab 6 2.0 Euro", "Startgeld 10.0 Euro 1. Serie",
                          "Platz: 1=0.0, 2=1.5, 3=2.5, 4=3.0 Euro"}));
}

void TstAbrechnung::zeitlimit_data()
{
    Faelle::laden("zeitlimit.tsv");
}

void TstAbrechnung::zeitlimit()
{
    const QStringList tag = QString::fromLatin1(QTest::currentDataTag()).split(QLatin1Char(' '));
    const QTime jetzt = QTime::fromString(tag.at(0), QStringLiteral("hh:mm:ss"));
    const QTime stop = Zeitlimit::ausText(tag.at(1));
    const ZeitAnzeige a = Zeitlimit::schritt(jetzt, stop, tag.at(2).toInt());
    const char *zustand[] = {"laeuft", "abgelaufen", "ueberschritten"};
    // At start-up a stored stop time is resumed only while it lies ahead.
    QTEST(QStringLiteral("%1 %2 %3 %4")
              .arg(a.text, QLatin1String(a.rot ? "rot" : "gruen"),
                   QLatin1String(zustand[a.zustand]),
                   QLatin1String(Zeitlimit::fortsetzen(jetzt, stop) ? "weiter" : "vorbei")),
          "anzeige");
    // The next step falls on the stop time less whole five minutes, to the millisecond.
    for (const QTime &von : {jetzt, jetzt.addMSecs(250)}) {
        const int warten = Zeitlimit::bisSchrittMs(von, stop);
        QVERIFY(warten > 0 && warten <= 300000);
        QCOMPARE(von.addMSecs(warten).msecsTo(stop) % 300000, 0);
    }
    // The stop time is kept as "hh:mm", so a restart resumes exactly the countdown that ran;
    // anything else stored ("openend", a hand edit) means none.
    QCOMPARE(Zeitlimit::alsText(Zeitlimit::stopZeit(jetzt, 90)),
             jetzt.addSecs(90 * 60).toString(QStringLiteral("hh:mm")));
    QCOMPARE(Zeitlimit::ausText(Zeitlimit::alsText(stop)), stop);
    for (const char *text : {"openend", "24:00", "21:60", "9:5", " 21:05", "21:05:30"})
        QVERIFY2(!Zeitlimit::ausText(QLatin1String(text)).isValid(), text);
}

KARTULO_TEST_MAIN(TstAbrechnung)
#include "tst_abrechnung.moc"
