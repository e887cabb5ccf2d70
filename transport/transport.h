#pragma once

#include <cstdint>
#include <vector>

#include "transport/bridge_library.h"
#include "transport/device_watch.h"
#include "transport/port_driver.h"
#include "transport/usb_packet.h"
#include "transport/wire_log.h"

namespace zentrel {

class cPart;

/// The platform's three services behind the routes. They outlive their use by a Transport.
struct Drivers {
    PortDriver& port;
    BridgeLibrary& bridge;
    DeviceWatch& watch;
};

/// What stands between a device and the wire: the drivers in use, and the little state that the
/// routes keep between two calls. It connects itself to its device (`cPart::transport`) for as long
/// as it lives. The operations are functions that take the cPart: load_path.h, lpt_route.h,
/// usb_bridge.h, usb_presence.h, readback.h, checks.h. Without a Transport they send nothing.
class Transport final : private DeviceEvents {
  public:
    Transport(cPart& part, const Drivers& drivers);
    ~Transport() override;
    Transport(const Transport&) = delete;
    Transport& operator=(const Transport&) = delete;

    PortDriver& port() { return wire_.heard() ? tappedPort_ : *port_; }
    BridgeLibrary& bridge() { return wire_.heard() ? tappedBridge_ : *bridge_; }
    /// Add a listener here to hear every byte on the way to and from the drivers.
    WireLog& wire() { return wire_; }

    /// Goes over to other drivers at once: closes the old port, takes the device watch along, opens
    /// the new port (`lpt_port_access` follows) and sets the new bridge up when it is attached.
    void Use(const Drivers& drivers);

    // The device watch; see usb_presence.h.
    /// Returns 0, or the system's error number.
    int RegisterWatch();
    void UnregisterWatch();
    /// Whether device events are looked at.
    bool hooked() const { return hooked_; }
    void SetHooked(bool value) { hooked_ = value; }

    /// Whether the engineer was told why an attached bridge can't be opened, since it last could.
    bool advised() const { return advised_; }
    void SetAdvised(bool value) { advised_ = value; }

    /// Bytes from the bridge that no command has used yet.
    ReceiveBuffer& received() { return received_; }
    /// The port states of the word that `LoadRegister` sent last, other pins left out.
    std::vector<std::int16_t>& lastVector() { return lastVector_; }

  private:
    void DeviceChanged(const DeviceEvent& event) override;

    cPart& part_;
    PortDriver* port_;
    BridgeLibrary* bridge_;
    DeviceWatch* watch_;
    WireLog wire_;
    TappedPort tappedPort_;
    TappedBridge tappedBridge_;
    bool registered_ = false;
    bool hooked_ = false;
    bool advised_ = false;
    ReceiveBuffer received_;
    std::vector<std::int16_t> lastVector_;
};

} // namespace zentrel
