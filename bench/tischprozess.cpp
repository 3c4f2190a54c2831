// The tables of one process of the venue bench: they join, wait until all
// see each other and the manager, then play their evening on command.

#include "abend.h"

namespace Bank {

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

} // namespace Bank
