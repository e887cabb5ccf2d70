#include "burst/burst_run.h"

#include <gmock/gmock.h>

#include <functional>

#include "burst/burst_list.h"
#include "tests/transport/rig.h"

namespace zentrel {
namespace {

using ::testing::ElementsAre;

// Acts as the engineer whose clicks arrive between two passes.
struct Clicker : EventPause {
    std::function<void(int pass)> click;
    int passes = 0;
    void Pause() override {
        ++passes;
        ASSERT_LT(passes, 1000) << "the run never ends";
        if (click) click(passes);
    }
};

struct BurstRunTest : ::testing::TestWithParam<std::string_view> {
    BurstRunTest() : rig(GetParam()) {
        Upward upward = rig.part.upward();
        upward.pause = &clicker;
        rig.part.Connect(upward);
    }
    Rig rig;
    cPart& part = rig.part;
    BurstPanel panel;
    Timer timer{false, 10};
    BurstRun run{part, panel, timer};
    Clicker clicker;
};

TEST_P(BurstRunTest, single_plays_the_list_once_in_order_and_rests) {
    AddBurstCommand(part, "R1", 0);
    AddBurstCommand(part, "10", 2);
    AddBurstCommand(part, "R0", 0);
    run.cmdLoop_Click();
    run.cmdRun_Click();
    EXPECT_THAT(rig.Latched(), ElementsAre("R1=ABCDE1", "R0=123450"));
    EXPECT_EQ(panel.cmdRun.Caption, "Run");
    EXPECT_FALSE(part.BurstRunning());
    EXPECT_FALSE(run.StopRequested());
}

TEST_P(BurstRunTest, a_loop_runs_until_stop_which_takes_effect_after_the_pass) {
    AddBurstCommand(part, "R0", 0);
    AddBurstCommand(part, "R1", 0);
    clicker.click = [&](int pass) {
        EXPECT_TRUE(part.BurstRunning());
        EXPECT_EQ(panel.cmdRun.Caption, "Stop");
        if (pass == 3) run.cmdRun_Click();
    };
    run.cmdRun_Click();
    EXPECT_EQ(rig.Latched().size(), 6U);
    EXPECT_EQ(panel.cmdRun.Caption, "Run");
}

TEST_P(BurstRunTest, changing_to_single_during_a_run_ends_it_after_the_next_pass) {
    AddBurstCommand(part, "R0", 0);
    clicker.click = [&](int pass) {
        if (pass == 2) run.cmdLoop_Click();
    };
    run.RunBurstCommands();
    EXPECT_EQ(rig.Latched().size(), 3U);
}

TEST_P(BurstRunTest, a_run_is_entered_once_whatever_asks_for_it_meanwhile) {
    AddBurstCommand(part, "R0", 0);
    clicker.click = [&](int pass) {
        run.RunBurstCommands();
        run.RunBurstOnce();
        run.StartBurst();
        run.EnableBurst();
        run.tmrStartBurst_Timer();
        if (pass == 2) run.StopBurstCommands();
    };
    run.RunBurstCommands();
    EXPECT_EQ(rig.Latched().size(), 2U);
    EXPECT_FALSE(timer.Enabled);
}

TEST_P(BurstRunTest, an_empty_list_and_a_stop_at_rest_do_nothing) {
    run.StopBurstCommands();
    EXPECT_FALSE(run.StopRequested());
    run.RunBurstCommands();
    EXPECT_EQ(clicker.passes, 0);
    EXPECT_EQ(panel.cmdRun.Caption, "Run");
}

TEST_P(BurstRunTest, the_timer_starts_one_run_in_its_own_time) {
    AddBurstCommand(part, "R0", 0);
    panel.cmdLoop.Caption = "Single";
    run.EnableBurst();
    run.EnableBurst();
    EXPECT_TRUE(timer.Enabled);
    EXPECT_TRUE(rig.Latched().empty());
    run.tmrStartBurst_Timer();
    EXPECT_EQ(rig.Latched().size(), 1U);
    EXPECT_FALSE(timer.Enabled);
}

TEST_P(BurstRunTest, a_pass_outside_the_run_touches_no_captions) {
    AddBurstCommand(part, "R0", 0);
    run.RunBurstOnce();
    EXPECT_EQ(rig.Latched().size(), 1U);
    EXPECT_EQ(clicker.passes, 0);
}

TEST_P(BurstRunTest, the_trigger_pulses_with_each_word_that_was_built_with_it) {
    rig.AddPin("Trigger", 6).SetEnabled(true);
    AddBurstCommand(part, "R0", 0);
    part.PrgmPins("Trigger").SetEnabled(false);
    AddBurstCommand(part, "R1", 0);
    if (part.session().isUsb()) usbSetupDevice(part);
    run.RunBurstOnce();
    const auto& words = rig.board().history();
    ASSERT_EQ(words.size(), 2U);
    EXPECT_TRUE(words[0].trigger);
    EXPECT_FALSE(words[1].trigger);
    EXPECT_FALSE(rig.board().PinHigh(6)) << "the pulse has ended";
}

TEST_P(BurstRunTest, pin_commands_set_the_pins_between_the_words) {
    part.PrgmPins("TUNE").SetEnabled(true);
    AddBurstCommand(part, "", 1);
    run.RunBurstOnce();
    EXPECT_TRUE(rig.board().PinHigh(10));
    part.PrgmPins("TUNE").SetEnabled(false);
    DeleteBurstCommands(part);
    AddBurstCommand(part, "", 1);
    run.RunBurstOnce();
    EXPECT_FALSE(rig.board().PinHigh(10));
}

INSTANTIATE_TEST_SUITE_P(OnBothRoutes, BurstRunTest, ::testing::Values(kRouteLpt, kRouteUsb),
                         [](const auto& test) { return std::string(test.param); });

TEST(BurstOnTheBridge, run_switches_burst_mode_on_and_only_stop_switches_it_off) {
    Rig rig(kRouteUsb);
    BurstPanel panel;
    Timer timer;
    BurstRun run(rig.part, panel, timer);
    Clicker clicker;
    Upward upward = rig.part.upward();
    upward.pause = &clicker;
    rig.part.Connect(upward);
    AddBurstCommand(rig.part, "R0", 0);
    const auto modes = [](const WireRecorder& wire) {
        std::vector<int> seen;
        for (const auto& packet : wire.packets) {
            if (packet[1] == usb::kBurstMode) seen.push_back(packet[2]);
        }
        return seen;
    };
    panel.cmdLoop.Caption = "Single";
    WireRecorder& wire = rig.Listen();
    run.cmdRun_Click();
    EXPECT_THAT(modes(wire), ElementsAre(1));
    panel.cmdLoop.Caption = "Loop";
    clicker.click = [&](int) { run.cmdRun_Click(); };
    run.cmdRun_Click();
    EXPECT_THAT(modes(wire), ElementsAre(1, 1, 0));
}

TEST(BurstOnTheBridge, pulling_the_bridge_in_a_loop_leaves_a_run_that_can_be_stopped) {
    Rig rig(kRouteUsb);
    BurstPanel panel;
    Timer timer;
    BurstRun run(rig.part, panel, timer);
    Clicker clicker;
    Upward upward = rig.part.upward();
    upward.pause = &clicker;
    rig.part.Connect(upward);
    AddBurstCommand(rig.part, "R0", 0);
    clicker.click = [&](int pass) {
        if (pass == 2) rig.bench.PullBridge();
        if (pass == 10) rig.bench.PlugBridge();
        if (pass == 12) run.StopBurstCommands();
    };
    run.RunBurstCommands();
    EXPECT_EQ(rig.Latched().size(), 4U) << "two before, two after";
    EXPECT_FALSE(rig.part.BurstRunning());
}

} // namespace
} // namespace zentrel
