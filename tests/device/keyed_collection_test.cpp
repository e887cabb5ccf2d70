#include "device/keyed_collection.h"

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "device/errors.h"
#include "tests/device/device_fixture.h"

namespace zentrel {
namespace {

using test::Device;

TEST(KeyedCollection, keeps_order_and_finds_names_in_any_case) {
    Device device;
    device.Word("N_Counter", 1);
    device.Word("R", 2);
    device.Word("Füllung", 3);
    EXPECT_EQ(device.part.Registers.Count(), 3);
    EXPECT_EQ(device.part.Registers(1).ID(), "N_Counter");
    EXPECT_EQ(device.part.Registers("n_COUNTER").Value(), 1);
    EXPECT_EQ(device.part.Registers("FüLLUNG").Value(), 3);
    EXPECT_THROW(device.Word("r"), DuplicateKey);
    EXPECT_EQ(device.part.Registers.Count(), 3);
    for (const int position : {0, 4, -1})
        EXPECT_THROW((void)device.part.Registers(position), NotFound) << position;
    try {
        (void)device.part.Registers("Q");
        FAIL();
    } catch (const NotFound& missing) {
        EXPECT_EQ(missing.collection(), "Registers");
        EXPECT_EQ(missing.key(), "Q");
        EXPECT_EQ(missing.number(), 5);
    }
    device.part.Registers.Remove(1);
    EXPECT_EQ(device.part.Registers(1).ID(), "R");
    EXPECT_EQ(device.part.Registers("r").Value(), 2);
    EXPECT_FALSE(device.part.Registers.Contains("N_Counter"));
    device.part.Registers.Insert(std::make_shared<cRegister>(device.part, "A", 0, 9, false), 2,
                                 "A");
    EXPECT_EQ(device.part.Registers(2).ID(), "A");
    EXPECT_EQ(device.part.Registers("Füllung").ID(), device.part.Registers(3).ID());
    EXPECT_THROW(device.part.Registers.Insert(
                     std::make_shared<cRegister>(device.part, "a", 0, 9, false), 1, "a"),
                 DuplicateKey);
    EXPECT_EQ(device.part.Registers.Count(), 3);
}

TEST(KeyedCollection, items_without_a_key_stand_by_position_alone) {
    KeyedCollection<int> list("BurstCmds");
    list.Add(std::make_shared<int>(1));
    list.Add(std::make_shared<int>(3));
    list.Insert(std::make_shared<int>(2), 2);
    list.Insert(std::make_shared<int>(4), 99);
    list.Insert(std::make_shared<int>(5), 0);
    std::vector<int> seen;
    for (const int item : list)
        seen.push_back(item);
    EXPECT_THAT(seen, testing::ElementsAre(1, 2, 3, 4, 5));
    EXPECT_EQ(list.Find(""), nullptr);
    EXPECT_THROW((void)list(""), NotFound);
    const auto kept = list.Share(1);
    list.Clear();
    EXPECT_EQ(*kept, 1) << "a holder may outlive the entry";
    EXPECT_TRUE(list.empty());
    EXPECT_THROW(list.Remove(1), NotFound);
}

} // namespace
} // namespace zentrel
