#include "device/word_journal.h"

#include <algorithm>

#include "device/register.h"

namespace zentrel {

void WordJournal::Remember(cRegister& reg) {
    const auto first = std::min(operation_.start, entries_.size());
    const auto start = entries_.begin() + static_cast<std::ptrdiff_t>(first);
    const bool known =
        std::any_of(start, entries_.end(), [&](const Entry& entry) { return entry.reg == &reg; });
    if (!known) entries_.push_back({&reg, reg.word_, reg.change_});
}

void WordJournal::Acknowledge(const cRegister& reg) {
    for (Entry& entry : entries_) {
        if (entry.reg == &reg) entry.change = true;
    }
}

void WordJournal::Forget() {
    entries_.clear();
    ++device_;
}

void WordJournal::Undo() {
    if (operation_.device != device_) return;
    while (entries_.size() > operation_.start) {
        Entry& entry = entries_.back();
        entry.reg->word_ = std::move(entry.word);
        entry.reg->change_ = entry.change;
        entries_.pop_back();
    }
}

} // namespace zentrel
