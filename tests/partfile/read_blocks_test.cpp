#include "partfile/part_definition.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/partfile/read_part.h"

namespace zentrel {
namespace {

using testing::ElementsAre;

TEST(PartKeys, of_plls_and_clock_blocks_reach_their_places) {
    std::string text = "[PLLS]\nCOUNT=2\n";
    for (const auto* word : {"N",
                             "R",
                             "DOUBLER",
                             "PD",
                             "IPO",
                             "TRI",
                             "NP",
                             "OSCINPIN",
                             "OSCBIT",
                             "FOUTPIN",
                             "FINPIN",
                             "CPOUTPIN",
                             "FRACTNUM",
                             "FRACTDEN",
                             "OUT0_DIV",
                             "OUT1_DIV",
                             "OUT0PIN",
                             "OUT1PIN",
                             "VCO_MIN",
                             "VCO_MAX",
                             "OSC_MIN",
                             "OSC_MAX",
                             "FPD_MIN",
                             "FPD_MAX",
                             "N_CHECK_TYPE",
                             "NP_MID_FREQUENCY",
                             "N_CHECK_LOW_RANGE",
                             "N_CHECK_HIGH_RANGE"}) {
        text.append(word).append("01=").append(word).append("\n");
    }
    text += "OSCIN01=19.2\n[CLKDISTS]\nCOUNT=2\nClocks01=4\nVCO01=2\nDISPLAY_TYPE01=Distribution\n"
            "CLK_DIV_0301=d\nCLK_DELAY_0301=y\nCLK_MUX_0301=m\nCLK_EN_0301=e\n"
            "RefOSC_Freq01=10\nExtSRC_Freq01=20.5\nIntVCO_Freq01=1E3\n"
            "INPUT_DIV_BYP_VAL01=1\nINPUT_DIV_BYP_CLEAR_VAL01=2\n";
    for (const auto* word : {"PLL", "NDelay", "RDelay", "INPUT_DIV", "INPUT_DIV_BYP", "INPUT_MUX",
                             "LF_C3", "LF_R3", "LF_C4", "LF_R4", "LF_C3C4"}) {
        text.append(word).append("01=").append(word).append("\n");
    }
    const PartDefinition part = ReadPart(text);
    const PllEntry& pll = part.plls.at(1);
    EXPECT_EQ(pll.oscIn, 19.2);
    EXPECT_THAT((std::vector<std::string>{pll.n,
                                          pll.r,
                                          pll.doubler,
                                          pll.pd,
                                          pll.ipo,
                                          pll.tri,
                                          pll.np,
                                          pll.oscInPin,
                                          pll.oscBit,
                                          pll.fOutPin,
                                          pll.fInPin,
                                          pll.cpOutPin,
                                          pll.fractNum,
                                          pll.fractDen,
                                          pll.out0Div,
                                          pll.out1Div,
                                          pll.out0Pin,
                                          pll.out1Pin,
                                          pll.vcoMin,
                                          pll.vcoMax,
                                          pll.oscMin,
                                          pll.oscMax,
                                          pll.fpdMin,
                                          pll.fpdMax,
                                          pll.nCheckType,
                                          pll.npMidFrequency,
                                          pll.nCheckLowRange,
                                          pll.nCheckHighRange}),
                ElementsAre("N", "R", "DOUBLER", "PD", "IPO", "TRI", "NP", "OSCINPIN", "OSCBIT",
                            "FOUTPIN", "FINPIN", "CPOUTPIN", "FRACTNUM", "FRACTDEN", "OUT0_DIV",
                            "OUT1_DIV", "OUT0PIN", "OUT1PIN", "VCO_MIN", "VCO_MAX", "OSC_MIN",
                            "OSC_MAX", "FPD_MIN", "FPD_MAX", "N_CHECK_TYPE", "NP_MID_FREQUENCY",
                            "N_CHECK_LOW_RANGE", "N_CHECK_HIGH_RANGE"));
    const ClkDistEntry& block = part.clkDists.at(1);
    EXPECT_THAT((std::vector<std::string>{block.pll, block.nDelay, block.rDelay, block.inputDiv,
                                          block.inputDivByp, block.inputMux, block.lfC3, block.lfR3,
                                          block.lfC4, block.lfR4, block.lfC3C4, block.displayType}),
                ElementsAre("PLL", "NDelay", "RDelay", "INPUT_DIV", "INPUT_DIV_BYP", "INPUT_MUX",
                            "LF_C3", "LF_R3", "LF_C4", "LF_R4", "LF_C3C4", "Distribution"));
    EXPECT_EQ(block.vcoCount, 2);
    EXPECT_EQ(block.refOscFreq, 10);
    EXPECT_EQ(block.extSrcFreq, 20.5);
    EXPECT_EQ(block.intVcoFreq, 1000);
    EXPECT_EQ(block.inputDivBypVal, 1);
    EXPECT_EQ(block.inputDivBypClearVal, 2);
    ASSERT_EQ(block.channels.size(), 4U);
    EXPECT_EQ(block.channels[3].divider, "d");
    EXPECT_EQ(block.channels[3].delay, "y");
    EXPECT_EQ(block.channels[3].mux, "m");
    EXPECT_EQ(block.channels[3].enable, "e");
    EXPECT_EQ(block.channels[1].divider, "");
}

} // namespace
} // namespace zentrel
