#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "transport/device_watch.h"

namespace zentrel {

/// A device watch whose devices come and go when it is told so.
class SimulatedWatch final : public DeviceWatch {
  public:
    int Register(DeviceEvents& sink) override;
    void Unregister() override { sink_ = nullptr; }

    /// The error number of the next registrations; 0 lets them succeed.
    void SetFailure(int error) { failure_ = error; }
    bool registered() const { return sink_ != nullptr; }

    void Send(const DeviceEvent& event);
    void BridgeAttached(std::string_view serial);
    void BridgeRemoved(std::string_view serial);

    /// The name under which the platform shows a bridge.
    static std::string BridgeName(std::string_view serial);

  private:
    DeviceEvents* sink_ = nullptr;
    int failure_ = 0;
};

} // namespace zentrel
