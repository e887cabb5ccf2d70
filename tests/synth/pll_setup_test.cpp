#include "synth/pll_setup.h"

#include "partfile/part_definition.h"
#include "tests/synth/rig.h"

namespace zentrel::synth_test {
namespace {

using ::testing::ElementsAre;

PllEntry FullEntry() {
    PllEntry e;
    e.entry = 4;
    e.name = "Main";
    e.n = "N", e.r = "R", e.doubler = "D";
    e.pd = "POL", e.ipo = "GAIN", e.tri = "STATE", e.np = "NP";
    e.oscInPin = "OSCin", e.oscBit = "OSC", e.fOutPin = "Fout", e.fInPin = "Fin";
    e.cpOutPin = "CPout";
    e.fractNum = "NUM", e.fractDen = "DEN";
    e.out0Div = "O0", e.out1Div = "O1", e.out0Pin = "OUT0", e.out1Pin = "OUT1";
    e.oscIn = 20;
    e.vcoMin = "1", e.vcoMax = "2", e.oscMin = "3", e.oscMax = "4", e.fpdMin = "5";
    e.fpdMax = "6", e.nCheckType = "DUAL2", e.npMidFrequency = "-7", e.nCheckLowRange = "8";
    e.nCheckHighRange = "9-10";
    return e;
}

void AddFieldsOf(Rig& rig) {
    for (const char* name : {"N", "R", "D", "POL", "GAIN", "STATE", "NP", "OSC", "NUM", "DEN"})
        rig.AddField(name, 8, 2);
    rig.AddField("O0", 8, 4);
    rig.AddField("O1", 8, 6);
}

TEST(PllSetup, a_full_entry_becomes_a_block_with_everything_shown) {
    Rig rig;
    AddFieldsOf(rig);
    const cPLL& pll = LoadPLL(rig.part, FullEntry());
    const PllPanel& panel = pll.panel;
    EXPECT_EQ(&rig.part.PLLs("MAIN"), &pll);
    EXPECT_EQ(pll.IDnum(), 1);
    EXPECT_EQ(pll.entry, 4);
    EXPECT_EQ(pll.PLLTab(), 6);
    EXPECT_EQ(pll.XtalFrequency(), 20);
    EXPECT_EQ(pll.OUT0_DIV(), 4);
    EXPECT_EQ(pll.OUT1_DIV(), 6);
    EXPECT_EQ(panel.txtOUT1_DIV.Text, "6");
    EXPECT_EQ(rig.part.pll_tabnames("Main"), 6);
    EXPECT_EQ(rig.part.tab_id_type("0"), "PLL");
    EXPECT_EQ(rig.part.tab_id_num("6"), 1);
    EXPECT_EQ(rig.part.Lines, kPllLines);

    for (const TextBox* box :
         {&panel.txtRCounter, &panel.txtNCounter, &panel.txtOsc, &panel.txtVCO, &panel.txtFpd})
        EXPECT_EQ(box->Tag, "Main");
    EXPECT_EQ(panel.lblDoubler.Tag, "D");
    EXPECT_EQ(panel.lblNPrescale.Tag, "NP");
    EXPECT_EQ(panel.lblPDPol.Tag, "POL");
    EXPECT_EQ(panel.lblCPGain.Tag, "GAIN");
    EXPECT_EQ(panel.lblCPState.Tag, "STATE");
    EXPECT_EQ(panel.lblPLLOSCBit.Caption, "OSC");
    EXPECT_EQ(panel.SpnFractNum.Tag, "NUM");
    EXPECT_EQ(panel.spnFractDen.Tag, "DEN");
    EXPECT_EQ(panel.lblPLLFoutPin.Caption, "Fout");
    EXPECT_EQ(panel.lblPLLOut1Pin.Caption, "OUT1");
    EXPECT_EQ(panel.lblVCO_Range.Caption + panel.lblVCO_Range.Tag, "12");
    EXPECT_EQ(panel.lblOSC_Range.Caption + panel.lblOSC_Range.Tag, "34");
    EXPECT_EQ(panel.lblFpd_Range.Caption + panel.lblFpd_Range.Tag, "56");
    EXPECT_EQ(panel.lblNCheck1.Caption + panel.lblNCheck1.Tag, "DUAL2-7");
    EXPECT_EQ(panel.lblNCheck2.Caption + panel.lblNCheck2.Tag, "89-10");
    for (const Element* shown : std::initializer_list<const Element*>{
             &panel.lblDoubler, &panel.lblNPrescale, &panel.txtFractNum, &panel.txtFractDen,
             &panel.txtOUT0, &panel.txtOUT0_DIV, &panel.SpnOUT1_DIV, &panel.shpPLLintVCO,
             &panel.shpPLLintOutputs, &panel.lblPLLOSCBit, &panel.linpll[pll_diagram::kFoutLine],
             &panel.linpll[pll_diagram::kOut1Line]})
        EXPECT_TRUE(shown->Visible);
    EXPECT_FALSE(panel.linpll[pll_diagram::kDoublerGapLine].Visible);
    EXPECT_TRUE(rig.messages.shown.empty());
}

TEST(PllSetup, what_a_block_lacks_is_disabled_or_hidden) {
    Rig rig;
    PllEntry bare;
    bare.name = "Bare";
    const cPLL& pll = LoadPLL(rig.part, bare);
    const PllPanel& panel = pll.panel;
    EXPECT_EQ(panel.lblPDPol.Caption, "+");
    EXPECT_EQ(panel.lblCPGain.Caption, "Icp");
    EXPECT_EQ(panel.lblCPState.Caption, "Active");
    for (const Label* label : {&panel.lblPDPol, &panel.lblCPGain, &panel.lblCPState})
        EXPECT_FALSE(label->Enabled);
    for (const Element* hidden :
         std::initializer_list<const Element*>{&panel.lblDoubler,
                                               &panel.shpPLL[pll_diagram::kDoublerBox],
                                               &panel.lblNPrescale,
                                               &panel.shpPLL[pll_diagram::kPrescalerBox],
                                               &panel.lblPLLFoutPin,
                                               &panel.shpPLLintVCO,
                                               &panel.linpll[pll_diagram::kFoutLine],
                                               &panel.lblPLLFinPin,
                                               &panel.lblPLLCPoutPin,
                                               &panel.lblPLLOSCinPin,
                                               &panel.lblPLLOSCBit,
                                               &panel.shpPLLintOutputs,
                                               &panel.lblPLLOut0Pin,
                                               &panel.linpll[pll_diagram::kOut0Line],
                                               &panel.linpll[pll_diagram::kOut0PinLine],
                                               &panel.linpll[pll_diagram::kOut1Line],
                                               &panel.txtOUT0,
                                               &panel.txtOUT0_DIV,
                                               &panel.SpnOUT0_DIV,
                                               &panel.txtOUT1,
                                               &panel.pllManualDivide,
                                               &panel.pllExtraDiv,
                                               &panel.pllSynthDiv})
        EXPECT_FALSE(hidden->Visible);
    EXPECT_TRUE(panel.linpll[pll_diagram::kDoublerGapLine].Visible);
    EXPECT_EQ(panel.txtOUT0.Text, "1");
    EXPECT_EQ(pll.OUT0_DIV(), 1);
    EXPECT_EQ(pll.XtalFrequency(), 10);
}

TEST(PllSetup, the_block_added_last_becomes_fractional_without_its_name) {
    Rig rig;
    EXPECT_THROW(SetupFraction(rig.part, "NUM", "DEN"), NotFound);
    AddPLL(rig.part, "First", "", "", "", 0);
    const cPLL& last = AddPLL(rig.part, "Last", "", "", "", 1);
    SetupFraction(rig.part, "NUM", "DEN");
    EXPECT_EQ(last.NumeratorName(), "NUM");
    EXPECT_EQ(last.panel.spnFractDen.Tag, "DEN");
    EXPECT_EQ(rig.part.PLLs("First").NumeratorName(), "");
}

TEST(PllSetup, a_vco_on_the_chip_has_its_box_but_no_pin) {
    Rig rig;
    PllEntry e;
    e.name = "P";
    e.fOutPin = "INTERNAL";
    const PllPanel& panel = LoadPLL(rig.part, e).panel;
    EXPECT_TRUE(panel.shpPLLintVCO.Visible);
    EXPECT_FALSE(panel.lblPLLFoutPin.Visible);
    EXPECT_FALSE(panel.linpll[pll_diagram::kFoutLine].Visible);
}

TEST(PllSetup, loading_writes_no_word_and_keeps_n_whatever_is_fixed) {
    for (const bool fixed : {false, true}) {
        Rig rig;
        rig.session.bVCOFixed = fixed;
        AddFieldsOf(rig);
        LoadPLL(rig.part, FullEntry());
        EXPECT_FALSE(rig.Pending());
    }
}

TEST(PllSetup, a_second_block_of_one_name_is_refused_and_leaves_nothing_behind) {
    Rig rig;
    AddFieldsOf(rig);
    LoadPLL(rig.part, FullEntry());
    PllEntry again;
    again.name = "main";
    EXPECT_THROW(LoadPLL(rig.part, again), DuplicateKey);
    EXPECT_EQ(rig.part.PLLs.Count(), 1);
    EXPECT_EQ(rig.part.tab_id_type.Count(), 1);
    EXPECT_EQ(rig.tabs.TabCount(), 7);
    EXPECT_EQ(rig.part.PLLs(1).NCounterName(), "N");
}

TEST(PllSetup, an_output_divider_field_that_isnt_there_is_told_once) {
    Rig rig;
    PllEntry e;
    e.name = "P";
    e.n = "N", e.r = "R", e.out0Div = "NOWHERE";
    rig.AddField("N", 8, 5);
    rig.AddField("R", 8, 5);
    const cPLL& pll = LoadPLL(rig.part, e);
    rig.Refresh();
    EXPECT_EQ(pll.OUT0_DIV(), 1);
    EXPECT_THAT(rig.messages.shown,
                ElementsAre("Error... No program bit: NOWHERE required for: txtOUT0_DIV"));
}

TEST(PllSetup, leaving_a_device_takes_its_tabs_and_blocks_down) {
    Rig rig;
    AddFieldsOf(rig);
    LoadPLL(rig.part, FullEntry());
    ClearPLL(rig.part);
    EXPECT_EQ(rig.tabs.selected, 0);
    EXPECT_EQ(rig.tabs.TabCount(), 6);
    EXPECT_EQ(rig.part.PLLs.Count(), 0);
    EXPECT_EQ(rig.part.pll_tabnames.Count(), 0);
    EXPECT_EQ(rig.part.Lines, 0);
}

} // namespace
} // namespace zentrel::synth_test
