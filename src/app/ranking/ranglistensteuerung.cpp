#include "app/ranking/ranglistensteuerung.h"

#include "app/ranking/leinwandansicht.h"
#include "app/ranking/ranglistendelegate.h"
#include "app/sheets/treeview.h"
#include "core/service/listendienst.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QSaveFile>
#include <QScreen>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>

namespace {

const QStringList Kopf{QStringLiteral("Name"),     QStringLiteral("Tischnr"),
                       QStringLiteral("Serie"),    QStringLiteral("Punkte"),
                       QStringLiteral("Gewonnen"), QStringLiteral("Verloren"),
                       QStringLiteral("Kosten"),   QStringLiteral("Tisch-Platz")};

} // namespace

RanglistenSteuerung::RanglistenSteuerung(QObject *parent, QWidget *seite, ListenDienst &dienst)
    : QObject(parent), m_seite(seite), m_dienst(dienst),
      m_modell(new QStandardItemModel(0, 8, this)), m_proxy(new QSortFilterProxyModel(this))
{
    m_modell->setHorizontalHeaderLabels(Kopf);
    m_proxy->setSourceModel(m_modell);
    m_ansicht = new TreeView(seite);
    m_ansicht->setObjectName(QStringLiteral("tvRangliste"));
    m_ansicht->setModel(m_proxy);
    m_ansicht->setItemDelegate(new RanglistenDelegate(m_ansicht));
    // The stretched columns always fit; a scroll bar that comes and goes
    // with the rows would lay the whole page out again.
    m_ansicht->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_ansicht->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto *knoepfe = new QHBoxLayout;
    const auto knopf = [&](const QString &name, const QString &text, auto slot) {
        auto *k = new QPushButton(text, seite);
        k->setObjectName(name);
        connect(k, &QPushButton::clicked, this, slot);
        knoepfe->addWidget(k);
    };
    knopf(QStringLiteral("pbReihenfolgeAuswerten"), QStringLiteral("Reihenfolge auswerten"),
          &RanglistenSteuerung::onTischreihenfolgeAuswerten);
    knopf(QStringLiteral("pbRanglisteSpeichern"), QStringLiteral("Rangliste speichern"),
          &RanglistenSteuerung::onSaveRangliste);
    knopf(QStringLiteral("pbLeinwand"), QStringLiteral("Vollbild"),
          &RanglistenSteuerung::leinwandZeigen);
    auto *seitenLayout = new QVBoxLayout(seite);
    seitenLayout->addWidget(m_ansicht);
    seitenLayout->addLayout(knoepfe);
}

RanglistenSteuerung::~RanglistenSteuerung()
{
    delete m_leinwand;
}

QList<QStandardItem *> RanglistenSteuerung::reihe(const RanglistenZeile &z)
{
    QList<QStandardItem *> reihe;
    for (int spalte = 0; spalte < 7; ++spalte) {
        auto *item = new QStandardItem;
        if (spalte > 0)
            item->setTextAlignment(Qt::AlignRight);
        reihe << item;
    }
    auto *platz = new QStandardItem(z.platz);
    platz->setTextAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    reihe << platz;
    reiheFuellen(reihe, z);
    // The stretched columns cut a long name; the name is the row's key and never changes.
    reihe.first()->setToolTip(z.name);
    return reihe;
}

void RanglistenSteuerung::reiheFuellen(const QList<QStandardItem *> &reihe,
                                       const RanglistenZeile &z)
{
    const QString texte[] = {z.name, z.tisch, z.serie, z.punkte, z.gewonnen, z.verloren, z.kosten};
    const QBrush farbe(z.tisch.toInt() % 2 == 1 ? Qt::cyan : Qt::lightGray, Qt::SolidPattern);
    for (int spalte = 0; spalte < 7; ++spalte) {
        QStandardItem *item = reihe.at(spalte);
        // Only what changed, so a result repeated unchanged costs the view nothing.
        if (item->text() != texte[spalte])
            item->setText(texte[spalte]);
        if (item->background() != farbe)
            item->setBackground(farbe);
    }
}

