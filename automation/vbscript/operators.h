#pragma once

#include "automation/vbscript/value.h"

#include "automation/vbscript/ast.h"

#include <span>

/// The operators with all their coercions. Any operand may be a reference or an object.
namespace zentrel::vbscript {

/// Any binary operator but Is and the comparisons.
Value Binary(Operator op, const Value& left, const Value& right);

/// Which operands were written as bare literals: texts and numbers compare by other rules then.
enum class Hard : std::uint8_t { None = 0, Left = 1, Right = 2, Both = 3 };
/// Boolean, or Null if an operand is Null.
Value Compare(Operator op, const Value& left, const Value& right, Hard hard);
/// `left Is right`; error 424 for what is no object.
bool Same(const Value& left, const Value& right);

Value Not(const Value& operand);
Value Negate(const Value& operand);

/// `a & b & c`: Null if all are Null; Null counts as "" beside anything else.
Value Concatenate(std::span<Value* const> parts);

} // namespace zentrel::vbscript
