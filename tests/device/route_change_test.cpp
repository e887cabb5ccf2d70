#include "device/route_change.h"

#include <cstdint>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "tests/device/device_fixture.h"

namespace zentrel {
namespace {

using test::Device;

struct WatchedRoute : RouteObserver {
    cPart* part = nullptr;
    std::string heard;
    std::int16_t stateThen = 0;
    void RouteChanged(std::string_view from, std::string_view to) override {
        heard = std::string(from) + ">" + std::string(to);
        stateThen = part->OutputPinValue();
    }
};

TEST(RouteChange, lines_pins_and_states_keep_their_pin_numbers) {
    constexpr std::int32_t kOutputs[] = {1, 2, 3, 4, 5, 6, 7, 8, 10, 11, 12, 14};
    Device device;
    WatchedRoute route;
    route.part = &device.part;
    Upward upward = device.part.upward();
    upward.route = &route;
    device.part.Connect(upward);
    device.part.SetClockPosition(3);
    device.part.SetDataPosition(4);
    device.part.SetLEPosition(14);
    int n = 0;
    for (const std::int32_t pin : kOutputs)
        device.Pin(std::to_string(pin), pin).SetEnabled(n++ % 3 == 0);

    const auto check = [&](std::string_view mode) {
        device.session.CommMode_Select = mode;
        EXPECT_EQ(device.part.ClockPosition(), 3) << mode;
        EXPECT_EQ(device.part.DataPosition(), 4) << mode;
        EXPECT_EQ(device.part.LEPosition(), 14) << mode;
        int i = 0;
        for (const cPrgmPin& pin : device.part.PrgmPins) {
            EXPECT_EQ(pin.Position(), kOutputs[i]) << mode;
            EXPECT_EQ(pin.Enabled(), i % 3 == 0) << mode << " pin " << kOutputs[i];
            ++i;
        }
    };
    const std::int16_t lptState = device.part.OutputPinValue();
    RemapToRoute(device.part, kRouteLpt, kRouteUsb);
    EXPECT_EQ(device.session.CommMode_Select, "LPT") << "the caller selects the route";
    EXPECT_EQ(route.heard, "LPT>USB");
    EXPECT_EQ(route.stateThen, device.part.OutputPinValue()) << "bursts come after the pins";
    EXPECT_EQ(device.part.LEPositionValue(), 4096);
    check(kRouteUsb);
    RemapToRoute(device.part, kRouteUsb, kRouteLpt);
    check(kRouteLpt);
    EXPECT_EQ(device.part.OutputPinValue(), lptState);
}

TEST(RouteChange, the_read_back_pin_moves_to_its_other_home) {
    Device device;
    device.part.InputPinPositionINI = 1503;
    cPrgmPin& lock = device.Pin("LD", 1503, true);
    RemapToRoute(device.part, kRouteLpt, kRouteUsb);
    device.session.CommMode_Select = kRouteUsb;
    EXPECT_EQ(lock.Position(), 3);
    RemapToRoute(device.part, kRouteUsb, kRouteLpt);
    device.session.CommMode_Select = kRouteLpt;
    EXPECT_EQ(lock.Position(), 1500);
    EXPECT_EQ(device.part.InputPinPositionINI, 1503);
    EXPECT_EQ(device.part.OutputPinValue(), 0) << "an input is never switched on";
}

TEST(RouteChange, without_a_remap_a_mask_means_another_line) {
    Device device;
    device.part.SetDataPosition(3);
    device.session.CommMode_Select = kRouteUsb;
    EXPECT_EQ(device.part.DataPosition(), 4);
    device.session.CommMode_Select = kRouteNone;
    EXPECT_EQ(device.part.DataPosition(), 0);
}

} // namespace
} // namespace zentrel
