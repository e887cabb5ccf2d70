#include "partfile/app_path.h"

#include <gtest/gtest.h>

#include "device/text.h"
#include "tests/partfile/temp_folder.h"

namespace zentrel {
namespace {

TEST(AppPathText, is_the_lower_case_folder_with_a_backslash) {
    EXPECT_EQ(AppPath("/opt/Bench/Zentrel").Text(), "/opt/bench/zentrel\\");
    EXPECT_EQ(AppPath("/opt/Bench/Zentrel/").Text(), "/opt/bench/zentrel\\");
    EXPECT_EQ(AppPath("/opt/Zentrel").CataloguePath(), "/opt/zentrel\\zentrel.ini");
}

class AppPathOnDisk : public testing::Test {
  protected:
    AppPathOnDisk() {
        std::filesystem::create_directories(folder_ / "Program/Setups");
        TempFolder::Write(folder_ / "Program/QVX4100.INI", "");
        TempFolder::Write(folder_ / "Program/both.ini", "");
        TempFolder::Write(folder_ / "Program/Both.ini", "");
        TempFolder::Write(folder_ / "Program/Setups/Rx.MAC", "");
    }
    std::string Below(const std::string& rest) {
        return path_.Resolve(path_.Text() + rest).value_or("");
    }

    TempFolder folder_;
    AppPath path_{folder_ / "Program"};
};

TEST_F(AppPathOnDisk, finds_files_below_it_whatever_the_case_of_their_letters) {
    const std::string real = folder_ / "Program/";
    EXPECT_EQ(Below("qvx4100.ini"), real + "QVX4100.INI");
    EXPECT_EQ(Below("QVX4100.INI"), real + "QVX4100.INI");
    EXPECT_EQ(Below("both.ini"), real + "both.ini");
    EXPECT_EQ(Below("Both.ini"), real + "Both.ini");
    EXPECT_EQ(Below("BOTH.INI"), real + "Both.ini");
    EXPECT_EQ(Below("setups\\rx.mac"), real + "Setups/Rx.MAC");
    EXPECT_EQ(Below("SETUPS/rx.mac"), real + "Setups/Rx.MAC");
    EXPECT_EQ(Below("New.ini"), real + "New.ini");
    EXPECT_EQ(path_.Resolve(ToUpper(path_.Text()) + "qvx4100.ini"), real + "QVX4100.INI");
    EXPECT_EQ(path_.Resolve(folder_ / "program/qvx4100.ini"), real + "QVX4100.INI");
}

TEST_F(AppPathOnDisk, leaves_other_paths_to_the_platform) {
    for (const auto& path : {folder_ / "Programs/x.ini", folder_ / "QVX4100.ini",
                             std::string("x.ini"), std::string("a\\b.ini")}) {
        EXPECT_EQ(path_.Resolve(path), path);
    }
    EXPECT_EQ(path_.Resolve(""), std::nullopt);
    EXPECT_EQ(path_.Resolve(std::string("/a\0b", 4)), std::nullopt);
}

TEST(PartFilePath, cuts_long_names_and_refuses_what_isnt_a_bare_name) {
    const AppPath path("/z");
    const std::string name29(29, 'Q');
    const std::string name30(30, 'Q');
    EXPECT_EQ(path.PartFilePath("QVX4100"), "/z\\QVX4100.ini");
    EXPECT_EQ(path.PartFilePath(name30), "/z\\" + name30 + ".ini");
    EXPECT_EQ(path.PartFilePath(name30 + "X"), "/z\\" + name30 + ".ini");
    EXPECT_EQ(path.PartFilePath(name29 + "/"), "/z\\" + name29 + ".ini");
    EXPECT_EQ(path.PartFilePath(name29 + "/QVX"), "/z\\" + name29 + ".ini");
    EXPECT_EQ(path.PartFilePath(name30 + "/.."), "/z\\" + name30 + ".ini");
    EXPECT_EQ(path.PartFilePath("a.b"), "/z\\a.b.ini");
    for (const auto* name : {"QVX/", "a/b", "a\\b", "..", "a..b", "...."}) {
        EXPECT_EQ(path.PartFilePath(name), "") << name;
    }
}

} // namespace
} // namespace zentrel
