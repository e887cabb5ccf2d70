#pragma once

#include <functional>

namespace zentrel {

/// The one door by which the window's clicks, keys and ticks reach the models. Whoever stands at
/// the door catches what an event throws, tells the user, and leaves the model whole.
class Events {
  public:
    virtual ~Events() = default;
    /// Runs one event to its end; false when it failed. An event inside another, such as a list
    /// that a program selects, runs within it.
    virtual bool Run(const std::function<void()>& event) = 0;
    /// Runs a timer's tick or a call from outside: at once, or as soon as no event, message box
    /// or load holds the thread.
    virtual void RunWhenIdle(std::function<void()> event) = 0;
};

} // namespace zentrel
