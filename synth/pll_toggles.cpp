#include "synth/pll_toggles.h"

#include "device/part.h"
#include "synth/panel_change.h"

namespace zentrel {
namespace {

void Switch(cPart& part, int i, std::string_view name, Label PllPanel::*label,
            void (cPrgmBits::*how)()) {
    const std::string& tag = (part.PLLs(i).panel.*label).Tag;
    if (tag.empty()) return;
    PanelChange(part, i, name, Tail::FourThenLoad, [&] { (part.PrgmBits(tag).*how)(); });
}

} // namespace

void lblDoubler_Click(cPart& part, int i) {
    Switch(part, i, "lblDoubler", &PllPanel::lblDoubler, &cPrgmBits::ToggleBit);
}

void lblNPrescale_Click(cPart& part, int i) {
    Switch(part, i, "lblNPrescale", &PllPanel::lblNPrescale, &cPrgmBits::ToggleBit);
}

void lblPDPol_Click(cPart& part, int i) {
    Switch(part, i, "lblPDPol", &PllPanel::lblPDPol, &cPrgmBits::ToggleBit);
}

void lblCPState_Click(cPart& part, int i) {
    Switch(part, i, "lblCPState", &PllPanel::lblCPState, &cPrgmBits::ToggleBit);
}

void lblCPGain_MouseUp(cPart& part, int i, bool leftButton) {
    Switch(part, i, "lblCPGain", &PllPanel::lblCPGain,
           leftButton ? &cPrgmBits::Increment : &cPrgmBits::Decrement);
}

std::string PLLBitsText(const cPart& part, int i) {
    const cPLL& pll = part.PLLs(i);
    const PllPanel& panel = pll.panel;
    const std::string none;
    const struct {
        std::string_view literal;
        const std::string& field;
    } rows[] = {
        {"OSCin Bit                           ", panel.lblPLLOSCBit.Tag},
        {"Doubler:                              ", panel.lblDoubler.Tag},
        {"R Counter:                           ",
         panel.txtRCounter.Tag.empty() ? none : pll.RCounterName()},
        {"Phase Detector Polarity:      ", panel.lblPDPol.Tag},
        {"Charge Pump Gain:              ", panel.lblCPGain.Tag},
        {"Charge Pump State:             ", panel.lblCPState.Tag},
        {"Synth Divider:                  ", panel.pllSynthDivLblHigh.Tag},
        {"N Prescaler:                         ", panel.lblNPrescale.Tag},
        {"N Counter:                           ",
         panel.txtNCounter.Tag.empty() ? none : pll.NCounterName()},
        {"Fractional Numerator:          ", panel.txtFractNum.Tag},
        {"Fractional Denominator:       ", panel.txtFractDen.Tag},
        {"OUT0 Divider:                        ", panel.txtOUT0_DIV.Tag},
        {"OUT Divider:                        ", panel.txtOUT1_DIV.Tag},
    };
    std::string text = "These are the Bits Represented on this Screen\r\n"
                       "-------------------------------------------";
    for (const auto& row : rows) {
        if (!row.field.empty()) text.append("\r\n").append(row.literal).append(row.field);
    }
    return text;
}

void txtGetPLLBits_Click(cPart& part, int i) {
    part.upward().messages->Show(PLLBitsText(part, i));
}

} // namespace zentrel
