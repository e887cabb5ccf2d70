#pragma once

#include "transport/bench/board.h"
#include "transport/bench/simulated_bridge.h"
#include "transport/bench/simulated_port.h"
#include "transport/bench/simulated_watch.h"
#include "transport/transport.h"

namespace zentrel {

/// A whole simulated bench for one device: the board, the two ways to it, and the watch. Its bridge
/// is plugged in from the start.
struct SimulatedBench {
    explicit SimulatedBench(const cPart& device) : board(device), port(board), bridge(board) {}

    Drivers drivers() { return {port, bridge, watch}; }

    /// As an engineer does it: the bridge itself, and the platform's word of it.
    void PlugBridge() {
        bridge.SetPlugged(true);
        watch.BridgeAttached(kSerial);
    }
    void PullBridge() {
        bridge.SetPlugged(false);
        watch.BridgeRemoved(kSerial);
    }

    static constexpr const char* kSerial = "SIM0001";

    Board board;
    SimulatedPort port;
    SimulatedBridge bridge;
    SimulatedWatch watch;
};

} // namespace zentrel
