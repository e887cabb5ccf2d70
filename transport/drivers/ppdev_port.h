#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "transport/drivers/file_descriptor.h"
#include "transport/port_driver.h"

namespace zentrel {

class cPart;

/// A parallel port of this machine, reached through the kernel's ppdev devices. The port in use is
/// the one whose base address is the device's `PortAddress`; it stays claimed while the driver is
/// open, and another address takes the driver along at the next byte, also after an `OpenTVicPort`
/// that failed.
///
/// Bytes are those of the registers themselves: the kernel inverts nothing, and neither does this
/// driver. Of the control register only the lower four bits are its own.
class PpdevPort final : public PortDriver {
  public:
    /// Where the kernel shows its ports, and the devices that lead to them.
    struct Paths {
        std::filesystem::path tree = "/proc/sys/dev/parport";
        std::filesystem::path nodes = "/dev";
    };

    PpdevPort(const cPart& part, Paths paths);
    ~PpdevPort() override { CloseTVicPort(); }
    PpdevPort(const PpdevPort&) = delete;
    PpdevPort& operator=(const PpdevPort&) = delete;

    std::int16_t IsDriverOpened() override { return port_.open() ? 1 : 0; }
    std::int16_t OpenTVicPort() override;
    void CloseTVicPort() override;
    void WritePort(std::uint16_t address, std::uint8_t value) override;
    std::uint8_t ReadPort(std::uint16_t address) override;

    std::string Diagnosis() const override { return diagnosis_; }

  private:
    /// The device's address; LPT1's as long as no device names one.
    std::uint16_t Wanted() const;
    /// Whether a byte has a port to go to; goes over to a new `PortAddress` first.
    bool Ready();
    void Claim(std::uint16_t base);
    void Release();
    bool Control(unsigned long request, std::uint8_t* value);

    const cPart& part_;
    Paths paths_;
    bool wanted_ = false;    // between OpenTVicPort and CloseTVicPort
    std::uint16_t base_ = 0; // the address that Claim tried last
    FileDescriptor port_;    // claimed when open
    std::string diagnosis_;
};

} // namespace zentrel
