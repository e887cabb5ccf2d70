#include "screens/qt/loop_filter_view.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

#include "clock/loop_filter.h"
#include "screens/qt/captions.h"
#include "screens/qt/drop_list.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/paint.h"
#include "screens/qt/theme.h"

namespace zentrel::view {

namespace {

/// The filter's schematic: what stands outside the chip ahead of R3, C3, R4 and C4 inside it.
class Schematic : public QWidget {
  public:
    explicit Schematic(QWidget* parent) : QWidget(parent) {
        const Metrics& m = Metrics::Now();
        setFixedSize(m.Units(66), m.Units(22));
        setAccessibleName(tr("Loop filter: C1, C2 and R2 outside of the chip, R3, C3, R4 and C4 "
                             "inside"));
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const Theme& theme = Theme::Now();
        PaintBox(painter, rect(), theme.surface, theme.line);
        u_ = Metrics::Now().unit;
        QRectF chip(31 * u_, u_, 26 * u_, 19 * u_);
        PaintBox(painter, chip, theme.block, theme.line);
        ink_ = theme.signal;
        Write(painter, {chip.left(), chip.top() + u_ / 2, chip.width(), 2.2 * u_},
              tr("Internal Loop Filter"), theme.muted);
        Stage(painter);
    }

  private:
    double X(double units) const { return units * u_; }

    void Write(QPainter& painter, const QRectF& rect, const QString& text, const QColor& ink,
               Qt::Alignment align = Qt::AlignCenter) {
        painter.setPen(ink);
        painter.drawText(rect, static_cast<int>(align), text);
    }

    void Wire(QPainter& painter, const QPolygonF& points) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(ink_, 1.5, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
        QPolygonF at;
        for (const QPointF& p : points)
            at << p * u_;
        painter.drawPolyline(at);
    }

    // A resistor lying on the wire or standing on it, its middle at (x, y).
    void Resistor(QPainter& painter, double x, double y, bool lying, const QString& name) {
        const QRectF body = lying ? QRectF(X(x - 2), X(y - 0.75), X(4), X(1.5))
                                  : QRectF(X(x - 0.75), X(y - 1.75), X(1.5), X(3.5));
        painter.setPen(QPen(ink_, 1.5));
        painter.setBrush(Theme::Now().surface);
        painter.drawRect(body);
        const QRectF above(X(x - 2), X(y - 3.2), X(4), X(2.2));
        const QRectF beside(X(x + 1.2), X(y - 1.1), X(4), X(2.2));
        Write(painter, lying ? above : beside, name, Theme::Now().text,
              lying ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter);
    }

    // From the wire at (x, top) through a capacitor at y down to the ground.
    void Capacitor(QPainter& painter, double x, double top, double y, const QString& name) {
        Wire(painter, {{x, top}, {x, y - 0.4}});
        painter.setPen(QPen(ink_, 2.0));
        for (const double plate : {y - 0.4, y + 0.4})
            painter.drawLine(QPointF(X(x - 1.4), X(plate)), QPointF(X(x + 1.4), X(plate)));
        Wire(painter, {{x, y + 0.4}, {x, kGround}});
        Ground(painter, x);
        Write(painter, {X(x + 1.7), X(y - 1.1), X(4), X(2.2)}, name, Theme::Now().text,
              Qt::AlignLeft | Qt::AlignVCenter);
    }

    void Ground(QPainter& painter, double x) {
        painter.setPen(QPen(ink_, 1.5));
        for (int bar = 0; bar < 3; ++bar) {
            const double half = 1.2 - 0.4 * bar;
            const double y = kGround + 0.5 * bar;
            painter.drawLine(QPointF(X(x - half), X(y)), QPointF(X(x + half), X(y)));
        }
    }

