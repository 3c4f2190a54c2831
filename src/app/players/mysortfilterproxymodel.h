#pragma once

// Sits between the participants model and its table view. The row order of
// the participants is the seating order, which decides the dealer, so the
// proxy never sorts on its own.

#include <QSortFilterProxyModel>

class MySortFilterProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit MySortFilterProxyModel(QObject *parent = nullptr);
};
