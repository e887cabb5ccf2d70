#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Numbers to and from text, the one place for it. Nothing here knows the machine's locale: the
/// decimal sign is a point, and a comma is never part of a number.
namespace zentrel {

/// The decimal text of a number: at most 15 significant digits, no trailing zeros, "0.5" with its
/// leading zero. From 1E15 up and below 1E-11 in the form "1.5E+15", "5.6E-12". Minus zero is "0".
std::string NumberToText(double value);

/// As NumberToText, with a blank where a positive number has no sign.
std::string NumberToSignedText(double value);

/// Upper-case hexadecimal text of an integer's bits in its own width: 888 is "378", -1 is "FFFF".
std::string HexText(std::int16_t value);
std::string HexText(std::int32_t value);

/// Reads decimal text: blanks around, one sign in front, a point, an exponent. Nothing when the
/// text isn't a number or is too large for a double; a number too small reads as 0.
std::optional<double> ParseNumber(std::string_view text);

/// What the entry boxes ask before they use a text.
inline bool IsNumeric(std::string_view text) {
    return ParseNumber(text).has_value();
}

/// As files have numbers: ParseNumber, and "&H" with hexadecimal digits (at most 8).
std::optional<double> ParseFileNumber(std::string_view text);

/// A file's integer on 16 or 32 bits. Fractions round to the nearest integer, ties to even. A
/// hexadecimal number takes the bits as they stand: "&HC3A6" is -15450 on 16 bits. Nothing when
/// the text is no number or doesn't fit.
std::optional<std::int16_t> ParseFileInt16(std::string_view text);
std::optional<std::int32_t> ParseFileInt32(std::string_view text);

/// "True" or "False" in any case of letters, or a number: 0 is false, any other number true.
std::optional<bool> ParseFileBool(std::string_view text);

/// The nearest whole number, ties to even.
double RoundHalfEven(double value);

/// RoundHalfEven into an integer; nothing when the result doesn't fit or `value` isn't finite.
std::optional<std::int16_t> ToInt16(double value);
std::optional<std::int32_t> ToInt32(double value);

/// RoundHalfEven into an integer. Throws Overflow when the result doesn't fit.
std::int16_t RoundToInteger(double value);
std::int32_t RoundToLong(double value);

/// `index` in at least `digits` digits, filled with zeros: the numbering of file keys.
std::string KeyNumber(int index, int digits = 2);

} // namespace zentrel
