#include "velmora/themen.h"

#include <QStringBuilder>

#include <algorithm>
#include <vector>

namespace Velmora::Themen {

namespace {

const QString wurzel = QStringLiteral("velmora/");
// The manager's identity, as the venue's set-up names it.
constexpr char leitung[] = "tabulor";

// The header of "<type>:<address>:<group>$...": type and address.
bool kopfLesen(const QString &text, int &typ, QString &adresse)
{
    const int dollar = text.indexOf(QLatin1Char('$'));
    if (dollar < 0)
        return false;
    const QStringList kopf = text.left(dollar).split(QLatin1Char(':'));
    if (kopf.size() != 3)
        return false;
    bool zahl = false;
    typ = kopf.at(0).toInt(&zahl);
    adresse = kopf.at(1);
    // A level holds no wildcard or separator.
    return zahl && !adresse.contains(QLatin1Char('/')) && !adresse.contains(QLatin1Char('+')) &&
           !adresse.contains(QLatin1Char('#'));
}

bool stufeGut(const QString &stufe)
{
    return !stufe.isEmpty() && !stufe.contains(QLatin1Char('+')) &&
           !stufe.contains(QLatin1Char('#'));
}

} // namespace

QString anwesenheit(const QString &identitaet)
{
    return wurzel % QStringLiteral("da/") % identitaet;
}

QStringList abonnements(const QString &identitaet)
{
    return {wurzel % QStringLiteral("da/+"), wurzel % QStringLiteral("stand/#"),
            wurzel % QStringLiteral("alle/+"),
            wurzel % QStringLiteral("an/") % identitaet % QStringLiteral("/+")};
}

Ziel ziel(const QString &text, const QString &absender, const QString &eigeneAdresse,
          const std::function<QString(const QString &)> &identitaetVon)
{
    int typ = 0;
    QString adresse;
    const bool kopf = kopfLesen(text, typ, adresse);
    if (kopf && !adresse.isEmpty()) {
        switch (typ) {
        case 4:
            return {wurzel % QStringLiteral("stand/spieler/") % absender, true};
        case 7:
            return {wurzel % QStringLiteral("stand/ergebnisse/") % absender, true};
        case 6:
            return {wurzel % QStringLiteral("stand/auslosung/") % adresse % u'/' % absender, true};
        case 15:
            return {wurzel % QStringLiteral("stand/kosten/") % adresse % u'/' % absender, true};
        case 5:
        case 16:
        case 17:
            // For the manager alone: a sheet to every table would make every
            // row wait behind it. Its session keeps them while it is away.
            return {wurzel % QStringLiteral("an/") % QLatin1String(leitung) % u'/' % absender};
        case 3:
        case 9:
        case 10:
        case 11:
        case 14:
            if (adresse != eigeneAdresse) {
                const QString empfaenger = identitaetVon(adresse);
                if (!empfaenger.isEmpty())
                    return {wurzel % QStringLiteral("an/") % empfaenger % u'/' % absender};
            }
            break;
        default:
            break;
        }
    }
    return {wurzel % QStringLiteral("alle/") % absender};
}

QString absender(const QString &thema, const QString &eigene)
{
    if (!thema.startsWith(wurzel))
        return QString();
    const QStringList stufen = thema.mid(wurzel.size()).split(QLatin1Char('/'));
    const QString art = stufen.value(0);
    const QString wer = stufen.constLast();
    if (!stufeGut(wer))
        return QString();
    const int n = stufen.size();
    const bool passt =
        (art == QLatin1String("alle") && n == 2) ||
        (art == QLatin1String("an") && n == 3 && stufen.at(1) == eigene) ||
        (art == QLatin1String("stand") && n == 3 &&
         (stufen.at(1) == QLatin1String("spieler") ||
          stufen.at(1) == QLatin1String("ergebnisse"))) ||
        (art == QLatin1String("stand") && n == 4 &&
         (stufen.at(1) == QLatin1String("auslosung") || stufen.at(1) == QLatin1String("kosten")));
    return passt ? wer : QString();
}

QString anwesend(const QString &thema)
{
    const QString vorn = wurzel % QStringLiteral("da/");
    if (!thema.startsWith(vorn))
        return QString();
    const QString wer = thema.mid(vorn.size());
    return stufeGut(wer) && !wer.contains(QLatin1Char('/')) ? wer : QString();
}

bool Doppelfilter::neu(const QString &absender, quint64 nummer)
{
    constexpr int behalten = 8192;
    Gesehen &gesehen = m_gesehen[absender];
    if (nummer < gesehen.unter || gesehen.nummern.contains(nummer))
        return false;
    gesehen.nummern.insert(nummer);
    if (gesehen.nummern.size() > 2 * behalten) {
        // Keep the newer half; what is older than that comes back no more.
        std::vector<quint64> alle(gesehen.nummern.cbegin(), gesehen.nummern.cend());
        std::nth_element(alle.begin(), alle.begin() + behalten, alle.end());
        gesehen.unter = alle[behalten];
        for (auto it = gesehen.nummern.begin(); it != gesehen.nummern.end();)
            it = *it < gesehen.unter ? gesehen.nummern.erase(it) : std::next(it);
    }
    return true;
}

} // namespace Velmora::Themen
