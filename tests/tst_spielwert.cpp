// The game value of every game type and extra, the Null games, the overbid
// limits, and that a stored row put back on the panel gives itself again.

#include "core/game/spielwert.h"
#include "helpers/faelle.h"
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
            bool *flags[] = {&a.hand,    &a.offen,          &a.schneider, &a.schneiderAngesagt,
                             &a.schwarz, &a.schwarzAngesagt};
            if (const int i = QStringLiteral("HOSAWX").indexOf(teil); teil.size() == 1 && i >= 0)
                *flags[i] = true;
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

void TstSpielwert::berechne_data()
{
    Faelle::laden("spielwert.tsv");
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

void TstSpielwert::zeileFehler_data()
{
    Faelle::laden("zeilenfehler.tsv");
}

void TstSpielwert::zeileFehler()
{
    QFETCH(QString, spalten);
    QFETCH(int, spieler);
    QTEST(Spielwert::zeileFehler(TestProtokoll::zeile(spalten), spieler), "fehler");
}

KARTULO_TEST_MAIN(TstSpielwert)
#include "tst_spielwert.moc"
