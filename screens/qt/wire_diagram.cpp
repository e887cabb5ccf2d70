#include "screens/qt/wire_diagram.h"

#include <algorithm>
#include <cmath>

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include "device/number_text.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/theme.h"

namespace zentrel::view {

// The view of the lines: what is in sight, zoom, cursor, keys. How it is drawn stands in
// wire_diagram_paint.cpp.

namespace {

constexpr double kZoomStep = 1.25;
constexpr double kWidestStep = 160; // pixels

} // namespace

WireDiagram::WireDiagram(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("wireDiagram"));
    setAccessibleName(tr("Lines of the record over time"));
    setToolTip(
        tr("<qt>Wheel, + and &minus;: zoom. Drag: move. Arrow keys: cursor from edge to edge. "
           "0 or a double click: the whole record.</qt>"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void WireDiagram::Show(WirePicture picture, const QString& title) {
    const bool alike = picture.steps == picture_.steps;
    picture_ = std::move(picture);
    title_ = title;
    if (!alike || fitted_) Fit();
    if (!alike) cursor_.reset();
    updateGeometry();
    update();
}

void WireDiagram::SetHint(const QString& hint) {
    if (hint == hint_) return;
    hint_ = hint;
    update();
}

double WireDiagram::PlotWidth() const {
    return std::max(1, width() - LabelWidth() - Metrics::Now().Units(2));
}

// Air ahead of the first edge and behind the last.
double WireDiagram::Pad() const {
    return std::max(1.0, picture_.steps * 0.02);
}

void WireDiagram::Fit() {
    fitted_ = true;
    first_ = -Pad();
    scale_ = PlotWidth() / (picture_.steps + 2 * Pad());
    update();
}

void WireDiagram::Zoom(double factor, double step) {
    if (picture_.empty()) return;
    const double whole = PlotWidth() / (picture_.steps + 2 * Pad());
    const double x = X(step);
    scale_ = std::clamp(scale_ * factor, whole, std::max(whole, kWidestStep));
    fitted_ = scale_ <= whole;
    first_ = step - (x - LabelWidth()) / scale_;
    KeepInSight();
    update();
}

void WireDiagram::KeepInSight() {
    const double last = picture_.steps + Pad() - visibleSteps();
    first_ = std::clamp(first_, -Pad(), std::max(-Pad(), last));
}

void WireDiagram::MoveCursor(std::optional<double> step) {
    if (step) step = std::clamp(*step, -Pad(), picture_.steps + Pad());
    if (step == cursor_) return;
    cursor_ = step;
    setAccessibleDescription(Readout());
    update();
}

void WireDiagram::StepCursor(bool forward) {
    if (picture_.empty()) return;
    const double from = cursor_.value_or(forward ? -Pad() : picture_.steps);
    double best = forward ? picture_.steps : 0;
    for (const WirePicture::Line& line : picture_.lines) {
        for (const WirePicture::Edge& edge : line.edges) {
            const double at = edge.step;
            if (at < 0) continue;
            if (forward ? at > from && at < best : at < from && at > best) best = at;
        }
    }
    MoveCursor(best);
    if (best < first_) first_ = best - visibleSteps() / 8;
    if (best > first_ + visibleSteps()) first_ = best - visibleSteps() * 7 / 8;
    KeepInSight();
}

QString WireDiagram::TimeText(double step) const {
    struct Unit {
        double ns;
        const char* name;
    };
    static constexpr Unit kUnits[] = {{1e9, "s"}, {1e6, "ms"}, {1e3, "\u00B5s"}, {1, "ns"}};
    const double ns = step * picture_.stepNs;
    const Unit* unit = &kUnits[3];
    for (const Unit& larger : kUnits) {
        if (std::abs(ns) < larger.ns) continue;
        unit = &larger;
        break;
    }
    const double shown = std::round(ns / unit->ns * 1000) / 1000;
    return FromModel(NumberToText(shown) + ' ' + unit->name);
}

const WirePicture::Bit* WireDiagram::BitAt(double step) const {
    for (const WirePicture::Bit& bit : picture_.bits) {
        if (step >= bit.from && step < bit.to) return &bit;
    }
    return nullptr;
}

QString WireDiagram::Readout() const {
    if (!cursor_ || picture_.empty()) return {};
    QString text = TimeText(*cursor_);
    if (const WirePicture::Bit* bit = BitAt(*cursor_)) {
        text += bit->readBack ? tr("   read bit %1 = %2") : tr("   bit %1 = %2");
        text = text.arg(bit->number).arg(bit->high ? 1 : 0);
    }
    for (const WirePicture::Line& line : picture_.lines)
        text +=
            QStringLiteral("   %1 %2").arg(FromModel(line.name)).arg(line.High(*cursor_) ? 1 : 0);
    return text;
}

// Over the lines the pointer measures, and nothing may pop up under it.
bool WireDiagram::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip &&
        static_cast<QHelpEvent*>(event)->pos().x() >= LabelWidth() && !picture_.empty())
        return true;
    return QWidget::event(event);
}

void WireDiagram::resizeEvent(QResizeEvent*) {
    if (fitted_)
        Fit();
    else
        KeepInSight();
}

void WireDiagram::wheelEvent(QWheelEvent* event) {
    const QPoint turn = event->angleDelta();
    if (picture_.empty() || turn.isNull()) return event->ignore();
    if (turn.x() != 0 || (event->modifiers() & Qt::ShiftModifier) != 0) {
        first_ -= (turn.x() != 0 ? turn.x() : turn.y()) / 120.0 * visibleSteps() / 8;
        fitted_ = false;
        KeepInSight();
        update();
    } else {
        Zoom(std::pow(kZoomStep, turn.y() / 120.0), StepAt(event->position().x()));
    }
    event->accept();
}

void WireDiagram::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || picture_.empty()) return;
    grabbed_ = event->pos().x();
    setCursor(Qt::ClosedHandCursor);
}

void WireDiagram::mouseMoveEvent(QMouseEvent* event) {
    if (picture_.empty()) return;
    if (grabbed_) {
        first_ -= (event->pos().x() - *grabbed_) / scale_;
        grabbed_ = event->pos().x();
        KeepInSight();
    }
    const bool inside = event->pos().x() >= LabelWidth();
    MoveCursor(inside ? std::optional(StepAt(event->position().x())) : std::nullopt);
    update();
}

void WireDiagram::mouseReleaseEvent(QMouseEvent*) {
    grabbed_.reset();
    unsetCursor();
}

void WireDiagram::mouseDoubleClickEvent(QMouseEvent*) {
    Fit();
}

void WireDiagram::leaveEvent(QEvent*) {
    MoveCursor(std::nullopt);
}

void WireDiagram::keyPressEvent(QKeyEvent* event) {
    const double middle = cursor_.value_or(first_ + visibleSteps() / 2);
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return Zoom(kZoomStep, middle);
    case Qt::Key_Minus:
        return Zoom(1 / kZoomStep, middle);
    case Qt::Key_0:
        return Fit();
    case Qt::Key_Right:
        return StepCursor(true);
    case Qt::Key_Left:
        return StepCursor(false);
    case Qt::Key_Home:
        MoveCursor(0);
        first_ = -Pad();
        return update();
    case Qt::Key_End:
        MoveCursor(picture_.steps);
        first_ = picture_.steps;
        KeepInSight();
        return update();
    default:
        QWidget::keyPressEvent(event);
    }
}

void WireDiagram::focusInEvent(QFocusEvent*) {
    update();
}

void WireDiagram::focusOutEvent(QFocusEvent*) {
    update();
}

} // namespace zentrel::view
