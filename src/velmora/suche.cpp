#include "velmora/suche.h"

#include <QNetworkDatagram>
#include <QNetworkInterface>
#include <QRandomGenerator>
#include <QUdpSocket>

namespace Velmora {

namespace {
// Pauses after the first beacons; later rounds come every two seconds with
// some jitter, so instances started together do not stay in step.
constexpr int anlauf[] = {300, 700};
constexpr int taktMs = 2000;
constexpr int zittern = 250;
} // namespace

Suche::Suche(const Kennung &eigene, quint16 udpPort, QObject *parent)
    : QObject(parent), m_socket(new QUdpSocket(this)), m_bake(kennungKodieren(eigene)),
      m_udpPort(udpPort)
{
    // Sharing the port lets several participants on one host, even in one
    // process, all hear every beacon.
    const auto teilen = QAbstractSocket::ShareAddress | QAbstractSocket::ReuseAddressHint;
    if (!m_socket->bind(QHostAddress::AnyIPv4, m_udpPort, teilen)) {
        qWarning("velmora: UDP port %u taken, others must find this participant", m_udpPort);
        m_socket->bind(QHostAddress::AnyIPv4, 0);
    }
    m_socket->setSocketOption(QAbstractSocket::MulticastTtlOption, 1);
    m_socket->setSocketOption(QAbstractSocket::MulticastLoopbackOption, 1);
    connect(m_socket, &QUdpSocket::readyRead, this, &Suche::lesen);
    m_takt.setSingleShot(true);
    connect(&m_takt, &QTimer::timeout, this, &Suche::takt);
    m_takt.start(0);
}

void Suche::takt()
{
    rufen();
    const int pause = m_runde < 2
                          ? anlauf[m_runde]
                          : taktMs - zittern + QRandomGenerator::global()->bounded(2 * zittern);
    ++m_runde;
    m_takt.start(pause);
    emit getaktet();
}

void Suche::rufen()
{
    // Read afresh each round: a cable plugged in later counts too.
    QSet<QString> gerufen;
    for (const QNetworkInterface &netz : QNetworkInterface::allInterfaces()) {
        const auto art = netz.flags();
        if (!art.testFlag(QNetworkInterface::IsUp) ||
            !art.testFlag(QNetworkInterface::CanBroadcast) ||
            art.testFlag(QNetworkInterface::IsLoopBack))
            continue;
        bool ipv4 = false;
        for (const QNetworkAddressEntry &eintrag : netz.addressEntries()) {
            if (eintrag.ip().protocol() != QAbstractSocket::IPv4Protocol)
                continue;
            ipv4 = true;
            const QHostAddress rund = eintrag.broadcast();
            if (!rund.isNull() && rund != QHostAddress(QHostAddress::Broadcast))
                m_socket->writeDatagram(m_bake, rund, m_udpPort);
        }
        if (ipv4) {
            gruppeRufen(netz);
            gerufen.insert(netz.name());
        }
    }
    if (gerufen.isEmpty()) {
        // Alone with loopback: its broadcast address and the group on lo
        // still reach every participant on this host.
        m_socket->writeDatagram(m_bake, QHostAddress(QStringLiteral("127.255.255.255")), m_udpPort);
        for (const QNetworkInterface &netz : QNetworkInterface::allInterfaces()) {
            if (netz.flags().testFlag(QNetworkInterface::IsLoopBack) &&
                netz.flags().testFlag(QNetworkInterface::IsUp)) {
                gruppeRufen(netz);
                gerufen.insert(netz.name());
            }
        }
    }
    // An interface that went away loses its membership; join again on return.
    m_beigetreten.intersect(gerufen);
}

void Suche::gruppeRufen(const QNetworkInterface &netz)
{
    const QHostAddress gruppe(QString::fromLatin1(multicastGruppe));
    if (!m_beigetreten.contains(netz.name()) && m_socket->joinMulticastGroup(gruppe, netz))
        m_beigetreten.insert(netz.name());
    m_socket->setMulticastInterface(netz);
    m_socket->writeDatagram(m_bake, gruppe, m_udpPort);
}

void Suche::lesen()
{
    while (m_socket->hasPendingDatagrams()) {
        const QNetworkDatagram datagramm = m_socket->receiveDatagram(1024);
        const std::optional<Kennung> kennung = kennungLesen(datagramm.data());
        if (kennung)
            emit gehoert(*kennung, datagramm.senderAddress().toIPv4Address());
    }
}

} // namespace Velmora