    void Stage(QPainter& painter) {
        const QColor muted = Theme::Now().muted;
        Write(painter, {X(1), X(kWire - 3), X(7), X(2.2)}, tr("CPout"), muted,
              Qt::AlignLeft | Qt::AlignVCenter);
        Wire(painter, {{1, kWire}, {61, kWire}});
        Capacitor(painter, 11, kWire, 12, QStringLiteral("C1"));
        Wire(painter, {{20, kWire}, {20, 10}});
        Resistor(painter, 20, 10.5, false, QStringLiteral("R2"));
        Capacitor(painter, 20, 12.2, 15, QStringLiteral("C2"));
        Resistor(painter, 36, kWire, true, QStringLiteral("R3"));
        Capacitor(painter, 41, kWire, 12, QStringLiteral("C3"));
        Resistor(painter, 46, kWire, true, QStringLiteral("R4"));
        Capacitor(painter, 51, kWire, 12, QStringLiteral("C4"));
        painter.setPen(Qt::NoPen);
        painter.setBrush(ink_);
        for (const double x : {11.0, 20.0, 41.0, 51.0})
            painter.drawEllipse(QPointF(X(x), X(kWire)), X(0.4), X(0.4));
        painter.drawPolygon(
            QPolygonF{{X(62), X(kWire)}, {X(60.5), X(kWire - 0.7)}, {X(60.5), X(kWire + 0.7)}});
        Write(painter, {X(58), X(kWire - 3), X(7), X(2.2)}, tr("VCO"), muted, Qt::AlignCenter);
    }

    static constexpr double kWire = 8, kGround = 17.5;
    double u_ = 8;
    QColor ink_;
};

} // namespace

LoopFilterView::LoopFilterView(const Hand& hand, frmLoopFilter& model, QWidget* parent)
    : QDialog(parent), hand_(hand), model_(model) {
    setObjectName(QStringLiteral("frmLoopFilter"));
}

void LoopFilterView::Build() {
    const Metrics& m = Metrics::Now();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(m.Units(2), m.Units(2), m.Units(2), m.Units(2));
    column->setSpacing(m.Units(2));
    column->addWidget(new Schematic(this));
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(m.Units(2));
    grid->setVerticalSpacing(m.half);
    const auto add = [&](ListBox& element, const char* name, const QString& caption) {
        auto* list = new DropList(hand_, element, this);
        list->setObjectName(QLatin1String(name));
        list->setAccessibleName(caption);
        const int at = static_cast<int>(lists_.size());
        grid->addWidget(new FixedLabel(caption, CaptionLabel::Tone::Muted,
                                       Qt::AlignLeft | Qt::AlignVCenter, this),
                        0, at);
        grid->addWidget(list, 1, at);
        grid->setColumnStretch(at, at == 2 ? 3 : 2);
        lists_.push_back(list);
    };
    add(model_.cbR3, "cbR3", tr("R3"));
    add(model_.cbR4, "cbR4", tr("R4"));
    add(model_.cbC3C4, "cbC3C4", tr("C3 and C4"));
    column->addLayout(grid);
    close_ = new PushButton(
        hand_, model_.cmdClose, [this] { model_.cmdClose_Click(); }, this);
    close_->setObjectName(QStringLiteral("cmdClose"));
    column->addWidget(close_, 0, Qt::AlignRight);
    column->setSizeConstraint(QLayout::SetFixedSize);
}

void LoopFilterView::Sync() {
    if (!model_.Visible) {
        if (!isHidden()) hide();
        return;
    }
    if (!close_) Build();
    {
        const Hand::Busy busy(hand_);
        setWindowTitle(FromModel(model_.Caption));
        for (DropList* list : lists_)
            list->Sync();
        close_->Sync();
    }
    const Qt::WindowModality modality = model_.Modal ? Qt::ApplicationModal : Qt::NonModal;
    if (!isHidden() && windowModality() == modality) return;
    if (!isHidden()) hide(); // A window's modality only changes while it is hidden.
    setWindowModality(modality);
    show();
    raise();
    lists_.front()->setFocus();
}

void LoopFilterView::closeEvent(QCloseEvent* event) {
    event->ignore();
    reject();
}

void LoopFilterView::reject() {
    hand_.Do([this] { model_.cmdClose_Click(); });
}

} // namespace zentrel::view
