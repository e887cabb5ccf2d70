#include "automation/vbscript/errors.h"
#include "automation/vbscript/regexp.h"
#include "automation/vbscript/text.h"

namespace zentrel::vbscript::regexp {
namespace {

constexpr std::size_t kMaxSteps = 100000;
constexpr int kMaxNesting = 200;
constexpr std::uint32_t kUnlimited = ~0U;
constexpr std::uint32_t kMaxRepeat = 10000;

const std::vector<Range> kDigits = {{u'0', u'9'}};
const std::vector<Range> kWords = {{u'0', u'9'}, {u'A', u'Z'}, {u'_', u'_'}, {u'a', u'z'}};
const std::vector<Range> kSpaces = {{u'\t', u'\r'},   {u' ', u' '},     {0xA0, 0xA0},
                                    {0x2000, 0x200B}, {0x2028, 0x2029}, {0x3000, 0x3000}};

std::vector<Range> Inverse(const std::vector<Range>& ranges) {
    std::vector<Range> out;
    unsigned next = 0;
    for (const auto& r : ranges) {
        if (r.first > next)
            out.push_back({static_cast<char16_t>(next), static_cast<char16_t>(r.first - 1)});
        next = r.last + 1U;
    }
    if (next <= 0xFFFF) out.push_back({static_cast<char16_t>(next), 0xFFFF});
    return out;
}

/// \d and its sisters; null for any other letter.
std::optional<std::vector<Range>> ClassOf(char16_t letter) {
    switch (letter) {
    case u'd':
        return kDigits;
    case u'D':
        return Inverse(kDigits);
    case u'w':
        return kWords;
    case u'W':
        return Inverse(kWords);
    case u's':
        return kSpaces;
    case u'S':
        return Inverse(kSpaces);
    default:
        return std::nullopt;
    }
}

/// Parses and emits in one go: a quantifier copies the steps of what it stands behind.
class Compiler {
  public:
    explicit Compiler(std::u16string_view pattern) : pattern_(pattern) {
        for (std::size_t i = 0; i < pattern.size(); ++i) {
            if (pattern[i] == u'\\')
                ++i;
            else if (pattern[i] == u'(' && !(i + 1 < pattern.size() && pattern[i + 1] == u'?'))
                ++group_total_;
        }
    }

    Program Run() {
        Put({Code::Save, 0, 0});
        Alternatives();
        if (at_ < pattern_.size()) Raise(ErrorNumber::RegExpSyntax);
        Put({Code::Save, 1, 0});
        Put({Code::Match, 0, 0});
        return std::move(program_);
    }

  private:
    using Steps = std::vector<Step>;

    bool AtEnd() const { return at_ >= pattern_.size(); }
    char16_t Peek() const { return AtEnd() ? u'\0' : pattern_[at_]; }
    bool Take(char16_t c) {
        if (AtEnd() || pattern_[at_] != c) return false;
        ++at_;
        return true;
    }
    std::uint32_t Here() const { return static_cast<std::uint32_t>(program_.steps.size()); }
    std::uint32_t Put(Step step) {
        if (program_.steps.size() >= kMaxSteps) Raise(ErrorNumber::OutOfMemory);
        program_.steps.push_back(step);
        return Here() - 1;
    }

    void Alternatives() {
        if (++nesting_ > kMaxNesting) Raise(ErrorNumber::OutOfStack);
        std::vector<std::uint32_t> ends;
        for (;;) {
            const auto start = Here();
            Sequence();
            if (!Take(u'|')) break;
            Insert(start, {Code::Split, start + 1, 0});
            ends.push_back(Put({Code::Jump, 0, 0}));
            program_.steps[start].b = Here();
        }
        for (const auto end : ends)
            program_.steps[end].a = Here();
        --nesting_;
    }

    /// Puts a step in front of others and moves their targets along.
    void Insert(std::uint32_t place, Step step) {
        Put(step);
        auto& steps = program_.steps;
        for (auto i = Here() - 1; i > place; --i)
            steps[i] = Shifted(steps[i - 1], place, 1);
        steps[place] = step;
    }

    static Step Shifted(Step step, std::uint32_t from, std::int64_t by) {
        const auto move = [&](std::uint32_t& target) {
            if (target >= from)
                target = static_cast<std::uint32_t>(static_cast<std::int64_t>(target) + by);
        };
        if (step.code == Code::Split) {
            move(step.a);
            move(step.b);
        } else if (step.code == Code::Jump || step.code == Code::Ahead) {
            move(step.a);
        }
        return step;
    }

