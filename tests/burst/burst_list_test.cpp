#include "burst/burst_list.h"

#include <gmock/gmock.h>

#include "tests/transport/rig.h"

namespace zentrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

std::vector<std::string> Lines(const cPart& part) {
    std::vector<std::string> lines;
    for (const cBurst& command : part.BurstCmds)
        lines.push_back(command.Description);
    return lines;
}

struct BurstListTest : ::testing::Test {
    Rig rig;
    cPart& part = rig.part;
};

TEST_F(BurstListTest, a_load_keeps_the_word_that_the_register_held_when_it_was_added) {
    AddBurstCommand(part, "r1", 0);
    part.Registers("R1").SetValue(0x000011);
    AddBurstCommand(part, "R1", 0);
    for (cBurst& command : part.BurstCmds)
        command.Execute();
    EXPECT_THAT(rig.Latched(), ElementsAre("R1=ABCDE1", "R1=000011"));
    EXPECT_EQ(part.BurstCmds(1).RegisterName, "R1") << "the real key, whatever case was given";
    EXPECT_EQ(part.BurstCmds(1).GetRegLoad_Count(), 2 * 24 + 2);
}

TEST_F(BurstListTest, each_line_names_what_its_command_captured) {
    part.PrgmPins("CE").SetEnabled(true);
    AddBurstCommand(part, "R0", 0);
    part.PrgmPins("CE").SetEnabled(false);
    AddBurstCommand(part, "", 1);
    AddBurstCommand(part, "250", 2);
    EXPECT_THAT(
        Lines(part),
        ElementsAre("Load R0 = 000100100011010001010000; CE= True; TUNE= False; READ= False",
                    "Change Pin State; CE= False; TUNE= False; READ= False", "Delay of 250"));
    EXPECT_EQ(BurstText(part).find("\r\n"), Lines(part)[0].size());
}

TEST_F(BurstListTest, a_command_goes_ahead_of_the_line_that_was_given) {
    AddBurstCommand(part, "1", 2);
    AddBurstCommand(part, "3", 2);
    AddBurstCommand(part, "2", 2, 2);
    AddBurstCommand(part, "4", 2, 99);
    EXPECT_THAT(Lines(part), ElementsAre("Delay of 1", "Delay of 2", "Delay of 3", "Delay of 4"));
}

TEST_F(BurstListTest, what_cannot_be_built_leaves_the_list_as_it_was) {
    AddBurstCommand(part, "7", 2);
    EXPECT_THROW(AddBurstCommand(part, "NOPE", 0), NotFound);
    EXPECT_THROW(AddBurstCommand(part, "1,5", 2), TypeMismatch);
    EXPECT_THROW(AddBurstCommand(part, "1e40", 2), TypeMismatch);
    EXPECT_THROW(AddBurstCommand(part, "R0", 3), OutOfRange);
    EXPECT_THROW(ChangeBurstCommand(part, 1, "soon", 2), TypeMismatch);
    EXPECT_THROW(ChangeBurstCommand(part, 2, "5", 2), NotFound);
    EXPECT_THAT(Lines(part), ElementsAre("Delay of 7"));
    EXPECT_EQ(part.BurstCmds(1).Delay, 7);
}

TEST_F(BurstListTest, changing_a_line_rebuilds_it_in_place) {
    AddBurstCommand(part, "7", 2);
    AddBurstCommand(part, "8", 2);
    ChangeBurstCommand(part, 1, "R0", 0);
    EXPECT_THAT(Lines(part)[0], StartsWith("Load R0"));
    EXPECT_EQ(part.BurstCmds(1).Register(), 0x123450);
    ChangeBurstCommand(part, 1, "", 1);
    EXPECT_EQ(part.BurstCmds(1).Register(), 0);
    EXPECT_EQ(part.BurstCmds(1).GetRegLoad_Count(), 1);
    EXPECT_EQ(part.BurstCmds(2).Delay, 8);
}

