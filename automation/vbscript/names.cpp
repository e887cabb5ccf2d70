#include "automation/vbscript/names.h"

#include "automation/vbscript/text.h"

namespace zentrel::vbscript {

NameTable::NameTable() : spellings_(1) {}

NameId NameTable::Intern(std::u16string_view name) {
    const auto [entry, is_new] =
        ids_.try_emplace(Lower(name), static_cast<NameId>(spellings_.size()));
    if (is_new) spellings_.emplace_back(name);
    return entry->second;
}

NameId NameTable::Intern(std::string_view ascii) {
    return Intern(Widen(ascii));
}

NameId NameTable::Find(std::u16string_view name) const {
    const auto found = ids_.find(Lower(name));
    return found == ids_.end() ? kNoName : found->second;
}

} // namespace zentrel::vbscript
