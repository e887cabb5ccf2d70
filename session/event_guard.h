#pragma once

#include <cstdint>
#include <deque>
#include <functional>

#include "screens/events.h"

namespace zentrel {

class cPart;

/// Where events end. Catches what a handler throws, puts `Updating`, `bDisplayUpdating` and
/// `readback_mode` back to what they were, and tells the user once, in one message.
class EventGuard : public Events {
  public:
    explicit EventGuard(cPart& part) : part_(part) {}

    bool Run(const std::function<void()>& event) override;
    void RunWhenIdle(std::function<void()> event) override;
    void RunSoon(std::function<void()> event) override;
    /// Between two passes of a burst: runs the ticks that came meanwhile.
    void ServePause();

    /// Runs a call of an outside program: flags and waiting are the same, but a failure goes back
    /// to the caller.
    void RunCall(const std::function<void()>& call);

    /// Whether an event, a message box or a load holds the thread.
    bool busy() const { return depth_ > 0; }

    /// Runs after each outermost event, failed ones included: the window brings itself in line.
    std::function<void()> AfterEvent;
    /// The same after a call of an outside program, of which there may be thousands in a row;
    /// AfterEvent when it isn't set.
    std::function<void()> AfterCall;

  private:
    struct Flags {
        bool updating;
        std::int16_t displayUpdating;
        bool readback;
    };
    // One event's stay inside the guard.
    class Stay {
      public:
        explicit Stay(EventGuard& guard);
        ~Stay();
        Stay(const Stay&) = delete;
        Stay& operator=(const Stay&) = delete;
        void PutFlagsBack() const;

      private:
        EventGuard& guard_;
        Flags before_;
    };

    /// The outermost event is over: the window follows, and what waited has its turn.
    void EndEvent(const std::function<void()>& follow);

    cPart& part_;
    int depth_ = 0;
    bool serving_ = false;
    std::deque<std::function<void()>> ticks_;
    std::deque<std::function<void()>> waiting_; // for the thread to be idle
};

} // namespace zentrel
