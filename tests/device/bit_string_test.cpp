#include "device/bit_string.h"

#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace zentrel {
namespace {

TEST(BitString, a_number_in_other_digits_has_no_leading_zero) {
    const struct {
        double number;
        const char* digits;
        const char* text;
    } cases[] = {
        {0, "01", "0"},
        {0, "ab", "0"},
        {1, "01", "1"},
        {5, "01", "101"},
        {1024, "01", "10000000000"},
        {5.9, "01", "101"},
        {0.9, "01", ""},
        {-1, "01", ""},
        {255, "0123456789ABCDEF", "FF"},
        {255, "0123456789", "255"},
        {10, "ab", "baba"},
        {8, "012", "22"},
        {9007199254740991.0, "0123456789", "9007199254740991"},
        {9007199254740991.0, "0123456789ABCDEF", "1FFFFFFFFFFFFF"},
        {5, "", ""},
        {5, "1", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ConvertBase10(c.number, c.digits), c.text) << c.number << " in " << c.digits;
    EXPECT_EQ(ConvertBase10(std::ldexp(1, 1023), "01"), "1" + std::string(1023, '0'));
    EXPECT_EQ(ConvertBase10(std::numeric_limits<double>::infinity(), "01"), "");
    EXPECT_EQ(ConvertBase10(std::nan(""), "01"), "");
    EXPECT_EQ(ConvertBase10(1e300, "0123456789").size(), 301U);
}

TEST(BitString, hexadecimal_fills_the_callers_string_to_whole_digits) {
    const struct {
        const char* binary;
        const char* hex;
        const char* filled;
    } cases[] = {
        {"11111", "1F", "00011111"}, {"1", "1", "0001"},    {"10", "2", "0010"},
        {"101", "5", "0101"},        {"1010", "A", "1010"}, {"", "", ""},
        {"00001", "01", "00000001"}, {"1x11", "B", "1x11"}, {"111111110000", "FF0", "111111110000"},
    };
    for (const auto& c : cases) {
        std::string binary = c.binary;
        EXPECT_EQ(ConvertBinaryToHex(binary), c.hex) << c.binary;
        EXPECT_EQ(binary, c.filled);
    }
}

TEST(BitString, any_character_but_one_counts_as_zero) {
    EXPECT_EQ(BinaryToDecimal("101"), 5);
    EXPECT_EQ(BinaryToDecimal("00101"), 5);
    EXPECT_EQ(BinaryToDecimal("1 2x1"), 17);
    EXPECT_EQ(BinaryToDecimal(""), 0);
    EXPECT_EQ(BinaryToDecimal(std::string(53, '1')), 9007199254740991.0);
    EXPECT_EQ(BinaryToDecimal("1" + std::string(100, '0')), std::ldexp(1, 100));
    EXPECT_TRUE(std::isfinite(BinaryToDecimal(std::string(5000, '1'))));
}

TEST(BitString, strings_line_up_at_the_right_end) {
    EXPECT_EQ(BinaryStringAnd("1011", "11"), "11");
    EXPECT_EQ(BinaryStringAnd("11", "1001"), "01");
    EXPECT_EQ(BinaryStringAnd("", "1001"), "");
    EXPECT_EQ(BinaryStringAnd("1x1", "111"), "101");
    EXPECT_EQ(BinaryStringOr("1011", "100"), "1111");
    EXPECT_EQ(BinaryStringOr("1", "x1x0"), "0101");
    EXPECT_EQ(BinaryStringOr("", ""), "");
    EXPECT_EQ(BinaryStringNot("101"), "010");
    EXPECT_EQ(BinaryStringNot("101", 5), "11010");
    EXPECT_EQ(BinaryStringNot("10101", 2), "10");
    EXPECT_EQ(BinaryStringNot("1x1"), "010");
    EXPECT_EQ(BinaryStringNot("", 3), "111");
    EXPECT_EQ(BinaryStringNot("101", 0), "");
    EXPECT_EQ(BinaryStringNot("101", -4), "");
}

TEST(BitString, xor_and_and_value_fill_both_arguments) {
    std::string a = "110", b = "1";
    EXPECT_EQ(BitStringXor(a, b), 7);
    EXPECT_EQ(b, "001");
    std::string c = "11", d = "1010";
    EXPECT_EQ(BitStringAndValue(c, d), 2);
    EXPECT_EQ(c, "0011");
}

TEST(BitString, a_words_hexadecimal_is_as_wide_as_the_register) {
    EXPECT_EQ(ValueToHexString(1283, 24), "000503");
    EXPECT_EQ(ValueToHexString(0, 24), "000000");
    EXPECT_EQ(ValueToHexString(1, 5), "01");
    EXPECT_EQ(ValueToHexString(0, 1), "0");
    EXPECT_EQ(ValueToHexString(4096, 5), "1000");
    EXPECT_EQ(ValueToHexString(std::ldexp(1, 99), 100), "8" + std::string(24, '0'));
}

TEST(BitString, grouped_hexadecimal_tells_the_digits_it_used) {
    const struct {
        double value;
        std::int16_t digits, group;
        const char* text;
        std::int16_t used;
    } cases[] = {
        {0x123456, 7, 4, "012 3456", 7},
        {0, 7, 4, "000 0000", 7},
        {0, 0, 4, "0", 1},
        {0x123456789, 7, 4, "1 2345 6789", 9},
        {0xABC, 1, 1, "A B C", 3},
        {0xABCD, 0, 4, "ABCD", 4},
        {0xABCD, 0, 0, "ABCD", 4},
        {0xAB, -3, 2, "AB", 2},
    };
    for (const auto& c : cases) {
        std::int16_t digits = c.digits;
        EXPECT_EQ(FormatHexGrouped(c.value, digits, c.group), c.text);
        EXPECT_EQ(digits, c.used) << c.text;
    }
}

TEST(BitString, the_data_mirror_moves_bit_i_to_bit_n_minus_i) {
    EXPECT_EQ(ReverseDataBits(0b0001, 4), 0b10000);
    EXPECT_EQ(ReverseDataBits(0b1000, 4), 0b00010);
    EXPECT_EQ(ReverseDataBits(0b10000, 4), 0);
    EXPECT_EQ(ReverseDataBits(-1, 20), 0x1FFFFE);
    EXPECT_EQ(ReverseDataBits(-1, 0), 0);
    EXPECT_EQ(ReverseDataBits(-1, -5), 0);
    EXPECT_EQ(ReverseDataBits(1 << 10, 40), 1 << 30);
}

} // namespace
} // namespace zentrel
