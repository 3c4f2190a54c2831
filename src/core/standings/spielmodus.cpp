#include "core/standings/spielmodus.h"

namespace Spielmodus {

QString menuText(int modus, int bierlachsMaxPunkte)
{
    switch (modus) {
    case Ergebnis:
        return QStringLiteral("Ergebnis Modus");
    case Bierlachs:
        return QStringLiteral("Bierlachs Modus - %1 Maxpunkte").arg(bierlachsMaxPunkte);
    default:
        return QStringLiteral("Turnier Modus");
    }
}

QString wiederherstellungsText(int modus, int bierlachsMaxPunkte)
{
    switch (modus) {
    case Ergebnis:
        return QStringLiteral("Ergebnis Mode");
    case Bierlachs:
        return QStringLiteral("Bierlachs Modus - %1 MaxPunkte").arg(bierlachsMaxPunkte);
    default:
        return QStringLiteral("Turnier Modus");
    }
}

} // namespace Spielmodus
