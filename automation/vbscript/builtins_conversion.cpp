#include "automation/vbscript/builtin_arguments.h"
#include "automation/vbscript/calendar.h"
#include "automation/vbscript/text.h"

#include <cmath>

namespace zentrel::vbscript {
namespace {

Value CBool(BuiltinCall& call) {
    return Value::Boolean(ToBoolean(call[0]));
}
Value CByte(BuiltinCall& call) {
    return Value::Byte(ToByte(call[0]));
}
Value CCur(BuiltinCall& call) {
    return Value::Currency(ToCurrency(call[0]));
}
Value CDate(BuiltinCall& call) {
    return Value::Date(ToDate(call[0]));
}
Value CDbl(BuiltinCall& call) {
    return Value::Double(ToDouble(call[0]));
}
Value CInt(BuiltinCall& call) {
    return Value::Integer(ToInteger(call[0]));
}
Value CLng(BuiltinCall& call) {
    return Value::Long(ToLong(call[0]));
}
Value CSng(BuiltinCall& call) {
    return Value::Single(ToSingle(call[0]));
}
Value CStr(BuiltinCall& call) {
    return ToText(call[0]);
}

/// Negative numbers in 16 bits where they fit, else in 32. -32768 doesn't count as fitting.
template<unsigned Base>
Value Digits(BuiltinCall& call) {
    auto plain = Plain(call[0]);
    if (plain.IsNull()) return plain;
    const auto number = ToLong(plain);
    auto bits = static_cast<std::uint32_t>(number);
    if (number < 0 && number >= -32767) bits &= 0xFFFF;
    std::u16string text;
    do {
        text.insert(text.begin(), u"0123456789ABCDEF"[bits % Base]);
        bits /= Base;
    } while (bits != 0);
    return Value::String(text);
}

/// Int and Fix keep the subtype; a text is a Double, a Boolean an Integer.
template<double (*Cut)(double)>
Value CutOff(BuiltinCall& call) {
    auto plain = Plain(call[0]);
    switch (plain.type()) {
    case Type::Null:
    case Type::Byte:
    case Type::Integer:
    case Type::Long:
        return plain;
    case Type::Empty:
    case Type::Boolean:
        return Value::Integer(plain.AsInteger());
    case Type::Single:
        return Value::Single(Cut(plain.AsDouble()));
    case Type::Date:
        return Value::Date(Cut(plain.AsDouble()));
    case Type::Currency:
        return Value::Currency(
            static_cast<std::int64_t>(Cut(static_cast<double>(plain.AsInteger()) / 10000)) * 10000);
    default:
        return Value::Double(Cut(ToDouble(plain)));
    }
}

/// Halves to even, as the decimal digits stand.
double RoundHalfEven(double number, int digits) {
    const double scale = std::pow(10.0, digits);
    const double scaled = number * scale;
    if (!std::isfinite(scaled) || std::fabs(scaled) > 4503599627370496.0) return number;
    double rounded = std::nearbyint(scaled);
    // 2.675 * 100 is a hair below the half that is written: what 15 digits call a half is one.
    const double half = std::trunc(scaled) + std::copysign(0.5, scaled);
    if (std::fabs(scaled - half) < std::fabs(scaled) * 1e-15)
        rounded = 2 * std::nearbyint(half / 2);
    return rounded / scale;
}

Value Round(BuiltinCall& call) {
    auto plain = Plain(call[0]);
    if (plain.IsNull()) return plain;
    const auto digits = call.Has(1) ? Number(call, 1, 0, 22) : 0;
    if (plain.IsInteger() || plain.type() == Type::Boolean) return plain;
    if (plain.IsEmpty() || plain.type() == Type::Byte) return Value::Integer(plain.AsInteger());
    if (plain.type() == Type::Currency)
        return Value::Currency(std::llround(
            RoundHalfEven(static_cast<double>(plain.AsInteger()) / 10000, digits) * 10000));
    const double rounded = RoundHalfEven(ToDouble(plain), digits);
    if (plain.type() == Type::Single) return Value::Single(static_cast<float>(rounded));
    return Value::Double(rounded);
}

constexpr Builtin kFunctions[] = {
    {"CBool", 1, 1, CBool},    {"CByte", 1, 1, CByte},
    {"CCur", 1, 1, CCur},      {"CDate", 1, 1, CDate},
    {"CDbl", 1, 1, CDbl},      {"CInt", 1, 1, CInt},
    {"CLng", 1, 1, CLng},      {"CSng", 1, 1, CSng},
    {"CStr", 1, 1, CStr},      {"Fix", 1, 1, CutOff<std::trunc>},
    {"Hex", 1, 1, Digits<16>}, {"Int", 1, 1, CutOff<std::floor>},
    {"Oct", 1, 1, Digits<8>},  {"Round", 1, 2, Round},
};

} // namespace

std::span<const Builtin> ConversionFunctions() {
    return kFunctions;
}

} // namespace zentrel::vbscript
