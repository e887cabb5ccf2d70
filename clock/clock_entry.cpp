#include "clock/clock_entry.h"

#include <cmath>
#include <functional>
#include <string>

#include "clock/clk_dist.h"
#include "clock/clock_change.h"
#include "clock/clock_engine.h"
#include "device/part.h"
#include "synth/clock_link.h"
#include "synth/limits.h"
#include "synth/pll.h"
#include "synth/synth_div.h"
#include "transport/load_path.h"

namespace zentrel {
namespace {

constexpr int kTwipsPerPixel = 15;
constexpr int kMarkerMargin = 2 * kTwipsPerPixel;

Displays& DisplaysOf(const cPart& part) {
    return *part.upward().displays;
}

TextBox& BoxOf(ClockPanel& panel, ClockBox box, int channel) {
    switch (box) {
    case ClockBox::RefOSC:
        return panel.txtCLK_RefOSCfreq;
    case ClockBox::VCO:
        return panel.txtCLK_VCOfreq;
    case ClockBox::ExtSRC:
        return panel.txtCLK_ExtSRCfreq;
    case ClockBox::InputDiv:
        return panel.CLKtxt_InputDiv;
    case ClockBox::ChannelDiv:
        break;
    }
    return panel.channels.at(static_cast<std::size_t>(channel)).chDivText;
}

constexpr std::string_view kBoxNames[] = {"txtCLK_RefOSCfreq", "txtCLK_VCOfreq",
                                          "txtCLK_ExtSRCfreq", "CLKtxt_InputDiv", "chDivText"};

std::string_view NameOf(ClockBox box) {
    return kBoxNames[static_cast<std::size_t>(box)];
}

// The crystal is one for block and PLL; its sign means nothing.
void EnterReference(cClkDist& block, double mhz) {
    mhz = std::abs(mhz);
    block.SetRefOSC_Freq(mhz);
    cPLL* pll = block.LinkedPLL();
    if (pll == nullptr) return;
    pll->SetXtalFrequency(mhz);
    const std::string& oscBit = pll->panel.lblPLLOSCBit.Tag;
    if (!oscBit.empty()) block.Part().PrgmBits(oscBit).SetValue(mhz);
}

void EnterVCO(cClkDist& block, double mhz) {
    switch (ClockModeOf(block.Part())) {
    case ClockMode::AllPaths:
    case ClockMode::InternalVCO:
        block.SetIntVCO_Freq(mhz);
        break;
    case ClockMode::ExternalVCO:
        block.SetExtSRC_Freq(mhz);
        break;
    case ClockMode::Distribution:
    case ClockMode::Unknown:
        break;
    }
}

// The number in a box goes to `take`; false when there is none or the change fails.
bool TakeNumber(cClkDist& block, ClockBox box, int channel,
                const std::function<void(double)>& take) {
    const auto number = EntryNumber(BoxOf(block.panel, box, channel).Text);
    return number && ChangeModel(block, NameOf(box), [&] { take(*number); });
}

void SetField(const cPart& part, const std::string& field, double value) {
    if (!field.empty()) part.PrgmBits(field).SetValue(value);
}

bool StepField(cClkDist& block, std::string_view element, const std::string& field, bool up) {
    return ChangeModel(block, element, [&] {
        cPrgmBits& divider = block.Part().PrgmBits(field);
        up ? divider.Increment() : divider.Decrement();
    });
}

void EnterFrequency(cClkDist& block, ClockBox box, void (*take)(cClkDist&, double)) {
    cPart& part = block.Part();
    const bool taken = TakeNumber(block, box, 0, [&](double mhz) { take(block, mhz); });
    part.UpdateDisplays();
    if (taken) LoadIfAutomatic(part);
}

// The divider in the diagram of the linked PLL; a field that isn't there was told by the refresh.
void ShowDividerInPLL(const cClkDist& block) {
    try {
        UpdatePLLandCLKDISTDisplay(block.Part(), block.LinkedPLLInt, block.IDnum);
    } catch (const NotFound&) {
        return;
    }
}

void TakeInputDivider(cClkDist& block) {
    cPart& part = block.Part();
    const bool taken = TakeNumber(block, ClockBox::InputDiv, 0, [&](double value) {
        SetField(part, block.InputDividerBinding(), value);
    });
    DisplaysOf(part).UpdateRegisterDisplay();
    DisplaysOf(part).UpdatePLLDisplay();
    ShowDividerInPLL(block);
    DisplaysOf(part).UpdateCLKDISTDisplay();
    if (taken) LoadChanges(part);
}

void TakeChannelDivider(cClkDist& block, int channel) {
    cPart& part = block.Part();
    const bool taken = TakeNumber(block, ClockBox::ChannelDiv, channel, [&](double value) {
        SetField(part, block.GetClkDividerName(channel), value);
    });
    DisplaysOf(part).UpdateRegisterDisplay();
    DisplaysOf(part).UpdateCLKDISTDisplay();
    if (taken) LoadChanges(part);
}

void ChooseInput(cClkDist& block, int index) {
    cPart& part = block.Part();
    if (part.Updating || index < 0) return;
    const bool chosen = ChangeModel(block, "cbClkInputMux", [&] { SelectInput(part, index); });
    part.UpdateDisplays();
    if (chosen) LoadChanges(part);
}

void ClickBypass(cClkDist& block) {
    cPart& part = block.Part();
    const CheckBox& bypass = block.panel.CLK_VCODIV_bypass;
    if (part.Updating) return;
    ChangeModel(block, "CLK_VCODIV_bypass", [&] {
        if (bypass.Tag.empty()) return;
        cPrgmBits& field = part.PrgmBits(bypass.Tag);
        if (!bypass.Value) {
            field.SetBitValue(block.InputDivBypVal_Clear);
        } else if (field.BitValue() == block.InputDivBypVal_Clear) {
            field.SetBitValue(block.InputDivBypVal);
        }
    });
    part.UpdateDisplays();
}

// A list that stands for one field, whose name is read at each choice.
template<typename FieldOf>
void Connect(cClkDist& block, ListBox& list, std::string_view element, FieldOf fieldOf) {
    list.Click = [&block, &list, element, fieldOf] {
        if (!block.Part().Updating) ChooseListEntry(block, element, fieldOf(), list.ListIndex);
    };
}

template<typename FieldOf>
void ConnectOfChannel(cClkDist& block, ListBox& list, std::string_view element, FieldOf fieldOf) {
    list.Click = [&block, &list, element, fieldOf] {
        if (block.Part().Updating) return;
        block.Part().upward().status->StatusBar_SetString("");
        ChooseListEntry(block, element, fieldOf(), list.ListIndex);
    };
}

} // namespace

void TypeInClockBox(cClkDist& block, ClockBox box, int channel) {
    if (block.Part().ID.empty()) return;
    const TextBox& at = BoxOf(block.panel, box, channel);
    ClockEditMarker& marker = block.panel.marker;
    marker.box = box;
    marker.channel = channel;
    marker.Left = at.Left - kMarkerMargin;
    marker.Top = at.Top - kMarkerMargin;
    marker.Width = at.Width + 2 * kMarkerMargin;
    marker.Height = at.Height + 2 * kMarkerMargin;
    marker.Visible = true;
}

void EnterClockBox(cClkDist& block, ClockBox box, int channel) {
    if (block.Part().ID.empty()) return;
    block.panel.marker.Visible = false;
    switch (box) {
    case ClockBox::RefOSC:
        EnterFrequency(block, box, EnterReference);
        break;
    case ClockBox::VCO:
        EnterFrequency(block, box, EnterVCO);
        break;
    case ClockBox::ExtSRC:
        EnterFrequency(block, box, [](cClkDist& to, double mhz) { to.SetExtSRC_Freq(mhz); });
        break;
    case ClockBox::InputDiv:
        TakeInputDivider(block);
        break;
    case ClockBox::ChannelDiv:
        TakeChannelDivider(block, channel);
        break;
    }
}

void LeaveClockBox(cClkDist& block, ClockBox box, int channel) {
    cPart& part = block.Part();
    if (part.ID.empty()) return;
    block.panel.marker.Visible = false;
    switch (box) {
    case ClockBox::RefOSC:
        TakeNumber(block, box, 0, [&](double mhz) { block.SetRefOSC_Freq(std::abs(mhz)); });
        DisplaysOf(part).UpdateCLKDISTDisplay();
        break;
    case ClockBox::VCO:
        TakeNumber(block, box, 0, [&](double mhz) { block.SetIntVCO_Freq(mhz); });
        part.UpdateDisplays();
        break;
    case ClockBox::ExtSRC:
        TakeNumber(block, box, 0, [&](double mhz) { block.SetExtSRC_Freq(mhz); });
        DisplaysOf(part).UpdateCLKDISTDisplay();
        break;
    case ClockBox::InputDiv:
        break;
    case ClockBox::ChannelDiv:
        TakeChannelDivider(block, channel);
        break;
    }
}

void StepInputDivider(cClkDist& block, bool up) {
    cPart& part = block.Part();
    if (part.ID.empty() || block.InputDividerBinding().empty()) return;
    const bool stepped = StepField(block, "CLKspn_InputDiv", block.InputDividerBinding(), up);
    DisplaysOf(part).UpdateRegisterDisplay();
    DisplaysOf(part).UpdatePLLDisplay();
    if (up) ShowDividerInPLL(block);
    DisplaysOf(part).UpdateCLKDISTDisplay();
    if (stepped) LoadChanges(part);
}

void StepChannelDivider(cClkDist& block, int channel, bool up) {
    cPart& part = block.Part();
    const std::string& field = block.GetClkDividerName(channel);
    if (part.ID.empty() || field.empty()) return;
    const bool stepped = StepField(block, "chDivSpnFpd", field, up);
    DisplaysOf(part).UpdateRegisterDisplay();
    DisplaysOf(part).UpdateBitDisplay();
    DisplaysOf(part).UpdateCLKDISTDisplay();
    if (stepped) LoadChanges(part);
}

void ConnectClockLists(cClkDist& block) {
    ClockPanel& panel = block.panel;
    panel.cbClkInputMux.Click = [&block] { ChooseInput(block, block.InputMuxIndex()); };
    panel.CLK_VCODIV_bypass.Click = [&block] { ClickBypass(block); };
    Connect(block, panel.CB_CLK_Delay_N, "CB_CLK_Delay_N",
            [&panel] { return panel.CB_CLK_Delay_N.Tag; });
    Connect(block, panel.CB_CLK_Delay_R, "CB_CLK_Delay_R",
            [&panel] { return panel.CB_CLK_Delay_R.Tag; });
    for (int c = 0; c < kClockChannels; ++c) {
        ClockChannelRow& row = panel.channels[static_cast<std::size_t>(c)];
        ConnectOfChannel(block, row.divCB_CDelay, "divCB_CDelay",
                         [&block, c] { return block.GetClkDelayName(c); });
        ConnectOfChannel(block, row.divCB_CMux, "divCB_CMux",
                         [&block, c] { return block.GetClkMuxName(c); });
        ConnectOfChannel(block, row.divCB_od, "divCB_od",
                         [&block, c] { return block.GetClkEnableName(c); });
    }
}

void ChooseListEntry(cClkDist& block, std::string_view element, const std::string& field,
                     int index) {
    if (index < 0) return;
    cPart& part = block.Part();
    const bool chosen =
        ChangeModel(block, element, [&] { part.PrgmBits(field).SetBitValue(index); });
    DisplaysOf(part).UpdateBitDisplay();
    DisplaysOf(part).UpdateRegisterDisplay();
    DisplaysOf(part).UpdatePLLDisplay();
    DisplaysOf(part).UpdateCLKDISTDisplay();
    if (chosen) LoadIfAutomatic(part);
}

} // namespace zentrel
