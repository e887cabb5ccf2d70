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
            if (depth_ == 1) Undo();
            throw;
        }
    }

    /// Runs one change that consists of several field operations, all or nothing: when `step` gives
    /// false or throws, every word goes back to what it was before it. Attempts nest, in each other
    /// and in steps. A hook that fails leaves what was written, as in Run.
    template<typename Step>
    bool Attempt(std::string_view name, Step&& step) {
        const Nesting nesting(*this, name);
        const Savepoint savepoint(*this);
        try {
            if (std::forward<Step>(step)()) return true;
        } catch (const ScriptFailure&) {
            throw;
        } catch (...) {
            Undo();
            throw;
        }
        Undo();
        return false;
    }

    /// Remembers a register's word before its first write since the operation or attempt began.
    void Note(cRegister& reg);

  private:
    static constexpr int kDeepest = 64;

    struct Entry {
        cRegister* reg;
        BitWord word;
        bool change;
    };

    class Nesting {
      public:
        Nesting(WordJournal& journal, std::string_view name) : journal_(journal) {
            if (journal.depth_ >= kDeepest) throw EndlessReference(std::string(name));
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

    // What an attempt notes stays behind it for the one around it.
    class Savepoint {
      public:
        explicit Savepoint(WordJournal& journal) : journal_(journal), outer_(journal.begin_) {
            journal_.begin_ = journal_.entries_.size();
        }
        ~Savepoint() { journal_.begin_ = outer_; }
        Savepoint(const Savepoint&) = delete;
        Savepoint& operator=(const Savepoint&) = delete;

      private:
        WordJournal& journal_;
        std::size_t outer_;
    };

    void Undo();

    int depth_ = 0;
    std::size_t begin_ = 0; // of what the innermost attempt has noted
    std::vector<Entry> entries_;
};

} // namespace zentrel
