#include "core/db/spieleintrag.h"

#include <QSqlRecord>
#include <QVariant>

const QStringList &SpielEintrag::spaltenNamen()
{
    static const QStringList namen{
        QStringLiteral("Zeile"),        QStringLiteral("Spiel"),      QStringLiteral("Mit"),
        QStringLiteral("Ohne"),         QStringLiteral("Hand"),       QStringLiteral("Schneider"),
        QStringLiteral("AngSchneider"), QStringLiteral("Schwarz"),    QStringLiteral("AngSchwarz"),
        QStringLiteral("Offen"),        QStringLiteral("Gewonnen"),   QStringLiteral("Verloren"),
        QStringLiteral("Spieler1"),     QStringLiteral("Spieler2"),   QStringLiteral("Spieler3"),
        QStringLiteral("Spieler4"),     QStringLiteral("Eingepasst"), QStringLiteral("Reizung")};
    return namen;
}

SpielEintrag SpielEintrag::ausRecord(const QSqlRecord &record)
{
    SpielEintrag eintrag;
    for (int spalte = 0; spalte < AnzahlSpalten; ++spalte) {
        // value() of an unknown or null field is an invalid/null QVariant, which reads as 0.
        eintrag.m_werte[spalte] = record.value(spaltenNamen().at(spalte)).toInt();
    }
    return eintrag;
}
