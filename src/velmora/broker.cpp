#include "velmora/broker.h"

#include "velmora/netz.h"
#include "velmora/protokoll.h"

#include <QDateTime>
#include <QHostAddress>
#include <QSocketNotifier>
#include <QStringBuilder>
#include <QTcpSocket>
#include <QThread>

#include <mosquitto.h>
#include <mqtt_protocol.h>
#include <sys/socket.h>

#include <algorithm>
#include <mutex>

namespace Velmora {

namespace {

// The broker hears nothing for 1.5 times this and gives the participant up:
// a table gone without a word is noticed within 12 s.
constexpr int keepaliveS = 8;
// A session outlives a broker restart and a manager away for a day.
constexpr int sitzungS = 2 * 24 * 3600;
constexpr int taktMs = 200;
constexpr int probeMs = 3000;
constexpr int nochmalMs = 1000;
// A broker that refuses this participant is not asked every second.
constexpr int abgelehntMs = 5000;
// As much as the LAN link holds for a slow peer.
constexpr qint64 hoechstWartend = 64 * 1024 * 1024;

const char textOnline[] = "online";
const char textOffline[] = "offline";

void bibliothekStarten()
{
    static std::once_flag einmal;
    std::call_once(einmal, [] { mosquitto_lib_init(); });
}

QString eigenschaft(const mosquitto_property *eigenschaften, const char *name)
{
    for (const mosquitto_property *p = eigenschaften; p; p = mosquitto_property_next(p)) {
        char *schluessel = nullptr;
        char *wert = nullptr;
        if (mosquitto_property_identifier(p) == MQTT_PROP_USER_PROPERTY &&
            mosquitto_property_read_string_pair(p, MQTT_PROP_USER_PROPERTY, &schluessel, &wert,
                                                false)) {
            const bool gesucht = qstrcmp(schluessel, name) == 0;
            const QString text = QString::fromUtf8(wert);
            free(schluessel);
            free(wert);
            if (gesucht)
                return text;
        }
    }
    return QString();
}

// The address this end of the socket has, as the broker sees it.
QString lokalesEnde(int socket)
{
    sockaddr_storage ende{};
    socklen_t laenge = sizeof ende;
    if (socket < 0 || getsockname(socket, reinterpret_cast<sockaddr *>(&ende), &laenge) != 0)
        return QString();
    QHostAddress adresse(reinterpret_cast<sockaddr *>(&ende));
    bool ipv4 = false;
    const quint32 zahl = adresse.toIPv4Address(&ipv4);
    return ipv4 ? QHostAddress(zahl).toString() : adresse.toString();
}

bool gueltigeAdresse(const QString &text)
{
    QHostAddress adresse;
    return adresse.setAddress(text) && adresse.protocol() == QAbstractSocket::IPv4Protocol;
}

struct Eigenschaften
{
    mosquitto_property *liste = nullptr;
    ~Eigenschaften() { mosquitto_property_free_all(&liste); }
    void paar(const char *name, const QString &wert)
    {
        mosquitto_property_add_string_pair(&liste, MQTT_PROP_USER_PROPERTY, name,
                                           wert.toUtf8().constData());
    }
};

} // namespace

QString Broker::Anwesend::id() const
{
    return programm % QLatin1Char('@') % adresse % QLatin1Char(':');
}

Broker::Broker(const QString &programm, const Zugang &zugang, QObject *parent)
    : Anschluss(parent), m_programm(programm), m_zugang(zugang), m_eigeneAdresse(lanAdresse())
{
    bibliothekStarten();
    m_zaehler = quint64(QDateTime::currentMSecsSinceEpoch()) * 1000;
    const QByteArray identitaet = zugang.identitaet.toUtf8();
    m_mosq = mosquitto_new(identitaet.constData(), false, this);
    mosquitto_int_option(m_mosq, MOSQ_OPT_PROTOCOL_VERSION, MQTT_PROTOCOL_V5);
    // A row must not wait for the acknowledgement of the last packet: with
    // Nagle's algorithm it did, up to 40 ms behind every PUBACK this end sent.
    mosquitto_int_option(m_mosq, MOSQ_OPT_TCP_NODELAY, 1);
    mosquitto_tls_psk_set(m_mosq, zugang.schluessel.toHex().constData(), identitaet.constData(),
                          nullptr);
    mosquitto_connect_v5_callback_set(m_mosq, &Broker::beimVerbinden);
    mosquitto_publish_v5_callback_set(m_mosq, &Broker::beimVeroeffentlichen);
    mosquitto_message_v5_callback_set(m_mosq, &Broker::beiNachricht);
    anwesenheitMelden(false);

    m_takt.setInterval(taktMs);
    connect(&m_takt, &QTimer::timeout, this, &Broker::pflegen);
    m_nochmal.setSingleShot(true);
    connect(&m_nochmal, &QTimer::timeout, this, &Broker::versuchen);
    versuchen();
}

Broker::~Broker()
{
    if (m_offen) {
        // The will says "offline" at once; what is still queued goes first.
        mosquitto_disconnect_v5(m_mosq, MQTT_RC_DISCONNECT_WITH_WILL_MSG, nullptr);
        for (int runde = 0; runde < 40 && mosquitto_want_write(m_mosq); ++runde) {
            if (mosquitto_loop_write(m_mosq, 1) != MOSQ_ERR_SUCCESS)
                break;
            QThread::msleep(25);
        }
    }
    m_lesen.reset();
    m_schreiben.reset();
    mosquitto_destroy(m_mosq);
}

QString Broker::eigeneId() const
{
    return m_programm % QLatin1Char('@') % m_eigeneAdresse % QLatin1Char(':') % m_zugang.identitaet;
}

QStringList Broker::teilnehmer() const
{
    QStringList ids;
    for (auto it = m_anwesend.cbegin(); it != m_anwesend.cend(); ++it)
        if (it->online)
            ids.append(it->id() + it.key());
    ids.sort();
    return ids;
}

QString Broker::lokaleAdresse(const QString &id) const
{
    return m_offen && teilnehmer().contains(id) ? m_eigeneAdresse : QString();
}

void Broker::versuchen()
{
    if (m_probe || m_offen)
        return;
    // The library connects blocking; only a broker that answers is handed to it,
    // so an unreachable one never freezes the window.
    auto *sonde = new QTcpSocket(this);
    m_probe = sonde;
    // Connected, failed or timed out: whichever comes first decides.
    auto fertig = [this, sonde](bool erreicht, const QString &grund) {
        if (m_probe != sonde)
            return;
        m_probe = nullptr;
        sonde->disconnect(this);
        sonde->abort();
        sonde->deleteLater();
        if (erreicht)
            anmelden();
        else
            verloren(grund);
    };
    connect(sonde, &QTcpSocket::connected, this, [fertig] { fertig(true, QString()); });
    connect(sonde, &QTcpSocket::errorOccurred, this,
            [sonde, fertig] { fertig(false, sonde->errorString()); });
    QTimer::singleShot(probeMs, sonde, [fertig] { fertig(false, QStringLiteral("timed out")); });
    sonde->connectToHost(m_zugang.rechner, m_zugang.port);
}

void Broker::anmelden()
{
    Eigenschaften eigenschaften;
    mosquitto_property_add_int32(&eigenschaften.liste, MQTT_PROP_SESSION_EXPIRY_INTERVAL, sitzungS);
    const int rc =
        mosquitto_connect_bind_v5(m_mosq, m_zugang.rechner.toUtf8().constData(), m_zugang.port,
                                  keepaliveS, nullptr, eigenschaften.liste);
    if (rc != MOSQ_ERR_SUCCESS) {
        verloren(QString::fromUtf8(mosquitto_strerror(rc)));
        return;
    }
    const int socket = mosquitto_socket(m_mosq);
    m_lesen = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Read);
    connect(m_lesen.get(), &QSocketNotifier::activated, this, &Broker::lesen);
    m_schreiben = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Write);
    connect(m_schreiben.get(), &QSocketNotifier::activated, this, &Broker::schreiben);
    m_takt.start();
    schreibenAnmelden();
}

