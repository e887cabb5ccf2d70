#include "transport/load_path.h"

#include <gmock/gmock.h>

#include "rig.h"

namespace zentrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct LoadHook : ScriptHooks {
    bool HasModule(std::string_view module) const override {
        return module == "Hook_CheckProgramRegister_LoadAll";
    }
    std::int16_t RunWithText(std::string_view, std::string_view procedure,
                             std::string_view argument) override {
        asked.push_back(std::string(procedure) + "(" + std::string(argument) + ")");
        if (argument == failing) throw ScriptFailure(11, "Division by zero");
        return argument == skipped ? std::int16_t{0} : std::int16_t{1};
    }
    std::vector<std::string> asked;
    std::string skipped, failing;
};

// What holds on both routes.
class BothRoutes : public ::testing::TestWithParam<std::string_view> {
  protected:
    Rig rig{GetParam()};
    cPart& part = rig.part;

    void SetUp() override {
        if (part.session().isUsb()) usbSetupDevice(part);
    }
};

INSTANTIATE_TEST_SUITE_P(Routes, BothRoutes, ::testing::Values(kRouteLpt, kRouteUsb),
                         [](const auto& info) { return std::string(info.param); });

TEST_P(BothRoutes, load_all_latches_every_word_of_the_model_in_order) {
    LoadAll(part);
    EXPECT_THAT(rig.Latched(), ElementsAre("R0=123450", "R1=ABCDE1", "R2=000002"));
    for (const LatchedWord& word : rig.board().history())
        EXPECT_EQ(word.clocks, 24);
}

TEST_P(BothRoutes, one_edit_is_sent_once) {
    part.Registers("R1").SetBits(5, 4, 4);
    LoadChanges(part);
    LoadChanges(part);
    EXPECT_THAT(rig.Latched(), ElementsAre("R1=ABCD51"));
}

TEST_P(BothRoutes, changes_go_in_register_order_whatever_was_touched_first) {
    part.Registers("R2").SetBits(7, 8, 4);
    part.Registers("R0").SetBits(0xF, 20, 4);
    LoadChanges(part);
    EXPECT_THAT(rig.Latched(), ElementsAre("R0=F23450", "R2=000702"));
}

TEST_P(BothRoutes, loading_by_number_and_by_name_leaves_the_change_flags) {
    part.Registers("R1").SetChange(true);
    LoadRegisterNumber(part, 0);
    LoadRegisterNumber(part, 4);
    EXPECT_THAT(rig.Latched(), IsEmpty());
    LoadRegisterNumber(part, 2);
    LoadRegister(part, "r0");
    EXPECT_THAT(rig.Latched(), ElementsAre("R1=ABCDE1", "R0=123450"));
    EXPECT_TRUE(part.Registers("R1").changed());
    EXPECT_THROW(LoadRegister(part, "R9"), NotFound);
}

TEST_P(BothRoutes, words_keep_every_bit_at_any_length) {
    for (const int bits : {1, 7, 12, 24, 32, 53, 54, 64, 65, 100, 792}) {
        Rig wide(GetParam(), bits);
        wide.part.ControlLength = 0;
        wide.part.Registers.Clear();
        cRegister& reg = wide.AddRegister("W", 0, 0);
        for (int bit = 0; bit < bits; bit += 3)
            reg.ToggleBit(static_cast<std::int16_t>(bit));
        if (bits > 1) reg.ToggleBit(static_cast<std::int16_t>(bits - 1));
        LoadAll(wide.part);
        // The bridge's format has a byte for the data bits and one for the control bits.
        if (wide.session.isUsb() && bits > 255) continue;
        ASSERT_EQ(wide.board().newest(), 1U) << bits;
        EXPECT_EQ(wide.board().history().back().word, reg.word()) << bits;
    }
}

TEST_P(BothRoutes, a_chip_of_the_other_clock_phase_gets_the_same_words) {
    part.InvertClock = true;
    LoadAll(part);
    EXPECT_THAT(rig.Latched(), ElementsAre("R0=123450", "R1=ABCDE1", "R2=000002"));
}

TEST_P(BothRoutes, output_pins_reach_the_board_only_when_they_are_sent) {
    part.PrgmPins("CE").SetEnabled(true);
    part.PrgmPins("TUNE").SetEnabled(true);
    EXPECT_FALSE(rig.board().PinHigh(5));
    UpdateOutputPins(part);
    EXPECT_TRUE(rig.board().PinHigh(5) && rig.board().PinHigh(10));
    part.ResetOutputPins();
    EXPECT_TRUE(rig.board().PinHigh(5)) << "the model alone moves no pin";
    UpdateOutputPins(part);
    EXPECT_EQ(rig.board().levels(), 0U);
}

TEST_P(BothRoutes, the_pins_hold_their_levels_during_a_word) {
    part.PrgmPins("CE").SetEnabled(true);
    UpdateOutputPins(part);
    LoadRegister(part, "R0");
    EXPECT_EQ(rig.board().history().back().pins, PinBit(5));
    EXPECT_TRUE(rig.board().PinHigh(5));
}

TEST_P(BothRoutes, the_trigger_pin_pulses_with_the_latch_and_is_low_else) {
    rig.AddPin("TRIGGER", 6).SetEnabled(true);
    if (part.session().isUsb()) usbSetupDevice(part);
    LoadRegister(part, "R0");
    EXPECT_TRUE(rig.board().history().back().trigger);
    EXPECT_EQ(rig.Latched().back(), "R0=123450");
}

