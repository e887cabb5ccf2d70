#include "automation/vbscript/builtin_arguments.h"
#include "automation/vbscript/runtime.h"

#include <cmath>
#include <cstring>

namespace zentrel::vbscript {
namespace {

Value Finite(double number) {
    if (std::isnan(number)) Raise(ErrorNumber::InvalidCall);
    if (std::isinf(number)) Raise(ErrorNumber::Overflow);
    return Value::Double(number);
}

template<double (*Function)(double)>
Value Of(BuiltinCall& call) {
    return Finite(Function(ToDouble(call[0])));
}

Value Log(BuiltinCall& call) {
    const double number = ToDouble(call[0]);
    if (number <= 0) Raise(ErrorNumber::InvalidCall);
    return Value::Double(std::log(number));
}

Value Abs(BuiltinCall& call) {
    auto plain = Plain(call[0]);
    switch (plain.type()) {
    case Type::Null:
    case Type::Byte:
        return plain;
    case Type::Empty:
        return Value::Integer(0);
    case Type::Boolean:
        return Value::Integer(std::abs(plain.AsInteger()));
    case Type::Integer:
        return plain.AsInteger() == -32768 ? Value::Long(32768)
                                           : Value::Integer(std::abs(plain.AsInteger()));
    case Type::Long:
        return plain.AsInteger() == -2147483648LL ? Value::Double(2147483648.0)
                                                  : Value::Long(std::abs(plain.AsInteger()));
    case Type::Single:
        return Value::Single(std::fabs(plain.AsDouble()));
    case Type::Date:
        return Value::Date(std::fabs(plain.AsDouble()));
    case Type::Currency:
        if (plain.AsInteger() == INT64_MIN) Raise(ErrorNumber::Overflow);
        return Value::Currency(std::abs(plain.AsInteger()));
    default:
        return Value::Double(std::fabs(ToDouble(plain)));
    }
}

Value Sgn(BuiltinCall& call) {
    const double number = ToDouble(call[0]);
    return Value::Integer(number > 0 ? 1 : number < 0 ? -1 : 0);
}

/// The generator has 24 bits: x' = x * 16598013 + 12820163.
constexpr std::uint32_t kMask = 0xFFFFFF;
constexpr double kRange = 16777216.0;

std::uint32_t SingleBits(double number) {
    const auto single = static_cast<float>(number);
    std::uint32_t bits = 0;
    std::memcpy(&bits, &single, sizeof bits);
    return bits;
}

/// Rnd(n): the next number; the last one for 0; one that depends on n alone for negatives.
Value Rnd(BuiltinCall& call) {
    auto& state = call.runtime.random_state;
    const double argument = call.Has(0) ? ToDouble(call[0]) : 1;
    if (argument < 0) {
        const auto bits = SingleBits(argument);
        state = (bits + (bits >> 24)) & kMask;
    }
    if (argument != 0) state = (state * 16598013U + 12820163U) & kMask;
    return Value::Single(static_cast<float>(state / kRange));
}

/// The seed goes into the upper 16 bits; without one it comes from the clock.
Value Randomize(BuiltinCall& call) {
    auto& state = call.runtime.random_state;
    double seed = 0;
    if (call.Has(0)) {
        seed = ToDouble(call[0]);
    } else {
        const double now = call.runtime.Now();
        seed = (now - std::floor(now)) * 86400;
    }
    std::uint64_t bits = 0;
    std::memcpy(&bits, &seed, sizeof bits);
    const auto high = static_cast<std::uint32_t>(bits >> 32);
    state = (state & 0xFF) | (((high ^ (high >> 16)) & 0xFFFF) << 8);
    return {};
}

constexpr Builtin kFunctions[] = {
    {"Abs", 1, 1, Abs},           {"Atn", 1, 1, Of<std::atan>}, {"Cos", 1, 1, Of<std::cos>},
    {"Exp", 1, 1, Of<std::exp>},  {"Log", 1, 1, Log},           {"Randomize", 0, 1, Randomize},
    {"Rnd", 0, 1, Rnd},           {"Sgn", 1, 1, Sgn},           {"Sin", 1, 1, Of<std::sin>},
    {"Sqr", 1, 1, Of<std::sqrt>}, {"Tan", 1, 1, Of<std::tan>},
};

} // namespace

std::span<const Builtin> MathFunctions() {
    return kFunctions;
}

} // namespace zentrel::vbscript
