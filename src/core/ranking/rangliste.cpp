#include "core/ranking/rangliste.h"

#include <QDate>
#include <QTextStream>

#include <algorithm>
#include <numeric>

namespace Rangliste {

void aufnehmen(QVector<RanglistenZeile> &zeilen, const QStringList &ergebnisse)
{
    for (const QString &ergebnis : ergebnisse) {
        const QStringList f = ergebnis.split(QLatin1Char('|'));
        const QString name = f.value(0);
        const auto gleich = [&name](const RanglistenZeile &z) { return z.name == name; };
        if (std::count_if(zeilen.cbegin(), zeilen.cend(), gleich) == 1) {
            RanglistenZeile &z = *std::find_if(zeilen.begin(), zeilen.end(), gleich);
            z.tisch = f.value(1);
            z.serie = f.value(2);
            z.punkte = f.value(3);
            z.gewonnen = f.value(4);
            z.verloren = f.value(5);
            z.kosten = f.value(6);
            continue;
        }
        // A name that stands twice is never updated again: each result adds a row.
        zeilen.append({name, f.value(1), f.value(2), f.value(3), f.value(4), f.value(5), f.value(6),
                       f.value(7)});
    }
    std::stable_sort(
        zeilen.begin(), zeilen.end(),
        [](const RanglistenZeile &a, const RanglistenZeile &b) { return a.tisch < b.tisch; });
}

QVector<int> tischplan(int spieler)
{
    int rest = spieler;
    int dreier = 0;
    // C++ division: the rest may go below zero, and then the loop stops.
    while (rest % 4 > 0) {
        rest -= 3;
        ++dreier;
    }
    QVector<int> tische(std::max(rest / 4, 0), 4);
    tische.insert(tische.size(), dreier, 3);
    return tische;
}

void tischreihenfolgeAuswerten(QVector<RanglistenZeile> &zeilen)
{
    QVector<int> reihenfolge(zeilen.size());
    std::iota(reihenfolge.begin(), reihenfolge.end(), 0);
    std::stable_sort(reihenfolge.begin(), reihenfolge.end(), [&zeilen](int a, int b) {
        return zeilen.at(a).punkte.toInt() > zeilen.at(b).punkte.toInt();
    });
    const QVector<int> plan = tischplan(zeilen.size());
    int naechster = 0;
    for (int tisch = 0; tisch < plan.size(); ++tisch)
        for (int sitz = 1; sitz <= plan.at(tisch) && naechster < reihenfolge.size(); ++sitz) {
            const QString &name = zeilen.at(reihenfolge.at(naechster++)).name;
            // The first row of that name takes the seat, as the name is the key.
            const auto erste =
                std::find_if(zeilen.begin(), zeilen.end(),
                             [&name](const RanglistenZeile &z) { return z.name == name; });
            erste->platz = QStringLiteral("%1 - %2").arg(tisch + 1).arg(sitz);
        }
}

namespace {

// Two significant digits, as a stream writes a double with precision 2:
// 8.5, 14, 1.2e+02.
QString kostenText(const QString &kosten)
{
    QString text;
    QTextStream strom(&text);
    strom.setRealNumberPrecision(2);
    strom << kosten.toDouble();
    return text;
}

} // namespace

QString textDatei(const QVector<RanglistenZeile> &zeilen)
{
    QString text;
    QTextStream strom(&text);
    const auto zeile = [&strom](const QString &name, const QString &tisch, const QString &serie,
                                const QString &punkte, const QString &gew, const QString &verl,
                                const QString &kosten, const QString &platz) {
        strom << name.leftJustified(25) << tisch.rightJustified(6) << serie.rightJustified(6)
              << punkte.rightJustified(7) << gew.rightJustified(5) << verl.rightJustified(5)
              << kosten.rightJustified(7) << ' ' << platz.rightJustified(10) << '\n';
    };
    zeile(QStringLiteral("Name"), QStringLiteral("Tisch"), QStringLiteral("Serie"),
          QStringLiteral("Punkte"), QStringLiteral("Gew"), QStringLiteral("Verl"),
          QStringLiteral("Kosten"), QStringLiteral("Tisch-Platz"));
    strom << QString(73, QLatin1Char('-')) << '\n';
    for (const RanglistenZeile &z : zeilen)
        zeile(z.name, QString::number(z.tisch.toInt()), QString::number(z.serie.toInt()),
              QString::number(z.punkte.toInt()), QString::number(z.gewonnen.toInt()),
              QString::number(z.verloren.toInt()), kostenText(z.kosten), z.platz);
    strom.flush();
    return text;
}

QString tabellenDatei(const QVector<RanglistenZeile> &zeilen)
{
    QString text = QStringLiteral("Name,Tisch,Serie,Punkte,Gewonnen,Verloren,Kosten,Tisch-Platz\n");
    for (const RanglistenZeile &z : zeilen)
        text += QStringList{z.name,
                            QString::number(z.tisch.toInt()),
                            QString::number(z.serie.toInt()),
                            QString::number(z.punkte.toInt()),
                            QString::number(z.gewonnen.toInt()),
                            QString::number(z.verloren.toInt()),
                            kostenText(z.kosten),
                            z.platz}
                    .join(QLatin1Char(',')) +
                QLatin1Char('\n');
    return text;
}

QString textDateiName(const QDate &datum)
{
    return QStringLiteral("%1Serie%1_Text.txt").arg(datum.toString(QStringLiteral("dd-MM-yy")));
}

QString tabellenDateiName(const QDate &datum)
{
    return QStringLiteral("%1Serie%1_Excel.txt").arg(datum.toString(QStringLiteral("dd-MM-yy")));
}

} // namespace Rangliste
