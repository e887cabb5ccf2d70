#pragma once

#include "automation/vbscript/vbscript.h"

#include <span>
#include <string_view>

namespace zentrel::vbscript {

class Runtime;

/// A call of a built-in function: its arguments, already counted against its table row.
struct BuiltinCall {
    Runtime& runtime;
    Arguments args;

    std::size_t size() const { return args.size(); }
    bool Has(std::size_t index) const { return args.Has(index); }
    Value& operator[](std::size_t index) const { return args[index]; }
};

/// A row in a family's table.
struct Builtin {
    std::string_view name; ///< As the language spells it.
    int min_args;
    int max_args; ///< -1: any number.
    Value (*function)(BuiltinCall& call);
};

struct BuiltinConstant {
    std::string_view name;
    Value value;
};

/// The families, a file each.
std::span<const Builtin> StringFunctions();
std::span<const Builtin> ConversionFunctions();
std::span<const Builtin> MathFunctions();
std::span<const Builtin> DateFunctions();
std::span<const Builtin> FormatFunctions();
std::span<const Builtin> ArrayFunctions();
std::span<const Builtin> InformationFunctions();
std::span<const Builtin> InteractionFunctions();

std::span<const BuiltinConstant> BuiltinConstants();

/// The built-in of that name in any spelling, or null.
const Builtin* FindBuiltin(std::u16string_view name);
const Value* FindBuiltinConstant(std::u16string_view name);

} // namespace zentrel::vbscript
