#include "app/link/zweitlistesteuerung.h"

#include "app/widgets/eingabedock.h"
#include "core/files/spielerdatei.h"
#include "core/link/nachricht.h"
#include "core/link/paarung.h"
#include "core/link/spielzeile.h"
#include "core/service/listendienst.h"

#include <QLineEdit>
#include <QMessageBox>

ZweitlisteSteuerung::ZweitlisteSteuerung(QWidget *eltern, ListenDienst &dienst, Paarung &paarung)
    : QObject(eltern), m_eltern(eltern), m_dienst(dienst), m_paarung(paarung)
{
    m_pruefTimer.setParent(this);
    m_pruefTimer.setObjectName(QStringLiteral("checkTimer"));
    m_pruefTimer.setInterval(5000);
    connect(&m_pruefTimer, &QTimer::timeout, this,
            &ZweitlisteSteuerung::CheckRecordGegenRecordVonErsterListe);
}

ZweitlisteSteuerung::~ZweitlisteSteuerung()
{
    delete m_dock;
}

void ZweitlisteSteuerung::startZweitProtokoll()
{
    if (m_paarung.gepaarterTisch() > 0 || m_paarung.hatZweitliste()) {
        QMessageBox::information(m_eltern, QStringLiteral("INFO"),
                                 QStringLiteral("Zweitliste ist schon gesetzt!"));
        return;
    }
    if (!m_dock) {
        m_dock = new EingabeDock(QStringLiteral("DockZweitliste"),
                                 QStringLiteral("Tischnummer eingeben..."), 0, 1, 1000);
        m_dock->findChild<QLineEdit *>()->clear();
        connect(m_dock, &EingabeDock::ok, this, &ZweitlisteSteuerung::onZweitListenTischNrOk);
        connect(m_dock, &EingabeDock::abbruch, this,
                &ZweitlisteSteuerung::onZweitListenTischNrAbbruch);
        emit dockZeigen(m_dock);
    }
    m_dock->show();
    m_dock->findChild<QLineEdit *>()->setFocus();
}

void ZweitlisteSteuerung::onZweitListenTischNrOk()
{
    if (!m_dock)
        return;
    const int tischNr = m_dock->text().toInt();
    if (tischNr == 0) {
        QMessageBox::warning(m_eltern, QStringLiteral("WARNUNG"),
                             QStringLiteral("Es wurde keine Tischnummer eingegeben!"));
        return;
    }
    emit vonHierSenden(Nachricht::ZweitlisteAnfrage, {QString::number(tischNr)});
    m_paarung.anfragen(tischNr);
    m_dock->entfernen();
}

void ZweitlisteSteuerung::onZweitListenTischNrAbbruch()
{
    if (m_dock)
        m_dock->entfernen();
}

void ZweitlisteSteuerung::starteZweitListe(const QString &ersteListe, const QStringList &inhalt)
{
    m_paarung.ersteListeGefunden(ersteListe);
    emit listeBenannt(QStringLiteral("Zweitliste Tisch %1").arg(inhalt.value(0)));
    for (const QString &spieler : inhalt.mid(2)) {
        if (spieler == QLatin1String("SpielerEnde"))
            break;
        if (const std::optional<SpielerDatensatz> datensatz =
                SpielerDatei::ausListenEintrag(spieler))
            m_dienst.spielerHinzufuegen(*datensatz);
    }
    emit statusMeldung(QStringLiteral("Geber %1").arg(m_dienst.teilnehmerName(m_dienst.geber())),
                       0);
}

void ZweitlisteSteuerung::zeileEmpfangen(const QStringList &inhalt)
{
    m_ersteListeZeile = inhalt;
    m_pruefTimer.start();
}

void ZweitlisteSteuerung::kopieEmpfangen(const QStringList &inhalt)
{
    // The link took only a row that is a game of this list.
    const std::optional<SpielEintrag> spiel = SpielZeile::spielAus(inhalt, 0);
    if (!spiel)
        return;
    const EintragErgebnis ergebnis = m_dienst.spielEintragen(*spiel);
    if (ergebnis.art == EintragErgebnis::Fehler)
        QMessageBox::warning(m_eltern, QStringLiteral("WARNUNG"), ergebnis.fehler);
}

void ZweitlisteSteuerung::CheckRecordGegenRecordVonErsterListe()
{
    const int zeile = m_ersteListeZeile.value(SpielZeile::zeileItem).toInt();
    const std::optional<SpielEintrag> eigenes = m_dienst.spiel(zeile);
    // Not entered here yet: the next row of the first list starts the check again.
    if (!eigenes)
        return;
    m_pruefTimer.stop();
    for (const QString &text : SpielZeile::abweichungen(*eigenes, m_ersteListeZeile))
        QMessageBox::warning(m_eltern, QStringLiteral("FEHLER"), text);
}

