#include "device/number_text.h"

#include <clocale>
#include <cmath>
#include <limits>
#include <locale>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "device/errors.h"

namespace zentrel {
namespace {

TEST(NumberText, shows_15_digits_in_the_classic_forms) {
    const struct {
        double value;
        const char* text;
    } cases[] = {
        {0, "0"},
        {-0.0, "0"},
        {0.5, "0.5"},
        {-0.25, "-0.25"},
        {1.0 / 3, "0.333333333333333"},
        {2.0 / 3, "0.666666666666667"},
        {0.1 + 0.2, "0.3"},
        {100, "100"},
        {2450.12345, "2450.12345"},
        {123456789012345, "123456789012345"},
        {123456789012345.6, "123456789012346"},
        {999999999999999, "999999999999999"},
        {999999999999999.9, "1E+15"},
        {1e15, "1E+15"},
        {1.5e15, "1.5E+15"},
        {-1.25e100, "-1.25E+100"},
        {9007199254740993.0, "9.00719925474099E+15"},
        {1e-11, "0.00000000001"},
        {9.5e-12, "9.5E-12"},
        {5.6789e-300, "5.6789E-300"},
        {std::numeric_limits<double>::max(), "1.79769313486232E+308"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(NumberToText(c.value), c.text);
}

TEST(NumberText, whole_and_short_numbers_survive_the_round_trip) {
    for (double value = 1; value < 1e15; value = value * 7 + 3) {
        for (const double number : {value, -value, value / 64, 1 / value}) {
            const auto read = ParseNumber(NumberToText(number));
            ASSERT_TRUE(read.has_value());
            EXPECT_NEAR(*read, number, std::abs(number) * 1e-14);
            EXPECT_EQ(NumberToText(*read), NumberToText(number));
        }
    }
}

TEST(NumberText, reads_what_a_bench_engineer_types) {
    const struct {
        const char* text;
        std::optional<double> value;
    } cases[] = {
        {"10", 10},
        {"  2450.5\t", 2450.5},
        {"2450.5\r\n", 2450.5},
        {"+5", 5},
        {"-5", -5},
        {".5", 0.5},
        {"5.", 5},
        {"-.5e3", -500},
        {"1E6", 1e6},
        {"1e-3", 0.001},
        {"1.5E+15", 1.5e15},
        {"007", 7},
        {"0e999999999999", 0},
        {"1e-400", 0},
        {"-1e-99999999999999999999", 0},
        {"0.00000000000000000001e10", 1e-10},
        // Not numbers: a comma least of all.
        {"1,5", {}},
        {"1,000", {}},
        {"1.000,5", {}},
        {"", {}},
        {" ", {}},
        {".", {}},
        {"-", {}},
        {"+", {}},
        {"+-5", {}},
        {"-+5", {}},
        {"--5", {}},
        {"- 5", {}},
        {"5 MHz", {}},
        {"1 000", {}},
        {"1.2.3", {}},
        {"1e", {}},
        {"1e+", {}},
        {"e5", {}},
        {"0x10", {}},
        {"&H10", {}},
        {"inf", {}},
        {"-inf", {}},
        {"nan", {}},
        {"1e400", {}},
        {"-1e400", {}},
        {"1e99999999999999999999", {}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ParseNumber(c.text), c.value) << '"' << c.text << '"';
        EXPECT_EQ(IsNumeric(c.text), c.value.has_value()) << '"' << c.text << '"';
    }
}

TEST(NumberText, very_long_texts_are_read_like_short_ones) {
    const std::string nines(4000, '9');
    const std::string zeros(4000, '0');
    EXPECT_EQ(ParseNumber(nines), std::nullopt);
    EXPECT_EQ(ParseNumber(zeros + "7"), 7);
    EXPECT_EQ(ParseNumber("0." + zeros + "7"), 0);
    EXPECT_EQ(ParseNumber("0." + nines), 1);
    EXPECT_EQ(ParseNumber(nines + "e-4000"), 1);
    EXPECT_EQ(ParseNumber("0." + zeros + "7e4001"), 7);
    EXPECT_EQ(ParseNumber(nines + "x"), std::nullopt);
    EXPECT_EQ(ParseFileNumber("&H" + nines), std::nullopt);
}

TEST(NumberText, file_integers_take_fractions_and_hexadecimal) {
    const struct {
        const char* text;
        std::optional<std::int16_t> narrow;
        std::optional<std::int32_t> wide;
    } cases[] = {
        {"888", std::int16_t{888}, 888},
        {"&H378", std::int16_t{888}, 888},
        {" &h378 ", std::int16_t{888}, 888},
        {"&HC3A6", std::int16_t{-15450}, 50086},
        {"&HFFFFFFFF", {}, -1},
        {"&H10000", {}, 65536},
        {"&H100000000", {}, {}},
        {"2.5", std::int16_t{2}, 2},
        {"3.5", std::int16_t{4}, 4},
        {"-2.5", std::int16_t{-2}, -2},
        {"32767.4", std::int16_t{32767}, 32767},
        {"32767.5", {}, 32768},
        {"-32768.5", std::int16_t{-32768}, -32768},
        {"1e3", std::int16_t{1000}, 1000},
        {"2147483647", {}, 2147483647},
        {"2147483648", {}, {}},
        {"-2147483648", {}, std::numeric_limits<std::int32_t>::min()},
        {"&H", {}, {}},
        {"&HG", {}, {}},
        {"&H-1", {}, {}},
        {"&H 1", {}, {}},
        {"H10", {}, {}},
        {"1,5", {}, {}},
        {"abc", {}, {}},
        {"", {}, {}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ParseFileInt16(c.text), c.narrow) << c.text;
        EXPECT_EQ(ParseFileInt32(c.text), c.wide) << c.text;
    }
    EXPECT_EQ(ParseFileNumber("&HFFFFFF"), 16777215.0);
    EXPECT_EQ(ParseFileNumber("1.5"), 1.5);
}

TEST(NumberText, file_booleans_are_words_or_numbers) {
    for (const char* yes : {"True", "TRUE", " true ", "1", "-1", "0.5", "&H1"})
        EXPECT_EQ(ParseFileBool(yes), true) << yes;
    for (const char* no : {"False", "fAlSe", "0", "0.0", "&H0"})
        EXPECT_EQ(ParseFileBool(no), false) << no;
    for (const char* neither : {"", "yes", "T", "1,0"})
        EXPECT_EQ(ParseFileBool(neither), std::nullopt) << neither;
}

TEST(NumberText, rounding_goes_to_even_and_overflow_is_an_error) {
    for (const auto& [value, rounded] : {std::pair{0.5, 0},
                                         {1.5, 2},
                                         {2.5, 2},
                                         {-0.5, 0},
                                         {-1.5, -2},
                                         {2.500001, 3},
                                         {1e6 + 0.5, 1000000}}) {
        EXPECT_EQ(RoundToLong(value), rounded) << value;
    }
    EXPECT_EQ(RoundToInteger(32767.49), 32767);
    for (const double beyond : {32767.5, -32769.0, 1e300, std::nan(""), HUGE_VAL})
        EXPECT_THROW(RoundToInteger(beyond), Overflow) << beyond;
    EXPECT_THROW(RoundToLong(2147483648.0), Overflow);
    EXPECT_EQ(ToInt32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
}

TEST(NumberText, hexadecimal_and_key_numbers) {
    EXPECT_EQ(HexText(std::int16_t{888}), "378");
    EXPECT_EQ(HexText(std::int16_t{-1}), "FFFF");
    EXPECT_EQ(HexText(std::int32_t{-1}), "FFFFFFFF");
    EXPECT_EQ(HexText(std::int32_t{0}), "0");
    EXPECT_EQ(KeyNumber(0), "00");
    EXPECT_EQ(KeyNumber(99), "99");
    EXPECT_EQ(KeyNumber(100), "100");
    EXPECT_EQ(KeyNumber(7, 5), "00007");
    EXPECT_EQ(NumberToSignedText(2.5), " 2.5");
    EXPECT_EQ(NumberToSignedText(-2.5), "-2.5");
}

struct CommaPoint : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(NumberText, a_german_bench_reads_and_writes_the_same_files) {
    const std::locale before = std::locale::global(std::locale(std::locale(), new CommaPoint));
    const std::string c = std::setlocale(LC_ALL, nullptr);
    // Where the machine has the locale; the streams have it either way.
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) std::setlocale(LC_ALL, "de_DE");
    EXPECT_EQ(NumberToText(2450.125), "2450.125");
    EXPECT_EQ(NumberToText(1234567), "1234567");
    EXPECT_EQ(ParseNumber("0.06"), 0.06);
    EXPECT_EQ(ParseNumber("0,06"), std::nullopt);
    EXPECT_EQ(ParseNumber("1.000"), 1);
    EXPECT_EQ(ParseNumber("1e-400"), 0);
    EXPECT_EQ(KeyNumber(1234), "1234");
    std::setlocale(LC_ALL, c.c_str());
    std::locale::global(before);
}

} // namespace
} // namespace zentrel
