#include "velmora/cli/einrichtung.h"

#include "velmora/netz.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QRandomGenerator>
#include <QSaveFile>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

constexpr int hoechstTische = 999;
// The event name is the PSK hint, and OpenSSL takes none longer.
constexpr int hoechstNamensBytes = 256;
constexpr int schluesselWoerter = 4; // 16 bytes
constexpr int zettelProSeite = 6;

const char *const leitung = "tabulor";

struct Auftrag
{
    QString ordner; // absolute: the conf names its files by full path
    int tische = 0;
    QString veranstaltung;
    int port = 0;
    QString adresse;
};

struct Zugang
{
    QString kennung;
    QString bezeichnung;
    QByteArray schluessel; // lower-case hex
};

void fehler(const QString &text)
{
    std::fprintf(stderr, "velmora-cli: %s\n", qPrintable(text));
}

void melden(const QString &text)
{
    const QByteArray zeile = (text % u'\n').toUtf8();
    std::fwrite(zeile.constData(), 1, size_t(zeile.size()), stdout);
}

// A line break or another control character would end a line of the conf early.
bool brichtZeile(const QString &text)
{
    return std::any_of(text.cbegin(), text.cend(),
                       [](QChar c) { return c.unicode() < 0x20 || c.unicode() == 0x7f; });
}

// For a command to copy: quoted when the shell would split or expand it.
QString fuerDieShell(const QString &pfad)
{
    const bool harmlos = std::all_of(pfad.cbegin(), pfad.cend(), [](QChar c) {
        return c.isLetterOrNumber() || QStringLiteral("/._+-").contains(c);
    });
    if (harmlos)
        return pfad;
    return u'\'' % QString(pfad).replace(u'\'', QStringLiteral("'\\''")) % u'\'';
}

// Why the command line is refused, or nothing.
QString auftragLesen(const QCommandLineParser &optionen, Auftrag &auftrag)
{
    if (!optionen.isSet(QStringLiteral("venue-setup")))
        return QStringLiteral("--tables, --event, --port and --address go with --venue-setup DIR");
    if (!optionen.positionalArguments().isEmpty())
        return QStringLiteral("--venue-setup sends no messages: ") %
               optionen.positionalArguments().join(u' ');
    const QString ordner = optionen.value(QStringLiteral("venue-setup"));
    if (ordner.isEmpty())
        return QStringLiteral("--venue-setup needs a folder");
    auftrag.ordner = QDir::cleanPath(QFileInfo(ordner).absoluteFilePath());
    if (brichtZeile(auftrag.ordner))
        return QStringLiteral("the folder's path holds a line break or control character, "
                              "which would break mosquitto.conf");

    bool zahl = false;
    const QString tische = optionen.value(QStringLiteral("tables"));
    auftrag.tische = tische.toInt(&zahl);
    if (!zahl || auftrag.tische < 1 || auftrag.tische > hoechstTische)
        return QStringLiteral("--tables needs a number from 1 to %1, not \"%2\"")
            .arg(hoechstTische)
            .arg(tische);

    auftrag.veranstaltung = optionen.value(QStringLiteral("event")).trimmed();
    if (auftrag.veranstaltung.isEmpty())
        return QStringLiteral("--event needs the event's name");
    if (brichtZeile(auftrag.veranstaltung) || auftrag.veranstaltung.contains(u'#'))
        return QStringLiteral("the event name holds a line break, control character or #, "
                              "which would break mosquitto.conf");
    if (auftrag.veranstaltung.toUtf8().size() > hoechstNamensBytes)
        return QStringLiteral("the event name is longer than %1 bytes, too long for the "
                              "broker's TLS")
            .arg(hoechstNamensBytes);

    const QString port = optionen.value(QStringLiteral("port"));
    auftrag.port = port.toInt(&zahl);
    if (!zahl || auftrag.port < 1 || auftrag.port > 65535)
        return QStringLiteral("--port needs a port from 1 to 65535, not \"%1\"").arg(port);

    auftrag.adresse = optionen.isSet(QStringLiteral("address"))
                          ? optionen.value(QStringLiteral("address")).trimmed()
                          : Velmora::lanAdresse();
    if (auftrag.adresse.isEmpty() || brichtZeile(auftrag.adresse))
        return QStringLiteral("--address needs the broker's host name or address");

    // A second set-up would hand out new keys while the old slips are in use.
    const QFileInfo psk(auftrag.ordner % QStringLiteral("/psk"));
    if (psk.exists() || psk.isSymLink())
        return psk.filePath() %
               QStringLiteral(" exists: an event's keys are never overwritten. Keep that "
                              "folder for its event and choose a new one.");
    return QString();
}

