#include "screens/qt/spinner.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleHints>
#include <QWheelEvent>

#include "screens/qt/brick.h"
#include "screens/qt/metrics.h"
#include "screens/qt/paint.h"

namespace zentrel::view {

namespace {
constexpr int kFirstRepeat = 350; // ms
constexpr int kNextRepeat = 60;   // ms
} // namespace

SpinnerButtons::SpinnerButtons(const Hand& hand, ElementRef<Spinner> element, Hand::Action up,
                               Hand::Action down, QWidget* parent)
    : QWidget(parent), hand_(hand), element_(element), up_(std::move(up)), down_(std::move(down)) {
    setMouseTracking(true);
    connect(&repeat_, &QTimer::timeout, this, [this] {
        repeat_.setInterval(kNextRepeat);
        Step();
    });
}

void SpinnerButtons::Sync() {
    const Spinner* spinner = element_.get();
    if (!spinner) return;
    SyncFlags(*this, *spinner);
    if (!spinner->Enabled || !spinner->Visible) Stop();
}

QSize SpinnerButtons::sizeHint() const {
    const Metrics& m = Metrics::Now();
    return {m.unit * 2 + m.half / 2, m.boxHeight};
}

SpinnerButtons::Part SpinnerButtons::PartAt(const QPointF& at) const {
    if (!QRectF(rect()).contains(at)) return Part::None;
    return at.y() < height() / 2.0 ? Part::Up : Part::Down;
}

void SpinnerButtons::Step() {
    if (pressed_ == Part::Up) hand_.Do(up_);
    if (pressed_ == Part::Down) hand_.Do(down_);
}

void SpinnerButtons::Stop() {
    repeat_.stop();
    pressed_ = Part::None;
    update();
}

void SpinnerButtons::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
    pressed_ = PartAt(event->position());
    repeat_.start(kFirstRepeat);
    update();
    Step();
}

void SpinnerButtons::mouseReleaseEvent(QMouseEvent* event) {
    QWidget::mouseReleaseEvent(event);
    event->accept();
    Stop();
}

void SpinnerButtons::mouseMoveEvent(QMouseEvent* event) {
    const Part over = PartAt(event->position());
    if (over != hovered_) hovered_ = over, update();
}

void SpinnerButtons::leaveEvent(QEvent*) {
    hovered_ = Part::None;
    Stop();
}

void SpinnerButtons::wheelEvent(QWheelEvent* event) {
    // A box with the focus steps by the wheel wherever the mouse stands in it.
    event->ignore();
}

void SpinnerButtons::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const Theme& theme = Theme::Now();
    const QRectF upper(0, 0, width(), height() / 2.0);
    const QRectF lower(0, height() / 2.0, width(), height() / 2.0);
    const auto half = [&](const QRectF& rect, Part part, bool up) {
        if (isEnabled() && (hovered_ == part || pressed_ == part)) {
            QColor tint = theme.accent;
            tint.setAlphaF(pressed_ == part ? 0.30F : 0.14F);
            painter.fillRect(rect, tint);
        }
        PaintArrow(painter, rect.translated(0, up ? 1 : -1), up,
                   isEnabled() ? theme.signal : theme.disabled);
    };
    half(upper, Part::Up, true);
    half(lower, Part::Down, false);
    painter.setPen(QPen(theme.line, 1));
    painter.drawLine(QPointF(0.5, 0), QPointF(0.5, height()));
}

} // namespace zentrel::view
