#include "transport/monitor/wire_history.h"

namespace zentrel {

void WireHistory::Follow() {
    if (following_) return;
    following_ = true;
    monitor_.Add(*this);
}

void WireHistory::Rest() {
    if (!following_) return;
    monitor_.Remove(*this);
    following_ = false;
}

void WireHistory::Clear() {
    std::vector<WireRecord>().swap(slots_);
    base_ = begin_ = end_;
}

void WireHistory::Recorded(const WireRecord& record) {
    if (size() == limit_) ++begin_;
    // Assigned over the oldest, whose buffers take it in without an allocation.
    if (slots_.size() < limit_) {
        slots_.push_back(record);
    } else {
        slots_[Slot(end_)] = record;
    }
    ++end_;
}

} // namespace zentrel
