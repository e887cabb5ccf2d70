#include "device/register.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "device/bit_string.h"
#include "device/errors.h"
#include "tests/device/device_fixture.h"

namespace zentrel {
namespace {

using test::Device;

struct FieldWrite {
    const char* what;
    double word;
    std::int32_t mask;
    double bits;
    std::int16_t position, length;
    bool inv;
    double after;
};

TEST(Register, a_field_is_written_into_a_24_bit_word) {
    const FieldWrite cases[] = {
        {"a field above the address", 3, 7, 5, 8, 4, false, 1283},
        {"a value wider than its field", 0, 0, 0xFFF, 4, 4, false, 0xF0},
        {"old bits of the field go", 0xFFFFFF, 0, 0, 8, 8, false, 0xFF00FF},
        {"a field over the protected bits", 0b101, 0b111, 0b11010, 0, 5, false, 0b11101},
        {"a field half under the protected bits", 0, 0b1010, 0b1111, 0, 4, false, 0b0101},
        {"a field beyond the word is cut off", 0, 0, 0xFF, 20, 8, false, 0xF00000},
        {"a field wholly beyond the word", 1, 0, 0xFF, 24, 8, false, 1},
        {"bits above the word go on any write", 0x1FFFFFF, 0, 1, 0, 1, false, 0xFFFFFF},
        {"a fraction is dropped", 0, 0, 5.9, 0, 4, false, 5},
        {"a negative number has no bits", 0xFF, 0, -5, 0, 4, false, 0xF0},
        {"mirrored bits", 0, 0, 0b0011, 4, 4, true, 0b11000000},
        {"mirrored bits above the field are dropped", 0, 0, 0b110001, 0, 4, true, 0b1000},
        {"a negative position drops low bits", 0, 0, 0b1111, -2, 4, false, 0b11},
        {"a negative length writes nothing", 0xAB, 0, 0xFF, 0, -3, false, 0xAB},
        {"a mask below zero protects nothing", 0, -1, 0xF, 0, 4, false, 0xF},
    };
    for (const FieldWrite& c : cases) {
        Device device;
        cRegister& reg = device.Word("R", c.word, c.mask);
        reg.SetBits(c.bits, c.position, c.length, c.inv);
        EXPECT_EQ(reg.Value(), c.after) << c.what;
        EXPECT_TRUE(reg.Change()) << c.what;
    }
}

TEST(Register, what_cannot_be_computed_leaves_word_and_flag_alone) {
    const struct {
        double bits;
        int position, length;
        bool inv;
    } cases[] = {
        {1, 0, 0, false},     {1, 0, 1024, false},     {1, 1024, 1, false},
        {1, 32767, 1, false}, {1, 1000, 25, false},    {1e10, 0, 8, true},
        {1, 0, 32, true},     {HUGE_VAL, 0, 8, false}, {std::nan(""), 0, 8, false},
    };
    for (const auto& c : cases) {
        Device device;
        cRegister& reg = device.Word("R", 0xABCDEF);
        reg.SetBits(c.bits, static_cast<std::int16_t>(c.position),
                    static_cast<std::int16_t>(c.length), c.inv);
        EXPECT_EQ(reg.Value(), 0xABCDEF) << c.bits << " at " << c.position << ", " << c.length;
        EXPECT_FALSE(reg.Change()) << c.bits << " at " << c.position << ", " << c.length;
    }
}

TEST(Register, a_field_reads_back_by_position_and_length) {
    Device device;
    cRegister& reg = device.Word("R", 0x123456);
    const struct {
        int position, length;
        bool inv;
        double bits;
    } cases[] = {
        {8, 4, false, 4},     {0, 24, false, 0x123456}, {20, 4, false, 1},   {20, 40, false, 1},
        {24, 8, false, 0},    {500, 8, false, 0},       {0, 0, false, 0},    {0, -5, false, 0},
        {4, 4, true, 0b1010}, {0, 32, true, 0},         {0, 2000, false, 0}, {1024, 1, false, 0},
        {-4, 8, false, 0x60}, {-32768, 8, false, 0},
    };
    for (const auto& c : cases) {
        const auto position = static_cast<std::int16_t>(c.position);
        const auto length = static_cast<std::int16_t>(c.length);
        EXPECT_EQ(reg.GetBits(position, length, c.inv), c.bits) << position << ", " << length;
    }
    EXPECT_FALSE(reg.changed()) << "reading changes nothing";
}

TEST(Register, mirrored_fields_read_back_what_was_written_up_to_31_bits) {
    Device device(64);
    cRegister& reg = device.Word("R");
    for (std::int16_t length = 1; length <= 31; ++length) {
        const double bits = std::floor(std::ldexp(0.7, length));
        reg.SetBits(bits, 5, length, true);
        EXPECT_EQ(reg.GetBits(5, length, true), bits);
        reg.SetValue(0);
    }
}

TEST(Register, the_change_flag_falls_with_the_first_read) {
    Device device;
    cRegister& reg = device.Word("R", 5);
    reg.SetValue(5);
    EXPECT_TRUE(reg.changed());
    EXPECT_TRUE(reg.Change());
    EXPECT_FALSE(reg.Change());
    reg.SetBits(5, 0, 3);
    EXPECT_TRUE(reg.Change()) << "a write of the same bits counts";
    cRegister fresh(device.part, "F", 0, 0, false);
    EXPECT_TRUE(fresh.Change()) << "the device doesn't hold a new word yet";
}

TEST(Register, clearing_spares_protected_bits_and_toggling_does_not) {
    Device device;
    cRegister& reg = device.Word("R", 0b1111, 0b11);
    reg.ClrBit(3);
    EXPECT_EQ(reg.Value(), 0b0111);
    EXPECT_TRUE(reg.Change());
    reg.ClrBit(0);
    EXPECT_EQ(reg.Value(), 0b0111);
    EXPECT_TRUE(reg.Change()) << "also where nothing could be cleared";
    reg.ToggleBit(0);
    EXPECT_EQ(reg.Value(), 0b0110);
    reg.ToggleBit(30);
    EXPECT_EQ(reg.Value(), 0b0110 + std::ldexp(1, 30)) << "beyond the register's length";
    reg.ClrBit(30);
    EXPECT_EQ(reg.Value(), 0b0110);

    reg.SetChange(false);
    reg.ClrBit(1024);
    EXPECT_FALSE(reg.Change());
    reg.ClrBit(-1);
    reg.ToggleBit(-1);
    EXPECT_EQ(reg.Value(), 0b0110);
    EXPECT_TRUE(reg.Change());
    EXPECT_THROW(reg.ToggleBit(1024), Overflow);
}

TEST(Register, the_address_is_the_word_under_its_mask) {
    Device device;
    EXPECT_EQ(device.Word("A", 6, 3).Address(), 2);
    EXPECT_EQ(device.Word("B", 6, 0).Address(), 0);
    EXPECT_EQ(device.Word("C", 6, -1).Address(), 0);
    EXPECT_THROW((void)device.Word("D", 0x18000, 0x18000).Address(), Overflow);
}

TEST(Register, the_register_string_is_as_wide_as_the_register) {
    Device device(8);
    EXPECT_EQ(device.Word("A", 5).RegisterString(), "00000101");
    EXPECT_EQ(device.Word("B", 0).RegisterString(), "00000000");
    EXPECT_EQ(device.Word("C", 511).RegisterString(), "111111111");
}

// The steps of a field write as they are told on bit strings, for comparison.
std::string WriteOnText(const std::string& word, const std::string& bits, int position, int length,
                        const std::string& mask) {
    const auto zeros = [](int n) { return std::string(static_cast<std::size_t>(n), '0'); };
    const int width = static_cast<int>(word.size());
    const std::string open = BinaryStringNot(mask, width);
    const std::string ones(static_cast<std::size_t>(length), '1');
    const std::string field = BinaryStringAnd(zeros(width) + ones + zeros(position), open);
    const std::string value = BinaryStringAnd(
        zeros(width) + BinaryStringAnd(zeros(length) + bits, ones) + zeros(position), open);
    return BinaryStringOr(BinaryStringAnd(word, BinaryStringNot(field, width)), value);
}

TEST(Register, field_writes_agree_with_bit_strings_on_registers_of_1_to_200_bits) {
    std::uint32_t seed = 12345;
    const auto below = [&seed](int limit) {
        seed = seed * 1664525U + 1013904223U;
        return static_cast<int>((seed >> 8) % static_cast<std::uint32_t>(limit));
    };
    for (std::int16_t width = 1; width <= 200; ++width) {
        Device device(width);
        const std::int32_t mask = below(16);
        cRegister& reg = device.Word("R", 0, mask);
        std::string word(static_cast<std::size_t>(width), '0');
        for (int round = 0; round < 30; ++round) {
            const int position = below(width), length = 1 + below(53);
            const double bits = std::floor(std::ldexp(below(1 << 20), below(33)));
            reg.SetBits(bits, static_cast<std::int16_t>(position),
                        static_cast<std::int16_t>(length));
            word = WriteOnText(word, ConvertBase10(bits, "01"), position, length,
                               ConvertBase10(mask, "01"));
            ASSERT_EQ(reg.RegisterString(), word) << width << " bits";
            const std::string shifted =
                word.substr(0, word.size() - static_cast<std::size_t>(position));
            const std::string ones(static_cast<std::size_t>(length), '1');
            ASSERT_EQ(
                reg.GetBits(static_cast<std::int16_t>(position), static_cast<std::int16_t>(length)),
                BinaryToDecimal(BinaryStringAnd(shifted, ones)));
        }
    }
}

TEST(Register, a_4000_bit_word_stays_finite_and_exact_where_a_double_reaches) {
    Device device(4000);
    cRegister& reg = device.Word("R");
    reg.SetBits(0xABC, 1000, 12);
    reg.ToggleBit(0);
    EXPECT_EQ(reg.GetBits(1000, 12), 0xABC);
    EXPECT_EQ(reg.GetBits(0, 4), 1);
    for (std::int16_t bit = 0; bit < 1024; ++bit)
        reg.SetBits(1, bit, 1);
    EXPECT_EQ(reg.Value(), std::numeric_limits<double>::max());
    EXPECT_EQ(reg.RegisterString(), std::string(2976, '0') + std::string(1024, '1'));
}

} // namespace
} // namespace zentrel
