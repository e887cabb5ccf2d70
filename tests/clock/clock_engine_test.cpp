#include "clock/clock_engine.h"

#include <cmath>
#include <limits>
#include <optional>

#include "tests/clock/clock_rig.h"

namespace zentrel::clock_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kInf = std::numeric_limits<double>::infinity();

// One PLL (crystal 10 MHz, R 1: 10 MHz comparison frequency) and one block on it: VCO divider 2,
// internal VCO 1200, external source 2000, reference 10.
struct Device : ClockRig {
    explicit Device(const std::string& mode, int denominator = 0) {
        AddInputFields();
        pll = &AddPLLBlock("PLL1", 10, 1, denominator);
        block = &AddBlock("A", "PLL1", 8, mode);
        Settle();
    }
    // As a refresh leaves them.
    void Select(double mode, double mux = 0) {
        part.PrgmBits("MODE").SetBitValue(mode);
        part.PrgmBits("INPUT_MUX").SetBitValue(mux);
        const UpdatingScope updating(part);
        block->panel.cbClkInputMux.SetListIndex(mode <= 3 ? static_cast<int>(mode) : -1);
    }
    // Frequencies as entered, counters at something else, no refresh yet.
    void Enter(double vco, double external) {
        block->SetIntVCO_Freq(vco);
        block->SetExtSRC_Freq(external);
        block->InputDiv_Out_Freq = -1;
        pll->SetNValue(5.0);
    }
    cPLL* pll = nullptr;
    cClkDist* block = nullptr;
};

TEST(ClockEngine, the_display_mode_and_the_input_say_what_feeds_the_channels) {
    struct Row {
        const char* mode;
        int index;
        double source;
    };
    for (const Row& row : {
             Row{"Engineering", 0, 600},
             Row{"engineering", 1, 2000},
             Row{"VCO_EXTVCO", 2, 2000},
             Row{"VCO_extVCO", 3, 10},
             Row{"VCO_extVCO", -1, 0},
             Row{"PLL_internalVCO", 3, 600},
             Row{"PLL_externalVCO", 0, 2000},
             Row{"distribution", 0, 2000},
         }) {
        Device device("Engineering");
        device.Select(row.index < 0 ? 7 : row.index);
        device.block->InputDiv_Out_Freq = 600;
        device.part.clkdistDisplayMode = row.mode;
        EXPECT_EQ(device.block->GetSourceFrequency(), row.source) << row.mode << row.index;
        EXPECT_THAT(device.messages, IsEmpty());
    }
    Device device("Engineering");
    device.part.clkdistDisplayMode = "PLL";
    EXPECT_EQ(device.block->GetSourceFrequency(), 2000);
    EXPECT_THAT(device.messages, ElementsAre("ERROR - GetSourceFrequency"));
}

