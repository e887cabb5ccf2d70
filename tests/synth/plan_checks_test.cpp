#include "tests/synth/rig.h"

namespace zentrel::synth_test {
namespace {

constexpr Color W = colors::kWhite, R = colors::kRed, Y = colors::kYellow;

TEST(PlanChecks, a_frequency_out_of_its_range_is_red_and_says_by_how_much) {
    const struct {
        const char* least;
        const char* most;
        Color color;
        const char* text;
    } rows[] = {
        {"", "", W, ""},
        {"900", "1000", W, ""},
        {"1000", "", W, ""},
        {"1100.5", "", R, "VCO frequency 1000 MHz is 100.5 MHz below the least, 1100.5 MHz"},
        {"", "999", R, "VCO frequency 1000 MHz is 1 MHz above the most, 999 MHz"},
        {"x", "y", W, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.least) + ".." + row.most);
        Rig rig;
        const PllPanel& panel = rig.AddPll().panel;
        SetupRanges(rig.part, {.vcoMin = row.least, .vcoMax = row.most});
        for (int twice = 0; twice < 2; ++twice)
            rig.Refresh();
        EXPECT_EQ(panel.txtVCO.BackColor, row.color);
        ASSERT_EQ(panel.faults.size(), *row.text == '\0' ? 0U : 1U);
        if (!panel.faults.empty()) {
            EXPECT_EQ(panel.faults[0].element, "txtVCO");
            EXPECT_EQ(panel.faults[0].text, row.text);
        }
    }
}

TEST(PlanChecks, crystal_and_comparison_frequency_have_ranges_of_their_own) {
    Rig rig;
    const PllPanel& panel = rig.AddPll().panel;
    SetupRanges(rig.part, {.oscMin = "11", .oscMax = "20", .fpdMin = "25", .fpdMax = "999"});
    rig.Refresh();
    EXPECT_EQ(panel.txtOsc.BackColor, R);
    EXPECT_EQ(panel.txtFpd.BackColor, R);
    EXPECT_EQ(panel.txtVCO.BackColor, W);
    ASSERT_EQ(panel.faults.size(), 2U);
    EXPECT_EQ(panel.faults[1].text,
              "Comparison frequency 1000 kHz is 1 kHz above the most, 999 kHz");
    rig.Enter("txtOsc", "12");
    rig.Enter("txtFpd", "500");
    EXPECT_EQ(panel.txtOsc.BackColor, W);
    EXPECT_EQ(panel.txtFpd.BackColor, W);
    EXPECT_TRUE(panel.faults.empty());
}

TEST(PlanChecks, the_sign_of_the_middle_frequency_says_which_prescaler_bit_is_the_faster) {
    const struct {
        const char* middle;
        int bit;
        Color color;
    } rows[] = {{"2000", 0, R}, {"2000", 1, W}, {"-2000", 0, W}, {"-2000", 1, R},
                {"2500", 0, W}, {"0", 0, W},    {"", 0, W},      {"fast", 0, W}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.middle);
        Rig rig;
        rig.AddField("NP", 1, row.bit);
        rig.AddField("N", 20, 2500);
        const PllPanel& panel = rig.AddPll({.prescaler = "NP"}).panel;
        SetupRanges(rig.part, {.npMidFrequency = row.middle});
        rig.Refresh();
        EXPECT_EQ(panel.shpPLL[pll_diagram::kPrescalerBox].BackColor, row.color);
    }
}

TEST(PlanChecks, n_has_to_suit_the_prescaler) {
    const struct {
        const char* type;
        const char* modulus;
        double n;
        Color color;
    } rows[] = {
        {"SINGLE", "8", 64, W},  {"SINGLE", "8", 65, R},   {"DUAL", "32", 992, W},
        {"DUAL", "32", 991, R},  {"DUAL2", "32", 961, W},  {"DUAL2", "32", 990, R},
        {"QUAD", "16", 1000, W}, {"QUAD", "16", 35, R},    {"QUAD", "16", 40, W},
        {"QUAD1", "16", 40, R},  {"dual", "32", 991, W},   {"TRIPLE", "8", 65, W},
        {"", "8", 65, W},        {"SINGLE", "8/9", 65, W}, {"SINGLE", "0", 65, W},
        {"SINGLE3", "8", 64, W}, {"7", "8", 65, W},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.type) + " " + row.modulus + " " + std::to_string(row.n));
        Rig rig;
        rig.AddField("NP", 1).SetStringArray({row.modulus, "1"});
        rig.AddField("N", 20, row.n);
        const PllPanel& panel = rig.AddPll({.prescaler = "NP"}).panel;
        SetupRanges(rig.part, {.nCheckType = row.type});
        rig.Refresh();
        EXPECT_EQ(panel.txtNCounter.BackColor, row.color);
        EXPECT_EQ(panel.faults.size(), row.color == W ? 0U : 1U);
    }
}

