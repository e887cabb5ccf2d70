#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "transport/device_watch.h"

/// Notices the bridge being plugged in and pulled out, tells it in the status line and brings the
/// bridge up by itself, whatever route is selected.
namespace zentrel {

class cPart;

inline constexpr std::uint16_t kBridgeVendor = 0x7E41;
inline constexpr std::uint16_t kBridgeProduct = 0xC3A6;

/// The parts of a platform device name `\\?\USB#Vid_7E41&Pid_C3A6#serial#{guid}`.
struct UsbDeviceName {
    std::uint16_t vendor = 0;
    std::uint16_t product = 0;
    std::string serial;
    std::string guid;

    bool isBridge() const { return vendor == kBridgeVendor && product == kBridgeProduct; }
};

/// Nothing for a name of another form.
std::optional<UsbDeviceName> ParseDeviceName(std::string_view name);

/// Asks for device events. A failure is told in a message, and gives false.
bool RegisterForNotifications(cPart& part);
void UnregisterDeviceNotification(cPart& part);
/// Starts and stops looking at device events. Either does nothing when it is so already.
void Hook(cPart& part);
void Unhook(cPart& part);

/// The program's start: registers, hooks, and sets the bridge up when it is there already.
void StartPresence(cPart& part);
/// The window's end: unregisters and unhooks.
void StopPresence(cPart& part);

/// Acts on one event; anything but the bridge's coming and going does nothing.
void HandleDeviceChange(cPart& part, const DeviceEvent& event);

} // namespace zentrel
