#include "transport/usb_presence.h"

#include <gmock/gmock.h>

#include "rig.h"

namespace zentrel {
namespace {

TEST(DeviceName, is_read_in_its_four_parts) {
    const auto name = ParseDeviceName(R"(\\?\USB#VID_7E41&pid_c3a6&MI_00#A1-7#{12-ab})");
    ASSERT_TRUE(name);
    EXPECT_TRUE(name->isBridge());
    EXPECT_EQ(name->serial, "A1-7");
    EXPECT_EQ(name->guid, "12-ab");
    EXPECT_FALSE(ParseDeviceName(R"(\\?\USB#Vid_7E41&Pid_C3A5#1#{g})")->isBridge());

    using namespace std::string_literals;
    const std::string broken[] = {"",
                                  "COM1",
                                  R"(\\?\USB#Vid_7E41&Pid_C3A6#1)",
                                  R"(\\?\USB#Vid_7E41&Pid_C3A6#1#guid)",
                                  R"(\\?\USB#Vid_7E41Pid_C3A6#1#{g})",
                                  R"(\\?\USB#Vid_&Pid_C3A6#1#{g})",
                                  R"(\\?\USB#Vid_17E41&Pid_C3A6#1#{g})",
                                  R"(\\?\USB#Vid_-7E41&Pid_C3A6#1#{g})",
                                  "\\\\?\\USB#Vid_7E41&Pid_C3A6\0#1#{g}"s,
                                  std::string(1024, 'x') + R"(#Vid_7E41&Pid_C3A6#1#{g})"};
    for (const std::string& text : broken)
        EXPECT_FALSE(ParseDeviceName(text)) << text;
}

TEST(Presence, attaching_sets_the_bridge_up_whatever_route_is_selected) {
    Rig rig;
    rig.bench.PullBridge();
    EXPECT_EQ(rig.status.line, "Orvane USB <--> TriWire Device removed.  Serial Number: SIM0001");
    EXPECT_NE(usbGetError(rig.part), 0);
    EXPECT_FALSE(rig.bench.bridge.state().pinsKnown);
    rig.bench.PlugBridge();
    EXPECT_EQ(rig.status.line, "Orvane USB <--> TriWire Device attached.  Serial Number: SIM0001");
    EXPECT_EQ(usbGetError(rig.part), 0);
    EXPECT_TRUE(rig.bench.bridge.state().pinsKnown && rig.bench.bridge.state().formatKnown);
}

TEST(Presence, other_devices_and_broadcasts_change_nothing) {
    Rig rig;
    rig.Listen();
    const std::string bridge = SimulatedWatch::BridgeName("1");
    rig.bench.watch.Send(
        {DeviceEvent::kArrival, DeviceEvent::kInterface, R"(\\?\USB#Vid_0403&Pid_6001#1#{g})"});
    rig.bench.watch.Send({DeviceEvent::kArrival, 2, bridge});
    rig.bench.watch.Send({0x8001, DeviceEvent::kInterface, bridge});
    EXPECT_EQ(rig.status.line, "");
    EXPECT_EQ(rig.wire.opens, 0);
}

TEST(Presence, a_lost_watch_notices_nothing_until_load_device) {
    Rig rig(kRouteUsb);
    rig.bench.bridge.faults.deaf = true;
    usbSetupDevice(rig.part);
    rig.bench.bridge.faults.deaf = false;
    rig.bench.PullBridge();
    rig.bench.PlugBridge();
    EXPECT_EQ(rig.status.line, "");
    LoadDevice(rig.part);
    rig.bench.PullBridge();
    EXPECT_NE(rig.status.line, "");
}

TEST(Presence, a_failed_registration_is_told_and_the_rest_runs) {
    Rig rig;
    StopPresence(rig.part);
    EXPECT_FALSE(rig.bench.watch.registered());
    EXPECT_FALSE(rig.transport.hooked());
    rig.bench.watch.SetFailure(13);
    EXPECT_FALSE(RegisterForNotifications(rig.part));
    EXPECT_EQ(rig.messages.shown.back(), "RegisterDeviceNotification failed: 13");
    rig.bench.PullBridge();
    EXPECT_EQ(rig.status.line, "");
}

TEST(Presence, plugging_twenty_times_ends_with_a_bridge_that_loads) {
    Rig rig(kRouteUsb);
    for (int i = 0; i < 20; ++i) {
        rig.bench.PullBridge();
        rig.bench.PlugBridge();
    }
    LoadChanges(rig.part);
    LoadRegister(rig.part, "R0");
    EXPECT_EQ(rig.board().newest(), 1U);
}

} // namespace
} // namespace zentrel
