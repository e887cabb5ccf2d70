#include "screens/burst_screen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "burst/burst.h"
#include "screens/file_dialogs.h"
#include "tests/screens/desk.h"

namespace zentrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The list of a device with two registers and a pin.
class BurstScreenTest : public testing::Test, private Displays {
  protected:
    BurstScreenTest() {
        Upward upward = desk.part.upward();
        upward.displays = this;
        desk.part.Connect(upward);
        desk.AddRegister("R0", 0x10);
        desk.AddRegister("R1", 0x21, 0);
        desk.AddPin("CE", 5);
        screen.AddRegister("R0");
        screen.AddRegister("R1");
    }

    void AddDelays(std::initializer_list<const char*> counts) {
        for (const char* count : counts) {
            list.SelLength = 0;
            panel.txtDelay.Text = count;
            screen.ClickDelay();
        }
    }
    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        for (const cBurst& command : desk.part.BurstCmds)
            lines.push_back(command.Description);
        return lines;
    }
    void ClickAt(std::size_t caret) {
        list.SelStart = static_cast<int>(caret);
        list.SelLength = 0;
        screen.ClickList();
    }
    void ClickOn(const std::string& line) { ClickAt(list.Text.find(line) + 1); }
    std::string Selected() const {
        return list.Text.substr(static_cast<std::size_t>(list.SelStart),
                                static_cast<std::size_t>(list.SelLength));
    }

    desk::Desk desk;
    IniFiles files{AppPath("/nowhere")};
    Timer tmrStartBurst;
    BurstScreen screen{desk.part, files, FileDialogs::None(), tmrStartBurst};
    BurstPanel& panel = screen.panel;
    TextBox& list = panel.txtBurstCmds;
    int refreshes = 0;

  private:
    void UpdateBurstDisplay() override { screen.UpdateBurstDisplay(); }
    void UpdateRegisterDisplay() override { ++refreshes; }
};

TEST_F(BurstScreenTest, a_click_selects_the_line_under_the_caret) {
    AddDelays({"10", "20", "3"});
    const std::size_t second = list.Text.find("Delay of 20");
    for (const std::size_t caret :
         {second, second + 4, second + std::string("Delay of 20").size()}) {
        ClickAt(caret);
        EXPECT_EQ(panel.SelectedBurstLine, 2);
        EXPECT_EQ(Selected(), "Delay of 20") << "caret " << caret;
    }
    ClickAt(0);
    EXPECT_EQ(panel.SelectedBurstLine, 1);
    EXPECT_EQ(Selected(), "Delay of 10");
    ClickAt(list.Text.size());
    EXPECT_EQ(panel.SelectedBurstLine, 4) << "behind the last line";
    EXPECT_EQ(Selected(), "") << "nothing is there to be selected";
}

TEST_F(BurstScreenTest, a_click_in_an_empty_list_selects_nothing) {
    panel.SelectedBurstLine = 3;
    ClickAt(0);
    EXPECT_EQ(panel.SelectedBurstLine, 3);
    EXPECT_EQ(list.SelLength, 0);
}

TEST_F(BurstScreenTest, an_addition_goes_ahead_of_the_selected_line_or_in_its_place) {
    AddDelays({"10", "20"});
    ClickOn("Delay of 20");
    panel.txtDelay.Text = "15";
    screen.ClickDelay();
    EXPECT_THAT(Lines(), ElementsAre("Delay of 10", "Delay of 15", "Delay of 20"));

    screen.ClickInsert();
    EXPECT_EQ(panel.cmdInsert.Caption, "Overwrite");
    ClickOn("Delay of 15");
    screen.ChooseRegister(1);
    EXPECT_THAT(Lines(), ElementsAre("Delay of 10", "Load R1 = 000000000000000000100001; CE= False",
                                     "Delay of 20"));
    EXPECT_EQ(panel.cmbLdBurst.ListIndex, -1) << "the same register can be chosen again";
    screen.ClickInsert();
    EXPECT_EQ(panel.cmdInsert.Caption, "Insert");
}

TEST_F(BurstScreenTest, fewer_than_four_selected_characters_are_no_selection) {
    AddDelays({"10", "20"});
    ClickOn("Delay of 10");
    list.SelLength = 3;
    panel.txtDelay.Text = "30";
    screen.ClickDelay();
    EXPECT_EQ(Lines().back(), "Delay of 30");
    ClickOn("Delay of 10");
    list.SelLength = 4;
    screen.ClickSetPins();
    EXPECT_EQ(Lines().front(), "Change Pin State; CE= False");
}

TEST_F(BurstScreenTest, a_dragged_selection_says_which_line_is_meant) {
    AddDelays({"10", "20", "30"});
    ClickOn("Delay of 10");
    list.SelStart = static_cast<int>(list.Text.find("of 30"));
    list.SelLength = 5;
    screen.FollowSelection();
    screen.ClickInsert();
    screen.ClickSetPins();
    EXPECT_THAT(Lines(), ElementsAre("Delay of 10", "Delay of 20", "Change Pin State; CE= False"));
    screen.FollowSelection();
    EXPECT_EQ(panel.SelectedBurstLine, 3) << "without a selection it stays";
}

