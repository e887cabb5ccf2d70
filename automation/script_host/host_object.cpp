#include "automation/script_host/host_object.h"

#include <array>
#include <cstddef>
#include <new>
#include <string>
#include <vector>

#include "automation/script_host/script_failed.h"
#include "automation/script_host/script_values.h"

namespace zentrel {

namespace {

using vbscript::ErrorInfo;
using vbscript::ScriptError;

constexpr int kAutomationError = 440;
constexpr std::string_view kSource = "Zentrel";

// Runs what a script asked for; what fails there is an error that the script can handle.
template<typename Action>
auto Answer(Action&& action) {
    try {
        return std::forward<Action>(action)();
    } catch (const ScriptError&) {
        throw;
    } catch (const ScriptFailed& failure) {
        throw ScriptError(failure.info());
    } catch (const Error& failure) {
        ErrorInfo info;
        info.number = failure.number();
        info.source = kSource;
        info.description = failure.what();
        throw ScriptError(info);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& failure) {
        ErrorInfo info;
        info.number = kAutomationError;
        info.source = kSource;
        info.description = failure.what();
        throw ScriptError(info);
    }
}

// The arguments of one call; few need room of their own.
class Converted {
  public:
    explicit Converted(vbscript::Arguments args) {
        if (args.size() > few_.size()) many_.resize(args.size());
        values_ = many_.empty() ? objects::Arguments(few_.data(), args.size())
                                : objects::Arguments(many_);
        for (std::size_t i = 0; i < args.size(); ++i)
            values_[i] = FromScript(args[i]);
    }
    objects::Arguments values() const { return values_; }

    // Hands back what the member may have changed, where it did.
    void Return(const objects::Member& member, vbscript::Arguments args) const {
        for (std::size_t i = 0; i < args.size(); ++i) {
            if (!member.parameters[i].byReference) continue;
            if (!(FromScript(args[i]) == values_[i])) args[i] = ToScript(values_[i]);
        }
    }

  private:
    std::array<objects::Value, 2> few_;
    std::vector<objects::Value> many_;
    objects::Arguments values_;
};

// Steps by position, so that a collection may change under it.
class Walker final : public vbscript::Enumerator {
  public:
    explicit Walker(objects::ObjectRef object) : object_(std::move(object)) {}
    std::optional<vbscript::Value> Next() override {
        return Answer([this]() -> std::optional<vbscript::Value> {
            const objects::Walk& walk = *object_.table().traits().walk;
            if (position_ >= walk.count(object_)) return std::nullopt;
            return ToScript(walk.item(object_, ++position_));
        });
    }

  private:
    objects::ObjectRef object_;
    int position_ = 0;
};

// Member names are plain letters; a name with anything else is no member's.
std::optional<std::string> PlainName(std::u16string_view name) {
    std::string plain;
    plain.reserve(name.size());
    for (const char16_t unit : name) {
        if (unit > 0x7F) return std::nullopt;
        plain.push_back(static_cast<char>(unit));
    }
    return plain;
}

// Parentheses behind a property without arguments go to what it gives. A routine takes them all,
// to refuse those that are too many.
vbscript::Member SlotOf(const objects::ClassTable& table, std::size_t index) {
    const objects::Member& member = table.members()[index];
    const bool routine = member.kind == objects::Member::Kind::Routine;
    return {static_cast<int>(index), routine || !member.parameters.empty()};
}

} // namespace

std::optional<vbscript::Member> ProgramObject::FindMember(std::u16string_view name) const {
    const auto plain = PlainName(name);
    const auto found = plain ? object_.table().Find(*plain) : std::nullopt;
    if (!found) return std::nullopt;
    return SlotOf(object_.table(), *found);
}

std::optional<vbscript::Member> ProgramObject::DefaultMember() const {
    const auto found = object_.table().defaultMember();
    if (!found) return std::nullopt;
    return SlotOf(object_.table(), *found);
}

vbscript::Value ProgramObject::Get(int slot, vbscript::Arguments args) {
    return Answer([&] {
        const objects::Member& member = At(slot);
        const Converted arguments(args);
        objects::Value result = objects::Read(object_, member, arguments.values());
        arguments.Return(member, args);
        return ToScript(result);
    });
}

void ProgramObject::Set(int slot, vbscript::Arguments args, const vbscript::Value& value) {
    Answer([&] {
        const Converted arguments(args);
        objects::Write(object_, At(slot), arguments.values(), FromScript(value));
    });
}

// Each way to an object makes a ProgramObject of its own.
bool ProgramObject::IsSame(const vbscript::HostObject& other) const {
    const auto* program = dynamic_cast<const ProgramObject*>(&other);
    if (program == nullptr) return false;
    return Answer([&] {
        return MemberTable() == program->MemberTable() &&
               &object_.As<std::byte>() == &program->object_.As<std::byte>();
    });
}

std::unique_ptr<vbscript::Enumerator> ProgramObject::Enumerate() {
    if (!object_.table().traits().walk) return HostObject::Enumerate();
    return std::make_unique<Walker>(object_);
}

} // namespace zentrel
