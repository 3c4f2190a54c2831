#include "velmora/netz.h"

#include "velmora/suche.h"

#include <QHostAddress>
#include <QNetworkInterface>
#include <QRandomGenerator>
#include <QTcpSocket>

#include <algorithm>
#include <chrono>

namespace Velmora {

namespace {
// Connections that have not said hello yet; more are refused at once, so a
// flood of them cannot cost memory or hide a real participant for long.
constexpr int hoechstHalboffen = 16;
// Attempts under way at the same time; a list full of dead entries must not
// open sockets without end.
constexpr int hoechstAusgehend = 64;

int ausUmgebung(const char *name, int standard)
{
    const int wert = qEnvironmentVariableIntValue(name);
    return wert > 0 ? wert : standard;
}
} // namespace

Einstellungen einstellungenAusUmgebung()
{
    Einstellungen einstellungen;
    Zeiten &zeiten = einstellungen.zeiten;
    zeiten.pingMs = ausUmgebung("VELMORA_PING_MS", zeiten.pingMs);
    zeiten.stilleMs = ausUmgebung("VELMORA_TIMEOUT_MS", zeiten.stilleMs);
    zeiten.halloMs = ausUmgebung("VELMORA_HELLO_MS", zeiten.halloMs);
    einstellungen.udpPort = quint16(ausUmgebung("VELMORA_UDP_PORT", einstellungen.udpPort));
    return einstellungen;
}

Netz::Netz(const QString &programm, const Einstellungen &einstellungen, QObject *parent)
    : Anschluss(parent), m_einstellungen(einstellungen)
{
    m_eigene.programm = programm;
    m_eigene.instanz = QRandomGenerator::system()->generate64();
    if (!m_server.listen(QHostAddress::AnyIPv4))
        qWarning("velmora: no TCP port: %s", qPrintable(m_server.errorString()));
    m_eigene.port = m_server.serverPort();
    connect(&m_server, &QTcpServer::newConnection, this, &Netz::annehmen);
    auto *suche = new Suche(m_eigene, m_einstellungen.udpPort, this);
    connect(suche, &Suche::gehoert, this, [this](const Kennung &kennung, quint32 adresse) {
        if (!bekannt(kennung.instanz, adresse, kennung.port))
            verbinden(adresse, kennung.port, kennung.instanz);
    });
    connect(suche, &Suche::getaktet, this, &Netz::nachbarnAnrufen);
    // A table switched on before the WLAN takes its address when it comes.
    connect(suche, &Suche::getaktet, this, &Netz::adresseLesen);
    adresseLesen();
}

QString Netz::eigeneId() const
{
    return m_eigene.programm % QLatin1Char('@') % m_eigeneAdresse % QLatin1Char(':') %
           QString::number(m_eigene.port);
}

QString lanAdresse()
{
    const auto netze = QNetworkInterface::allInterfaces();
    for (const QNetworkInterface &netz : netze) {
        // A bridge without a cable or guest (Docker's, say) is up but not running.
        const auto art = netz.flags();
        if (!art.testFlag(QNetworkInterface::IsUp) || !art.testFlag(QNetworkInterface::IsRunning) ||
            !art.testFlag(QNetworkInterface::CanBroadcast) ||
            art.testFlag(QNetworkInterface::IsLoopBack))
            continue;
        const auto eintraege = netz.addressEntries();
        const auto ipv4 = std::find_if(eintraege.cbegin(), eintraege.cend(), [](const auto &e) {
            return e.ip().protocol() == QAbstractSocket::IPv4Protocol;
        });
        if (ipv4 != eintraege.cend())
            return ipv4->ip().toString();
    }
    return QHostAddress(QHostAddress::LocalHost).toString();
}

void Netz::adresseLesen()
{
    const QString text = lanAdresse();
    if (text == m_eigeneAdresse)
        return;
    m_eigeneAdresse = text;
    emit eigeneAdresseGeaendert(text);
}

QString Netz::lokaleAdresse(const QString &id) const
{
    for (const Verbindung *verbindung : m_stehend)
        if (verbindung->teilnehmerId() == id)
            return QHostAddress(verbindung->lokaleAdresse()).toString();
    return QString();
}

QStringList Netz::teilnehmer() const
{
    QStringList ids;
    for (const Verbindung *verbindung : m_stehend)
        ids.append(verbindung->teilnehmerId());
    ids.sort();
    return ids;
}

void Netz::senden(const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    // A copy: a peer that cannot keep up leaves the mesh while we write.
    const auto alle = m_stehend.values();
    if (m_schluessel.isEmpty()) {
        const QByteArray daten = rahmen(Art::Nachricht, utf8);
        for (Verbindung *verbindung : alle)
            verbindung->senden(daten);
        return;
    }
    // From the clock, so that a restarted sender goes on above what its peers
    // accepted before without storing anything.
    const auto jetzt = std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::system_clock::now().time_since_epoch());
    m_zaehler = qMax(m_zaehler + 1, quint64(jetzt.count()));
    // Each peer knows this one by the local address of its link; links over
    // the same interface share one tag.
    QHash<quint32, QByteArray> jeAdresse;
    for (Verbindung *verbindung : alle) {
        const quint32 lokal = verbindung->lokaleAdresse();
        auto daten = jeAdresse.find(lokal);
        if (daten == jeAdresse.end()) {
            const QString id = teilnehmerId(m_eigene.programm, lokal, m_eigene.port);
            const QByteArray mitSiegel =
                gesiegeltKodieren(m_zaehler, siegel(m_schluessel, id, m_zaehler, utf8), utf8);
            daten = jeAdresse.insert(lokal, rahmen(Art::Gesiegelt, mitSiegel));
        }
        verbindung->senden(*daten);
    }
}