    void Sequence() {
        while (!AtEnd() && Peek() != u'|' && Peek() != u')')
            Term();
    }

    void Term() {
        const auto start = Here();
        const auto c = pattern_[at_++];
        switch (c) {
        case u'^':
            Put({Code::LineStart});
            return;
        case u'$':
            Put({Code::LineEnd});
            return;
        case u'*':
        case u'+':
        case u'?':
            Raise(ErrorNumber::RegExpQuantifier);
        case u'(':
            Group();
            break;
        case u'[':
            PutSet(ReadSet());
            break;
        case u'.':
            Put({Code::Any});
            break;
        case u'\\':
            if (!Escape()) return;
            break;
        default:
            Put({Code::Unit, c});
        }
        Quantifier(start);
    }

    void Group() {
        bool captures = true;
        std::optional<std::uint32_t> ahead;
        if (Take(u'?')) {
            captures = false;
            if (Take(u'='))
                ahead = Put({Code::Ahead, 0, 0});
            else if (Take(u'!'))
                ahead = Put({Code::Ahead, 0, 1});
            else if (!Take(u':'))
                Raise(ErrorNumber::RegExpSyntax);
        }
        const auto group = captures ? program_.groups++ : 0;
        if (captures) Put({Code::Save, group * 2});
        Alternatives();
        if (!Take(u')')) Raise(ErrorNumber::RegExpParenthesis);
        if (captures) Put({Code::Save, group * 2 + 1});
        if (ahead) {
            Put({Code::AheadEnd});
            program_.steps[*ahead].a = Here();
        }
    }

    /// False for an edge, which takes no quantifier.
    bool Escape() {
        if (AtEnd()) Raise(ErrorNumber::RegExpSyntax);
        const auto c = pattern_[at_];
        if (c == u'b' || c == u'B') {
            ++at_;
            Put({c == u'b' ? Code::WordEdge : Code::NoWordEdge});
            return false;
        }
        if (auto ranges = ClassOf(c)) {
            ++at_;
            PutSet({std::move(*ranges), false});
            return true;
        }
        if (c >= u'1' && c <= u'9') {
            const auto mark = at_;
            const auto group = Decimal();
            if (group && *group <= group_total_) {
                Put({Code::Back, *group});
                return true;
            }
            at_ = mark;
        }
        Put({Code::Unit, EscapedUnit()});
        return true;
    }

    std::optional<std::uint32_t> Decimal() {
        if (!IsDigit(Peek())) return std::nullopt;
        std::uint32_t number = 0;
        while (IsDigit(Peek())) {
            if (number > kMaxRepeat) Raise(ErrorNumber::OutOfMemory);
            number = number * 10 + static_cast<std::uint32_t>(pattern_[at_++] - u'0');
        }
        return number;
    }

    std::optional<char16_t> Hexadecimal(std::size_t digits) {
        unsigned number = 0;
        for (std::size_t i = 0; i < digits; ++i) {
            const auto c = at_ + i < pattern_.size() ? Lower(pattern_[at_ + i]) : u'\0';
            if (!IsDigit(c) && !(c >= u'a' && c <= u'f')) return std::nullopt;
            number = number * 16 + static_cast<unsigned>(IsDigit(c) ? c - u'0' : c - u'a' + 10);
        }
        at_ += digits;
        return static_cast<char16_t>(number);
    }

    /// The unit that stands behind a backslash.
    char16_t EscapedUnit() {
        const auto c = pattern_[at_++];
        switch (c) {
        case u'n':
            return u'\n';
        case u'r':
            return u'\r';
        case u't':
            return u'\t';
        case u'f':
            return u'\f';
        case u'v':
            return u'\v';
        case u'x':
            return Hexadecimal(2).value_or(c);
        case u'u':
            return Hexadecimal(4).value_or(c);
        case u'c':
            if (IsLetter(Peek())) return static_cast<char16_t>(pattern_[at_++] & 0x1F);
            return c;
        default:
            break;
        }
        if (c < u'0' || c > u'7') return c;
        unsigned number = c - u'0';
        for (int i = 0; i < 2 && Peek() >= u'0' && Peek() <= u'7' && number < 32; ++i)
            number = number * 8 + static_cast<unsigned>(pattern_[at_++] - u'0');
        return static_cast<char16_t>(number);
    }

