#include "synth/pll_display.h"

#include "device/number_text.h"
#include "device/part.h"
#include "synth/clock_link.h"
#include "synth/panel_change.h"
#include "synth/plan_checks.h"
#include "synth/synth_div.h"

namespace zentrel {
namespace {

std::string FactorText(const cPrgmBits& doubler) {
    const std::string text = doubler.Text();
    if (!cPLL::IsDoublerSwitch(doubler)) return text + "X";
    const auto number = ParseNumber(text);
    if (!number) throw TypeMismatch("\"" + text + "\" of " + doubler.ID);
    return NumberToText(*number + 1) + "X";
}

// One PLL's part of a refresh, step by step. A step that fails leaves its element as it was.
class PanelRefresh {
  public:
    // Ahead of the first polarity step of a refresh failures are told, behind it they aren't.
    PanelRefresh(cPart& part, int i, bool& quiet)
        : part_(part), i_(i), quiet_(quiet), pll_(part.PLLs(i)), panel_(pll_.panel) {}

    // False when the refresh of all PLLs ends here.
    bool Run() {
        panel_.faults.clear();
        FillDividers();
        FillCounters();
        FillOutput(0, panel_.txtOUT0_DIV, panel_.txtOUT0, "txtOUT0_DIV");
        FillOutput(1, panel_.txtOUT1_DIV, panel_.txtOUT1, "txtOUT1_DIV");
        quiet_ = true;
        if (!FillPolarity()) return false;
        FillLabel(panel_.lblCPGain, "lblCPGain");
        FillLabel(panel_.lblCPState, "lblCPState");
        FillFraction(panel_.txtFractNum, "txtFractNum");
        FillFraction(panel_.txtFractDen, "txtFractDen");
        FillFrequencies();
        Check();
        return true;
    }

  private:
    template<typename Statement>
    void Step(std::string_view element, Statement statement) {
        try {
            statement();
        } catch (const Error& error) {
            if (!quiet_) TellOnce(part_, panel_, element, error);
        }
    }

    cPLL& Tagged(const TextBox& box) { return PllOfTag(part_, box.Tag, i_); }
    cPrgmBits& Field(const std::string& tag) { return part_.PrgmBits(tag); }

    void FillDividers() {
        const std::string extra = NumberToSignedText(pll_.extra_pll_n_div_1());
        panel_.pllExtraDivVal.Caption = extra;
        panel_.pllManualDivide.Text = extra;
        const cPLL& pll = Tagged(panel_.txtOsc);
        Step("CLKtxt_InputDiv", [&] {
            if (LinkedBlock* block = LinkedBlockOf(pll)) block->UpdateCLKValues();
        });
        Step("pllSynthDivLblLow",
             [&] { UpdatePLLandCLKDISTDisplay(part_, i_, pll.LinkedCLKDistInt()); });
        Step("lblDoubler", [&] {
            if (panel_.lblDoubler.Tag.empty()) return;
            panel_.lblDoubler.Caption = FactorText(Field(panel_.lblDoubler.Tag));
        });
        FillLabel(panel_.lblNPrescale, "lblNPrescale");
    }

    void FillCounters() {
        Step("txtRCounter", [&] {
            if (panel_.txtRCounter.Tag.empty()) return;
            panel_.txtRCounter.Text = NumberToText(Tagged(panel_.txtRCounter).RValue());
        });
        Step("txtNCounter", [&] {
            if (panel_.txtNCounter.Tag.empty()) return;
            panel_.txtNCounter.Text = NumberToText(Tagged(panel_.txtNCounter).NValue());
        });
    }

    void FillOutput(int output, TextBox& divider, TextBox& frequency, std::string_view name) {
        if (divider.Tag.empty()) return;
        Step(name, [&] {
            divider.Text = Field(divider.Tag).Text();
            pll_.FollowOutputField(output);
        });
        Step(name, [&] {
            cPLL& pll = Tagged(panel_.txtFpd);
            frequency.Text = NumberToText(output == 0 ? pll.OUT0_Freq() : pll.OUT1_Freq());
        });
    }

    bool FillPolarity() {
        const std::string& tag = panel_.lblPDPol.Tag;
        if (tag.empty()) return true;
        try {
            panel_.lblPDPol.Caption = Field(tag).Text();
            return true;
        } catch (const Error&) {
            part_.upward().messages->Show("Error... No program bit: " + tag +
                                          " required for: If CStr(frmPart.lblPDPol(i).Tag) <> \" "
                                          "Then frmPart.lblPDPol(i).Caption = "
                                          "PrgmBits(CStr(frmPart.lblPDPol(i).Tag)).Text");
            return false;
        }
    }

    void FillLabel(Label& label, std::string_view name) {
        if (label.Tag.empty()) return;
        Step(name, [&] { label.Caption = Field(label.Tag).Text(); });
    }

    void FillFraction(TextBox& box, std::string_view name) {
        if (box.Tag.empty()) return;
        Step(name, [&] { box.Text = NumberToText(Field(box.Tag).Value()); });
    }

    void FillFrequencies() {
        Step("txtOsc",
             [&] { panel_.txtOsc.Text = NumberToText(Tagged(panel_.txtOsc).XtalFrequency()); });
        Step("txtFpd",
             [&] { panel_.txtFpd.Text = NumberToText(Tagged(panel_.txtFpd).PDFrequency()); });
        Step("txtVCO",
             [&] { panel_.txtVCO.Text = NumberToText(Tagged(panel_.txtVCO).VCOFrequency()); });
    }

    void Check() {
        Step("txtVCO", [&] { CheckVCORange(pll_); });
        Step("txtOsc", [&] { CheckCrystalRange(pll_); });
        Step("txtFpd", [&] { CheckComparisonRange(pll_); });
        Step("shpPLL", [&] { CheckPrescaler(part_, pll_); });
        Step("txtNCounter", [&] { CheckNRule(pll_); });
        Step("txtNCounter", [&] { CheckNRange(part_, pll_); });
    }

    cPart& part_;
    int i_;
    bool& quiet_;
    cPLL& pll_;
    PllPanel& panel_;
};

} // namespace

void UpdatePLLDisplay(cPart& part) {
    if (part.PLLs.empty()) return;
    const UpdatingScope updating(part);
    const DisplayScope displaying(part);
    bool quiet = false;
    for (int i = 1; i <= part.PLLs.Count(); ++i) {
        const auto pll = part.PLLs.Share(i); // a hook may load another part
        if (!PanelRefresh(part, i, quiet).Run()) return;
    }
}

} // namespace zentrel
