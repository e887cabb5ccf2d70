#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include "clock/clock_entry.h"
#include "device/number_text.h"
#include "synth/frequency_entry.h"
#include "tests/setups/bench_desk.h"
#include "transport/load_path.h"

/// The shipped chips, loaded from their files as an engineer picks them. What they send is held
/// against words put together here from the chips' own register maps.
namespace zentrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

struct Bits {
    int lowest;
    std::uint64_t value;
};

// A word from its fields, the way a data sheet draws it.
std::uint64_t Word(std::initializer_list<Bits> fields) {
    std::uint64_t word = 0;
    for (const Bits& field : fields)
        word |= field.value << field.lowest;
    return word;
}

struct ShippedChip : testing::Test {
    BenchDesk desk;
    cPart& part = desk.part;

    void Pick(const std::string& device) {
        desk.Select(device);
        ASSERT_THAT(desk.messages.shown, IsEmpty());
        ASSERT_FALSE(part.Registers.empty()) << device << " has no part file";
    }
    cPLL& Pll() { return part.PLLs(1); }
    void Type(TextBox PllPanel::*box, void (*enter)(cPart&, int), const std::string& text) {
        (Pll().panel.*box).Text = text;
        enter(part, 1);
    }
    void TypeVCO(const std::string& mhz) { Type(&PllPanel::txtVCO, txtVCO_Enter, mhz); }

    std::uint64_t Held(const std::string& reg) const {
        return static_cast<std::uint64_t>(part.Registers(reg).Value());
    }
    // What all registers put on the board, in the order in which they went out.
    std::vector<std::pair<std::string, std::uint64_t>> SentByLoadAll() {
        const auto before = desk.bench.board.newest();
        LoadAll(part);
        std::vector<std::pair<std::string, std::uint64_t>> sent;
        for (const LatchedWord& latched : desk.bench.board.Since(before)) {
            sent.emplace_back(latched.registerName,
                              static_cast<std::uint64_t>(latched.word.ToDouble()));
        }
        return sent;
    }
    std::map<std::string, std::uint64_t> SentSince(std::uint64_t before) {
        std::map<std::string, std::uint64_t> sent;
        for (const LatchedWord& latched : desk.bench.board.Since(before))
            sent[latched.registerName] = static_cast<std::uint64_t>(latched.word.ToDouble());
        return sent;
    }
};

// ADF4351: N = INT + FRAC / MOD, VCO = N * comparison frequency, output = VCO / 2^RF_DIVIDER.

std::uint64_t Adf4351R0(std::uint64_t integer, std::uint64_t fraction) {
    return Word({{15, integer}, {3, fraction}});
}

TEST_F(ShippedChip, adf4351_starts_at_4000_mhz_from_25) {
    Pick("ADF4351");
    EXPECT_THAT(SentByLoadAll(), ElementsAre(Pair("R5", 0x00580005), Pair("R4", 0x008C803C),
                                             Pair("R3", 0x000004B3), Pair("R2", 0x18005E42),
                                             Pair("R1", 0x08008011), Pair("R0", 0x00500000)));
    EXPECT_EQ(Pll().panel.txtVCO.Text, "4000");
    EXPECT_EQ(Pll().panel.txtFpd.Text, "25000");
}

TEST_F(ShippedChip, adf4351_splits_a_typed_vco_into_integer_and_fraction) {
    Pick("ADF4351");
    Type(&PllPanel::txtFractDen, txtFractDen_Apply, "2500");
    EXPECT_EQ(Held("R1"), Word({{27, 1}, {15, 1}, {3, 2500}, {0, 1}}));
    struct Case {
        const char* mhz;
        double vco;
    };
    for (const Case& typed : {Case{"2402.5", 2402.5},
                              {"3000.03", 3000.03},
                              {"4399.99", 4399.99},
                              {"2200", 2200},
                              {"3333.337", 3333.337}}) {
        SCOPED_TRACE(typed.mhz);
        TypeVCO(typed.mhz);
        // The nearest of 2,500 steps of 10 kHz.
        const auto steps = static_cast<std::uint64_t>(std::llround(typed.vco / 25 * 2500));
        EXPECT_EQ(Held("R0"), Adf4351R0(steps / 2500, steps % 2500));
        EXPECT_NEAR(Pll().VCOFrequency(), static_cast<double>(steps) * 0.01, 1e-9);
    }
}

TEST_F(ShippedChip, adf4351_divides_the_vco_down_to_the_output) {
    Pick("ADF4351");
    const std::uint64_t without = Held("R4") & ~Word({{20, 7}});
    for (std::uint64_t code = 0; code <= 6; ++code) {
        const auto ratio = std::uint64_t{1} << code;
        Type(&PllPanel::txtOUT0_DIV, txtOUT0_DIV_Enter, std::to_string(ratio));
        EXPECT_EQ(Held("R4"), without | Word({{20, code}})) << "divider " << ratio;
        EXPECT_EQ(Pll().OUT0_Freq(), 4000.0 / static_cast<double>(ratio));
    }
}

