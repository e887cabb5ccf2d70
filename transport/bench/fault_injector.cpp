#include "transport/bench/fault_injector.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zentrel {
namespace {
constexpr double kScale = 4294967296.0; // the random numbers' upper 32 bits
constexpr std::uint8_t kNothingThere = 0xFF;
constexpr int kMostGarbage = 12;
constexpr std::int16_t kOneReceive = 256;
} // namespace

FaultInjector::FaultInjector(std::uint64_t seed, double rate)
    : random_(seed), threshold_(static_cast<std::uint64_t>(std::clamp(rate, 0.0, 1.0) * kScale)) {}

bool FaultInjector::Strikes() {
    const bool strikes = (random_() >> 32) < threshold_;
    if (strikes) ++strikes_;
    return strikes;
}

int FaultInjector::Pick(int count) {
    return static_cast<int>(random_() % static_cast<std::uint64_t>(std::max(count, 1)));
}

std::int16_t FaultyPort::OpenTVicPort() {
    if (faults_.Strikes()) return kOpenFailed;
    gone_ = false;
    return below_.OpenTVicPort();
}

bool FaultyPort::Gone() {
    gone_ = gone_ || faults_.Strikes();
    return gone_;
}

void FaultyPort::WritePort(std::uint16_t address, std::uint8_t value) {
    if (!Gone()) below_.WritePort(address, value);
}

std::uint8_t FaultyPort::ReadPort(std::uint16_t address) {
    return Gone() ? kNothingThere : below_.ReadPort(address);
}

std::int16_t FaultyBridge::InitUSBInterface() {
    pending_.clear();
    const std::int16_t result = below_.InitUSBInterface();
    error_ = 0;
    if (faults_.Strikes()) Fail();
    return result;
}

std::int16_t FaultyBridge::usbSendCmdData(const std::uint8_t* packet, std::int16_t length) {
    if (usbGetError() != 0) return 0;
    if (!faults_.Strikes()) return below_.usbSendCmdData(packet, length);
    switch (faults_.Pick(3)) {
    case 0: // pulled before the first byte
        return Fail();
    case 1: // out in part, and the library doesn't notice
        return below_.usbSendCmdData(packet, static_cast<std::int16_t>(faults_.Pick(length)));
    default: // pulled right after the last byte: carried out, and nobody will say so
        return Fail(below_.usbSendCmdData(packet, length));
    }
}

std::int16_t FaultyBridge::Deliver(std::uint8_t* buffer, std::int16_t max) {
    const auto count = std::min(pending_.size(), static_cast<std::size_t>(std::max<int>(max, 0)));
    std::copy_n(pending_.begin(), count, buffer);
    pending_.erase(pending_.begin(), pending_.begin() + static_cast<std::ptrdiff_t>(count));
    return static_cast<std::int16_t>(count);
}

std::int16_t FaultyBridge::usbReceiveCmdData(std::uint8_t* buffer, std::int16_t max) {
    if (usbGetError() != 0) return 0;
    if (pending_.empty()) {
        std::array<std::uint8_t, kOneReceive> bytes{};
        const auto count = below_.usbReceiveCmdData(bytes.data(), std::min(max, kOneReceive));
        pending_.assign(bytes.begin(), bytes.begin() + count);
    }
    if (!faults_.Strikes()) return Deliver(buffer, max);
    const auto some = static_cast<std::int16_t>(faults_.Pick(static_cast<int>(pending_.size())));
    switch (faults_.Pick(4)) {
    case 0: // later than the library waits
        return Fail();
    case 1: // in two pieces, neither of them empty: that would be a time-out
        return Deliver(buffer, std::clamp(some, std::int16_t{1}, max));
    case 2: // pulled in the middle of the reply
        return Fail(Deliver(buffer, std::min(some, max)));
    default: {
        const auto count =
            std::min<std::int16_t>(static_cast<std::int16_t>(1 + faults_.Pick(kMostGarbage)), max);
        std::generate_n(buffer, count,
                        [&] { return static_cast<std::uint8_t>(faults_.Pick(256)); });
        return Fail(count);
    }
    }
}

} // namespace zentrel
