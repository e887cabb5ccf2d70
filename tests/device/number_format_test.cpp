#include "device/number_format.h"

#include <limits>

#include <gtest/gtest.h>

namespace zentrel {
namespace {

TEST(NumberFormat, follows_the_picture) {
    const struct {
        const char* picture;
        double value;
        const char* text;
    } cases[] = {
        {"0.00", 2.5, "2.50"},
        {"0.00", 0, "0.00"},
        {"0.00", -0.001, "0.00"},
        {"0.00", -0.005, "-0.01"},
        {"0.00", 9.996, "10.00"},
        {"0.00", 1.005, "1.01"},
        {"0", 2.5, "3"},
        {"0", 0.5, "1"},
        {"0", 0.4, "0"},
        {"#", 0, ""},
        {"000", 7, "007"},
        {"000", -7, "-007"},
        {"#.##", 0.5, ".5"},
        {"0.##", 2, "2."},
        {"0.0#", 1.25, "1.25"},
        {"0.0#", 1.2, "1.2"},
        {"0.000", 0.0004, "0.000"},
        {"0.000", 0.0005, "0.001"},
        {"0.00000", 1e-300, "0.00000"},
        {"#,##0", 1234567, "1,234,567"},
        {"#,##0.0", -1234567.85, "-1,234,567.9"},
        {"#,##0", 12, "12"},
        {"0%", 0.256, "26%"},
        {"0.0%", 0.0005, "0.1%"},
        {"0.00E+00", 2450, "2.45E+03"},
        {"0.00E+00", 0.00012, "1.20E-04"},
        {"0.0E+00", 9.996, "1.0E+01"},
        {"##0.0E-0", 123456, "123.5E3"},
        {"0.0E+0", 0, "0.0E+0"},
        {"0 \"MHz\"", 25, "25 MHz"},
        {"\\#0", 5, "#5"},
        {"0.0;(0.0)", -2.25, "(2.3)"},
        {"0.0;(0.0);none", 0, "none"},
        {"0.0;(0.0);none", 1, "1.0"},
        {"off", 5, "off"},
        {"0", 1e20, "100000000000000000000"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FormatNumber(c.value, c.picture), c.text) << c.picture << " of " << c.value;
}

TEST(NumberFormat, odd_pictures_and_numbers_end_in_some_text) {
    for (const double value :
         {1.7e308, 5e-324, -1e-310, 0.0, std::numeric_limits<double>::infinity()}) {
        for (const char* picture : {"", ";", ";;;", "\"", "\\", "E+", "0E+", ".", "#.#E+000",
                                    "%%%%0", ",", "0.0000000000000000000000"}) {
            EXPECT_LT(FormatNumber(value, picture).size(), 400U) << picture << " of " << value;
        }
    }
}

} // namespace
} // namespace zentrel
