#include "app/files/dockfileview.h"

#include "core/files/xmlprotokoll.h"

#include <QDir>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTreeView>
#include <QVBoxLayout>

DockFileView::DockFileView(const QString &verzeichnis, QWidget *parent)
    : QDockWidget(QStringLiteral("XML Protokoll Dateien"), parent)
{
    setObjectName(QStringLiteral("DockFileView"));
    auto *inhalt = new QWidget(this);
    auto *layout = new QVBoxLayout(inhalt);
    layout->addWidget(new QLabel(QStringLiteral("Selektiere XML-Datei"), inhalt));

    m_dateien = new QStandardItemModel(this);
    m_dateien->setHorizontalHeaderLabels({QStringLiteral("Namen")});
    // Newest first: the list of the evening is usually the one wanted. The
    // archived lists follow, named by their folder.
    for (const QString &ordner : {QString(), QStringLiteral("archiv/")}) {
        const QFileInfoList eintraege =
            QDir(verzeichnis + QLatin1Char('/') + ordner)
                .entryInfoList({QStringLiteral("*.xml")}, QDir::Files, QDir::Time);
        for (const QFileInfo &eintrag : eintraege) {
            QFile datei(eintrag.filePath());
            if (datei.open(QIODevice::ReadOnly) && XmlProtokoll::istProtokoll(datei.readAll()))
                m_dateien->appendRow(new QStandardItem(ordner + eintrag.fileName()));
        }
    }
    m_ansicht = new QTreeView(inhalt);
    m_ansicht->setObjectName(QStringLiteral("tvDateien"));
    m_ansicht->setModel(m_dateien);
    m_ansicht->setRootIsDecorated(false);
    m_ansicht->setEditTriggers(QAbstractItemView::NoEditTriggers);
    if (m_dateien->rowCount() > 0)
        m_ansicht->setCurrentIndex(m_dateien->index(0, 0));
    layout->addWidget(m_ansicht);

    auto *knoepfe = new QHBoxLayout;
    auto *ok = new QPushButton(QStringLiteral("OK"), inhalt);
    ok->setObjectName(QStringLiteral("pbOk"));
    auto *abbruch = new QPushButton(QStringLiteral("Abbruch"), inhalt);
    abbruch->setObjectName(QStringLiteral("pbAbbruch"));
    knoepfe->addStretch();
    knoepfe->addWidget(abbruch);
    knoepfe->addWidget(ok);
    layout->addLayout(knoepfe);
    setWidget(inhalt);

    connect(ok, &QPushButton::clicked, this, &DockFileView::onOk);
    connect(abbruch, &QPushButton::clicked, this, &DockFileView::onAbbruch);
    connect(m_ansicht, &QTreeView::doubleClicked, this, &DockFileView::onDoubleClicked);
}

QString DockFileView::ausgewaehlteDatei() const
{
    const QModelIndex index = m_ansicht->currentIndex();
    return index.isValid() ? index.data().toString() : QString();
}

void DockFileView::onOk()
{
    emit accept();
}

void DockFileView::onAbbruch()
{
    emit reject();
}

void DockFileView::onDoubleClicked(const QModelIndex &index)
{
    if (!index.isValid())
        return;
    m_ansicht->setCurrentIndex(index);
    emit accept();
}
