#include "app/link/netzsteuerung.h"

#include "core/link/nachricht.h"
#include "core/service/listendienst.h"
#include "core/standings/spielmodus.h"
#include "ui_mainwindow.h"
#include "velmora/client.h"

#include <QFile>
#include <QMainWindow>
#include <QMessageBox>
#include <QNetworkInterface>
#include <QStatusBar>

namespace {

const QString Tischprogramm = QStringLiteral("Kartulo");
const QString Tabulor = QStringLiteral("Tabulor");

Kartulo::SpielTupel alsTupel(const SpielEintrag &e)
{
    using S = SpielEintrag;
    return {e[S::Spiel],          e[S::Mit],
            e[S::Ohne],           e.flag(S::Hand),
            e.flag(S::Schneider), e.flag(S::AngSchneider),
            e.flag(S::Schwarz),   e.flag(S::AngSchwarz),
            e.flag(S::Offen),     e[S::Gewonnen],
            e[S::Verloren],       e[S::Spieler1],
            e[S::Spieler2],       e[S::Spieler3],
            e[S::Spieler4],       e.flag(S::Eingepasst),
            e[S::Reizung]};
}

} // namespace

NetzSteuerung::NetzSteuerung(QMainWindow *fenster, Ui::MainWindow &ui, ListenDienst &dienst)
    : QObject(fenster), m_fenster(fenster), m_ui(ui), m_dienst(dienst)
{
    m_client = new Client(Tischprogramm, this);
    connect(m_client, &Client::newParticipant, this, &NetzSteuerung::newParticipant);
    connect(m_client, &Client::newMessage, this, &NetzSteuerung::appendMessage);
    connect(m_client, &Client::participantLeft, this, &NetzSteuerung::rechnerAbmeldung);
    // The last IPv4 address that is not loopback names this table in every message.
    for (const QHostAddress &adresse : QNetworkInterface::allAddresses())
        if (!adresse.isLoopback() && adresse.protocol() == QAbstractSocket::IPv4Protocol)
            m_eigeneAdresse = adresse.toString();
    // A machine without a network still pairs a second window on itself: the
    // link names such a neighbour by loopback, so this table does too.
    if (m_eigeneAdresse.isEmpty())
        m_eigeneAdresse = QHostAddress(QHostAddress::LocalHost).toString();
    m_tischVonAdresse.insert(m_eigeneAdresse, m_ui.spbTischNr->value());
    m_ui.pbAnfordern->hide();
    connect(m_ui.pbAnfordern, &QPushButton::clicked, this, &NetzSteuerung::spielerdatenAnfordern);
    connect(&m_dienst, &ListenDienst::geaendert, this, &NetzSteuerung::listeGeaendert);
}

NetzSteuerung::~NetzSteuerung() = default;

int NetzSteuerung::eigeneTischNr() const
{
    return m_ui.spbTischNr->value();
}

void NetzSteuerung::status(const QString &text)
{
    m_fenster->statusBar()->showMessage(text);
}

void NetzSteuerung::senden(int typ, const QString &adresse, const QStringList &inhalt)
{
    Nachricht nachricht;
    nachricht.typ = typ;
    nachricht.adresse = adresse;
    nachricht.gruppe = m_dienst.kopf().gruppe;
    nachricht.inhalt = inhalt;
    m_client->sendMessage(nachricht.text());
}

void NetzSteuerung::appendMessage(const QString &von, const QString &text)
{
    if (von.isEmpty() || text.isEmpty())
        return;
    const std::optional<Nachricht> nachricht = Nachricht::lesen(text);
    if (!nachricht || nachricht->typ == Nachricht::Unlesbar)
        return;
    if (von.startsWith(Tabulor))
        vomManager(*nachricht);
    else if (von.startsWith(Tischprogramm))
        vonTisch(Kennung::aus(von).adresse, *nachricht);
}

