#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/drivers/played_device.h"
#include "tests/drivers/played_ppdev.h"
#include "tests/drivers/played_usbfs.h"
#include "transport/bench/bench.h"

struct _UMockdevTestbed;

namespace zentrel {

/// A machine for the real drivers to run on: device files, kernel trees and udev's events are
/// umockdev's, and behind the files stands the simulated bench. Drivers must be made after it and
/// go before it.
class PlayedKernel {
  public:
    static constexpr const char* kSerial = "ZB-0042";

    PlayedKernel();
    ~PlayedKernel();
    PlayedKernel(const PlayedKernel&) = delete;
    PlayedKernel& operator=(const PlayedKernel&) = delete;

    const std::string& root() const { return root_; }

    // Parallel ports.
    /// A port that the kernel knows; `hardware` stands behind its device file.
    PlayedPpdev& AddPort(const std::string& name, std::uint16_t base, PortDriver& hardware);
    /// Without this the kernel knows the port, but the device file is missing.
    void RemovePortNode(const std::string& name);
    /// Who has the port claimed, as the kernel's tree tells it.
    void SetPortHolder(const std::string& name, std::string_view holder);
    std::string portTree() const { return root_ + "/parport"; }
    /// Unloads the ports' module with all that it made, and loads it again.
    void UnloadPorts();
    void LoadPorts();

    // The bridge. Its socket is a path of the USB tree, as "1-1".
    PlayedUsbfs& AddBridge(SimulatedBridge& hardware);
    void PlugBridge(const std::string& socket = "1-1", const std::string& serial = kSerial);
    void PullBridge();
    /// What the machine's rest does after the bridge went in the middle of a transfer.
    void NoticePull();
    /// A device of another kind comes and goes.
    void PlugOther(const std::string& socket);
    /// Takes all rights to a device file, or to the bridge's.
    void Deny(const std::string& node);
    void DenyBridge() { Deny(bridgeNode_); }
    /// The bridge's endpoints as `kind` from the next plug on: 2 bulk, 3 interrupt; 0 none.
    void SetEndpointKind(int kind) { endpointKind_ = kind; }

  private:
    void Attach(const std::string& node, PlayedDevice& device);
    void AddUsbDevice(const std::string& socket, int vendor, int product,
                      const std::string& serial);
    void Remove(const std::string& path);

    _UMockdevTestbed* testbed_;
    std::string root_;
    std::vector<std::unique_ptr<PlayedPpdev>> ports_;
    std::unique_ptr<PlayedUsbfs> bridge_;
    std::string bridgePath_, bridgeNode_;
    int nextDevice_ = 2;
    int endpointKind_ = 2;
};

} // namespace zentrel
