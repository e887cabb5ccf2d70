#include "device/number_text.h"
#include "device/part.h"
#include "synth/clock_link.h"
#include "synth/limits.h"
#include "synth/panel_change.h"
#include "synth/stepping.h"

namespace zentrel {
namespace {

// The fixed screens' tabs lie below this number.
constexpr int kFirstBlockTab = 4;

// How much of a box's text the "Set" entries select: more than any number has.
constexpr int kWholeText = 50;

constexpr StepMenuEntry kMenu[] = {
    {"mnuIncN", "Increase N By 1", "F2", mnuIncN},
    {"mnuNDec", "Decrease N by 1", "F1", mnuNDec},
    {"mnuNInc10", "Increase N by 10", "F4", mnuNInc10},
    {"mnuNDec10", "Decrease N by 10", "F3", mnuNDec10},
    {"mnuIncFrac", "Increase Fractional Numerator ", "F6", mnuIncFrac},
    {"mnuDecFrac", "Decrease Fractional Numerator", "F5", mnuDecFrac},
    {"mnuVCOFreq", "Set &VCO Frequency", "Ctrl+F", mnuVCOFreq},
    {"mnuFcomp", "Set &Comparison Frequency", "Ctrl+C", mnuFcomp},
    {"mnuXtal", "Set Cr&ystal Frequency", "Ctrl+X", mnuXtal},
};

bool OnBlockTab(const cPart& part) {
    return !part.ID.empty() && part.upward().tabs->SelectedTab() >= kFirstBlockTab;
}

std::string SelectedCaption(const cPart& part) {
    const TabStrip& tabs = *part.upward().tabs;
    return tabs.TabCaption(tabs.SelectedTab());
}

void StepN(cPart& part, std::string_view entry, double steps) {
    if (!OnBlockTab(part)) return;
    cPLL* pll = GetPLLfromCaption(part, SelectedCaption(part));
    if (pll == nullptr) return;
    const int i = pll->IDnum();
    PanelChange(part, i, entry, Tail::FourThenLoad, [&] {
        const auto khz = EntryNumber(pll->panel.txtFpd.Text);
        if (!khz) return;
        const double step = GetPreNdivider(part, i) * (*khz / 1000) * steps;
        pll->SetVCOFrequency(pll->VCOFrequency() + step);
        UpdateCLKforPLL(part, pll->ID());
    });
}

void StepNumerator(cPart& part, std::string_view entry, void (cPrgmBits::*step)()) {
    if (!OnBlockTab(part)) return;
    const cPLL* pll = part.PLLs.Find(SelectedCaption(part));
    if (pll == nullptr) return;
    const std::string& tag = pll->panel.SpnFractNum.Tag;
    if (tag.empty()) return;
    PanelChange(part, pll->IDnum(), entry, Tail::FourThenLoad,
                [&] { (part.PrgmBits(tag).*step)(); });
}

cPLL* PllOfTab(const cPart& part, int tab) {
    for (cPLL& pll : part.PLLs) {
        if (pll.PLLTab() == tab) return &pll;
    }
    return nullptr;
}

// Goes to the box and applies what it shows.
template<typename Apply>
void GoTo(cPart& part, std::string_view name, TextBox PllPanel::*box, Apply apply) {
    if (part.ID.empty()) return;
    const int tab = part.upward().tabs->SelectedTab();
    if (PllOfTab(part, tab) == nullptr) return;
    const int i = part.tab_id_num(std::to_string(tab));
    TextBox& element = part.PLLs(i).panel.*box;
    element.SelStart = 0;
    element.SelLength = kWholeText;
    part.upward().tabs->FocusBox(name, i);
    PanelChange(part, i, name, Tail::PllAndClockThenLoad, [&] {
        if (const auto number = EntryNumber(element.Text)) {
            apply(PllOfTag(part, element.Tag, i), *number);
        }
    });
}

} // namespace

std::span<const StepMenuEntry> StepMenu() {
    return kMenu;
}

void mnuIncN(cPart& part) {
    StepN(part, "mnuIncN", 1);
}

void mnuNDec(cPart& part) {
    StepN(part, "mnuNDec", -1);
}

void mnuNInc10(cPart& part) {
    StepN(part, "mnuNInc10", 10);
}

void mnuNDec10(cPart& part) {
    StepN(part, "mnuNDec10", -10);
}

void mnuIncFrac(cPart& part) {
    StepNumerator(part, "mnuIncFrac", &cPrgmBits::Increment);
}

void mnuDecFrac(cPart& part) {
    StepNumerator(part, "mnuDecFrac", &cPrgmBits::Decrement);
}

void mnuVCOFreq(cPart& part) {
    GoTo(part, "txtVCO", &PllPanel::txtVCO,
         [](cPLL& pll, double mhz) { pll.SetVCOFrequency(mhz); });
}

void mnuFcomp(cPart& part) {
    GoTo(part, "txtFpd", &PllPanel::txtFpd, [](cPLL& pll, double khz) { pll.SetPDFrequency(khz); });
}

void mnuXtal(cPart& part) {
    GoTo(part, "txtOsc", &PllPanel::txtOsc, [](cPLL& pll, double mhz) {
        if (!IsUsable(mhz * 1e6)) return;
        pll.SetXtalFrequency(mhz);
        if (pll.LinkedCLKDist().empty()) return;
        if (LinkedBlock* block = LinkedBlockOf(pll)) block->SetRefOSC_Freq(mhz);
    });
}

} // namespace zentrel
