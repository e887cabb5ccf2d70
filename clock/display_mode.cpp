#include "clock/display_mode.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <span>
#include <string>

#include "clock/clk_dist.h"
#include "clock/clock_engine.h"
#include "device/part.h"
#include "device/text.h"
#include "synth/clock_link.h"

namespace zentrel {
namespace {

// A group of drawing elements by their template numbers.
struct DrawingGroup {
    std::initializer_list<int> labels, shapes, lines;
};

constexpr DrawingGroup kPllVcoGroup = {
    {6, 7, 8, 9, 10, 24, 25, 30, 31, 32, 33, 34, 35, 36, 37},
    {1, 15, 16, 17, 18, 20, 21},
    {1, 2, 8, 9, 10, 11, 12, 21, 30},
};
constexpr DrawingGroup kDividerGroup = {
    {clk_label::kVcoDivider, clk_label::kDivided, clk_label::kDividedMHz},
    {clk_shape::kVcoDivider},
    {clk_line::kVcoToDivider, clk_line::kDividerToMux},
};
constexpr DrawingGroup kFilterGroup = {
    {clk_label::kInternalFilter, 30, 31, 32, 33}, {clk_shape::kLoopFilter}, {}};
constexpr DrawingGroup kExternalSourceGroup = {
    {clk_label::kExternalSource, clk_label::kExternalSign, clk_label::kExternalMHz},
    {clk_shape::kExternalSource},
    {clk_line::kExternalOut, clk_line::kExternalToMux},
};
constexpr DrawingGroup kInputMuxGroup = {
    {clk_label::kInputMux},
    {clk_shape::kVcoTerminal, clk_shape::kExternalTerminal, clk_shape::kReferenceTerminal,
     clk_shape::kInputMux},
    {clk_line::kMuxPointer, clk_line::kMuxUpper, clk_line::kMuxLower, clk_line::kReferenceToMux},
};
constexpr DrawingGroup kReferenceGroup = {
    {clk_label::kReference, clk_label::kReferenceSign, clk_label::kOscIn, clk_label::kReferenceMHz},
    {clk_shape::kReference},
    {clk_line::kReferenceOut},
};

// The three paths of the diagram, as lines.
constexpr int kReferencePath[] = {clk_line::kReferenceOut, clk_line::kReferenceToMux};
constexpr int kExternalPath[] = {clk_line::kExternalOut, clk_line::kExternalToMux};
constexpr int kVcoPath[] = {21, 30};
constexpr int kDividerRun[] = {clk_line::kVcoToDivider, clk_line::kDividerToMux};
constexpr int kDistributionPath[] = {clk_line::kReferenceDirect};

template<typename Family>
auto& At(Family& family, int k) {
    return family[static_cast<std::size_t>(k)];
}

void Show(ClockPanel& panel, const DrawingGroup& group, bool b) {
    for (const int k : group.labels)
        At(panel.lblCLK, k).Visible = b;
    for (const int k : group.shapes)
        At(panel.shpCLK, k).Visible = b;
    for (const int k : group.lines)
        At(panel.LineCLK, k).Visible = b;
}

void ShowFilterValues(cClkDist& block, bool b) {
    ClockPanel& panel = block.panel;
    panel.clkdist_R3.Visible = b && !block.LF_R3.empty();
    panel.clkdist_R4.Visible = b && !block.LF_R4.empty();
    panel.clkdist_C3.Visible = b && !block.LF_C3C4.empty();
    panel.clkdist_C4.Visible = b && !block.LF_C3C4.empty();
}

void ShowBypass(ClockPanel& panel, bool b) {
    panel.CLK_VCODIV_bypass.Visible = b && !panel.CLK_VCODIV_bypass.Tag.empty();
}

void ShowGlobalDelay(ClockPanel& panel, bool b) {
    const bool both = !panel.CB_CLK_Delay_N.Tag.empty() && !panel.CB_CLK_Delay_R.Tag.empty();
    At(panel.shpCLK, clk_shape::kGlobalDelay).Visible = b && both;
    At(panel.lblCLK, clk_label::kGlobalDelay).Visible = b && both;
    panel.CB_CLK_Delay_N.Visible = b && both;
    panel.CB_CLK_Delay_R.Visible = b && both;
}

// The entries and readouts of the PLL and VCO group that every block has.
void ShowPllVco(ClockPanel& panel, bool b) {
    Show(panel, kPllVcoGroup, b);
    for (Element* element : std::initializer_list<Element*>{
             &panel.clkDist_R_value, &panel.clkDist_N_value, &panel.clkDist_PDF_value,
             &panel.txtCLK_VCOfreq, &panel.CLKtxt_InputDiv, &panel.CLKspn_InputDiv,
             &panel.CLKtxt_InputDivOutFreq, &panel.txtCLK_RefOSCfreq}) {
        element->Visible = b;
    }
}

void ShowChannel(ClockPanel& panel, int c, bool b) {
    ClockChannelRow& row = At(panel.channels, c);
    for (Element* element : std::initializer_list<Element*>{
             &row.chDivText, &row.chDivSpnFpd, &row.divCB_CDelay, &row.divCB_CMux, &row.divCB_od,
             &row.divCHtxt_freq, &row.lblCLKid, &At(panel.lblCLK, clk_label::kFirstMHz + c),
             &At(panel.LineCLK, clk_line::kFirstRow + 2 * c),
             &At(panel.LineCLK, clk_line::kFirstRow + 2 * c + 1)}) {
        element->Visible = b;
    }
}

void Embolden(ClockPanel& panel, std::span<const int> lines, bool bold) {
    for (const int k : lines)
        At(panel.LineCLK, k).BorderWidth = bold ? 2 : 1;
}

// All of a block's diagram. What the block lacks stays away when it shows.
void ShowDiagram(cClkDist& block, bool b) {
    ClockPanel& panel = block.panel;
    const auto show = [b](auto& family) {
        for (Element& element : family)
            element.Visible = b;
    };
    show(panel.lblCLK);
    show(panel.shpCLK);
    show(panel.LineCLK);
    panel.txtCLK_ExtSRCfreq.Visible = b;
    Set_PLL_VCO(block, b);
    Show_n_Channels(block, b ? block.ShownChannels() : 0);
    panel.cbClkInputMux.Visible = b && ClockModeOf(block.Part()) == ClockMode::AllPaths;
    if (b) panel.layout = {};
}

struct ModeRow {
    ClockMode mode;
    bool pllVco, vcoInternal, externalSource;
    void (*further)(cClkDist& block, bool b);
    bool inputMux; ///< `cbClkInputMux` shows.
};
constexpr ModeRow kModes[] = {
    {ClockMode::AllPaths, true, true, true, nullptr, true},
    {ClockMode::InternalVCO, true, true, true, Set_Internal_VCO_Only, false},
    {ClockMode::ExternalVCO, true, false, false, Set_External_VCO_Only, false},
    {ClockMode::Distribution, false, false, true, MoveEverythingUpForDistOnly, false},
};

void ShapeDiagram(cClkDist& block, const ModeRow& row) {
    // What another mode took out of the diagram comes back first.
    for (const ModeRow& other : kModes) {
        if (other.further != nullptr && &other != &row) other.further(block, false);
    }
    Set_PLL_VCO(block, row.pllVco);
    SetVCOInternal(block, row.vcoInternal);
    SetExternalSource(block, row.externalSource);
    if (row.further != nullptr) {
        row.further(block, true);
        Display_AdjustA2(block);
    }
    block.panel.cbClkInputMux.Visible = row.inputMux;
}

} // namespace

int SetDisplayMode(cPart& part, std::string_view themode) {
    part.clkdistDisplayMode = themode;
    const auto* row = std::find_if(
        std::begin(kModes), std::end(kModes),
        [mode = ClockModeOf(part)](const ModeRow& candidate) { return candidate.mode == mode; });
    const bool known = row != std::end(kModes);
    if (known && !part.ClkDists.empty()) ShapeDiagram(part.ClkDists(1), *row);
    part.UpdateDisplays();
    return known ? 1 : -1;
}

void Show_n_Channels(cClkDist& block, int N) {
    if (N > block.ClockCount) {
        block.Part().upward().messages->Show("Attempting to show " + std::to_string(N) +
                                             " channels.  Max channel count is " +
                                             std::to_string(block.ClockCount));
        return;
    }
    ClockPanel& panel = block.panel;
    for (int k = clk_label::kFirstHeader; k <= clk_label::kLastHeader; ++k)
        At(panel.lblCLK, k).Visible = N > 0;
    for (int k = clk_shape::kFirstHeaderMark; k <= clk_shape::kLastHeaderMark; ++k)
        At(panel.shpCLK, k).Visible = N > 0;
    for (int c = 0; c < kClockChannels; ++c)
        ShowChannel(panel, c, c < N);

    constexpr int kJoins = clk_shape::kLastRowJoin - clk_shape::kFirstRowJoin + 1;
    for (int row = 0; row < kJoins; ++row)
        At(panel.shpCLK, clk_shape::kFirstRowJoin + row).Visible = row < N;
    At(panel.shpCLK, clk_shape::kRowBeyond).Visible = N > kJoins;
}

void Set_PLL_VCO(cClkDist& block, bool b) {
    ShowPllVco(block.panel, b);
    ShowGlobalDelay(block.panel, b);
    ShowFilterValues(block, b);
    ShowBypass(block.panel, b);
}

void Show_PLL(ClockPanel& design) {
    ShowPllVco(design, true);
    At(design.shpCLK, clk_shape::kGlobalDelay).Visible = true;
    At(design.lblCLK, clk_label::kGlobalDelay).Visible = true;
    for (Element* element : std::initializer_list<Element*>{
             &design.CB_CLK_Delay_N, &design.CB_CLK_Delay_R, &design.clkdist_R3, &design.clkdist_R4,
             &design.clkdist_C3, &design.clkdist_C4}) {
        element->Visible = true;
    }
}

void SetVCOInternal(cClkDist& block, bool b) {
    ClockPanel& panel = block.panel;
    Show(panel, kDividerGroup, b);
    panel.CLKtxt_InputDiv.Visible = b;
    panel.CLKtxt_InputDivOutFreq.Visible = b;
    panel.CLKspn_InputDiv.Visible = b; // With its box; so does the bypass.
    ShowBypass(panel, b);
    Show(panel, kFilterGroup, b);
    ShowFilterValues(block, b);
    SetExternalSource(block, b);
    At(panel.lblCLK, clk_label::kVco).Caption = b ? "Internal VCO" : "External VCO";
}

void SetExternalSource(cClkDist& block, bool b) {
    Show(block.panel, kExternalSourceGroup, b);
    block.panel.txtCLK_ExtSRCfreq.Visible = b;
    block.panel.layout.finAtMux = b;
}

void Set_External_VCO_Only(cClkDist& block, bool b) {
    Show(block.panel, kInputMuxGroup, !b);
    block.panel.layout.gapBridged = b;
}

void Set_Internal_VCO_Only(cClkDist& block, bool b) {
    Show(block.panel, kInputMuxGroup, !b);
    Show(block.panel, kExternalSourceGroup, !b);
    block.panel.txtCLK_ExtSRCfreq.Visible = !b;
    block.panel.layout.gapBridged = b;
    block.panel.layout.dividerMoved = b;
}

void MoveEverythingUpForDistOnly(cClkDist& block, bool b) {
    Show(block.panel, kReferenceGroup, !b);
    Show(block.panel, kInputMuxGroup, !b);
    block.panel.txtCLK_RefOSCfreq.Visible = !b;
    if (b) Set_PLL_VCO(block, false);
    block.panel.layout.rowsUp = b;
}

void Set_CLKDIST_PLL_VCO(ClockPanel& design, cClkDist& block, bool b) {
    Show_PLL(design);
    ShowDiagram(block, b);
}

void Show_CLKDIST(cClkDist& block) {
    ShowDiagram(block, true);
    ClockPanel& panel = block.panel;
    At(panel.lblCLK, clk_label::kExternalSource).Caption = "External VCO";
    At(panel.lblCLK, clk_label::kFin).Caption = "Ext VCO";
    At(panel.lblCLK, clk_label::kVco).Caption = "Internal VCO";
    At(panel.lblCLK, clk_label::kVcoAtMux).Caption = "Int VCO";
}

void Show_CLKDIST_PLL(cClkDist& block) {
    Show_CLKDIST(block);
}

void Display_AdjustA2(cClkDist& block) {
    const ClockPanel& panel = block.panel;
    const bool both = !panel.CB_CLK_Delay_N.Tag.empty() && !panel.CB_CLK_Delay_R.Tag.empty();
    if (!both) ShowGlobalDelay(block.panel, false);
}

void UpdateCLKBoldPath(cClkDist& block) {
    const cPart& part = block.Part();
    if (ClockModeOf(part) != ClockMode::AllPaths) return;
    const ClockInput input = ClockModeBit(part) == kTestMode
                                 ? InputOfTestMux(part.PrgmBits("INPUT_MUX").BitValue())
                                 : InputOfMode(block.InputMuxIndex());
    switch (input) {
    case ClockInput::VCO:
        BoldCLKPath(block, "VCO");
        break;
    case ClockInput::External:
        BoldCLKPath(block, "Fin");
        break;
    case ClockInput::Reference:
        BoldCLKPath(block, "OSCin");
        break;
    case ClockInput::None:
        break;
    }
}

void BoldCLKPath(cClkDist& block, std::string_view path) {
    const bool reference = EqualNoCase(path, "OSCin");
    const bool external = EqualNoCase(path, "Fin");
    const bool vco = EqualNoCase(path, "VCO");
    const ClockMode mode = ClockModeOf(block.Part());
    Embolden(block.panel, kReferencePath, reference);
    Embolden(block.panel, kExternalPath, external);
    Embolden(block.panel, kVcoPath, vco);
    Embolden(block.panel, kDividerRun, mode == ClockMode::ExternalVCO ? external : vco);
    if (mode == ClockMode::Distribution) Embolden(block.panel, kDistributionPath, reference);
}

} // namespace zentrel