void RanglistenSteuerung::aufnehmen(const QStringList &ergebnisse)
{
    for (const QString &ergebnis : ergebnisse) {
        const RanglistenStand::Schritt schritt = m_stand.aufnehmen(ergebnis);
        const RanglistenZeile &z = m_stand.zeilen().at(schritt.nach);
        if (schritt.von < 0) {
            m_modell->insertRow(schritt.nach, reihe(z));
            continue;
        }
        QList<QStandardItem *> items;
        if (schritt.von == schritt.nach) {
            for (int spalte = 0; spalte < 7; ++spalte)
                items << m_modell->item(schritt.von, spalte);
        } else {
            items = m_modell->takeRow(schritt.von);
            m_modell->insertRow(schritt.nach, items);
        }
        reiheFuellen(items, z);
    }
}

void RanglistenSteuerung::leeren()
{
    m_stand.leeren();
    m_modell->clear();
    m_modell->setColumnCount(8);
    m_modell->setHorizontalHeaderLabels(Kopf);
}

void RanglistenSteuerung::onSpielStandsAnzeigeAufNullSetzen()
{
    leeren();
    const ListenKopf &kopf = m_dienst.kopf();
    QStringList ergebnisse;
    for (const Teilnehmer &t : m_dienst.teilnehmer())
        ergebnisse
            << QStringLiteral("%1|%2|%3|0|0|0|0|-").arg(t.name).arg(kopf.tischNr).arg(kopf.serie);
    aufnehmen(ergebnisse);
    emit ergebnisseSenden(ergebnisse);
}

void RanglistenSteuerung::onTischreihenfolgeAuswerten()
{
    m_stand.tischreihenfolgeAuswerten();
    for (int zeile = 0; zeile < m_stand.zeilen().size(); ++zeile)
        m_modell->item(zeile, 7)->setText(m_stand.zeilen().at(zeile).platz);
}

void RanglistenSteuerung::onSaveRangliste()
{
    // In the order the list is shown, so the scorer's sort decides the file's.
    QVector<RanglistenZeile> gezeigt;
    const QVector<RanglistenZeile> &alle = m_stand.zeilen();
    for (int zeile = 0; zeile < m_proxy->rowCount(); ++zeile)
        gezeigt << alle.at(m_proxy->mapToSource(m_proxy->index(zeile, 0)).row());
    const QDate datum =
        m_dienst.kopf().datum.isValid() ? m_dienst.kopf().datum : QDate::currentDate();
    speichern(QStringLiteral("Als Textdatei speichern?"), Rangliste::textDateiName(datum),
              Rangliste::textDatei(gezeigt));
    speichern(QStringLiteral("Als Excel-Import-Datei speichern?"),
              Rangliste::tabellenDateiName(datum), Rangliste::tabellenDatei(gezeigt));
}

void RanglistenSteuerung::speichern(const QString &frage, const QString &name,
                                    const QString &inhalt)
{
    if (QMessageBox::question(m_seite, QStringLiteral("FRAGE"), frage,
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    const QString pfad = QStringLiteral("%1/%2").arg(m_dienst.datenVerzeichnis(), name);
    QSaveFile datei(pfad);
    const QByteArray bytes = inhalt.toLocal8Bit();
    if (!datei.open(QIODevice::WriteOnly | QIODevice::Text) || datei.write(bytes) != bytes.size() ||
        !datei.commit()) {
        QMessageBox::warning(m_seite, QStringLiteral("WARNUNG"),
                             QStringLiteral("Die Datei\n%1\nkann nicht geschrieben werden:\n%2")
                                 .arg(pfad, datei.errorString()));
        return;
    }
    QMessageBox::information(m_seite, QStringLiteral("INFO"),
                             QStringLiteral("Datei %1 abgespeichert!").arg(pfad));
}

void RanglistenSteuerung::leinwandZeigen()
{
    if (!m_leinwand)
        m_leinwand = new LeinwandAnsicht(m_modell);
    const QList<QScreen *> schirme = QGuiApplication::screens();
    // The other screen when the laptop drives a projector too.
    QScreen *schirm = schirme.size() > 1 && schirme.last() != m_seite->screen() ? schirme.last()
                                                                                : m_seite->screen();
    m_leinwand->setGeometry(schirm->geometry());
    m_leinwand->showFullScreen();
    m_leinwand->raise();
    m_leinwand->activateWindow();
}
