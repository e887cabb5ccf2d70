#pragma once

#include <cstdint>
#include <string>

namespace zentrel {

/// Something was attached to the machine or taken away.
struct DeviceEvent {
    static constexpr std::uint32_t kArrival = 0x8000;
    static constexpr std::uint32_t kRemoval = 0x8004;
    /// An interface of a device, the only kind that carries a device name. Others are volumes,
    /// ports and the like.
    static constexpr std::uint32_t kInterface = 5;

    std::uint32_t event = kArrival;
    std::uint32_t deviceType = kInterface;
    /// As the platform names it: `\\?\USB#Vid_7E41&Pid_C3A6#serial#{guid}`.
    std::string name;
};

/// Takes device events, on the user-interface thread.
class DeviceEvents {
  public:
    virtual ~DeviceEvents() = default;
    virtual void DeviceChanged(const DeviceEvent& event) = 0;
};

/// The platform's notice of devices of every kind that come and go.
class DeviceWatch {
  public:
    virtual ~DeviceWatch() = default;

    /// Sends events to `sink` until `Unregister`. Returns 0, or the system's error number.
    virtual int Register(DeviceEvents& sink) = 0;
    /// Ends it; harmless when nothing is registered.
    virtual void Unregister() = 0;
};

} // namespace zentrel
