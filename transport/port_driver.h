#pragma once

#include <cstdint>
#include <string>

namespace zentrel {

/// A PC parallel port, reached byte by byte. It moves bytes and knows nothing of words: a write has
/// no result, and one that can't be made (driver not open, no such port) is lost in silence.
class PortDriver {
  public:
    /// `OpenTVicPort` gave up.
    static constexpr std::int16_t kOpenFailed = static_cast<std::int16_t>(0xFF00);

    virtual ~PortDriver() = default;

    /// Bit 0 is set when the driver is open in this process already.
    virtual std::int16_t IsDriverOpened() = 0;
    /// Opens the driver; kOpenFailed when it can't, any other number when it could.
    virtual std::int16_t OpenTVicPort() = 0;
    /// Closes the driver; harmless when it isn't open.
    virtual void CloseTVicPort() = 0;
    virtual void WritePort(std::uint16_t address, std::uint8_t value) = 0;
    /// What stands at the address now; the lines of an absent port read 255.
    virtual std::uint8_t ReadPort(std::uint16_t address) = 0;
    /// Why the port can't be used and what helps, in lines; empty when all is well or unknown.
    virtual std::string Diagnosis() const { return {}; }
};

} // namespace zentrel
