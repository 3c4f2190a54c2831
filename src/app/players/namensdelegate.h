#pragma once

// Editor of the name column of the participants: a name with a character that
// would break the network and ranking texts is refused with a warning; any
// other is cleaned as every name is (SpielerDatei::bereinigt).

#include <QStyledItemDelegate>

class NamensDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void setModelData(QWidget *editor, QAbstractItemModel *model,
                      const QModelIndex &index) const override;
};
