#include "device/register.h"

#include <cmath>
#include <optional>
#include <utility>

#include "device/number_text.h"
#include "device/part.h"

namespace zentrel {
namespace {

// A word stays a finite double: 2^1024 would not.
constexpr int kHighestBit = 1023;
constexpr int kMirrorBits = 31;

bool Computable(int position, int length) {
    return length <= kHighestBit && position + length <= kHighestBit + 1;
}

// Bit i becomes bit length - 1 - i. Works on 32-bit integers, so neither a longer field nor a
// larger number can be mirrored.
std::optional<double> Mirrored(double bits, int length) {
    const auto number = ToInt32(bits);
    if (!number || length > kMirrorBits) return {};
    std::uint32_t result = 0;
    for (int i = 0; i < length; ++i) {
        if (((static_cast<std::uint32_t>(*number) >> i) & 1U) != 0) {
            result |= std::uint32_t{1} << (length - 1 - i);
        }
    }
    return static_cast<double>(result);
}

} // namespace

cRegister::cRegister(cPart& part, std::string id, std::int32_t mask, double value, bool lowByte)
    : part_(part), id_(std::move(id)), mask_(mask), lowByte_(lowByte),
      word_(BitWord::FromDouble(value)) {}

void cRegister::SetValue(double value) {
    Write(BitWord::FromDouble(value));
}

bool cRegister::Change() {
    const bool change = change_;
    SetChange(false);
    return change;
}

void cRegister::SetChange(bool value) {
    if (change_ && !value) part_.journal().Acknowledge(*this);
    change_ = value;
}

std::int16_t cRegister::Address() const {
    return RoundToInteger((word_ & ProtectedBits()).ToDouble());
}

std::string cRegister::RegisterString() const {
    return word_.ToText(part_.RegisterLength());
}

void cRegister::SetBits(double bits, std::int16_t Position, std::int16_t Bitlength, bool inv) {
    if (Bitlength == 0 || !Computable(Position, Bitlength) || !std::isfinite(bits)) return;
    if (inv) {
        const auto mirrored = Mirrored(bits, Bitlength);
        if (!mirrored) return;
        bits = *mirrored;
    }
    const BitWord fieldMask = BitWord::Ones(Bitlength);
    const BitWord field = (BitWord::FromDouble(bits) & fieldMask).Shifted(Position);
    const BitWord locked = ProtectedBits();
    const BitWord kept = word_.AndNot(fieldMask.Shifted(Position).AndNot(locked));
    Write((kept | field.AndNot(locked)) & BitWord::Ones(part_.RegisterLength()));
}

double cRegister::GetBits(std::int16_t Position, std::int16_t Bitlength, bool inv) const {
    if (Bitlength == 0 || !Computable(Position, Bitlength)) return 0;
    const double field = word_.Field(Position, Bitlength).ToDouble();
    return inv ? Mirrored(field, Bitlength).value_or(0) : field;
}

void cRegister::ClrBit(std::int16_t Position) {
    if (Position > kHighestBit) return;
    Write(word_.AndNot(BitWord(1).Shifted(Position).AndNot(ProtectedBits())));
}

void cRegister::ToggleBit(std::int16_t loc) {
    if (loc > kHighestBit) throw Overflow("bit " + std::to_string(loc) + " of " + id_);
    BitWord word = word_;
    word.Set(loc, !word.Test(loc));
    Write(std::move(word));
}

void cRegister::Write(BitWord word) {
    part_.journal().Note(*this);
    word_ = std::move(word);
    change_ = true;
}

BitWord cRegister::ProtectedBits() const {
    return mask_ < 0 ? BitWord() : BitWord(static_cast<std::uint64_t>(mask_));
}

} // namespace zentrel
