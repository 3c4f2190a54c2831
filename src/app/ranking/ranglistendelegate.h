#pragma once

// Draws the ranking's cells with their text laid out once and kept: when
// results pour in and rows are added, the page is drawn again and again, and
// laying out the same names and numbers anew each time was most of the cost.

#include <QFont>
#include <QHash>
#include <QStaticText>
#include <QStyledItemDelegate>

class RanglistenDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *maler, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    mutable QHash<QString, QStaticText> m_texte;
    mutable QFont m_schrift;
};
