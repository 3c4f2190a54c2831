#include "app/sheets/listview.h"

#include <QScrollBar>
#include <QScroller>

ListView::ListView(QWidget *parent) : QGraphicsView(parent)
{
    // A zoomed-out sheet sits in the corner, and a new scene is not centred.
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setTransformationAnchor(QGraphicsView::NoAnchor);
    QScroller::grabGesture(this, QScroller::LeftMouseButtonGesture);
}

void ListView::obenLinksZeigen()
{
    horizontalScrollBar()->setValue(horizontalScrollBar()->minimum());
    verticalScrollBar()->setValue(verticalScrollBar()->minimum());
}

void ListView::zeileZeigen(qreal y)
{
    const QPointF obenLinks = mapToScene(0, 0);
    ensureVisible(QRectF(obenLinks.x(), y - 1, 1, 1), 0, 40);
}

void ListView::zoomen(qreal faktor)
{
    const QPointF obenLinks = mapToScene(0, 0);
    setTransform(QTransform::fromScale(faktor, faktor));
    const QPoint jetzt = mapFromScene(obenLinks);
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + jetzt.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + jetzt.y());
}
