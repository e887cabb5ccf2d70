#include "automation/vbscript/convert.h"

#include "automation/vbscript/calendar.h"
#include "automation/vbscript/errors.h"
#include "automation/vbscript/number_text.h"
#include "automation/vbscript/text.h"

#include <cmath>
#include <exception>

namespace zentrel::vbscript {
namespace {

constexpr long double kCurrencyScale = 10000;
constexpr long double kCurrencyLimit = 9223372036854775807.0L;

[[noreturn]] void RaiseNotConvertible(const Value& value) {
    Raise(value.IsNull() ? ErrorNumber::InvalidNull : ErrorNumber::TypeMismatch);
}

} // namespace

Value Plain(const Value& value) {
    const auto& target = value.Target();
    return target.IsObject() ? DefaultValue(target.AsObject()) : target;
}

double NumberInText(std::u16string_view text) {
    const auto number = ParseNumber(text);
    if (!number) Raise(ErrorNumber::TypeMismatch);
    if (std::isinf(*number)) Raise(ErrorNumber::Overflow);
    return *number;
}

double ToDouble(const Value& value) {
    const auto& v = value.Target();
    switch (v.type()) {
    case Type::Empty:
    case Type::Unset:
        return 0;
    case Type::Integer:
    case Type::Long:
    case Type::Byte:
    case Type::Boolean:
        return static_cast<double>(v.AsInteger());
    case Type::Single:
    case Type::Double:
    case Type::Date:
        return v.AsDouble();
    case Type::Currency:
        return static_cast<double>(static_cast<long double>(v.AsInteger()) / kCurrencyScale);
    case Type::String:
        return NumberInText(v.AsText());
    case Type::Object:
        return ToDouble(DefaultValue(v.AsObject()));
    default:
        RaiseNotConvertible(v);
    }
}

std::int64_t RoundToInteger(double number, double least, double most) {
    const double rounded = std::nearbyint(number);
    if (!(rounded >= least && rounded <= most)) Raise(ErrorNumber::Overflow);
    return static_cast<std::int64_t>(rounded);
}

std::int32_t ToLong(const Value& value) {
    if (value.IsInteger()) return static_cast<std::int32_t>(value.AsInteger());
    return static_cast<std::int32_t>(RoundToInteger(ToDouble(value), -2147483648.0, 2147483647.0));
}

std::int16_t ToInteger(const Value& value) {
    return static_cast<std::int16_t>(RoundToInteger(ToDouble(value), -32768, 32767));
}

std::uint8_t ToByte(const Value& value) {
    return static_cast<std::uint8_t>(RoundToInteger(ToDouble(value), 0, 255));
}

double ToSingle(const Value& value) {
    const auto single = static_cast<float>(ToDouble(value));
    if (std::isinf(single)) Raise(ErrorNumber::Overflow);
    return single;
}

std::int64_t ToCurrency(const Value& value) {
    const auto plain = Plain(value);
    if (plain.type() == Type::Currency) return plain.AsInteger();
    const long double scaled =
        std::nearbyint(static_cast<long double>(ToDouble(plain)) * kCurrencyScale);
    if (!(std::fabs(scaled) < kCurrencyLimit)) Raise(ErrorNumber::Overflow);
    return static_cast<std::int64_t>(scaled);
}

double ToDate(const Value& value) {
    const auto plain = Plain(value);
    if (plain.type() == Type::Date) return plain.AsDouble();
    if (plain.IsString()) {
        if (const auto serial = ParseDate(plain.AsText())) return *serial;
    }
    const double serial = ToDouble(plain);
    if (!IsDateInRange(serial))
        Raise(plain.IsString() ? ErrorNumber::TypeMismatch : ErrorNumber::Overflow);
    return serial;
}

std::optional<bool> BooleanInText(std::u16string_view text) {
    if (text.size() > 2 && text.front() == u'#' && text.back() == u'#')
        text = text.substr(1, text.size() - 2);
    if (CompareText(text, u"true", true) == 0) return true;
    if (CompareText(text, u"false", true) == 0) return false;
    return std::nullopt;
}

bool ToBoolean(const Value& value) {
    const auto& v = value.Target();
    if (v.type() == Type::Boolean || v.IsInteger()) return v.AsInteger() != 0;
    if (v.IsObject()) return ToBoolean(DefaultValue(v.AsObject()));
    if (v.IsString())
        if (const auto truth = BooleanInText(v.AsText())) return *truth;
    return ToDouble(v) != 0;
}

bool IsTrue(const Value& value) {
    const auto& v = value.Target();
    if (v.IsObject()) return IsTrue(DefaultValue(v.AsObject()));
    return !v.IsNull() && ToBoolean(v);
}

Value ToText(const Value& value) {
    const auto& v = value.Target();
    switch (v.type()) {
    case Type::String:
        return v;
    case Type::Empty:
    case Type::Unset:
        return Value::String({});
    case Type::Integer:
    case Type::Long:
    case Type::Byte:
        return Value::String(IntegerText(v.AsInteger()));
    case Type::Boolean:
        return Value::String(v.AsInteger() ? u"True" : u"False");
    case Type::Single:
        return Value::String(NumberText(v.AsDouble(), 7));
    case Type::Double:
        return Value::String(NumberText(v.AsDouble(), 15));
    case Type::Currency:
        return Value::String(CurrencyText(v.AsInteger()));
    case Type::Date:
        return Value::String(DateText(v.AsDouble()));
    case Type::Object:
        return ToText(DefaultValue(v.AsObject()));
    case Type::Error:
        return Value::String(u"Error " + IntegerText(v.AsInteger()));
    default:
        RaiseNotConvertible(v);
    }
}

bool IsNumericValue(const Value& value) {
    const auto& v = value.Target();
    switch (v.type()) {
    case Type::Null:
    case Type::Date:
    case Type::Error:
    case Type::Array:
        return false;
    case Type::String: {
        const auto number = ParseNumber(v.AsText());
        return number && !std::isinf(*number);
    }
    case Type::Object: {
        if (!v.AsObject()) return false;
        try {
            return IsNumericValue(DefaultValue(v.AsObject()));
        } catch (const std::exception&) {
            return false;
        }
    }
    default:
        return true;
    }
}

} // namespace zentrel::vbscript
