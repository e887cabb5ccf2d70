#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "synth/pll.h"
#include "tests/session/window.h"
#include "transport/bench/bench.h"
#include "transport/load_path.h"

namespace zentrel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using window::Folder;
using window::kSmallPart;
using window::Window;

class Load : public testing::Test {
  protected:
    void SetUp() override { window.Start(); }
    Folder folder;
    Window window{folder};
    FrmPart& frm = window.frm;
    cPart& part = window.part;
};

TEST_F(Load, a_small_file_becomes_a_device_on_all_screens) {
    folder.WritePart("QVX9001", kSmallPart);
    window.Load("QVX9001");
    EXPECT_THAT(window.boxes.shown, ElementsAre());
    EXPECT_EQ(part.ID, "QVX9001");
    EXPECT_EQ(frm.Caption, "QVX9001");
    EXPECT_EQ(frm.StatusBar1.StatusBar_GetString(), "Selected device: QVX9001");
    EXPECT_EQ(frm.StatusBar1.Panels[0].Text, "COMM Mode: LPT");
    EXPECT_TRUE(frm.tabPart.Visible);
    EXPECT_FALSE(part.Updating);

    EXPECT_EQ(part.Registers("R0").Value(), 256);
    EXPECT_EQ(frm.registers.txtRegBits[1].Text.substr(66), "0  1") << "two control bits";
    EXPECT_TRUE(part.PrgmPins("CE").Enabled());
    EXPECT_TRUE(frm.bits.chkPrgmBit[0].Value);
    EXPECT_TRUE(frm.bits.chkPrgmPin[0].Value);
    EXPECT_EQ(frm.bits.cmbBits[0].ListIndex, 0);
    EXPECT_EQ(frm.port.fraExternalPin[0].Caption, "CE");
    EXPECT_EQ(part.PrgmBits("ENABLE").Description,
              "Register R0[8]\n\rTurns it on\n\r\n\rOff saves power");
    EXPECT_EQ(frm.menu("mnuMode", 1).Caption, "Sleep");
    EXPECT_TRUE(frm.menu("mnuMode", 0).Visible);
    frm.frmAbout.Show();
    EXPECT_EQ(frm.frmAbout.lblPartVersion.Caption, "Part File Version: b7");
}

TEST_F(Load, the_name_comes_back_as_the_files_path) {
    std::string name = "QVX9001";
    frm.SetupPartForm(name);
    EXPECT_EQ(name, window.files.Folder().Text() + "QVX9001.ini");
    std::string impossible = "../etc/passwd";
    frm.SetupPartForm(impossible);
    EXPECT_EQ(part.ID, "../etc/passwd");
    EXPECT_EQ(part.Registers.Count(), 0);
}

TEST_F(Load, a_device_without_a_file_is_empty_and_usable) {
    window.Load("QVX0000");
    EXPECT_EQ(part.ID, "QVX0000");
    EXPECT_EQ(part.RegisterLength(), 24);
    EXPECT_EQ(window.session.CommMode_Select, "LPT");
    EXPECT_THAT(folder.Read("QVX0000.ini"), HasSubstr("ZENTREL_VERSION=2.3.0"));
    EXPECT_TRUE(frm.tabPart.Visible);
}

TEST_F(Load, another_device_takes_the_place_of_the_first) {
    folder.WritePart("QVX9001", kSmallPart);
    folder.WritePart("QVX9002", "[REGISTERS]\nCOUNT=1\nNAME00=ONLY\n");
    window.Load("QVX9001");
    window.Load("QVX9002");
    EXPECT_EQ(frm.registers.RowCount(), 1);
    EXPECT_EQ(frm.registers.lblRegName[0].Caption, "ONLY");
    EXPECT_EQ(part.PrgmBits.Count(), 0);
    EXPECT_EQ(frm.bits.Items().size(), 0U);
    EXPECT_EQ(frm.port.PinRows(), 0);
    EXPECT_FALSE(frm.menu("mnuMode", 0).Visible);
    EXPECT_EQ(frm.menu.ItemCount("mnuMode"), 1);
    EXPECT_EQ(frm.tabPart.TabCount(), 6);
}

