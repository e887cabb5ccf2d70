#include "setups/device_settings.h"

#include <gmock/gmock.h>

#include <csignal>
#include <random>

#include <sys/wait.h>
#include <unistd.h>

#include "clock/clk_dist.h"
#include "synth/pll.h"
#include "tests/setups/bench_desk.h"
#include "transport/load_path.h"

namespace zentrel {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(DeviceSettings, come_back_when_the_device_is_chosen_again) {
    BenchDesk desk;
    desk.Select("QVX4100");
    desk.part.Registers("R3").SetValue(0x12303);
    desk.part.PortAddress = 632;
    desk.part.SetDataPosition(7);
    desk.part.PrgmPins("CE").SetEnabled(false);
    desk.part.PrgmPins("SYNC").SetPosition(10);
    desk.part.ClkDists(1).SetExtSRC_Freq(1500);
    CommMode_Click(desk.part, 0);
    desk.Select("QVX2691");
    EXPECT_EQ(desk.part.Registers.Count(), 3);
    desk.Select("QVX4100");
    EXPECT_EQ(desk.session.CommMode_Select, "USB");
    EXPECT_EQ(desk.part.Registers("R3").Value(), 0x12303);
    EXPECT_EQ(desk.part.PortAddress, 632);
    EXPECT_EQ(desk.part.DataPosition(), 7);
    EXPECT_FALSE(desk.part.PrgmPins("CE").Enabled());
    EXPECT_EQ(desk.part.PrgmPins("SYNC").Position(), 10);
    EXPECT_EQ(desk.part.ClkDists(1).ExtSRC_Freq(), 1500);
    EXPECT_EQ(desk.part.InputPinPositionINI, 1508) << "the read-back pin keeps both homes";
    EXPECT_THAT(desk.messages.shown, IsEmpty());
}

TEST(DeviceSettings, are_left_alone_while_the_option_is_off) {
    BenchDesk desk;
    desk.Select("QVX2691");
    const std::string before = desk.PartFileText();
    desk.frm->menu.Click("mnuSaveDeviceSettings");
    desk.part.Registers("R").SetValue(0);
    desk.Select("QVX2692");
    desk.part.ID = "QVX2691";
    EXPECT_EQ(desk.PartFileText(), before);
}

TEST(DeviceSettings, go_to_the_keys_of_their_own_entry_beside_a_left_out_duplicate) {
    BenchDesk desk;
    TempFolder::Write(desk.folder / "TWICE.ini",
                      "[SETUP]\nZENTREL_VERSION=2.3.0\n[REGISTERS]\nCOUNT=3\nNAME00=A\nNAME01=A\n"
                      "NAME02=B\nVALUE00=1\nVALUE01=2\nVALUE02=3\n");
    desk.Select("TWICE");
    desk.part.Registers("B").SetValue(77);
    ASSERT_TRUE(SaveDeviceSettings(desk.part, desk.files));
    EXPECT_THAT(desk.PartFileText(), HasSubstr("VALUE00=1\nVALUE01=2\nVALUE02=77\n"));
}

TEST(DeviceSettings, keep_the_crystal_of_a_block_whose_boxes_could_not_be_filled) {
    BenchDesk desk;
    TempFolder::Write(desk.folder / "ASKEW.ini",
                      "[SETUP]\nZENTREL_VERSION=2.3.0\n[REGISTERS]\nCOUNT=1\nNAME00=A\n[BITS]\n"
                      "COUNT=1\nREG00=A\nNAME00=N\nLEN00=8\n[PLLS]\nCOUNT=1\nN00=N\nR00=N\n"
                      "PD00=NOSUCHBIT\nOSCIN00=25\n");
    desk.Select("ASKEW");
    desk.Select("QVX2691");
    EXPECT_THAT(TempFolder::Read(desk.folder / "ASKEW.ini"), HasSubstr("OSCIN00=25\n"));
}

TEST(DeviceSettings, of_a_part_file_that_has_gone_are_not_made_into_a_new_one) {
    BenchDesk desk;
    desk.Select("QVX2691");
    const std::string path = desk.folder / "QVX2691.ini";
    std::filesystem::remove(path);
    EXPECT_TRUE(SaveDeviceSettings(desk.part, desk.files));
    EXPECT_FALSE(std::filesystem::exists(path));
    desk.Select("QVX2692");
    ASSERT_EQ(desk.messages.shown.size(), 1U);
    EXPECT_THAT(desk.messages.shown[0], HasSubstr("QVX2691.ini has gone"));
}

TEST(DeviceSettings, that_cannot_be_written_are_told_once_with_file_and_reason) {
    BenchDesk desk;
    desk.Select("QVX2691");
    const std::string path = desk.folder / "QVX2691.ini";
    std::filesystem::permissions(path, std::filesystem::perms::owner_read);
    const std::string before = TempFolder::Read(path);
    desk.part.Registers("R").SetValue(0);
    desk.Select("QVX2692");
    ASSERT_EQ(desk.messages.shown.size(), 1U);
    EXPECT_THAT(desk.messages.shown[0], HasSubstr("QVX2691.ini"));
    EXPECT_EQ(TempFolder::Read(path), before);
    EXPECT_EQ(desk.part.ID, "QVX2692") << "the change of device goes on";
}

// One child saves settings over and over and is killed wherever it happens to be: the part file is
// an old or a new one, whole, each time.
TEST(DeviceSettings, survive_a_program_killed_at_any_moment_of_a_save) {
    BenchDesk desk;
    desk.Select("QVX2691");
    const std::string path = desk.folder / "QVX2691.ini";
    ASSERT_TRUE(SaveDeviceSettings(desk.part, desk.files));
    const std::size_t size = TempFolder::Read(path).size();
    std::mt19937 random(20261122);
    constexpr int kKills = 1000;
    int torn = 0;
    for (int i = 0; i < kKills; ++i) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            // Words of one length, so that a whole file has one size.
            for (int word = 100000;; word = word % 99999 + 100000) {
                desk.part.Registers("R").SetValue(word);
                SaveDeviceSettings(desk.part, desk.files);
            }
        }
        usleep(static_cast<useconds_t>(random() % 2500));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const std::string text = TempFolder::Read(path);
        const bool whole =
            (text.size() == size || text.size() == size + 4) && text.ends_with("COUNT=0\n");
        torn += whole ? 0 : 1;
    }
    EXPECT_EQ(torn, 0);
}

} // namespace
} // namespace zentrel
