#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTableView>
#include <QTextBlock>
#include <QWheelEvent>

#include "screens/qt/board_dock.h"
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

TEST_F(MainWindowTest, the_first_close_stops_a_running_burst_and_the_second_ends_the_program) {
    Select("QVX2691");
    ShowTab(kBurstTab);
    Find<QLineEdit>("txtDelay")->setFocus();
    Find<QLineEdit>("txtDelay")->selectAll();
    QTest::keyClicks(Find("txtDelay"), QStringLiteral("1"));
    QTest::mouseClick(Find("cmdDelay"), Qt::LeftButton);
    ASSERT_EQ(part().BurstCmds.Count(), 1);
    QTimer::singleShot(20, &program_->window(), [this] { program_->window().close(); });
    QTest::mouseClick(Find("cmdRun"), Qt::LeftButton); // Comes back when the run has ended.
    EXPECT_FALSE(part().BurstRunning());
    EXPECT_FALSE(ended_);
    EXPECT_TRUE(program_->window().isVisible());
    program_->window().close();
    EXPECT_TRUE(ended_);
}

TEST_F(MainWindowTest, a_click_in_the_burst_list_selects_the_line_that_delete_then_takes) {
    Select("QVX2691");
    ShowTab(kBurstTab);
    for (const char* delay : {"10", "20", "30"})
        program_->frm().guard.Run([&] {
            program_->frm().burst.panel.txtDelay.Text = delay;
            program_->frm().burst.panel.txtBurstCmds.SelLength = 0;
            program_->frm().burst.ClickDelay();
        });
    auto* list = Find<QPlainTextEdit>("txtBurstCmds");
    const QTextCursor second(list->document()->findBlockByNumber(1));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->cursorRect(second).center());
    EXPECT_EQ(program_->frm().burst.panel.SelectedBurstLine, 2);
    EXPECT_EQ(list->textCursor().selectedText(), QStringLiteral("Delay of 20"));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->cursorRect(second).center());
    EXPECT_EQ(list->textCursor().selectedText(), QStringLiteral("Delay of 20")) << "once more";
    QTest::mouseClick(Find("cmdDelete"), Qt::LeftButton);
    EXPECT_EQ(list->toPlainText(), QStringLiteral("Delay of 10\nDelay of 30\n"));
}

TEST_F(MainWindowTest, a_resize_moves_the_fields_and_keeps_what_was_typed_into_them) {
    Select("QVX4100");
    ShowTab(kBitsTab);
    auto* box = Find<QLineEdit>("txtCntrVal(1)");
    const auto places = [this] {
        QList<QRect> all;
        for (const QWidget* frame : program_->window().findChildren<QWidget*>(
                 QRegularExpression(QStringLiteral("^fraPrgmBits"))))
            all << frame->geometry();
        return all;
    };
    const QList<QRect> before = places();
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("7"));
    program_->window().resize(1500, 1100);
    QCoreApplication::processEvents();
    EXPECT_EQ(Find<QLineEdit>("txtCntrVal(1)"), box);
    EXPECT_EQ(box->text(), QStringLiteral("7"));
    EXPECT_NE(places(), before);
}

TEST_F(MainWindowTest, a_larger_font_enlarges_what_stands_there_and_a_smaller_one_undoes_it) {
    Select("QVX2691");
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(usual.pointSizeF() * 2);
    for (const int tab : {kBitsTab, kRegistersTab, kPortTab}) {
        ShowTab(tab);
        const char* name = tab == kBitsTab        ? "txtCntrVal(0)"
                           : tab == kRegistersTab ? "txtRegBits(0)"
                                                  : "optClockBit(0)";
        const int before = Find(name)->height();
        QApplication::setFont(large);
        QCoreApplication::processEvents();
        EXPECT_GT(Find(name)->height(), before * 3 / 2) << name;
        QApplication::setFont(usual);
        QCoreApplication::processEvents();
        EXPECT_EQ(Find(name)->height(), before) << name;
    }
}

TEST_F(MainWindowTest, the_board_dock_lists_the_newest_word_first) {
    Select("QVX2691");
    auto* table = Find("dockBoard")->findChild<QTableView*>();
    const QAbstractItemModelTester tester(table->model());
    const auto name = [table](int row) {
        return table->model()->index(row, view::LatchedWordModel::kRegister).data().toString();
    };
    Entry("mnuLoadPLL")->trigger();
    EXPECT_EQ(table->model()->rowCount(), 3);
    EXPECT_EQ(name(0), QStringLiteral("FUNCTION"));
    EXPECT_EQ(name(2), QStringLiteral("R"));
    program_->frm().guard.Run([this] { program_->bench().board.ForgetHistory(); });
    EXPECT_EQ(table->model()->rowCount(), 0);
    Entry("mnuLoadPLL")->trigger();
    EXPECT_EQ(name(1), QStringLiteral("N"));
}

} // namespace
} // namespace zentrel
