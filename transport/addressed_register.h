#pragma once

#include <cstdint>

#include "device/bit_word.h"

/// What a word on the wire says by itself, as the chip reads it.
namespace zentrel {

class cPart;

/// Position in `Registers`, counted from 1, of the register that the word's address bits name: of
/// those whose protected bits stand in the word, the one with the most of them. 0 when that is none
/// or several. A device's only register takes every word.
int AddressedRegister(const cPart& part, const BitWord& word);

/// The bits of a field inside a word; `inverted` reads them in reversed order. Beyond 64 bits the
/// upper ones are left out.
std::uint64_t FieldBits(const BitWord& word, int position, int length, bool inverted);

} // namespace zentrel
