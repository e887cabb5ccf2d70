#include "screens/qt/option_strip.h"

#include <algorithm>

#include <QFontMetrics>
#include <QPainter>

#include "screens/qt/brick.h"
#include "screens/qt/marks.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/theme.h"

namespace zentrel::view {

OptionStrip::OptionStrip(const Hand& hand, ElementRef<Frame> name, const OptionAt& at,
                         std::size_t count, const std::function<void(int)>& select,
                         const char* elementName, std::size_t firstNumber, QWidget* parent)
    : QWidget(parent), name_(name) {
    for (std::size_t i = 0; i < count; ++i) {
        auto* mark = new OptionMark(
            hand, at(i), [select, i] { select(static_cast<int>(i)); }, this);
        mark->setObjectName(IndexedName(elementName, firstNumber + i));
        marks_.push_back(mark);
    }
    setFixedHeight(Metrics::Now().rowHeight);
}

int OptionStrip::NameWidth() {
    return Metrics::Now().Units(12);
}

int OptionStrip::ColumnWidth() {
    return QFontMetrics(UiFont()).horizontalAdvance(QStringLiteral("S7*")) +
           Metrics::Now().textHeight + Metrics::Now().unit + Metrics::Now().half;
}

int OptionStrip::LeastColumnWidth() {
    return QFontMetrics(UiFont()).horizontalAdvance(QStringLiteral("14")) +
           Metrics::Now().textHeight + Metrics::Now().unit + 1;
}

QSize OptionStrip::sizeHint() const {
    return {NameWidth() + static_cast<int>(marks_.size()) * ColumnWidth(),
            Metrics::Now().rowHeight};
}

QSize OptionStrip::minimumSizeHint() const {
    return {NameWidth() + static_cast<int>(marks_.size()) * LeastColumnWidth(),
            Metrics::Now().rowHeight};
}

void OptionStrip::Sync() {
    const Frame* frame = name_.get();
    if (!frame) return;
    SyncFlags(*this, *frame);
    if (const QString text = FromModel(frame->Caption); text != text_) {
        text_ = text;
        setAccessibleName(text_);
        for (OptionMark* mark : marks_)
            mark->setAccessibleDescription(text_);
        update();
    }
    const bool elided = fontMetrics().horizontalAdvance(text_) > NameWidth();
    SyncTip(*this, elided ? text_ : QString());
    for (OptionMark* mark : marks_)
        mark->Sync();
    Place();
}

// Columns give way in a narrow window, in step with the other rows; a row of few options, whose
// texts may be longer, has room as it is.
void OptionStrip::Place() {
    const auto hidden = [](const OptionMark* mark) { return mark->isHidden(); };
    const auto shown = marks_.size() - static_cast<std::size_t>(
                                           std::count_if(marks_.begin(), marks_.end(), hidden));
    if (shown == 0) return;
    const int column = std::clamp((width() - NameWidth()) / static_cast<int>(shown),
                                  LeastColumnWidth(), ColumnWidth());
    const int gap = std::min(Metrics::Now().half, column - LeastColumnWidth());
    for (std::size_t i = 0; i < marks_.size(); ++i) {
        const QRect place(NameWidth() + static_cast<int>(i) * column, 0, column - gap, height());
        if (marks_[i]->geometry() != place) marks_[i]->setGeometry(place);
    }
}

void OptionStrip::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Place();
}

void OptionStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(isEnabled() ? Theme::Now().text : Theme::Now().disabled);
    const QRect left(0, 0, NameWidth() - Metrics::Now().unit, height());
    painter.drawText(left, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(text_, Qt::ElideRight, left.width()));
}

} // namespace zentrel::view
