#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "automation/object_model/bind.h"
#include "automation/object_model/classes.h"
#include "tests/device/device_fixture.h"

/// How members are used: arguments that may be left out or come back changed, collections, and
/// what doesn't work.
namespace zentrel::objects {
namespace {

using test::Device;
using testing::ElementsAre;

template<typename T>
T As(const Value& value) {
    return Convert<T>::In(value);
}

/// The error's number; 0 when there is none.
template<typename Action>
int ErrorOf(Action action) {
    try {
        action();
        return 0;
    } catch (const Error& error) {
        return error.number();
    }
}

// --- arguments ---

struct Gauge {
    double reading = 0;
    std::string log;

    double Scale(double factor, std::optional<double> offset) {
        return reading * factor + offset.value_or(0);
    }
    void Swap(std::string& one, std::string& two) { std::swap(one, two); }
    double Take(std::int16_t& count) { return static_cast<double>(--count); }
};

const ClassTable& GaugeClass() {
    static const ClassTable table("Gauge",
                                  {
                                      Field<&Gauge::reading>("Reading"),
                                      ReadOnlyField<&Gauge::log>("Log"),
                                      WriteOnlyField<&Gauge::log>("Note"),
                                      Routine<&Gauge::Scale>("Scale", {"factor", "offset"}),
                                      Routine<&Gauge::Swap>("Swap", {"one", "two"}),
                                      Routine<&Gauge::Take>("Take", {"count"}),
                                  });
    return table;
}

struct Members : testing::Test {
    Gauge gauge;
    ObjectRef object = ObjectRef::Unowned(GaugeClass(), gauge);
};

TEST_F(Members, are_found_with_letters_in_any_case) {
    Write(object, "rEADING", 4.0);
    EXPECT_EQ(As<double>(Read(object, "READING")), 4);
}

TEST_F(Members, take_optional_arguments_or_do_without) {
    gauge.reading = 10;
    EXPECT_EQ(As<double>(Read(object, "Scale", {2.0})), 20);
    EXPECT_EQ(As<double>(Read(object, "Scale", {2.0, 1.0})), 21);
    EXPECT_EQ(As<double>(Read(object, "Scale", {2.0, Value()})), 20) << "left out in its place";
    EXPECT_EQ(ErrorOf([&] { Read(object, "Scale"); }), 450);
    EXPECT_EQ(ErrorOf([&] { Read(object, "Scale", {1.0, 2.0, 3.0}); }), 450);
}

TEST_F(Members, hand_arguments_by_reference_back_changed) {
    std::vector<Value> texts{"left", 2.0};
    Read(object, GaugeClass().At("Swap"), texts);
    EXPECT_EQ(texts, (std::vector<Value>{"2", "left"}));
    std::vector<Value> count{5.0};
    EXPECT_EQ(As<double>(Read(object, GaugeClass().At("Take"), count)), 4);
    EXPECT_EQ(count.front(), Value(std::int16_t{4}));
}

TEST_F(Members, convert_all_arguments_before_anything_happens) {
    std::vector<Value> texts{"left", Array{}};
    EXPECT_EQ(ErrorOf([&] { Read(object, GaugeClass().At("Swap"), texts); }), 13);
    EXPECT_EQ(texts.front(), Value("left"));
}

TEST_F(Members, tell_those_who_ask_what_they_take) {
    const auto& swap = GaugeClass().At("swap").parameters;
    ASSERT_EQ(swap.size(), 2U);
    EXPECT_EQ(swap[1].name, "two");
    EXPECT_TRUE(swap[1].byReference);
    const auto& scale = GaugeClass().At("Scale").parameters;
    EXPECT_FALSE(scale[0].optional);
    EXPECT_TRUE(scale[1].optional);
    EXPECT_EQ(scale[1].type, Type::Double);
}

TEST_F(Members, that_only_read_or_only_write_refuse_the_other) {
    Write(object, "Note", "warm");
    EXPECT_EQ(As<std::string>(Read(object, "Log")), "warm");
    EXPECT_THROW(Write(object, "Log", "cold"), WrongAccess);
    EXPECT_THROW(Read(object, "Note"), WrongAccess);
    EXPECT_THROW(Write(object, "Swap", 1.0), WrongAccess) << "a routine isn't set";
    EXPECT_EQ(gauge.log, "warm");
}

TEST_F(Members, that_arent_there_are_an_error_of_their_own) {
    EXPECT_THROW(Read(object, "Pressure"), NoSuchMember);
    EXPECT_EQ(ErrorOf([&] { Write(object, "Pressure", 1.0); }), 438);
    try {
        Read(object, "Pressure");
    } catch (const NoSuchMember& error) {
        EXPECT_STREQ(error.what(),
                     "Object doesn't support this property or method: Gauge.Pressure");
    }
}

// --- collections, and the device through its table ---

struct DeviceMembers : testing::Test {
    DeviceMembers() {
        device.Word("R0", 0, 3);
        device.Word("R1", 1, 3);
        device.Field("GAIN", "R0", 2, 4);
    }
    Device device;
    ObjectRef part = RefTo(device.part);

