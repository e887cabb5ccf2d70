#pragma once

#include <functional>
#include <utility>

namespace zentrel {

/// The one door by which the window's clicks, keys and ticks reach the models. Whoever stands at
/// the door catches what an event throws, tells the user, and leaves the model whole.
class Events {
  public:
    virtual ~Events() = default;
    /// Runs one event to its end; false when it failed. An event inside another, such as a list
    /// that a program selects, runs within it.
    virtual bool Run(const std::function<void()>& event) = 0;
    /// Runs a call from outside, or what must not meet a burst: at once, or as soon as no event,
    /// message box or load holds the thread.
    virtual void RunWhenIdle(std::function<void()> event) = 0;
    /// Runs a timer's tick: the same, but the pauses of a burst serve it too.
    virtual void RunSoon(std::function<void()> event) { RunWhenIdle(std::move(event)); }
};

} // namespace zentrel