QByteArray neuerSchluessel()
{
    quint32 zufall[schluesselWoerter];
    QRandomGenerator::system()->fillRange(zufall);
    return QByteArray(reinterpret_cast<const char *>(zufall), sizeof zufall).toHex();
}

QList<Zugang> zugaengeErzeugen(int tische)
{
    QList<Zugang> zugaenge{
        {QLatin1String(leitung), QStringLiteral("Turnierleitung (Tabulor)"), neuerSchluessel()}};
    const int stellen = tische >= 100 ? 3 : 2;
    for (int tisch = 1; tisch <= tische; ++tisch)
        zugaenge.append({QStringLiteral("tisch%1").arg(tisch, stellen, 10, QLatin1Char('0')),
                         QStringLiteral("Tisch %1").arg(tisch), neuerSchluessel()});
    return zugaenge;
}

QString server(const Auftrag &auftrag)
{
    const QString host =
        auftrag.adresse.contains(u':') ? u'[' % auftrag.adresse % u']' : auftrag.adresse;
    return host % u':' % QString::number(auftrag.port);
}

QByteArray konfiguration(const Auftrag &auftrag)
{
    const QString &ordner = auftrag.ordner;
    const QStringList zeilen{
        QStringLiteral("# Mosquitto for \"%1\" with %2 tables, written by velmora-cli "
                       "--venue-setup.")
            .arg(auftrag.veranstaltung, QString::number(auftrag.tische)),
        QStringLiteral("# Start it as the user who ran the set-up, the only one who may read psk"),
        QStringLiteral("# (started by root, mosquitto becomes the user mosquitto, who may not):"),
        QStringLiteral("#   mosquitto -c ") %
            fuerDieShell(ordner % QStringLiteral("/mosquitto.conf")),
        QString(),
        QStringLiteral("per_listener_settings false"),
        QStringLiteral("listener ") % QString::number(auftrag.port),
        QStringLiteral("psk_hint ") % auftrag.veranstaltung,
        QStringLiteral("psk_file ") % ordner % QStringLiteral("/psk"),
        QStringLiteral("use_identity_as_username true"),
        QStringLiteral("allow_anonymous false"),
        QStringLiteral("acl_file ") % ordner % QStringLiteral("/acl"),
        QStringLiteral("# Saved every second: a broker restarted mid-round forgets nothing."),
        QStringLiteral("persistence true"),
        QStringLiteral("persistence_location ") % ordner % QStringLiteral("/daten/"),
        QStringLiteral("autosave_interval 1"),
        QStringLiteral("# A score sheet of 8 MiB with room to spare."),
        QStringLiteral("max_packet_size 16777216"),
        QStringLiteral("max_queued_messages 100000"),
        QStringLiteral("max_queued_bytes 0"),
        QStringLiteral("set_tcp_nodelay true"),
    };
    return (zeilen.join(u'\n') % u'\n').toUtf8();
}

QByteArray pskDatei(const QList<Zugang> &zugaenge)
{
    QByteArray text;
    for (const Zugang &zugang : zugaenge)
        text += zugang.kennung.toLatin1() + ':' + zugang.schluessel + '\n';
    return text;
}

QByteArray zugriffsliste(const QList<Zugang> &zugaenge)
{
    QStringList zeilen{
        QStringLiteral("# Who reads and writes what, by PSK identity. Everyone reads what is for"),
        QStringLiteral("# all and its own inbox; everyone writes only with its own identity as"),
        QStringLiteral("# the last topic level; only the manager writes the manager's state."),
        QStringLiteral("# A block per identity rather than pattern lines keeps the broker's log"),
        QStringLiteral("# free of warnings."),
    };
    for (const Zugang &zugang : zugaenge) {
        const QString &id = zugang.kennung;
        zeilen << QString() << QStringLiteral("user ") % id
               << QStringLiteral("topic read velmora/da/#")
               << QStringLiteral("topic read velmora/alle/#")
               << QStringLiteral("topic read velmora/stand/#")
               << QStringLiteral("topic read velmora/an/") % id % QStringLiteral("/#")
               << QStringLiteral("topic write velmora/da/") % id
               << QStringLiteral("topic write velmora/alle/") % id
               << QStringLiteral("topic write velmora/an/+/") % id;
        if (id == QLatin1String(leitung))
            zeilen << QStringLiteral("topic write velmora/stand/spieler/tabulor")
                   << QStringLiteral("topic write velmora/stand/auslosung/+/tabulor")
                   << QStringLiteral("topic write velmora/stand/kosten/+/tabulor");
        else
            zeilen << QStringLiteral("topic write velmora/stand/ergebnisse/") % id;
    }
    return (zeilen.join(u'\n') % u'\n').toUtf8();
}

