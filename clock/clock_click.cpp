#include "clock/clock_click.h"

#include "clock/clk_dist.h"
#include "clock/clock_change.h"
#include "clock/clock_engine.h"
#include "device/part.h"
#include "synth/clock_link.h"
#include "synth/pll.h"
#include "synth/synth_div.h"

namespace zentrel {
namespace {

// The entry of `cbClkInputMux` behind a terminal.
int EntryOf(ClockInput terminal) {
    if (terminal == ClockInput::VCO) return 0;
    return terminal == ClockInput::External ? 1 : 3;
}

bool Inside(const Shape& shape, int x, int y) {
    return x >= shape.Left && y >= shape.Top && x < shape.Left + shape.Width &&
           y < shape.Top + shape.Height;
}

constexpr int kHotShapes[] = {clk_shape::kVcoTerminal, clk_shape::kExternalTerminal,
                              clk_shape::kReferenceTerminal, clk_shape::kLoopFilter,
                              clk_shape::kPll};

Shape& ShapeAt(ClockPanel& panel, int k) {
    return panel.shpCLK[static_cast<std::size_t>(k)];
}

OpenLoopFilter ClickShape(cClkDist& block, int k) {
    switch (k) {
    case clk_shape::kVcoTerminal:
        ClickTerminal(block, ClockInput::VCO);
        break;
    case clk_shape::kExternalTerminal:
        ClickTerminal(block, ClockInput::External);
        break;
    case clk_shape::kReferenceTerminal:
        ClickTerminal(block, ClockInput::Reference);
        break;
    case clk_shape::kPll:
        ClickLinkedPLL(block);
        break;
    case clk_shape::kLoopFilter: {
        const ClockMode mode = ClockModeOf(block.Part());
        const bool opens = mode == ClockMode::InternalVCO || mode == ClockMode::AllPaths;
        return opens ? OpenLoopFilter::Modal : OpenLoopFilter::No;
    }
    default:
        break;
    }
    return OpenLoopFilter::No;
}

} // namespace

void ClickTerminal(cClkDist& block, ClockInput terminal) {
    cPart& part = block.Part();
    if (ClockModeOf(part) != ClockMode::AllPaths || terminal == ClockInput::None) return;
    ChangeModel(block, "cbClkInputMux", [&] {
        SelectInput(part, EntryOf(terminal));
        UpdateFreqs(part, block.IDnum);
    });
    if (block.LinkedPLL() != nullptr) {
        const bool vco = terminal == ClockInput::VCO;
        vco ? ShowSynthDiv(part, block.LinkedPLLInt) : HideSynthDiv(part, block.LinkedPLLInt);
    }
    part.UpdateDisplays();
}

OpenLoopFilter ClickClockLabel(cClkDist& block, int k) {
    if (k >= clk_label::kR3 && k <= clk_label::kC4) return OpenLoopFilter::Modeless;
    if (k >= clk_label::kReadoutR && k <= clk_label::kReadoutN) ClickLinkedPLL(block);
    return OpenLoopFilter::No;
}

void ClickLinkedPLL(const cClkDist& block) {
    const cPart& part = block.Part();
    if (ClockModeOf(part) == ClockMode::Distribution) return;
    if (const cPLL* pll = block.LinkedPLL()) part.upward().tabs->SelectTab(pll->PLLTab());
}

OpenLoopFilter ClickDiagram(cClkDist& block, int x, int y) {
    for (const int k : kHotShapes) {
        if (Inside(ShapeAt(block.panel, k), x, y)) return ClickShape(block, k);
    }
    return OpenLoopFilter::No;
}

void HoverDiagram(cClkDist& block, int x, int y) {
    for (const int k : kHotShapes) {
        Shape& shape = ShapeAt(block.panel, k);
        const bool under = Inside(shape, x, y);
        shape.BorderColor = under ? colors::kRed : colors::kBlack;
        shape.BorderWidth = under ? 2 : 1;
    }
}

cClkDist* BlockOfTab(const cPart& part, int tab) {
    for (cClkDist& block : part.ClkDists) {
        if (block.ClkDistTab == tab) return &block;
    }
    return nullptr;
}

} // namespace zentrel
