#include "automation/object_model/convert.h"

#include <array>
#include <type_traits>

#include "automation/object_model/class_table.h"
#include "device/number_text.h"
#include "device/text.h"

namespace zentrel::objects {

namespace {

// The value behind an object, where one is wanted.
Value Default(const ObjectRef& object, Type wanted) {
    if (!object) throw WrongType(wanted, "Nothing");
    const auto member = object.table().defaultMember();
    if (!member || object.table().members()[*member].required() > 0) {
        throw WrongType(wanted, object.table().name());
    }
    return Read(object, object.table().members()[*member]);
}

double NumberFrom(const Value& value, Type wanted) {
    return std::visit(
        [&](const auto& content) -> double {
            using T = std::remove_cvref_t<decltype(content)>;
            if constexpr (std::is_same_v<T, std::monostate>) {
                return 0;
            } else if constexpr (std::is_same_v<T, bool>) {
                return content ? -1 : 0;
            } else if constexpr (std::is_arithmetic_v<T>) {
                return content;
            } else if constexpr (std::is_same_v<T, std::string>) {
                const auto number = ParseNumber(content);
                if (!number) throw WrongType(wanted, "\"" + content.substr(0, 60) + "\"");
                return *number;
            } else if constexpr (std::is_same_v<T, ObjectRef>) {
                return NumberFrom(Default(content, wanted), wanted);
            } else {
                throw WrongType(wanted, "an array");
            }
        },
        value.content);
}

template<typename T>
std::vector<T> Elements(const Value& value, Type wanted) {
    const auto* array = value.If<Array>();
    if (!array) throw WrongType(wanted, KindName(value));
    std::vector<T> result;
    result.reserve(array->size());
    for (const Value& element : *array)
        result.push_back(Convert<T>::In(element));
    return result;
}

} // namespace

std::string_view KindName(const Value& value) {
    static constexpr std::array<std::string_view, std::variant_size_v<Value::Content>> kNames{
        "nothing",  "a truth value", "a number",  "a number",
        "a number", "a text",        "an object", "an array"};
    return kNames[value.content.index()];
}

double ToDouble(const Value& value) {
    if (const auto* number = value.If<double>()) return *number;
    return NumberFrom(value, Type::Double);
}

std::int16_t ToInt16(const Value& value) {
    if (const auto* number = value.If<std::int16_t>()) return *number;
    return RoundToInteger(NumberFrom(value, Type::Integer16));
}

std::int32_t ToInt32(const Value& value) {
    if (const auto* number = value.If<std::int32_t>()) return *number;
    return RoundToLong(NumberFrom(value, Type::Integer32));
}

bool ToBool(const Value& value) {
    if (const auto* truth = value.If<bool>()) return *truth;
    if (const auto* text = value.If<std::string>()) {
        if (const auto truth = ParseFileBool(*text)) return *truth;
        throw WrongType(Type::Boolean, "\"" + text->substr(0, 60) + "\"");
    }
    return NumberFrom(value, Type::Boolean) != 0;
}

std::string ToText(const Value& value) {
    if (const auto* text = value.If<std::string>()) return *text;
    if (const auto* truth = value.If<bool>()) return *truth ? "True" : "False";
    if (value.IsEmpty()) return {};
    if (const auto* object = value.If<ObjectRef>()) return ToText(Default(*object, Type::Text));
    return NumberToText(NumberFrom(value, Type::Text));
}

std::vector<double> ToDoubles(const Value& value) {
    return Elements<double>(value, Type::Doubles);
}

std::vector<std::string> ToTexts(const Value& value) {
    return Elements<std::string>(value, Type::Texts);
}

ObjectRef Convert<ObjectRef>::In(const Value& value) {
    if (const auto* object = value.If<ObjectRef>()) return *object;
    if (value.IsEmpty()) return {};
    throw WrongType(Type::Object, KindName(value));
}

} // namespace zentrel::objects
