#include "app/help/helpbrowser.h"

#include <QDeadlineTimer>
#include <QHelpContentModel>
#include <QHelpEngine>
#include <QHelpIndexModel>
#include <QHelpLink>
#include <QScroller>
#include <QThread>

HelpBrowser::HelpBrowser(const QString &sammlung, QWidget *parent) : QTextBrowser(parent)
{
    QScroller::grabGesture(this, QScroller::LeftMouseButtonGesture);
    m_engine = new QHelpEngine(sammlung, this);
    m_engine->setUsesFilterEngine(true);
    m_engine->setupData();
    for (const QHelpLink &link : m_engine->documentsForKeyword(QStringLiteral("Startseite"))) {
        if (link.title == QLatin1String("Kartulo"))
            m_home = link.url;
    }
}

HelpBrowser::~HelpBrowser()
{
    // Qt reads the chapters and keywords of the collection on threads of its
    // own; a window closed right after it opened would take the collection from
    // under them, so the engine waits for them.
    const QDeadlineTimer frist(5000);
    while ((m_engine->contentModel()->isCreatingContents() ||
            m_engine->indexModel()->isCreatingIndex()) &&
           !frist.hasExpired())
        QThread::msleep(5);
}

void HelpBrowser::zeigeSeite(const QString &identifier)
{
    const QList<QHelpLink> dokumente = m_engine->documentsForIdentifier(identifier);
    if (!dokumente.isEmpty())
        setSource(dokumente.first().url);
}

void HelpBrowser::toHome()
{
    if (m_home.isValid())
        setSource(m_home);
}

QVariant HelpBrowser::loadResource(int type, const QUrl &name)
{
    Q_UNUSED(type);
    const QUrl url = name.isRelative() ? source().resolved(name) : name;
    return m_engine->fileData(url);
}
