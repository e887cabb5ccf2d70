#include "setups/setup_file.h"

#include <gmock/gmock.h>

#include <cmath>

#include "clock/clk_dist.h"
#include "screens/file_dialogs.h"
#include "screens/setup_dialogs.h"
#include "synth/frequency_entry.h"
#include "synth/pll.h"
#include "tests/setups/bench_desk.h"
#include "transport/load_path.h"

namespace zentrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;
using ::testing::StartsWith;

struct SetupFile : ::testing::Test {
    SetupFile() { desk.Select("QVX4100"); }
    BenchDesk desk;
    cPart& part = desk.part;
    std::string file = desk.folder / "state.mac";

    bool Save(OldFile old = OldFile::Replace) {
        return SaveBurstCommands(part, desk.files, file, old);
    }
    void Restore() { LoadBurstCommands(part, desk.files, file); }
    std::string Text() const { return TempFolder::Read(file); }
};

TEST_F(SetupFile, is_written_in_its_order_with_its_keys) {
    AddBurstCommand(part, "R0", 0);
    AddBurstCommand(part, "300", 2);
    ASSERT_TRUE(Save());
    const std::string text = Text();
    EXPECT_THAT(text, StartsWith("[SETUP]\r\nADDRESS=888\r\nCLOCK=1\r\nDATA=2\r\nLE=4\r\n"
                                 "PART=QVX4100\r\nPINPOSITION00=5\r\n"));
    EXPECT_THAT(text, HasSubstr("[MODES]\r\nNAME00=R0\r\nVALUE00=197120\r\nNAME01=R1\r\n"));
    EXPECT_THAT(text, HasSubstr("OSCIN00=10\r\nEXTRA_PLL_N_DIV_1_00=1\r\nPINS=80\r\n[BURST]\r\n"));
    EXPECT_THAT(text, HasSubstr("[BURST]\r\nCOUNT=2\r\nCOMMAND00=0\r\nREGISTER00=197120\r\n"
                                "REGISTERNAME00=R0\r\nPINS00=80\r\nCOMMAND01=2\r\n"
                                "REGISTER01=300\r\n"));
}

TEST_F(SetupFile, brings_words_crystal_pins_and_plan_back_without_sending_anything) {
    part.PLLs(1).panel.txtVCO.Text = "1180";
    txtVCO_Enter(part, 1);
    part.PrgmPins("SYNC").SetEnabled(false);
    const auto words = desk.Words();
    const double vco = part.PLLs(1).VCOFrequency();
    ASSERT_TRUE(Save());

    part.PLLs(1).SetXtalFrequency(20);
    for (cRegister& reg : part.Registers)
        reg.SetValue(reg.Address());
    part.PrgmPins("SYNC").SetEnabled(true);
    part.PrgmPins("CE").SetEnabled(false);
    const auto latched = desk.bench.board.newest();
    Restore();
    EXPECT_EQ(desk.Words(), words);
    EXPECT_DOUBLE_EQ(part.PLLs(1).VCOFrequency(), vco);
    EXPECT_DOUBLE_EQ(part.ClkDists(1).IntVCO_Freq(), vco);
    EXPECT_DOUBLE_EQ(part.ClkDists(1).RefOSC_Freq(), 10);
    EXPECT_FALSE(part.PrgmPins("SYNC").Enabled());
    EXPECT_TRUE(part.PrgmPins("CE").Enabled());
    EXPECT_EQ(desk.bench.board.newest(), latched);
    LoadChanges(part);
    EXPECT_GT(desk.bench.board.newest(), latched) << "the flags wait for the next load";
}

TEST_F(SetupFile, appends_its_burst_and_leaves_the_state_of_its_last_entries) {
    part.Registers("R0").SetValue(0x10);
    AddBurstCommand(part, "R0", 0);
    part.Registers("R0").SetValue(0x20);
    AddBurstCommand(part, "", 1);
    ASSERT_TRUE(Save());
    Restore();
    EXPECT_EQ(part.BurstCmds.Count(), 4);
    EXPECT_EQ(part.BurstCmds(3).Register(), 0x10);
    EXPECT_EQ(part.Registers("R0").Value(), 0x10) << "the burst entry touched it last";
}

TEST_F(SetupFile, of_another_device_is_refused_whole) {
    ASSERT_TRUE(Save());
    desk.Select("QVX2691");
    const auto words = desk.Words();
    Restore();
    EXPECT_EQ(desk.Words(), words);
    EXPECT_THAT(desk.messages.shown,
                ElementsAre("This BurstCommand File was built for the QVX4100. Select the correct "
                            "device before loading this file."));
}

TEST_F(SetupFile, that_is_missing_empty_or_binary_is_one_of_another_device) {
    for (const std::string& bytes :
         {std::string(), std::string("\0\x01\xFF[", 4), std::string("[SETUP]\r\nPART")}) {
        TempFolder::Write(file, bytes);
        desk.messages.shown.clear();
        Restore();
        EXPECT_THAT(desk.messages.shown, ElementsAre(HasSubstr("built for the QVX. Select")));
    }
}

TEST_F(SetupFile, without_a_burst_section_adds_one_delay_of_1000) {
    ASSERT_TRUE(Save());
    std::string text = Text();
    TempFolder::Write(file, text.substr(0, text.find("[BURST]")));
    Restore();
    ASSERT_EQ(part.BurstCmds.Count(), 1);
    EXPECT_EQ(part.BurstCmds(1).Description, "Delay of 1000");
}