    void PutSet(Set set) {
        program_.sets.push_back(std::move(set));
        Put({Code::Set, static_cast<std::uint32_t>(program_.sets.size() - 1)});
    }

    Set ReadSet() {
        Set set;
        set.negated = Take(u'^');
        for (bool first = true;; first = false) {
            if (AtEnd()) Raise(ErrorNumber::RegExpBracket);
            if (Peek() == u']' && !first) break;
            if (Peek() == u']' && first) break; // [] matches nothing, [^] anything
            std::optional<std::vector<Range>> ranges;
            const auto low = SetUnit(ranges);
            if (ranges) {
                set.ranges.insert(set.ranges.end(), ranges->begin(), ranges->end());
                continue;
            }
            const bool range =
                Peek() == u'-' && at_ + 1 < pattern_.size() && pattern_[at_ + 1] != u']';
            if (!range) {
                set.ranges.push_back({low, low});
                continue;
            }
            ++at_;
            const auto high = SetUnit(ranges);
            if (ranges || high < low) Raise(ErrorNumber::RegExpRange);
            set.ranges.push_back({low, high});
        }
        ++at_;
        return set;
    }

    char16_t SetUnit(std::optional<std::vector<Range>>& ranges) {
        const auto c = pattern_[at_++];
        if (c != u'\\') return c;
        if (AtEnd()) Raise(ErrorNumber::RegExpBracket);
        if (Take(u'b')) return u'\b';
        ranges = ClassOf(Peek());
        if (ranges) {
            ++at_;
            return 0;
        }
        return EscapedUnit();
    }

    // --- quantifiers ---

    void Quantifier(std::uint32_t start) {
        std::uint32_t least = 0;
        std::uint32_t most = kUnlimited;
        if (Take(u'+')) {
            least = 1;
        } else if (Take(u'?')) {
            most = 1;
        } else if (!Take(u'*') && !Braces(least, most)) {
            return;
        }
        const bool lazy = Take(u'?');
        Repeat(start, least, most, lazy);
        if (Peek() == u'*' || Peek() == u'+' || Peek() == u'?')
            Raise(ErrorNumber::RegExpQuantifier);
    }

    /// {n}, {n,}, {n,m}; anything else with a brace is plain text.
    bool Braces(std::uint32_t& least, std::uint32_t& most) {
        const auto mark = at_;
        if (!Take(u'{')) return false;
        const auto low = Decimal();
        auto high = low;
        if (low && Take(u',')) high = Peek() == u'}' ? kUnlimited : Decimal();
        if (!low || !high || !Take(u'}')) {
            at_ = mark;
            return false;
        }
        if (*high < *low) Raise(ErrorNumber::RegExpSyntax);
        least = *low;
        most = *high;
        return true;
    }

    void Repeat(std::uint32_t start, std::uint32_t least, std::uint32_t most, bool lazy) {
        const Steps body(program_.steps.begin() + start, program_.steps.end());
        program_.steps.resize(start);
        const auto put_body = [&] {
            const auto shift = static_cast<std::int64_t>(Here()) - start;
            for (const auto& step : body)
                Put(Shifted(step, start, shift));
        };
        for (std::uint32_t i = 0; i < least; ++i)
            put_body();
        if (most == kUnlimited) {
            const auto mark = program_.marks++;
            const auto split = Put({Code::Split});
            Put({Code::Mark, mark});
            put_body();
            Put({Code::Progress, mark});
            Put({Code::Jump, split});
            Aim(split, lazy);
            return;
        }
        std::vector<std::uint32_t> splits;
        for (std::uint32_t i = least; i < most; ++i) {
            splits.push_back(Put({Code::Split}));
            put_body();
        }
        for (const auto split : splits)
            Aim(split, lazy);
    }

    /// Points a split at the step behind it and at the end of what is written so far.
    void Aim(std::uint32_t split, bool lazy) {
        auto& step = program_.steps[split];
        step.a = lazy ? Here() : split + 1;
        step.b = lazy ? split + 1 : Here();
    }

    std::u16string_view pattern_;
    Program program_;
    std::size_t at_ = 0;
    std::uint32_t group_total_ = 0;
    int nesting_ = 0;
};

} // namespace

Program Compile(std::u16string_view pattern) {
    return Compiler(pattern).Run();
}

} // namespace zentrel::vbscript::regexp
