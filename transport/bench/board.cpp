#include "transport/bench/board.h"

#include <algorithm>
#include <utility>

#include "device/part.h"
#include "transport/addressed_register.h"

namespace zentrel {
namespace {

BitWord AddressBits(const cRegister& reg) {
    return reg.Mask() < 0 ? BitWord() : BitWord(static_cast<std::uint64_t>(reg.Mask()));
}

} // namespace

Board::Board(const cPart& device)
    : device_(device), now_([] { return std::chrono::system_clock::now(); }) {}

void Board::FollowDevice() {
    const Settings settings{device_.ClockPositionValue(), device_.DataPositionValue(),
                            device_.LEPositionValue(), device_.session().isUsb()};
    if (settings == settings_) return;
    settings_ = settings;
    clockPin_ = PinBit(device_.ClockPosition());
    dataPin_ = PinBit(device_.DataPosition());
    lePin_ = PinBit(device_.LEPosition());
}

void Board::Drive(PinLevels levels, BoardRoute route) {
    FollowDevice();
    const PinLevels before = std::exchange(levels_, levels);
    const PinLevels changed = before ^ levels;
    const bool latched = (before & lePin_) != 0;
    if ((changed & clockPin_) != 0) {
        const bool rising = (levels & clockPin_) != 0;
        if (latched) {
            if (rising && outBits_ > 0) readBackLine_ = out_.Test(--outBits_);
        } else if (rising != device_.InvertClock) {
            Shift((before & dataPin_) != 0);
        }
    }
    if ((changed & lePin_) == 0) return;
    if (latched) {
        outBits_ = 0;
        readBackLine_ = true;
    } else {
        Latch(route);
    }
}

void Board::Shift(bool high) {
    const int length = device_.RegisterLength();
    ++clocks_;
    if (length <= 64) {
        const std::uint64_t kept =
            length < 64 ? (std::uint64_t{1} << length) - 1 : ~std::uint64_t{0};
        shift_ = BitWord(((shift_.low() << 1) | (high ? 1U : 0U)) & kept);
        return;
    }
    shift_ = shift_.Shifted(1) & BitWord::Ones(length);
    shift_.Set(0, high);
}

void Board::Latch(BoardRoute route) {
    if (clocks_ == 0) return;
    if (deviceId_ != device_.ID) {
        deviceId_ = device_.ID;
        contents_.clear();
    }
    const cPrgmPin* trigger = device_.PrgmPins.Find("Trigger");
    LatchedWord latched;
    latched.serial = ++newest_;
    latched.time = now_();
    latched.route = route;
    latched.registerName = RegisterOf(shift_);
    latched.word = shift_;
    latched.clocks = std::exchange(clocks_, 0);
    latched.pins = levels_ & ~(clockPin_ | dataPin_ | lePin_);
    latched.trigger = trigger != nullptr && PinHigh(trigger->Position());
    if (!latched.registerName.empty()) contents_[latched.registerName] = latched.word;
    SelectReadBack(latched);
    if (history_.size() == kHistory) history_.pop_front();
    history_.push_back(std::move(latched));
}

std::string Board::RegisterOf(const BitWord& word) const {
    const int position = AddressedRegister(device_, word);
    return position == 0 ? std::string() : device_.Registers(position).ID();
}

void Board::SelectReadBack(const LatchedWord& latched) {
    outBits_ = 0;
    if (device_.ReadbackAddressRegister.empty()) return;
    const cPrgmBits* field = device_.PrgmBits.Find(device_.ReadbackAddressRegister);
    if (field == nullptr || latched.registerName.empty() ||
        !EqualNoCase(latched.registerName, device_.ReadbackAddressRegisterName)) {
        return;
    }
    const std::uint64_t address =
        FieldBits(latched.word, field->Position, field->Length, field->DataInverted);
    for (const cRegister& reg : device_.Registers) {
        const BitWord bits = reg.word() & AddressBits(reg);
        if (bits != BitWord(address)) continue;
        out_ = Content(reg.ID()).Shifted(-device_.ControlLength);
        outBits_ = std::max(0, device_.RegisterLength() - device_.ControlLength);
        return;
    }
}

LatchedWords Board::Since(std::uint64_t serial) const {
    const std::uint64_t missing = newest_ > serial ? newest_ - serial : 0;
    const auto count = std::min<std::uint64_t>(missing, history_.size());
    return {history_.end() - static_cast<std::ptrdiff_t>(count), history_.end()};
}

BitWord Board::Content(std::string_view registerName) const {
    const auto found = contents_.find(registerName);
    return found == contents_.end() ? BitWord() : found->second;
}

} // namespace zentrel
