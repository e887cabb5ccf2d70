#include <cmath>
#include <random>

#include "clock/clock_engine.h"
#include "clock/clock_entry.h"
#include "device/number_text.h"
#include "synth/clock_link.h"
#include "synth/frequency_entry.h"
#include "tests/clock/clock_rig.h"

namespace zentrel::clock_test {
namespace {

using testing::IsEmpty;

struct Device : ClockRig {
    Device(const std::string& mode, double crystal, double r, int denominator) {
        AddInputFields();
        pll = &AddPLLBlock("PLL1", crystal, r, denominator);
        block = &AddBlock("A", "PLL1", 8, mode);
        part.UpdateDisplays();
        Settle();
    }
    void TypeVCO(const std::string& text) {
        pll->panel.txtVCO.Text = text;
        txtVCO_Enter(part, 1);
    }
    std::string Frequency(int channel) const {
        return block->panel.channels[static_cast<std::size_t>(channel)].divCHtxt_freq.Text;
    }
    cPLL* pll = nullptr;
    cClkDist* block = nullptr;
};

TEST(ClockAndPLL, a_typed_vco_frequency_ends_in_the_channels_and_in_the_words) {
    struct Row {
        const char* mode;
        double modeBit, mux;
        int denominator;
        const char *typed, *shown;
        double n, numerator;
        const char *channel0, *channel3;
    };
    // Crystal 10 MHz, R 10: 1 MHz comparison frequency; VCO divider 2; channel c divides by c + 1.
    const Row rows[] = {
        {"PLL_internalVCO", 0, 0, 0, "2401", "2400", 1200, 0, "1200", "300"},
        {"PLL_internalVCO", 0, 0, 1000, "2401.5", "2401.5", 1200, 750, "1200.75", "300.1875"},
        {"PLL_externalVCO", 0, 0, 0, "1500.2", "1500", 1500, 0, "1500", "375"},
        {"Engineering", 0, 0, 0, "2400", "2400", 1200, 0, "1200", "300"},
        {"Engineering", 1, 0, 1000, "1500.25", "1500.25", 1500, 250, "1500.25", "375.0625"},
        {"Engineering", 7, 0, 0, "2400", "2400", 1200, 0, "0", "0"},
        {"VCO_extVCO", 7, 1, 0, "1500", "1500", 1500, 0, "0", "0"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.mode) + " " + row.typed);
        Device device(row.mode, 10, 10, row.denominator);
        device.part.PrgmBits("MODE").SetBitValue(row.modeBit);
        device.part.PrgmBits("INPUT_MUX").SetBitValue(row.mux);
        device.part.UpdateDisplays();
        device.TypeVCO(row.typed);
        EXPECT_EQ(device.Value("PLL1_N"), row.n);
        EXPECT_EQ(row.denominator > 0 ? device.Value("PLL1_NUM") : 0, row.numerator);
        EXPECT_EQ(device.pll->panel.txtVCO.Text, row.shown);
        EXPECT_EQ(device.Frequency(0), row.channel0);
        EXPECT_EQ(device.Frequency(3), row.channel3);
        EXPECT_FALSE(device.AnyChange()) << "all of it was sent";
        EXPECT_THAT(device.messages, IsEmpty());
    }
}

TEST(ClockAndPLL, an_n_typed_on_the_pll_reaches_the_block) {
    Device device("PLL_internalVCO", 10, 10, 0);
    device.pll->panel.txtNCounter.Text = "700";
    txtNCounter_Enter(device.part, 1);
    EXPECT_EQ(device.block->IntVCO_Freq(), 1400);
    EXPECT_EQ(device.Frequency(0), "700");
    UpdateCLKforPLL(device.part, "A"); // a clock tab acts on its linked PLL
    EXPECT_THAT(device.messages, IsEmpty());
}

TEST(ClockAndPLL, a_new_vco_divider_keeps_the_vco_and_moves_n) {
    Device device("PLL_internalVCO", 10, 10, 0);
    device.block->panel.CLKtxt_InputDiv.Text = "5";
    EnterClockBox(*device.block, ClockBox::InputDiv);
    EXPECT_EQ(device.pll->VCOFrequency(), 1200);
    EXPECT_EQ(device.Value("PLL1_N"), 240);
    EXPECT_EQ(GetPreNdivider(device.part, 1), 5);
}

TEST(ClockAndPLL, two_blocks_on_one_pll_survive_each_other) {
    Device device("PLL_internalVCO", 10, 10, 0);
    cClkDist& second = device.AddBlock("B", "PLL1", 8, "PLL_internalVCO");
    device.TypeVCO("1600");
    device.part.UpdateDisplays();
    EXPECT_EQ(second.IntVCO_Freq(), device.pll->VCOFrequency());
    EXPECT_THAT(device.messages, IsEmpty());
}

// A device in any state that a part file and an engineer can bring about.
class AnyDevice {
  public:
    explicit AnyDevice(std::uint32_t seed) : random_(seed) {
        constexpr const char* kModes[] = {"PLL_internalVCO", "PLL_externalVCO", "Engineering",
                                          "VCO_extVCO", "Distribution"};
        constexpr double kCrystals[] = {10, 12.288, 30.72, 19.44, 0.1, 26};
        constexpr int kDenominators[] = {0, 0, 7, 1000, 4194303};
        device = std::make_unique<Device>(kModes[Below(5)], kCrystals[Below(6)], 1 + Below(40),
                                          kDenominators[Below(5)]);
        cPart& part = device->part;
        device->pll->Setextra_pll_n_div_1(static_cast<std::int16_t>(Below(6)));
        part.PrgmBits("MODE").SetBitValue(Below(8));
        part.PrgmBits("INPUT_MUX").SetBitValue(Below(4));
        part.PrgmBits("A_VCO_DIV").SetValue(1 + Below(15));
        for (int c = 0; c < 8; ++c) {
            const std::string prefix = "A_CLK" + std::to_string(c);
            part.PrgmBits(prefix + "_DIV").SetValue(Below(256));
            part.PrgmBits(prefix + "_MUX").SetBitValue(Below(4));
            part.PrgmBits(prefix + "_EN").SetValue(Below(2));
        }
        device->block->SetExtSRC_Freq(Frequency());
        part.UpdateDisplays();
        if (Below(3) == 0) device->block->panel.CLK_VCODIV_bypass.SetValue(true);
        device->block->panel.txtCLK_VCOfreq.Text = NumberToText(Frequency());
        EnterClockBox(*device->block, ClockBox::VCO);
    }
    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    double Frequency() { return Below(3000000) / (Below(2) ? 1000.0 : 7.0) + 1; }

