#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "benchmarks/null_drivers.h"
#include "burst/burst_list.h"
#include "device/number_text.h"
#include "session/frm_part.h"
#include "transport/bench/bench.h"
#include "transport/transport.h"

/// Replayed burst words against the same bytes in a bare loop through the same driver, and the
/// change of a large device that keeps its settings.
namespace zentrel {
namespace {

/// One load of a 24-bit register as a burst command, and what it puts on the wire.
struct Bench {
    Session session;
    cPart part{session};
    NullPort port;
    NullBridge bridge;
    SimulatedBench simulated{part};
    Transport transport;
    Recorder wire;

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
        part.Registers.Add(std::make_shared<cRegister>(part, "R0", 3, 0x5A5A5A, false), "R0");
        part.PrgmPins.Add(std::make_shared<cPrgmPin>(part, "Trigger", false), "Trigger");
        part.PrgmPins("Trigger").SetPosition(std::int32_t{8});
        part.PrgmPins("Trigger").SetEnabled(true);
        AddBurstCommand(part, "R0", 0);
        transport.wire().Add(wire);
        part.BurstCmds(1).Execute();
        transport.wire().Remove(wire);
    }
};

void BareLptLoop(benchmark::State& state, bool board) {
    Bench bench(kRouteLpt, board);
    PortDriver* port = &bench.transport.port();
    benchmark::DoNotOptimize(port);
    for (auto _ : state) {
        for (const auto& [address, value] : bench.wire.writes)
            port->WritePort(address, value);
        benchmark::ClobberMemory();
    }
    state.counters["bytes"] = static_cast<double>(bench.wire.writes.size());
}

void BareUsbLoop(benchmark::State& state) {
    Bench bench(kRouteUsb, false);
    BridgeLibrary* bridge = &bench.transport.bridge();
    benchmark::DoNotOptimize(bridge);
    std::array<std::uint8_t, 100> reply{};
    for (auto _ : state) {
        for (const auto& packet : bench.wire.packets) {
            bridge->usbSendCmdData(packet.data(), static_cast<std::int16_t>(packet.size()));
            bridge->usbReceiveCmdData(reply.data(), 100);
        }
        benchmark::ClobberMemory();
    }
    state.counters["packets"] = static_cast<double>(bench.wire.packets.size());
}

void ReplayWord(benchmark::State& state, std::string_view route, bool board) {
    Bench bench(route, board);
    cBurst& command = bench.part.BurstCmds(1);
    for (auto _ : state) {
        command.Execute();
        benchmark::ClobberMemory();
    }
}

// A word replayed over LPT: at most 1.2 times the bare loop of the same bytes.
BENCHMARK_CAPTURE(BareLptLoop, null_port, false);
BENCHMARK_CAPTURE(ReplayWord, lpt_null_port, kRouteLpt, false);
BENCHMARK_CAPTURE(BareLptLoop, simulated_board, true);
BENCHMARK_CAPTURE(ReplayWord, lpt_simulated_board, kRouteLpt, true);
BENCHMARK(BareUsbLoop);
BENCHMARK_CAPTURE(ReplayWord, usb_null_bridge, kRouteUsb, false);

/// Counts how often the part file is replaced.
class CountingStore : public FileStore {
  public:
    explicit CountingStore(int& writes) : writes_(writes) {}
    FileStamp Check(const std::string& path) override { return disk_->Check(path); }
    StoredFile Read(const std::string& path) override { return disk_->Read(path); }
    std::string Replace(const std::string& path, const std::string& text) override {
        writes_ += path.ends_with("QVX7002.ini") ? 1 : 0;
        return disk_->Replace(path, text);
    }

  private:
    int& writes_;
    std::unique_ptr<FileStore> disk_ = MakeDiskStore();
};

std::string LargePart() {
    std::ostringstream text;
    text << "[SETUP]\nZENTREL_VERSION=2.3.0\nCOMM_MODE=LPT\nREGISTER_LENGTH=24\nCONTROL_LENGTH=2\n"
            "CLOCK=1\nDATA=2\nLE=3\nVERSION=a\n[PINS]\nCOUNT=40\n";
    for (int i = 0; i < 40; ++i) {
        const std::string n = KeyNumber(i);
        text << "NAME" << n << "=PIN" << i << "\nLOCATION" << n << "=" << 4 + i % 6 << "\nENABLED"
             << n << "=False\n";
    }
    text << "[REGISTERS]\nCOUNT=128\n";
    for (int i = 0; i < 128; ++i) {
        const std::string n = KeyNumber(i);
        text << "NAME" << n << "=R" << i << "\nMASK" << n << "=3\nVALUE" << n << "=" << 4 * i
             << "\nLOWBYTE" << n << "=FALSE\n";
    }
    text << "[BITS]\nCOUNT=8\n";
    for (int i = 0; i < 8; ++i) {
        const std::string n = KeyNumber(i);
        text << "REG" << n << "=R" << i << "\nNAME" << n << "=" << (i % 2 == 0 ? "N" : "R_")
             << i / 2 << "\nPOS" << n << "=2\nLEN" << n << "=14\nDISPLAY" << n << "=True\nTYPE" << n
             << "=Counter\n";
    }
    text << "[PLLS]\nCOUNT=4\n";
    for (int i = 0; i < 4; ++i) {
        const std::string n = KeyNumber(i);
        text << "NAME" << n << "=PLL" << i << "\nN" << n << "=N" << i << "\nR" << n << "=R_" << i
             << "\nOSCIN" << n << "=10\n";
    }
    return text.str();
}

// Leaving a device whose words moved, settings saved, and loading it anew: under 20 ms, of which
// the save is one replacement of the part file.
void ChangeOfDevice(benchmark::State& state) {
    const auto folder = std::filesystem::temp_directory_path() / "zentrel_burst_bench";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "QVX7002.ini", std::ios::binary) << LargePart();
    int writes = 0;
    {
        Session session;
        cPart part{session};
        IniFiles files{AppPath(folder.string()), std::make_unique<CountingStore>(writes)};
        Messages messages;
        FrmPart frm{part, files, messages};
        frm.Main();
        const auto load = [&] {
            std::string name = "QVX7002";
            frm.SetupPartForm(name);
        };
        load();
        writes = 0;
        double value = 0;
        for (auto _ : state) {
            state.PauseTiming();
            value += 4;
            for (cRegister& reg : part.Registers)
                reg.SetValue(value);
            state.ResumeTiming();
            load();
        }
        state.counters["writes"] = benchmark::Counter(writes, benchmark::Counter::kAvgIterations);
    }
    std::filesystem::remove_all(folder);
}
BENCHMARK(ChangeOfDevice)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zentrel
