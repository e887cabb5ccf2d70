#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTest>
#include <QWidget>

#include "screens/qt/break_key.h"

namespace zentrel::view {
namespace {

// A widget that counts what comes through to it.
class Listener : public QWidget {
  public:
    int keys = 0, clicks = 0;

  protected:
    void keyPressEvent(QKeyEvent*) override { ++keys; }
    void mousePressEvent(QMouseEvent*) override { ++clicks; }
};

void Post(QWidget& widget, QEvent::Type type, int key, Qt::KeyboardModifiers modifiers = {},
          bool repeated = false) {
    QApplication::postEvent(&widget, new QKeyEvent(type, key, modifiers, {}, repeated));
}

TEST(BreakKey, ctrl_break_is_seen_at_once_and_other_keys_go_nowhere) {
    Listener widget;
    BreakKey key;
    Post(widget, QEvent::KeyPress, Qt::Key_A);
    EXPECT_FALSE(key.Pressed());
    EXPECT_EQ(widget.keys, 0);
    Post(widget, QEvent::KeyPress, Qt::Key_Cancel, Qt::ControlModifier);
    EXPECT_TRUE(key.Pressed());
    Post(widget, QEvent::KeyPress, Qt::Key_Pause, Qt::ControlModifier);
    EXPECT_TRUE(key.Pressed());
    EXPECT_FALSE(key.Pressed());
    // Behind the script keys work again.
    QTest::keyPress(&widget, Qt::Key_A);
    EXPECT_EQ(widget.keys, 1);
}

TEST(BreakKey, esc_counts_when_it_is_held_and_doesnt_answer_the_question_it_raised) {
    struct Case {
        const char* system;
        bool repeats;
        bool flagged; // the repeats are told from real keys
    };
    for (const Case& test : {Case{"no repeat", false, false}, Case{"repeats, flagged", true, true},
                             Case{"repeats that look real", true, false}}) {
        SCOPED_TRACE(test.system);
        constexpr int kHold = 500;
        Listener widget;
        BreakKey key(kHold);
        // A tap doesn't count.
        Post(widget, QEvent::KeyPress, Qt::Key_Escape);
        Post(widget, QEvent::KeyRelease, Qt::Key_Escape);
        EXPECT_FALSE(key.Pressed());
        QTest::qSleep(BreakKey::kGapMs + 20);
        Post(widget, QEvent::KeyPress, Qt::Key_Escape);
        bool pressed = false;
        QElapsedTimer held;
        held.start();
        while (!pressed && held.elapsed() < 4 * kHold) {
            pressed = key.Pressed();
            QTest::qSleep(50);
            if (!test.repeats) continue;
            Post(widget, QEvent::KeyRelease, Qt::Key_Escape, {}, test.flagged);
            Post(widget, QEvent::KeyPress, Qt::Key_Escape, {}, test.flagged);
        }
        EXPECT_TRUE(pressed);
        EXPECT_GE(held.elapsed(), kHold);
        // Still down while the box is up, then let go.
        QApplication::processEvents();
        Post(widget, QEvent::KeyRelease, Qt::Key_Escape);
        QApplication::processEvents();
        EXPECT_EQ(widget.keys, 0);
        QTest::qSleep(BreakKey::kGapMs + 20);
        QTest::keyPress(&widget, Qt::Key_Escape);
        EXPECT_EQ(widget.keys, 1);
    }
}

} // namespace
} // namespace zentrel::view
