#include <algorithm>

#include "device/errors.h"
#include "tests/clock/clock_rig.h"

namespace zentrel::clock_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ClockSetup, a_block_is_linked_with_the_pll_of_its_exact_name) {
    ClockRig rig;
    rig.AddPLLBlock("PLL1", 10, 1);
    rig.AddPLLBlock("PLL2", 10, 1);
    struct Row {
        std::string link;
        int position;
    };
    for (const Row& row : {Row{"PLL2", 2}, Row{"pll2", 0}, Row{"", 0}, Row{"PLL9", 0}}) {
        const cClkDist& block = AddClkDist(rig.part, "Clocks", "1", "2", row.link, 0);
        EXPECT_EQ(block.LinkedPLLInt, row.position) << row.link;
        EXPECT_EQ(block.LinkedPLLName(), row.link);
        EXPECT_EQ(block.panel.clkDist_R_value.Tag, row.position ? "PLL2_R" : "");
        EXPECT_EQ(block.panel.clkDist_N_value.Tag, row.position ? "PLL2_N" : "");
        EXPECT_EQ(block.panel.clkDist_PDF_value.Tag, row.position ? "PLL2" : "");
    }
    EXPECT_EQ(rig.part.PLLs(2).LinkedCLKDist(), "Clocks");
    EXPECT_EQ(rig.part.PLLs(2).LinkedCLKDistInt(), 1);
    EXPECT_EQ(rig.part.PLLs(1).LinkedCLKDistInt(), -1);
    EXPECT_THAT(rig.messages, IsEmpty());
}

TEST(ClockSetup, of_two_blocks_on_one_pll_the_pll_knows_the_second) {
    ClockRig rig;
    rig.AddPLLBlock("PLL1", 10, 1);
    AddClkDist(rig.part, "A", "1", "0", "PLL1", 0);
    AddClkDist(rig.part, "B", "1", "0", "PLL1", 1);
    EXPECT_EQ(rig.part.PLLs(1).LinkedCLKDist(), "B");
    EXPECT_EQ(rig.part.PLLs(1).LinkedCLKDistInt(), 2);
}

TEST(ClockSetup, a_block_stands_in_the_collection_and_in_the_tables_of_tabs) {
    ClockRig rig;
    const cClkDist& first = AddClkDist(rig.part, "Clocks", "1", "0", "", 0);
    const cClkDist& twin = AddClkDist(rig.part, "Clocks", "1", "0", "", 1);
    EXPECT_EQ(&rig.part.ClkDists("0"), &first);
    EXPECT_EQ(&rig.part.ClkDists("1"), &twin);
    EXPECT_EQ(twin.IDnum, 2);
    EXPECT_EQ(twin.ClkDistTab, 7);
    EXPECT_EQ(rig.part.clkdist_tabnames("Clocks"), 6);
    EXPECT_EQ(rig.part.clkdist_tabnames.Count(), 2);
    EXPECT_EQ(rig.part.tab_id_type(2), "CLKDIST");
    EXPECT_EQ(rig.part.tab_id_num("7"), 2);

    rig.part.clkdist_tabnames.Add(std::make_shared<int>(99), "a script's own");
    ClearClkDist(rig.part);
    EXPECT_TRUE(rig.part.ClkDists.empty());
    EXPECT_EQ(rig.part.clkdist_tabnames.Count(), 1);
}

TEST(ClockSetup, channel_counts_are_rounded_down_and_at_most_eight_rows_show) {
    struct Row {
        const char* text;
        int count, shown;
    };
    for (const Row& row : {Row{"0", 0, 0}, Row{"5", 5, 5}, Row{"2.9", 2, 2}, Row{"8", 8, 8},
                           Row{"9", 9, 8}, Row{"-1", -1, 0}, Row{"-0.5", -1, 0}, Row{"abc", 0, 0},
                           Row{"", 0, 0}, Row{"1e9", 0, 0}}) {
        ClockRig rig;
        cClkDist& block = AddClkDist(rig.part, "Clocks", "x", row.text, "", 0);
        EXPECT_EQ(block.ClockCount, row.count) << row.text;
        EXPECT_EQ(block.VCOCount, 1);
        const auto& rows = block.panel.channels;
        const auto shown = std::count_if(rows.begin(), rows.end(), [](const ClockChannelRow& r) {
            return r.chDivText.Visible && r.divCHtxt_freq.Visible;
        });
        EXPECT_EQ(shown, row.shown) << row.text;
        EXPECT_EQ(block.panel.lblCLK[clk_label::kFirstHeader].Visible, row.shown > 0) << row.text;
        EXPECT_THAT(rig.messages, IsEmpty()) << row.text;
        SetDisplayMode(rig.part, "Distribution");
    }
}

TEST(ClockSetup, more_channels_than_the_block_has_are_refused) {
    ClockRig rig;
    cClkDist& block = AddClkDist(rig.part, "Clocks", "1", "3", "", 0);
    Show_n_Channels(block, 4);
    EXPECT_THAT(rig.messages,
                ElementsAre("Attempting to show 4 channels.  Max channel count is 3"));
    EXPECT_FALSE(block.panel.channels[3].chDivText.Visible);
    Show_n_Channels(block, 1);
    EXPECT_TRUE(block.panel.channels[0].lblCLKid.Visible);
    EXPECT_FALSE(block.panel.channels[1].lblCLKid.Visible);
}