// Four hex digits at a time, easier to type; Kartulo ignores the blanks.
QString gruppiert(const QByteArray &schluessel)
{
    QStringList gruppen;
    for (int i = 0; i < schluessel.size(); i += 4)
        gruppen.append(QString::fromLatin1(schluessel.mid(i, 4)));
    return gruppen.join(u' ');
}

// A slip per identity, six to an A4 page between dashed cut lines.
QString zettelDrucken(QIODevice &geraet, const Auftrag &auftrag, const QList<Zugang> &zugaenge)
{
    QPdfWriter schreiber(&geraet);
    schreiber.setTitle(QStringLiteral("Zugänge – ") % auftrag.veranstaltung);
    schreiber.setCreator(QStringLiteral("velmora-cli"));
    schreiber.setResolution(300);
    schreiber.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                        QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter));
    QPainter maler;
    if (!maler.begin(&schreiber))
        return QStringLiteral("the slips cannot be drawn");
    const qreal proMm = schreiber.resolution() / 25.4;
    const auto mm = [proMm](qreal laenge) { return laenge * proMm; };
    const qreal oben = 10, hoehe = (297 - 2 * oben) / zettelProSeite, links = 18, werte = 52;
    const qreal breite = 210 - 2 * links;

    QFont schrift(QStringLiteral("DejaVu Sans"));
    schrift.setStyleHint(QFont::SansSerif);
    QFont fett = schrift;
    fett.setBold(true);
    QFont fest(QStringLiteral("DejaVu Sans Mono"));
    fest.setStyleHint(QFont::TypeWriter);
    const auto groesse = [](QFont font, qreal punkte) {
        font.setPointSizeF(punkte);
        return font;
    };
    const QPen schnitt(Qt::gray, mm(0.25), Qt::DashLine);

    for (int i = 0; i < zugaenge.size(); ++i) {
        const int platz = i % zettelProSeite;
        if (i > 0 && platz == 0 && !schreiber.newPage())
            return QStringLiteral("no new page for the slips");
        const Zugang &zugang = zugaenge.at(i);
        const qreal y = oben + platz * hoehe;
        maler.setPen(schnitt);
        maler.drawLine(QPointF(0, mm(y)), QPointF(mm(210), mm(y)));
        if (platz == zettelProSeite - 1 || i == zugaenge.size() - 1)
            maler.drawLine(QPointF(0, mm(y + hoehe)), QPointF(mm(210), mm(y + hoehe)));

        maler.setPen(Qt::black);
        qreal zeile = y + 8;
        const auto schreiben = [&](const QFont &font, qreal x, const QString &text) {
            maler.setFont(font);
            const QString passend =
                QFontMetricsF(font, &schreiber).elidedText(text, Qt::ElideRight, mm(breite));
            maler.drawText(QPointF(mm(x), mm(zeile)), passend);
        };
        schreiben(groesse(schrift, 11), links, auftrag.veranstaltung);
        zeile += 7.5;
        schreiben(groesse(fett, 16), links, zugang.bezeichnung);
        const std::pair<QString, QString> angaben[] = {
            {QStringLiteral("Kennung"), zugang.kennung},
            {QStringLiteral("Schlüssel"), gruppiert(zugang.schluessel)},
            {QStringLiteral("Server"), server(auftrag)},
        };
        for (const auto &[bezeichnung, wert] : angaben) {
            zeile += 6.5;
            schreiben(groesse(schrift, 11), links, bezeichnung);
            schreiben(groesse(fest, 13), werte, wert);
        }
        zeile += 6.5;
        schreiben(groesse(schrift, 10), links,
                  QStringLiteral("Kartulo: Einstellungen → Netzwerk → Verbindung „Veranstaltung“"));
    }
    if (!maler.end())
        return QStringLiteral("the slips cannot be finished");
    return QString();
}

// Through a QSaveFile, so a failed write leaves what was there before.
QString speichern(const QString &pfad, bool geheim,
                  const std::function<QString(QIODevice &)> &schreiben)
{
    QSaveFile datei(pfad);
    if (!datei.open(QIODevice::WriteOnly))
        return datei.errorString();
    // Keys for the owner's eyes only, before the first one is written.
    if (geheim && !datei.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner))
        return datei.errorString();
    const QString fehlerText = schreiben(datei);
    if (!fehlerText.isEmpty())
        return fehlerText;
    // Flushed first: a commit would otherwise replace the file even when the last bytes
    // did not reach the disk.
    if (!datei.flush() || !datei.commit())
        return datei.errorString();
    return QString();
}

