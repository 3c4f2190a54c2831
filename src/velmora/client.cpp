#include "velmora/client.h"

#include "velmora/broker.h"
#include "velmora/netz.h"
#include "velmora/protokoll.h"

#include <QFile>
#include <QRegularExpression>
#include <QSettings>

namespace {

QSettings konfiguration()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Ormindo"),
                     QStringLiteral("velmora"));
}

const QString artSchluessel = QStringLiteral("link/mode");
const QString serverSchluessel = QStringLiteral("venue/broker");
const QString kennungSchluessel = QStringLiteral("venue/identity");
const QString schluesselSchluessel = QStringLiteral("venue/key");

} // namespace

LinkSettings LinkSettings::load()
{
    const QSettings datei = konfiguration();
    LinkSettings settings;
    if (datei.value(artSchluessel).toString() == QLatin1String("venue"))
        settings.mode = Mode::Venue;
    settings.broker = datei.value(serverSchluessel).toString();
    settings.identity = datei.value(kennungSchluessel).toString();
    settings.key = keyFromText(datei.value(schluesselSchluessel).toString()).value_or(QByteArray());
    return settings;
}

bool LinkSettings::save() const
{
    QSettings datei = konfiguration();
    datei.setValue(artSchluessel,
                   mode == Mode::Venue ? QStringLiteral("venue") : QStringLiteral("lan"));
    datei.setValue(serverSchluessel, broker);
    datei.setValue(kennungSchluessel, identity);
    datei.setValue(schluesselSchluessel, QString::fromLatin1(key.toHex()));
    datei.sync();
    // The key is a secret of this table.
    return datei.status() == QSettings::NoError &&
           QFile::setPermissions(datei.fileName(), QFile::ReadOwner | QFile::WriteOwner);
}

std::optional<std::pair<QString, quint16>> LinkSettings::brokerAddress() const
{
    const QString text = broker.trimmed();
    const int doppelpunkt = text.lastIndexOf(QLatin1Char(':'));
    QString rechner = text;
    quint16 port = 8883;
    if (doppelpunkt >= 0) {
        bool zahl = false;
        const uint wert = text.mid(doppelpunkt + 1).toUInt(&zahl);
        if (!zahl || wert == 0 || wert > 65535)
            return std::nullopt;
        rechner = text.left(doppelpunkt);
        port = quint16(wert);
    }
    static const QRegularExpression name(QStringLiteral("^[A-Za-z0-9.-]+$"));
    if (!name.match(rechner).hasMatch())
        return std::nullopt;
    return std::make_pair(rechner, port);
}

bool LinkSettings::venueComplete() const
{
    return brokerAddress() && identityValid(identity) && key.size() >= 8;
}

bool LinkSettings::identityValid(const QString &identity)
{
    static const QRegularExpression kennung(QStringLiteral("^[A-Za-z0-9_-]{1,64}$"));
    return kennung.match(identity).hasMatch();
}

std::optional<QByteArray> LinkSettings::keyFromText(const QString &text)
{
    QString ziffern = text;
    ziffern.remove(QRegularExpression(QStringLiteral("[\\s-]")));
    static const QRegularExpression hex(QStringLiteral("^([0-9A-Fa-f]{2})*$"));
    if (!hex.match(ziffern).hasMatch() || ziffern.size() > 512)
        return std::nullopt;
    return QByteArray::fromHex(ziffern.toLatin1());
}

bool LinkSettings::operator==(const LinkSettings &other) const
{
    return mode == other.mode && broker == other.broker && identity == other.identity &&
           key == other.key;
}

Client::Client(const QString &programName, QObject *parent)
    : Client(programName, LinkSettings::load(), parent)
{
}

Client::Client(const QString &programName, const LinkSettings &settings, QObject *parent)
    : QObject(parent), m_programName(Velmora::programmname(programName)), m_settings(settings)
{
    anschliessen();
}

Client::~Client() = default;

void Client::anschliessen()
{
    const auto adresse = m_settings.brokerAddress();
    if (linkMode() == LinkSettings::Mode::Venue) {
        const Velmora::Zugang zugang{adresse->first, adresse->second, m_settings.identity,
                                     m_settings.key};
        m_anschluss = new Velmora::Broker(m_programName, zugang, this);
        m_offen = false;
    } else {
        m_anschluss = new Velmora::Netz(m_programName, Velmora::einstellungenAusUmgebung(), this);
        m_offen = true;
    }
    using A = Velmora::Anschluss;
    connect(m_anschluss, &A::beigetreten, this, &Client::newParticipant);
    connect(m_anschluss, &A::nachricht, this, &Client::newMessage);
    connect(m_anschluss, &A::gegangen, this, &Client::participantLeft);
    connect(m_anschluss, &A::eigeneAdresseGeaendert, this, &Client::ownAddressChanged);
    connect(m_anschluss, &A::abgewiesen, this, &Client::messageRejected);
    connect(m_anschluss, &A::verweigert, this, &Client::sendRefused);
    connect(m_anschluss, &A::zustandGeaendert, this, [this](bool offen, const QString &grund) {
        m_offen = offen;
        emit linkStateChanged(offen, grund);
    });
}

void Client::setLinkSettings(const LinkSettings &settings)
{
    if (settings == m_settings)
        return;
    const QString adresse = ownAddress();
    const QStringList alle = participants();
    const QByteArray schluessel = m_key;
    // The old link goes quietly: its participants leave here, once.
    m_anschluss->disconnect(this);
    delete m_anschluss;
    m_settings = settings;
    anschliessen();
    m_anschluss->schluesselSetzen(schluessel);
    for (const QString &id : alle)
        emit participantLeft(id);
    emit linkStateChanged(m_offen, QString());
    if (ownAddress() != adresse)
        emit ownAddressChanged(ownAddress());
}

LinkSettings::Mode Client::linkMode() const
{
    return m_settings.mode == LinkSettings::Mode::Venue && m_settings.venueComplete()
               ? LinkSettings::Mode::Venue
               : LinkSettings::Mode::Lan;
}

bool Client::linkOpen() const
{
    return m_offen;
}

QString Client::participantId() const
{
    return m_anschluss->eigeneId();
}

QStringList Client::participants() const
{
    return m_anschluss->teilnehmer();
}

QString Client::ownAddress() const
{
    return m_anschluss->eigeneAdresse();
}

QString Client::localAddress(const QString &participantId) const
{
    return m_anschluss->lokaleAdresse(participantId);
}

void Client::sendMessage(const QString &message)
{
    const int laenge = message.toUtf8().size();
    if (laenge > Velmora::hoechsteNachricht) {
        qWarning("velmora: message of %d bytes not sent, at most %d fit", laenge,
                 Velmora::hoechsteNachricht);
        return;
    }
    m_anschluss->senden(message);
}

void Client::setKey(const QByteArray &key)
{
    m_key = key;
    m_anschluss->schluesselSetzen(key);
}

int Client::rejectedMessages() const
{
    return m_anschluss->anzahlAbgewiesen();
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
