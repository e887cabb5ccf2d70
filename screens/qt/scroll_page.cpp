#include "screens/qt/scroll_page.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include "screens/qt/metrics.h"
#include "screens/qt/theme.h"

namespace zentrel::view {

ScrollPage::ScrollPage(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    const int step = Metrics::Now().Units(3);
    verticalScrollBar()->setSingleStep(step);
    horizontalScrollBar()->setSingleStep(step);
    viewport()->setAutoFillBackground(false);
}

bool ScrollPage::scrollsDown() const { return verticalScrollBar()->maximum() > 0; }

bool ScrollPage::scrollsAcross() const { return horizontalScrollBar()->maximum() > 0; }

void ScrollPage::paintEvent(QPaintEvent* event) {
    QPainter(viewport()).fillRect(event->rect(), Theme::Now().surface);
}

} // namespace zentrel::view
