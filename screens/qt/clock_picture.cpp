#include "screens/qt/clock_picture.h"

#include <QCoreApplication>

#include "clock/clk_dist.h"
#include "clock/signal_path.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"

namespace zentrel::view {

namespace {

using Tone = DiagramItem::Tone;

constexpr Qt::Alignment kLeft = Qt::AlignLeft | Qt::AlignVCenter;
constexpr Qt::Alignment kRight = Qt::AlignRight | Qt::AlignVCenter;

QString Words(const char* text) {
    return QCoreApplication::translate("zentrel::view::ClockView", text);
}

/// Draws one block; a scene's items keep their order while nothing comes or goes.
class Picture {
  public:
    Picture(const cClkDist& block, const ClockPlan& plan)
        : block_(block), panel_(block.panel), plan_(plan), unit_(Metrics::Now().unit) {}

    DiagramScene Draw() {
        if (panel_.layout.rowsUp) {
            LoneSource();
        } else {
            Sources();
            Blocks();
            PathToMux();
            Mux();
        }
        Channels();
        Marks();
        return std::move(scene_);
    }

  private:
    const Label& LabelOf(int k) const { return panel_.lblCLK[static_cast<std::size_t>(k)]; }
    const Line& LineOf(int k) const { return panel_.LineCLK[static_cast<std::size_t>(k)]; }
    const Shape& ShapeOf(int k) const { return panel_.shpCLK[static_cast<std::size_t>(k)]; }

    bool InPath(ClockItem item) const { return WhyOutOfPath(block_, item).empty(); }

    // A path stands out when its input is selected, or when a script has drawn it in bold.
    Path PathOf(bool selected, int line) const {
        return selected || LineOf(line).BorderWidth > 1 ? Path::Active : Path::Plain;
    }

    void Name(const QRect& rect, int k, Qt::Alignment align = kLeft, Tone tone = Tone::Name) {
        const Label& label = LabelOf(k);
        if (label.Visible && !rect.isEmpty())
            scene_.Text(rect, FromModel(label.Caption).trimmed(), tone, align);
    }

    void Wire(const QPolygonF& points, Path path, bool arrow = true) {
        scene_.Wire(points, arrow).path = path;
    }

    void Source(const ClockPlan::Source& source, int name, int unit, Path path) {
        if (source.circle.isEmpty()) return;
        const QRectF circle = source.circle;
        scene_.Oscillator(circle.center(), circle.width() / 2).path = path;
        const bool beside = source.name.bottom() == source.box.bottom();
        Name(source.name, name, beside ? kRight : kLeft);
        Name(source.unit, unit, kLeft, Tone::Unit);
    }

    void Sources() {
        Source(plan_.reference, clk_label::kReference, clk_label::kReferenceMHz, Path::Plain);
        Source(plan_.vco, clk_label::kVco, clk_label::kVcoMHz, GreyUnless(ClockItem::VcoInput));
        Source(plan_.external, clk_label::kExternalSource, clk_label::kExternalMHz,
               GreyUnless(ClockItem::ExternalInput));
    }

    // What the input mux passes by is greyed.
    Path GreyUnless(ClockItem input) const {
        return plan_.inputMux.isEmpty() || InPath(input) ? Path::Plain : Path::Off;
    }

    void LoneSource() {
        Source(plan_.external, clk_label::kExternalSource, clk_label::kExternalMHz, Path::Plain);
    }

