#include "device/word_journal.h"

#include <algorithm>

#include "device/register.h"

namespace zentrel {

void WordJournal::Note(cRegister& reg) {
    if (depth_ == 0) return;
    const bool known =
        std::any_of(entries_.begin() + static_cast<std::ptrdiff_t>(begin_), entries_.end(),
                    [&](const Entry& entry) { return entry.reg == &reg; });
    if (!known) entries_.push_back({&reg, reg.word_, reg.change_});
}

void WordJournal::Undo() {
    while (entries_.size() > begin_) {
        Entry& entry = entries_.back();
        entry.reg->word_ = std::move(entry.word);
        entry.reg->change_ = entry.change;
        entries_.pop_back();
    }
}

} // namespace zentrel