void Broker::beimVerbinden(mosquitto *, void *selbst, int rc, int flags, const mosquitto_property *)
{
    static_cast<Broker *>(selbst)->verbunden(rc, flags & 1);
}

void Broker::verbunden(int rc, bool sitzungDa)
{
    if (rc != 0) {
        verloren(QString::fromUtf8(mosquitto_reason_string(rc)));
        m_nochmal.start(abgelehntMs);
        return;
    }
    m_offen = true;
    m_letzterGrund.clear();
    const QString adresse = lokalesEnde(mosquitto_socket(m_mosq));
    if (!adresse.isEmpty() && adresse != m_eigeneAdresse) {
        m_eigeneAdresse = adresse;
        emit eigeneAdresseGeaendert(adresse);
    }
    anwesenheitMelden(true);
    // Presence is always read again: who is there now, after any break.
    QByteArray themen[4];
    char *zeiger[4];
    const QStringList abos = Themen::abonnements(m_zugang.identitaet);
    for (int i = 0; i < abos.size(); ++i) {
        themen[i] = abos.at(i).toUtf8();
        zeiger[i] = themen[i].data();
    }
    mosquitto_subscribe_v5(m_mosq, nullptr, zeiger[0], 1, MQTT_SUB_OPT_NO_LOCAL, nullptr);
    // The broker kept what was subscribed and queued what came meanwhile; a
    // fresh start of this program still wants the kept state once.
    if (!sitzungDa || std::exchange(m_ersteVerbindung, false))
        mosquitto_subscribe_multiple(m_mosq, nullptr, abos.size() - 1, zeiger + 1, 1,
                                     MQTT_SUB_OPT_NO_LOCAL, nullptr);
    emit zustandGeaendert(true, QString());
    const QList<Wartend> wartend = std::exchange(m_wartend, {});
    m_wartendBytes = 0;
    for (const Wartend &w : wartend)
        veroeffentlichen(w.thema, w.nutzlast, w.behalten, w.nummer);
    schreibenAnmelden();
}

