#include "core/link/nachricht.h"

#include <QRegularExpression>

QString Nachricht::text() const
{
    return QStringLiteral("%1:%2:%3$").arg(typ).arg(adresse, gruppe) +
           inhalt.join(QLatin1Char('@'));
}

std::optional<Nachricht> Nachricht::lesen(const QString &text)
{
    const QStringList teile = text.split(QLatin1Char('$'));
    if (teile.size() != 2)
        return std::nullopt;
    const QStringList kopf = teile.at(0).split(QLatin1Char(':'));
    if (kopf.size() != 3)
        return std::nullopt;
    Nachricht nachricht;
    nachricht.typ = kopf.at(0).toInt();
    nachricht.adresse = kopf.at(1);
    nachricht.gruppe = kopf.at(2);
    const QString &rest = teile.at(1);
    const int at = rest.indexOf(QLatin1Char('@'));
    if (nachricht.typ == BlattDatei && at >= 0)
        nachricht.inhalt = QStringList{rest.left(at), rest.mid(at + 1)};
    else
        nachricht.inhalt = rest.split(QLatin1Char('@'));
    return nachricht;
}

Kennung Kennung::aus(const QString &kennung)
{
    const QStringList teile = kennung.split(QLatin1Char('@'));
    if (teile.size() != 2)
        return {};
    static const QRegularExpression ipv4(
        QStringLiteral("^(25[0-5]|2[0-4][0-9]|1[0-9][0-9]|[1-9]?[0-9])(\\.(25[0-5]|2[0-4][0-9]|1[0-"
                       "9][0-9]|[1-9]?[0-9])){3}$"));
    Kennung teilnehmer;
    teilnehmer.name = teile.at(0);
    for (const QString &stueck : teile.at(1).split(QLatin1Char(':')))
        if (ipv4.match(stueck).hasMatch()) {
            teilnehmer.adresse = stueck;
            break;
        }
    return teilnehmer;
}
