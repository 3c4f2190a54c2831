#include "app/players/sitzsteuerung.h"

#include "ui_teilnehmergruppe.h"

#include "app/players/combodelegate.h"
#include "app/players/mysortfilterproxymodel.h"
#include "app/players/namensdelegate.h"
#include "core/service/listendienst.h"

#include <QButtonGroup>
#include <QHeaderView>
#include <QMessageBox>

SitzSteuerung::SitzSteuerung(QObject *parent, ListenDienst &dienst)
    : QObject(parent), m_gruppe(new QGroupBox), m_ui(new Ui::TeilnehmerGruppe), m_dienst(dienst),
      m_proxy(new MySortFilterProxyModel(this))
{
    m_ui->setupUi(m_gruppe);
    QTableView *tabelle = m_ui->tblViewSpieler;
    tabelle->setModel(m_proxy);
    tabelle->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    // All four seats in view, whatever the font.
    tabelle->setMinimumHeight(tabelle->horizontalHeader()->sizeHint().height() +
                              4 * tabelle->verticalHeader()->defaultSectionSize() +
                              2 * tabelle->frameWidth());
    auto *flaggen = new ComboDelegate(this);
    tabelle->setItemDelegateForColumn(2, flaggen);
    tabelle->setItemDelegateForColumn(3, flaggen);
    tabelle->setItemDelegateForColumn(1, new NamensDelegate(this));

    connect(m_ui->pbUp, &QPushButton::clicked, this, &SitzSteuerung::onUp);
    connect(m_ui->pbDown, &QPushButton::clicked, this, &SitzSteuerung::onDown);
    connect(m_ui->pbStartSpiel, &QPushButton::clicked, this,
            &SitzSteuerung::serieStartenGewuenscht);
    auto *listenTypen = new QButtonGroup(this);
    listenTypen->addButton(m_ui->tb3erListe, 3);
    listenTypen->addButton(m_ui->tb4erListe, 4);
    connect(m_ui->tb3erListe, &QToolButton::toggled, this, &SitzSteuerung::on3erListe);
    connect(m_ui->tb4erListe, &QToolButton::toggled, this, &SitzSteuerung::on4erListe);
    connect(&m_dienst, &ListenDienst::geaendert, this, &SitzSteuerung::listeGeaendert);
}

SitzSteuerung::~SitzSteuerung() = default;

void SitzSteuerung::listeGeaendert(const ListenAenderung &aenderung)
{
    if (aenderung.art != ListenAenderung::ListeNeu && aenderung.art != ListenAenderung::Sitzordnung)
        return;
    // A reset opens the database anew, with a model of its own.
    if (m_proxy->sourceModel() != m_dienst.teilnehmerModell()) {
        m_proxy->setSourceModel(m_dienst.teilnehmerModell());
        // The name takes what the numbers and flags leave, so both stay in view.
        if (m_proxy->columnCount() > 1)
            m_ui->tblViewSpieler->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    }
    const QSignalBlocker sperre3(m_ui->tb3erListe);
    const QSignalBlocker sperre4(m_ui->tb4erListe);
    (m_dienst.listenTyp() == 3 ? m_ui->tb3erListe : m_ui->tb4erListe)->setChecked(true);
}

int SitzSteuerung::gewaehlterSitz() const
{
    const QModelIndex index = m_ui->tblViewSpieler->currentIndex();
    if (!index.isValid())
        return -1;
    return m_proxy->mapToSource(index).row();
}

void SitzSteuerung::sitzeTauschen(int sitz, int nachbar)
{
    const DienstErgebnis ergebnis = m_dienst.sitzeTauschen(sitz, nachbar);
    if (!ergebnis.ok()) {
        QMessageBox::warning(m_gruppe, QStringLiteral("WARNUNG"), ergebnis.fehler);
        return;
    }
    m_ui->tblViewSpieler->selectRow(
        m_proxy->mapFromSource(m_dienst.teilnehmerModell()->index(nachbar, 0)).row());
    emit sitzeGetauscht();
}

void SitzSteuerung::onUp()
{
    const int sitz = gewaehlterSitz();
    if (sitz < 1)
        return;
    sitzeTauschen(sitz, sitz - 1);
}

void SitzSteuerung::onDown()
{
    const int sitz = gewaehlterSitz();
    if (sitz < 0 || sitz >= m_dienst.anzahlTeilnehmer() - 1)
        return;
    sitzeTauschen(sitz, sitz + 1);
}

void SitzSteuerung::listenTypSetzen(int spieler)
{
    const DienstErgebnis ergebnis = m_dienst.listenTypSetzen(spieler);
    if (!ergebnis.ok())
        QMessageBox::warning(m_gruppe, QStringLiteral("WARNUNG"), ergebnis.fehler);
}

void SitzSteuerung::on3erListe(bool gewaehlt)
{
    if (gewaehlt)
        listenTypSetzen(3);
}

void SitzSteuerung::on4erListe(bool gewaehlt)
{
    if (gewaehlt)
        listenTypSetzen(4);
}

void SitzSteuerung::laufzustandSetzen(bool laufend)
{
    if (laufend)
        m_ui->tblViewSpieler->clearSelection();
    m_ui->pbUp->setEnabled(!laufend);
    m_ui->pbDown->setEnabled(!laufend);
    m_ui->pbStartSpiel->setEnabled(!laufend);
}