    std::unique_ptr<Device> device;

  private:
    std::mt19937 random_;
};

constexpr std::uint32_t kSeeds = 1000;

TEST(ClockProperties, a_second_refresh_changes_no_word_and_nothing_waits_for_a_load) {
    for (std::uint32_t seed = 0; seed < kSeeds; ++seed) {
        AnyDevice any(seed);
        Device& device = *any.device;
        const auto words = device.Words();
        device.Settle();
        device.part.UpdateDisplays();
        ASSERT_EQ(device.Words(), words)
            << "seed " << seed << " " << device.part.clkdistDisplayMode;
        ASSERT_FALSE(device.AnyChange()) << "seed " << seed;
        ASSERT_THAT(device.messages, IsEmpty()) << "seed " << seed;
    }
}

TEST(ClockProperties, with_the_internal_vco_a_channel_shows_it_divided_whatever_the_extra_divider) {
    for (std::uint32_t seed = 0; seed < kSeeds; ++seed) {
        AnyDevice any(seed);
        Device& device = *any.device;
        if (ClockModeOf(device.part) != ClockMode::InternalVCO) continue;
        device.part.UpdateDisplays();
        const bool bypassed = device.block->VCO_div_bypassed();
        const double vco = device.block->IntVCO_Freq();
        const double fed = bypassed ? vco : vco / device.Value("A_VCO_DIV");
        for (int c = 0; c < 8; ++c) {
            const std::string prefix = "A_CLK" + std::to_string(c);
            const double divider = device.Value(prefix + "_DIV");
            const bool divides = static_cast<int>(device.Bits(prefix + "_MUX")) % 2 == 1;
            const std::string shown = device.Frequency(c);
            if (device.Value(prefix + "_EN") == 0) {
                ASSERT_EQ(shown, "");
            } else if (divides && divider == 0) {
                ASSERT_EQ(shown, "?");
            } else {
                const double expected = divides ? fed / divider : fed;
                ASSERT_NEAR(*ParseNumber(shown), expected, 1e-12 * expected) << "seed " << seed;
            }
        }
    }
}

TEST(ClockProperties, what_the_block_holds_is_what_the_pll_gives) {
    for (std::uint32_t seed = 0; seed < kSeeds; ++seed) {
        AnyDevice any(seed);
        Device& device = *any.device;
        const DrivenInput input = DrivenInputOf(device.part, device.block);
        if (input == DrivenInput::None) continue;
        const double held = DrivenFrequency(device.part, *device.block);
        ASSERT_NEAR(held, device.pll->VCOFrequency(), 1e-12 * held) << "seed " << seed;
    }
}

TEST(ClockProperties, the_vco_box_typed_again_changes_no_word) {
    for (std::uint32_t seed = 0; seed < kSeeds; ++seed) {
        AnyDevice any(seed);
        Device& device = *any.device;
        const int denominator = static_cast<int>(
            device.part.PrgmBits.Contains("PLL1_DEN") ? device.Value("PLL1_DEN") : 0);
        const bool atTheTop = denominator > 0 && device.Value("PLL1_NUM") == denominator;
        const double n = device.Value("PLL1_N");
        if (atTheTop || n == 1048575 || n == 0) continue; // clipped fields may differ
        const auto words = device.Words();
        EnterClockBox(*device.block, ClockBox::VCO);
        ASSERT_EQ(device.Words(), words)
            << "seed " << seed << " " << device.part.clkdistDisplayMode;
    }
}

TEST(ClockProperties, no_entry_ever_brings_infinity_or_a_wrong_number_into_a_box) {
    constexpr const char* kTexts[] = {"0",    "-0", "-1",   "1e-300", "1e300", "9e18",
                                      "1e10", "x",  "1e-9", "-5e9",   "65536", "0.5"};
    for (std::uint32_t seed = 0; seed < kSeeds; ++seed) {
        AnyDevice any(seed);
        Device& device = *any.device;
        ClockPanel& panel = device.block->panel;
        TextBox* boxes[] = {&panel.txtCLK_RefOSCfreq, &panel.txtCLK_VCOfreq,
                            &panel.txtCLK_ExtSRCfreq, &panel.CLKtxt_InputDiv,
                            &panel.channels[0].chDivText};
        for (int step = 0; step < 6; ++step) {
            const int box = any.Below(5);
            boxes[box]->Text = kTexts[any.Below(12)];
            (any.Below(2) ? EnterClockBox : LeaveClockBox)(*device.block, ClockBox(box), 0);
        }
        device.part.UpdateDisplays();
        for (const TextBox* box :
             {boxes[0], boxes[1], boxes[2], boxes[3], boxes[4], &panel.CLKtxt_InputDivOutFreq}) {
            ASSERT_TRUE(box->Text.empty() || box->Text == "x" || IsNumeric(box->Text))
                << "seed " << seed << ": " << box->Text;
        }
        for (int c = 0; c < 8; ++c) {
            const std::string shown = device.Frequency(c);
            ASSERT_TRUE(shown.empty() || shown == "?" || IsNumeric(shown)) << shown;
        }
        ASSERT_TRUE(std::isfinite(device.pll->VCOFrequency()));
    }
}

} // namespace
} // namespace zentrel::clock_test
