#include <cmath>
#include <limits>

#include "tests/synth/rig.h"

namespace zentrel::synth_test {
namespace {

using ::testing::ElementsAre;

TEST(Pll, a_fresh_block_reads_one_for_dividers_and_is_linked_to_nothing) {
    Rig rig;
    const cPLL pll(rig.part);
    EXPECT_EQ(pll.OUT0_DIV(), 1);
    EXPECT_EQ(pll.OUT1_DIV(), 1);
    EXPECT_EQ(pll.extra_pll_n_div_1(), 1);
    EXPECT_EQ(pll.extra_pll_n_div_2(), 1);
    EXPECT_EQ(pll.LinkedCLKDistInt(), -1);
    EXPECT_EQ(pll.XtalFrequency(), 0);
}

TEST(Pll, the_doubler_is_read_from_its_field_at_every_read) {
    Rig rig;
    cPLL& pll = rig.AddPll({.doubler = "D"});
    EXPECT_EQ(pll.Doubler(), 1);
    rig.Seed("D", 1);
    EXPECT_EQ(pll.Doubler(), 2);

    cPrgmBits& factors = rig.AddField("FACTORS", 2);
    factors.SetStringArray({"1", "2", "4"});
    factors.SetBitValue(2);
    pll.SetOSC2X("FACTORS");
    EXPECT_EQ(pll.Doubler(), 4) << "a list's entries are the factors";
    factors.SetStringArray({"0", "1"});
    factors.SetBitValue(1);
    EXPECT_EQ(pll.Doubler(), 2) << "a switch in the form of a list";
    cPrgmBits& number = rig.AddField("NUMBER", 4);
    number.StepValue = 2;
    pll.SetOSC2X("NUMBER");
    EXPECT_EQ(pll.Doubler(), 1) << "0 counts as 1";
    number.SetBitValue(3);
    EXPECT_EQ(pll.Doubler(), 6);
    pll.SetOSC2X("");
    EXPECT_EQ(pll.Doubler(), 1);
}

struct Split {
    bool fractional;
    double den, set;
    double n, num, shown;
};

TEST(Pll, a_decimal_n_becomes_counter_and_numerator) {
    // The counter has 20 bits.
    const Split rows[] = {
        {false, 0, 100.5, 100, 0, 100},        {false, 0, 101.5, 102, 0, 102},
        {false, 0, 2e6, 1048575, 0, 1048575},  {false, 0, -3, 0, 0, 0},
        {true, 1000, 100.5, 100, 500, 100.5},  {true, 1000, 100.2504, 100, 250, 100.25},
        {true, 1000, 99.99999, 99, 1000, 100}, {true, 1000, 2e6, 1048575, 1000, 1048576},
        {true, 0, 100.5, 100, 0, 100},
    };
    for (const Split& row : rows) {
        SCOPED_TRACE(row.set);
        Rig rig;
        cPLL& pll = rig.AddPll(row.fractional ? PllParts{.num = "NUM", .den = "DEN"} : PllParts{});
        if (row.fractional) rig.Seed("DEN", row.den);
        pll.SetNValue(double{row.set});
        EXPECT_EQ(rig.Value("N"), row.n);
        const double numerator = row.fractional ? pll.NumValue() : 0;
        EXPECT_EQ(numerator, row.num);
        EXPECT_DOUBLE_EQ(pll.NValue(), row.shown);
    }
}

TEST(Pll, an_n_beyond_32_bits_stores_1000_in_the_callers_number_too) {
    for (const bool fractional : {false, true}) {
        Rig rig;
        cPLL& pll = rig.AddPll(fractional ? PllParts{.num = "NUM", .den = "DEN"} : PllParts{});
        rig.Seed("N", 7);
        double v = 3e10;
        pll.SetNValue(v);
        EXPECT_EQ(v, 1000);
        EXPECT_EQ(pll.NValue(), 1000);
    }
}

TEST(Pll, no_setter_takes_zero_or_a_number_that_nothing_can_hold) {
    constexpr double kInf = std::numeric_limits<double>::infinity();
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    using Setter = void (*)(cPLL&, double);
    const Setter frequencies[] = {
        [](cPLL& pll, double v) { pll.SetVCOFrequency(v); },
        [](cPLL& pll, double v) { pll.SetPDFrequency(v); },
        [](cPLL& pll, double v) { pll.SetOUT0_Freq(v); },
        [](cPLL& pll, double v) { pll.SetOUT1_Freq(v); },
    };
    const Setter others[] = {
        [](cPLL& pll, double v) { pll.SetXtalFrequency(v); },
        [](cPLL& pll, double v) { pll.SetRValue(v); },
        [](cPLL& pll, double v) { pll.SetNValue(v); },
    };
    for (const bool fixed : {false, true}) {
        Rig rig;
        rig.session.bVCOFixed = fixed;
        cPLL& pll = rig.AddPll({.num = "NUM", .den = "DEN", .out0 = "O0", .out1 = "O1"});
        const auto before = rig.Words();
        const auto unchanged = [&](Setter set, double value) {
            set(pll, value);
            EXPECT_EQ(rig.Words(), before) << value;
            EXPECT_FALSE(rig.Pending()) << value;
            EXPECT_EQ(pll.XtalFrequency(), 10) << value;
        };
        for (const double v : {0.0, -0.0, kInf, -kInf, kNan, 1e30}) {
            for (const Setter set : frequencies)
                unchanged(set, v);
        }
        for (const double v : {kInf, -kInf, kNan, 1e30}) {
            for (const Setter set : others)
                unchanged(set, v);
        }
    }
}

TEST(Pll, a_refresh_leaves_an_unchanged_counter_untouched) {
    Rig rig;
    cPLL& pll = rig.AddPll();
    rig.session.bDisplayUpdating = 1;
    pll.SetNValue(1000);
    EXPECT_FALSE(rig.Pending());
    rig.session.bDisplayUpdating = 0;
    pll.SetNValue(1000);
    EXPECT_TRUE(rig.Pending());
}

TEST(Pll, a_counter_that_is_no_field_is_told_in_each_accessor) {
    Rig rig;
    cPLL& pll = rig.AddPll();
    pll.SetRCounter("NOR");
    pll.SetNCounter("NON");
    EXPECT_EQ(pll.RValue(), 0);
    pll.SetRValue(3);
    EXPECT_EQ(pll.NValue(), 0);
    EXPECT_THAT(rig.messages.shown,
                ElementsAre("Failed to Get RValue in cPLL.  Is R really: NOR  Error:  5",
                            "Failed to Set RValue in cPLL.  Is R Counter really = NOR  Error:  5",
                            "Failed to Get NValue in cPLL.  Is N really: NON  Error:  5"));
    EXPECT_THROW(pll.SetNValue(5), NotFound);
}

TEST(Pll, a_missing_r_gives_three_messages_and_no_frequency) {
    Rig rig;
    cPLL& pll = rig.AddPll();
    pll.SetRCounter("");
    EXPECT_EQ(pll.PDFrequency(), 0);
    EXPECT_EQ(rig.messages.shown.size(), 3U);
    EXPECT_EQ(pll.VCOFrequency(), 0);
    const auto before = rig.Words();
    pll.SetVCOFrequency(500);
    EXPECT_EQ(rig.Words(), before);
}

TEST(Pll, a_failed_n_counter_still_adds_the_fraction) {
    Rig rig;
    cPLL& pll = rig.AddPll({.num = "NUM", .den = "DEN"});
    rig.Seed("NUM", 250);
    pll.SetNCounter("");
    EXPECT_EQ(pll.NValue(), 0.25);
}

TEST(Pll, reading_a_frequency_turns_an_r_of_zero_into_one) {
    Rig rig;
    cPLL& pll = rig.AddPll();
    rig.Seed("R", 0);
    EXPECT_EQ(pll.PDFrequency(), 10000);
    EXPECT_EQ(rig.Value("R"), 1);
}

TEST(Pll, an_output_divider_and_its_field_agree) {
    Rig rig;
    cPLL& pll = rig.AddPll({.out0 = "O0"});
    pll.SetOUT0_DIV(8);
    EXPECT_EQ(rig.Value("O0"), 8);
    pll.SetOUT0_DIV(-3);
    EXPECT_EQ(pll.OUT0_DIV(), 1);
    EXPECT_EQ(rig.Value("O0"), 1);
    pll.SetOUT0_DIV(1000); // the field has 8 bits
    EXPECT_EQ(pll.OUT0_DIV(), 255);
    pll.SetOUT1_DIV(1000); // no field
    EXPECT_EQ(pll.OUT1_DIV(), 1000);

    rig.Seed("O0", 5);
    rig.Refresh();
    EXPECT_EQ(pll.OUT0_DIV(), 5) << "a refresh follows the field";
    EXPECT_FALSE(rig.Pending()) << "and writes nothing";
}

TEST(Pll, the_extra_divider_is_saved_under_the_blocks_own_index) {
    Rig rig;
    cPLL& pll = rig.AddPll();
    pll.Setextra_pll_n_div_1(6);
    pll.entry = 3; // entries before it were left out
    pll.save_extra_pll_n_div_1();
    EXPECT_EQ(rig.partFile.written, "QVX1 [PLLS] EXTRA_PLL_N_DIV_1_03=6");
}

} // namespace
} // namespace zentrel::synth_test
