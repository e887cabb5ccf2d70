#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QScrollBar>
#include <QWheelEvent>

#include "tests/view/window_fixture.h"

namespace zentrel {
namespace {

class MainWindowTest : public WindowTest {};

TEST_F(MainWindowTest, every_entry_of_the_menu_model_has_an_action_with_its_shortcut) {
    EXPECT_EQ(Entry("mnuLoadPLL")->shortcut(), QKeySequence(QStringLiteral("Ctrl+L")));
    EXPECT_EQ(Entry("mnuIncN")->shortcut(), QKeySequence(QStringLiteral("F2")));
    EXPECT_TRUE(Entry("mnuAutoReloadChange")->isChecked());
    Entry("mnuVCOFixed")->trigger();
    EXPECT_TRUE(Entry("mnuVCOFixed")->isChecked());
    EXPECT_TRUE(program_->frm().session.bVCOFixed);
}

TEST_F(MainWindowTest, ctrl_l_loads_the_whole_device_over_both_routes) {
    Select("QVX2691");
    const Board& board = program_->bench().board;
    for (const char* route : {"LPT", "USB"}) {
        program_->frm().guard.Run(
            [&] { program_->frm().port.SelectCommMode(route[0] == 'U' ? 0 : 1); });
        program_->bench().board.ForgetHistory();
        Entry("mnuLoadPLL")->trigger();
        ASSERT_GE(board.history().size(), 3U) << route;
        for (int i = 1; i <= 3; ++i)
            EXPECT_EQ(board.Content(Register(i).ID()), Register(i).word()) << route;
    }
}

TEST_F(MainWindowTest, copy_and_cut_stay_the_boxes_own_while_text_is_selected) {
    Select("QVX2691");
    ShowTab(kBitsTab);
    auto* box = Find<QLineEdit>("txtCntrVal(0)");
    box->setFocus();
    const auto asks = [box](QKeySequence::StandardKey which) {
        const QKeyCombination keys = QKeySequence(which)[0];
        QKeyEvent event(QEvent::ShortcutOverride, keys.key(), keys.keyboardModifiers());
        event.ignore();
        QCoreApplication::sendEvent(box, &event);
        return event.isAccepted();
    };
    box->selectAll();
    EXPECT_TRUE(asks(QKeySequence::Copy));
    EXPECT_TRUE(asks(QKeySequence::Cut));
    box->deselect();
    EXPECT_FALSE(asks(QKeySequence::Copy));
    EXPECT_FALSE(asks(QKeySequence::Cut));
    EXPECT_TRUE(asks(QKeySequence::SelectAll));
}

TEST_F(MainWindowTest, the_wheel_over_a_list_without_the_focus_never_changes_the_field) {
    Select("QVX2691");
    ShowTab(kBitsTab);
    auto* list = Find<QComboBox>("cmbBits(0)");
    const int before = list->currentIndex();
    program_->window().setFocus();
    QWheelEvent down({4, 4}, list->mapToGlobal(QPointF(4, 4)), {}, {0, -120}, Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(list, &down);
    EXPECT_EQ(list->currentIndex(), before);
    EXPECT_FALSE(down.isAccepted());
}

TEST_F(MainWindowTest, a_counter_typed_on_the_bits_tab_reaches_word_and_board_on_enter) {
    Select("QVX2691");
    ShowTab(kBitsTab);
    auto* box = Find<QLineEdit>("txtCntrVal(0)");
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("77"));
    EXPECT_EQ(part().PrgmBits("R_COUNTER").Value(), 10);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(part().PrgmBits("R_COUNTER").Value(), 77);
    EXPECT_EQ(program_->bench().board.Content("R"), part().Registers("R").word());
}

TEST_F(MainWindowTest, a_device_change_asked_under_an_open_message_waits_until_it_is_answered) {
    Select("QVX2691");
    program_->boxes().SetAttended(true);
    std::string during;
    QTimer::singleShot(0, [&] {
        std::string name = "QVX4100";
        program_->frm().guard.RunWhenIdle(
            [this, name]() mutable { program_->frm().SetupPartForm(name); });
        during = part().ID;
        for (QWidget* top : QApplication::topLevelWidgets())
            if (auto* box = qobject_cast<QMessageBox*>(top)) box->accept();
    });
    Entry("mnuStatus")->trigger();
    EXPECT_EQ(during, "QVX2691");
    EXPECT_EQ(part().ID, "QVX4100");
}

TEST_F(MainWindowTest, the_about_dialog_stays_open_over_a_device_change) {
    Entry("mnuAbout")->trigger();
    auto* about = Find("frmAbout");
    ASSERT_TRUE(about->isVisible());
    Select("QVX2691");
    EXPECT_TRUE(about->isVisible());
    QTest::keyClick(about, Qt::Key_A);
    EXPECT_FALSE(about->isVisible());
}

TEST_F(MainWindowTest, the_badge_says_simulated_board_only_while_it_is_on) {
    auto* badge = Find("lblSimulatedBoard");
    EXPECT_TRUE(badge->isVisible());
    Entry("mnuSimulatedBoard")->trigger();
    EXPECT_FALSE(badge->isVisible());
}

TEST_F(MainWindowTest, exit_ends_the_program_and_closing_does_the_same) {
    program_->window().close();
    EXPECT_TRUE(ended_);
    EXPECT_FALSE(program_->window().isVisible());
}

} // namespace
} // namespace zentrel
