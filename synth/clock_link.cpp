#include "synth/clock_link.h"

#include "device/part.h"

namespace zentrel {
namespace {

// "MODE" at this hands the choice of input from the list to "INPUT_MUX".
constexpr double kTestMode = 7;

bool InTestMode(const cPart& part) {
    return part.PrgmBits("MODE").BitValue() == kTestMode;
}

bool FeedbackPassesDivider(const cPart& part) {
    switch (ClockModeOf(part)) {
    case ClockMode::InternalVCO:
        return true;
    case ClockMode::AllPaths:
        if (InTestMode(part)) return part.PrgmBits("INPUT_MUX").BitValue() == 0;
        return part.PrgmBits("MODE").BitValue() == 0;
    default:
        return false;
    }
}

} // namespace

ClockMode ClockModeOf(const cPart& part) {
    const std::string_view mode = part.clkdistDisplayMode;
    if (EqualNoCase(mode, "PLL_internalVCO")) return ClockMode::InternalVCO;
    if (EqualNoCase(mode, "PLL_externalVCO")) return ClockMode::ExternalVCO;
    if (EqualNoCase(mode, "VCO_extVCO") || EqualNoCase(mode, "Engineering")) {
        return ClockMode::AllPaths;
    }
    return EqualNoCase(mode, "Distribution") ? ClockMode::Distribution : ClockMode::Unknown;
}

DrivenInput DrivenInputOf(const cPart& part, const LinkedBlock* block) {
    switch (ClockModeOf(part)) {
    case ClockMode::InternalVCO:
        return DrivenInput::InternalVCO;
    case ClockMode::ExternalVCO:
        return DrivenInput::ExternalSource;
    case ClockMode::AllPaths:
        break;
    default:
        return DrivenInput::None;
    }
    double choice = -1;
    if (InTestMode(part)) {
        choice = part.PrgmBits("INPUT_MUX").BitValue();
    } else if (block != nullptr) {
        choice = block->InputMuxIndex();
    }
    if (choice == 0) return DrivenInput::InternalVCO;
    return choice == 1 ? DrivenInput::ExternalSource : DrivenInput::None;
}

bool SetDrivenFrequency(const cPart& part, LinkedBlock& block, double mhz) {
    switch (DrivenInputOf(part, &block)) {
    case DrivenInput::InternalVCO:
        block.SetIntVCO_Freq(mhz);
        return true;
    case DrivenInput::ExternalSource:
        block.SetExtSRC_Freq(mhz);
        return true;
    default:
        return false;
    }
}

double DrivenFrequency(const cPart& part, const LinkedBlock& block) {
    switch (DrivenInputOf(part, &block)) {
    case DrivenInput::InternalVCO:
        return block.IntVCO_Freq();
    case DrivenInput::ExternalSource:
        return block.ExtSRC_Freq();
    default:
        return 0;
    }
}

LinkedBlock* LinkedBlockOf(const cPLL& pll) {
    const int position = pll.LinkedCLKDistInt();
    return position < 1 ? nullptr : pll.Part().upward().blocks->At(position);
}

cPLL* GetPLLfromCaption(const cPart& part, std::string_view thecaption) {
    for (cPLL& pll : part.PLLs) {
        if (pll.ID() == thecaption) return &pll;
    }
    const LinkedBlock* block = part.upward().blocks->WithID(thecaption);
    return block == nullptr ? nullptr : part.PLLs.Find(block->LinkedPLLName());
}

void UpdateCLKforPLL(cPart& part, std::string_view pllname) {
    const cPLL* pll = GetPLLfromCaption(part, pllname);
    if (pll == nullptr) {
        part.upward().messages->Show("Failed to UpdateCLKforPLL: " + std::string(pllname));
        return;
    }
    if (pll->LinkedCLKDist().empty()) return;
    LinkedBlock* block = LinkedBlockOf(*pll);
    if (block == nullptr || DrivenInputOf(part, block) == DrivenInput::None) return;
    SetDrivenFrequency(part, *block, pll->VCOFrequency());
}

double GetPreNdivider(const cPart& part, int PLLi) {
    const cPLL& pll = part.PLLs(PLLi);
    const double extra = pll.ExtraDivider();
    if (pll.LinkedCLKDist().empty() || !FeedbackPassesDivider(part)) return extra;
    const LinkedBlock* block = LinkedBlockOf(pll);
    if (block == nullptr || block->VCO_div_bypassed() || block->InputDividerName().empty()) {
        return extra;
    }
    return extra * part.PrgmBits(block->InputDividerName()).Value();
}

} // namespace zentrel
