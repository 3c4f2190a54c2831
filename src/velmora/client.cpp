#include "velmora/client.h"

Client::Client(const QString &programName, QObject *parent)
    : QObject(parent), m_programName(programName)
{
}

void Client::sendMessage(const QString &message)
{
    // Until the endpoint joins a network it is alone: nobody receives.
    Q_UNUSED(message);
}

namespace Kartulo {

namespace {
QString alsText(int wert)
{
    return QString::number(wert);
}
QString alsText(bool wert)
{
    return wert ? QStringLiteral("1") : QStringLiteral("0");
}
} // namespace

QStringList mapFromSpiel(const SpielTupel &spiel)
{
    QStringList items;
    items.reserve(std::tuple_size<SpielTupel>::value);
    std::apply([&items](const auto &...feld) { (items.append(alsText(feld)), ...); }, spiel);
    return items;
}

} // namespace Kartulo
