#include <cmath>

#include "synth/clock_link.h"
#include "tests/synth/rig.h"

namespace zentrel::synth_test {
namespace {

struct Held {
    const char* what;
    bool fixed;
    void (*set)(cPLL& pll);
    double crystal, r, n, out; // what stands afterwards
};

TEST(PllFrequency, fixed_vco_decides_what_a_change_keeps) {
    // Crystal 10 MHz, R 10, N 1000: comparison 1000 kHz, VCO 1000 MHz; output divider 4.
    const Held rows[] = {
        {"crystal", false, [](cPLL& p) { p.SetXtalFrequency(20); }, 20, 10, 1000, 4},
        {"crystal", true, [](cPLL& p) { p.SetXtalFrequency(20); }, 20, 10, 500, 4},
        {"comparison", false, [](cPLL& p) { p.SetPDFrequency(500); }, 10, 20, 1000, 4},
        {"comparison", true, [](cPLL& p) { p.SetPDFrequency(500); }, 10, 20, 2000, 4},
        {"comparison, no integer R", false, [](cPLL& p) { p.SetPDFrequency(300); }, 10, 33, 1000,
         4},
        {"VCO", false, [](cPLL& p) { p.SetVCOFrequency(1234); }, 10, 10, 1234, 4},
        {"VCO", true, [](cPLL& p) { p.SetVCOFrequency(1234); }, 10, 10, 1234, 4},
        {"output", false, [](cPLL& p) { p.SetOUT0_Freq(200); }, 10, 10, 800, 4},
        {"output", true, [](cPLL& p) { p.SetOUT0_Freq(190); }, 10, 10, 1000, 5},
        {"output above the VCO", true, [](cPLL& p) { p.SetOUT0_Freq(5000); }, 10, 10, 1000, 1},
        {"output divider", false, [](cPLL& p) { p.SetOUT0_DIV(7); }, 10, 10, 1000, 7},
        {"R", true, [](cPLL& p) { p.SetRValue(5.4); }, 10, 5, 1000, 4},
        {"crystal of nothing", false, [](cPLL& p) { p.SetXtalFrequency(0); }, 1e-6, 10, 1000, 4},
    };
    for (const Held& row : rows) {
        SCOPED_TRACE(std::string(row.what) + (row.fixed ? ", fixed" : ""));
        Rig rig;
        rig.session.bVCOFixed = row.fixed;
        cPLL& pll = rig.AddPll({.out0 = "O0"});
        pll.SetOUT0_DIV(4);
        row.set(pll);
        EXPECT_DOUBLE_EQ(pll.XtalFrequency(), row.crystal);
        EXPECT_EQ(pll.RValue(), row.r);
        EXPECT_EQ(pll.NValue(), row.n);
        EXPECT_EQ(pll.OUT0_DIV(), row.out);
    }
}

TEST(PllFrequency, a_comparison_frequency_that_rounds_r_to_zero_is_refused_while_the_vco_is_held) {
    Rig rig;
    cPLL& pll = rig.AddPll();
    rig.session.bVCOFixed = true;
    pll.SetPDFrequency(1e9);
    EXPECT_EQ(rig.Value("R"), 10);
    EXPECT_FALSE(rig.Pending());
    rig.session.bVCOFixed = false;
    pll.SetPDFrequency(1e9);
    EXPECT_EQ(pll.PDFrequency(), 10000) << "else R comes as low as it can";
}

TEST(PllFrequency, a_change_that_fails_half_way_changes_nothing) {
    Rig rig;
    cPLL& pll = rig.AddPll();
    rig.session.bVCOFixed = true;
    pll.SetNCounter("NOWHERE");
    EXPECT_THROW(pll.SetPDFrequency(500), NotFound);
    EXPECT_EQ(rig.Value("R"), 10) << "R was written before N failed";
    EXPECT_THROW(pll.SetXtalFrequency(20), NotFound);
    EXPECT_EQ(pll.XtalFrequency(), 10);
    EXPECT_FALSE(rig.Pending());

    rig.session.bVCOFixed = false;
    cPLL& fractional = rig.AddPll({.name = "F", .n = "FN", .num = "FNUM", .den = "FDEN"});
    fractional.SetNumerator("NOWHERE");
    EXPECT_THROW(fractional.SetNValue(20.5), NotFound);
    EXPECT_EQ(rig.Value("FN"), 1000) << "the counter was written before the numerator failed";
}

struct FactorRow {
    const char* mode;
    int modeBit, muxBit, list;
    bool bypassed;
    double factor; // of the divider 4 and the extra divider 2
    bool writes;
};

TEST(PllFrequency, the_feedback_factor_goes_by_display_mode_and_link) {
    const FactorRow rows[] = {
        {"Engineering", 0, 0, 0, false, 8, true},    {"Engineering", 0, 0, 1, false, 1, true},
        {"engineering", 3, 0, 0, false, 8, true}, // the list decides, not MODE
        {"VCO_extVCO", 0, 1, 0, false, 8, true},     {"VCO_extVCO", 0, 0, 2, false, 1, true},
        {"VCO_extVCO", 0, 0, -1, false, 1, true},    {"Engineering", 7, 0, -1, false, 8, true},
        {"Engineering", 7, 1, 0, false, 1, true},    {"Engineering", 7, 2, 0, false, 1, true},
        {"Engineering", 7, 0, -1, true, 2, true},    {"PLL_internalVCO", 3, 2, 3, false, 8, true},
        {"PLL_INTERNALVCO", 0, 0, 0, true, 2, true}, {"PLL_externalVCO", 0, 0, 0, false, 1, true},
        {"Distribution", 0, 0, 0, false, 1, false},  {"something else", 0, 0, 0, false, 1, false},
    };
    for (const FactorRow& row : rows) {
        SCOPED_TRACE(std::string(row.mode) + " MODE " + std::to_string(row.modeBit) +
                     " INPUT_MUX " + std::to_string(row.muxBit) + " list " +
                     std::to_string(row.list));
        Rig rig;
        rig.AddField("MODE", 3, row.modeBit);
        rig.AddField("INPUT_MUX", 2, row.muxBit);
        rig.AddField("DIV", 4, 4);
        cPLL& pll = rig.AddPll();
        FakeBlock& block = rig.Link(pll, row.mode);
        block.binding = block.divider = "DIV";
        block.mux = row.list;
        block.bypassed = row.bypassed;
        pll.Setextra_pll_n_div_1(2);

        EXPECT_DOUBLE_EQ(pll.VCOFrequency(), 1000 * row.factor);
        pll.SetVCOFrequency(200 * row.factor);
        EXPECT_EQ(rig.Value("N"), row.writes ? 200 : 1000);
    }
}

TEST(PllFrequency, the_pre_n_divider_asks_mode_where_the_factor_asks_the_list) {
    struct Row {
        const char* mode;
        int modeBit, muxBit;
        bool linked, bypassed;
        double divider;
    };
    const Row rows[] = {
        {"Engineering", 0, 0, true, false, 8},      {"Engineering", 1, 0, true, false, 2},
        {"VCO_extVCO", 7, 0, true, false, 8},       {"VCO_extVCO", 7, 1, true, false, 2},
        {"PLL_internalVCO", 3, 2, true, false, 8},  {"PLL_internalVCO", 3, 2, true, true, 2},
        {"PLL_internalVCO", 3, 2, false, false, 2}, {"PLL_externalVCO", 0, 0, true, false, 2},
        {"Distribution", 0, 0, true, false, 2},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.mode) + " MODE " + std::to_string(row.modeBit));
        Rig rig;
        rig.AddField("MODE", 3, row.modeBit);
        rig.AddField("INPUT_MUX", 2, row.muxBit);
        rig.AddField("DIV", 4, 4);
        cPLL& pll = rig.AddPll();
        FakeBlock& block = rig.Link(pll, row.mode);
        block.divider = "DIV";
        block.mux = 3;
        block.bypassed = row.bypassed;
        if (!row.linked) pll.SetLinkedCLKDist("");
        pll.Setextra_pll_n_div_1(2);
        EXPECT_EQ(GetPreNdivider(rig.part, 1), row.divider);
    }
}

