#include "app/game/eintragsteuerung.h"

#include "ui_eintragseite.h"
#include "ui_uebersichtseite.h"

#include "app/game/dockreizung.h"
#include "app/game/uebersicht.h"
#include "core/game/spielwert.h"
#include "core/service/einstellungen.h"
#include "core/service/listendienst.h"

#include <QButtonGroup>
#include <QIntValidator>
#include <QMessageBox>
#include <QStatusBar>

namespace {

// The ids of the panel's button groups.
namespace Knopf {
enum : int
{
    Mit = 20,
    Ohne = 21,
    Gewonnen = 30,
    Verloren = 31,
    Spieler1 = 40,
    Karo = 50, // the game types follow in the order of Spielart
    Keine = -1
};
} // namespace Knopf

int knopfFuer(Spielart art)
{
    return Knopf::Karo + static_cast<int>(art);
}

// A value that selects no button of an exclusive group must clear it.
void waehle(QButtonGroup *gruppe, int id)
{
    if (QAbstractButton *knopf = gruppe->button(id)) {
        knopf->setChecked(true);
        return;
    }
    if (QAbstractButton *gewaehlt = gruppe->checkedButton()) {
        gruppe->setExclusive(false);
        gewaehlt->setChecked(false);
        gruppe->setExclusive(true);
    }
}

} // namespace

EintragSteuerung::EintragSteuerung(QObject *parent, QWidget *eintragSeite, QWidget *uebersichtSeite,
                                   ListenDienst &dienst, Einstellungen &einstellungen)
    : QObject(parent), m_seite(eintragSeite), m_ui(new Ui::EintragSeite),
      m_uebersichtUi(new Ui::UebersichtSeite),
      m_pbReizung(new QPushButton(QStringLiteral("Reizung"))), m_leReizwert(new QLineEdit),
      m_dienst(dienst), m_einstellungen(einstellungen)
{
    m_ui->setupUi(eintragSeite);
    m_uebersichtUi->setupUi(uebersichtSeite);
    m_uebersicht = new Uebersicht(dienst, m_uebersichtUi->tblViewUebersicht, this);
    m_pbReizung->setObjectName(QStringLiteral("pbReizung"));
    m_leReizwert->setObjectName(QStringLiteral("leReizwert"));
    m_leReizwert->setReadOnly(true);
    m_leReizwert->setValidator(new QIntValidator(18, 264, m_leReizwert));
    m_leReizwert->setMaximumWidth(100);
    gruppenAnlegen();
    kopfZeigen();
    m_wartenTimer.setParent(this);
    m_wartenTimer.setObjectName(QStringLiteral("wartenTimer"));
    m_wartenTimer.setSingleShot(true);
    m_wartenTimer.setInterval(10000);
    connect(&m_wartenTimer, &QTimer::timeout, this, &EintragSteuerung::spielInListeEintragen);
    connect(m_ui->pbInListeEintragen, &QPushButton::clicked, this,
            &EintragSteuerung::spielInListeEintragen);
    connect(m_ui->pbKorrekturAbbrechen, &QPushButton::clicked, this,
            &EintragSteuerung::korrekturAbbrechen);
    connect(m_pbReizung, &QPushButton::clicked, this, &EintragSteuerung::onDockReizung);

    QTableView *tabelle = m_uebersichtUi->tblViewUebersicht;
    tabelle->addAction(m_uebersichtUi->actionEintragAendern);
    tabelle->addAction(m_uebersichtUi->actionEintragLoeschen);
    connect(tabelle, &QTableView::doubleClicked, this,
            &EintragSteuerung::onUebersichtDoubleClicked);
    connect(m_uebersichtUi->actionEintragAendern, &QAction::triggered, this,
            &EintragSteuerung::onSpielEintragBearbeiten);
    connect(m_uebersichtUi->actionEintragLoeschen, &QAction::triggered, this,
            &EintragSteuerung::onSpielEintragLoeschen);
    connect(&m_dienst, &ListenDienst::geaendert, this, &EintragSteuerung::listeGeaendert);
}

EintragSteuerung::~EintragSteuerung() = default;

