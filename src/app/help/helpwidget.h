#pragma once

// The help pane of the "Beschreibung" tab: contents and keyword index beside
// the browser, with a small vertical tool bar for home, forward and back.

#include <QWidget>

class HelpBrowser;
class QAction;
class QModelIndex;

class HelpWidget : public QWidget
{
    Q_OBJECT

public:
    explicit HelpWidget(QWidget *parent = nullptr);

    HelpBrowser *browser() const { return m_browser; }
    void zeigeSeite(const QString &identifier);

public slots:
    void toHome();
    void onForward();
    void onBackward();
    void setSource(const QModelIndex &index);

private:
    HelpBrowser *m_browser;
};
