// The venue at scale: 100 tables and the manager through a Mosquitto broker
// of its own, then the same evening over the LAN link for comparison, with
// 50 tables: a mesh of a hundred did not come together within three minutes
// here (--netz-tische sets the number). Each table sends 48 rows, after
// each its results, and at its end its sheet (2 MiB, base64), paced as a
// busy evening compressed to under a minute, all tables interleaved. The manager checks that every
// message came once and in its table's order, and how long it took from the table's sendMessage()
// to its newMessage(); every table counts what it got of the others. Peak memory of the broker, the
// table processes and the manager. Run inside the private network namespace
// (scripts/bench-veranstaltung.sh); the program starts itself again with "--tischprozess" for the
// table processes.

#include "core/link/nachricht.h"
#include "tabelle.h"
#include "velmora/client.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QProcess>
#include <QRandomGenerator>
#include <QSet>
#include <QSocketNotifier>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace {

// Microseconds of the wall clock, the same in every process of the run.
qint64 jetztUs()
{
    timespec t{};
    clock_gettime(CLOCK_REALTIME, &t);
    return qint64(t.tv_sec) * 1000000 + t.tv_nsec / 1000;
}

void pruefen(bool ok, const char *was)
{
    if (!ok)
        qFatal("Messung ungueltig: %s", was);
}

// Peak resident memory in KB of a process, from /proc.
qint64 hoechsterSpeicherKb(const QString &pid)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &zeile : status.readAll().split('\n'))
        if (zeile.startsWith("VmHWM:"))
            return zeile.mid(6).trimmed().split(' ').first().toLongLong();
    return -1;
}

QString mb(qint64 kb)
{
    return QString::number(kb / 1024.0, 'f', 1) + QStringLiteral(" MB");
}

QString ms(double wert)
{
    return QString::number(wert, 'f', wert < 10 ? 2 : 1);
}

QString kennung(int tisch)
{
    return QStringLiteral("tisch%1").arg(tisch, 3, 10, QLatin1Char('0'));
}

// What a table sends, numbered in its order: row n is 2n-1, the results
// after it 2n, the sheet 2 * zeilen + 1. The number is read back from the
// texts themselves (game number, games played, file name), so they stay
// exactly what Kartulo sends; the send times go back in a side table.
struct Abend
{
    int zeilen = 48;
    int blattBytes = 2 * 1024 * 1024;
    int proTisch() const { return 2 * zeilen + 1; }
    int blattNummer() const { return 2 * zeilen + 1; }
};

int alleinspieler(int spiel)
{
    return spiel % 4;
}

bool gewonnen(int spiel)
{
    return spiel % 7 != 0;
}

int spielwert(int spiel)
{
    return 18 + (spiel * 7) % 40;
}

QString zeileText(const QString &adresse, int tisch, int spiel)
{
    const int wert = gewonnen(spiel) ? spielwert(spiel) : -2 * spielwert(spiel);
    int sitz[4] = {0, 0, 0, 0};
    sitz[alleinspieler(spiel)] = wert;
    const Kartulo::SpielTupel tupel{wert,
                                    1,
                                    0,
                                    spiel % 3 == 0,
                                    false,
                                    false,
                                    false,
                                    false,
                                    false,
                                    gewonnen(spiel),
                                    !gewonnen(spiel),
                                    sitz[0],
                                    sitz[1],
                                    sitz[2],
                                    sitz[3],
                                    false,
                                    18 + spiel % 30};
    return QStringLiteral("13:%1:$%2@1@%3@").arg(adresse).arg(tisch).arg(spiel) +
           Kartulo::mapFromSpiel(tupel).join(QLatin1Char('@'));
}

// The four players' standing after `spiele` games: games won and lost add
// up to the number of games, which numbers the message.
QString ergebnisText(const QString &adresse, int tisch, int spiele)
{
    QStringList spieler;
    for (int platz = 0; platz < 4; ++platz) {
        int punkte = 0, plus = 0, minus = 0;
        for (int spiel = 1; spiel <= spiele; ++spiel) {
            if (alleinspieler(spiel) != platz)
                continue;
            if (gewonnen(spiel)) {
                ++plus;
                punkte += spielwert(spiel) + 50;
            } else {
                ++minus;
                punkte -= 2 * spielwert(spiel) + 50;
            }
        }
        spieler << QStringLiteral("Spieler %1-%2|%1|1|%3|%4|%5|%6|-")
                       .arg(tisch)
                       .arg(platz + 1)
                       .arg(punkte)
                       .arg(plus)
                       .arg(minus)
                       .arg(QString::number(0.5 * minus, 'f', 2));
    }
    return QStringLiteral("7:%1:$").arg(adresse) + spieler.join(QLatin1Char('@'));
}

QString blattName(int tisch)
{
    return QStringLiteral("Skat_Tisch%1.pdf").arg(tisch);
}

QByteArray pruefsumme(const QByteArray &daten)
{
    return QCryptographicHash::hash(daten, QCryptographicHash::Md5).toHex();
}

