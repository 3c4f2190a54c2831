#include "app/link/netzsteuerung.h"

#include "core/link/empfang.h"
#include "core/link/nachricht.h"
#include "core/link/paarung.h"
#include "core/link/spielzeile.h"
#include "core/service/einstellungen.h"
#include "core/service/listendienst.h"
#include "core/standings/spielmodus.h"
#include "velmora/client.h"

#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QMessageBox>

namespace {

Kartulo::SpielTupel alsTupel(const SpielEintrag &e)
{
    // The library takes the core's tuple as it is; no element may convert.
    static_assert(std::is_same_v<SpielZeile::Tupel, Kartulo::SpielTupel>);
    return SpielZeile::tupel(e);
}

// Messages a table addresses to this one, possibly by the address it sees
// this table at rather than the one the manager sees.
bool vonPartnerAdressiert(int typ)
{
    return typ == Nachricht::ZweitlisteSpieler || typ == Nachricht::ZweitlisteAbgelehnt ||
           typ == Nachricht::ZweitlisteAbgemeldet || typ == Nachricht::ZeileKopie;
}

} // namespace

NetzSteuerung::NetzSteuerung(QWidget *eltern, ListenDienst &dienst, Einstellungen &einstellungen,
                             const Paarung &paarung, Client &client)
    : QObject(eltern), m_eltern(eltern), m_dienst(dienst), m_einstellungen(einstellungen),
      m_client(client), m_paarung(paarung)
{
    connect(&m_client, &Client::newParticipant, this, &NetzSteuerung::newParticipant);
    connect(&m_client, &Client::participantLeft, this, &NetzSteuerung::rechnerAbmeldung);
    m_eigeneAdresse = m_client.ownAddress();
    connect(&m_client, &Client::ownAddressChanged, this, [this](const QString &adresse) {
        if (m_managerId.isEmpty())
            m_eigeneAdresse = adresse;
    });
    connect(&m_client, &Client::messageRejected, this, [this] {
        status(QStringLiteral("%1 Nachrichten ohne gueltigen Schluessel verworfen")
                   .arg(m_client.rejectedMessages()));
    });
    connect(&m_paarung, &Paarung::geaendert, this, [this] {
        const bool vorher = m_ergebnisseErlaubt;
        m_ergebnisseErlaubt = m_paarung.ergebnisseErlaubt();
        if (m_ergebnisseErlaubt && !vorher)
            emit ergebnisseGefragt();
    });

    m_client.setKey(m_einstellungen.turnierschluessel().toUtf8());
    connect(&m_einstellungen, &Einstellungen::turnierschluesselGeaendert, this,
            &NetzSteuerung::schluesselSetzen);

    connect(&m_dienst, &ListenDienst::geaendert, this, &NetzSteuerung::listeGeaendert);
    empfangSchalten();
}

NetzSteuerung::~NetzSteuerung() = default;

int NetzSteuerung::eigeneTischNr() const
{
    return m_dienst.kopf().tischNr;
}

void NetzSteuerung::status(const QString &text)
{
    emit statusMeldung(text, 0);
}

void NetzSteuerung::neueListeAngaben(bool offen, const QString &tisch, const QString &serie)
{
    m_neuOffen = offen;
    m_neuTisch = tisch;
    m_neuSerie = serie;
}

void NetzSteuerung::schluesselSetzen(const QString &schluessel)
{
    m_client.setKey(schluessel.toUtf8());
    status(schluessel.isEmpty() ? QStringLiteral("Nachrichten ohne Turnierschluessel")
                                : QStringLiteral("Nachrichten mit Turnierschluessel"));
}

void NetzSteuerung::empfangSchalten()
{
    // Messages are taken in tournament mode only, and not with the WLAN switched off.
    const bool an = m_wlan && m_dienst.kopf().modus == Spielmodus::Turnier;
    if (an == static_cast<bool>(m_empfang))
        return;
    if (an) {
        m_empfang = connect(&m_client, &Client::newMessage, this, &NetzSteuerung::appendMessage);
    } else {
        disconnect(m_empfang);
        m_empfang = {};
    }
}

void NetzSteuerung::senden(int typ, const QString &adresse, const QStringList &inhalt)
{
    Nachricht nachricht;
    nachricht.typ = typ;
    nachricht.adresse = adresse;
    nachricht.gruppe = m_dienst.kopf().gruppe;
    nachricht.inhalt = inhalt;
    m_client.sendMessage(nachricht.text());
}

