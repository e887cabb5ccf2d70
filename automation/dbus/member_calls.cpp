#include "automation/dbus/member_calls.h"

#include <QDBusVariant>

#include "automation/dbus/codec.h"
#include "automation/dbus/failure.h"
#include "automation/dbus/introspection.h"
#include "screens/qt/model_text.h"

namespace zentrel::dbus {
namespace {

using objects::Type;
using objects::Value;

std::string Named(const ObjectRef& object, const QString& member) {
    return std::string(object.table().name()) + "." + view::ToModel(member);
}

// "SetPrgmPins takes (sPrgmPins s, bValue b [, bUpdate b])"
std::string Described(const Member& member) {
    std::string text = std::string(member.name) + " takes (";
    for (std::size_t i = 0; i < member.parameters.size(); ++i) {
        if (i == member.required()) text += i == 0 ? "[" : " [";
        if (i > 0) text += ", ";
        text += std::string(member.parameters[i].name) + " " + Signature(member.parameters[i].type);
    }
    return text + (member.required() < member.parameters.size() ? "])" : ")");
}

std::vector<Value> TakeArguments(const Member& member, const QVariantList& given,
                                 const Paths& paths) {
    const auto count = static_cast<std::size_t>(given.size());
    if (count < member.required() || count > member.parameters.size()) {
        throw BadCall("InvalidArgs", Described(member));
    }
    std::vector<Value> arguments;
    for (std::size_t i = 0; i < count; ++i) {
        const auto& parameter = member.parameters[i];
        arguments.push_back(
            FromBus(given[static_cast<qsizetype>(i)], parameter.type, parameter.name, paths));
    }
    return arguments;
}

const Member& PropertyOf(const ObjectRef& object, const QString& name) {
    const Member* member = MemberOf(object, name);
    if (member == nullptr || !IsBusProperty(*member)) {
        throw BadCall("UnknownProperty", "There is no property " + Named(object, name));
    }
    return *member;
}

QVariant Plain(const ObjectRef& object, const Member& member, const Paths& paths) {
    const QVariant value = ToBus(objects::Read(object, member), member.type, paths);
    return member.type == Type::Any ? qvariant_cast<QDBusVariant>(value).variant() : value;
}

} // namespace

const Member* MemberOf(const ObjectRef& object, const QString& name) {
    const std::string exact = view::ToModel(name);
    const auto found = object.table().Find(exact);
    if (!found || object.table().members()[*found].name != exact) return nullptr;
    return &object.table().members()[*found];
}

QVariantList CallMember(const ObjectRef& object, const Member& member, const QVariantList& given,
                        const Paths& paths) {
    std::vector<Value> arguments = TakeArguments(member, given, paths);
    const Value result = objects::Read(object, member, arguments);
    QVariantList answer;
    if (member.type != Type::None) answer << ToBus(result, member.type, paths);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto& parameter = member.parameters[i];
        if (parameter.byReference) answer << ToBus(arguments[i], parameter.type, paths);
    }
    return answer;
}

QVariant ReadProperty(const ObjectRef& object, const QString& name, const Paths& paths) {
    const Member& member = PropertyOf(object, name);
    if (member.read == nullptr) {
        throw BadCall("AccessDenied", Named(object, name) + " is write-only");
    }
    return QVariant::fromValue(QDBusVariant(Plain(object, member, paths)));
}

void WriteProperty(const ObjectRef& object, const QString& name, const QVariant& value,
                   const Paths& paths) {
    const Member& member = PropertyOf(object, name);
    if (member.write == nullptr) {
        throw BadCall("PropertyReadOnly", Named(object, name) + " is read-only");
    }
    objects::Write(object, member, {}, FromBus(value, member.type, member.name, paths));
}

QVariantMap ReadAll(const ObjectRef& object, const Paths& paths) {
    QVariantMap values;
    for (const Member& member : object.table().members()) {
        if (!IsBusProperty(member) || member.read == nullptr || member.readingChanges) continue;
        try {
            values.insert(view::FromModel(member.name), Plain(object, member, paths));
        } catch (const std::exception&) {
            continue; // Asked for by its name it tells why.
        }
    }
    return values;
}

} // namespace zentrel::dbus
