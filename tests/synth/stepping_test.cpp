#include "synth/stepping.h"

#include "tests/synth/rig.h"

namespace zentrel::synth_test {
namespace {

void Press(Rig& rig, const char* spinner, bool up, int i = 1) {
    const PllSpinner* entry = FindPllSpinner(spinner);
    rig.displays.log.clear();
    (up ? entry->up : entry->down)(rig.part, i);
}

void Choose(Rig& rig, std::string_view name) {
    rig.displays.log.clear();
    for (const StepMenuEntry& entry : StepMenu()) {
        if (entry.name == name) entry.run(rig.part);
    }
}

struct SpinnerRow {
    const char* spinner;
    const char* field;
    double up, down; // by how much the field moves
    bool loadsFirst;
};

TEST(Stepping, each_spinner_moves_its_own_field) {
    const SpinnerRow rows[] = {
        {"spnNCounter", "N", 1, -1, false},  {"spnRCounter", "R", 1, -1, false},
        {"SpnFpd", "R", -1, 1, false},       {"SpnFractNum", "NUM", 1, -1, true},
        {"spnFractDen", "DEN", 1, -1, true}, {"SpnOUT0_DIV", "O0", 1, -1, true},
        {"SpnOUT1_DIV", "O1", 1, -1, true},
    };
    for (const SpinnerRow& row : rows) {
        for (const bool up : {true, false}) {
            SCOPED_TRACE(std::string(row.spinner) + (up ? " up" : " down"));
            Rig rig;
            rig.session.bVCOFixed = true; // plays no part
            rig.AddPll({.num = "NUM", .den = "DEN", .out0 = "O0", .out1 = "O1"});
            rig.Seed("NUM", 500);
            rig.Seed("O0", 4);
            rig.Seed("O1", 4);
            auto expected = rig.Words();
            expected[std::string("R_") + row.field] += up ? row.up : row.down;
            Press(rig, row.spinner, up);
            EXPECT_EQ(rig.Words(), expected);
            EXPECT_EQ(rig.displays.log, "PLL CLK REG BIT");
            EXPECT_EQ(rig.displays.pendingAtFirst, !row.loadsFirst);
            EXPECT_FALSE(rig.Pending());
        }
    }
}

TEST(Stepping, an_output_spinner_moves_the_output_too) {
    Rig rig;
    const cPLL& pll = rig.AddPll({.out0 = "O0"});
    rig.Seed("O0", 3);
    Press(rig, "SpnOUT0_DIV", true);
    EXPECT_EQ(pll.OUT0_DIV(), 4);
    EXPECT_EQ(rig.Shown("txtOUT0"), "250");
    rig.Seed("O0", 8);
    SpnOUT0_DIV_Change(rig.part, 1);
    EXPECT_EQ(pll.OUT0_DIV(), 8) << "the change event takes the field's state";
}

TEST(Stepping, an_output_divider_whose_text_is_no_number_goes_by_its_value) {
    Rig rig;
    rig.AddField("O0", 4, 3).Units = " ways";
    const cPLL& pll = rig.AddPll({.out0 = "O0"});
    Press(rig, "SpnOUT0_DIV", true);
    EXPECT_EQ(pll.OUT0_DIV(), 4);
}

TEST(Stepping, a_spinner_without_a_field_does_nothing) {
    Rig rig;
    rig.AddPll();
    for (const char* spinner : {"SpnFractNum", "spnFractDen", "SpnOUT0_DIV", "SpnOUT1_DIV"}) {
        Press(rig, spinner, true);
        EXPECT_EQ(rig.displays.log, "") << spinner;
    }
}

TEST(Stepping, a_denominator_of_zero_leaves_the_integer_n) {
    Rig rig;
    rig.AddPll({.num = "NUM", .den = "DEN"});
    rig.Seed("NUM", 500);
    rig.Enter("txtFractDen", "0");
    EXPECT_EQ(rig.Shown("txtNCounter"), "1000");
    EXPECT_EQ(rig.Shown("txtVCO"), "1000");
}

TEST(Stepping, stepping_n_keeps_the_numerator) {
    Rig rig;
    rig.AddPll({.num = "NUM", .den = "DEN"});
    rig.Seed("NUM", 123);
    rig.Refresh();
    for (int k = 0; k < 50; ++k)
        Press(rig, "spnNCounter", true);
    for (int k = 0; k < 20; ++k)
        Press(rig, "spnNCounter", false);
    EXPECT_EQ(rig.Value("N"), 1030);
    EXPECT_EQ(rig.Value("NUM"), 123);
}

TEST(Stepping, both_ways_of_a_spinner_carry_the_vco_to_the_linked_block) {
    Rig rig;
    cPLL& pll = rig.AddPll();
    FakeBlock& block = rig.Link(pll, "PLL_externalVCO");
    Press(rig, "spnNCounter", true);
    EXPECT_EQ(block.external, 1001);
    Press(rig, "spnNCounter", false);
    EXPECT_EQ(block.external, 1000);
}

TEST(Stepping, function_keys_step_the_vco_by_comparison_frequencies) {
    Rig rig;
    cPLL& pll = rig.AddPll();
    rig.Seed("R", 50); // 200 kHz
    rig.Refresh();
    const double start = pll.VCOFrequency();
    const struct {
        const char* entry;
        double mhz; // from the start, after it
    } rows[] = {{"mnuIncN", 0.2}, {"mnuNInc10", 2.2}, {"mnuNDec10", 0.2}, {"mnuNDec", 0}};
    for (const auto& row : rows) {
        Choose(rig, row.entry);
        EXPECT_NEAR(pll.VCOFrequency() - start, row.mhz, 1e-9) << row.entry;
        EXPECT_EQ(rig.displays.log, "PLL CLK REG BIT");
    }
}

TEST(Stepping, a_step_passes_the_vco_divider_and_the_extra_divider) {
    Rig rig;
    rig.AddField("DIV", 4, 4);
    cPLL& pll = rig.AddPll();
    FakeBlock& block = rig.Link(pll, "PLL_internalVCO");
    block.binding = block.divider = "DIV";
    pll.Setextra_pll_n_div_1(2);
    rig.Refresh();
    rig.tabs.captions.emplace_back("CLK"); // the block's own tab
    rig.tabs.selected = 7;
    const double before = pll.VCOFrequency();
    Choose(rig, "mnuIncN");
    EXPECT_DOUBLE_EQ(pll.VCOFrequency() - before, 8);
    EXPECT_DOUBLE_EQ(block.internal, before + 8);
    EXPECT_EQ(rig.Value("N"), 1001);
}

TEST(Stepping, the_menu_acts_on_the_selected_plls_tab_alone) {
    Rig rig;
    rig.AddPll({.num = "NUM", .den = "DEN"});
    rig.AddPll({.name = "PLL2", .n = "N2", .r = "R2", .num = "NUM2", .den = "DEN2"});
    rig.Seed("NUM2", 5);
    Choose(rig, "mnuIncFrac"); // the second one's tab is selected
    Choose(rig, "mnuIncN");
    EXPECT_EQ(rig.Value("NUM2"), 6);
    EXPECT_EQ(rig.Value("N2"), 1001);
    Choose(rig, "mnuDecFrac");
    EXPECT_EQ(rig.Value("NUM2"), 5);
    EXPECT_EQ(rig.Value("N"), 1000);
    EXPECT_EQ(rig.Value("NUM"), 0);
}

TEST(Stepping, the_menu_does_nothing_where_there_is_no_pll) {
    Rig rig;
    cPLL& pll = rig.AddPll();
    rig.Link(pll, "PLL_internalVCO");
    rig.tabs.captions.emplace_back("CLK");
    const auto words = rig.Words();
    const auto nothing = [&](int tab, std::initializer_list<std::string_view> entries) {
        rig.tabs.selected = tab;
        for (const std::string_view entry : entries) {
            Choose(rig, entry);
            EXPECT_EQ(rig.displays.log, "") << entry << " on tab " << tab;
        }
    };
    nothing(2, {"mnuIncN", "mnuNDec10", "mnuIncFrac", "mnuVCOFreq", "mnuFcomp", "mnuXtal"});
    nothing(5, {"mnuIncN", "mnuIncFrac", "mnuVCOFreq"});
    nothing(6, {"mnuIncFrac", "mnuDecFrac"}); // an integer PLL
    nothing(7, {"mnuIncFrac", "mnuVCOFreq", "mnuFcomp", "mnuXtal"});
    rig.part.ID.clear();
    nothing(6, {"mnuIncN", "mnuVCOFreq"});
    EXPECT_EQ(rig.Words(), words);
    EXPECT_TRUE(rig.messages.shown.empty());
}

TEST(Stepping, the_set_entries_go_to_the_box_and_apply_its_number) {
    Rig rig;
    cPLL& pll = rig.AddPll();
    FakeBlock& block = rig.Link(pll, "PLL_internalVCO");
    block.bypassed = true;
    rig.Refresh();
    const struct {
        const char* entry;
        const char* box;
    } rows[] = {{"mnuVCOFreq", "txtVCO"}, {"mnuFcomp", "txtFpd"}, {"mnuXtal", "txtOsc"}};
    const auto words = rig.Words();
    for (const auto& row : rows) {
        Choose(rig, row.entry);
        EXPECT_EQ(rig.tabs.focus, std::string(row.box) + "(1)");
        const TextBox& box = pll.panel.*FindPllBox(row.box)->element;
        EXPECT_EQ(box.SelStart, 0);
        EXPECT_EQ(box.SelLength, 50);
        EXPECT_EQ(rig.displays.log, "PLL CLK");
        EXPECT_EQ(rig.Words(), words);
    }
    EXPECT_EQ(block.reference, 10);
    pll.panel.txtVCO.Text = "900";
    Choose(rig, "mnuVCOFreq");
    EXPECT_EQ(rig.Value("N"), 900);
    EXPECT_EQ(block.internal, 3) << "set directly, past the block";
    pll.panel.txtVCO.Text = "abc";
    Choose(rig, "mnuVCOFreq");
    EXPECT_EQ(rig.Value("N"), 900);
}

TEST(Stepping, a_step_past_the_counters_end_puts_the_numerator_to_the_top) {
    Rig rig;
    rig.AddField("N", 4, 15);
    rig.AddPll({.num = "NUM", .den = "DEN"});
    Press(rig, "spnNCounter", true);
    EXPECT_EQ(rig.Value("N"), 15);
    EXPECT_EQ(rig.Value("NUM"), 1000);
}

} // namespace
} // namespace zentrel::synth_test
