#pragma once

#include <QTimer>

#include "screens/qt/hand.h"
#include "screens/timers.h"

namespace zentrel::view {

/// A timer of the session: runs while its element is enabled, at the element's interval.
class EventTimer : public QTimer {
  public:
    EventTimer(const Hand& hand, TickingTimer& element) : element_(element) {
        connect(this, &QTimer::timeout, this, [this, &hand] {
            hand.Tick([this] {
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
};

} // namespace zentrel::view
