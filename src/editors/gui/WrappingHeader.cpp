#include "editors/gui/WrappingHeader.h"

#include <QPainter>

namespace quillon {

namespace {

constexpr int Margin = 4;
// Captions wrap to this width unless the column is wider.
constexpr int WrapWidth = 96;

} // namespace

WrappingHeader::WrappingHeader(QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent)
{
    setSectionsClickable(false);
    setDefaultAlignment(Qt::AlignCenter);
}

void WrappingHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const
{
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.rect = rect;
    option.section = logicalIndex;
    style()->drawControl(QStyle::CE_HeaderSection, &option, painter, this);
    const QString caption = model()->headerData(logicalIndex, orientation()).toString();
    painter->save();
    painter->setPen(palette().color(QPalette::ButtonText));
    painter->drawText(rect.adjusted(Margin, Margin, -Margin, -Margin),
        Qt::AlignCenter | Qt::TextWordWrap, caption);
    painter->restore();
}

QSize WrappingHeader::sectionSizeFromContents(int logicalIndex) const
{
    const QString caption = model()->headerData(logicalIndex, orientation()).toString();
    const int width = qMax(WrapWidth, sectionSize(logicalIndex)) - 2 * Margin;
    const QRect bounds = fontMetrics().boundingRect(
        QRect(0, 0, width, 1000), Qt::AlignCenter | Qt::TextWordWrap, caption);
    return { bounds.width() + 2 * Margin, bounds.height() + 2 * Margin };
}

} // namespace quillon
