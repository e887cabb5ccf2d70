#pragma once

#include <functional>

#include "form/elements.h"

namespace zentrel {

/// A timer of the window with what its tick does. The view counts the time; a tick enters like
/// any other event.
struct TickingTimer : Timer {
    TickingTimer(bool enabled, int interval) : Timer{enabled, interval} {}
    std::function<void()> Tick;
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