// The table and number of a message as the manager reads it; nothing for a
// text that is none of the three.
struct Gelesen
{
    int tisch = 0;
    int nummer = 0;
    bool blatt = false;
    QByteArray summe;
};

std::optional<Gelesen> lesen(const QString &text, const Abend &abend)
{
    const std::optional<Nachricht> n = Nachricht::lesen(text);
    if (!n)
        return std::nullopt;
    Gelesen g;
    if (n->typ == Nachricht::Zeile && n->inhalt.size() == 20 && Nachricht::spielAus(n->inhalt, 3)) {
        g.tisch = n->inhalt.at(0).toInt();
        g.nummer = 2 * n->inhalt.at(2).toInt() - 1;
    } else if (n->typ == Nachricht::Ergebnisse && n->inhalt.size() == 4) {
        int spiele = 0;
        for (const QString &ergebnis : n->inhalt) {
            const QStringList f = ergebnis.split(QLatin1Char('|'));
            if (f.size() != 8)
                return std::nullopt;
            g.tisch = f.at(1).toInt();
            spiele += f.at(4).toInt() + f.at(5).toInt();
        }
        g.nummer = 2 * spiele;
    } else if (n->typ == Nachricht::BlattDatei && n->inhalt.size() == 2) {
        const QString name = n->inhalt.at(0);
        g.tisch = name.mid(10).section(QLatin1Char('.'), 0, 0).toInt();
        pruefen(blattName(g.tisch) == name, "blattname");
        g.nummer = abend.blattNummer();
        g.blatt = true;
        g.summe = pruefsumme(n->inhalt.at(1).toLatin1());
    } else {
        return std::nullopt;
    }
    if (g.tisch < 1 || g.nummer < 1 || g.nummer > abend.proTisch())
        return std::nullopt;
    return g;
}

// Reads the key of every identity from the psk file.
QHash<QString, QByteArray> schluesselLesen(const QString &pfad)
{
    QHash<QString, QByteArray> schluessel;
    QFile datei(pfad);
    pruefen(datei.open(QIODevice::ReadOnly), "psk");
    for (const QByteArray &zeile : datei.readAll().split('\n')) {
        const int doppelpunkt = zeile.indexOf(':');
        if (doppelpunkt > 0)
            schluessel.insert(QString::fromLatin1(zeile.left(doppelpunkt)),
                              QByteArray::fromHex(zeile.mid(doppelpunkt + 1)));
    }
    return schluessel;
}

LinkSettings verbindung(bool veranstaltung, quint16 port, const QString &identitaet,
                        const QByteArray &schluessel)
{
    LinkSettings s;
    if (veranstaltung) {
        s.mode = LinkSettings::Mode::Venue;
        s.broker = QStringLiteral("127.0.0.1:%1").arg(port);
        s.identity = identitaet;
        s.key = schluessel;
    }
    return s;
}

