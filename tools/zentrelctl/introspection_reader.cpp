#include "tools/zentrelctl/introspection_reader.h"

#include <QXmlStreamReader>

namespace zentrel::ctl {

namespace {

bool Same(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QString Attribute(const QXmlStreamReader& xml, const char* name) {
    return xml.attributes().value(QLatin1String(name)).toString();
}

void ReadElement(const QXmlStreamReader& xml, int depth, Node& node) {
    const QStringView element = xml.name();
    if (element == QLatin1String("interface")) {
        node.interfaces.push_back({Attribute(xml, "name"), {}, {}});
        return;
    }
    if (element == QLatin1String("node")) {
        if (depth > 1) node.children << Attribute(xml, "name");
        return;
    }
    if (node.interfaces.empty()) return;
    Interface& interface = node.interfaces.back();
    if (element == QLatin1String("method")) {
        interface.methods.push_back({Attribute(xml, "name"), {}, {}});
    } else if (element == QLatin1String("property")) {
        interface.properties.push_back(
            {Attribute(xml, "name"), Attribute(xml, "type"), Attribute(xml, "access")});
    } else if (element == QLatin1String("arg") && !interface.methods.empty()) {
        Method& method = interface.methods.back();
        const bool out = Attribute(xml, "direction") == QLatin1String("out");
        (out ? method.out : method.in).push_back({Attribute(xml, "name"), Attribute(xml, "type")});
    }
}

QString Listed(const std::vector<Argument>& arguments) {
    QStringList words;
    for (const Argument& argument : arguments)
        words << (argument.name.isEmpty() ? argument.type
                                          : argument.name + QLatin1Char(' ') + argument.type);
    return words.join(QLatin1String(", "));
}

} // namespace

Node ReadIntrospection(const QString& text) {
    Node node;
    QXmlStreamReader xml(text);
    int depth = 0;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement:
            ReadElement(xml, ++depth, node);
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        default:
            break;
        }
    }
    std::erase_if(node.interfaces, [](const Interface& interface) {
        return interface.name.startsWith(QLatin1String("org.freedesktop."));
    });
    return node;
}

std::vector<Method> Node::Methods(const QString& name) const {
    std::vector<Method> found;
    for (const Interface& interface : interfaces) {
        for (const Method& method : interface.methods)
            if (Same(method.name, name)) found.push_back(method);
    }
    return found;
}

const Property* Node::FindProperty(const QString& name) const {
    for (const Interface& interface : interfaces) {
        for (const Property& property : interface.properties)
            if (Same(property.name, name)) return &property;
    }
    return nullptr;
}

QString Node::InterfaceOf(const QString& member) const {
    for (const Interface& interface : interfaces) {
        for (const Method& method : interface.methods)
            if (Same(method.name, member)) return interface.name;
        for (const Property& property : interface.properties)
            if (Same(property.name, member)) return interface.name;
    }
    return {};
}

std::optional<QString> Node::Child(const QString& name) const {
    for (const QString& child : children)
        if (Same(child, name)) return child;
    return {};
}

QString Described(const Method& method) {
    QString text = method.name + QLatin1Char('(') + Listed(method.in) + QLatin1Char(')');
    if (!method.out.empty()) text += QLatin1String(" -> ") + Listed(method.out);
    return text;
}

} // namespace zentrel::ctl
