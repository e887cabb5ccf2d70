#include "device/prgmpin.h"

#include <cstdint>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "device/errors.h"
#include "tests/device/device_fixture.h"

namespace zentrel {
namespace {

using test::Device;

TEST(PrgmPin, keeps_the_mask_of_its_line_under_the_present_route) {
    Device lpt(24, kRouteLpt), usb(24, kRouteUsb);
    EXPECT_EQ(lpt.Pin("CE", 3).Value(), 8);
    EXPECT_EQ(usb.Pin("CE", 3).Value(), 4);
    EXPECT_EQ(lpt.Pin("SYNC", 14).Value(), 512);
    EXPECT_EQ(usb.Pin("SYNC", 14).Value(), 4096);
    EXPECT_EQ(usb.part.PrgmPins("sync").Position(), 14);
    usb.session.CommMode_Select = kRouteLpt;
    EXPECT_EQ(usb.part.PrgmPins("CE").Position(), 4) << "the mask means another line now";
}

TEST(PrgmPin, switches_its_bits_of_the_output_state) {
    Device device;
    cPrgmPin& a = device.Pin("A", 1);
    cPrgmPin& b = device.Pin("B", 14);
    b.SetEnabled(true);
    a.Toggle();
    EXPECT_EQ(device.part.OutputPinValue(), 0x201);
    EXPECT_TRUE(a.Enabled() && b.Enabled());
    a.Toggle();
    EXPECT_FALSE(a.Enabled());
    b.SetEnabled(false);
    EXPECT_EQ(device.part.OutputPinValue(), 0);
    EXPECT_TRUE(device.Pin("NC", 13).Enabled()) << "a pin without a line always counts";
}

TEST(PrgmPin, a_read_back_pin_takes_its_half_of_a_composite_number) {
    Device lpt(24, kRouteLpt), usb(24, kRouteUsb);
    std::int32_t location = 1503;
    cPrgmPin& lock = lpt.Pin("LD", 0, true);
    lock.SetPosition(location);
    EXPECT_EQ(location, 1500) << "the argument is cut too";
    EXPECT_EQ(lock.Position(), 1500);
    EXPECT_EQ(lock.mask(), 1 << 19);
    EXPECT_EQ(lock.Value(), 0) << "beyond 16 bits";
    EXPECT_EQ(usb.Pin("LD", 1503, true).Position(), 3);
    EXPECT_TRUE(usb.messages.shown.empty());
}

TEST(PrgmPin, a_line_beyond_the_output_state_overflows) {
    Device device;
    cPrgmPin& input = device.Pin("IN", 1500);
    EXPECT_THROW(input.SetEnabled(true), Overflow);
    EXPECT_THROW(input.Toggle(), Overflow);
    input.SetEnabled(false);
    EXPECT_EQ(device.part.OutputPinValue(), 0);
}

TEST(PrgmPin, the_bridge_tells_of_a_pin_it_does_not_know) {
    Device usb(24, kRouteUsb);
    EXPECT_EQ(usb.Pin("X", 9).mask(), 0);
    usb.Pin("Y", -1);
    EXPECT_EQ(usb.part.PinMaskToPortValue(0b1'0000'0001), 1);
    EXPECT_THAT(usb.messages.shown,
                testing::ElementsAre("Unknown pin position 9 in PinCLHeader2USBLogicalPosition",
                                     "Unknown pin position 9 in PinCLHeader2USBLogicalPosition"));
    Device lpt(24, kRouteLpt);
    lpt.Pin("X", 13);
    EXPECT_TRUE(lpt.messages.shown.empty());
}

} // namespace
} // namespace zentrel
