#include "automation/vbscript/arrays.h"
#include "automation/vbscript/builtin_arguments.h"
#include "automation/vbscript/text.h"

#include <vector>

namespace zentrel::vbscript {
namespace {

ArrayData& ArrayAt(const BuiltinCall& call, std::size_t index) {
    const auto& value = call[index];
    if (!value.IsArray()) Raise(ErrorNumber::TypeMismatch);
    return *value.AsArray();
}

Value FromVector(const std::vector<Value>& values) {
    return Value::FromArray(ArrayData::FromValues(values).get());
}

Value ArrayOf(BuiltinCall& call) {
    std::vector<Value> values;
    for (std::size_t i = 0; i < call.size(); ++i)
        values.push_back(call[i]);
    return FromVector(values);
}

Value LBound(BuiltinCall& call) {
    ArrayAt(call, 0).Upper(call.Has(1) ? ToLong(call[1]) : 1);
    return Value::Long(0);
}

Value UBound(BuiltinCall& call) {
    return Value::Long(ArrayAt(call, 0).Upper(call.Has(1) ? ToLong(call[1]) : 1));
}

/// Split(text[, delimiter[, count[, compare]]])
Value Split(BuiltinCall& call) {
    const auto text = Text(call, 0);
    const auto delimiter = call.Has(1) ? Text(call, 1) : Value::String(u" ");
    auto left = NumberOr(call, 2, -1, -1);
    const bool ignore_case = IgnoresCase(call, 3);
    std::vector<Value> parts;
    const auto source = text.AsText();
    if (source.empty() || left == 0) return FromVector(parts);
    std::size_t at = 0;
    while (!delimiter.AsText().empty() && left != 1) {
        const auto found = FindText(source, delimiter.AsText(), at, ignore_case);
        if (found == std::u16string_view::npos) break;
        parts.push_back(Value::String(source.substr(at, found - at)));
        at = found + delimiter.AsText().size();
        if (left > 0) --left;
    }
    parts.push_back(Value::String(source.substr(at)));
    return FromVector(parts);
}

Value Join(BuiltinCall& call) {
    auto& array = ArrayAt(call, 0);
    const auto delimiter = call.Has(1) ? Text(call, 1) : Value::String(u" ");
    if (array.Dimensions() != 1) Raise(ErrorNumber::TypeMismatch);
    Value result = Value::String({});
    for (std::size_t i = 0; i < array.Count(); ++i) {
        if (i > 0) result.Append(delimiter.AsText());
        result.Append(ToText(array.At(i)).AsText());
    }
    return result;
}

/// Filter(array, part[, include[, compare]])
Value Filter(BuiltinCall& call) {
    auto& array = ArrayAt(call, 0);
    const auto part = Text(call, 1);
    const bool include = !call.Has(2) || ToBoolean(call[2]);
    const bool ignore_case = IgnoresCase(call, 3);
    if (array.Dimensions() != 1) Raise(ErrorNumber::TypeMismatch);
    std::vector<Value> found;
    for (std::size_t i = 0; i < array.Count(); ++i) {
        const auto text = ToText(array.At(i));
        const bool has =
            FindText(text.AsText(), part.AsText(), 0, ignore_case) != std::u16string_view::npos;
        if (has == include) found.push_back(text);
    }
    return FromVector(found);
}

constexpr Builtin kFunctions[] = {
    {"Array", 0, -1, ArrayOf}, {"Filter", 2, 4, Filter}, {"Join", 1, 2, Join},
    {"LBound", 1, 2, LBound},  {"Split", 1, 4, Split},   {"UBound", 1, 2, UBound},
};

} // namespace

std::span<const Builtin> ArrayFunctions() {
    return kFunctions;
}

} // namespace zentrel::vbscript
