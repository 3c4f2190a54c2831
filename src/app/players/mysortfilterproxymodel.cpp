#include "app/players/mysortfilterproxymodel.h"

MySortFilterProxyModel::MySortFilterProxyModel(QObject *parent) : QSortFilterProxyModel(parent)
{
    // Without dynamic sorting an edit in the source never moves a row; the
    // sort column stays -1, so the rows keep the order of the source.
    setDynamicSortFilter(false);
}
