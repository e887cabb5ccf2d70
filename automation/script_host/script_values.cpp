#include "automation/script_host/script_values.h"

#include <type_traits>
#include <vector>

#include "automation/script_host/host_object.h"
#include "automation/vbscript/arrays.h"
#include "automation/vbscript/convert.h"

namespace zentrel {

namespace {

using vbscript::ScriptError;

constexpr int kTypeMismatch = 13;
constexpr int kInvalidUseOfNull = 94;
constexpr double kCurrencyScale = 10'000;

objects::Value FromObject(const vbscript::Value& value) {
    vbscript::Object* object = value.AsObject();
    if (object == nullptr) return objects::ObjectRef();
    if (const auto* host = dynamic_cast<const ProgramObject*>(object)) return host->object();
    return FromScript(vbscript::Plain(value));
}

objects::Value FromArray(const vbscript::Value& value) {
    const vbscript::ArrayData* array = value.AsArray();
    if (array == nullptr) return objects::Array();
    if (array->Dimensions() > 1) throw ScriptError(kTypeMismatch);
    objects::Array elements;
    elements.reserve(array->Count());
    for (const vbscript::Value& element : array->Elements())
        elements.push_back(FromScript(element));
    return elements;
}

vbscript::Value ToArray(const objects::Array& array) {
    std::vector<vbscript::Value> elements;
    elements.reserve(array.size());
    for (const objects::Value& element : array)
        elements.push_back(ToScript(element));
    return vbscript::Value::FromArray(vbscript::ArrayData::FromValues(elements).get());
}

} // namespace

objects::Value FromScript(const vbscript::Value& given) {
    using vbscript::Type;
    const vbscript::Value& value = given.Target();
    switch (value.type()) {
    case Type::Empty:
        return {};
    case Type::Boolean:
        return value.AsInteger() != 0;
    case Type::Byte:
    case Type::Integer:
        return static_cast<std::int16_t>(value.AsInteger());
    case Type::Long:
        return static_cast<std::int32_t>(value.AsInteger());
    case Type::Single:
    case Type::Double:
    case Type::Date:
        return value.AsDouble();
    case Type::Currency:
        return static_cast<double>(value.AsInteger()) / kCurrencyScale;
    case Type::String:
        return value.ToUtf8();
    case Type::Object:
        return FromObject(value);
    case Type::Array:
        return FromArray(value);
    case Type::Null:
        throw ScriptError(kInvalidUseOfNull);
    default:
        if (value.IsMissing()) return {};
        throw ScriptError(kTypeMismatch);
    }
}

vbscript::Value ToScript(const objects::Value& value) {
    return std::visit(
        [](const auto& content) -> vbscript::Value {
            using T = std::remove_cvref_t<decltype(content)>;
            if constexpr (std::is_same_v<T, std::monostate>) {
                return {};
            } else if constexpr (std::is_same_v<T, bool>) {
                return vbscript::Value::Boolean(content);
            } else if constexpr (std::is_same_v<T, std::int16_t>) {
                return vbscript::Value::Integer(content);
            } else if constexpr (std::is_same_v<T, std::int32_t>) {
                return vbscript::Value::Long(content);
            } else if constexpr (std::is_same_v<T, double>) {
                return vbscript::Value::Double(content);
            } else if constexpr (std::is_same_v<T, std::string>) {
                return vbscript::Value::Utf8(content);
            } else if constexpr (std::is_same_v<T, objects::ObjectRef>) {
                if (!content) return vbscript::Value::Nothing();
                return vbscript::Value::FromObject(vbscript::Make<ProgramObject>(content));
            } else {
                return ToArray(content);
            }
        },
        value.content);
}

} // namespace zentrel