void NetzSteuerung::zeilenKopieren(const QString &adresse)
{
    for (const SpielEintrag &spiel : m_dienst.spiele())
        senden(Nachricht::ZeileKopie, adresse, Kartulo::mapFromSpiel(alsTupel(spiel)));
}

void NetzSteuerung::vonHierSenden(int typ, const QStringList &inhalt)
{
    senden(typ, m_eigeneAdresse, inhalt);
}

void NetzSteuerung::hinweisZeigen(Hinweis art, const QString &text)
{
    // A flood of such messages must not stack boxes the scorer has to click away.
    const int kind = static_cast<int>(art);
    if (m_offeneHinweise.contains(kind)) {
        status(QString(text).replace(QLatin1Char('\n'), QLatin1Char(' ')));
        return;
    }
    m_offeneHinweise.insert(kind);
    QMessageBox::information(m_eltern, QStringLiteral("INFO"), text);
    m_offeneHinweise.remove(kind);
}

void NetzSteuerung::abweisen(const QString &von, const Nachricht &n, const QString &grund)
{
    ++m_abgewiesen;
    status(QStringLiteral("%1 Nachrichten abgewiesen, zuletzt Typ %2 von %3: %4")
               .arg(m_abgewiesen)
               .arg(n.typ)
               .arg(von.left(80), grund));
}

void NetzSteuerung::appendMessage(const QString &von, const QString &text)
{
    if (von.isEmpty() || text.isEmpty())
        return;
    const std::optional<Nachricht> nachricht = Nachricht::lesen(text);
    if (!nachricht || nachricht->typ == Nachricht::Unlesbar)
        return;
    const ListenKopf &kopf = m_dienst.kopf();
    Empfang::Lage lage;
    lage.managerId = m_managerId;
    lage.anMich =
        nachricht->adresse == m_eigeneAdresse ||
        (vonPartnerAdressiert(nachricht->typ) && nachricht->adresse == m_client.localAddress(von));
    lage.gruppe = kopf.gruppe;
    lage.tischNr = eigeneTischNr();
    lage.serie = kopf.serie;
    lage.spieler = m_dienst.listenTyp();
    lage.paarung = &m_paarung;
    const Empfang::Urteil urteil = Empfang::pruefen(von, *nachricht, lage);
    if (urteil.art == Empfang::Urteil::Abweisen)
        abweisen(von, *nachricht, urteil.grund);
    else if (urteil.art == Empfang::Urteil::Annehmen && von == m_managerId)
        vomManager(*nachricht);
    else if (urteil.art == Empfang::Urteil::Annehmen)
        vonTisch(von, *nachricht);
}

void NetzSteuerung::vomManager(const Nachricht &n)
{
    switch (n.typ) {
    case Nachricht::TischVergeben:
        hinweisZeigen(
            Hinweis::TischVergeben,
            QStringLiteral("Tisch %1 ist schon vergeben!").arg(n.inhalt.value(0).toInt()));
        break;
    case Nachricht::SpielerListe:
        // A second list takes its players from its first list only.
        if (!m_paarung.istZweitliste())
            emit spielerListe(n.inhalt);
        break;
    case Nachricht::Auslosung:
        auslosungPruefen(n);
        break;
    case Nachricht::Kosten:
        // Table, series and count are checked where the values go.
        emit kosten(n.inhalt);
        break;
    default:
        break;
    }
}

void NetzSteuerung::auslosungPruefen(const Nachricht &n)
{
    emit gruppe(n.gruppe);
    // While the "Neu" page is open the draw answers what it asked for, on a
    // fresh list too; otherwise it is for the list's own table.
    const int tisch = m_neuOffen ? m_neuTisch.toInt() : eigeneTischNr();
    const QStringList sitze = n.inhalt.mid(2);
    const bool passt = n.inhalt.value(0).toInt() == tisch && sitze.size() >= 3 &&
                       (!m_neuOffen || n.inhalt.value(1).toInt() == m_neuSerie.toInt());
    if (!passt) {
        hinweisZeigen(
            Hinweis::Auslosung,
            QStringLiteral("Auslosung noch nicht abgeschlossen\noder Tisch %1 nicht vorhanden!")
                .arg(tisch));
        return;
    }
    emit auslosung(tisch, n.inhalt.value(1).toInt(), sitze);
}

