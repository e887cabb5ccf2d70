#include <fstream>

#include <QRegularExpression>

#include "screens/qt/bit_row.h"
#include "tests/view/window_fixture.h"
#include "transport/bench/bench.h"

namespace zentrel {
namespace {

using view::BitRow;

class RegistersViewTest : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        Select("QVX2691");
        ShowTab(kRegistersTab);
    }
    BitRow* Row(int number) {
        return dynamic_cast<BitRow*>(
            Find(qPrintable(QStringLiteral("txtRegBits(%1)").arg(number))));
    }
    // The middle of the column that shows `bit`, most significant on the left.
    QPoint CellOf(BitRow* row, int bit) {
        const view::BitGrid grid{24, 2, false};
        const int column = 23 - bit;
        return {grid.Left(column) + view::BitGrid::CellWidth() / 2, row->height() / 2};
    }
};

TEST_F(RegistersViewTest, typed_digits_go_into_the_word_from_the_clicked_bit_upwards) {
    Register(1).SetValue(0);
    BitRow* row = Row(0);
    QTest::mouseClick(row, Qt::LeftButton, {}, CellOf(row, 4));
    QTest::keyClicks(row, QStringLiteral("101"));
    EXPECT_EQ(Register(1).Value(), 0b1010000);
    // The word was 101000 when it was loaded.
    EXPECT_EQ(program_->frm().registers.UnsentBits(0), "000000000000000001111000");
}

TEST_F(RegistersViewTest, control_bits_refuse_digits_and_a_letter_only_moves_the_caret) {
    const double before = Register(1).Value();
    BitRow* row = Row(0);
    QTest::mouseClick(row, Qt::LeftButton, {}, CellOf(row, 1));
    QTest::keyClicks(row, QStringLiteral("10"));
    EXPECT_EQ(Register(1).Value(), before);
    QTest::mouseClick(row, Qt::LeftButton, {}, CellOf(row, 5));
    QTest::keyClicks(row, QStringLiteral("x"));
    EXPECT_EQ(Register(1).Value(), before);
    EXPECT_EQ(program_->frm().registers.Marker().column, 23 - 6);
}

TEST_F(RegistersViewTest, arrow_keys_take_the_focus_to_the_row_below_and_back) {
    BitRow* first = Row(0);
    QTest::mouseClick(first, Qt::LeftButton, {}, CellOf(first, 8));
    QTest::keyClick(first, Qt::Key_Down);
    EXPECT_EQ(program_->window().focusWidget(), Row(1));
    QTest::keyClick(Row(1), Qt::Key_Up);
    EXPECT_EQ(program_->window().focusWidget(), first);
}

TEST_F(RegistersViewTest, load_sends_the_edited_word_to_the_board_and_takes_the_marks_away) {
    BitRow* row = Row(1);
    QTest::mouseClick(row, Qt::LeftButton, {}, CellOf(row, 20));
    QTest::keyClicks(row, QStringLiteral("11"));
    ASSERT_NE(program_->frm().registers.UnsentBits(1), "");
    Find("cmdLoadReg(1)")->setFocus();
    QTest::mouseClick(Find("cmdLoadReg(1)"), Qt::LeftButton);
    const Board& board = program_->bench().board;
    ASSERT_FALSE(board.history().empty());
    EXPECT_EQ(board.history().back().word, Register(2).word());
    EXPECT_EQ(board.history().back().registerName, "N");
    EXPECT_EQ(program_->frm().registers.UnsentBits(1), "");
}

TEST_F(RegistersViewTest, another_device_takes_the_rows_and_their_keys_away) {
    QTest::mouseClick(Row(2), Qt::LeftButton, {}, CellOf(Row(2), 8));
    Select("QVX4100");
    ShowTab(kRegistersTab);
    EXPECT_EQ(program_->frm().registers.RowCount(), part().Registers.Count());
    const auto rows = program_->window().findChildren<QWidget*>(
        QRegularExpression(QStringLiteral("^txtRegBits\\(")));
    EXPECT_EQ(rows.size(), part().Registers.Count());
}

TEST_F(RegistersViewTest, the_hex_value_of_a_wide_word_stays_readable_while_it_grows) {
    std::ofstream(folder_.filePath(QStringLiteral("WIDE.ini")).toStdString())
        << "[SETUP]\nZENTREL_VERSION=2.3.0\nREGISTER_LENGTH=64\nCONTROL_LENGTH=0\n"
           "[REGISTERS]\nCOUNT=1\nVALUE00=1\nMASK00=0\n";
    program_->frm().guard.Run([this] { program_->frm().SelectDevice("WIDE", {}); });
    ShowTab(kRegistersTab);
    BitRow* row = Row(0);
    row->setFocus();
    program_->frm().guard.Run([this] { program_->frm().registers.ClickBits(0, 0); });
    QTest::keyClicks(row, QStringLiteral("1"));
    const auto* hex = Find("lblHexRegValue(0)");
    const QString text = QStringLiteral("0x8000 0000 0000 0001");
    EXPECT_EQ(hex->accessibleName(), text);
    EXPECT_GE(hex->width(), hex->fontMetrics().horizontalAdvance(text));
}

} // namespace
} // namespace zentrel
