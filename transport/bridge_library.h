#pragma once

#include <cstdint>
#include <string>

namespace zentrel {

/// The library that carries packets to and from the USB bridge. It looks at no packet: it moves
/// bytes and keeps one error state.
///
/// Whatever goes wrong (bridge pulled, a reply that doesn't come in time) is told by `usbGetError`
/// from then on, and stays so until `InitUSBInterface` has thrown away what was under way and
/// opened the link anew. So a reply that comes too late never answers a later command.
class BridgeLibrary {
  public:
    virtual ~BridgeLibrary() = default;

    /// Opens the bridge, anew when it is open. Whether that worked is told by `usbGetError`.
    virtual std::int16_t InitUSBInterface() = 0;
    /// 0 when all is well, else an error code. Not 0 before the first `InitUSBInterface`.
    virtual std::int16_t usbGetError() = 0;
    /// Non-zero when the bridge is attached, whether it is open or not.
    virtual std::int16_t usbConnected() = 0;
    /// Sends `length` bytes and returns how many went out.
    virtual std::int16_t usbSendCmdData(const std::uint8_t* packet, std::int16_t length) = 0;
    /// Waits for bytes, at most for the library's time limit, and returns how many of them it put
    /// into `buffer`: part of a packet, one packet or several; 0 when none came.
    virtual std::int16_t usbReceiveCmdData(std::uint8_t* buffer, std::int16_t max) = 0;
    /// Why an attached bridge can't be used and what helps, in lines; empty when there is none, or
    /// when all is well.
    virtual std::string Diagnosis() const { return {}; }
};

} // namespace zentrel
