#include "automation/dbus/introspection.h"

#include "automation/dbus/codec.h"

namespace zentrel::dbus {
namespace {

using objects::Member;
using objects::Type;

QString Latin(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

QString Argument(std::string_view name, Type type, const char* direction) {
    return QStringLiteral("   <arg name=\"%1\" type=\"%2\" direction=\"%3\"/>\n")
        .arg(Latin(name), QLatin1String(Signature(type)), QLatin1String(direction));
}

QString Method(const Member& member, std::size_t arguments) {
    QString xml = QStringLiteral("  <method name=\"%1\">\n").arg(Latin(member.name));
    for (std::size_t i = 0; i < arguments; ++i)
        xml += Argument(member.parameters[i].name, member.parameters[i].type, "in");
    if (member.type != Type::None) xml += Argument("result", member.type, "out");
    for (std::size_t i = 0; i < arguments; ++i) {
        const auto& parameter = member.parameters[i];
        if (parameter.byReference) xml += Argument(parameter.name, parameter.type, "out");
    }
    return xml + QStringLiteral("  </method>\n");
}

QString Property(const Member& member) {
    const char* access = member.write == nullptr ? "read" : member.read ? "readwrite" : "write";
    return QStringLiteral("  <property name=\"%1\" type=\"%2\" access=\"%3\">\n"
                          "   <annotation name=\"org.freedesktop.DBus.Property.EmitsChangedSignal\""
                          " value=\"false\"/>\n  </property>\n")
        .arg(Latin(member.name), QLatin1String(Signature(member.type)), QLatin1String(access));
}

} // namespace

QString InterfaceOf(const objects::ClassTable& table) {
    return QLatin1String("org.zentrel.") + Latin(table.name());
}

bool IsBusProperty(const Member& member) {
    return member.kind == Member::Kind::Property && member.parameters.empty();
}

QString InterfaceXml(const objects::ClassTable& table, const QString& signals) {
    QString xml = QStringLiteral(" <interface name=\"%1\">\n").arg(InterfaceOf(table));
    for (const Member& member : table.members()) {
        if (IsBusProperty(member)) {
            xml += Property(member);
            continue;
        }
        for (std::size_t n = member.required(); n <= member.parameters.size(); ++n)
            xml += Method(member, n);
    }
    return xml + signals + QStringLiteral(" </interface>\n");
}

QString WireSignalXml() {
    return QStringLiteral("  <signal name=\"Words\">\n   <arg name=\"lines\" type=\"as\"/>\n"
                          "   <arg name=\"leftOut\" type=\"i\"/>\n  </signal>\n");
}

QString StandardXml(bool properties) {
    QString xml = QStringLiteral(" <interface name=\"org.freedesktop.DBus.Introspectable\">\n"
                                 "  <method name=\"Introspect\">\n"
                                 "   <arg name=\"xml_data\" type=\"s\" direction=\"out\"/>\n"
                                 "  </method>\n </interface>\n"
                                 " <interface name=\"org.freedesktop.DBus.Peer\">\n"
                                 "  <method name=\"Ping\"/>\n"
                                 "  <method name=\"GetMachineId\">\n"
                                 "   <arg name=\"machine_uuid\" type=\"s\" direction=\"out\"/>\n"
                                 "  </method>\n </interface>\n");
    if (!properties) return xml;
    return xml + QStringLiteral(" <interface name=\"org.freedesktop.DBus.Properties\">\n"
                                "  <method name=\"Get\">\n"
                                "   <arg name=\"interface\" type=\"s\" direction=\"in\"/>\n"
                                "   <arg name=\"name\" type=\"s\" direction=\"in\"/>\n"
                                "   <arg name=\"value\" type=\"v\" direction=\"out\"/>\n"
                                "  </method>\n"
                                "  <method name=\"Set\">\n"
                                "   <arg name=\"interface\" type=\"s\" direction=\"in\"/>\n"
                                "   <arg name=\"name\" type=\"s\" direction=\"in\"/>\n"
                                "   <arg name=\"value\" type=\"v\" direction=\"in\"/>\n"
                                "  </method>\n"
                                "  <method name=\"GetAll\">\n"
                                "   <arg name=\"interface\" type=\"s\" direction=\"in\"/>\n"
                                "   <arg name=\"values\" type=\"a{sv}\" direction=\"out\"/>\n"
                                "  </method>\n </interface>\n");
}

QString ManagerXml() {
    return QStringLiteral(" <interface name=\"org.freedesktop.DBus.ObjectManager\">\n"
                          "  <method name=\"GetManagedObjects\">\n"
                          "   <arg name=\"objects\" type=\"a{oa{sa{sv}}}\" direction=\"out\"/>\n"
                          "  </method>\n"
                          "  <signal name=\"InterfacesAdded\">\n"
                          "   <arg name=\"object\" type=\"o\"/>\n"
                          "   <arg name=\"interfaces\" type=\"a{sa{sv}}\"/>\n"
                          "  </signal>\n"
                          "  <signal name=\"InterfacesRemoved\">\n"
                          "   <arg name=\"object\" type=\"o\"/>\n"
                          "   <arg name=\"interfaces\" type=\"as\"/>\n"
                          "  </signal>\n </interface>\n");
}

QString NodeXml(const QString& interfaces, const std::vector<std::string>& children) {
    QString xml = QStringLiteral(
        "<!DOCTYPE node PUBLIC \"-//freedesktop//DTD D-BUS Object Introspection 1.0//EN\"\n"
        "\"http://www.freedesktop.org/standards/dbus/1.0/introspect.dtd\">\n<node>\n");
    xml += interfaces;
    for (const std::string& child : children)
        xml += QStringLiteral(" <node name=\"%1\"/>\n").arg(Latin(child));
    return xml + QStringLiteral("</node>\n");
}

} // namespace zentrel::dbus