TEST_F(SetupFile, takes_keys_in_any_order_quotes_and_bare_line_feeds) {
    TempFolder::Write(file, "[BURST]\nCOUNT=0\n[MODES]\nVALUE00=\"4660\"\nNAME00= R0 \n"
                            "[SETUP]\nPART=\"QVX4100\"\nADDRESS=&H278\nLE=4\n");
    // The names of the other registers are missing: the restore stops at the first of them.
    try {
        Restore();
        FAIL() << "a register without a name was restored";
    } catch (const SetupFileError& error) {
        EXPECT_EQ(error.key(), "NAME01");
        EXPECT_EQ(error.number(), 5);
        EXPECT_THAT(error.what(), HasSubstr(file));
    }
    EXPECT_EQ(part.PortAddress, 0x278);
    EXPECT_EQ(part.Registers("R0").Value(), 4660) << "what was restored before it stands";
}

TEST_F(SetupFile, stops_at_a_value_that_is_no_number) {
    struct Case {
        const char* key;
        const char* broken;
    };
    for (const Case& c : {Case{"VALUE03", "12 volts"}, Case{"CLOCK", "x"}, Case{"OSCIN00", "1,5"},
                          Case{"PINS", "1e300"}, Case{"COUNT", ""}}) {
        ASSERT_TRUE(Save());
        desk.files.SetPrivateSetting(file,
                                     c.key == std::string("CLOCK")   ? "SETUP"
                                     : c.key == std::string("COUNT") ? "BURST"
                                                                     : "MODES",
                                     c.key, c.broken);
        EXPECT_THROW(Restore(), SetupFileError) << c.key;
    }
}

TEST_F(SetupFile, with_an_absurd_count_or_value_ends_in_good_time) {
    ASSERT_TRUE(Save());
    desk.files.SetPrivateSetting(file, "BURST", "COUNT", "32767");
    Restore();
    EXPECT_EQ(part.BurstCmds.Count(), 32767);
    EXPECT_EQ(part.BurstCmds(32767).Description, "Delay of 1000");
    desk.files.SetPrivateSetting(file, "MODES", "VALUE00", std::string(1000000, '9'));
    EXPECT_THROW(Restore(), SetupFileError);
}

TEST_F(SetupFile, replaces_or_merges_as_asked) {
    for (int i = 0; i < 3; ++i)
        AddBurstCommand(part, "7", 2);
    ASSERT_TRUE(Save());
    DeleteBurstCommands(part);
    ASSERT_TRUE(Save(OldFile::Merge));
    EXPECT_THAT(Text(), HasSubstr("COUNT=0"));
    EXPECT_THAT(Text(), HasSubstr("COMMAND02=2")) << "a merge keeps what it doesn't write";
    ASSERT_TRUE(Save());
    EXPECT_THAT(Text(), Not(HasSubstr("COMMAND02")));
}

TEST_F(SetupFile, that_cannot_be_written_is_told_with_file_and_reason) {
    file = desk.folder / "no such folder/state.mac";
    EXPECT_FALSE(Save());
    const auto failures = desk.files.TakeWriteFailures();
    ASSERT_THAT(failures, SizeIs(1));
    EXPECT_THAT(failures[0].file, HasSubstr("state.mac"));
    EXPECT_FALSE(failures[0].reason.empty());
}

struct PickedFile : FileDialogs {
    explicit PickedFile(std::string name) : picked(std::move(name)) {}
    std::optional<std::string> OpenName(std::string_view) override { return picked; }
    std::string picked;
};

TEST_F(SetupFile, restored_by_the_menu_tells_what_it_could_not_write_or_where_it_stopped) {
    part.PLLs(1).Setextra_pll_n_div_1(2);
    ASSERT_TRUE(Save());
    PickedFile dialogs(file);
    std::filesystem::permissions(desk.folder / "QVX4100.ini", std::filesystem::perms::owner_read);
    RestoreSetupByDialog(part, desk.files, dialogs, "Restore Part Setup");
    ASSERT_THAT(desk.messages.shown, SizeIs(1)) << "the extra divider goes into the part file";
    EXPECT_THAT(desk.messages.shown[0], HasSubstr("QVX4100.ini"));

    std::filesystem::permissions(desk.folder / "QVX4100.ini", std::filesystem::perms::owner_all);
    std::string text = Text();
    text.replace(text.find("NAME01=R1"), 9, "NAME01=RX");
    TempFolder::Write(file, text);
    RestoreSetupByDialog(part, desk.files, dialogs, "Restore Part Setup");
    EXPECT_THAT(desk.messages.shown, SizeIs(1)) << "no box for that";
    EXPECT_THAT(desk.frm->StatusBar1.StatusBar_GetString(), HasSubstr("[MODES] NAME01=RX"));
}

TEST_F(SetupFile, keeps_pin_states_across_the_routes) {
    part.PrgmPins("SYNC").SetEnabled(true);
    ASSERT_TRUE(Save());
    CommMode_Click(part, 0);
    part.ResetOutputPins();
    Restore();
    EXPECT_TRUE(part.PrgmPins("SYNC").Enabled());
    EXPECT_TRUE(part.PrgmPins("CE").Enabled());
}

TEST_F(SetupFile, keeps_every_bit_of_a_53_bit_word) {
    part.SetRegisterLength(53);
    const double word = std::ldexp(1.0, 53) - 2;
    part.Registers("R3").SetValue(word);
    ASSERT_TRUE(Save());
    part.Registers("R3").SetValue(0);
    Restore();
    EXPECT_EQ(part.Registers("R3").Value(), word);
}

} // namespace
} // namespace zentrel