TEST_F(BurstListTest, deleting_takes_the_nearest_line_that_exists) {
    for (const char* count : {"1", "2", "3"})
        AddBurstCommand(part, count, 2);
    DeleteBurstCommand(part, 0);
    EXPECT_THAT(Lines(part), ElementsAre("Delay of 2", "Delay of 3"));
    DeleteBurstCommand(part, 40);
    EXPECT_THAT(Lines(part), ElementsAre("Delay of 2"));
    DeleteBurstCommands(part);
    DeleteBurstCommand(part, 1);
    EXPECT_EQ(part.BurstCmds.Count(), 0);
}

TEST_F(BurstListTest, restoring_a_load_puts_its_word_back_without_sending_it) {
    AddBurstCommand(part, "R0", 0);
    AddBurstCommand(part, "5", 2);
    part.Registers("R0").SetValue(0);
    RestoreBurstCommand(part, 2);
    RestoreBurstCommand(part, 9);
    EXPECT_EQ(part.Registers("R0").Value(), 0);
    RestoreBurstCommand(part, 1);
    EXPECT_EQ(part.Registers("R0").Value(), 0x123450);
    EXPECT_TRUE(rig.Latched().empty());
}

TEST_F(BurstListTest, a_pattern_shows_the_three_lines_of_a_load) {
    Rig small(kRouteLpt, 4);
    small.AddRegister("R", 0b1010, 0);
    AddBurstCommand(small.part, "R", 0);
    AddBurstCommand(small.part, "3", 2);
    EXPECT_EQ(BurstPatternText(small.part),
              "clk01010101000\r\ndat11001100000\r\nle  00000000010\r\n"
              "Delay of 3\r\n");
}

TEST_F(BurstListTest, a_pin_command_holds_the_trigger_low_and_latch_enable_as_asked) {
    rig.AddPin("Trigger", 6).SetEnabled(true);
    part.PrgmPins("CE").SetEnabled(true);
    AddBurstCommand(part, "", 1);
    EXPECT_EQ(part.BurstCmds(1).GetRegLoad(0), part.PrgmPins("CE").Value());
    part.LEModeHigh = true;
    AddBurstCommand(part, "", 1);
    EXPECT_EQ(part.BurstCmds(2).GetRegLoad(0),
              part.PrgmPins("CE").Value() | part.LEPositionValue());
    EXPECT_THAT(Lines(part)[1], HasSubstr("; LE High"));
    EXPECT_THROW((void)part.BurstCmds(1).GetRegLoad(2), OutOfRange);
}

TEST_F(BurstListTest, a_word_of_64_bits_is_replayed_exactly) {
    Rig wide(kRouteLpt, 64);
    wide.AddRegister("W", 0, 0).SetBits(1, 63, 1);
    wide.part.Registers("W").SetBits(1, 0, 1);
    AddBurstCommand(wide.part, "W", 0);
    wide.part.BurstCmds(1).Execute();
    EXPECT_THAT(wide.Latched(), ElementsAre(HasSubstr("=8000000000000001")));
}

// What the board sees is the same on either route, wherever the burst was built.
TEST(BurstRoute, a_burst_built_on_one_route_means_the_same_pins_on_the_other) {
    for (const bool fromLpt : {true, false}) {
        Rig rig(fromLpt ? kRouteLpt : kRouteUsb);
        BurstRouteObserver observer(rig.part);
        Upward upward = rig.part.upward();
        upward.route = &observer;
        rig.part.Connect(upward);
        rig.part.PrgmPins("CE").SetEnabled(true);
        rig.part.PrgmPins("TUNE").SetEnabled(true);
        AddBurstCommand(rig.part, "", 1);
        AddBurstCommand(rig.part, "R0", 0);
        CommMode_Click(rig.part, fromLpt ? 0 : 1);
        for (cBurst& command : rig.part.BurstCmds)
            command.Execute();
        EXPECT_THAT(rig.Latched(), ElementsAre("R0=123450"));
        rig.part.BurstCmds(1).Execute();
        EXPECT_TRUE(rig.board().PinHigh(5)) << "CE, built on " << (fromLpt ? "LPT" : "USB");
        EXPECT_TRUE(rig.board().PinHigh(10)) << "TUNE";
    }
}

} // namespace
} // namespace zentrel
