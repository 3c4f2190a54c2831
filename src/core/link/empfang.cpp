#include "core/link/empfang.h"

#include "core/game/spielwert.h"
#include "core/link/paarung.h"
#include "core/link/spielzeile.h"

namespace Empfang {

namespace {

Urteil annehmen()
{
    return {Urteil::Annehmen, QString()};
}

Urteil uebergehen()
{
    return {Urteil::Uebergehen, QString()};
}

Urteil abweisen(const QString &grund)
{
    return {Urteil::Abweisen, grund};
}

bool istZahl(const QString &text)
{
    bool ok = false;
    text.toInt(&ok);
    return ok;
}

// "name|table|series|points|won|lost|costs|-" and the member number; the
// reset form ends at the "-".
bool ergebnisGueltig(const QString &ergebnis)
{
    const QStringList f = ergebnis.split(QLatin1Char('|'));
    if (f.size() < 8 || f.size() > 9 || f.at(0).trimmed().isEmpty() ||
        f.at(0).size() > hoechsteNamenslaenge)
        return false;
    for (int i = 1; i <= 5; ++i)
        if (!istZahl(f.at(i)))
            return false;
    bool ok = false;
    f.at(6).toDouble(&ok);
    return ok;
}

// What only the manager sends.
bool managerTyp(int typ)
{
    return typ == Nachricht::TischVergeben || typ == Nachricht::SpielerListe ||
           typ == Nachricht::Auslosung || typ == Nachricht::Kosten;
}

Urteil vomManager(const Nachricht &n, const Lage &lage)
{
    switch (n.typ) {
    case Nachricht::TischVergeben:
        return lage.anMich ? annehmen() : uebergehen();
    case Nachricht::SpielerListe:
        if (n.inhalt.size() > hoechstSpieler)
            return abweisen(QStringLiteral("mehr als %1 Spieler").arg(hoechstSpieler));
        return annehmen();
    case Nachricht::Auslosung:
        if (!lage.anMich)
            return uebergehen();
        if (n.inhalt.size() > 2 + hoechstSitze)
            return abweisen(QStringLiteral("mehr als %1 Sitze").arg(hoechstSitze));
        return annehmen();
    case Nachricht::Kosten:
        return lage.anMich && n.gruppe == lage.gruppe ? annehmen() : uebergehen();
    default:
        return uebergehen();
    }
}

Urteil vonTisch(const QString &absenderId, const Nachricht &n, const Lage &lage)
{
    const Paarung &p = *lage.paarung;
    switch (n.typ) {
    case Nachricht::Ergebnisse:
        if (n.inhalt.size() > hoechstSitze)
            return abweisen(QStringLiteral("mehr als %1 Ergebnisse").arg(hoechstSitze));
        for (const QString &ergebnis : n.inhalt)
            if (!ergebnisGueltig(ergebnis))
                return abweisen(QStringLiteral("Ergebnis nicht lesbar"));
        return annehmen();
    case Nachricht::ZweitlisteAnfrage:
        // A second list never answers for the table it copies.
        return !p.istZweitliste() && n.inhalt.value(0).toInt() == lage.tischNr ? annehmen()
                                                                               : uebergehen();
    case Nachricht::ZweitlisteSpieler:
    case Nachricht::ZweitlisteAbgelehnt:
        if (!lage.anMich || (n.typ == Nachricht::ZweitlisteAbgelehnt && n.inhalt.size() != 2))
            return uebergehen();
        if (!p.angefragt())
            return abweisen(QStringLiteral("keine Zweitliste angefragt"));
        if (n.inhalt.value(0).toInt() != p.gepaarterTisch())
            return abweisen(QStringLiteral("nicht der angefragte Tisch"));
        if (n.inhalt.size() > 3 + hoechstSitze)
            return abweisen(QStringLiteral("mehr als %1 Spieler").arg(hoechstSitze));
        return annehmen();
    case Nachricht::ZweitlisteAbgemeldet:
        if (!lage.anMich)
            return uebergehen();
        if (!p.istErsteListe() || absenderId != p.zweitliste())
            return abweisen(QStringLiteral("nicht von der Zweitliste"));
        return annehmen();
    case Nachricht::TischNummer:
        return annehmen();
    case Nachricht::Zeile:
        // Every table sends its rows; only the paired second list compares them.
        if (!p.istZweitliste() ||
            n.inhalt.size() != SpielZeile::ersteSpielItem + SpielZeile::anzahlItems ||
            n.inhalt.at(0).toInt() != p.gepaarterTisch() || n.inhalt.at(1).toInt() != lage.serie ||
            n.gruppe != lage.gruppe)
            return uebergehen();
        if (p.hatZweitliste() && absenderId != p.ersteListe())
            return abweisen(QStringLiteral("nicht von der Erstliste"));
        return annehmen();
    case Nachricht::ZeileKopie: {
        if (!lage.anMich || n.gruppe != lage.gruppe)
            return uebergehen();
        if (!p.istZweitliste())
            return abweisen(QStringLiteral("keine Zweitliste"));
        if (absenderId != p.ersteListe())
            return abweisen(QStringLiteral("nicht von der Erstliste"));
        const std::optional<SpielEintrag> spiel = SpielZeile::spielAus(n.inhalt, 0);
        if (!spiel || n.inhalt.size() != SpielZeile::anzahlItems)
            return abweisen(QStringLiteral("kein Spiel"));
        const QString fehler = Spielwert::zeileFehler(*spiel, lage.spieler);
        return fehler.isEmpty() ? annehmen() : abweisen(fehler);
    }
    default:
        return managerTyp(n.typ) ? abweisen(QStringLiteral("nicht vom Tabulor")) : uebergehen();
    }
}

} // namespace

const QString &tischProgramm()
{
    static const QString name = QStringLiteral("Kartulo");
    return name;
}

const QString &managerProgramm()
{
    static const QString name = QStringLiteral("Tabulor");
    return name;
}

Urteil pruefen(const QString &absenderId, const Nachricht &n, const Lage &lage)
{
    const QString name = Kennung::aus(absenderId).name;
    if (name == tischProgramm())
        return vonTisch(absenderId, n, lage);
    if (name != managerProgramm())
        return uebergehen();
    if (absenderId == lage.managerId)
        return vomManager(n, lage);
    return managerTyp(n.typ) ? abweisen(QStringLiteral("nicht der verbundene Tabulor"))
                             : uebergehen();
}

} // namespace Empfang
