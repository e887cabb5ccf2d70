#pragma once

#include "automation/vbscript/arrays.h"
#include "automation/vbscript/value.h"

#include <cmath>

/// What the machine does at once for the everyday types; everything else goes by the full rules of
/// operators.h.
namespace zentrel::vbscript::quick {

/// The larger of two integer types: Integer is 2 and Long is 3.
inline Type Wider(const Value& a, const Value& b) {
    return static_cast<Type>(static_cast<unsigned>(a.type()) | static_cast<unsigned>(b.type()));
}

inline bool Fits(Type type, std::int64_t number) {
    return type == Type::Integer ? number == static_cast<std::int16_t>(number)
                                 : number == static_cast<std::int32_t>(number);
}

inline bool BothDouble(const Value& a, const Value& b) {
    return a.type() == Type::Double && b.type() == Type::Double;
}

/// A number of the three types that loops are made of, as a double.
inline bool IsPlainNumber(const Value& v) {
    return v.IsInteger() || v.type() == Type::Double;
}

inline double PlainDouble(const Value& v) {
    return v.IsInteger() ? static_cast<double>(v.AsInteger()) : v.AsDouble();
}

/// + - * of Integer, Long and Double without a detour; false leaves it to the full rules.
template<class Operation>
inline bool Quick(Value& target, const Value& a, const Value& b, Operation operation) {
    if (a.IsInteger() && b.IsInteger()) {
        const auto type = Wider(a, b);
        const auto number = operation(a.AsInteger(), b.AsInteger());
        if (!Fits(type, number)) return false;
        target.SetNumber(type, number);
        return true;
    }
    if (!IsPlainNumber(a) || !IsPlainNumber(b)) return false;
    const double number = operation(PlainDouble(a), PlainDouble(b));
    if (!std::isfinite(number)) return false;
    target.SetNumber(Type::Double, number);
    return true;
}

inline bool QuickDivide(Value& target, const Value& a, const Value& b) {
    if (!IsPlainNumber(a) || !IsPlainNumber(b)) return false;
    const double divisor = PlainDouble(b);
    if (divisor == 0) return false;
    const double number = PlainDouble(a) / divisor;
    if (!std::isfinite(number)) return false;
    target.SetNumber(Type::Double, number);
    return true;
}

/// \ and Mod of Integer and Long.
inline bool QuickDivideIntegers(Value& target, const Value& a, const Value& b, bool remainder) {
    if (!a.IsInteger() || !b.IsInteger() || b.AsInteger() == 0) return false;
    const auto type = Wider(a, b);
    const auto number = remainder ? a.AsInteger() % b.AsInteger() : a.AsInteger() / b.AsInteger();
    if (!Fits(type, number)) return false;
    target.SetNumber(type, number);
    return true;
}

/// And, Or, Xor of two Booleans or two integers of one type.
template<class Operation>
inline bool QuickBits(Value& target, const Value& a, const Value& b, Operation operation) {
    if (a.type() != b.type() || !(a.IsInteger() || a.type() == Type::Boolean)) return false;
    target.SetNumber(a.type(), operation(a.AsInteger(), b.AsInteger()));
    return true;
}

enum class Outcome : std::uint8_t { No, Yes, Unknown };

inline Outcome Tell(bool truth) {
    return truth ? Outcome::Yes : Outcome::No;
}

/// A comparison of numbers of the common types, or of two texts.
template<class Operation>
inline Outcome QuickCompare(const Value& a, const Value& b, Operation operation) {
    if (a.IsInteger() && b.IsInteger()) return Tell(operation(a.AsInteger(), b.AsInteger()));
    if (BothDouble(a, b)) return Tell(operation(a.AsDouble(), b.AsDouble()));
    if (IsPlainNumber(a) && IsPlainNumber(b))
        return Tell(operation(PlainDouble(a), PlainDouble(b)));
    if (a.IsString() && b.IsString()) return Tell(operation(a.AsText(), b.AsText()));
    return Outcome::Unknown;
}

/// A condition of the usual types.
inline Outcome QuickTruth(const Value& v) {
    if (v.type() == Type::Boolean || v.IsInteger()) return Tell(v.AsInteger() != 0);
    return Outcome::Unknown;
}

inline Value* QuickElement(Value& base, const Value& place) {
    const auto& index = place.Target();
    const auto& target = base.Target();
    if (!target.IsArray() || !index.IsInteger()) return nullptr;
    return target.AsArray()->Element(index.AsInteger());
}

struct Plus {
    template<class T>
    T operator()(T a, T b) const {
        return a + b;
    }
};
struct Minus {
    template<class T>
    T operator()(T a, T b) const {
        return a - b;
    }
};
struct Times {
    template<class T>
    T operator()(T a, T b) const {
        return a * b;
    }
};
struct AndBits {
    std::int64_t operator()(std::int64_t a, std::int64_t b) const { return a & b; }
};
struct OrBits {
    std::int64_t operator()(std::int64_t a, std::int64_t b) const { return a | b; }
};
struct XorBits {
    std::int64_t operator()(std::int64_t a, std::int64_t b) const { return a ^ b; }
};
struct Eq {
    template<class T>
    bool operator()(const T& a, const T& b) const {
        return a == b;
    }
};
struct Ne {
    template<class T>
    bool operator()(const T& a, const T& b) const {
        return a != b;
    }
};
struct Lt {
    template<class T>
    bool operator()(const T& a, const T& b) const {
        return a < b;
    }
};
struct Gt {
    template<class T>
    bool operator()(const T& a, const T& b) const {
        return a > b;
    }
};
struct Le {
    template<class T>
    bool operator()(const T& a, const T& b) const {
        return a <= b;
    }
};
struct Ge {
    template<class T>
    bool operator()(const T& a, const T& b) const {
        return a >= b;
    }
};

} // namespace zentrel::vbscript::quick
