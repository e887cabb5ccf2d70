#include "screens/qt/pll_diagram.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

#include "screens/field_tip.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"

namespace zentrel::view {

namespace {

using Tone = DiagramItem::Tone;

// All lengths are in grid units until they reach the scene.
constexpr double kMargin = 2.5;
constexpr double kReferenceRow = 10.5; // the wire from the oscillator to the R counter
constexpr double kLoopRow = 19.5;      // the wire from the phase detector to the VCO
constexpr double kBackTop = kLoopRow + 10;
constexpr double kGap = 5;            // a wire with its arrowhead between two blocks
constexpr double kRadius = 3;         // of an oscillator
constexpr double kDetectorHalf = 5.5; // of the phase detector's height
constexpr double kReferenceInput = kLoopRow - 2.5;
constexpr double kFeedbackInput = kLoopRow + 3;
constexpr double kLine = 2.25;       // a line of small text
constexpr int kFrequencyDigits = 13; // with the box's margins, room for twelve and a point

class Layout {
  public:
    explicit Layout(const cPLL& pll) : pll_(pll), panel_(pll.panel), unit_(Metrics::Now().unit) {}

    PllDiagram Run() {
        backRow_ = kBackTop + name_ + 0.5 + box_ / 2;
        const double button = PinNameWidth(FromModel(panel_.txtGetPLLBits.Caption)) / unit_ + 4;
        Place("txtGetPLLBits", kMargin, backRow_ - box_ / 2, button);
        leastBack_ = kMargin + button + kGap;
        const double detector = Reference();
        const double branch = Loop(detector);
        Feedback(detector, branch);
        Outputs();
        return std::move(diagram_);
    }

  private:
    // From the oscillator's pin to the R counter; gives the left edge of the phase detector.
    double Reference() {
        double x = kMargin;
        const double boxWidth = BoxWidth(kFrequencyDigits, false);
        double centre = kMargin + std::max(boxWidth / 2, kRadius);
        if (panel_.lblPLLOSCinPin.Visible) {
            const double pin = kMargin + std::max(1.0, NameWidth(panel_.lblPLLOSCinPin) / 2);
            const double name = NameWidth(panel_.lblPLLOSCinPin) / 2 + 0.75;
            centre = std::max(centre, pin + std::max(kGap, name) + kRadius);
            Pin(pin, kReferenceRow, panel_.lblPLLOSCinPin);
            Wire({{pin, kReferenceRow}, {centre - kRadius, kReferenceRow}});
        }
        Oscillator(centre, kReferenceRow).tip = TipText(
            FrequencyTip(panel_.lblPLL[2].Caption, panel_.txtOsc.Text, "MHz", panel_.lblOSC_Range));
        Caption(centre, kReferenceRow - kRadius - 2.75, 2);
        const double below = kReferenceRow + kRadius + 1.25;
        const double left = std::max(kMargin, centre - boxWidth / 2);
        Place("txtOsc", left, below, boxWidth);
        Unit(left + boxWidth, below, 0);
        if (panel_.lblPLLOSCBit.Visible)
            Text({left, below + box_ + 0.5, 24, kLine}, FromModel(panel_.lblPLLOSCBit.Caption),
                 Tone::Name, Qt::AlignLeft | Qt::AlignVCenter)
                .tip = Tip(panel_.lblPLLOSCBit.Tag);
        x = centre + kRadius;
        if (panel_.lblDoubler.Visible) x = Doubler(x);
        return Divider(x);
    }

    double Doubler(double from) {
        constexpr double kWidth = 10;
        const double height = name_ + box_ + 1.5;
        const QRectF block(from + kGap, kReferenceRow - height / 2, kWidth, height);
        Wire({{from, kReferenceRow}, {block.left(), kReferenceRow}});
        Block(block, Name(pll_diagram::kDoublerLabel)).tip = Tip(panel_.lblDoubler.Tag);
        Place("lblDoubler", block.left() + 1.5, block.top() + name_ + 0.5, kWidth - 3);
        return block.right();
    }

