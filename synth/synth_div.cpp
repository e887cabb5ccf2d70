#include "synth/synth_div.h"

#include "device/number_text.h"
#include "device/part.h"
#include "synth/clock_link.h"

namespace zentrel {
namespace {

void SetSynthDiv(cPart& part, int i, bool visible) {
    PllPanel& panel = part.PLLs(i).panel;
    panel.pllSynthDiv.Visible = visible;
    panel.pllSynthDivLblHigh.Visible = visible;
    panel.pllSynthDivLblLow.Visible = visible;
}

// What the display of a linked block makes of the VCO divider: shown, hidden or left as it is.
enum class DividerView { Show, Hide, Leave };

DividerView ViewInAllPaths(const cPart& part, const LinkedBlock& block) {
    const double mode = part.PrgmBits("MODE").BitValue();
    if (mode == 0) return DividerView::Show;
    if (mode == 1 || mode == 2 || mode == 3) return DividerView::Hide;
    if (mode != 7) return DividerView::Leave;
    const bool shown =
        part.PrgmBits(block.InputDividerName()).BitValue() == 0 && !block.VCO_div_bypassed();
    return shown ? DividerView::Show : DividerView::Hide;
}

DividerView ViewOf(const cPart& part, const LinkedBlock& block) {
    switch (ClockModeOf(part)) {
    case ClockMode::InternalVCO:
        return block.VCO_div_bypassed() ? DividerView::Hide : DividerView::Show;
    case ClockMode::ExternalVCO:
        return DividerView::Hide;
    case ClockMode::AllPaths:
        return ViewInAllPaths(part, block);
    default:
        return DividerView::Leave;
    }
}

} // namespace

void ShowSynthDiv(cPart& part, int i) {
    SetSynthDiv(part, i, true);
}

void HideSynthDiv(cPart& part, int i) {
    SetSynthDiv(part, i, false);
}

void ShowHideSynthMuxLogic(cPart& part, int i) {
    // Here the list is the one of block `i`, whichever PLL that block names.
    const LinkedBlock* block = part.upward().blocks->At(i);
    SetSynthDiv(part, i, DrivenInputOf(part, block) == DrivenInput::InternalVCO);
}

void SetShowExtraDiv(cPart& part, bool show, int iPLL) {
    PllPanel& panel = part.PLLs(iPLL).panel;
    panel.pllExtraDiv.Visible = show;
    panel.pllExtraDivLbl.Visible = show;
    panel.pllExtraDivVal.Visible = show;
}

void SetShowManualDiv(cPart& part, bool show, int iPLL) {
    part.PLLs(iPLL).panel.pllManualDivide.Visible = show;
}

void UpdatePLLandCLKDISTDisplay(cPart& part, int iPLL, int iClkDist) {
    if (iPLL < 1 || iPLL > part.PLLs.Count()) return;
    const LinkedBlock* block = part.upward().blocks->At(iClkDist);
    if (block == nullptr) return;
    const DisplayScope displaying(part);
    if (!block->InputDividerName().empty()) {
        PllPanel& panel = part.PLLs(iPLL).panel;
        panel.pllSynthDivLblHigh.Caption = "VCO\n\rDivider";
        panel.pllSynthDivLblLow.Caption =
            NumberToText(part.PrgmBits(block->InputDividerName()).Value());
    }
    const DividerView view = ViewOf(part, *block);
    if (view != DividerView::Leave) SetSynthDiv(part, iPLL, view == DividerView::Show);
}

} // namespace zentrel
