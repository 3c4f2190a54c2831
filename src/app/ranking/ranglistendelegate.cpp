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
    // A name too long for its column is cut with "…", as the view would; the
    // cut text is kept for that width.
    const QString schluessel = text + QChar(u'\0') + QString::number(feld.width());
    auto gelegt = m_texte.find(schluessel);
    if (gelegt == m_texte.end()) {
        QString zeigen = text;
        if (zelle.fontMetrics.horizontalAdvance(text) > feld.width())
            zeigen = zelle.fontMetrics.elidedText(text, Qt::ElideRight, feld.width());
        QStaticText neu(zeigen);
        neu.setTextFormat(Qt::PlainText);
        neu.prepare(QTransform(), zelle.font);
        gelegt = m_texte.insert(schluessel, neu);
    }
    const QRectF platz =
        QStyle::alignedRect(zelle.direction, zelle.displayAlignment, gelegt->size().toSize(), feld);
    maler->drawStaticText(platz.topLeft(), *gelegt);
    maler->restore();
}
