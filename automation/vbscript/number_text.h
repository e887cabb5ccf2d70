#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zentrel::vbscript {

/// A number in a string as CDbl reads it: blanks around, one sign in front or behind, thousands
/// separators, a dollar sign, (5) for -5, an exponent, &H and &O. Nothing when it is none.
/// Infinite when it is beyond a Double.
std::optional<double> ParseNumber(std::u16string_view text);

/// Digits with an optional point and exponent, known to be well-formed; infinite beyond a Double,
/// 0 below it.
double DecimalToDouble(std::string_view ascii);

/// 15 digits for a Double, 7 for a Single; fixed notation from 1E-11 up to the digits that the
/// type holds, the exponent form beyond.
std::u16string NumberText(double number, int digits);
std::u16string IntegerText(std::int64_t number);
/// Ten-thousandths as CStr writes a Currency.
std::u16string CurrencyText(std::int64_t scaled);

} // namespace zentrel::vbscript