void Netz::annehmen()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        if (m_eingehend.size() >= hoechstHalboffen) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        auto *verbindung = new Verbindung(socket, m_einstellungen.zeiten, this);
        m_eingehend.insert(verbindung);
        verdrahten(verbindung);
    }
}

void Netz::verdrahten(Verbindung *verbindung)
{
    connect(verbindung, &Verbindung::halloErhalten, this, &Netz::halloErhalten);
    connect(verbindung, &Verbindung::nachrichtErhalten, this,
            [this](Verbindung *von, const QString &text) {
                // With a key, a message without a tag is as good as a forged one.
                if (m_schluessel.isEmpty())
                    emit nachricht(von->teilnehmerId(), text);
                else
                    abweisen(von->teilnehmerId());
            });
    connect(verbindung, &Verbindung::gesiegeltErhalten, this, &Netz::gesiegeltErhalten);
    connect(verbindung, &Verbindung::nachbarnErhalten, this, &Netz::nachbarnAnrufen);
    connect(verbindung, &Verbindung::beendet, this, &Netz::beendet);
}

bool Netz::bekannt(quint64 instanz, quint32 adresse, quint16 port) const
{
    if (instanz == m_eigene.instanz || m_stehend.contains(instanz) || m_ausgehend.contains(instanz))
        return true;
    // A list may name a participant under a stale id; its address is enough.
    for (const Verbindung *verbindung : m_stehend) {
        if (verbindung->adresse() == adresse && verbindung->gegenueber().port == port)
            return true;
    }
    return false;
}

void Netz::verbinden(quint32 adresse, quint16 port, quint64 instanz)
{
    if (m_ausgehend.size() >= hoechstAusgehend)
        return;
    auto *verbindung = new Verbindung(adresse, port, m_eigene, m_einstellungen.zeiten, this);
    m_ausgehend.insert(instanz, verbindung);
    verdrahten(verbindung);
    verbindung->starten();
}

