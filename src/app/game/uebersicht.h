#pragma once

// The overview table of the entered games: one row per stored game, one
// column per field of the record, each cell the value as text. It follows the
// list: a new game appends a row, a correction rewrites one, a deletion
// removes one and renumbers those below.

#include <QObject>

class ListenDienst;
class QStandardItemModel;
class QTableView;
struct ListenAenderung;

class Uebersicht : public QObject
{
    Q_OBJECT

public:
    Uebersicht(ListenDienst &dienst, QTableView *ansicht, QObject *parent = nullptr);

    // The number of the game shown in the row, 0 for a row that is not there.
    int spielNummer(int zeile) const;

private:
    void listeGeaendert(const ListenAenderung &aenderung);
    int zeileVon(int spielNummer) const;
    void fuellen();
    void zeileSchreiben(int zeile);

    ListenDienst &m_dienst;
    QTableView *m_ansicht;
    QStandardItemModel *m_model;
};
