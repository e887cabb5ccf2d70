#include "device/bit_string.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "device/bit_word.h"

namespace zentrel {
namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

// The character `fromRight` places from the right end, or "0" where the string has none.
char FromRight(std::string_view text, std::size_t fromRight) {
    return fromRight < text.size() ? text[text.size() - 1 - fromRight] : '0';
}

void FillBoth(std::string& a, std::string& b) {
    const std::size_t length = std::max(a.size(), b.size());
    a.insert(0, length - a.size(), '0');
    b.insert(0, length - b.size(), '0');
}

char HexDigitOf(std::string_view group) {
    std::size_t digit = 0;
    for (const char c : group)
        digit = 2 * digit + (c == '1' ? 1 : 0);
    return kHexDigits[digit];
}

std::string HexOf(std::string bits) {
    return ConvertBinaryToHex(bits);
}

std::string GroupedHex(std::string bits, std::int16_t& digits, std::int16_t group) {
    std::string hex = HexOf(std::move(bits));
    if (static_cast<int>(hex.size()) < digits) {
        hex.insert(0, static_cast<std::size_t>(digits) - hex.size(), '0');
    }
    digits = static_cast<std::int16_t>(hex.size());
    if (group < 1) return hex;
    for (auto at = static_cast<int>(hex.size()) - group; at > 0; at -= group) {
        hex.insert(static_cast<std::size_t>(at), 1, ' ');
    }
    return hex;
}

} // namespace

std::string ConvertBase10(double d, std::string_view digits) {
    if (d == 0.0) return "0";
    if (!std::isfinite(d) || d < 1.0 || digits.size() < 2) return {};
    if (digits == "01") return BitWord::FromDouble(d).ToText();
    const auto base = static_cast<double>(digits.size());
    std::string text;
    for (double rest = std::floor(d); rest >= 1.0;) {
        const double quotient = std::floor(rest / base);
        const double digit = std::clamp(rest - quotient * base, 0.0, base - 1.0);
        text += digits[static_cast<std::size_t>(digit)];
        rest = quotient;
    }
    std::reverse(text.begin(), text.end());
    return text;
}

std::string ConvertBinaryToHex(std::string& binary) {
    binary.insert(0, (4 - binary.size() % 4) % 4, '0');
    std::string hex;
    for (std::size_t at = 0; at < binary.size(); at += 4) {
        hex += HexDigitOf(std::string_view(binary).substr(at, 4));
    }
    return hex;
}

double BinaryToDecimal(std::string_view binary) {
    return BitWord::FromText(binary).ToDouble();
}

std::string BinaryStringAnd(std::string_view one, std::string_view two) {
    std::string result(std::min(one.size(), two.size()), '0');
    for (std::size_t i = 0; i < result.size(); ++i) {
        if (FromRight(one, i) == '1' && FromRight(two, i) == '1') {
            result[result.size() - 1 - i] = '1';
        }
    }
    return result;
}

std::string BinaryStringOr(std::string_view one, std::string_view two) {
    std::string result(std::max(one.size(), two.size()), '0');
    for (std::size_t i = 0; i < result.size(); ++i) {
        if (FromRight(one, i) == '1' || FromRight(two, i) == '1') {
            result[result.size() - 1 - i] = '1';
        }
    }
    return result;
}

std::string BinaryStringNot(std::string_view one, std::optional<int> length) {
    const int count = length.value_or(static_cast<int>(one.size()));
    std::string result(static_cast<std::size_t>(std::max(count, 0)), '1');
    for (std::size_t i = 0; i < result.size(); ++i) {
        if (FromRight(one, i) == '1') result[result.size() - 1 - i] = '0';
    }
    return result;
}

double BitStringXor(std::string& a, std::string& b) {
    FillBoth(a, b);
    std::string result(a.size(), '0');
    for (std::size_t i = 0; i < a.size(); ++i)
        result[i] = a[i] == b[i] ? '0' : '1';
    return BinaryToDecimal(result);
}

double BitStringAndValue(std::string& a, std::string& b) {
    FillBoth(a, b);
    return BinaryToDecimal(BinaryStringAnd(a, b));
}

std::string ValueToHexString(double value, int registerLength) {
    return HexOf(BitWord::FromDouble(value).ToText(registerLength));
}

std::string FormatHexGrouped(double value, std::int16_t& digits, std::int16_t group) {
    return GroupedHex(ConvertBase10(value, "01"), digits, group);
}

std::string FormatHexGrouped(const BitWord& word, std::int16_t& digits, std::int16_t group) {
    return GroupedHex(word.ToText(1), digits, group);
}

std::int32_t ReverseDataBits(std::int32_t value, int dataBits) {
    const auto bits = static_cast<std::uint32_t>(value);
    std::uint32_t mirrored = 0;
    for (int i = 0; i < std::min(dataBits, 32); ++i) {
        const int to = dataBits - i;
        if (((bits >> i) & 1U) != 0 && to < 32) mirrored |= std::uint32_t{1} << to;
    }
    return static_cast<std::int32_t>(mirrored);
}

} // namespace zentrel
