#include "app/link/zweitlistesteuerung.h"

#include "app/link/netzsteuerung.h"
#include "app/widgets/eingabedock.h"
#include "app/widgets/werkzeugleiste.h"
#include "core/files/spielerdatei.h"
#include "core/link/nachricht.h"
#include "core/link/paarung.h"
#include "core/service/listendienst.h"
#include "ui_mainwindow.h"

#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QStatusBar>

namespace {

using S = SpielEintrag;

// The compared fields: item of the first list's row, own column, and the text
// of a difference. A Schneider difference is reported with the Hand text and
// the own Hand value, and the Spieler4 text has no full stop: both are what
// scorers know from the paper cross-check and are kept.
struct Vergleich
{
    int item;
    S::Spalte spalte;
    S::Spalte eigenerWert;
    const char *text;
};

const Vergleich Vergleiche[] = {
    {3, S::Spiel, S::Spiel, "Eintrag bei Spiel %3 Spielwert %1 <> Spielwert %2."},
    {4, S::Mit, S::Mit, "Eintrag bei Spiel %3 Mit %1 <> Mit %2."},
    {5, S::Ohne, S::Ohne, "Eintrag bei Spiel %3 Ohne %1 <> Ohne %2."},
    {6, S::Hand, S::Hand, "Eintrag bei Spiel %3 Hand %1 <> Hand %2."},
    {7, S::Schneider, S::Hand, "Eintrag bei Spiel %3 Hand %1 <> Hand %2."},
    {8, S::AngSchneider, S::AngSchneider,
     "Eintrag bei Spiel %3 AngSchneider %1 <> AngSchneider %2."},
    {9, S::Schwarz, S::Schwarz, "Eintrag bei Spiel %3 Schwarz %1 <> Schwarz %2."},
    {10, S::AngSchwarz, S::AngSchwarz, "Eintrag bei Spiel %3 AngSchwarz %1 <> AngSchwarz %2."},
    {11, S::Offen, S::Offen, "Eintrag bei Spiel %3 Offen %1 <> Offen %2."},
    {12, S::Gewonnen, S::Gewonnen, "Eintrag bei Spiel %3 Gewonnen %1 <> Gewonnen %2."},
    {13, S::Verloren, S::Verloren, "Eintrag bei Spiel %3 Verloren %1 <> Verloren %2."},
    {14, S::Spieler1, S::Spieler1, "Eintrag bei Spiel %3 Spieler1 %1 <> Spieler1 %2."},
    {15, S::Spieler2, S::Spieler2, "Eintrag bei Spiel %3 Spieler2 %1 <> Spieler2 %2."},
    {16, S::Spieler3, S::Spieler3, "Eintrag bei Spiel %3 Spieler3 %1 <> Spieler3 %2."},
    {17, S::Spieler4, S::Spieler4, "Eintrag bei Spiel %3 Spieler4 %1 <> Spieler4 %2"},
    {18, S::Eingepasst, S::Eingepasst, "Eintrag bei Spiel %3 Eingepasst %1 <> Eingepasst %2."},
    {19, S::Reizung, S::Reizung, "Eintrag bei Spiel %3 Reizung %1 <> Reizung %2."},
};

} // namespace

ZweitlisteSteuerung::ZweitlisteSteuerung(QMainWindow *fenster, Ui::MainWindow &ui,
                                         Werkzeugleiste &leiste, ListenDienst &dienst,
                                         NetzSteuerung &netz)
    : QObject(fenster), m_fenster(fenster), m_ui(ui), m_leiste(leiste), m_dienst(dienst),
      m_netz(netz)
{
    m_pruefTimer.setParent(this);
    m_pruefTimer.setObjectName(QStringLiteral("checkTimer"));
    m_pruefTimer.setInterval(5000);
    connect(&m_pruefTimer, &QTimer::timeout, this,
            &ZweitlisteSteuerung::CheckRecordGegenRecordVonErsterListe);
    connect(&m_netz, &NetzSteuerung::zweitlisteSpieler, this,
            &ZweitlisteSteuerung::starteZweitListe);
    connect(&m_netz, &NetzSteuerung::ersteListeZeile, this, &ZweitlisteSteuerung::zeileEmpfangen);
    connect(&m_netz, &NetzSteuerung::ersteListeKopie, this, &ZweitlisteSteuerung::kopieEmpfangen);
}

ZweitlisteSteuerung::~ZweitlisteSteuerung()
{
    delete m_dock;
}

void ZweitlisteSteuerung::startZweitProtokoll()
{
    const Paarung &paarung = m_netz.paarung();
    if (paarung.gepaarterTisch() > 0 || paarung.hatZweitliste()) {
        QMessageBox::information(m_fenster, QStringLiteral("INFO"),
                                 QStringLiteral("Zweitliste ist schon gesetzt!"));
        return;
    }
    if (!m_dock) {
        m_dock = new EingabeDock(m_fenster, QStringLiteral("DockZweitliste"),
                                 QStringLiteral("Tischnummer eingeben..."), 0, 1, 1000);
        m_dock->findChild<QLineEdit *>()->clear();
        connect(m_dock, &EingabeDock::ok, this, &ZweitlisteSteuerung::onZweitListenTischNrOk);
        connect(m_dock, &EingabeDock::abbruch, this,
                &ZweitlisteSteuerung::onZweitListenTischNrAbbruch);
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
        QMessageBox::warning(m_fenster, QStringLiteral("WARNUNG"),
                             QStringLiteral("Es wurde keine Tischnummer eingegeben!"));
        return;
    }
    m_netz.senden(Nachricht::ZweitlisteAnfrage, m_netz.eigeneAdresse(), {QString::number(tischNr)});
    m_netz.paarung().anfragen(tischNr);
    m_dock->entfernen();
}