    void Blocks() {
        if (!plan_.pll.isEmpty()) {
            QString name = FromModel(LabelOf(clk_label::kPll).Caption);
            DiagramItem& pll = scene_.Block(plan_.pll, name.isEmpty() ? Words("PLL") : name);
            pll.tip = PllTip(name);
            for (int i = 0; i < 3; ++i)
                Name(plan_.readouts[static_cast<std::size_t>(i)].name, clk_label::kReadoutR + i,
                     kLeft, Tone::Unit);
        }
        if (!plan_.outerFilter.isEmpty()) {
            QString name = FromModel(LabelOf(clk_label::kExternalFilter).Caption);
            name.replace(name.indexOf(QLatin1Char(' ')), 1, QLatin1Char('\n'));
            scene_.Block(plan_.outerFilter, name).tip = ShapeOf(clk_shape::kLoopFilter).Visible
                                                            ? Words("A click opens the loop filter")
                                                            : QString();
            const QRect& r = plan_.outerFilter;
            const double top = r.top() + 2.5 * BlockNameHeight();
            scene_.LowPass({r.left() + 3.0 * unit_, top, r.width() - 6.0 * unit_,
                            r.bottom() - 1.5 * unit_ - top});
        }
        if (!plan_.innerFilter.isEmpty())
            scene_.Block(plan_.innerFilter, FromModel(LabelOf(clk_label::kInternalFilter).Caption));
        if (!plan_.divider.isEmpty()) {
            scene_.Block(plan_.divider, FromModel(LabelOf(clk_label::kVcoDivider).Caption)).path =
                GreyUnless(ClockItem::VcoInput);
            Name(plan_.divided.name, clk_label::kDivided);
        }
        if (!plan_.globalDelay.isEmpty()) {
            scene_.Block(plan_.globalDelay, FromModel(LabelOf(clk_label::kGlobalDelay).Caption));
            scene_.Text(plan_.delays[0].name, QStringLiteral("N"), Tone::Unit, kLeft);
            scene_.Text(plan_.delays[1].name, QStringLiteral("R"), Tone::Unit, kLeft);
        }
    }

    // The readouts in the block let the mouse through to it, so it tells what they elide.
    QString PllTip(const QString& name) const {
        const Label* values[] = {&panel_.clkDist_R_value, &panel_.clkDist_PDF_value,
                                 &panel_.clkDist_N_value};
        std::string lines;
        for (int i = 0; i < 3; ++i)
            lines += "\n" + LabelOf(clk_label::kReadoutR + i).Caption + " " + values[i]->Caption;
        return TipText(ToModel(name) + lines + "\n" +
                       ToModel(Words("A click shows the PLL's tab")));
    }

    // The blocks in the order of the signal, each joined to the one before it.
    void PathToMux() {
        const bool mux = !plan_.inputMux.isEmpty();
        const bool feeds = !mux || InPath(ClockItem::VcoInput);
        double from = -1;
        bool behindVco = false;
        const auto join = [&](const QRect& to) {
            if (to.isEmpty()) return;
            const Path path = behindVco ? PathOf(feeds, clk_line::kVcoToDivider) : Path::Plain;
            if (from >= 0) Wire({QPointF(from, plan_.axis), QPointF(to.left(), plan_.axis)}, path);
            from = to.left() + to.width();
        };
        join(plan_.reference.circle);
        join(plan_.pll);
        join(plan_.outerFilter);
        join(plan_.innerFilter);
        join(plan_.vco.circle);
        behindVco = true;
        join(plan_.divider);
        PinNames();
        if (from < 0 || (!mux && panel_.channels[0].lblCLKid.Visible)) return;
        const QPointF end = mux ? TerminalTip(0) : QPointF(plan_.outX, plan_.axis);
        Wire({QPointF(from, plan_.axis), end}, PathOf(feeds, clk_line::kDividerToMux), mux);
    }

    void PinNames() {
        const int height = Metrics::Now().textHeight;
        if (!plan_.inputMux.isEmpty())
            Name({static_cast<int>(TerminalTip(0).x()) - 7 * unit_, plan_.axis - height - 2,
                  6 * unit_, height},
                 clk_label::kVcoAtMux, kRight);
        if (!plan_.pll.isEmpty() && !plan_.reference.circle.isEmpty())
            Name({plan_.reference.Out().x(), plan_.axis - height - 2,
                  plan_.referenceTap - plan_.reference.Out().x(), height},
                 clk_label::kOscIn, kRight);
        if (panel_.layout.finAtMux && !plan_.external.circle.isEmpty())
            Name({plan_.external.Out().x() + unit_ / 2, plan_.external.Out().y() - height - 2,
                  5 * unit_, height},
                 clk_label::kFin);
        else if (!panel_.layout.finAtMux && !plan_.vco.circle.isEmpty())
            Name({plan_.vco.unit.left(), plan_.axis - height - 2, 6 * unit_, height},
                 clk_label::kFin);
    }

