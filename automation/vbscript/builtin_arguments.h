#pragma once

#include "automation/vbscript/builtins.h"
#include "automation/vbscript/convert.h"
#include "automation/vbscript/errors.h"

#include <cstdint>

/// How built-in functions read their arguments.
namespace zentrel::vbscript {

/// A text; 94 for Null.
inline Value Text(const BuiltinCall& call, std::size_t index) {
    return ToText(call[index]);
}

/// A number that must lie in a range, else error 5.
inline std::int32_t Number(const BuiltinCall& call, std::size_t index, std::int32_t least,
                           std::int32_t most = 2147483647) {
    const auto number = ToLong(call[index]);
    if (number < least || number > most) Raise(ErrorNumber::InvalidCall);
    return number;
}

inline std::int32_t NumberOr(const BuiltinCall& call, std::size_t index, std::int32_t otherwise,
                             std::int32_t least) {
    return call.Has(index) ? Number(call, index, least) : otherwise;
}

/// vbBinaryCompare (0) or vbTextCompare (1); true for the latter.
inline bool IgnoresCase(const BuiltinCall& call, std::size_t index) {
    return call.Has(index) && Number(call, index, 0, 1) == 1;
}

} // namespace zentrel::vbscript