    double Divider(double from) {
        double x = from;
        if (panel_.txtRCounter.Visible) {
            const double width = BoxWidth(7, true);
            const double height = name_ + box_ + 1.5;
            const QRectF block(x + kGap, kReferenceRow - height / 2, width + 3, height);
            Wire({{x, kReferenceRow}, {block.left(), kReferenceRow}});
            Block(block, Name(8)).tip = Tip(pll_.RCounterName());
            Place("txtRCounter", block.left() + 1.5, block.top() + name_ + 0.5, width);
            x = block.right();
        }
        const double detector = x + 10;
        const double corner = detector - 4;
        Wire({{x, kReferenceRow},
              {corner, kReferenceRow},
              {corner, kReferenceInput},
              {detector, kReferenceInput}});
        const double width = BoxWidth(kFrequencyDigits, true);
        const double top = kReferenceRow - 2 - box_;
        const double left = x + 1.5;
        Place("txtFpd", left, top, width);
        Unit(left + width, top, 1);
        Text({left, top - kLine - 0.25, 26, kLine}, Name(5), Tone::Name,
             Qt::AlignLeft | Qt::AlignVCenter);
        return detector;
    }

    // From the phase detector to the VCO and its pin; gives where the way back branches off.
    double Loop(double detector) {
        constexpr double kTop = kLoopRow - kDetectorHalf;
        const QRectF phase(detector, kTop, 12, 2 * kDetectorHalf);
        Block(phase, QStringLiteral("Phase\nDetector")).tip = TipText(panel_.lblPLL[10].Caption);
        const double second = name_ + kLine - 0.5; // below a name of two lines
        Place("lblPDPol", phase.left() + 1.5, kTop + second + 0.75, 9);
        Text({phase.left(), kTop + second + 0.75 + box_, phase.width(), kLine},
             QStringLiteral("Polarity"));

        const QRectF pump(phase.right() + 4, kTop, 14, 2 * kDetectorHalf);
        Wire({{phase.right(), kLoopRow}, {pump.left(), kLoopRow}});
        Block(pump, QStringLiteral("Charge Pump")).tip =
            TipText(panel_.lblPLL[11].Caption + ", " + panel_.lblPLL[12].Caption);
        Place("lblCPGain", pump.left() + 1.5, kTop + name_ + 0.25, 11);
        Place("lblCPState", pump.left() + 1.5, kTop + name_ + 0.75 + box_, 11);

        double x = PumpPin(pump.right());
        const QRectF filter(x, kLoopRow - 4.5, 11, 9);
        Block(filter, Name(14));
        diagram_.scene.LowPass(Px({filter.left() + 2, filter.top() + 4, 7, 3.75}));
        return Vco(filter.right());
    }

    double PumpPin(double from) {
        const Label& label = panel_.lblPLLCPoutPin;
        const double pinGap = label.Visible ? std::max(3.0, NameWidth(label) / 2 + 0.5) : 0;
        const double filter = label.Visible ? from + pinGap + std::max(pinGap, 3.5) : from + kGap;
        Wire({{from, kLoopRow}, {filter, kLoopRow}});
        if (label.Visible) Pin(from + pinGap, kLoopRow, label);
        return filter;
    }

    double Vco(double from) {
        const bool onChip = panel_.shpPLLintVCO.Visible;
        const double around = onChip ? 1.5 : 0;
        const double left = from + kGap;
        const double centre = left + around + kRadius;
        const double right = centre + kRadius + around;
        const double top = kLoopRow - kRadius - around;
        if (onChip) Block({left, top, right - left, right - left}, {});
        Wire({{from, kLoopRow}, {left, kLoopRow}});
        Oscillator(centre, kLoopRow).tip = TipText(FrequencyTip(
            onChip ? "VCO on the chip" : "VCO", panel_.txtVCO.Text, "MHz", panel_.lblVCO_Range));
        Caption(centre, top - kLine - 0.25, 13);
        const double width = BoxWidth(kFrequencyDigits, false);
        const double boxTop = top - kLine - 0.75 - box_;
        Place("txtVCO", centre - width / 2, boxTop, width);
        Unit(centre + width / 2, boxTop, 7);
        vco_ = right;
        return Branches(right);
    }

