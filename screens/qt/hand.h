#pragma once

#include <cstddef>
#include <functional>
#include <utility>

#include "form/elements.h"
#include "screens/events.h"

namespace zentrel::view {

/// The engineer's hand: every action of the view goes through here, to the one door of the models.
/// Whoever stands at that door brings the window in line behind each event.
class Hand {
  public:
    using Action = std::function<void()>;

    explicit Hand(Events& events) : events_(events) {}

    /// Runs one event. What a widget does while the view itself is at work isn't the engineer's.
    void Do(const Action& action) const {
        if (busy_ == 0 && action) events_.Run(action);
    }

    /// Runs a timer's tick, when nothing but a burst holds the thread.
    void Tick(Action action) const { events_.RunSoon(std::move(action)); }

    /// Whether the view is bringing its widgets in line.
    bool busy() const { return busy_ > 0; }

    /// Held while the view writes into its widgets.
    class Busy {
      public:
        explicit Busy(const Hand& hand) : hand_(hand) { ++hand_.busy_; }
        ~Busy() { --hand_.busy_; }
        Busy(const Busy&) = delete;
        Busy& operator=(const Busy&) = delete;

      private:
        const Hand& hand_;
    };

  private:
    Events& events_;
    mutable int busy_ = 0;
};

/// Names one element: a place of its own, or an index of an array that may shrink behind our back.
template<typename T>
class ElementRef {
  public:
    ElementRef() = default;
    ElementRef(T& single) : single_(&single) {}
    ElementRef(ElementArray<T>& array, std::size_t index) : array_(&array), index_(index) {}

    /// The element, or nothing when a device change has taken it away.
    T* get() const {
        if (!array_) return single_;
        return index_ < array_->size() ? &(*array_)[index_] : nullptr;
    }

  private:
    T* single_ = nullptr;
    ElementArray<T>* array_ = nullptr;
    std::size_t index_ = 0;
};

} // namespace zentrel::view
