#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "device/bit_word.h"

namespace zentrel {

class cPart;

/// One register word of the device, member of `Part.Registers`.
///
/// `Value` is a double and exact up to 2^53; the word behind it is exact at any width, so wider
/// registers keep every bit that bit and field operations write.
class cRegister {
  public:
    cRegister(cPart& part, std::string id, std::int32_t mask, double value, bool lowByte);

    cPart& Parent() const { return part_; }
    const std::string& ID() const { return id_; }

    /// The word, address bits included. Setting it raises `Change`.
    double Value() const { return word_.ToDouble(); }
    void SetValue(double value);
    /// The word itself, at full width.
    const BitWord& word() const { return word_; }

    /// The protected bits: `SetBits` and `ClrBit` leave them as they are. A negative number
    /// protects nothing.
    std::int32_t Mask() const { return mask_; }
    void SetMask(std::int32_t mask) { mask_ = mask; }
    /// A flag of the part file that burst commands copy.
    bool LowByte() const { return lowByte_; }
    void SetLowByte(bool value) { lowByte_ = value; }

    /// Whether the word differs from what the device holds. Reading clears the flag.
    bool Change();
    void SetChange(bool value);
    /// The same without clearing, for a display that only looks.
    bool changed() const { return change_; }
    /// The word that was last handed to a route, flag or no flag; nothing before the first time.
    const std::optional<BitWord>& sent() const { return sent_; }
    void NoteSent() { sent_ = word_; }

    /// `Value` AND `Mask`: the address bits inside the word. Throws Overflow beyond 16 bits.
    std::int16_t Address() const;
    /// The word as a bit string of at least `RegisterLength` characters.
    std::string RegisterString() const;

    /// Writes a field: the low `Bitlength` bits of `bits` from bit `Position` up, protected bits
    /// and bits beyond `RegisterLength` excepted. `inv` mirrors the bits within the field, which
    /// works on 31 bits. Raises `Change`, also when nothing changed. Never throws: what can't be
    /// computed leaves the word and the flag alone.
    void SetBits(double bits, std::int16_t Position, std::int16_t Bitlength, bool inv = false);
    /// Reads a field; 0 when it can't be computed.
    double GetBits(std::int16_t Position, std::int16_t Bitlength, bool inv = false) const;
    /// Clears one bit unless it is protected. Raises `Change`.
    void ClrBit(std::int16_t Position);
    /// Inverts one bit, protected or not. Raises `Change`. Throws Overflow above bit 1023.
    void ToggleBit(std::int16_t loc);

    /// Index of the register's entry in its file, whatever entries before it were left out.
    int entry = 0;

  private:
    friend class WordJournal;
    void Write(BitWord word);
    BitWord ProtectedBits() const;

    cPart& part_;
    std::string id_;
    std::int32_t mask_;
    bool lowByte_;
    bool change_ = true;
    BitWord word_;
    std::optional<BitWord> sent_;
};

} // namespace zentrel
