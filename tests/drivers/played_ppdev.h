#pragma once

#include <atomic>
#include <cstdint>

#include "tests/drivers/played_device.h"
#include "transport/bench/fault_injector.h"
#include "transport/port_driver.h"

namespace zentrel {

/// The kernel's ppdev over the simulated port: registers move byte for byte while it is claimed.
class PlayedPpdev final : public PlayedDevice {
  public:
    PlayedPpdev(PortDriver& hardware, std::uint16_t base) : hardware_(hardware), base_(base) {}

    int Ioctl(unsigned long request, void* argument) override;

    bool claimed() const { return claimed_; }
    int claims() const { return claims_; }
    /// Another program registered for itself alone: claims are refused.
    void SetExclusive(bool value) { exclusive_ = value; }
    /// The port's own driver is gone: every call fails.
    void SetGone(bool value) { gone_ = value; }
    /// It goes after so many calls more.
    void GoAfter(int calls) { left_ = calls; }
    /// Strikes calls at random: they fail once, or the port is gone, or claimed by another program.
    void SetInjector(FaultInjector* injector) { injector_ = injector; }

  private:
    int Fault(unsigned long request);

    PortDriver& hardware_;
    std::uint16_t base_;
    std::atomic<bool> claimed_ = false;
    std::atomic<bool> exclusive_ = false;
    std::atomic<bool> gone_ = false;
    std::atomic<int> claims_ = 0;
    std::atomic<int> left_ = -1; // negative: it stays
    FaultInjector* injector_ = nullptr;
};

} // namespace zentrel
