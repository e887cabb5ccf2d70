#include "screens/qt/scroll_page.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include "screens/qt/metrics.h"
#include "screens/qt/theme.h"

namespace zentrel::view {

PageContent::PageContent() {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void PageContent::paintEvent(QPaintEvent* event) {
    QPainter(this).fillRect(event->rect(), Theme::Now().surface);
}

ScrollPage::ScrollPage(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    const int step = Metrics::Now().Units(3);
    verticalScrollBar()->setSingleStep(step);
    horizontalScrollBar()->setSingleStep(step);
    viewport()->setAutoFillBackground(false);
}

void ScrollPage::SetHint(const QString& hint) {
    if (hint == hint_) return;
    hint_ = hint;
    viewport()->update();
}

bool ScrollPage::scrollsDown() const {
    return verticalScrollBar()->maximum() > 0;
}

bool ScrollPage::scrollsAcross() const {
    return horizontalScrollBar()->maximum() > 0;
}

void ScrollPage::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), Theme::Now().surface);
    if (hint_.isEmpty()) return;
    painter.setPen(Theme::Now().muted);
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, hint_);
}

} // namespace zentrel::view