TEST_F(Load, the_drawing_of_a_device_on_the_same_route_is_its_own) {
    folder.WritePart("QVX9001", kSmallPart);
    folder.WritePart("QVX9002", "CLOCK=1\nDATA=2\nLE=3\n[PINS]\nCOUNT=1\nNAME00=PD\n"
                                "LOCATION00=12\n");
    window.Load("QVX9001");
    window.Load("QVX9002");
    EXPECT_EQ(frm.port.Pinheader[12].BackColor, colors::kBlue);
    EXPECT_EQ(frm.port.Pinheader[10].BackColor, colors::kUnassigned);
    EXPECT_TRUE(frm.port.optPrgmBit[10].Value);
}

TEST_F(Load, a_plls_block_gets_its_tab) {
    folder.WritePart("QVX9003", "[REGISTERS]\nCOUNT=1\nNAME00=R\n"
                                "[BITS]\nCOUNT=2\nREG00=R\nNAME00=NC\nPOS00=4\nLEN00=10\n"
                                "REG01=R\nNAME01=RC\nPOS01=14\nLEN01=6\n"
                                "[PLLS]\nCOUNT=1\nNAME00=RF\nN00=NC\nR00=RC\nOSCIN00=20\n");
    window.Load("QVX9003");
    ASSERT_EQ(frm.tabPart.TabCount(), 7);
    EXPECT_EQ(frm.tabPart.TabCaption(6), "RF");
    EXPECT_EQ(part.PLLs("RF").XtalFrequency(), 20);
    window.Load("QVX0000");
    EXPECT_EQ(frm.tabPart.TabCount(), 6);
    EXPECT_EQ(part.PLLs.Count(), 0);
}

TEST_F(Load, duplicates_keep_the_first_and_dont_shift_the_files_numbers) {
    folder.WritePart("QVX9004", "[PINS]\nCOUNT=3\nNAME00=A\nNAME01=a\nNAME02=B\n"
                                "[REGISTERS]\nCOUNT=3\nNAME00=R\nVALUE00=1\nNAME01=r\nVALUE01=2\n"
                                "NAME02=S\nVALUE02=3\n"
                                "[BITS]\nCOUNT=2\nREG00=R\nNAME00=C\nTYPE00=Counter\n"
                                "REG01=S\nNAME01=C\nTYPE01=Counter\n");
    window.Load("QVX9004");
    EXPECT_EQ(part.PrgmPins.Count(), 2);
    EXPECT_EQ(part.PrgmPins("B").entry, 2);
    EXPECT_EQ(part.Registers("R").Value(), 1);
    EXPECT_EQ(part.Registers("S").entry, 2);
    EXPECT_EQ(part.PrgmBits("C").Register, "R");
    ASSERT_EQ(window.boxes.shown.size(), 1U) << "all are told together";
    EXPECT_THAT(window.boxes.shown[0], HasSubstr("NAME01"));
}

TEST_F(Load, a_field_of_the_same_name_is_told_and_its_keys_go_to_the_first) {
    folder.WritePart("QVX9005", "[REGISTERS]\nCOUNT=1\nNAME00=R\n"
                                "[BITS]\nCOUNT=2\nREG00=R\nNAME00=F\nPOS00=4\nTYPE00=Bit\n"
                                "REG01=R\nNAME01=F\nPOS01=9\nTYPE01=Bit\nUNITS01=mA\n");
    window.Load("QVX9005");
    EXPECT_THAT(window.boxes.shown,
                testing::Contains("Error adding register: F this possibly already exists?"));
    EXPECT_EQ(part.PrgmBits("F").Position, 4);
    EXPECT_EQ(part.PrgmBits("F").Units, "mA");
}