// The table processes: "--tischprozess lan|venue PORT PSK ERSTER ANZAHL GESAMT DAUER_MS ZEILEN
// BLATTBYTES". Says "bereit" once each of its tables sees all the others and the
// manager; on "los" plays its evening, prints how much its tables received every
// half second, and on "ende" the send times, its peak memory and "fertig".
int tischeProzess(const QStringList &a)
{
    const bool veranstaltung = a.value(2) == QLatin1String("venue");
    const quint16 port = quint16(a.value(3).toUInt());
    const QString psk = a.value(4);
    const int erster = a.value(5).toInt();
    const int anzahl = a.value(6).toInt();
    const int gesamt = a.value(7).toInt();
    const qint64 dauerUs = a.value(8).toLongLong() * 1000;
    Abend abend;
    abend.zeilen = a.value(9).toInt();
    abend.blattBytes = a.value(10).toInt();
    const QHash<QString, QByteArray> schluessel =
        veranstaltung ? schluesselLesen(psk) : QHash<QString, QByteArray>();

    std::vector<std::unique_ptr<Client>> tische;
    // Rows and results, which every table may need, apart from the sheets,
    // which are for the manager alone.
    qint64 empfangen = 0, blaetter = 0;
    // Participants that left while the evening ran: links that broke.
    int gegangen = 0;
    bool zaehlen = true;
    for (int i = 0; i < anzahl; ++i) {
        const QString wer = kennung(erster + i);
        tische.push_back(
            std::make_unique<Client>(QStringLiteral("Kartulo"),
                                     verbindung(veranstaltung, port, wer, schluessel.value(wer))));
        QObject::connect(tische.back().get(), &Client::newMessage,
                         [&](const QString &, const QString &text) {
                             ++(text.startsWith(QLatin1String("17:")) ? blaetter : empfangen);
                         });
        QObject::connect(tische.back().get(), &Client::participantLeft,
                         [&](const QString &) { gegangen += zaehlen; });
    }

    auto zeile = [](const QByteArray &text) {
        std::fwrite(text.constData(), 1, size_t(text.size()), stdout);
        std::fputc('\n', stdout);
        std::fflush(stdout);
    };

    QTimer bereit;
    bereit.setInterval(100);
    QObject::connect(&bereit, &QTimer::timeout, [&] {
        for (const auto &tisch : tische)
            if (!tisch->linkOpen() || tisch->participants().size() < gesamt)
                return;
        bereit.stop();
        zeile("bereit");
    });
    bereit.start();

    // The evening's plan: each table starts within the first fifth, plays its
    // games over the rest with some jitter, enters the results shortly after
    // each game and sends its sheet at the end.
    struct Termin
    {
        qint64 faelligUs;
        int tisch;
        int nummer;
    };
    std::vector<Termin> plan;
    QRandomGenerator zufall(quint32(erster * 7919 + anzahl));
    for (int i = 0; i < anzahl; ++i) {
        const double beginn = zufall.bounded(0.2) * dauerUs;
        const double spiel = 0.75 * dauerUs / abend.zeilen;
        qint64 zuletzt = 0;
        for (int n = 1; n <= abend.zeilen; ++n) {
            const double zeit = beginn + (n - 0.5 + zufall.bounded(0.6) - 0.3) * spiel;
            zuletzt = qint64(zeit + (0.05 + zufall.bounded(0.25)) * spiel);
            plan.push_back({qint64(zeit), i, 2 * n - 1});
            plan.push_back({zuletzt, i, 2 * n});
        }
        // The sheet after the last results, so the plan keeps the numbers' order.
        plan.push_back(
            {zuletzt + qint64((0.1 + zufall.bounded(0.5)) * spiel), i, abend.blattNummer()});
    }
    std::stable_sort(plan.begin(), plan.end(),
                     [](const Termin &x, const Termin &y) { return x.faelligUs < y.faelligUs; });

    struct Gesendet
    {
        int tisch;
        int nummer;
        qint64 us;
    };
    std::vector<Gesendet> gesendet;
    gesendet.reserve(plan.size());
    QList<QByteArray> summen;
    size_t naechster = 0;
    qint64 startUs = 0;
    QTimer takt;
    takt.setTimerType(Qt::PreciseTimer);
    takt.setInterval(2);
    QObject::connect(&takt, &QTimer::timeout, [&] {
        while (naechster < plan.size() && plan[naechster].faelligUs <= jetztUs() - startUs) {
            const Termin &t = plan[naechster++];
            Client &client = *tische[size_t(t.tisch)];
            const int tisch = erster + t.tisch;
            QString text;
            if (t.nummer == abend.blattNummer()) {
                QByteArray blatt(abend.blattBytes, Qt::Uninitialized);
                QRandomGenerator::global()->fillRange(reinterpret_cast<quint32 *>(blatt.data()),
                                                      blatt.size() / 4);
                const QByteArray base64 = blatt.toBase64();
                summen << QByteArray::number(tisch) + ' ' + pruefsumme(base64);
                text = QStringLiteral("17:%1:$%2@").arg(client.ownAddress(), blattName(tisch)) +
                       QString::fromLatin1(base64);
            } else if (t.nummer % 2) {
                text = zeileText(client.ownAddress(), tisch, (t.nummer + 1) / 2);
            } else {
                text = ergebnisText(client.ownAddress(), tisch, t.nummer / 2);
            }
            gesendet.push_back({tisch, t.nummer, jetztUs()});
            client.sendMessage(text);
        }
        if (naechster == plan.size())
            takt.stop();
    });

    QTimer stand;
    stand.setInterval(500);
    qint64 gemeldet = -1;
    auto empfangMelden = [&] {
        zeile("empfangen " + QByteArray::number(empfangen) + ' ' + QByteArray::number(blaetter));
        gemeldet = empfangen + blaetter;
    };
    QObject::connect(&stand, &QTimer::timeout, [&] {
        if (empfangen + blaetter != gemeldet)
            empfangMelden();
    });

    QByteArray eingang;
    QSocketNotifier stdinLeser(STDIN_FILENO, QSocketNotifier::Read);
    auto beenden = [&] {
        takt.stop();
        stand.stop();
        empfangMelden();
        QByteArray liste;
        for (const Gesendet &g : gesendet)
            liste += "s " + QByteArray::number(g.tisch) + ' ' + QByteArray::number(g.nummer) + ' ' +
                     QByteArray::number(g.us) + '\n';
        for (const QByteArray &s : summen)
            liste += "b " + s + '\n';
        int abgewiesen = 0;
        for (const auto &tisch : tische)
            abgewiesen += tisch->rejectedMessages();
        liste += "abgewiesen " + QByteArray::number(abgewiesen) + '\n';
        liste += "gegangen " + QByteArray::number(gegangen) + '\n';
        liste += "hwm " + QByteArray::number(hoechsterSpeicherKb(QStringLiteral("self")));
        zeile(liste);
        tische.clear();
        zeile("fertig");
        qApp->quit();
    };
    QObject::connect(&stdinLeser, &QSocketNotifier::activated, [&] {
        char puffer[256];
        const ssize_t n = ::read(STDIN_FILENO, puffer, sizeof puffer);
        if (n <= 0) {
            // The bench is gone: nobody to report to.
            stdinLeser.setEnabled(false);
            beenden();
            return;
        }
        eingang.append(puffer, int(n));
        while (eingang.contains('\n')) {
            const QByteArray befehl = eingang.left(eingang.indexOf('\n'));
            eingang.remove(0, befehl.size() + 1);
            if (befehl == "los") {
                startUs = jetztUs();
                takt.start();
                stand.start();
            } else if (befehl == "halt") {
                zaehlen = false;
            } else if (befehl == "ende") {
                stdinLeser.setEnabled(false);
                beenden();
                return;
            }
        }
    });
    return qApp->exec();
}

