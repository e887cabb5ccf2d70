#include "clock/loop_filter.h"

#include "tests/clock/clock_rig.h"

namespace zentrel::clock_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(LoopFilter, the_reduced_text_keeps_numbers_and_drops_units) {
    const std::pair<const char*, const char*> rows[] = {
        {"0 pF, 10 pF", "0,10"},
        {"50,10", "50,10"},
        {"5pF2,10nF3 7", "5,107"},
        {"C3 5, C4 6", "5,6"},
        {"1 2 3,4", "123,4"},
        {"none", ""},
        {"", ""},
        {",", ","},
        {"1.5,2", "1,2"},
    };
    for (const auto& [text, reduced] : rows)
        EXPECT_EQ(ReducedC3C4(text), reduced) << text;
}

TEST(LoopFilter, an_entry_without_two_whole_numbers_is_no_pair) {
    for (const char* text : {"", "10", ",10", "10,", "pF,pF", "1,2,3", "40000,1"})
        EXPECT_FALSE(ReadC3C4(text)) << text;
    EXPECT_EQ(ReadC3C4("7 pF, 12 pF")->C4, 12);
}

struct Device : ClockRig {
    explicit Device(std::vector<std::string> items) : block(AddBlock("A", "", 0, "Distribution")) {
        part.PrgmBits("A_C3C4").SetStringArray(std::move(items));
        Settle();
    }
    int From(int index, void (*click)(cClkDist&, MouseButton), MouseButton button) {
        part.PrgmBits("A_C3C4").SetBitValue(index);
        click(block, button);
        return static_cast<int>(Bits("A_C3C4"));
    }
    cClkDist& block;
};

TEST(LoopFilter, clicks_go_round_among_the_entries_that_keep_the_other_capacitor) {
    // Index:            0        1        2        3        4       5        6
    Device device({"0,10", "50,10", "20,10", "0,60", "50,10", "bad", "20,99"});
    struct Row {
        void (*click)(cClkDist&, MouseButton);
        MouseButton button;
        int from, to;
    };
    for (const Row& row : {
             Row{ClickC3, MouseButton::Left, 0, 2},
             Row{ClickC3, MouseButton::Left, 2, 1}, // the first of two equal entries
             Row{ClickC3, MouseButton::Left, 1, 0}, // round from the highest
             Row{ClickC3, MouseButton::Left, 4, 0},
             Row{ClickC3, MouseButton::Right, 0, 1}, // round from the lowest
             Row{ClickC3, MouseButton::Right, 1, 2},
             Row{ClickC3, MouseButton::Left, 3, 3}, // alone with its C4
             Row{ClickC3, MouseButton::Right, 3, 3}, Row{ClickC4, MouseButton::Left, 0, 3},
             Row{ClickC4, MouseButton::Left, 3, 0}, Row{ClickC4, MouseButton::Right, 6, 2},
             Row{ClickC3, MouseButton::Other, 1, 0}, // looks for 0
             Row{ClickC4, MouseButton::Other, 3, 0}, // finds none: the first
             Row{ClickC3, MouseButton::Left, 5, 0},  // the present entry is no pair
         }) {
        EXPECT_EQ(device.From(row.from, row.click, row.button), row.to)
            << "from " << row.from << " by " << (row.click == ClickC3 ? "C3" : "C4");
    }
}

TEST(LoopFilter, a_click_refreshes_and_sends_whatever_the_menu_says) {
    Device device({"0,10", "50,10"});
    device.autoReload = false;
    ClickC3(device.block, MouseButton::Left);
    EXPECT_THAT(device.calls, ElementsAre("PLL", "CLK", "Register", "Bit", "LoopFilter"));
    EXPECT_FALSE(device.AnyChange());
    EXPECT_EQ(device.block.panel.clkdist_C3.Caption, "50 pF");

    device.calls.clear();
    ClickR3(device.block, MouseButton::Left);
    EXPECT_EQ(device.Bits("A_R3"), 1);
    EXPECT_THAT(device.calls, ElementsAre("PLL", "CLK", "Register"));
    EXPECT_FALSE(device.AnyChange());
    ClickR3(device.block, MouseButton::Right);
    ClickR4(device.block, MouseButton::Left);
    EXPECT_EQ(device.Bits("A_R3"), 0);
    EXPECT_EQ(device.block.panel.clkdist_R4.Caption, "10 k");
}