void EintragSteuerung::gruppenAnlegen()
{
    m_matadorModus = new QButtonGroup(this);
    m_matadorModus->addButton(m_ui->tbMit, Knopf::Mit);
    m_matadorModus->addButton(m_ui->tbOhne, Knopf::Ohne);

    m_matadorAnzahl = new QButtonGroup(this);
    const QList<QToolButton *> anzahl{m_ui->tb1, m_ui->tb2,  m_ui->tb3, m_ui->tb4,
                                      m_ui->tb5, m_ui->tb6,  m_ui->tb7, m_ui->tb8,
                                      m_ui->tb9, m_ui->tb10, m_ui->tb11};
    for (int i = 0; i < anzahl.size(); ++i)
        m_matadorAnzahl->addButton(anzahl.at(i), i + 1);

    m_ergebnis = new QButtonGroup(this);
    m_ergebnis->addButton(m_ui->tbGewonnen, Knopf::Gewonnen);
    m_ergebnis->addButton(m_ui->tbVerloren, Knopf::Verloren);

    m_spieler = new QButtonGroup(this);
    const QList<QToolButton *> spieler{m_ui->tbSpieler1, m_ui->tbSpieler2, m_ui->tbSpieler3,
                                       m_ui->tbSpieler4};
    for (int sitz = 0; sitz < spieler.size(); ++sitz)
        m_spieler->addButton(spieler.at(sitz), Knopf::Spieler1 + sitz);

    m_spielTyp = new QButtonGroup(this);
    const QList<QToolButton *> typen{m_ui->tbKaro,  m_ui->tbHerz, m_ui->tbPik,       m_ui->tbKreuz,
                                     m_ui->tbGrang, m_ui->tbNull, m_ui->tbEingepasst};
    for (int i = 0; i < typen.size(); ++i)
        m_spielTyp->addButton(typen.at(i), Knopf::Karo + i);

    connect(m_ui->pbFertig, &QPushButton::clicked, this, &EintragSteuerung::onFertig);
    connect(m_ui->tbSchneider, &QToolButton::toggled, this, &EintragSteuerung::onSchneider);
    connect(m_ui->tbSchneiderSchwarz, &QToolButton::toggled, this, &EintragSteuerung::onSchwarz);
    connect(m_ui->tbGrang, &QToolButton::toggled, this, &EintragSteuerung::onGrang);
    connect(m_ui->tbNull, &QToolButton::toggled, this, &EintragSteuerung::onNull);
    connect(m_ui->tbEingepasst, &QToolButton::toggled, this, &EintragSteuerung::onEingepasst);

    onSchneider(false);
    onSchwarz(false);
    m_ui->tbKreuz->setChecked(true);
    m_ui->tbMit->setChecked(true);
    m_ui->tb1->setChecked(true);
    m_ui->tbGewonnen->setChecked(true);
}

void EintragSteuerung::spielstandEinsetzen(QWidget *anzeige)
{
    m_ui->vlSpieleintrag->addWidget(anzeige);
}

void EintragSteuerung::verlaufEinsetzen(QWidget *anzeige)
{
    m_uebersichtUi->splUebersicht->addWidget(anzeige);
    m_uebersichtUi->splUebersicht->setStretchFactor(0, 2);
    m_uebersichtUi->splUebersicht->setStretchFactor(1, 1);
}

void EintragSteuerung::kopfZeigen()
{
    const ListenKopf &kopf = m_dienst.kopf();
    m_uebersichtUi->leTischnrAnzeige->setText(QString::number(kopf.tischNr));
    m_uebersichtUi->leSerie->setText(QString::number(kopf.serie));
}

void EintragSteuerung::listeGeaendert(const ListenAenderung &aenderung)
{
    if (aenderung.art == ListenAenderung::Kopf || aenderung.art == ListenAenderung::ListeNeu)
        kopfZeigen();
    if (aenderung.art == ListenAenderung::Kopf)
        return;
    // Neither is on the panel, and a game being corrected keeps its number shown.
    if (aenderung.art == ListenAenderung::Register ||
        aenderung.art == ListenAenderung::Einstellungen)
        return;
    naechsteNummerZeigen();
    spielerKnoepfeBeschriften();
    m_ui->tbSpieler4->setVisible(m_dienst.listenTyp() == 4);
    if (aenderung.art == ListenAenderung::ListeNeu) {
        m_aktuellesSpiel = SpielEintrag();
        korrekturBeenden();
        // The text and a game waiting to be entered belong to the list that has gone.
        m_ui->leSpielBeschreibung->clear();
        m_wartenTimer.stop();
        m_ui->pbInListeEintragen->setEnabled(false);
    }
    // The game on the panel may be gone or have another number now.
    if (aenderung.art == ListenAenderung::SpielEntfernt && m_bearbeitungsModus)
        korrekturAbbrechen();
}