    double Branches(double right) {
        const double branch = std::max(right + 2, leastBack_ + BackWidth());
        const bool pin = panel_.linpll[pll_diagram::kFoutLine].Visible;
        hasOutput_[0] = panel_.linpll[pll_diagram::kOut0Line].Visible ||
                        panel_.txtOUT0_DIV.Visible || panel_.txtOUT0.Visible;
        hasOutput_[1] = panel_.linpll[pll_diagram::kOut1Line].Visible ||
                        panel_.txtOUT1_DIV.Visible || panel_.txtOUT1.Visible ||
                        panel_.lblPLLOut1Pin.Visible;
        const bool outputs = hasOutput_[0] || hasOutput_[1];
        trunk_ = outputs ? branch + 2.5 : branch;
        double end = trunk_;
        if (pin) {
            const double name = NameWidth(panel_.lblPLLFoutPin) / 2;
            end = trunk_ + std::max(kGap, name + 1);
            Wire({{vco_, kLoopRow}, {end - 0.6, kLoopRow}});
            if (panel_.lblPLLFoutPin.Visible) Pin(end, kLoopRow, panel_.lblPLLFoutPin);
        } else {
            Wire({{vco_, kLoopRow}, {end, kLoopRow}}, false);
        }
        if (pin || outputs) Dot(branch, kLoopRow);
        if (pin && outputs) Dot(trunk_, kLoopRow);
        return branch;
    }

    // A block on the way back.
    struct Back {
        double width;
        double height;
        std::function<void(const QRectF&)> draw;
    };

    bool hasFraction() const { return panel_.txtFractNum.Visible || panel_.txtFractDen.Visible; }

    double CounterWidth() const {
        if (hasFraction()) return 2 * BoxWidth(9, true) + 5.5;
        return panel_.txtNCounter.Visible ? BoxWidth(13, true) + 3 : 0;
    }

    // Of the way back as a whole, from the N counter to where it branches off.
    double BackWidth() {
        const Label& fin = panel_.lblPLLFinPin;
        double width =
            CounterWidth() + kGap + (fin.Visible ? std::max(3.0, NameWidth(fin) + 1) : 0);
        for (const Back& block : BackChain())
            width += block.width + kGap;
        return width;
    }

    void Feedback(double detector, double branch) {
        const double width = CounterWidth();
        const double left = std::max(leastBack_, std::min(detector - 14, branch - BackWidth()));
        if (width > 0) Counter({left, kBackTop, width, CounterHeight()});
        const double corner = std::min(left, detector) - 4;
        Wire({{left, backRow_},
              {corner, backRow_},
              {corner, kFeedbackInput},
              {detector, kFeedbackInput}});
        double x = left + width;
        for (const Back& block : BackChain()) {
            const QRectF rect(x + kGap, backRow_ - block.height / 2, block.width, block.height);
            Wire({{rect.left(), backRow_}, {x, backRow_}});
            block.draw(rect);
            x = rect.right();
        }
        Wire({{branch, kLoopRow}, {branch, backRow_}, {x, backRow_}});
        const Label& fin = panel_.lblPLLFinPin;
        if (fin.Visible) Pin(branch - std::max(1.5, NameWidth(fin) / 2 + 0.5), backRow_, fin);
    }

    // What lies between N counter and VCO, the N counter's neighbour first.
    std::vector<Back> BackChain() {
        const double height = name_ + box_ + 1.5;
        std::vector<Back> chain;
        if (panel_.lblNPrescale.Visible)
            chain.push_back({12, height, [this](const QRectF& rect) { Prescaler(rect); }});
        const bool manual = panel_.pllManualDivide.Visible;
        if (panel_.pllExtraDiv.Visible || manual)
            chain.push_back({manual ? BoxWidth(5, false) + 3 : 13.0, height,
                             [this, manual](const QRectF& rect) { Extra(rect, manual); }});
        if (panel_.pllSynthDiv.Visible)
            chain.push_back({13, height, [this](const QRectF& rect) {
                                 Block(rect, OneLine(panel_.pllSynthDivLblHigh),
                                       Quotient(panel_.pllSynthDivLblLow))
                                     .tip = Tip(panel_.pllSynthDivLblHigh.Tag);
                             }});
        return chain;
    }

