#include "automation/vbscript/arrays.h"
#include "automation/vbscript/companions.h"
#include "automation/vbscript/convert.h"
#include "automation/vbscript/errors.h"
#include "automation/vbscript/member_table.h"
#include "automation/vbscript/regexp.h"
#include "automation/vbscript/runtime.h"

namespace zentrel::vbscript {
namespace {

/// A fixed row of values: what a search has found, or the groups of a match.
class Row : public HostObject {
  public:
    Row(std::string_view class_name, std::vector<Value> items)
        : class_name_(class_name), items_(std::move(items)) {}

    std::string_view ClassName() const override { return class_name_; }
    const void* MemberTable() const override { return kMembers; }
    std::optional<Member> FindMember(std::u16string_view name) const override {
        return FindRow(kMembers, name);
    }
    std::optional<Member> DefaultMember() const override { return Member{kItem, true}; }

    Value Get(int slot, Arguments args) override {
        if (slot == kCount) return Value::Long(static_cast<std::int64_t>(items_.size()));
        if (args.size() != 1) Raise(ErrorNumber::WrongArguments);
        const auto index = ToLong(args[0]);
        if (index < 0 || static_cast<std::size_t>(index) >= items_.size())
            Raise(ErrorNumber::InvalidCall);
        return items_[static_cast<std::size_t>(index)];
    }

    std::unique_ptr<Enumerator> Enumerate() override {
        class Walk : public Enumerator {
          public:
            explicit Walk(std::vector<Value> items) : items_(std::move(items)) {}
            std::optional<Value> Next() override {
                if (at_ == items_.size()) return std::nullopt;
                return items_[at_++];
            }

          private:
            std::vector<Value> items_;
            std::size_t at_ = 0;
        };
        return std::make_unique<Walk>(items_);
    }

  private:
    enum Slot { kCount, kItem };
    static constexpr MemberRow kMembers[] = {{"Count", kCount, false}, {"Item", kItem, true}};

    std::string_view class_name_;
    std::vector<Value> items_;
};

/// One match.
class Match : public HostObject {
  public:
    Match(std::u16string_view text, const regexp::Captures& captures)
        : value_(Value::String(text.substr(captures[0], captures[1] - captures[0]))),
          first_(captures[0]) {
        std::vector<Value> groups;
        for (std::size_t i = 2; i + 1 < captures.size(); i += 2) {
            const bool took_part = captures[i] != regexp::kUnset &&
                                   captures[i + 1] != regexp::kUnset &&
                                   captures[i + 1] >= captures[i];
            groups.push_back(
                took_part ? Value::String(text.substr(captures[i], captures[i + 1] - captures[i]))
                          : Value());
        }
        groups_ = Value::FromObject(Make<Row>("SubMatches", std::move(groups)));
    }

    std::string_view ClassName() const override { return "IMatch2"; }
    const void* MemberTable() const override { return kMembers; }
    std::optional<Member> FindMember(std::u16string_view name) const override {
        return FindRow(kMembers, name);
    }
    std::optional<Member> DefaultMember() const override { return Member{kValue, false}; }

    Value Get(int slot, Arguments) override {
        switch (slot) {
        case kValue:
            return value_;
        case kFirstIndex:
            return Value::Long(static_cast<std::int64_t>(first_));
        case kLength:
            return Value::Long(static_cast<std::int64_t>(value_.AsText().size()));
        default:
            return groups_;
        }
    }

  private:
    enum Slot { kValue, kFirstIndex, kLength, kSubMatches };
    static constexpr MemberRow kMembers[] = {{"Value", kValue, false},
                                             {"FirstIndex", kFirstIndex, false},
                                             {"Length", kLength, false},
                                             {"SubMatches", kSubMatches, false}};

