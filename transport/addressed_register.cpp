#include "transport/addressed_register.h"

#include <algorithm>
#include <bit>

#include "device/part.h"

namespace zentrel {

int AddressedRegister(const cPart& part, const BitWord& word) {
    if (part.Registers.Count() == 1) return 1;
    int named = 0;
    int most = 0;
    int position = 0;
    for (const cRegister& reg : part.Registers) {
        ++position;
        if (reg.Mask() <= 0) continue;
        const auto mask = static_cast<std::uint64_t>(reg.Mask());
        const int bits = std::popcount(mask);
        if (bits < most || ((word.low() ^ reg.word().low()) & mask) != 0) continue;
        named = bits == most ? 0 : position;
        most = bits;
    }
    return named;
}

std::uint64_t FieldBits(const BitWord& word, int position, int length, bool inverted) {
    std::uint64_t number = 0;
    for (int i = 0; i < std::min(length, 64); ++i) {
        const int bit = inverted ? length - 1 - i : i;
        if (word.Test(position + bit)) number |= std::uint64_t{1} << i;
    }
    return number;
}

} // namespace zentrel
