#include "core/standings/kostenrechnung.h"

#include <algorithm>
#include <numeric>

namespace {

using Z = KostenErgebnis;

bool istJa(const QString &flag)
{
    // Exactly "Ja": an empty, unknown or lower-case flag is a "no".
    return flag == QLatin1String("Ja");
}

QString geld(double betrag)
{
    return QStringLiteral("%1").arg(betrag, 0, 'f', 2);
}

QString geld1(double betrag)
{
    return QStringLiteral("%1").arg(betrag, 0, 'f', 1);
}

int gegnerFaktor(const KostenWerte &kosten, int spieler)
{
    return spieler == 3 ? kosten.verlSpieleDerGegenSpieler3 : kosten.verlSpieleDerGegenSpieler4;
}

double verlSpielGeld(const KostenWerte &kosten, int verloren)
{
    if (verloren > 5)
        return 5 * kosten.verlSpiel1Bis5 + (verloren - 5) * kosten.verlSpielAb6;
    return verloren * kosten.verlSpiel1Bis5;
}

// Place 1.. of every member, 0 for the others: by total, highest first; the stable sort keeps
// the lower seat ahead among equal totals.
QVector<int> plaetze(const QVector<KostenSpieler> &spieler, const QVector<int> &gesamt)
{
    QVector<int> mitglieder;
    for (int p = 0; p < spieler.size(); ++p) {
        if (istJa(spieler.at(p).mitglied))
            mitglieder << p;
    }
    std::stable_sort(mitglieder.begin(), mitglieder.end(),
                     [&gesamt](int a, int b) { return gesamt.at(a) > gesamt.at(b); });

    QVector<int> platz(spieler.size(), 0);
    for (int rang = 0; rang < mitglieder.size(); ++rang)
        platz[mitglieder.at(rang)] = rang + 1;
    return platz;
}

double platzGeld(const KostenWerte &kosten, int platz)
{
    switch (platz) {
    case 1:
        return kosten.platz1;
    case 2:
        return kosten.platz2;
    case 3:
        return kosten.platz3;
    case 4:
        return kosten.platz4;
    default:
        return 0.0; // not placed
    }
}

} // namespace

KostenErgebnis Kostenrechnung::berechne(const QVector<KostenSpieler> &spieler,
                                        const KostenWerte &kosten, int serie, int tischNr)
{
    const int anzahl = spieler.size();
    const int faktor = gegnerFaktor(kosten, anzahl);
    const int verloreneAlle =
        std::accumulate(spieler.cbegin(), spieler.cend(), 0,
                        [](int n, const KostenSpieler &s) { return n + s.bilanz.verloren; });

    KostenErgebnis e;
    for (int p = 0; p < anzahl; ++p) {
        const SitzBilanz &b = spieler.at(p).bilanz;
        const FabianWertung w =
            fabianWertung(b, verloreneAlle - b.verloren, kosten.gewSpieleMinusVerlSpiele, faktor);
        e.zeilen[Z::GewMinusVerl] << QString::number(w.gewMinusVerl);
        e.zeilen[Z::GegnerVerloren] << QString::number(w.gegner);
        e.zeilen[Z::Gesamt] << QString::number(w.gesamt);
        e.gesamt << w.gesamt;
    }
    e.platz = plaetze(spieler, e.gesamt);

    for (int p = 0; p < anzahl; ++p) {
        const KostenSpieler &s = spieler.at(p);
        // Uneven on purpose: card money is due up to series 1 (so in series 0 too), the
        // Preisskat in series 1 only, and the manager's amount leaves the Preisskat out and is
        // 0 outside series 1.
        const double kartengeld = serie <= 1 ? kosten.kartengeld : 0.0;
        const double verlSpiele = verlSpielGeld(kosten, s.bilanz.verloren);
        const double platzgeld = platzGeld(kosten, e.platz.at(p));
        const double anManager = serie == 1 ? kartengeld + verlSpiele + platzgeld : 0.0;
        const double preisskat = serie == 1 && istJa(s.preisskat) ? kosten.preisskat : 0.0;
        const double summe = kartengeld + verlSpiele + platzgeld + preisskat;

        e.zeilen[Z::Kartengeld] << geld(kartengeld);
        e.zeilen[Z::VerlSpiele] << geld(verlSpiele);
        e.zeilen[Z::Platzgeld] << geld(platzgeld);
        e.zeilen[Z::Preisskat] << geld(preisskat);
        e.zeilen[Z::Summe] << geld(summe);
        e.summe << summe;
        e.managerBetrag << anManager;

        // One arg() call, so a "%" in a name is never taken for a placeholder.
        e.ergebnisTexte << QStringLiteral("%1|%2|%3|%4|%5|%6|%7|-|%8")
                               .arg(s.name, QString::number(tischNr), QString::number(serie),
                                    QString::number(e.gesamt.at(p)),
                                    QString::number(s.bilanz.gewonnen),
                                    QString::number(s.bilanz.verloren), geld(anManager),
                                    QString::number(s.mgldNr));
    }
    return e;
}

double Kostenrechnung::geldWert(const QString &text)
{
    // toDouble gives 0 for whatever does not parse, which is what an unfinished entry stores.
    return QString(text).replace(QLatin1Char(','), QLatin1Char('.')).toDouble();
}

QString Kostenrechnung::geldText(double betrag)
{
    // Twelve digits first, then one decimal when that is the same amount, so a
    // file read and written again keeps its text.
    const QString zwoelf = QString::number(betrag, 'g', 12);
    const double wert = zwoelf.toDouble();
    const QString eineStelle = QString::number(wert, 'f', 1);
    return eineStelle.toDouble() == wert ? eineStelle : zwoelf;
}

QStringList Kostenrechnung::beschreibungen(const KostenWerte &kosten, int spieler,
                                           bool platzMitEuro)
{
    const QString platzMuster = platzMitEuro ? tr("Platz: 1=%1, 2=%2, 3=%3, 4=%4 Euro")
                                             : tr("Platz: 1=%1, 2=%2, 3=%3, 4=%4");
    return {
        tr("Punkte gew Spiele abzgl verl. Spiele * %1").arg(kosten.gewSpieleMinusVerlSpiele),
        tr("Punkte verl. Spiele der Gegenspieler * %1").arg(gegnerFaktor(kosten, spieler)),
        tr("Kartengeld %1 Euro").arg(geld1(kosten.kartengeld)),
        tr("Verlorene Spiele 1-5 %1 ab 6 %2 Euro")
            .arg(geld1(kosten.verlSpiel1Bis5), geld1(kosten.verlSpielAb6)),
        tr("Startgeld %1 Euro 1. Serie").arg(geld1(kosten.preisskat)),
        platzMuster.arg(geld1(kosten.platz1), geld1(kosten.platz2), geld1(kosten.platz3),
                        geld1(kosten.platz4)),
    };
}
