#include "screens/qt/bit_ruler.h"

#include <QPainter>

#include "screens/qt/metrics.h"
#include "screens/qt/theme.h"

namespace zentrel::view {

BitRuler::BitRuler(ElementRef<Label> tens, ElementRef<Label> ones, QWidget* parent)
    : QWidget(parent), tens_(tens), ones_(ones) {
    setFont(MonospacedFont());
}

void BitRuler::Sync(const BitGrid& grid, const Shape& marker, int column) {
    const Label* tens = tens_.get();
    const Label* ones = ones_.get();
    if (!tens || !ones) return;
    const Color color = marker.BorderColor;
    if (grid == grid_ && tensText_ == tens->Caption && onesText_ == ones->Caption &&
        column == column_ && color == color_)
        return;
    grid_ = grid;
    tensText_ = tens->Caption;
    onesText_ = ones->Caption;
    column_ = column;
    color_ = color;
    updateGeometry();
    update();
}

QSize BitRuler::sizeHint() const {
    return {grid_.Width(), 2 * Metrics::Now().textHeight};
}

void BitRuler::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (column_ >= 0 && column_ < grid_.bits) PaintMarker(painter);
    const int line = height() / 2;
    const auto digits = [&](const std::string& text, int top) {
        for (int column = 0; column < grid_.bits; ++column) {
            const std::size_t at = static_cast<std::size_t>(column) * 3;
            if (at >= text.size()) break;
            const bool marked = column == column_;
            painter.setPen(marked ? Theme::Now().text : Theme::Now().muted);
            painter.drawText(QRect(grid_.Left(column), top, BitGrid::CellWidth(), line),
                             Qt::AlignCenter, QString(QLatin1Char(text[at])));
        }
    };
    digits(tensText_, 0);
    digits(onesText_, line);
}

void BitRuler::PaintMarker(QPainter& painter) const {
    const QColor ink = Theme::Now().Ink(color_);
    const QRectF cell(grid_.Left(column_), 0, BitGrid::CellWidth(), height());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QColor tint = ink;
    tint.setAlphaF(0.16F);
    painter.setBrush(tint);
    // Control bits can't be edited: their marker is dashed as well as blue.
    painter.setPen(QPen(ink, 1.5, grid_.IsControl(column_) ? Qt::DotLine : Qt::SolidLine));
    painter.drawRoundedRect(cell.adjusted(0.75, 0.75, -0.75, -0.75), 3, 3);
    painter.restore();
}

} // namespace zentrel::view
