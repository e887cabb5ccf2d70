#include "clock/signal_path.h"

#include "clock/clk_dist.h"
#include "device/part.h"
#include "synth/clock_link.h"

namespace zentrel {
namespace {

bool IsGrey(const Element& element) {
    return element.BackColor == colors::kOutOfPath;
}

std::string_view NameOf(ClockInput input) {
    switch (input) {
    case ClockInput::VCO:
        return "the VCO path";
    case ClockInput::External:
        return "the external source";
    case ClockInput::Reference:
        return "the reference oscillator";
    case ClockInput::None:
        break;
    }
    return "no input";
}

// The input that feeds the channels.
ClockInput FeedingInput(const cClkDist& block) {
    switch (ClockModeOf(block.Part())) {
    case ClockMode::AllPaths:
        return block.panel.pointer;
    case ClockMode::InternalVCO:
        return ClockInput::VCO;
    default:
        return ClockInput::External;
    }
}

std::string WhyInputIsOut(const cClkDist& block, ClockInput input) {
    const ClockInput feeding = FeedingInput(block);
    if (feeding == input) return {};
    if (ClockModeOf(block.Part()) == ClockMode::AllPaths) {
        return "The input mux selects " + std::string(NameOf(feeding)) + ".";
    }
    return "In the display mode " + block.Part().clkdistDisplayMode + " the channels are fed by " +
           std::string(NameOf(feeding)) + ".";
}

std::string WhyDividerIsOut(const cClkDist& block) {
    if (IsGrey(block.panel.CLKtxt_InputDiv)) return "The VCO divider is bypassed.";
    return WhyInputIsOut(block, ClockInput::VCO);
}

std::string WhyChannelItemIsOut(const cClkDist& block, ClockItem item, int channel) {
    const ClockChannelRow& row = block.panel.channels.at(static_cast<std::size_t>(channel));
    const std::string& name = row.lblCLKid.Caption;
    const ListBox& mux = row.divCB_CMux;
    const auto byMux = [&](const char* what) {
        const bool selected = mux.ListIndex >= 0;
        const std::string path =
            selected ? mux.List[static_cast<std::size_t>(mux.ListIndex)] : std::string();
        return "The mux of " + name + " is set to \"" + path + "\": " + what + " isn't used.";
    };
    if (item == ClockItem::ChannelDivider && IsGrey(row.chDivText)) return byMux("the divider");
    if (item == ClockItem::ChannelDelay && IsGrey(row.divCB_CDelay)) return byMux("the delay");
    if (IsGrey(row.divCB_od)) return name + " is disabled.";
    return {};
}

} // namespace

std::string WhyOutOfPath(const cClkDist& block, ClockItem item, int channel) {
    switch (item) {
    case ClockItem::VcoDivider:
        return WhyDividerIsOut(block);
    case ClockItem::VcoInput:
        return WhyInputIsOut(block, ClockInput::VCO);
    case ClockItem::ExternalInput:
        return WhyInputIsOut(block, ClockInput::External);
    case ClockItem::ReferenceInput:
        return WhyInputIsOut(block, ClockInput::Reference);
    default:
        return WhyChannelItemIsOut(block, item, channel);
    }
}

} // namespace zentrel
