#include "tests/synth/rig.h"

namespace zentrel::synth_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(PllDisplay, a_device_without_plls_moves_no_flag) {
    Rig rig;
    rig.part.Updating = true;
    rig.session.bDisplayUpdating = 1;
    UpdatePLLDisplay(rig.part);
    EXPECT_TRUE(rig.part.Updating);
    EXPECT_EQ(rig.session.bDisplayUpdating, 1);
}

TEST(PllDisplay, a_refresh_fills_every_panel_from_its_own_model) {
    Rig rig;
    for (const char* field : {"POL", "GAIN", "STATE", "NP"})
        rig.AddField(field, 2, 1).SetStringArray({"zero", "one", "two", "three"});
    cPLL& pll = rig.AddPll({.doubler = "D",
                            .num = "NUM",
                            .den = "DEN",
                            .out0 = "O0",
                            .prescaler = "NP",
                            .polarity = "POL",
                            .gain = "GAIN",
                            .state = "STATE"});
    const PllPanel& other = rig.AddPll({.name = "B", .n = "NB", .r = "RB"}).panel;
    rig.Seed("D", 1);
    rig.Seed("NUM", 250);
    rig.Seed("O0", 4);
    pll.Setextra_pll_n_div_1(3);
    rig.Refresh();

    const PllPanel& panel = pll.panel;
    EXPECT_EQ(panel.txtOsc.Text, "10");
    EXPECT_EQ(panel.lblDoubler.Caption, "2X");
    EXPECT_EQ(panel.txtRCounter.Text, "10");
    EXPECT_EQ(panel.txtFpd.Text, "2000");
    EXPECT_EQ(panel.txtNCounter.Text, "1000.25");
    EXPECT_EQ(panel.txtFractNum.Text, "250");
    EXPECT_EQ(panel.txtFractDen.Text, "1000");
    EXPECT_EQ(panel.txtVCO.Text, "2000.5");
    EXPECT_EQ(panel.txtOUT0_DIV.Text, "4");
    EXPECT_EQ(panel.txtOUT0.Text, "500.125");
    EXPECT_EQ(panel.lblPDPol.Caption, "one");
    EXPECT_EQ(panel.lblCPGain.Caption, "one");
    EXPECT_EQ(panel.lblCPState.Caption, "one");
    EXPECT_EQ(panel.lblNPrescale.Caption, "one");
    EXPECT_EQ(panel.pllExtraDivVal.Caption, " 3");
    EXPECT_EQ(panel.pllManualDivide.Text, " 3");
    EXPECT_EQ(other.txtVCO.Text, "1000");
    EXPECT_EQ(other.lblPDPol.Caption, "+");
    EXPECT_FALSE(rig.part.Updating);
    EXPECT_EQ(rig.session.bDisplayUpdating, 0);
}

TEST(PllDisplay, a_list_of_factors_shows_its_entry) {
    Rig rig;
    cPrgmBits& factors = rig.AddField("D", 2);
    factors.SetStringArray({"1", "2", "4"});
    const PllPanel& panel = rig.AddPll({.doubler = "D"}).panel;
    EXPECT_EQ(panel.lblDoubler.Caption, "1X");
    factors.SetBitValue(2);
    rig.Refresh();
    EXPECT_EQ(panel.lblDoubler.Caption, "4X");
}

TEST(PllDisplay, a_refresh_of_a_settled_device_has_nothing_to_send) {
    Rig rig;
    rig.AddPll({.doubler = "D", .num = "NUM", .den = "DEN", .out0 = "O0", .out1 = "O1"});
    rig.Refresh();
    EXPECT_FALSE(rig.Pending());
}

TEST(PllDisplay, a_linked_block_is_brought_into_step_first) {
    Rig rig;
    rig.AddField("DIV", 4, 5);
    cPLL& pll = rig.AddPll();
    FakeBlock& block = rig.Link(pll, "PLL_internalVCO");
    block.divider = block.binding = "DIV";
    rig.Refresh();
    EXPECT_EQ(block.updates, 1);
    EXPECT_EQ(pll.panel.pllSynthDivLblLow.Caption, "5");
    EXPECT_TRUE(pll.panel.pllSynthDiv.Visible);
    EXPECT_EQ(pll.panel.txtVCO.Text, "5000");
}

TEST(PllDisplay, a_polarity_field_that_isnt_there_ends_the_refresh_each_time) {
    Rig rig;
    rig.AddPll({.polarity = "NOWHERE"});
    const PllPanel& second = rig.AddPll({.name = "B", .n = "NB", .r = "RB"}).panel;
    rig.messages.shown.clear();
    const std::string before = second.txtVCO.Text;
    rig.Seed("NB", 77);
    rig.Refresh();
    rig.Refresh();
    const std::string text =
        "Error... No program bit: NOWHERE required for: If CStr(frmPart.lblPDPol(i).Tag) <> \" "
        "Then frmPart.lblPDPol(i).Caption = PrgmBits(CStr(frmPart.lblPDPol(i).Tag)).Text";
    EXPECT_THAT(rig.messages.shown, ElementsAre(text, text));
    EXPECT_EQ(second.txtVCO.Text, before);
    EXPECT_FALSE(rig.part.Updating);
    EXPECT_EQ(rig.session.bDisplayUpdating, 0);
}

TEST(PllDisplay, other_missing_names_are_told_once_and_leave_the_rest_shown) {
    Rig rig;
    cPLL& pll = rig.AddPll();
    pll.panel.lblNPrescale.Tag = "NOPRESCALER"; // ahead of the polarity
    pll.panel.lblCPGain.Tag = "NOGAIN";         // behind it: silent
    for (int twice = 0; twice < 2; ++twice)
        rig.Refresh();
    EXPECT_THAT(rig.messages.shown,
                ElementsAre("Error... No program bit: NOPRESCALER required for: lblNPrescale"));
    EXPECT_EQ(pll.panel.lblCPGain.Caption, "Icp");
    EXPECT_EQ(pll.panel.txtVCO.Text, "1000");
}

TEST(PllDisplay, a_pll_that_names_no_n_counter_stays_usable) {
    Rig rig;
    cPLL& pll = rig.AddPll({.n = ""});
    EXPECT_EQ(rig.messages.shown.front(),
              "Failed to Get NValue in cPLL.  Is N really:   Error:  5");
    EXPECT_EQ(pll.panel.txtVCO.Text, "0");
    rig.messages.shown.clear();
    rig.Enter("txtVCO", "500");
    rig.Enter("txtRCounter", "20");
    EXPECT_EQ(pll.panel.txtFpd.Text, "500");
}

TEST(PllDisplay, an_integer_pll_shows_no_fraction) {
    Rig rig;
    const PllPanel& panel = rig.AddPll({.den = "DEN"}).panel; // a denominator alone is none
    EXPECT_FALSE(panel.txtFractNum.Visible);
    EXPECT_FALSE(panel.txtFractDen.Visible);
    EXPECT_FALSE(panel.lblPLL[pll_diagram::kFractionLabel].Visible);
    EXPECT_THAT(panel.txtFractDen.Tag, IsEmpty());
}

} // namespace
} // namespace zentrel::synth_test
