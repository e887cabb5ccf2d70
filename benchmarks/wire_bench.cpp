#include <benchmark/benchmark.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "benchmarks/null_drivers.h"
#include "burst/burst_list.h"
#include "device/part.h"
#include "screens/file_dialogs.h"
#include "screens/wire_screen.h"
#include "transport/bench/bench.h"
#include "transport/load_path.h"
#include "transport/monitor/wire_export.h"
#include "transport/transport.h"

/// What the wire monitor costs: nothing while it is closed, a little while it is open.
namespace zentrel {
namespace {

enum class Monitor { None, Closed, Open };

/// A 24-bit load as a burst command over drivers that do nothing, on a device of 64 registers.
struct Bench {
    Session session;
    cPart part{session};
    NullPort port;
    NullBridge bridge;
    SimulatedBench simulated{part};
    Transport transport{part, {port, bridge, simulated.watch}};
    std::optional<WireScreen> screen;

    Bench(std::string_view route, Monitor monitor) {
        session.CommMode_Select = route;
        part.PortAddress = 888;
        part.SetRegisterLength(24);
        part.ControlLength = 6;
        part.SetClockPosition(1);
        part.SetDataPosition(2);
        part.SetLEPosition(3);
        for (int i = 0; i < 64; ++i) {
            const std::string id = "R" + std::to_string(i);
            part.Registers.Add(std::make_shared<cRegister>(part, id, 0x3F, 0x5A5A40 + i, false),
                               id);
            for (int k = 0; k < 4; ++k) {
                const std::string name = "FIELD" + std::to_string(4 * i + k);
                part.PrgmBits.Add(std::make_shared<cPrgmBits>(part, name, id,
                                                              static_cast<std::int16_t>(6 + 4 * k),
                                                              std::int16_t{4}, true),
                                  name);
            }
        }
        AddBurstCommand(part, "R42", 0);
        if (monitor == Monitor::None) return;
        screen.emplace(part, FileDialogs::None());
        screen->Show();
        if (monitor == Monitor::Closed) screen->Close();
    }

    void Record(int words) {
        for (int i = 0; i < words; ++i)
            LoadRegisterNumber(part, static_cast<std::int16_t>(1 + i % 64));
        screen->Refresh();
    }
};

// A replayed burst word: closed at most 3 percent above none at all.
void ReplayWord(benchmark::State& state, std::string_view route, Monitor monitor) {
    Bench bench(route, monitor);
    if (monitor == Monitor::Open) bench.Record(110000); // A list that is full already.
    cBurst& command = bench.part.BurstCmds(1);
    for (auto _ : state) {
        command.Execute();
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(ReplayWord, lpt_no_monitor, kRouteLpt, Monitor::None);
BENCHMARK_CAPTURE(ReplayWord, lpt_closed, kRouteLpt, Monitor::Closed);
BENCHMARK_CAPTURE(ReplayWord, lpt_open, kRouteLpt, Monitor::Open);
BENCHMARK_CAPTURE(ReplayWord, usb_no_monitor, kRouteUsb, Monitor::None);
BENCHMARK_CAPTURE(ReplayWord, usb_closed, kRouteUsb, Monitor::Closed);
BENCHMARK_CAPTURE(ReplayWord, usb_open, kRouteUsb, Monitor::Open);

// A keystroke in the filter of a full list, and what the list shows of a row.
void FilterFullList(benchmark::State& state, const char* text) {
    Bench bench(kRouteLpt, Monitor::Open);
    bench.Record(100000);
    for (auto _ : state) {
        bench.screen->txtFilter.Text = text;
        bench.screen->FilterTyped();
        benchmark::DoNotOptimize(bench.screen->RowCount());
    }
}
BENCHMARK_CAPTURE(FilterFullList, field, "FIELD42")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FilterFullList, nothing, "xyz")->Unit(benchmark::kMillisecond);

void TextOfARow(benchmark::State& state) {
    Bench bench(kRouteLpt, Monitor::Open);
    bench.Record(1000);
    int row = 0;
    for (auto _ : state) {
        for (int column = 0; column < WireScreen::kColumns; ++column)
            benchmark::DoNotOptimize(
                bench.screen->Text(row, static_cast<WireScreen::Column>(column)));
        row = (row + 1) % 1000;
    }
}
BENCHMARK(TextOfARow);

void ExportFullList(benchmark::State& state,
                    std::string (*text)(std::span<const WireRecord* const>)) {
    Bench bench(kRouteLpt, Monitor::Open);
    bench.Record(100000);
    std::vector<const WireRecord*> records;
    for (int row = 0; row < bench.screen->RowCount(); ++row)
        records.push_back(bench.screen->Row(row));
    std::size_t bytes = 0;
    for (auto _ : state)
        bytes = text(records).size();
    state.counters["megabytes"] = static_cast<double>(bytes) / 1e6;
}
BENCHMARK_CAPTURE(ExportFullList, vcd, VcdOf)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ExportFullList, csv, CsvOf)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zentrel
