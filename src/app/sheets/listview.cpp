#include "app/sheets/listview.h"

#include <QScroller>

ListView::ListView(QWidget *parent) : QGraphicsView(parent)
{
    QScroller::grabGesture(this, QScroller::LeftMouseButtonGesture);
}
