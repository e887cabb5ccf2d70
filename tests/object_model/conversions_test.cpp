#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "automation/object_model/classes.h"
#include "automation/object_model/convert.h"
#include "tests/device/device_fixture.h"

/// What a value becomes where a member wants a number, a truth value, a text or an array.
namespace zentrel::objects {
namespace {

using test::Device;
using testing::ElementsAre;

// The number that the conversion throws, or 0; what it gives is put into `out`.
template<typename T>
int ErrorOf(const Value& value, T& out) {
    try {
        out = Convert<T>::In(value);
        return 0;
    } catch (const Error& error) {
        return error.number();
    }
}

constexpr int kType = 13, kOverflow = 6;

// One given value, and what it is as each of the plain types: a result, or an error's number.
struct Row {
    const char* name;
    Value given;
    struct Number {
        double value = 0;
        int error = 0;
    } real, long32, short16;
    struct Truth {
        bool value = false;
        int error = 0;
    } truth;
    struct Text {
        std::string value;
        int error = 0;
    } text;
};

Row::Number Fails(int error) {
    return {0, error};
}

TEST(Conversions, take_every_kind_of_value_to_every_plain_type) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const std::vector<Row> rows{
        {"nothing given", {}, {0}, {0}, {0}, {false}, {""}},
        {"true", true, {-1}, {-1}, {-1}, {true}, {"True"}},
        {"false", false, {0}, {0}, {0}, {false}, {"False"}},
        {"16 bits", std::int16_t{-7}, {-7}, {-7}, {-7}, {true}, {"-7"}},
        {"32 bits", std::int32_t{70000}, {70000}, {70000}, Fails(kOverflow), {true}, {"70000"}},
        {"half to even, down", 2.5, {2.5}, {2}, {2}, {true}, {"2.5"}},
        {"half to even, up", -3.5, {-3.5}, {-4}, {-4}, {true}, {"-3.5"}},
        {"beyond 16 bits", 32767.5, {32767.5}, {32768}, Fails(kOverflow), {true}, {"32767.5"}},
        {"lowest of 16 bits", -32768.5, {-32768.5}, {-32768}, {-32768}, {true}, {"-32768.5"}},
        {"beyond 32 bits", 3e9, {3e9}, Fails(kOverflow), Fails(kOverflow), {true}, {"3000000000"}},
        {"huge", 1e300, {1e300}, Fails(kOverflow), Fails(kOverflow), {true}, {"1E+300"}},
        {"zero", 0.0, {0}, {0}, {0}, {false}, {"0"}},
        {"a text that shows a number", "  12.5 ", {12.5}, {12}, {12}, {true}, {"  12.5 "}},
        {"a text of zero", "0", {0}, {0}, {0}, {false}, {"0"}},
        {"a truth value's name",
         "TRUE",
         Fails(kType),
         Fails(kType),
         Fails(kType),
         {true},
         {"TRUE"}},
        {"a text with a comma",
         "1,5",
         Fails(kType),
         Fails(kType),
         Fails(kType),
         {false, kType},
         {"1,5"}},
        {"no text", "", Fails(kType), Fails(kType), Fails(kType), {false, kType}, {""}},
        {"an array",
         Array{1.0},
         Fails(kType),
         Fails(kType),
         Fails(kType),
         {false, kType},
         {"", kType}},
        {"Nothing",
         ObjectRef(),
         Fails(kType),
         Fails(kType),
         Fails(kType),
         {false, kType},
         {"", kType}},
    };
    EXPECT_TRUE(std::isnan(ToDouble(nan)));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        double real = 0;
        EXPECT_EQ(ErrorOf(row.given, real), row.real.error);
        EXPECT_EQ(real, row.real.value);
        std::int32_t long32 = 0;
        EXPECT_EQ(ErrorOf(row.given, long32), row.long32.error);
        EXPECT_EQ(long32, row.long32.value);
        std::int16_t short16 = 0;
        EXPECT_EQ(ErrorOf(row.given, short16), row.short16.error);
        EXPECT_EQ(short16, row.short16.value);
        bool truth = false;
        EXPECT_EQ(ErrorOf(row.given, truth), row.truth.error);
        EXPECT_EQ(truth, row.truth.value);
        std::string text;
        EXPECT_EQ(ErrorOf(row.given, text), row.text.error);
        EXPECT_EQ(text, row.text.value);
    }
}

TEST(Conversions, of_arrays_take_every_element_along) {
    const Value mixed = Array{1.0, "2.5", true, Value()};
    EXPECT_THAT(ToDoubles(mixed), ElementsAre(1, 2.5, -1, 0));
    EXPECT_THAT(ToTexts(mixed), ElementsAre("1", "2.5", "True", ""));
    EXPECT_THAT(ToDoubles(Array{}), ElementsAre());
    EXPECT_THROW(ToDoubles(Array{"x"}), WrongType);
    for (const Value& none : {Value(1.0), Value("1"), Value(), Value(ObjectRef())}) {
        EXPECT_THROW(ToDoubles(none), WrongType);
        EXPECT_THROW(ToTexts(none), WrongType);
    }
}

TEST(Conversions, say_what_was_wanted_and_what_came) {
    const auto words = [](auto convert, const Value& value) -> std::string {
        try {
            convert(value);
        } catch (const WrongType& error) {
            return error.what();
        }
        return "";
    };
    EXPECT_EQ(words(ToInt16, "seven"), "Type mismatch: a 16-bit number is wanted, not \"seven\"");
    EXPECT_EQ(words(ToDouble, Array{}), "Type mismatch: a number is wanted, not an array");
    EXPECT_EQ(words(ToText, ObjectRef()), "Type mismatch: a text is wanted, not Nothing");
    EXPECT_EQ(words(ToTexts, 1.0), "Type mismatch: an array of texts is wanted, not a number");
}

TEST(Conversions, pass_objects_on_and_refuse_them_where_a_value_is_wanted) {
    Device device;
    device.Word("R0");
    const ObjectRef part = RefTo(device.part);
    EXPECT_EQ(Convert<ObjectRef>::In(Value(part)), part);
    EXPECT_EQ(Convert<ObjectRef>::In(Value()), ObjectRef());
    EXPECT_THROW(Convert<ObjectRef>::In(Value(1.0)), WrongType);
    EXPECT_THROW(ToDouble(Value(part)), WrongType) << "a device has no value of its own";
    // A collection's default member wants an index.
    EXPECT_THROW(ToText(Read(part, "Registers")), WrongType);
}

} // namespace
} // namespace zentrel::objects
