#include "automation/vbscript/operators.h"

#include "automation/vbscript/convert.h"
#include "automation/vbscript/errors.h"

#include <cmath>

namespace zentrel::vbscript {
namespace {

constexpr double kLeastLong = -2147483648.0;
constexpr double kMostLong = 2147483647.0;
constexpr std::int64_t kCurrencyScale = 10000;

/// An operand as arithmetic takes it: a text is a Double, a Boolean and Empty an Integer.
Value Number(const Value& plain) {
    switch (plain.type()) {
    case Type::Empty:
    case Type::Unset:
        return Value::Integer(0);
    case Type::Boolean:
        return Value::Integer(plain.AsInteger());
    case Type::String:
        return Value::Double(ToDouble(plain));
    case Type::Array:
    case Type::Error:
    case Type::Procedure:
        Raise(ErrorNumber::TypeMismatch);
    default:
        return plain;
    }
}

Value FromDouble(double number) {
    if (!std::isfinite(number)) Raise(ErrorNumber::Overflow);
    return Value::Double(number);
}

/// The smallest type from `least` on that holds the number.
Value Fit(Type least, double number) {
    if (least == Type::Byte && number >= 0 && number <= 255)
        return Value::Byte(static_cast<std::int64_t>(number));
    if ((least == Type::Byte || least == Type::Integer) && number >= -32768 && number <= 32767)
        return Value::Integer(static_cast<std::int64_t>(number));
    if (number >= kLeastLong && number <= kMostLong)
        return Value::Long(static_cast<std::int64_t>(number));
    return Value::Double(number);
}

int Rank(Type type) {
    switch (type) {
    case Type::Byte:
        return 0;
    case Type::Integer:
        return 1;
    case Type::Long:
        return 2;
    case Type::Single:
        return 3;
    case Type::Double:
        return 4;
    case Type::Currency:
        return 5;
    default:
        return 6; // Date
    }
}

double Compute(Operator op, double a, double b) {
    return op == Operator::Add ? a + b : op == Operator::Subtract ? a - b : a * b;
}

Value CurrencyArithmetic(Operator op, const Value& left, const Value& right) {
    const auto a = ToCurrency(left);
    const auto b = ToCurrency(right);
    std::int64_t result = 0;
    bool overflow = false;
    if (op == Operator::Multiply) {
        const long double product = static_cast<long double>(a) * static_cast<long double>(b) /
                                    static_cast<long double>(kCurrencyScale);
        overflow = std::fabs(product) > 9.2233720368547758e18L;
        if (!overflow) result = std::llrintl(product);
    } else {
        overflow = op == Operator::Add ? __builtin_add_overflow(a, b, &result)
                                       : __builtin_sub_overflow(a, b, &result);
    }
    if (overflow) Raise(ErrorNumber::Overflow);
    return Value::Currency(result);
}

/// + - *
Value Arithmetic(Operator op, const Value& left, const Value& right) {
    const auto a = Number(left);
    const auto b = Number(right);
    const auto type = Rank(a.type()) >= Rank(b.type()) ? a.type() : b.type();
    const auto other = type == a.type() ? b.type() : a.type();
    if (type == Type::Currency) return CurrencyArithmetic(op, a, b);
    const double result = Compute(op, ToDouble(a), ToDouble(b));
    switch (type) {
    case Type::Byte:
    case Type::Integer:
        // A product of two Bytes that leaves the Byte is a Long at once.
        if (type == Type::Byte && op == Operator::Multiply && result > 255)
            return Value::Long(static_cast<std::int64_t>(result));
        return Fit(type, result);
    case Type::Long:
        return Fit(Type::Long, result);
    case Type::Single: {
        const auto single = static_cast<float>(result);
        if (other == Type::Long || std::isinf(single)) return FromDouble(result);
        return Value::Single(single);
    }
    case Type::Date:
        if (op == Operator::Multiply || (op == Operator::Subtract && other == Type::Date))
            return FromDouble(result);
        return Value::Date(ToDate(Value::Double(result)));
    default:
        return FromDouble(result);
    }
}

Value Divide(const Value& left, const Value& right) {
    const auto a = Number(left);
    const auto b = Number(right);
    const double divisor = ToDouble(b);
    const double dividend = ToDouble(a);
    if (divisor == 0) Raise(dividend == 0 ? ErrorNumber::Overflow : ErrorNumber::DivisionByZero);
    const auto small = [](const Value& v) {
        return v.type() == Type::Single || v.type() == Type::Byte || v.type() == Type::Integer;
    };
    if ((a.type() == Type::Single || b.type() == Type::Single) && small(a) && small(b)) {
        const auto single = static_cast<float>(dividend / divisor);
        if (!std::isinf(single)) return Value::Single(single);
    }
    return FromDouble(dividend / divisor);
}

Value IntegerDivide(Operator op, const Value& left, const Value& right) {
    const auto a = Number(left);
    const auto b = Number(right);
    const std::int64_t dividend = ToLong(a);
    const std::int64_t divisor = ToLong(b);
    if (divisor == 0) Raise(ErrorNumber::DivisionByZero);
    const auto result = op == Operator::Mod ? dividend % divisor : dividend / divisor;
    if (result > 2147483647) Raise(ErrorNumber::Overflow);
    const auto small = [](Type t) { return t == Type::Integer || t == Type::Byte; };
    return small(a.type()) && small(b.type()) ? Fit(Type::Integer, static_cast<double>(result))
                                              : Value::Long(result);
}

Value Power(const Value& left, const Value& right) {
    const double base = ToDouble(Number(left));
    const double exponent = ToDouble(Number(right));
    if (base == 0 && exponent < 0) Raise(ErrorNumber::InvalidCall);
    const double result = std::pow(base, exponent);
    if (std::isnan(result)) Raise(ErrorNumber::InvalidCall);
    return FromDouble(result);
}

// --- logic ---

/// An operand of And, Or and the like: its bits and the type that they belong to.
Value Bits(const Value& plain) {
    switch (plain.type()) {
    case Type::Boolean:
    case Type::Byte:
    case Type::Integer:
    case Type::Long:
    case Type::Null:
        return plain;
    case Type::Empty:
    case Type::Unset:
        return Value::Long(0);
    case Type::String:
        if (!IsNumericValue(plain))
            if (const auto truth = BooleanInText(plain.AsText())) return Value::Boolean(*truth);
        return Value::Long(ToLong(plain));
    case Type::Array:
    case Type::Error:
    case Type::Procedure:
        Raise(ErrorNumber::TypeMismatch);
    default:
        return Value::Long(ToLong(plain));
    }
}

Value BitValue(Type type, std::int64_t bits) {
    switch (type) {
    case Type::Boolean:
        return Value::Boolean(bits != 0);
    case Type::Byte:
        return Value::Byte(bits & 0xFF);
    case Type::Integer:
        return Value::Integer(bits);
    default:
        return Value::Long(bits);
    }
}

Type BitType(const Value& a, const Value& b) {
    if (a.type() == b.type()) return a.type();
    const bool small = a.type() != Type::Long && b.type() != Type::Long;
    return small ? Type::Integer : Type::Long;
}

/// Where one side is Null, the other may still decide.
Value LogicWithNull(Operator op, const Value& a, const Value& b) {
    const auto& known = a.IsNull() ? b : a;
    if (known.IsNull()) return Value::Null();
    const bool zero = known.AsInteger() == 0;
    if (op == Operator::And && zero) return known;
    if (op == Operator::Or && !zero) return known;
    if (op == Operator::Imp && a.IsNull() && !zero) return known;
    if (op == Operator::Imp && b.IsNull() && known.AsInteger() != -1) {
        const auto inverted = ~known.AsInteger();
        if (zero) return BitValue(known.type(), inverted);
    }
    return Value::Null();
}

Value Logic(Operator op, const Value& left, const Value& right) {
    const auto a = Bits(left);
    const auto b = Bits(right);
    if (a.IsNull() || b.IsNull()) return LogicWithNull(op, a, b);
    const auto x = a.AsInteger();
    const auto y = b.AsInteger();
    std::int64_t bits = 0;
    switch (op) {
    case Operator::And:
        bits = x & y;
        break;
    case Operator::Or:
        bits = x | y;
        break;
    case Operator::Xor:
        bits = x ^ y;
        break;
    case Operator::Eqv:
        bits = ~(x ^ y);
        break;
    default:
        bits = ~x | y;
    }
    return BitValue(BitType(a, b), bits);
}

Value Joined(const Value& left, const Value& right) {
    Value result = left;
    result.Append(right.AsText());
    return result;
}

} // namespace

Value Binary(Operator op, const Value& left, const Value& right) {
    auto a = Plain(left);
    auto b = Plain(right);
    if (op >= Operator::And && op <= Operator::Imp) return Logic(op, a, b);
    if (a.IsNull() || b.IsNull()) return Value::Null();
    switch (op) {
    case Operator::Add:
        if (a.IsString() && b.IsString()) return Joined(a, b);
        if (a.IsEmpty() && b.IsString()) return b;
        if (b.IsEmpty() && a.IsString()) return a;
        return Arithmetic(op, a, b);
    case Operator::Subtract:
    case Operator::Multiply:
        return Arithmetic(op, a, b);
    case Operator::Divide:
        return Divide(a, b);
    case Operator::IntDivide:
    case Operator::Mod:
        return IntegerDivide(op, a, b);
    default:
        return Power(a, b);
    }
}

Value Not(const Value& operand) {
    auto bits = Bits(Plain(operand));
    if (bits.IsNull()) return bits;
    return BitValue(bits.type(),
                    bits.type() == Type::Boolean ? bits.AsInteger() == 0 : ~bits.AsInteger());
}

Value Negate(const Value& operand) {
    auto plain = Plain(operand);
    if (plain.IsNull()) return plain;
    const auto number = Number(plain);
    switch (number.type()) {
    case Type::Byte:
    case Type::Integer:
        return Fit(Type::Integer, -ToDouble(number));
    case Type::Long:
        return Fit(Type::Long, -ToDouble(number));
    case Type::Single:
        return Value::Single(-number.AsDouble());
    case Type::Currency:
        if (number.AsInteger() == INT64_MIN) Raise(ErrorNumber::Overflow);
        return Value::Currency(-number.AsInteger());
    case Type::Date:
        return Value::Date(-number.AsDouble());
    default:
        return Value::Double(-number.AsDouble());
    }
}

Value Concatenate(std::span<Value* const> parts) {
    Value result = Value::String({});
    bool all_null = true;
    for (const auto* part : parts) {
        const auto plain = Plain(*part);
        if (plain.IsNull()) continue;
        all_null = false;
        if (plain.IsString())
            result.Append(plain.AsText());
        else
            result.Append(ToText(plain).AsText());
    }
    return all_null ? Value::Null() : result;
}

} // namespace zentrel::vbscript
