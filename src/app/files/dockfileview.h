#pragma once

// A touch-sized picker for the protocol files of the data directory: lists
// the XML files that hold a list and reports the one chosen.

#include <QDockWidget>

class QModelIndex;
class QStandardItemModel;
class QTreeView;

class DockFileView : public QDockWidget
{
    Q_OBJECT

public:
    explicit DockFileView(const QString &verzeichnis, QWidget *parent = nullptr);

    // File name (without directory) of the selected row; empty when none.
    QString ausgewaehlteDatei() const;

signals:
    void accept();
    void reject();

public slots:
    void onOk();
    void onAbbruch();
    void onDoubleClicked(const QModelIndex &index);

private:
    QStandardItemModel *m_dateien;
    QTreeView *m_ansicht;
};