std::function<QString(QIODevice &)> text(const QByteArray &inhalt)
{
    return [inhalt](QIODevice &geraet) {
        return geraet.write(inhalt) == inhalt.size() ? QString() : geraet.errorString();
    };
}

} // namespace

QList<QCommandLineOption> einrichtungsOptionen()
{
    return {
        {QStringLiteral("venue-setup"),
         QStringLiteral("Instead of joining the LAN, prepare a Mosquitto broker for a tournament "
                        "in a venue whose WLAN keeps its clients apart: write mosquitto.conf, "
                        "psk, acl and zugaenge.pdf (a slip per table) into this folder, made if "
                        "needed. Refused if the folder holds a psk file."),
         QStringLiteral("dir")},
        {QStringLiteral("tables"), QStringLiteral("With --venue-setup: the tables, 1 to 999."),
         QStringLiteral("N")},
        {QStringLiteral("event"),
         QStringLiteral("With --venue-setup: the event's name, without line breaks or #."),
         QStringLiteral("name")},
        {QStringLiteral("port"),
         QStringLiteral("With --venue-setup: the port the broker listens on (8883)."),
         QStringLiteral("port"), QStringLiteral("8883")},
        {QStringLiteral("address"),
         QStringLiteral("With --venue-setup: the broker's address on the slips (this machine's "
                        "first LAN address)."),
         QStringLiteral("host")},
    };
}

bool einrichtungVerlangt(int argc, char **argv)
{
    const auto optionen = einrichtungsOptionen();
    for (int i = 1; i < argc; ++i) {
        const QString argument = QString::fromLocal8Bit(argv[i]);
        if (argument == QLatin1String("--"))
            break;
        for (const QCommandLineOption &option : optionen) {
            const QString lang = QStringLiteral("--") % option.names().constFirst();
            if (argument == lang || argument.startsWith(lang % u'='))
                return true;
        }
    }
    return false;
}

int einrichtungAusfuehren(int argc, char **argv)
{
    // The PDF needs fonts but no screen: the broker's machine may have none.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QCommandLineParser optionen;
    optionen.setApplicationDescription(
        QStringLiteral("Prepares a Mosquitto broker for a tournament."));
    optionen.addHelpOption();
    optionen.addOptions(einrichtungsOptionen());
    optionen.process(app);
    Auftrag auftrag;
    const QString abgelehnt = auftragLesen(optionen, auftrag);
    if (!abgelehnt.isEmpty()) {
        fehler(abgelehnt);
        return 2;
    }

    const QString daten = auftrag.ordner % QStringLiteral("/daten");
    if (!QDir().mkpath(daten)) {
        fehler(QStringLiteral("cannot make the folder ") % daten);
        return 1;
    }
    const QList<Zugang> zugaenge = zugaengeErzeugen(auftrag.tische);
    const QString konf = auftrag.ordner % QStringLiteral("/mosquitto.conf");
    // The psk file last: where it is, the set-up is whole, and where a write
    // failed, it is not, so the set-up may run again.
    const struct
    {
        QString name;
        bool geheim;
        std::function<QString(QIODevice &)> schreiben;
        QString gesagt;
    } dateien[] = {
        {konf, false, text(konfiguration(auftrag)), QString()},
        {auftrag.ordner % QStringLiteral("/acl"), false, text(zugriffsliste(zugaenge)), QString()},
        {auftrag.ordner % QStringLiteral("/zugaenge.pdf"), true,
         [&](QIODevice &geraet) { return zettelDrucken(geraet, auftrag, zugaenge); },
         QStringLiteral(": %1 slips to cut apart and hand out, server %2, readable only by you")
             .arg(zugaenge.size())
             .arg(server(auftrag))},
        {auftrag.ordner % QStringLiteral("/psk"), true, text(pskDatei(zugaenge)),
         QStringLiteral(": %1 keys, readable only by you").arg(zugaenge.size())},
    };
    for (const auto &datei : dateien) {
        const QString fehlerText = speichern(datei.name, datei.geheim, datei.schreiben);
        if (!fehlerText.isEmpty()) {
            fehler(QStringLiteral("cannot write ") % datei.name % QStringLiteral(": ") %
                   fehlerText);
            return 1;
        }
        melden(QStringLiteral("Wrote ") % datei.name % datei.gesagt);
    }
    melden(QStringLiteral("The broker keeps its state in ") % daten % u'/');
    melden(QStringLiteral("Start it as this user: mosquitto -c ") % fuerDieShell(konf));
    return 0;
}
