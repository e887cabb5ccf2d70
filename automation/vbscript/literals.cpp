#include "automation/vbscript/literals.h"

#include "automation/vbscript/calendar.h"
#include "automation/vbscript/number_text.h"
#include "automation/vbscript/text.h"

#include <cmath>

namespace zentrel::vbscript {

std::optional<Value> DecimalLiteral(std::u16string_view text) {
    std::string ascii;
    for (const auto c : text)
        ascii += static_cast<char>(c);
    const double number = DecimalToDouble(ascii);
    if (std::isinf(number)) return std::nullopt;
    const bool whole = ascii.find_first_of(".eE") == std::string::npos;
    if (whole && number <= 32767) return Value::Integer(static_cast<std::int64_t>(number));
    if (whole && number <= 2147483647) return Value::Long(static_cast<std::int64_t>(number));
    return Value::Double(number);
}

std::optional<Value> RadixLiteral(std::u16string_view text) {
    if (text.size() < 3) return std::nullopt;
    const auto kind = text[1] | 0x20;
    if (kind != u'h' && kind != u'o') return std::nullopt;
    const unsigned base = kind == u'h' ? 16 : 8;
    text.remove_prefix(2);
    const bool is_long = text.back() == u'&';
    if (is_long) text.remove_suffix(1);
    if (text.empty()) return std::nullopt;
    std::uint64_t bits = 0;
    for (const auto c : text) {
        const auto letter = static_cast<char16_t>(c | 0x20);
        unsigned digit = 99;
        if (IsDigit(c)) digit = static_cast<unsigned>(c - u'0');
        if (letter >= u'a' && letter <= u'f') digit = static_cast<unsigned>(letter - u'a') + 10;
        if (digit >= base) return std::nullopt;
        bits = bits * base + digit;
        if (bits > 0xFFFFFFFF) return std::nullopt;
    }
    std::int64_t number = static_cast<std::int32_t>(bits);
    if (!is_long && bits <= 0xFFFF) number = static_cast<std::int16_t>(bits);
    const bool fits = number >= -32767 && number <= 32767;
    return fits ? Value::Integer(number) : Value::Long(number);
}

std::optional<Value> DateLiteral(std::u16string_view text) {
    const auto serial = ParseDate(text);
    if (!serial) return std::nullopt;
    return Value::Date(*serial);
}

} // namespace zentrel::vbscript
