#include "velmora/client.h"

#include "velmora/netz.h"

Client::Client(const QString &programName, QObject *parent)
    : QObject(parent), m_programName(Velmora::programmname(programName)),
      m_netz(new Velmora::Netz(m_programName, Velmora::einstellungenAusUmgebung(), this))
{
    connect(m_netz, &Velmora::Netz::beigetreten, this, &Client::newParticipant);
    connect(m_netz, &Velmora::Netz::nachricht, this, &Client::newMessage);
    connect(m_netz, &Velmora::Netz::gegangen, this, &Client::participantLeft);
    connect(m_netz, &Velmora::Netz::eigeneAdresseGeaendert, this, &Client::ownAddressChanged);
    connect(m_netz, &Velmora::Netz::abgewiesen, this, &Client::messageRejected);
}

QString Client::participantId() const
{
    return m_netz->eigeneId();
}

QStringList Client::participants() const
{
    return m_netz->teilnehmer();
}

QString Client::ownAddress() const
{
    return m_netz->eigeneAdresse();
}

QString Client::localAddress(const QString &participantId) const
{
    return m_netz->lokaleAdresse(participantId);
}

void Client::sendMessage(const QString &message)
{
    m_netz->senden(message);
}

void Client::setKey(const QByteArray &key)
{
    m_netz->schluesselSetzen(key);
}

int Client::rejectedMessages() const
{
    return m_netz->anzahlAbgewiesen();
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
