#include <poll.h>

#include "tests/drivers/played_kernel.h"
#include "tests/transport/bridge_library_contract.h"
#include "tests/transport/device_watch_contract.h"
#include "tests/transport/port_driver_contract.h"
#include "transport/drivers/libusb_bridge.h"
#include "transport/drivers/ppdev_port.h"
#include "transport/drivers/udev_watch.h"

// The real drivers keep what the simulated ones keep.
namespace zentrel {
namespace {

using namespace std::chrono_literals;

struct Ppdev : PortUnderTest {
    Ppdev() { ppdev.OpenTVicPort(); }
    PortDriver& port() override { return ppdev; }
    void BreakOpening() override { kernel.RemovePortNode("parport0"); }
    PlayedKernel kernel;
    PlayedPpdev& played = kernel.AddPort("parport0", 888, rig.bench.port);
    PpdevPort ppdev{rig.part, {kernel.portTree(), "/dev"}};
};

struct Libusb : BridgeUnderTest {
    BridgeLibrary& library() override { return libusb; }
    void SetPlugged(bool value) override { value ? kernel.PlugBridge() : kernel.PullBridge(); }
    void SetSilent(bool value) override { bridge.faults.silent = value; }
    Session session;
    cPart part{session};
    Board board{part};
    SimulatedBridge bridge{board};
    PlayedKernel kernel;
    PlayedUsbfs& played = kernel.AddBridge(bridge);
    LibusbBridge libusb{{50ms, 5ms}};
};

struct Udev : WatchUnderTest {
    DeviceWatch& watch() override { return udev; }
    void Attach(const std::string& serial) override {
        kernel.PlugBridge("1-" + std::to_string(++socket), serial);
        Settle();
    }
    void Remove(const std::string&) override {
        kernel.PullBridge();
        Settle();
    }
    void Settle() {
        pollfd ready{udev.fd(), POLLIN, 0};
        EXPECT_EQ(poll(&ready, 1, 1000), 1);
        udev.Dispatch();
    }
    Session session;
    cPart part{session};
    Board board{part};
    SimulatedBridge bridge{board};
    PlayedKernel kernel;
    PlayedUsbfs& played = kernel.AddBridge(bridge);
    UdevWatch udev;
    int socket = 1;
};

const PortRow kPorts[] = {{"Ppdev", [] { return std::make_unique<Ppdev>(); }}};
const BridgeRow kBridges[] = {{"Libusb", [] { return std::make_unique<Libusb>(); }}};
const WatchRow kWatches[] = {{"Udev", [] { return std::make_unique<Udev>(); }}};

constexpr auto kName = [](const auto& info) { return std::string(info.param.name); };
INSTANTIATE_TEST_SUITE_P(RealPorts, PortDriverContract, ::testing::ValuesIn(kPorts), kName);
INSTANTIATE_TEST_SUITE_P(RealBridges, BridgeLibraryContract, ::testing::ValuesIn(kBridges), kName);
INSTANTIATE_TEST_SUITE_P(RealWatches, DeviceWatchContract, ::testing::ValuesIn(kWatches), kName);

} // namespace
} // namespace zentrel
