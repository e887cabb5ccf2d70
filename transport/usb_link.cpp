#include <algorithm>
#include <string>

#include "device/number_text.h"
#include "device/part.h"
#include "transport/transport.h"
#include "transport/usb_bridge.h"
#include "transport/usb_presence.h"

namespace zentrel {
namespace {

using PacketBytes = std::array<std::uint8_t, kLongestPacket>;

constexpr std::int16_t kNoTransport = -1;
constexpr std::int16_t kFirstReceive = 100;
constexpr std::int16_t kSecondReceive = 1000;

std::string Hex(std::uint8_t byte) {
    return HexText(std::int16_t{byte});
}

void ShowRefusal(cPart& part, std::string_view label, const PacketBytes& packet) {
    part.upward().messages->Show("NACK RXed in " + std::string(label) + "\nCommand NACKed = 0x" +
                                     Hex(packet[2]) + "\nError Code = 0x" + Hex(packet[3]),
                                 "USB Comms Info");
}

void Receive(Transport& transport, std::int16_t max) {
    ReceiveBuffer& held = transport.received();
    const std::int16_t count = transport.bridge().usbReceiveCmdData(held.Room(max), max);
    held.Received(std::clamp(count, std::int16_t{0}, max));
}

// Moves the next packet out of the stream; its length, or -1 when no whole one came.
int TakePacket(Transport& transport, PacketBytes& packet) {
    ReceiveBuffer& held = transport.received();
    if (held.empty()) Receive(transport, kFirstReceive);
    if (!held.empty() && held.front() > held.size()) Receive(transport, kSecondReceive);
    if (held.empty()) return -1;
    const int length = held.front();
    if (length > kLongestPacket || length > held.size()) {
        held.Clear();
        return -1;
    }
    // A length of 0 can't be stepped over: where the next packet begins is lost.
    if (length == 0) {
        held.Clear();
        return 0;
    }
    held.Take(packet.data(), length);
    return length;
}

// A bridge that is there and can't be opened needs the engineer's hand, which silence would hide.
void AdviseOnce(cPart& part, Transport& transport) {
    if (transport.bridge().usbGetError() == 0) {
        transport.SetAdvised(false);
        return;
    }
    const std::string advice = transport.bridge().Diagnosis();
    if (advice.empty() || transport.advised()) return;
    transport.SetAdvised(true);
    part.upward().messages->Show(advice);
}

} // namespace

void InitUSBInterface(cPart& part) {
    Transport* transport = part.transport();
    if (transport == nullptr) return;
    transport->bridge().InitUSBInterface();
    // The rest of a packet that broke off with the old link would swallow the new one's first
    // reply.
    transport->received().DropBroken();
    AdviseOnce(part, *transport);
}

std::int16_t usbGetError(cPart& part) {
    return part.transport() == nullptr ? kNoTransport : part.transport()->bridge().usbGetError();
}

std::int16_t usbConnected(cPart& part) {
    return part.transport() == nullptr ? std::int16_t{0}
                                       : part.transport()->bridge().usbConnected();
}

std::int16_t usbSendCmd(cPart& part, const UsbPacket& packet) {
    if (!packet.fits() || usbGetError(part) != 0) return 0;
    const auto bytes = packet.bytes();
    return part.transport()->bridge().usbSendCmdData(bytes.data(),
                                                     static_cast<std::int16_t>(bytes.size()));
}

int GetNextCmdPacket(cPart& part, PacketBytes& packet) {
    packet.fill(0);
    if (part.transport() == nullptr) return -1;
    const int length = TakePacket(*part.transport(), packet);
    if (length < 0) return length;
    if (packet[1] == usb::kRefused) {
        ShowRefusal(part, "GetAck", packet);
    } else if (packet[1] != usb::kAcknowledged) {
        Unhook(part);
    }
    return length;
}

UsbReply usbGetAck(cPart& part, std::uint8_t opcode, std::string_view label) {
    if (usbGetError(part) != 0) return {};
    PacketBytes packet;
    const int length = GetNextCmdPacket(part, packet);
    Messages& messages = *part.upward().messages;
    if (length == 0) {
        messages.Show("usbReceiveCmdData len = 0 in usbGetAck.. " + std::string(label));
        return {};
    }
    if (packet[1] == usb::kRefused) {
        ShowRefusal(part, label, packet);
        return {};
    }
    if (length < 0 || packet[1] != usb::kAcknowledged) {
        Unhook(part);
        return {};
    }
    if (packet[2] != opcode) {
        messages.Show("ACKing command " + Hex(opcode) + " but got command " + Hex(packet[2]) +
                      " in the ack.");
    }
    return UsbReply({packet.data(), static_cast<std::size_t>(length)});
}

} // namespace zentrel
