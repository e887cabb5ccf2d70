#include "partfile/catalogue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "partfile/memory_store.h"

namespace zentrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DeviceCatalogue : public testing::Test {
  protected:
    static constexpr auto kFile = "/opt/zentrel/zentrel.ini";

    MemoryStore::Files files_;
    IniFiles ini_{AppPath("/opt/zentrel"), std::make_unique<MemoryStore>(files_)};
};

TEST_F(DeviceCatalogue, lists_each_familys_devices_in_order) {
    files_.bytes[kFile] = "[MENU]\nCOUNT=1\nITEM00=QVX1\n[MENUVCO]\nCOUNT=2\nITEM01=QVX2\n"
                          "[MENUCLKDIST]\nCOUNT=-1\n[MENUTRANS]\nCOUNT=many\n"
                          "[RECENTPARTS]\nCOUNT=2\nITEM00=QVX2\n";
    const Catalogue catalogue = ReadCatalogue(ini_);
    EXPECT_THAT(catalogue.items[0], ElementsAre("QVX1"));
    EXPECT_THAT(catalogue.items[1], ElementsAre("QVX", "QVX2"));
    for (std::size_t i = 2; i < catalogue.items.size(); ++i) {
        EXPECT_THAT(catalogue.items[i], IsEmpty()) << kDeviceFamilies[i].section;
    }
    EXPECT_THAT(catalogue.recent, ElementsAre("QVX2", ".........."));
    EXPECT_EQ(catalogue.problems.size(), 1U);
    EXPECT_EQ(files_.reads, 1);
}

TEST_F(DeviceCatalogue, that_is_missing_lists_nothing) {
    const Catalogue catalogue = ReadCatalogue(ini_);
    for (const auto& items : catalogue.items)
        EXPECT_THAT(items, IsEmpty());
    EXPECT_THAT(catalogue.recent, ElementsAre("....", "....", "....", "....", "...."));
    EXPECT_THAT(catalogue.problems, IsEmpty());
    EXPECT_EQ(ReadBoard(ini_), BoardChoice::kHardware);
}

TEST_F(DeviceCatalogue, tells_a_devices_family_by_its_exact_name) {
    std::string text;
    for (const DeviceFamily& family : kDeviceFamilies) {
        text.append("[").append(family.section).append("]\nCOUNT=2\nITEM00=");
        text.append(family.section).append("x\nITEM01=QVXboth\n");
    }
    files_.bytes[kFile] = text;
    EXPECT_EQ(GetPartType(ini_, "MENUVCOx"), "VCO");
    EXPECT_EQ(GetPartType(ini_, "MENUSINGPLLx"), "SingleInteger");
    EXPECT_EQ(GetPartType(ini_, "MENUDUALPLLx"), "DualInteger");
    EXPECT_EQ(GetPartType(ini_, "MENUFRACPLLx"), "Fractional");
    EXPECT_EQ(GetPartType(ini_, "MENUPLLVCOx"), "PLLVCO");
    EXPECT_EQ(GetPartType(ini_, "MENUTRANSx"), "Transceiver");
    EXPECT_EQ(GetPartType(ini_, "QVXboth"), "VCO");
    for (const auto* name : {"MENUx", "MENUCLKDISTx", "MENUENGINEERINGx", "menuvcox", "QVX", ""}) {
        EXPECT_EQ(GetPartType(ini_, name), "") << name;
    }
}

TEST_F(DeviceCatalogue, keeps_the_device_used_last_at_the_head_of_the_recent_list) {
    files_.bytes[kFile] = "[RECENTPARTS]\nCOUNT=3\n";
    std::vector<std::string> list{"A", "B", "C"};
    UpdateRecentList(ini_, "A", list);
    EXPECT_THAT(list, ElementsAre("A", "B", "C"));
    UpdateRecentList(ini_, "C", list);
    EXPECT_THAT(list, ElementsAre("C", "A", "B"));
    UpdateRecentList(ini_, "a", list);
    EXPECT_THAT(list, ElementsAre("a", "C", "A"));
    // A shorter COUNT in the file moves the head alone.
    files_.bytes[kFile] = "[RECENTPARTS]\nCOUNT=2\n";
    UpdateRecentList(ini_, "D", list);
    EXPECT_THAT(list, ElementsAre("D", "a", "A"));
    for (const auto* text : {"", "[RECENTPARTS]\nCOUNT=0\n", "[RECENTPARTS]\nCOUNT=x\n"}) {
        files_.bytes[kFile] = text;
        UpdateRecentList(ini_, "E", list);
        EXPECT_THAT(list, ElementsAre("D", "a", "A"));
    }
}

TEST_F(DeviceCatalogue, stores_the_recent_list_in_one_replacement) {
    files_.bytes[kFile] = "; bench 3\r\n[RECENTPARTS]\r\nCOUNT=2\r\nITEM00=X\r\n[BENCH]\r\n";
    EXPECT_TRUE(SaveRecentList(ini_, std::vector<std::string>{"A", "B", "C"}));
    EXPECT_EQ(files_.bytes[kFile],
              "; bench 3\r\n[RECENTPARTS]\r\nCOUNT=2\r\nITEM00=A\r\nITEM01=B\r\n[BENCH]\r\n");
    EXPECT_EQ(files_.replacements, 1);
    files_.failure = "Permission denied";
    EXPECT_FALSE(SaveRecentList(ini_, std::vector<std::string>{"D", "E", "F"}));
    EXPECT_EQ(ini_.TakeWriteFailures().size(), 1U);
}

TEST_F(DeviceCatalogue, keeps_which_board_is_used) {
    EXPECT_TRUE(WriteBoard(ini_, BoardChoice::kSimulated));
    EXPECT_EQ(files_.bytes[kFile], "[BENCH]\r\nBOARD=Simulated\r\n");
    EXPECT_EQ(ReadBoard(ini_), BoardChoice::kSimulated);
    EXPECT_TRUE(WriteBoard(ini_, BoardChoice::kHardware));
    EXPECT_EQ(files_.bytes[kFile], "[BENCH]\r\nBOARD=Hardware\r\n");
    EXPECT_EQ(ReadBoard(ini_), BoardChoice::kHardware);
    files_.bytes[kFile] = "[BENCH]\nBOARD=Breadboard\n";
    EXPECT_EQ(ReadBoard(ini_), BoardChoice::kHardware);
}

} // namespace
} // namespace zentrel
