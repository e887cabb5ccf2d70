#pragma once

#include <QElapsedTimer>
#include <QObject>

class QKeyEvent;

namespace zentrel::view {

/// The key that interrupts a running script: Ctrl+Break, or Esc held for two seconds. Looking for
/// it lets the window repaint and nothing else: keys, clicks and ticks of that time go nowhere.
class BreakKey : public QObject {
  public:
    /// Looks through what the user did since the last look.
    bool Pressed();

    static constexpr int kHoldMs = 2000;

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    bool LookAt(const QKeyEvent& key);

    bool looking_ = false;
    bool eaten_ = false; ///< The held Esc is still down: it mustn't answer the question.
    bool break_ = false;
    QElapsedTimer escape_; ///< Since Esc went down; not valid while it is up.
};

} // namespace zentrel::view
