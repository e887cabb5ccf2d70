#pragma once

#include <linux/usbdevice_fs.h>
#include <sys/ioctl.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <vector>

#include "tests/drivers/played_device.h"
#include "transport/bench/fault_injector.h"
#include "transport/bench/simulated_bridge.h"

namespace zentrel {

/// What goes wrong with the next transfer.
enum class UsbFault {
    None,
    // Either direction.
    Refused,  ///< The kernel doesn't take the transfer.
    Protocol, ///< It fails on the bus, and nothing moved.
    Halted,   ///< The endpoint stalls.
    Lost,     ///< It never ends by itself.
    Stuck,    ///< Nor when it is cancelled.
    Pulled,   ///< The bridge is pulled before a byte moved.
    // Out.
    Half,       ///< Half of the bytes go out, then the bus fails.
    Unnoticed,  ///< All go out, and the transfer fails all the same.
    PulledHalf, ///< Half of the bytes go out, then the bridge is pulled.
    PulledOut,  ///< All go out, then the bridge is pulled.
    // In.
    Late,     ///< The reply comes after the reader has given up.
    Garbage,  ///< Random bytes come in place of the reply.
    Split,    ///< One byte comes, the rest with the next transfer.
    PulledIn, ///< One byte comes, then the bridge is pulled.
};

/// The kernel's usbfs over the simulated bridge: transfers are taken, completed, cancelled and
/// reaped as the kernel does it. Endpoint 0x02 leads to the bridge, 0x81 from it.
class PlayedUsbfs final : public PlayedDevice {
  public:
    static constexpr std::uint8_t kOut = 0x02;
    static constexpr std::uint8_t kIn = 0x81;

    explicit PlayedUsbfs(SimulatedBridge& bridge) : bridge_(bridge) {}

    int Ioctl(unsigned long request, void* argument) override;

    /// A bridge that was plugged in anew, or pulled: what was under way ends with an error.
    void Plug();
    void Pull();
    bool plugged() const { return plugged_; }

    /// Another program has the interface.
    void SetInUse(bool value) { inUse_ = value; }
    /// Every receive brings bytes that nobody asked for.
    void SetBabbling(bool value) { babbling_ = value; }
    /// Strikes transfers at random.
    void SetInjector(FaultInjector* injector) { injector_ = injector; }
    /// Strikes the transfer in `direction` that comes after `after` others in it.
    void StrikeAfter(std::uint8_t direction, int after, UsbFault fault);
    /// How long a late reply is late.
    void SetLateness(std::chrono::milliseconds value) { lateness_ = value; }

    int resets() const { return resets_; }

  private:
    using Clock = std::chrono::steady_clock;
    struct Reply {
        Clock::time_point from;
        std::vector<std::uint8_t> bytes;
    };
    struct Script {
        std::uint8_t direction;
        int after;
        UsbFault fault;
    };

    int Submit(usbdevfs_urb& urb);
    int SubmitOut(usbdevfs_urb& urb, UsbFault fault);
    int SubmitIn(usbdevfs_urb& urb, UsbFault fault);
    int Reap(void** urb);
    int Discard(const void* urb);
    int Reset();

    UsbFault NextFault(std::uint8_t direction);
    void Deliver(const usbdevfs_urb& urb, int count);
    bool Fill(usbdevfs_urb& urb);
    void End(usbdevfs_urb& urb, int status) {
        urb.status = status;
        ended_.push_back(&urb);
    }
    void PullNow();

    std::recursive_mutex mutex_; // the driver's thread and umockdev's
    SimulatedBridge& bridge_;
    bool plugged_ = false;
    bool claimed_ = false;
    bool inUse_ = false;
    bool babbling_ = false;
    FaultInjector* injector_ = nullptr;
    std::optional<Script> script_;
    std::chrono::milliseconds lateness_{0};
    std::deque<usbdevfs_urb*> waiting_; // submitted, not ended
    std::deque<usbdevfs_urb*> ended_;
    std::deque<Reply> replies_;
    int resets_ = 0;
};

} // namespace zentrel
