#include "core/standings/zeitlimit.h"

#include <QRegularExpression>

namespace {

constexpr int halberTag = 12 * 3600;
constexpr int ganzerTag = 24 * 3600;

} // namespace

QTime Zeitlimit::stopZeit(const QTime &jetzt, int limitMinuten)
{
    if (!jetzt.isValid())
        return QTime();
    const QTime stop = jetzt.addSecs(limitMinuten * 60);
    return QTime(stop.hour(), stop.minute());
}

QString Zeitlimit::alsText(const QTime &stopZeit)
{
    return stopZeit.isValid() ? stopZeit.toString(QStringLiteral("hh:mm")) : QString();
}

QTime Zeitlimit::ausText(const QString &text)
{
    // Two digits each and nothing around them, as alsText writes it; "openend" and anything
    // else mean no countdown. QTime checks the ranges (25:00 is invalid).
    static const QRegularExpression form(
        QRegularExpression::anchoredPattern(QStringLiteral("([0-9]{2}):([0-9]{2})")));
    const QRegularExpressionMatch treffer = form.match(text);
    if (!treffer.hasMatch())
        return QTime();
    return QTime(treffer.captured(1).toInt(), treffer.captured(2).toInt());
}

int Zeitlimit::sekundenBis(const QTime &jetzt, const QTime &stopZeit)
{
    if (!jetzt.isValid() || !stopZeit.isValid())
        return 0;
    int sekunden = jetzt.secsTo(stopZeit);
    if (sekunden < -halberTag)
        sekunden += ganzerTag;
    if (sekunden > halberTag)
        sekunden -= ganzerTag;
    return sekunden;
}

ZeitAnzeige Zeitlimit::schritt(const QTime &jetzt, const QTime &stopZeit, int limitMinuten)
{
    ZeitAnzeige anzeige;
    anzeige.restMinuten = sekundenBis(jetzt, stopZeit) / 60;
    // Further away than the limit allows, e.g. restored after the limit was lowered.
    if (anzeige.restMinuten > limitMinuten) {
        anzeige.zustand = ZeitAnzeige::Ueberschritten;
        anzeige.text = QStringLiteral("Spielzeit ueberschritten!");
        return anzeige;
    }
    anzeige.text = QStringLiteral("Verbleibende Zeit %1 Minuten").arg(anzeige.restMinuten);
    anzeige.rot = anzeige.restMinuten < 16;
    if (anzeige.restMinuten <= 0)
        anzeige.zustand = ZeitAnzeige::Abgelaufen;
    return anzeige;
}

int Zeitlimit::bisSchrittMs(const QTime &jetzt, const QTime &stopZeit)
{
    // A whole day is a whole number of steps, so it does not matter on which side of
    // midnight the stop time lies.
    const int rest = jetzt.msecsTo(stopZeit) % schrittMs;
    return rest > 0 ? rest : rest + schrittMs;
}

bool Zeitlimit::fortsetzen(const QTime &jetzt, const QTime &stopZeit)
{
    return sekundenBis(jetzt, stopZeit) > 0;
}