void Broker::verloren(const QString &grund)
{
    m_takt.stop();
    m_lesen.reset();
    m_schreiben.reset();
    const bool warOffen = std::exchange(m_offen, false);
    // What the broker has not confirmed goes again when it is back; should the
    // library send it as well, the receivers know the number.
    for (auto it = m_unbestaetigt.cbegin(); it != m_unbestaetigt.cend(); ++it) {
        m_wartend.append(*it);
        m_wartendBytes += it->nutzlast.size();
    }
    m_unbestaetigt.clear();
    std::sort(m_wartend.begin(), m_wartend.end(),
              [](const Wartend &a, const Wartend &b) { return a.nummer < b.nummer; });
    // Those present stay so: the broker keeps their sessions, and who really
    // went is in the presence read when it is back.
    if (warOffen || grund != m_letzterGrund) {
        m_letzterGrund = grund;
        emit zustandGeaendert(false, grund);
    }
    if (!m_nochmal.isActive())
        m_nochmal.start(nochmalMs);
}

void Broker::lesen()
{
    weiter(mosquitto_loop_read(m_mosq, 1));
}

void Broker::schreiben()
{
    weiter(mosquitto_loop_write(m_mosq, 1));
}

void Broker::pflegen()
{
    weiter(mosquitto_loop_misc(m_mosq));
}

void Broker::weiter(int rc)
{
    if (rc != MOSQ_ERR_SUCCESS)
        verloren(QString::fromUtf8(mosquitto_strerror(rc)));
    else
        schreibenAnmelden();
}

void Broker::schreibenAnmelden()
{
    if (m_schreiben)
        m_schreiben->setEnabled(mosquitto_want_write(m_mosq));
}

void Broker::anwesenheitMelden(bool online)
{
    Eigenschaften eigenschaften;
    eigenschaften.paar("programm", m_programm);
    eigenschaften.paar("adresse", m_eigeneAdresse);
    const QByteArray thema = Themen::anwesenheit(m_zugang.identitaet).toUtf8();
    // The will is set before every connection, with the address it had last.
    if (mosquitto_will_set_v5(m_mosq, thema.constData(), int(sizeof textOffline - 1), textOffline,
                              1, true, eigenschaften.liste) == MOSQ_ERR_SUCCESS)
        eigenschaften.liste = nullptr; // the library owns them now
    if (online) {
        Eigenschaften jetzt;
        jetzt.paar("programm", m_programm);
        jetzt.paar("adresse", m_eigeneAdresse);
        mosquitto_publish_v5(m_mosq, nullptr, thema.constData(), int(sizeof textOnline - 1),
                             textOnline, 1, true, jetzt.liste);
    }
}

void Broker::beimVeroeffentlichen(mosquitto *, void *selbst, int mid, int rc,
                                  const mosquitto_property *)
{
    auto *broker = static_cast<Broker *>(selbst);
    broker->m_unbestaetigt.remove(mid);
    if (rc >= 0x80)
        emit broker->verweigert(QString::fromUtf8(mosquitto_reason_string(rc)));
}

void Broker::beiNachricht(mosquitto *, void *selbst, const mosquitto_message *nachricht,
                          const mosquitto_property *eigenschaften)
{
    auto *broker = static_cast<Broker *>(selbst);
    const QString thema = QString::fromUtf8(nachricht->topic);
    const QByteArray nutzlast = QByteArray::fromRawData(
        static_cast<const char *>(nachricht->payload), std::max(0, nachricht->payloadlen));
    const QString wer = Themen::anwesend(thema);
    if (!wer.isEmpty())
        broker->anwesenheit(wer, QString::fromUtf8(nutzlast), eigenschaften);
    else
        broker->empfangen(thema, nutzlast, eigenschaften);
}

