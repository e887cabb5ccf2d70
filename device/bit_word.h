#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zentrel {

/// A non-negative whole number as bits, of any width. A register word lives in it, so that editing
/// one bit of a 64-bit word never disturbs its neighbours, which a double would. Up to 64 bits it
/// is one machine integer, and its operations are inline: every bit edit goes through them.
class BitWord {
  public:
    BitWord() = default;
    explicit BitWord(std::uint64_t bits) : low_(bits) {}

    /// The whole part of a number; negative, infinite and not-a-number give no bits.
    static BitWord FromDouble(double value) {
        if (!(value >= 1.0)) return {};
        return value < kTwoTo64 ? BitWord(static_cast<std::uint64_t>(value)) : FromLarge(value);
    }
    /// 2^count - 1; a count below 1 gives no bits.
    static BitWord Ones(int count) {
        if (count <= 0) return {};
        return count <= kLimb ? BitWord(~std::uint64_t{0} >> (kLimb - count)) : ManyOnes(count);
    }
    /// The number of a bit string; any character but "1" counts as 0.
    static BitWord FromText(std::string_view bits);

    /// The nearest finite double; exact up to 53 significant bits.
    double ToDouble() const { return high_.empty() ? static_cast<double>(low_) : WideToDouble(); }
    /// The bits as text, most significant first, no leading zeros; no bits give empty text.
    std::string ToText() const;
    /// ToText filled with "0" on the left to `width` characters. A longer word stays as it is.
    std::string ToText(int width) const;

    bool Test(int bit) const;
    void Set(int bit, bool value);
    /// One past the highest bit that is set.
    int BitCount() const {
        return high_.empty() ? static_cast<int>(std::bit_width(low_)) : WideBitCount();
    }
    bool none() const { return low_ == 0 && high_.empty(); }
    /// The lowest 64 bits.
    std::uint64_t low() const { return low_; }

    /// Bits moved up by `count` places, or down when it is negative.
    BitWord Shifted(int count) const {
        if (high_.empty() && count > -kLimb && BitCount() + count <= kLimb) {
            if (low_ == 0) return {};
            return BitWord(count >= 0 ? low_ << count : low_ >> -count);
        }
        return WideShifted(count);
    }

    /// The `length` bits from `position` up, moved down to bit 0. Below bit 0 the word is empty.
    BitWord Field(int position, int length) const {
        if (high_.empty() && position >= 0 && position < kLimb && length > 0 && length <= kLimb) {
            return BitWord((low_ >> position) & (~std::uint64_t{0} >> (kLimb - length)));
        }
        return WideField(position, length);
    }

    BitWord operator&(const BitWord& other) const {
        BitWord result(low_ & other.low_);
        if (!high_.empty() && !other.high_.empty()) result.TakeHighAnd(*this, other);
        return result;
    }
    BitWord operator|(const BitWord& other) const {
        BitWord result(low_ | other.low_);
        if (!high_.empty() || !other.high_.empty()) result.TakeHighOr(*this, other);
        return result;
    }
    BitWord AndNot(const BitWord& other) const {
        BitWord result(low_ & ~other.low_);
        if (!high_.empty()) result.TakeHighAndNot(*this, other);
        return result;
    }
    bool operator==(const BitWord& other) const = default;

  private:
    static constexpr int kLimb = 64;
    static constexpr double kTwoTo64 = 18446744073709551616.0;

    static BitWord FromLarge(double value);
    static BitWord ManyOnes(int count);
    double WideToDouble() const;
    int WideBitCount() const;
    BitWord WideShifted(int count) const;
    BitWord WideField(int position, int length) const;
    void TakeHighAnd(const BitWord& one, const BitWord& two);
    void TakeHighOr(const BitWord& one, const BitWord& two);
    void TakeHighAndNot(const BitWord& one, const BitWord& two);
    void SetLimb(std::size_t index, std::uint64_t bits);
    void Trim();
    std::uint64_t Limb(std::size_t index) const;
    std::size_t LimbCount() const { return high_.size() + 1; }

    std::uint64_t low_ = 0;
    std::vector<std::uint64_t> high_; // bits 64 and up; never ends in 0
};

} // namespace zentrel
