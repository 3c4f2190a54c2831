#pragma once

// Yes/no editor of the flag columns "Mitglied" and "Preisskat" of the
// participants table: a combo box with "Ja" (true) and "Nein" (false) that
// writes the chosen text back, as the participant rows store the flags.

#include <QItemDelegate>

class ComboDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    explicit ComboDelegate(QObject *parent = nullptr);

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    // Selects the entry whose text is the cell's display text; a cell that
    // holds neither "Ja" nor "Nein" (an old numeric flag) is read as a bool.
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model,
                      const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;
};
