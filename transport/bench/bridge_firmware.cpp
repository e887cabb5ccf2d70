#include <algorithm>
#include <string_view>

#include "device/pin_numbers.h"
#include "transport/bench/simulated_bridge.h"

namespace zentrel {
namespace {

constexpr std::string_view kVersionText = "Zentrel bench bridge 1.0";

} // namespace

/// The commands that the firmware knows. `length` is the packet's length; 0 lets it vary.
struct FirmwareTable {
    using Packet = SimulatedBridge::Packet;
    using Action = std::uint8_t (SimulatedBridge::*)(Packet, std::vector<std::uint8_t>&);

    struct Command {
        std::uint8_t opcode;
        std::size_t length;
        bool direct; // may stand alone
        bool inside; // may stand in a buffer
        Action action;
    };

    static constexpr Command kCommands[] = {
        {usb::kAddCmd, 0, true, false, &SimulatedBridge::AddCmd},
        {usb::kSetWord, 4, false, true, &SimulatedBridge::SetWord},
        {usb::kExecuteBuffer, 3, true, false, &SimulatedBridge::ExecuteBuffer},
        {usb::kClearBuffer, 3, true, false, &SimulatedBridge::ClearBuffer},
        {usb::kVersion, 2, true, false, &SimulatedBridge::Version},
        {usb::kConfigPins, 10, true, false, &SimulatedBridge::ConfigPins},
        {usb::kConfigFormat, 4, true, false, &SimulatedBridge::ConfigFormat},
        {usb::kSendWord, 0, true, true, &SimulatedBridge::SendWord},
        {usb::kReadBack, 0, true, false, &SimulatedBridge::ReadBack},
        {usb::kSpiDelay, 3, true, false, &SimulatedBridge::SpiDelay},
        {usb::kTriggerPin, 4, true, false, &SimulatedBridge::TriggerPin},
        {usb::kTriggerActive, 3, true, true, &SimulatedBridge::TriggerActive},
        {usb::kBurstMode, 3, true, false, &SimulatedBridge::BurstMode},
    };

    static const Command* Find(std::uint8_t opcode, bool inside) {
        for (const Command& command : kCommands) {
            if (command.opcode == opcode) {
                return (inside ? command.inside : command.direct) ? &command : nullptr;
            }
        }
        return nullptr;
    }
};

std::uint8_t SimulatedBridge::Run(Packet command, std::vector<std::uint8_t>& data, bool inside) {
    const FirmwareTable::Command* known = FirmwareTable::Find(command[1], inside);
    if (known == nullptr) return kUnknownCommand;
    if (known->length != 0 && known->length != command.size()) return kWrongLength;
    return (this->*known->action)(command, data);
}

std::uint8_t SimulatedBridge::AddCmd(Packet command, std::vector<std::uint8_t>& /*data*/) {
    if (command.size() < 5) return kWrongLength;
    if (command[2] >= kBuffers) return kNoSuchBuffer;
    const Packet inner = command.subspan(3);
    if (inner[0] != inner.size()) return kWrongLength;
    if (FirmwareTable::Find(inner[1], true) == nullptr) return kUnknownCommand;
    auto& buffer = state_.buffers[command[2]];
    if (buffer.size() + inner.size() > kBufferBytes) return kBufferFull;
    buffer.insert(buffer.end(), inner.begin(), inner.end());
    return 0;
}

std::uint8_t SimulatedBridge::ClearBuffer(Packet command, std::vector<std::uint8_t>& /*data*/) {
    if (command[2] >= kBuffers) return kNoSuchBuffer;
    state_.buffers[command[2]].clear();
    return 0;
}

std::uint8_t SimulatedBridge::ExecuteBuffer(Packet command, std::vector<std::uint8_t>& data) {
    if (command[2] >= kBuffers) return kNoSuchBuffer;
    Packet rest = state_.buffers[command[2]];
    while (!rest.empty()) {
        const Packet inner = rest.first(rest[0]);
        if (const std::uint8_t code = Run(inner, data, true)) return code;
        rest = rest.subspan(inner.size());
    }
    return 0;
}

std::uint8_t SimulatedBridge::SetWord(Packet command, std::vector<std::uint8_t>& /*data*/) {
    if (command[2] > 1) return kNoSuchPort;
    (command[2] == 0 ? state_.port0 : state_.port1) = command[3];
    Drive(false, false, false, false);
    return 0;
}

std::uint8_t SimulatedBridge::Version(Packet /*command*/, std::vector<std::uint8_t>& data) {
    data.assign(kVersionText.begin(), kVersionText.end());
    return 0;
}

std::uint8_t SimulatedBridge::ConfigPins(Packet command, std::vector<std::uint8_t>& /*data*/) {
    state_.clock = command[3];
    state_.data = command[4];
    state_.le = command[5];
    state_.input = command[7];
    state_.inputs0 = command[8];
    state_.inputs1 = command[9];
    state_.pinsKnown = true;
    return 0;
}

std::uint8_t SimulatedBridge::ConfigFormat(Packet command, std::vector<std::uint8_t>& /*data*/) {
    state_.controlBits = command[2];
    state_.dataBits = command[3];
    state_.formatKnown = true;
    return 0;
}

std::uint8_t SimulatedBridge::SendWord(Packet command, std::vector<std::uint8_t>& /*data*/) {
    if (!Ready()) return kNotConfigured;
    const int bits = state_.controlBits + state_.dataBits;
    if (static_cast<int>(command.size()) != (bits + 7) / 8 + 2) return kWrongLength;
    ShiftOut(command.subspan(2));
    Drive(false, false, false, false);
    return 0;
}

std::uint8_t SimulatedBridge::ReadBack(Packet command, std::vector<std::uint8_t>& data) {
    if (!Ready()) return kNotConfigured;
    const int bits = state_.controlBits + state_.dataBits;
    if (static_cast<int>(command.size()) != (bits + 7) / 8 + 2) return kWrongLength;
    ShiftOut(command.subspan(2));
    data.assign((static_cast<std::size_t>(state_.dataBits) + 7) / 8, 0);
    for (int bit = state_.dataBits - 1; bit >= 0; --bit) {
        Drive(true, false, true, false);
        Drive(false, false, true, false);
        const auto byte = static_cast<std::size_t>(bit / 8);
        if (InputHigh()) data[byte] = static_cast<std::uint8_t>(data[byte] | (1U << (bit % 8)));
    }
    Drive(false, false, false, false);
    return 0;
}

std::uint8_t SimulatedBridge::SpiDelay(Packet command, std::vector<std::uint8_t>& /*data*/) {
    state_.delay = command[2];
    return 0;
}

std::uint8_t SimulatedBridge::TriggerPin(Packet command, std::vector<std::uint8_t>& /*data*/) {
    if (command[2] > 1) return kNoSuchPort;
    state_.triggerPort = command[2];
    state_.triggerMask = command[3];
    return 0;
}

std::uint8_t SimulatedBridge::TriggerActive(Packet command, std::vector<std::uint8_t>& /*data*/) {
    state_.triggerActive = command[2] != 0;
    return 0;
}

std::uint8_t SimulatedBridge::BurstMode(Packet command, std::vector<std::uint8_t>& /*data*/) {
    state_.burstMode = command[2] != 0;
    return 0;
}

} // namespace zentrel