void ZweitlisteSteuerung::onZweitListenTischNrAbbruch()
{
    if (m_dock)
        m_dock->entfernen();
}

void ZweitlisteSteuerung::starteZweitListe(const QString &ersteListe, const QStringList &inhalt)
{
    m_netz.paarung().ersteListeGefunden(ersteListe);
    m_leiste.lblListe->setText(QStringLiteral("Zweitliste Tisch %1").arg(inhalt.value(0)));
    for (const QString &spieler : inhalt.mid(2)) {
        if (spieler == QLatin1String("SpielerEnde"))
            break;
        if (const std::optional<SpielerDatensatz> datensatz =
                SpielerDatei::ausListenEintrag(spieler))
            m_dienst.spielerHinzufuegen(*datensatz);
    }
    m_ui.actionVerbinden->setEnabled(false);
    m_fenster->statusBar()->showMessage(
        QStringLiteral("Geber %1").arg(m_dienst.teilnehmerName(m_dienst.geber())));
}

void ZweitlisteSteuerung::zeileEmpfangen(const QStringList &inhalt)
{
    m_ersteListeZeile = inhalt;
    m_pruefTimer.start();
}

void ZweitlisteSteuerung::kopieEmpfangen(const QStringList &inhalt)
{
    // The link took only a row that is a game of this list.
    const std::optional<SpielEintrag> spiel = Nachricht::spielAus(inhalt, 0);
    if (!spiel)
        return;
    const EintragErgebnis ergebnis = m_dienst.spielEintragen(*spiel);
    if (ergebnis.art == EintragErgebnis::Fehler)
        QMessageBox::warning(m_fenster, QStringLiteral("WARNUNG"), ergebnis.fehler);
}

void ZweitlisteSteuerung::CheckRecordGegenRecordVonErsterListe()
{
    const int zeile = m_ersteListeZeile.value(2).toInt();
    const std::optional<SpielEintrag> eigenes = m_dienst.spiel(zeile);
    // Not entered here yet: the next row of the first list starts the check again.
    if (!eigenes)
        return;
    m_pruefTimer.stop();
    for (const Vergleich &v : Vergleiche) {
        const int empfangen = m_ersteListeZeile.value(v.item).toInt();
        if ((*eigenes)[v.spalte] == empfangen)
            continue;
        QMessageBox::warning(
            m_fenster, QStringLiteral("FEHLER"),
            QString::fromLatin1(v.text).arg((*eigenes)[v.eigenerWert]).arg(empfangen).arg(zeile));
    }
}

void ZweitlisteSteuerung::onZweitListeFreigeben(bool fragen)
{
    Paarung &paarung = m_netz.paarung();
    if (paarung.gepaarterTisch() <= 0)
        return;
    if (fragen &&
        QMessageBox::question(
            m_fenster, QStringLiteral("FRAGE"),
            QStringLiteral("Zweitliste %1 wieder freigeben?").arg(paarung.ersteListeAdresse()),
            QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    m_netz.senden(Nachricht::ZweitlisteAbgemeldet, paarung.ersteListeAdresse(), {});
    paarung.trennen();
    if (fragen) {
        if (QMessageBox::question(m_fenster, QStringLiteral("FRAGE"),
                                  QStringLiteral("Soll Protokoll geleert werden?"),
                                  QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes) {
            clearProtokoll(true);
        } else {
            m_ui.spbTischNr->setValue(paarung.gepaarterTisch());
            m_leiste.lblListe->setText(
                QStringLiteral("Kopie von Tisch %1").arg(paarung.gepaarterTisch()));
            paarung.alsKopieBehalten();
        }
    }
    m_ui.actionVerbinden->setEnabled(true);
    m_pruefTimer.stop();
}

void ZweitlisteSteuerung::onClearProtokoll()
{
    Paarung &paarung = m_netz.paarung();
    if (paarung.gepaarterTisch() > 0) {
        if (QMessageBox::question(m_fenster, QStringLiteral("FRAGE"),
                                  QStringLiteral("Zweitliste Leeren?"),
                                  QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
            return;
        onZweitListeFreigeben(false);
        clearProtokoll(true);
    } else if (paarung.hatZweitliste()) {
        if (QMessageBox::question(m_fenster, QStringLiteral("FRAGE"),
                                  QStringLiteral("Trennung von Zweitliste?"),
                                  QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
            return;
        // Dropped here only; the second list is not told.
        paarung.trennen();
        m_ui.actionVerbinden->setEnabled(true);
    }
}

void ZweitlisteSteuerung::clearProtokoll(bool leeren)
{
    m_netz.paarung().aufheben();
    m_pruefTimer.stop();
    m_ui.actionVerbinden->setEnabled(true);
    if (!leeren)
        return;
    const ListenKopf &kopf = m_dienst.kopf();
    const DienstErgebnis ergebnis = m_dienst.neuesProtokoll(kopf.tischNr, kopf.serie, std::nullopt);
    if (!ergebnis.ok())
        QMessageBox::warning(m_fenster, QStringLiteral("WARNUNG"), ergebnis.fehler);
}