    Value value_;
    Value groups_;
    std::size_t first_;
};

/// What a replacement text means: $1, $&, $`, $' and $$.
void AppendReplacement(Value& out, std::u16string_view with, std::u16string_view text,
                       const regexp::Captures& found) {
    const auto group = [&](std::size_t number) {
        const auto from = found[number * 2];
        const auto to = found[number * 2 + 1];
        if (from != regexp::kUnset && to != regexp::kUnset && to >= from)
            out.Append(text.substr(from, to - from));
    };
    const auto groups = found.size() / 2;
    for (std::size_t i = 0; i < with.size(); ++i) {
        const auto next = with[i] == u'$' && i + 1 < with.size() ? with[i + 1] : u'\0';
        if (next == u'$') {
            out.Append(u"$");
        } else if (next == u'&') {
            group(0);
        } else if (next == u'`') {
            out.Append(text.substr(0, found[0]));
        } else if (next == u'\'') {
            out.Append(text.substr(found[1]));
        } else if (IsDigit(next)) {
            std::size_t number = next - u'0';
            const bool two = i + 2 < with.size() && IsDigit(with[i + 2]) &&
                             number * 10 + (with[i + 2] - u'0') < groups;
            if (two) number = number * 10 + (with[i + 2] - u'0');
            if (number == 0 || number >= groups) {
                out.Append(with.substr(i, 1));
                continue;
            }
            group(number);
            i += two ? 1 : 0;
        } else {
            out.Append(with.substr(i, 1));
            continue;
        }
        ++i;
    }
}

class RegExp : public HostObject {
  public:
    explicit RegExp(Runtime& runtime) : runtime_(runtime) {}

    std::string_view ClassName() const override { return "IRegExp2"; }
    const void* MemberTable() const override { return kMembers; }
    std::optional<Member> FindMember(std::u16string_view name) const override {
        return FindRow(kMembers, name);
    }

    Value Get(int slot, Arguments args) override {
        switch (slot) {
        case kPattern:
            return Value::String(pattern_);
        case kGlobal:
            return Value::Boolean(global_);
        case kIgnoreCase:
            return Value::Boolean(options_.ignore_case);
        case kMultiline:
            return Value::Boolean(options_.multiline);
        default:
            break;
        }
        if (args.size() != (slot == kReplace ? 2U : 1U)) Raise(ErrorNumber::WrongArguments);
        const auto text = ToText(args[0]);
        if (slot == kTest) return Value::Boolean(Find(text.AsText(), 0).has_value());
        if (slot == kExecute) return Execute(text.AsText());
        return Replace(text.AsText(), ToText(args[1]).AsText());
    }

    void Set(int slot, Arguments, const Value& value) override {
        switch (slot) {
        case kPattern:
            pattern_ = ToText(value).AsText();
            program_.reset();
            break;
        case kGlobal:
            global_ = ToBoolean(value);
            break;
        case kIgnoreCase:
            options_.ignore_case = ToBoolean(value);
            break;
        case kMultiline:
            options_.multiline = ToBoolean(value);
            break;
        default:
            Raise(ErrorNumber::NoSuchMember);
        }
    }

  private:
    enum Slot { kPattern, kGlobal, kIgnoreCase, kMultiline, kTest, kExecute, kReplace };
    static constexpr MemberRow kMembers[] = {
        {"Pattern", kPattern, false},
        {"Global", kGlobal, false},
        {"IgnoreCase", kIgnoreCase, false},
        {"Multiline", kMultiline, false},
        {"Test", kTest, true},
        {"Execute", kExecute, true},
        {"Replace", kReplace, true},
    };

    std::optional<regexp::Captures> Find(std::u16string_view text, std::size_t from) {
        if (!program_) program_ = regexp::Compile(pattern_);
        return regexp::Search(*program_, text, from, options_, [this] { runtime_.machine.Poll(); });
    }

    /// Calls `found` for each match; an empty one moves on by one unit.
    template<class Found>
    void ForEachMatch(std::u16string_view text, Found found) {
        std::size_t from = 0;
        while (const auto captures = Find(text, from)) {
            found(*captures);
            if (!global_) return;
            from = (*captures)[1] + ((*captures)[1] == (*captures)[0] ? 1 : 0);
            if (from > text.size()) return;
        }
    }

    Value Execute(std::u16string_view text) {
        std::vector<Value> matches;
        ForEachMatch(text, [&](const regexp::Captures& captures) {
            matches.push_back(Value::FromObject(Make<Match>(text, captures)));
        });
        return Value::FromObject(Make<Row>("IMatchCollection2", std::move(matches)));
    }

    Value Replace(std::u16string_view text, std::u16string_view with) {
        Value out = Value::String({});
        std::size_t copied = 0;
        ForEachMatch(text, [&](const regexp::Captures& captures) {
            out.Append(text.substr(copied, captures[0] - copied));
            AppendReplacement(out, with, text, captures);
            copied = captures[1];
        });
        out.Append(text.substr(copied));
        return out;
    }

    Runtime& runtime_;
    std::u16string pattern_;
    std::optional<regexp::Program> program_;
    regexp::Options options_;
    bool global_ = false;
};

} // namespace

Handle<HostObject> MakeRegExp(Runtime& runtime) {
    return Handle<HostObject>(new RegExp(runtime));
}

} // namespace zentrel::vbscript