TEST_F(ShippedChip, adf4351_doubles_and_divides_the_reference) {
    Pick("ADF4351");
    const std::uint64_t plain = Held("R2") & ~Word({{14, 1023}, {25, 1}});
    Type(&PllPanel::txtRCounter, txtRCounter_Apply, "5");
    EXPECT_EQ(Held("R2"), plain | Word({{14, 5}}));
    EXPECT_EQ(Pll().PDFrequency(), 5000);
    part.PrgmBits("REF_DOUBLER").SetValue(1);
    EXPECT_EQ(Held("R2"), plain | Word({{14, 5}, {25, 1}}));
    EXPECT_EQ(Pll().PDFrequency(), 10000);
}

// ADF4106 with its 32/33 prescaler: N = 32 * B + A.

std::uint64_t Adf4106N(std::uint64_t n) {
    return Word({{8, n / 32}, {2, n % 32}, {0, 1}});
}

TEST_F(ShippedChip, adf4106_splits_n_into_b_and_a) {
    Pick("ADF4106");
    const std::uint64_t function = Word({{22, 2}, {18, 7}, {15, 7}, {7, 1}, {4, 1}});
    EXPECT_THAT(SentByLoadAll(), ElementsAre(Pair("I", function | 3), Pair("F", function | 2),
                                             Pair("R", 10U << 2), Pair("N", Adf4106N(2500))));
    LoadChanges(part);
    for (const std::uint64_t mhz : {2410U, 992U, 5999U, 6000U, 1023U, 1024U}) {
        const auto before = desk.bench.board.newest();
        TypeVCO(std::to_string(mhz));
        EXPECT_THAT(SentSince(before), ElementsAre(Pair("N", Adf4106N(mhz)))) << mhz << " MHz";
        EXPECT_EQ(Pll().NValue(), static_cast<double>(mhz));
    }
}

TEST_F(ShippedChip, adf4106_keeps_the_vco_on_a_typed_comparison_frequency) {
    Pick("ADF4106");
    desk.session.bVCOFixed = true;
    Type(&PllPanel::txtFpd, txtFpd_Apply, "200");
    EXPECT_EQ(Held("R"), 50U << 2);
    EXPECT_EQ(Held("N"), Adf4106N(12500));
    EXPECT_EQ(Pll().VCOFrequency(), 2500);
}

// ADF4002: N alone.

TEST_F(ShippedChip, adf4002_counts_n_plainly) {
    Pick("ADF4002");
    const std::uint64_t function = Word({{18, 7}, {15, 7}, {7, 1}, {4, 1}});
    EXPECT_THAT(SentByLoadAll(), ElementsAre(Pair("I", function | 3), Pair("F", function | 2),
                                             Pair("R", 0x0001F4), Pair("N", 0x018001)));
    EXPECT_EQ(Pll().panel.txtVCO.Text, "30.72");
    for (const std::uint64_t mhz : {200U, 400U, 8U}) {
        TypeVCO(std::to_string(mhz));
        EXPECT_EQ(Held("N"), Word({{8, mhz * 1000 / 80}, {0, 1}})) << mhz << " MHz";
    }
}

// ADF4153: N = INT + FRAC / MOD from a doubled reference.

TEST_F(ShippedChip, adf4153_steps_by_the_modulus) {
    Pick("ADF4153");
    EXPECT_THAT(SentByLoadAll(), ElementsAre(Pair("R3", 0x0003C7), Pair("R2", 0x001BC2),
                                             Pair("R1", 0x144191), Pair("R0", 0x1E80C8)));
    EXPECT_EQ(Pll().panel.txtVCO.Text, "2450");
    for (const std::uint64_t khz : {2451400U, 2000000U, 3999800U, 1820200U}) {
        TypeVCO(std::to_string(khz / 1000) + "." + std::to_string(khz % 1000 + 1000).substr(1));
        const std::uint64_t steps = khz / 200;
        EXPECT_EQ(Held("R0"), Word({{14, steps / 100}, {2, steps % 100}})) << khz << " kHz";
        EXPECT_NEAR(Pll().VCOFrequency(), static_cast<double>(khz) / 1000, 1e-9);
    }
}

TEST_F(ShippedChip, adf4153_writes_its_noise_mode_through_two_fields) {
    Pick("ADF4153");
    cPrgmBits& mode = part.PrgmBits("SPUR_LOW");
    struct Mode {
        double value;
        std::uint64_t high, low;
    };
    for (const Mode& set : {Mode{28, 14, 0}, {0, 0, 0}, {31, 15, 1}}) {
        mode.SetValue(set.value);
        EXPECT_EQ(Held("R3"), Word({{6, set.high}, {2, set.low}, {0, 3}})) << set.value;
        EXPECT_EQ(mode.Value(), set.value);
    }
}