TEST(ClockEngine, a_block_brings_its_pll_and_its_frequencies_into_step) {
    struct Row {
        const char* what;
        const char* mode;
        double modeBit, mux;
        bool bypass;
        int extra;
        // Afterwards, from 1210 entered for the VCO and 2004 for the external source:
        double n, vco, external, divided;
    };
    // With a VCO divider of 2 the VCO moves in steps of 20, bypassed in steps of 10.
    const Row rows[] = {
        {"VCO selected", "Engineering", 0, 1, false, 1, 60, 1200, 2004, 600},
        {"VCO, bypassed: the diagram still shows it divided", "Engineering", 0, 1, true, 1, 121,
         1210, 2004, 605},
        {"external source", "VCO_extVCO", 1, 0, false, 1, 200, 1210, 2000, 605},
        {"distribution input", "VCO_extVCO", 2, 0, false, 1, 5, 1210, 2004, 605},
        {"reference", "VCO_extVCO", 3, 0, false, 1, 5, 1210, 2004, 605},
        {"test mode, VCO", "Engineering", 7, 0, false, 1, 60, 1200, 2004, 600},
        {"test mode, external", "Engineering", 7, 1, false, 1, 200, 1210, 2000, 605},
        {"test mode, reference", "Engineering", 7, 2, false, 1, 5, 1210, 2004, 605},
        {"internal VCO", "PLL_internalVCO", 3, 2, false, 1, 60, 1200, 2004, 605},
        {"internal VCO, bypassed", "PLL_internalVCO", 0, 0, true, 1, 121, 1210, 2004, 1210},
        {"internal VCO, extra divider", "PLL_internalVCO", 0, 0, false, 3, 20, 1200, 2004,
         1210.0 / 6},
        {"extra divider 0 counts as 1", "PLL_internalVCO", 0, 0, false, 0, 60, 1200, 2004, 605},
        {"external VCO", "PLL_externalVCO", 0, 0, false, 3, 200, 1210, 2000, -1},
        {"distribution", "Distribution", 0, 0, false, 3, 5, 1210, 2004, 2004},
        {"unknown", "Sideways", 0, 0, false, 1, 5, 1210, 2004, -1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        Device device("Engineering");
        device.part.clkdistDisplayMode = row.mode;
        device.Select(row.modeBit, row.mux);
        device.pll->Setextra_pll_n_div_1(static_cast<std::int16_t>(row.extra));
        device.block->panel.CLK_VCODIV_bypass.Value = row.bypass;
        device.Enter(1210, 2004);
        device.block->UpdateCLKValues();
        EXPECT_EQ(device.Value("PLL1_N"), row.n);
        EXPECT_DOUBLE_EQ(device.block->IntVCO_Freq(), row.vco);
        EXPECT_DOUBLE_EQ(device.block->ExtSRC_Freq(), row.external);
        // The tail takes what the counters gave.
        EXPECT_DOUBLE_EQ(device.block->InputDiv_Out_Freq, row.divided);
    }
}

TEST(ClockEngine, the_divider_is_out_of_the_path_when_hidden_or_visibly_bypassed) {
    struct Row {
        bool divider, box, checked, bypassed;
    };
    for (const Row& row : {Row{true, true, false, false}, Row{true, true, true, true},
                           Row{true, false, true, false}, Row{false, true, false, true}}) {
        Device device("PLL_internalVCO");
        device.block->panel.CLKtxt_InputDiv.Visible = row.divider;
        device.block->panel.CLK_VCODIV_bypass.Visible = row.box;
        device.block->panel.CLK_VCODIV_bypass.Value = row.checked;
        EXPECT_EQ(VCO_div_bypassed(device.part, 1), row.bypassed);
    }
    Device device("PLL_internalVCO");
    for (const int nowhere : {-1, 0, 2})
        EXPECT_TRUE(VCO_div_bypassed(device.part, nowhere));
}

TEST(ClockEngine, a_channel_puts_out_what_its_mux_divider_and_enable_let_through) {
    struct Row {
        const char* what;
        int mux;
        double divider, enable, source, extra;
        const char* frequency;
        bool divided, delayed;
    };
    const Row rows[] = {
        {"bypassed", 0, 4, 1, 600, 1, "600", false, false},
        {"divided", 1, 4, 1, 600, 1, "150", true, false},
        {"delayed", 2, 4, 1, 600, 1, "600", false, true},
        {"any other wording", 3, 4, 1, 600, 1, "150", true, true},
        {"disabled", 1, 4, 0, 600, 1, "", true, false},
        {"disabled, divider 0", 1, 0, 0, 600, 1, "", true, false},
        {"divider 0", 1, 0, 1, 600, 1, "?", true, false},
        {"divider 0, bypassed", 0, 0, 1, 600, 3, "1800", false, false},
        {"extra divider undone", 1, 4, 1, 200, 3, "150", true, false},
        {"no input", 1, 4, 1, 0, 1, "0", true, false},
        {"all digits", 1, 7, 1, 600, 1, "85.7142857142857", true, false},
    };
    Device device("PLL_internalVCO");
    for (const Row& row : rows) {
        device.part.PrgmBits("A_CLK2_MUX").SetBitValue(row.mux);
        device.part.PrgmBits("A_CLK2_DIV").SetValue(row.divider);
        device.part.PrgmBits("A_CLK2_EN").SetValue(row.enable);
        const ChannelOutput output = OutputOfChannel(*device.block, 2, row.source, row.extra);
        EXPECT_EQ(output.frequency, row.frequency) << row.what;
        EXPECT_EQ(output.divided, row.divided) << row.what;
        EXPECT_EQ(output.delayed, row.delayed) << row.what;
        EXPECT_EQ(output.enabled, row.enable == 1) << row.what;
    }
}

TEST(ClockEngine, numbers_that_no_counter_can_express_change_nothing) {
    struct Fault {
        const char* what;
        void (*make)(Device&);
    };
    const Fault faults[] = {
        {"VCO divider 0", [](Device& d) { d.part.PrgmBits("A_VCO_DIV").SetValue(0); }},
        {"divider field gone", [](Device& d) { d.block->SetInputDividerName("GONE"); }},
        {"R counter gone", [](Device& d) { d.pll->SetRCounter("GONE"); }},
        {"N counter gone", [](Device& d) { d.pll->SetNCounter("GONE"); }},
    };
    for (const Fault& fault : faults) {
        SCOPED_TRACE(fault.what);
        Device device("PLL_internalVCO");
        fault.make(device);
        const auto words = device.Words();
        device.block->UpdateCLKValues();
        EXPECT_EQ(device.Words(), words);
        EXPECT_EQ(device.block->IntVCO_Freq(), 1200);
        EXPECT_TRUE(std::isfinite(device.block->InputDiv_Out_Freq));
    }
}

TEST(ClockEngine, frequencies_take_finite_numbers_and_a_zero_only_for_the_reference) {
    Device device("PLL_internalVCO");
    cClkDist& block = *device.block;
    for (const double bad : {kInf, -kInf, std::nan(""), 2e19}) {
        block.SetRefOSC_Freq(bad);
        block.SetExtSRC_Freq(bad);
        block.SetIntVCO_Freq(bad);
    }
    block.SetExtSRC_Freq(0);
    block.SetIntVCO_Freq(0);
    EXPECT_EQ(block.RefOSC_Freq(), 10);
    EXPECT_EQ(block.ExtSRC_Freq(), 2000);
    EXPECT_EQ(block.IntVCO_Freq(), 1200);
    block.SetRefOSC_Freq(0);
    EXPECT_EQ(block.RefOSC_Freq(), 0);
}

TEST(ClockEngine, a_frequency_far_beyond_the_counter_ends_where_the_pll_says) {
    Device device("PLL_internalVCO");
    device.Enter(1e15, 2000); // N would need more than 32 bits: 1000 stands for it
    device.block->UpdateCLKValues();
    EXPECT_EQ(device.Value("PLL1_N"), 1000);
    EXPECT_EQ(device.block->IntVCO_Freq(), 20000);
    device.Enter(1e9, 2000); // beyond the counter's 20 bits
    device.block->UpdateCLKValues();
    EXPECT_EQ(device.Value("PLL1_N"), 1048575);
    EXPECT_EQ(device.block->IntVCO_Freq(), 20971500);
}

TEST(ClockEngine, a_block_whose_pll_is_not_there_stands_alone) {
    for (const char* mode : {"PLL_internalVCO", "PLL_externalVCO", "Engineering"}) {
        ClockRig rig;
        rig.AddInputFields();
        cClkDist& block = rig.AddBlock("A", "NOWHERE", 2, mode);
        EXPECT_EQ(block.LinkedPLLInt, 0);
        block.UpdateCLKValues();
        UpdateFreqs(rig.part, 1);
        zentrel::UpdateCLKDISTDisplay(rig.part);
        const bool external = std::string(mode) == "PLL_externalVCO";
        EXPECT_EQ(block.panel.channels[1].divCHtxt_freq.Text, external ? "1000" : "300") << mode;
        EXPECT_THAT(rig.messages, IsEmpty()) << mode;
    }
}

TEST(ClockEngine, the_source_frequency_can_set_n) {
    Device device("Engineering");
    device.Select(1);
    UpdateFreqs(device.part, 1);
    EXPECT_EQ(device.Value("PLL1_N"), 200);
    device.Select(7); // nothing feeds the channels: 0 MHz is no plan
    UpdateFreqs(device.part, 1);
    EXPECT_EQ(device.Value("PLL1_N"), 200);
}

TEST(ClockEngine, test_mode_choices_write_the_input_mux) {
    Device device("Engineering");
    const std::pair<void (*)(const cPart&), double> rows[] = {
        {SetExtVCO_TM, 1}, {SetOSCin_TM, 2}, {SetDistribution_TM, 1}, {SetVCO_TM, 0}};
    for (const auto& [choose, mux] : rows) {
        choose(device.part);
        EXPECT_EQ(device.Bits("INPUT_MUX"), mux);
    }
}

} // namespace
} // namespace zentrel::clock_test