void NetzSteuerung::vomManager(const Nachricht &n)
{
    const bool anMich = n.adresse == m_eigeneAdresse;
    switch (n.typ) {
    case Nachricht::TischVergeben:
        if (anMich)
            QMessageBox::information(
                m_fenster, QStringLiteral("INFO"),
                QStringLiteral("Tisch %1 ist schon vergeben!").arg(n.inhalt.value(0).toInt()));
        break;
    case Nachricht::SpielerListe:
        // A second list takes its players from its first list only.
        if (m_paarung.gepaarterTisch == 0)
            emit spielerListe(n.inhalt);
        break;
    case Nachricht::Auslosung: {
        if (!anMich)
            break;
        emit gruppe(n.gruppe);
        const QStringList sitze = n.inhalt.mid(2);
        if (n.inhalt.value(0).toInt() != eigeneTischNr() || sitze.size() < 3) {
            QMessageBox::information(
                m_fenster, QStringLiteral("INFO"),
                QStringLiteral("Auslosung noch nicht abgeschlossen\noder Tisch %1 nicht vorhanden!")
                    .arg(eigeneTischNr()));
            break;
        }
        emit auslosung(n.inhalt.value(0).toInt(), n.inhalt.value(1).toInt(), sitze);
        break;
    }
    case Nachricht::Kosten:
        // Table, series and count are checked where the values go.
        if (anMich && n.gruppe == m_dienst.kopf().gruppe)
            emit kosten(n.inhalt);
        break;
    default:
        break;
    }
}

void NetzSteuerung::vonTisch(const QString &absender, const Nachricht &n)
{
    const bool anMich = n.adresse == m_eigeneAdresse;
    switch (n.typ) {
    case Nachricht::Ergebnisse:
        // One table's results, one per player. Thousands of names are no
        // table's and took the ranking minutes to take in.
        if (n.inhalt.size() <= 4)
            emit ergebnisseEmpfangen(n.inhalt);
        break;
    case Nachricht::ZweitlisteAnfrage:
        zweitlisteAnfrage(n);
        break;
    case Nachricht::ZweitlisteSpieler:
        // Table, series, at most four players and the end mark: registering
        // thousands of players one by one froze the window.
        if (anMich && m_paarung.gepaarterTisch != 0 && n.inhalt.size() <= 7) {
            emit zweitlisteSpieler(absender, n.inhalt);
            emit gruppe(n.gruppe);
        }
        break;
    case Nachricht::ZweitlisteAbgelehnt:
        if (anMich && n.inhalt.size() == 2) {
            // A first list gives a short reason; a box took seconds per
            // megabyte to lay out a long one.
            QMessageBox::information(m_fenster, QStringLiteral("INFO"), n.inhalt.at(1).left(200));
            m_paarung.aufheben();
            m_ui.actionVerbinden->setEnabled(true);
        }
        break;
    case Nachricht::ZweitlisteAbgemeldet:
        if (anMich) {
            QMessageBox::information(m_fenster, QStringLiteral("INFO"),
                                     QStringLiteral("ZweitListe hat sich abgemeldet."));
            m_paarung.hatZweitliste = false;
            m_paarung.wartet = false;
            m_paarung.zweitlisteAdresse.clear();
            m_ui.actionVerbinden->setEnabled(true);
        }
        break;
    case Nachricht::TischNummer:
        if (m_tischVonAdresse.contains(absender))
            m_tischVonAdresse[absender] = n.inhalt.value(0).toInt();
        break;
    case Nachricht::Zeile:
        if (m_paarung.gepaarterTisch != 0 && n.inhalt.size() == 20 &&
            n.inhalt.at(0).toInt() == m_paarung.gepaarterTisch &&
            n.inhalt.at(1).toInt() == m_dienst.kopf().serie && n.gruppe == m_dienst.kopf().gruppe)
            emit ersteListeZeile(n.inhalt);
        break;
    case Nachricht::ZeileKopie:
        if (anMich && n.gruppe == m_dienst.kopf().gruppe)
            emit ersteListeKopie(n.inhalt);
        break;
    default:
        break;
    }
}

