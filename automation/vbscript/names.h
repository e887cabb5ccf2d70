#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace zentrel::vbscript {

/// A name regardless of case, as a number.
using NameId = std::uint32_t;
inline constexpr NameId kNoName = 0;

/// All names that an engine's scripts have mentioned.
class NameTable {
  public:
    NameTable();
    NameId Intern(std::u16string_view name);
    NameId Intern(std::string_view ascii);
    /// The name's number if anybody has mentioned it, else kNoName.
    NameId Find(std::u16string_view name) const;
    /// As it was first written.
    const std::u16string& Spelling(NameId id) const { return spellings_[id]; }

  private:
    std::deque<std::u16string> spellings_;
    std::unordered_map<std::u16string, NameId> ids_; ///< by lower-case spelling
};

} // namespace zentrel::vbscript
