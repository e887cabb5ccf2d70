#include <cstdint>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>

#include "device/part.h"
#include "form/session.h"

namespace zentrel {
namespace {

constexpr int kWordBits = 24;
constexpr int kFields = 200;

/// A synthesiser with one 24-bit word that protects its two address bits, and fields enough for
/// look-ups by name to cost what they do on a real device.
struct Bench {
    Session session;
    cPart part{session};
    std::string field;

    Bench() {
        part.SetRegisterLength(kWordBits);
        part.Registers.Add(std::make_shared<cRegister>(part, "N", 3, 0x123401, false), "N");
        for (int i = 0; i < kFields; ++i) {
            field = "FIELD_" + std::to_string(i);
            part.PrgmBits.Add(std::make_shared<cPrgmBits>(part, field, "N", std::int16_t{6},
                                                          std::int16_t{12}, true),
                              field);
        }
    }
    cRegister& reg() { return part.Registers(1); }
};

// The yardstick: the same field of the same word with the same protected bits, on one integer.
struct MachineWord {
    std::uint64_t value = 0x123401;
    std::uint64_t locked = 3;
    std::uint64_t all = (std::uint64_t{1} << kWordBits) - 1;
    bool change = false;

    void SetBits(std::uint64_t bits, int position, int length) {
        const std::uint64_t mask = (std::uint64_t{1} << length) - 1;
        const std::uint64_t field = ((bits & mask) << position) & ~locked;
        value = ((value & ~((mask << position) & ~locked)) | field) & all;
        change = true;
    }
    std::uint64_t GetBits(int position, int length) const {
        const std::uint64_t mask = (std::uint64_t{1} << length) - 1;
        return (value & (mask << position)) >> position;
    }
};

// Position and length aren't known to the compiler on either side, as in a device from a file.
void SetBits_yardstick(benchmark::State& state) {
    MachineWord word;
    int position = 6, length = 12;
    std::uint64_t bits = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(position);
        benchmark::DoNotOptimize(length);
        word.SetBits(++bits, position, length);
        benchmark::DoNotOptimize(word);
    }
}
BENCHMARK(SetBits_yardstick);

void SetBits(benchmark::State& state) {
    Bench bench;
    cRegister& word = bench.reg();
    std::int16_t position = 6, length = 12;
    double bits = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(position);
        benchmark::DoNotOptimize(length);
        word.SetBits(++bits, position, length);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(SetBits);

void GetBits_yardstick(benchmark::State& state) {
    MachineWord word;
    int position = 6, length = 12;
    for (auto _ : state) {
        benchmark::DoNotOptimize(position);
        benchmark::DoNotOptimize(length);
        benchmark::DoNotOptimize(word);
        benchmark::DoNotOptimize(word.GetBits(position, length));
    }
}
BENCHMARK(GetBits_yardstick);

void GetBits(benchmark::State& state) {
    Bench bench;
    const cRegister& word = bench.reg();
    std::int16_t position = 6, length = 12;
    for (auto _ : state) {
        benchmark::DoNotOptimize(position);
        benchmark::DoNotOptimize(length);
        benchmark::ClobberMemory();
        benchmark::DoNotOptimize(word.GetBits(position, length));
    }
}
BENCHMARK(GetBits);

void Field_value_set_by_name(benchmark::State& state) {
    Bench bench;
    double value = 0;
    for (auto _ : state) {
        value = value < 4000 ? value + 1 : 0;
        bench.part.PrgmBits(bench.field).SetValue(value);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(Field_value_set_by_name);

void Field_value_get_by_name(benchmark::State& state) {
    Bench bench;
    for (auto _ : state) {
        benchmark::DoNotOptimize(bench.part.PrgmBits(bench.field).Value());
    }
}
BENCHMARK(Field_value_get_by_name);

} // namespace
} // namespace zentrel