    QPointF TerminalTip(int k) const {
        return QPointF(plan_.Terminal(k)) - QPointF(0.6 * unit_, 0);
    }

    void Mux() {
        if (plan_.inputMux.isEmpty()) return;
        const QRectF r = plan_.inputMux;
        scene_.Symbol({r.topLeft(), QPointF(r.right(), r.top() + 2.5 * unit_),
                       QPointF(r.right(), r.bottom() - 2.5 * unit_), r.bottomLeft()});
        Name(plan_.muxName, clk_label::kInputMux);
        if (!plan_.external.circle.isEmpty()) {
            const QPointF tip = TerminalTip(1);
            const QPointF out = plan_.external.Out();
            Wire({out, QPointF(plan_.externalRise, out.y()), QPointF(plan_.externalRise, tip.y()),
                  tip},
                 PathOf(InPath(ClockItem::ExternalInput), clk_line::kExternalToMux));
        }
        if (plan_.referenceRail > 0 && !plan_.reference.circle.isEmpty()) ReferenceWire();
        constexpr int kTerminalShapes[] = {clk_shape::kVcoTerminal, clk_shape::kExternalTerminal,
                                           clk_shape::kReferenceTerminal};
        const QString tips[] = {Words("A click selects the VCO"),
                                Words("A click selects the external source"),
                                Words("A click selects the reference oscillator")};
        const int selected = Selected();
        if (selected >= 0 && LineOf(clk_line::kMuxPointer).Visible)
            Wire({plan_.Terminal(selected), plan_.muxOut}, Path::Active, false);
        for (int k = 0; k < 3; ++k) {
            if (!ShapeOf(kTerminalShapes[k]).Visible) continue;
            DiagramItem& dot = scene_.Dot(plan_.Terminal(k));
            dot.rect.adjust(-0.15 * unit_, -0.15 * unit_, 0.15 * unit_, 0.15 * unit_);
            dot.path = k == selected ? Path::Active : Path::Plain;
            dot.tip = tips[k];
        }
    }

    int Selected() const {
        switch (panel_.pointer) {
        case ClockInput::VCO:
            return 0;
        case ClockInput::External:
            return 1;
        case ClockInput::Reference:
            return 2;
        default:
            return -1;
        }
    }

    void ReferenceWire() {
        const Path path = PathOf(InPath(ClockItem::ReferenceInput), clk_line::kReferenceToMux);
        const QPointF tip = TerminalTip(2);
        const double tap = plan_.referenceTap;
        if (path == Path::Active)
            Wire({QPointF(plan_.reference.Out().x(), plan_.axis), QPointF(tap, plan_.axis)}, path,
                 false);
        Wire({QPointF(tap, plan_.axis), QPointF(tap, plan_.referenceRail),
              QPointF(plan_.referenceRise, plan_.referenceRail),
              QPointF(plan_.referenceRise, tip.y()), tip},
             path);
        scene_.Dot(QPointF(tap, plan_.axis)).path = path;
    }

    bool Enabled(const ClockChannelRow& row) const {
        return row.divCB_od.BackColor != colors::kOutOfPath;
    }

    // The line that feeds the channels, down to row `last`.
    QPolygonF Bus(int last) const {
        const double x = plan_.busX;
        const double bottom = plan_.rows[static_cast<std::size_t>(last)].axis;
        if (panel_.layout.rowsUp)
            return {QPointF(x, plan_.external.circle.bottom() + 1), QPointF(x, bottom)};
        return {plan_.muxOut, QPointF(plan_.outX, plan_.muxOut.y()),
                QPointF(plan_.outX, plan_.busY), QPointF(x, plan_.busY), QPointF(x, bottom)};
    }