void EintragSteuerung::beschreibungZeigen(const QString &text)
{
    // The start says which game it is; the line would otherwise show its end.
    m_ui->leSpielBeschreibung->setText(text);
    m_ui->leSpielBeschreibung->setCursorPosition(0);
}

void EintragSteuerung::naechsteNummerZeigen()
{
    m_ui->lcdNumber->display(m_dienst.letzteZeile() + 1);
}

void EintragSteuerung::korrekturBeenden()
{
    m_bearbeitungsModus = false;
    m_ui->gbKorrektur->hide();
}

void EintragSteuerung::korrekturAbbrechen()
{
    m_wartenTimer.stop();
    korrekturBeenden();
    panelZuruecksetzen();
    m_aktuellesSpiel = SpielEintrag();
    m_leReizwert->clear();
    m_ui->leSpielBeschreibung->clear();
    naechsteNummerZeigen();
    spielerKnoepfeFreigeben();
    emit statusMeldung(QStringLiteral("Korrektur abgebrochen"), 5000);
}

void EintragSteuerung::onSchneider(bool gesetzt)
{
    m_ui->tbSchneiderSchwarz->setChecked(false);
    m_ui->tbSchneiderAngesagt->setChecked(false);
    m_ui->tbSchneiderSchwarz->setEnabled(gesetzt);
    m_ui->tbSchneiderAngesagt->setEnabled(gesetzt);
}

void EintragSteuerung::onSchwarz(bool gesetzt)
{
    if (!gesetzt)
        m_ui->tbSchwarzAngesagt->setChecked(false);
    m_ui->tbSchwarzAngesagt->setEnabled(gesetzt);
}

void EintragSteuerung::onGrang(bool gesetzt)
{
    // A Grand has at most four jacks to count.
    for (int anzahl = 5; anzahl <= 11; ++anzahl)
        m_matadorAnzahl->button(anzahl)->setEnabled(!gesetzt);
}

void EintragSteuerung::nullKnoepfeSperren(bool gesperrt)
{
    for (QAbstractButton *knopf : m_matadorAnzahl->buttons())
        knopf->setEnabled(!gesperrt);
    for (QToolButton *knopf :
         {m_ui->tbMit, m_ui->tbOhne, m_ui->tbSchneider, m_ui->tbSchneiderAngesagt,
          m_ui->tbSchneiderSchwarz, m_ui->tbSchwarzAngesagt})
        knopf->setEnabled(!gesperrt);
}

void EintragSteuerung::onNull(bool gesetzt)
{
    nullKnoepfeSperren(gesetzt);
}

void EintragSteuerung::onEingepasst(bool gesetzt)
{
    nullKnoepfeSperren(gesetzt);
    for (QToolButton *knopf : {m_ui->tbHand, m_ui->tbOffen, m_ui->tbGewonnen, m_ui->tbVerloren})
        knopf->setEnabled(!gesetzt);
}

void EintragSteuerung::warnen(const QString &text)
{
    QMessageBox::warning(m_seite, QStringLiteral("WARNUNG"), text);
}

void EintragSteuerung::nichtGespeichert(const QString &grund)
{
    warnen(grund);
    // The game stays on the panel for another try.
    m_ui->pbInListeEintragen->setEnabled(true);
}

void EintragSteuerung::onFertig()
{
    const SpielEingabe eingabe = panelLesen();
    const Spielangaben &a = eingabe.angaben;
    if (a.art != Spielart::Eingepasst && a.sitz < 0) {
        warnen(QStringLiteral("Kein Spieler selektiert!"));
        return;
    }
    if (!m_bearbeitungsModus && m_dienst.listenTyp() == 4 && m_dienst.geber() == a.sitz) {
        warnen(QStringLiteral("%1 hat gegeben!").arg(eingabe.spielerKnopfText));
        return;
    }
    // Without a game type or, for suit and Grand, a number of jacks the value
    // would be 0: such a row is never written.
    if (!a.art) {
        warnen(QStringLiteral("Kein Spiel selektiert!"));
        return;
    }
    if (*a.art < Spielart::Null && a.anzahl == 0) {
        warnen(QStringLiteral("Keine Spitzen selektiert!"));
        return;
    }
    if (a.art == Spielart::Grand && a.offen) {
        for (QToolButton *knopf : {m_ui->tbHand, m_ui->tbSchneider, m_ui->tbSchneiderSchwarz,
                                   m_ui->tbSchneiderAngesagt, m_ui->tbSchwarzAngesagt})
            knopf->setChecked(true);
    }

    const SpielwertErgebnis ergebnis = Spielwert::berechne(eingabe);
    m_aktuellesSpiel = ergebnis.eintrag;
    switch (ergebnis.art) {
    case SpielwertErgebnis::OhneSpieler:
        m_ui->pbInListeEintragen->setEnabled(true);
        return;
    case SpielwertErgebnis::Ueberreizt:
        if (a.art != Spielart::Null)
            beschreibungZeigen(ergebnis.beschreibung);
        QMessageBox::information(m_seite, QStringLiteral("INFORMATION"), ergebnis.meldung);
        return;
    case SpielwertErgebnis::Berechnet:
        beschreibungZeigen(ergebnis.beschreibung);
        if (ergebnis.wartenStarten && !m_bearbeitungsModus)
            m_wartenTimer.start();
        m_ui->pbInListeEintragen->setEnabled(true);
        return;
    }
}

