#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "transport/bridge_library.h"
#include "transport/port_driver.h"

namespace zentrel {

/// Decides when something goes wrong. The same seed, rate and calls give the same faults anywhere.
class FaultInjector {
  public:
    /// `rate` is the share of calls that go wrong, 0 to 1.
    FaultInjector(std::uint64_t seed, double rate);

    bool Strikes();
    /// A number from 0 to `count` - 1.
    int Pick(int count);
    /// How many faults there were.
    int strikes() const { return strikes_; }
    /// Lets everything work from now on.
    void Stop() { threshold_ = 0; }

  private:
    std::mt19937_64 random_;
    std::uint64_t threshold_;
    int strikes_ = 0;
};

/// A port driver with faults: it can't be opened, or the port is gone until it is opened anew.
class FaultyPort final : public PortDriver {
  public:
    FaultyPort(PortDriver& below, FaultInjector& faults) : below_(below), faults_(faults) {}

    std::int16_t IsDriverOpened() override { return below_.IsDriverOpened(); }
    std::int16_t OpenTVicPort() override;
    void CloseTVicPort() override { below_.CloseTVicPort(); }
    void WritePort(std::uint16_t address, std::uint8_t value) override;
    std::uint8_t ReadPort(std::uint16_t address) override;
    std::string Diagnosis() const override { return below_.Diagnosis(); }

  private:
    bool Gone();

    PortDriver& below_;
    FaultInjector& faults_;
    bool gone_ = false;
};

/// A bridge library with faults: the link doesn't open or breaks at any point of a command, packets
/// go out in part, replies come late, in pieces, in part or as garbage. It keeps the library's
/// promise: from a fault on that it can see, usbGetError tells of it until the link is opened anew.
class FaultyBridge final : public BridgeLibrary {
  public:
    static constexpr std::int16_t kInjected = 77;

    FaultyBridge(BridgeLibrary& below, FaultInjector& faults) : below_(below), faults_(faults) {}

    std::int16_t InitUSBInterface() override;
    std::int16_t usbGetError() override { return error_ != 0 ? error_ : below_.usbGetError(); }
    std::int16_t usbConnected() override { return below_.usbConnected(); }
    std::int16_t usbSendCmdData(const std::uint8_t* packet, std::int16_t length) override;
    std::int16_t usbReceiveCmdData(std::uint8_t* buffer, std::int16_t max) override;
    std::string Diagnosis() const override { return below_.Diagnosis(); }

  private:
    std::int16_t Deliver(std::uint8_t* buffer, std::int16_t max);
    std::int16_t Fail(std::int16_t count = 0) {
        error_ = kInjected;
        return count;
    }

    BridgeLibrary& below_;
    FaultInjector& faults_;
    std::int16_t error_ = 0;
    std::vector<std::uint8_t> pending_; // came, and not handed on yet
};

} // namespace zentrel
