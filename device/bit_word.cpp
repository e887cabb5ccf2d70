#include "device/bit_word.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zentrel {

BitWord BitWord::FromLarge(double value) {
    if (!std::isfinite(value)) return {};
    // The mantissa holds every bit of a double this large.
    int exponent = 0;
    const double mantissa = std::frexp(value, &exponent);
    return BitWord(static_cast<std::uint64_t>(std::ldexp(mantissa, kLimb)))
        .Shifted(exponent - kLimb);
}

BitWord BitWord::ManyOnes(int count) {
    BitWord word(~std::uint64_t{0});
    for (count -= kLimb; count > 0; count -= kLimb) {
        word.high_.push_back(~std::uint64_t{0} >> std::max(kLimb - count, 0));
    }
    return word;
}

BitWord BitWord::FromText(std::string_view bits) {
    BitWord word;
    const auto first = bits.find('1');
    if (first == std::string_view::npos) return word;
    bits.remove_prefix(first);
    int bit = static_cast<int>(bits.size());
    for (const char c : bits) {
        --bit;
        if (c == '1') word.Set(bit, true);
    }
    return word;
}

double BitWord::WideToDouble() const {
    // The top 64 bits hold all that a double can show; a sticky bit keeps the rounding honest.
    const int below = BitCount() - kLimb;
    std::uint64_t top = Shifted(-below).low_;
    if (!(*this & Ones(below)).none()) top |= 1U;
    const double value = std::ldexp(static_cast<double>(top), below);
    return std::min(value, std::numeric_limits<double>::max());
}

std::string BitWord::ToText() const {
    return ToText(0);
}

std::string BitWord::ToText(int width) const {
    const int count = BitCount();
    std::string text(static_cast<std::size_t>(std::max(count, std::max(width, 0))), '0');
    for (int bit = 0; bit < count; ++bit) {
        if (Test(bit)) text[text.size() - 1 - static_cast<std::size_t>(bit)] = '1';
    }
    return text;
}

bool BitWord::Test(int bit) const {
    if (bit < 0) return false;
    return ((Limb(static_cast<std::size_t>(bit / kLimb)) >> (bit % kLimb)) & 1U) != 0;
}

void BitWord::Set(int bit, bool value) {
    if (bit < 0) return;
    const auto index = static_cast<std::size_t>(bit / kLimb);
    const std::uint64_t mask = std::uint64_t{1} << (bit % kLimb);
    SetLimb(index, value ? Limb(index) | mask : Limb(index) & ~mask);
}

int BitWord::WideBitCount() const {
    return static_cast<int>(high_.size()) * kLimb + static_cast<int>(std::bit_width(high_.back()));
}

BitWord BitWord::WideShifted(int count) const {
    BitWord result;
    const int bits = BitCount() + count;
    if (none() || bits <= 0) return result;
    // Each limb of the result is cut from two neighbours.
    const int inner = (count % kLimb + kLimb) % kLimb;
    const int limbs = (count - inner) / kLimb;
    for (int to = (bits - 1) / kLimb; to >= 0; --to) {
        const int from = to - limbs;
        std::uint64_t limb = from >= 0 ? Limb(static_cast<std::size_t>(from)) << inner : 0;
        if (inner != 0 && from >= 1) {
            limb |= Limb(static_cast<std::size_t>(from - 1)) >> (kLimb - inner);
        }
        result.SetLimb(static_cast<std::size_t>(to), limb);
    }
    return result;
}

BitWord BitWord::WideField(int position, int length) const {
    return Shifted(-position) & Ones(length);
}

void BitWord::TakeHighAnd(const BitWord& one, const BitWord& two) {
    for (std::size_t i = std::min(one.LimbCount(), two.LimbCount()) - 1; i > 0; --i) {
        SetLimb(i, one.Limb(i) & two.Limb(i));
    }
}

void BitWord::TakeHighOr(const BitWord& one, const BitWord& two) {
    for (std::size_t i = std::max(one.LimbCount(), two.LimbCount()) - 1; i > 0; --i) {
        SetLimb(i, one.Limb(i) | two.Limb(i));
    }
}

void BitWord::TakeHighAndNot(const BitWord& one, const BitWord& two) {
    for (std::size_t i = one.LimbCount() - 1; i > 0; --i) {
        SetLimb(i, one.Limb(i) & ~two.Limb(i));
    }
}

void BitWord::SetLimb(std::size_t index, std::uint64_t bits) {
    if (index == 0) {
        low_ = bits;
        return;
    }
    if (index > high_.size()) {
        if (bits == 0) return;
        high_.resize(index, 0);
    }
    high_[index - 1] = bits;
    Trim();
}

void BitWord::Trim() {
    while (!high_.empty() && high_.back() == 0)
        high_.pop_back();
}

std::uint64_t BitWord::Limb(std::size_t index) const {
    if (index == 0) return low_;
    return index <= high_.size() ? high_[index - 1] : 0;
}

} // namespace zentrel