void NetzSteuerung::vonTisch(const QString &von, const Nachricht &n)
{
    switch (n.typ) {
    case Nachricht::Ergebnisse:
        emit ergebnisseEmpfangen(n.inhalt);
        break;
    case Nachricht::ZweitlisteAnfrage:
        emit zweitlisteAngefragt(von);
        break;
    case Nachricht::ZweitlisteSpieler:
        emit zweitlisteSpieler(von, n.inhalt);
        emit gruppe(n.gruppe);
        break;
    case Nachricht::ZweitlisteAbgelehnt:
        emit zweitlisteAbgelehnt();
        // A first list gives a short reason; a box took seconds per megabyte to lay out.
        hinweisZeigen(Hinweis::Abgelehnt, n.inhalt.at(1).left(200));
        break;
    case Nachricht::ZweitlisteAbgemeldet:
        emit partnerAbgemeldet();
        hinweisZeigen(Hinweis::Abgemeldet, QStringLiteral("ZweitListe hat sich abgemeldet."));
        break;
    case Nachricht::TischNummer: {
        const QString adresse = Kennung::aus(von).adresse;
        if (m_tischVonAdresse.contains(adresse))
            m_tischVonAdresse[adresse] = n.inhalt.value(0).toInt();
        break;
    }
    case Nachricht::Zeile:
        emit ersteListeZeile(n.inhalt);
        break;
    case Nachricht::ZeileKopie:
        emit ersteListeKopie(n.inhalt);
        break;
    default:
        break;
    }
}

void NetzSteuerung::newParticipant(const QString &kennung)
{
    const Kennung teilnehmer = Kennung::aus(kennung);
    if (teilnehmer.name == Empfang::managerProgramm()) {
        if (!m_managerId.isEmpty()) {
            // The first manager stays the one; another is named once.
            if (kennung != m_managerId && !m_fremdeManager.contains(kennung)) {
                m_fremdeManager.insert(kennung);
                status(QStringLiteral("Weiterer Tabulor %1 wird nicht beachtet.").arg(kennung));
            }
            return;
        }
        m_managerId = kennung;
        const QString lokal = m_client.localAddress(kennung);
        if (!lokal.isEmpty())
            m_eigeneAdresse = lokal;
        const bool erstmals = !m_managerAdressen.contains(teilnehmer.adresse);
        m_managerAdressen.insert(teilnehmer.adresse);
        status(QStringLiteral("Verbunden Tabulor %1").arg(teilnehmer.adresse));
        steuerelementeTauschen(true);
        // Only the first manager of the evening clears the ranking and takes
        // the scorer there; one coming back leaves the scorer where they are.
        if (erstmals)
            emit managerErstmals();
        emit managerGeaendert(true);
        // The manager's standings are whole again without waiting for a game.
        tischNummerSenden();
        m_gesendet.clear();
        emit ergebnisseGefragt();
        return;
    }
    if (teilnehmer.name != Empfang::tischProgramm() ||
        m_tischVonAdresse.contains(teilnehmer.adresse))
        return;
    qDebug() << "Neuer Participant";
    status(QStringLiteral("Kontakt zu anderen Protokollen."));
    m_tischVonAdresse.insert(teilnehmer.adresse, 0);
}

void NetzSteuerung::rechnerAbmeldung(const QString &kennung)
{
    const Kennung teilnehmer = Kennung::aus(kennung);
    if (kennung == m_managerId) {
        qDebug() << "Participant abgemeldet" << teilnehmer.name;
        status(QStringLiteral("Getrennt Tabulor."));
        m_managerId.clear();
        m_eigeneAdresse = m_client.ownAddress();
        steuerelementeTauschen(false);
        emit managerGeaendert(false);
        return;
    }
    const bool unbekannt = teilnehmer.name != Empfang::tischProgramm() &&
                           teilnehmer.name != Empfang::managerProgramm();
    const bool tischGeht = teilnehmer.name == Empfang::tischProgramm() &&
                           m_tischVonAdresse.remove(teilnehmer.adresse) > 0;
    if (tischGeht)
        qDebug() << "Participant abgemeldet" << teilnehmer.name;
    if ((unbekannt || tischGeht) && m_managerId.isEmpty() && m_tischVonAdresse.isEmpty())
        status(QStringLiteral("Kein Kontakt zu anderen Protokollen."));
}

