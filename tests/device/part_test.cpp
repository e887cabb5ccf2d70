#include "device/part.h"

#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "device/errors.h"
#include "tests/device/device_fixture.h"

namespace zentrel {
namespace {

using test::Device;
using testing::ElementsAre;

struct RecordingDisplays : Displays {
    std::vector<std::string> calls;
    void UpdatePLLDisplay() override { calls.emplace_back("PLL"); }
    void UpdateCLKDISTDisplay() override { calls.emplace_back("CLKDIST"); }
    void UpdateBitDisplay() override { calls.emplace_back("Bit"); }
    void UpdateRegisterDisplay() override { calls.emplace_back("Register"); }
    void UpdatePortDisplay() override { calls.emplace_back("Port"); }
    void UpdateBurstDisplay() override { calls.emplace_back("Burst"); }
};

struct RecordingBuilder : ScreenBuilder {
    std::vector<int> rulers;
    void RegisterLengthChanged(int bits) override { rulers.push_back(bits); }
};

TEST(Part, a_register_length_sizes_the_port_vector_and_the_ruler) {
    Device device;
    RecordingBuilder builder;
    Upward upward = device.part.upward();
    upward.builder = &builder;
    device.part.Connect(upward);
    for (const std::int16_t bits : {std::int16_t{1}, std::int16_t{24}, std::int16_t{4000}}) {
        device.part.SetRegisterLength(bits);
        EXPECT_EQ(device.part.RegisterLength(), bits);
        EXPECT_EQ(device.part.PortVector().size(), 2U * static_cast<unsigned>(bits) + 3);
    }
    for (const std::int16_t none : {std::int16_t{0}, std::int16_t{-5}}) {
        EXPECT_THROW(device.part.SetRegisterLength(none), OutOfRange);
        EXPECT_EQ(device.part.RegisterLength(), 4000);
    }
    EXPECT_THAT(builder.rulers, ElementsAre(1, 24, 4000));
}

TEST(Part, displays_follow_in_their_order) {
    Device device;
    RecordingDisplays displays;
    Upward upward = device.part.upward();
    upward.displays = &displays;
    device.part.Connect(upward);
    device.part.UpdateDisplays();
    EXPECT_THAT(displays.calls, ElementsAre("PLL", "CLKDIST", "Bit", "Register", "Port", "Burst"));
}

TEST(Part, the_output_setter_takes_pin_numbers_and_the_getter_gives_masks) {
    Device device;
    device.Pin("A", 3).SetEnabled(true);
    device.Pin("B", 4);
    device.Pin("C", 14);
    device.Pin("LD", 1500, true);
    device.part.SetOutputPinValue(1 << 4 | 1 << 14);
    EXPECT_EQ(device.part.OutputPinValue(), 0x4 | 0x200);
    EXPECT_FALSE(device.part.PrgmPins("A").Enabled());
    device.part.SetOutputPinValueDirect(8);
    EXPECT_TRUE(device.part.PrgmPins("A").Enabled());
    device.part.RefreshPins();
    EXPECT_EQ(device.part.OutputPinValue(), 0) << "what is enabled is read from the cleared state";
}

TEST(Part, output_pins_are_16_bits) {
    Device device;
    device.part.SetOutPins(0x4001);
    device.part.ToggleOutPins(0x4002);
    EXPECT_EQ(device.part.OutputPinValue(), 3);
    device.part.ClearOutPins(0x7F0001);
    EXPECT_EQ(device.part.OutputPinValue(), 2);
    for (const std::int32_t beyond : {0x8000, 0x80000, -0x8001}) {
        EXPECT_THROW(device.part.SetOutPins(beyond), Overflow);
        EXPECT_THROW(device.part.ToggleOutPins(beyond), Overflow);
    }
    EXPECT_EQ(device.part.OutputPinValue(), 2);
    device.part.ResetOutputPins();
    EXPECT_EQ(device.part.OutputPinValue(), 0);
}

TEST(Part, the_read_back_input_is_cut_to_the_route_and_minus_one_is_none) {
    for (const std::string_view route : {kRouteLpt, kRouteUsb}) {
        Device device(24, route);
        std::int32_t location = 1503;
        device.part.SetInputPinPosition(location);
        const bool usb = route == kRouteUsb;
        EXPECT_EQ(location, usb ? 3 : 1500);
        EXPECT_EQ(device.part.InputPinPosition(), usb ? 3 : 1500);
        EXPECT_EQ(device.part.InputPinPositionValue(), usb ? 4 : 1 << 19);
        device.part.SetInputPinPosition(-1);
        EXPECT_EQ(device.part.InputPinPosition(), -1) << route;
        EXPECT_EQ(device.part.InputPinPositionValue(), 0);
        EXPECT_TRUE(device.messages.shown.empty());
    }
}

TEST(Part, flags_that_a_routine_raises_come_back_as_they_were) {
    Device device;
    {
        const UpdatingScope outer(device.part);
        const DisplayScope display(device.part);
        {
            const UpdatingScope inner(device.part);
            const DisplayScope again(device.part);
        }
        EXPECT_TRUE(device.part.Updating);
        EXPECT_EQ(device.session.bDisplayUpdating, 1);
    }
    EXPECT_FALSE(device.part.Updating);
    EXPECT_EQ(device.session.bDisplayUpdating, 0);
}

TEST(Part, a_device_change_empties_what_the_file_filled_and_keeps_the_interface) {
    Device device;
    device.Word("R");
    device.Field("F", "R", 0, 1);
    device.Pin("P", 1);
    device.part.ControlLength = 3;
    device.part.ClearFieldsAndRegisters();
    EXPECT_TRUE(device.part.Registers.empty() && device.part.PrgmBits.empty() &&
                device.part.PrgmPins.empty());
    EXPECT_EQ(device.part.RegisterLength(), 24);
    EXPECT_EQ(device.part.ControlLength, 3);
    device.Word("R", 7);
    EXPECT_EQ(device.part.Registers("R").Value(), 7);
}

} // namespace
} // namespace zentrel
