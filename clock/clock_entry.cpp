#include "clock/clock_entry.h"

#include <cmath>
#include <functional>
#include <iterator>
#include <string>

#include "clock/clk_dist.h"
#include "clock/clock_engine.h"
#include "device/part.h"
#include "synth/clock_link.h"
#include "synth/limits.h"
#include "synth/panel_change.h"
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

void LoadIfAutomatic(cPart& part) {
    if (part.upward().options->AutoReloadWithChanges()) LoadChanges(part);
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

// Runs a change of the model that `element` asks for. One that fails changes nothing and is told.
// Behind a hook that failed the words stand, so the displays show them before the failure travels.
bool Change(cClkDist& block, std::string_view element, const std::function<void()>& change) {
    cPart& part = block.Part();
    try {
        if (block.LinkedPLL() != nullptr) {
            AllOrNothing(part, block.LinkedPLLInt, change);
        } else {
            part.journal().Attempt(block.ID(), [&] {
                change();
                return true;
            });
        }
        return true;
    } catch (const ScriptFailure&) {
        part.UpdateDisplays();
        throw;
    } catch (const Error& error) {
        TellFailedElement(part, element, error);
        return false;
    }
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
    return number && Change(block, NameOf(box), [&] { take(*number); });
}

void SetField(const cPart& part, const std::string& field, double value) {
    if (!field.empty()) part.PrgmBits(field).SetValue(value);
}

void StepField(cClkDist& block, std::string_view element, const std::string& field, bool up) {
    Change(block, element, [&] {
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

void SelectInput(const cPart& part, void (*choose)(const cPart&), double mode) {
    if (ClockModeBit(part) == kTestMode) {
        choose(part);
    } else {
        part.PrgmBits("MODE").SetBitValue(mode);
    }
}

void ChooseInput(cClkDist& block, int index) {
    cPart& part = block.Part();
    constexpr void (*kTestModeChoices[])(const cPart&) = {SetVCO_TM, SetExtVCO_TM,
                                                          SetDistribution_TM, SetOSCin_TM};
    const bool choice = index >= 0 && index < static_cast<int>(std::size(kTestModeChoices));
    if (part.Updating || !choice) return;
    const bool chosen =
        Change(block, "cbClkInputMux", [&] { SelectInput(part, kTestModeChoices[index], index); });
    part.UpdateDisplays();
    if (chosen) LoadChanges(part);
}

void ClickBypass(cClkDist& block) {
    cPart& part = block.Part();
    const CheckBox& bypass = block.panel.CLK_VCODIV_bypass;
    if (part.Updating) return;
    Change(block, "CLK_VCODIV_bypass", [&] {
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

bool Inside(const Shape& shape, int x, int y) {
    return x >= shape.Left && y >= shape.Top && x < shape.Left + shape.Width &&
           y < shape.Top + shape.Height;
}

constexpr int kHotShapes[] = {clk_shape::kVcoTerminal, clk_shape::kExternalTerminal,
                              clk_shape::kReferenceTerminal, clk_shape::kLoopFilter,
                              clk_shape::kPll};

Shape& ShapeAt(ClockPanel& panel, int k) {
    return panel.shpCLK[static_cast<std::size_t>(k)];
}

OpenLoopFilter ClickShape(cClkDist& block, int k) {
    switch (k) {
    case clk_shape::kVcoTerminal:
        ClickTerminal(block, ClockInput::VCO);
        break;
    case clk_shape::kExternalTerminal:
        ClickTerminal(block, ClockInput::External);
        break;
    case clk_shape::kReferenceTerminal:
        ClickTerminal(block, ClockInput::Reference);
        break;
    case clk_shape::kPll:
        ClickLinkedPLL(block);
        break;
    case clk_shape::kLoopFilter: {
        const ClockMode mode = ClockModeOf(block.Part());
        const bool opens = mode == ClockMode::InternalVCO || mode == ClockMode::AllPaths;
        return opens ? OpenLoopFilter::Modal : OpenLoopFilter::No;
    }
    default:
        break;
    }
    return OpenLoopFilter::No;
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
    StepField(block, "CLKspn_InputDiv", block.InputDividerBinding(), up);
    DisplaysOf(part).UpdateRegisterDisplay();
    DisplaysOf(part).UpdatePLLDisplay();
    if (up) ShowDividerInPLL(block);
    DisplaysOf(part).UpdateCLKDISTDisplay();
    LoadChanges(part);
}

void StepChannelDivider(cClkDist& block, int channel, bool up) {
    cPart& part = block.Part();
    const std::string& field = block.GetClkDividerName(channel);
    if (part.ID.empty() || field.empty()) return;
    StepField(block, "chDivSpnFpd", field, up);
    DisplaysOf(part).UpdateRegisterDisplay();
    DisplaysOf(part).UpdateBitDisplay();
    DisplaysOf(part).UpdateCLKDISTDisplay();
    LoadChanges(part);
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
    const bool chosen = Change(block, element, [&] { part.PrgmBits(field).SetBitValue(index); });
    DisplaysOf(part).UpdateBitDisplay();
    DisplaysOf(part).UpdateRegisterDisplay();
    DisplaysOf(part).UpdatePLLDisplay();
    DisplaysOf(part).UpdateCLKDISTDisplay();
    if (chosen) LoadIfAutomatic(part);
}

void ClickTerminal(cClkDist& block, ClockInput terminal) {
    cPart& part = block.Part();
    if (ClockModeOf(part) != ClockMode::AllPaths || terminal == ClockInput::None) return;
    Change(block, "cbClkInputMux", [&] {
        if (terminal == ClockInput::VCO) SelectInput(part, SetVCO_TM, 0);
        if (terminal == ClockInput::External) SelectInput(part, SetExtVCO_TM, 1);
        if (terminal == ClockInput::Reference) SelectInput(part, SetOSCin_TM, 3);
        UpdateFreqs(part, block.IDnum);
    });
    if (block.LinkedPLL() != nullptr) {
        const bool vco = terminal == ClockInput::VCO;
        vco ? ShowSynthDiv(part, block.LinkedPLLInt) : HideSynthDiv(part, block.LinkedPLLInt);
    }
    part.UpdateDisplays();
}

OpenLoopFilter ClickClockLabel(cClkDist& block, int k) {
    if (k >= clk_label::kR3 && k <= clk_label::kC4) return OpenLoopFilter::Modeless;
    if (k >= clk_label::kReadoutR && k <= clk_label::kReadoutN) ClickLinkedPLL(block);
    return OpenLoopFilter::No;
}

void ClickLinkedPLL(const cClkDist& block) {
    const cPart& part = block.Part();
    if (ClockModeOf(part) == ClockMode::Distribution) return;
    if (const cPLL* pll = block.LinkedPLL()) part.upward().tabs->SelectTab(pll->PLLTab());
}

OpenLoopFilter ClickDiagram(cClkDist& block, int x, int y) {
    for (const int k : kHotShapes) {
        if (Inside(ShapeAt(block.panel, k), x, y)) return ClickShape(block, k);
    }
    return OpenLoopFilter::No;
}

void HoverDiagram(cClkDist& block, int x, int y) {
    for (const int k : kHotShapes) {
        Shape& shape = ShapeAt(block.panel, k);
        const bool under = Inside(shape, x, y);
        shape.BorderColor = under ? colors::kRed : colors::kBlack;
        shape.BorderWidth = under ? 2 : 1;
    }
}

cClkDist* BlockOfTab(const cPart& part, int tab) {
    for (cClkDist& block : part.ClkDists) {
        if (block.ClkDistTab == tab) return &block;
    }
    return nullptr;
}

} // namespace zentrel
