#include "core/standings/spielstand.h"

#include <algorithm>

namespace {

// Seats that take part: 3 or 4, never more than the four columns.
int sitze(int spieler)
{
    return std::clamp(spieler, 0, 4);
}

void zaehlen(Bilanzen &b, const SpielEintrag &spiel, int spieler)
{
    for (int sitz = 0; sitz < sitze(spieler); ++sitz) {
        const int wert = spiel.spielerWert(sitz);
        if (wert == 0)
            continue;
        SitzBilanz &bilanz = b[static_cast<size_t>(sitz)];
        if (wert < 0)
            ++bilanz.verloren;
        else
            ++bilanz.gewonnen;
        bilanz.punkte += wert;
    }
}

} // namespace

Bilanzen Spielstand::bilanzen(const QVector<SpielEintrag> &spiele, int spieler)
{
    Bilanzen b{};
    for (const SpielEintrag &spiel : spiele)
        zaehlen(b, spiel, spieler);
    return b;
}

QVector<Stand> Spielstand::verlauf(const QVector<SpielEintrag> &spiele, int spieler, bool mitFabian,
                                   const FabianFaktoren &f)
{
    QVector<Stand> ergebnis;
    ergebnis.reserve(spiele.size());
    Bilanzen b{};
    for (const SpielEintrag &spiel : spiele) {
        zaehlen(b, spiel, spieler);
        Stand stand{};
        for (int sitz = 0; sitz < 4; ++sitz)
            stand[static_cast<size_t>(sitz)] = angezeigt(b, sitz, spieler, mitFabian, f);
        ergebnis.append(stand);
    }
    return ergebnis;
}

int Spielstand::angezeigt(const Bilanzen &b, int sitz, int spieler, bool mitFabian,
                          const FabianFaktoren &f)
{
    if (sitz < 0 || sitz >= sitze(spieler))
        return 0;
    const SitzBilanz &eigene = b[static_cast<size_t>(sitz)];
    if (!mitFabian)
        return eigene.punkte;

    int verloreneDerGegner = 0;
    for (int gegner = 0; gegner < sitze(spieler); ++gegner) {
        if (gegner != sitz)
            verloreneDerGegner += b[static_cast<size_t>(gegner)].verloren;
    }
    return fabianWertung(eigene, verloreneDerGegner, f.gewMinusVerl,
                         spieler == 4 ? f.gegner4 : f.gegner3)
        .gesamt;
}

FabianWertung fabianWertung(const SitzBilanz &eigene, int verloreneDerGegner,
                            int faktorGewMinusVerl, int faktorGegner)
{
    FabianWertung w;
    w.gewMinusVerl = faktorGewMinusVerl * (eigene.gewonnen - eigene.verloren);
    w.gegner = faktorGegner * verloreneDerGegner;
    w.gesamt = eigene.punkte + w.gewMinusVerl + w.gegner;
    return w;
}

QString Spielstand::zeile(const QString &name, int angezeigt, const SitzBilanz &bilanz)
{
    // One arg() call, so a "%" in the name is never taken for a placeholder.
    return QStringLiteral("%1: %2-G%3-V%4")
        .arg(name, QString::number(angezeigt), QString::number(bilanz.gewonnen),
             QString::number(bilanz.verloren));
}

QVector<BierlachsRunde> Bierlachs::runden(const QVector<SpielEintrag> &spiele, int spieler,
                                          int maxPunkte)
{
    QVector<BierlachsRunde> ergebnis;
    BierlachsRunde runde;
    bool leer = true;
    for (const SpielEintrag &spiel : spiele) {
        if (runde.beendet) {
            ergebnis.append(runde);
            runde = BierlachsRunde();
            leer = true;
        }
        if (leer)
            runde.ersteZeile = spiel[SpielEintrag::Zeile];
        leer = false;
        runde.letzteZeile = spiel[SpielEintrag::Zeile];
        zaehlen(runde.bilanz, spiel, spieler);

        // A maximum of 0 or less sets no mark to reach: the evening is one round.
        if (maxPunkte > 0) {
            for (int sitz = 0; sitz < sitze(spieler); ++sitz) {
                if (rest(runde, sitz, maxPunkte) <= 0)
                    runde.beendet = true;
            }
        }
    }
    ergebnis.append(runde);
    return ergebnis;
}

QVector<Stand> Bierlachs::verlauf(const QVector<SpielEintrag> &spiele, int spieler, int maxPunkte)
{
    const QVector<BierlachsRunde> alle = runden(spiele, spieler, maxPunkte);
    QVector<Stand> ergebnis;
    ergebnis.reserve(spiele.size());
    int index = 0;
    BierlachsRunde runde;
    for (const SpielEintrag &spiel : spiele) {
        zaehlen(runde.bilanz, spiel, spieler);
        Stand stand{};
        for (int sitz = 0; sitz < sitze(spieler); ++sitz)
            stand[static_cast<size_t>(sitz)] = rest(runde, sitz, maxPunkte);
        ergebnis.append(stand);
        // The round's last game: the next one starts from the maximum again.
        if (index < alle.size() && alle.at(index).beendet &&
            spiel[SpielEintrag::Zeile] == alle.at(index).letzteZeile) {
            ++index;
            runde = BierlachsRunde();
        }
    }
    return ergebnis;
}

int Bierlachs::rest(const BierlachsRunde &runde, int sitz, int maxPunkte)
{
    if (sitz < 0 || sitz > 3)
        return maxPunkte;
    return maxPunkte - runde.bilanz[static_cast<size_t>(sitz)].punkte;
}

int Bierlachs::bierlachs(const BierlachsRunde &runde, int spieler, int maxPunkte)
{
    if (!runde.beendet)
        return -1;
    int zahler = -1;
    for (int sitz = 0; sitz < sitze(spieler); ++sitz) {
        // Strictly more: on a tie the lower seat keeps it.
        if (zahler < 0 || rest(runde, sitz, maxPunkte) > rest(runde, zahler, maxPunkte))
            zahler = sitz;
    }
    return zahler;
}

QString Bierlachs::zeile(const QString &name, int rest, const SitzBilanz &bilanz)
{
    // One arg() call, so a "%" in the name is never taken for a placeholder.
    return QStringLiteral("%1: %2 G%3 V%4")
        .arg(name, QString::number(rest), QString::number(bilanz.gewonnen),
             QString::number(bilanz.verloren));
}
