#include "synth/frequency_entry.h"

#include <cmath>

#include "device/number_text.h"
#include "device/part.h"
#include "synth/clock_link.h"
#include "synth/limits.h"
#include "synth/panel_change.h"

namespace zentrel {
namespace {

constexpr PllBox kBoxes[] = {
    {"txtOsc", &PllPanel::txtOsc, txtOsc_Enter, txtOsc_Leave},
    {"txtRCounter", &PllPanel::txtRCounter, txtRCounter_Apply, txtRCounter_Apply},
    {"txtFpd", &PllPanel::txtFpd, txtFpd_Apply, txtFpd_Apply},
    {"txtNCounter", &PllPanel::txtNCounter, txtNCounter_Enter, txtNCounter_Leave},
    {"txtFractNum", &PllPanel::txtFractNum, txtFractNum_Apply, txtFractNum_Apply},
    {"txtFractDen", &PllPanel::txtFractDen, txtFractDen_Apply, txtFractDen_Apply},
    {"txtVCO", &PllPanel::txtVCO, txtVCO_Enter, txtVCO_Leave},
    {"txtOUT0_DIV", &PllPanel::txtOUT0_DIV, txtOUT0_DIV_Enter, nullptr},
    {"txtOUT0", &PllPanel::txtOUT0, txtOUT0_Enter, nullptr},
    {"txtOUT1_DIV", &PllPanel::txtOUT1_DIV, txtOUT1_DIV_Enter, nullptr},
    {"txtOUT1", &PllPanel::txtOUT1, txtOUT1_Enter, nullptr},
    {"pllManualDivide", &PllPanel::pllManualDivide, pllManualDivide_Enter, nullptr},
};

bool NoPart(const cPart& part) {
    return part.ID.empty();
}

// The PLL that the output boxes act on.
cPLL& OutputPll(cPart& part, int i) {
    return PllOfTag(part, part.PLLs(i).panel.txtFpd.Tag, i);
}

// The change that a box asks for, with the number in it; none when it holds no usable number.
template<typename Change>
void Enter(cPart& part, int i, std::string_view name, TextBox PllPanel::*box, Tail tail,
           Change change) {
    if (NoPart(part)) return;
    PanelChange(part, i, name, tail, [&] {
        if (const auto number = EntryNumber((part.PLLs(i).panel.*box).Text)) change(*number);
    });
}

void EnterCrystal(cPart& part, int i, bool enterKey) {
    Enter(part, i, "txtOsc", &PllPanel::txtOsc, Tail::AllThenLoadIfAsked, [&](double mhz) {
        PllPanel& panel = part.PLLs(i).panel;
        if (mhz < 0) {
            mhz = -mhz;
            panel.txtOsc.Text = NumberToText(mhz);
        }
        if (!OSCinFrequencySetValue(part, mhz, i) || !enterKey) return;
        const std::string& field = panel.lblPLLOSCBit.Tag;
        if (!field.empty()) part.PrgmBits(field).SetValue(mhz);
    });
}

// The fraction's boxes need no part: without one they have no tag.
void EnterFraction(cPart& part, int i, std::string_view name, TextBox PllPanel::*box) {
    TextBox& element = part.PLLs(i).panel.*box;
    if (element.Tag.empty()) return;
    PanelChange(part, i, name, Tail::FourThenLoad, [&] {
        if (const auto number = EntryNumber(element.Text)) {
            part.PrgmBits(element.Tag).SetValue(*number);
        }
    });
}

void SetOutputDivider(cPLL& pll, double number, void (cPLL::*set)(std::int32_t)) {
    if (const auto divider = ToInt32(number)) (pll.*set)(*divider);
}

} // namespace

std::span<const PllBox> PllBoxes() {
    return kBoxes;
}

const PllBox* FindPllBox(std::string_view name) {
    for (const PllBox& box : kBoxes) {
        if (EqualNoCase(box.name, name)) return &box;
    }
    return nullptr;
}

void VCOFrequencySetValue(cPart& part, int pllIndex, double vcofreq) {
    if (vcofreq == 0 || !IsUsable(vcofreq)) return;
    AllOrNothing(part, pllIndex, [&] {
        cPLL& pll = part.PLLs(pllIndex);
        LinkedBlock* block = pll.LinkedCLKDist().empty() ? nullptr : LinkedBlockOf(pll);
        if (pll.LinkedCLKDist().empty()) {
            pll.SetNDivFrequencyInput(vcofreq);
        } else if (block != nullptr && SetDrivenFrequency(part, *block, vcofreq)) {
            pll.SetNDivFrequencyInput(DrivenFrequency(part, *block));
        }
        PllOfTag(part, pll.panel.txtVCO.Tag, pllIndex).SetVCOFrequency(pll.NDivFrequencyInput());
    });
}

bool OSCinFrequencySetValue(cPart& part, double freq, int pllIndex) {
    bool taken = false;
    AllOrNothing(part, pllIndex, [&] {
        cPLL& pll = PllOfTag(part, part.PLLs(pllIndex).panel.txtOsc.Tag, pllIndex);
        const double before = pll.XtalFrequency();
        pll.SetXtalFrequency(freq);
        taken = freq == before || pll.XtalFrequency() != before;
        if (!taken) return;
        if (LinkedBlock* block = LinkedBlockOf(pll)) block->SetRefOSC_Freq(freq);
    });
    return taken;
}

void txtVCO_Apply(cPart& part, int pllIndex) {
    if (const auto mhz = EntryNumber(part.PLLs(pllIndex).panel.txtVCO.Text)) {
        VCOFrequencySetValue(part, pllIndex, *mhz);
    }
}

void txtVCO_Enter(cPart& part, int i) {
    if (NoPart(part)) return;
    PanelChange(part, i, "txtVCO", Tail::AllThenLoadIfAsked, [&] { txtVCO_Apply(part, i); });
}

void txtVCO_Leave(cPart& part, int i) {
    if (NoPart(part)) return;
    PanelChange(part, i, "txtVCO", Tail::AllThenLoad, [&] { txtVCO_Apply(part, i); });
}

void txtOsc_Enter(cPart& part, int i) {
    EnterCrystal(part, i, true);
}

void txtOsc_Leave(cPart& part, int i) {
    EnterCrystal(part, i, false);
}

void txtFpd_Apply(cPart& part, int i) {
    Enter(part, i, "txtFpd", &PllPanel::txtFpd, Tail::FourThenLoad,
          [&](double khz) { OutputPll(part, i).SetPDFrequency(khz); });
}

void txtRCounter_Apply(cPart& part, int i) {
    Enter(part, i, "txtRCounter", &PllPanel::txtRCounter, Tail::FourThenLoad, [&](double r) {
        const cPLL& pll = PllOfTag(part, part.PLLs(i).panel.txtRCounter.Tag, i);
        part.PrgmBits(pll.RCounterName()).SetValue(r);
    });
}

void txtNCounter_Enter(cPart& part, int i) {
    // N goes through the VCO, so that its decimals end in the fraction.
    Enter(part, i, "txtNCounter", &PllPanel::txtNCounter, Tail::FourThenLoad, [&](double n) {
        cPLL& pll = part.PLLs(i);
        const auto khz = EntryNumber(pll.panel.txtFpd.Text);
        if (!khz) return;
        pll.SetVCOFrequency(n * (GetPreNdivider(part, i) * (*khz / 1000)));
        UpdateCLKforPLL(part, pll.ID());
    });
}

void txtNCounter_Leave(cPart& part, int i) {
    Enter(part, i, "txtNCounter", &PllPanel::txtNCounter, Tail::FourThenLoad, [&](double n) {
        const cPLL& pll = PllOfTag(part, part.PLLs(i).panel.txtNCounter.Tag, i);
        part.PrgmBits(pll.NCounterName()).SetValue(std::trunc(n));
    });
}

void txtFractNum_Apply(cPart& part, int i) {
    EnterFraction(part, i, "txtFractNum", &PllPanel::txtFractNum);
}

void txtFractDen_Apply(cPart& part, int i) {
    EnterFraction(part, i, "txtFractDen", &PllPanel::txtFractDen);
}

void txtOUT0_Enter(cPart& part, int i) {
    Enter(part, i, "txtOUT0", &PllPanel::txtOUT0, Tail::FourThenLoad,
          [&](double mhz) { OutputPll(part, i).SetOUT0_Freq(mhz); });
}

void txtOUT1_Enter(cPart& part, int i) {
    Enter(part, i, "txtOUT1", &PllPanel::txtOUT1, Tail::FourThenLoad,
          [&](double mhz) { OutputPll(part, i).SetOUT1_Freq(mhz); });
}

void txtOUT0_DIV_Enter(cPart& part, int i) {
    Enter(part, i, "txtOUT0_DIV", &PllPanel::txtOUT0_DIV, Tail::FourThenLoad, [&](double divider) {
        SetOutputDivider(OutputPll(part, i), divider, &cPLL::SetOUT0_DIV);
    });
}

void txtOUT1_DIV_Enter(cPart& part, int i) {
    Enter(part, i, "txtOUT1_DIV", &PllPanel::txtOUT1_DIV, Tail::FourThenLoad, [&](double divider) {
        SetOutputDivider(OutputPll(part, i), divider, &cPLL::SetOUT1_DIV);
    });
}

void pllManualDivide_Enter(cPart& part, int i) {
    Enter(part, i, "pllManualDivide", &PllPanel::pllManualDivide, Tail::FourThenLoad,
          [&](double number) {
              const auto divider = ToInt16(number);
              if (!divider) return;
              cPLL& pll = part.PLLs(i);
              pll.Setextra_pll_n_div_1(*divider);
              pll.save_extra_pll_n_div_1();
          });
}

} // namespace zentrel
