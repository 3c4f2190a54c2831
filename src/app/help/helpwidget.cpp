#include "app/help/helpwidget.h"

#include "app/help/helpbrowser.h"

#include <QCoreApplication>
#include <QDebug>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QHelpContentWidget>
#include <QHelpEngine>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QToolBar>

HelpWidget::HelpWidget(QWidget *parent) : QWidget(parent)
{
    const QString sammlung =
        QStringLiteral("%1/docs/%2.qhc")
            .arg(QCoreApplication::applicationDirPath(), QStringLiteral("kartulo"));
    m_browser = new HelpBrowser(sammlung, this);
    QHelpEngine *engine = m_browser->helpEngine();

    auto *teiler = new QSplitter(Qt::Horizontal, this);
    auto *navigation = new QTabWidget(teiler);
    navigation->setMinimumWidth(100);
    QHelpContentWidget *inhalt = engine->contentWidget();
    inhalt->header()->setSectionResizeMode(QHeaderView::Stretch);
    navigation->addTab(inhalt, QStringLiteral("Kapitel"));
    QHelpIndexWidget *index = engine->indexWidget();
    index->setResizeMode(QListView::Adjust);
    navigation->addTab(index, QStringLiteral("Stichworte"));
    teiler->addWidget(navigation);
    teiler->addWidget(m_browser);
    teiler->setStretchFactor(1, 3);

    connect(inhalt, &QHelpContentWidget::linkActivated, m_browser,
            QOverload<const QUrl &>::of(&QTextBrowser::setSource));
    connect(
        index, &QHelpIndexWidget::documentActivated, m_browser,
        [this](const QHelpLink &dokument, const QString &) { m_browser->setSource(dokument.url); });

    auto *leiste = new QToolBar(QStringLiteral("DocuToolBar"), this);
    leiste->setObjectName(QStringLiteral("DocuToolBar"));
    leiste->setOrientation(Qt::Vertical);
    leiste->setIconSize(QSize(24, 24));
    QAction *home = leiste->addAction(QIcon(QStringLiteral(":/Images/Home.png")),
                                      QStringLiteral("Home"), this, &HelpWidget::toHome);
    home->setObjectName(QStringLiteral("actionHome"));
    QAction *vor = leiste->addAction(style()->standardIcon(QStyle::SP_ArrowForward),
                                     QStringLiteral("Vorwaerts"), this, &HelpWidget::onForward);
    QAction *zurueck =
        leiste->addAction(style()->standardIcon(QStyle::SP_ArrowBack),
                          QStringLiteral("Rueckwaerts"), this, &HelpWidget::onBackward);
    vor->setEnabled(false);
    zurueck->setEnabled(false);
    connect(m_browser, &QTextBrowser::forwardAvailable, vor, &QAction::setEnabled);
    connect(m_browser, &QTextBrowser::backwardAvailable, zurueck, &QAction::setEnabled);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(leiste);
    layout->addWidget(teiler);
}

void HelpWidget::zeigeSeite(const QString &identifier)
{
    m_browser->zeigeSeite(identifier);
}

void HelpWidget::toHome()
{
    m_browser->toHome();
}

void HelpWidget::onForward()
{
    m_browser->forward();
}

void HelpWidget::onBackward()
{
    m_browser->backward();
}

void HelpWidget::setSource(const QModelIndex &index)
{
    qDebug() << index;
}