TEST_F(BurstScreenTest, a_selection_goes_with_the_text_that_it_was_made_in) {
    AddDelays({"10", "20", "30"});
    screen.ClickInsert();
    ClickOn("Delay of 30");
    screen.ClickDeleteAll();
    panel.txtDelay.Text = "40";
    screen.ClickDelay();
    EXPECT_THAT(Lines(), ElementsAre("Delay of 40")) << "there is no third line to overwrite";
    screen.ClickSetPins();
    EXPECT_EQ(Lines().size(), 2U);
    ClickOn("Delay of 40");
    screen.UpdateBurstDisplay();
    EXPECT_EQ(Selected(), "Delay of 40") << "a refresh without news leaves it";
}

TEST_F(BurstScreenTest, delete_takes_the_line_last_selected_and_the_first_when_none_was) {
    AddDelays({"10", "20", "30"});
    screen.ClickDelete();
    EXPECT_THAT(Lines(), ElementsAre("Delay of 20", "Delay of 30"));
    ClickOn("Delay of 30");
    screen.ClickDelete();
    screen.ClickDelete();
    screen.ClickDelete();
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_EQ(list.Text, "");
}

TEST_F(BurstScreenTest, a_double_click_puts_the_word_of_a_load_back) {
    screen.ChooseRegister(0);
    desk.part.Registers("R0").SetValue(0x70);
    AddDelays({"10"});
    ClickOn("Load R0");
    screen.DoubleClickList();
    EXPECT_EQ(desk.part.Registers("R0").Value(), 0x10);
    EXPECT_EQ(refreshes, 1);

    desk.part.Registers("R0").SetValue(0x70);
    list.SelStart = static_cast<int>(list.Text.find("Delay"));
    screen.DoubleClickList();
    EXPECT_EQ(panel.SelectedBurstLine, 2);
    EXPECT_EQ(desk.part.Registers("R0").Value(), 0x70) << "a delay changes nothing";
    EXPECT_EQ(refreshes, 2) << "but refreshes";
}

TEST_F(BurstScreenTest, pattern_shows_three_rows_for_a_load_until_the_next_refresh) {
    desk.part.SetRegisterLength(2);
    desk.part.SetClockPosition(2);
    desk.part.SetDataPosition(3);
    desk.part.SetLEPosition(4);
    desk.part.Registers("R1").SetValue(1);
    screen.ChooseRegister(1);
    AddDelays({"10"});
    const std::string descriptions = list.Text;
    screen.DisplayBurstVector();
    // 0 and 1, each with a rising clock; then the latch.
    EXPECT_EQ(list.Text, "clk0101000\r\ndat0011000\r\nle  0000010\r\nDelay of 10\r\n");
    screen.UpdateBurstDisplay();
    EXPECT_EQ(list.Text, descriptions);
}

TEST_F(BurstScreenTest, a_count_that_is_no_number_leaves_the_list_as_it_was) {
    AddDelays({"10"});
    for (const char* count : {"", "abc", "1,5", "1e400", "3000000000"}) {
        panel.txtDelay.Text = count;
        EXPECT_THROW(screen.ClickDelay(), TypeMismatch) << count;
    }
    EXPECT_THAT(Lines(), ElementsAre("Delay of 10"));
}

TEST_F(BurstScreenTest, nothing_edits_the_list_while_a_burst_runs) {
    AddDelays({"10", "20"});
    ClickOn("Delay of 20");
    const std::string before = list.Text;
    desk.part.SetBurstRunning(true);
    screen.ClickDelay();
    screen.ClickSetPins();
    screen.ChooseRegister(0);
    screen.ClickDelete();
    screen.ClickDeleteAll();
    screen.ClickLEMode();
    EXPECT_EQ(list.Text, before);
    EXPECT_EQ(panel.cmdLEMode.Caption, "LE Low");
    desk.part.SetBurstRunning(false);
    screen.ClickDelete();
    EXPECT_THAT(Lines(), ElementsAre("Delay of 10"));
}

TEST_F(BurstScreenTest, the_latch_button_gives_pin_commands_a_high_latch) {
    desk.part.SetLEPosition(4);
    screen.ClickLEMode();
    EXPECT_EQ(panel.cmdLEMode.Caption, "LE High");
    screen.ClickSetPins();
    EXPECT_EQ(Lines().back(), "Change Pin State; CE= False; LE High");
    EXPECT_EQ(desk.part.BurstCmds(1).GetRegLoad(0), desk.part.LEPositionValue());
    screen.ClickLEMode();
    screen.ClickSetPins();
    EXPECT_EQ(desk.part.BurstCmds(2).GetRegLoad(0), 0);
}

} // namespace
} // namespace zentrel
