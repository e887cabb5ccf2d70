#include "setups/modes.h"

#include <gmock/gmock.h>

#include "clock/clk_dist.h"
#include "synth/frequency_entry.h"
#include "synth/pll.h"
#include "tests/setups/bench_desk.h"

namespace zentrel {
namespace {

using ::testing::HasSubstr;

struct Modes : ::testing::Test {
    Modes() { desk.Select("QVX4100"); }
    BenchDesk desk;
    cPart& part = desk.part;
    MenuModel& menu = desk.frm->menu;

    void TypeVCO(const std::string& mhz) {
        part.PLLs(1).panel.txtVCO.Text = mhz;
        txtVCO_Enter(part, 1);
    }
    void Add(const std::string& name) {
        desk.messages.answer = name;
        menu.Click("mnuAddMode");
    }
};

TEST_F(Modes, are_stored_by_name_and_recalled_by_a_click) {
    EXPECT_FALSE(menu("mnuMode", 0).Visible);
    TypeVCO("1160");
    const auto receive = desk.Words();
    Add("Receive");
    EXPECT_EQ(desk.messages.asked,
              "Menu Name|Enter Name of Mode for pulldown menu item|Recieve Mode");
    TypeVCO("1240");
    part.PrgmPins("CE").SetEnabled(false);
    const auto transmit = desk.Words();
    Add("Transmit");
    EXPECT_EQ(menu.ItemCount("mnuMode"), 2);
    EXPECT_EQ(menu("mnuMode", 0).Caption, "Receive");

    menu.Click("mnuMode", 0);
    EXPECT_EQ(desk.Words(), receive);
    EXPECT_TRUE(part.PrgmPins("CE").Enabled());
    EXPECT_DOUBLE_EQ(part.ClkDists(1).IntVCO_Freq(), 1160);
    desk.frm->RestoreModeString("TRANSMIT");
    EXPECT_EQ(desk.Words(), transmit);
    EXPECT_FALSE(part.PrgmPins("CE").Enabled());
    desk.frm->RestoreModeString("nobody");
    EXPECT_EQ(desk.Words(), transmit);
}

TEST_F(Modes, live_in_the_part_file_and_come_back_with_it) {
    Add("One");
    Add("One");
    EXPECT_THAT(desk.PartFileText(), HasSubstr("[MODES]\nCOUNT=2\n"));
    EXPECT_THAT(desk.PartFileText(), HasSubstr("MODE00=One\nNAME0000=R0\nVALUE0000=197120\n"));
    desk.Select("QVX2691");
    EXPECT_FALSE(menu("mnuMode", 0).Visible);
    EXPECT_EQ(menu.ItemCount("mnuMode"), 1);
    desk.Select("QVX4100");
    EXPECT_EQ(menu.ItemCount("mnuMode"), 2);
}

TEST(NoDevice, takes_no_modes) {
    BenchDesk desk;
    desk.messages.answer = "Receive";
    const std::size_t files = desk.folder.Count();
    desk.frm->menu.Click("mnuAddMode");
    EXPECT_EQ(desk.messages.asked, "");
    EXPECT_EQ(desk.folder.Count(), files) << "no file without a name";
    EXPECT_FALSE(desk.frm->menu("mnuMode", 0).Visible);
}

TEST_F(Modes, with_a_name_that_is_empty_or_cancelled_store_nothing) {
    const std::string before = desk.PartFileText();
    Add("");
    desk.messages.answer = std::nullopt;
    menu.Click("mnuAddMode");
    EXPECT_EQ(desk.PartFileText(), before);
}

TEST_F(Modes, keep_an_unfinished_entry_of_the_crystal_as_it_stands) {
    part.PLLs(1).panel.txtOsc.Text = "12.5";
    Add("Typed");
    EXPECT_THAT(desk.PartFileText(), HasSubstr("OSCIN0000=12.5\n"));
    menu.Click("mnuMode", 0);
    EXPECT_DOUBLE_EQ(part.PLLs(1).XtalFrequency(), 12.5);
}

TEST_F(Modes, put_the_extra_divider_into_the_part_file) {
    part.PLLs(1).Setextra_pll_n_div_1(3);
    Add("Divided");
    part.PLLs(1).Setextra_pll_n_div_1(1);
    menu.Click("mnuMode", 0);
    EXPECT_EQ(part.PLLs(1).extra_pll_n_div_1(), 3);
    EXPECT_THAT(desk.PartFileText(), HasSubstr("EXTRA_PLL_N_DIV_1_00=3"));
}

TEST_F(Modes, with_a_register_that_the_device_lost_end_there) {
    Add("Old");
    desk.files.SetPrivateSetting(desk.folder / "QVX4100.ini", "MODES", "NAME0002", "GONE");
    EXPECT_THROW(RestoreMode(part, desk.files, 0), NotFound);
    EXPECT_THROW(RestoreMode(part, desk.files, 9), NotFound) << "no such mode";
}

TEST_F(Modes, restore_the_input_that_the_registers_select) {
    part.PrgmBits("MODE").SetBitValue(1);
    part.UpdateDisplays();
    part.ClkDists(1).SetExtSRC_Freq(2000);
    part.UpdateDisplays();
    Add("External");
    part.PrgmBits("MODE").SetBitValue(0);
    part.UpdateDisplays();
    menu.Click("mnuMode", 0);
    EXPECT_EQ(part.ClkDists(1).panel.cbClkInputMux.ListIndex, 1);
    EXPECT_EQ(part.PrgmBits("MODE").BitValue(), 1);
}

} // namespace
} // namespace zentrel
