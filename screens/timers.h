#pragma once

#include <functional>

#include "form/elements.h"
#include "screens/events.h"

namespace zentrel {

/// A timer of the window with what its tick does. The view counts the time.
struct TickingTimer : Timer {
    TickingTimer(bool enabled, int interval) : Timer{enabled, interval} {}
    std::function<void()> Tick;

    /// The time is up: the tick waits for whatever holds the thread, and ticks that come meanwhile
    /// are one with it.
    void Fire(Events& events) {
        if (!Enabled || waiting_) return;
        waiting_ = true;
        events.RunSoon([this] {
            waiting_ = false;
            if (Enabled && Tick) Tick();
        });
    }

  private:
    bool waiting_ = false;
};

/// The window's three timers as they stand at the start.
struct Timers {
    /// Sends the whole device again and again; the period comes from `txtAutoReload`.
    TickingTimer tmrAutoReload{false, 10000};
    /// Starts a burst run outside the click that asked for it; one shot.
    TickingTimer tmrStartBurst{false, 10};
    /// Stays off: the bridge reports itself.
    TickingTimer tmrUSBCheck{false, 1000};
};

} // namespace zentrel
