#include "core/game/spielbeschreibung.h"

namespace SpielBeschreibung {

QString mit(int matadore)
{
    return QStringLiteral("Mit %1 Spiel %2 ").arg(matadore).arg(matadore + 1);
}

QString ohne(int matadore)
{
    return QStringLiteral("Ohne %1 Spiel %2 ").arg(matadore).arg(matadore + 1);
}

QString hand(int faktor)
{
    return QStringLiteral(" Hand %1 ").arg(faktor);
}

QString offen(int faktor)
{
    return QStringLiteral(" Offen %1 ").arg(faktor);
}

QString schneider(int faktor)
{
    return QStringLiteral(" Schneider %1").arg(faktor);
}

QString schneiderAngesagt(int faktor)
{
    return QStringLiteral(" Angesagt %1").arg(faktor);
}

QString schwarz(int faktor)
{
    return QStringLiteral(" Schwarz %1").arg(faktor);
}

QString schwarzAngesagt(int faktor)
{
    return QStringLiteral(" Angesagt %1").arg(faktor);
}

QString wert(int grundwert, int spielwert)
{
    return QStringLiteral(" x %1 = %2").arg(grundwert).arg(spielwert);
}

QString verloren(int doppelterWert)
{
    return QStringLiteral(" Verloren -%1").arg(doppelterWert);
}

QString spieler(const QString &name)
{
    return QStringLiteral(" Spieler %1").arg(name);
}

QString eingepasst()
{
    return QStringLiteral("Eingepasst.");
}

} // namespace SpielBeschreibung
