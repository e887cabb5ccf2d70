#pragma once

#include <string>
#include <vector>

#include <QString>

#include "automation/object_model/class_table.h"

/// What an object tells of itself: interfaces with their members and types, and the objects below.
namespace zentrel::dbus {

/// The interface of a class: `org.zentrel.` and its name.
QString InterfaceOf(const objects::ClassTable& table);

/// A member that the bus has as a property. One with arguments is a method there.
bool IsBusProperty(const objects::Member& member);

/// The interface of a class in its members' order. A method with arguments that may be left out
/// stands once for each number of them.
/// `signals`: the signals that it has besides, ready made.
QString InterfaceXml(const objects::ClassTable& table, const QString& signals = {});
/// The wire's one signal: lines, and how many were left out behind them.
QString WireSignalXml();

/// The standard interfaces of each object.
QString StandardXml(bool properties);
/// The one that lists all objects below.
QString ManagerXml();

/// A whole answer: interfaces and the names of the children.
QString NodeXml(const QString& interfaces, const std::vector<std::string>& children);

} // namespace zentrel::dbus