void NetzSteuerung::zweitlisteAnfrage(const Nachricht &n)
{
    const int tischNr = eigeneTischNr();
    if (n.inhalt.value(0).toInt() != tischNr)
        return;
    const QString tisch = QString::number(tischNr);
    if (m_paarung.hatZweitliste) {
        senden(Nachricht::ZweitlisteAbgelehnt, n.adresse,
               {tisch, QStringLiteral("Tisch %1 hat schon Zweitliste!").arg(tischNr)});
        m_paarung.gepaarterTisch = 0;
        return;
    }
    if (m_paarung.wartet)
        return;
    if (m_dienst.spiele().isEmpty() && m_ui.pbStartSpiel->isEnabled()) {
        senden(Nachricht::ZweitlisteAbgelehnt, n.adresse,
               {tisch, QStringLiteral("Protokoll in Erstliste wurde noch nicht gestartet!")});
        return;
    }
    m_paarung.hatZweitliste = true;
    m_paarung.wartet = true;
    m_paarung.zweitlisteAdresse = n.adresse;
    QStringList spieler{tisch, QString::number(m_dienst.kopf().serie)};
    for (const Teilnehmer &t : m_dienst.teilnehmer())
        spieler << QStringLiteral("%1|%2|%3|%4").arg(t.mgldNr).arg(t.name, t.mitglied, t.preisskat);
    spieler << QStringLiteral("SpielerEnde");
    senden(Nachricht::ZweitlisteSpieler, m_paarung.zweitlisteAdresse, spieler);
    m_ui.actionVerbinden->setEnabled(false);
    for (const SpielEintrag &spiel : m_dienst.spiele())
        senden(Nachricht::ZeileKopie, m_paarung.zweitlisteAdresse,
               Kartulo::mapFromSpiel(alsTupel(spiel)));
}

void NetzSteuerung::newParticipant(const QString &kennung)
{
    const Kennung teilnehmer = Kennung::aus(kennung);
    if (teilnehmer.name != Tischprogramm && teilnehmer.name != Tabulor)
        return;
    if (m_tischVonAdresse.contains(teilnehmer.adresse) && teilnehmer.name == Tischprogramm)
        return;
    if (teilnehmer.name == Tabulor) {
        if (m_managerVerbunden)
            return;
        status(QStringLiteral("Verbunden Tabulor %1").arg(teilnehmer.adresse));
        m_managerVerbunden = true;
        steuerelementeTauschen(true);
        const int index = m_ui.tabWidget->indexOf(m_ui.tabSpielstaende);
        if (index < 0)
            m_ui.tabWidget->insertTab(4, m_ui.tabSpielstaende, QStringLiteral("Spielstaende"));
        m_ui.tabWidget->setTabEnabled(m_ui.tabWidget->indexOf(m_ui.tabSpielstaende), true);
        m_ui.tabWidget->setCurrentWidget(m_ui.tabSpielstaende);
        m_ui.menuZweitliste->setEnabled(true);
        emit managerGeaendert(true);
        return;
    }
    qDebug() << "Neuer Participant";
    status(QStringLiteral("Kontakt zu anderen Protokollen."));
    m_tischVonAdresse.insert(teilnehmer.adresse, 0);
}

void NetzSteuerung::rechnerAbmeldung(const QString &kennung)
{
    const Kennung teilnehmer = Kennung::aus(kennung);
    if (teilnehmer.name == Tabulor && m_managerVerbunden) {
        qDebug() << "Participant abgemeldet" << teilnehmer.name;
        status(QStringLiteral("Getrennt Tabulor."));
        m_managerVerbunden = false;
        steuerelementeTauschen(false);
        emit managerGeaendert(false);
        return;
    }
    if (teilnehmer.name == Tischprogramm && teilnehmer.adresse != m_eigeneAdresse &&
        m_tischVonAdresse.remove(teilnehmer.adresse) > 0) {
        qDebug() << "Participant abgemeldet" << teilnehmer.name;
        if (!m_managerVerbunden && m_tischVonAdresse.size() <= 1)
            status(QStringLiteral("Kein Kontakt zu anderen Protokollen."));
    }
}

