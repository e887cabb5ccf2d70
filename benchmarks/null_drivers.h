#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "transport/bridge_library.h"
#include "transport/port_driver.h"
#include "transport/usb_packet.h"
#include "transport/wire_log.h"

/// What the benchmarks of the wire measure against.
namespace zentrel {

/// The cheapest port there can be: what is left is the price of the program's own work.
struct NullPort final : PortDriver {
    std::int16_t IsDriverOpened() override { return 1; }
    std::int16_t OpenTVicPort() override { return 1; }
    void CloseTVicPort() override {}
    void WritePort(std::uint16_t address, std::uint8_t value) override {
        lastAddress = address;
        lastValue = value;
    }
    std::uint8_t ReadPort(std::uint16_t) override { return lastValue; }
    volatile std::uint16_t lastAddress = 0;
    volatile std::uint8_t lastValue = 0;
};

/// Acknowledges whatever it gets.
struct NullBridge final : BridgeLibrary {
    std::int16_t InitUSBInterface() override { return 0; }
    std::int16_t usbGetError() override { return 0; }
    std::int16_t usbConnected() override { return 1; }
    std::int16_t usbSendCmdData(const std::uint8_t* packet, std::int16_t length) override {
        opcode = packet[1];
        return length;
    }
    std::int16_t usbReceiveCmdData(std::uint8_t* buffer, std::int16_t) override {
        buffer[0] = 3;
        buffer[1] = usb::kAcknowledged;
        buffer[2] = opcode;
        return 3;
    }
    volatile std::uint8_t opcode = 0;
};

struct Recorder : WireListener {
    void PortWritten(std::uint16_t address, std::uint8_t value) override {
        writes.emplace_back(address, value);
    }
    void PacketSent(std::span<const std::uint8_t> packet, int) override {
        packets.emplace_back(packet.begin(), packet.end());
    }
    std::vector<std::pair<std::uint16_t, std::uint8_t>> writes;
    std::vector<std::vector<std::uint8_t>> packets;
};

} // namespace zentrel