void Netz::halloErhalten(Verbindung *verbindung)
{
    const quint64 instanz = verbindung->gegenueber().instanz;
    if (verbindung->ausgehend()) {
        for (auto it = m_ausgehend.begin(); it != m_ausgehend.end();) {
            if (it.value() == verbindung)
                it = m_ausgehend.erase(it);
            else
                ++it;
        }
    } else {
        m_eingehend.remove(verbindung);
    }
    // The older link stays; the other end opened this one without need.
    if (instanz == m_eigene.instanz || m_stehend.contains(instanz)) {
        verbindung->schliessen();
        return;
    }
    Verbindung *eigene = m_ausgehend.value(instanz);
    if (!verbindung->ausgehend() && eigene) {
        // Both ends dialled at once: the link opened by the lower instance id
        // wins. Our own attempt only competes once it reached the other end.
        if (eigene->tcpSteht() && m_eigene.instanz < instanz) {
            verbindung->schliessen();
            return;
        }
        m_ausgehend.remove(instanz);
        eigene->schliessen();
    }
    aufnehmen(verbindung);
}

void Netz::gesiegeltErhalten(Verbindung *von, const Gesiegelt &post)
{
    const QString id = von->teilnehmerId();
    // Without a key there is nothing to check against; the text still counts.
    if (!m_schluessel.isEmpty()) {
        const auto zuletzt = m_zuletzt.constFind(id);
        const bool wiederholt = zuletzt != m_zuletzt.cend() && post.zaehler <= *zuletzt;
        if (wiederholt || !siegelStimmt(m_schluessel, id, post)) {
            abweisen(id);
            return;
        }
        m_zuletzt.insert(id, post.zaehler);
    }
    emit nachricht(id, post.text);
}

void Netz::abweisen(const QString &id)
{
    ++m_abgewiesen;
    emit abgewiesen(id);
}

void Netz::aufnehmen(Verbindung *verbindung)
{
    verbindung->aufnehmen(m_eigene);
    m_stehend.insert(verbindung->gegenueber().instanz, verbindung);
    // A link over an interface that came up since the last round.
    adresseLesen();
    nachbarnVerteilen();
    emit beigetreten(verbindung->teilnehmerId());
}

void Netz::beendet(Verbindung *verbindung)
{
    m_eingehend.remove(verbindung);
    for (auto it = m_ausgehend.begin(); it != m_ausgehend.end();) {
        if (it.value() == verbindung)
            it = m_ausgehend.erase(it);
        else
            ++it;
    }
    const quint64 instanz = verbindung->gegenueber().instanz;
    if (verbindung->steht() && m_stehend.value(instanz) == verbindung) {
        m_stehend.remove(instanz);
        nachbarnVerteilen();
        emit gegangen(verbindung->teilnehmerId());
    }
}

void Netz::nachbarnVerteilen()
{
    QVector<Nachbar> liste;
    for (const Verbindung *verbindung : m_stehend)
        liste.append(Nachbar{verbindung->adresse(), verbindung->gegenueber().port,
                             verbindung->gegenueber().instanz});
    const QByteArray daten = rahmen(Art::Nachbarn, nachbarnKodieren(liste));
    const auto alle = m_stehend.values();
    for (Verbindung *verbindung : alle)
        verbindung->senden(daten);
}

void Netz::nachbarnAnrufen()
{
    const auto alle = m_stehend.values();
    for (const Verbindung *von : alle) {
        for (const Nachbar &nachbar : von->nachbarn()) {
            if (nachbar.adresse == 0 || nachbar.port == 0)
                continue;
            // A neighbour on the sender's own host is reached at the sender's address.
            const quint32 adresse =
                QHostAddress(nachbar.adresse).isLoopback() ? von->adresse() : nachbar.adresse;
            if (!bekannt(nachbar.instanz, adresse, nachbar.port))
                verbinden(adresse, nachbar.port, nachbar.instanz);
        }
    }
}

} // namespace Velmora
