#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>

#include "automation/script_host/script_failed.h"
#include "clock/clk_dist.h"
#include "synth/pll.h"
#include "tests/script_host/scripted.h"

/// On-load hooks behind a restored mode or setup: when they run, what they find, and what comes
/// after them.
namespace zentrel {
namespace {

using scripted::Device;
using scripted::Program;
using testing::ElementsAre;
using testing::HasSubstr;

// Notes what it finds, and sets A.
constexpr const char* kNote =
    "Sub Note\n"
    "seen = seen & Part.PrgmBits(\"A\").BitValue & \",\" & Part.PrgmPins(\"CE\").Enabled & "
    "\",\" & Part.BurstCmds.Count & \" \"\n"
    "frmPart.StatusBar_SetString seen\n"
    "Part.PrgmBits(\"A\").BitValue = 9\n"
    "End Sub\n"
    "Dim seen";
constexpr const char* kNoteAtLoad = "script_name00=M\nscript_on_load00=Note\n";

// A is 33 and CE off in the mode.
constexpr const char* kMode = "[MODES]\nCOUNT=1\nMODE00=Quiet\nNAME0000=R0\nVALUE0000=132\n"
                              "NAME0001=R1\nVALUE0001=1\nPINS00=0\n";

TEST(RestoredModes, run_on_load_hooks_behind_the_registers_and_ahead_of_the_pins_twice) {
    Program program;
    program.Load(Device({{"M", kNote}}, kNoteAtLoad) + kMode);
    EXPECT_EQ(program.A(), 9);
    program.frm.RestoreMode(0);
    // At the load, and in both passes; the first leaves the pins of the mode to the second.
    EXPECT_EQ(program.frm.StatusBar1.StatusBar_GetString(), "0,True,0 33,True,0 33,False,0 ");
    EXPECT_EQ(program.A(), 9);
    EXPECT_FALSE(program.part.PrgmPins("CE").Enabled());
}

TEST(RestoredModes, send_nothing_of_what_a_hook_wrote) {
    Program program;
    program.Load(Device({{"M", kNote}}, kNoteAtLoad) + kMode);
    const auto before = program.bench.board.newest();
    program.frm.RestoreMode(0);
    EXPECT_EQ(program.bench.board.newest(), before);
    EXPECT_TRUE(program.part.Registers("R0").Change());
}

TEST(RestoredModes, end_at_a_hook_that_fails_and_tell_it) {
    Program program;
    program.Load(Device({{"M", "Sub Note\nErr.Raise 999, , \"no lock\"\nEnd Sub"}}, kNoteAtLoad) +
                 kMode);
    EXPECT_THAT(program.boxes.shown, ElementsAre()) << "at the load it is passed over";
    program.frm.guard.Run([&] { program.frm.menu.Click("mnuMode", 0); });
    ASSERT_EQ(program.boxes.shown.size(), 1U);
    EXPECT_THAT(program.boxes.shown[0], HasSubstr("procedure Note, line 2"));
    EXPECT_EQ(program.A(), 33) << "the registers stand";
    EXPECT_TRUE(program.part.PrgmPins("CE").Enabled()) << "the pins come later";
    EXPECT_THROW(program.frm.RestoreMode(0), ScriptFailed) << "a client gets the error";
}

TEST(RestoredModes, run_no_hook_without_the_master_switch) {
    Program program;
    program.Load(Device({{"M", kNote}}, kNoteAtLoad, false) + kMode);
    program.frm.RestoreMode(0);
    EXPECT_EQ(program.A(), 33);
}

TEST(RestoredSetups, run_on_load_hooks_behind_the_burst_list) {
    Program program;
    program.Load(Device({{"M", kNote}}, kNoteAtLoad));
    program.part.PrgmBits("A").SetBitValue(21);
    AppendBurstCommand(program.part, "R0", 0);
    program.part.PrgmBits("A").SetBitValue(33);
    const std::string file = (program.folder.path() / "state.mac").string();
    program.frm.SaveBurstCommands(file);
    program.frm.LoadBurstCommands(file);
    // The burst entry's word is what the registers are left with, and what the hook finds.
    EXPECT_EQ(program.frm.StatusBar1.StatusBar_GetString(), "0,True,0 21,True,2 ");
    EXPECT_EQ(program.A(), 9);
}

// --- hooks that load another device ---

constexpr const char* kChange = "Sub Note\nIf frmPart.CommMode_Select = wanted Then "
                                "frmPart.SetupPartForm \"QVX9002\"\nEnd Sub\n"
                                "Dim wanted : wanted = ";

std::string Changer(const std::string& when) {
    return Device({{"M", kChange + when}},
                  "script_name00=M\nscript_on_load00=Note\nscript_name01=M\nscript_on_load01=Note\n"
                  "script_name02=M\nscript_on_load02=Note\n") +
           kMode;
}

TEST(OnLoadHooks, that_load_another_device_end_the_load_of_theirs) {
    Program program;
    program.folder.WritePart("QVX9002", "[REGISTERS]\nCOUNT=1\nNAME00=X\n");
    program.Load(Changer("\"LPT\""));
    EXPECT_EQ(program.part.ID, "QVX9002");
    EXPECT_TRUE(program.part.PrgmBits.empty());
    EXPECT_EQ(program.frm.StatusBar1.StatusBar_GetString(), "Selected device: QVX9002");
    EXPECT_THAT(program.boxes.shown, ElementsAre());
}

TEST(OnLoadHooks, that_load_another_device_end_a_restore) {
    Program program;
    program.folder.WritePart("QVX9002", "[REGISTERS]\nCOUNT=1\nNAME00=X\nVALUE00=5\n");
    program.Load(Changer("\"USB\""));
    ASSERT_EQ(program.part.ID, "QVX9001");
    program.session.CommMode_Select = "USB";
    EXPECT_THROW(program.frm.RestoreMode(0), NotFound);
    EXPECT_EQ(program.part.ID, "QVX9002");
    EXPECT_EQ(program.part.Registers("X").Value(), 5);
}

// --- linked frequencies ---

// A conditioner whose on-load hook sets the N counter.
std::string Conditioner() {
    std::ifstream file(ZENTREL_SOURCE_DIR "/parts/QVX4100.ini", std::ios::binary);
    std::string text(std::istreambuf_iterator<char>(file), {});
    text.resize(text.find("[SCRIPTS]"));
    // Its own on-load hook gives way.
    for (const auto& [own, ours] :
         {std::pair{"=Divider\n", "=M\n"}, {"=ShowExtraDivider\n", "=SetN\n"}})
        text.replace(text.find(own), std::string(own).size(), ours);
    return text + "[SCRIPTS]\nEXECUTE_SCRIPTS=True\nCOUNT=1\n" +
           scripted::Module(0, "M", "Sub SetN\nPart.PrgmBits(\"PLL_N\").Value = 290\nEnd Sub");
}

TEST(RestoredLinks, take_their_frequencies_from_what_the_hooks_left) {
    Program program;
    program.folder.Write("QVX4100.ini", Conditioner());
    std::string name = "QVX4100";
    program.frm.SetupPartForm(name);
    const std::string file = (program.folder.path() / "state.mac").string();
    program.part.PrgmBits("PLL_N").SetValue(310);
    program.frm.SaveBurstCommands(file);
    program.frm.LoadBurstCommands(file);
    EXPECT_EQ(program.part.PrgmBits("PLL_N").Value(), 290);
    EXPECT_EQ(program.part.ClkDists(1).IntVCO_Freq(),
              290 * program.part.PrgmBits("VCO_DIV").Value());
}

} // namespace
} // namespace zentrel
