#include "app/sheets/treeview.h"

#include <QHeaderView>

TreeView::TreeView(QWidget *parent) : QTreeView(parent)
{
    setAlternatingRowColors(false);
    setAllColumnsShowFocus(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSortingEnabled(true);
    // Shown in the list's own order until a heading is clicked.
    sortByColumn(-1, Qt::AscendingOrder);
    setDragDropMode(QAbstractItemView::NoDragDrop);
    setRootIsDecorated(false);
    // Every row is one line of text; a flood of results must not have the
    // view measure each row anew.
    setUniformRowHeights(true);
    header()->setSectionsMovable(false);
    header()->setSectionResizeMode(QHeaderView::Stretch);
}
