#include <chrono>
#include <functional>

#include <gmock/gmock.h>

#include "burst/burst_list.h"
#include "burst/burst_run.h"
#include "tests/drivers/real_rig.h"
#include "transport/checks.h"

// A burst that loops over a real port while the port comes and goes.
namespace zentrel {
namespace {

using ::testing::AnyOf;
using ::testing::Each;

// The engineer, whose hands act between two passes.
struct Hands : EventPause {
    std::function<void(int pass)> act;
    int passes = 0;
    void Pause() override { act(++passes); }
};

struct LoopingRig : RealRig {
    explicit LoopingRig(std::string_view route) : RealRig(route) {
        Upward upward = part.upward();
        upward.pause = &hands;
        part.Connect(upward);
        AddBurstCommand(part, "R1", 0);
        AddBurstCommand(part, "CE", 1);
        AddBurstCommand(part, "R0", 0);
    }
    /// How many words the passes `from` to `to` latched.
    std::uint64_t LatchedIn(int from, int to) const { return newest[to] - newest[from - 1]; }

    Hands hands;
    BurstPanel panel;
    Timer timer{false, 10};
    BurstRun run{part, panel, timer};
    std::uint64_t newest[13] = {}; // after each pass
};

TEST(BurstLoop, over_usb_it_outlives_a_bridge_that_is_pulled_and_plugged_in_elsewhere) {
    LoopingRig rig(kRouteUsb);
    rig.hands.act = [&](int pass) {
        rig.newest[pass] = rig.board().newest();
        if (pass == 3) rig.usb.StrikeAfter(PlayedUsbfs::kOut, 12, UsbFault::PulledHalf);
        if (pass == 6) {
            rig.kernel.NoticePull();
            rig.Dispatch();
        }
        if (pass == 8) {
            rig.kernel.PlugBridge("1-3");
            rig.Dispatch();
        }
        if (pass == 12) rig.run.cmdRun_Click();
    };
    rig.run.cmdRun_Click();
    EXPECT_EQ(rig.LatchedIn(1, 3), 6U);
    EXPECT_EQ(rig.LatchedIn(4, 4), 1U) << "pulled within the pass";
    EXPECT_EQ(rig.LatchedIn(5, 8), 0U) << "the loop goes on without it";
    EXPECT_EQ(rig.LatchedIn(9, 12), 8U);
    EXPECT_THAT(rig.Latched(), Each(AnyOf("R0=123450", "R1=ABCDE1")));
    EXPECT_EQ(rig.messages.shown, std::vector<std::string>());
    EXPECT_EQ(usbGetError(rig.part), 0);
    EXPECT_TRUE(rig.panel.AtRest());
}

TEST(BurstLoop, over_lpt_it_outlives_a_port_whose_module_is_unloaded_and_loaded) {
    LoopingRig rig(kRouteLpt);
    rig.hands.act = [&](int pass) {
        rig.newest[pass] = rig.board().newest();
        if (pass == 3) rig.lpt.GoAfter(150);
        if (pass == 6) rig.kernel.UnloadPorts();
        if (pass == 7) {
            EXPECT_FALSE(ReopenPortDriver(rig.part));
        }
        if (pass == 8) {
            rig.kernel.LoadPorts();
            EXPECT_TRUE(ReopenPortDriver(rig.part));
        }
        if (pass == 12) rig.run.cmdRun_Click();
    };
    rig.run.cmdRun_Click();
    EXPECT_EQ(rig.LatchedIn(1, 3), 6U);
    EXPECT_EQ(rig.LatchedIn(4, 4), 1U) << "gone within the pass";
    EXPECT_EQ(rig.LatchedIn(5, 8), 0U);
    EXPECT_EQ(rig.LatchedIn(9, 12), 8U);
    EXPECT_THAT(rig.Latched(), Each(AnyOf("R0=123450", "R1=ABCDE1")));
    EXPECT_EQ(rig.messages.shown, std::vector<std::string>());
    EXPECT_TRUE(rig.panel.AtRest());
}

} // namespace
} // namespace zentrel
