#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>

namespace Velmora {

// What the client needs of a way to reach the others: the serverless mesh
// on the LAN, or a venue's broker. Participant ids look the same on both.
class Anschluss : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual QString eigeneId() const = 0;
    virtual QStringList teilnehmer() const = 0;
    virtual QString eigeneAdresse() const = 0;
    virtual QString lokaleAdresse(const QString &id) const = 0;
    virtual void senden(const QString &text) = 0;
    virtual void schluesselSetzen(const QByteArray &schluessel) = 0;
    virtual int anzahlAbgewiesen() const = 0;

signals:
    void beigetreten(const QString &id);
    void nachricht(const QString &id, const QString &text);
    void gegangen(const QString &id);
    void eigeneAdresseGeaendert(const QString &adresse);
    void abgewiesen(const QString &id);
    // Whether the way to the others is open, with what the other side or
    // the library said when it is not.
    void zustandGeaendert(bool offen, const QString &grund);
    // The other side refused a message this participant sent.
    void verweigert(const QString &grund);
};

} // namespace Velmora
