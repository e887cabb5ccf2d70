#include "partfile/migration.h"

#include <gtest/gtest.h>

#include "partfile/memory_store.h"
#include "partfile/part_definition.h"

namespace zentrel {
namespace {

class MigrationOfAPartFile : public testing::Test {
  protected:
    std::string Migrated(const std::string& text) {
        files_.bytes["/p.ini"] = text;
        problems_ = MigratePartFile(ini_, "/p.ini");
        return files_.bytes["/p.ini"];
    }

    MemoryStore::Files files_;
    IniFiles ini_{AppPath("/opt/zentrel"), std::make_unique<MemoryStore>(files_)};
    std::vector<Problem> problems_;
};

TEST_F(MigrationOfAPartFile, turns_port_masks_into_pins_in_one_replacement) {
    EXPECT_EQ(Migrated("; mine\n[SETUP]\nCLOCK=8\nDATA=&H4\nLE=512 \n[PINS]\nCOUNT=5\n"
                       "LOCATION00=3\nLOCATION01=2\nLOCATION02=10\nLOCATION03=19\nNAME04=CE\n"
                       "[MODES]\nCOUNT=2\nPINS00=512\n"),
              "; mine\n[SETUP]\nCLOCK=3\nDATA=4\nLE=14\nCOMM_MODE=LPT\nZENTREL_VERSION=2.3.0\n"
              "[PINS]\nCOUNT=5\nLOCATION00=3\nLOCATION01=4\nLOCATION02=11\nLOCATION03=1500\n"
              "NAME04=CE\nLOCATION04=3\n"
              // Control bit 1 is pin 14; mask 3, the default, is pins 1 and 2.
              "[MODES]\nCOUNT=2\nPINS00=8192\nPINS01=3\n");
    EXPECT_EQ(files_.replacements, 1);
    EXPECT_TRUE(problems_.empty());
}

TEST_F(MigrationOfAPartFile, happens_once) {
    const std::string once = Migrated("[SETUP]\nZENTREL_VERSION=2.2.0\nCLOCK=8\n");
    EXPECT_EQ(once, "[SETUP]\nZENTREL_VERSION=2.3.0\nCLOCK=3\nCOMM_MODE=LPT\nDATA=2\nLE=3\n");
    EXPECT_EQ(Migrated(once), once);
    EXPECT_EQ(files_.replacements, 1);
}

TEST_F(MigrationOfAPartFile, leaves_any_other_version_alone) {
    for (const auto* version : {"2.3.0", "9.9", "2.2", ""}) {
        const std::string text = "[SETUP]\nZENTREL_VERSION=" + std::string(version) + "\nCLOCK=8\n";
        EXPECT_EQ(Migrated(text), text);
    }
}

TEST_F(MigrationOfAPartFile, creates_a_missing_one_but_none_that_cant_exist) {
    MigratePartFile(ini_, "/p.ini");
    EXPECT_EQ(files_.bytes["/p.ini"], "[SETUP]\r\nCOMM_MODE=LPT\r\nCLOCK=1\r\nDATA=2\r\nLE=3\r\n"
                                      "ZENTREL_VERSION=2.3.0\r\n");
    MigratePartFile(ini_, ini_.Folder().PartFilePath("...."));
    EXPECT_EQ(files_.bytes.size(), 1U);
    EXPECT_TRUE(ini_.TakeWriteFailures().empty());
}

TEST_F(MigrationOfAPartFile, takes_the_default_for_what_is_no_mask) {
    EXPECT_EQ(Migrated("[SETUP]\nCLOCK=x\nDATA=-8\n[PINS]\nCOUNT=2\nLOCATION00=40\n"
                       "LOCATION01=-1\n"),
              "[SETUP]\nCLOCK=1\nDATA=0\nCOMM_MODE=LPT\nLE=3\nZENTREL_VERSION=2.3.0\n"
              "[PINS]\nCOUNT=2\nLOCATION00=3\nLOCATION01=3\n");
    EXPECT_EQ(ProblemsMessage(problems_), "/p.ini [SETUP] CLOCK=x (used 1)\n"
                                          "/p.ini [PINS] LOCATION00=40 (used 3)\n"
                                          "/p.ini [PINS] LOCATION01=-1 (used 3)");
}

TEST_F(MigrationOfAPartFile, and_the_reading_after_it_tell_of_a_bad_value_once) {
    files_.bytes["/p.ini"] = "[SETUP]\nCLOCK=x\n[PINS]\nCOUNT=abc\n[MODES]\nCOUNT=\n";
    EXPECT_EQ(ProblemsMessage(LoadPartDefinition(ini_, "/p.ini").problems),
              "/p.ini [PINS] COUNT=abc (used 0)\n"
              "/p.ini [MODES] COUNT= (used 0)\n"
              "/p.ini [SETUP] CLOCK=x (used 1)");
}

TEST_F(MigrationOfAPartFile, that_cant_be_stored_still_gives_the_right_pins) {
    files_.bytes["/p.ini"] = "[SETUP]\nCLOCK=8\n[PINS]\nCOUNT=1\nLOCATION00=9\n";
    files_.failure = "Read-only file system";
    const PartDefinition part = LoadPartDefinition(ini_, "/p.ini");
    EXPECT_EQ(part.setup.version, "2.3.0");
    EXPECT_EQ(part.setup.clock, 3);
    EXPECT_EQ(part.pins.at(0).location, 14);
    EXPECT_EQ(WriteFailuresMessage(ini_.TakeWriteFailures()),
              "Could not write /p.ini: Read-only file system");
}

} // namespace
} // namespace zentrel