void NetzSteuerung::steuerelementeTauschen(bool manager)
{
    // With a manager the players come from its draw: the page asks for them
    // instead of reading a file, and its name fields are not typed into.
    const bool sperren = manager && m_wlan;
    m_ui.pbAnfordern->setVisible(sperren);
    m_ui.pbSpielerAusTextdatei->setVisible(!sperren);
    for (QWidget *feld :
         {static_cast<QWidget *>(m_ui.pbSpielerAusTextdatei),
          static_cast<QWidget *>(m_ui.leNeuSpieler1), static_cast<QWidget *>(m_ui.leNeuSpieler2),
          static_cast<QWidget *>(m_ui.leNeuSpieler3), static_cast<QWidget *>(m_ui.leNeuSpieler4)})
        feld->setEnabled(!sperren);
}

void NetzSteuerung::spielerdatenAnfordern()
{
    const QString tisch = m_ui.leNeuTischNr->text();
    const QString serie = m_ui.leNeuSerie->text();
    if (QMessageBox::question(
            m_fenster, QStringLiteral("FRAGE"),
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
    if (benutzen)
        connect(m_client, &Client::newMessage, this, &NetzSteuerung::appendMessage);
    else
        disconnect(m_client, &Client::newMessage, this, &NetzSteuerung::appendMessage);
    steuerelementeTauschen(m_managerVerbunden);
}

void NetzSteuerung::tischNummerSenden()
{
    senden(Nachricht::TischNummer, m_eigeneAdresse, {QString::number(eigeneTischNr())});
}

void NetzSteuerung::ergebnisseSenden(const QStringList &ergebnisse)
{
    if (!ergebnisse.isEmpty())
        senden(Nachricht::Ergebnisse, m_eigeneAdresse, ergebnisse);
}

void NetzSteuerung::listeGeaendert(const ListenAenderung &aenderung)
{
    if (aenderung.art == ListenAenderung::ListeNeu) {
        if (m_ui.spbTischNr->value() != 0)
            m_tischVonAdresse[m_eigeneAdresse] = m_ui.spbTischNr->value();
        tischNummerSenden();
        return;
    }
    if (aenderung.art == ListenAenderung::SpielNeu &&
        m_dienst.kopf().modus == Spielmodus::Turnier && !m_dienst.spiele().isEmpty()) {
        zeileSenden(m_dienst.spiele().last());
        return;
    }
    // A corrected game goes to the second list again, to be compared anew.
    if (aenderung.art == ListenAenderung::SpielGeaendert && m_paarung.hatZweitliste)
        if (const std::optional<SpielEintrag> spiel = m_dienst.spiel(aenderung.zeile))
            zeileSenden(*spiel);
}

void NetzSteuerung::zeileSenden(const SpielEintrag &spiel)
{
    // Every game goes out; only the paired second list takes it, the others see
    // a row that is not addressed to them.
    const QString adresse = m_paarung.hatZweitliste && !m_paarung.zweitlisteAdresse.isEmpty()
                                ? m_paarung.zweitlisteAdresse
                                : m_eigeneAdresse;
    QStringList inhalt{QString::number(eigeneTischNr()), QString::number(m_dienst.kopf().serie),
                       QString::number(spiel[SpielEintrag::Zeile])};
    inhalt << Kartulo::mapFromSpiel(alsTupel(spiel));
    senden(Nachricht::Zeile, adresse, inhalt);
}

bool NetzSteuerung::rundenEndeFragen()
{
    if (!m_managerVerbunden) {
        QMessageBox::information(m_fenster, QStringLiteral("INFORMATION"),
                                 QStringLiteral("Rundenende erreicht!"));
        return false;
    }
    return QMessageBox::question(
               m_fenster, QStringLiteral("INFORMATION"),
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