// AD9512: ratio = high cycles + low cycles, each stored less one; or the divider is passed by.

struct Ad9512 : ShippedChip {
    void SetUp() override { Pick("AD9512"); }
    cClkDist& Clocks() { return part.ClkDists(1); }
    ClockChannelRow& Row(int channel) {
        return Clocks().panel.channels[static_cast<std::size_t>(channel)];
    }
    static std::uint64_t Byte(std::uint64_t address, std::uint64_t data) {
        return Word({{8, address}, {0, data}});
    }
};

TEST_F(Ad9512, sends_every_register_behind_its_address_and_the_update_last) {
    std::map<std::uint64_t, std::uint64_t> start{
        {0x00, 0x10}, {0x34, 0x01}, {0x35, 0},    {0x36, 0},    {0x3D, 0x08}, {0x3E, 0x08},
        {0x3F, 0x08}, {0x40, 0x02}, {0x41, 0x02}, {0x45, 0x01}, {0x58, 0},    {0x5A, 1}};
    for (std::uint64_t address = 0x4A; address <= 0x53; ++address)
        start[address] = 0;
    std::vector<std::uint64_t> expected;
    for (const auto& [address, data] : start)
        expected.push_back(Byte(address, data));
    std::vector<std::uint64_t> sent;
    for (const auto& [name, word] : SentByLoadAll())
        sent.push_back(word);
    EXPECT_EQ(sent, expected);
}

TEST_F(Ad9512, codes_a_typed_ratio_as_high_and_low_cycles) {
    for (int channel = 0; channel < 5; ++channel) {
        for (std::uint64_t ratio = 2; ratio <= 32; ++ratio) {
            Row(channel).chDivText.Text = std::to_string(ratio);
            EnterClockBox(Clocks(), ClockBox::ChannelDiv, channel);
            const std::uint64_t high = ratio / 2;
            const auto a = static_cast<std::uint64_t>(channel);
            EXPECT_EQ(Held("DIV" + std::to_string(channel) + "A"),
                      Byte(0x4A + 2 * a, Word({{4, ratio - high - 1}, {0, high - 1}})))
                << "OUT" << channel << " / " << ratio;
            const double shown = ParseNumber(Row(channel).divCHtxt_freq.Text).value_or(0);
            EXPECT_NEAR(shown, 1000.0 / static_cast<double>(ratio), 1e-6);
        }
    }
}

TEST_F(Ad9512, passes_a_divider_by) {
    part.PrgmBits("MUX2").SetBitValue(1);
    part.UpdateDisplays();
    EXPECT_EQ(Held("DIV2B"), Byte(0x4F, 0x80));
    EXPECT_EQ(Row(2).divCHtxt_freq.Text, "1000");
    EXPECT_EQ(Row(1).divCHtxt_freq.Text, "500");
}

TEST_F(Ad9512, delays_the_one_output_that_can_be_delayed) {
    EXPECT_EQ(Row(4).divCB_CMux.List[2], "Divided");
    EXPECT_EQ(Row(4).divCB_CMux.ListIndex, 2);
    Row(4).divCB_CMux.SetListIndex(0); // "Divided and Delayed"
    EXPECT_EQ(Held("DLY4_BYP"), Byte(0x34, 0));
    Row(4).divCB_CDelay.SetListIndex(24);
    EXPECT_EQ(Held("DLY4_FINE"), Byte(0x36, 24U << 1));
    EXPECT_EQ(Row(4).divCB_CDelay.BackColor, colors::kWhite);
    Row(4).divCB_CMux.SetListIndex(3); // "Bypassed"
    EXPECT_EQ(Held("DLY4_BYP"), Byte(0x34, 1));
    EXPECT_EQ(Held("DIV4B"), Byte(0x53, 0x80));
    EXPECT_EQ(Row(0).divCB_CDelay.List[0], "No delay");
    EXPECT_EQ(Row(0).divCB_CDelay.ListIndex, 0);
    const std::uint64_t update = Held("UPDATE");
    Row(0).divCB_CDelay.SetListIndex(1);
    EXPECT_EQ(Held("UPDATE"), update);
    EXPECT_EQ(Row(0).divCB_CDelay.ListIndex, 0);
}

TEST_F(Ad9512, takes_the_nearest_ratio_that_it_has_and_steps_no_further) {
    for (const char* typed : {"33", "100", "200"}) {
        Row(0).chDivText.Text = typed;
        EnterClockBox(Clocks(), ClockBox::ChannelDiv, 0);
        EXPECT_EQ(Held("DIV0A"), Byte(0x4A, 0xFF)) << typed;
        EXPECT_EQ(Row(0).chDivText.Text, "32") << typed;
    }
    StepChannelDivider(Clocks(), 0, true);
    EXPECT_EQ(Row(0).chDivText.Text, "32");
    StepChannelDivider(Clocks(), 0, false);
    EXPECT_EQ(Row(0).chDivText.Text, "31");
}

} // namespace
} // namespace zentrel
