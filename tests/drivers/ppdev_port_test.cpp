#include "transport/drivers/ppdev_port.h"

#include <filesystem>

#include <gmock/gmock.h>

#include "tests/drivers/real_rig.h"
#include "transport/checks.h"
#include "transport/readback.h"

namespace zentrel {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;

TEST(ParallelPort, words_pins_and_read_back_are_those_of_the_simulated_bench) {
    RealRig rig;
    LoadAll(rig.part);
    EXPECT_THAT(rig.Latched(), ElementsAre("R0=123450", "R1=ABCDE1", "R2=000002"));
    rig.part.SetOutPins(rig.part.PrgmPins("CE").Value() | rig.part.PrgmPins("TUNE").Value());
    UpdateOutputPins(rig.part);
    EXPECT_TRUE(rig.board().PinHigh(5) && rig.board().PinHigh(10));
    EXPECT_EQ(QVX4100ReadRegister(rig.part, "R1"), 0xABCDE);
}

TEST(ParallelPort, is_claimed_while_open_and_let_go_afterwards) {
    RealRig rig;
    EXPECT_TRUE(rig.lpt.claimed());
    StopPortDriver(rig.part);
    EXPECT_FALSE(rig.lpt.claimed());
}

TEST(ParallelPort, without_a_device_the_first_port_is_tried) {
    RealRig rig;
    rig.part.PortAddress = 0;
    EXPECT_TRUE(ReopenPortDriver(rig.part));
    EXPECT_TRUE(rig.lpt.claimed());
    rig.part.PortAddress = 888;
    LoadRegister(rig.part, "R0");
    EXPECT_EQ(rig.board().newest(), 1U);
    EXPECT_EQ(rig.lpt.claims(), 2);
}

TEST(ParallelPort, another_address_takes_the_driver_along) {
    RealRig rig;
    SimulatedPort second(rig.bench.board);
    second.OpenTVicPort();
    PlayedPpdev& card = rig.kernel.AddPort("parport1", 0xD010, second);
    rig.part.PortAddress = static_cast<std::int16_t>(0xD010);
    LoadRegister(rig.part, "R0");
    EXPECT_FALSE(rig.lpt.claimed());
    EXPECT_TRUE(card.claimed());
    EXPECT_THAT(rig.Latched(), ElementsAre("R0=123450"));

    rig.part.PortAddress = 700;
    LoadRegister(rig.part, "R1");
    EXPECT_FALSE(card.claimed());
    EXPECT_EQ(rig.board().newest(), 1U);
    rig.part.PortAddress = 888;
    LoadRegister(rig.part, "R1");
    EXPECT_EQ(rig.board().newest(), 2U);
    EXPECT_EQ(rig.lpt.claims(), 2) << "once at the start and once on coming back";
}

// Each way in which a port fails: the reason stands below the told text of "Check LPT", and nothing
// else changes.
TEST(ParallelPort, a_port_that_cannot_be_had_is_explained) {
    struct Case {
        const char* name;
        void (*spoil)(RealRig&);
        const char* reason;
        const char* remedy;
    };
    const Case cases[] = {
        {"another address", [](RealRig& rig) { rig.part.PortAddress = 632; },
         "no parallel port at address 278. There is parport0 at 378.", "port setup screen"},
        {"no driver", [](RealRig& rig) { std::filesystem::remove_all(rig.kernel.portTree()); },
         "knows no parallel port", "modprobe parport_pc"},
        {"no ppdev", [](RealRig& rig) { rig.kernel.RemovePortNode("parport0"); },
         "not its device /dev/parport0", "modprobe ppdev"},
        {"printing", [](RealRig& rig) { rig.kernel.SetPortHolder("parport0", "lp"); },
         "Another program (lp) has /dev/parport0 claimed", "End that program"},
        {"exclusive", [](RealRig& rig) { rig.lpt.SetExclusive(true); },
         "Another program has /dev/parport0 claimed", "End that program"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        RealRig rig;
        c.spoil(rig);
        CheckLPT(rig.part);
        EXPECT_EQ(rig.session.lpt_port_access, 0);
        EXPECT_THAT(rig.messages.shown.back(),
                    AllOf(::testing::StartsWith("Failed to open LPT driver\n\n* Is another"),
                          HasSubstr(c.reason), HasSubstr(c.remedy)));
        LoadAll(rig.part);
        EXPECT_EQ(rig.messages.shown.size(), 1U);
        EXPECT_EQ(rig.board().newest(), 0U);
        EXPECT_EQ(rig.port.ReadPort(889), 255);
    }
}

TEST(ParallelPort, a_port_without_the_right_names_the_group) {
    RealRig rig;
    rig.kernel.Deny("/dev/parport0");
    {
        const WithoutRights nobody;
        CheckLPT(rig.part);
    }
    EXPECT_THAT(rig.messages.shown.back(),
                AllOf(HasSubstr("You may not open /dev/parport0."), EndsWith("-aG lp $USER")));
}

TEST(ParallelPort, a_port_that_another_program_gives_back_is_had_by_the_next_check) {
    RealRig rig;
    StopPortDriver(rig.part);
    for (const bool exclusive : {false, true}) {
        rig.kernel.SetPortHolder("parport0", exclusive ? "none" : "lp");
        rig.lpt.SetExclusive(exclusive);
        EXPECT_FALSE(ReopenPortDriver(rig.part));
        EXPECT_FALSE(rig.lpt.claimed()) << "it is left to who has it";
        LoadAll(rig.part);
        rig.kernel.SetPortHolder("parport0", "none");
        rig.lpt.SetExclusive(false);
        const auto before = rig.board().newest();
        CheckLPT(rig.part);
        EXPECT_THAT(rig.messages.shown.back(), ::testing::StartsWith("Successfully"));
        LoadAll(rig.part);
        EXPECT_EQ(rig.board().newest(), before + 3);
        StopPortDriver(rig.part);
    }
}

// The module goes, or a card is pulled, in the middle of something; later it comes back.
TEST(ParallelPort, gone_in_the_middle_of_anything_it_works_on_when_it_is_back) {
    struct Case {
        const char* name;
        int after;
        std::uint64_t latched;
        void (*work)(RealRig&);
    };
    const int word = 102; // register accesses
    const auto loadAll = [](RealRig& rig) { LoadAll(rig.part); };
    const auto readBack = [](RealRig& rig) { QVX4100ReadRegister(rig.part, "R1"); };
    const auto pins = [](RealRig& rig) { UpdateOutputPins(rig.part); };
    const Case cases[] = {
        {"before the first bit", 0, 0, loadAll},
        {"within a word", 50, 0, loadAll},
        {"between the two bytes of a state", 51, 0, loadAll},
        {"within the second word", word + 60, 1, loadAll},
        {"between two words", 2 * word, 2, loadAll},
        {"within what is read back", word + 20, 1, readBack},
        {"between the bytes of the pins", 1, 0, pins},
    };
    RealRig rig;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto before = rig.board().newest();
        rig.lpt.GoAfter(c.after);
        c.work(rig);
        c.work(rig);
        EXPECT_EQ(rig.board().newest(), before + c.latched);
        EXPECT_THAT(rig.port.Diagnosis(), HasSubstr("address 378 is gone"));
        EXPECT_EQ(rig.messages.shown, std::vector<std::string>());

        rig.kernel.UnloadPorts();
        CheckLPT(rig.part);
        EXPECT_EQ(rig.session.lpt_port_access, 0);
        EXPECT_THAT(rig.messages.shown, ElementsAre(HasSubstr("modprobe parport_pc")));
        rig.kernel.LoadPorts();
        LoadAll(rig.part);
        EXPECT_EQ(rig.board().newest(), before + c.latched) << "nothing goes out unasked";

        EXPECT_TRUE(ReopenPortDriver(rig.part));
        LoadAll(rig.part);
        EXPECT_EQ(rig.board().newest(), before + c.latched + 3);
        EXPECT_EQ(rig.board().history().back().registerName, "R2");
        EXPECT_EQ(QVX4100ReadRegister(rig.part, "R1"), 0xABCDE);
        rig.messages.shown.clear();
    }
}

TEST(ParallelPort, a_port_that_goes_away_loses_words_in_silence_until_it_is_checked_again) {
    RealRig rig;
    rig.lpt.GoAfter(150);
    LoadAll(rig.part);
    EXPECT_TRUE(rig.part.Registers("R0").sent());
    EXPECT_FALSE(rig.part.Registers("R1").sent()) << "what didn't go out stays marked";
    EXPECT_EQ(rig.messages.shown, std::vector<std::string>());
    EXPECT_THAT(rig.port.Diagnosis(), HasSubstr("address 378 is gone"));
    rig.lpt.SetGone(false);
    CheckLPT(rig.part);
    EXPECT_EQ(rig.port.Diagnosis(), "");
    LoadRegister(rig.part, "R1");
    EXPECT_THAT(rig.Latched(), ElementsAre("R0=123450", "R1=ABCDE1"));
}

} // namespace
} // namespace zentrel
