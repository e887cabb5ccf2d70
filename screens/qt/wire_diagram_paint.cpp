#include <algorithm>
#include <cmath>

#include <QPainter>
#include <QPainterPath>

#include "device/number_text.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/paint.h"
#include "screens/qt/theme.h"
#include "screens/qt/wire_diagram.h"

namespace zentrel::view {

namespace {

using Role = WirePicture::Role;

constexpr double kLineWidth = 1.5;
constexpr double kTickDistance = 90; // pixels at least

// As on the picture of the cable.
Color ColorOf(Role role) {
    switch (role) {
    case Role::Clock:
        return colors::kCyan;
    case Role::Data:
        return colors::kGreen;
    case Role::Latch:
        return colors::kMagenta;
    case Role::ReadBack:
        return colors::kYellow;
    case Role::Trigger:
    case Role::Pin:
        break;
    }
    return colors::kBlue;
}

QColor Faint(QColor color, double alpha) {
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

bool HasBits(Role role) {
    return role == Role::Data || role == Role::ReadBack;
}

// 1, 2 or 5 times a power of ten.
double RoundUp(double value) {
    const double power = std::pow(10, std::floor(std::log10(value)));
    for (const double times : {1.0, 2.0, 5.0}) {
        if (power * times >= value) return power * times;
    }
    return power * 10;
}

QFont SmallFont() {
    return UiFont(-1);
}

int HeadHeight() {
    return Metrics::Now().textHeight + Metrics::Now().Units(2);
}

int AxisHeight() {
    return Metrics::Now().textHeight + Metrics::Now().Units(1);
}

} // namespace

int WireDiagram::LabelWidth() const {
    int widest = QFontMetrics(font()).horizontalAdvance(QStringLiteral("Trigger"));
    for (const WirePicture::Line& line : picture_.lines)
        widest = std::max(widest, QFontMetrics(font()).horizontalAdvance(FromModel(line.name)));
    return std::min(widest, Metrics::Now().Units(18)) + Metrics::Now().Units(5);
}

std::vector<WireDiagram::Row> WireDiagram::Rows(double spare) const {
    const Metrics& m = Metrics::Now();
    std::vector<Row> rows;
    double y = HeadHeight();
    for (const WirePicture::Line& line : picture_.lines) {
        const double header = HasBits(line.role) ? 2 * QFontMetrics(SmallFont()).height() : m.unit;
        rows.push_back({y, header, 2.0 * m.unit + spare});
        y = rows.back().Low() + m.half;
    }
    return rows;
}

double WireDiagram::Bottom(const std::vector<Row>& rows) {
    return rows.empty() ? HeadHeight() : rows.back().Low() + Metrics::Now().unit;
}

// Lines grow a little where there is room.
double WireDiagram::Spare() const {
    if (picture_.lines.empty()) return 0;
    const double left = height() - minimumSizeHint().height();
    return std::clamp(std::floor(left / static_cast<double>(picture_.lines.size())), 0.0,
                      Metrics::Now().Units(2) + 0.0);
}

QSize WireDiagram::minimumSizeHint() const {
    return {Metrics::Now().Units(40), static_cast<int>(Bottom(Rows(0))) + AxisHeight()};
}

QSize WireDiagram::sizeHint() const {
    return {Metrics::Now().Units(80), minimumSizeHint().height()};
}

void WireDiagram::paintEvent(QPaintEvent*) {
    const Theme& theme = Theme::Now();
    QPainter painter(this);
    painter.fillRect(rect(), theme.surface);
    PaintHead(painter);
    if (picture_.empty()) {
        painter.setPen(theme.muted);
        painter.drawText(
            rect().adjusted(Metrics::Now().Units(2), HeadHeight(), -Metrics::Now().Units(2), 0),
            Qt::AlignCenter | Qt::TextWordWrap, hint_);
    } else {
        const auto rows = Rows(Spare());
        painter.save();
        painter.setClipRect(QRectF(LabelWidth(), 0, width() - LabelWidth(), height()));
        PaintAxis(painter, Bottom(rows));
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const WirePicture::Line& line = picture_.lines[i];
            if (HasBits(line.role)) PaintBits(painter, rows[i], line.role == Role::ReadBack);
            PaintLine(painter, rows[i], line);
        }
        PaintCursor(painter, Bottom(rows));
        painter.restore();
        for (std::size_t i = 0; i < rows.size(); ++i)
            PaintLabel(painter, rows[i], picture_.lines[i]);
    }
    if (hasFocus()) PaintBox(painter, rect(), Qt::transparent, theme.accent, 2.0);
}

void WireDiagram::PaintHead(QPainter& painter) const {
    const Theme& theme = Theme::Now();
    const QRect head(Metrics::Now().Units(2), 0, width() - Metrics::Now().Units(4), HeadHeight());
    painter.setFont(UiFont(0, true));
    painter.setPen(theme.text);
    painter.drawText(head, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, title_);
    const int titleWidth = painter.fontMetrics().horizontalAdvance(title_);
    painter.setFont(font());
    QString aside = Readout();
    painter.setPen(aside.isEmpty() ? theme.muted : theme.text);
    if (aside.isEmpty() && picture_.estimated)
        aside = tr("The bridge shifts in its own time: steps aren't true to scale.");
    const QRect rest = head.adjusted(titleWidth + Metrics::Now().Units(2), 0, 0, 0);
    painter.drawText(rest, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(aside, Qt::ElideRight, rest.width()));
}

void WireDiagram::PaintBits(QPainter& painter, const Row& row, bool readBack) const {
    const Theme& theme = Theme::Now();
    painter.setFont(SmallFont());
    const QFontMetrics text(painter.font());
    const double wide = text.horizontalAdvance(QStringLiteral("00")) + 4;
    for (const WirePicture::Bit& bit : picture_.bits) {
        if (bit.readBack != readBack) continue;
        const QRectF cell(QPointF(X(bit.from), row.top), QPointF(X(bit.to), row.Low()));
        if (cell.right() < 0 || cell.left() > width()) continue;
        if (bit.changed) painter.fillRect(cell, Faint(theme.accent, theme.dark ? 0.30 : 0.18));
        painter.setPen(QPen(Faint(theme.text, 0.12), 1));
        if (cell.width() > 3)
            painter.drawLine(QLineF(cell.left(), row.High(), cell.left(), row.Low()));
        // Where not all numbers fit, every fourth or eighth does.
        const int every = cell.width() >= wide ? 1 : cell.width() * 4 >= wide ? 4 : 8;
        const double line = row.header / 2;
        if (bit.number % every == 0) {
            QRectF place(cell.left(), row.top, cell.width(), line);
            if (place.width() < wide) place.adjust(-wide, 0, wide, 0);
            painter.setPen(theme.muted);
            painter.drawText(place, Qt::AlignCenter, QString::number(bit.number));
        }
        if (cell.width() < wide / 2) continue;
        painter.setPen(bit.changed ? theme.accent : theme.text);
        painter.drawText(QRectF(cell.left(), row.top + line, cell.width(), line), Qt::AlignCenter,
                         bit.high ? QStringLiteral("1") : QStringLiteral("0"));
    }
}

void WireDiagram::PaintLine(QPainter& painter, const Row& row,
                            const WirePicture::Line& line) const {
    const QColor ink = Theme::Now().Ink(ColorOf(line.role));
    const double high = std::round(row.High()) + 0.5;
    const double low = std::round(row.Low()) + 0.5;
    const double end = X(picture_.steps + Pad());
    QPolygonF trace;
    for (std::size_t i = 0; i < line.edges.size(); ++i) {
        const WirePicture::Edge& edge = line.edges[i];
        const double from = i == 0 ? X(-Pad()) : X(edge.step);
        const double to = i + 1 < line.edges.size() ? X(line.edges[i + 1].step) : end;
        if (to < LabelWidth() || from > width()) continue;
        const double y = edge.high ? high : low;
        trace << QPointF(from, y) << QPointF(to, y);
        if (edge.high)
            painter.fillRect(QRectF(from, high, to - from, low - high), Faint(ink, 0.10));
    }
    painter.setPen(QPen(ink, kLineWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawPolyline(trace);
}

void WireDiagram::PaintLabel(QPainter& painter, const Row& row,
                             const WirePicture::Line& line) const {
    const Theme& theme = Theme::Now();
    const Metrics& m = Metrics::Now();
    const QRectF place(m.Units(2), row.High(), LabelWidth() - m.Units(3), row.height);
    painter.fillRect(QRectF(place.left(), place.top() + 1, m.half - 1, place.height() - 1),
                     theme.Ink(ColorOf(line.role)));
    painter.setFont(font());
    painter.setPen(theme.text);
    const QRectF name = place.adjusted(m.unit + 2, 0, 0, 0);
    painter.drawText(name, Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(FromModel(line.name), Qt::ElideRight,
                                                      static_cast<int>(name.width())));
}

void WireDiagram::PaintAxis(QPainter& painter, double top) const {
    const Theme& theme = Theme::Now();
    const double step = RoundUp(kTickDistance / scale_ * picture_.stepNs) / picture_.stepNs;
    painter.setFont(SmallFont());
    painter.setPen(QPen(theme.line, 1));
    const double y = std::round(top) + 0.5;
    painter.drawLine(QLineF(LabelWidth(), y, width(), y));
    for (double at = std::max(0.0, std::ceil(first_ / step) * step);
         at <= picture_.steps + Pad() && X(at) < width(); at += step) {
        const double x = std::round(X(at)) + 0.5;
        painter.setPen(QPen(Faint(theme.text, 0.08), 1));
        painter.drawLine(QLineF(x, HeadHeight(), x, y + Metrics::Now().half));
        painter.setPen(theme.muted);
        painter.drawText(QRectF(x - kTickDistance / 2, y + 2, kTickDistance, AxisHeight() - 2),
                         Qt::AlignCenter, TimeText(at));
    }
}

void WireDiagram::PaintCursor(QPainter& painter, double bottom) const {
    if (!cursor_) return;
    const double x = std::round(X(*cursor_)) + 0.5;
    painter.setPen(QPen(Theme::Now().accent, 1));
    painter.drawLine(QLineF(x, HeadHeight(), x, bottom));
}

} // namespace zentrel::view
