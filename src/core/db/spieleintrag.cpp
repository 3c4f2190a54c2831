#include "core/db/spieleintrag.h"

#include "core/db/statements.h"

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

QString SpielEintrag::insertStatement() const
{
    QString werte = QString::fromLatin1(Sql::InsertSpielListeValues);
    for (int wert : m_werte)
        werte = werte.arg(wert);
    return QLatin1String(Sql::InsertSpielListePrefix) + werte;
}

QString SpielEintrag::updateStatement() const
{
    QString text = QStringLiteral(
        "UPDATE SpielListe SET Spiel = %1, Mit = %2, Ohne = %3, Hand = %4, Schneider = %5, "
        "AngSchneider = %6, Schwarz = %7, AngSchwarz = %8, Offen = %9, Gewonnen = %10, Verloren = "
        "%11, Spieler1 = %12, Spieler2 = %13, Spieler3 = %14, Spieler4 = %15, Eingepasst = %16, "
        "Reizung = %17 WHERE Zeile = %18");
    for (int spalte = Spiel; spalte < AnzahlSpalten; ++spalte)
        text = text.arg(m_werte[spalte]);
    return text.arg(m_werte[Zeile]);
}
