#include "automation/vbscript/builtin_arguments.h"
#include "automation/vbscript/calendar.h"
#include "automation/vbscript/companions.h"
#include "automation/vbscript/number_text.h"
#include "automation/vbscript/objects.h"
#include "automation/vbscript/runtime.h"
#include "automation/vbscript/text.h"

namespace zentrel::vbscript {
namespace {

Value IsArrayValue(BuiltinCall& call) {
    return Value::Boolean(call[0].IsArray());
}
Value IsDateValue(BuiltinCall& call) {
    const auto& value = call[0];
    if (value.IsString()) return Value::Boolean(ParseDate(value.AsText()).has_value());
    return Value::Boolean(value.type() == Type::Date);
}
Value IsEmptyValue(BuiltinCall& call) {
    return Value::Boolean(call[0].IsEmpty());
}
Value IsNullValue(BuiltinCall& call) {
    return Value::Boolean(call[0].IsNull());
}
Value IsNumeric(BuiltinCall& call) {
    return Value::Boolean(IsNumericValue(call[0]));
}
Value IsObjectValue(BuiltinCall& call) {
    return Value::Boolean(call[0].IsObject());
}

Value VarType(BuiltinCall& call) {
    constexpr int kArrayOfVariants = 8204;
    const auto& value = call[0];
    if (value.IsArray()) return Value::Integer(kArrayOfVariants);
    if (value.IsObject() && value.AsObject()) {
        // An object with a default member reports what that gives, any other that it is one.
        try {
            return Value::Integer(static_cast<int>(DefaultValue(value.AsObject()).type()));
        } catch (const ScriptError&) {
            return Value::Integer(static_cast<int>(Type::Object));
        }
    }
    return Value::Integer(static_cast<int>(value.type()));
}

Value TypeName(BuiltinCall& call) {
    const auto& value = call[0];
    switch (value.type()) {
    case Type::Empty:
        return Value::String(u"Empty");
    case Type::Null:
        return Value::String(u"Null");
    case Type::Integer:
        return Value::String(u"Integer");
    case Type::Long:
        return Value::String(u"Long");
    case Type::Single:
        return Value::String(u"Single");
    case Type::Double:
        return Value::String(u"Double");
    case Type::Currency:
        return Value::String(u"Currency");
    case Type::Date:
        return Value::String(u"Date");
    case Type::String:
        return Value::String(u"String");
    case Type::Object:
        return Value::Utf8(ObjectTypeName(value.AsObject()));
    case Type::Error:
        return Value::String(u"Error");
    case Type::Boolean:
        return Value::String(u"Boolean");
    case Type::Byte:
        return Value::String(u"Byte");
    default:
        return Value::String(u"Variant()");
    }
}

Value Err(BuiltinCall& call) {
    return Value::FromObject(call.runtime.err_object);
}

Value CreateObject(BuiltinCall& call) {
    const auto name = Text(call, 0);
    auto object = MakeCompanion(name.AsText(), call.runtime);
    if (!object) Raise(ErrorNumber::CannotCreate, name.AsText());
    return Value::FromObject(object);
}

Value GetObject(BuiltinCall& call) {
    Raise(ErrorNumber::CannotCreate,
          call.size() > 0 ? Text(call, 0).AsText() : std::u16string_view());
}

Value GetRef(BuiltinCall& call) {
    const auto name = Text(call, 0);
    const auto id = call.runtime.names.Find(name.AsText());
    for (auto* module : {&call.runtime.machine.CurrentModule(), call.runtime.global_module.get()}) {
        const auto* global = id == kNoName ? nullptr : module->FindGlobal(id);
        if (global && global->type() == Type::Procedure && global->AsProcedure())
            return Value::FromObject(
                Make<ProcedureReference>(call.runtime, *global->AsProcedure()));
    }
    Raise(ErrorNumber::InvalidCall);
}

// --- code as text ---

Value CodeText(const BuiltinCall& call) {
    auto code = Plain(call[0]);
    if (!code.IsString()) Raise(ErrorNumber::TypeMismatch);
    return code;
}

Value ExecuteText(BuiltinCall& call) {
    const auto code = CodeText(call);
    call.runtime.machine.ExecuteHere(code.AsText());
    return {};
}

Value ExecuteGlobalText(BuiltinCall& call) {
    const auto code = CodeText(call);
    call.runtime.machine.ExecuteGlobal(code.AsText());
    return {};
}

Value EvalText(BuiltinCall& call) {
    Value code = call[0];
    if (!code.IsString()) return code;
    return call.runtime.machine.EvalHere(code.AsText()).Target();
}

// --- the engine ---

Value ScriptEngine(BuiltinCall&) {
    return Value::String(u"VBScript");
}
Value ScriptEngineMajor(BuiltinCall&) {
    return Value::Long(5);
}
Value ScriptEngineMinor(BuiltinCall&) {
    return Value::Long(8);
}
Value ScriptEngineBuild(BuiltinCall&) {
    return Value::Long(16384);
}
Value GetLocale(BuiltinCall&) {
    return Value::Long(1033);
}
/// The language is US English here whatever is asked for; gives the locale that was in force.
Value SetLocale(BuiltinCall&) {
    return Value::Long(1033);
}

/// RGB(red, green, blue), each at most 255.
Value Rgb(BuiltinCall& call) {
    std::int64_t colour = 0;
    for (std::size_t i = 3; i-- > 0;)
        colour = colour << 8 | std::min(Number(call, i, 0), std::int32_t{255});
    return Value::Long(colour);
}

constexpr Builtin kFunctions[] = {
    {"CreateObject", 1, 2, CreateObject},
    {"Err", 0, 0, Err},
    {"Eval", 1, 1, EvalText},
    {"Execute", 1, 1, ExecuteText},
    {"ExecuteGlobal", 1, 1, ExecuteGlobalText},
    {"GetLocale", 0, 0, GetLocale},
    {"GetObject", 0, 2, GetObject},
    {"GetRef", 1, 1, GetRef},
    {"IsArray", 1, 1, IsArrayValue},
    {"IsDate", 1, 1, IsDateValue},
    {"IsEmpty", 1, 1, IsEmptyValue},
    {"IsNull", 1, 1, IsNullValue},
    {"IsNumeric", 1, 1, IsNumeric},
    {"IsObject", 1, 1, IsObjectValue},
    {"RGB", 3, 3, Rgb},
    {"ScriptEngine", 0, 0, ScriptEngine},
    {"ScriptEngineBuildVersion", 0, 0, ScriptEngineBuild},
    {"ScriptEngineMajorVersion", 0, 0, ScriptEngineMajor},
    {"ScriptEngineMinorVersion", 0, 0, ScriptEngineMinor},
    {"SetLocale", 0, 1, SetLocale},
    {"TypeName", 1, 1, TypeName},
    {"VarType", 1, 1, VarType},
};

} // namespace

std::span<const Builtin> InformationFunctions() {
    return kFunctions;
}

} // namespace zentrel::vbscript
