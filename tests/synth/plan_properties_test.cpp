#include <cmath>
#include <random>

#include "device/number_text.h"
#include "tests/synth/rig.h"

namespace zentrel::synth_test {
namespace {

constexpr int kPlans = 3000;

/// A device in a random state, and what an independent reading of its fields makes of it.
class RandomPlan {
  public:
    explicit RandomPlan(std::mt19937_64& random) : random_(random) {
        fractional = Chance();
        const auto counterBits = static_cast<std::int16_t>(Number(12, 20));
        rig.AddField("N", counterBits, Number(20, 4000));
        rig.AddField("R", 14, Number(1, 400));
        rig.AddField("D", 1, Number(0, 1));
        rig.AddField("DIV", 4, Number(1, 15));
        const int denominator = Number(2, 1 << 16);
        rig.AddField("DEN", 17, denominator);
        rig.AddField("NUM", 17, Number(0, denominator - 1));
        rig.AddField("O0", 8, Number(1, 63));
        pll = &rig.AddPll({.doubler = Chance() ? "D" : "",
                           .num = fractional ? "NUM" : "",
                           .den = fractional ? "DEN" : "",
                           .out0 = "O0",
                           .crystal = Number(1, 2000) / 8.0 + Number(0, 9) / 1e4});
        pll->Setextra_pll_n_div_1(static_cast<std::int16_t>(Number(0, 4)));
        if (Chance()) {
            block = &rig.Link(*pll, Chance() ? "PLL_internalVCO" : "PLL_externalVCO");
            block->binding = block->divider = "DIV";
            block->bypassed = Chance();
        }
        rig.session.bVCOFixed = Chance();
        rig.Refresh();
    }

    int Number(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
    bool Chance() { return Number(0, 1) == 1; }

    long double Factor() {
        if (block == nullptr || rig.part.clkdistDisplayMode != "PLL_internalVCO") return 1;
        const long double divider = block->bypassed ? 1 : rig.Value("DIV");
        return divider * std::max<int>(1, pll->extra_pll_n_div_1());
    }
    long double ComparisonHz() {
        const long double doubled = pll->OSC2X().empty() ? 1 : rig.Value("D") + 1;
        return doubled * static_cast<long double>(pll->XtalFrequency()) * 1e6L / rig.Value("R");
    }
    long double N() {
        const long double n = rig.Value("N");
        return fractional ? n + static_cast<long double>(rig.Value("NUM")) / rig.Value("DEN") : n;
    }
    long double Vco() { return ComparisonHz() * N() * Factor() / 1e6L; }
    /// By how much the VCO moves when the smallest part of N does.
    long double Step() {
        return ComparisonHz() * Factor() / 1e6L / (fractional ? rig.Value("DEN") : 1);
    }
    bool NumeratorAtTop() { return fractional && rig.Value("NUM") >= rig.Value("DEN"); }
    bool Clipped() { return N() < 1 || rig.Value("N") >= rig.part.PrgmBits("N").Maximum(); }

    Rig rig;
    cPLL* pll = nullptr;
    FakeBlock* block = nullptr;
    bool fractional = false;

  private:
    std::mt19937_64& random_;
};

TEST(PlanProperties, the_vco_reads_what_the_counters_make) {
    std::mt19937_64 random(1);
    for (int k = 0; k < kPlans; ++k) {
        RandomPlan plan(random);
        for (const char* box : {"txtOsc", "txtFpd", "txtVCO", "txtNCounter", "txtRCounter"}) {
            plan.rig.Enter(box, NumberToText(plan.Number(1, 100000) / 16.0));
            const auto expected = static_cast<double>(plan.Vco());
            ASSERT_NEAR(plan.pll->VCOFrequency(), expected, std::abs(expected) * 1e-12)
                << "plan " << k << " " << box;
        }
    }
}

TEST(PlanProperties, typing_what_a_box_shows_changes_no_word) {
    std::mt19937_64 random(2);
    int compared = 0;
    for (int k = 0; k < kPlans; ++k) {
        RandomPlan plan(random);
        const bool outputDiffers = plan.rig.session.bVCOFixed && plan.Factor() != 1;
        for (const char* box : {"txtVCO", "txtFpd", "txtOsc", "txtRCounter", "txtOUT0"}) {
            if (outputDiffers && std::string(box) == "txtOUT0") continue;
            const auto words = plan.rig.Words();
            const double shown = plan.pll->NValue();
            plan.rig.Enter(box, plan.rig.Shown(box));
            if (plan.NumeratorAtTop()) {
                EXPECT_DOUBLE_EQ(plan.pll->NValue(), shown);
                break; // the same N in other words; the next entries would start from it
            }
            ASSERT_EQ(plan.rig.Words(), words) << "plan " << k << " " << box;
            ++compared;
        }
    }
    EXPECT_GT(compared, kPlans * 3);
}

TEST(PlanProperties, with_the_vco_fixed_a_reference_moves_it_by_less_than_half_a_step) {
    std::mt19937_64 random(3);
    int compared = 0;
    for (int k = 0; k < kPlans; ++k) {
        RandomPlan plan(random);
        plan.rig.session.bVCOFixed = true;
        const long double before = plan.Vco();
        const char* box = plan.Chance() ? "txtOsc" : "txtFpd";
        const double shown = *ParseNumber(plan.rig.Shown(box));
        plan.rig.Enter(box, NumberToText(shown * plan.Number(20, 400) / 100.0));
        if (plan.Clipped() || plan.rig.Value("R") >= 16383) continue;
        ASSERT_LE(std::abs(plan.Vco() - before), plan.Step() / 2 * (1 + 1e-6L))
            << "plan " << k << " " << box;
        ++compared;
    }
    EXPECT_GT(compared, kPlans / 2);
}

TEST(PlanProperties, a_typed_vco_frequency_picks_the_nearest_that_the_counters_can_make) {
    std::mt19937_64 random(4);
    int compared = 0;
    for (int k = 0; k < kPlans; ++k) {
        RandomPlan plan(random);
        const double typed = static_cast<double>(plan.Vco()) * plan.Number(200, 3000) / 1000.0;
        plan.rig.Enter("txtVCO", NumberToText(typed));
        if (plan.Clipped()) continue;
        ASSERT_LE(std::abs(plan.Vco() - typed), plan.Step() / 2 * (1 + 1e-6L)) << "plan " << k;
        ++compared;
    }
    EXPECT_GT(compared, kPlans / 2);
}

} // namespace
} // namespace zentrel::synth_test
