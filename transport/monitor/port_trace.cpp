#include "transport/monitor/port_trace.h"

#include <algorithm>

namespace zentrel {
namespace {

// Control bits 0, 1 and 3 and status bit 7 pass an inverter.
constexpr unsigned kControlInverted = 0xB;
constexpr unsigned kStatusInverted = 0x80;
constexpr std::uint16_t kAllLines = 0xFFF;

} // namespace

void PortTrace::Wrote(std::uint16_t address, std::uint8_t value) {
    if (phase_ == Phase::Nothing) Open();
    const auto offset = static_cast<std::uint16_t>(address - address_);
    if (offset == 0) {
        const auto lines = static_cast<std::uint16_t>((lines_ & 0xF00) | value);
        if (StartsAnother(lines)) {
            Close();
            Open();
        }
        whole_ = false;
        Move(lines);
    } else if (offset == 2) {
        whole_ = true;
        Move(static_cast<std::uint16_t>((lines_ & 0xFF) |
                                        (((value ^ kControlInverted) & 0xF) << 8)));
        if (phase_ == Phase::Done) Close();
    }
}

// The data port's next byte belongs to the record that is open, or begins another.
bool PortTrace::StartsAnother(std::uint16_t lines) const {
    if (phase_ == Phase::Done) return true;
    if (phase_ != Phase::Resting || !whole_) return false;
    // The state that stood was the first of a word if this one gives the edge behind it.
    const bool rises = (static_cast<unsigned>(lines) & ~unsigned{lines_} & clock_) != 0;
    return !rises || inverted_;
}

void PortTrace::Read(std::uint16_t address, std::uint8_t value) {
    const std::int32_t input = maker_.map().source.input >> 16;
    if (phase_ != Phase::Latched || address != address_ + 1 || input == 0) return;
    readLine_ = ((value ^ kStatusInverted) & static_cast<unsigned>(input)) != 0;
    tape_.Step(Levels());
    record_.readBack = record_.readBack.Shifted(1);
    if (readLine_) record_.readBack.Set(0, true);
    ++record_.readBits;
}

void PortTrace::Settle() {
    if (phase_ == Phase::Nothing) return;
    if (phase_ == Phase::Shifting || phase_ == Phase::Latched) end_ = maker_.Now();
    Close();
}

void PortTrace::Forget() {
    phase_ = Phase::Nothing;
    known_ = false;
    lines_ = 0;
}

void PortTrace::Open() {
    maker_.Begin(record_, WireRoute::Lpt);
    const WireMap::Source& device = maker_.map().source;
    clock_ = static_cast<std::uint16_t>(device.clock);
    data_ = static_cast<std::uint16_t>(device.data);
    le_ = static_cast<std::uint16_t>(device.le);
    pinLines_ = static_cast<std::uint16_t>(kAllLines & ~(clock_ | data_ | le_));
    address_ = static_cast<std::uint16_t>(device.address);
    inverted_ = device.invertClock;
    length_ = device.length;
    kept_ = length_ >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << length_) - 1;
    phase_ = Phase::Resting;
    linesBefore_ = lines_;
    moved_ = 0;
    whole_ = false;
    readLine_ = true;
    shift_ = 0;
    wide_ = BitWord();
    end_ = record_.time;
    tape_.Start(Levels());
}

WireLevels PortTrace::Levels() const {
    WireLevels levels = lines_ & pinLines_;
    if ((lines_ & clock_) != 0) levels |= wire::kClock;
    if ((lines_ & data_) != 0) levels |= wire::kData;
    if ((lines_ & le_) != 0) levels |= wire::kLatch;
    if (readLine_) levels |= wire::kReadBack;
    return levels;
}

void PortTrace::Move(std::uint16_t lines) {
    const std::uint16_t before = lines_;
    const auto changed = static_cast<std::uint16_t>(before ^ lines);
    lines_ = lines;
    tape_.Step(Levels());
    if (changed == 0) return;
    moved_ |= changed;
    if ((changed & clock_) != 0 && (before & le_) == 0) {
        const bool rising = (lines & clock_) != 0;
        phase_ = Phase::Shifting;
        if (rising != inverted_) ShiftIn((before & data_) != 0);
    }
    if ((changed & le_) == 0) return;
    if ((lines & le_) == 0) {
        if (phase_ == Phase::Latched) {
            phase_ = Phase::Done;
            end_ = maker_.Now();
        }
    } else if (record_.clocks > 0) {
        record_.latched = true;
        phase_ = Phase::Latched;
    }
}

void PortTrace::ShiftIn(bool high) {
    ++record_.clocks;
    if (length_ <= 64) {
        shift_ = ((shift_ << 1) | (high ? 1U : 0U)) & kept_;
    } else {
        wide_ = wide_.Shifted(1) & BitWord::Ones(length_);
        wide_.Set(0, high);
    }
    // Lines on one another's pins never latch: the record ends somewhere all the same.
    if (tape_.size() <= kLongestTape) return;
    end_ = maker_.Now();
    phase_ = Phase::Done;
}

void PortTrace::Close() {
    phase_ = Phase::Nothing;
    record_.kind = record_.clocks > 0 ? WireKind::Word : WireKind::Pins;
    record_.word = length_ <= 64 ? BitWord(shift_) : wide_;
    const auto changed = static_cast<std::uint16_t>(linesBefore_ ^ lines_);
    record_.pins = static_cast<std::uint16_t>(lines_ & pinLines_);
    record_.changedPins = static_cast<std::uint16_t>(changed & pinLines_);
    record_.pulsedPins = static_cast<std::uint16_t>(moved_ & ~changed & pinLines_);
    if (!known_)
        record_.changedPins =
            static_cast<std::uint16_t>(maker_.map().Outputs() & ~record_.pulsedPins);
    const bool silent = known_ && record_.clocks == 0 && (moved_ & (pinLines_ | le_)) == 0;
    known_ = true;
    if (silent) return; // The same state once more, or data alone: nothing that a chip would see.
    record_.edges = tape_.Finish();
    maker_.Publish(record_, end_);
}

} // namespace zentrel
