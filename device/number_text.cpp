#include "device/number_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "device/errors.h"
#include "device/text.h"

namespace zentrel {
namespace {

constexpr int kSignificantDigits = 15;
constexpr int kFirstExponentForm = 15;  // 1E+15 and up
constexpr int kLastFixedExponent = -11; // 1E-11 is still fixed

struct Decimal {
    bool negative = false;
    std::string digits; // no point, no trailing zeros, at least one digit
    int exponent = 0;   // of the first digit
};

Decimal Decompose(double value) {
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::scientific, kSignificantDigits - 1)
                         .ptr;
    std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    Decimal result;
    if (text.front() == '-') {
        result.negative = true;
        text.remove_prefix(1);
    }
    const auto mark = text.find('e');
    for (const char c : text.substr(0, mark)) {
        if (c != '.') result.digits += c;
    }
    auto power = text.substr(mark + 1);
    if (power.front() == '+') power.remove_prefix(1);
    std::from_chars(power.data(), power.data() + power.size(), result.exponent);
    while (result.digits.size() > 1 && result.digits.back() == '0')
        result.digits.pop_back();
    return result;
}

std::string FixedForm(const Decimal& number) {
    const auto count = static_cast<int>(number.digits.size());
    if (number.exponent < 0) {
        return "0." + std::string(static_cast<std::size_t>(-number.exponent - 1), '0') +
               number.digits;
    }
    const int whole = number.exponent + 1;
    if (count <= whole) {
        return number.digits + std::string(static_cast<std::size_t>(whole - count), '0');
    }
    return number.digits.substr(0, static_cast<std::size_t>(whole)) + '.' +
           number.digits.substr(static_cast<std::size_t>(whole));
}

std::string ExponentForm(const Decimal& number) {
    std::string text = number.digits.substr(0, 1);
    if (number.digits.size() > 1) text += '.' + number.digits.substr(1);
    text += number.exponent < 0 ? "E-" : "E+";
    return text + KeyNumber(std::abs(number.exponent));
}

// The exponent of the first digit that isn't 0, so that an out-of-range text can be told from one
// too small; the text is known to be well formed.
bool IsTiny(std::string_view text) {
    long long exponent = 0;
    const auto mark = text.find_first_of("eE");
    if (mark != std::string_view::npos) {
        auto power = text.substr(mark + 1);
        const bool negative = !power.empty() && power.front() == '-';
        if (!power.empty() && (power.front() == '-' || power.front() == '+')) {
            power.remove_prefix(1);
        }
        if (std::from_chars(power.data(), power.data() + power.size(), exponent).ec !=
            std::errc()) {
            exponent = std::numeric_limits<std::int32_t>::max();
        }
        if (negative) exponent = -exponent;
        text = text.substr(0, mark);
    }
    const auto point = std::min(text.find('.'), text.size());
    const auto first = text.find_first_of("123456789");
    if (first == std::string_view::npos) return true;
    const auto place = static_cast<long long>(point) - static_cast<long long>(first);
    return place + exponent < 0;
}

std::optional<std::uint32_t> ParseHexDigits(std::string_view text) {
    if (text.size() < 3 || text[0] != '&' || (text[1] != 'H' && text[1] != 'h')) return {};
    text.remove_prefix(2);
    std::uint32_t bits = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), bits, 16);
    if (error != std::errc() || end != text.data() + text.size()) return {};
    return bits;
}

template<typename Integer>
std::optional<Integer> Fit(double value) {
    if (!std::isfinite(value)) return {};
    const double rounded = RoundHalfEven(value);
    if (rounded < static_cast<double>(std::numeric_limits<Integer>::min()) ||
        rounded > static_cast<double>(std::numeric_limits<Integer>::max())) {
        return {};
    }
    return static_cast<Integer>(rounded);
}

template<typename Bits>
std::string Hex(Bits bits) {
    std::array<char, 16> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), bits, 16).ptr;
    std::string text(buffer.data(), end);
    for (char& c : text)
        c = AsciiUpper(c);
    return text;
}

} // namespace

std::string NumberToText(double value) {
    if (value == 0.0) return "0";
    if (!std::isfinite(value)) return "?";
    const Decimal number = Decompose(value);
    const bool fixed =
        number.exponent < kFirstExponentForm && number.exponent >= kLastFixedExponent;
    std::string text = fixed ? FixedForm(number) : ExponentForm(number);
    return number.negative ? '-' + text : text;
}

std::string NumberToSignedText(double value) {
    std::string text = NumberToText(value);
    return text.front() == '-' ? text : ' ' + text;
}

std::string HexText(std::int16_t value) {
    return Hex(static_cast<std::uint16_t>(value));
}
std::string HexText(std::int32_t value) {
    return Hex(static_cast<std::uint32_t>(value));
}

std::optional<double> ParseNumber(std::string_view text) {
    text = TrimBlanks(text);
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text.front() == '-') return {};
    }
    // from_chars reads "inf" and "nan" too; a number begins with a digit, a sign or a point.
    const auto start = text.find_first_not_of('-');
    if (start > 1 || (text[start] != '.' && !IsDigit(text[start]))) return {};
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end != text.data() + text.size()) return {};
    if (error == std::errc::result_out_of_range) {
        if (IsTiny(text.substr(start))) return 0.0;
        return {};
    }
    if (error != std::errc()) return {};
    return value;
}

std::optional<double> ParseFileNumber(std::string_view text) {
    if (const auto bits = ParseHexDigits(TrimBlanks(text))) return static_cast<double>(*bits);
    return ParseNumber(text);
}

std::optional<std::int16_t> ParseFileInt16(std::string_view text) {
    if (const auto bits = ParseHexDigits(TrimBlanks(text))) {
        if (*bits > 0xFFFFU) return {};
        return static_cast<std::int16_t>(static_cast<std::uint16_t>(*bits));
    }
    const auto value = ParseNumber(text);
    return value ? ToInt16(*value) : std::nullopt;
}

std::optional<std::int32_t> ParseFileInt32(std::string_view text) {
    if (const auto bits = ParseHexDigits(TrimBlanks(text))) {
        return static_cast<std::int32_t>(*bits);
    }
    const auto value = ParseNumber(text);
    return value ? ToInt32(*value) : std::nullopt;
}

std::optional<bool> ParseFileBool(std::string_view text) {
    text = TrimBlanks(text);
    if (EqualNoCase(text, "True")) return true;
    if (EqualNoCase(text, "False")) return false;
    const auto value = ParseFileNumber(text);
    if (!value) return {};
    return *value != 0.0;
}

double RoundHalfEven(double value) {
    return std::nearbyint(value);
}

std::optional<std::int16_t> ToInt16(double value) {
    return Fit<std::int16_t>(value);
}
std::optional<std::int32_t> ToInt32(double value) {
    return Fit<std::int32_t>(value);
}

std::int16_t RoundToInteger(double value) {
    if (const auto fit = ToInt16(value)) return *fit;
    throw Overflow(NumberToText(value) + " doesn't fit 16 bits");
}

std::int32_t RoundToLong(double value) {
    if (const auto fit = ToInt32(value)) return *fit;
    throw Overflow(NumberToText(value) + " doesn't fit 32 bits");
}

std::string KeyNumber(int index, int digits) {
    std::string text = std::to_string(index);
    if (static_cast<int>(text.size()) < digits) {
        text.insert(0, static_cast<std::size_t>(digits) - text.size(), '0');
    }
    return text;
}

} // namespace zentrel
