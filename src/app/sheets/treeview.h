#pragma once

// The ranking's list: read only, sorted by a click on a heading, every column
// stretched, so the evening's players fit the page without scrolling sideways.

#include <QTreeView>

class TreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit TreeView(QWidget *parent = nullptr);
};
