#pragma once

// Shows the pages of the compiled help collection; every resource a page asks
// for is read from the collection itself.

#include <QTextBrowser>
#include <QUrl>

class QHelpEngine;

class HelpBrowser : public QTextBrowser
{
    Q_OBJECT

public:
    explicit HelpBrowser(const QString &sammlung, QWidget *parent = nullptr);
    ~HelpBrowser() override;

    QHelpEngine *helpEngine() const { return m_engine; }
    QUrl homeUrl() const { return m_home; }

    // Shows the first document registered under the identifier, if any.
    void zeigeSeite(const QString &identifier);

    QVariant loadResource(int type, const QUrl &name) override;

public slots:
    void toHome();

private:
    QHelpEngine *m_engine;
    QUrl m_home;
};