// Waits, with the events running, until bedingung holds or the time is up.
bool warten(const std::function<bool()> &bedingung, int ms)
{
    QElapsedTimer uhr;
    uhr.start();
    while (!bedingung() && uhr.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    return bedingung();
}

// Waits while `fortschritt` keeps growing, until `fertig` holds; gives up after
// `stillMs` without progress or `hoechstMs` in all.
bool wartenMitFortschritt(const std::function<bool()> &fertig,
                          const std::function<qint64()> &fortschritt, int stillMs, int hoechstMs)
{
    QElapsedTimer gesamt, still;
    gesamt.start();
    still.start();
    qint64 zuletzt = fortschritt();
    while (!fertig() && still.elapsed() < stillMs && gesamt.elapsed() < hoechstMs) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
        if (fortschritt() != zuletzt) {
            zuletzt = fortschritt();
            still.restart();
        }
    }
    return fertig();
}

// The broker of the venue in a temporary folder: keys, rules and settings as a
// venue keeps them, on a free port of loopback.
class Saal
{
public:
    Saal(const QString &ordner, int tische) : m_ordner(ordner)
    {
        QTcpServer frei;
        pruefen(frei.listen(QHostAddress::LocalHost, 0), "freier port");
        m_port = frei.serverPort();
        frei.close();

        QStringList identitaeten{QStringLiteral("tabulor")};
        for (int t = 1; t <= tische; ++t)
            identitaeten << kennung(t);
        QByteArray psk, acl;
        for (const QString &wer : identitaeten) {
            QByteArray schluessel(16, Qt::Uninitialized);
            QRandomGenerator::system()->fillRange(reinterpret_cast<quint32 *>(schluessel.data()),
                                                  4);
            // No leading zero byte, which the psk file's hex would lose on its way.
            schluessel[0] = char(schluessel[0] | 0x10);
            const QByteArray id = wer.toLatin1();
            psk += id + ':' + schluessel.toHex() + '\n';
            acl += "user " + id + "\ntopic read velmora/da/#\ntopic read velmora/alle/#\n" +
                   "topic read velmora/stand/#\ntopic read velmora/an/" + id +
                   "/#\ntopic write velmora/da/" + id + "\ntopic write velmora/alle/" + id +
                   "\ntopic write velmora/an/+/" + id + '\n';
            if (wer == QLatin1String("tabulor"))
                acl += "topic write velmora/stand/spieler/tabulor\n"
                       "topic write velmora/stand/auslosung/+/tabulor\n"
                       "topic write velmora/stand/kosten/+/tabulor\n";
            else
                acl += "topic write velmora/stand/ergebnisse/" + id + '\n';
            acl += '\n';
        }
        schreiben(QStringLiteral("psk"), psk);
        schreiben(QStringLiteral("acl"), acl);
        QDir(ordner).mkpath(QStringLiteral("daten"));
        QByteArray conf = "per_listener_settings false\n"
                          "listener " +
                          QByteArray::number(m_port) +
                          " 127.0.0.1\n"
                          "psk_hint bench\n"
                          "psk_file " +
                          pfad("psk") +
                          "\n"
                          "use_identity_as_username true\n"
                          "allow_anonymous false\n"
                          "acl_file " +
                          pfad("acl") +
                          "\n"
                          "persistence true\n"
                          "persistence_location " +
                          pfad("daten/") +
                          "\n"
                          "autosave_interval 1\n"
                          "max_packet_size 16777216\n"
                          "max_queued_messages 100000\n"
                          "max_queued_bytes 0\n"
                          "set_tcp_nodelay true\n";
        // As root the broker would turn into a user that cannot read this folder.
        if (geteuid() == 0)
            conf += "user root\n";
        schreiben(QStringLiteral("mosquitto.conf"), conf);

        m_prozess.setStandardOutputFile(pfad("mosquitto.log"));
        m_prozess.setStandardErrorFile(pfad("mosquitto.log"), QIODevice::Append);
        m_prozess.start(QStringLiteral("mosquitto"),
                        {QStringLiteral("-c"), QString::fromLocal8Bit(pfad("mosquitto.conf"))});
        pruefen(m_prozess.waitForStarted(5000), "mosquitto startet");
        pruefen(warten(
                    [this] {
                        QTcpSocket probe;
                        probe.connectToHost(QHostAddress::LocalHost, m_port);
                        return probe.waitForConnected(200);
                    },
                    10000),
                "mosquitto hoert");
    }