void ZweitlisteSteuerung::onZweitListeFreigeben(bool fragen)
{
    Paarung &paarung = m_paarung;
    if (paarung.gepaarterTisch() <= 0)
        return;
    if (fragen &&
        QMessageBox::question(
            m_eltern, QStringLiteral("FRAGE"),
            QStringLiteral("Zweitliste %1 wieder freigeben?").arg(paarung.ersteListeAdresse()),
            QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    emit senden(Nachricht::ZweitlisteAbgemeldet, paarung.ersteListeAdresse(), {});
    paarung.trennen();
    if (fragen) {
        if (QMessageBox::question(m_eltern, QStringLiteral("FRAGE"),
                                  QStringLiteral("Soll Protokoll geleert werden?"),
                                  QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes) {
            clearProtokoll(true);
        } else {
            ListenKopf kopf = m_dienst.kopf();
            kopf.tischNr = paarung.gepaarterTisch();
            m_dienst.kopfAendern(kopf);
            emit listeBenannt(QStringLiteral("Kopie von Tisch %1").arg(paarung.gepaarterTisch()));
            paarung.alsKopieBehalten();
        }
    }
    m_pruefTimer.stop();
}

void ZweitlisteSteuerung::onClearProtokoll()
{
    Paarung &paarung = m_paarung;
    if (paarung.gepaarterTisch() > 0) {
        if (QMessageBox::question(m_eltern, QStringLiteral("FRAGE"),
                                  QStringLiteral("Zweitliste Leeren?"),
                                  QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
            return;
        onZweitListeFreigeben(false);
        clearProtokoll(true);
    } else if (paarung.hatZweitliste()) {
        if (QMessageBox::question(m_eltern, QStringLiteral("FRAGE"),
                                  QStringLiteral("Trennung von Zweitliste?"),
                                  QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
            return;
        // Dropped here only; the second list is not told.
        paarung.trennen();
    }
}

void ZweitlisteSteuerung::clearProtokoll(bool leeren)
{
    m_paarung.aufheben();
    m_pruefTimer.stop();
    if (!leeren)
        return;
    const ListenKopf &kopf = m_dienst.kopf();
    const DienstErgebnis ergebnis = m_dienst.neuesProtokoll(kopf.tischNr, kopf.serie, std::nullopt);
    if (!ergebnis.ok())
        QMessageBox::warning(m_eltern, QStringLiteral("WARNUNG"), ergebnis.fehler);
}

void ZweitlisteSteuerung::anfrageBeantworten(const QString &von)
{
    // The answer goes where the request came from, whatever its text claims.
    const QString antwortAn = Kennung::aus(von).adresse;
    const int tischNr = m_dienst.kopf().tischNr;
    const QString tisch = QString::number(tischNr);
    switch (m_paarung.anfrageBeantworten(von, m_laufend || !m_dienst.spiele().isEmpty())) {
    case Paarung::Antwort::SchonGepaart:
        emit senden(Nachricht::ZweitlisteAbgelehnt, antwortAn,
                    {tisch, QStringLiteral("Tisch %1 hat schon Zweitliste!").arg(tischNr)});
        return;
    case Paarung::Antwort::NichtGestartet:
        emit senden(Nachricht::ZweitlisteAbgelehnt, antwortAn,
                    {tisch, QStringLiteral("Protokoll in Erstliste wurde noch nicht gestartet!")});
        return;
    case Paarung::Antwort::Angenommen:
        break;
    }
    QStringList spieler{tisch, QString::number(m_dienst.kopf().serie)};
    for (const Teilnehmer &t : m_dienst.teilnehmer())
        spieler << QStringLiteral("%1|%2|%3|%4").arg(t.mgldNr).arg(t.name, t.mitglied, t.preisskat);
    spieler << QStringLiteral("SpielerEnde");
    emit senden(Nachricht::ZweitlisteSpieler, antwortAn, spieler);
    emit zeilenKopieren(antwortAn);
}

void ZweitlisteSteuerung::abgelehnt()
{
    m_paarung.aufheben();
}

void ZweitlisteSteuerung::abgemeldet()
{
    m_paarung.trennen();
}

void ZweitlisteSteuerung::laufzustandSetzen(bool laufend)
{
    m_laufend = laufend;
}
