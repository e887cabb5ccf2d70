#include "automation/dbus/wire_feed.h"

#include "automation/dbus/reception.h"
#include "screens/qt/model_text.h"

namespace zentrel {
namespace dbus {
namespace {

constexpr int kBatchEvery = 50; // milliseconds

} // namespace

WireFeed::WireFeed(const Reception& reception) : reception_(reception) {
    batch_.setInterval(kBatchEvery);
    batch_.callOnTimeout([this] { SendBatch(); });
}

void WireFeed::Follow() {
    followers_.insert(reception_.caller);
    if (batch_.isActive()) return;
    batch_.start();
    if (Followed) Followed(true);
}

void WireFeed::Unfollow() {
    SendBatch();
    Leave(reception_.caller);
}

void WireFeed::Leave(const std::string& caller) {
    if (followers_.erase(caller) > 0 && !followed()) Forget();
}

void WireFeed::Forget() {
    followers_.clear();
    if (!batch_.isActive()) return;
    batch_.stop();
    lines_.clear();
    leftOut_ = 0;
    if (Followed) Followed(false);
}

void WireFeed::Take(const std::function<std::string()>& line) {
    if (lines_.size() < kBatch) {
        lines_ << view::FromModel(line());
    } else {
        ++leftOut_;
    }
}

void WireFeed::SendBatch() {
    if (BeforeBatch) BeforeBatch();
    if (lines_.isEmpty()) return;
    for (const std::string& follower : followers_)
        if (Send) Send(follower, lines_, leftOut_);
    lines_.clear();
    leftOut_ = 0;
}

} // namespace dbus

namespace objects {

template<>
const ClassTable* ClassOf<dbus::WireFeed>() {
    static const ClassTable table("Wire", {Routine<&dbus::WireFeed::Follow>("Follow"),
                                           Routine<&dbus::WireFeed::Unfollow>("Unfollow")});
    return &table;
}

} // namespace objects
} // namespace zentrel
