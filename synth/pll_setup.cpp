#include "synth/pll_setup.h"

#include <memory>

#include "device/number_text.h"
#include "device/part.h"
#include "partfile/part_definition.h"
#include "synth/clock_link.h"
#include "synth/panel_change.h"

namespace zentrel {
namespace {

PllPanel& LastPanel(cPart& part) {
    return part.PLLs(part.PLLs.Count()).panel;
}

template<typename... Elements>
void Show(bool visible, Elements&... elements) {
    ((elements.Visible = visible), ...);
}

void BindOrDisable(Label& label, std::string_view field, std::string_view without) {
    label.Enabled = !field.empty();
    label.Tag = field;
    if (field.empty()) label.Caption = without;
}

void ShowPin(Label& label, std::string_view pin) {
    label.Visible = !pin.empty();
    label.Caption = pin;
}

// Enters a new block's tab into the device's look-ups.
void EnterTab(cPart& part, const std::string& name, int tab) {
    const std::string number = std::to_string(tab);
    part.pll_tabnames.Add(std::make_shared<int>(tab), name);
    part.tab_id_type.Add(std::make_shared<std::string>("PLL"),
                         std::to_string(part.tab_id_type.Count()));
    // Without a tab strip every block has the same number, and no look-up by it can mean one.
    if (!part.tab_id_num.Contains(number)) {
        part.tab_id_num.Add(std::make_shared<int>(part.pll_tabnames.Count()), number);
    }
    part.tabdata.Add(std::make_shared<int>(tab));
}

void SetupDivider(cPart& part, cPLL& pll, int output, std::string_view field) {
    PllPanel& panel = pll.panel;
    TextBox& divider = output == 0 ? panel.txtOUT0_DIV : panel.txtOUT1_DIV;
    TextBox& frequency = output == 0 ? panel.txtOUT0 : panel.txtOUT1;
    Spinner& spinner = output == 0 ? panel.SpnOUT0_DIV : panel.SpnOUT1_DIV;
    const bool has = !field.empty();
    Show(has, divider, frequency, spinner);
    if (output == 1) panel.linpll[pll_diagram::kOut1Line].Visible = has;
    if (!has) {
        frequency.Text = "1";
        return;
    }
    divider.Tag = field;
    try {
        pll.FollowOutputField(output);
    } catch (const Error& error) {
        TellOnce(part, panel, output == 0 ? "txtOUT0_DIV" : "txtOUT1_DIV", error);
    }
    divider.Text = NumberToText(output == 0 ? pll.OUT0_DIV() : pll.OUT1_DIV());
}

} // namespace

cPLL& LoadPLL(cPart& part, const PllEntry& e) {
    cPLL& pll = AddPLL(part, e.name, e.n, e.r, e.doubler, e.entry);
    SetupPLL(part, e.pd, e.ipo, e.tri, e.np, e.doubler, e.oscInPin, e.fOutPin, e.fInPin,
             e.cpOutPin);
    SetupPLLFraction(part, e.name, e.fractNum, e.fractDen);
    SetupOutputs(part, e.name, e.out0Div, e.out0Pin, e.out1Div, e.out1Pin);
    SetupCrystal(part, e.name, e.oscIn);
    SetupOSCBit(part, e.oscBit);
    SetupRanges(part, {e.vcoMin, e.vcoMax, e.oscMin, e.oscMax, e.fpdMin, e.fpdMax, e.nCheckType,
                       e.npMidFrequency, e.nCheckLowRange, e.nCheckHighRange});
    return pll;
}

cPLL& AddPLL(cPart& part, std::string_view pllname, std::string_view NPrgmBits,
             std::string_view RPrgmBits, std::string_view OSC2XPrgmBits, int entry) {
    const auto pll = std::make_shared<cPLL>(part);
    pll->SetID(pllname);
    pll->SetOSC2X(OSC2XPrgmBits);
    pll->SetNCounter(NPrgmBits);
    pll->SetRCounter(RPrgmBits);
    pll->entry = entry;
    part.PLLs.Add(pll, pll->ID());
    pll->SetIDnum(static_cast<std::int16_t>(part.PLLs.Count()));
    if (part.Lines == 0) {
        part.Lines = kPllLines;
        part.Shapes = kPllShapes;
        part.Labels = kPllLabels;
    }
    const int tab = part.upward().builder->AddPLLTab(*pll);
    EnterTab(part, pll->ID(), tab);
    pll->SetPLLTab(static_cast<std::int16_t>(tab));
    PllPanel& panel = pll->panel;
    for (TextBox* box :
         {&panel.txtRCounter, &panel.txtNCounter, &panel.txtOsc, &panel.txtVCO, &panel.txtFpd}) {
        box->Tag = pll->ID();
    }
    return *pll;
}

void SetupPLL(cPart& part, std::string_view PDPol, std::string_view CPGain,
              std::string_view CPState, std::string_view NP, std::string_view Doubler,
              std::string_view OSCinPin, std::string_view FoutPin, std::string_view FinPin,
              std::string_view CPoutPin) {
    PllPanel& panel = LastPanel(part);
    BindOrDisable(panel.lblPDPol, PDPol, "+");
    BindOrDisable(panel.lblCPGain, CPGain, "Icp");
    BindOrDisable(panel.lblCPState, CPState, "Active");

    panel.lblDoubler.Tag = Doubler;
    Show(!Doubler.empty(), panel.lblDoubler, panel.shpPLL[pll_diagram::kDoublerBox],
         panel.lblPLL[pll_diagram::kDoublerLabel]);
    Show(Doubler.empty(), panel.linpll[pll_diagram::kDoublerGapLine]);

    panel.lblNPrescale.Tag = NP;
    Show(!NP.empty(), panel.lblNPrescale, panel.shpPLL[pll_diagram::kPrescalerBox],
         panel.lblPLL[pll_diagram::kPrescalerLabel]);

    const bool internal = FoutPin == "INTERNAL";
    ShowPin(panel.lblPLLFoutPin, internal ? std::string_view{} : FoutPin);
    Show(!FoutPin.empty(), panel.shpPLLintVCO);
    Show(!FoutPin.empty() && !internal, panel.linpll[pll_diagram::kFoutLine]);
    ShowPin(panel.lblPLLFinPin, FinPin);
    ShowPin(panel.lblPLLCPoutPin, CPoutPin);
    ShowPin(panel.lblPLLOSCinPin, OSCinPin);
}

void SetupPLLFraction(cPart& part, std::string_view pllname, std::string_view num,
                      std::string_view den) {
    PllPanel& panel = LastPanel(part);
    const bool fractional = !num.empty();
    Show(fractional, panel.txtFractNum, panel.SpnFractNum, panel.txtFractDen, panel.spnFractDen,
         panel.lblPLL[pll_diagram::kFractionLabel]);
    if (!fractional) return;
    cPLL& pll = PllOfTag(part, pllname, part.PLLs.Count());
    pll.SetNumerator(num);
    pll.SetDenominator(den);
    panel.txtFractNum.Tag = panel.SpnFractNum.Tag = num;
    panel.txtFractDen.Tag = panel.spnFractDen.Tag = den;
}

void SetupFraction(cPart& part, std::string_view num, std::string_view den) {
    SetupPLLFraction(part, part.PLLs(part.PLLs.Count()).ID(), num, den);
}

void SetupOutputs(cPart& part, std::string_view pllname, std::string_view OUT0_DIV,
                  std::string_view Out0Pin, std::string_view OUT1_DIV, std::string_view Out1Pin) {
    cPLL& pll = PllOfTag(part, pllname, part.PLLs.Count());
    PllPanel& panel = LastPanel(part);
    ShowPin(panel.lblPLLOut0Pin, Out0Pin);
    Show(!Out0Pin.empty(), panel.shpPLLintOutputs, panel.linpll[pll_diagram::kOut0Line],
         panel.linpll[pll_diagram::kOut0PinLine]);
    ShowPin(panel.lblPLLOut1Pin, Out1Pin);
    SetupDivider(part, pll, 0, OUT0_DIV);
    SetupDivider(part, pll, 1, OUT1_DIV);
}

void SetupCrystal(cPart& part, std::string_view pllname, double mhz) {
    cPLL& pll = PllOfTag(part, pllname, part.PLLs.Count());
    pll.SetXtalFrequency(mhz);
    if (pll.LinkedCLKDist().empty()) return;
    if (LinkedBlock* block = LinkedBlockOf(pll)) block->SetRefOSC_Freq(pll.XtalFrequency());
}

void SetupOSCBit(cPart& part, std::string_view name) {
    Label& label = LastPanel(part).lblPLLOSCBit;
    label.Visible = !name.empty();
    if (name.empty()) return;
    label.Tag = name;
    label.Caption = name;
}

void SetupRanges(cPart& part, const PllRanges& ranges) {
    PllPanel& panel = LastPanel(part);
    const auto carry = [](Label& label, std::string_view caption, std::string_view tag) {
        label.Caption = caption;
        label.Tag = tag;
    };
    carry(panel.lblVCO_Range, ranges.vcoMin, ranges.vcoMax);
    carry(panel.lblOSC_Range, ranges.oscMin, ranges.oscMax);
    carry(panel.lblFpd_Range, ranges.fpdMin, ranges.fpdMax);
    carry(panel.lblNCheck1, ranges.nCheckType, ranges.npMidFrequency);
    carry(panel.lblNCheck2, ranges.nCheckLowRange, ranges.nCheckHighRange);
}

void ClearPLL(cPart& part) {
    TabStrip& tabs = *part.upward().tabs;
    const int fixed = part.session().raw_tab_tally;
    if (tabs.SelectedTab() >= fixed) tabs.SelectTab(0);
    tabs.KeepTabs(fixed);
    part.Lines = part.Shapes = part.Labels = 0;
    part.ClearFieldsAndRegisters();
}

} // namespace zentrel