SpielEingabe EintragSteuerung::panelLesen() const
{
    SpielEingabe eingabe;
    Spielangaben &a = eingabe.angaben;
    if (const int typ = m_spielTyp->checkedId(); typ != Knopf::Keine)
        a.art = static_cast<Spielart>(typ - Knopf::Karo);
    if (const int modus = m_matadorModus->checkedId(); modus != Knopf::Keine)
        a.matadore = modus == Knopf::Mit ? Matadore::Mit : Matadore::Ohne;
    a.anzahl = qMax(0, m_matadorAnzahl->checkedId());
    a.hand = m_ui->tbHand->isChecked();
    a.offen = m_ui->tbOffen->isChecked();
    a.schneider = m_ui->tbSchneider->isChecked();
    a.schneiderAngesagt = m_ui->tbSchneiderAngesagt->isChecked();
    a.schwarz = m_ui->tbSchneiderSchwarz->isChecked();
    a.schwarzAngesagt = m_ui->tbSchwarzAngesagt->isChecked();
    a.gewonnen = m_ui->tbGewonnen->isChecked();
    if (QAbstractButton *spieler = m_spieler->checkedButton()) {
        a.sitz = m_spieler->id(spieler) - Knopf::Spieler1;
        eingabe.spielerName = m_dienst.teilnehmerName(a.sitz);
        eingabe.spielerKnopfText = spieler->text();
    }
    eingabe.reizText = m_leReizwert->text();
    return eingabe;
}

void EintragSteuerung::panelZuruecksetzen()
{
    m_ui->tbKreuz->setChecked(true);
    m_ui->tbMit->setChecked(true);
    m_ui->tb1->setChecked(true);
    for (QToolButton *knopf : {m_ui->tbHand, m_ui->tbSchneider, m_ui->tbSchneiderSchwarz,
                               m_ui->tbSchneiderAngesagt, m_ui->tbSchwarzAngesagt, m_ui->tbOffen})
        knopf->setChecked(false);
    m_ui->tbGewonnen->setChecked(true);
    waehle(m_spieler, Knopf::Keine);
    m_ui->pbInListeEintragen->setEnabled(false);
}

void EintragSteuerung::spielInPanel(const SpielEintrag &eintrag)
{
    m_bearbeitungsModus = true;
    // Whatever is entered next overwrites this game, so the scorer must see it.
    m_ui->lblKorrektur->setText(
        QStringLiteral("Korrektur Spiel %1").arg(eintrag[SpielEintrag::Zeile]));
    m_ui->gbKorrektur->show();
    m_ui->lcdNumber->display(eintrag[SpielEintrag::Zeile]);
    panelStellungAnwenden(Spielangaben::ausEintrag(eintrag));
}

void EintragSteuerung::panelStellungAnwenden(const Spielangaben &a)
{
    waehle(m_spielTyp, a.art ? knopfFuer(*a.art) : Knopf::Keine);
    if (a.matadore) {
        waehle(m_matadorModus, a.matadore == Matadore::Mit ? Knopf::Mit : Knopf::Ohne);
        waehle(m_matadorAnzahl, a.anzahl);
    }
    m_ui->tbHand->setChecked(a.hand);
    m_ui->tbSchneider->setChecked(a.schneider);
    m_ui->tbSchneiderAngesagt->setChecked(a.schneiderAngesagt);
    m_ui->tbSchneiderSchwarz->setChecked(a.schwarz);
    m_ui->tbSchwarzAngesagt->setChecked(a.schwarzAngesagt);
    m_ui->tbOffen->setChecked(a.offen);
    if (a.gewonnen)
        waehle(m_ergebnis, *a.gewonnen ? Knopf::Gewonnen : Knopf::Verloren);
    if (a.sitz >= 0)
        waehle(m_spieler, Knopf::Spieler1 + a.sitz);
}

