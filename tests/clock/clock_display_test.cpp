#include "clock/clock_display.h"

#include "clock/clock_engine.h"
#include "tests/clock/clock_rig.h"

namespace zentrel::clock_test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

struct Device : ClockRig {
    explicit Device(const std::string& mode, int channels = 3) {
        AddInputFields();
        pll = &AddPLLBlock("PLL1", 10, 1);
        block = &AddBlock("A", "PLL1", channels, mode);
        Settle();
    }
    ClockPanel& Refreshed() {
        zentrel::UpdateCLKDISTDisplay(part);
        return block->panel;
    }
    cPLL* pll = nullptr;
    cClkDist* block = nullptr;
};

TEST(ClockDisplay, each_mode_shows_its_frequencies) {
    struct Row {
        const char *mode, *reference, *external, *vco;
    };
    for (const Row& row : {
             Row{"Engineering", "10", "2000", "1200"},
             Row{"PLL_internalVCO", "10", "kept", "1200"},
             Row{"PLL_externalVCO", "10", "kept", "2000"},
             Row{"Distribution", "10", "2000", "kept"},
             Row{"Sideways", "10", "kept", "kept"},
         }) {
        Device device(row.mode);
        device.block->panel.txtCLK_ExtSRCfreq.Text = "kept";
        device.block->panel.txtCLK_VCOfreq.Text = "kept";
        const ClockPanel& panel = device.Refreshed();
        EXPECT_EQ(panel.txtCLK_RefOSCfreq.Text, row.reference) << row.mode;
        EXPECT_EQ(panel.txtCLK_ExtSRCfreq.Text, row.external) << row.mode;
        EXPECT_EQ(panel.txtCLK_VCOfreq.Text, row.vco) << row.mode;
    }
}

TEST(ClockDisplay, a_refresh_fills_the_diagram_from_the_fields) {
    Device device("PLL_internalVCO");
    device.pll->Setextra_pll_n_div_1(3);
    device.part.PrgmBits("A_N_DLY").SetBitValue(2);
    device.part.PrgmBits("A_R_DLY").SetBitValue(1);
    device.part.PrgmBits("A_CLK0_DLY").SetBitValue(3);
    device.part.PrgmBits("A_CLK0_MUX").SetBitValue(2);
    device.part.PrgmBits("A_CLK2_EN").SetValue(0);
    const ClockPanel& panel = device.Refreshed();
    EXPECT_EQ(panel.lblCLK[clk_label::kPll].Caption, "PLL1");
    EXPECT_EQ(panel.CLKtxt_InputDiv.Text, "2");
    EXPECT_EQ(panel.CLKtxt_InputDivOutFreq.Text, "600") << "the extra divider is undone";
    EXPECT_EQ(panel.CB_CLK_Delay_N.ListIndex, 2);
    EXPECT_EQ(panel.CB_CLK_Delay_R.ListIndex, 1);
    EXPECT_EQ(panel.clkDist_R_value.Caption, "1");
    EXPECT_EQ(panel.clkDist_N_value.Caption, "20");
    EXPECT_EQ(panel.clkDist_PDF_value.Caption, "10000 kHz");
    EXPECT_EQ(panel.clkdist_C4.Caption, " 10 pF");
    EXPECT_TRUE(panel.txtCLK_VCOfreq.Enabled);

    EXPECT_EQ(panel.channels[0].divCB_CDelay.ListIndex, 3);
    EXPECT_EQ(panel.channels[0].divCB_CMux.ListIndex, 2);
    EXPECT_EQ(panel.channels[0].divCB_od.ListIndex, 1);
    EXPECT_EQ(panel.channels[0].divCHtxt_freq.Text, "600");
    EXPECT_EQ(panel.channels[0].chDivText.BackColor, colors::kOutOfPath);
    EXPECT_EQ(panel.channels[0].divCB_CDelay.BackColor, colors::kWhite);
    EXPECT_EQ(panel.channels[1].chDivText.Text, "2");
    EXPECT_EQ(panel.channels[1].chDivText.BackColor, colors::kWhite);
    EXPECT_EQ(panel.channels[1].divCB_CDelay.BackColor, colors::kOutOfPath);
    EXPECT_EQ(panel.channels[1].divCHtxt_freq.Text, "300");
    EXPECT_EQ(panel.channels[2].divCB_od.ListIndex, 0);
    EXPECT_EQ(panel.channels[2].divCB_od.BackColor, colors::kOutOfPath);
    EXPECT_EQ(panel.channels[2].divCHtxt_freq.Text, "");
    EXPECT_EQ(panel.channels[3].divCHtxt_freq.Text, "") << "no such channel";
    EXPECT_TRUE(device.pll->panel.pllSynthDiv.Visible);
    EXPECT_EQ(device.pll->panel.pllSynthDivLblLow.Caption, "2");
}

