#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "transport/monitor/wire_record.h"

namespace zentrel {

/// What both routes' traces need around a record: its time, the device that it belongs to, the
/// word before it, and who hears of it.
class RecordMaker {
  public:
    explicit RecordMaker(const cPart& part);

    /// Starts a record: empties it, stamps it, and looks whether the device is still the same.
    void Begin(WireRecord& record, WireRoute route);
    using Moment = std::chrono::system_clock::time_point;
    Moment Now() const { return now_ ? now_() : std::chrono::system_clock::now(); }
    /// The record is complete, and was at `end`: names its register and passes it on.
    void Publish(WireRecord& record, Moment end);

    /// The device as the last record found it.
    const WireMap& map() const { return *map_; }

    void Add(WireFollower& follower) { followers_.push_back(&follower); }
    void Remove(WireFollower& follower) { std::erase(followers_, &follower); }
    bool followed() const { return !followers_.empty(); }

    void SetClock(std::function<Moment()> now) { now_ = std::move(now); }

  private:
    void FollowDevice();
    void NameRegister(WireRecord& record);

    const cPart& part_;
    std::shared_ptr<const WireMap> map_;
    std::vector<std::optional<BitWord>> latest_; // of each register, what was latched last
    std::vector<WireFollower*> followers_;
    std::uint64_t serial_ = 0;
    std::function<Moment()> now_;
};

} // namespace zentrel
