#include "screens/bits_flow.h"

#include <algorithm>
#include <cstdint>

namespace zentrel {
namespace {

// The design's distances, in twips.
constexpr int kFirstX = 60, kFirstY = 240; // of a frame's first row
constexpr int kFrameWidth = 2300, kFrameHeight = 800;
constexpr int kColumnGrowth = 2350;
constexpr int kGap = 60, kWideGap = 120;
constexpr int kBelowWindow = 1000; // what the window has around the tab's content
constexpr int kFrameGap = 120, kFrameColumnGap = 240, kFrameSpare = 240;
constexpr int kFirstFrameLeft = 120, kFirstFrameTop = 360;
constexpr int kSeveralColumns = 3000; // a wider frame counts as two columns
constexpr int kTwoColumns = 4700, kOneColumn = 2350;
constexpr int kFirstPinTop = 240;

using Kind = BitsFlow::Kind;

int ControlHeight(Kind kind, const BitsSizes& sizes) {
    switch (kind) {
    case Kind::Bit:
        return sizes.checkBoxHeight;
    case Kind::Counter:
        return sizes.boxHeight;
    case Kind::List:
        return sizes.listHeight;
    }
    return 0;
}

// Where a row's test of fitting ends when the row begins at `y`.
int EndOfTest(Kind kind, int y, const BitsSizes& sizes) {
    const int control = ControlHeight(kind, sizes);
    if (kind == Kind::Bit) return y + kGap + control + kGap;
    return y + kWideGap + sizes.labelHeight + kGap + control + kWideGap;
}

} // namespace

std::string BitsFlow::Frame::Tag() const {
    // A frame of hundreds of fields is wider than the 15 bits that the tag has for X.
    return std::to_string(std::int64_t{65536} * x + y);
}

BitsFlow::BitsFlow(const BitsSizes& sizes) : sizes_(sizes) {
    frames_.push_back({std::string(kNoGroup), kFirstFrameLeft, kFirstFrameTop, kFrameWidth,
                       kFrameHeight, kFirstX, kFirstY});
    pins_ = {kFirstFrameLeft + kFrameWidth + kFrameGap, kFirstFrameTop, kFrameWidth, kFrameHeight};
}

int BitsFlow::FrameFor(std::string_view group) {
    if (group.empty()) return 0;
    if (group != frames_.back().caption) {
        if (frames_.front().caption == kNoGroup) {
            frames_.front().caption = group;
            return 0;
        }
        const Frame& last = frames_.back();
        frames_.push_back(
            {std::string(group), last.left, last.top, kFrameWidth, kFrameHeight, kFirstX, kFirstY});
    }
    return static_cast<int>(frames_.size()) - 1;
}

BitsFlow::Place BitsFlow::Add(Kind kind, std::string_view group) {
    const int number = FrameFor(group);
    Frame& frame = frames_[static_cast<std::size_t>(number)];
    if (EndOfTest(kind, frame.y, sizes_) >= sizes_.windowHeight - kBelowWindow) {
        frame.x += kColumnWidth;
        frame.y = kFirstY;
        frame.width += kColumnGrowth;
    }
    Place place;
    place.frame = number;
    place.box = {frame.x, frame.y};
    if (kind != Kind::Bit) {
        place.label = {frame.x + kGap, frame.y};
        place.box.top = frame.y + sizes_.labelHeight + kGap;
        place.spinner = {frame.x + sizes_.boxWidth, place.box.top};
    }
    frame.y = place.box.top + ControlHeight(kind, sizes_) + (kind == Kind::Bit ? kGap : kWideGap);
    frame.height = std::max(frame.height, frame.y);

    FlowLastFrame();
    PlacePins();
    return place;
}

void BitsFlow::FlowLastFrame() {
    if (frames_.size() < 2) return;
    Frame& last = frames_.back();
    const Frame& before = frames_[frames_.size() - 2];
    if (last.left != before.left) return;
    if (before.top + before.height + last.height + kFrameSpare <=
        sizes_.windowHeight - kBelowWindow) {
        last.top = before.top + before.height + kFrameGap;
        last.left = before.left;
    } else {
        last.top = frames_.front().top;
        last.left = before.left + before.width + kFrameColumnGap;
    }
}

void BitsFlow::PlacePins() {
    const Frame& last = frames_.back();
    const int right =
        last.left + (last.width > kSeveralColumns ? kTwoColumns : kOneColumn) - kFrameGap;
    if (pins_.left < right) pins_.left = right + kFrameGap;
    const int limit = pins_.left + pins_.width + kFrameGap;
    if (sizes_.tabWidth < limit) overflow_ = limit - sizes_.tabWidth;
}

int BitsFlow::AddPin() {
    lastPinTop_ = pinCount_ == 0 ? kFirstPinTop : lastPinTop_ + sizes_.pinHeight + kGap;
    if (pinCount_ > 0) pins_.height = lastPinTop_ + sizes_.pinHeight + kWideGap;
    ++pinCount_;
    return lastPinTop_;
}

} // namespace zentrel
