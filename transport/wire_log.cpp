#include "transport/wire_log.h"

namespace zentrel {

std::int16_t TappedPort::OpenTVicPort() {
    const std::int16_t result = below_->OpenTVicPort();
    log_.Tell([=](WireListener& l) { l.PortOpened(result); });
    return result;
}

void TappedPort::CloseTVicPort() {
    below_->CloseTVicPort();
    log_.Tell([](WireListener& l) { l.PortClosed(); });
}

void TappedPort::WritePort(std::uint16_t address, std::uint8_t value) {
    below_->WritePort(address, value);
    log_.Tell([=](WireListener& l) { l.PortWritten(address, value); });
}

std::uint8_t TappedPort::ReadPort(std::uint16_t address) {
    const std::uint8_t value = below_->ReadPort(address);
    log_.Tell([=](WireListener& l) { l.PortRead(address, value); });
    return value;
}

std::int16_t TappedBridge::InitUSBInterface() {
    const std::int16_t result = below_->InitUSBInterface();
    const std::int16_t error = below_->usbGetError();
    log_.Tell([=](WireListener& l) { l.BridgeOpened(error); });
    return result;
}

std::int16_t TappedBridge::usbSendCmdData(const std::uint8_t* packet, std::int16_t length) {
    const std::int16_t sent = below_->usbSendCmdData(packet, length);
    const std::span bytes(packet, static_cast<std::size_t>(length));
    log_.Tell([=](WireListener& l) { l.PacketSent(bytes, sent); });
    return sent;
}

std::int16_t TappedBridge::usbReceiveCmdData(std::uint8_t* buffer, std::int16_t max) {
    const std::int16_t count = below_->usbReceiveCmdData(buffer, max);
    const std::span<const std::uint8_t> bytes(buffer,
                                              static_cast<std::size_t>(std::max<int>(count, 0)));
    log_.Tell([=](WireListener& l) { l.BytesReceived(bytes); });
    return count;
}

} // namespace zentrel