TEST(PlanChecks, a_broken_rule_says_by_how_much) {
    Rig rig;
    rig.AddField("NP", 1).SetStringArray({"32", "64"});
    rig.AddField("N", 20, 991);
    const PllPanel& panel = rig.AddPll({.prescaler = "NP"}).panel;
    SetupRanges(rig.part, {.nCheckType = "DUAL"});
    rig.Refresh();
    ASSERT_EQ(panel.faults.size(), 1U);
    EXPECT_EQ(panel.faults[0].text,
              "N 991 with prescaler 32 leaves the main counter too small by 1");
}

TEST(PlanChecks, without_a_prescaler_field_the_rule_takes_128) {
    Rig rig;
    rig.AddField("N", 20, 129);
    const PllPanel& panel = rig.AddPll().panel;
    SetupRanges(rig.part, {.nCheckType = "SINGLE"});
    rig.Refresh();
    EXPECT_EQ(panel.txtNCounter.BackColor, R);
    rig.Seed("N", 128);
    rig.Refresh();
    EXPECT_EQ(panel.txtNCounter.BackColor, W);
}

TEST(PlanChecks, the_range_of_n_goes_by_the_prescaler_bit) {
    // At bit 0 the range is 23-24 and the modulus 1, at bit 1 it is 100 and the modulus 8.
    const struct {
        int bit;
        double n;
        Color color;
    } rows[] = {{0, 22, R}, {0, 23, Y}, {0, 24, Y},  {0, 25, W},
                {1, 96, R}, {1, 99, R}, {1, 104, W}, {1, 105, R}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.n);
        Rig rig;
        rig.AddField("NP", 1, 0).SetStringArray({"1", "8"});
        rig.part.PrgmBits("NP").SetBitValue(row.bit);
        rig.AddField("N", 20, row.n);
        const PllPanel& panel = rig.AddPll({.prescaler = "NP"}).panel;
        SetupRanges(rig.part,
                    {.nCheckType = "SINGLE", .nCheckLowRange = "23-24", .nCheckHighRange = "100"});
        rig.Refresh();
        EXPECT_EQ(panel.txtNCounter.BackColor, row.color);
    }
}

TEST(PlanChecks, a_warning_range_covers_a_broken_rule_and_odd_ranges_check_nothing) {
    const struct {
        const char* range;
        Color color;
    } rows[] = {{"60-70", Y}, {"66-", R}, {"x", R}, {"60-x", R}, {"66", R}, {"-5-70", Y}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.range);
        Rig rig;
        rig.AddField("N", 20, 65);
        const PllPanel& panel = rig.AddPll().panel;
        SetupRanges(rig.part, {.nCheckType = "SINGLE", .nCheckLowRange = row.range});
        rig.Refresh();
        EXPECT_EQ(panel.txtNCounter.BackColor, row.color);
    }
}

TEST(PlanChecks, a_fractional_n_counts_as_the_nearest_integer) {
    Rig rig;
    rig.AddField("NP", 1).SetStringArray({"8", "16"});
    rig.AddField("N", 20, 63);
    rig.AddField("NUM", 10, 600);
    const PllPanel& panel = rig.AddPll({.num = "NUM", .den = "DEN", .prescaler = "NP"}).panel;
    SetupRanges(rig.part, {.nCheckType = "SINGLE"});
    rig.Refresh();
    EXPECT_EQ(panel.txtNCounter.Text, "63.6");
    EXPECT_EQ(panel.txtNCounter.BackColor, W);
}

} // namespace
} // namespace zentrel::synth_test
