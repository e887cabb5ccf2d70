#include "automation/dbus/path_names.h"

#include <gtest/gtest.h>

namespace zentrel::dbus {
namespace {

TEST(PathNames, every_name_has_an_element_of_its_own_that_leads_back) {
    const std::pair<const char*, const char*> names[] = {{"N", "N"},
                                                         {"CLK0_DIV", "CLK0_5fDIV"},
                                                         {"0", "_30"},
                                                         {"", "_"},
                                                         {"a b/c", "a_20b_2fc"},
                                                         {"\xC3\xA4", "_c3_a4"},
                                                         {"_", "_5f"},
                                                         {"_5f", "_5f5f"}};
    for (const auto& [name, element] : names) {
        EXPECT_EQ(PathElement(name), element);
        EXPECT_EQ(NameOf(element), name);
        EXPECT_EQ(PositionIn(element), 0) << "never taken for a position";
    }
    EXPECT_EQ(NameOf("CLK0_DIV"), "CLK0_DIV") << "an underscore as it is";
}

TEST(PathNames, digits_alone_are_a_position) {
    EXPECT_EQ(PositionIn("12"), 12);
    for (const char* none : {"0", "-1", "1a", "", "99999999999"})
        EXPECT_EQ(PositionIn(none), 0) << none;
}

} // namespace
} // namespace zentrel::dbus
