#include "transport/drivers/udev_watch.h"

#include <gmock/gmock.h>

#include "tests/drivers/real_rig.h"

namespace zentrel {
namespace {

constexpr const char* kAttached = "Orvane USB <--> TriWire Device attached.  Serial Number: ";
constexpr const char* kRemoved = "Orvane USB <--> TriWire Device removed.  Serial Number: ";

TEST(RealPresence, a_bridge_that_is_there_at_the_start_is_set_up) {
    RealRig rig;
    EXPECT_EQ(usbGetError(rig.part), 0);
    EXPECT_TRUE(rig.bench.bridge.state().formatKnown);
}

TEST(RealPresence, plugging_and_pulling_is_told_with_the_serial_number) {
    RealRig rig;
    rig.kernel.PullBridge();
    rig.Dispatch();
    EXPECT_EQ(rig.status.line, kRemoved + std::string(PlayedKernel::kSerial))
        << "known from before the start";
    EXPECT_EQ(usbGetError(rig.part), LibusbBridge::kNotAttached);
    rig.kernel.PlugBridge("1-2", "A#7");
    rig.Dispatch();
    EXPECT_EQ(rig.status.line, kAttached + std::string("A_7"));
    EXPECT_TRUE(rig.bench.bridge.state().formatKnown);
    rig.kernel.PullBridge();
    rig.Dispatch();
    EXPECT_EQ(rig.status.line, kRemoved + std::string("A_7"));
}

TEST(RealPresence, a_bridge_without_a_serial_number_goes_by_its_socket) {
    RealRig rig;
    rig.kernel.PullBridge();
    rig.kernel.PlugBridge("1-3", "");
    rig.Dispatch();
    EXPECT_EQ(rig.status.line, kAttached + std::string("1-3"));
}

TEST(RealPresence, other_devices_change_nothing) {
    RealRig rig;
    rig.Listen();
    rig.kernel.PlugOther("1-4");
    rig.Dispatch();
    EXPECT_EQ(rig.status.line, "");
    EXPECT_EQ(rig.wire.opens, 0);
}

TEST(RealPresence, twenty_changes_of_socket_in_a_row_end_with_a_bridge_that_loads) {
    RealRig rig(kRouteUsb);
    for (int i = 0; i < 20; ++i) {
        rig.kernel.PullBridge();
        if (i % 3 == 0) rig.Dispatch();
        rig.kernel.PlugBridge("1-" + std::to_string(1 + i % 4), std::to_string(1000 + i));
        if (i % 2 == 0) rig.Dispatch();
    }
    rig.Dispatch();
    EXPECT_EQ(rig.status.line, kAttached + std::string("1019"));
    LoadAll(rig.part);
    EXPECT_EQ(rig.board().newest(), 3U);
}

} // namespace
} // namespace zentrel