void Broker::anwesenheit(const QString &identitaet, const QString &text,
                         const mosquitto_property *eigenschaften)
{
    if (identitaet == m_zugang.identitaet)
        return;
    Anwesend neu = m_anwesend.value(identitaet);
    const QString programm = eigenschaft(eigenschaften, "programm");
    const QString adresse = eigenschaft(eigenschaften, "adresse");
    if (!programm.isEmpty() || !adresse.isEmpty()) {
        if (programmname(programm) != programm || !gueltigeAdresse(adresse)) {
            verwerfen(identitaet, "presence without a valid program name and address");
            return;
        }
        neu.programm = programm;
        neu.adresse = adresse;
    }
    neu.online = text == QLatin1String(textOnline) && !neu.programm.isEmpty();
    const Anwesend alt = m_anwesend.value(identitaet);
    m_anwesend.insert(identitaet, neu);
    const bool gleich = alt.online == neu.online && alt.id() == neu.id();
    if (!gleich && alt.online)
        emit gegangen(alt.id() + identitaet);
    if (!gleich && neu.online)
        emit beigetreten(neu.id() + identitaet);
    if (neu.programm.isEmpty())
        return;
    // What its session held came before the presence that names the sender.
    const QList<QString> frueher = m_unbekannt.take(identitaet);
    for (const QString &text : frueher) {
        m_unbekanntBytes -= text.size();
        emit nachricht(neu.id() + identitaet, text);
    }
}

void Broker::empfangen(const QString &thema, const QByteArray &nutzlast,
                       const mosquitto_property *eigenschaften)
{
    const QString wer = Themen::absender(thema, m_zugang.identitaet);
    if (wer == m_zugang.identitaet)
        return;
    if (wer.isEmpty()) {
        verwerfen(thema, "topic outside the tree");
        return;
    }
    bool zahl = false;
    const quint64 nummer = eigenschaft(eigenschaften, "seq").toULongLong(&zahl);
    const std::optional<QString> text = utf8Lesen(nutzlast);
    if (!zahl || !text || nutzlast.size() > hoechsteNachricht) {
        verwerfen(wer, "message without a number, too long or no UTF-8");
        return;
    }
    if (!m_doppelt.neu(wer, nummer))
        return;
    const auto bekannt = m_anwesend.constFind(wer);
    if (bekannt != m_anwesend.cend() && !bekannt->programm.isEmpty()) {
        emit nachricht(bekannt->id() + wer, *text);
        return;
    }
    // Queued for this participant while it was away, before the presence
    // that names its sender: kept until that comes.
    if (m_unbekanntBytes + text->size() > hoechstWartend) {
        verwerfen(wer, "too much from a sender without presence");
        return;
    }
    m_unbekannt[wer].append(*text);
    m_unbekanntBytes += text->size();
}

void Broker::verwerfen(const QString &id, const char *grund)
{
    ++m_abgewiesen;
    qWarning("velmora: dropped from %s: %s", qPrintable(id), grund);
    emit abgewiesen(id);
}

void Broker::senden(const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    m_zaehler = std::max(m_zaehler + 1, quint64(QDateTime::currentMSecsSinceEpoch()) * 1000);
    const Themen::Ziel ziel =
        Themen::ziel(text, m_zugang.identitaet, m_eigeneAdresse, [this](const QString &adresse) {
            QString gefunden;
            for (auto it = m_anwesend.cbegin(); it != m_anwesend.cend(); ++it)
                if (it->online && it->adresse == adresse)
                    gefunden = it.key();
            return gefunden;
        });
    if (m_offen) {
        veroeffentlichen(ziel.thema, utf8, ziel.behalten, m_zaehler);
        return;
    }
    if (m_wartendBytes + utf8.size() > hoechstWartend) {
        qWarning("velmora: broker out of reach and %lld bytes waiting; message not kept",
                 m_wartendBytes);
        return;
    }
    m_wartend.append({ziel.thema, utf8, ziel.behalten, m_zaehler});
    m_wartendBytes += utf8.size();
}

bool Broker::veroeffentlichen(const QString &thema, const QByteArray &nutzlast, bool behalten,
                              quint64 nummer)
{
    Eigenschaften eigenschaften;
    eigenschaften.paar("seq", QString::number(nummer));
    const int rc =
        mosquitto_publish_v5(m_mosq, nullptr, thema.toUtf8().constData(), nutzlast.size(),
                             nutzlast.constData(), 1, behalten, eigenschaften.liste);
    if (rc == MOSQ_ERR_NO_CONN) {
        m_wartend.append({thema, nutzlast, behalten, nummer});
        m_wartendBytes += nutzlast.size();
    } else if (rc != MOSQ_ERR_SUCCESS) {
        qWarning("velmora: not sent to %s: %s", qPrintable(thema), mosquitto_strerror(rc));
    }
    schreibenAnmelden();
    return rc == MOSQ_ERR_SUCCESS;
}

} // namespace Velmora
