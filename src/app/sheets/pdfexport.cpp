#include "app/sheets/pdfexport.h"

#include <QDate>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPrinter>

bool pdfSchreiben(QGraphicsView *ansicht, const QString &pfad)
{
    if (!ansicht || !ansicht->scene())
        return false;

    QPrinter drucker(QPrinter::ScreenResolution);
    drucker.setOutputFileName(pfad);
    drucker.setPageOrientation(QPageLayout::Portrait);
    drucker.setPageSize(QPageSize(QPageSize::A4));
    drucker.setOutputFormat(QPrinter::PdfFormat);
    drucker.setPageMargins(QMarginsF(0, 0, 0, 0), QPageLayout::Point);

    QPainter maler;
    if (!maler.begin(&drucker))
        return false;
    const int breite = drucker.width();
    const int hoehe = drucker.height();
    maler.setViewport(0, 0, breite, hoehe);
    // The whole scene as the view maps it, so the page shows the full sheet
    // whatever part of it is scrolled into view.
    const QRect quelle = ansicht->mapFromScene(ansicht->scene()->sceneRect()).boundingRect();
    ansicht->render(&maler, QRectF(0, 0, breite, hoehe), quelle, Qt::KeepAspectRatio);
    maler.end();
    return true;
}

QString pdfDateiName(const QDate &datum, int serie, int tischNr)
{
    return QStringLiteral("Skat%1_S%2_T%3.pdf")
        .arg(datum.toString(QStringLiteral("dd-MM-yyyy")), QString::number(serie),
             QString::number(tischNr));
}