    void Prescaler(const QRectF& rect) {
        DiagramItem& block = Block(rect, Name(pll_diagram::kPrescalerLabel));
        block.meaning = panel_.shpPLL[pll_diagram::kPrescalerBox].BackColor;
        block.tip = Tip(panel_.lblNPrescale.Tag, "shpPLL");
        Place("lblNPrescale", rect.left() + 1.5, rect.top() + name_ + 0.5, rect.width() - 3);
    }

    void Extra(const QRectF& rect, bool manual) {
        const QString value = manual ? QString() : Quotient(panel_.pllExtraDivVal);
        Block(rect, OneLine(panel_.pllExtraDivLbl), value);
        if (manual)
            Place("pllManualDivide", rect.left() + 1.5, rect.top() + name_ + 0.5, rect.width() - 3);
    }

    double CounterHeight() const {
        return name_ + 0.5 + box_ + (hasFraction() ? 1.0 + kLine + box_ : 0.0) + 1.5;
    }

    void Counter(const QRectF& rect) {
        Block(rect, Name(9)).tip = Tip(pll_.NCounterName(), "txtNCounter");
        const double left = rect.left() + 1.5;
        const double top = rect.top() + name_ + 0.5;
        Place("txtNCounter", left, top, rect.width() - 3);
        if (!hasFraction()) return;
        Text({left, top + box_ + 0.75, 20, kLine}, Name(pll_diagram::kFractionLabel), Tone::Name,
             Qt::AlignLeft | Qt::AlignVCenter);
        const double second = top + box_ + 1.0 + kLine;
        const double field = BoxWidth(9, true);
        Place("txtFractNum", left, second, field);
        Text({left + field, second, 2.5, box_}, QStringLiteral("/"), Tone::Value);
        Place("txtFractDen", left + field + 2.5, second, field);
    }

    struct Output {
        const Label& pin;
        const TextBox& divider;
        const TextBox& frequency;
        std::string_view dividerName, frequencyName;
        bool fromTrunk, toPin;
    };

    void Outputs() {
        const Output outputs[] = {
            {panel_.lblPLLOut0Pin, panel_.txtOUT0_DIV, panel_.txtOUT0, "txtOUT0_DIV", "txtOUT0",
             panel_.linpll[pll_diagram::kOut0Line].Visible,
             panel_.linpll[pll_diagram::kOut0PinLine].Visible},
            {panel_.lblPLLOut1Pin, panel_.txtOUT1_DIV, panel_.txtOUT1, "txtOUT1_DIV", "txtOUT1",
             panel_.linpll[pll_diagram::kOut1Line].Visible, true},
        };
        double row = backRow_ + 9;
        double last = kLoopRow;
        for (int at = 0; at < 2; ++at) {
            if (!hasOutput_[at]) continue;
            if (outputs[at].fromTrunk) {
                if (last > kLoopRow) Dot(trunk_, last);
                Wire({{trunk_, last}, {trunk_, row}, {trunk_ + 3, row}});
                last = row;
            }
            DrawOutput(outputs[at], trunk_ + 3, row);
            row += 2 * box_ + 6;
        }
    }

    void DrawOutput(const Output& output, double left, double row) {
        const double width = BoxWidth(kFrequencyDigits, false);
        double right = left + 5;
        if (output.divider.Visible) {
            const QRectF block(left, row - box_ / 2 - 1, width, box_ + 2);
            Block(block, {}).tip = Tip(output.divider.Tag);
            const double box = BoxWidth(4, true);
            Text({left, block.top(), width - box - 1, block.height()}, QStringLiteral("÷"),
                 Tone::Value);
            right = block.right();
            Place(output.dividerName, right - 1 - box, block.top() + 1, box);
        } else {
            diagram_.scene.Buffer(Px({left, row - 2.5, 5, 5}));
        }
        if (output.pin.Visible) {
            const double pin = right + std::max(4.0, NameWidth(output.pin) / 2 + 0.5);
            if (output.toPin) Wire({{right, row}, {pin - 0.6, row}});
            Pin(pin, row, output.pin);
        }
        if (!output.frequency.Visible) return;
        const double top = row + box_ / 2 + 2;
        Place(output.frequencyName, left, top, width);
        Unit(left + width, top, 7);
    }

