#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "device/errors.h"
#include "device/prgmbits.h"
#include "tests/device/device_fixture.h"

namespace zentrel {
namespace {

using test::Device;
using testing::ElementsAre;

TEST(WritingAField, a_plain_field_takes_the_nearest_step_within_its_limits) {
    const struct {
        double zero, step, minimum, maximum, asked;
        int bits;
    } cases[] = {
        {1, 2.5, 0, 0, 6.1, 2}, {1, 2.5, 0, 0, 7.25, 2},   {1, 2.5, 0, 0, 9.75, 4},
        {1, 2.5, 0, 0, 100, 7}, {1, 2.5, 0, 0, 0, 0},      {0, 1, 0, 0, -3, 0},
        {0, 1, 2, 0, 1, 2},     {0, 1, 0, 5, 7, 5},        {0, 1, 0, -5, 7, 7},
        {0, 0, 0, 0, 5, 0},     {0, 1, 0, 0, HUGE_VAL, 7}, {0, 1, -4, 0, -3, 3},
        {0, 0.1, 0, 0, 0.3, 3}, {0, -1, -7, 0, -5, 0},     {10, 1, 0, 0, 12.5, 2},
    };
    for (const auto& c : cases) {
        Device device;
        device.Word("R", 0x38);
        cPrgmBits& field = device.Field("F", "R", 3, 3);
        field.ZeroValue = c.zero;
        field.StepValue = c.step;
        field.MinimumValue = c.minimum;
        field.MaximumValue = c.maximum;
        field.SetValue(c.asked);
        EXPECT_EQ(device.part.Registers("R").GetBits(3, 3), c.bits)
            << c.asked << " on " << c.zero << " + n * " << c.step;
        EXPECT_TRUE(device.part.Registers("R").Change());
    }
}

TEST(WritingAField, the_sign_follows_what_was_asked_for) {
    Device device;
    device.Word("R");
    cPrgmBits& field = device.Field("F", "R", 0, 4);
    field.Polarity = true;
    field.PolarityPosition = 8;
    field.SetValue(5);
    EXPECT_EQ(device.part.Registers("R").Value(), 0x105);
    field.SetValue(-5);
    EXPECT_EQ(device.part.Registers("R").Value(), 0) << "negative, and limited to the minimum 0";
    field.MinimumValue = -15;
    field.SetValue(-5);
    EXPECT_EQ(device.part.Registers("R").Value(), 5);
    field.PolarityInverted = true;
    field.SetValue(-5);
    EXPECT_EQ(device.part.Registers("R").Value(), 0x105);
}

TEST(WritingAField, lists_take_the_nearest_entry) {
    Device device;
    cRegister& word = device.Word("R");
    cPrgmBits& values = device.Field("VALUES", "R", 0, 4);
    values.SetValueArray({1, 2, 4, 8, 8, 20000});
    cPrgmBits& texts = device.Field("TEXTS", "R", 4, 4);
    texts.SetStringArray({"off", "10", "20", "30"});
    cPrgmBits& coded = device.Field("CODED", "R", 8, 4);
    coded.SetValueArray({1, 2, 4, 16});
    coded.SetStringArray({"8", "3", "5", "9"});
    const struct {
        cPrgmBits* field;
        double asked;
        int bits;
    } cases[] = {
        {&values, 4, 2},  {&values, 3, 1},     {&values, 7.9, 3},   {&values, 8, 3},
        {&values, -5, 0}, {&values, 19000, 5}, {&values, 10005, 5}, {&values, 1e6, 0},
        {&texts, 20, 2},  {&texts, 24, 2},     {&texts, 0, 1},      {&texts, 1e9, 0},
        {&coded, 1, 8},   {&coded, 2, 3},      {&coded, 5, 5},      {&coded, 100, 9},
    };
    for (const auto& c : cases) {
        word.SetValue(0);
        c.field->SetValue(c.asked);
        EXPECT_EQ(c.field->BitValue(), c.bits) << c.field->ID << " := " << c.asked;
    }
}

TEST(WritingAField, a_lists_limits_are_taken_on_the_index) {
    Device device;
    device.Word("R");
    cPrgmBits& values = device.Field("VALUES", "R", 0, 4);
    values.SetValueArray({10, 20, 30, 40});
    values.MaximumValue = 2;
    values.SetValue(40);
    EXPECT_EQ(values.BitValue(), 2);
    values.MinimumValue = 1;
    values.SetValue(10);
    EXPECT_EQ(values.BitValue(), 1);
}

TEST(WritingAField, a_chain_spreads_over_its_registers) {
    Device device;
    device.Word("LOW");
    device.Word("HIGH", 0xF00);
    cPrgmBits& low = device.Field("N", "LOW", 4, 12);
    cPrgmBits& high = device.Field("N_HIGH", "HIGH", 0, 8);
    low.LinkedBits = "N_HIGH";
    high.StepValue = 4096;
    for (const bool byBits : {true, false}) {
        for (const double number : {0.0, 1.0, 4095.0, 4096.0, 74565.0, 1048575.0}) {
            byBits ? low.SetBitValue(number) : low.SetValue(number);
            EXPECT_EQ(low.BitValue(), number);
            EXPECT_EQ(low.Value(), number);
        }
    }
    low.SetBitValue(0x12345);
    EXPECT_EQ(device.part.Registers("LOW").Value(), 0x3450);
    EXPECT_EQ(device.part.Registers("HIGH").Value(), 0xF12);
    low.SetBitValue(-0x54321);
    EXPECT_EQ(low.BitValue(), 0x54321) << "the magnitude is written";
    low.SetValue(2e6);
    EXPECT_EQ(low.Value(), 1048575) << "limited to the chain's maximum";
}

TEST(WritingAField, a_chain_of_40_bits_takes_values_but_no_bits_beyond_31) {
    Device device;
    device.Word("LOW");
    device.Word("HIGH");
    cPrgmBits& low = device.Field("FTW", "LOW", 0, 20);
    cPrgmBits& high = device.Field("FTW_HIGH", "HIGH", 0, 20);
    low.LinkedBits = "FTW_HIGH";
    high.StepValue = 1048576;
    const double wide = 0x98'7654'3210;
    low.SetValue(wide);
    EXPECT_EQ(low.Value(), wide);
    EXPECT_EQ(device.part.Registers("LOW").Value(), 0x43210);
    EXPECT_EQ(device.part.Registers("HIGH").Value(), 0x98765);
    EXPECT_THROW(low.SetBitValue(std::ldexp(1, 31)), Overflow);
    EXPECT_EQ(low.Value(), wide) << "the words stay";
}

TEST(WritingAField, odd_lengths_neither_crash_nor_write_elsewhere) {
    for (const int length : {0, -1, -32768, 31, 32, 64, 200, 32767}) {
        Device device(64);
        device.Word("R", 0xFF00);
        device.Word("NEXT");
        cPrgmBits& field = device.Field("F", "R", 16, length);
        cPrgmBits& next = device.Field("NEXT", "NEXT", 0, 4);
        field.LinkedBits = next.ID;
        field.SetBitValue(3);
        field.SetValue(3);
        (void)field.BitValue();
        (void)field.Value();
        (void)field.Text();
        EXPECT_EQ(device.part.Registers("R").GetBits(0, 16), 0xFF00) << length;
    }
}

TEST(WritingAField, a_step_of_zero_passes_the_number_on_whole) {
    Device device;
    device.Word("R");
    cPrgmBits& front = device.Field("FRONT", "R", 0, 4);
    device.Field("BACK", "R", 8, 8);
    front.StepValue = 0;
    front.LinkedBits = "BACK";
    front.SetBitValue(0xAB);
    EXPECT_EQ(device.part.Registers("R").Value(), 0xAB00);
    front.LinkedBits.clear();
    EXPECT_THROW(front.SetBitValue(1), NotFound) << "nothing takes the bits";
    EXPECT_EQ(device.part.Registers("R").Value(), 0xAB00);
}

TEST(WritingAField, a_mirror_follows_with_what_was_really_taken) {
    Device device;
    device.Word("R");
    cPrgmBits& field = device.Field("F", "R", 0, 3);
    cPrgmBits& mirror = device.Field("M", "R", 8, 8);
    field.MirrorBits = "M";
    field.SetValue(100);
    EXPECT_EQ(mirror.Value(), 7);
    field.SetBitValue(3);
    EXPECT_EQ(mirror.Value(), 7) << "bits are written without the mirror";
    field.Increment();
    EXPECT_EQ(field.Value(), 4);
    EXPECT_EQ(mirror.Value(), 8);
    field.Decrement();
    EXPECT_EQ(mirror.Value(), 7);
    field.ToggleBit();
    EXPECT_EQ(field.Value(), 4);
    EXPECT_EQ(mirror.Value(), 8);
    field.SetValueArray({10, 20, 30});
    field.SetValue(30);
    EXPECT_EQ(mirror.Value(), 2) << "of a value list the index";
}

TEST(WritingAField, another_field_limits_it_from_below_or_above) {
    Device device;
    device.Word("R");
    cPrgmBits& field = device.Field("B", "R", 0, 5);
    cPrgmBits& limit = device.Field("A", "R", 8, 5);
    field.GreaterBitName = "A";
    limit.SetValue(10);
    field.GreaterEqual = true;
    field.SetValue(3);
    EXPECT_EQ(field.Value(), 10);
    field.SetValue(12);
    EXPECT_EQ(field.Value(), 12);
    field.SetBitValue(4);
    field.Increment();
    EXPECT_EQ(field.Value(), 10);
    field.GreaterEqual = false;
    field.SetValue(20);
    EXPECT_EQ(field.Value(), 10);
    field.Increment();
    EXPECT_EQ(field.Value(), 10);
    field.SetBitValue(31);
    field.ToggleBit();
    EXPECT_EQ(field.Value(), 0) << "31 + 1 wraps below the limit";
}

TEST(WritingAField, a_field_without_bits_takes_nothing_but_runs_its_hooks) {
    Device device;
    cRegister& word = device.Word("R", 5);
    cPrgmBits& field = device.Field("C", "R", -1, 4);
    field.SetValueArray({7, 8});
    field.script_before_prog = "before";
    field.script_after_prog = "after";
    field.SetValue(8);
    field.Increment();
    field.Decrement();
    field.ToggleBit();
    EXPECT_TRUE(device.hooks.calls.empty());
    field.SetBitValue(1);
    EXPECT_EQ(device.hooks.calls.size(), 2U);
    EXPECT_EQ(word.Value(), 5);
    EXPECT_FALSE(word.Change());
}

struct Step {
    const char* what;
    int from;
    bool negative;
    int up; // after Increment
    bool upNegative;
    int down; // after Decrement
    bool downNegative;
};

TEST(SteppingAField, a_signed_field_walks_through_zero) {
    const Step cases[] = {
        {"positive", 3, false, 4, false, 2, false}, {"positive one", 1, false, 2, false, 0, false},
        {"zero", 0, false, 1, false, 1, true},      {"minus zero", 0, true, 1, false, 1, true},
        {"minus one", 1, true, 0, true, 2, true},   {"minus three", 3, true, 2, true, 4, true},
        {"the top", 7, false, 7, false, 6, false},
    };
    for (const Step& c : cases) {
        Device device;
        cRegister& word = device.Word("R");
        cPrgmBits& field = device.Field("F", "R", 0, 3);
        field.Polarity = true;
        field.PolarityPosition = 10;
        const auto start = [&] { word.SetValue(c.from + (c.negative ? 0 : 1024)); };
        start();
        field.Increment();
        EXPECT_EQ(word.GetBits(0, 3), c.up) << c.what;
        EXPECT_EQ(field.PolarityValue() < 0, c.upNegative) << c.what;
        start();
        field.Decrement();
        EXPECT_EQ(word.GetBits(0, 3), c.down) << c.what;
        EXPECT_EQ(field.PolarityValue() < 0, c.downNegative) << c.what;
    }
}

TEST(SteppingAField, an_unsigned_field_stops_at_its_limits) {
    Device device;
    device.Word("R");
    cPrgmBits& field = device.Field("F", "R", 0, 4);
    field.Decrement();
    EXPECT_EQ(field.BitValue(), 0);
    field.MinimumValue = 4.5;
    field.SetBitValue(3);
    field.Decrement();
    EXPECT_EQ(field.BitValue(), 4) << "the minimum, rounded to even";
    field.MaximumValue = 9;
    field.SetBitValue(12);
    field.Increment();
    EXPECT_EQ(field.BitValue(), 9);
    field.MaximumValue = 0;
    field.SetBitValue(15);
    field.Increment();
    EXPECT_EQ(field.BitValue(), 15);
}

TEST(SteppingAField, a_coded_list_goes_round_by_its_codes) {
    Device device;
    device.Word("R");
    cPrgmBits& coded = device.Field("CODED", "R", 0, 4);
    coded.SetValueArray({1, 2, 4});
    coded.SetStringArray({"8", "3", "5"});
    coded.SetBitValue(8);
    std::vector<double> up, down, toggled;
    for (int i = 0; i < 4; ++i) {
        coded.Increment();
        up.push_back(coded.BitValue());
    }
    for (int i = 0; i < 4; ++i) {
        coded.Decrement();
        down.push_back(coded.BitValue());
    }
    for (int i = 0; i < 3; ++i) {
        coded.ToggleBit();
        toggled.push_back(coded.BitValue());
    }
    EXPECT_THAT(up, ElementsAre(3, 5, 8, 3));
    EXPECT_THAT(down, ElementsAre(8, 5, 3, 8));
    EXPECT_THAT(toggled, ElementsAre(3, 5, 8));
    coded.SetBitValue(7);
    coded.Increment();
    EXPECT_EQ(coded.BitValue(), 7) << "no entry bears that code";
    coded.Decrement();
    EXPECT_EQ(coded.BitValue(), 0);
}

TEST(SteppingAField, toggling_inverts_one_bit_and_counts_several) {
    Device device;
    cRegister& word = device.Word("R", 0, 1);
    cPrgmBits& bit = device.Field("BIT", "R", 0, 1);
    bit.ToggleBit();
    EXPECT_EQ(word.Value(), 1) << "also a protected bit";
    bit.ToggleBit();
    EXPECT_EQ(word.Value(), 0);
    cPrgmBits& two = device.Field("TWO", "R", 4, 2);
    for (const int bits : {1, 2, 3, 0, 1}) {
        two.ToggleBit();
        EXPECT_EQ(two.BitValue(), bits);
    }
}

TEST(ChoosingByText, finds_the_entry_in_any_case_or_writes_the_number) {
    Device device;
    device.Word("R");
    cPrgmBits& field = device.Field("F", "R", 0, 8);
    field.SetStringArray({"Tri-State", "Low", "High", "Low"});
    const struct {
        const char* text;
        int bits;
    } cases[] = {{"high", 2},     {"LOW", 1}, {"tri-state", 0}, {"3", 3},
                 {"nonsense", 9}, {"99", 99}, {"&H10", 16},     {"2.5", 2},
                 {"70000", 9},    {"1,5", 9}, {"-3", 3},        {" High", 9}};
    for (const auto& c : cases) {
        field.SetBitValue(9);
        field.SetValueText(c.text);
        EXPECT_EQ(field.BitValue(), c.bits) << c.text;
    }
    field.SetValueText("High");
    EXPECT_EQ(field.GetValueText(), "High");
    field.SetBitValue(4);
    EXPECT_EQ(field.GetValueText(), "NOSTRING");
}

} // namespace
} // namespace zentrel
