#pragma once

#include <utility>

#include <QTimer>

#include "screens/qt/hand.h"
#include "screens/timers.h"

namespace zentrel::view {

/// A timer of the session: runs while its element is enabled, at the element's interval.
class EventTimer : public QTimer {
  public:
    EventTimer(const Hand& hand, TickingTimer& element) : element_(element) {
        connect(this, &QTimer::timeout, this, [this, &hand] {
            // One tick waits at most, however long the thread is held.
            if (std::exchange(waiting_, true)) return;
            hand.Tick([this] {
                waiting_ = false;
                if (element_.Enabled && element_.Tick) element_.Tick();
            });
        });
    }

    /// Starts, stops or changes the interval when the element says so.
    void Sync() {
        const bool run = element_.Enabled && element_.Interval > 0;
        if (!run) {
            if (isActive()) stop();
        } else if (!isActive() || interval() != element_.Interval) {
            start(element_.Interval);
        }
    }

  private:
    TickingTimer& element_;
    bool waiting_ = false;
};

} // namespace zentrel::view
