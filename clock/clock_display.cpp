#include "clock/clock_display.h"

#include <cmath>
#include <string>

#include "clock/clk_dist.h"
#include "clock/clock_engine.h"
#include "clock/loop_filter.h"
#include "device/errors.h"
#include "device/number_text.h"
#include "device/part.h"
#include "synth/clock_link.h"
#include "synth/pll.h"
#include "synth/synth_div.h"

namespace zentrel {
namespace {

constexpr const char* kDividerStatement =
    "frmPart.CLKtxt_InputDiv(iClkDists).Text = "
    "CStr(Part.PrgmBits(frmPart.CLKtxt_InputDiv(iClkDists).Tag).Value)";
constexpr const char* kDelayStatement =
    "If CStr(frmPart.CB_CLK_Delay_N(iClkDists).Tag) <> \" Then "
    "frmPart.CB_CLK_Delay_N(iClkDists).ListIndex = "
    "CInt(PrgmBits(CStr(frmPart.CB_CLK_Delay_N(iClkDists).Tag)).BitValue)";

/// The refresh of one block.
class BlockRefresh {
  public:
    explicit BlockRefresh(cClkDist& block)
        : part_(block.Part()), block_(block), panel_(block.panel), mode_(ClockModeOf(part_)) {}

    /// False when the refresh gives up.
    bool Run() {
        if (mode_ != ClockMode::Distribution) {
            panel_.lblCLK[clk_label::kPll].Caption = block_.LinkedPLLName();
        }
        block_.UpdateCLKValues();
        ShowFrequencies();
        if (!ShowInputDivider() || !ShowGlobalDelays()) return false;
        ShowReadouts();
        ShowLoopFilter(block_);
        ColorInputDivider();
        if (mode_ == ClockMode::AllPaths) {
            Survive([this] { ShowInputSelection(); });
        }
        ShowChannels();
        ShowInPLL();
        return true;
    }

  private:
    // One element's refresh: a failure is told once, and the others go on.
    template<typename Step>
    void Survive(Step step) {
        try {
            step();
        } catch (const Error& failure) {
            block_.TellOnce(failure);
        }
    }

    bool TellMissing(const std::string& field, const char* statement) const {
        part_.upward().messages->Show("Error... No program bit: " + field +
                                      " required for: " + statement);
        return false;
    }

    double BitsOf(const std::string& field) const { return part_.PrgmBits(field).BitValue(); }

    static void Select(ListBox& list, double bits) {
        const auto index = ToInt32(bits);
        if (!index || !list.SetListIndex(*index)) list.SetListIndex(-1);
    }

    void SelectByField(ListBox& list, const std::string& field) {
        if (field.empty()) return;
        Survive([&] { Select(list, BitsOf(field)); });
    }

    void ShowFrequencies() {
        panel_.txtCLK_RefOSCfreq.Text = NumberToText(block_.RefOSC_Freq());
        const bool all = mode_ == ClockMode::AllPaths;
        if (all || mode_ == ClockMode::Distribution) {
            panel_.txtCLK_ExtSRCfreq.Text = NumberToText(block_.ExtSRC_Freq());
        }
        if (all || mode_ == ClockMode::InternalVCO) {
            panel_.txtCLK_VCOfreq.Text = NumberToText(block_.IntVCO_Freq());
        } else if (mode_ == ClockMode::ExternalVCO) {
            panel_.txtCLK_VCOfreq.Text = NumberToText(block_.ExtSRC_Freq());
        }
    }

    bool ShowInputDivider() {
        const std::string& field = panel_.CLKtxt_InputDiv.Tag;
        if (field.empty()) return true;
        if (!part_.PrgmBits.Contains(field)) return TellMissing(field, kDividerStatement);
        Survive([&] { panel_.CLKtxt_InputDiv.Text = NumberToText(part_.PrgmBits(field).Value()); });
        panel_.CLKtxt_InputDivOutFreq.Text =
            NumberToText(block_.InputDiv_Out_Freq * block_.ExtraDivider());
        return true;
    }

