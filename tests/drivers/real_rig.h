#pragma once

#include <poll.h>
#include <unistd.h>

#include <chrono>

#include <gmock/gmock.h>

#include "tests/drivers/played_kernel.h"
#include "tests/transport/rig.h"
#include "transport/drivers/hardware.h"

namespace zentrel {

/// Someone without rights runs the program while this lives.
struct WithoutRights {
    WithoutRights() { Become(65534); }
    ~WithoutRights() { Become(0); }
    void Become(uid_t user) {
        if (root && ::seteuid(user) != 0) ADD_FAILURE() << "can't change the user";
    }
    const bool root = ::geteuid() == 0;
};

/// The transport tests' device and board, with the real drivers and a played kernel in between.
struct RealRig : Rig {
    using Milliseconds = std::chrono::milliseconds;

    explicit RealRig(std::string_view route = kRouteLpt, LibusbBridge::Limits limits = kLimits)
        : Rig(route), hardware(part, {kernel.portTree(), "/dev"}, limits) {
        usb.SetLateness(2 * limits.transfer);
        transport.Use(hardware.drivers());
        bench.port.OpenTVicPort(); // the hardware has power
        messages.shown.clear();
    }
    ~RealRig() { transport.Use(bench.drivers()); }

    /// Hands on the device events that are under way, of which there is one at least.
    void Dispatch() {
        pollfd ready{watch.fd(), POLLIN, 0};
        EXPECT_EQ(poll(&ready, 1, 2000), 1);
        watch.Dispatch();
    }

    static constexpr LibusbBridge::Limits kLimits{Milliseconds(40), Milliseconds(3)};

    PlayedKernel kernel;
    PlayedPpdev& lpt = kernel.AddPort("parport0", 888, bench.port);
    PlayedUsbfs& usb = kernel.AddBridge(bench.bridge);
    Hardware hardware;
    PpdevPort& port = hardware.port;
    LibusbBridge& bridge = hardware.bridge;
    UdevWatch& watch = hardware.watch;
};

} // namespace zentrel
