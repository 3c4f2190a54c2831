#pragma once

// The score sheet as a one-page PDF: the scene of the view scaled onto an A4
// portrait page without margins, keeping its proportions.

#include <QString>

class QDate;
class QGraphicsView;
class QPainter;
class QRect;

// Draws the whole scene of the view into the rectangle seite of the painter's
// device, as large as its proportions allow.
void blattZeichnen(QGraphicsView *ansicht, QPainter &maler, const QRect &seite);

// Renders what the view shows of its scene into the PDF at pfad. The old file
// is replaced only by a complete new one. Empty when it worked, else the
// reason.
QString pdfSchreiben(QGraphicsView *ansicht, const QString &pfad);

// "Skat<dd-MM-yyyy>_S<serie>_T<tisch>.pdf", e.g. Skat14-11-2026_S2_T5.pdf.
QString pdfDateiName(const QDate &datum, int serie, int tischNr);
