#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "transport/bridge_library.h"
#include "transport/drivers/usb_link.h"

namespace zentrel {

/// The udev rule that lets the engineer at the machine open the bridge.
inline constexpr std::string_view kBridgeRule =
    R"(SUBSYSTEM=="usb", ATTR{idVendor}=="7e41", ATTR{idProduct}=="c3a6", MODE="0660", )"
    R"(GROUP="plugdev", TAG+="uaccess")";

/// The USB bridge on this machine, reached through libusb; with several plugged in, the first.
///
/// Any trouble with the link closes it, and `usbGetError` tells of it from then on. When a bridge
/// is opened that may still owe a reply (after a time-out, or because nobody took it), it is reset
/// so that it forgets it; and every opening reads away what is left in the pipe.
class LibusbBridge final : public BridgeLibrary {
  public:
    using Milliseconds = std::chrono::milliseconds;

    // What usbGetError tells.
    static constexpr std::int16_t kNotOpen = 1;     ///< `InitUSBInterface` hasn't run yet.
    static constexpr std::int16_t kNotAttached = 2; ///< None is plugged in, or it was pulled.
    static constexpr std::int16_t kTimeOut = 3;     ///< It took or gave no bytes in time.
    static constexpr std::int16_t kNoRight = 4;     ///< The user may not open it.
    static constexpr std::int16_t kInUse = 5;       ///< Another program has it.
    static constexpr std::int16_t kNoEndpoints = 6; ///< It has no endpoint pair.
    static constexpr std::int16_t kBroken = 7;      ///< The link failed otherwise.

    struct Limits {
        Milliseconds transfer = std::chrono::seconds(1); ///< For bytes out and for bytes in.
        Milliseconds quiet{5}; ///< Silence after which an opened link counts as read empty.
    };

    explicit LibusbBridge(Limits limits);
    ~LibusbBridge() override;
    LibusbBridge(const LibusbBridge&) = delete;
    LibusbBridge& operator=(const LibusbBridge&) = delete;

    std::int16_t InitUSBInterface() override;
    std::int16_t usbGetError() override;
    std::int16_t usbConnected() override;
    std::int16_t usbSendCmdData(const std::uint8_t* packet, std::int16_t length) override;
    std::int16_t usbReceiveCmdData(std::uint8_t* buffer, std::int16_t max) override;

    std::string Diagnosis() const override;

  private:
    struct ContextCloser {
        void operator()(libusb_context* context) const;
    };

    libusb_context* Context();
    std::int16_t Open();
    bool ReadEmpty();
    void Fail(std::int16_t error);

    Limits limits_;
    std::unique_ptr<libusb_context, ContextCloser> context_;
    std::unique_ptr<UsbLink> link_;
    std::int16_t error_ = kNotOpen;
    bool owesReply_ = false; // the bridge may still answer a command of an earlier link

    std::array<std::uint8_t, UsbLink::kLongestReceive> held_{}; // came, and not handed on yet
    int heldBegin_ = 0;
    int heldEnd_ = 0;
};

} // namespace zentrel
