#include "screens/qt/group_frame.h"

#include <QPainter>

#include "screens/qt/brick.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/paint.h"

namespace zentrel::view {

GroupFrame::GroupFrame(ElementRef<Frame> element, QWidget* parent, Padding padding)
    : QWidget(parent), element_(element),
      inset_(padding == Padding::Roomy ? Metrics::Now().unit : 0) {}

GroupFrame::GroupFrame(const QString& title, QWidget* parent)
    : QWidget(parent), title_(title), inset_(Metrics::Now().unit) {
    setAccessibleName(title);
}

QMargins GroupFrame::ContentMargins() const {
    const Metrics& m = Metrics::Now();
    const int side = m.Units(2);
    return {side, m.Units(2) + m.textHeight, side, m.unit + m.half};
}

void GroupFrame::Sync() {
    const Frame* frame = element_.get();
    if (!frame) return;
    SyncFlags(*this, *frame);
    if (frame->Caption != caption_) {
        caption_ = frame->Caption;
        title_ = FromModel(caption_);
        setAccessibleName(title_);
        update();
    }
}

void GroupFrame::paintEvent(QPaintEvent*) {
    const Theme& theme = Theme::Now();
    const Metrics& m = Metrics::Now();
    QPainter painter(this);
    PaintBox(painter, rect(), Qt::transparent, theme.line);
    painter.setPen(isEnabled() ? theme.muted : theme.disabled);
    painter.setFont(UiFont(0, true));
    const QRect title(m.unit + inset_, m.half + inset_ / 2, width() - 2 * m.unit - inset_,
                      m.textHeight);
    painter.drawText(title, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(title_, Qt::ElideRight, title.width()));
}

} // namespace zentrel::view