TEST_P(BothRoutes, a_script_decides_what_load_all_sends) {
    LoadHook hook;
    hook.skipped = "R1";
    Upward upward = part.upward();
    upward.hooks = &hook;
    part.Connect(upward);
    part.Registers("R1").SetChange(true);
    LoadAll(part);
    EXPECT_THAT(rig.Latched(), ElementsAre("R0=123450", "R2=000002"));
    EXPECT_THAT(hook.asked, ElementsAre("Hook_CheckProgramRegister_LoadAll(R0)",
                                        "Hook_CheckProgramRegister_LoadAll(R1)",
                                        "Hook_CheckProgramRegister_LoadAll(R2)"));
    EXPECT_TRUE(part.Registers("R1").changed());
    hook.failing = "R0";
    EXPECT_THROW(LoadAll(part), ScriptFailure);
}

TEST_P(BothRoutes, without_a_board_or_a_route_nothing_is_sent_and_nothing_breaks) {
    part.session().CommMode_Select = "usb";
    LoadAll(part);
    UpdateOutputPins(part);
    EXPECT_EQ(rig.board().newest(), 0U);

    part.session().CommMode_Select = GetParam();
    part.SetTransport(nullptr);
    LoadAll(part);
    LoadValue(part, 5);
    UpdateOutputPins(part);
    LoadDevice(part);
    EXPECT_EQ(PortVectorText(part), "");
    EXPECT_EQ(rig.board().newest(), 0U);
}

TEST_P(BothRoutes, another_board_is_used_from_the_moment_it_is_chosen) {
    SimulatedBench other(part);
    rig.transport.Use(other.drivers());
    EXPECT_EQ(part.session().lpt_port_access, -1);
    EXPECT_EQ(rig.bench.port.IsDriverOpened(), 0);
    EXPECT_FALSE(rig.bench.watch.registered());
    EXPECT_TRUE(other.watch.registered());
    LoadRegister(part, "R1");
    EXPECT_EQ(rig.board().newest(), 0U);
    EXPECT_EQ(other.board.newest(), 1U);
    rig.transport.Use(rig.bench.drivers());
}

TEST(LoadAll, with_no_registers_still_sets_the_bridge_up) {
    Rig rig(kRouteUsb);
    rig.part.Registers.Clear();
    rig.Listen();
    LoadAll(rig.part);
    ASSERT_EQ(rig.wire.packets.size(), 3U);
    EXPECT_EQ(rig.wire.packets[0][1], usb::kConfigPins);
    EXPECT_EQ(rig.wire.packets[2], (std::vector<int>{4, usb::kConfigFormat, 4, 20}));
}

TEST(LoadDevice, opens_the_bridge_even_under_lpt_and_watches_for_devices_again) {
    Rig rig;
    rig.Listen();
    rig.part.PrgmPins("CE").SetEnabled(true);
    Unhook(rig.part);
    LoadDevice(rig.part);
    EXPECT_EQ(rig.wire.opens, 1);
    EXPECT_TRUE(rig.transport.hooked());
    EXPECT_EQ(rig.board().newest(), 3U);
    EXPECT_EQ(rig.board().history().front().pins, PinBit(5));
}

struct PortScreen : PortScreenView {
    void EnableLPTOptions(bool val) override { calls += val ? "lpt+ " : "lpt- "; }
    void ApplyPinLabeling() override { calls += "labels "; }
    void ShowPinOptions() override { calls += "options "; }
    void UpdatePortDiagram() override { calls += "diagram"; }
    std::string calls;
};

TEST(CommMode, a_change_of_route_keeps_pins_and_goes_on_loading) {
    Rig rig;
    PortScreen screen;
    Upward upward = rig.part.upward();
    upward.port = &screen;
    rig.part.Connect(upward);
    rig.part.PrgmPins("TUNE").SetEnabled(true);

    CommMode_Click(rig.part, 0);
    EXPECT_EQ(rig.session.CommMode_Select, "USB");
    EXPECT_EQ(rig.part.InputPinPosition(), 7);
    EXPECT_EQ(rig.bench.bridge.state().le, 4) << "pin 3 in the bridge's numbering";
    EXPECT_EQ(screen.calls, "lpt- labels options diagram");
    EXPECT_EQ(rig.status.mode, "USB");
    EXPECT_EQ(rig.status.line, "Changed communications mode.");
    LoadRegister(rig.part, "R0");

    screen.calls.clear();
    CommMode_Click(rig.part, 0);
    EXPECT_EQ(screen.calls, "labels options diagram") << "already there: nothing to disable";

    CommMode_Click(rig.part, 1);
    EXPECT_EQ(rig.part.InputPinPosition(), 1500);
    LoadRegister(rig.part, "R0");
    ASSERT_THAT(rig.Latched(), ElementsAre("R0=123450", "R0=123450"));
    EXPECT_EQ(rig.board().history().front().route, BoardRoute::Usb);
    EXPECT_EQ(rig.board().history().back().route, BoardRoute::Lpt);
    EXPECT_EQ(rig.board().history().back().pins, PinBit(10));

    CommMode_Click(rig.part, 2);
    EXPECT_EQ(rig.session.CommMode_Select, "LPT");
}

TEST(SentWord, only_a_word_that_the_bridge_took_counts_as_sent) {
    Rig rig(kRouteUsb);
    usbSetupDevice(rig.part);
    cRegister& reg = rig.part.Registers("R0");
    rig.bench.bridge.faults.unplugAfter = 0; // in the middle of the packet
    LoadRegister(rig.part, "R0");
    EXPECT_FALSE(reg.sent());
    LoadRegister(rig.part, "R0");
    EXPECT_FALSE(reg.sent());

    rig.bench.PlugBridge();
    LoadRegister(rig.part, "R0");
    EXPECT_EQ(reg.sent(), reg.word());
}

} // namespace
} // namespace zentrel
