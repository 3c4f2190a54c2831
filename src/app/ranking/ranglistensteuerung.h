#pragma once

// The "Spielstaende" page: the evening's ranking across the tables as their
// results arrive, the seating proposed for the next series, the two ranking
// files, and the ranking full screen for a projector.

#include "core/ranking/rangliste.h"

#include <QObject>
#include <QPointer>

class LeinwandAnsicht;
class ListenDienst;
class QSortFilterProxyModel;
class QStandardItem;
class QStandardItemModel;
class TreeView;

class RanglistenSteuerung : public QObject
{
    Q_OBJECT

public:
    // Builds the ranking on the page given.
    RanglistenSteuerung(QObject *parent, QWidget *seite, ListenDienst &dienst);
    ~RanglistenSteuerung() override;

    QStandardItemModel *modell() const { return m_modell; }

    // Results "name|table|series|points|won|lost|costs|-|place", this
    // table's own or another's.
    void aufnehmen(const QStringList &ergebnisse);
    // Empties the ranking and starts this table's players at zero, here and,
    // through the link, everywhere.
    void onSpielStandsAnzeigeAufNullSetzen();
    void onTischreihenfolgeAuswerten();
    void onSaveRangliste();
    // Empty, with its headings: a manager has come.
    void leeren();
    // The ranking full screen, on a second screen when there is one.
    void leinwandZeigen();

signals:
    void ergebnisseSenden(const QStringList &ergebnisse);

private:
    static QList<QStandardItem *> reihe(const RanglistenZeile &zeile);
    static void reiheFuellen(const QList<QStandardItem *> &reihe, const RanglistenZeile &zeile);
    void speichern(const QString &frage, const QString &name, const QString &inhalt);

    QWidget *m_seite;
    ListenDienst &m_dienst;
    RanglistenStand m_stand;
    QStandardItemModel *m_modell;
    QSortFilterProxyModel *m_proxy;
    TreeView *m_ansicht;
    QPointer<LeinwandAnsicht> m_leinwand;
};
