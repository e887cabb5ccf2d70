#include "screens/qt/clock_plan.h"

#include <algorithm>

#include "screens/qt/metrics.h"

namespace zentrel::view {

namespace {

// Widths and gaps in steps of the grid.
constexpr int kMargin = 2, kGap = 4, kSourceBox = 14, kUnitWidth = 4, kCircle = 6;
constexpr int kPllWidth = 20, kOuterWidth = 12, kInnerWidth = 21, kDividerWidth = 25;
constexpr int kMuxWidth = 5, kMuxGap = 7, kMuxHeight = 14, kMuxList = 13, kTerminalPitch = 4;
constexpr int kNameWidth = 11, kDivWidth = 13, kDelayWidth = 17, kMuxColumn = 22, kOutputWidth = 15,
              kFrequencyWidth = 18, kColumnGap = 3, kRowLead = 6;
constexpr int kTableWidth = kNameWidth + kDivWidth + kDelayWidth + kMuxColumn + kOutputWidth +
                            kFrequencyWidth + 5 * kColumnGap + 1 + kUnitWidth;
constexpr int kDelayList = 14;

const Metrics& M() {
    return Metrics::Now();
}
int U(int count) {
    return M().Units(count);
}
int BlockHeight() {
    return 2 * M().unit + M().half + M().textHeight + 3 * (M().textHeight + M().half);
}
bool Shown(const Element& element) {
    return element.Visible;
}
const Shape& ShapeOf(const ClockPanel& panel, int k) {
    return panel.shpCLK[static_cast<std::size_t>(k)];
}
const Label& LabelOf(const ClockPanel& panel, int k) {
    return panel.lblCLK[static_cast<std::size_t>(k)];
}
int Right(const QRect& r) {
    return r.left() + r.width();
}
int Bottom(const QRect& r) {
    return r.top() + r.height();
}

} // namespace

ClockPlan::ClockPlan(const ClockPanel& panel) {
    busX = U(kMargin) + U(3);
    if (panel.layout.rowsUp) {
        PlaceLoneSource();
    } else {
        const bool mux = Shown(ShapeOf(panel, clk_shape::kInputMux));
        axis = U(mux ? 11 : 8);
        PlacePath(panel);
        PlaceSecondRow(panel);
    }
    PlaceChannels(panel);
}

ClockPlan::Source ClockPlan::PlaceSource(int left) const {
    const int size = U(kCircle);
    Source s;
    s.box = {left, axis + size / 2 + M().unit, U(kSourceBox), M().boxHeight};
    s.circle = {left + (s.box.width() - size) / 2, axis - size / 2, size, size};
    s.name = {left, s.circle.top() - M().half - M().textHeight, U(kSourceBox + kUnitWidth + 2),
              M().textHeight};
    s.unit = {Right(s.box) + M().unit, s.box.top(), U(kUnitWidth), s.box.height()};
    return s;
}

int ClockPlan::PlaceBlock(QRect& block, int left, int width) const {
    block = {left, axis - U(4), U(width), BlockHeight()};
    return Right(block) + U(kGap);
}

void ClockPlan::PlacePath(const ClockPanel& panel) {
    int x = U(kMargin);
    if (Shown(ShapeOf(panel, clk_shape::kReference))) {
        reference = PlaceSource(x);
        x = Right(reference.unit) + U(4);
    }
    if (Shown(ShapeOf(panel, clk_shape::kPll))) {
        referenceTap = x - U(3);
        x = PlaceBlock(pll, x, kPllWidth);
    }
    if (Shown(LabelOf(panel, clk_label::kExternalFilter)))
        x = PlaceBlock(outerFilter, x, kOuterWidth);
    if (Shown(LabelOf(panel, clk_label::kInternalFilter)))
        x = PlaceBlock(innerFilter, x, kInnerWidth);
    if (Shown(ShapeOf(panel, clk_shape::kVco))) {
        vco = PlaceSource(x);
        x = Right(vco.unit) + U(2);
    }
    if (Shown(ShapeOf(panel, clk_shape::kVcoDivider))) x = PlaceBlock(divider, x, kDividerWidth);
    PlaceReadouts();
    PlaceDivider(panel);
    PlaceMux(panel, x);
}

void ClockPlan::PlaceReadouts() {
    const int line = M().textHeight + M().half;
    const int inset = M().unit + M().half;
    const int first = pll.top() + M().unit + M().half + M().textHeight + M().half;
    if (!pll.isEmpty()) {
        for (int i = 0; i < 3; ++i)
            readouts[static_cast<std::size_t>(i)] = {
                {pll.left() + inset, first + i * line, U(5), M().textHeight},
                {pll.left() + inset + U(5), first + i * line, pll.width() - 2 * inset - U(5),
                 M().textHeight}};
    }
    if (innerFilter.isEmpty()) return;
    const int column = (innerFilter.width() - 2 * inset - M().unit) / 2;
    for (int i = 0; i < 4; ++i) { // R3 and C3 above R4 and C4.
        const int left = innerFilter.left() + inset + (i % 2) * (column + M().unit);
        const int top = first + M().half + (i / 2) * (line + M().half);
        filter[static_cast<std::size_t>(i)] = {{left, top, U(3), M().textHeight},
                                               {left + U(3), top, column - U(3), M().textHeight}};
    }
}

void ClockPlan::PlaceDivider(const ClockPanel& panel) {
    if (divider.isEmpty()) return;
    const int inset = M().unit + M().half;
    const int top = divider.top() + M().unit + M().textHeight + M().half;
    const int room = divider.width() - 2 * inset;
    const int box = panel.CLK_VCODIV_bypass.Visible ? U(12) : room;
    inputDivider = {divider.left() + inset, top, box, M().boxHeight};
    bypass = {divider.left() + inset + box + M().unit, top, room - box - M().unit, M().boxHeight};
    const int below = Bottom(inputDivider) + M().half;
    divided = {{divider.left() + inset, below, U(13), M().textHeight},
               {divider.left() + inset + U(13), below, room - U(13), M().textHeight}};
}

void ClockPlan::PlaceMux(const ClockPanel& panel, int left) {
    if (!Shown(ShapeOf(panel, clk_shape::kInputMux))) {
        const int last = std::max(Right(divider), vco.circle.isEmpty() ? 0 : Right(vco.unit));
        const QRect& end = divider.isEmpty() ? vco.circle : divider;
        muxOut = {end.isEmpty() ? Right(pll) : Right(end), axis};
        outX = std::max(last, Right(pll)) + U(3);
        return;
    }
    left += U(kMuxGap - kGap);
    inputMux = {left, axis - U(3), U(kMuxWidth), U(kMuxHeight)};
    const int hot = 2 * M().unit;
    for (int k = 0; k < 3; ++k) {
        QRect at(0, 0, hot, hot);
        at.moveCenter({left, axis + k * U(kTerminalPitch)});
        terminals[static_cast<std::size_t>(k)] = at;
    }
    muxList = {left - U(2), inputMux.top() - M().unit - M().boxHeight, U(kMuxList), M().boxHeight};
    const int under = Shown(panel.cbClkInputMux) ? muxList.top() : inputMux.top();
    muxName = {muxList.left(), under - M().half - M().textHeight, muxList.width(), M().textHeight};
    muxOut = {Right(inputMux), axis + U(kTerminalPitch)};
    outX = Right(muxList) - M().unit;
    externalRise = left - U(5);
    referenceRise = left - U(3);
}

void ClockPlan::PlaceSecondRow(const ClockPanel& panel) {
    int below = std::max({Bottom(pll), Bottom(outerFilter), Bottom(innerFilter), Bottom(divider),
                          Bottom(vco.box), Bottom(reference.box), Bottom(inputMux)});
    const int upper = std::max({Bottom(pll), Bottom(divider), Bottom(vco.box)}) + U(2);
    if (Shown(ShapeOf(panel, clk_shape::kExternalSource)) && !inputMux.isEmpty()) {
        const int size = U(kCircle - 2);
        const int middle = std::max(upper + size / 2, Terminal(1).y() + U(2));
        external.circle = {externalRise - U(5) - size, middle - size / 2, size, size};
        external.unit = {external.circle.left() - U(kUnitWidth + 1), middle - M().boxHeight / 2,
                         U(kUnitWidth), M().boxHeight};
        external.box = {external.unit.left() - M().unit - U(kSourceBox), external.unit.top(),
                        U(kSourceBox), M().boxHeight};
        external.name = {external.box.left() - U(18), external.box.top(), U(17), M().boxHeight};
        below = std::max(below, Bottom(external.circle));
    }
    if (Shown(ShapeOf(panel, clk_shape::kGlobalDelay)) && !pll.isEmpty()) {
        const int inset = M().unit + M().half;
        const int width = 3 * inset + 2 * U(kDelayList + 3) + M().unit;
        globalDelay = {pll.left(), upper, width,
                       M().textHeight + M().boxHeight + 2 * M().unit + M().half};
        const int top = globalDelay.top() + M().unit + M().textHeight + M().half;
        for (int i = 0; i < 2; ++i) {
            const int left = globalDelay.left() + inset + i * (U(kDelayList + 3) + inset);
            delays[static_cast<std::size_t>(i)] = {
                {left, top, U(3), M().boxHeight},
                {left + U(2) + M().half, top, U(kDelayList), M().boxHeight}};
        }
        below = std::max(below, Bottom(globalDelay));
    }
    const Line& toMux = panel.LineCLK[clk_line::kReferenceToMux];
    if (toMux.Visible && !inputMux.isEmpty()) {
        referenceRail = below + U(2);
        below = referenceRail;
    }
    busY = below + U(2) + M().half;
}

// The source stands on top of the line that feeds the channels.
void ClockPlan::PlaceLoneSource() {
    const int size = U(kCircle);
    const int top = U(kMargin);
    external.circle = {busX - size / 2, top, size, size};
    external.name = {Right(external.circle) + U(2), top, U(20), M().textHeight};
    external.box = {external.name.left(), Bottom(external.name) + M().half, U(kSourceBox),
                    M().boxHeight};
    external.unit = {Right(external.box) + M().unit, external.box.top(), U(kUnitWidth),
                     M().boxHeight};
    busY = std::max(Bottom(external.circle), Bottom(external.box)) + U(2);
    outX = busX;
}

void ClockPlan::PlaceChannels(const ClockPanel& panel) {
    const int first = busX + U(kRowLead);
    int x = first;
    // The table is as wide as the drawing above it.
    const int natural = first + U(kTableWidth);
    const int gap = U(kColumnGap) + std::clamp((outX - natural) / 5, 0, U(kColumnGap));
    const auto column = [&x, gap](int width) {
        const int left = x;
        x += U(width) + gap;
        return QRect(left, 0, U(width), M().boxHeight);
    };
    Row row;
    row.name = column(kNameWidth);
    row.divider = column(kDivWidth);
    row.delay = column(kDelayWidth);
    row.mux = column(kMuxColumn);
    row.output = column(kOutputWidth);
    row.frequency = column(kFrequencyWidth);
    row.unit = {Right(row.frequency) + M().unit, 0, U(kUnitWidth), M().boxHeight};
    header = {first, busY + M().unit + M().half, Right(row.unit) - first, M().textHeight};
    int y = Bottom(header) + M().unit + M().half;
    int end = busY + U(kMargin);
    for (std::size_t c = 0; c < rows.size(); ++c) {
        Row& at = rows[c];
        at = row;
        for (QRect* part :
             {&at.name, &at.divider, &at.delay, &at.mux, &at.output, &at.frequency, &at.unit})
            part->moveTop(y);
        at.axis = y + M().boxHeight / 2;
        y += M().boxHeight + M().unit;
        if (panel.channels[c].lblCLKid.Visible) end = y;
    }
    size = {std::max(Right(row.unit), outX) + U(kMargin), end};
}

} // namespace zentrel::view
