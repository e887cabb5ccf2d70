#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "automation/object_model/value.h"

namespace zentrel::objects {

/// What a value becomes where a member wants that type. Numbers go over into each other (halves
/// round to even; Overflow where it doesn't fit), truth values count as -1 and 0, an empty value
/// as 0, false or no text, a text as the number that it shows. Objects stand for the value of
/// their default member. Everything else throws WrongType.
double ToDouble(const Value& value);
std::int16_t ToInt16(const Value& value);
std::int32_t ToInt32(const Value& value);
bool ToBool(const Value& value);
std::string ToText(const Value& value);
std::vector<double> ToDoubles(const Value& value);
std::vector<std::string> ToTexts(const Value& value);

/// "a text", "an object": how messages call what they were given.
std::string_view KindName(const Value& value);

// The same, chosen by the C++ type, and the way back.
template<typename T>
struct Convert;

template<>
struct Convert<double> {
    static constexpr Type kType = Type::Double;
    static double In(const Value& value) { return ToDouble(value); }
    static Value Out(double value) { return value; }
};
template<>
struct Convert<std::int16_t> {
    static constexpr Type kType = Type::Integer16;
    static std::int16_t In(const Value& value) { return ToInt16(value); }
    static Value Out(std::int16_t value) { return value; }
};
template<>
struct Convert<std::int32_t> {
    static constexpr Type kType = Type::Integer32;
    static std::int32_t In(const Value& value) { return ToInt32(value); }
    static Value Out(std::int32_t value) { return value; }
};
/// Colours: the bits of a 32-bit number.
template<>
struct Convert<std::uint32_t> {
    static constexpr Type kType = Type::Integer32;
    static std::uint32_t In(const Value& value) {
        return static_cast<std::uint32_t>(ToInt32(value));
    }
    static Value Out(std::uint32_t value) { return static_cast<std::int32_t>(value); }
};
template<>
struct Convert<bool> {
    static constexpr Type kType = Type::Boolean;
    static bool In(const Value& value) { return ToBool(value); }
    static Value Out(bool value) { return value; }
};
template<>
struct Convert<std::string> {
    static constexpr Type kType = Type::Text;
    static std::string In(const Value& value) { return ToText(value); }
    static Value Out(std::string value) { return Value(std::move(value)); }
};
/// Only ever given: an argument by view is converted to a text that lives through the call.
template<>
struct Convert<std::string_view> {
    static constexpr Type kType = Type::Text;
    static Value Out(std::string_view value) { return std::string(value); }
};
template<>
struct Convert<std::vector<double>> {
    static constexpr Type kType = Type::Doubles;
    static std::vector<double> In(const Value& value) { return ToDoubles(value); }
    static Value Out(const std::vector<double>& value) { return Array(value.begin(), value.end()); }
};
template<>
struct Convert<std::vector<std::string>> {
    static constexpr Type kType = Type::Texts;
    static std::vector<std::string> In(const Value& value) { return ToTexts(value); }
    static Value Out(const std::vector<std::string>& value) {
        return Array(value.begin(), value.end());
    }
};
template<>
struct Convert<Value> {
    static constexpr Type kType = Type::Any;
    static Value In(const Value& value) { return value; }
    static Value Out(Value value) { return value; }
};
template<>
struct Convert<ObjectRef> {
    static constexpr Type kType = Type::Object;
    static ObjectRef In(const Value& value);
    static Value Out(ObjectRef value) { return Value(std::move(value)); }
};

} // namespace zentrel::objects