TEST(PllFrequency, an_extra_divider_of_zero_counts_as_one) {
    Rig rig;
    cPLL& pll = rig.AddPll();
    rig.Link(pll, "PLL_internalVCO").bypassed = true;
    pll.Setextra_pll_n_div_1(0);
    EXPECT_DOUBLE_EQ(pll.VCOFrequency(), 1000);
    EXPECT_EQ(GetPreNdivider(rig.part, 1), 1);
    pll.SetVCOFrequency(400);
    EXPECT_EQ(rig.Value("N"), 400);
}

TEST(PllFrequency, the_vco_divider_counts_as_one_where_the_block_has_none_and_refuses_n_at_zero) {
    Rig rig;
    cPLL& pll = rig.AddPll();
    FakeBlock& block = rig.Link(pll, "PLL_internalVCO");
    EXPECT_DOUBLE_EQ(pll.VCOFrequency(), 1000);
    rig.AddField("DIV", 4, 0);
    block.binding = "DIV";
    pll.SetVCOFrequency(400);
    EXPECT_EQ(rig.Value("N"), 1000);
    EXPECT_EQ(pll.VCOFrequency(), 0);
}

TEST(PllFrequency, the_first_crystal_leaves_n_as_the_file_has_it) {
    Rig rig;
    rig.session.bVCOFixed = true;
    rig.AddField("N", 20, 321);
    const cPLL& pll = rig.AddPll();
    EXPECT_EQ(pll.NValue(), 321);
    EXPECT_EQ(pll.XtalFrequency(), 10);
}

} // namespace
} // namespace zentrel::synth_test
