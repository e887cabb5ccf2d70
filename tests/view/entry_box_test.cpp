#include "screens/qt/entry_box.h"

#include <QVBoxLayout>
#include <QWheelEvent>

#include "tests/view/window_fixture.h"

namespace zentrel {
namespace {

using view::EntryBox;
using view::Hand;

/// Two boxes in a window, with a list of what their handlers were asked.
class EntryBoxTest : public ::testing::Test, private Events {
  protected:
    EntryBoxTest() : hand_(*this) {
        auto* column = new QVBoxLayout(&window_);
        for (int i = 0; i < 2; ++i) {
            data_[i].Text = i == 0 ? "100" : "200";
            const std::string name = std::to_string(i);
            box_[i] = new EntryBox(hand_, data_[i],
                                   {.enter = [this, name] { Log("enter " + name); },
                                    .leave = [this, name] { Log("leave " + name); },
                                    .stepUp = [this] { Log("up"); },
                                    .stepDown = [this] { Log("down"); }},
                                   &window_);
            column->addWidget(box_[i]);
            box_[i]->Sync();
        }
        window_.show();
        window_.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
        box_[0]->setFocus(Qt::TabFocusReason);
        box_[0]->selectAll();
    }
    void Log(const std::string& what) { log_ += (log_.empty() ? "" : ", ") + what; }
    bool Run(const std::function<void()>& event) override {
        event();
        return true;
    }
    void RunWhenIdle(std::function<void()> event) override { event(); }

    QWidget window_;
    Hand hand_;
    TextBox data_[2];
    EntryBox* box_[2] = {};
    std::string log_;
};

TEST_F(EntryBoxTest, every_keystroke_stands_in_the_element_before_enter_applies_it) {
    QTest::keyClicks(box_[0], QStringLiteral("42"));
    EXPECT_EQ(data_[0].Text, "42");
    EXPECT_TRUE(box_[0]->typed());
    EXPECT_EQ(log_, "");
    QTest::keyClick(box_[0], Qt::Key_Return);
    EXPECT_EQ(log_, "enter 0");
    EXPECT_FALSE(box_[0]->typed());
}

TEST_F(EntryBoxTest, esc_brings_back_what_the_model_last_put_there) {
    QTest::keyClicks(box_[0], QStringLiteral("7"));
    QTest::keyClick(box_[0], Qt::Key_Escape);
    EXPECT_EQ(data_[0].Text, "100");
    EXPECT_EQ(box_[0]->text(), QStringLiteral("100"));
    EXPECT_FALSE(box_[0]->typed());
}

TEST_F(EntryBoxTest, a_refresh_in_the_middle_of_typing_replaces_what_was_typed) {
    QTest::keyClicks(box_[0], QStringLiteral("7"));
    box_[0]->Sync();
    EXPECT_EQ(box_[0]->text(), QStringLiteral("7"));
    data_[0].Text = "150";
    box_[0]->Sync();
    EXPECT_EQ(box_[0]->text(), QStringLiteral("150"));
    EXPECT_FALSE(box_[0]->typed());
}

TEST_F(EntryBoxTest, leaving_for_another_box_applies_once_and_never_behind_enter) {
    box_[1]->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(log_, "leave 0");
    QTest::keyClick(box_[1], Qt::Key_Return);
    box_[0]->setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(log_, "leave 0, enter 1");
}

TEST_F(EntryBoxTest, a_menu_a_dialog_or_another_window_that_takes_the_focus_applies_nothing) {
    for (const auto reason :
         {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason, Qt::MenuBarFocusReason}) {
        QFocusEvent out(QEvent::FocusOut, reason);
        QCoreApplication::sendEvent(box_[0], &out);
    }
    EXPECT_EQ(log_, "");
}

TEST_F(EntryBoxTest, the_wheel_steps_a_box_with_the_focus_and_passes_by_any_other) {
    const auto wheel = [](QWidget* over, int delta) {
        QWheelEvent event({2, 2}, over->mapToGlobal(QPointF(2, 2)), {}, {0, delta}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        event.ignore();
        QCoreApplication::sendEvent(over, &event);
        return event.isAccepted();
    };
    EXPECT_FALSE(wheel(box_[1], 120));
    EXPECT_EQ(log_, "");
    EXPECT_TRUE(wheel(box_[0], -120));
    EXPECT_EQ(log_, "down");
}

} // namespace
} // namespace zentrel