void EintragSteuerung::spielInListeEintragen()
{
    m_wartenTimer.stop();
    m_ui->pbInListeEintragen->setEnabled(false);
    if (QMessageBox::question(m_seite, QStringLiteral("FRAGE"),
                              QStringLiteral("%1\n%2").arg(m_ui->leSpielBeschreibung->text(),
                                                           QStringLiteral("Ergebnis korrekt?")),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    m_geberAnsageUnterdrueckt = false;
    const int sitz = m_spieler->checkedId() - Knopf::Spieler1;
    if (!eintragen())
        return;
    emit hervorheben(sitz);
    panelZuruecksetzen();
    geberAnsagen();
    emit spielUebernommen();
    m_aktuellesSpiel = SpielEintrag();
    m_aktuellesSpiel.setze(SpielEintrag::Zeile, m_dienst.letzteZeile());
    m_leReizwert->clear();
}

bool EintragSteuerung::eintragen()
{
    if (m_bearbeitungsModus) {
        if (!m_leReizwert->text().isEmpty())
            m_aktuellesSpiel.setze(SpielEintrag::Reizung, m_leReizwert->text().toInt());
        m_aktuellesSpiel.setze(SpielEintrag::Zeile, m_bearbeiteteZeile);
        const DienstErgebnis ergebnis = m_dienst.spielAendern(m_aktuellesSpiel);
        if (!ergebnis.ok()) {
            nichtGespeichert(ergebnis.fehler);
            return false;
        }
        korrekturBeenden();
        return true;
    }
    const EintragErgebnis ergebnis = m_dienst.spielEintragen(m_aktuellesSpiel);
    switch (ergebnis.art) {
    case EintragErgebnis::Eingetragen:
        return true;
    case EintragErgebnis::ListenEnde: {
        const int geplant = m_dienst.kopf().anzahlSpiele;
        QMessageBox::information(m_seite, QStringLiteral("INFORMATION"),
                                 QStringLiteral("Anzahl von %1 Spielen erreicht.").arg(geplant));
        beschreibungZeigen(QStringLiteral("%1 Spiele gespielt. ListenEnde.").arg(geplant));
        m_einstellungen.spielstopzeitSetzen(QStringLiteral("openend"));
        return false;
    }
    case EintragErgebnis::Fehler:
        nichtGespeichert(ergebnis.fehler);
        return false;
    }
    return false;
}

void EintragSteuerung::spielerKnoepfeBeschriften()
{
    const QList<QToolButton *> knoepfe{m_ui->tbSpieler1, m_ui->tbSpieler2, m_ui->tbSpieler3,
                                       m_ui->tbSpieler4};
    for (int sitz = 0; sitz < knoepfe.size(); ++sitz) {
        const QString name = m_dienst.teilnehmerName(sitz);
        knoepfe.at(sitz)->setText(name.isEmpty() ? QStringLiteral("Spieler %1").arg(sitz + 1)
                                                 : name);
    }
}

void EintragSteuerung::spielerKnoepfeFreigeben()
{
    const QList<QToolButton *> knoepfe{m_ui->tbSpieler1, m_ui->tbSpieler2, m_ui->tbSpieler3,
                                       m_ui->tbSpieler4};
    for (int sitz = 0; sitz < 3; ++sitz)
        knoepfe.at(sitz)->setEnabled(true);
    if (m_dienst.listenTyp() == 4) {
        // At a table of four the dealer sits out this game.
        knoepfe.at(3)->setEnabled(true);
        knoepfe.at(m_dienst.geber())->setEnabled(false);
    }
}

void EintragSteuerung::kartengeberZeigen(const QString &text)
{
    spielerKnoepfeFreigeben();
    if (m_dienst.spiele().size() != m_dienst.kopf().anzahlSpiele) {
        emit statusMeldung(text, 0);
        if (!m_geberAnsageUnterdrueckt)
            QMessageBox::information(m_seite, QStringLiteral("INFO"), text);
        return;
    }
    emit rundenEnde();
}

void EintragSteuerung::geberAnsagen()
{
    emit kartengeber(QStringLiteral("Geber %1").arg(m_dienst.teilnehmerName(m_dienst.geber())));
}

void EintragSteuerung::ersterGeberAnsagen()
{
    m_geberAnsageUnterdrueckt = true;
    emit kartengeber(QStringLiteral("Geber %1").arg(m_dienst.teilnehmerName(0)));
}

void EintragSteuerung::geberAnsageUnterdruecken()
{
    m_geberAnsageUnterdrueckt = true;
}

void EintragSteuerung::wiederherstellen()
{
    m_geberAnsageUnterdrueckt = true;
    spielerKnoepfeFreigeben();
    emit statusMeldung(QStringLiteral("Geber %1").arg(m_dienst.teilnehmerName(m_dienst.geber())),
                       0);
}

void EintragSteuerung::laufzustandSetzen(bool laufend)
{
    for (QWidget *feld :
         {static_cast<QWidget *>(m_ui->gbSpielTyp), static_cast<QWidget *>(m_ui->gbMatadore),
          static_cast<QWidget *>(m_ui->gbZusatz), static_cast<QWidget *>(m_ui->gbErgebnis),
          static_cast<QWidget *>(m_ui->gbAlleinspieler), static_cast<QWidget *>(m_ui->pbFertig)})
        feld->setEnabled(laufend);
}

void EintragSteuerung::onUebersichtDoubleClicked(const QModelIndex &index)
{
    const int zeile = index.row() + 1;
    if (m_uebersicht->spielNummer(index.row()) == 0)
        return;
    if (QMessageBox::question(m_seite, QStringLiteral("FRAGE"),
                              QStringLiteral("Spiel Nr %1 bearbeiten?").arg(zeile),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    if (m_dienst.listenTyp() == 4) {
        for (QToolButton *knopf :
             {m_ui->tbSpieler1, m_ui->tbSpieler2, m_ui->tbSpieler3, m_ui->tbSpieler4})
            knopf->setEnabled(true);
    }
    const std::optional<SpielEintrag> eintrag = m_dienst.spiel(zeile);
    if (!eintrag)
        return;
    m_aktuellesSpiel = *eintrag;
    m_bearbeiteteZeile = zeile;
    spielInPanel(*eintrag);
    // The stored bid stays unless the scorer changes it.
    const int reizung = (*eintrag)[SpielEintrag::Reizung];
    m_leReizwert->setText(reizung > 0 ? QString::number(reizung) : QString());
    m_ui->pbInListeEintragen->setEnabled(false);
    emit seiteZeigen(Seite::Spieleintrag);
}

void EintragSteuerung::onSpielEintragBearbeiten()
{
    const QModelIndex index = m_uebersichtUi->tblViewUebersicht->currentIndex();
    if (index.row() >= 0 && index.column() >= 0)
        onUebersichtDoubleClicked(index);
}

void EintragSteuerung::onSpielEintragLoeschen()
{
    const QModelIndex index = m_uebersichtUi->tblViewUebersicht->currentIndex();
    if (!index.isValid() || index.row() < 0 || index.column() < 0)
        return;
    const int zeile = m_uebersicht->spielNummer(index.row());
    if (QMessageBox::question(m_seite, QStringLiteral("FRAGE"),
                              QStringLiteral("Zeile %1 wirklich entfernen?").arg(zeile),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    const DienstErgebnis ergebnis = m_dienst.spielEntfernen(zeile);
    if (!ergebnis.ok()) {
        warnen(ergebnis.fehler);
        return;
    }
    geberAnsagen();
}

void EintragSteuerung::onDockReizung()
{
    if (m_dockReizung)
        return;
    m_dockReizung = new DockReizung;
    m_dockReizung->setFeatures(QDockWidget::NoDockWidgetFeatures);
    m_dockReizung->setAllowedAreas(Qt::TopDockWidgetArea);
    emit dockZeigen(m_dockReizung);
    connect(m_dockReizung, &DockReizung::reizWertSelected, this,
            &EintragSteuerung::onSelectedReizWert);
    m_dockReizung->show();
}

void EintragSteuerung::onSelectedReizWert(int wert)
{
    if (m_dockReizung) {
        m_dockReizung->hide();
        m_dockReizung->deleteLater();
        m_dockReizung = nullptr;
    }
    if (wert == 0)
        m_leReizwert->clear();
    else
        m_leReizwert->setText(QStringLiteral("%1").arg(wert));
}
