#pragma once

#include <optional>
#include <vector>

#include <QString>
#include <QStringList>

namespace zentrel::ctl {

/// What an object of the program tells of itself.
struct Argument {
    QString name;
    QString type;
};
struct Method {
    QString name;
    std::vector<Argument> in;
    std::vector<Argument> out;
};
struct Property {
    QString name;
    QString type;
    QString access; ///< "read", "write" or "readwrite".
};
struct Interface {
    QString name;
    std::vector<Method> methods; ///< One of several forms stands once for each.
    std::vector<Property> properties;
};
struct Node {
    std::vector<Interface> interfaces; ///< The program's own; the bus's standard ones are left out.
    QStringList children;

    /// All forms of a method, letters in any case; with their interface's name.
    std::vector<Method> Methods(const QString& name) const;
    const Property* FindProperty(const QString& name) const;
    /// The interface that has a method or property.
    QString InterfaceOf(const QString& member) const;
    /// The child of that name, letters in any case.
    std::optional<QString> Child(const QString& name) const;
};

/// Reads introspection data; an empty node when it isn't any.
Node ReadIntrospection(const QString& xml);

/// "SetPrgmPins(sPrgmPins s, bValue b) -> n"
QString Described(const Method& method);

} // namespace zentrel::ctl
