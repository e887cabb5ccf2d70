#include "session/event_guard.h"

#include <exception>
#include <string>
#include <utility>

#include "device/part.h"

namespace zentrel {
namespace {

// However a scope ends, what comes later has its turn.
class FlagScope {
  public:
    explicit FlagScope(bool& flag) : flag_(flag) { flag_ = true; }
    ~FlagScope() { flag_ = false; }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;

  private:
    bool& flag_;
};

} // namespace

EventGuard::Stay::Stay(EventGuard& guard)
    : guard_(guard), before_{guard.part_.Updating, guard.part_.session().bDisplayUpdating,
                             guard.part_.readback_mode} {
    ++guard_.depth_;
}

EventGuard::Stay::~Stay() {
    --guard_.depth_;
}

void EventGuard::Stay::PutFlagsBack() const {
    guard_.part_.Updating = before_.updating;
    guard_.part_.session().bDisplayUpdating = before_.displayUpdating;
    guard_.part_.readback_mode = before_.readback;
}

bool EventGuard::Run(const std::function<void()>& event) {
    bool done = false;
    {
        const Stay stay(*this);
        std::string failure;
        try {
            event();
            done = true;
        } catch (const std::exception& error) {
            failure = error.what();
        } catch (...) {
            failure = "Something failed that has no name";
        }
        if (!done) {
            stay.PutFlagsBack();
            part_.upward().messages->Show(failure, {}, MessageIcon::Exclamation);
        }
    }
    EndEvent(AfterEvent);
    return done;
}

void EventGuard::RunCall(const std::function<void()>& call) {
    std::exception_ptr failure;
    {
        const Stay stay(*this);
        try {
            call();
        } catch (...) {
            stay.PutFlagsBack();
            failure = std::current_exception();
        }
    }
    EndEvent(AfterCall ? AfterCall : AfterEvent);
    if (failure) std::rethrow_exception(failure);
}

void EventGuard::RunWhenIdle(std::function<void()> event) {
    if (busy()) {
        waiting_.push_back(std::move(event));
    } else {
        Run(event);
    }
}

void EventGuard::RunSoon(std::function<void()> event) {
    if (busy()) {
        ticks_.push_back(std::move(event));
    } else {
        Run(event);
    }
}

void EventGuard::ServePause() {
    // What these ticks ask for in turn waits for the next pause.
    for (const auto& tick : std::exchange(ticks_, {}))
        Run(tick);
}

void EventGuard::EndEvent(const std::function<void()>& follow) {
    if (busy()) return;
    if (follow) follow();
    if (serving_) return;
    const FlagScope serving(serving_);
    while (!ticks_.empty() || !waiting_.empty()) {
        auto& queue = ticks_.empty() ? waiting_ : ticks_;
        const auto event = std::move(queue.front());
        queue.pop_front();
        Run(event);
    }
}

} // namespace zentrel
