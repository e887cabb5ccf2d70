#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "transport/bridge_library.h"
#include "transport/port_driver.h"

namespace zentrel {

/// Hears what passes between the program and its drivers, each call right after the driver has done
/// its part, in order.
class WireListener {
  public:
    virtual ~WireListener() = default;
    virtual void PortOpened(std::int16_t result) { (void)result; }
    virtual void PortClosed() {}
    virtual void PortWritten(std::uint16_t address, std::uint8_t value) {
        (void)address, (void)value;
    }
    virtual void PortRead(std::uint16_t address, std::uint8_t value) { (void)address, (void)value; }
    virtual void BridgeOpened(std::int16_t error) { (void)error; }
    /// `sent` of the packet's bytes went out.
    virtual void PacketSent(std::span<const std::uint8_t> packet, int sent) {
        (void)packet, (void)sent;
    }
    /// One receive; empty when nothing came.
    virtual void BytesReceived(std::span<const std::uint8_t> bytes) { (void)bytes; }
};

/// Who listens. With nobody here the drivers are called directly, so that listening costs nothing
/// when it isn't done. Don't add or remove listeners from inside a listener's call.
class WireLog {
  public:
    void Add(WireListener& listener) { listeners_.push_back(&listener); }
    void Remove(WireListener& listener) { std::erase(listeners_, &listener); }
    bool heard() const { return !listeners_.empty(); }

    template<typename Call>
    void Tell(Call&& call) const {
        for (WireListener* listener : listeners_)
            call(*listener);
    }

  private:
    std::vector<WireListener*> listeners_;
};

/// A port driver that tells the log what passes through it.
class TappedPort final : public PortDriver {
  public:
    TappedPort(PortDriver& below, const WireLog& log) : below_(&below), log_(log) {}
    void Attach(PortDriver& below) { below_ = &below; }

    std::int16_t IsDriverOpened() override { return below_->IsDriverOpened(); }
    std::int16_t OpenTVicPort() override;
    void CloseTVicPort() override;
    void WritePort(std::uint16_t address, std::uint8_t value) override;
    std::uint8_t ReadPort(std::uint16_t address) override;
    std::string Diagnosis() const override { return below_->Diagnosis(); }

  private:
    PortDriver* below_;
    const WireLog& log_;
};

/// A bridge library that tells the log what passes through it.
class TappedBridge final : public BridgeLibrary {
  public:
    TappedBridge(BridgeLibrary& below, const WireLog& log) : below_(&below), log_(log) {}
    void Attach(BridgeLibrary& below) { below_ = &below; }

    std::int16_t InitUSBInterface() override;
    std::int16_t usbGetError() override { return below_->usbGetError(); }
    std::int16_t usbConnected() override { return below_->usbConnected(); }
    std::int16_t usbSendCmdData(const std::uint8_t* packet, std::int16_t length) override;
    std::int16_t usbReceiveCmdData(std::uint8_t* buffer, std::int16_t max) override;
    std::string Diagnosis() const override { return below_->Diagnosis(); }

  private:
    BridgeLibrary* below_;
    const WireLog& log_;
};

} // namespace zentrel
