#pragma once

#include <QString>
#include <QVariant>

#include "automation/dbus/object_tree.h"
#include "automation/object_model/class_table.h"

/// Values on their way in from the bus and out to it.
namespace zentrel::dbus {

/// The bus's letters for what a member takes or gives: "s" for a text. Empty for nothing.
const char* Signature(objects::Type type);

/// What came from the bus as a member takes it. A number of another numeric type is taken where it
/// fits; a text is never a number. Throws BadCall "InvalidArgs", with `what` in its words.
objects::Value FromBus(const QVariant& given, objects::Type type, std::string_view what,
                       const Paths& paths);

/// A value as its type has it on the bus; objects as the paths that the tree gives them.
QVariant ToBus(const objects::Value& value, objects::Type type, const Paths& paths);

} // namespace zentrel::dbus
