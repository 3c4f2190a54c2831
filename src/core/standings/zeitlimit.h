#pragma once

// The countdown of a series' time limit in tournament mode: the stop time and
// how it is kept in the settings store, and what one step of the countdown
// shows. The main window owns the timer and the message field.

#include <QString>
#include <QTime>

struct ZeitAnzeige
{
    enum Zustand
    {
        Laeuft,        // time left
        Abgelaufen,    // 0 minutes or less: the window says so and stops the timer
        Ueberschritten // further away than the limit allows: the timer stops
    };
    Zustand zustand = Laeuft;
    int restMinuten = 0;
    bool rot = false; // fewer than 16 minutes left
    QString text;     // for the message field
};

class Zeitlimit
{
public:
    // The countdown steps every five minutes, on the stop time less whole
    // steps: so tables with one stop time step together, and a restart keeps
    // the schedule.
    static constexpr int schrittMs = 5 * 60 * 1000;

    // Stop time of a limit started now, to the minute, as the settings store
    // keeps it; so a restart resumes exactly the countdown that was running.
    static QTime stopZeit(const QTime &jetzt, int limitMinuten);
    // "hh:mm"; empty for an invalid time.
    static QString alsText(const QTime &stopZeit);
    // A valid "hh:mm" gives the time; "openend", an empty text or anything
    // else gives an invalid QTime.
    static QTime ausText(const QString &text);

    // Seconds from now to the stop time. Only the time of day is kept, so a
    // stop time up to 12 hours behind now is taken as one after midnight (a
    // club evening may run past it) and one more than 12 hours ahead as
    // already passed. A limit longer than 12 hours therefore cannot be told
    // from one that ran out. 0 when either time is invalid.
    static int sekundenBis(const QTime &jetzt, const QTime &stopZeit);

    // One step of the countdown.
    static ZeitAnzeige schritt(const QTime &jetzt, const QTime &stopZeit, int limitMinuten);
    // Milliseconds from now to the next step, more than 0 and at most one
    // step: the first wait of a countdown that starts or resumes.
    static int bisSchrittMs(const QTime &jetzt, const QTime &stopZeit);

    // At start-up a stored stop time is resumed only when it still lies ahead.
    static bool fortsetzen(const QTime &jetzt, const QTime &stopZeit);
};
