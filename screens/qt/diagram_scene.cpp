#include "screens/qt/diagram_scene.h"

#include <algorithm>
#include <cmath>

#include <QHelpEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/paint.h"
#include "screens/qt/theme.h"

namespace zentrel::view {

namespace {

using Kind = DiagramItem::Kind;
using Tone = DiagramItem::Tone;

constexpr double kWireWidth = 1.5;
constexpr double kActiveWidth = 2.5;
constexpr double kLongestPin = 14; // grid units of a pin's name, before it elides

double Unit() {
    return Metrics::Now().unit;
}

QColor SignalInk(Path path) {
    const Theme& theme = Theme::Now();
    if (path == Path::Active) return theme.accent;
    return path == Path::Off ? theme.line : theme.signal;
}

QColor Outline(Path path) {
    const Theme& theme = Theme::Now();
    if (path == Path::Off) return theme.line;
    if (path == Path::Active) return theme.accent;
    QColor soft = theme.accent;
    soft.setAlphaF(0.55F);
    return soft;
}

QColor TextInk(Tone tone, Path path) {
    const Theme& theme = Theme::Now();
    if (path == Path::Off) return theme.disabled;
    return tone == Tone::Name || tone == Tone::Unit ? theme.muted : theme.text;
}

QFont FontOf(Tone tone) {
    switch (tone) {
    case Tone::Value:
        return UiFont(1, true);
    case Tone::Strong:
        return UiFont(0, true);
    case Tone::Unit:
        return UiFont();
    default:
        return UiFont(-0.5);
    }
}

void PaintText(QPainter& painter, const QRectF& rect, const QString& text, Tone tone,
               const QColor& ink, Qt::Alignment align) {
    if (text.isEmpty()) return;
    painter.setFont(FontOf(tone));
    painter.setPen(ink);
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines)
        line = painter.fontMetrics().elidedText(line, Qt::ElideRight,
                                                static_cast<int>(std::ceil(rect.width())));
    painter.drawText(rect, static_cast<int>(align), lines.join(QLatin1Char('\n')));
}

void PaintBlock(QPainter& painter, const DiagramItem& item) {
    const Theme& theme = Theme::Now();
    const bool plain = item.meaning == colors::kWhite;
    QColor fill = plain ? theme.block : theme.Fill(item.meaning);
    if (plain && item.path == Path::Off) fill = theme.surface;
    PaintBox(painter, item.rect, fill, Outline(item.path),
             item.path == Path::Active ? kWireWidth : 1.0);
    if (!plain)
        PaintMeaningSign(painter, {item.rect.left(), item.rect.top(), 2 * Unit(), 4 * Unit()},
                         Theme::MeaningOf(item.meaning));
    const QColor onMeaning = theme.InkOn(item.meaning);
    const QRectF name(item.rect.left() + Unit() / 2, item.rect.top() + Unit(),
                      item.rect.width() - Unit(), BlockNameHeight() - Unit());
    const int lines = static_cast<int>(item.text.count(QLatin1Char('\n'))) + 1;
    QRectF names = name;
    names.setHeight(name.height() * lines);
    PaintText(painter, names, item.text, Tone::Name,
              plain ? TextInk(Tone::Name, item.path) : onMeaning, Qt::AlignCenter);
    if (item.value.isEmpty()) return;
    const QRectF below(name.left(), names.bottom(), name.width(),
                       item.rect.bottom() - names.bottom() - Unit() / 2);
    PaintText(painter, below, item.value, Tone::Value,
              plain ? TextInk(Tone::Value, item.path) : onMeaning, Qt::AlignCenter);
}

void PaintOscillator(QPainter& painter, const DiagramItem& item) {
    const Theme& theme = Theme::Now();
    painter.setPen(QPen(Outline(item.path), kWireWidth));
    painter.setBrush(item.path == Path::Off ? theme.surface : theme.block);
    painter.drawEllipse(item.rect);
    const double width = item.rect.width() * 0.52;
    const double height = item.rect.height() * 0.30;
    const QPointF c = item.rect.center();
    QPainterPath sine(QPointF(c.x() - width / 2, c.y()));
    sine.cubicTo(c.x() - width * 0.3, c.y() - height, c.x() - width * 0.2, c.y() - height, c.x(),
                 c.y());
    sine.cubicTo(c.x() + width * 0.2, c.y() + height, c.x() + width * 0.3, c.y() + height,
                 c.x() + width / 2, c.y());
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(TextInk(Tone::Value, item.path), kWireWidth, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(sine);
}

void PaintArrowHead(QPainter& painter, const QPointF& tip, const QPointF& from, const QColor& ink) {
    const QPointF way = tip - from;
    const double length = std::hypot(way.x(), way.y());
    if (length <= 0) return;
    const QPointF along = way / length;
    const QPointF across(-along.y(), along.x());
    const QPointF back = tip - along * (1.5 * Unit());
    const double half = 0.72 * Unit();
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawPolygon(QPolygonF{tip, back + across * half, back - across * half});
}

void PaintWire(QPainter& painter, const DiagramItem& item) {
    if (item.points.size() < 2) return;
    const QColor ink = SignalInk(item.path);
    QPolygonF line = item.points;
    const QPointF tip = line.back();
    const QPointF from = line[line.size() - 2];
    if (item.arrow) { // The line ends inside its head, or it would blunt the tip.
        const QPointF way = tip - from;
        const double length = std::max(1.0, std::hypot(way.x(), way.y()));
        line.back() = tip - way / length * Unit();
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ink, item.path == Path::Active ? kActiveWidth : kWireWidth, Qt::SolidLine,
                        Qt::FlatCap, Qt::MiterJoin));
    painter.drawPolyline(line);
    if (item.arrow) PaintArrowHead(painter, tip, from, ink);
}

void PaintLowPass(QPainter& painter, const DiagramItem& item) {
    const QRectF& r = item.rect;
    QPainterPath curve(r.topLeft());
    curve.lineTo(r.left() + r.width() * 0.42, r.top());
    curve.cubicTo(r.left() + r.width() * 0.62, r.top(), r.left() + r.width() * 0.70,
                  r.top() + r.height() * 0.18, r.left() + r.width() * 0.77,
                  r.top() + r.height() * 0.42);
    curve.lineTo(r.bottomRight());
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(TextInk(Tone::Value, item.path), kWireWidth, Qt::SolidLine, Qt::RoundCap,
                        Qt::RoundJoin));
    painter.drawPath(curve);
}

