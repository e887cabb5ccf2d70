#include "transport/drivers/udev_watch.h"

#include <libudev.h>

#include <algorithm>
#include <cerrno>
#include <string_view>

namespace zentrel {
namespace {

constexpr const char* kSubsystem = "usb";
constexpr const char* kDeviceType = "usb_device";
// The interface class of USB devices.
constexpr const char* kGuid = "{a5dcbf10-6530-11d2-901f-00c04fb951ed}";
constexpr int kReceiveBuffer = 1 << 20;

std::string Text(const char* text) {
    return text == nullptr ? std::string() : std::string(text);
}

// The serial number, or where it has none the port that it is plugged into.
std::string Serial(udev_device& device) {
    std::string serial = Text(udev_device_get_sysattr_value(&device, "serial"));
    if (serial.empty()) serial = Text(udev_device_get_property_value(&device, "ID_SERIAL_SHORT"));
    if (serial.empty()) serial = Text(udev_device_get_sysname(&device));
    std::ranges::replace(serial, '#', '_'); // it separates the parts of a device name
    return serial;
}

// The kernel's PRODUCT property is "7e41/c3a6/100", there at arrival and at removal alike.
std::string DeviceName(udev_device& device) {
    const std::string product = Text(udev_device_get_property_value(&device, "PRODUCT"));
    const auto vendorEnd = product.find('/');
    if (vendorEnd == std::string::npos) return {};
    const auto productEnd = product.find('/', vendorEnd + 1);
    return R"(\\?\USB#Vid_)" + product.substr(0, vendorEnd) + "&Pid_" +
           product.substr(vendorEnd + 1, productEnd - vendorEnd - 1) + "#" + Serial(device) + "#" +
           kGuid;
}

} // namespace

void UdevWatch::Unref::operator()(udev* object) const {
    udev_unref(object);
}

void UdevWatch::Unref::operator()(udev_device* object) const {
    udev_device_unref(object);
}

void UdevWatch::Unref::operator()(udev_monitor* object) const {
    udev_monitor_unref(object);
}

UdevWatch::UdevWatch() : udev_(udev_new()) {
    Start();
}

UdevWatch::~UdevWatch() = default;

void UdevWatch::Start() {
    errno = 0;
    if (udev_) monitor_.reset(udev_monitor_new_from_netlink(udev_.get(), "udev"));
    const bool started = monitor_ &&
                         udev_monitor_filter_add_match_subsystem_devtype(monitor_.get(), kSubsystem,
                                                                         kDeviceType) >= 0 &&
                         udev_monitor_enable_receiving(monitor_.get()) >= 0;
    if (!started) {
        error_ = errno != 0 ? errno : ENODEV;
        return;
    }
    // Best effort: without the right to enlarge it, the system's own size holds.
    udev_monitor_set_receive_buffer_size(monitor_.get(), kReceiveBuffer);
    fd_ = udev_monitor_get_fd(monitor_.get());
    RememberPresent();
}

void UdevWatch::RememberPresent() {
    const std::unique_ptr<udev_enumerate, decltype(&udev_enumerate_unref)> scan(
        udev_enumerate_new(udev_.get()), udev_enumerate_unref);
    if (!scan) return;
    udev_enumerate_add_match_subsystem(scan.get(), kSubsystem);
    udev_enumerate_add_match_property(scan.get(), "DEVTYPE", kDeviceType);
    udev_enumerate_scan_devices(scan.get());
    for (auto* entry = udev_enumerate_get_list_entry(scan.get()); entry != nullptr;
         entry = udev_list_entry_get_next(entry)) {
        const char* path = udev_list_entry_get_name(entry);
        const Device device(udev_device_new_from_syspath(udev_.get(), path));
        if (device) present_[path] = DeviceName(*device);
    }
}

int UdevWatch::Register(DeviceEvents& sink) {
    Dispatch();
    if (error_ == 0) sink_ = &sink;
    return error_;
}

void UdevWatch::Dispatch() {
    if (!monitor_) return;
    while (const Device device{udev_monitor_receive_device(monitor_.get())})
        Handle(*device);
}

void UdevWatch::Handle(udev_device& device) {
    const std::string_view action = udev_device_get_action(&device);
    const std::string path = Text(udev_device_get_syspath(&device));
    DeviceEvent event;
    if (action == "add") {
        event.name = present_[path] = DeviceName(device);
    } else if (action == "remove") {
        const auto known = present_.extract(path);
        event.event = DeviceEvent::kRemoval;
        event.name = known.empty() ? DeviceName(device) : known.mapped();
    } else {
        return;
    }
    if (sink_ != nullptr && !event.name.empty()) sink_->DeviceChanged(event);
}

} // namespace zentrel
