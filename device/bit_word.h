#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zentrel {

/// A non-negative whole number as bits, of any width. A register word lives in it, so that editing
/// one bit of a 64-bit word never disturbs its neighbours, which a double would. Up to 64 bits it
/// is one machine integer.
class BitWord {
  public:
    BitWord() = default;
    explicit BitWord(std::uint64_t bits) : low_(bits) {}

    /// The whole part of a number; negative, infinite and not-a-number give no bits.
    static BitWord FromDouble(double value);
    /// 2^count - 1; a count below 1 gives no bits.
    static BitWord Ones(int count);
    /// The number of a bit string; any character but "1" counts as 0.
    static BitWord FromText(std::string_view bits);

    /// The nearest double; exact up to 53 significant bits.
    double ToDouble() const;
    /// The bits as text, most significant first, no leading zeros; no bits give empty text.
    std::string ToText() const;
    /// ToText filled with "0" on the left to `width` characters. A longer word stays as it is.
    std::string ToText(int width) const;

    bool Test(int bit) const;
    void Set(int bit, bool value);
    /// One past the highest bit that is set.
    int BitCount() const;
    bool none() const { return low_ == 0 && high_.empty(); }
    /// The lowest 64 bits.
    std::uint64_t low() const { return low_; }

    /// Bits moved up by `count` places, or down when it is negative.
    BitWord Shifted(int count) const;

    BitWord operator&(const BitWord& other) const;
    BitWord operator|(const BitWord& other) const;
    BitWord AndNot(const BitWord& other) const;
    bool operator==(const BitWord& other) const = default;

  private:
    void Trim();
    std::uint64_t Limb(std::size_t index) const;

    std::uint64_t low_ = 0;
    std::vector<std::uint64_t> high_; // bits 64 and up; never ends in 0
};

} // namespace zentrel
