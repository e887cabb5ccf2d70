#include "clock/clock_panel.h"

#include <string>
#include <utility>

namespace zentrel {
namespace {

constexpr std::pair<int, const char*> kCaptions[] = {
    {clk_label::kReference, "Reference Oscillator"},
    {clk_label::kFin, "Fin"},
    {clk_label::kExternalSign, "~"},
    {clk_label::kReferenceSign, "~"},
    {clk_label::kGlobalDelay, "Global Delay"},
    {clk_label::kPll, "PLL"},
    {clk_label::kExternalFilter, "External Loop Filter"},
    {clk_label::kInternalFilter, "Internal Loop Filter"},
    {clk_label::kVco, "Internal VCO"},
    {clk_label::kVcoSign, "~"},
    {clk_label::kInputMux, "Input Mux"},
    {12, "Clock Divider"},
    {13, "Clock Delay"},
    {14, "Clock Mux"},
    {15, "Clock Output"},
    {clk_label::kVcoDivider, "VCO Divider"},
    {clk_label::kVcoMHz, "MHz"},
    {clk_label::kExternalSource, "External Source"},
    {clk_label::kOscIn, "OSCin"},
    {clk_label::kExternalMHz, "MHz"},
    {clk_label::kReferenceMHz, "MHz"},
    {30, "R3"},
    {31, "C3"},
    {32, "R4"},
    {33, "C4"},
    {34, "R  = "},
    {35, "PDF = "},
    {36, "N  = "},
    {clk_label::kDivided, "Divided frequency:"},
    {clk_label::kDividedMHz, "MHz"},
};

} // namespace

ClockPanel::ClockPanel() {
    for (const auto& [k, caption] : kCaptions) {
        lblCLK[static_cast<std::size_t>(k)].Caption = caption;
    }
    for (std::size_t c = 0; c < channels.size(); ++c) {
        lblCLK[clk_label::kFirstMHz + c].Caption = "MHz";
        channels[c].lblCLKid.Caption = "CLKout" + std::to_string(c);
    }
    cbClkInputMux.List = {"VCO", "extVCO", "Distribution", "OSCin"};
    cbClkInputMux.Visible = false;
    CLKtxt_InputDiv.Text = "1";
    CLK_VCODIV_bypass.Caption = "Bypass";
}

} // namespace zentrel