TEST_F(Load, only_bit_counter_and_list_make_controls) {
    folder.WritePart("QVX9006", "[REGISTERS]\nCOUNT=1\nNAME00=R\n[BITS]\nCOUNT=3\n"
                                "NAME00=A\nREG00=R\nTYPE00=bit\nDISPLAY00=True\n"
                                "NAME01=B\nREG01=R\nTYPE01=Bits\nDISPLAY01=True\n"
                                "NAME02=C\nREG02=R\nTYPE02=List\nDISPLAY02=False\nCOUNT02=2\n");
    window.Load("QVX9006");
    EXPECT_EQ(part.PrgmBits.Count(), 3);
    EXPECT_EQ(frm.bits.Items().size(), 0U);
    EXPECT_EQ(part.PrgmBits("C").ArrayCount(), 2);
}

TEST_F(Load, a_second_read_back_pin_overrides_the_first) {
    folder.WritePart("QVX9007", "[PINS]\nCOUNT=2\nNAME00=A\nLOCATION00=1503\nREADBACK00=True\n"
                                "NAME01=B\nLOCATION01=1205\nREADBACK01=True\n");
    window.Load("QVX9007");
    EXPECT_EQ(part.InputPinPositionINI, 1205);
    EXPECT_EQ(part.InputPinPosition(), 1200);
    EXPECT_EQ(part.PrgmPins.Count(), 2);
    EXPECT_TRUE(frm.port.Label11.Visible);
}

TEST_F(Load, every_shipped_device_loads_without_a_message) {
    const std::filesystem::path parts = std::filesystem::path(ZENTREL_SOURCE_DIR) / "parts";
    int devices = 0;
    for (const auto& file : std::filesystem::directory_iterator(parts)) {
        const std::string name = file.path().stem().string();
        if (file.path().extension() != ".ini" || name == "zentrel") continue;
        std::filesystem::copy(file.path(), folder.path() / file.path().filename());
        window.boxes.shown.clear();
        EXPECT_TRUE(frm.guard.Run([&] { window.Load(name); }));
        EXPECT_THAT(window.boxes.shown, ElementsAre()) << name;
        EXPECT_EQ(frm.tabPart.TabCount(), 6 + part.PLLs.Count() + part.ClkDists.Count()) << name;
        EXPECT_GT(part.Registers.Count(), 0) << name;
        ++devices;
    }
    EXPECT_GE(devices, 7);
}

// Scripts.

class Host : public ScriptHost {
  public:
    std::vector<std::string> calls;
    std::string broken;
    void Reset() override { calls.emplace_back("Reset"); }
    void AddObject(std::string_view name) override {
        calls.push_back("object " + std::string(name));
    }
    void AddModule(std::string_view name) override {
        calls.push_back("module " + std::string(name));
    }
    void AddCode(std::string_view module, std::string_view text) override {
        if (module == broken) throw CompileFailure(1002, "Syntax error", 7);
        code = text;
    }
    std::string code;
};

class Hooks : public ScriptHooks {
  public:
    std::vector<std::string> ran;
    bool fail = false;
    void ExecuteScript(std::string_view module, std::string_view procedure) override {
        ran.push_back(std::string(module) + "." + std::string(procedure));
        if (fail) throw ScriptFailure(13, "Type mismatch");
    }
};

constexpr const char* kScripted =
    "[REGISTERS]\nCOUNT=1\nNAME00=R\n[BITS]\nCOUNT=2\n"
    "NAME00=A\nREG00=R\nscript_name00=M\nscript_on_load00=First\n"
    "NAME01=B\nREG01=R\nscript_name01=M\nscript_on_load01=Second\n"
    "[SCRIPTS]\nEXECUTE_SCRIPTS=True\nCOUNT=1\nSCRIPTNAME000=M\nSCRIPTLINES000=1\n"
    "M00000=Sub First\nM00001=End Sub\n";

