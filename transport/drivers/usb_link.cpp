#include "transport/drivers/usb_link.h"

#include <libusb.h>

#include <algorithm>

namespace zentrel {
namespace {

using Clock = std::chrono::steady_clock;

// How long the system may take to give a cancelled transfer back.
constexpr UsbLink::Milliseconds kGrace{250};
// How long the next packet of a longer message may take.
constexpr UsbLink::Milliseconds kFollows{5};
// Of the field, the bits that hold the size.
constexpr int kPacketSize = 0x7FF;

// A transfer's end, as the error that a call would have returned.
int ErrorOf(libusb_transfer_status status) {
    switch (status) {
    case LIBUSB_TRANSFER_COMPLETED:
        return LIBUSB_SUCCESS;
    case LIBUSB_TRANSFER_TIMED_OUT:
        return LIBUSB_ERROR_TIMEOUT;
    case LIBUSB_TRANSFER_STALL:
        return LIBUSB_ERROR_PIPE;
    case LIBUSB_TRANSFER_NO_DEVICE:
        return LIBUSB_ERROR_NO_DEVICE;
    case LIBUSB_TRANSFER_OVERFLOW:
        return LIBUSB_ERROR_OVERFLOW;
    default:
        return LIBUSB_ERROR_IO;
    }
}

struct Pair {
    std::uint8_t in = 0, out = 0;
    int packet = 0;
    bool whole() const {
        return in != 0 && out != 0 && packet > 0 && packet <= UsbLink::kLongestReceive;
    }
};

Pair FindPair(const libusb_interface_descriptor& setting, int kind) {
    Pair pair;
    for (const auto& endpoint : std::span(setting.endpoint, setting.bNumEndpoints)) {
        if ((endpoint.bmAttributes & LIBUSB_TRANSFER_TYPE_MASK) != kind) continue;
        const bool in = (endpoint.bEndpointAddress & LIBUSB_ENDPOINT_DIR_MASK) != 0;
        std::uint8_t& found = in ? pair.in : pair.out;
        if (found != 0) continue;
        found = endpoint.bEndpointAddress;
        if (in) pair.packet = endpoint.wMaxPacketSize & kPacketSize;
    }
    return pair;
}

timeval Timeval(Clock::duration span) {
    const auto us =
        std::max<long>(std::chrono::duration_cast<std::chrono::microseconds>(span).count(), 0);
    return {us / 1000000, us % 1000000};
}

} // namespace

void UsbLink::HandleCloser::operator()(libusb_device_handle* handle) const {
    libusb_close(handle);
}

void UsbLink::TransferFreer::operator()(libusb_transfer* transfer) const {
    libusb_free_transfer(transfer);
}

UsbLink::UsbLink(libusb_context* context, libusb_device_handle* handle)
    : context_(context), transfer_(libusb_alloc_transfer(0)), handle_(handle) {}

UsbLink::~UsbLink() {
    if (handle_ && claimed_) libusb_release_interface(handle_.get(), interface_.number);
}

UsbLink::Interface UsbLink::FindInterface(libusb_device* device) {
    libusb_config_descriptor* config = nullptr;
    if (libusb_get_active_config_descriptor(device, &config) != 0) return {};
    const std::unique_ptr<libusb_config_descriptor, decltype(&libusb_free_config_descriptor)> owner(
        config, libusb_free_config_descriptor);
    for (const int kind : {LIBUSB_TRANSFER_TYPE_BULK, LIBUSB_TRANSFER_TYPE_INTERRUPT}) {
        for (const auto& interface : std::span(config->interface, config->bNumInterfaces)) {
            const auto count = static_cast<std::size_t>(interface.num_altsetting);
            for (const auto& setting : std::span(interface.altsetting, count)) {
                const Pair pair = FindPair(setting, kind);
                if (!pair.whole()) continue;
                return {setting.bInterfaceNumber,
                        setting.bAlternateSetting,
                        pair.in,
                        pair.out,
                        pair.packet,
                        kind == LIBUSB_TRANSFER_TYPE_BULK};
            }
        }
    }
    return {};
}

UsbLink::Opened UsbLink::Open(libusb_context* context, libusb_device* device) {
    libusb_device_handle* handle = nullptr;
    if (const int error = libusb_open(device, &handle); error != 0) return {nullptr, error};
    std::unique_ptr<UsbLink> link(new UsbLink(context, handle));
    if (!link->transfer_) return {nullptr, LIBUSB_ERROR_NO_MEM};
    const int error = link->Claim();
    if (error != 0) return {nullptr, error};
    return {std::move(link), 0};
}

int UsbLink::Claim() {
    interface_ = FindInterface(device());
    if (interface_.number < 0) return LIBUSB_ERROR_NOT_SUPPORTED;
    libusb_set_auto_detach_kernel_driver(handle_.get(), 1);
    if (const int error = libusb_claim_interface(handle_.get(), interface_.number); error != 0) {
        return error;
    }
    claimed_ = true;
    if (interface_.alternate == 0) return 0;
    return libusb_set_interface_alt_setting(handle_.get(), interface_.number, interface_.alternate);
}

libusb_device* UsbLink::device() const {
    return libusb_get_device(handle_.get());
}

UsbLink::Moved UsbLink::Send(std::span<const std::uint8_t> bytes, Milliseconds limit) {
    // libusb takes one kind of buffer for both directions; it only reads this one.
    return Move(interface_.out, const_cast<std::uint8_t*>(bytes.data()),
                static_cast<int>(bytes.size()), limit);
}

UsbLink::Moved UsbLink::Receive(std::span<std::uint8_t, kLongestReceive> bytes,
                                Milliseconds limit) {
    const auto deadline = Clock::now() + limit;
    int count = 0;
    for (auto left = limit; left > Milliseconds::zero();) {
        const Moved moved = Move(interface_.in, bytes.data() + count, interface_.packet, left);
        count += moved.count;
        if (moved.error == LIBUSB_ERROR_TIMEOUT) break;
        if (moved.error != 0) return {count, moved.error};
        // A packet that isn't full is the last one of what the device had to say; an empty one
        // brings nothing by itself.
        const bool full = moved.count == interface_.packet;
        if (count > 0 && (!full || count + interface_.packet > kLongestReceive)) break;
        left = full ? kFollows : std::chrono::ceil<Milliseconds>(deadline - Clock::now());
    }
    return {count, count > 0 ? 0 : LIBUSB_ERROR_TIMEOUT};
}

UsbLink::Moved UsbLink::Move(std::uint8_t endpoint, std::uint8_t* bytes, int count,
                             Milliseconds limit) {
    if (!handle_) return {0, LIBUSB_ERROR_NO_DEVICE};
    int ended = 0;
    const auto wait = static_cast<unsigned>(std::max<Milliseconds::rep>(limit.count(), 1));
    const auto end = [](libusb_transfer* transfer) { *static_cast<int*>(transfer->user_data) = 1; };
    libusb_fill_bulk_transfer(transfer_.get(), handle_.get(), endpoint, bytes, count, end, &ended,
                              wait);
    if (!interface_.bulk) transfer_->type = LIBUSB_TRANSFER_TYPE_INTERRUPT;
    if (const int error = libusb_submit_transfer(transfer_.get()); error != 0) return {0, error};

    if (!AwaitEnd(ended, limit)) {
        handle_.reset(); // takes the transfer away from the system, so that it never ends later
        return {0, LIBUSB_ERROR_IO};
    }
    return {transfer_->actual_length, ErrorOf(transfer_->status)};
}

bool UsbLink::AwaitEnd(int& ended, Milliseconds limit) {
    auto deadline = Clock::now() + limit + kGrace;
    bool cancelled = false;
    while (ended == 0) {
        timeval left = Timeval(deadline - Clock::now());
        const int error = libusb_handle_events_timeout_completed(context_, &left, &ended);
        if (ended != 0 || error == LIBUSB_ERROR_INTERRUPTED) continue;
        if (error == 0 && Clock::now() < deadline) continue;
        if (cancelled) return false;
        cancelled = true;
        libusb_cancel_transfer(transfer_.get());
        deadline = Clock::now() + kGrace;
    }
    return true;
}

int UsbLink::Reset() {
    return handle_ ? libusb_reset_device(handle_.get()) : LIBUSB_ERROR_NO_DEVICE;
}

} // namespace zentrel
