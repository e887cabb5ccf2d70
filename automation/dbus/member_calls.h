#pragma once

#include <QVariant>

#include "automation/dbus/object_tree.h"

/// Members used from the bus: arguments are checked before anything happens.
namespace zentrel::dbus {

using objects::Member;
using objects::ObjectRef;

/// The member of that exact name, or null.
const Member* MemberOf(const ObjectRef& object, const QString& name);

/// Calls a method; a property answers with its value. The result comes first in the answer, then
/// the arguments that may have been changed.
QVariantList CallMember(const ObjectRef& object, const Member& member, const QVariantList& given,
                        const Paths& paths);

/// A property's value, wrapped as a variant. Throw BadCall.
QVariant ReadProperty(const ObjectRef& object, const QString& name, const Paths& paths);
void WriteProperty(const ObjectRef& object, const QString& name, const QVariant& value,
                   const Paths& paths);

/// All that can be read without changing anything; a property that fails is left out.
QVariantMap ReadAll(const ObjectRef& object, const Paths& paths);

} // namespace zentrel::dbus
