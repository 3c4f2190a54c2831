#pragma once

#include "velmora/anschluss.h"
#include "velmora/themen.h"

#include <QHash>
#include <QTimer>

#include <memory>

struct mosquitto;
struct mosquitto_message;
typedef struct mqtt5__property mosquitto_property;
class QSocketNotifier;
class QTcpSocket;

namespace Velmora {

// Who this participant is at the venue and where the broker is.
struct Zugang
{
    QString rechner;
    quint16 port = 8883;
    QString identitaet;
    QByteArray schluessel;
};

// The link through a venue's MQTT 5 broker: TLS with a pre-shared key per
// participant, QoS 1 into a session the broker keeps, presence as a kept
// "online" with a kept last will "offline". Runs on Qt's event loop: the
// library's socket is watched with notifiers, a timer does its keepalive.
class Broker : public Anschluss
{
    Q_OBJECT

public:
    Broker(const QString &programm, const Zugang &zugang, QObject *parent);
    ~Broker() override;

    QString eigeneId() const override;
    QStringList teilnehmer() const override;
    QString eigeneAdresse() const override { return m_eigeneAdresse; }
    QString lokaleAdresse(const QString &id) const override;
    void senden(const QString &text) override;
    // The pre-shared key keeps strangers out at the handshake already.
    void schluesselSetzen(const QByteArray &) override {}
    int anzahlAbgewiesen() const override { return m_abgewiesen; }
    bool offen() const { return m_offen; }

private:
    struct Anwesend
    {
        QString programm;
        QString adresse;
        bool online = false;
        QString id() const;
    };

    static void beimVerbinden(mosquitto *, void *selbst, int rc, int flags,
                              const mosquitto_property *);
    static void beimVeroeffentlichen(mosquitto *, void *selbst, int mid, int rc,
                                     const mosquitto_property *);
    static void beiNachricht(mosquitto *, void *selbst, const mosquitto_message *nachricht,
                             const mosquitto_property *eigenschaften);

    void versuchen();
    void anmelden();
    void verbunden(int rc, bool sitzungDa);
    void verloren(const QString &grund);
    void lesen();
    void schreiben();
    void pflegen();
    // After each step of the library: the link lost, or what is left to write.
    void weiter(int rc);
    void schreibenAnmelden();
    void anwesenheitMelden(bool online);
    void anwesenheit(const QString &identitaet, const QString &text,
                     const mosquitto_property *eigenschaften);
    void empfangen(const QString &thema, const QByteArray &nutzlast,
                   const mosquitto_property *eigenschaften);
    bool veroeffentlichen(const QString &thema, const QByteArray &nutzlast, bool behalten,
                          quint64 nummer);
    void verwerfen(const QString &id, const char *grund);

    QString m_programm;
    Zugang m_zugang;
    mosquitto *m_mosq = nullptr;
    QString m_eigeneAdresse;
    bool m_offen = false;
    bool m_ersteVerbindung = true;
    QString m_letzterGrund;
    std::unique_ptr<QSocketNotifier> m_lesen;
    std::unique_ptr<QSocketNotifier> m_schreiben;
    QTcpSocket *m_probe = nullptr;
    QTimer m_takt;
    QTimer m_nochmal;
    QHash<QString, Anwesend> m_anwesend;
    Themen::Doppelfilter m_doppelt;
    quint64 m_zaehler = 0;
    int m_abgewiesen = 0;
    // What was said while the broker was out of reach, in order.
    struct Wartend
    {
        QString thema;
        QByteArray nutzlast;
        bool behalten;
        quint64 nummer;
    };
    QList<Wartend> m_wartend;
    qint64 m_wartendBytes = 0;
    // Messages from identities whose presence has not come yet.
    QHash<QString, QList<QString>> m_unbekannt;
    qint64 m_unbekanntBytes = 0;
    // Sent, by message id, until the broker confirms it.
    QHash<int, Wartend> m_unbestaetigt;
};

} // namespace Velmora
