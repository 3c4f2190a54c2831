#pragma once

// The topic tree of the venue link (docs/lan-protocol.md, "Venue mode"):
// where a message goes on the broker, and who sent one that arrives. The
// sender is always the last level, which the broker's rules tie to the
// identity the connection authenticated with. Texts in, topics out, so every
// rule can be checked without a broker.

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>

namespace Velmora::Themen {

QString anwesenheit(const QString &identitaet);
// Presence first: the retained state that follows names its senders.
QStringList abonnements(const QString &identitaet);

struct Ziel
{
    QString thema;
    // State the broker keeps for whoever comes later.
    bool behalten = false;
};

// Where a text goes: a player list, a draw, costs and a table's results
// are state, kept per table address; what only the manager reads (a request
// for the draw, a sheet) goes to the inbox of "tabulor"; a reply or a notice
// for one other participant to its inbox when its identity is known;
// everything else to all. `identitaetVon` gives the identity at an address, empty if none.
Ziel ziel(const QString &text, const QString &absender, const QString &eigeneAdresse,
          const std::function<QString(const QString &)> &identitaetVon);

// The sender of a message topic this participant subscribed to; empty for
// a topic outside the tree, presence, or another's inbox.
QString absender(const QString &thema, const QString &eigene);
// The identity a presence topic speaks for; empty for every other topic.
QString anwesend(const QString &thema);

// Each sender numbers its messages; QoS 1 may bring one twice, after a
// reconnect or with the broker's kept state, and the second one is dropped.
class Doppelfilter
{
public:
    // True the first time this sender's number is seen.
    bool neu(const QString &absender, quint64 nummer);

private:
    struct Gesehen
    {
        // Numbers below are all taken as seen; only the recent ones are kept.
        quint64 unter = 0;
        QSet<quint64> nummern;
    };
    QHash<QString, Gesehen> m_gesehen;
};

} // namespace Velmora::Themen
