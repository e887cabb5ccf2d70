#pragma once

#include "automation/vbscript/text.h"
#include "automation/vbscript/vbscript.h"

#include <optional>
#include <span>
#include <string_view>

namespace zentrel::vbscript {

/// A member of one of the language's own objects.
struct MemberRow {
    std::string_view name;
    int slot;
    bool takes_arguments;
};

inline std::optional<Member> FindRow(std::span<const MemberRow> rows, std::u16string_view name) {
    for (const auto& row : rows)
        if (row.name.size() == name.size() && CompareText(Widen(row.name), name, true) == 0)
            return Member{row.slot, row.takes_arguments};
    return std::nullopt;
}

} // namespace zentrel::vbscript
