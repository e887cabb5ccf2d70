#include "screens/qt/captions.h"

#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>

#include "screens/qt/brick.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/theme.h"

namespace zentrel::view {

namespace {

QFont FontOf(CaptionLabel::Tone tone) {
    switch (tone) {
    case CaptionLabel::Tone::Strong:
        return UiFont(0, true);
    case CaptionLabel::Tone::Bits:
        return MonospacedFont();
    default:
        return UiFont();
    }
}

QColor RestInk(CaptionLabel::Tone tone) {
    return tone == CaptionLabel::Tone::Muted ? Theme::Now().muted : Theme::Now().text;
}

} // namespace

CaptionLabel::CaptionLabel(ElementRef<Label> element, Tone tone, Qt::Alignment alignment,
                           QWidget* parent)
    : QWidget(parent), element_(element), tone_(tone), alignment_(alignment) {
    setFont(FontOf(tone));
}

void CaptionLabel::Sync() {
    const Label* label = element_.get();
    if (!label) return;
    SyncFlags(*this, *label);
    if (label->Caption != caption_) {
        caption_ = label->Caption;
        text_ = FromModel(caption_);
        setAccessibleName(text_);
        updateGeometry();
        Tip();
        update();
    }
    if (label->ForeColor != fore_ || label->BackColor != back_) {
        fore_ = label->ForeColor;
        back_ = label->BackColor;
        update();
    }
}

void CaptionLabel::Tip() {
    const bool elided = fontMetrics().horizontalAdvance(text_) > width();
    SyncTip(*this, elided && tip_.isEmpty() ? text_ : tip_);
}

void CaptionLabel::onClick(const Hand& hand, Hand::Action click) {
    hand_ = &hand;
    click_ = std::move(click);
}

void CaptionLabel::onHelp(const Hand& hand, Hand::Action help) {
    hand_ = &hand;
    help_ = std::move(help);
}

QSize CaptionLabel::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text_) + 1, Metrics::Now().textHeight};
}

QSize CaptionLabel::minimumSizeHint() const {
    return {std::min(sizeHint().width(), Metrics::Now().Units(3)), Metrics::Now().textHeight};
}

QColor CaptionLabel::Ink() const {
    if (!isEnabled()) return Theme::Now().disabled;
    if (fore_ != colors::kButtonText) return Theme::Now().Ink(fore_);
    return back_ == colors::kWhite ? RestInk(tone_) : Theme::Now().InkOn(back_);
}

void CaptionLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (back_ != colors::kWhite) painter.fillRect(rect(), Theme::Now().Fill(back_));
    painter.setPen(Ink());
    if (fore_ != colors::kButtonText) {
        QFont strong = font();
        strong.setBold(true);
        painter.setFont(strong);
    }
    const QString shown = painter.fontMetrics().elidedText(text_, Qt::ElideRight, width());
    painter.drawText(rect(), static_cast<int>(alignment_) | Qt::TextSingleLine, shown);
}

void CaptionLabel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Tip();
}

void CaptionLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && click_ && rect().contains(event->pos()))
        hand_->Do(click_);
    else
        QWidget::mouseReleaseEvent(event);
}

void CaptionLabel::contextMenuEvent(QContextMenuEvent* event) {
    if (help_)
        hand_->Do(help_);
    else
        QWidget::contextMenuEvent(event);
}

FixedLabel::FixedLabel(const QString& text, CaptionLabel::Tone tone, Qt::Alignment alignment,
                       QWidget* parent)
    : QWidget(parent), text_(text), tone_(tone), alignment_(alignment) {
    setFont(FontOf(tone));
}

QSize FixedLabel::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text_) + 1, Metrics::Now().textHeight};
}

void FixedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(isEnabled() ? RestInk(tone_) : Theme::Now().disabled);
    painter.drawText(rect(), static_cast<int>(alignment_) | Qt::TextSingleLine, text_);
}

PushButton::PushButton(const Hand& hand, ElementRef<Button> element, Hand::Action click,
                       QWidget* parent)
    : QPushButton(parent), element_(element) {
    setFixedHeight(Metrics::Now().boxHeight);
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this,
            [&hand, action = std::move(click)] { hand.Do(action); });
}

void PushButton::Sync() {
    const Button* button = element_.get();
    if (!button) return;
    SyncFlags(*this, *button);
    if (button->Caption != caption_) {
        caption_ = button->Caption;
        setText(FromModel(caption_));
    }
    if (tint_.Follow(*button)) setPalette(tint_.Palette(QPalette::Button, QPalette::ButtonText));
}

} // namespace zentrel::view
