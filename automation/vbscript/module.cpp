#include "automation/vbscript/module.h"

#include "automation/vbscript/errors.h"
#include "automation/vbscript/generator.h"
#include "automation/vbscript/parser.h"
#include "automation/vbscript/runtime.h"
#include "automation/vbscript/text.h"

namespace zentrel::vbscript {
namespace {

/// Remembers an error as the engine's last one and hands it on.
template<class Action>
auto Guarded(Runtime& runtime, Action action) {
    try {
        return action();
    } catch (const ScriptError& error) {
        runtime.last_error = error.info;
        throw;
    } catch (const std::bad_alloc&) {
        const ScriptError error(static_cast<int>(ErrorNumber::OutOfMemory));
        runtime.last_error = error.info;
        throw error;
    }
}

} // namespace

ScriptModule::ScriptModule(Runtime& runtime, std::string name)
    : runtime_(runtime), name_(std::move(name)) {}

ScriptModule::~ScriptModule() = default;

Operand ScriptModule::GlobalPlace(NameId name) {
    const auto [entry, is_new] = places_.try_emplace(name, kNowhere);
    if (!is_new) return entry->second;
    const auto page = global_count_ / kPageSize;
    if (page + kGlobalBank >= kBankCount) Raise(ErrorNumber::TooComplex);
    if (page == pages_.size()) {
        pages_.push_back(std::make_unique<Value[]>(kPageSize));
        banks_[kGlobalBank + page] = pages_.back().get();
    }
    entry->second = MakeOperand(kGlobalBank + page, global_count_++ % kPageSize);
    Global(entry->second) = Value::Unset();
    return entry->second;
}

Value* ScriptModule::FindGlobal(NameId name) {
    const auto found = places_.find(name);
    if (found == places_.end()) return nullptr;
    auto& value = Global(found->second);
    return value.type() == Type::Unset ? nullptr : &value;
}

NameId ScriptModule::NameAt(Operand place) const {
    if (place >> kPlaceBits < kGlobalBank) return kNoName;
    for (const auto& [name, own] : places_)
        if (own == place) return name;
    return kNoName;
}

const ClassInfo* ScriptModule::FindClass(NameId name) const {
    const auto found = classes_.find(name);
    return found == classes_.end() ? nullptr : found->second.get();
}

void ScriptModule::DeclareVariables(const Program& program) {
    for (const auto& constant : program.declarations.constants)
        if (FindGlobal(constant.name)) RaiseAt(ErrorNumber::NameRedefined, constant.at);
    for (const auto& variable : program.declarations.variables) {
        const auto* known = FindGlobal(variable.name);
        if (known && (known->type() == Type::Procedure || IsConstant(variable.name)))
            RaiseAt(ErrorNumber::NameRedefined, variable.at);
    }
    for (const auto& constant : program.declarations.constants) {
        Global(GlobalPlace(constant.name)) = constant.value;
        constants_.insert(constant.name);
    }
    for (const auto& variable : program.declarations.variables) {
        auto& global = Global(GlobalPlace(variable.name));
        if (global.type() == Type::Unset || global.type() == Type::Ref) global = Value();
    }
    // Procedures are known before any body is compiled, whatever their order.
    for (const auto& procedure : program.procedures) {
        auto& global = Global(GlobalPlace(procedure.name));
        if (global.type() != Type::Procedure) global = Value::FromProcedure(nullptr);
    }
}

void ScriptModule::Adopt(std::unique_ptr<Procedure> procedure) {
    Global(GlobalPlace(procedure->name)) = Value::FromProcedure(procedure.get());
    procedures_.push_back(std::move(procedure));
}

void ScriptModule::Adopt(std::unique_ptr<ClassInfo> info) {
    auto& own = classes_[info->name];
    if (own) old_classes_.push_back(std::move(own));
    own = std::move(info);
}

void ScriptModule::ClearGlobals() {
    for (const auto& page : pages_)
        for (std::uint32_t i = 0; i < kPageSize; ++i)
            if (page[i].IsCounted()) page[i].Clear();
}

// --- the public face ---

void ScriptModule::AddCode(std::string_view text) {
    Guarded(runtime_, [&] { runtime_.RunText(*this, Utf8ToUtf16(text)); });
}

bool ScriptModule::HasProcedure(std::string_view name) const {
    const auto id = runtime_.names.Find(Utf8ToUtf16(name));
    const auto found = places_.find(id);
    if (id == kNoName || found == places_.end()) return false;
    const auto place = found->second;
    const auto& value = banks_[place >> kPlaceBits][place & kMaxPlace];
    return value.type() == Type::Procedure && value.AsProcedure();
}

Value ScriptModule::Run(std::string_view procedure, std::span<Value> args) {
    return Guarded(runtime_, [&]() -> Value {
        if (!HasProcedure(procedure)) Raise(ErrorNumber::TypeMismatch, procedure);
        const auto id = runtime_.names.Find(Utf8ToUtf16(procedure));
        return runtime_.machine.Run(*FindGlobal(id)->AsProcedure(), nullptr, args);
    });
}

Value ScriptModule::Eval(std::string_view expression) {
    return Guarded(runtime_, [&] {
        const auto source = std::make_shared<const SourceText>(SourceText{Utf8ToUtf16(expression)});
        const auto tree = ParseExpressionText(source->text, runtime_.names);
        const auto code = CompileExpression(*tree, *this, source, nullptr);
        return Value(runtime_.machine.Run(*code, nullptr, {}).Target());
    });
}

} // namespace zentrel::vbscript
