#include "synth/pll_panel.h"

#include <string_view>

namespace zentrel {
namespace {

constexpr std::array<std::string_view, kPllLabels> kLabelTexts = {
    "MHz",
    "kHz",
    "Reference Oscillator",
    "~",
    "~",
    "Phase Detector Frequency",
    "Doubler",
    "MHz",
    "R Counter",
    "N Counter",
    "Phase Detector Polarity",
    "Charge Pump Gain",
    "Charge Pump State",
    "VCO",
    "Loop Filter",
    "Prescaler",
    "Fraction",
};

struct TemplateText {
    Label PllPanel::*label;
    std::string_view text;
};
constexpr TemplateText kTemplateTexts[] = {
    {&PllPanel::lblDoubler, "X1"},
    {&PllPanel::lblNPrescale, "128"},
    {&PllPanel::lblPDPol, "+"},
    {&PllPanel::lblCPGain, "HIGH"},
    {&PllPanel::lblCPState, "Tristate"},
    {&PllPanel::lblPLLOSCBit, "OSCbit"},
    {&PllPanel::pllSynthDivLblHigh, "VCO\n\rDivider"},
    {&PllPanel::pllExtraDivLbl, "Extra Divide"},
};

template<typename... Elements>
void Hide(Elements&... elements) {
    ((elements.Visible = false), ...);
}

} // namespace

PllPanel::PllPanel() {
    for (int k = 0; k < kPllLabels; ++k) {
        const auto at = static_cast<std::size_t>(k);
        lblPLL[at].Caption = kLabelTexts[at];
    }
    for (const auto& [label, text] : kTemplateTexts)
        (this->*label).Caption = text;
    txtGetPLLBits.Caption = "Show Bits";

    Hide(txtFractNum, txtFractDen, SpnFractNum, spnFractDen);
    Hide(lblDoubler, lblNPrescale);
    Hide(txtOUT0, txtOUT1, txtOUT0_DIV, txtOUT1_DIV, SpnOUT0_DIV, SpnOUT1_DIV);
    Hide(pllSynthDiv, pllSynthDivLblHigh, pllSynthDivLblLow);
    Hide(pllExtraDiv, pllExtraDivLbl, pllExtraDivVal, pllManualDivide);
    Hide(lblVCO_Range, lblOSC_Range, lblFpd_Range, lblNCheck1, lblNCheck2);
}

} // namespace zentrel
