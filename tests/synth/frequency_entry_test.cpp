#include "tests/synth/rig.h"

namespace zentrel::synth_test {
namespace {

using ::testing::ElementsAre;

TEST(FrequencyEntry, typing_a_vco_frequency_on_an_integer_pll_rounds_n) {
    Rig rig;
    rig.AddPll();
    rig.Enter("txtVCO", "1000.4");
    EXPECT_EQ(rig.Value("N"), 1000);
    EXPECT_EQ(rig.Shown("txtVCO"), "1000");
    EXPECT_EQ(rig.Shown("txtFpd"), "1000");
}

TEST(FrequencyEntry, typing_a_crystal_moves_the_vco_unless_it_is_fixed) {
    Rig rig;
    rig.AddPll();
    rig.Enter("txtOsc", "20");
    EXPECT_EQ(rig.Shown("txtVCO"), "2000");
    rig.Enter("txtOsc", "10");
    rig.session.bVCOFixed = true;
    rig.Enter("txtOsc", "20");
    EXPECT_EQ(rig.Shown("txtNCounter"), "500");
    EXPECT_EQ(rig.Shown("txtVCO"), "1000");
    EXPECT_EQ(rig.Shown("txtFpd"), "2000");
}

TEST(FrequencyEntry, typing_a_comparison_frequency_with_the_vco_fixed_scales_n) {
    Rig rig;
    rig.AddPll();
    rig.session.bVCOFixed = true;
    rig.Enter("txtFpd", "500");
    EXPECT_EQ(rig.Value("R"), 20);
    EXPECT_EQ(rig.Value("N"), 2000);
}

TEST(FrequencyEntry, a_decimal_n_lands_in_counter_and_numerator_on_enter_only) {
    Rig rig;
    rig.AddPll({.num = "NUM", .den = "DEN"});
    rig.Enter("txtNCounter", "100.25");
    EXPECT_EQ(rig.Value("N"), 100);
    EXPECT_EQ(rig.Value("NUM"), 250);
    EXPECT_EQ(rig.Shown("txtNCounter"), "100.25");
    rig.Leave("txtNCounter", "200.75");
    EXPECT_EQ(rig.Value("N"), 200);
    EXPECT_EQ(rig.Value("NUM"), 250) << "leaving the box doesn't touch the fraction";
}

TEST(FrequencyEntry, typing_r_leaves_n_alone_whatever_is_fixed) {
    Rig rig;
    rig.session.bVCOFixed = true;
    rig.AddPll();
    rig.Enter("txtRCounter", "5");
    EXPECT_EQ(rig.Value("N"), 1000);
    EXPECT_EQ(rig.Shown("txtVCO"), "2000");
    rig.Leave("txtRCounter", "99999"); // 14 bits
    EXPECT_EQ(rig.Shown("txtRCounter"), "16383");
}

TEST(FrequencyEntry, a_negative_crystal_loses_its_sign_and_zero_is_one_hertz) {
    Rig rig;
    const cPLL& pll = rig.AddPll();
    rig.Enter("txtOsc", "-20");
    EXPECT_EQ(rig.Shown("txtOsc"), "20");
    EXPECT_EQ(pll.XtalFrequency(), 20);
    for (const char* zero : {"0", "-0"}) {
        rig.Enter("txtOsc", zero);
        EXPECT_EQ(rig.Shown("txtOsc"), "0.000001");
    }
}

TEST(FrequencyEntry, the_osc_field_takes_the_crystal_on_enter_only) {
    Rig rig;
    rig.AddField("OSC", 8);
    rig.AddPll({.oscBit = "OSC"});
    rig.Leave("txtOsc", "40");
    EXPECT_EQ(rig.Value("OSC"), 0);
    rig.Enter("txtOsc", "50");
    EXPECT_EQ(rig.Value("OSC"), 50);
}

TEST(FrequencyEntry, both_outputs_move_their_divider_or_the_vco) {
    for (const std::string k : {"0", "1"}) {
        SCOPED_TRACE("output " + k);
        Rig rig;
        rig.AddPll({.out0 = "O0", .out1 = "O1"});
        const std::string divider = "txtOUT" + k + "_DIV";
        const std::string output = "txtOUT" + k;
        const std::string field = "O" + k;
        rig.Enter(divider.c_str(), "4");
        EXPECT_EQ(rig.Shown(output.c_str()), "250");
        EXPECT_EQ(rig.Value(field), 4);
        rig.Enter(output.c_str(), "300");
        EXPECT_EQ(rig.Shown("txtVCO"), "1200");
        EXPECT_EQ(rig.Value(field), 4);
        rig.session.bVCOFixed = true;
        rig.Enter(output.c_str(), "190");
        EXPECT_EQ(rig.Shown("txtVCO"), "1200");
        EXPECT_EQ(rig.Value(field), 6);
        EXPECT_EQ(rig.Shown(divider.c_str()), "6");
        EXPECT_EQ(rig.Shown(output.c_str()), "200");
        rig.Enter(divider.c_str(), "-7");
        EXPECT_EQ(rig.Shown(divider.c_str()), "1");
        EXPECT_EQ(rig.Value(field), 1);
    }
}

TEST(FrequencyEntry, a_manual_divider_is_kept_in_the_part_file) {
    Rig rig;
    const cPLL& pll = rig.AddPll();
    rig.Enter("pllManualDivide", " 3 ");
    EXPECT_EQ(pll.extra_pll_n_div_1(), 3);
    EXPECT_EQ(rig.Shown("pllManualDivide"), " 3");
    EXPECT_EQ(rig.partFile.written, "QVX1 [PLLS] EXTRA_PLL_N_DIV_1_00=3");
    rig.partFile.written.clear();
    for (const char* text : {"x", "40000", "1e30"})
        rig.Enter("pllManualDivide", text);
    EXPECT_EQ(pll.extra_pll_n_div_1(), 3);
    EXPECT_EQ(rig.partFile.written, "");
}

struct Follow {
    const char* box;
    bool leave;
    const char* refreshed;
    bool loadsAlways;
};
constexpr const char* kAll = "PLL CLK BIT REG PORT BURST";
constexpr const char* kFour = "PLL CLK REG BIT";

TEST(FrequencyEntry, each_entry_is_followed_by_its_refresh_and_load) {
    const Follow rows[] = {
        {"txtVCO", false, kAll, false},
        {"txtVCO", true, kAll, true},
        {"txtOsc", false, kAll, false},
        {"txtOsc", true, kAll, false},
        {"txtFpd", false, kFour, true},
        {"txtFpd", true, kFour, true},
        {"txtRCounter", false, kFour, true},
        {"txtRCounter", true, kFour, true},
        {"txtNCounter", false, kFour, true},
        {"txtNCounter", true, kFour, true},
        {"txtFractNum", false, kFour, true},
        {"txtFractNum", true, kFour, true},
        {"txtFractDen", false, kFour, true},
        {"txtFractDen", true, kFour, true},
        {"txtOUT0", false, kFour, true},
        {"txtOUT1", false, kFour, true},
        {"txtOUT0_DIV", false, kFour, true},
        {"txtOUT1_DIV", false, kFour, true},
        {"pllManualDivide", false, kFour, true},
        // Leaving these does nothing.
        {"txtOUT0", true, "", false},
        {"txtOUT1", true, "", false},
        {"txtOUT0_DIV", true, "", false},
        {"txtOUT1_DIV", true, "", false},
        {"pllManualDivide", true, "", false},
    };
    for (const Follow& row : rows) {
        for (const bool asked : {false, true}) {
            SCOPED_TRACE(std::string(row.box) + (row.leave ? " leave" : " Enter"));
            Rig rig;
            rig.options.autoReload = asked;
            rig.AddPll({.num = "NUM", .den = "DEN", .out0 = "O0", .out1 = "O1"});
            rig.part.Registers(1).SetChange(true);
            row.leave ? rig.Leave(row.box, "abc") : rig.Enter(row.box, "abc");
            EXPECT_EQ(rig.displays.log, row.refreshed);
            const bool loads = *row.refreshed != '\0' && (row.loadsAlways || asked);
            EXPECT_EQ(rig.Pending(), !loads);
            EXPECT_TRUE(*row.refreshed == '\0' || rig.displays.pendingAtFirst)
                << "the load comes last";
        }
    }
}

TEST(FrequencyEntry, nothing_happens_while_no_part_is_loaded) {
    Rig rig;
    rig.AddPll({.out0 = "O0", .out1 = "O1"});
    rig.part.ID.clear();
    const auto before = rig.Words();
    for (const PllBox& box : PllBoxes()) {
        rig.Enter(box.name.data(), "7");
        rig.Leave(box.name.data(), "7");
        EXPECT_EQ(rig.displays.log, "") << box.name;
    }
    EXPECT_EQ(rig.Words(), before);
}

TEST(FrequencyEntry, a_text_that_is_no_usable_number_changes_nothing) {
    Rig rig;
    const cPLL& pll = rig.AddPll({.num = "NUM", .den = "DEN", .out0 = "O0", .out1 = "O1"});
    const auto words = rig.Words();
    const std::string digits(4000, '9');
    for (const std::string& text :
         {std::string("abc"), std::string(), std::string("1e400"), std::string("1,5"),
          std::string("&H10"), std::string("1e30"), std::string("--1"), std::string("nan"),
          std::string("inf"), digits}) {
        for (const PllBox& box : PllBoxes()) {
            SCOPED_TRACE(std::string(box.name) + " " + text.substr(0, 20));
            const std::string shown = rig.Shown(box.name.data());
            rig.Enter(box.name.data(), text);
            rig.Leave(box.name.data(), text);
            if (box.leave == nullptr) rig.Refresh();
            EXPECT_EQ(rig.Words(), words);
            EXPECT_EQ(pll.XtalFrequency(), 10);
            EXPECT_EQ(rig.Shown(box.name.data()), shown);
        }
    }
    EXPECT_TRUE(rig.messages.shown.empty());
}

TEST(FrequencyEntry, a_frequency_of_zero_changes_nothing_and_blanks_around_a_number_are_fine) {
    Rig rig;
    rig.AddPll({.out0 = "O0", .out1 = "O1"});
    const auto words = rig.Words();
    for (const char* box : {"txtVCO", "txtFpd", "txtOUT0", "txtOUT1"}) {
        for (const bool fixed : {false, true}) {
            rig.session.bVCOFixed = fixed;
            for (const char* zero : {"0", "-0", "0.0"}) {
                rig.Enter(box, zero);
                EXPECT_EQ(rig.Words(), words) << box << " " << zero;
            }
        }
    }
    rig.Enter("txtVCO", " 12 ");
    EXPECT_EQ(rig.Value("N"), 12);
}

struct Taken {
    const char* mode;
    int modeBit, muxBit, list;
    double internal, external; // of the block after 640 was typed; 3 and 2 before
    double input;              // handed to the N divider; 320 before
};

TEST(FrequencyEntry, a_typed_vco_frequency_goes_to_the_blocks_frequency_that_the_pll_drives) {
    const Taken rows[] = {
        {"Engineering", 0, 0, 0, 640, 2, 640},     {"VCO_extVCO", 0, 0, 1, 3, 640, 640},
        {"Engineering", 0, 0, 2, 3, 2, 320},       {"Engineering", 0, 0, -1, 3, 2, 320},
        {"Engineering", 7, 0, -1, 640, 2, 640},    {"VCO_extVCO", 7, 1, 0, 3, 640, 640},
        {"VCO_extVCO", 7, 2, 0, 3, 2, 320},        {"PLL_internalVCO", 0, 0, 3, 640, 2, 640},
        {"pll_externalvco", 0, 0, 0, 3, 640, 640}, {"Distribution", 0, 0, 0, 3, 2, 320},
    };
    for (const Taken& row : rows) {
        SCOPED_TRACE(std::string(row.mode) + " MODE " + std::to_string(row.modeBit) + " list " +
                     std::to_string(row.list));
        Rig rig;
        rig.AddField("MODE", 3, row.modeBit);
        rig.AddField("INPUT_MUX", 2, row.muxBit);
        cPLL& pll = rig.AddPll();
        FakeBlock& block = rig.Link(pll, row.mode);
        block.mux = row.list;
        pll.SetNDivFrequencyInput(320);
        rig.Enter("txtVCO", "640");
        EXPECT_EQ(block.internal, row.internal);
        EXPECT_EQ(block.external, row.external);
        EXPECT_EQ(pll.NDivFrequencyInput(), row.input);
        const bool computes = std::string(row.mode) != "Distribution";
        EXPECT_EQ(rig.Value("N"), computes ? row.input : 1000);
    }
}

TEST(FrequencyEntry, a_block_that_takes_nothing_before_anything_was_handed_over_keeps_n) {
    Rig rig;
    rig.AddField("MODE", 3, 2);
    cPLL& pll = rig.AddPll();
    rig.Link(pll, "Engineering").mux = 2;
    rig.Enter("txtVCO", "640");
    EXPECT_EQ(rig.Value("N"), 1000);
}

TEST(FrequencyEntry, a_typed_crystal_is_the_linked_blocks_reference_too) {
    Rig rig;
    cPLL& pll = rig.AddPll();
    FakeBlock& block = rig.Link(pll, "PLL_internalVCO");
    rig.Enter("txtOsc", "-25");
    EXPECT_EQ(block.reference, 25);
    rig.Enter("txtOsc", "1e15");
    EXPECT_EQ(block.reference, 25) << "in hertz beyond 64 bits";
    rig.session.bVCOFixed = true;
    rig.Enter("txtOsc", "1e-250");
    EXPECT_EQ(pll.XtalFrequency(), 25) << "the N that would keep the VCO is beyond 64 bits";
    EXPECT_EQ(block.reference, 25);
}

TEST(FrequencyEntry, a_typed_n_carries_the_vco_to_the_linked_block) {
    Rig rig;
    rig.AddField("DIV", 4, 4);
    cPLL& pll = rig.AddPll();
    FakeBlock& block = rig.Link(pll, "PLL_internalVCO");
    block.binding = block.divider = "DIV";
    rig.Enter("txtNCounter", "300");
    EXPECT_EQ(rig.Value("N"), 300);
    EXPECT_EQ(block.internal, 1200);
}

TEST(FrequencyEntry, an_entry_that_fails_leaves_pll_and_block_as_they_were_and_tells_why) {
    Rig rig;
    cPLL& pll = rig.AddPll({.oscBit = "NOWHERE"});
    FakeBlock& block = rig.Link(pll, "PLL_internalVCO");
    rig.session.bVCOFixed = true;
    rig.Enter("txtOsc", "20");
    EXPECT_EQ(pll.XtalFrequency(), 10);
    EXPECT_EQ(rig.Value("N"), 1000);
    EXPECT_EQ(block.reference, 1);
    EXPECT_EQ(rig.Shown("txtOsc"), "10");
    EXPECT_THAT(rig.messages.shown,
                ElementsAre("Error... No program bit: NOWHERE required for: txtOsc"));

    pll.SetNCounter("GONE");
    EXPECT_THROW(VCOFrequencySetValue(rig.part, 1, 640), NotFound) << "a caller hears of it";
    EXPECT_EQ(block.internal, 3);
    EXPECT_EQ(pll.NDivFrequencyInput(), 0);
}

} // namespace
} // namespace zentrel::synth_test
