#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "benchmarks/null_drivers.h"
#include "device/part.h"
#include "transport/bench/bench.h"
#include "transport/load_path.h"
#include "transport/lpt_route.h"
#include "transport/usb_bridge.h"

namespace zentrel {
namespace {

/// A device of 64 registers of 24 bits with four output pins and a trigger pin.
struct Bench {
    Session session;
    cPart part{session};
    NullPort port;
    NullBridge bridge;
    SimulatedBench simulated{part};
    Transport transport;

    Bench(std::string_view route, bool board)
        : transport(part, {board ? static_cast<PortDriver&>(simulated.port) : port, bridge,
                           simulated.watch}) {
        session.CommMode_Select = route;
        part.PortAddress = 888;
        part.SetRegisterLength(24);
        part.SetClockPosition(1);
        part.SetDataPosition(2);
        part.SetLEPosition(3);
        simulated.port.OpenTVicPort();
        for (int i = 0; i < 64; ++i) {
            const std::string id = "R" + std::to_string(i);
            part.Registers.Add(std::make_shared<cRegister>(part, id, 0x3F, 0x5A5A40 + i, false),
                               id);
        }
        for (int i = 4; i <= 8; ++i) {
            const std::string id = i == 8 ? "Trigger" : "PIN" + std::to_string(i);
            part.PrgmPins.Add(std::make_shared<cPrgmPin>(part, id, false), id);
            part.PrgmPins(id).SetPosition(std::int32_t{i});
            part.PrgmPins(id).SetEnabled(true);
        }
    }

    /// What `work` puts on the wire.
    template<typename Work>
    Recorder Record(Work work) {
        Recorder recorder;
        transport.wire().Add(recorder);
        work();
        transport.wire().Remove(recorder);
        return recorder;
    }
};

void BareWrites(benchmark::State& state, bool board) {
    Bench bench(kRouteLpt, board);
    const Recorder word = bench.Record([&] { LoadRegister(bench.part, "R42"); });
    PortDriver* port = &bench.transport.port();
    benchmark::DoNotOptimize(port);
    for (auto _ : state) {
        for (const auto& [address, value] : word.writes)
            port->WritePort(address, value);
        benchmark::ClobberMemory();
    }
}

void LptWord(benchmark::State& state, bool board) {
    Bench bench(kRouteLpt, board);
    for (auto _ : state) {
        LoadRegister(bench.part, "R42");
        benchmark::ClobberMemory();
    }
}

void LptBurstWord(benchmark::State& state) {
    Bench bench(kRouteLpt, false);
    const auto vector = GenerateBurstRegister(bench.part, 0x5A5A5A);
    for (auto _ : state) {
        SendStates(bench.part, vector);
        benchmark::ClobberMemory();
    }
}

void BarePackets(benchmark::State& state) {
    Bench bench(kRouteUsb, false);
    const Recorder word = bench.Record([&] { usbSendSPI_Burst(bench.part, 0x5A5A5A, 0x10, 1); });
    BridgeLibrary* bridge = &bench.transport.bridge();
    benchmark::DoNotOptimize(bridge);
    std::array<std::uint8_t, 100> reply{};
    for (auto _ : state) {
        for (const auto& packet : word.packets) {
            bridge->usbSendCmdData(packet.data(), static_cast<std::int16_t>(packet.size()));
            bridge->usbReceiveCmdData(reply.data(), 100);
        }
        benchmark::ClobberMemory();
    }
}

void UsbBurstWord(benchmark::State& state) {
    Bench bench(kRouteUsb, false);
    for (auto _ : state) {
        usbSendSPI_Burst(bench.part, 0x5A5A5A, 0x10, 1);
        benchmark::ClobberMemory();
    }
}

// LoadRegister over LPT: at most 1.5 times the bare loop of the same bytes.
BENCHMARK_CAPTURE(BareWrites, null_port, false);
BENCHMARK_CAPTURE(LptWord, null_port, false);
BENCHMARK_CAPTURE(BareWrites, simulated_board, true);
BENCHMARK_CAPTURE(LptWord, simulated_board, true);
BENCHMARK(LptBurstWord);
// A burst word over USB is eight commands.
BENCHMARK(BarePackets);
BENCHMARK(UsbBurstWord);

} // namespace
} // namespace zentrel
