#include "screens/qt/diagram_toggle.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "screens/qt/brick.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/theme.h"

namespace zentrel::view {

DiagramToggle::DiagramToggle(const Hand& hand, ElementRef<Label> element, Hand::Action click,
                             Hand::Action otherButton, QWidget* parent)
    : QAbstractButton(parent), hand_(hand), element_(element), click_(std::move(click)),
      otherButton_(std::move(otherButton)) {
    setFocusPolicy(Qt::StrongFocus);
    setContextMenuPolicy(Qt::PreventContextMenu);
    connect(this, &QAbstractButton::clicked, this, [this] { hand_.Do(click_); });
}

void DiagramToggle::Sync() {
    const Label* label = element_.get();
    if (!label) return;
    SyncFlags(*this, *label);
    if (label->Caption != caption_) {
        caption_ = label->Caption;
        setText(Literal(caption_));
        updateGeometry();
        update();
    }
    if (tint_.Follow(*label)) update();
}

QSize DiagramToggle::sizeHint() const {
    const Metrics& m = Metrics::Now();
    return {fontMetrics().horizontalAdvance(FromModel(caption_)) + m.Units(2), m.boxHeight};
}

void DiagramToggle::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return hand_.Do(click_);
    case Qt::Key_Up:
        if (otherButton_) return hand_.Do(click_);
        break;
    case Qt::Key_Down:
        if (otherButton_) return hand_.Do(otherButton_);
        break;
    default:
        break;
    }
    QAbstractButton::keyPressEvent(event);
}

void DiagramToggle::mousePressEvent(QMouseEvent* event) {
    QAbstractButton::mousePressEvent(event);
    event->accept(); // The release of any button comes here too.
}

void DiagramToggle::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) return QAbstractButton::mouseReleaseEvent(event);
    event->accept();
    if (otherButton_ && rect().contains(event->position().toPoint())) hand_.Do(otherButton_);
}

void DiagramToggle::enterEvent(QEnterEvent* event) {
    QAbstractButton::enterEvent(event);
    update();
}

void DiagramToggle::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}

void DiagramToggle::paintEvent(QPaintEvent*) {
    const Theme& theme = Theme::Now();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool lit = hasFocus() || (underMouse() && isEnabled());
    const double width = hasFocus() ? 2.0 : 1.0;
    const QRectF pill = QRectF(rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2);
    painter.setPen(isEnabled() ? QPen(lit ? theme.accent : theme.line, width) : QPen(Qt::NoPen));
    QColor fill = isEnabled() ? theme.field : QColor(Qt::transparent);
    if (tint_.HasFill()) fill = tint_.Fill();
    if (isDown()) fill = theme.block;
    painter.setBrush(fill);
    painter.drawRoundedRect(pill, pill.height() / 2, pill.height() / 2);
    painter.setPen(!isEnabled() ? theme.muted : tint_.HasInk() ? tint_.Ink() : theme.text);
    const QString shown = fontMetrics().elidedText(FromModel(caption_), Qt::ElideRight,
                                                   this->width() - Metrics::Now().unit);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, shown);
}

} // namespace zentrel::view
