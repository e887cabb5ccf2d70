#include "transport/bench/simulated_port.h"

#include <array>

#include "device/part.h"
#include "device/pin_numbers.h"
#include "transport/lpt_route.h"

namespace zentrel {
namespace {

// Control bits 0, 1 and 3 and status bit 7 pass an inverter on their way.
constexpr std::uint8_t kControlInverted = 0xB;
constexpr std::uint8_t kStatusInverted = 0x80;
constexpr std::uint8_t kStatusLines = 0xF8;
constexpr std::uint8_t kEmptyAddress = 0xFF;

// The header pins behind a byte of port lines, the lowest of which has the mask `1 << first`.
template<std::size_t Count>
std::array<PinLevels, Count> PinsBehind(int first) {
    std::array<PinLevels, Count> pins{};
    for (std::size_t byte = 0; byte < Count; ++byte) {
        for (int bit = 0; bit < 8; ++bit) {
            if (((byte >> bit) & 1U) != 0) {
                pins[byte] |= PinBit(LptPortValueToPin(std::int32_t{1} << (first + bit)));
            }
        }
    }
    return pins;
}

PinLevels HeaderLevels(std::uint8_t data, std::uint8_t control) {
    static const auto dataPins = PinsBehind<256>(0);
    static const auto controlPins = PinsBehind<16>(8);
    return dataPins[data] | controlPins[(control ^ kControlInverted) & 0xFU];
}

} // namespace

std::int16_t SimulatedPort::OpenTVicPort() {
    if (!usable_) return kOpenFailed;
    opened_ = true;
    return 1;
}

void SimulatedPort::SetUsable(bool value) {
    usable_ = value;
    if (!value) opened_ = false;
}

std::uint16_t SimulatedPort::Base() const {
    return base_.value_or(DataPort(board_.device()));
}

bool SimulatedPort::CableHolds() {
    if (pullAfter_ && (*pullAfter_)-- <= 0) {
        cable_ = false;
        pullAfter_.reset();
    }
    return cable_;
}

void SimulatedPort::WritePort(std::uint16_t address, std::uint8_t value) {
    if (!opened_) return;
    const auto offset = static_cast<std::uint16_t>(address - Base());
    if (offset == 0) {
        data_ = value;
    } else if (offset == 2) {
        control_ = value;
    } else {
        return;
    }
    if (CableHolds()) board_.Drive(HeaderLevels(data_, control_), BoardRoute::Lpt);
}

std::uint8_t SimulatedPort::ReadPort(std::uint16_t address) {
    if (!opened_) return kEmptyAddress;
    const auto offset = static_cast<std::uint16_t>(address - Base());
    if (offset == 0) return data_;
    if (offset == 1) return Status();
    return offset == 2 ? control_ : kEmptyAddress;
}

std::uint8_t SimulatedPort::Status() const {
    std::uint8_t lines = kStatusLines; // unconnected inputs are pulled up
    const std::int32_t location = board_.device().InputPinPositionINI;
    if (cable_ && location >= 0 && !board_.readBackLine()) {
        const std::int32_t mask = LptPinToPortValue(CutComposite(kRouteLpt, location));
        lines = static_cast<std::uint8_t>(lines & ~(mask >> 16));
    }
    return lines ^ kStatusInverted;
}

} // namespace zentrel
