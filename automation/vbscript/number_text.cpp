#include "automation/vbscript/number_text.h"

#include "automation/vbscript/literals.h"
#include "automation/vbscript/text.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace zentrel::vbscript {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr int kSmallestFixedExponent = -11;

std::u16string_view Trim(std::u16string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// The signs around a number, taken off one by one.
struct Decoration {
    bool sign = false;
    bool negative = false;
    bool currency = false;

    bool Take(char16_t c) {
        if (c == u'$' && !currency) return currency = true;
        if ((c != u'-' && c != u'+') || sign) return false;
        negative = c == u'-';
        return sign = true;
    }
};

/// Digits with separators, point and exponent as plain ASCII; nothing if malformed.
std::optional<std::string> CleanDigits(std::u16string_view text) {
    std::string clean;
    bool digits = false;
    bool point = false;
    std::size_t i = 0;
    for (; i < text.size(); ++i) {
        const auto c = text[i];
        if (IsDigit(c)) {
            digits = true;
            clean += static_cast<char>(c);
        } else if (c == u'.' && !point) {
            point = true;
            clean += '.';
        } else if (c != u',' || point || !digits) {
            break;
        }
    }
    if (!digits) return std::nullopt;
    if (i == text.size()) return clean;
    if ((text[i] | 0x20) != u'e') return std::nullopt;
    clean += 'e';
    if (++i < text.size() && (text[i] == u'+' || text[i] == u'-'))
        clean += static_cast<char>(text[i++]);
    if (i == text.size()) return std::nullopt;
    for (; i < text.size(); ++i) {
        if (!IsDigit(text[i])) return std::nullopt;
        clean += static_cast<char>(text[i]);
    }
    return clean;
}

/// Power of ten of the first digit that counts; for telling overflow from underflow.
bool IsLarge(std::string_view ascii) {
    const auto e = ascii.find_first_of("eE");
    if (e != std::string_view::npos) return ascii.substr(e + 1).front() != '-';
    return ascii.find_first_not_of("0.") < ascii.find('.');
}

} // namespace

double DecimalToDouble(std::string_view ascii) {
    double number = 0;
    const auto result = std::from_chars(ascii.data(), ascii.data() + ascii.size(), number);
    if (result.ec == std::errc::result_out_of_range) return IsLarge(ascii) ? kInfinity : 0.0;
    return number;
}

std::optional<double> ParseNumber(std::u16string_view text) {
    text = Trim(text);
    if (text.empty()) return std::nullopt;
    if (text.front() == u'&') {
        const auto value = RadixLiteral(text);
        if (!value) return std::nullopt;
        return static_cast<double>(value->AsInteger());
    }
    Decoration decoration;
    if (text.size() > 2 && text.front() == u'(' && text.back() == u')') {
        decoration.Take(u'-');
        text = text.substr(1, text.size() - 2);
    }
    while (!text.empty() && decoration.Take(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && decoration.Take(text.back()))
        text.remove_suffix(1);
    const auto clean = CleanDigits(text);
    if (!clean) return std::nullopt;
    const double number = DecimalToDouble(*clean);
    return decoration.negative ? -number : number;
}

std::u16string NumberText(double number, int digits) {
    if (number == 0) return u"0";
    char buffer[40];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number,
                                      std::chars_format::scientific, digits - 1);
    const std::string_view text(buffer, static_cast<std::size_t>(result.ptr - buffer));
    const auto e = text.find('e');
    if (e == std::string_view::npos) return Widen(text); // inf, nan
    int exponent = 0;
    const auto* first = text.data() + e + 1;
    std::from_chars(*first == '+' ? first + 1 : first, text.data() + text.size(), exponent);

    std::string figures;
    for (const char c : text.substr(0, e))
        if (c >= '0' && c <= '9') figures += c;
    while (figures.size() > 1 && figures.back() == '0')
        figures.pop_back();
    std::string out = number < 0 ? "-" : "";
    const auto count = static_cast<int>(figures.size());
    if (exponent < kSmallestFixedExponent || exponent >= digits) {
        out += figures[0];
        if (count > 1) out.append(1, '.').append(figures, 1);
        const auto power = std::to_string(std::abs(exponent));
        out += exponent < 0 ? "E-" : "E+";
        if (power.size() < 2) out += '0';
        out += power;
    } else if (exponent < 0) {
        out += "0.";
        out.append(static_cast<std::size_t>(-exponent) - 1, '0');
        out += figures;
    } else if (count <= exponent + 1) {
        out += figures + std::string(static_cast<std::size_t>(exponent) + 1 - figures.size(), '0');
    } else {
        const auto whole = static_cast<std::size_t>(exponent) + 1;
        out.append(figures, 0, whole).append(1, '.').append(figures, whole);
    }
    return Widen(out);
}

std::u16string IntegerText(std::int64_t number) {
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
    return {buffer, result.ptr};
}

std::u16string CurrencyText(std::int64_t scaled) {
    const auto magnitude =
        scaled < 0 ? 0 - static_cast<std::uint64_t>(scaled) : static_cast<std::uint64_t>(scaled);
    std::string out(scaled < 0 ? "-" : "");
    out += std::to_string(magnitude / 10000);
    const auto rest = magnitude % 10000;
    if (rest != 0) {
        auto fraction = std::to_string(10000 + rest).substr(1);
        while (fraction.back() == '0')
            fraction.pop_back();
        out.append(1, '.').append(fraction);
    }
    return Widen(out);
}

} // namespace zentrel::vbscript
