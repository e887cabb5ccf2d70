#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>

struct libusb_context;
struct libusb_device;
struct libusb_device_handle;
struct libusb_transfer;

namespace zentrel {

/// An open USB device with one claimed interface and a pair of endpoints, bytes in and bytes out.
/// Every operation ends by itself: at its time limit, and soon after it even when the system never
/// gives a transfer back.
class UsbLink {
  public:
    using Milliseconds = std::chrono::milliseconds;
    /// Most bytes that one Receive takes; no endpoint has a longer packet.
    static constexpr int kLongestReceive = 1024;

    /// A link, or none and libusb's error.
    struct Opened {
        std::unique_ptr<UsbLink> link;
        int error = 0;
    };
    /// Opens the device and claims its first interface with a bulk endpoint pair; where there is
    /// none, its first with an interrupt pair. LIBUSB_ERROR_NOT_SUPPORTED: it has neither.
    static Opened Open(libusb_context* context, libusb_device* device);
    ~UsbLink();
    UsbLink(const UsbLink&) = delete;
    UsbLink& operator=(const UsbLink&) = delete;

    libusb_device* device() const;

    /// What moved, and 0 or libusb's error: LIBUSB_ERROR_TIMEOUT when the limit came first.
    struct Moved {
        int count = 0;
        int error = 0;
    };
    Moved Send(std::span<const std::uint8_t> bytes, Milliseconds limit);
    /// Waits for the first bytes and takes along what follows them at once.
    Moved Receive(std::span<std::uint8_t, kLongestReceive> bytes, Milliseconds limit);

    /// Resets the device as if it were plugged in anew; 0 or libusb's error.
    int Reset();

  private:
    struct Interface {
        int number = -1;
        int alternate = 0;
        std::uint8_t in = 0, out = 0;
        int packet = 0; // most bytes of one packet in
        bool bulk = true;
    };
    struct HandleCloser {
        void operator()(libusb_device_handle* handle) const;
    };
    struct TransferFreer {
        void operator()(libusb_transfer* transfer) const;
    };

    UsbLink(libusb_context* context, libusb_device_handle* handle);
    static Interface FindInterface(libusb_device* device);
    int Claim();
    Moved Move(std::uint8_t endpoint, std::uint8_t* bytes, int count, Milliseconds limit);
    bool AwaitEnd(int& ended, Milliseconds limit);

    libusb_context* context_;
    // Freed after the handle, which lets go of a transfer that never came back.
    std::unique_ptr<libusb_transfer, TransferFreer> transfer_;
    std::unique_ptr<libusb_device_handle, HandleCloser> handle_;
    Interface interface_;
    bool claimed_ = false;
};

} // namespace zentrel
