#include "transport/monitor/record_maker.h"

#include <algorithm>

#include "device/part.h"
#include "transport/addressed_register.h"

namespace zentrel {

RecordMaker::RecordMaker(const cPart& part) : part_(part), map_(WireMap::Of(part)) {}

void RecordMaker::FollowDevice() {
    const WireMap::Source source = WireMap::SourceOf(part_);
    if (source == map_->source) return;
    if (source.device != map_->source.device) latest_.clear();
    map_ = WireMap::Of(part_);
}

void RecordMaker::Begin(WireRecord& record, WireRoute route) {
    FollowDevice();
    // Emptied in place: its buffers are used again.
    std::vector<std::uint8_t> edges = std::move(record.edges);
    std::vector<std::uint8_t> packets = std::move(record.packets);
    record = WireRecord();
    record.edges = std::move(edges);
    record.packets = std::move(packets);
    record.edges.clear();
    record.packets.clear();
    record.route = route;
    record.map = map_;
    record.time = Now();
}

void RecordMaker::Publish(WireRecord& record, Moment end) {
    using std::chrono::nanoseconds;
    // The system's clock may be set back in between.
    record.length =
        std::max(nanoseconds(0), std::chrono::duration_cast<nanoseconds>(end - record.time));
    record.serial = ++serial_;
    if (record.kind == WireKind::Word) NameRegister(record);
    for (WireFollower* follower : followers_)
        follower->Recorded(record);
}

void RecordMaker::NameRegister(WireRecord& record) {
    record.reg = AddressedRegister(part_, record.word);
    if (record.reg == 0) return;
    const auto index = static_cast<std::size_t>(record.reg - 1);
    if (latest_.size() <= index) latest_.resize(index + 1);
    std::optional<BitWord>& latest = latest_[index];
    if (latest) {
        record.hasBefore = true;
        record.before = *latest;
    }
    if (record.latched) latest = record.word;
}

} // namespace zentrel
