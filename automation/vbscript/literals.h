#pragma once

#include "automation/vbscript/value.h"

#include <optional>
#include <string_view>

namespace zentrel::vbscript {

/// `12` `1.5` `.5` `34E1`: the smallest of Integer, Long and Double that holds it; nothing when
/// it is beyond a Double.
std::optional<Value> DecimalLiteral(std::u16string_view text);

/// `&HFF` `&O17` with an optional `&` behind; nothing when a digit is none or the value needs more
/// than 32 bits. Up to FFFF without the `&`, the value is a 16-bit word with its sign.
std::optional<Value> RadixLiteral(std::u16string_view text);

/// The inside of `#...#`; without a date it is a time of day.
std::optional<Value> DateLiteral(std::u16string_view text);

} // namespace zentrel::vbscript