void NetzSteuerung::steuerelementeTauschen(bool manager)
{
    // With a manager the players come from its draw: the page asks for them
    // instead of reading a file, and its name fields are not typed into.
    emit spielerVomManager(manager && m_wlan);
}

void NetzSteuerung::spielerdatenAnfordern()
{
    const QString &tisch = m_neuTisch;
    const QString &serie = m_neuSerie;
    if (QMessageBox::question(
            m_eltern, QStringLiteral("FRAGE"),
            QStringLiteral("Sind Tischnr %1 und Seriennr %2 richtig gesetzt?").arg(tisch, serie),
            QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    senden(Nachricht::SpielerAnfordern, m_eigeneAdresse, {tisch, serie});
}

void NetzSteuerung::onWlanBenutzen(bool benutzen)
{
    if (benutzen == m_wlan)
        return;
    m_wlan = benutzen;
    empfangSchalten();
    steuerelementeTauschen(!m_managerId.isEmpty());
}

void NetzSteuerung::tischNummerSenden()
{
    senden(Nachricht::TischNummer, m_eigeneAdresse, {QString::number(eigeneTischNr())});
}

void NetzSteuerung::ergebnisseSenden(const QStringList &ergebnisse)
{
    if (!m_ergebnisseErlaubt || ergebnisse.isEmpty() || ergebnisse == m_gesendet)
        return;
    m_gesendet = ergebnisse;
    senden(Nachricht::Ergebnisse, m_eigeneAdresse, ergebnisse);
}

void NetzSteuerung::listeGeaendert(const ListenAenderung &aenderung)
{
    if (aenderung.art == ListenAenderung::ListeNeu || aenderung.art == ListenAenderung::Kopf)
        empfangSchalten();
    if (aenderung.art == ListenAenderung::ListeNeu) {
        tischNummerSenden();
        return;
    }
    // A second list's games are the first list's: they are not sent as its own.
    if (m_dienst.kopf().modus != Spielmodus::Turnier || m_paarung.istZweitliste())
        return;
    if (aenderung.art == ListenAenderung::SpielNeu && !m_dienst.spiele().isEmpty())
        zeileSenden(m_dienst.spiele().last());
    // A corrected game goes out again; a second list compares it anew.
    if (aenderung.art == ListenAenderung::SpielGeaendert)
        if (const std::optional<SpielEintrag> spiel = m_dienst.spiel(aenderung.zeile))
            zeileSenden(*spiel);
}

void NetzSteuerung::zeileSenden(const SpielEintrag &spiel)
{
    // Every game goes out; only the paired second list takes it, the others see
    // a row that is not addressed to them.
    const QString adresse =
        m_paarung.istErsteListe() ? m_paarung.zweitlisteAdresse() : m_eigeneAdresse;
    QStringList inhalt{QString::number(eigeneTischNr()), QString::number(m_dienst.kopf().serie),
                       QString::number(spiel[SpielEintrag::Zeile])};
    inhalt << Kartulo::mapFromSpiel(alsTupel(spiel));
    senden(Nachricht::Zeile, adresse, inhalt);
}

bool NetzSteuerung::rundenEndeFragen()
{
    // A second list's sheet is the first list's again; the first list sends it.
    if (m_managerId.isEmpty() || m_paarung.istZweitliste()) {
        QMessageBox::information(m_eltern, QStringLiteral("INFORMATION"),
                                 QStringLiteral("Rundenende erreicht!"));
        return false;
    }
    return QMessageBox::question(
               m_eltern, QStringLiteral("INFORMATION"),
               QStringLiteral("Rundenende erreicht!\nDaten nach Tabulor kopieren?"),
               QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

void NetzSteuerung::blattSenden(const QString &pdfPfad)
{
    const QString name = pdfPfad.section(QLatin1Char('/'), -1);
    senden(Nachricht::BlattName, m_eigeneAdresse, {name});
    QFile datei(pdfPfad);
    if (!datei.open(QIODevice::ReadOnly))
        return;
    senden(Nachricht::BlattDatei, m_eigeneAdresse,
           {name, QString::fromLatin1(qCompress(datei.readAll(), -1).toBase64())});
}
