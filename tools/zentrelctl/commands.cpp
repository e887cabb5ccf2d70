#include "tools/zentrelctl/commands.h"

#include <algorithm>
#include <array>
#include <utility>

#include "automation/dbus/path_names.h"
#include "device/text.h"
#include "tools/zentrelctl/expression.h"
#include "tools/zentrelctl/text_values.h"

namespace zentrel::ctl {

namespace {

std::string Quoted(const QString& text) {
    return "\"" + text.toStdString() + "\"";
}

QVariant OneOrAll(const QVariantList& answer) {
    if (answer.size() == 1) return Unwrapped(answer.front());
    QVariantList all;
    for (const QVariant& value : answer)
        all << Unwrapped(value);
    return all.isEmpty() ? QVariant() : QVariant(all);
}

// The path element of a step's argument: a position as it stands, a key with its odd characters
// written as codes.
QString ElementOf(const Step& step) {
    if (step.arguments.size() != 1) throw BadUsage(step.name + " takes one key or position");
    const std::string& argument = step.arguments.front();
    const bool position =
        !step.quoted.front() && std::all_of(argument.begin(), argument.end(), IsDigit);
    return QString::fromStdString(position ? argument : dbus::PathElement(argument));
}

QStringList Words(const Step& step) {
    QStringList words;
    for (const std::string& argument : step.arguments)
        words << QString::fromStdString(argument);
    return words;
}

std::optional<QVariantList> Fitting(const Method& method, const QStringList& words,
                                    const std::vector<bool>& quoted) {
    if (static_cast<qsizetype>(method.in.size()) != words.size()) return {};
    QVariantList values;
    for (std::size_t i = 0; i < method.in.size(); ++i) {
        const auto value = ValueFromWord(words[static_cast<qsizetype>(i)], method.in[i].type,
                                         i < quoted.size() && quoted[i]);
        if (!value) return {};
        values << *value;
    }
    return values;
}

} // namespace

/// Where an expression leads: the object that its last step is a member of, and that step.
struct Commands::Place {
    QString path;
    Node node;
    Step last;
};

Commands::Place Commands::Locate(const QString& expression) const {
    const std::vector<Step> steps = ParseExpression(expression.toStdString());
    QString path = kRootPath;
    Node node = program_.Introspect(path);
    for (std::size_t i = 0; i + 1 < steps.size(); ++i) {
        const Step& step = steps[i];
        const auto child = node.Child(QString::fromStdString(step.name));
        if (!child) throw BadUsage("There is no object " + step.name + " in " + Quoted(expression));
        path += QLatin1Char('/') + *child;
        if (!step.arguments.empty()) path += QLatin1Char('/') + ElementOf(step);
        node = program_.Introspect(path);
    }
    return {path, node, steps.back()};
}

QVariant Commands::CallAt(const QString& path, const Node& node, const QString& name,
                          const QStringList& words, const std::vector<bool>& quoted) const {
    const std::vector<Method> forms = node.Methods(name);
    if (forms.empty()) throw BadUsage("There is no routine " + Quoted(name));
    for (const Method& form : forms) {
        if (const auto values = Fitting(form, words, quoted)) {
            return OneOrAll(program_.Call(path, node.InterfaceOf(name), form.name, *values));
        }
    }
    std::string text;
    for (const Method& form : forms)
        text += (text.empty() ? "It is " : "\nor ") + Described(form).toStdString();
    throw BadUsage(text);
}

QVariant Commands::Operation(const QString& name, const QStringList& words) const {
    const Node node = program_.Introspect(kApplicationPath);
    if (const Property* property = node.FindProperty(name)) {
        if (!words.isEmpty()) throw BadUsage(property->name.toStdString() + " takes no arguments");
        return program_.Get(kApplicationPath, node.InterfaceOf(name), property->name);
    }
    if (node.Methods(name).empty()) {
        throw BadUsage("There is no command or operation " + Quoted(name) +
                       "; zentrelctl list shows the operations");
    }
    return CallAt(kApplicationPath, node, name, words, {});
}

// An object is shown by its properties, a collection by its keys, or by its properties too when it
// holds plain values.
QVariant Commands::Contents(const QString& path, const Node& node) const {
    QVariantList keys;
    for (const QString& child : node.children)
        keys << QString::fromStdString(dbus::NameOf(child.toStdString()));
    const bool collection = !node.Methods(QStringLiteral("Item")).empty();
    if (node.interfaces.empty() || (collection && !keys.isEmpty())) return keys;
    const QVariantMap properties = program_.GetAll(path, node.interfaces.front().name);
    const bool empty = collection && properties.value(QStringLiteral("Count")).toInt() == 0;
    return empty ? QVariant(keys) : properties;
}

QVariant Commands::Get(const QString& expression) const {
    const Place place = Locate(expression);
    const QString name = QString::fromStdString(place.last.name);
    if (const auto child = place.node.Child(name)) {
        QString path = place.path + QLatin1Char('/') + *child;
        if (!place.last.arguments.empty()) path += QLatin1Char('/') + ElementOf(place.last);
        return Contents(path, program_.Introspect(path));
    }
    const Property* property = place.node.FindProperty(name);
    if (property != nullptr && place.last.arguments.empty()) {
        return program_.Get(place.path, place.node.InterfaceOf(name), property->name);
    }
    if (!place.node.Methods(name).empty()) {
        return CallAt(place.path, place.node, name, Words(place.last), place.last.quoted);
    }
    throw BadUsage("There is no member " + Quoted(name) + " in " + Quoted(expression));
}

void Commands::Set(const QString& expression, const QString& word) const {
    const Place place = Locate(expression);
    const QString name = QString::fromStdString(place.last.name);
    const Property* property = place.node.FindProperty(name);
    if (property == nullptr) throw BadUsage("There is no property " + Quoted(name));
    const auto value = ValueFromWord(word, property->type);
    if (!value) {
        throw BadUsage(Quoted(word) + " isn't what " + property->name.toStdString() +
                       " takes, type " + property->type.toStdString());
    }
    program_.Set(place.path, place.node.InterfaceOf(name), property->name, *value);
}

QVariant Commands::Call(const QString& expression, const QStringList& words) const {
    const Place place = Locate(expression);
    return CallAt(place.path, place.node, QString::fromStdString(place.last.name),
                  Words(place.last) + words, place.last.quoted);
}

QStringList Commands::List(const QString& expression) const {
    QString path = kApplicationPath;
    if (!expression.isEmpty()) {
        const Place place = Locate(expression);
        const auto child = place.node.Child(QString::fromStdString(place.last.name));
        if (!child) throw BadUsage("There is no object " + Quoted(expression));
        path = place.path + QLatin1Char('/') + *child;
        if (!place.last.arguments.empty()) path += QLatin1Char('/') + ElementOf(place.last);
    }
    const Node node = program_.Introspect(path);
    QStringList lines;
    for (const Interface& interface : node.interfaces) {
        for (const Method& method : interface.methods)
            lines << Described(method);
        for (const Property& property : interface.properties) {
            lines << property.name + QLatin1Char(' ') + property.type + QLatin1Char(' ') +
                         property.access;
        }
    }
    if (path == kApplicationPath) return lines; // its children are other clients' objects
    for (const QString& child : node.children)
        lines << QString::fromStdString(dbus::NameOf(child.toStdString())) + QLatin1Char('/');
    return lines;
}

QStringList Commands::Keys(const QString& collection) const {
    const QString path = kRootPath + QLatin1String("/Part/") + collection;
    QStringList keys;
    for (const QString& child : program_.Introspect(path).children)
        keys << QString::fromStdString(dbus::NameOf(child.toStdString()));
    if (collection != QLatin1String("ClkDists")) return keys;
    // Clock blocks go by their names, which aren't their keys.
    QStringList names;
    for (int position = 1; position <= keys.size(); ++position) {
        const QString block = path + QLatin1Char('/') + QString::number(position);
        names << program_.Get(block, {}, QStringLiteral("ID")).toString();
    }
    return names;
}

QStringList Commands::Names(const QString& operation, int position) const {
    static constexpr std::array<std::pair<const char*, const char*>, 7> kCollections{{
        {"sPLL", "PLLs"},
        {"sPrgmBits", "PrgmBits"},
        {"sPrgmPins", "PrgmPins"},
        {"sCLKDIST", "ClkDists"},
        {"sRegister", "Registers"},
        {"sRegName", "Registers"},
        {"bValue", nullptr},
    }};
    if (!program_.Running() || position < 1) return {};
    QStringList names;
    for (const Method& method : program_.Introspect(kApplicationPath).Methods(operation)) {
        if (static_cast<std::size_t>(position) > method.in.size()) continue;
        const QString argument = method.in[static_cast<std::size_t>(position) - 1].name;
        for (const auto& [name, collection] : kCollections) {
            if (argument != QLatin1String(name)) continue;
            if (collection == nullptr) return {QStringLiteral("True"), QStringLiteral("False")};
            return Keys(QLatin1String(collection));
        }
    }
    return names;
}

} // namespace zentrel::ctl
