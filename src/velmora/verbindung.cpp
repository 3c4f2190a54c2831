#include "velmora/verbindung.h"

#include <QHostAddress>
#include <QPointer>
#include <QTcpSocket>

namespace Velmora {

namespace {
// Qt's own buffer per read; our frame reader holds at most one frame beyond.
constexpr qint64 lesepuffer = 1024 * 1024;
// A peer that lets this much pile up unread is not keeping up; waiting longer
// would only grow our memory.
constexpr qint64 hoechsterStau = 64 * 1024 * 1024;
} // namespace

Verbindung::Verbindung(QTcpSocket *socket, const Zeiten &zeiten, QObject *parent)
    : QObject(parent), m_socket(socket), m_zeiten(zeiten), m_ausgehend(false),
      m_adresse(socket->peerAddress().toIPv4Address())
{
    m_socket->setParent(this);
    einrichten();
    m_frist.start(m_zeiten.halloMs);
}

Verbindung::Verbindung(quint32 adresse, quint16 port, const Kennung &eigene, const Zeiten &zeiten,
                       QObject *parent)
    : QObject(parent), m_socket(new QTcpSocket(this)), m_zeiten(zeiten), m_ausgehend(true),
      m_adresse(adresse), m_zielPort(port), m_eigene(eigene)
{
    einrichten();
    connect(m_socket, &QTcpSocket::connected, this,
            [this] { senden(rahmen(Art::Hallo, kennungKodieren(m_eigene))); });
}

void Verbindung::einrichten()
{
    m_socket->setReadBufferSize(lesepuffer);
    m_frist.setSingleShot(true);
    connect(&m_frist, &QTimer::timeout, this, &Verbindung::abbrechen);
    connect(&m_ping, &QTimer::timeout, this, [this] { senden(rahmen(Art::Ping)); });
    connect(m_socket, &QTcpSocket::readyRead, this, &Verbindung::lesen);
    connect(m_socket, &QTcpSocket::disconnected, this, [this] {
        lesen();
        abbrechen();
    });
    connect(m_socket, &QTcpSocket::errorOccurred, this, [this] {
        lesen();
        abbrechen();
    });
}

void Verbindung::starten()
{
    m_frist.start(m_zeiten.halloMs);
    m_socket->connectToHost(QHostAddress(m_adresse), m_zielPort);
}

bool Verbindung::tcpSteht() const
{
    return m_socket->state() == QAbstractSocket::ConnectedState;
}

quint32 Verbindung::lokaleAdresse() const
{
    bool ipv4 = false;
    const quint32 adresse = m_socket->localAddress().toIPv4Address(&ipv4);
    return ipv4 ? adresse : 0;
}

QString Verbindung::teilnehmerId() const
{
    return Velmora::teilnehmerId(m_gegenueber.programm, m_adresse, m_gegenueber.port);
}

void Verbindung::aufnehmen(const Kennung &eigene)
{
    if (!m_ausgehend)
        senden(rahmen(Art::Hallo, kennungKodieren(eigene)));
    m_steht = true;
    m_ping.start(m_zeiten.pingMs);
    m_frist.start(m_zeiten.stilleMs);
}

void Verbindung::senden(const QByteArray &daten)
{
    if (m_beendet || m_schliesst)
        return;
    m_socket->write(daten);
    if (m_socket->bytesToWrite() > hoechsterStau)
        abbrechen();
}

void Verbindung::schliessen()
{
    m_schliesst = true;
    m_ping.stop();
    m_frist.start(m_zeiten.halloMs);
    m_socket->disconnectFromHost();
}

void Verbindung::abbrechen()
{
    if (m_beendet)
        return;
    m_beendet = true;
    m_ping.stop();
    m_frist.stop();
    m_socket->abort();
    emit beendet(this);
    deleteLater();
}

void Verbindung::lesen()
{
    if (m_beendet || m_schliesst || m_socket->bytesAvailable() == 0)
        return;
    // Any byte counts as a sign of life; before the hello the deadline is
    // fixed, so a trickle cannot hold a slot open.
    if (m_steht) {
        m_ping.start();
        m_frist.start(m_zeiten.stilleMs);
    }
    m_leser.anhaengen(m_socket->readAll());
    const QPointer<Verbindung> selbst(this);
    Rahmen gelesen;
    while (m_leser.naechster(gelesen)) {
        if (!verarbeiten(gelesen)) {
            abbrechen();
            return;
        }
        if (!selbst || m_beendet || m_schliesst)
            return;
    }
    if (m_leser.kaputt())
        abbrechen();
}

bool Verbindung::verarbeiten(const Rahmen &gelesen)
{
    switch (gelesen.art) {
    case Art::Hallo: {
        const std::optional<Kennung> kennung = kennungLesen(gelesen.nutzlast);
        if (!kennung)
            return false;
        m_gegenueber = *kennung;
        emit halloErhalten(this);
        return true;
    }
    case Art::Nachricht: {
        const std::optional<QString> text = utf8Lesen(gelesen.nutzlast);
        if (!text)
            return false;
        emit nachrichtErhalten(this, *text);
        return true;
    }
    case Art::Gesiegelt: {
        const std::optional<Gesiegelt> post = gesiegeltLesen(gelesen.nutzlast);
        if (!post)
            return false;
        emit gesiegeltErhalten(this, *post);
        return true;
    }
    case Art::Ping:
        senden(rahmen(Art::Pong));
        return true;
    case Art::Pong:
        return true;
    case Art::Nachbarn: {
        const std::optional<QVector<Nachbar>> nachbarn = nachbarnLesen(gelesen.nutzlast);
        if (!nachbarn)
            return false;
        m_nachbarn = *nachbarn;
        emit nachbarnErhalten(this);
        return true;
    }
    }
    return false;
}

} // namespace Velmora
