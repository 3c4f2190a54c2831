#pragma once

// The view that shows the score sheet. The sheet is taller than any screen, so
// it can be dragged with a finger or the mouse like a sheet of paper, and it
// is read from its top-left corner: that corner stays put when zooming.

#include <QGraphicsView>

class ListView : public QGraphicsView
{
    Q_OBJECT

public:
    explicit ListView(QWidget *parent = nullptr);

    // Shows the sheet's top-left corner, where its header is.
    void obenLinksZeigen();
    // Scrolls down just far enough that the scene line y is in view.
    void zeileZeigen(qreal y);
    // Scales the sheet, keeping the scene point at the view's top-left corner.
    void zoomen(qreal faktor);
};