    ObjectRef Child(const ObjectRef& object, const char* name, std::vector<Value> arguments = {}) {
        return As<ObjectRef>(Read(object, name, std::move(arguments)));
    }
};

TEST_F(DeviceMembers, collections_give_items_by_key_in_any_case_and_by_position_from_1) {
    const ObjectRef registers = Child(part, "Registers");
    EXPECT_EQ(As<int>(Read(registers, "Count")), 2);
    const ObjectRef byKey = Child(registers, "Item", {"r1"});
    for (const Value& index : {Value("R1"), Value(2.0), Value(std::int16_t{2}), Value(1.5)})
        EXPECT_EQ(Child(registers, "Item", {index}), byKey);
    EXPECT_EQ(As<std::string>(Read(byKey, "ID")), "R1");
    // A text is a key, a number's text too.
    for (const Value& index : {Value("R7"), Value("1"), Value(0.0), Value(3.0)})
        EXPECT_EQ(ErrorOf([&] { Read(registers, "Item", {index}); }), 5);
    EXPECT_EQ(ErrorOf([&] { Read(registers, "Item"); }), 450);
    EXPECT_EQ(registers.table().members()[*registers.table().defaultMember()].name, "Item");
}

TEST_F(DeviceMembers, collections_are_walked_in_their_order_with_their_keys) {
    const ObjectRef registers = Child(part, "Registers");
    const Walk& walk = *registers.table().traits().walk;
    std::vector<std::string> keys, names;
    for (int i = 1; i <= walk.count(registers); ++i) {
        keys.push_back(walk.key(registers, i));
        names.push_back(As<std::string>(Read(As<ObjectRef>(walk.item(registers, i)), "ID")));
    }
    EXPECT_THAT(keys, ElementsAre("R0", "R1"));
    EXPECT_EQ(names, keys);
}

TEST_F(DeviceMembers, collections_of_texts_take_entries_from_outside) {
    const ObjectRef scripts = Child(part, "Scripts");
    Read(scripts, "Add", {"one", "First"});
    Read(scripts, "Add", {"two"});
    EXPECT_EQ(As<std::string>(Read(scripts, "Item", {"FIRST"})), "one");
    EXPECT_EQ(ErrorOf([&] { Read(scripts, "Add", {"again", "first"}); }), 457);
    Read(scripts, "Remove", {1.0});
    EXPECT_EQ(As<std::string>(Read(scripts, "Item", {1.0})), "two");
    EXPECT_EQ(ErrorOf([&] {
                  Read(Child(part, "Registers"), "Add", {"R9", "R9"});
              }),
              438)
        << "the device's own collections grow by its own operations";
}

TEST_F(DeviceMembers, an_item_that_somebody_holds_stays_whole_without_its_collection) {
    const ObjectRef held = Child(Child(part, "PrgmBits"), "Item", {"GAIN"});
    device.part.PrgmBits.Clear();
    EXPECT_EQ(As<std::string>(Read(held, "ID")), "GAIN");
    Write(held, "BitValue", 5.0);
    EXPECT_EQ(device.part.Registers("R0").Value(), 20);
}

TEST_F(DeviceMembers, a_field_is_written_in_the_models_own_way) {
    const ObjectRef gain = Child(Child(part, "PrgmBits"), "Item", {"GAIN"});
    Write(gain, "Value", "99");
    EXPECT_EQ(As<double>(Read(gain, "Value")), 15) << "cut to what four bits hold";
    Read(gain, "SetStringArray", {Array{"low", 2.0, true}});
    std::vector<Value> out{Value()};
    EXPECT_EQ(As<int>(Read(gain, gain.table().At("GetStringArray"), out)), 2);
    EXPECT_EQ(out.front(), Value(Array{"low", "2", "True"}));
    // What the file or a script sets and nobody reads back.
    for (const char* name : {"MirrorBits", "StepValueBitName", "GreaterBitName", "Units"}) {
        EXPECT_EQ(ErrorOf([&] { Read(gain, name); }), 438) << name;
        EXPECT_EQ(ErrorOf([&] { Write(gain, name, ""); }), 0) << name;
    }
    EXPECT_EQ(ErrorOf([&] { Write(gain, "Text", "x"); }), 438);
}

TEST_F(DeviceMembers, reading_a_change_flag_acknowledges_it) {
    const ObjectRef reg = Child(Child(part, "Registers"), "Item", {"R0"});
    Write(reg, "Value", 8.0);
    EXPECT_TRUE(As<bool>(Read(reg, "Change")));
    EXPECT_FALSE(As<bool>(Read(reg, "Change")));
    Read(reg, "SetBits", {3.0, std::int16_t{4}, std::int16_t{2}});
    EXPECT_EQ(As<double>(Read(reg, "GetBits", {4.0, 2.0, Value()})), 3);
    EXPECT_EQ(As<double>(Read(reg, "Value")), 8 + 48);
}

TEST_F(DeviceMembers, the_device_keeps_its_settings_and_helpers_under_one_name) {
    Write(part, "ID", "QVX9001");
    EXPECT_EQ(device.part.ID, "QVX9001");
    Write(part, "RegisterLength", "32");
    EXPECT_EQ(As<int>(Read(part, "RegisterLength")), 32);
    EXPECT_EQ(ErrorOf([&] { Write(part, "BurstRunning", true); }), 438);
    EXPECT_EQ(ErrorOf([&] { Write(part, "Registers", 1.0); }), 438);
    EXPECT_EQ(ErrorOf([&] { Read(part, "OutputPinValueDirect"); }), 438);
    EXPECT_EQ(As<std::string>(Read(part, "ConvertBase10", {10.0, "01"})), "1010");
    EXPECT_EQ(As<std::string>(Read(part, "BinaryStringOr", {"0101", "0011"})), "0111");
    EXPECT_EQ(Child(Child(Child(part, "Registers"), "Item", {1.0}), "Parent"), part);
    // Operations act on the device: one flagged word is acknowledged by the load.
    device.part.Registers("R1").SetValue(9);
    Read(part, "LoadChanges");
    EXPECT_FALSE(device.part.Registers("R1").Change());
}

} // namespace
} // namespace zentrel::objects
