#include "automation/vbscript/convert.h"
#include "automation/vbscript/errors.h"
#include "automation/vbscript/member_table.h"
#include "automation/vbscript/runtime.h"

namespace zentrel::vbscript {
namespace {

enum Slot { kNumber, kSource, kDescription, kHelpFile, kHelpContext, kRaise, kClear };

constexpr MemberRow kMembers[] = {
    {"Number", kNumber, false},
    {"Source", kSource, false},
    {"Description", kDescription, false},
    {"HelpFile", kHelpFile, false},
    {"HelpContext", kHelpContext, false},
    {"Raise", kRaise, true},
    {"Clear", kClear, true},
};

class ErrObject : public HostObject {
  public:
    explicit ErrObject(Runtime& runtime) : runtime_(runtime) {}

    std::string_view ClassName() const override { return "Object"; }
    const void* MemberTable() const override { return kMembers; }
    std::optional<Member> FindMember(std::u16string_view name) const override {
        return FindRow(kMembers, name);
    }
    std::optional<Member> DefaultMember() const override { return Member{kNumber, false}; }

    Value Get(int slot, Arguments args) override {
        const auto& err = runtime_.err;
        switch (slot) {
        case kNumber:
            return Value::Long(err.number);
        case kSource:
            return Value::String(err.source);
        case kDescription:
            return Value::String(err.description);
        case kHelpFile:
            return Value::String(err.help_file);
        case kHelpContext:
            return Value::Long(err.help_context);
        case kRaise:
            RaiseError(args);
        default:
            runtime_.err.Clear();
            return {};
        }
    }

    void Set(int slot, Arguments, const Value& value) override {
        auto& err = runtime_.err;
        switch (slot) {
        case kNumber:
            err.number = ToLong(value);
            break;
        case kSource:
            err.source = ToText(value).AsText();
            break;
        case kDescription:
            err.description = ToText(value).AsText();
            break;
        case kHelpFile:
            err.help_file = ToText(value).AsText();
            break;
        case kHelpContext:
            err.help_context = ToLong(value);
            break;
        default:
            Raise(ErrorNumber::NoSuchMember);
        }
    }

  private:
    /// What a Raise leaves out stays as an earlier error left it.
    [[noreturn]] void RaiseError(Arguments args) {
        if (args.empty() || args.size() > 5) Raise(ErrorNumber::WrongArguments);
        auto& err = runtime_.err;
        const auto number = ToLong(args[0]);
        if (number == 0) Raise(ErrorNumber::InvalidCall);
        ScriptError error(number);
        const auto text = [&](std::size_t index, const std::u16string& before,
                              std::string& target) {
            if (args.Has(index))
                target = ToText(args[index]).ToUtf8();
            else if (!before.empty())
                target = Utf16ToUtf8(before);
        };
        text(1, err.source, error.info.source);
        text(2, err.description, error.info.description);
        if (args.Has(3)) err.help_file = ToText(args[3]).AsText();
        if (args.Has(4)) err.help_context = ToLong(args[4]);
        throw error;
    }

    Runtime& runtime_;
};

} // namespace

Handle<HostObject> MakeErrObject(Runtime& runtime) {
    return Handle<HostObject>(new ErrObject(runtime));
}

} // namespace zentrel::vbscript
