#pragma once

// What the venue bench's tables send and how the manager reads it back, and
// the small helpers the bench's processes share.

#include "core/link/nachricht.h"
#include "core/link/spielzeile.h"
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

namespace Bank {

// Microseconds of the wall clock, the same in every process of the run.
inline qint64 jetztUs()
{
    timespec t{};
    clock_gettime(CLOCK_REALTIME, &t);
    return qint64(t.tv_sec) * 1000000 + t.tv_nsec / 1000;
}

inline void pruefen(bool ok, const char *was)
{
    if (!ok)
        qFatal("Messung ungueltig: %s", was);
}

// Peak resident memory in KB of a process, from /proc.
inline qint64 hoechsterSpeicherKb(const QString &pid)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &zeile : status.readAll().split('\n'))
        if (zeile.startsWith("VmHWM:"))
            return zeile.mid(6).trimmed().split(' ').first().toLongLong();
    return -1;
}

inline QString mb(qint64 kb)
{
    return QString::number(kb / 1024.0, 'f', 1) + QStringLiteral(" MB");
}

inline QString ms(double wert)
{
    return QString::number(wert, 'f', wert < 10 ? 2 : 1);
}

inline QString kennung(int tisch)
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

inline int alleinspieler(int spiel)
{
    return spiel % 4;
}

inline bool gewonnen(int spiel)
{
    return spiel % 7 != 0;
}

inline int spielwert(int spiel)
{
    return 18 + (spiel * 7) % 40;
}

inline QString zeileText(const QString &adresse, int tisch, int spiel)
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
inline QString ergebnisText(const QString &adresse, int tisch, int spiele)
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

inline QString blattName(int tisch)
{
    return QStringLiteral("Skat_Tisch%1.pdf").arg(tisch);
}

inline QByteArray pruefsumme(const QByteArray &daten)
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

inline std::optional<Gelesen> lesen(const QString &text, const Abend &abend)
{
    const std::optional<Nachricht> n = Nachricht::lesen(text);
    if (!n)
        return std::nullopt;
    Gelesen g;
    if (n->typ == Nachricht::Zeile && n->inhalt.size() == 20 &&
        SpielZeile::spielAus(n->inhalt, SpielZeile::ersteSpielItem)) {
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
inline QHash<QString, QByteArray> schluesselLesen(const QString &pfad)
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

inline LinkSettings verbindung(bool veranstaltung, quint16 port, const QString &identitaet,
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

// The table processes (--tischprozess); see tischprozess.cpp.
int tischeProzess(const QStringList &a);

} // namespace Bank
