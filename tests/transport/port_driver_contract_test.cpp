#include "tests/transport/port_driver_contract.h"

#include "transport/bench/fault_injector.h"

namespace zentrel {
namespace {

struct Simulated : PortUnderTest {
    PortDriver& port() override { return rig.bench.port; }
    void BreakOpening() override { rig.bench.port.SetUsable(false); }
};

struct Tapped : Simulated {
    PortDriver& port() override { return tapped; }
    WireLog log;
    TappedPort tapped{rig.bench.port, log};
};

struct Faulty : Simulated {
    PortDriver& port() override { return faulty; }
    FaultInjector none{1, 0};
    FaultyPort faulty{rig.bench.port, none};
};

const PortRow kPorts[] = {
    {"Simulated", [] { return std::make_unique<Simulated>(); }},
    {"Tapped", [] { return std::make_unique<Tapped>(); }},
    {"Faulty", [] { return std::make_unique<Faulty>(); }},
};

INSTANTIATE_TEST_SUITE_P(Ports, PortDriverContract, ::testing::ValuesIn(kPorts),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace zentrel
