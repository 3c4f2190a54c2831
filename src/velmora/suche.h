#pragma once

#include "velmora/protokoll.h"

#include <QObject>
#include <QSet>
#include <QTimer>

class QNetworkInterface;
class QUdpSocket;

namespace Velmora {

// Announces this participant by UDP beacon and hears the beacons of others,
// its own included: broadcast and one multicast group on every IPv4
// interface that is up and can broadcast, loopback when there is none.
class Suche : public QObject
{
    Q_OBJECT

public:
    Suche(const Kennung &eigene, quint16 udpPort, QObject *parent);

signals:
    void gehoert(const Velmora::Kennung &kennung, quint32 absender);
    // Once per beacon round, so the mesh can retry what it heard of.
    void getaktet();

private:
    void takt();
    void rufen();
    void gruppeRufen(const QNetworkInterface &netz);
    void lesen();

    QUdpSocket *m_socket;
    QTimer m_takt;
    QByteArray m_bake;
    quint16 m_udpPort;
    int m_runde = 0;
    QSet<QString> m_beigetreten;
};

} // namespace Velmora
