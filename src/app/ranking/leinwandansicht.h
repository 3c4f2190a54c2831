#pragma once

// The ranking for a projector or a second screen: full screen, best player on
// top, in type large enough to read across a club room, following the
// ranking as results arrive. Esc leaves it.

#include <QWidget>

class QAbstractItemModel;
class QLabel;
class QTableView;

class LeinwandAnsicht : public QWidget
{
    Q_OBJECT

public:
    // modell: the ranking's columns name, table, series, points, won, lost, ...
    explicit LeinwandAnsicht(QAbstractItemModel *modell, QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void schriftAnpassen();

    QLabel *m_titel;
    QTableView *m_tabelle;
};
