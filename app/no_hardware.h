#pragma once

#include "transport/transport.h"

namespace zentrel {

/// A machine with no parallel port and no bridge: every service answers that nothing is there.
struct NoHardware {
    struct Port final : PortDriver {
        std::int16_t IsDriverOpened() override { return 0; }
        std::int16_t OpenTVicPort() override { return kOpenFailed; }
        void CloseTVicPort() override {}
        void WritePort(std::uint16_t, std::uint8_t) override {}
        std::uint8_t ReadPort(std::uint16_t) override { return 0xFF; }
    };
    struct Bridge final : BridgeLibrary {
        static constexpr std::int16_t kNoBridge = 1;
        std::int16_t InitUSBInterface() override { return 0; }
        std::int16_t usbGetError() override { return kNoBridge; }
        std::int16_t usbConnected() override { return 0; }
        std::int16_t usbSendCmdData(const std::uint8_t*, std::int16_t) override { return 0; }
        std::int16_t usbReceiveCmdData(std::uint8_t*, std::int16_t) override { return 0; }
    };
    struct Watch final : DeviceWatch {
        int Register(DeviceEvents&) override { return 0; }
        void Unregister() override {}
    };

    Drivers drivers() { return {port, bridge, watch}; }

    Port port;
    Bridge bridge;
    Watch watch;
};

} // namespace zentrel
