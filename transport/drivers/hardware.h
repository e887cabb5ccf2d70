#pragma once

#include <utility>

#include "transport/drivers/libusb_bridge.h"
#include "transport/drivers/ppdev_port.h"
#include "transport/drivers/udev_watch.h"
#include "transport/transport.h"

namespace zentrel {

/// This machine's own ports. Making it opens nothing and runs no thread; the event loop serves
/// `watch` (see UdevWatch).
struct Hardware {
    explicit Hardware(const cPart& device, PpdevPort::Paths paths = {},
                      LibusbBridge::Limits limits = {})
        : port(device, std::move(paths)), bridge(limits) {}

    Drivers drivers() { return {port, bridge, watch}; }

    PpdevPort port;
    LibusbBridge bridge;
    UdevWatch watch;
};

} // namespace zentrel
