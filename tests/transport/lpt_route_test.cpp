#include "transport/lpt_route.h"

#include <gmock/gmock.h>

#include "rig.h"
#include "transport/checks.h"

namespace zentrel {
namespace {

using ::testing::ElementsAre;
using Writes = std::vector<std::pair<int, int>>;
using States = std::vector<std::int16_t>;

// Clock 1, data 2, latch enable 8 under LPT.
TEST(PortVector, a_word_is_two_states_for_each_bit_and_a_latch_pulse) {
    struct Case {
        const char* what;
        bool inverted, keepLatch, trigger;
        States states;
    };
    const Case cases[] = {
        {"plain", false, false, false, {2, 3, 0, 1, 2, 3, 0, 8, 0}},
        {"other clock phase", true, false, false, {3, 2, 1, 0, 3, 2, 0, 8, 0}},
        {"read-back", false, true, false, {2, 3, 0, 1, 2, 3, 0, 8, 8}},
        {"trigger", false, false, true, {2, 3, 0, 1, 2, 3, 0, 40, 0}},
    };
    for (const Case& c : cases) {
        Rig rig(kRouteLpt, 3);
        rig.part.InvertClock = c.inverted;
        if (c.trigger) rig.AddPin("Trigger", 6).SetEnabled(true);
        FillPortVector(rig.part, BitWord(5), c.keepLatch);
        EXPECT_EQ(rig.part.PortVector(), c.states) << c.what;
    }
}

TEST(PortVector, of_a_word_too_long_the_upper_bits_go_out) {
    Rig rig(kRouteLpt, 3);
    EXPECT_EQ(GenerateBurstRegister(rig.part, 0b11010), (States{2, 3, 2, 3, 0, 1, 0, 8, 0}));
    EXPECT_EQ(GenerateBurstRegister(rig.part, -5), (States{0, 1, 0, 1, 0, 1, 0, 8, 0}));
    EXPECT_EQ(rig.board().newest(), 0U) << "building a vector touches no port";
}

TEST(PortVector, its_text_is_that_of_the_last_register_load) {
    Rig rig(kRouteLpt, 2);
    rig.part.Registers("R0").SetValue(2);
    LoadRegister(rig.part, "R0");
    GenerateBurstRegister(rig.part, 3);
    LoadValue(rig.part, 1);
    EXPECT_EQ(PortVectorText(rig.part), "2 3 0 1 0 8 0 ");
}

TEST(LptWord, every_state_is_a_data_and_a_control_write_over_the_pins) {
    Rig rig(kRouteLpt, 1);
    rig.AddPin("Trigger", 6).SetEnabled(true);
    rig.part.PrgmPins("CE").SetEnabled(true);
    rig.part.PrgmPins("TUNE").SetEnabled(true);
    rig.part.PortAddress = 632;
    rig.part.Registers("R0").SetValue(1);
    rig.Listen();
    LoadRegister(rig.part, "R0");
    // The trigger's 32 shows at the latch alone; pin 10 is control bit 0, which the port inverts.
    EXPECT_EQ(rig.wire.writes, (Writes{{632, 18},
                                       {634, 10},
                                       {632, 19},
                                       {634, 10},
                                       {632, 16},
                                       {634, 10},
                                       {632, 56},
                                       {634, 10},
                                       {632, 16},
                                       {634, 10}}));
}

TEST(LptWord, addresses_in_the_upper_half_of_the_16_bits_work) {
    Rig rig;
    rig.part.PortAddress = static_cast<std::int16_t>(0xE000);
    LoadRegister(rig.part, "R0");
    EXPECT_THAT(rig.Latched(), ElementsAre("R0=123450"));
}

TEST(LptWord, a_wrong_address_or_a_closed_driver_reaches_nothing) {
    Rig rig;
    rig.bench.port.SetBase(std::uint16_t{632});
    LoadAll(rig.part);
    rig.bench.port.SetBase({});
    StopPortDriver(rig.part);
    LoadAll(rig.part);
    EXPECT_EQ(rig.board().newest(), 0U);
}

TEST(LoadValue, shifts_the_low_bits_of_any_number) {
    Rig rig;
    LoadValue(rig.part, 0x123456);
    LoadValue(rig.part, -1);
    EXPECT_THAT(rig.Latched(), ElementsAre("=123456", "=FFFFFF"));
    Rig wide(kRouteLpt, 40);
    LoadValue(wide.part, -1);
    EXPECT_EQ(wide.board().history().back().word, BitWord(0xFFFFFFFF));
}

TEST(PortAddress, the_four_choices) {
    EXPECT_EQ(PortAddressOfOption(0), 0x378);
    EXPECT_EQ(PortAddressOfOption(1), 0x278);
    EXPECT_EQ(PortAddressOfOption(2), 0x3BC);
    EXPECT_EQ(PortAddressOfOption(3), 0x2BC);
}

TEST(PortStart, an_open_driver_is_told_and_closed_first_and_a_failure_is_silent) {
    Rig rig;
    EXPECT_THAT(rig.messages.shown, ElementsAre());
    EXPECT_EQ(rig.session.lpt_port_access, -1);
    StartPortDriver(rig.part);
    EXPECT_THAT(rig.messages.shown, ElementsAre("Driver currently opened"));
    rig.bench.port.SetUsable(false);
    StartPortDriver(rig.part);
    EXPECT_EQ(rig.messages.shown.size(), 1U);
    EXPECT_EQ(rig.session.lpt_port_access, 0);
}

TEST(CheckLpt, says_whether_the_driver_opened) {
    Rig rig;
    CheckLPT(rig.part);
    rig.bench.port.SetUsable(false);
    CheckLPT(rig.part);
    ASSERT_EQ(rig.messages.shown.size(), 2U);
    EXPECT_EQ(rig.messages.shown[0], "Successfully opened LPT driver.\n\n"
                                     "This does not confirm proper selection of LPT port.");
    EXPECT_TRUE(rig.messages.shown[1].starts_with("Failed to open LPT driver\n\n* Is another "));
    EXPECT_EQ(rig.session.lpt_port_access, 0);
}

} // namespace
} // namespace zentrel
