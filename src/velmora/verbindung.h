#pragma once

#include "velmora/protokoll.h"

#include <QObject>
#include <QTimer>

class QTcpSocket;

namespace Velmora {

// How long a link may stay quiet. The defaults are the protocol's; tests
// shorten them through the environment (see Netz).
struct Zeiten
{
    int pingMs = 5000;
    int stilleMs = 20000;
    int halloMs = 5000;
};

// One TCP link to another participant, from connect or accept through the
// hello exchange to its end. It reports what arrives; the mesh decides which
// links to keep.
class Verbindung : public QObject
{
    Q_OBJECT

public:
    // An accepted link, waiting for the opener's hello.
    Verbindung(QTcpSocket *socket, const Zeiten &zeiten, QObject *parent);
    // A link this end opens once starten() is called.
    Verbindung(quint32 adresse, quint16 port, const Kennung &eigene, const Zeiten &zeiten,
               QObject *parent);

    void starten();
    bool ausgehend() const { return m_ausgehend; }
    bool tcpSteht() const;
    bool steht() const { return m_steht; }
    const Kennung &gegenueber() const { return m_gegenueber; }
    quint32 adresse() const { return m_adresse; }
    // This end's address on the link, IPv4; 0 before it stands.
    quint32 lokaleAdresse() const;
    QString teilnehmerId() const;
    const QVector<Nachbar> &nachbarn() const { return m_nachbarn; }

    // Completes the hello exchange; the accepting end answers with its hello.
    void aufnehmen(const Kennung &eigene);
    void senden(const QByteArray &daten);
    // Ends a link that is not ending yet once pending writes are out;
    // abbrechen() ends any link at once.
    void schliessen();
    void abbrechen();

signals:
    void halloErhalten(Velmora::Verbindung *verbindung);
    void nachrichtErhalten(Velmora::Verbindung *verbindung, const QString &text);
    void gesiegeltErhalten(Velmora::Verbindung *verbindung, const Velmora::Gesiegelt &post);
    void nachbarnErhalten(Velmora::Verbindung *verbindung);
    // Emitted once; the object deletes itself afterwards.
    void beendet(Velmora::Verbindung *verbindung);

private:
    void einrichten();
    void lesen();
    bool verarbeiten(const Rahmen &rahmen);

    QTcpSocket *m_socket;
    Zeiten m_zeiten;
    bool m_ausgehend;
    quint32 m_adresse = 0;
    quint16 m_zielPort = 0;
    Kennung m_eigene;
    Kennung m_gegenueber;
    bool m_steht = false;
    bool m_schliesst = false;
    bool m_beendet = false;
    QVector<Nachbar> m_nachbarn;
    Rahmenleser m_leser;
    QTimer m_ping;
    QTimer m_frist;
};

} // namespace Velmora
