#include "transport/bench/simulated_watch.h"

namespace zentrel {

int SimulatedWatch::Register(DeviceEvents& sink) {
    if (failure_ == 0) sink_ = &sink;
    return failure_;
}

void SimulatedWatch::Send(const DeviceEvent& event) {
    if (sink_ != nullptr) sink_->DeviceChanged(event);
}

void SimulatedWatch::BridgeAttached(std::string_view serial) {
    Send({DeviceEvent::kArrival, DeviceEvent::kInterface, BridgeName(serial)});
}

void SimulatedWatch::BridgeRemoved(std::string_view serial) {
    Send({DeviceEvent::kRemoval, DeviceEvent::kInterface, BridgeName(serial)});
}

std::string SimulatedWatch::BridgeName(std::string_view serial) {
    return R"(\\?\USB#Vid_7E41&Pid_C3A6#)" + std::string(serial) +
           "#{5b0d2c11-7f3a-4e08-9c64-1a2e88d0b7f5}";
}

} // namespace zentrel
