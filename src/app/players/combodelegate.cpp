#include "app/players/combodelegate.h"

#include <QComboBox>

ComboDelegate::ComboDelegate(QObject *parent) : QItemDelegate(parent) {}

QWidget *ComboDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                     const QModelIndex &index) const
{
    auto *editor = new QComboBox(parent);
    editor->addItem(QStringLiteral("Ja"), true);
    editor->addItem(QStringLiteral("Nein"), false);
    editor->setCurrentIndex(editor->findData(index.data(Qt::EditRole).toBool()));
    return editor;
}

void ComboDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    auto *combo = static_cast<QComboBox *>(editor);
    int eintrag = combo->findText(index.data(Qt::DisplayRole).toString());
    if (eintrag < 0)
        eintrag = combo->findData(index.data(Qt::EditRole).toBool());
    combo->setCurrentIndex(eintrag);
}

void ComboDelegate::setModelData(QWidget *editor, QAbstractItemModel *model,
                                 const QModelIndex &index) const
{
    const auto *combo = static_cast<QComboBox *>(editor);
    model->setData(index, combo->currentText(), Qt::EditRole);
}

void ComboDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                         const QModelIndex &) const
{
    editor->setGeometry(option.rect);
}
