// Sweeps a shipped synthesiser over a band by a burst of 401 loads, once over the parallel port and
// once over USB, on the simulated board. Writes the latched words as CSV and prints the speed.
//
//   sweep [FOLDER [CSV]]    FOLDER holds zentrel.ini and the part files; CSV defaults to sweep.csv

#include <chrono>
#include <cstdio>
#include <exception>
#include <fstream>

#include "burst/burst_list.h"
#include "device/bit_string.h"
#include "device/number_text.h"
#include "examples/headless.h"
#include "synth/pll.h"

using namespace zentrel;

namespace {

constexpr int kLoads = 401;
constexpr double kFirstMHz = 2400;
constexpr double kStepMHz = 0.25;
constexpr int kTimedPasses = 20;

// One command a point: the register that holds the integer part of N, with R fixed.
void BuildSweep(cPart& part, const std::string& registerName) {
    for (int i = 0; i < kLoads; ++i) {
        part.PLLs(1).SetVCOFrequency(kFirstMHz + i * kStepMHz);
        AppendBurstCommand(part, registerName, 0);
    }
}

void WriteWords(std::ofstream& csv, examples::Headless& program, std::string_view route,
                std::uint64_t before) {
    int point = 0;
    for (const LatchedWord& latched : program.board().Since(before)) {
        std::string bits = latched.word.ToText(program.part().RegisterLength());
        csv << route << ',' << point << ',' << NumberToText(kFirstMHz + point * kStepMHz) << ','
            << latched.registerName << ",0x" << ConvertBinaryToHex(bits) << '\n';
        ++point;
    }
}

// One pass for the words, then a few against the clock. False when the board missed a word.
bool RunOver(examples::Headless& program, std::string_view route, std::ofstream& csv) {
    program.UseRoute(route);
    const auto before = program.board().newest();
    program.frm().burst.run.RunBurstOnce();
    const bool whole = program.board().newest() - before == kLoads;
    WriteWords(csv, program, route, before);

    const auto start = std::chrono::steady_clock::now();
    for (int pass = 0; pass < kTimedPasses; ++pass)
        program.frm().burst.run.RunBurstOnce();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    std::printf("%.*s: %d words latched, %.0f passes per second, %.0f words per second\n",
                static_cast<int>(route.size()), route.data(), kLoads, kTimedPasses / taken.count(),
                kTimedPasses * kLoads / taken.count());
    return whole;
}

} // namespace

int main(int argc, char** argv) {
    try {
        examples::Headless program(argc > 1 ? argv[1] : "parts");
        if (!program.Select("QVX2691")) {
            std::fprintf(stderr, "There is no device QVX2691.\n");
            return 1;
        }
        const std::string file = argc > 2 ? argv[2] : "sweep.csv";
        std::ofstream csv(file);
        csv << "route,point,MHz,register,word\n";
        cPart& part = program.part();
        part.PLLs(1).SetPDFrequency(kStepMHz * 1000);
        BuildSweep(part, part.PrgmBits(part.PLLs(1).NCounterName()).Register);
        const bool lpt = RunOver(program, kRouteLpt, csv);
        const bool usb = RunOver(program, kRouteUsb, csv);
        csv.close();
        if (!csv) {
            std::fprintf(stderr, "sweep: %s couldn't be written\n", file.c_str());
            return 1;
        }
        std::printf("Words of both routes are in %s.\n", file.c_str());
        return lpt && usb ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "sweep: %s\n", error.what());
        return 1;
    }
}
