#include <cstdint>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>

#include "device/part.h"
#include "form/session.h"
#include "synth/frequency_entry.h"
#include "synth/pll.h"
#include "synth/pll_display.h"
#include "synth/pll_setup.h"
#include "transport/bench/bench.h"

namespace zentrel {
namespace {

constexpr int kPlls = 4;
constexpr int kOtherFields = 200;

/// A device with four fractional PLLs on the parallel port of a simulated board, and fields enough
/// for look-ups by name to cost what they do on a real device.
struct Device : Displays {
    Session session;
    cPart part{session, Connected()};
    SimulatedBench bench{part};
    Transport transport{part, bench.drivers()};
    cPLL* pll = nullptr;

    Device() {
        session.CommMode_Select = kRouteLpt;
        part.ID = "QVX4";
        part.PortAddress = 0x378;
        part.SetRegisterLength(32);
        part.SetLineMasks(1, 2, 4);
        for (int i = 0; i < kOtherFields; ++i)
            AddField("FIELD_" + std::to_string(i), 4, 0);
        for (int i = 1; i <= kPlls; ++i)
            AddPll(std::to_string(i));
        zentrel::UpdatePLLDisplay(part);
    }

    void UpdatePLLDisplay() override { zentrel::UpdatePLLDisplay(part); }

  private:
    Upward Connected() {
        Upward upward = Upward::None();
        upward.displays = this;
        return upward;
    }

    std::string AddField(const std::string& name, std::int16_t bits, double value) {
        part.Registers.Add(std::make_shared<cRegister>(part, "R_" + name, 0, 0, false),
                           "R_" + name);
        part.PrgmBits.Add(
            std::make_shared<cPrgmBits>(part, name, "R_" + name, std::int16_t{3}, bits, false),
            name);
        part.PrgmBits(name).SetValue(value);
        part.Registers("R_" + name).SetChange(false);
        return name;
    }

    void AddPll(const std::string& k) {
        const std::string name = "PLL" + k;
        const std::string doubler = AddField("DOUBLER" + k, 1, 0);
        const std::string out0 = AddField("OUT0_DIV" + k, 7, 8);
        pll = &AddPLL(part, name, AddField("N" + k, 16, 1000), AddField("R" + k, 10, 10), doubler,
                      part.PLLs.Count());
        SetupPLL(part, AddField("POL" + k, 1, 1), AddField("ICP" + k, 4, 7), "", "", doubler,
                 "OSCin", "INTERNAL", "", "CPout");
        SetupPLLFraction(part, name, AddField("NUM" + k, 22, 123),
                         AddField("DEN" + k, 22, 4000000));
        SetupOutputs(part, name, out0, "OUT", "", "");
        SetupCrystal(part, name, 10);
        SetupRanges(part, {.vcoMin = "500", .vcoMax = "1500", .fpdMin = "10", .fpdMax = "20000"});
    }
};

// The yardstick: the same arithmetic on numbers at hand.
void VCOFrequency_yardstick(benchmark::State& state) {
    double doubler = 1, crystal = 1e7, r = 10, n = 1000, num = 123, den = 4e6, mhz = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(doubler);
        benchmark::DoNotOptimize(r);
        benchmark::DoNotOptimize(n);
        benchmark::DoNotOptimize(den);
        mhz = doubler * crystal / r * (n + num / den) / 1e6;
        benchmark::DoNotOptimize(mhz);
    }
}
BENCHMARK(VCOFrequency_yardstick);

// Five fields by name: doubler, R, N, numerator, denominator. Has to stay under 2 microseconds.
void VCOFrequency_get(benchmark::State& state) {
    const Device device;
    for (auto _ : state)
        benchmark::DoNotOptimize(device.pll->VCOFrequency());
}
BENCHMARK(VCOFrequency_get);

void VCOFrequency_set(benchmark::State& state) {
    Device device;
    double mhz = 900;
    for (auto _ : state) {
        mhz = mhz < 1100 ? mhz + 0.25 : 900;
        device.pll->SetVCOFrequency(mhz);
    }
}
BENCHMARK(VCOFrequency_set);

void UpdatePLLDisplay_of_four(benchmark::State& state) {
    Device device;
    for (auto _ : state)
        UpdatePLLDisplay(device.part);
}
BENCHMARK(UpdatePLLDisplay_of_four);

// A typed VCO frequency as the engineer has it: counters, the four panels, the words on the wire.
// Has to stay under 500 microseconds with the other displays and two clock blocks on top.
void Typed_VCO_frequency(benchmark::State& state) {
    Device device;
    double mhz = 900;
    for (auto _ : state) {
        mhz = mhz < 1100 ? mhz + 0.25 : 900;
        device.pll->panel.txtVCO.Text = std::to_string(mhz);
        txtVCO_Enter(device.part, kPlls);
    }
}
BENCHMARK(Typed_VCO_frequency)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace zentrel
