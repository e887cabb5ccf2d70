#include "device/bit_word.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>

namespace zentrel {
namespace {
constexpr int kLimb = 64;
constexpr double kTwoTo64 = 18446744073709551616.0;
} // namespace

BitWord BitWord::FromDouble(double value) {
    if (!std::isfinite(value) || value < 1.0) return {};
    if (value < kTwoTo64) return BitWord(static_cast<std::uint64_t>(value));
    // The mantissa holds every bit of a double this large.
    int exponent = 0;
    const double mantissa = std::frexp(value, &exponent);
    return BitWord(static_cast<std::uint64_t>(std::ldexp(mantissa, kLimb)))
        .Shifted(exponent - kLimb);
}

BitWord BitWord::Ones(int count) {
    BitWord word;
    if (count <= 0) return word;
    if (count < kLimb) return BitWord((std::uint64_t{1} << count) - 1);
    word.low_ = ~std::uint64_t{0};
    for (count -= kLimb; count > 0; count -= kLimb) {
        word.high_.push_back(count >= kLimb ? ~std::uint64_t{0} : (std::uint64_t{1} << count) - 1);
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

double BitWord::ToDouble() const {
    if (high_.empty()) return static_cast<double>(low_);
    // The top 64 bits hold all that a double can show; a sticky bit keeps the rounding honest.
    const int count = BitCount();
    std::uint64_t top = Shifted(kLimb - count).low_;
    if (!(AndNot(Shifted(kLimb - count).Shifted(count - kLimb))).none()) top |= 1U;
    return std::ldexp(static_cast<double>(top), count - kLimb);
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
    const std::uint64_t mask = std::uint64_t{1} << (bit % kLimb);
    if (bit < kLimb) {
        low_ = value ? low_ | mask : low_ & ~mask;
        return;
    }
    const auto index = static_cast<std::size_t>(bit / kLimb) - 1;
    if (index >= high_.size()) {
        if (!value) return;
        high_.resize(index + 1, 0);
    }
    high_[index] = value ? high_[index] | mask : high_[index] & ~mask;
    Trim();
}

int BitWord::BitCount() const {
    if (high_.empty()) return static_cast<int>(std::bit_width(low_));
    return static_cast<int>(high_.size()) * kLimb + static_cast<int>(std::bit_width(high_.back()));
}

BitWord BitWord::Shifted(int count) const {
    if (count == 0 || none()) return *this;
    if (high_.empty() && count > -kLimb && BitCount() + count <= kLimb) {
        return BitWord(count > 0 ? low_ << count : low_ >> -count);
    }
    BitWord result;
    const int last = BitCount();
    for (int bit = std::max(0, -count); bit < last; ++bit) {
        if (Test(bit)) result.Set(bit + count, true);
    }
    return result;
}

BitWord BitWord::operator&(const BitWord& other) const {
    BitWord result(low_ & other.low_);
    const std::size_t count = std::min(high_.size(), other.high_.size());
    for (std::size_t i = 0; i < count; ++i)
        result.high_.push_back(high_[i] & other.high_[i]);
    result.Trim();
    return result;
}

BitWord BitWord::operator|(const BitWord& other) const {
    BitWord result(low_ | other.low_);
    const std::size_t count = std::max(high_.size(), other.high_.size());
    for (std::size_t i = 0; i < count; ++i) {
        result.high_.push_back(Limb(i + 1) | other.Limb(i + 1));
    }
    return result;
}

BitWord BitWord::AndNot(const BitWord& other) const {
    BitWord result(low_ & ~other.low_);
    for (std::size_t i = 0; i < high_.size(); ++i) {
        result.high_.push_back(high_[i] & ~other.Limb(i + 1));
    }
    result.Trim();
    return result;
}

void BitWord::Trim() {
    while (!high_.empty() && high_.back() == 0)
        high_.pop_back();
}

std::uint64_t BitWord::Limb(std::size_t index) const {
    if (index == 0) return low_;
    return index - 1 < high_.size() ? high_[index - 1] : 0;
}

} // namespace zentrel
