#include "transport/monitor/wire_monitor.h"

#include "device/part.h"
#include "transport/port_driver.h"
#include "transport/transport.h"

namespace zentrel {

WireMonitor::WireMonitor(cPart& part) : part_(part), maker_(part) {}

WireMonitor::~WireMonitor() {
    if (part_.transport() != nullptr) part_.transport()->wire().Remove(*this);
}

void WireMonitor::Add(WireFollower& follower) {
    if (!followed() && part_.transport() != nullptr) {
        port_.Forget();
        bridge_.Forget();
        part_.transport()->wire().Add(*this);
    }
    maker_.Add(follower);
}

void WireMonitor::Remove(WireFollower& follower) {
    if (!followed()) return;
    Settle();
    maker_.Remove(follower);
    if (!followed() && part_.transport() != nullptr) part_.transport()->wire().Remove(*this);
}

void WireMonitor::Settle() {
    port_.Settle();
    bridge_.Settle();
}

void WireMonitor::PortWritten(std::uint16_t address, std::uint8_t value) {
    port_.Wrote(address, value);
}

void WireMonitor::PortRead(std::uint16_t address, std::uint8_t value) {
    port_.Read(address, value);
}

void WireMonitor::PortOpened(std::int16_t result) {
    TellPort(result != PortDriver::kOpenFailed, result);
}

void WireMonitor::PortClosed() {
    TellPort(false, 0);
}

void WireMonitor::TellPort(bool opened, std::int16_t result) {
    Settle();
    maker_.Begin(link_, WireRoute::Lpt);
    link_.kind = WireKind::Port;
    link_.opened = opened;
    link_.code = result;
    maker_.Publish(link_, link_.time);
}

void WireMonitor::BridgeOpened(std::int16_t error) {
    port_.Settle();
    bridge_.Opened(error);
}

void WireMonitor::PacketSent(std::span<const std::uint8_t> packet, int sent) {
    bridge_.Sent(packet, sent);
}

void WireMonitor::BytesReceived(std::span<const std::uint8_t> bytes) {
    bridge_.Received(bytes);
}

} // namespace zentrel