TEST(ClockDisplay, mode_and_input_mux_decide_pointer_list_and_vco_box) {
    struct Row {
        double mode, mux;
        ClockInput pointer;
        int index;
        bool vcoBox;
        const char* channel0;
    };
    for (const Row& row : {
             Row{0, 2, ClockInput::VCO, 0, true, "600"},
             Row{1, 0, ClockInput::External, 1, false, "2000"},
             Row{2, 0, ClockInput::External, 2, false, "2000"},
             Row{3, 0, ClockInput::Reference, 3, false, "10"},
             Row{4, 0, ClockInput::None, -1, true, "0"},
             Row{7, 0, ClockInput::VCO, -1, true, "0"},
             Row{7, 1, ClockInput::External, -1, false, "0"},
             Row{7, 2, ClockInput::Reference, -1, false, "0"},
         }) {
        Device device("Engineering");
        device.part.PrgmBits("MODE").SetBitValue(row.mode);
        device.part.PrgmBits("INPUT_MUX").SetBitValue(row.mux);
        const auto words = device.Words();
        const ClockPanel& panel = device.Refreshed();
        EXPECT_EQ(panel.pointer, row.pointer) << row.mode << row.mux;
        EXPECT_EQ(panel.cbClkInputMux.ListIndex, row.index) << row.mode << row.mux;
        EXPECT_EQ(panel.txtCLK_VCOfreq.Enabled, row.vcoBox) << row.mode << row.mux;
        EXPECT_EQ(panel.channels[0].divCHtxt_freq.Text, row.channel0) << row.mode << row.mux;
        EXPECT_EQ(device.Bits("MODE"), row.mode) << "showing a selection is no choice";
        EXPECT_EQ(device.Bits("INPUT_MUX"), row.mux);
    }
}

TEST(ClockDisplay, the_pointer_follows_the_mux_that_the_block_names) {
    Device device("Engineering");
    device.Field("OTHER_MUX", 2, 2);
    device.block->InputMuxName = "OTHER_MUX";
    device.part.PrgmBits("MODE").SetBitValue(7);
    device.part.PrgmBits("INPUT_MUX").SetBitValue(1);
    EXPECT_EQ(device.Refreshed().pointer, ClockInput::Reference);
}

TEST(ClockDisplay, the_divider_greys_while_the_bypass_box_shows_and_is_checked) {
    Device device("PLL_internalVCO");
    device.block->panel.CLK_VCODIV_bypass.Value = true;
    EXPECT_EQ(device.Refreshed().CLKtxt_InputDiv.BackColor, colors::kOutOfPath);
    device.block->panel.CLK_VCODIV_bypass.Visible = false;
    EXPECT_EQ(device.Refreshed().CLKtxt_InputDiv.BackColor, colors::kWhite);
    device.block->panel.CLK_VCODIV_bypass.Visible = true;
    device.part.PrgmBits("A_BYP").SetBitValue(1);
    device.Refreshed();
    EXPECT_TRUE(device.block->panel.CLK_VCODIV_bypass.Value) << "no refresh sets the mark";
}

TEST(ClockDisplay, a_refresh_puts_the_flags_back_as_it_found_them) {
    Device device("Engineering");
    device.Refreshed();
    EXPECT_FALSE(device.part.Updating);
    EXPECT_EQ(device.session.bDisplayUpdating, 0);
    device.part.Updating = true; // a load is under way
    device.Refreshed();
    EXPECT_TRUE(device.part.Updating);

    ClockRig empty;
    zentrel::UpdateCLKDISTDisplay(empty.part);
    EXPECT_FALSE(empty.part.Updating);
}

