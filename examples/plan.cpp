// Plans frequencies without a window: types a VCO frequency on a fractional device and on a linked
// clock conditioner, and prints the plan and the words that the board latched.
//
//   plan [FOLDER [MHZ]]    FOLDER holds zentrel.ini and the part files; MHZ is typed on QVX2874

#include <cstdio>
#include <exception>

#include "device/bit_string.h"
#include "device/number_text.h"
#include "examples/headless.h"
#include "synth/frequency_entry.h"
#include "synth/pll.h"

using namespace zentrel;

namespace {

void Row(const char* name, const std::string& value, const char* unit = "") {
    std::printf("  %-22s %s %s\n", name, value.c_str(), unit);
}

void Row(const char* name, double value, const char* unit = "") {
    Row(name, NumberToText(value), unit);
}

// What the box would hold, and the Enter key.
void TypeVCO(examples::Headless& program, const std::string& mhz) {
    cPLL& pll = program.part().PLLs(1);
    std::printf("\nTyped into the VCO box of %s: %s\n", pll.ID().c_str(), mhz.c_str());
    pll.panel.txtVCO.Text = mhz;
    const auto before = program.board().newest();
    txtVCO_Enter(program.part(), 1);

    Row("Crystal", pll.XtalFrequency(), "MHz");
    Row("Doubler", pll.Doubler());
    Row("R", pll.RValue());
    Row("Comparison frequency", pll.PDFrequency(), "kHz");
    Row("N", pll.NValue());
    if (!pll.NumeratorName().empty()) {
        Row("Fraction", std::to_string(pll.NumValue()) + " / " + std::to_string(pll.DenValue()));
    }
    Row("VCO", pll.VCOFrequency(), "MHz");
    if (!pll.panel.txtOUT0_DIV.Tag.empty()) Row("Output 0", pll.OUT0_Freq(), "MHz");
    for (const PlanFault& fault : pll.panel.faults)
        Row("Check", fault.text);
    if (pll.panel.faults.empty()) Row("Check", "all limits kept");
    for (const LatchedWord& latched : program.board().Since(before)) {
        std::string bits = latched.word.ToText(program.part().RegisterLength());
        Row("Sent", latched.registerName + " 0x" + ConvertBinaryToHex(bits));
    }
}

void PrintChannels(const cPart& part) {
    for (const cClkDist& block : part.ClkDists) {
        for (int c = 0; c < block.ShownChannels(); ++c) {
            const ClockChannelRow& channel = block.panel.channels[static_cast<std::size_t>(c)];
            const std::string& text = channel.divCHtxt_freq.Text;
            Row(channel.lblCLKid.Caption.c_str(), text.empty() ? "off" : text,
                text.empty() ? "" : "MHz");
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        examples::Headless program(argc > 1 ? argv[1] : "parts");
        if (!program.Select("QVX2874")) {
            std::fprintf(stderr, "There is no device QVX2874.\n");
            return 1;
        }
        std::printf("QVX2874, a fractional synthesiser\n");
        LoadChanges(program.part()); // The whole device once: what follows are the changes.
        TypeVCO(program, argc > 2 ? argv[2] : "2450.123");

        if (!program.Select("QVX4100")) {
            std::fprintf(stderr, "There is no device QVX4100.\n");
            return 1;
        }
        std::printf("\nQVX4100, a clock conditioner\n");
        LoadChanges(program.part()); // The whole device once: what follows are the changes.
        TypeVCO(program, "1228.8");
        PrintChannels(program.part());
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "plan: %s\n", error.what());
        return 1;
    }
}
