#include "tests/transport/device_watch_contract.h"

#include "transport/bench/simulated_watch.h"

namespace zentrel {
namespace {

struct Simulated : WatchUnderTest {
    DeviceWatch& watch() override { return simulated; }
    void Attach(const std::string& serial) override { simulated.BridgeAttached(serial); }
    void Remove(const std::string& serial) override { simulated.BridgeRemoved(serial); }
    SimulatedWatch simulated;
};

const WatchRow kWatches[] = {{"Simulated", [] { return std::make_unique<Simulated>(); }}};

INSTANTIATE_TEST_SUITE_P(Watches, DeviceWatchContract, ::testing::ValuesIn(kWatches),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace zentrel