TEST(ClockSetup, names_of_channels_reach_from_0_to_8) {
    ClockRig rig;
    cClkDist& block = AddClkDist(rig.part, "Clocks", "1", "9", "", 0);
    EXPECT_EQ(block.GetClkDividerName(8), "");
    EXPECT_THROW(block.GetClkDividerName(9), OutOfRange);
    EXPECT_THROW(block.SetClkMuxName(-1, "M"), OutOfRange);
    rig.List("DLY", 1, {"0", "1"});
    AddCLKChannel(rig.part, 8, "D8", "DLY", "", "");
    AddCLKChannel(rig.part, 9, "D9", "DLY", "", "");
    AddCLKChannel(rig.part, -1, "D", "DLY", "", "");
    EXPECT_EQ(block.GetClkDividerName(8), "D8");
}

TEST(ClockSetup, elements_are_bound_to_their_fields_and_filled_with_their_entries) {
    ClockRig rig;
    const cClkDist& block = rig.AddBlock("A", "", 1, "Distribution");
    const ClockPanel& panel = block.panel;
    EXPECT_EQ(panel.CB_CLK_Delay_N.Tag, "A_N_DLY");
    EXPECT_THAT(panel.CB_CLK_Delay_N.List, ElementsAre("0 ps", "150 ps", "300 ps"));
    EXPECT_THAT(panel.CB_CLK_Delay_R.List, ElementsAre("0 ps", "200 ps"));
    EXPECT_EQ(panel.CLKtxt_InputDiv.Tag, "A_VCO_DIV");
    EXPECT_EQ(panel.CLK_VCODIV_bypass.Tag, "A_BYP");
    EXPECT_THAT(panel.channels[0].divCB_CMux.List,
                ElementsAre("Bypassed", "Divided", "Delayed", "Divided and Delayed"));
    EXPECT_THAT(panel.channels[0].divCB_od.List, ElementsAre("Disabled", "Enabled"));
    EXPECT_EQ(panel.channels[0].lblCLKid.Caption, "CLKout0");
    EXPECT_THAT(panel.cbClkInputMux.List, ElementsAre("VCO", "extVCO", "Distribution", "OSCin"));
    EXPECT_EQ(block.RefOSC_Freq(), 10);
    EXPECT_EQ(block.ExtSRC_Freq(), 2000);
    EXPECT_EQ(block.IntVCO_Freq(), 1200);
    EXPECT_EQ(block.InputMuxName, "INPUT_MUX");
}

TEST(ClockSetup, a_block_without_an_item_has_its_element_disabled) {
    ClockRig rig;
    const cClkDist& block = AddClkDist(rig.part, "Clocks", "1", "0", "", 0);
    SetupCLKDIST(rig.part, "", "", "", "", "", 1, 2, 3);
    EXPECT_FALSE(block.panel.CB_CLK_Delay_N.Enabled);
    EXPECT_FALSE(block.panel.CB_CLK_Delay_R.Enabled);
    EXPECT_FALSE(block.panel.CLKtxt_InputDiv.Enabled);
    EXPECT_EQ(block.panel.CLKtxt_InputDiv.Text, "1");
    EXPECT_FALSE(block.panel.CLK_VCODIV_bypass.Enabled);
    EXPECT_THAT(rig.messages, IsEmpty());
    EXPECT_EQ(block.IntVCO_Freq(), 3);
}

TEST(ClockSetup, missing_delay_fields_are_told_as_far_as_they_stop_the_load) {
    ClockRig rig;
    const cClkDist& block = AddClkDist(rig.part, "Clocks", "1", "1", "", 0);
    SetupCLKDIST(rig.part, "ND", "", "", "", "MUX", 1, 2, 3);
    EXPECT_THAT(rig.messages, ElementsAre("Error... No program bit: ND required for: iCount = "
                                          "Part.PrgmBits(sNDelay).GetStringArray(slist())"));
    EXPECT_EQ(block.IntVCO_Freq(), 0);
    EXPECT_EQ(block.InputMuxName, "");

    rig.messages.clear();
    SetupCLKDIST(rig.part, "", "RD", "", "", "MUX", 1, 2, 3);
    EXPECT_THAT(rig.messages, IsEmpty());
    EXPECT_EQ(block.InputMuxName, "MUX");

    AddCLKChannel(rig.part, 0, "D0", "DLY0", "M0", "E0");
    EXPECT_THAT(rig.messages, ElementsAre("Error... No program bit: DLY0 required for: iCount = "
                                          "Part.PrgmBits(sClkDelayName).GetStringArray(slist())"));
    EXPECT_THAT(block.panel.channels[0].divCB_od.List, IsEmpty());
    EXPECT_EQ(block.GetClkEnableName(0), "E0");

    rig.List("DLY", 1, {"0", "1"});
    AddCLKChannel(rig.part, 0, "D0", "DLY", "M0", "E0");
    EXPECT_EQ(rig.messages.size(), 1U);
    EXPECT_EQ(block.panel.channels[0].divCB_od.ListCount(), 2);
}

TEST(ClockSetup, a_load_tells_a_display_mode_that_is_not_known) {
    ClockRig rig;
    rig.AddBlock("A", "", 0, "Sideways");
    EXPECT_THAT(rig.messages,
                ElementsAre("ERROR - GetSourceFrequency", "Failed to set display mode Sideways"));
}

TEST(ClockSetup, without_a_block_the_later_steps_do_nothing) {
    ClockRig rig;
    SetupCLKDIST(rig.part, "ND", "RD", "D", "B", "M", 1, 2, 3);
    AddCLKChannel(rig.part, 0, "D0", "DLY0", "M0", "E0");
    ClearClkDist(rig.part);
    EXPECT_EQ(SetDisplayMode(rig.part, "Engineering"), 1);
    EXPECT_THAT(rig.messages, IsEmpty());
}

} // namespace
} // namespace zentrel::clock_test
