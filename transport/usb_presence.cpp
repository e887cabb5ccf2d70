#include "transport/usb_presence.h"

#include <charconv>
#include <vector>

#include "device/part.h"
#include "transport/transport.h"
#include "transport/usb_bridge.h"

namespace zentrel {
namespace {

constexpr std::size_t kLongestName = 1024;

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const auto at = text.find(separator);
        parts.push_back(text.substr(0, at));
        if (at == std::string_view::npos) return parts;
        text.remove_prefix(at + 1);
    }
}

// The hexadecimal digits behind "Vid_" or "Pid_".
std::optional<std::uint16_t> NumberBehind(std::string_view prefix, std::string_view text) {
    if (text.size() <= prefix.size() || !EqualNoCase(text.substr(0, prefix.size()), prefix)) {
        return {};
    }
    text.remove_prefix(prefix.size());
    std::uint16_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    if (result.ec != std::errc() || result.ptr == text.data()) return {};
    return number;
}

void Announce(cPart& part, std::string_view what, const std::string& serial) {
    part.upward().status->StatusBar_SetString("Orvane USB <--> TriWire Device " +
                                              std::string(what) + ".  Serial Number: " + serial);
}

void BridgeArrived(cPart& part, const std::string& serial) {
    Announce(part, "attached", serial);
    InitUSBInterface(part);
    if (usbConnected(part) != 0) usbSetupDevice(part);
}

void BridgeLeft(cPart& part, const std::string& serial) {
    Announce(part, "removed", serial);
    InitUSBInterface(part); // so that usbGetError reports the loss
}

} // namespace

std::optional<UsbDeviceName> ParseDeviceName(std::string_view name) {
    name = name.substr(0, kLongestName);
    name = name.substr(0, name.find('\0'));
    const auto parts = Split(name, '#');
    if (parts.size() != 4) return {};
    const auto numbers = parts[1].find('&');
    if (numbers == std::string_view::npos) return {};
    const auto vendor = NumberBehind("Vid_", parts[1].substr(0, numbers));
    const auto product = NumberBehind("Pid_", parts[1].substr(numbers + 1));
    const auto open = parts[3].find('{');
    const auto close = parts[3].find('}');
    if (!vendor || !product || open == std::string_view::npos || close == std::string_view::npos ||
        close < open) {
        return {};
    }
    return UsbDeviceName{*vendor, *product, std::string(parts[2]),
                         std::string(parts[3].substr(open + 1, close - open - 1))};
}

bool RegisterForNotifications(cPart& part) {
    if (part.transport() == nullptr) return false;
    const int error = part.transport()->RegisterWatch();
    if (error == 0) return true;
    part.upward().messages->Show("RegisterDeviceNotification failed: " + std::to_string(error));
    return false;
}

void UnregisterDeviceNotification(cPart& part) {
    if (Transport* transport = part.transport()) transport->UnregisterWatch();
}

void Hook(cPart& part) {
    if (Transport* transport = part.transport()) transport->SetHooked(true);
}

void Unhook(cPart& part) {
    if (Transport* transport = part.transport()) transport->SetHooked(false);
}

void StartPresence(cPart& part) {
    RegisterForNotifications(part);
    Hook(part);
    if (usbConnected(part) != 0) usbSetupDevice(part);
}

void StopPresence(cPart& part) {
    UnregisterDeviceNotification(part);
    Unhook(part);
}

void HandleDeviceChange(cPart& part, const DeviceEvent& event) {
    const bool arrival = event.event == DeviceEvent::kArrival;
    if (!arrival && event.event != DeviceEvent::kRemoval) return;
    if (event.deviceType != DeviceEvent::kInterface) return;
    const auto name = ParseDeviceName(event.name);
    if (!name || !name->isBridge()) return;
    if (arrival) {
        BridgeArrived(part, name->serial);
    } else {
        BridgeLeft(part, name->serial);
    }
}

} // namespace zentrel
