#pragma once

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "device/bit_word.h"
#include "device/errors.h"

namespace zentrel {

class cRegister;

/// What the field operation under way has written. A field may drive a chain of other fields; when
/// a name in that chain leads nowhere, every word goes back to what it was before the operation.
class WordJournal {
  public:
    /// Runs one step of an operation on the field `name`. Steps nest; the outermost one owns the
    /// undo. Fields that refer to each other in a ring end in EndlessReference.
    template<typename Step>
    decltype(auto) Run(std::string_view name, Step&& step) {
        const Nesting nesting(*this, name);
        try {
            return std::forward<Step>(step)();
        } catch (const ScriptFailure&) {
            throw;
        } catch (...) {
            if (depth_ == operation_.outside + 1) Undo();
            throw;
        }
    }

    /// Runs a script's hook in the middle of an operation. What the script does to fields is an
    /// operation each, undone alone when it fails and again with the one around it. False when
    /// the hook emptied the device: the field that it belongs to is gone then.
    template<typename Hook>
    bool RunHook(Hook&& hook) {
        const auto device = device_;
        const Inside inside(*this);
        std::forward<Hook>(hook)();
        return device == device_;
    }

    /// Runs a change that consists of several operations, all or nothing: when `change` gives false
    /// or throws, every word goes back to what it was before it. An operation that fails in it is
    /// undone alone, so that the change may go on. A hook that fails leaves what was written.
    template<typename Change>
    bool Attempt(std::string_view name, Change&& change) {
        const Inside apart(*this);
        const Nesting nesting(*this, name);
        try {
            const Inside inside(*this);
            if (std::forward<Change>(change)()) return true;
        } catch (const ScriptFailure&) {
            throw;
        } catch (...) {
            Undo();
            throw;
        }
        Undo();
        return false;
    }

    /// Remembers a register's word before its first write in this operation.
    void Note(cRegister& reg) {
        if (depth_ > 0) Remember(reg);
    }
    /// The device has taken the word as it stands: a later undo makes it differ again.
    void Acknowledge(const cRegister& reg);
    /// The device's registers are about to go.
    void Forget();
    /// Changes whenever the device is emptied: whoever compares it before and after a script knows
    /// whether the same device stands.
    unsigned device() const { return device_; }

  private:
    static constexpr int kDeepest = 64;
    /// A tree of references that meets the same fields over and over ends here.
    static constexpr int kMostSteps = 10'000;

    struct Entry {
        cRegister* reg = nullptr;
        BitWord word;
        bool change = false;
    };

    struct Operation {
        int outside = 0; // nesting around its outermost step
        unsigned device = 0;
        std::size_t start = 0; // its first entry
        int steps = 0;
    };

    class Nesting {
      public:
        Nesting(WordJournal& journal, std::string_view name) : journal_(journal) {
            Operation& operation = journal.operation_;
            if (journal.depth_ == operation.outside) {
                operation = {journal.depth_, journal.device_, journal.entries_.size(), 0};
            }
            if (journal.depth_ >= kDeepest || ++operation.steps > kMostSteps) {
                throw EndlessReference(std::string(name));
            }
            ++journal.depth_;
        }
        ~Nesting() {
            if (--journal_.depth_ == 0) journal_.entries_.clear();
        }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

      private:
        WordJournal& journal_;
    };

    class Inside {
      public:
        explicit Inside(WordJournal& journal) : journal_(journal), around_(journal.operation_) {
            journal.operation_.outside = journal.depth_;
        }
        ~Inside() { journal_.operation_ = around_; }
        Inside(const Inside&) = delete;
        Inside& operator=(const Inside&) = delete;

      private:
        WordJournal& journal_;
        Operation around_;
    };

    void Remember(cRegister& reg);
    void Undo();

    int depth_ = 0;
    Operation operation_;
    std::vector<Entry> entries_;
    unsigned device_ = 0;
};

} // namespace zentrel