TEST(LoopFilter, a_block_without_the_component_ignores_the_click) {
    Device device({"0,10", "50,10"});
    device.block.LF_R3.clear();
    device.block.LF_C3C4.clear();
    const auto before = device.Words();
    ClickR3(device.block, MouseButton::Left);
    ClickC3(device.block, MouseButton::Left);
    ClickC4(device.block, MouseButton::Right);
    EXPECT_EQ(device.Words(), before);
    EXPECT_THAT(device.calls, IsEmpty());
}

TEST(LoopFilter, a_component_whose_field_is_gone_is_told_and_sends_nothing) {
    Device device({"0,10", "50,10"});
    device.block.LF_C3C4 = device.block.LF_R3 = "GONE";
    device.part.Registers(1).SetChange(true);
    ClickC3(device.block, MouseButton::Left);
    ClickR3(device.block, MouseButton::Right);
    EXPECT_THAT(device.messages,
                ElementsAre("Error... No program bit: GONE required for: clkdist_C3",
                            "Error... No program bit: GONE required for: clkdist_R3"));
    EXPECT_TRUE(device.part.Registers(1).changed());
}

TEST(LoopFilter, the_diagram_shows_the_values_with_their_unit) {
    struct Row {
        const char *item, *c3, *c4;
    };
    for (const Row& row : {Row{"0 pF, 10 pF", "0 pF", " 10 pF"}, Row{"5,10", "5 pF", "10 pF"},
                           Row{"off", "off", ""}}) {
        Device device({row.item, "1,1"});
        ShowLoopFilter(device.block);
        EXPECT_EQ(device.block.panel.clkdist_C3.Caption, row.c3);
        EXPECT_EQ(device.block.panel.clkdist_C4.Caption, row.c4);
    }
    Device device({"0,10", "50,10"});
    device.block.LF_R3 = "GONE";
    ShowLoopFilter(device.block);
    EXPECT_EQ(device.block.panel.clkdist_R3.Caption, "Failed to open register GONE");
    EXPECT_EQ(device.block.panel.clkdist_R4.Caption, "0.2 k");
}

TEST(LoopFilter, the_dialog_works_on_the_last_block_and_follows_the_current_tab) {
    ClockRig rig;
    const cClkDist& first = rig.AddBlock("A", "", 0, "Distribution");
    cClkDist& last = rig.AddBlock("B", "", 0, "Distribution");
    last.LF_R4.clear();
    rig.part.PrgmBits("A_R3").SetBitValue(2);
    rig.part.PrgmBits("B_R3").SetBitValue(1);
    rig.Settle();

    frmLoopFilter dialog(rig.part);
    dialog.Form_Load();
    EXPECT_TRUE(dialog.Visible);
    EXPECT_EQ(dialog.cbR3.ListIndex, 1);
    EXPECT_FALSE(dialog.cbR4.Enabled);
    EXPECT_THAT(dialog.cbR4.List, IsEmpty());
    EXPECT_EQ(dialog.cbC3C4.ListCount(), 4);
    EXPECT_THAT(rig.calls, IsEmpty()) << "selecting what stands is no choice";

    rig.tab = first.ClkDistTab;
    dialog.UpdateLoopFilterDisplay();
    EXPECT_EQ(dialog.cbR3.ListIndex, 2);
    rig.tab = 0;
    rig.part.PrgmBits("A_R3").SetBitValue(0);
    dialog.UpdateLoopFilterDisplay();
    EXPECT_EQ(dialog.cbR3.ListIndex, 2) << "no block on this tab";

    rig.Settle();
    rig.autoReload = false;
    dialog.cbR3.SetListIndex(0);
    EXPECT_EQ(rig.Bits("B_R3"), 0);
    EXPECT_THAT(rig.calls, ElementsAre("Bit", "Register", "PLL", "CLK"));
    EXPECT_TRUE(rig.AnyChange());
    rig.autoReload = true;
    dialog.cbC3C4.SetListIndex(3);
    EXPECT_EQ(rig.Bits("B_C3C4"), 3);
    EXPECT_FALSE(rig.AnyChange());
    dialog.cmdClose_Click();
    EXPECT_FALSE(dialog.Visible);
}

} // namespace
} // namespace zentrel::clock_test
