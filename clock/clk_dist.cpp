#include "clock/clk_dist.h"

#include <algorithm>

#include "clock/clock_engine.h"
#include "device/part.h"
#include "synth/clock_link.h"
#include "synth/limits.h"
#include "synth/pll.h"

namespace zentrel {

cPLL* cClkDist::LinkedPLL() const {
    const bool there = LinkedPLLInt >= 1 && LinkedPLLInt <= part_.PLLs.Count();
    return there ? &part_.PLLs(LinkedPLLInt) : nullptr;
}

int cClkDist::ShownChannels() const {
    return std::clamp<int>(ClockCount, 0, kClockChannels);
}

double cClkDist::ExtraDivider() const {
    const cPLL* pll = LinkedPLL();
    if (pll == nullptr || ClockModeOf(part_) == ClockMode::Distribution) return 1;
    return pll->ExtraDivider();
}

bool cClkDist::VCO_div_bypassed() const {
    if (!panel.CLKtxt_InputDiv.Visible) return true;
    return panel.CLK_VCODIV_bypass.Visible && panel.CLK_VCODIV_bypass.Value;
}

void cClkDist::SetRefOSC_Freq(double mhz) {
    if (IsUsable(mhz)) reference_ = mhz;
}
void cClkDist::SetExtSRC_Freq(double mhz) {
    if (IsUsable(mhz) && mhz != 0) external_ = mhz;
}
void cClkDist::SetIntVCO_Freq(double mhz) {
    if (IsUsable(mhz) && mhz != 0) vco_ = mhz;
}

void cClkDist::TellOnce(const Error& failure) {
    if (!told_.insert(failure.what()).second) return;
    part_.upward().messages->Show(std::string(failure.what()) + ", which the clock block " + id_ +
                                  " needs.");
}

std::size_t cClkDist::Row(int channel) {
    if (channel < 0 || channel > kClockChannels) {
        throw OutOfRange("channel " + std::to_string(channel));
    }
    return static_cast<std::size_t>(channel);
}

LinkedBlock* ClockBlocks::At(int position) {
    const bool there = position >= 1 && position <= part_.ClkDists.Count();
    return there ? &part_.ClkDists(position) : nullptr;
}

LinkedBlock* ClockBlocks::WithID(std::string_view id) {
    for (cClkDist& block : part_.ClkDists) {
        if (block.ID() == id) return &block;
    }
    return nullptr;
}

} // namespace zentrel
