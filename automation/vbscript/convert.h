#pragma once

#include "automation/vbscript/value.h"

#include <cstdint>
#include <optional>

/// Conversions between the language's types. They follow references, and an object stands for its
/// default member. Null is error 94, an array or a text that is no number 13, a number out of range
/// 6, Nothing 91.
namespace zentrel::vbscript {

/// The value behind references and default members: never an object.
Value Plain(const Value& value);
/// What an object gives in an expression; error 91 for Nothing, 438 when it has no default.
Value DefaultValue(Object* object);

double ToDouble(const Value& value);
/// Halves round to even, as everywhere below.
std::int32_t ToLong(const Value& value);
std::int16_t ToInteger(const Value& value);
std::uint8_t ToByte(const Value& value);
double ToSingle(const Value& value);
std::int64_t ToCurrency(const Value& value);
double ToDate(const Value& value);
bool ToBoolean(const Value& value);
/// A value of type String.
Value ToText(const Value& value);
/// As ToText, for a condition: Null counts as False.
bool IsTrue(const Value& value);

/// Rounds halves to even and checks the range (6).
std::int64_t RoundToInteger(double number, double least, double most);
/// The number in a string; 13 if there is none, 6 if it is too large.
double NumberInText(std::u16string_view text);
/// True and False in any case, also as #TRUE# and #FALSE#.
std::optional<bool> BooleanInText(std::u16string_view text);
bool IsNumericValue(const Value& value);

} // namespace zentrel::vbscript
