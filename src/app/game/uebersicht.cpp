#include "app/game/uebersicht.h"

#include "core/service/listendienst.h"

#include <QStandardItemModel>
#include <QTableView>

Uebersicht::Uebersicht(ListenDienst &dienst, QTableView *ansicht, QObject *parent)
    : QObject(parent), m_dienst(dienst), m_ansicht(ansicht), m_model(new QStandardItemModel(this))
{
    m_model->setHorizontalHeaderLabels(
        {QStringLiteral("Nr"), QStringLiteral("Spiel"), QStringLiteral("Mit"),
         QStringLiteral("Ohne"), QStringLiteral("Hand"), QStringLiteral("Schneider"),
         QStringLiteral("AngSchn"), QStringLiteral("Schwarz"), QStringLiteral("AngSchw"),
         QStringLiteral("Offen"), QStringLiteral("Gew"), QStringLiteral("Verl"),
         QStringLiteral("Spieler1"), QStringLiteral("Spieler2"), QStringLiteral("Spieler3"),
         QStringLiteral("Spieler4"), QStringLiteral("Eingepasst"), QStringLiteral("Reizung")});
    m_ansicht->setModel(m_model);
    connect(&m_dienst, &ListenDienst::geaendert, this, &Uebersicht::listeGeaendert);
}

int Uebersicht::spielNummer(int zeile) const
{
    const QStandardItem *nr = m_model->item(zeile, 0);
    return nr ? nr->text().toInt() : 0;
}

void Uebersicht::listeGeaendert(const ListenAenderung &aenderung)
{
    switch (aenderung.art) {
    case ListenAenderung::SpielNeu:
        m_model->insertRow(m_model->rowCount());
        zeileSchreiben(m_model->rowCount() - 1);
        break;
    case ListenAenderung::SpielGeaendert:
        zeileSchreiben(zeileVon(aenderung.zeile));
        break;
    case ListenAenderung::SpielEntfernt: {
        // The rows below move up and show their new numbers.
        const int zeile = zeileVon(aenderung.zeile);
        m_model->removeRow(zeile);
        for (int z = zeile; z < m_model->rowCount(); ++z)
            zeileSchreiben(z);
        break;
    }
    case ListenAenderung::ListeNeu:
        m_model->removeRows(0, m_model->rowCount());
        fuellen();
        break;
    case ListenAenderung::Kopf:
    case ListenAenderung::Teilnehmer:
    case ListenAenderung::Sitzordnung:
    case ListenAenderung::Register:
    case ListenAenderung::Einstellungen:
        break;
    }
    m_ansicht->setColumnHidden(SpielEintrag::Spieler4, m_dienst.listenTyp() == 3);
}

int Uebersicht::zeileVon(int spielNummer) const
{
    for (int zeile = 0; zeile < m_model->rowCount(); ++zeile) {
        if (this->spielNummer(zeile) == spielNummer)
            return zeile;
    }
    return -1;
}

void Uebersicht::fuellen()
{
    const int anzahl = m_dienst.spiele().size();
    if (m_model->rowCount() > anzahl)
        m_model->removeRows(anzahl, m_model->rowCount() - anzahl);
    for (int zeile = 0; zeile < m_model->rowCount(); ++zeile)
        zeileSchreiben(zeile);
    // Missing rows come whole: an item set into an empty cell makes the view
    // lay out every row again, and a long list took minutes to show.
    for (int zeile = m_model->rowCount(); zeile < anzahl; ++zeile) {
        QList<QStandardItem *> reihe;
        for (int spalte = 0; spalte < SpielEintrag::AnzahlSpalten; ++spalte)
            reihe << new QStandardItem(
                QStringLiteral("%1").arg(m_dienst.spiele().at(zeile).wert(spalte)));
        m_model->appendRow(reihe);
    }
}

void Uebersicht::zeileSchreiben(int zeile)
{
    if (zeile < 0 || zeile >= m_dienst.spiele().size())
        return;
    const SpielEintrag &eintrag = m_dienst.spiele().at(zeile);
    for (int spalte = 0; spalte < SpielEintrag::AnzahlSpalten; ++spalte) {
        const QString text = QStringLiteral("%1").arg(eintrag.wert(spalte));
        if (QStandardItem *item = m_model->item(zeile, spalte)) {
            if (item->text() != text)
                item->setText(text);
        } else {
            m_model->setItem(zeile, spalte, new QStandardItem(text));
        }
    }
}
