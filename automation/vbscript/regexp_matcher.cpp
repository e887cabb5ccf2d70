#include "automation/vbscript/errors.h"
#include "automation/vbscript/regexp.h"
#include "automation/vbscript/text.h"

#include <algorithm>

namespace zentrel::vbscript::regexp {
namespace {

constexpr std::size_t kMaxBacktracks = 4'000'000;
constexpr int kStepsPerPoll = 1000;

bool IsWord(char16_t c) {
    return IsLetter(c) || IsDigit(c) || c == u'_';
}

bool IsBreak(char16_t c) {
    return c == u'\n' || c == u'\r' || c == 0x2028 || c == 0x2029;
}

bool Holds(const Set& set, char16_t c) {
    for (const auto& r : set.ranges)
        if (c >= r.first && c <= r.last) return true;
    return false;
}

/// One attempt after another on a stack of decisions that can be taken back.
class Matcher {
  public:
    Matcher(const Program& program, std::u16string_view text, Options options,
            const std::function<void()>& poll)
        : program_(program), text_(text), options_(options), poll_(poll),
          captures_(std::size_t{program.groups} * 2, kUnset), marks_(program.marks, kUnset) {}

    bool MatchAt(std::size_t at) {
        std::fill(captures_.begin(), captures_.end(), kUnset);
        undo_.clear();
        return Run(0, at);
    }
    const Captures& captures() const { return captures_; }

  private:
    /// A choice still open (`step` is where it goes on), or a register's former content.
    struct Undo {
        enum class Kind : std::uint8_t { Choice, Capture, Mark } kind;
        std::uint32_t step;
        std::size_t at;
    };

    void Push(Undo undo) {
        if (undo_.size() >= kMaxBacktracks) Raise(ErrorNumber::OutOfStack);
        undo_.push_back(undo);
    }

    /// Takes decisions back down to the last open choice above `bottom`; false if there is none.
    bool Backtrack(std::size_t bottom, std::uint32_t& step, std::size_t& at) {
        while (undo_.size() > bottom) {
            const auto last = undo_.back();
            undo_.pop_back();
            if (last.kind == Undo::Kind::Choice) {
                step = last.step;
                at = last.at;
                return true;
            }
            (last.kind == Undo::Kind::Capture ? captures_ : marks_)[last.step] = last.at;
        }
        return false;
    }

    bool Run(std::uint32_t step, std::size_t at) {
        const auto bottom = undo_.size();
        for (;;) {
            if (++steps_ % kStepsPerPoll == 0) poll_();
            const auto code = program_.steps[step].code;
            if (code == Code::Match || code == Code::AheadEnd) return true;
            if (!Advance(step, at) && !Backtrack(bottom, step, at)) return false;
        }
    }

    bool Same(char16_t a, char16_t b) const {
        return a == b || (options_.ignore_case && Lower(a) == Lower(b));
    }

    bool InSet(const Set& set, char16_t c) const {
        bool in = Holds(set, c);
        if (!in && options_.ignore_case) in = Holds(set, Lower(c)) || Holds(set, Upper(c));
        return in != set.negated;
    }

    bool AtWordEdge(std::size_t at) const {
        const bool before = at > 0 && IsWord(text_[at - 1]);
        const bool behind = at < text_.size() && IsWord(text_[at]);
        return before != behind;
    }

    bool TakeBack(std::size_t group, std::size_t& at) const {
        const auto from = captures_[group * 2];
        const auto to = captures_[group * 2 + 1];
        if (from == kUnset || to == kUnset || to < from) return true;
        const auto length = to - from;
        if (at + length > text_.size() ||
            CompareText(text_.substr(from, length), text_.substr(at, length),
                        options_.ignore_case) != 0)
            return false;
        at += length;
        return true;
    }

    /// Looks ahead on the same stack and drops the choices made there.
    bool LookAhead(const Step& s, std::uint32_t step, std::size_t at) {
        const auto bottom = undo_.size();
        const auto before = captures_;
        const bool found = Run(step + 1, at);
        if (s.b != 0) {
            undo_.resize(bottom);
            captures_ = before;
            return !found;
        }
        if (!found) return false;
        const auto open = [](const Undo& u) { return u.kind == Undo::Kind::Choice; };
        undo_.erase(
            std::remove_if(undo_.begin() + static_cast<std::ptrdiff_t>(bottom), undo_.end(), open),
            undo_.end());
        return true;
    }

    /// Does one step; false when it doesn't fit here.
    bool Advance(std::uint32_t& step, std::size_t& at) {
        const auto& s = program_.steps[step];
        const bool more = at < text_.size();
        bool fits = true;
        switch (s.code) {
        case Code::Unit:
            fits = more && Same(text_[at], static_cast<char16_t>(s.a));
            ++at;
            break;
        case Code::Any:
            fits = more && text_[at] != u'\n';
            ++at;
            break;
        case Code::Set:
            fits = more && InSet(program_.sets[s.a], text_[at]);
            ++at;
            break;
        case Code::LineStart:
            fits = at == 0 || (options_.multiline && IsBreak(text_[at - 1]));
            break;
        case Code::LineEnd:
            fits = !more || (options_.multiline && IsBreak(text_[at]));
            break;
        case Code::WordEdge:
            fits = AtWordEdge(at);
            break;
        case Code::NoWordEdge:
            fits = !AtWordEdge(at);
            break;
        case Code::Split:
            Push({Undo::Kind::Choice, s.b, at});
            step = s.a;
            return true;
        case Code::Jump:
            step = s.a;
            return true;
        case Code::Save:
            Push({Undo::Kind::Capture, s.a, captures_[s.a]});
            captures_[s.a] = at;
            break;
        case Code::Mark:
            Push({Undo::Kind::Mark, s.a, marks_[s.a]});
            marks_[s.a] = at;
            break;
        case Code::Progress:
            fits = marks_[s.a] != at;
            break;
        case Code::Back:
            fits = TakeBack(s.a, at);
            break;
        case Code::Ahead:
            if (!LookAhead(s, step, at)) return false;
            step = s.a;
            return true;
        default:
            break;
        }
        ++step;
        return fits;
    }

    const Program& program_;
    std::u16string_view text_;
    Options options_;
    const std::function<void()>& poll_;
    Captures captures_;
    std::vector<std::size_t> marks_;
    std::vector<Undo> undo_;
    std::uint64_t steps_ = 0;
};

} // namespace

std::optional<Captures> Search(const Program& program, std::u16string_view text, std::size_t from,
                               Options options, const std::function<void()>& poll) {
    Matcher matcher(program, text, options, poll);
    for (auto at = from; at <= text.size(); ++at)
        if (matcher.MatchAt(at)) return matcher.captures();
    return std::nullopt;
}

} // namespace zentrel::vbscript::regexp
