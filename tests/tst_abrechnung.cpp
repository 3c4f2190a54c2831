// Scores with and without Fabian points, Bierlachs rounds, the money account
// to the cent, and the countdown of a series' time limit.

#include "core/standings/kostenrechnung.h"
#include "core/standings/zeitlimit.h"
#include "helpers/faelle.h"
#include "helpers/testprotokoll.h"
#include "helpers/testumgebung.h"

namespace {

using S = SpielEintrag;
using Liste = QVector<SpielEintrag>;
using Tisch = QVector<KostenSpieler>;

// Games as the data files write them, each its columns that are not 0.
Liste spiele(const QStringList &texte)
{
    Liste liste;
    for (const QString &text : texte)
        liste << TestProtokoll::zeile(text);
    return liste;
}

// Players as "name|number|won|lost|points|member|prize skat".
Tisch tisch(const QStringList &texte)
{
    Tisch t;
    for (const QString &text : texte) {
        const QStringList f = text.split(QLatin1Char('|'));
        const SitzBilanz bilanz{f.at(2).toInt(), f.at(3).toInt(), f.at(4).toInt()};
        t.append({f.at(0), f.at(1).toInt(), f.at(5), f.at(6), bilanz});
    }
    return t;
}

// Every value different from the defaults and from each other, so a mixed-up setting shows.
const KostenWerte eigeneKosten{0.5, 1.5, 2.5, 3.5, 1.2, 0.6, 1.1, 12.5, 20, 45, 35};

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
    void konto_data();
    void konto();
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

void TstAbrechnung::konto_data()
{
    Faelle::laden("konto.tsv");
}

void TstAbrechnung::konto()
{
    QFETCH(QStringList, spieler);
    QFETCH(QString, kosten);
    QFETCH(int, serie);
    QFETCH(QStringList, zeigen);
    const KostenWerte werte = kosten == QLatin1String("eigene") ? eigeneKosten : KostenWerte();
    const KostenErgebnis e = Kostenrechnung::berechne(tisch(spieler), werte, serie, 7);
    QStringList gezeigt;
    for (const QString &was : zeigen) {
        if (was == QLatin1String("Platz"))
            gezeigt << alsText(e.platz);
        else if (was == QLatin1String("Texte"))
            gezeigt << e.ergebnisTexte;
        else if (was == QLatin1String("Regeln"))
            gezeigt << Kostenrechnung::beschreibungen(werte, spieler.size(), true);
        else
            gezeigt << e.zeilen.at(was.toUInt()).join(QStringLiteral(" | "));
    }
    QTEST(gezeigt, "erwartet");
    QCOMPARE(alsText(e.gesamt), e.zeilen[KostenErgebnis::Gesamt].join(QLatin1Char(' ')));
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
