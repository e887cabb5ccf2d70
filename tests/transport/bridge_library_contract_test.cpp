#include "tests/transport/bridge_library_contract.h"

#include "tests/transport/rig.h"
#include "transport/bench/fault_injector.h"

namespace zentrel {
namespace {

struct Simulated : BridgeUnderTest {
    BridgeLibrary& library() override { return bridge; }
    void SetPlugged(bool value) override { bridge.SetPlugged(value); }
    void SetSilent(bool value) override { bridge.faults.silent = value; }
    Session session;
    cPart part{session};
    Board board{part};
    SimulatedBridge bridge{board};
};

struct Tapped : Simulated {
    BridgeLibrary& library() override { return tapped; }
    WireLog log;
    TappedBridge tapped{bridge, log};
};

struct Faulty : Simulated {
    BridgeLibrary& library() override { return faulty; }
    FaultInjector none{1, 0};
    FaultyBridge faulty{bridge, none};
};

const BridgeRow kBridges[] = {
    {"Simulated", [] { return std::make_unique<Simulated>(); }},
    {"Tapped", [] { return std::make_unique<Tapped>(); }},
    {"Faulty", [] { return std::make_unique<Faulty>(); }},
};

INSTANTIATE_TEST_SUITE_P(Bridges, BridgeLibraryContract, ::testing::ValuesIn(kBridges),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace zentrel
