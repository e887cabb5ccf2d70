#include "clock/clock_engine.h"

#include <cmath>
#include <iterator>
#include <limits>

#include "clock/clk_dist.h"
#include "device/errors.h"
#include "device/number_text.h"
#include "device/part.h"
#include "synth/clock_link.h"
#include "synth/limits.h"
#include "synth/pll.h"

namespace zentrel {
namespace {

// The way from the counters to a frequency and back takes about ten roundings of a double.
bool SameButForRounding(double a, double b) {
    return std::abs(a - b) <= 8 * std::numeric_limits<double>::epsilon() * std::abs(b);
}

std::optional<double> NForInput(const cPLL& pll, double mhz) {
    const double n = mhz / (pll.PDFrequency() / 1000);
    if (mhz == 0 || !IsUsable(n)) return {};
    return n;
}

void TakeBack(double& frequency, const cPLL& pll) {
    const double expressed = pll.VCOFrequency();
    if (IsUsable(expressed)) frequency = expressed;
}

// Counters that give the frequency already stay as they are, so that a refresh is no change for
// the load, and a fraction isn't split anew for a last digit.
bool FollowFrequency(cPLL& pll, double mhz) {
    const auto n = NForInput(pll, mhz);
    if (n && !SameButForRounding(*n, pll.NValue())) pll.SetNValue(double{*n});
    return n.has_value();
}

void SelectTestModeInput(const cPart& part, double value) {
    part.PrgmBits("INPUT_MUX").SetBitValue(value);
}

} // namespace

bool SetNForInput(cPLL& pll, double mhz) {
    const auto n = NForInput(pll, mhz);
    if (n) pll.SetNValue(double{*n});
    return n.has_value();
}

// IntVCO / VCO divider / extra divider; nothing when that is no number.
std::optional<double> cClkDist::DividedVCO(bool bypassed) const {
    const bool dividing = !bypassed && !inputDivider_.empty();
    const double divider = dividing ? part_.PrgmBits(inputDivider_).Value() : 1;
    const double divided = vco_ / divider / ExtraDivider();
    if (!std::isfinite(divided)) return {};
    return divided;
}

void cClkDist::FollowInternalVCO() {
    const auto divided = DividedVCO(VCO_div_bypassed());
    if (!divided) return;
    InputDiv_Out_Freq = *divided;
    cPLL* pll = LinkedPLL();
    if (pll != nullptr && FollowFrequency(*pll, *divided)) TakeBack(vco_, *pll);
}

void cClkDist::FollowExternalSource() {
    cPLL* pll = LinkedPLL();
    if (pll != nullptr && FollowFrequency(*pll, external_)) TakeBack(external_, *pll);
}

void cClkDist::UpdateCLKValues() {
    try {
        switch (ClockModeOf(part_)) {
        case ClockMode::AllPaths: {
            const DrivenInput input = DrivenInputOf(part_, this);
            if (input == DrivenInput::InternalVCO) FollowInternalVCO();
            if (input == DrivenInput::ExternalSource) FollowExternalSource();
            // Behind the divider the diagram shows the divided figure, bypassed or not.
            InputDiv_Out_Freq = DividedVCO(false).value_or(InputDiv_Out_Freq);
            break;
        }
        case ClockMode::InternalVCO:
            FollowInternalVCO();
            break;
        case ClockMode::ExternalVCO:
            FollowExternalSource();
            break;
        case ClockMode::Distribution:
            InputDiv_Out_Freq = external_;
            break;
        case ClockMode::Unknown:
            break;
        }
    } catch (const ScriptFailure&) {
        throw;
    } catch (const Error& failure) {
        TellOnce(failure);
    }
}

double cClkDist::GetSourceFrequency() const {
    switch (ClockModeOf(part_)) {
    case ClockMode::AllPaths:
        switch (InputOfMode(InputMuxIndex())) {
        case ClockInput::VCO:
            return InputDiv_Out_Freq;
        case ClockInput::External:
            return external_;
        case ClockInput::Reference:
            return reference_;
        case ClockInput::None:
            return 0;
        }
        break;
    case ClockMode::InternalVCO:
        return InputDiv_Out_Freq;
    case ClockMode::ExternalVCO:
    case ClockMode::Distribution:
        return external_;
    case ClockMode::Unknown:
        break;
    }
    part_.upward().messages->Show("ERROR - GetSourceFrequency");
    return external_;
}

void UpdateFreqs(const cPart& part, int index) {
    const cClkDist& block = part.ClkDists(index);
    if (cPLL* pll = block.LinkedPLL()) SetNForInput(*pll, block.GetSourceFrequency());
}

bool VCO_div_bypassed(const cPart& part, int which) {
    const bool there = which >= 1 && which <= part.ClkDists.Count();
    return !there || part.ClkDists(which).VCO_div_bypassed();
}

std::optional<double> ClockModeBit(const cPart& part) {
    const cPrgmBits* mode = part.PrgmBits.Find("MODE");
    if (mode == nullptr) return {};
    return mode->BitValue();
}

ClockInput InputOfMode(double value) {
    if (value == 0) return ClockInput::VCO;
    if (value == 1 || value == 2) return ClockInput::External;
    return value == 3 ? ClockInput::Reference : ClockInput::None;
}

ClockInput InputOfTestMux(double value) {
    if (value == 0) return ClockInput::VCO;
    if (value == 1) return ClockInput::External;
    return value == 2 ? ClockInput::Reference : ClockInput::None;
}

void SetVCO_TM(const cPart& part) {
    SelectTestModeInput(part, 0);
}
void SetExtVCO_TM(const cPart& part) {
    SelectTestModeInput(part, 1);
}
void SetDistribution_TM(const cPart& part) {
    SelectTestModeInput(part, 1);
}
void SetOSCin_TM(const cPart& part) {
    SelectTestModeInput(part, 2);
}

void SelectInput(const cPart& part, int index) {
    constexpr void (*kTestModeChoices[])(const cPart&) = {SetVCO_TM, SetExtVCO_TM,
                                                          SetDistribution_TM, SetOSCin_TM};
    if (ClockModeBit(part) != kTestMode) {
        part.PrgmBits("MODE").SetBitValue(index);
    } else if (index >= 0 && index < static_cast<int>(std::size(kTestModeChoices))) {
        kTestModeChoices[index](part);
    }
}

namespace {

// Reads what a name stands for; an empty name gives `absent`, a failure is told and gives nothing.
template<typename Read>
auto ReadNamed(cClkDist& block, const std::string& name, Read read)
    -> std::optional<decltype(read(block.Part().PrgmBits(name)))> {
    try {
        return read(block.Part().PrgmBits(name));
    } catch (const Error& failure) {
        block.TellOnce(failure);
        return {};
    }
}

std::string FrequencyText(double mhz) {
    return std::isfinite(mhz) ? NumberToText(mhz) : "?";
}

} // namespace

ChannelOutput OutputOfChannel(cClkDist& block, int c, double source, double extra) {
    ChannelOutput output;
    const auto value = [](cPrgmBits& field) { return field.Value(); };
    const auto text = [](cPrgmBits& field) { return field.Text(); };

    const std::string& divider = block.GetClkDividerName(c);
    output.divider = divider.empty() ? 1 : ReadNamed(block, divider, value);
    if (const std::string& mux = block.GetClkMuxName(c); !mux.empty()) {
        const std::string path = ReadNamed(block, mux, text).value_or("");
        output.divided = path != "Bypassed" && path != "Delayed";
        output.delayed = path != "Bypassed" && path != "Divided";
    }
    if (const std::string& enable = block.GetClkEnableName(c); !enable.empty()) {
        const auto state = ReadNamed(block, enable, text);
        output.enabled = !state || ParseNumber(*state) == 1.0;
    }

    if (!output.enabled) return output;
    const double divisor = output.divided ? output.divider.value_or(0) : 1;
    output.frequency = divisor == 0 ? "?" : FrequencyText(source / divisor * extra);
    return output;
}

} // namespace zentrel
