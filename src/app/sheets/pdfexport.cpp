#include "app/sheets/pdfexport.h"

#include <QDate>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

void blattZeichnen(QGraphicsView *ansicht, QPainter &maler, const QRect &seite)
{
    maler.setViewport(seite);
    // The whole scene as the view maps it, so the page shows the full sheet
    // whatever part of it is scrolled into view.
    const QRect quelle = ansicht->mapFromScene(ansicht->scene()->sceneRect()).boundingRect();
    ansicht->render(&maler, QRectF(seite), quelle, Qt::KeepAspectRatio);
}

QString pdfSchreiben(QGraphicsView *ansicht, const QString &pfad)
{
    if (!ansicht || !ansicht->scene())
        return QStringLiteral("Es ist kein Blatt zu sehen.");
    QSaveFile datei(pfad);
    if (!datei.open(QIODevice::WriteOnly))
        return datei.errorString();
    {
        QPdfWriter schreiber(&datei);
        schreiber.setResolution(ansicht->logicalDpiX());
        schreiber.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                            QMarginsF(0, 0, 0, 0), QPageLayout::Point));
        QPainter maler;
        if (!maler.begin(&schreiber)) {
            datei.cancelWriting();
            return QStringLiteral("Die Seite kann nicht gezeichnet werden.");
        }
        blattZeichnen(ansicht, maler, QRect(0, 0, schreiber.width(), schreiber.height()));
        maler.end();
    }
    // Flushed before the commit, which would otherwise replace the old file even
    // when the last bytes did not reach the disk.
    if (!datei.flush() || !datei.commit())
        return datei.errorString();
    return QString();
}

QString pdfDateiName(const QDate &datum, int serie, int tischNr)
{
    return QStringLiteral("Skat%1_S%2_T%3.pdf")
        .arg(datum.toString(QStringLiteral("dd-MM-yyyy")), QString::number(serie),
             QString::number(tischNr));
}
