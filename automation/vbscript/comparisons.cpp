#include "automation/vbscript/operators.h"

#include "automation/vbscript/convert.h"
#include "automation/vbscript/errors.h"
#include "automation/vbscript/vbscript.h"

#include <cmath>

namespace zentrel::vbscript {
namespace {

template<class T>
int Order(T a, T b) {
    return a < b ? -1 : a > b ? 1 : 0;
}

int OrderTexts(const Value& a, const Value& b) {
    return Order(a.AsText().compare(b.AsText()), 0);
}

bool Has(Hard hard, Hard side) {
    return (static_cast<int>(hard) & static_cast<int>(side)) != 0;
}

/// A text beside a number. What is written out in the source decides which of them gives way; of
/// two that aren't, the number is the smaller one.
int OrderTextAndNumber(const Value& text, const Value& number, bool hard_text, bool hard_number) {
    if (number.type() == Type::Boolean) return OrderTexts(text, ToText(number));
    if (hard_number) {
        const double left = number.type() == Type::Date ? ToDate(text) : ToDouble(text);
        return Order(left, ToDouble(number));
    }
    if (hard_text) return OrderTexts(text, ToText(number));
    return 1;
}

bool IsExact(const Value& v) {
    return v.IsInteger() || v.type() == Type::Byte || v.type() == Type::Boolean || v.IsEmpty();
}

int OrderValues(const Value& a, const Value& b, Hard hard) {
    for (const auto* v : {&a, &b})
        if (v->IsArray() || v->type() == Type::Error || v->type() == Type::Procedure)
            Raise(ErrorNumber::TypeMismatch);
    const bool text_a = a.IsString() || (a.IsEmpty() && b.IsString());
    const bool text_b = b.IsString() || (b.IsEmpty() && a.IsString());
    if (text_a && text_b) return OrderTexts(ToText(a), ToText(b));
    const bool hard_a = Has(hard, Hard::Left);
    const bool hard_b = Has(hard, Hard::Right);
    if (text_a) return OrderTextAndNumber(a, b, hard_a, hard_b);
    if (text_b) return -OrderTextAndNumber(b, a, hard_b, hard_a);
    if (IsExact(a) && IsExact(b)) return Order(a.AsInteger(), b.AsInteger());
    if (a.type() == Type::Currency && b.type() == Type::Currency)
        return Order(a.AsInteger(), b.AsInteger());
    return Order(ToDouble(a), ToDouble(b));
}

} // namespace

Value Compare(Operator op, const Value& left, const Value& right, Hard hard) {
    const auto a = Plain(left);
    const auto b = Plain(right);
    if (a.IsNull() || b.IsNull()) return Value::Null();
    const int order = OrderValues(a, b, hard);
    switch (op) {
    case Operator::Equal:
        return Value::Boolean(order == 0);
    case Operator::NotEqual:
        return Value::Boolean(order != 0);
    case Operator::Less:
        return Value::Boolean(order < 0);
    case Operator::Greater:
        return Value::Boolean(order > 0);
    case Operator::LessEqual:
        return Value::Boolean(order <= 0);
    default:
        return Value::Boolean(order >= 0);
    }
}

bool Same(const Value& left, const Value& right) {
    const auto& a = left.Target();
    const auto& b = right.Target();
    if (!a.IsObject() || !b.IsObject()) Raise(ErrorNumber::ObjectRequired);
    const auto* one = a.AsObject();
    const auto* other = b.AsObject();
    if (!one || !other || one->kind() != Object::Kind::Host || other->kind() != Object::Kind::Host)
        return one == other;
    return static_cast<const HostObject*>(one)->IsSame(*static_cast<const HostObject*>(other));
}

} // namespace zentrel::vbscript
