#include "automation/object_model/class_table.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "device/text.h"

namespace zentrel::objects {

namespace {

std::string Named(std::string_view className, std::string_view member) {
    return std::string(className) + "." + std::string(member);
}

std::string_view TypeName(Type type) {
    static constexpr std::array<std::string_view, 10> kNames{
        "nothing", "a truth value", "a 16-bit number",     "a 32-bit number",   "a number",
        "a text",  "an object",     "an array of numbers", "an array of texts", "a value"};
    return kNames[static_cast<std::size_t>(type)];
}

void CheckCount(const ObjectRef& object, const Member& member, std::size_t count) {
    if (count > member.parameters.size() || count < member.required()) {
        throw WrongArguments(object.table().name(), member.name);
    }
}

} // namespace

NoSuchMember::NoSuchMember(std::string_view className, std::string_view member)
    : Error(438, "Object doesn't support this property or method: " + Named(className, member)) {}

WrongAccess::WrongAccess(std::string_view className, std::string_view member, std::string_view what)
    : Error(438, Named(className, member) + " is " + std::string(what)) {}

WrongArguments::WrongArguments(std::string_view className, std::string_view member)
    : Error(450, "Wrong number of arguments: " + Named(className, member)) {}

WrongType::WrongType(Type wanted, std::string_view got)
    : Error(13, "Type mismatch: " + std::string(TypeName(wanted)) + " is wanted, not " +
                    std::string(got)) {}

void* ObjectRef::Resolve() const {
    const auto resolve = table_->traits().resolve;
    return resolve ? resolve(object_.get()) : object_.get();
}

std::size_t Member::required() const {
    const auto optional = [](const Parameter& parameter) { return parameter.optional; };
    return static_cast<std::size_t>(std::find_if(parameters.begin(), parameters.end(), optional) -
                                    parameters.begin());
}

ClassTable::ClassTable(std::string_view name, std::vector<Member> members, Traits traits)
    : name_(name), members_(std::move(members)), traits_(traits), byName_(members_.size()) {
    std::iota(byName_.begin(), byName_.end(), std::size_t{0});
    std::stable_sort(byName_.begin(), byName_.end(), [this](std::size_t a, std::size_t b) {
        return CompareNoCase(members_[a].name, members_[b].name) < 0;
    });
    if (!traits_.defaultMember.empty()) default_ = Find(traits_.defaultMember);
}

std::optional<std::size_t> ClassTable::Find(std::string_view name) const {
    const auto at = std::lower_bound(byName_.begin(), byName_.end(), name,
                                     [this](std::size_t index, std::string_view wanted) {
                                         return CompareNoCase(members_[index].name, wanted) < 0;
                                     });
    if (at == byName_.end() || CompareNoCase(members_[*at].name, name) != 0) return std::nullopt;
    return *at;
}

const Member& ClassTable::At(std::string_view name) const {
    if (const auto found = Find(name)) return members_[*found];
    throw NoSuchMember(name_, name);
}

Value Read(const ObjectRef& object, const Member& member, Arguments arguments) {
    if (!member.read) throw WrongAccess(object.table().name(), member.name, "write-only");
    CheckCount(object, member, arguments.size());
    return member.read(member, object, arguments);
}

void Write(const ObjectRef& object, const Member& member, Arguments arguments, const Value& value) {
    if (!member.write) throw WrongAccess(object.table().name(), member.name, "read-only");
    CheckCount(object, member, arguments.size());
    member.write(member, object, arguments, value);
}

Value Read(const ObjectRef& object, std::string_view member, std::vector<Value> arguments) {
    return Read(object, object.table().At(member), Arguments(arguments));
}

void Write(const ObjectRef& object, std::string_view member, const Value& value) {
    Write(object, object.table().At(member), {}, value);
}

} // namespace zentrel::objects
