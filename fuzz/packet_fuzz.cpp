// Bytes of any kind from the bridge, to the bridge and as a device's name: the framing against a
// plain model of it, every operation over a bridge that answers nonsense, the firmware's commands.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>

#include "device/part.h"
#include "transport/bench/bench.h"
#include "transport/checks.h"
#include "transport/load_path.h"
#include "transport/readback.h"
#include "transport/usb_bridge.h"
#include "transport/usb_presence.h"

namespace {

using namespace zentrel;
using Bytes = std::span<const std::uint8_t>;

void Require(bool holds) {
    if (!holds) std::abort();
}

/// A library that brings the fuzzer's bytes, cut as the bytes themselves say.
class NoiseBridge final : public BridgeLibrary {
  public:
    explicit NoiseBridge(Bytes noise) : noise_(noise) {}

    std::int16_t InitUSBInterface() override {
        error_ = 0;
        return 0;
    }
    std::int16_t usbGetError() override { return error_; }
    std::int16_t usbConnected() override { return 1; }
    std::int16_t usbSendCmdData(const std::uint8_t*, std::int16_t length) override {
        Require(length >= 2 && length <= kLongestPacket);
        return length;
    }
    std::int16_t usbReceiveCmdData(std::uint8_t* buffer, std::int16_t max) override {
        if (noise_.empty()) {
            error_ = 3;
            return 0;
        }
        // Now and then a whole 1000 bytes, so that long receives are tried too.
        const std::size_t wanted = noise_[0] == 255 ? 1000 : noise_[0] % 16;
        const auto count = std::min({wanted, noise_.size() - 1, static_cast<std::size_t>(max)});
        std::copy_n(noise_.begin() + 1, count, buffer);
        received.append(buffer, buffer + count);
        noise_ = noise_.subspan(1 + count);
        return static_cast<std::int16_t>(count);
    }
    bool drained() const { return noise_.empty(); }

    std::string received;

  private:
    Bytes noise_;
    std::int16_t error_ = 0;
};

/// A device with a read-back field, on `bridge`.
struct Device {
    explicit Device(BridgeLibrary& bridge)
        : bench(part), transport(part, {bench.port, bridge, bench.watch}) {
        session.CommMode_Select = kRouteUsb;
        part.SetRegisterLength(24);
        part.ControlLength = 4;
        part.SetLineMasks(1, 2, 4);
        for (const char* id : {"R0", "R1", "R2"}) {
            part.Registers.Add(std::make_shared<cRegister>(part, id, 0xF, id[1] - '0', false), id);
        }
        part.PrgmBits.Add(
            std::make_shared<cPrgmBits>(part, "ADDR", "R2", std::int16_t{8}, std::int16_t{4}, true),
            "ADDR");
        part.ReadbackAddressRegister = "ADDR";
        part.ReadbackAddressRegisterName = "R2";
        InitUSBInterface(part);
    }
    Session session;
    cPart part{session};
    SimulatedBench bench;
    Transport transport;
};

// One packet, against the same bytes cut by hand. `held` is what the packets before left over.
void CheckNext(Device& device, NoiseBridge& bridge, std::string& held) {
    bridge.received.clear();
    std::array<std::uint8_t, kLongestPacket> packet;
    const int length = GetNextCmdPacket(device.part, packet);
    const std::string all = held + bridge.received;
    const int first = all.empty() ? -1 : static_cast<std::uint8_t>(all[0]);
    if (length > 0) {
        const auto taken = static_cast<std::size_t>(length);
        Require(length == first && taken <= all.size());
        for (std::size_t i = 0; i < packet.size(); ++i)
            Require(packet[i] == (i < taken ? static_cast<std::uint8_t>(all[i]) : 0));
        held = all.substr(taken);
    } else {
        Require(length == 0 ? first == 0
                            : first < 0 || first > kLongestPacket ||
                                  static_cast<std::size_t>(first) > all.size());
        held.clear();
    }
    Require(held.size() == static_cast<std::size_t>(device.transport.received().size()));
}

void CheckFraming(Bytes noise) {
    NoiseBridge bridge(noise);
    Device device(bridge);
    std::string held;
    while (!bridge.drained())
        CheckNext(device, bridge, held);
}

void CheckReplies(Bytes noise) {
    NoiseBridge bridge(noise);
    Device device(bridge);
    for (int round = 0; !bridge.drained(); ++round) {
        const UsbReply reply = usbGetAck(device.part, static_cast<std::uint8_t>(round), "fuzz");
        Require(reply.size() <= kLongestPacket);
        if (!reply.empty()) Require(reply[0] == reply.size() - 1 && reply[reply.size() - 1] == 0);
        const double value = ProcessReadBackValue(reply, round % 70);
        Require(value >= 0);
        switch (round % 5) {
        case 0:
            LoadAll(device.part);
            break;
        case 1:
            QVX4100ReadRegister(device.part, "R1");
            break;
        case 2:
            USBVersion(device.part);
            break;
        case 3:
            usbSendSPI_Burst(device.part, round, 0x10, 1);
            break;
        default:
            LoadDevice(device.part);
            break;
        }
        Require(device.transport.received().size() < ReceiveBuffer::kCapacity);
    }
}

void CheckFirmware(Bytes noise) {
    NoiseBridge unused({});
    Device device(unused);
    SimulatedBridge& bridge = device.bench.bridge;
    bridge.InitUSBInterface();
    std::array<std::uint8_t, 256> reply{};
    while (!noise.empty()) {
        const auto count = std::min<std::size_t>(noise[0] % 102, noise.size());
        const auto sent = bridge.usbSendCmdData(noise.data(), static_cast<std::int16_t>(count));
        Require(sent == static_cast<int>(count));
        const auto came = bridge.usbReceiveCmdData(reply.data(), 256);
        if (came == 0) {
            bridge.InitUSBInterface();
        } else {
            Require(reply[0] == came && came <= kLongestPacket);
            Require(reply[1] == usb::kAcknowledged || reply[1] == usb::kRefused);
        }
        noise = noise.subspan(std::max<std::size_t>(count, 1));
    }
}

void CheckName(Bytes noise) {
    const std::string name(noise.begin(), noise.end());
    if (const auto parsed = ParseDeviceName(name)) {
        Require(name.find(parsed->serial) != std::string::npos);
        Require(name.find('{' + parsed->guid + '}') != std::string::npos);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const Bytes noise(data + 1, size - 1);
    switch (data[0] % 4) {
    case 0:
        CheckFraming(noise);
        break;
    case 1:
        CheckReplies(noise);
        break;
    case 2:
        CheckFirmware(noise);
        break;
    default:
        CheckName(noise);
        break;
    }
    return 0;
}
