#include "transport/drivers/libusb_bridge.h"

#include <libusb.h>

#include <algorithm>
#include <span>

#include "transport/usb_presence.h"

namespace zentrel {
namespace {

// A bridge that never falls silent is given up after so many receives.
constexpr int kMostStaleReceives = 64;

struct DeviceList {
    explicit DeviceList(libusb_context* context) {
        if (context != nullptr) count = libusb_get_device_list(context, &devices);
    }
    ~DeviceList() {
        if (devices != nullptr) libusb_free_device_list(devices, 1);
    }
    DeviceList(const DeviceList&) = delete;
    DeviceList& operator=(const DeviceList&) = delete;

    std::span<libusb_device*> all() const {
        return {devices, static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
    }
    bool Has(libusb_device* device) const { return std::ranges::count(all(), device) > 0; }
    libusb_device* FindBridge() const {
        const auto found = std::ranges::find_if(all(), [](libusb_device* device) {
            libusb_device_descriptor is{};
            return libusb_get_device_descriptor(device, &is) == 0 && is.idVendor == kBridgeVendor &&
                   is.idProduct == kBridgeProduct;
        });
        return found == all().end() ? nullptr : *found;
    }

    libusb_device** devices = nullptr;
    ssize_t count = 0;
};

// libusb's error as usbGetError tells it.
std::int16_t Told(int error) {
    switch (error) {
    case LIBUSB_SUCCESS:
        return 0;
    case LIBUSB_ERROR_TIMEOUT:
        return LibusbBridge::kTimeOut;
    case LIBUSB_ERROR_ACCESS:
        return LibusbBridge::kNoRight;
    case LIBUSB_ERROR_BUSY:
        return LibusbBridge::kInUse;
    case LIBUSB_ERROR_NOT_SUPPORTED:
        return LibusbBridge::kNoEndpoints;
    case LIBUSB_ERROR_NO_DEVICE:
    case LIBUSB_ERROR_NOT_FOUND:
        return LibusbBridge::kNotAttached;
    default:
        return LibusbBridge::kBroken;
    }
}

} // namespace

void LibusbBridge::ContextCloser::operator()(libusb_context* context) const {
    libusb_exit(context);
}

LibusbBridge::LibusbBridge(Limits limits) : limits_(limits) {}

LibusbBridge::~LibusbBridge() = default;

libusb_context* LibusbBridge::Context() {
    if (!context_) {
        libusb_context* made = nullptr;
        if (libusb_init(&made) == 0) context_.reset(made);
    }
    return context_.get();
}

std::int16_t LibusbBridge::InitUSBInterface() {
    Fail(0);
    error_ = Open();
    if (error_ != 0) link_.reset();
    return error_;
}

std::int16_t LibusbBridge::Open() {
    const DeviceList list(Context());
    libusb_device* bridge = list.FindBridge();
    if (bridge == nullptr) {
        owesReply_ = false; // whatever it owed went with its power
        return kNotAttached;
    }
    auto [link, error] = UsbLink::Open(context_.get(), bridge);
    link_ = std::move(link);
    if (error != 0) return Told(error);
    if (owesReply_) {
        if (const int failed = link_->Reset(); failed != 0) return Told(failed);
        owesReply_ = false;
    }
    return ReadEmpty() ? std::int16_t{0} : kBroken;
}

bool LibusbBridge::ReadEmpty() {
    for (int i = 0; i < kMostStaleReceives; ++i) {
        const auto moved = link_->Receive(held_, limits_.quiet);
        if (moved.error == LIBUSB_ERROR_TIMEOUT) return true;
        if (moved.error != 0) break;
    }
    owesReply_ = true;
    return false;
}

void LibusbBridge::Fail(std::int16_t error) {
    error_ = error;
    if (error != 0) owesReply_ = true;
    link_.reset();
    heldBegin_ = heldEnd_ = 0;
}

std::int16_t LibusbBridge::usbGetError() {
    if (error_ == 0 && !DeviceList(context_.get()).Has(link_->device())) Fail(kNotAttached);
    return error_;
}

std::int16_t LibusbBridge::usbConnected() {
    return DeviceList(Context()).FindBridge() != nullptr ? 1 : 0;
}

std::int16_t LibusbBridge::usbSendCmdData(const std::uint8_t* packet, std::int16_t length) {
    if (error_ != 0 || length <= 0) return 0;
    owesReply_ = true;
    const auto moved = link_->Send({packet, static_cast<std::size_t>(length)}, limits_.transfer);
    if (moved.error != 0) Fail(Told(moved.error));
    return static_cast<std::int16_t>(moved.count);
}

std::int16_t LibusbBridge::usbReceiveCmdData(std::uint8_t* buffer, std::int16_t max) {
    if (error_ != 0 || max <= 0) return 0;
    if (heldBegin_ == heldEnd_) {
        const auto moved = link_->Receive(held_, limits_.transfer);
        if (moved.error != 0) {
            Fail(Told(moved.error));
            return 0;
        }
        owesReply_ = false;
        heldBegin_ = 0;
        heldEnd_ = moved.count;
    }
    const int count = std::min<int>(heldEnd_ - heldBegin_, max);
    std::copy_n(held_.begin() + heldBegin_, count, buffer);
    heldBegin_ += count;
    return static_cast<std::int16_t>(count);
}

std::string LibusbBridge::Diagnosis() const {
    switch (error_) {
    case kNoRight:
        return "The USB bridge is plugged in, but you may not open it. This udev rule allows it; "
               "put it into /etc/udev/rules.d/70-zentrel-bridge.rules and plug the bridge in "
               "anew:\n" +
               std::string(kBridgeRule);
    case kInUse:
        return "Another program has the USB bridge open.\nEnd it, then load the device again.";
    case kNoEndpoints:
        return "The USB bridge that is plugged in has no endpoints to send and receive by.\nIts "
               "firmware may be missing; plug it in anew.";
    case kTimeOut:
        return "The USB bridge didn't answer in time.\nLoad the device again to open the link "
               "anew; if that doesn't help, plug the bridge in anew.";
    case kBroken:
        return "The link to the USB bridge broke.\nLoad the device again to open it anew; if that "
               "doesn't help, plug the bridge in anew.";
    default:
        return {};
    }
}

} // namespace zentrel
