#include "device/pin_numbers.h"

#include <cstdint>
#include <optional>
#include <string_view>

#include <gtest/gtest.h>

#include "device/errors.h"
#include "form/session.h"

namespace zentrel {
namespace {

constexpr std::int32_t kOutputs[] = {1, 2, 3, 4, 5, 6, 7, 8, 10, 11, 12, 14};
constexpr std::int32_t kInputs[] = {1500, 1300, 1200, 1000, 1100};
constexpr std::int32_t kNone = -99; // no inverse, or no pin

struct Line {
    std::int32_t pin, lpt, usb;
};

constexpr Line kLines[] = {
    {0, 0, 0},
    {1, 0x1, 0x1},
    {2, 0x2, 0x2},
    {3, 0x8, 0x4}, // 3 and 4 cross on the parallel port
    {4, 0x4, 0x8},
    {5, 0x10, 0x10},
    {6, 0x20, 0x20},
    {7, 0x40, 0x40},
    {8, 0x80, 0x80},
    {9, 0x100, kNone},
    {10, 0x100, 0x100},
    {11, 0x400, 0x200},
    {12, 0x800, 0x400},
    {13, 0, kNone},
    {14, 0x200, 0x1000},
    {-1, 0, 0},
    {-2, 0, kNone},
    {15, 0x4000, kNone},
    {31, 0x40000000, kNone},
    {1500, 0x080000, 0x080000},
    {1300, 0x100000, 0x100000},
    {1200, 0x200000, 0x200000},
    {1000, 0x400000, 0x400000},
    {1100, 0x800000, 0x800000},
    {1503, 0x080000, kNone}, // only the hundreds count on the parallel port
};

TEST(PinNumbers, each_pin_has_its_line_on_both_routes) {
    for (const Line& line : kLines) {
        EXPECT_EQ(PinToPortValue(kRouteLpt, line.pin), line.lpt) << line.pin;
        const auto usb = PinCLHeader2USBLogicalPosition(line.pin);
        EXPECT_EQ(usb.value_or(kNone), line.usb) << line.pin;
        EXPECT_EQ(PinToPortValue(kRouteUsb, line.pin), usb.value_or(0)) << line.pin;
        for (const std::string_view other : {"None", "usb", ""})
            EXPECT_EQ(PinToPortValue(other, line.pin), 0);
    }
    for (const std::int32_t beyond : {32, 99, 999, 1400, 2000000000})
        EXPECT_THROW(PinToPortValue(kRouteLpt, beyond), Overflow) << beyond;
}

TEST(PinNumbers, the_way_back_leads_to_the_same_pin) {
    for (const std::int32_t pin : kOutputs) {
        EXPECT_EQ(PortValueToPin(kRouteLpt, PinToPortValue(kRouteLpt, pin)), pin);
        EXPECT_EQ(PortValueToPin(kRouteUsb, PinToPortValue(kRouteUsb, pin)), pin);
    }
    for (const std::int32_t pin : kInputs) {
        EXPECT_EQ(PortValueToPin(kRouteLpt, PinToPortValue(kRouteLpt, pin)), pin);
        EXPECT_EQ(PortValueToPin(kRouteUsb, PinToPortValue(kRouteUsb, pin)), 0)
            << "the bridge's input lines have no way back";
    }
    const struct {
        std::int32_t value, lpt, usb;
    } rest[] = {
        {0, 0, 0},      {3, 3, 0},       {6, 4, 0},        {0x300, 11, 0},
        {0x800, 12, 0}, {0x2000, 14, 0}, {0x1000, 13, 14}, {-1, 0, 0},
    };
    for (const auto& c : rest) {
        EXPECT_EQ(PortValueToPin(kRouteLpt, c.value), c.lpt) << c.value;
        EXPECT_EQ(PortValueToPin(kRouteUsb, c.value), c.usb) << c.value;
    }
    EXPECT_EQ(PortValueToPin("None", 8), 0);
}

TEST(PinNumbers, a_set_of_output_pins_survives_both_routes) {
    for (int set = 0; set < 1 << 12; ++set) {
        std::int32_t mask = 0;
        for (int i = 0; i < 12; ++i)
            if ((set >> i & 1) != 0) mask |= 1 << (kOutputs[i] - 1);
        for (const std::string_view route : {kRouteLpt, kRouteUsb})
            ASSERT_EQ(PortValueToPinMask(route, PinMaskToPortValue(route, mask)), mask) << route;
    }
}

TEST(PinNumbers, masks_convert_pin_by_pin) {
    for (const std::string_view route : {kRouteLpt, kRouteUsb}) {
        EXPECT_EQ(PinMaskToPortValue(route, 0b1100), 12);
        EXPECT_EQ(PinMaskToPortValue(route, 1 << 9), 256);
        EXPECT_EQ(PinMaskToPortValue(route, 0), 0);
    }
    EXPECT_EQ(PinMaskToPortValue(kRouteLpt, 0b11 << 8), 512) << "9 and 10 share a line: a sum";
    EXPECT_EQ(PinMaskToPortValue(kRouteUsb, 0b11 << 8), 256) << "the bridge has no pin 9";
    EXPECT_EQ(PinMaskToPortValue(kRouteLpt, 1 << 30), 0) << "bits 0 to 29 count";
    EXPECT_EQ(PortValueToPinMask(kRouteLpt, 1 << 19), 0) << "an input has no bit in a pin mask";
    EXPECT_EQ(PortValueToPinMask(kRouteUsb, 0b1000 << 8), 0);
    EXPECT_EQ(PortValueToPinMask(kRouteLpt, -1), PortValueToPinMask(kRouteLpt, 0x3FFFFFFF));
    EXPECT_EQ(PinMaskToPortValue("None", 0b1111), 0);
}

TEST(PinNumbers, a_composite_number_is_cut_to_the_routes_half) {
    const struct {
        std::int32_t pin, lpt, usb;
    } cases[] = {{1503, 1500, 3},  {1500, 1500, 0}, {3, 0, 3},
                 {1114, 1100, 14}, {0, 0, 0},       {-1, -1, -1}};
    for (const auto& c : cases) {
        EXPECT_EQ(CutComposite(kRouteLpt, c.pin), c.lpt);
        EXPECT_EQ(CutComposite(kRouteUsb, c.pin), c.usb);
        EXPECT_EQ(CutComposite("None", c.pin), c.pin);
    }
}

TEST(PinNumbers, the_port_screens_options_name_pins) {
    for (int option = 0; option < 12; ++option) {
        EXPECT_EQ(OptionToPin(option), kOutputs[option]);
        EXPECT_EQ(PinToOption(kOutputs[option]), option);
    }
    for (int option = 0; option < 5; ++option) {
        EXPECT_EQ(InputOptionToPin(option), kInputs[option]);
        EXPECT_EQ(PinToOption(kInputs[option]), option);
    }
    EXPECT_EQ(OptionToPin(-1), std::nullopt);
    EXPECT_EQ(OptionToPin(12), std::nullopt);
    EXPECT_EQ(InputOptionToPin(-1), std::nullopt);
    EXPECT_EQ(InputOptionToPin(5), std::nullopt);
    EXPECT_EQ(PinToOption(13), 11);
    for (const std::int32_t other : {0, 9, 15, -1, 1503})
        EXPECT_EQ(PinToOption(other), 0) << other;
}

} // namespace
} // namespace zentrel
