#include "core/ranking/rangliste.h"

#include <QDate>
#include <QTextStream>

#include <algorithm>
#include <numeric>

RanglistenStand::Schritt RanglistenStand::aufnehmen(const QString &ergebnis)
{
    const QStringList f = ergebnis.split(QLatin1Char('|'));
    const QString &tisch = f.value(1);
    const auto vorTisch = [](const RanglistenZeile &z, const QString &t) { return z.tisch < t; };
    const auto nachTisch = [](const QString &t, const RanglistenZeile &z) { return t < z.tisch; };
    const auto bekannt = m_zeileVon.constFind(f.value(0));
    if (bekannt == m_zeileVon.cend()) {
        // After every row of its table, as a stable sort would put an appended row.
        const int nach =
            int(std::upper_bound(m_zeilen.cbegin(), m_zeilen.cend(), tisch, nachTisch) -
                m_zeilen.cbegin());
        m_zeilen.insert(nach, {f.value(0), tisch, f.value(2), f.value(3), f.value(4), f.value(5),
                               f.value(6), f.value(7)});
        zeilenZaehlen(nach, m_zeilen.size());
        return {-1, nach};
    }
    const int von = bekannt.value();
    RanglistenZeile &z = m_zeilen[von];
    const QString alterTisch = z.tisch;
    z.tisch = tisch;
    z.serie = f.value(2);
    z.punkte = f.value(3);
    z.gewonnen = f.value(4);
    z.verloren = f.value(5);
    z.kosten = f.value(6);
    if (tisch == alterTisch)
        return {von, von};
    // A stable sort keeps the row before the rows of its new table when it
    // comes from a lower one, after them when it comes from a higher one.
    const RanglistenZeile zeile = z;
    m_zeilen.remove(von);
    const auto anfang = m_zeilen.cbegin();
    const int nach =
        int((alterTisch < tisch ? std::lower_bound(anfang, m_zeilen.cend(), tisch, vorTisch)
                                : std::upper_bound(anfang, m_zeilen.cend(), tisch, nachTisch)) -
            anfang);
    m_zeilen.insert(nach, zeile);
    zeilenZaehlen(std::min(von, nach), std::max(von, nach) + 1);
    return {von, nach};
}

void RanglistenStand::zeilenZaehlen(int von, int bis)
{
    for (int i = von; i < bis; ++i)
        m_zeileVon.insert(m_zeilen.at(i).name, i);
}

void RanglistenStand::leeren()
{
    m_zeilen.clear();
    m_zeileVon.clear();
}

void RanglistenStand::tischreihenfolgeAuswerten()
{
    Rangliste::tischreihenfolgeAuswerten(m_zeilen);
}

namespace Rangliste {

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
