#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "clock/clk_dist.h"
#include "clock/clock_display.h"
#include "clock/clock_entry.h"
#include "clock/clock_setup.h"
#include "device/part.h"
#include "partfile/part_definition.h"
#include "synth/frequency_entry.h"
#include "synth/pll.h"
#include "synth/pll_display.h"
#include "synth/pll_setup.h"
#include "transport/bench/bench.h"
#include "transport/load_path.h"

namespace zentrel {
namespace {

constexpr int kPlls = 4, kBlocks = 2, kChannels = 8;
constexpr int kWordBits = 32, kAddressBits = 5;

/// The displays that stand below the screens.
struct RoomDisplays final : Displays {
    cPart* part = nullptr;
    void UpdatePLLDisplay() override { zentrel::UpdatePLLDisplay(*part); }
    void UpdateCLKDISTDisplay() override { zentrel::UpdateCLKDISTDisplay(*part); }
};

/// Four fractional PLLs, two of them behind clock blocks of eight channels, on the parallel port of
/// the simulated board.
struct Bench {
    Session session;
    cPart part{session};
    ClockBlocks blocks{part};
    RoomDisplays displays;
    SimulatedBench board{part};
    Transport transport{part, board.drivers()};

    Bench() {
        Upward upward = Upward::None();
        displays.part = &part;
        upward.displays = &displays;
        upward.blocks = &blocks;
        part.Connect(upward);
        part.ID = "QVX9400";
        session.CommMode_Select = kRouteLpt;
        part.SetRegisterLength(kWordBits);
        part.SetClockPosition(1);
        part.SetDataPosition(3);
        part.SetLEPosition(5);
        part.PortAddress = 0x378;
        transport.port().OpenTVicPort();
        for (int i = 0; i < kPlls; ++i)
            AddPLLBlock("PLL" + std::to_string(i));
        for (int i = 0; i < kBlocks; ++i)
            AddClockBlock("CLKS" + std::to_string(i), "PLL" + std::to_string(i));
        part.UpdateDisplays();
        LoadChanges(part);
    }

    cPrgmBits& Field(const std::string& name, int length, double value) {
        if (used_ == 0 || used_ + length > kWordBits) {
            const int address = part.Registers.Count();
            const std::string reg = "R" + std::to_string(address);
            part.Registers.Add(
                std::make_shared<cRegister>(part, reg, (1 << kAddressBits) - 1, address, false),
                reg);
            used_ = kAddressBits;
        }
        const auto field = std::make_shared<cPrgmBits>(
            part, name, part.Registers(part.Registers.Count()).ID(),
            static_cast<std::int16_t>(used_), static_cast<std::int16_t>(length), true);
        used_ += length;
        part.PrgmBits.Add(field, name);
        field->SetValue(value);
        return *field;
    }
    std::string List(const std::string& name, std::vector<std::string> items, double index) {
        cPrgmBits& field = Field(name, 3, 0);
        field.SetStringArray(std::move(items));
        field.SetBitValue(index);
        return name;
    }

    void AddPLLBlock(const std::string& name) {
        PllEntry entry;
        entry.entry = part.PLLs.Count();
        entry.name = name;
        entry.n = name + "_N";
        Field(entry.n, 18, 100);
        entry.r = name + "_R";
        Field(entry.r, 12, 10);
        entry.fractNum = name + "_NUM";
        Field(entry.fractNum, 22, 0);
        entry.fractDen = name + "_DEN";
        Field(entry.fractDen, 22, 1000);
        entry.np = List(name + "_NP", {"8", "16"}, 1);
        entry.pd = List(name + "_PD", {"-", "+"}, 1);
        entry.vcoMin = "1000", entry.vcoMax = "3000", entry.nCheckType = "DUAL";
        LoadPLL(part, entry);
    }

    void AddClockBlock(const std::string& name, const std::string& pll) {
        ClkDistEntry entry;
        entry.entry = part.ClkDists.Count();
        entry.name = name;
        entry.pll = pll;
        entry.clockCount = kChannels;
        entry.displayType = "PLL_internalVCO";
        entry.inputDiv = name + "_VCO_DIV";
        Field(entry.inputDiv, 4, 4);
        entry.nDelay = List(name + "_N_DLY", {"0 ps", "150 ps"}, 0);
        entry.rDelay = List(name + "_R_DLY", {"0 ps", "150 ps"}, 0);
        entry.lfR3 = List(name + "_R3", {"0.2 k", "10 k"}, 0);
        entry.lfR4 = List(name + "_R4", {"0.2 k", "10 k"}, 0);
        entry.lfC3C4 = List(name + "_C3C4", {"0 pF, 10 pF", "21 pF, 10 pF"}, 0);
        for (int c = 0; c < kChannels; ++c) {
            const std::string channel = name + "_CLK" + std::to_string(c);
            Field(channel + "_DIV", 8, c + 1);
            List(channel + "_DLY", {"0 ps", "150 ps", "300 ps"}, 1);
            List(channel + "_MUX", {"Bypassed", "Divided", "Delayed", "Divided and Delayed"}, 3);
            Field(channel + "_EN", 1, 1);
            entry.channels.push_back(
                {channel + "_DIV", channel + "_DLY", channel + "_MUX", channel + "_EN"});
        }
        LoadClkDist(part, entry);
    }

    /// Types a VCO frequency that moves the counter and the fraction of PLL 1.
    void Type(bool high) {
        part.PLLs(1).panel.txtVCO.Text = high ? "2400.336" : "2300.5";
        txtVCO_Enter(part, 1);
    }

  private:
    int used_ = 0;
};

// From Enter to the last port write.
void Typed_vco_frequency(benchmark::State& state) {
    Bench bench;
    bool high = false;
    const auto before = bench.board.board.newest();
    for (auto _ : state)
        bench.Type(high = !high);
    const auto words = static_cast<double>(bench.board.board.newest() - before);
    state.counters["words"] = benchmark::Counter(words / static_cast<double>(state.iterations()));
    if (bench.part.ClkDists(1).panel.channels[0].divCHtxt_freq.Text.empty()) {
        state.SkipWithError("the channels show nothing");
    }
}
BENCHMARK(Typed_vco_frequency);

// The parts of it.
void Refresh_of_the_plls(benchmark::State& state) {
    Bench bench;
    for (auto _ : state)
        UpdatePLLDisplay(bench.part);
}
BENCHMARK(Refresh_of_the_plls);

void Refresh_of_the_clock_blocks(benchmark::State& state) {
    Bench bench;
    for (auto _ : state)
        UpdateCLKDISTDisplay(bench.part);
}
BENCHMARK(Refresh_of_the_clock_blocks);

void One_changed_word_over_the_port(benchmark::State& state) {
    Bench bench;
    for (auto _ : state) {
        bench.part.Registers(1).SetChange(true);
        LoadChanges(bench.part);
    }
}
BENCHMARK(One_changed_word_over_the_port);

void VCOFrequency_of_a_linked_pll(benchmark::State& state) {
    Bench bench;
    const cPLL& pll = bench.part.PLLs(1);
    for (auto _ : state)
        benchmark::DoNotOptimize(pll.VCOFrequency());
}
BENCHMARK(VCOFrequency_of_a_linked_pll);

} // namespace
} // namespace zentrel
