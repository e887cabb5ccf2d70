#include "automation/application/application.h"

#include <gmock/gmock.h>

#include <functional>
#include <limits>

#include "clock/clk_dist.h"
#include "device/bit_string.h"
#include "device/number_text.h"
#include "synth/pll.h"
#include "tests/automation/client_desk.h"

namespace zentrel {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

struct ClientTest : ::testing::Test {
    ClientDesk desk;
    Application& client = desk.application;
    cPart& part = desk.part;
    FrmPart& frm = *desk.frm;

    void Select(const std::string& device) {
        client.SelectPart(device);
        desk.Sent();
    }
};

TEST_F(ClientTest, tells_the_version_and_answers_the_bit_check_with_its_box) {
    EXPECT_EQ(client.GetVersionID(), "Zentrel 4.2");
    EXPECT_FALSE(client.CheckBit());
    EXPECT_THAT(desk.messages.shown, ElementsAre("hi"));
}

// Each setter of a frequency, what reads it back, and the words that reach the board.
struct FrequencyCase {
    const char* name;
    void (Application::*set)(std::string_view, double);
    double (*get)(const Application&, std::string_view);
    double mhz;
};

double PDFrequencyRead(const Application& client, std::string_view pll) {
    return *ParseNumber(client.GetPDFrequency(pll));
}
template<double (Application::*Get)(std::string_view) const>
double Read(const Application& client, std::string_view pll) {
    return std::invoke(Get, client, pll);
}

const FrequencyCase kFrequencies[] = {
    {"PDFrequency", &Application::SetPDFrequency, PDFrequencyRead, 5000},
    {"VCOFrequency", &Application::SetVCOFrequency, Read<&Application::GetVCOFrequency>, 2450.5},
    {"OUT0", &Application::SetOUT0Frequency, Read<&Application::GetOUT0Frequency>, 2400},
    {"OUT1", &Application::SetOUT1Frequency, Read<&Application::GetOUT1Frequency>, 2400},
    {"OSCin", &Application::SetOSCinFrequency, Read<&Application::GetOSCinFrequency>, 20},
};

TEST_F(ClientTest, sets_a_frequency_reads_it_back_and_loads_what_changed) {
    for (const FrequencyCase& one : kFrequencies) {
        SCOPED_TRACE(one.name);
        Select("QVX2874");
        std::invoke(one.set, client, "PLL1", one.mhz);
        EXPECT_NEAR(one.get(client, "PLL1"), one.mhz, 1e-3);
        EXPECT_NEAR(part.PLLs("PLL1").VCOFrequency(),
                    *ParseNumber(part.PLLs("PLL1").panel.txtVCO.Text), 0.01)
            << "the screen follows";
        EXPECT_THAT(desk.Sent(), testing::Not(IsEmpty())) << "new words, or the first load";

        frm.menu("mnuAutoReloadChange").Checked = false;
        std::invoke(one.set, client, "PLL1", one.mhz * 1.01);
        EXPECT_THAT(desk.Sent(), IsEmpty());
        frm.menu("mnuAutoReloadChange").Checked = true;
        part.ID.clear();
    }
}

TEST_F(ClientTest, an_n_is_typed_into_its_box_for_a_pll_or_the_block_that_it_drives) {
    Select("QVX4100");
    client.SetNValue("PLL", 1210);
    EXPECT_DOUBLE_EQ(part.PLLs(1).VCOFrequency(), client.GetVCOFrequency("PLL"));
    const double direct = part.PLLs(1).NValue();
    client.SetNValue("PLL", 1180);
    EXPECT_NE(part.PLLs(1).NValue(), direct);
    client.SetNValue("Clocks", 1210);
    EXPECT_EQ(part.PLLs(1).NValue(), direct) << "the block's tab acts on its PLL";
    EXPECT_EQ(part.PLLs(1).panel.txtNCounter.Text, NumberToText(direct));
}

TEST_F(ClientTest, the_external_source_never_loads_the_device) {
    Select("QVX4100");
    client.SetExternalSourceFrequency("Clocks", 1900);
    EXPECT_EQ(client.GetExternalSourceFrequency("Clocks"), 1900);
    EXPECT_THAT(desk.Sent(), IsEmpty());
    EXPECT_EQ(client.GetLinkedPLL("Clocks"), "PLL");
}

TEST_F(ClientTest, fields_are_set_by_bits_by_value_and_by_text) {
    Select("QVX2874");
    struct {
        double given;
        std::int32_t taken;
    } const rounded[] = {{100.5, 101}, {100.4, 100}, {101.5, 102}, {99.49999, 99}};
    for (const auto& [given, taken] : rounded) {
        client.SetPrgmBitValue("N_INT", given);
        EXPECT_EQ(client.GetPrgmBitValue("n_int"), taken) << given << ", keys in any case";
    }
    client.SetPrgmBits("N_INT", 120);
    EXPECT_EQ(client.GetPrgmBits("N_INT"), 120);
    EXPECT_THAT(desk.Sent(), testing::Contains("R0"));
    client.SetPrgmBitsText("DITHER", "medium");
    EXPECT_EQ(client.GetPrgmBitsText("DITHER"), "Medium");
    EXPECT_EQ(client.GetPrgmBits("DITHER"), 2);
    EXPECT_EQ(client.GetPrgmBitsText("N_INT"), "NOSTRING");
    for (const double wild : {3e9, -3e9, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_THROW(client.SetPrgmBitValue("N_INT", wild), Overflow) << wild;
    }
    EXPECT_EQ(client.GetPrgmBits("N_INT"), 120);
}

TEST_F(ClientTest, pins_are_driven_at_once_unless_only_stored) {
    Select("QVX2874");
    const auto level = [&] { return desk.bench.board.PinHigh(5); };
    client.SetPrgmPins("CE", true);
    EXPECT_TRUE(level());
    client.SetPrgmPins("CE", false, false);
    EXPECT_FALSE(client.GetPrgmPins("CE"));
    EXPECT_TRUE(level());
    client.SetPrgmPins("CE", false, true);
    EXPECT_FALSE(level());
}

TEST_F(ClientTest, a_key_that_is_not_there_is_an_error_with_its_name_and_changes_nothing) {
    Select("QVX2874");
    const auto words = desk.Words();
    const std::pair<const char*, std::function<void()>> calls[] = {
        {"PLLs", [&] { client.SetPDFrequency("NONE", 1); }},
        {"PLLs", [&] { client.GetPDFrequency("NONE"); }},
        {"PLLs", [&] { client.GetVCOFrequency("NONE"); }},
        {"PLLs", [&] { client.SetOUT0Frequency("NONE", 1); }},
        {"PLLs", [&] { client.GetOUT1Frequency("NONE"); }},
        {"PLLs", [&] { client.GetOSCinFrequency("NONE"); }},
        {"PrgmBits", [&] { client.SetPrgmBits("NONE", 1); }},
        {"PrgmBits", [&] { client.GetPrgmBitValue("NONE"); }},
        {"PrgmBits", [&] { client.SetPrgmBitsText("NONE", "1"); }},
        {"PrgmPins", [&] { client.SetPrgmPins("NONE", true); }},
        {"Registers", [&] { client.AddBurst("NONE", 0); }},
    };
    for (const bool loaded : {true, false}) {
        for (const auto& [collection, call] : calls) {
            try {
                call();
                ADD_FAILURE() << collection << " took it";
            } catch (const NotFound& failure) {
                EXPECT_EQ(failure.collection(), collection);
                EXPECT_EQ(failure.key(), "NONE");
            }
        }
        if (loaded) {
            EXPECT_EQ(desk.Words(), words);
        }
        frm.CleanUp();
    }
    EXPECT_THAT(desk.messages.shown, IsEmpty());
    EXPECT_THAT(desk.Sent(), IsEmpty());
}

TEST_F(ClientTest, the_operations_that_walk_answer_an_unknown_name_in_their_own_way) {
    for (const char* device : {"QVX4100", ""}) {
        if (*device != 0) Select(device);
        const auto words = desk.Words();
        client.SetVCOFrequency("pll", 1160); // compared exactly
        client.SetNValue("NONE", 4);
        client.SetOSCinFrequency("NONE", 4);
        client.SetExternalSourceFrequency("clocks", 4);
        EXPECT_EQ(client.GetExternalSourceFrequency("NONE"), -1);
        EXPECT_EQ(client.GetLinkedPLL("NONE"), "-1");
        EXPECT_FALSE(client.CheckPLLName("pll"));
        EXPECT_EQ(client.CheckPLLName("PLL"), *device != 0);
        EXPECT_FALSE(client.CheckModeText("NONE"));
        client.SetModeText("NONE");
        client.SetCommMode("Parallel");
        EXPECT_EQ(desk.Words(), words);
        frm.CleanUp();
    }
    EXPECT_THAT(desk.messages.shown, IsEmpty());
}

TEST_F(ClientTest, loads_and_reads_back) {
    Select("QVX4100");
    client.LoadPart();
    EXPECT_THAT(desk.Sent(), SizeIs(static_cast<std::size_t>(part.Registers.Count())));
    client.LoadReg(0);
    EXPECT_THAT(desk.Sent(), ElementsAre("R0"));
    client.LoadReg(-1);
    client.LoadReg(500);
    EXPECT_THROW(client.LoadReg(32767), Overflow);
    EXPECT_THAT(desk.Sent(), IsEmpty());

    const double raw = client.ReadRegisterRaw("R0");
    const auto word = static_cast<std::uint32_t>(part.Registers("R0").Value());
    EXPECT_EQ(raw, word >> part.ControlLength);
    const int bits = part.RegisterLength() - part.ControlLength;
    EXPECT_EQ(client.ReadQVX4100Register("R0"),
              ReverseDataBits(static_cast<std::int32_t>(raw), bits));
    EXPECT_EQ(client.ReadPrgmBits("CLK0_DIV"), client.GetPrgmBits("CLK0_DIV"));
    EXPECT_EQ(client.ReadPrgmBits("NONE"), -1);
}

TEST_F(ClientTest, a_bare_setup_name_lies_in_the_programs_folder_and_comes_back_as_its_path) {
    Select("QVX2874");
    client.SetPrgmBits("N_INT", 200);
    std::string name = "bench.mac";
    client.SaveSetup(name);
    EXPECT_THAT(name, EndsWith("\\bench.mac"));
    EXPECT_TRUE(std::filesystem::exists(desk.folder / "bench.mac"));
    client.SetPrgmBits("N_INT", 100);
    desk.Sent();
    name = "bench.mac";
    client.RestoreSetup(name);
    EXPECT_THAT(name, EndsWith("\\bench.mac"));
    EXPECT_EQ(client.GetPrgmBits("N_INT"), 200);
    EXPECT_THAT(desk.Sent(), IsEmpty());

    std::string elsewhere = desk.folder / "nowhere/bench.mac";
    const std::string before = elsewhere;
    EXPECT_THROW(client.SaveSetup(elsewhere), Error);
    EXPECT_EQ(elsewhere, before);
}

TEST_F(ClientTest, a_burst_is_built_run_and_taken_away) {
    Select("QVX2874");
    client.AddBurst("R0", 0);
    client.AddBurst("5", 2);
    EXPECT_THROW(client.AddBurst("R0", 7), OutOfRange);
    EXPECT_EQ(part.BurstCmds.Count(), 2);
    client.RunBurstOnce();
    EXPECT_THAT(desk.Sent(), ElementsAre("R0"));

    for (const auto start : {&Application::StartBurst, &Application::RunBurstMode}) {
        desk.between.passes = 0;
        desk.between.guard = &frm.guard;
        desk.between.act = [&](int pass) {
            EXPECT_EQ(frm.burst.panel.cmdRun.Caption, "Stop");
            client.AddBurst("R1", 0);
            client.DeleteBurst();
            client.RunBurstOnce();
            client.StartBurst();
            client.EnableBurst();
            if (pass == 3) client.StopBurst();
        };
        std::invoke(start, client);
        EXPECT_THAT(desk.Sent(), SizeIs(3));
        EXPECT_EQ(part.BurstCmds.Count(), 2);
        EXPECT_EQ(frm.burst.panel.cmdRun.Caption, "Run");
        EXPECT_FALSE(frm.timers.tmrStartBurst.Enabled);
    }
    client.EnableBurst();
    EXPECT_TRUE(frm.timers.tmrStartBurst.Enabled);
    EXPECT_THAT(desk.Sent(), IsEmpty()) << "the call came back before the run";
    client.DeleteBurst();
    EXPECT_TRUE(part.BurstCmds.empty());
}

TEST_F(ClientTest, changes_the_device_by_name_and_leaves_the_loaded_one_alone) {
    Select("QVX2874");
    client.SetPrgmBits("N_INT", 300);
    const std::string file = desk.PartFileText();
    client.SelectPart("QVX2874");
    EXPECT_EQ(client.GetPrgmBits("N_INT"), 300);
    EXPECT_EQ(desk.PartFileText(), file) << "nothing was left, so nothing is saved";
    client.SelectPart("../QVX2691");
    EXPECT_EQ(part.ID, "../QVX2691");
    EXPECT_TRUE(part.Registers.empty()) << "no name leads out of the folder";
    EXPECT_FALSE(std::filesystem::exists(desk.folder / "../QVX2691.ini"));
}

TEST_F(ClientTest, a_tab_is_selected_by_its_exact_caption) {
    Select("QVX4100");
    std::vector<int> visited;
    frm.tabPart.Selected = [&](int, int now) { visited.push_back(now); };
    const std::pair<const char*, int> cases[] = {{"Bits/Pins", 2}, {"Registers", 1}, {"PLL", 6},
                                                 {"Clocks", 7},    {"clocks", 0},    {"", 0}};
    for (const auto& [caption, tab] : cases) {
        visited.clear();
        client.SelectTab(caption);
        EXPECT_EQ(frm.tabPart.SelectedTab(), tab) << caption;
        EXPECT_THAT(visited, testing::IsSupersetOf({1, 2, 3, 4, 5, 6, 7}));
    }
    frm.tabPart.Page(kBurstTab).Caption = "PLL";
    client.SelectTab("PLL");
    EXPECT_EQ(frm.tabPart.SelectedTab(), 6) << "the last match counts";
    frm.tabPart.Page(kRegistersTab).Caption = "Bits/Pins";
    frm.tabPart.Page(kBitsTab).Caption = "Fields";
    client.SelectTab("Bits/Pins");
    EXPECT_EQ(frm.tabPart.SelectedTab(), 2) << "whatever the captions are";
}

TEST_F(ClientTest, modes_go_by_number_and_by_name_in_any_case) {
    Select("QVX2874");
    const auto store = [&](const char* name, double n) {
        client.SetPrgmBits("N_INT", n);
        desk.messages.answer = name;
        frm.menu.Click("mnuAddMode");
    };
    store("Receive", 100);
    store("Transmit", 200);
    client.SetMode(0);
    EXPECT_EQ(client.GetPrgmBits("N_INT"), 100);
    EXPECT_TRUE(client.CheckModeText("TRANSMIT"));
    client.SetModeText("transmit");
    EXPECT_EQ(client.GetPrgmBits("N_INT"), 200);
    EXPECT_THROW(client.SetMode(9), NotFound);

    Select("QVX2691");
    EXPECT_FALSE(client.CheckModeText("Receive")) << "a mode of the device before";
    client.SetModeText("Receive");
    EXPECT_TRUE(client.CheckModeText("MODE")) << "the entry that waits for the first mode";
}

TEST_F(ClientTest, the_check_marks_the_route_and_the_window_follow) {
    Select("QVX2874");
    EXPECT_TRUE(client.GetAutoReload());
    client.SetAutoReload(false);
    EXPECT_FALSE(frm.menu("mnuAutoReloadChange").Checked);
    EXPECT_TRUE(client.GetSaveSettings());
    client.SetSaveSettings(false);
    EXPECT_FALSE(client.GetSaveSettings());

    client.SetCommMode("usb");
    EXPECT_EQ(desk.session.CommMode_Select, "USB");
    EXPECT_TRUE(frm.port.CommMode[0].Value);
    client.SetCommMode("Lpt");
    EXPECT_EQ(desk.session.CommMode_Select, "LPT");

    frm.Visible = false;
    client.ShowZentrel();
    client.Maximize();
    client.Minimize();
    EXPECT_TRUE(frm.Visible);
    EXPECT_THAT(desk.frame.did, ElementsAre("front", "maximised", "minimised"));
}

TEST_F(ClientTest, the_bridges_delay_is_cut_to_a_byte_in_the_callers_variable_too) {
    Select("QVX2874");
    client.SetCommMode("USB");
    for (const auto& [given, taken] :
         {std::pair<std::int16_t, std::int16_t>{300, 255}, {-5, 0}, {17, 17}}) {
        std::int16_t timing = given;
        client.usbSetSPIDelay(timing);
        EXPECT_EQ(timing, taken);
    }
}

} // namespace
} // namespace zentrel
