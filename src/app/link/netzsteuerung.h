#pragma once

// The table's link to the tournament manager and to the other tables: who is
// there, what arrives and what this table sends. Messages from the manager
// (player list, draw, costs) and from other tables (results, table numbers,
// second-list requests) are checked here and handed on as what they mean;
// the window's parts send through it.

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

class Client;
class ListenDienst;
class QMainWindow;
struct ListenAenderung;
struct Nachricht;
struct SpielEintrag;

namespace Ui {
class MainWindow;
}

// Who is paired with whom: a first list with the second list that copies it,
// or a second list with the first list it copies.
struct Paarung
{
    int gepaarterTisch = 0; // second list: the first list's table; 0 when not a second list
    int letzterTisch = 0;   // second list: the table of the last pairing kept as a copy
    bool hatZweitliste = false;
    bool wartet = false;
    QString zweitlisteAdresse; // first list: where the rows go
    QString ersteListeAdresse; // second list: where the sign-off goes

    // Unpaired; the table of a kept copy is remembered.
    void aufheben()
    {
        const int letzter = letzterTisch;
        *this = Paarung();
        letzterTisch = letzter;
    }
};

class NetzSteuerung : public QObject
{
    Q_OBJECT

public:
    NetzSteuerung(QMainWindow *fenster, Ui::MainWindow &ui, ListenDienst &dienst);
    ~NetzSteuerung() override;

    Client *client() const { return m_client; }
    QString eigeneAdresse() const { return m_eigeneAdresse; }
    bool managerVerbunden() const { return m_managerVerbunden; }
    bool wlanBenutzt() const { return m_wlan; }
    // Table number known for each participant's address, this table's included.
    const QMap<QString, int> &tischVonAdresse() const { return m_tischVonAdresse; }
    Paarung &paarung() { return m_paarung; }

    void appendMessage(const QString &von, const QString &text);
    void newParticipant(const QString &kennung);
    void rechnerAbmeldung(const QString &kennung);
    void spielerdatenAnfordern();
    void onWlanBenutzen(bool benutzen);

    // Tells everybody this table's number (on opening the list, after a new one).
    void tischNummerSenden();
    // The results of this table, one "name|table|series|points|won|lost|costs|-|place"
    // per player.
    void ergebnisseSenden(const QStringList &ergebnisse);
    // At the end of a round: with a manager, asks whether to send the sheet;
    // true when the scorer wants it. Without one only says that the round ended.
    bool rundenEndeFragen();
    // The score sheet's PDF as its name and then its compressed content.
    void blattSenden(const QString &pdfPfad);

    void senden(int typ, const QString &adresse, const QStringList &inhalt);

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
    void managerGeaendert(bool verbunden);

private:
    void listeGeaendert(const ListenAenderung &aenderung);
    void vomManager(const Nachricht &nachricht);
    void vonTisch(const QString &adresse, const Nachricht &nachricht);
    void zweitlisteAnfrage(const Nachricht &nachricht);
    void zeileSenden(const SpielEintrag &spiel);
    void steuerelementeTauschen(bool manager);
    int eigeneTischNr() const;
    void status(const QString &text);

    QMainWindow *m_fenster;
    Ui::MainWindow &m_ui;
    ListenDienst &m_dienst;
    Client *m_client = nullptr;
    QString m_eigeneAdresse;
    QMap<QString, int> m_tischVonAdresse;
    bool m_managerVerbunden = false;
    bool m_wlan = true;

    Paarung m_paarung;
};
