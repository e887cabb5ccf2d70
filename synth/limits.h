#pragma once

#include <cmath>
#include <optional>
#include <string_view>

#include "device/number_text.h"

namespace zentrel {

/// Whether a frequency or counter can be worked with: finite, and no larger than 64 bits hold.
inline bool IsUsable(double value) {
    constexpr double kBeyond64Bits = 18446744073709551616.0;
    return std::abs(value) < kBeyond64Bits;
}

/// The number in an entry box; nothing when the text isn't numeric or the number isn't usable.
inline std::optional<double> EntryNumber(std::string_view text) {
    const auto number = ParseNumber(text);
    if (!number || !IsUsable(*number)) return {};
    return *number + 0.0; // no minus zero
}

} // namespace zentrel
