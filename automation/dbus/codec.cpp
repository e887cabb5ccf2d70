#include "automation/dbus/codec.h"

#include <array>
#include <cmath>
#include <limits>
#include <optional>

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include "automation/dbus/failure.h"
#include "screens/qt/model_text.h"

namespace zentrel::dbus {
namespace {

using objects::Array;
using objects::ObjectRef;
using objects::Type;
using objects::Value;

constexpr double kExactIntegers = 9007199254740992.0; // 2^53

// A plain array comes as a stream of elements, except for the kinds that the toolkit knows.
std::optional<QVariantList> ListIn(const QVariant& given) {
    if (given.metaType() == QMetaType::fromType<QStringList>()) return given.toList();
    if (given.metaType() != QMetaType::fromType<QDBusArgument>()) return {};
    const auto stream = qvariant_cast<QDBusArgument>(given);
    if (stream.currentType() != QDBusArgument::ArrayType) return {};
    QVariantList list;
    stream.beginArray();
    while (!stream.atEnd())
        list << stream.asVariant();
    stream.endArray();
    return list;
}

std::optional<double> NumberIn(const QVariant& given) {
    switch (given.typeId()) {
    case QMetaType::Double:
        return given.toDouble();
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
        return static_cast<double>(given.toLongLong());
    case QMetaType::LongLong:
    case QMetaType::ULongLong: {
        const double number = given.typeId() == QMetaType::LongLong
                                  ? static_cast<double>(given.toLongLong())
                                  : static_cast<double>(given.toULongLong());
        if (std::abs(number) <= kExactIntegers) return number;
        return {};
    }
    default:
        return {};
    }
}

template<typename Integer>
std::optional<Value> WholeIn(const QVariant& given) {
    const auto number = NumberIn(given);
    if (!number || *number != std::trunc(*number) ||
        *number < std::numeric_limits<Integer>::min() ||
        *number > std::numeric_limits<Integer>::max()) {
        return {};
    }
    return static_cast<Integer>(*number);
}

std::optional<Value> TextIn(const QVariant& given) {
    if (given.typeId() != QMetaType::QString) return {};
    return view::ToModel(given.toString());
}

std::optional<Value> ObjectIn(const QVariant& given, const Paths& paths) {
    if (given.metaType() != QMetaType::fromType<QDBusObjectPath>()) return {};
    const std::string path = qvariant_cast<QDBusObjectPath>(given).path().toStdString();
    const ObjectRef object = paths.Find(path);
    if (!object) throw BadCall("UnknownObject", "There is no object at " + path);
    return object;
}

std::optional<Value> ValueIn(const QVariant& given, Type type, const Paths& paths);

std::optional<Value> ArrayIn(const QVariant& given, Type element, const Paths& paths) {
    const auto list = ListIn(given);
    if (!list) return {};
    Array array;
    for (const QVariant& one : *list) {
        auto value = ValueIn(one, element, paths);
        if (!value) return {};
        array.push_back(std::move(*value));
    }
    return array;
}

// As it comes, for a member that takes anything.
std::optional<Value> AnyIn(const QVariant& given, const Paths& paths) {
    for (const Type type : {Type::Text, Type::Boolean, Type::Object}) {
        if (auto value = ValueIn(given, type, paths)) return value;
    }
    if (given.typeId() == QMetaType::Double) return given.toDouble();
    for (const Type type : {Type::Integer16, Type::Integer32, Type::Double}) {
        if (auto value = ValueIn(given, type, paths)) return value;
    }
    return ArrayIn(given, Type::Any, paths);
}

std::optional<Value> ValueIn(const QVariant& given, Type type, const Paths& paths) {
    if (given.metaType() == QMetaType::fromType<QDBusVariant>()) {
        return ValueIn(qvariant_cast<QDBusVariant>(given).variant(), type, paths);
    }
    switch (type) {
    case Type::Boolean:
        if (given.typeId() == QMetaType::Bool) return Value(given.toBool());
        return {};
    case Type::Integer16:
        return WholeIn<std::int16_t>(given);
    case Type::Integer32:
        return WholeIn<std::int32_t>(given);
    case Type::Double:
        if (const auto number = NumberIn(given)) return Value(*number);
        return {};
    case Type::Text:
        return TextIn(given);
    case Type::Object:
        return ObjectIn(given, paths);
    case Type::Doubles:
        return ArrayIn(given, Type::Double, paths);
    case Type::Texts:
        return ArrayIn(given, Type::Text, paths);
    case Type::Any:
        return AnyIn(given, paths);
    case Type::None:
        break;
    }
    return {};
}

template<typename T>
std::optional<QVariant> ListOut(const Array& array) {
    QList<T> list;
    for (const Value& one : array) {
        const T* element = one.If<T>();
        if (element == nullptr) return {};
        list << *element;
    }
    return QVariant::fromValue(list);
}

QVariant TextsOut(const Array& array) {
    QStringList list;
    for (const Value& one : array)
        list << view::FromModel(*one.If<std::string>());
    return list;
}

QVariant NaturalOut(const Value& value, const Paths& paths);

// Elements of one kind as an array of that kind, any others as variants.
QVariant ArrayOut(const Array& array, const Paths& paths) {
    if (auto list = ListOut<std::int16_t>(array)) return *list;
    if (auto list = ListOut<std::int32_t>(array)) return *list;
    if (auto list = ListOut<double>(array)) return *list;
    QVariantList list;
    for (const Value& one : array)
        list << NaturalOut(one, paths);
    return list;
}

struct Out {
    const Paths& paths;
    QVariant operator()(std::monostate) const { return QString(); }
    QVariant operator()(bool truth) const { return truth; }
    QVariant operator()(std::int16_t number) const { return QVariant::fromValue<short>(number); }
    QVariant operator()(std::int32_t number) const { return number; }
    QVariant operator()(double number) const { return number; }
    QVariant operator()(const std::string& text) const { return view::FromModel(text); }
    QVariant operator()(const Array& array) const { return ArrayOut(array, paths); }
    QVariant operator()(const ObjectRef& object) const {
        const std::string path = object ? paths.PathOf(object) : "/";
        return QVariant::fromValue(QDBusObjectPath(QString::fromStdString(path)));
    }
};

QVariant NaturalOut(const Value& value, const Paths& paths) {
    return std::visit(Out{paths}, value.content);
}

} // namespace

const char* Signature(Type type) {
    static constexpr std::array kLetters{"", "b", "n", "i", "d", "s", "o", "ad", "as", "v"};
    return kLetters[static_cast<std::size_t>(type)];
}

Value FromBus(const QVariant& given, Type type, std::string_view what, const Paths& paths) {
    if (auto value = ValueIn(given, type, paths)) return std::move(*value);
    throw BadCall("InvalidArgs", std::string(what) + " takes \"" + Signature(type) + "\"");
}

QVariant ToBus(const Value& value, Type type, const Paths& paths) {
    switch (type) {
    case Type::Any:
        return QVariant::fromValue(QDBusVariant(NaturalOut(value, paths)));
    case Type::Texts:
        return TextsOut(*value.If<Array>());
    case Type::Doubles:
        return *ListOut<double>(*value.If<Array>());
    default:
        return NaturalOut(value, paths);
    }
}

} // namespace zentrel::dbus
