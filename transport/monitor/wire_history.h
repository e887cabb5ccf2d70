#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "transport/monitor/wire_monitor.h"

namespace zentrel {

/// The last 100,000 records, for a list on the screen or a reader that comes by from time to time.
/// It follows its monitor only while it is told to.
class WireHistory final : private WireFollower {
  public:
    static constexpr std::size_t kLimit = 100000;

    explicit WireHistory(WireMonitor& monitor, std::size_t limit = kLimit)
        : monitor_(monitor), limit_(limit) {}
    ~WireHistory() override { Rest(); }
    WireHistory(const WireHistory&) = delete;
    WireHistory& operator=(const WireHistory&) = delete;

    void Follow();
    /// Takes no more; what it holds stays.
    void Rest();
    bool following() const { return following_; }

    // Records bear consecutive numbers in the order in which they came here, from 0 on; a number
    // never comes twice. A reader that has seen everything below `n` goes on from max(n, begin()).
    std::uint64_t begin() const { return begin_; }
    std::uint64_t end() const { return end_; }
    std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }
    /// The record `number`, which is one of begin() to end() - 1. Valid until the next one comes.
    const WireRecord& operator[](std::uint64_t number) const { return slots_[Slot(number)]; }
    bool Holds(std::uint64_t number) const { return number >= begin_ && number < end_; }

    /// Forgets them all, and gives their memory back.
    void Clear();

  private:
    void Recorded(const WireRecord& record) override;
    std::size_t Slot(std::uint64_t number) const {
        return static_cast<std::size_t>((number - base_) % limit_);
    }

    WireMonitor& monitor_;
    std::size_t limit_;
    std::vector<WireRecord> slots_;
    std::uint64_t base_ = 0, begin_ = 0, end_ = 0;
    bool following_ = false;
};

} // namespace zentrel
