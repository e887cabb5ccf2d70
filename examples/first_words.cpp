// A first session without a window: selects a shipped device, changes fields, loads it over the
// parallel port and then over USB, and prints what the simulated board latched. Succeeds only if
// the board's words equal the model's.
//
//   first_words [FOLDER [DEVICE]]    FOLDER holds zentrel.ini and the part files

#include <cstdio>
#include <exception>

#include "device/bit_string.h"
#include "examples/headless.h"

using namespace zentrel;

namespace {

std::string Hex(const cPart& part, const BitWord& word) {
    std::string bits = word.ToText(part.RegisterLength());
    return ConvertBinaryToHex(bits);
}

bool LoadOver(examples::Headless& program, std::string_view route) {
    program.UseRoute(route);
    const auto before = program.board().newest();
    LoadAll(program.part());
    std::printf("\n%.*s\n", static_cast<int>(route.size()), route.data());
    bool same = true;
    int position = 0;
    for (const LatchedWord& latched : program.board().Since(before)) {
        if (++position > program.part().Registers.Count()) return false;
        const cRegister& reg = program.part().Registers(position);
        const bool equal = latched.word == reg.word();
        same = same && equal;
        std::printf("  %-10s 0x%s%s\n", reg.ID().c_str(), Hex(program.part(), latched.word).c_str(),
                    equal ? "" : "  differs from the model");
    }
    return same && position == program.part().Registers.Count();
}

} // namespace

int main(int argc, char** argv) {
    try {
        const std::string device = argc > 2 ? argv[2] : "QVX2691";
        examples::Headless program(argc > 1 ? argv[1] : "parts");
        if (!program.Select(device)) {
            std::fprintf(stderr, "There is no device %s.\n", device.c_str());
            return 1;
        }
        std::printf("Device %s, words as the board latched them.\n", device.c_str());
        int changed = 0;
        for (cPrgmBits& field : program.part().PrgmBits) {
            if (field.Display && field.Position >= 0 && changed++ % 2 == 0) field.Increment();
        }
        const bool lpt = LoadOver(program, kRouteLpt);
        const bool usb = LoadOver(program, kRouteUsb);
        std::printf("\n%s\n", lpt && usb ? "The board holds what the model holds."
                                         : "The board differs from the model.");
        return lpt && usb ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "first_words: %s\n", error.what());
        return 1;
    }
}