    void Channels() {
        int shown = 0, lastEnabled = -1;
        for (int c = 0; c < kClockChannels; ++c) {
            const ClockChannelRow& row = panel_.channels[static_cast<std::size_t>(c)];
            if (!row.lblCLKid.Visible) continue;
            shown = c + 1;
            if (Enabled(row)) lastEnabled = c;
        }
        if (shown == 0) return;
        const bool fed = panel_.layout.rowsUp || plan_.inputMux.isEmpty() || Selected() >= 0;
        if (panel_.layout.rowsUp)
            Name({plan_.busX + unit_, plan_.busY - unit_, 5 * unit_, Metrics::Now().textHeight},
                 clk_label::kFin);
        Wire(Bus(shown - 1), Path::Plain, false);
        for (const bool active : {false, true}) { // The path lies over the lines beside it.
            if (active && fed && lastEnabled >= 0) Wire(Bus(lastEnabled), Path::Active, false);
            for (int c = 0; c < shown; ++c) {
                const auto& row = panel_.channels[static_cast<std::size_t>(c)];
                const auto& at = plan_.rows[static_cast<std::size_t>(c)];
                if (row.lblCLKid.Visible && (fed && Enabled(row)) == active)
                    Wire({QPointF(plan_.busX, at.axis), QPointF(at.name.left() - unit_, at.axis)},
                         active ? Path::Active : Path::Plain);
            }
        }
        Headers();
        for (int c = 0; c < shown; ++c)
            ChannelWords(c);
    }

    void ChannelWords(int c) {
        const ClockChannelRow& row = panel_.channels[static_cast<std::size_t>(c)];
        const auto& at = plan_.rows[static_cast<std::size_t>(c)];
        if (!row.lblCLKid.Visible) return;
        scene_.Text(at.name, FromModel(row.lblCLKid.Caption), Tone::Strong, kLeft).path =
            Enabled(row) ? Path::Plain : Path::Off;
        Name(at.unit, clk_label::kFirstMHz + c, kLeft, Tone::Unit);
    }

    void Headers() {
        if (!LabelOf(clk_label::kFirstHeader).Visible) return;
        const auto over = [this](const QRect& column) {
            return QRect(column.left(), plan_.header.top(), column.width(), plan_.header.height());
        };
        const ClockPlan::Row& row = plan_.rows[0];
        scene_.Text(over(row.name), Words("Output"), Tone::Name, kLeft);
        Name(over(row.divider), 12);
        Name(over(row.delay), 13);
        Name(over(row.mux), 14);
        Name(over(row.output), 15);
        scene_.Text(over(row.frequency), Words("Frequency"), Tone::Name, kLeft);
        const double y = plan_.header.bottom() + unit_ / 2.0 + 0.5;
        Wire({QPointF(plan_.header.left(), y), QPointF(plan_.header.right(), y)}, Path::Off, false);
    }

    // What the mouse is over, and what was typed in.
    void Marks() {
        const auto hover = [this](int k, const QRect& rect) {
            const Shape& shape = ShapeOf(k);
            if (shape.Visible && shape.BorderWidth > 1 && !rect.isEmpty())
                scene_.Outline(rect, colors::kRed);
        };
        hover(clk_shape::kVcoTerminal, plan_.terminals[0]);
        hover(clk_shape::kExternalTerminal, plan_.terminals[1]);
        hover(clk_shape::kReferenceTerminal, plan_.terminals[2]);
        hover(clk_shape::kLoopFilter, plan_.outerFilter);
        hover(clk_shape::kPll, plan_.pll);
        if (panel_.marker.Visible)
            scene_.Outline(MarkedBox(plan_, panel_.marker).adjusted(-2, -2, 2, 2));
    }

    const cClkDist& block_;
    const ClockPanel& panel_;
    const ClockPlan& plan_;
    const int unit_;
    DiagramScene scene_;
};

} // namespace

DiagramScene ClockPicture(const cClkDist& block, const ClockPlan& plan) {
    return Picture(block, plan).Draw();
}

QRect MarkedBox(const ClockPlan& plan, const ClockEditMarker& marker) {
    switch (marker.box) {
    case ClockBox::RefOSC:
        return plan.reference.box;
    case ClockBox::VCO:
        return plan.vco.box;
    case ClockBox::ExtSRC:
        return plan.external.box;
    case ClockBox::InputDiv:
        return plan.inputDivider;
    case ClockBox::ChannelDiv:
        break;
    }
    return plan.rows.at(static_cast<std::size_t>(marker.channel)).divider;
}

} // namespace zentrel::view
