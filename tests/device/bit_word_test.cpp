#include "device/bit_word.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "device/bit_string.h"

namespace zentrel {
namespace {

// Bit text without its leading zeros, the form in which ToText gives a word.
std::string Bare(const std::string& bits) {
    return bits.substr(std::min(bits.find('1'), bits.size()));
}

class RandomBits {
  public:
    std::string Text(int width) {
        std::string bits(static_cast<std::size_t>(width), '0');
        // Runs of equal bits meet limb borders and trims that single coin tosses never do.
        char c = '0';
        for (char& bit : bits) {
            if (Below(4) == 0) c = c == '0' ? '1' : '0';
            bit = c;
        }
        return bits;
    }
    std::uint64_t Integer() { return BitWord::FromText(Text(64)).low(); }
    int Below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }

  private:
    std::mt19937 engine_{20240611};
};

TEST(BitWord, operations_agree_with_bit_strings_at_any_width) {
    RandomBits random;
    for (int width = 1; width <= 200; ++width) {
        for (int round = 0; round < 10; ++round) {
            const std::string a = random.Text(width);
            const std::string b = random.Text(1 + random.Below(200));
            const BitWord wordA = BitWord::FromText(a), wordB = BitWord::FromText(b);
            ASSERT_EQ(wordA.ToText(width), a);
            ASSERT_EQ(wordA.ToText(), Bare(a));
            ASSERT_EQ(wordA.BitCount(), static_cast<int>(Bare(a).size()));
            ASSERT_EQ((wordA & wordB).ToText(), Bare(BinaryStringAnd(a, b)));
            ASSERT_EQ((wordA | wordB).ToText(), Bare(BinaryStringOr(a, b)));
            ASSERT_EQ(wordA.AndNot(wordB).ToText(),
                      Bare(BinaryStringAnd(a, BinaryStringNot(b, width))));
            ASSERT_EQ(wordA == wordB, Bare(a) == Bare(b));
            ASSERT_EQ(wordA.none(), Bare(a).empty());
        }
    }
}

TEST(BitWord, shifts_and_fields_agree_with_bit_strings_at_any_width) {
    RandomBits random;
    for (int width = 1; width <= 200; ++width) {
        const std::string a = random.Text(width);
        const BitWord word = BitWord::FromText(a);
        for (int count = -width - 70; count <= 140; ++count) {
            const int left = std::max(width + std::min(count, 0), 0);
            const std::string moved =
                a.substr(0, static_cast<std::size_t>(left)) +
                std::string(static_cast<std::size_t>(std::max(count, 0)), '0');
            ASSERT_EQ(word.Shifted(count).ToText(), Bare(moved)) << a << " by " << count;
        }
        for (int round = 0; round < 20; ++round) {
            const int position = random.Below(220) - 10, length = random.Below(90) - 2;
            ASSERT_EQ(word.Field(position, length),
                      word.Shifted(-position) & BitWord::Ones(length));
        }
    }
}

TEST(BitWord, single_bits_read_and_write_without_their_neighbours) {
    RandomBits random;
    for (int width = 1; width <= 200; ++width) {
        std::string bits = random.Text(width);
        BitWord word = BitWord::FromText(bits);
        for (int round = 0; round < 20; ++round) {
            const int bit = random.Below(width);
            const bool value = random.Below(2) != 0;
            word.Set(bit, value);
            bits[static_cast<std::size_t>(width - 1 - bit)] = value ? '1' : '0';
            ASSERT_EQ(word.Test(bit), value);
            ASSERT_EQ(word.ToText(width), bits);
        }
        EXPECT_FALSE(word.Test(width));
        EXPECT_FALSE(word.Test(-1));
        word.Set(-1, true);
        word.Set(1000, false);
        EXPECT_EQ(word.ToText(width), bits);
    }
}

TEST(BitWord, up_to_64_bits_it_is_integer_arithmetic) {
    RandomBits random;
    for (int round = 0; round < 2000; ++round) {
        const std::uint64_t a = random.Integer(), b = random.Integer();
        const int count = random.Below(64);
        const BitWord wordA(a), wordB(b);
        ASSERT_EQ((wordA & wordB).low(), a & b);
        ASSERT_EQ((wordA | wordB).low(), a | b);
        ASSERT_EQ(wordA.AndNot(wordB).low(), a & ~b);
        ASSERT_EQ(wordA.Shifted(-count), BitWord(a >> count));
        ASSERT_EQ(wordA.Shifted(count).low(), a << count);
        ASSERT_EQ(wordA.Shifted(count).Shifted(-count), wordA) << "no bit is lost above 64";
        ASSERT_EQ(wordA.ToDouble(), static_cast<double>(a));
    }
}

TEST(BitWord, ones_fill_exactly_their_count) {
    EXPECT_TRUE(BitWord::Ones(0).none());
    EXPECT_TRUE(BitWord::Ones(-7).none());
    for (int count = 1; count <= 200; ++count)
        EXPECT_EQ(BitWord::Ones(count).ToText(), std::string(static_cast<std::size_t>(count), '1'));
}

TEST(BitWord, a_double_comes_through_whole) {
    for (const double value :
         {1.0, 3.0, 4294967295.0, 9007199254740991.0, 9007199254740992.0, 18446744073709549568.0,
          18446744073709551616.0, 1e30, std::ldexp(5.0, 190), std::numeric_limits<double>::max()}) {
        EXPECT_EQ(BitWord::FromDouble(value).ToDouble(), value);
    }
    EXPECT_EQ(BitWord::FromDouble(7.99).low(), 7U);
    for (const double nothing :
         {0.0, 0.99, -1.0, -1e300, std::nan(""), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()}) {
        EXPECT_TRUE(BitWord::FromDouble(nothing).none()) << nothing;
    }
}

TEST(BitWord, a_wide_word_shows_as_the_nearest_double) {
    const auto nearest = [](const std::string& bits) { return BitWord::FromText(bits).ToDouble(); };
    const std::string mantissa = "1" + std::string(52, '0');
    const double base = std::ldexp(1, 152);
    const double step = std::ldexp(1, 100);
    EXPECT_EQ(nearest(mantissa + std::string(100, '0')), base);
    EXPECT_EQ(nearest(mantissa + "0" + std::string(99, '1')), base);
    EXPECT_EQ(nearest(mantissa + "1" + std::string(99, '0')), base) << "a half goes to even";
    EXPECT_EQ(nearest(mantissa + "1" + std::string(98, '0') + "1"), base + step)
        << "the last bit of 153 breaks the tie";
    EXPECT_EQ(BitWord::Ones(1024).ToDouble(), std::numeric_limits<double>::max());
    EXPECT_EQ(BitWord::Ones(4000).ToDouble(), std::numeric_limits<double>::max());
}

} // namespace
} // namespace zentrel