    ~Saal()
    {
        m_prozess.terminate();
        if (!m_prozess.waitForFinished(5000))
            m_prozess.kill();
        m_prozess.waitForFinished(2000);
    }

    quint16 port() const { return m_port; }
    QString pskDatei() const { return QString::fromLocal8Bit(pfad("psk")); }
    QByteArray schluessel(const QString &wer) const
    {
        return schluesselLesen(pskDatei()).value(wer);
    }
    qint64 hoechsterSpeicherKb() const
    {
        return ::hoechsterSpeicherKb(QString::number(m_prozess.processId()));
    }
    bool laeuft() const { return m_prozess.state() == QProcess::Running; }

private:
    QByteArray pfad(const char *name) const { return QFile::encodeName(m_ordner) + '/' + name; }
    void schreiben(const QString &name, const QByteArray &inhalt)
    {
        QFile datei(m_ordner + QLatin1Char('/') + name);
        pruefen(datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size(),
                "saal schreiben");
    }

    QString m_ordner;
    quint16 m_port = 0;
    QProcess m_prozess;
};

// One table process as the bench sees it.
struct Tischgruppe
{
    std::unique_ptr<QProcess> prozess;
    QByteArray rest;
    bool bereit = false;
    bool fertig = false;
    qint64 empfangen = 0;
    qint64 blaetter = 0;
    qint64 hwmKb = 0;
    int abgewiesen = 0;
    int gegangen = 0;
    QHash<quint64, qint64> gesendet;
    QHash<int, QByteArray> summen;
};

quint64 schluesselVon(int tisch, int nummer)
{
    return quint64(tisch) << 32 | quint32(nummer);
}

struct Lauf
{
    bool veranstaltung = true;
    int tische = 100;
    int prozesse = 4;
    int dauerS = 40;
    Abend abend;
    QString ordner;
};

double anteil(std::vector<double> &werte, double p)
{
    if (werte.empty())
        return 0;
    std::sort(werte.begin(), werte.end());
    const size_t i = size_t(std::max(0.0, std::ceil(p * double(werte.size())) - 1));
    return werte[std::min(i, werte.size() - 1)];
}

