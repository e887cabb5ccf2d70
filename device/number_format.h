#pragma once

#include <string>
#include <string_view>

namespace zentrel {

/// Formats a number by a classic picture: "0" a digit, "#" a digit unless it is a leading or
/// trailing zero, "." the point, "," groups of three, "%" times 100, "E+" or "E-" an exponent,
/// "\" and quotes for literal text; up to three sections by ";" for positive, negative, zero.
std::string FormatNumber(double value, std::string_view picture);

} // namespace zentrel