TEST(ClockDisplay, a_missing_divider_or_n_delay_is_told_and_ends_the_refresh) {
    struct Row {
        bool divider;
        const char* message;
    };
    for (const Row& row :
         {Row{true, "Error... No program bit: GONE required for: "
                    "frmPart.CLKtxt_InputDiv(iClkDists).Text = "
                    "CStr(Part.PrgmBits(frmPart.CLKtxt_InputDiv(iClkDists).Tag).Value)"},
          Row{false, "Error... No program bit: GONE required for: If "
                     "CStr(frmPart.CB_CLK_Delay_N(iClkDists).Tag) <> \" Then "
                     "frmPart.CB_CLK_Delay_N(iClkDists).ListIndex = "
                     "CInt(PrgmBits(CStr(frmPart.CB_CLK_Delay_N(iClkDists).Tag)).BitValue)"}}) {
        Device device("Distribution");
        cClkDist& second = device.AddBlock("B", "", 1, "Distribution");
        device.Settle();
        ClockPanel& panel = device.block->panel;
        (row.divider ? panel.CLKtxt_InputDiv.Tag : panel.CB_CLK_Delay_N.Tag) = "GONE";
        second.panel.txtCLK_ExtSRCfreq.Text = "not refreshed";
        zentrel::UpdateCLKDISTDisplay(device.part);
        zentrel::UpdateCLKDISTDisplay(device.part);
        EXPECT_THAT(device.messages, ElementsAre(row.message, row.message));
        EXPECT_EQ(second.panel.txtCLK_ExtSRCfreq.Text, "not refreshed");
        EXPECT_TRUE(device.part.Updating);
        EXPECT_EQ(device.session.bDisplayUpdating, 0);

        // The next routine that raises the flag takes it down again.
        zentrel::UpdatePLLDisplay(device.part);
        EXPECT_FALSE(device.part.Updating);
        zentrel::UpdateCLKDISTDisplay(device.part);
        ClearClkDist(device.part);
        EXPECT_FALSE(device.part.Updating) << "the next device starts afresh";
    }
}

TEST(ClockDisplay, other_missing_fields_are_told_once_and_cost_one_element) {
    Device device("Engineering");
    device.block->SetClkDividerName(0, "NO_DIV");
    device.block->SetClkMuxName(1, "NO_MUX");
    device.block->SetClkEnableName(2, "NO_EN");
    device.block->SetClkDelayName(2, "NO_DLY");
    device.block->panel.CB_CLK_Delay_R.Tag = "NO_RDLY";
    device.Refreshed();
    const ClockPanel& panel = device.Refreshed();
    EXPECT_EQ(device.messages.size(), 5U);
    for (const char* name : {"NO_DIV", "NO_MUX", "NO_EN", "NO_DLY", "NO_RDLY"})
        EXPECT_THAT(device.messages, testing::Contains(testing::HasSubstr(name)));
    EXPECT_EQ(panel.channels[0].chDivText.Text, "");
    EXPECT_EQ(panel.channels[0].divCHtxt_freq.Text, "?");
    EXPECT_EQ(panel.channels[1].divCHtxt_freq.Text, "300") << "divider and delay both in use";
    EXPECT_EQ(panel.channels[2].divCHtxt_freq.Text, "200");
    EXPECT_FALSE(device.part.Updating);
}

TEST(ClockDisplay, a_device_without_its_input_fields_still_shows_its_channels) {
    ClockRig rig;
    rig.AddPLLBlock("PLL1", 10, 1);
    const cClkDist& block = rig.AddBlock("A", "PLL1", 1, "Engineering");
    rig.part.UpdateDisplays();
    EXPECT_THAT(rig.messages, Each(testing::HasSubstr("MODE")));
    EXPECT_EQ(block.panel.channels[0].divCHtxt_freq.Text, "0");
    EXPECT_FALSE(rig.part.Updating);
}

TEST(ClockDisplay, a_channel_with_a_list_beyond_its_end_shows_the_rest) {
    Device device("Engineering");
    device.part.PrgmBits("A_N_DLY").SetBitValue(3); // three entries
    device.part.PrgmBits("A_CLK1_MUX").SetStringArray({"Bypassed", "Divided"});
    device.part.PrgmBits("A_CLK1_MUX").SetBitValue(3);
    const ClockPanel& panel = device.Refreshed();
    EXPECT_EQ(panel.CB_CLK_Delay_N.ListIndex, -1);
    EXPECT_EQ(panel.channels[1].divCHtxt_freq.Text, "300");
    EXPECT_EQ(panel.channels[2].divCHtxt_freq.Text, "200");
}

} // namespace
} // namespace zentrel::clock_test
