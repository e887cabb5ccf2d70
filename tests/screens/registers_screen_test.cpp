#include "screens/registers_screen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "screens/field_tip.h"
#include "screens/tab_model.h"
#include "tests/screens/desk.h"

namespace zentrel {
namespace {

using desk::Desk;
using testing::ElementsAre;
using Arrow = RegistersScreen::Arrow;

class RegistersTab : public testing::Test {
  protected:
    void SetUp() override {
        desk.recorder.onRegisters = [this] { screen.UpdateRegisterDisplay(); };
        screen.RegisterLengthChanged(24);
        for (int i = 0; i < 3; ++i)
            screen.AddRow(desk.AddRegister("R" + std::to_string(i), i));
        screen.UpdateRegisterDisplay();
    }
    cRegister& Reg(int row) { return desk.part.Registers(row + 1); }
    TextBox& Bits(int row) { return screen.txtRegBits[static_cast<std::size_t>(row)]; }
    Color RowColor(int row) { return screen.lblRegName[static_cast<std::size_t>(row)].ForeColor; }

    Desk desk;
    RegistersScreen screen{desk.part};
};

// The column of a bit in a 24-bit row, most significant bit on the left.
constexpr int MsbColumn(int bit) {
    return 3 * (23 - bit);
}

TEST_F(RegistersTab, a_row_shows_every_bit_and_the_word_in_hex) {
    Reg(2).SetValue(0xABC002);
    screen.UpdateRegisterDisplay();
    EXPECT_EQ(Bits(2).Text,
              "1  0  1  0  1  0  1  1  1  1  0  0  0  0  0  0  0  0  0  0  0  0  1  0");
    EXPECT_EQ(Bits(2).Text.size(), 70U);
    EXPECT_EQ(screen.lblHexRegValue[2].Caption, "0x0AB C002");
    EXPECT_EQ(screen.lblRegName2[2].Caption, "R2");
}

TEST_F(RegistersTab, a_bit_tells_which_fields_it_belongs_to) {
    desk.AddField("GAIN", "r1", 4, 3);
    desk.AddField("MODE", "r1", 6, 2);
    EXPECT_EQ(screen.TipOnBit(1, 4).find("R1, bit 4\n\nGAIN\nr1, bits 6 to 4"), 0U);
    EXPECT_THAT(screen.TipOnBit(1, 6),
                testing::AllOf(testing::HasSubstr("GAIN"), testing::HasSubstr("MODE")));
    EXPECT_EQ(screen.TipOnBit(1, 8), "R1, bit 8");
    EXPECT_EQ(screen.TipOnBit(0, 4), "R0, bit 4");
}

TEST_F(RegistersTab, a_field_beyond_its_list_and_a_long_description_still_tell_what_there_is) {
    cPrgmBits& field = desk.AddField("GAIN", "R1", 4, 3);
    field.SetStringArray({"Low", "High"});
    field.SetBitValue(5);
    field.Description = std::string(999, 'x') + "\xC3\xB6 and more";
    const std::string tip = FieldTip(desk.part, "GAIN");
    EXPECT_THAT(tip, testing::HasSubstr("Now 5, which its list doesn't have"));
    EXPECT_TRUE(tip.ends_with("x ...")) << "an ö isn't cut in halves";
}

TEST_F(RegistersTab, the_ruler_numbers_the_bits_from_the_left) {
    EXPECT_EQ(screen.lblTens[0].Caption.substr(0, 10), "2  2  2  2");
    EXPECT_EQ(screen.lblOnes[0].Caption.substr(0, 10), "3  2  1  0");
    screen.RegisterLengthChanged(1);
    EXPECT_EQ(screen.lblOnes[0].Caption, "0");
}

TEST_F(RegistersTab, a_click_between_two_digits_takes_the_digit_on_its_left) {
    screen.ClickBits(1, MsbColumn(10) + 2);
    EXPECT_EQ(Bits(1).SelStart, MsbColumn(10));
    EXPECT_EQ(Bits(1).SelLength, 1);
    EXPECT_EQ(RowColor(1), colors::kRed);
    EXPECT_EQ(RowColor(0), colors::kButtonText);
    EXPECT_EQ(screen.lblHexDisplay.Caption, "000001");
    EXPECT_TRUE(screen.lblHexValue.Visible);
    const RegistersScreen::MarkerPlace bit10{1, 13, 0};
    EXPECT_EQ(screen.Marker(), bit10);
}

TEST_F(RegistersTab, the_control_bits_are_blue_and_refuse_edits) {
    screen.ClickBits(0, MsbColumn(2));
    EXPECT_EQ(RowColor(0), colors::kBlue);
    EXPECT_EQ(Bits(0).SelLength, 0);
    Bits(0).SelLength = 1;
    screen.KeyPress(0, '1');
    EXPECT_EQ(Reg(0).Value(), 0);
    EXPECT_EQ(Bits(0).SelStart, MsbColumn(2)) << "the caret stays";

    screen.KeyDown(0, Arrow::Left);
    EXPECT_EQ(RowColor(0), colors::kBlue) << "bit 3 is a control bit too";
    screen.KeyDown(0, Arrow::Left);
    EXPECT_EQ(RowColor(0), colors::kRed);

    screen.ClickBits(0, MsbColumn(5));
    screen.KeyDown(0, Arrow::Right);
    EXPECT_EQ(Bits(0).SelStart, MsbColumn(4));
    screen.KeyDown(0, Arrow::Right);
    EXPECT_EQ(Bits(0).SelStart, MsbColumn(4)) << "Right stops at the digit before them";
}

TEST_F(RegistersTab, typing_a_digit_writes_the_bit_refreshes_and_steps_left) {
    screen.ClickBits(1, MsbColumn(10));
    screen.KeyPress(1, '1');
    EXPECT_EQ(Reg(1).Value(), 1025);
    EXPECT_TRUE(Reg(1).changed()) << "nothing is sent by itself";
    EXPECT_THAT(desk.recorder.refreshed, ElementsAre("PLL", "CLKDIST", "Bit", "Register"));
    EXPECT_EQ(Bits(1).SelStart, MsbColumn(11));
    EXPECT_EQ(Bits(1).SelLength, 1);
    EXPECT_EQ(screen.Marker().column, 12);
    EXPECT_EQ(screen.lblHexDisplay.Caption, "000401");
    screen.KeyDown(1, Arrow::Right);
    screen.KeyPress(1, '0');
    EXPECT_EQ(Reg(1).Value(), 1);
}

TEST_F(RegistersTab, typing_at_the_leftmost_digit_leaves_the_caret_there) {
    screen.ClickBits(0, 0);
    screen.KeyPress(0, '1');
    EXPECT_EQ(Reg(0).Value(), 0x800000);
    EXPECT_EQ(Bits(0).SelStart, 0);
    screen.KeyDown(0, Arrow::Left);
    EXPECT_EQ(Bits(0).SelStart, 0);
}

TEST_F(RegistersTab, other_keys_and_an_unselected_digit_only_move_the_caret) {
    screen.ClickBits(0, MsbColumn(8));
    screen.KeyPress(0, 'x');
    EXPECT_EQ(Bits(0).SelStart, MsbColumn(9));
    screen.DoubleClickBits(0);
    screen.KeyPress(0, '1');
    EXPECT_EQ(Bits(0).SelStart, MsbColumn(10));
    EXPECT_EQ(Reg(0).Value(), 0);
    EXPECT_THAT(desk.recorder.refreshed, ElementsAre());
    desk.part.ID.clear();
    screen.KeyPress(0, '1');
    EXPECT_EQ(Bits(0).SelStart, MsbColumn(10)) << "without a device nothing happens";
}

TEST_F(RegistersTab, up_and_down_keep_the_column_and_stop_at_the_ends) {
    screen.ClickBits(0, MsbColumn(7));
    screen.KeyDown(0, Arrow::Up);
    EXPECT_EQ(screen.CaretRow(), 0);
    screen.KeyDown(0, Arrow::Down);
    EXPECT_EQ(screen.CaretRow(), 1);
    EXPECT_EQ(Bits(1).SelStart, MsbColumn(7));
    EXPECT_EQ(RowColor(0), colors::kButtonText);
    EXPECT_EQ(RowColor(1), colors::kRed);
    screen.KeyDown(1, Arrow::Down);
    screen.KeyDown(2, Arrow::Down);
    EXPECT_EQ(screen.CaretRow(), 2);
}

TEST_F(RegistersTab, reversing_the_order_mirrors_rows_ruler_and_control_bits) {
    screen.ClickBits(1, MsbColumn(10));
    screen.ClickBitOrder();
    EXPECT_EQ(screen.cmdBitOrder.Caption, "LSB -->");
    EXPECT_FALSE(screen.shpBitHiLite.Visible);
    EXPECT_FALSE(screen.lblHexDisplay.Visible);
    EXPECT_EQ(Bits(1).Text.substr(0, 7), "1  0  0");
    EXPECT_EQ(screen.lblOnes[0].Caption.substr(0, 7), "0  1  2");

    screen.ClickBits(1, 9);
    EXPECT_EQ(RowColor(1), colors::kBlue) << "bit 3 is a control bit";
    screen.ClickBits(1, 12);
    screen.KeyDown(1, Arrow::Left);
    EXPECT_EQ(Bits(1).SelStart, 12);
    screen.KeyPress(1, '1');
    EXPECT_EQ(Reg(1).Value(), 17);
    EXPECT_EQ(Bits(1).SelStart, 15) << "towards the most significant bit";
    EXPECT_EQ(screen.lblHexDisplay.Caption, "000011");
}

TEST_F(RegistersTab, the_marks_follow_a_word_that_something_else_changes) {
    screen.ClickBits(2, MsbColumn(6));
    Reg(2).SetValue(66);
    screen.UpdateRegisterDisplay();
    EXPECT_EQ(screen.lblHexDisplay.Caption, "000042");
    EXPECT_EQ(Bits(2).SelStart, MsbColumn(6));
    EXPECT_EQ(RowColor(2), colors::kRed);
    screen.ClickLoad(2);
    EXPECT_EQ(RowColor(2), colors::kButtonText);
    EXPECT_FALSE(screen.shpBitHiLite.Visible);
}

TEST_F(RegistersTab, a_refresh_rewrites_only_the_words_that_changed) {
    const auto before = screen.revision(0);
    const auto changed = screen.revision(1);
    Reg(1).SetValue(99);
    screen.UpdateRegisterDisplay();
    EXPECT_EQ(screen.revision(0), before);
    EXPECT_EQ(screen.revision(1), changed + 1);
}

TEST_F(RegistersTab, rows_from_35_on_have_a_second_ruler) {
    for (int i = 3; i < 36; ++i)
        screen.AddRow(desk.AddRegister("R" + std::to_string(i)));
    screen.UpdateRegisterDisplay();
    ASSERT_TRUE(screen.HasSecondRuler());
    EXPECT_EQ(screen.lblTens[1].Caption, screen.lblTens[0].Caption);
    screen.ClickBits(34, 0);
    screen.KeyDown(34, Arrow::Down);
    EXPECT_EQ(screen.Marker().ruler, 1);
}

TEST_F(RegistersTab, words_of_64_bits_are_edited_and_shown_exactly) {
    desk.part.SetRegisterLength(64);
    screen.RegisterLengthChanged(64);
    screen.UpdateRegisterDisplay();
    screen.ClickBits(1, 0);
    screen.KeyPress(1, '1');
    EXPECT_EQ(screen.lblHexRegValue[1].Caption, "0x8000 0000 0000 0001");
}

TEST_F(RegistersTab, leaving_and_coming_back_clears_the_marks) {
    screen.ClickBits(1, MsbColumn(10));
    screen.TabSelected(kBitsTab);
    EXPECT_FALSE(screen.lblHexDisplay.Visible);
    Reg(1).SetValue(0x5A1); // by a field's own tab
    screen.UpdateRegisterDisplay();
    screen.TabSelected(kRegistersTab);
    EXPECT_EQ(RowColor(1), colors::kButtonText);
    EXPECT_FALSE(screen.shpBitHiLite.Visible);
    EXPECT_FALSE(screen.lblHexDisplay.Visible) << "no digit is selected";
}

TEST_F(RegistersTab, clearing_leaves_the_template) {
    screen.Clear();
    EXPECT_EQ(screen.RowCount(), 0);
    EXPECT_EQ(screen.lblRegName[0].Caption, "RegName");
    EXPECT_EQ(Bits(0).Text, "1 1 1");
    EXPECT_FALSE(Bits(0).Visible);
    screen.ClickBits(0, 0);
    screen.ClickLoad(0);
    EXPECT_EQ(screen.CaretRow(), -1);
}

TEST(RegistersTabReadBack, both_read_buttons_answer_in_the_chosen_base) {
    Desk desk;
    RegistersScreen screen(desk.part);
    screen.AddRow(desk.AddRegister("R0"));
    EXPECT_FALSE(screen.cmdReadback[0].Visible);
    screen.Clear();

    desk.part.ReadbackAddressRegister = "ADDRESS";
    screen.AddRow(desk.part.Registers(1));
    EXPECT_TRUE(screen.cmdReadback[0].Visible);
    EXPECT_TRUE(screen.txtReadbackRegVal.Visible);

    screen.txtReadRegName.Text = "no such field";
    screen.SelectReadbackBase(1);
    screen.ClickReadRegister();
    EXPECT_EQ(screen.txtReadbackRegVal.Text, "-1");
    screen.SelectReadbackBase(2);
    screen.ClickReadRegister();
    EXPECT_EQ(screen.txtReadbackRegVal.Text, "0xFFFFFFFF");
    screen.SelectReadbackBase(0);
    screen.ClickReadRegister();
    EXPECT_EQ(screen.txtReadbackRegVal.Text, "Please send money");
}

} // namespace
} // namespace zentrel