class LoadWithScripts : public Load {
  protected:
    void SetUp() override {
        Load::SetUp();
        frm.links.scripts = &host;
        Upward upward = part.upward();
        upward.hooks = &hooks;
        part.Connect(upward);
        folder.WritePart("QVX9008", kScripted);
    }
    Host host;
    Hooks hooks;
};

TEST_F(LoadWithScripts, modules_compile_and_on_load_hooks_run_in_order) {
    window.Load("QVX9008");
    EXPECT_THAT(host.calls, ElementsAre("Reset", "object Part", "object frmPart", "module M"));
    EXPECT_EQ(host.code, "Sub First\r\nEnd Sub\r\n");
    EXPECT_TRUE(window.session.bExecuteScripts);
    EXPECT_THAT(hooks.ran, ElementsAre("M.First", "M.Second"));
}

TEST_F(LoadWithScripts, a_failing_on_load_hook_keeps_no_other_from_running) {
    hooks.fail = true;
    window.Load("QVX9008");
    EXPECT_EQ(hooks.ran.size(), 2U);
    EXPECT_EQ(frm.StatusBar1.StatusBar_GetString(), "Selected device: QVX9008");
}

TEST_F(LoadWithScripts, code_that_doesnt_compile_ends_the_load_with_two_messages) {
    host.broken = "M";
    window.Load("QVX9008");
    ASSERT_EQ(window.boxes.shown.size(), 2U);
    EXPECT_EQ(window.boxes.shown[0], "Error loading script M on line 3:\r\nSub First\r\n\r\n"
                                     "1002:Syntax error in line 7");
    EXPECT_EQ(window.boxes.shown[1], "Sub First\r\nEnd Sub\r\n");
    EXPECT_TRUE(part.Updating);
    EXPECT_FALSE(frm.tabPart.Visible);
    EXPECT_TRUE(hooks.ran.empty());
    EXPECT_EQ(part.PrgmBits.Count(), 2);

    window.Load("QVX0000");
    EXPECT_FALSE(part.Updating);
    EXPECT_TRUE(frm.tabPart.Visible);
}

TEST_F(Load, without_an_engine_the_modules_are_passed_over) {
    folder.WritePart("QVX9008", kScripted);
    window.Load("QVX9008");
    EXPECT_EQ(frm.StatusBar1.StatusBar_GetString(), "Selected device: QVX9008");
}

TEST_F(Load, a_route_that_doesnt_exist_is_shown_as_it_is_and_chooses_none) {
    folder.WritePart("QVX9001", kSmallPart);
    folder.WritePart("QVX9002", "COMM_MODE=lpt\n");
    window.Load("QVX9001");
    window.Load("QVX9002");
    EXPECT_EQ(frm.StatusBar1.Panels[0].Text, "COMM Mode: lpt");
    EXPECT_FALSE(frm.port.CommMode[0].Value);
    EXPECT_FALSE(frm.port.CommMode[1].Value);
}

TEST_F(Load, the_bridge_learns_the_word_format_of_each_device) {
    SimulatedBench bench(part);
    const Transport transport(part, bench.drivers());
    const std::string usb = "COMM_MODE=USB\nCLOCK=1\nDATA=2\nLE=3\n";
    const std::string word = "[REGISTERS]\nCOUNT=1\nNAME00=R\nVALUE00=";
    folder.WritePart("QVX9001", usb + "REGISTER_LENGTH=24\n" + word + "1193046\n");
    folder.WritePart("QVX9002", usb + "REGISTER_LENGTH=32\n" + word + "305419896\n");
    for (const char* device : {"QVX9001", "QVX9002", "QVX9001"}) {
        window.Load(device);
        LoadRegisterNumber(part, 1);
        EXPECT_THAT(window.boxes.shown, ElementsAre()) << device;
        ASSERT_FALSE(bench.board.history().empty());
        EXPECT_EQ(bench.board.history().back().word, part.Registers(1).word()) << device;
        EXPECT_EQ(bench.board.history().back().clocks, part.RegisterLength());
    }
}

} // namespace
} // namespace zentrel
