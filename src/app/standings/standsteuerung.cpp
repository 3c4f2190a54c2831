#include "app/standings/standsteuerung.h"

#include "ui_spielstandgruppe.h"

#include "core/service/einstellungen.h"
#include "core/service/listendienst.h"
#include "core/standings/spielmodus.h"
#include "core/standings/spielstand.h"

#include <QComboBox>
#include <QEvent>
#include <QMessageBox>

StandSteuerung::StandSteuerung(QObject *parent, ListenDienst &dienst,
                               const Einstellungen &einstellungen)
    : QObject(parent), m_gruppe(new QGroupBox), m_ui(new Ui::SpielstandGruppe),
      m_runden(new QComboBox), m_dienst(dienst), m_einstellungen(einstellungen)
{
    m_ui->setupUi(m_gruppe);
    m_runden->setObjectName(QStringLiteral("cmbBierlachs"));
    m_runden->setMinimumWidth(200);
    m_runden->hide();
    connect(m_runden, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &StandSteuerung::rundeGewaehlt);
    connect(&m_dienst, &ListenDienst::geaendert, this, &StandSteuerung::listeGeaendert);
    // A field is polished under the application's style sheet when it is first
    // shown, which puts the grey of disabled fields back; the colours are set
    // again then, so the fields are black on white from the start.
    for (QLineEdit *feld : felder())
        feld->installEventFilter(this);
}

StandSteuerung::~StandSteuerung() = default;

bool StandSteuerung::eventFilter(QObject *objekt, QEvent *ereignis)
{
    if (ereignis->type() == QEvent::Show) {
        const int sitz = felder().indexOf(static_cast<QLineEdit *>(objekt));
        if (sitz >= 0)
            farbenSetzen(felder().at(sitz), sitz == m_hervorgehoben);
    }
    return QObject::eventFilter(objekt, ereignis);
}

void StandSteuerung::farbenSetzen(QLineEdit *feld, bool hervorgehoben) const
{
    QPalette palette = feld->palette();
    palette.setColor(QPalette::Disabled, QPalette::Text, Qt::black);
    palette.setColor(QPalette::Disabled, QPalette::Base, hervorgehoben ? Qt::green : Qt::white);
    feld->setPalette(palette);
}

QList<QLineEdit *> StandSteuerung::felder() const
{
    return {m_ui->lePunkte1, m_ui->lePunkte2, m_ui->lePunkte3, m_ui->lePunkte4};
}

void StandSteuerung::punkteSetzen(int sitz, const QString &text)
{
    if (QLineEdit *feld = felder().value(sitz))
        feld->setText(text);
}

void StandSteuerung::hervorheben(int sitz)
{
    m_hervorgehoben = sitz;
    const QList<QLineEdit *> alle = felder();
    for (int i = 0; i < alle.size(); ++i)
        farbenSetzen(alle.at(i), i == sitz);
}

void StandSteuerung::leeren()
{
    for (QLineEdit *feld : felder())
        feld->clear();
}

void StandSteuerung::laufzustandSetzen(bool laufend)
{
    m_laeuft = laufend;
    if (laufend)
        aktualisieren();
    else
        leeren();
}

void StandSteuerung::listeGeaendert(const ListenAenderung &aenderung)
{
    if (aenderung.art == ListenAenderung::Register)
        return;
    const ListenKopf &kopf = m_dienst.kopf();
    m_runden->setVisible(kopf.modus == Spielmodus::Bierlachs);
    m_ui->lePunkte4->setVisible(m_dienst.listenTyp() == 4);
    if (!m_laeuft)
        return;
    if (aenderung.art == ListenAenderung::Kopf && kopf.modus == m_modus &&
        kopf.blPunkte == m_blPunkte)
        return;
    aktualisieren();
}

void StandSteuerung::aktualisieren()
{
    const ListenKopf &kopf = m_dienst.kopf();
    m_modus = kopf.modus;
    m_blPunkte = kopf.blPunkte;
    const int spieler = m_dienst.listenTyp();
    if (kopf.modus == Spielmodus::Bierlachs) {
        const QVector<BierlachsRunde> runden =
            Bierlachs::runden(m_dienst.spiele(), spieler, kopf.blPunkte);
        {
            // One entry per round; the newest is shown.
            const QSignalBlocker sperre(m_runden);
            m_runden->clear();
            for (int runde = 1; runde <= runden.size(); ++runde)
                m_runden->addItem(QStringLiteral("Runde %1").arg(runde));
            m_runden->setCurrentIndex(runden.size() - 1);
        }
        bierlachsRundeZeigen(runden.last());
        return;
    }
    const Bilanzen bilanzen = Spielstand::bilanzen(m_dienst.spiele(), spieler);
    const bool fabian = m_einstellungen.fabianFuer(kopf.modus);
    const FabianFaktoren faktoren = m_einstellungen.fabianFaktoren();
    QStringList texte;
    for (int sitz = 0; sitz < 4; ++sitz)
        texte << Spielstand::zeile(m_dienst.teilnehmerName(sitz),
                                   Spielstand::angezeigt(bilanzen, sitz, spieler, fabian, faktoren),
                                   bilanzen.at(sitz));
    emit zeilen(texte);
}

void StandSteuerung::bierlachsRundeZeigen(const BierlachsRunde &runde)
{
    const int maxPunkte = m_dienst.kopf().blPunkte;
    QStringList texte;
    for (int sitz = 0; sitz < 4; ++sitz)
        texte << Bierlachs::zeile(m_dienst.teilnehmerName(sitz),
                                  Bierlachs::rest(runde, sitz, maxPunkte), runde.bilanz.at(sitz));
    emit zeilen(texte);
}

void StandSteuerung::rundeZeigen(int index)
{
    const QVector<BierlachsRunde> runden =
        Bierlachs::runden(m_dienst.spiele(), m_dienst.listenTyp(), m_dienst.kopf().blPunkte);
    if (index >= 0 && index < runden.size())
        bierlachsRundeZeigen(runden.at(index));
}

void StandSteuerung::rundenEndePruefen()
{
    const ListenKopf &kopf = m_dienst.kopf();
    if (kopf.modus != Spielmodus::Bierlachs)
        return;
    const int spieler = m_dienst.listenTyp();
    const QVector<BierlachsRunde> runden =
        Bierlachs::runden(m_dienst.spiele(), spieler, kopf.blPunkte);
    const BierlachsRunde &letzte = runden.last();
    if (!letzte.beendet || letzte.letzteZeile != m_dienst.letzteZeile())
        return;
    const int zahler = Bierlachs::bierlachs(letzte, spieler, kopf.blPunkte);
    emit statusMeldung(QStringLiteral("Bierlachs: %1").arg(m_dienst.teilnehmerName(zahler)), 0);
    if (QMessageBox::question(m_gruppe, QStringLiteral("FRAGE"),
                              QStringLiteral("Rundenende! Neue Runde?"),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    // The next game opens the new round; until then every seat shows the full points.
    bierlachsRundeZeigen(BierlachsRunde());
}
