#include <QComboBox>
#include <QLineEdit>
#include <QRegularExpression>

#include "clock/clk_dist.h"
#include "synth/pll.h"
#include "tests/view/window_fixture.h"

namespace zentrel {
namespace {

/// A clock conditioner with all its paths on the screen: block 1, channels 8 to 15.
class ClockViewTest : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        Select("QVX4100");
        ShowTab(Block().ClkDistTab);
    }
    cClkDist& Block() { return part().ClkDists(1); }
    QLineEdit* Box(const char* name) { return Find<QLineEdit>(name); }
    QString Frequency(int channel) {
        return Box(qPrintable(QStringLiteral("divCHtxt_freq(%1)").arg(8 + channel)))->text();
    }
    /// Clicks the middle of a shape of the drawing, where the page has it now.
    void ClickShape(int k) {
        const Shape& shape = Block().panel.shpCLK[static_cast<std::size_t>(k)];
        constexpr int kTwips = 15;
        QTest::mouseClick(
            Canvas(), Qt::LeftButton, {},
            {(shape.Left + shape.Width / 2) / kTwips, (shape.Top + shape.Height / 2) / kTwips});
    }
    void MoveTo(const QPoint& at) {
        QMouseEvent move(QEvent::MouseMove, at, Canvas()->mapToGlobal(at), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(Canvas(), &move);
    }
    QWidget* Canvas() { return Find("cbClkInputMux(1)")->parentWidget(); }
    void Choose(const char* name, int entry) {
        auto* list = Find<QComboBox>(name);
        list->setCurrentIndex(entry);
        Q_EMIT list->activated(entry);
    }
};

TEST_F(ClockViewTest, typing_a_vco_frequency_and_enter_moves_the_channels) {
    QLineEdit* vco = Box("txtCLK_VCOfreq(1)");
    ASSERT_EQ(Frequency(0), QStringLiteral("150"));
    vco->setFocus();
    vco->selectAll();
    QTest::keyClicks(vco, QStringLiteral("1240"));
    EXPECT_TRUE(Block().panel.marker.Visible);
    EXPECT_EQ(Frequency(0), QStringLiteral("150"));
    QTest::keyClick(vco, Qt::Key_Return);
    EXPECT_FALSE(Block().panel.marker.Visible);
    EXPECT_EQ(Block().IntVCO_Freq(), 1240);
    EXPECT_EQ(Frequency(0), QStringLiteral("155"));
    EXPECT_EQ(Frequency(4), QStringLiteral("31"));
}

TEST_F(ClockViewTest, a_click_on_a_terminal_of_the_input_mux_selects_its_input) {
    ClickShape(clk_shape::kExternalTerminal);
    EXPECT_EQ(Find<QComboBox>("cbClkInputMux(1)")->currentIndex(), 1);
    EXPECT_FALSE(Box("txtCLK_VCOfreq(1)")->isEnabled());
    EXPECT_EQ(Frequency(0), QStringLiteral("1000"));
    ClickShape(clk_shape::kReferenceTerminal);
    EXPECT_EQ(Find<QComboBox>("cbClkInputMux(1)")->currentIndex(), 3);
    EXPECT_EQ(Frequency(0), QStringLiteral("5"));
    ClickShape(clk_shape::kVcoTerminal);
    EXPECT_TRUE(Box("txtCLK_VCOfreq(1)")->isEnabled());
}

TEST_F(ClockViewTest, a_terminal_wears_its_mark_only_while_the_mouse_is_over_it) {
    const Shape& terminal = Block().panel.shpCLK[clk_shape::kVcoTerminal];
    const QPoint at(terminal.Left / 15 + 2, terminal.Top / 15 + 2);
    MoveTo(at);
    EXPECT_EQ(terminal.BorderColor, colors::kRed);
    MoveTo({1, 1});
    EXPECT_EQ(terminal.BorderColor, colors::kBlack);
}

TEST_F(ClockViewTest,
       a_channel_s_lists_write_their_fields_and_an_output_that_is_off_shows_nothing) {
    Choose("divCB_CMux(8)", 0); // "Bypassed"
    EXPECT_EQ(Frequency(0), QStringLiteral("300"));
    EXPECT_EQ(Block().panel.channels[0].chDivText.BackColor, colors::kOutOfPath);
    Choose("divCB_od(8)", 0);
    EXPECT_EQ(part().PrgmBits(Block().GetClkEnableName(0)).Value(), 0);
    EXPECT_EQ(Frequency(0), QString());
}

TEST_F(ClockViewTest, spinner_keys_step_a_divider_and_esc_brings_a_half_typed_one_back) {
    QLineEdit* divider = Box("chDivText(9)");
    divider->setFocus();
    const double before = part().PrgmBits(Block().GetClkDividerName(1)).Value();
    QTest::keyClick(divider, Qt::Key_Up);
    EXPECT_GT(part().PrgmBits(Block().GetClkDividerName(1)).Value(), before);
    QTest::keyClick(divider, Qt::Key_Down);
    divider->selectAll();
    QTest::keyClicks(divider, QStringLiteral("77"));
    QTest::keyClick(divider, Qt::Key_Escape);
    EXPECT_EQ(divider->text(), QString::number(before));
}

TEST_F(ClockViewTest, the_pll_s_block_leads_to_its_tab_and_the_filter_s_opens_its_dialog) {
    ClickShape(clk_shape::kLoopFilter);
    auto* dialog = program_->window().findChild<QWidget*>(QStringLiteral("frmLoopFilter"));
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_TRUE(dialog->isModal());
    Choose("cbR3", 1);
    EXPECT_EQ(part().PrgmBits(Block().LF_R3).BitValue(), 1);
    QTest::mouseClick(Find("cmdClose"), Qt::LeftButton);
    EXPECT_FALSE(dialog->isVisible());
    ClickShape(clk_shape::kPll);
    EXPECT_EQ(program_->frm().tabPart.SelectedTab(), part().PLLs(1).PLLTab());
}

TEST_F(ClockViewTest, another_device_closes_the_filter_s_dialog_and_draws_its_own_tab) {
    QTest::mouseClick(Canvas(), Qt::LeftButton); // Beside everything: opens nothing.
    ClickShape(clk_shape::kLoopFilter);
    auto* dialog = program_->window().findChild<QWidget*>(QStringLiteral("frmLoopFilter"));
    ASSERT_TRUE(dialog->isVisible());
    Select("QVX4161");
    EXPECT_FALSE(dialog->isVisible());
    ShowTab(Block().ClkDistTab);
    EXPECT_EQ(Box("txtCLK_ExtSRCfreq(1)")->text(), QStringLiteral("800"));
}

TEST_F(ClockViewTest, tab_visits_the_entries_along_the_path_and_then_row_by_row) {
    Box("txtCLK_VCOfreq(1)")->setFocus();
    for (const char* next :
         {"CLKtxt_InputDiv(1)", "CLK_VCODIV_bypass(1)", "txtCLK_ExtSRCfreq(1)", "cbClkInputMux(1)",
          "chDivText(8)", "divCB_CDelay(8)", "divCB_CMux(8)", "divCB_od(8)", "chDivText(9)"}) {
        QTest::keyClick(program_->window().focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(program_->window().focusWidget()->objectName(), QLatin1String(next));
    }
}

TEST_F(ClockViewTest, the_right_button_steps_a_filter_value_back) {
    QWidget* r3 = Find("clkdist_R3(1)");
    const double before = part().PrgmBits(Block().LF_R3).BitValue();
    QTest::mouseClick(r3, Qt::LeftButton);
    EXPECT_EQ(part().PrgmBits(Block().LF_R3).BitValue(), before + 1);
    QContextMenuEvent right(QContextMenuEvent::Mouse, {1, 1}, r3->mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(r3, &right);
    EXPECT_EQ(part().PrgmBits(Block().LF_R3).BitValue(), before);
}

TEST_F(ClockViewTest, a_block_that_only_distributes_shows_its_source_and_five_rows) {
    Select("AD9512");
    ShowTab(Block().ClkDistTab);
    EXPECT_FALSE(Find("txtCLK_VCOfreq(1)")->isVisible());
    EXPECT_FALSE(Find("cbClkInputMux(1)")->isVisible());
    EXPECT_TRUE(Find("txtCLK_ExtSRCfreq(1)")->isVisible());
    EXPECT_TRUE(Find("chDivText(12)")->isVisible());
    EXPECT_FALSE(Find("chDivText(13)")->isVisible());
    EXPECT_LT(Find("chDivText(8)")->y(), 150);
}

} // namespace
} // namespace zentrel