void PaintBuffer(QPainter& painter, const DiagramItem& item) {
    const QRectF& r = item.rect;
    painter.setPen(
        QPen(Outline(item.path), kWireWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(item.path == Path::Off ? Theme::Now().surface : Theme::Now().block);
    painter.drawPolygon(QPolygonF{r.topLeft(), {r.right(), r.center().y()}, r.bottomLeft()});
}

void PaintSymbol(QPainter& painter, const DiagramItem& item) {
    painter.setPen(QPen(Outline(item.path), 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(item.path == Path::Off ? Theme::Now().surface : Theme::Now().block);
    painter.drawPolygon(item.points);
}

void PaintOutline(QPainter& painter, const DiagramItem& item) {
    const Theme& theme = Theme::Now();
    const QColor ink = item.meaning == colors::kWhite ? theme.accent : theme.Ink(item.meaning);
    PaintBox(painter, item.rect, Qt::transparent, ink, 2.0);
}

QRectF PinName(const DiagramItem& item) {
    const double width = PinNameWidth(item.text);
    const double height = Metrics::Now().textHeight;
    const QPointF c = item.rect.center();
    return {c.x() - width / 2, c.y() - Unit() - height, width, height};
}

void PaintPin(QPainter& painter, const DiagramItem& item) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(SignalInk(item.path));
    painter.drawRoundedRect(item.rect, 1.5, 1.5);
    PaintText(painter, PinName(item), item.text, Tone::Strong, TextInk(Tone::Strong, item.path),
              Qt::AlignCenter);
}

void PaintItem(QPainter& painter, const DiagramItem& item) {
    switch (item.kind) {
    case Kind::Symbol:
        return PaintSymbol(painter, item);
    case Kind::Outline:
        return PaintOutline(painter, item);
    case Kind::Block:
        return PaintBlock(painter, item);
    case Kind::Oscillator:
        return PaintOscillator(painter, item);
    case Kind::Wire:
        return PaintWire(painter, item);
    case Kind::Dot:
        painter.setPen(Qt::NoPen);
        painter.setBrush(SignalInk(item.path));
        painter.drawEllipse(item.rect);
        return;
    case Kind::Pin:
        return PaintPin(painter, item);
    case Kind::Text:
        return PaintText(painter, item.rect, item.text, item.tone, TextInk(item.tone, item.path),
                         item.align);
    case Kind::LowPass:
        return PaintLowPass(painter, item);
    case Kind::Buffer:
        return PaintBuffer(painter, item);
    }
}

// Another tip is no reason to repaint.
bool LooksAlike(DiagramItem a, const DiagramItem& b) {
    a.tip = b.tip;
    return a == b;
}

QRectF Square(const QPointF& centre, double side) {
    return {centre.x() - side / 2, centre.y() - side / 2, side, side};
}

} // namespace

double PinNameWidth(const QString& name) {
    const double width = QFontMetricsF(FontOf(Tone::Strong)).horizontalAdvance(name) + 2;
    return std::min(width, kLongestPin * Unit());
}

double BlockNameHeight() {
    return Unit() + QFontMetricsF(FontOf(Tone::Name)).height();
}

QRectF DiagramItem::Bounds() const {
    QRectF all = points.isEmpty() ? rect : points.boundingRect();
    if (kind == Kind::Pin) all |= PinName(*this);
    const double margin = kind == Kind::Wire ? Unit() : 2.0;
    return all.adjusted(-margin, -margin, margin, margin);
}

DiagramItem& DiagramScene::Add(Kind kind, const QRectF& rect) {
    DiagramItem& item = items_.emplace_back();
    item.kind = kind;
    item.rect = rect;
    return item;
}

DiagramItem& DiagramScene::Block(const QRectF& rect, const QString& name, const QString& value) {
    DiagramItem& item = Add(Kind::Block, rect);
    item.text = name;
    item.value = value;
    return item;
}

DiagramItem& DiagramScene::Oscillator(const QPointF& centre, double radius) {
    return Add(Kind::Oscillator, Square(centre, 2 * radius));
}

DiagramItem& DiagramScene::Wire(const QPolygonF& points, bool arrow) {
    DiagramItem& item = Add(Kind::Wire, {});
    item.points = points;
    item.arrow = arrow;
    return item;
}

DiagramItem& DiagramScene::Dot(const QPointF& at) {
    return Add(Kind::Dot, Square(at, 0.9 * Unit()));
}

DiagramItem& DiagramScene::Pin(const QPointF& at, const QString& name) {
    DiagramItem& item = Add(Kind::Pin, Square(at, 1.25 * Unit()));
    item.text = name;
    if (!name.isEmpty()) item.tip = TipText(ToModel(name));
    return item;
}

DiagramItem& DiagramScene::Text(const QRectF& rect, const QString& text, Tone tone,
                                Qt::Alignment align) {
    DiagramItem& item = Add(Kind::Text, rect);
    item.text = text;
    item.tone = tone;
    item.align = align;
    return item;
}

DiagramItem& DiagramScene::LowPass(const QRectF& rect) {
    return Add(Kind::LowPass, rect);
}

DiagramItem& DiagramScene::Buffer(const QRectF& rect) {
    return Add(Kind::Buffer, rect);
}

DiagramItem& DiagramScene::Symbol(const QPolygonF& corners) {
    DiagramItem& item = Add(Kind::Symbol, {});
    item.points = corners;
    return item;
}

DiagramItem& DiagramScene::Outline(const QRectF& rect, Color meaning) {
    DiagramItem& item = Add(Kind::Outline, rect);
    item.meaning = meaning;
    return item;
}

void DiagramScene::Paint(QPainter& painter, const QRectF& clip) const {
    painter.setRenderHint(QPainter::Antialiasing);
    for (const DiagramItem& item : items_)
        if (item.Bounds().intersects(clip)) PaintItem(painter, item);
}

QString DiagramScene::TipAt(const QPointF& at) const {
    for (auto item = items_.rbegin(); item != items_.rend(); ++item)
        if (!item->tip.isEmpty() && item->Bounds().contains(at)) return item->tip;
    return {};
}

QRegion DiagramScene::Difference(const DiagramScene& other) const {
    QRegion changed;
    const std::size_t count = std::max(items_.size(), other.items_.size());
    for (std::size_t at = 0; at < count; ++at) {
        const DiagramItem* mine = at < items_.size() ? &items_[at] : nullptr;
        const DiagramItem* its = at < other.items_.size() ? &other.items_[at] : nullptr;
        if (mine && its && LooksAlike(*mine, *its)) continue;
        if (mine) changed += mine->Bounds().toAlignedRect();
        if (its) changed += its->Bounds().toAlignedRect();
    }
    return changed;
}

QSizeF DiagramScene::extent() const {
    QRectF all;
    for (const DiagramItem& item : items_)
        all |= item.Bounds();
    return {all.right(), all.bottom()};
}

void DiagramCanvas::Show(DiagramScene scene) {
    const QRegion changed = scene_.Difference(scene);
    scene_ = std::move(scene);
    if (!changed.isEmpty()) update(changed);
}

void DiagramCanvas::paintEvent(QPaintEvent* event) {
    PageContent::paintEvent(event);
    QPainter painter(this);
    scene_.Paint(painter, event->rect());
}

bool DiagramCanvas::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return PageContent::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QString tip = scene_.TipAt(help->pos());
    if (tip.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), tip, this);
    return true;
}

} // namespace zentrel::view
