#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/session/window.h"
#include "transport/bench/bench.h"

namespace zentrel {
namespace {

using testing::ElementsAre;
using window::Folder;
using window::kSmallPart;

/// The window with a simulated board at the end of its wires.
class Bench : public testing::Test {
  protected:
    void SetUp() override {
        folder.Write("zentrel.ini", "[MENU]\nCOUNT=1\nITEM00=QVX9001\n");
        folder.WritePart("QVX9001", kSmallPart);
        frm.Main();
        frm.menu.Click("mnuQVXxxxx", 0);
        boxes.shown.clear();
        Latched();
    }
    /// Each word that the board has latched since the last call, with its register.
    std::vector<std::pair<std::string, double>> Latched() {
        std::vector<std::pair<std::string, double>> words;
        for (const LatchedWord& latched : bench.board.Since(seen_))
            words.emplace_back(latched.registerName, latched.word.ToDouble());
        seen_ = bench.board.newest();
        return words;
    }
    using Words = std::pair<std::string, double>;

    Folder folder;
    Session session;
    cPart part{session};
    SimulatedBench bench{part};
    Transport transport{part, bench.drivers()};
    IniFiles files{AppPath(folder.path().string())};
    window::Boxes boxes;
    FrmPart frm{part, files, boxes};

  private:
    std::uint64_t seen_ = 0;
};

TEST_F(Bench, loading_a_device_sends_nothing) {
    EXPECT_EQ(bench.board.newest(), 0U);
}

TEST_F(Bench, a_bit_edited_on_the_registers_tab_arrives_when_load_is_pressed) {
    for (const int route : {1, 0}) {
        frm.guard.Run([&] { frm.port.SelectCommMode(route); });
        Latched();
        const double before = part.Registers("R0").Value();
        frm.guard.Run([&] { frm.registers.ClickBits(0, 0); });
        frm.guard.Run([&] { frm.registers.KeyPress(0, route == 1 ? '1' : '0'); });
        EXPECT_THAT(Latched(), ElementsAre()) << "nothing goes out before Load";
        frm.guard.Run([&] { frm.registers.ClickLoad(0); });
        const double after = part.Registers("R0").Value();
        EXPECT_NE(after, before);
        EXPECT_THAT(Latched(), ElementsAre(Words("R0", after))) << "route " << route;
    }
    EXPECT_THAT(boxes.shown, ElementsAre());
}

TEST_F(Bench, a_field_edit_sends_what_changed_and_load_device_sends_all) {
    frm.guard.Run([&] { frm.menu.Click("mnuLoadPLL"); });
    EXPECT_EQ(Latched().size(), 2U);
    part.Registers("R0").SetChange(false);
    part.Registers("R1").SetChange(false);
    frm.guard.Run([&] { frm.bits.cmbBits[0].SetListIndex(2); });
    EXPECT_THAT(Latched(), ElementsAre(Words("R1", 9)));
    frm.guard.Run([&] { frm.menu.Click("mnuAutoReloadChange"); });
    frm.guard.Run([&] { frm.bits.SpinUp(0); });
    EXPECT_THAT(Latched(), ElementsAre());
}

TEST_F(Bench, a_pin_box_drives_the_pin_on_both_routes) {
    for (const int route : {1, 0}) {
        frm.guard.Run([&] { frm.port.SelectCommMode(route); });
        const bool on = frm.bits.chkPrgmPin[0].Value;
        frm.guard.Run([&] { frm.bits.chkPrgmPin[0].SetValue(!on); });
        EXPECT_EQ(bench.board.PinHigh(10), !on);
    }
}

TEST_F(Bench, moving_the_clock_line_moves_it_on_the_board_too) {
    for (const int route : {1, 0}) {
        frm.guard.Run([&] { frm.port.SelectCommMode(route); });
        frm.guard.Run([&] { frm.port.SelectClockBit(route == 1 ? 5 : 6); });
        Latched();
        frm.guard.Run([&] { frm.registers.ClickLoad(1); });
        EXPECT_THAT(Latched(), ElementsAre(Words("R1", part.Registers("R1").Value())));
    }
}

TEST_F(Bench, the_reload_on_interval_sends_all_at_each_tick) {
    frm.guard.Run([&] { frm.menu.Click("mnuAutoReload"); });
    frm.timers.tmrAutoReload.Fire(frm.guard);
    frm.timers.tmrAutoReload.Fire(frm.guard);
    EXPECT_EQ(Latched().size(), 4U);
}

TEST_F(Bench, a_bridge_pulled_in_the_middle_loses_the_word_and_nothing_else) {
    frm.guard.Run([&] { frm.port.SelectCommMode(0); });
    bench.PullBridge();
    frm.guard.Run([&] { frm.registers.ClickLoad(0); });
    EXPECT_FALSE(part.Updating);
    bench.PlugBridge();
    Latched();
    frm.guard.Run([&] { frm.registers.ClickLoad(0); });
    EXPECT_EQ(Latched().size(), 1U);
}

} // namespace
} // namespace zentrel