    bool ShowGlobalDelays() {
        const std::string& field = panel_.CB_CLK_Delay_N.Tag;
        if (!field.empty() && !part_.PrgmBits.Contains(field)) {
            return TellMissing(field, kDelayStatement);
        }
        SelectByField(panel_.CB_CLK_Delay_N, field);
        SelectByField(panel_.CB_CLK_Delay_R, panel_.CB_CLK_Delay_R.Tag);
        return true;
    }

    void ShowReadouts() {
        const auto show = [this](Label& readout) {
            if (readout.Tag.empty()) return;
            Survive([&] { readout.Caption = NumberToText(part_.PrgmBits(readout.Tag).Value()); });
        };
        show(panel_.clkDist_R_value);
        show(panel_.clkDist_N_value);
        if (const std::string& pll = panel_.clkDist_PDF_value.Tag; !pll.empty()) {
            Survive([&] {
                const double khz = part_.PLLs(pll).PDFrequency();
                if (std::isfinite(khz)) {
                    panel_.clkDist_PDF_value.Caption = NumberToText(khz) + " kHz";
                }
            });
        }
    }

    void ColorInputDivider() {
        const CheckBox& bypass = panel_.CLK_VCODIV_bypass;
        const bool bypassed = bypass.Visible && bypass.Value;
        panel_.CLKtxt_InputDiv.BackColor = bypassed ? colors::kOutOfPath : colors::kWhite;
        panel_.txtCLK_VCOfreq.Enabled = true;
    }

    void ShowInputSelection() {
        panel_.pointer = ClockInput::None;
        const double mode = BitsOf("MODE");
        panel_.pointer =
            mode == kTestMode ? InputOfTestMux(BitsOf(block_.InputMuxName)) : InputOfMode(mode);
        panel_.txtCLK_VCOfreq.Enabled =
            panel_.pointer == ClockInput::VCO || panel_.pointer == ClockInput::None;
        Select(panel_.cbClkInputMux, mode);
    }

    void ShowChannels() {
        const double source = block_.GetSourceFrequency();
        const double extra = block_.ExtraDivider();
        for (int c = 0; c < block_.ShownChannels(); ++c)
            ShowChannel(c, source, extra);
    }

    void ShowChannel(int c, double source, double extra) {
        ClockChannelRow& row = panel_.channels[static_cast<std::size_t>(c)];
        SelectByField(row.divCB_CDelay, block_.GetClkDelayName(c));
        SelectByField(row.divCB_CMux, block_.GetClkMuxName(c));

        const ChannelOutput output = OutputOfChannel(block_, c, source, extra);
        const auto inPath = [](bool used) { return used ? colors::kWhite : colors::kOutOfPath; };
        row.chDivText.Text = output.divider ? NumberToText(*output.divider) : std::string();
        row.chDivText.BackColor = inPath(output.divided);
        row.divCB_CDelay.BackColor = inPath(output.delayed);
        row.divCB_od.BackColor = inPath(output.enabled);
        row.divCHtxt_freq.Text = output.frequency;

        const std::string& enable = block_.GetClkEnableName(c);
        if (enable.empty()) return;
        Survive([&] { row.divCB_od.SetListIndex(part_.PrgmBits(enable).Value() == 1 ? 1 : 0); });
    }

    void ShowInPLL() {
        if (block_.LinkedPLLName().empty()) return;
        for (int i = 1; i <= part_.PLLs.Count(); ++i) {
            if (part_.PLLs(i).ID() != block_.LinkedPLLName()) continue;
            Survive([&] { UpdatePLLandCLKDISTDisplay(part_, i, block_.IDnum); });
            return;
        }
    }

    cPart& part_;
    cClkDist& block_;
    ClockPanel& panel_;
    ClockMode mode_;
};

} // namespace

void UpdateCLKDISTDisplay(cPart& part) {
    if (part.ClkDists.empty()) return;
    const DisplayScope display(part);
    UpdatingScope updating(part);
    for (cClkDist& block : part.ClkDists) {
        if (!BlockRefresh(block).Run()) {
            updating.StayUp();
            return;
        }
    }
}

} // namespace zentrel
