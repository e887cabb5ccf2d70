#include "screens/qt/status_bar_view.h"

#include <QHBoxLayout>
#include <QPainter>

#include "screens/qt/brick.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/theme.h"
#include "screens/status_bar.h"

namespace zentrel::view {

namespace {
constexpr int kTwipsPerPixel = 15;
}

/// Black on amber, with a hatched edge: the colour of a warning, and a sign that isn't colour.
class StatusBarView::Badge : public QWidget {
  public:
    explicit Badge(QWidget* parent) : QWidget(parent) {
        setObjectName(QStringLiteral("lblSimulatedBoard"));
        setVisible(false);
    }

    void Show(const QString& text) {
        if (text == text_) return;
        text_ = text;
        setAccessibleName(text);
        setToolTip(tr("No real board is driven. Turn this off in the menu Bench."));
        updateGeometry();
        update();
    }

    QSize sizeHint() const override {
        return {fontMetrics().horizontalAdvance(text_) + Metrics::Now().Units(5),
                Metrics::Now().textHeight + Metrics::Now().half};
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QColor amber(0xFF, 0xB8, 0x1C), ink(0x1B, 0x16, 0x06);
        const int edge = Metrics::Now().Units(1) + Metrics::Now().half;
        painter.fillRect(rect(), amber);
        Hatch(painter, QRect(0, 0, edge, height()), ink);
        Hatch(painter, QRect(width() - edge, 0, edge, height()), ink);
        painter.setPen(ink);
        painter.drawText(rect(), Qt::AlignCenter, text_);
    }

  private:
    static void Hatch(QPainter& painter, const QRect& area, const QColor& ink) {
        painter.save();
        painter.setClipRect(area);
        const double step = Metrics::Now().half;
        painter.setPen(QPen(ink, step * 0.75));
        for (double x = area.left() - area.height(); x < area.right() + area.height();
             x += step * 2)
            painter.drawLine(QPointF(x, area.bottom() + 1), QPointF(x + area.height(), area.top()));
        painter.restore();
    }

    QString text_;
};

StatusBarView::StatusBarView(const StatusBar& model, QWidget* parent)
    : QWidget(parent), model_(model), badge_(new Badge(this)) {
    setObjectName(QStringLiteral("StatusBar1"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addStretch();
    row->addWidget(badge_);
    FitFont();
}

void StatusBarView::FitFont() {
    badge_->setFont(UiFont(0, true));
    setFixedHeight(sizeHint().height());
    updateGeometry();
    update();
}

QSize StatusBarView::sizeHint() const {
    return {Metrics::Now().Units(40), Metrics::Now().textHeight + Metrics::Now().unit + 1};
}

void StatusBarView::Sync() {
    if (const QString route = FromModel(model_.Panels[0].Text); route != route_) {
        route_ = route;
        update();
    }
    if (const QString line = FromModel(model_.Panels[1].Text); line != line_) {
        line_ = line;
        update();
    }
    badge_->Show(FromModel(model_.badge.Caption));
    SyncFlags(*badge_, model_.badge);
    const bool elided = fontMetrics().horizontalAdvance(line_) > LineRect().width();
    SyncTip(*this, elided ? line_ : QString());
    setAccessibleName(route_ + QLatin1String(", ") + line_);
}

int StatusBarView::RoutePanelWidth() const {
    const int text = fontMetrics().horizontalAdvance(route_) + Metrics::Now().Units(2);
    return std::max(text, model_.Panels[0].MinWidth / kTwipsPerPixel);
}

QRect StatusBarView::LineRect() const {
    const int left = RoutePanelWidth() + Metrics::Now().unit;
    const int right = badge_->isHidden() ? width() : width() - badge_->sizeHint().width();
    return {left, 0, right - left - Metrics::Now().unit, height()};
}

void StatusBarView::paintEvent(QPaintEvent*) {
    const Theme& theme = Theme::Now();
    const Metrics& m = Metrics::Now();
    QPainter painter(this);
    painter.fillRect(rect(), theme.window);
    painter.fillRect(QRect(0, 0, width(), 1), theme.line);
    const int split = RoutePanelWidth();
    painter.fillRect(QRect(split, m.half, 1, height() - 2 * m.half), theme.line);
    constexpr int kFlags = Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine;
    painter.setPen(theme.text);
    painter.drawText(QRect(m.unit, 0, split - m.unit, height()), kFlags, route_);
    const QRect line = LineRect();
    painter.drawText(line, kFlags,
                     painter.fontMetrics().elidedText(line_, Qt::ElideRight, line.width()));
}

} // namespace zentrel::view
