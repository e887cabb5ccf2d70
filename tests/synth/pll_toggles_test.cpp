#include "synth/pll_toggles.h"

#include "tests/synth/rig.h"

namespace zentrel::synth_test {
namespace {

TEST(PllToggles, each_label_switches_its_field) {
    const struct {
        void (*click)(cPart&, int);
        const char* field;
        double before, after;
    } rows[] = {
        {lblDoubler_Click, "D", 0, 1},
        {lblNPrescale_Click, "NP", 1, 0},
        {lblPDPol_Click, "POL", 0, 1},
        {lblCPState_Click, "STATE", 3, 0}, // two bits: counts up and wraps
        {[](cPart& part, int i) { lblCPGain_MouseUp(part, i, true); }, "GAIN", 2, 3},
        {[](cPart& part, int i) { lblCPGain_MouseUp(part, i, true); }, "GAIN", 3, 3},
        {[](cPart& part, int i) { lblCPGain_MouseUp(part, i, false); }, "GAIN", 2, 1},
        {[](cPart& part, int i) { lblCPGain_MouseUp(part, i, false); }, "GAIN", 0, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.field);
        Rig rig;
        for (const char* field : {"POL", "NP"})
            rig.AddField(field, 1);
        for (const char* field : {"GAIN", "STATE"})
            rig.AddField(field, 2);
        rig.AddPll({.doubler = "D",
                    .prescaler = "NP",
                    .polarity = "POL",
                    .gain = "GAIN",
                    .state = "STATE"});
        rig.Seed(row.field, row.before);
        rig.displays.log.clear();
        row.click(rig.part, 1);
        EXPECT_EQ(rig.Value(row.field), row.after);
        EXPECT_EQ(rig.displays.log, "PLL CLK REG BIT");
        EXPECT_FALSE(rig.Pending());
    }
}

TEST(PllToggles, a_label_without_a_field_does_nothing) {
    Rig rig;
    rig.AddPll();
    lblDoubler_Click(rig.part, 1);
    lblCPGain_MouseUp(rig.part, 1, false);
    EXPECT_EQ(rig.displays.log, "");
}

TEST(PllToggles, show_bits_lists_what_the_block_has) {
    Rig rig;
    rig.AddPll({.polarity = "", .gain = "GAIN"});
    txtGetPLLBits_Click(rig.part, 1);
    EXPECT_EQ(rig.messages.shown.back(), "These are the Bits Represented on this Screen\r\n"
                                         "-------------------------------------------\r\n"
                                         "R Counter:                           R\r\n"
                                         "Charge Pump Gain:              GAIN\r\n"
                                         "N Counter:                           N");
}

TEST(PllToggles, show_bits_keeps_the_order_of_the_signal_path) {
    Rig rig;
    rig.AddField("POL", 1);
    PllPanel& panel = rig.AddPll({.doubler = "D",
                                  .num = "NUM",
                                  .den = "DEN",
                                  .out0 = "O0",
                                  .out1 = "O1",
                                  .prescaler = "NP",
                                  .polarity = "POL",
                                  .gain = "GAIN",
                                  .state = "STATE",
                                  .oscBit = "OSC"})
                          .panel;
    panel.pllSynthDivLblHigh.Tag = "DIV";
    const std::string text = PLLBitsText(rig.part, 1);
    std::size_t at = 0;
    for (const char* row :
         {"OSCin Bit                           OSC", "Doubler:                              D",
          "R Counter:                           R", "Phase Detector Polarity:      POL",
          "Charge Pump Gain:              GAIN", "Charge Pump State:             STATE",
          "Synth Divider:                  DIV", "N Prescaler:                         NP",
          "N Counter:                           N", "Fractional Numerator:          NUM",
          "Fractional Denominator:       DEN", "OUT0 Divider:                        O0",
          "OUT Divider:                        O1"}) {
        const std::size_t found = text.find(std::string("\r\n").append(row));
        ASSERT_NE(found, std::string::npos) << row;
        EXPECT_GT(found, at) << row;
        at = found;
    }
    EXPECT_TRUE(text.ends_with("O1"));
}

} // namespace
} // namespace zentrel::synth_test
