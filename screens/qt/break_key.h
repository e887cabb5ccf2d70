#pragma once

#include <QElapsedTimer>
#include <QObject>

class QKeyEvent;

namespace zentrel::view {

/// The key that interrupts a running script: Ctrl+Break, or Esc held for two seconds. Looking for
/// it lets the window repaint and nothing else: keys, clicks and ticks of that time go nowhere.
class BreakKey : public QObject {
  public:
    static constexpr int kHoldMs = 2000;
    explicit BreakKey(int holdMs = kHoldMs) : holdMs_(holdMs) {}

    /// Looks through what the user did since the last look.
    bool Pressed();

    /// An Esc that comes again sooner was never let go: a key that repeats sends releases too, and
    /// not every system says which of them are real.
    static constexpr int kGapMs = 300;

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    bool LookAt(const QKeyEvent& key);
    bool IsDown() const;

    int holdMs_;
    bool looking_ = false;
    bool eaten_ = false; ///< The held Esc is still down: it mustn't answer the question.
    bool break_ = false;
    QElapsedTimer down_; ///< Since Esc went down.
    QElapsedTimer last_; ///< Since the last sign of it...
    bool press_ = false; ///< ...which was a press.
};

} // namespace zentrel::view
