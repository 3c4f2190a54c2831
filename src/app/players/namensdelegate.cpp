#include "app/players/namensdelegate.h"

#include "core/files/spielerdatei.h"

#include <QLineEdit>
#include <QMessageBox>

void NamensDelegate::setModelData(QWidget *editor, QAbstractItemModel *model,
                                  const QModelIndex &index) const
{
    auto *feld = qobject_cast<QLineEdit *>(editor);
    if (!feld) {
        QStyledItemDelegate::setModelData(editor, model, index);
        return;
    }
    const QString zeichen = SpielerDatei::verboteneZeichen(feld->text());
    if (!zeichen.isEmpty()) {
        QMessageBox::warning(editor->window(), QStringLiteral("WARNUNG"),
                             QStringLiteral("Das Zeichen \"%1\" ist in Spielernamen nicht "
                                            "erlaubt.")
                                 .arg(zeichen.left(1)));
        return;
    }
    model->setData(index, SpielerDatei::bereinigt(feld->text()), Qt::EditRole);
}
