#include "clock/clock_setup.h"

#include <cmath>
#include <memory>
#include <string>

#include "clock/clk_dist.h"
#include "clock/clock_entry.h"
#include "clock/display_mode.h"
#include "device/number_text.h"
#include "device/part.h"
#include "partfile/part_definition.h"
#include "synth/pll.h"

namespace zentrel {
namespace {

std::int16_t CountFromText(std::string_view text, std::int16_t otherwise) {
    const auto number = ParseNumber(text);
    return number ? ToInt16(std::floor(*number)).value_or(otherwise) : otherwise;
}

void LinkWithPLL(const cPart& part, cClkDist& block, std::string_view pllName) {
    block.SetLinkedPLLName(pllName);
    if (pllName.empty()) return;
    for (int i = 1; i <= part.PLLs.Count(); ++i) {
        cPLL& pll = part.PLLs(i);
        if (pll.ID() != pllName) continue;
        block.LinkedPLLInt = static_cast<std::int16_t>(i);
        pll.SetLinkedCLKDist(block.ID());
        pll.SetLinkedCLKDistInt(static_cast<std::int16_t>(part.ClkDists.Count() + 1));
    }
    if (const cPLL* pll = block.LinkedPLL()) {
        block.panel.clkDist_R_value.Tag = pll->RCounterName();
        block.panel.clkDist_N_value.Tag = pll->NCounterName();
        block.panel.clkDist_PDF_value.Tag = pll->ID();
    }
}

// The tables of tabs are keyed; a second block of the same name still has its entry.
template<typename T>
void AddEntry(KeyedCollection<T>& table, T value, const std::string& key) {
    table.Add(std::make_shared<T>(std::move(value)), table.Contains(key) ? std::string() : key);
}

void RecordTab(cPart& part, const std::string& blockName, int tab) {
    AddEntry(part.clkdist_tabnames, tab, blockName);
    AddEntry(part.tab_id_type, std::string("CLKDIST"), std::to_string(part.tab_id_type.Count()));
    AddEntry(part.tab_id_num, part.ClkDists.Count(), std::to_string(tab));
    part.tabdata.Add(std::make_shared<int>(tab));
}

void NoteTemplateSizes(cPart& part) {
    part.labelsCLK = kClockLabels;
    part.ShapesCLK = kClockShapes;
    part.LinesCLK = kClockLines;
}

// Fills a list with the entries of a field; false when there is no such field.
bool FillList(const cPart& part, ListBox& list, std::string_view field) {
    list.Clear();
    const cPrgmBits* source = part.PrgmBits.Find(field);
    if (source == nullptr) return false;
    list.List = source->StringArray();
    return true;
}

bool BindDelay(const cPart& part, ListBox& list, std::string_view field) {
    list.Tag = field;
    list.Enabled = !field.empty();
    return field.empty() || FillList(part, list, field);
}

void TellMissing(const cPart& part, std::string_view field, std::string_view statement) {
    part.upward().messages->Show("Error... No program bit: " + std::string(field) +
                                 " required for: " + std::string(statement));
}

} // namespace

cClkDist& AddClkDist(cPart& part, std::string_view ClkDistName, std::string_view VCOCount,
                     std::string_view ClockCount, std::string_view sClkPLL_Link,
                     std::int16_t ClockDistNumber) {
    const auto block = std::make_shared<cClkDist>(part, ClkDistName);
    block->VCOCount = CountFromText(VCOCount, 1);
    block->ClockCount = CountFromText(ClockCount, 0);
    LinkWithPLL(part, *block, sClkPLL_Link);

    block->ClkDistTab = -1;
    block->entry = ClockDistNumber;
    part.ClkDists.Add(block, std::to_string(part.ClkDists.Count()));
    block->IDnum = static_cast<std::int16_t>(part.ClkDists.Count());
    NoteTemplateSizes(part);
    ConnectClockLists(*block);

    const int tab = part.upward().builder->AddClkDistsTab(*block);
    RecordTab(part, block->ID(), tab);
    block->ClkDistTab = static_cast<std::int16_t>(tab);
    Show_n_Channels(*block, block->ClockCount);
    return *block;
}

void SetupCLKDIST(cPart& part, std::string_view sNDelay, std::string_view sRDelay,
                  std::string_view sINPUT_DIV, std::string_view sINPUT_DIV_BYP,
                  std::string_view sINPUT_MUX, double dRefOSC_Freq, double dExtSRC_Freq,
                  double dIntVCO_Freq) {
    if (part.ClkDists.empty()) return;
    cClkDist& block = part.ClkDists(part.ClkDists.Count());
    ClockPanel& panel = block.panel;

    if (!BindDelay(part, panel.CB_CLK_Delay_N, sNDelay)) {
        TellMissing(part, sNDelay, "iCount = Part.PrgmBits(sNDelay).GetStringArray(slist())");
        return;
    }
    BindDelay(part, panel.CB_CLK_Delay_R, sRDelay);

    panel.CLKtxt_InputDiv.Tag = sINPUT_DIV;
    panel.CLKtxt_InputDiv.Enabled = !sINPUT_DIV.empty();
    panel.CLKspn_InputDiv.Enabled = !sINPUT_DIV.empty();
    if (sINPUT_DIV.empty()) panel.CLKtxt_InputDiv.Text = "1";

    panel.CLK_VCODIV_bypass.Tag = sINPUT_DIV_BYP;
    panel.CLK_VCODIV_bypass.Enabled = !sINPUT_DIV_BYP.empty();

    block.SetRefOSC_Freq(dRefOSC_Freq);
    block.SetExtSRC_Freq(dExtSRC_Freq);
    block.SetIntVCO_Freq(dIntVCO_Freq);
    block.InputMuxName = sINPUT_MUX;
}

void AddCLKChannel(cPart& part, int which_channel, std::string_view sClkDivName,
                   std::string_view sClkDelayName, std::string_view sClkMuxName,
                   std::string_view sClkENName) {
    if (part.ClkDists.empty() || which_channel < 0 || which_channel > kClockChannels) return;
    cClkDist& block = part.ClkDists(part.ClkDists.Count());
    block.SetClkDividerName(which_channel, sClkDivName);
    block.SetClkDelayName(which_channel, sClkDelayName);
    block.SetClkMuxName(which_channel, sClkMuxName);
    block.SetClkEnableName(which_channel, sClkENName);
    if (which_channel == kClockChannels) return;

    ClockChannelRow& row = block.panel.channels[static_cast<std::size_t>(which_channel)];
    if (!FillList(part, row.divCB_CDelay, sClkDelayName)) {
        TellMissing(part, sClkDelayName,
                    "iCount = Part.PrgmBits(sClkDelayName).GetStringArray(slist())");
        return;
    }
    FillList(part, row.divCB_CMux, sClkMuxName);
    row.divCB_od.Clear();
    row.divCB_od.List = {"Disabled", "Enabled"};
}

cClkDist& LoadClkDist(cPart& part, const ClkDistEntry& entry) {
    cClkDist& block = AddClkDist(part, entry.name, std::to_string(entry.vcoCount),
                                 std::to_string(entry.clockCount), entry.pll,
                                 static_cast<std::int16_t>(part.ClkDists.Count()));
    block.entry = entry.entry;
    SetupCLKDIST(part, entry.nDelay, entry.rDelay, entry.inputDiv, entry.inputDivByp,
                 entry.inputMux, entry.refOscFreq, entry.extSrcFreq, entry.intVcoFreq);
    for (std::size_t c = 0; c < entry.channels.size(); ++c) {
        const ClockChannel& channel = entry.channels[c];
        AddCLKChannel(part, static_cast<int>(c), channel.divider, channel.delay, channel.mux,
                      channel.enable);
    }
    block.LF_C3 = entry.lfC3;
    block.LF_R3 = entry.lfR3;
    block.LF_C4 = entry.lfC4;
    block.LF_R4 = entry.lfR4;
    block.LF_C3C4 = entry.lfC3C4;
    block.SetInputDividerName(entry.inputDiv);
    block.InputMuxName = entry.inputMux;
    block.InputDivBypVal = entry.inputDivBypVal;
    block.InputDivBypVal_Clear = entry.inputDivBypClearVal;
    if (SetDisplayMode(part, entry.displayType) < 0) {
        part.upward().messages->Show("Failed to set display mode " + entry.displayType);
    }
    return block;
}

void ClearClkDist(cPart& part) {
    for (int left = part.ClkDists.Count(); left > 0 && !part.clkdist_tabnames.empty(); --left) {
        part.clkdist_tabnames.Remove(1);
    }
    part.ClkDists.Clear();
    // A refresh that gave up on these blocks holds no flag any more.
    const UpdatingScope lowered(part);
}

} // namespace zentrel
