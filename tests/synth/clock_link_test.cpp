#include "synth/clock_link.h"

#include "synth/synth_div.h"
#include "tests/synth/rig.h"

namespace zentrel::synth_test {
namespace {

using ::testing::ElementsAre;

TEST(ClockLink, a_caption_finds_the_pll_itself_or_through_its_clock_block) {
    Rig rig;
    cPLL& pll = rig.AddPll();
    rig.Link(pll, "PLL_internalVCO");
    EXPECT_EQ(GetPLLfromCaption(rig.part, "PLL"), &pll);
    EXPECT_EQ(GetPLLfromCaption(rig.part, "CLK"), &pll);
    EXPECT_EQ(GetPLLfromCaption(rig.part, "pll"), nullptr) << "captions compare exactly";
    rig.blocks.block->pllName = "Gone";
    EXPECT_EQ(GetPLLfromCaption(rig.part, "CLK"), nullptr);
}

TEST(ClockLink, an_unknown_caption_is_told) {
    Rig rig;
    UpdateCLKforPLL(rig.part, "Nobody");
    EXPECT_THAT(rig.messages.shown, ElementsAre("Failed to UpdateCLKforPLL: Nobody"));
}

TEST(ClockLink, the_vco_goes_into_the_frequency_that_the_pll_drives) {
    const struct {
        const char* mode;
        int modeBit, muxBit, list;
        double internal, external;
    } rows[] = {
        {"Engineering", 1, 0, 0, 1000, 2},     {"VCO_extVCO", 0, 0, 1, 3, 1000},
        {"VCO_extVCO", 0, 0, 2, 3, 2},         {"Engineering", 7, 0, 3, 1000, 2},
        {"Engineering", 7, 1, 0, 3, 1000},     {"Engineering", 7, 2, 0, 3, 2},
        {"PLL_internalVCO", 7, 1, 1, 1000, 2}, {"PLL_externalVCO", 0, 0, 0, 3, 1000},
        {"Distribution", 0, 0, 0, 3, 2},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.mode) + " MODE " + std::to_string(row.modeBit));
        Rig rig;
        rig.AddField("MODE", 3, row.modeBit);
        rig.AddField("INPUT_MUX", 2, row.muxBit);
        cPLL& pll = rig.AddPll();
        FakeBlock& block = rig.Link(pll, row.mode);
        block.mux = row.list;
        UpdateCLKforPLL(rig.part, "PLL");
        EXPECT_EQ(block.internal, row.internal);
        EXPECT_EQ(block.external, row.external);
    }
}

TEST(SynthDiv, the_vco_divider_shows_where_the_feedback_passes_it) {
    const struct {
        const char* mode;
        int modeBit, divider;
        bool bypassed, before, shown;
    } rows[] = {
        {"PLL_internalVCO", 0, 4, false, false, true}, {"PLL_internalVCO", 0, 4, true, true, false},
        {"PLL_externalVCO", 0, 4, false, true, false}, {"Engineering", 0, 4, true, false, true},
        {"Engineering", 1, 4, false, true, false},     {"VCO_extVCO", 2, 4, false, true, false},
        {"VCO_extVCO", 3, 4, false, true, false},      {"Engineering", 7, 0, false, false, true},
        {"Engineering", 7, 0, true, true, false},      {"Engineering", 7, 4, false, true, false},
        {"Engineering", 5, 4, false, true, true},      {"Engineering", 5, 4, false, false, false},
        {"Distribution", 0, 4, false, true, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.mode) + " MODE " + std::to_string(row.modeBit));
        Rig rig;
        rig.AddField("MODE", 3, row.modeBit);
        rig.AddField("DIV", 4, row.divider);
        cPLL& pll = rig.AddPll();
        FakeBlock& block = rig.Link(pll, row.mode);
        block.divider = "DIV";
        block.bypassed = row.bypassed;
        row.before ? ShowSynthDiv(rig.part, 1) : HideSynthDiv(rig.part, 1);
        UpdatePLLandCLKDISTDisplay(rig.part, 1, 1);
        EXPECT_EQ(pll.panel.pllSynthDiv.Visible, row.shown);
        EXPECT_EQ(pll.panel.pllSynthDivLblLow.Visible, row.shown);
        EXPECT_EQ(pll.panel.pllSynthDivLblLow.Caption, std::to_string(row.divider));
    }
}

TEST(SynthDiv, a_script_can_ask_by_the_mux_alone) {
    const struct {
        const char* mode;
        int modeBit, muxBit, list;
        bool shown;
    } rows[] = {
        {"Engineering", 7, 0, 3, true},     {"Engineering", 7, 1, 0, false},
        {"VCO_extVCO", 2, 1, 0, true},      {"VCO_extVCO", 0, 0, 1, false},
        {"PLL_internalVCO", 7, 1, 3, true}, {"Distribution", 0, 0, 0, false},
    };
    for (const auto& row : rows) {
        Rig rig;
        rig.AddField("MODE", 3, row.modeBit);
        rig.AddField("INPUT_MUX", 2, row.muxBit);
        cPLL& pll = rig.AddPll();
        rig.Link(pll, row.mode).mux = row.list;
        row.shown ? HideSynthDiv(rig.part, 1) : ShowSynthDiv(rig.part, 1);
        ShowHideSynthMuxLogic(rig.part, 1);
        EXPECT_EQ(pll.panel.pllSynthDivLblHigh.Visible, row.shown) << row.mode;
    }
}

TEST(SynthDiv, extra_and_manual_divider_show_when_a_script_asks) {
    Rig rig;
    const PllPanel& panel = rig.AddPll().panel;
    SetShowExtraDiv(rig.part, true, 1);
    EXPECT_TRUE(panel.pllExtraDiv.Visible && panel.pllExtraDivLbl.Visible &&
                panel.pllExtraDivVal.Visible);
    EXPECT_FALSE(panel.pllManualDivide.Visible);
    SetShowManualDiv(rig.part, true, 1);
    EXPECT_TRUE(panel.pllManualDivide.Visible);
    SetShowExtraDiv(rig.part, false, 1);
    EXPECT_FALSE(panel.pllExtraDivVal.Visible);
}

} // namespace
} // namespace zentrel::synth_test
