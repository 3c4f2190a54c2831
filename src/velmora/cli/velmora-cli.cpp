// A participant on the command line: joins the LAN, or a venue's broker,
// under a program name, prints who comes, goes and says what, and sends its
// arguments and every line of standard input, tagged when given the event
// key. It stands in for the other program by hand and in tests. As a bridge
// it carries a LAN manager's messages to the tables at a broker and theirs
// back.

#include "velmora/cli/einrichtung.h"
#include "velmora/client.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QSocketNotifier>
#include <QTime>
#include <QTimer>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <memory>
#include <optional>
#include <unistd.h>

namespace {

void ausgeben(const QString &text)
{
    const QByteArray zeile =
        (QTime::currentTime().toString(QStringLiteral("hh:mm:ss.zzz ")) % text % u'\n').toUtf8();
    std::fwrite(zeile.constData(), 1, size_t(zeile.size()), stdout);
    std::fflush(stdout);
}

// One line per event, whatever the message holds.
QString fuerDieZeile(const QString &text, bool ganz)
{
    constexpr int sichtbar = 200;
    const bool kuerzen = !ganz && text.size() > sichtbar;
    QString zeile = kuerzen ? text.left(sichtbar) : text;
    zeile.replace(QLatin1Char('\n'), QStringLiteral("\\n"))
        .replace(QLatin1Char('\r'), QStringLiteral("\\r"));
    if (kuerzen)
        zeile += QStringLiteral("... [%1 chars]").arg(text.size());
    return zeile;
}

// The key as the organiser handed it out, without the line end an editor adds.
std::optional<QByteArray> schluesselLesen(const QString &pfad)
{
    QFile datei(pfad);
    if (!datei.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray schluessel = datei.readAll();
    if (schluessel.endsWith('\n'))
        schluessel.chop(1);
    if (schluessel.endsWith('\r'))
        schluessel.chop(1);
    if (schluessel.isEmpty())
        return std::nullopt;
    return schluessel;
}

// The key of `identitaet` in a psk file of "identity:hexkey" lines.
std::optional<QByteArray> pskLesen(const QString &pfad, const QString &identitaet)
{
    QFile datei(pfad);
    if (!datei.open(QIODevice::ReadOnly | QIODevice::Text))
        return std::nullopt;
    while (!datei.atEnd()) {
        const QString zeile = QString::fromUtf8(datei.readLine()).trimmed();
        if (zeile.section(u':', 0, 0) == identitaet)
            return LinkSettings::keyFromText(zeile.section(u':', 1));
    }
    return std::nullopt;
}

// One line for every event of the client.
void berichten(Client *client, bool ganz)
{
    QObject::connect(client, &Client::newParticipant,
                     [](const QString &id) { ausgeben(QStringLiteral("JOIN ") % id); });
    QObject::connect(client, &Client::participantLeft,
                     [](const QString &id) { ausgeben(QStringLiteral("LEAVE ") % id); });
    QObject::connect(client, &Client::newMessage, [ganz](const QString &id, const QString &text) {
        ausgeben(QStringLiteral("MSG ") % id % u' ' % fuerDieZeile(text, ganz));
    });
    QObject::connect(client, &Client::messageRejected,
                     [](const QString &id) { ausgeben(QStringLiteral("REJECT ") % id); });
    QObject::connect(client, &Client::linkStateChanged, [](bool offen, const QString &grund) {
        ausgeben(offen ? QStringLiteral("LINK open") : QStringLiteral("LINK closed ") % grund);
    });
    QObject::connect(client, &Client::sendRefused,
                     [](const QString &grund) { ausgeben(QStringLiteral("REFUSED ") % grund); });
}

// Relays between the LAN manager and the tables at the broker. The broker
// sees the manager only while it is on the LAN: when it leaves, the bridge's
// session keeps what the tables send until it is back.
void bruecke(const LinkSettings &veranstaltung, const QString &managerName, bool ganz,
             const QByteArray &schluessel)
{
    struct Stand
    {
        QString manager;
        std::unique_ptr<Client> broker;
    };
    auto *lan = new Client(QStringLiteral("Kartulo"), LinkSettings(), qApp);
    lan->setKey(schluessel);
    const auto stand = std::make_shared<Stand>();
    berichten(lan, ganz);
    QObject::connect(lan, &Client::newParticipant, [=](const QString &id) {
        if (!stand->manager.isEmpty() || id.section(u'@', 0, 0) != managerName)
            return;
        stand->manager = id;
        stand->broker = std::make_unique<Client>(managerName, veranstaltung);
        Client *broker = stand->broker.get();
        ausgeben(QStringLiteral("SELF ") % broker->participantId());
        berichten(broker, ganz);
        QObject::connect(broker, &Client::newMessage,
                         [=](const QString &, const QString &text) { lan->sendMessage(text); });
    });
    QObject::connect(lan, &Client::participantLeft, [=](const QString &id) {
        if (id != stand->manager)
            return;
        stand->manager.clear();
        stand->broker.reset();
    });
    QObject::connect(lan, &Client::newMessage, [=](const QString &von, const QString &text) {
        if (von == stand->manager && stand->broker)
            stand->broker->sendMessage(text);
    });
}

} // namespace

int main(int argc, char **argv)
{
    if (einrichtungVerlangt(argc, argv))
        return einrichtungAusfuehren(argc, argv);
    QCoreApplication app(argc, argv);
    QCommandLineParser optionen;
    optionen.setApplicationDescription(QStringLiteral("A LAN participant on the command line."));
    optionen.addHelpOption();
    const QCommandLineOption name(QStringLiteral("name"),
                                  QStringLiteral("Program name to join under (Tabulor)."),
                                  QStringLiteral("name"), QStringLiteral("Tabulor"));
    const QCommandLineOption stumm(
        QStringLiteral("quiet-after"),
        QStringLiteral("N seconds after the first participant came, stop like a hung "
                       "program (SIGSTOP); SIGCONT resumes."),
        QStringLiteral("N"));
    const QCommandLineOption eofEnde(QStringLiteral("exit-on-eof"),
                                     QStringLiteral("End when standard input ends."));
    const QCommandLineOption ganz(QStringLiteral("full"),
                                  QStringLiteral("Print every message whole, not its first "
                                                 "200 characters."));
    const QCommandLineOption schluesselDatei(
        QStringLiteral("key-file"),
        QStringLiteral("Tag messages with the event key in this file and drop those without "
                       "a valid tag; one line end at its end is not part of the key."),
        QStringLiteral("file"));
    const QCommandLineOption broker(
        QStringLiteral("broker"),
        QStringLiteral("Join through the venue's broker at HOST[:PORT] (8883) instead of the "
                       "LAN; needs --psk-identity and --psk-file."),
        QStringLiteral("host[:port]"));
    const QCommandLineOption pskKennung(QStringLiteral("psk-identity"),
                                        QStringLiteral("The identity to join the broker as."),
                                        QStringLiteral("id"));
    const QCommandLineOption pskDatei(
        QStringLiteral("psk-file"),
        QStringLiteral("The broker's psk file (identity:hexkey lines); the key of "
                       "--psk-identity is taken from it."),
        QStringLiteral("file"));
    const QCommandLineOption brueckeOption(
        QStringLiteral("bridge"),
        QStringLiteral("Relay between the manager named --name on the LAN and the tables at "
                       "the broker, as --psk-identity."));
    optionen.addOptions(
        {name, stumm, eofEnde, ganz, schluesselDatei, broker, pskKennung, pskDatei, brueckeOption});
    optionen.addOptions(einrichtungsOptionen());
    optionen.addPositionalArgument(QStringLiteral("message"),
                                   QStringLiteral("Sent once the first participant is there."),
                                   QStringLiteral("[message ...]"));
    optionen.process(app);
    std::optional<QByteArray> schluessel;
    if (optionen.isSet(schluesselDatei)) {
        schluessel = schluesselLesen(optionen.value(schluesselDatei));
        if (!schluessel) {
            std::fprintf(stderr, "velmora-cli: no key in %s: unreadable or empty\n",
                         qPrintable(optionen.value(schluesselDatei)));
            return 2;
        }
    }

    LinkSettings verbindung;
    if (optionen.isSet(broker)) {
        verbindung.mode = LinkSettings::Mode::Venue;
        verbindung.broker = optionen.value(broker);
        verbindung.identity = optionen.value(pskKennung);
        verbindung.key =
            pskLesen(optionen.value(pskDatei), verbindung.identity).value_or(QByteArray());
        if (!verbindung.venueComplete()) {
            std::fprintf(stderr, "velmora-cli: --broker needs a HOST[:PORT], --psk-identity and a "
                                 "--psk-file holding a key of at least 8 bytes for it\n");
            return 2;
        }
    }
    if (optionen.isSet(brueckeOption)) {
        if (verbindung.mode != LinkSettings::Mode::Venue) {
            std::fprintf(stderr, "velmora-cli: --bridge needs --broker\n");
            return 2;
        }
        bruecke(verbindung, optionen.value(name), optionen.isSet(ganz),
                schluessel.value_or(QByteArray()));
        return app.exec();
    }

    Client client(optionen.value(name), verbindung);
    if (schluessel)
        client.setKey(*schluessel);
    ausgeben(QStringLiteral("SELF ") % client.participantId());
    QObject::connect(&client, &Client::ownAddressChanged,
                     [&client] { ausgeben(QStringLiteral("SELF ") % client.participantId()); });

    // Arguments and early lines wait for somebody to hear them.
    QStringList wartend = optionen.positionalArguments();
    bool jemandDa = false;
    auto senden = [&](const QString &text) {
        if (jemandDa)
            client.sendMessage(text);
        else
            wartend.append(text);
    };
    berichten(&client, optionen.isSet(ganz));
    QObject::connect(&client, &Client::newParticipant, [&] {
        if (jemandDa)
            return;
        jemandDa = true;
        for (const QString &text : qAsConst(wartend))
            client.sendMessage(text);
        wartend.clear();
        if (optionen.isSet(stumm)) {
            const int ms = int(optionen.value(stumm).toDouble() * 1000);
            QTimer::singleShot(ms, [] {
                ausgeben(QStringLiteral("QUIET"));
                std::raise(SIGSTOP);
            });
        }
    });

    QByteArray angefangen;
    QSocketNotifier eingabe(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&eingabe, &QSocketNotifier::activated, [&] {
        char puffer[65536];
        const ssize_t gelesen = ::read(STDIN_FILENO, puffer, sizeof puffer);
        // Interrupted, say by SIGCONT after --quiet-after: the input goes on.
        if (gelesen < 0 && (errno == EINTR || errno == EAGAIN))
            return;
        if (gelesen > 0)
            angefangen.append(puffer, int(gelesen));
        else
            angefangen.append('\n');
        int ende;
        while ((ende = angefangen.indexOf('\n')) >= 0) {
            const QString zeile = QString::fromUtf8(angefangen.left(ende)).remove(u'\r');
            angefangen.remove(0, ende + 1);
            if (!zeile.isEmpty())
                senden(zeile);
        }
        if (gelesen > 0)
            return;
        eingabe.setEnabled(false);
        // A moment for the last lines to leave before the links close.
        if (optionen.isSet(eofEnde))
            QTimer::singleShot(300, &app, &QCoreApplication::quit);
    });

    return app.exec();
}