QVector<Ergebnis> abendSpielen(const Lauf &lauf)
{
    const QString art =
        lauf.veranstaltung ? QStringLiteral("Veranstaltung") : QStringLiteral("Netz");
    const QString vorn = QStringLiteral("%1, %2 Tische: ").arg(art).arg(lauf.tische);
    auto melden = [&](const QString &text) {
        std::fprintf(stderr, "%s%s\n", qPrintable(vorn), qPrintable(text));
    };
    QElapsedTimer uhr;
    uhr.start();

    std::unique_ptr<Saal> saal;
    if (lauf.veranstaltung)
        saal = std::make_unique<Saal>(lauf.ordner, lauf.tische);
    const quint16 port = saal ? saal->port() : 0;

    auto leitung = std::make_unique<Client>(
        QStringLiteral("Tabulor"),
        verbindung(lauf.veranstaltung, port, QStringLiteral("tabulor"),
                   saal ? saal->schluessel(QStringLiteral("tabulor")) : QByteArray()));
    pruefen(warten([&] { return leitung->linkOpen(); }, 10000), "leitung verbunden");

    // What the manager got: per table the numbers in order of arrival.
    struct Eingang
    {
        int nummer;
        qint64 us;
    };
    QHash<int, std::vector<Eingang>> eingang;
    QHash<int, QByteArray> summen;
    qint64 anLeitung = 0, unlesbar = 0, falscherAbsender = 0;
    int gegangen = 0;
    QObject::connect(leitung.get(), &Client::participantLeft,
                     [&gegangen](const QString &) { ++gegangen; });
    QObject::connect(
        leitung.get(), &Client::newMessage, [&](const QString &von, const QString &text) {
            const qint64 jetzt = jetztUs();
            ++anLeitung;
            const std::optional<Gelesen> g = lesen(text, lauf.abend);
            if (!g) {
                ++unlesbar;
                return;
            }
            if (lauf.veranstaltung && !von.endsWith(QLatin1Char(':') + kennung(g->tisch)))
                ++falscherAbsender;
            eingang[g->tisch].push_back({g->nummer, jetzt});
            if (g->blatt)
                summen.insert(g->tisch, g->summe);
        });

    std::vector<Tischgruppe> gruppen(size_t(lauf.prozesse));
    const int jeProzess = (lauf.tische + lauf.prozesse - 1) / lauf.prozesse;
    int erster = 1;
    for (int k = 0; k < lauf.prozesse; ++k) {
        const int anzahl = std::min(jeProzess, lauf.tische - erster + 1);
        Tischgruppe &g = gruppen[size_t(k)];
        g.prozess = std::make_unique<QProcess>();
        g.prozess->setStandardErrorFile(
            QStringLiteral("%1/%2-tische-%3.log").arg(lauf.ordner, art).arg(k));
        QProcess *p = g.prozess.get();
        QObject::connect(p, &QProcess::readyReadStandardOutput, [&g, p] {
            g.rest += p->readAllStandardOutput();
            int ende;
            while ((ende = g.rest.indexOf('\n')) >= 0) {
                const QByteArray z = g.rest.left(ende);
                g.rest.remove(0, ende + 1);
                const QList<QByteArray> teile = z.split(' ');
                if (z == "bereit")
                    g.bereit = true;
                else if (z == "fertig")
                    g.fertig = true;
                else if (teile.first() == "empfangen" && teile.size() == 3) {
                    g.empfangen = teile[1].toLongLong();
                    g.blaetter = teile[2].toLongLong();
                } else if (teile.first() == "s" && teile.size() == 4)
                    g.gesendet.insert(schluesselVon(teile[1].toInt(), teile[2].toInt()),
                                      teile[3].toLongLong());
                else if (teile.first() == "b" && teile.size() == 3)
                    g.summen.insert(teile[1].toInt(), teile[2]);
                else if (teile.first() == "abgewiesen")
                    g.abgewiesen = teile.value(1).toInt();
                else if (teile.first() == "gegangen")
                    g.gegangen = teile.value(1).toInt();
                else if (teile.first() == "hwm")
                    g.hwmKb = teile.value(1).toLongLong();
            }
        });
        p->start(QCoreApplication::applicationFilePath(),
                 {QStringLiteral("--tischprozess"),
                  lauf.veranstaltung ? QStringLiteral("venue") : QStringLiteral("lan"),
                  QString::number(port), saal ? saal->pskDatei() : QString(),
                  QString::number(erster), QString::number(anzahl), QString::number(lauf.tische),
                  QString::number(lauf.dauerS * 1000), QString::number(lauf.abend.zeilen),
                  QString::number(lauf.abend.blattBytes)});
        pruefen(p->waitForStarted(5000), "tische starten");
        erster += anzahl;
    }

    const bool alleBereit = warten(
        [&] {
            return leitung->participants().size() >= lauf.tische &&
                   std::all_of(gruppen.begin(), gruppen.end(),
                               [](const Tischgruppe &g) { return g.bereit; });
        },
        60000);
    if (!alleBereit) {
        int bereit = 0;
        for (const Tischgruppe &g : gruppen)
            bereit += g.bereit;
        melden(QStringLiteral("nicht alle verbunden: Leitung sieht %1, %2 von %3 Prozessen bereit")
                   .arg(leitung->participants().size())
                   .arg(bereit)
                   .arg(gruppen.size()));
    }
    pruefen(alleBereit, "alle verbunden");
    const double verbindenS = uhr.elapsed() / 1000.0;
    melden(QStringLiteral("alle verbunden nach %1 s").arg(verbindenS, 0, 'f', 1));

    const qint64 startUs = jetztUs();
    for (Tischgruppe &g : gruppen)
        g.prozess->write("los\n");
    const qint64 erwartet = qint64(lauf.tische) * lauf.abend.proTisch();
    const qint64 erwartetTische = qint64(lauf.tische) * 2 * lauf.abend.zeilen * (lauf.tische - 1);
    // At a venue a sheet goes to the manager alone; the mesh hands it to everyone.
    const qint64 blaetterTische = saal ? 0 : qint64(lauf.tische) * (lauf.tische - 1);
    auto beiTischen = [&] {
        qint64 summe = 0;
        for (const Tischgruppe &g : gruppen)
            summe += g.empfangen;
        return summe;
    };
    auto blaetterBeiTischen = [&] {
        qint64 summe = 0;
        for (const Tischgruppe &g : gruppen)
            summe += g.blaetter;
        return summe;
    };
    // The evening itself, then what is still on its way; a link that stops
    // moving for 30 s is taken as stuck.
    const int hoechstMs = (lauf.dauerS + 300) * 1000;
    QTimer fortschritt;
    fortschritt.setInterval(5000);
    QObject::connect(&fortschritt, &QTimer::timeout, [&] {
        melden(QStringLiteral("nach %1 s: Leitung %2 von %3, Tische %4 von %5 und %6 Blaetter%7")
                   .arg((jetztUs() - startUs) / 1.0e6, 0, 'f', 0)
                   .arg(anLeitung)
                   .arg(erwartet)
                   .arg(beiTischen())
                   .arg(erwartetTische)
                   .arg(blaetterBeiTischen())
                   .arg(saal ? QStringLiteral(", Broker %1").arg(mb(saal->hoechsterSpeicherKb()))
                             : QString()));
    });
    fortschritt.start();
    warten([&] { return jetztUs() - startUs > qint64(lauf.dauerS) * 1000000; },
           lauf.dauerS * 1000 + 1000);
    wartenMitFortschritt([&] { return anLeitung >= erwartet; }, [&] { return anLeitung; }, 30000,
                         hoechstMs);
    const double leitungS = (jetztUs() - startUs) / 1.0e6;
    wartenMitFortschritt([&] { return beiTischen() >= erwartetTische; }, beiTischen, 30000,
                         hoechstMs);
    const double tischeS = (jetztUs() - startUs) / 1.0e6;
    // The sheets, for as long as they keep coming.
    wartenMitFortschritt([&] { return blaetterBeiTischen() >= blaetterTische; }, blaetterBeiTischen,
                         10000, hoechstMs);
    const double blaetterS = (jetztUs() - startUs) / 1.0e6;
    // A little longer: what comes twice comes late.
    warten([] { return false; }, 2000);
    fortschritt.stop();
    const qint64 brokerKb = saal ? saal->hoechsterSpeicherKb() : 0;
    const bool brokerLaeuft = !saal || saal->laeuft();
    const qint64 leitungKb = hoechsterSpeicherKb(QStringLiteral("self"));
    const int leitungVerloren = gegangen;
    // Every table stops counting the others' leaving before the first one goes.
    for (Tischgruppe &g : gruppen)
        g.prozess->write("halt\n");
    warten([] { return false; }, 500);

    for (Tischgruppe &g : gruppen)
        g.prozess->write("ende\n");
    warten(
        [&] {
            return std::all_of(gruppen.begin(), gruppen.end(),
                               [](const Tischgruppe &g) { return g.fertig; });
        },
        30000);
    for (Tischgruppe &g : gruppen) {
        g.prozess->closeWriteChannel();
        if (!g.prozess->waitForFinished(10000))
            g.prozess->kill();
        g.prozess->waitForFinished(2000);
    }
    leitung.reset();
    saal.reset();

    // The manager's count against the tables' send times.
    QHash<quint64, qint64> gesendet;
    QHash<int, QByteArray> gesendeteSummen;
    qint64 tischeKb = 0;
    int abgewiesen = 0, tischeVerloren = 0;
    for (const Tischgruppe &g : gruppen) {
        gesendet.insert(g.gesendet);
        gesendeteSummen.insert(g.summen);
        tischeKb = std::max(tischeKb, g.hwmKb);
        abgewiesen += g.abgewiesen;
        tischeVerloren += g.gegangen;
        pruefen(g.fertig, "tische berichten");
    }
    pruefen(gesendet.size() == erwartet, "alles gesendet");
    qint64 angekommen = 0, doppelt = 0, vertauscht = 0, fremd = 0;
    std::vector<double> laufzeiten, blattzeiten;
    for (auto it = eingang.cbegin(); it != eingang.cend(); ++it) {
        QSet<int> gesehen;
        int hoechste = 0;
        for (const Eingang &e : it.value()) {
            const auto gesandt = gesendet.constFind(schluesselVon(it.key(), e.nummer));
            if (gesandt == gesendet.cend()) {
                ++fremd;
                continue;
            }
            if (gesehen.contains(e.nummer)) {
                ++doppelt;
                continue;
            }
            gesehen.insert(e.nummer);
            ++angekommen;
            if (e.nummer < hoechste && ++vertauscht <= 5)
                melden(QStringLiteral("Tisch %1: Nr. %2 kam nach Nr. %3, %4 ms nach dem Senden")
                           .arg(it.key())
                           .arg(e.nummer)
                           .arg(hoechste)
                           .arg((e.us - *gesandt) / 1000.0, 0, 'f', 1));
            hoechste = std::max(hoechste, e.nummer);
            const double dauer = (e.us - *gesandt) / 1000.0;
            (e.nummer == lauf.abend.blattNummer() ? blattzeiten : laufzeiten).push_back(dauer);
        }
    }
    int blaetterHeil = 0;
    for (auto it = gesendeteSummen.cbegin(); it != gesendeteSummen.cend(); ++it)
        blaetterHeil += summen.value(it.key()) == it.value();
    const qint64 verloren = erwartet - angekommen;
    const double mitte = anteil(laufzeiten, 0.5), p95 = anteil(laufzeiten, 0.95),
                 p99 = anteil(laufzeiten, 0.99), schlimmste = anteil(laufzeiten, 1.0);
    const double blattMitte = anteil(blattzeiten, 0.5), blattSchlimmste = anteil(blattzeiten, 1.0);
    melden(QStringLiteral("Leitung fertig nach %1 s, Tische nach %2 s, unlesbar %3, fremd %4, "
                          "falscher Absender %5, abgewiesen %6")
               .arg(leitungS, 0, 'f', 1)
               .arg(tischeS, 0, 'f', 1)
               .arg(unlesbar)
               .arg(fremd)
               .arg(falscherAbsender)
               .arg(abgewiesen));

    QVector<Ergebnis> e;
    e << Ergebnis{vorn + QStringLiteral("Nachrichten an die Leitung"),
                  QStringLiteral("%1 von %2, verloren %3, in %4 s")
                      .arg(angekommen)
                      .arg(erwartet)
                      .arg(verloren)
                      .arg(leitungS, 0, 'f', 1),
                  QStringLiteral("0 verloren"),
                  verloren == 0 && unlesbar == 0 && fremd == 0 && falscherAbsender == 0};
    e << Ergebnis{vorn + QStringLiteral("doppelt an die Leitung"), QString::number(doppelt),
                  QStringLiteral("0"), doppelt == 0};
    e << Ergebnis{vorn + QStringLiteral("Reihenfolge je Tisch"),
                  QStringLiteral("%1 vertauscht").arg(vertauscht), QStringLiteral("0 vertauscht"),
                  vertauscht == 0};
    const QString laufzeitZiel = lauf.veranstaltung ? QStringLiteral("99 % ≤ 200 ms") : QString();
    e << Ergebnis{vorn + QStringLiteral("Tisch → Leitung, Zeilen und Ergebnisse"),
                  QStringLiteral("Median %1 ms, 95 % %2 ms, 99 % %3 ms, max %4 ms")
                      .arg(ms(mitte), ms(p95), ms(p99), ms(schlimmste)),
                  laufzeitZiel, !lauf.veranstaltung || p99 <= 200};
    e << Ergebnis{
        vorn + QStringLiteral("Tisch → Leitung, Blatt %1 KiB").arg(lauf.abend.blattBytes / 1024),
        QStringLiteral("Median %1 ms, max %2 ms, %3 von %4 unversehrt")
            .arg(ms(blattMitte), ms(blattSchlimmste))
            .arg(blaetterHeil)
            .arg(lauf.tische),
        QStringLiteral("alle unversehrt"), blaetterHeil == lauf.tische};
    e << Ergebnis{vorn + QStringLiteral("Tische untereinander, Zeilen und Ergebnisse"),
                  QStringLiteral("%1 von %2 in %3 s")
                      .arg(beiTischen())
                      .arg(erwartetTische)
                      .arg(tischeS, 0, 'f', 1),
                  QStringLiteral("0 verloren"), beiTischen() == erwartetTische};
    // Sheets are for the manager; what the link brings the tables of them is its cost.
    e << Ergebnis{vorn + QStringLiteral("Blaetter bei den Tischen"),
                  QStringLiteral("%1 (erwartet: %2) in %3 s")
                      .arg(blaetterBeiTischen())
                      .arg(blaetterTische)
                      .arg(blaetterS, 0, 'f', 1),
                  QString(), true};
    // The mesh under this load is the comparison, not a promise: a broken link
    // between two tables there is what the venue link is for.
    const bool heil = leitungVerloren == 0 && tischeVerloren == 0;
    e << Ergebnis{vorn + QStringLiteral("abgerissene Verbindungen, Leitung / Tische"),
                  QStringLiteral("%1 / %2").arg(leitungVerloren).arg(tischeVerloren),
                  saal ? QStringLiteral("0") : QString(), !saal || heil};
    if (saal || lauf.veranstaltung)
        e << Ergebnis{vorn + QStringLiteral("Broker, hoechster Speicher"),
                      mb(brokerKb) + (brokerLaeuft ? QString() : QStringLiteral(", abgestuerzt")),
                      QStringLiteral("≤ 200 MB"), brokerLaeuft && brokerKb <= 200 * 1024};
    e << Ergebnis{
        vorn +
            QStringLiteral("hoechster Speicher, Prozess mit %1 Tischen / Leitung").arg(jeProzess),
        mb(tischeKb) + QStringLiteral(" / ") + mb(leitungKb), QString(), true};
    melden(QStringLiteral("fertig nach %1 s").arg(uhr.elapsed() / 1000.0, 0, 'f', 1));
    return e;
}

