#include "tests/drivers/played_kernel.h"

#include <umockdev.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "transport/usb_presence.h"

namespace zentrel {
namespace {

namespace fs = std::filesystem;

void Check(GError* error) {
    if (error == nullptr) return;
    const std::string text = error->message;
    g_error_free(error);
    throw std::runtime_error(text);
}

void WriteFile(const fs::path& file, std::string_view text) {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << text;
}

template<typename... Values>
std::string Format(const char* format, Values... values) {
    std::array<char, 256> text;
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

// Device, configuration and interface descriptors, and two endpoints unless `kind` is 0.
std::string Descriptors(int vendor, int product, int kind) {
    const int endpoints = kind == 0 ? 0 : 2;
    std::string hex = Format("12010002FF000040%02X%02X%02X%02X000101020301", vendor & 0xFF,
                             vendor >> 8, product & 0xFF, product >> 8);
    hex += Format("0902%02X000101008032", 18 + 7 * endpoints);
    hex += Format("09040000%02XFF000000", endpoints);
    if (kind == 2) hex += "0705810240000007050202400000"; // packets of 64 bytes
    if (kind == 3) hex += "0705810308000107050203080001"; // of 8 bytes
    return hex;
}

gboolean Answer(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer device) {
    void* argument = nullptr;
    std::memcpy(&argument, umockdev_ioctl_client_get_arg(client)->data, sizeof argument);
    const int result = static_cast<PlayedDevice*>(device)->Ioctl(
        umockdev_ioctl_client_get_request(client), argument);
    umockdev_ioctl_client_complete(client, result < 0 ? -1 : result, result < 0 ? -result : 0);
    return TRUE;
}

} // namespace

PlayedKernel::PlayedKernel() : testbed_(umockdev_testbed_new()) {
    // A device file may outlive its socket when the bridge is pulled; that is no reason to die.
    std::signal(SIGPIPE, SIG_IGN);
    gchar* root = umockdev_testbed_get_root_dir(testbed_);
    root_ = root;
    g_free(root);
    fs::permissions(root_, fs::perms(0755)); // for those without rights to a device, too
    fs::create_directories(root_ + "/dev/bus/usb");
    fs::create_directories(root_ + "/sys/bus/usb/devices");
}

PlayedKernel::~PlayedKernel() {
    g_object_unref(testbed_);
}

void PlayedKernel::Attach(const std::string& node, PlayedDevice& device) {
    UMockdevIoctlBase* handler = umockdev_ioctl_base_new();
    g_signal_connect(handler, "handle-ioctl", G_CALLBACK(Answer), &device);
    GError* error = nullptr;
    umockdev_testbed_attach_ioctl(testbed_, node.c_str(), handler, &error);
    g_object_unref(handler);
    Check(error);
}

PlayedPpdev& PlayedKernel::AddPort(const std::string& name, std::uint16_t base,
                                   PortDriver& hardware) {
    WriteFile(fs::path(portTree()) / name / "base-addr", Format("%d\t%d\n", base, base + 0x400));
    SetPortHolder(name, "none");
    // With a content, the device is a file and not a terminal.
    const std::string text = "P: /devices/pnp0/00:05/ppdev/" + name + "\nN: " + name +
                             "=00\nE: DEVNAME=/dev/" + name + "\nE: SUBSYSTEM=ppdev\n";
    GError* error = nullptr;
    umockdev_testbed_add_from_string(testbed_, text.c_str(), &error);
    Check(error);
    ports_.push_back(std::make_unique<PlayedPpdev>(hardware, base));
    Attach("/dev/" + name, *ports_.back());
    return *ports_.back();
}

void PlayedKernel::RemovePortNode(const std::string& name) {
    fs::remove(root_ + "/dev/" + name);
}

void PlayedKernel::SetPortHolder(const std::string& name, std::string_view holder) {
    WriteFile(fs::path(portTree()) / name / "devices" / "active", std::string(holder) + "\n");
}

void PlayedKernel::UnloadPorts() {
    fs::rename(portTree(), portTree() + ".unloaded");
    fs::rename(root_ + "/dev/parport0", root_ + "/parport0.unloaded");
    for (const auto& port : ports_)
        port->SetGone(true);
}

void PlayedKernel::LoadPorts() {
    fs::rename(portTree() + ".unloaded", portTree());
    fs::rename(root_ + "/parport0.unloaded", root_ + "/dev/parport0");
    for (const auto& port : ports_)
        port->SetGone(false);
}

PlayedUsbfs& PlayedKernel::AddBridge(SimulatedBridge& hardware) {
    bridge_ = std::make_unique<PlayedUsbfs>(hardware);
    PlugBridge();
    return *bridge_;
}

void PlayedKernel::AddUsbDevice(const std::string& socket, int vendor, int product,
                                const std::string& serial) {
    const int number = nextDevice_++;
    const std::string hex = Descriptors(vendor, product, endpointKind_);
    const std::string node = Format("bus/usb/001/%03d", number);
    const std::string text =
        "P: /devices/pci0000:00/0000:00:14.0/usb1/" + socket + "\nN: " + node + "=" + hex +
        "\nE: DEVNAME=/dev/" + node + "\nE: DEVTYPE=usb_device\nE: SUBSYSTEM=usb\n" +
        Format("E: BUSNUM=001\nE: DEVNUM=%03d\nE: PRODUCT=%x/%x/100\n", number, vendor, product) +
        "E: ID_SERIAL_SHORT=" + serial + "\nA: serial=" + serial + "\\n\n" +
        Format("A: busnum=1\\n\nA: devnum=%d\\n\nA: speed=12\\n\nA: bConfigurationValue=1\\n\n",
               number) +
        Format("A: idVendor=%04x\\n\nA: idProduct=%04x\\n\nH: descriptors=", vendor, product) +
        hex + "\n";
    GError* error = nullptr;
    umockdev_testbed_add_from_string(testbed_, text.c_str(), &error); // sends the event, too
    Check(error);
}

void PlayedKernel::PlugBridge(const std::string& socket, const std::string& serial) {
    bridgeNode_ = Format("/dev/bus/usb/001/%03d", nextDevice_);
    bridgePath_ = "/sys/devices/pci0000:00/0000:00:14.0/usb1/" + socket;
    bridge_->Plug();
    AddUsbDevice(socket, kBridgeVendor, kBridgeProduct, serial);
    Attach(bridgeNode_, *bridge_);
}

void PlayedKernel::Remove(const std::string& path) {
    // When the event comes, nothing is left to ask the device for.
    fs::remove(root_ + path + "/serial");
    umockdev_testbed_set_property(testbed_, path.c_str(), "ID_SERIAL_SHORT", "");
    umockdev_testbed_uevent(testbed_, path.c_str(), "remove");
    umockdev_testbed_remove_device(testbed_, path.c_str());
}

void PlayedKernel::PullBridge() {
    bridge_->Pull();
    NoticePull();
}

void PlayedKernel::NoticePull() {
    if (bridgePath_.empty()) return;
    GError* error = nullptr;
    umockdev_testbed_detach_ioctl(testbed_, bridgeNode_.c_str(), &error);
    Check(error);
    Remove(bridgePath_);
    bridgePath_.clear();
}

void PlayedKernel::PlugOther(const std::string& socket) {
    AddUsbDevice(socket, 0x0403, 0x6001, "FT1");
    Remove("/sys/devices/pci0000:00/0000:00:14.0/usb1/" + socket);
}

void PlayedKernel::Deny(const std::string& node) {
    fs::permissions(root_ + node, fs::perms::none);
    // umockdev connects its socket even for a file that couldn't be opened.
    fs::permissions(root_ + "/ioctl" + node, fs::perms::all);
}

} // namespace zentrel
