#include "device/word_journal.h"

#include <algorithm>

#include "device/register.h"

namespace zentrel {

void WordJournal::Note(cRegister& reg) {
    if (depth_ == 0) return;
    const bool known = std::any_of(entries_.begin(), entries_.end(),
                                   [&](const Entry& entry) { return entry.reg == &reg; });
    if (!known) entries_.push_back({&reg, reg.word_, reg.change_});
}

void WordJournal::Undo() {
    for (Entry& entry : entries_) {
        entry.reg->word_ = std::move(entry.word);
        entry.reg->change_ = entry.change;
    }
    entries_.clear();
}

} // namespace zentrel