int bank(const QStringList &argumente)
{
    auto zahl = [&](const char *name, int vorgabe) {
        const int i = argumente.indexOf(QString::fromLatin1(name));
        return i > 0 ? argumente.value(i + 1).toInt() : vorgabe;
    };
    const QString nur = argumente.value(argumente.indexOf(QStringLiteral("--nur")) + 1);
    QTemporaryDir ordner;
    pruefen(ordner.isValid(), "temp");
    Lauf lauf;
    lauf.ordner = ordner.path();
    lauf.dauerS = zahl("--dauer", 40);
    lauf.prozesse = zahl("--prozesse", 4);
    lauf.abend.zeilen = zahl("--zeilen", 48);
    lauf.abend.blattBytes = zahl("--blatt-kib", 2048) * 1024;

    QVector<Ergebnis> ergebnisse;
    if (nur != QLatin1String("netz")) {
        lauf.veranstaltung = true;
        lauf.tische = zahl("--tische", 100);
        ergebnisse << abendSpielen(lauf);
    }
    if (nur != QLatin1String("veranstaltung")) {
        lauf.veranstaltung = false;
        lauf.tische = zahl("--netz-tische", 50);
        ergebnisse << abendSpielen(lauf);
    }

    return tabelleAusgeben(ergebnisse);
}

} // namespace

int main(int argc, char *argv[])
{
    // A hundred tables in four processes on the LAN keep thousands of sockets open.
    rlimit grenze{};
    if (getrlimit(RLIMIT_NOFILE, &grenze) == 0) {
        grenze.rlim_cur = grenze.rlim_max;
        setrlimit(RLIMIT_NOFILE, &grenze);
    }
    QCoreApplication app(argc, argv);
    const QStringList argumente = app.arguments();
    if (argumente.value(1) == QLatin1String("--tischprozess"))
        return tischeProzess(argumente);
    return bank(argumente);
}
