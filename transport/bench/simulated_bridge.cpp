#include "transport/bench/simulated_bridge.h"

#include <algorithm>
#include <utility>

#include "device/part.h"
#include "device/pin_numbers.h"

namespace zentrel {
namespace {

// The header pins behind the bridge's two output ports, port 1 in the upper byte.
PinLevels HeaderLevels(std::uint32_t lines) {
    static const auto pins = [] {
        std::array<PinLevels, 16> table{};
        for (std::size_t bit = 0; bit < table.size(); ++bit)
            table[bit] = PinBit(UsbPortValueToPin(std::int32_t{1} << bit));
        return table;
    }();
    PinLevels levels = 0;
    for (std::size_t bit = 0; bit < pins.size(); ++bit) {
        if (((lines >> bit) & 1U) != 0) levels |= pins[bit];
    }
    return levels;
}

} // namespace

std::int16_t SimulatedBridge::InitUSBInterface() {
    replies_.clear();
    heldBack_.clear();
    error_ = plugged_ ? std::int16_t{0} : kNotAttached;
    return error_;
}

void SimulatedBridge::SetPlugged(bool value) {
    if (value == plugged_) return;
    plugged_ = value;
    if (!plugged_) Pull();
}

void SimulatedBridge::Pull() {
    plugged_ = false;
    state_ = {};
    replies_.clear();
    heldBack_.clear();
    if (error_ == 0) error_ = kNotAttached;
}

std::int16_t SimulatedBridge::usbSendCmdData(const std::uint8_t* packet, std::int16_t length) {
    if (error_ != 0 || length < 0) return 0;
    if (faults.unplugAfter && (*faults.unplugAfter)-- <= 0) {
        faults.unplugAfter.reset();
        Pull();
        return static_cast<std::int16_t>(length / 2);
    }
    const int count = std::min<int>(length, faults.shortSend.value_or(length));
    if (!faults.deaf) Answer({packet, static_cast<std::size_t>(count)});
    return static_cast<std::int16_t>(count);
}

std::int16_t SimulatedBridge::usbReceiveCmdData(std::uint8_t* buffer, std::int16_t max) {
    if (error_ != 0) return 0;
    auto count = std::min(replies_.size(), static_cast<std::size_t>(std::max<int>(max, 0)));
    if (faults.split > 0) count = std::min(count, static_cast<std::size_t>(faults.split));
    const auto end = replies_.begin() + static_cast<std::ptrdiff_t>(count);
    std::copy(replies_.begin(), end, buffer);
    replies_.erase(replies_.begin(), end);
    if (count == 0 && heldBack_.empty()) error_ = kTimeOut;
    return static_cast<std::int16_t>(count);
}

void SimulatedBridge::Answer(Packet command) {
    // Half a packet starts nothing: the firmware waits for the rest and drops it with the next one.
    if (command.size() < 2 || command[0] != command.size()) return;
    const std::uint8_t opcode = command[1];
    std::vector<std::uint8_t> data;
    const std::uint8_t code =
        faults.refused.contains(opcode) ? faults.refusal : Run(command, data, false);

    std::vector<std::uint8_t> reply{0, usb::kAcknowledged, opcode};
    if (code != 0) {
        reply[1] = usb::kRefused;
        reply.push_back(code);
    } else {
        reply[2] = faults.wrongOpcode.value_or(opcode);
        reply.insert(reply.end(), data.begin(), data.end());
    }
    reply[0] = static_cast<std::uint8_t>(reply.size());
    if (faults.raw) reply = *faults.raw;
    if (!faults.silent) Queue(std::move(reply));
}

void SimulatedBridge::Queue(std::vector<std::uint8_t> reply) {
    if (faults.join && heldBack_.empty()) {
        heldBack_ = std::move(reply);
        return;
    }
    replies_.insert(replies_.end(), heldBack_.begin(), heldBack_.end());
    replies_.insert(replies_.end(), reply.begin(), reply.end());
    heldBack_.clear();
}

void SimulatedBridge::Drive(bool clock, bool data, bool latch, bool trigger) {
    auto lines = static_cast<std::uint32_t>(state_.port0 | (state_.port1 << 8));
    const auto put = [&](std::uint32_t mask, bool high) {
        lines = high ? lines | mask : lines & ~mask;
    };
    put(state_.clock, clock);
    put(state_.data, data);
    put(state_.le, latch);
    // The trigger pin is an ordinary output unless its function is on.
    const std::uint32_t pin = std::uint32_t{state_.triggerMask} << (8 * (state_.triggerPort & 1));
    if (state_.triggerActive) put(pin, trigger);
    const std::uint32_t inputs = state_.inputs0 | (std::uint32_t{state_.inputs1} << 8);
    board_.Drive(HeaderLevels(lines & ~inputs), BoardRoute::Usb);
}

// The firmware shifts with the data held over the whole clock pulse, so that a chip of either clock
// phase takes it.
void SimulatedBridge::ShiftOut(Packet bytes) {
    const int count = state_.controlBits + state_.dataBits;
    for (int bit = count - 1; bit >= 0; --bit) {
        const auto fromEnd = static_cast<std::size_t>(bit / 8);
        const bool high =
            fromEnd < bytes.size() && ((bytes[bytes.size() - 1 - fromEnd] >> (bit % 8)) & 1) != 0;
        Drive(false, high, false, false);
        Drive(true, high, false, false);
        Drive(false, high, false, false);
    }
    Drive(false, false, false, false);
    Drive(false, false, true, true);
}

bool SimulatedBridge::InputHigh() const {
    const std::int32_t location = board_.device().InputPinPositionINI;
    if (location < 0) return true;
    const auto wired = PinCLHeader2USBLogicalPosition(CutComposite(kRouteUsb, location));
    if (!wired || (state_.input & *wired) == 0) return true;
    return board_.readBackLine();
}

} // namespace zentrel
