#pragma once

// The view that shows the score sheet. The sheet is taller than any screen, so
// it can be dragged with a finger or the mouse like a sheet of paper.

#include <QGraphicsView>

class ListView : public QGraphicsView
{
    Q_OBJECT

public:
    explicit ListView(QWidget *parent = nullptr);
};
