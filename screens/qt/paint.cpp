#include "screens/qt/paint.h"

#include <algorithm>

#include <QPainter>
#include <QPainterPath>

#include "screens/qt/metrics.h"

namespace zentrel::view {

void PaintBox(QPainter& painter, const QRectF& rect, const QColor& fill, const QColor& outline,
              double width) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(outline, width));
    painter.setBrush(fill);
    const double inset = width / 2;
    const double radius = Metrics::Now().radius;
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), radius, radius);
    painter.restore();
}

void PaintMeaningSign(QPainter& painter, const QRectF& box, Meaning meaning) {
    if (meaning != Meaning::Error && meaning != Meaning::Warning) return;
    const Theme& theme = Theme::Now();
    const bool error = meaning == Meaning::Error;
    const Color color = error ? colors::kRed : colors::kYellow;
    const double size = std::min(box.height() * 0.5, 2.0 * Metrics::Now().unit);
    QRectF sign(box.left() + Metrics::Now().half, 0, size, size);
    sign.moveCenter({sign.center().x(), box.center().y()});
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.InkOn(color));
    if (error) {
        painter.drawEllipse(sign);
    } else {
        QPainterPath triangle(QPointF(sign.center().x(), sign.top()));
        triangle.lineTo(sign.bottomRight());
        triangle.lineTo(sign.bottomLeft());
        triangle.closeSubpath();
        painter.drawPath(triangle);
    }
    QFont font = UiFont(0, true);
    font.setPixelSize(std::max(6, static_cast<int>(size * 0.75)));
    painter.setFont(font);
    painter.setPen(theme.Fill(color));
    painter.drawText(error ? sign : sign.translated(0, size * 0.12), Qt::AlignCenter,
                     QStringLiteral("!"));
    painter.restore();
}

void PaintEditMarker(QPainter& painter, const QRectF& box) {
    const Theme& theme = Theme::Now();
    PaintBox(painter, box, Qt::transparent, theme.accent, 2.0);
    const double size = Metrics::Now().unit;
    QPainterPath corner(box.topLeft());
    corner.lineTo(box.left() + size, box.top());
    corner.lineTo(box.left(), box.top() + size);
    corner.closeSubpath();
    QPainterPath frame;
    frame.addRoundedRect(box, Metrics::Now().radius, Metrics::Now().radius);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(corner.intersected(frame), theme.accent);
    painter.restore();
}

void PaintArrow(QPainter& painter, const QRectF& rect, bool up, const QColor& color) {
    const double width = Metrics::Now().unit * 0.85;
    const double height = width * 0.55;
    const QPointF c = rect.center();
    const double tip = up ? -height / 2 : height / 2;
    QPainterPath arrow(QPointF(c.x(), c.y() + tip));
    arrow.lineTo(c.x() - width / 2, c.y() - tip);
    arrow.lineTo(c.x() + width / 2, c.y() - tip);
    arrow.closeSubpath();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(arrow, color);
    painter.restore();
}

} // namespace zentrel::view