    // Pieces.
    QRectF Px(const QRectF& r) const {
        return {std::round(r.left() * unit_), std::round(r.top() * unit_),
                std::round(r.width() * unit_), std::round(r.height() * unit_)};
    }
    QPointF Px(const QPointF& p) const {
        return {std::round(p.x() * unit_), std::round(p.y() * unit_)};
    }
    double BoxWidth(int digits, bool spinner) const {
        const double width = Metrics::Now().DigitsWidth(digits) / unit_;
        return std::ceil(width + (spinner ? 2.5 : 0.0));
    }
    double NameWidth(const Label& pin) const {
        return PinNameWidth(FromModel(pin.Caption)) / unit_;
    }
    QString Name(int label) const {
        const Label& text = panel_.lblPLL[static_cast<std::size_t>(label)];
        return text.Visible ? FromModel(text.Caption) : QString();
    }
    static QString OneLine(const Label& label) { return FromModel(label.Caption).simplified(); }
    static QString Quotient(const Label& label) {
        return QStringLiteral("÷ ") + FromModel(label.Caption).trimmed();
    }
    QString Tip(std::string_view field, std::string_view element = {}) const {
        std::string text = FieldTip(pll_.Part(), field);
        for (const PlanFault& fault : panel_.faults)
            if (fault.element == element) text += "\n" + fault.text;
        return TipText(text);
    }

    void Place(std::string_view name, double left, double top, double width) {
        QRect rect = Px(QRectF(left, top, width, box_)).toRect();
        rect.setHeight(Metrics::Now().boxHeight);
        diagram_.places[name] = rect;
    }
    DiagramItem& Block(const QRectF& rect, const QString& name) { return Block(rect, name, {}); }
    DiagramItem& Block(const QRectF& rect, const QString& name, const QString& value) {
        return diagram_.scene.Block(Px(rect), name, value);
    }
    DiagramItem& Text(const QRectF& rect, const QString& text, Tone tone = Tone::Name,
                      Qt::Alignment align = Qt::AlignCenter) {
        return diagram_.scene.Text(Px(rect), text, tone, align);
    }
    DiagramItem& Oscillator(double x, double y) {
        return diagram_.scene.Oscillator(Px(QPointF(x, y)), kRadius * unit_);
    }
    void Caption(double centre, double top, int label) {
        Text({centre - 14, top, 28, kLine}, Name(label));
    }
    void Unit(double left, double top, int label) {
        Text({left + 0.75, top, 6, box_}, Name(label), Tone::Unit,
             Qt::AlignLeft | Qt::AlignVCenter);
    }
    void Pin(double x, double y, const Label& label) {
        diagram_.scene.Pin(Px(QPointF(x, y)), FromModel(label.Caption));
    }
    void Dot(double x, double y) { diagram_.scene.Dot(Px(QPointF(x, y))); }
    void Wire(const std::vector<QPointF>& corners, bool arrow = true) {
        QPolygonF line;
        for (const QPointF& corner : corners)
            line << Px(corner);
        diagram_.scene.Wire(line, arrow);
    }

    const cPLL& pll_;
    const PllPanel& panel_;
    double unit_;
    double box_ = Metrics::Now().boxHeight / unit_;
    double name_ = BlockNameHeight() / unit_;
    PllDiagram diagram_;
    double backRow_ = 0;   // the wire of the way back
    double leastBack_ = 0; // where the way back may begin, right of the button
    double vco_ = 0;       // where the VCO's wire begins
    double trunk_ = 0;     // the wire down to the outputs
    bool hasOutput_[2] = {};
};

} // namespace

PllDiagram LayOutPll(const cPLL& pll) {
    return Layout(pll).Run();
}

} // namespace zentrel::view
