#include "app/ranking/ranglistendelegate.h"

#include <QApplication>
#include <QPainter>

namespace {
// Names and numbers of an evening; a flood of new names only fills it again.
constexpr int hoechstTexte = 4096;
} // namespace

void RanglistenDelegate::paint(QPainter *maler, const QStyleOptionViewItem &option,
                               const QModelIndex &index) const
{
    QStyleOptionViewItem zelle = option;
    initStyleOption(&zelle, index);
    const bool gewaehlt = zelle.state & QStyle::State_Selected;
    if (gewaehlt)
        maler->fillRect(zelle.rect, zelle.palette.brush(QPalette::Highlight));
    else if (zelle.backgroundBrush.style() != Qt::NoBrush)
        maler->fillRect(zelle.rect, zelle.backgroundBrush);
    const QString &text = zelle.text;
    if (text.isEmpty())
        return;
    const QWidget *ansicht = zelle.widget;
    QStyle *stil = ansicht ? ansicht->style() : QApplication::style();
    const int rand = stil->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, ansicht) + 1;
    const QRect feld = zelle.rect.adjusted(rand, 0, -rand, 0);
    maler->save();
    maler->setPen(zelle.palette.color(gewaehlt ? QPalette::HighlightedText : QPalette::Text));
    maler->setFont(zelle.font);
    if (zelle.font != m_schrift || m_texte.size() > hoechstTexte) {
        m_texte.clear();
        m_schrift = zelle.font;
    }
    auto gelegt = m_texte.find(text);
    if (gelegt == m_texte.end()) {
        QStaticText neu(text);
        neu.setTextFormat(Qt::PlainText);
        neu.prepare(QTransform(), zelle.font);
        gelegt = m_texte.insert(text, neu);
    }
    const QSizeF groesse = gelegt->size();
    if (groesse.width() > feld.width()) {
        // Too long for its column: cut with "…", as the view would.
        maler->drawText(feld, int(zelle.displayAlignment),
                        zelle.fontMetrics.elidedText(text, Qt::ElideRight, feld.width()));
    } else {
        const QRectF platz =
            QStyle::alignedRect(zelle.direction, zelle.displayAlignment, groesse.toSize(), feld);
        maler->drawStaticText(platz.topLeft(), *gelegt);
    }
    maler->restore();
}
