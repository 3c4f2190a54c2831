#pragma once

// The table's link to the tournament manager and to the other tables: who is
// there, what arrives and what this table sends. Each message is taken only
// from the participant it may come from, in the state it belongs to
// (core/link/empfang.h), and handed on as what it means; what is refused is
// counted in the status line, never boxed. The window's parts send through it.
// The pairing with a second list is read here and changed by its own part.

#include <QMap>
#include <QMetaObject>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

class Client;
class Einstellungen;
class ListenDienst;
class Paarung;
class QWidget;
struct ListenAenderung;
struct Nachricht;
class SpielEintrag;

class NetzSteuerung : public QObject
{
    Q_OBJECT

public:
    // Boxes open over the widget given, which also owns this part.
    NetzSteuerung(QWidget *eltern, ListenDienst &dienst, Einstellungen &einstellungen,
                  const Paarung &paarung, Client &client);
    ~NetzSteuerung() override;

    // The address this table goes by: the local end of its connection to the
    // manager, before that the address of the interface its beacons go out on.
    QString eigeneAdresse() const { return m_eigeneAdresse; }
    bool wlanBenutzt() const { return m_wlan; }
    // Table number known for each other table's address.
    const QMap<QString, int> &tischVonAdresse() const { return m_tischVonAdresse; }
    // Messages refused since the start: wrong sender, wrong state, too much.
    int abgewiesen() const { return m_abgewiesen; }

    void appendMessage(const QString &von, const QString &text);
    void newParticipant(const QString &kennung);
    void rechnerAbmeldung(const QString &kennung);
    void spielerdatenAnfordern();
    void onWlanBenutzen(bool benutzen);

    // Tells everybody this table's number (on opening the list, after a new one).
    void tischNummerSenden();
    // This table's results, one "name|table|series|points|won|lost|costs|-|number"
    // per player; sent when they differ from the last sent, and not while a
    // pairing holds them back.
    void ergebnisseSenden(const QStringList &ergebnisse);
    // At the end of a round: with a manager, asks whether to send the sheet;
    // true when the scorer wants it. Without one, and on a second list, only
    // says that the round ended.
    bool rundenEndeFragen();
    // The score sheet's PDF as its name and then its compressed content.
    void blattSenden(const QString &pdfPfad);

    void senden(int typ, const QString &adresse, const QStringList &inhalt);
    // Every stored game as a copy for the second list at that address.
    void zeilenKopieren(const QString &adresse);
    // Sent as coming from this table's own address.
    void vonHierSenden(int typ, const QStringList &inhalt);
    // What the "Neu" page asks for while it is open: a draw answers it.
    void neueListeAngaben(bool offen, const QString &tisch, const QString &serie);

signals:
    void spielerListe(const QStringList &spieler);
    // A draw for this table: table, series and "number|name|member|prize" per seat.
    void auslosung(int tischNr, int serie, const QStringList &sitze);
    void kosten(const QStringList &werte);
    // The manager's group for this table.
    void gruppe(const QString &gruppe);
    // Results another table sent.
    void ergebnisseEmpfangen(const QStringList &ergebnisse);
    // The second list's side of a pairing; its own part takes them.
    void zweitlisteSpieler(const QString &ersteListe, const QStringList &inhalt);
    void ersteListeZeile(const QStringList &inhalt);
    void ersteListeKopie(const QStringList &inhalt);
    // The first list's side: a table asks to keep this list again.
    void zweitlisteAngefragt(const QString &von);
    // The first list refused this second list, or the second list left.
    void zweitlisteAbgelehnt();
    void partnerAbgemeldet();
    // With a manager the players come from its draw, not from the scorer.
    void spielerVomManager(bool sperren);
    void statusMeldung(const QString &text, int dauer);
    void managerGeaendert(bool verbunden);
    // The manager came from an address not seen before in this run: the
    // ranking starts afresh. After a restart or a dropped WLAN it is kept.
    void managerErstmals();
    // This table's results are wanted again: a manager came, or a pairing
    // that held them back ended.
    void ergebnisseGefragt();

private:
    enum class Hinweis
    {
        TischVergeben,
        Auslosung,
        Abgelehnt,
        Abgemeldet
    };

    void listeGeaendert(const ListenAenderung &aenderung);
    void vomManager(const Nachricht &nachricht);
    void vonTisch(const QString &von, const Nachricht &nachricht);
    void auslosungPruefen(const Nachricht &nachricht);
    void zeileSenden(const SpielEintrag &spiel);
    void steuerelementeTauschen(bool manager);
    void empfangSchalten();
    void schluesselSetzen(const QString &schluessel);
    // A box of that kind, unless one is open: then the text goes to the status line.
    void hinweisZeigen(Hinweis art, const QString &text);
    void abweisen(const QString &von, const Nachricht &nachricht, const QString &grund);
    int eigeneTischNr() const;
    void status(const QString &text);

    QWidget *m_eltern;
    ListenDienst &m_dienst;
    Einstellungen &m_einstellungen;
    Client &m_client;
    const Paarung &m_paarung;
    bool m_neuOffen = false;
    QString m_neuTisch;
    QString m_neuSerie;
    QMetaObject::Connection m_empfang;
    QString m_eigeneAdresse;
    QMap<QString, int> m_tischVonAdresse;
    QString m_managerId;
    QSet<QString> m_managerAdressen;
    QSet<QString> m_fremdeManager;
    bool m_wlan = true;
    bool m_ergebnisseErlaubt = true;
    QStringList m_gesendet;
    int m_abgewiesen = 0;
    QSet<int> m_offeneHinweise;
};
