#pragma once

#include <poll.h>

#include <chrono>

#include "tests/drivers/played_kernel.h"
#include "tests/transport/rig.h"
#include "transport/drivers/libusb_bridge.h"
#include "transport/drivers/ppdev_port.h"
#include "transport/drivers/udev_watch.h"

namespace zentrel {

/// The transport tests' device and board, with the real drivers and a played kernel in between.
struct RealRig : Rig {
    using Milliseconds = std::chrono::milliseconds;

    explicit RealRig(std::string_view route = kRouteLpt, LibusbBridge::Limits limits = kLimits)
        : Rig(route), bridge(limits) {
        usb.SetLateness(2 * limits.transfer);
        transport.Use({port, bridge, watch});
        bench.port.OpenTVicPort(); // the hardware has power
        messages.shown.clear();
    }
    ~RealRig() { transport.Use(bench.drivers()); }

    /// Hands on the device events that are under way.
    void Dispatch() {
        pollfd ready{watch.fd(), POLLIN, 0};
        while (poll(&ready, 1, 50) == 1)
            watch.Dispatch();
    }

    static constexpr LibusbBridge::Limits kLimits{Milliseconds(40), Milliseconds(3)};

    PlayedKernel kernel;
    PlayedPpdev& lpt = kernel.AddPort("parport0", 888, bench.port);
    PlayedUsbfs& usb = kernel.AddBridge(bench.bridge);
    PpdevPort port{part, {kernel.portTree(), "/dev"}};
    LibusbBridge bridge;
    UdevWatch watch;
};

} // namespace zentrel
