#include "automation/vbscript/convert.h"
#include "automation/vbscript/errors.h"
#include "automation/vbscript/machine.h"
#include "automation/vbscript/runtime.h"

#include <algorithm>

namespace zentrel::vbscript {

Site& Machine::SiteOf(const Instruction& in) const {
    // What a site remembers is the one thing in compiled code that changes as it runs.
    return const_cast<Procedure*>(frames_.back().procedure)->sites[in.c];
}

std::span<Value> Machine::SiteArguments(const Site& site, const Cursor& at) const {
    return {&at[site.first], site.count};
}

void Machine::Enter(const Procedure& procedure, Instance* self, const Site& site,
                    const Cursor& at) {
    Push(procedure, self, &at[site.first], site.count, false);
}

/// The host's object of that name. Objects are only ever added while the code lives, so that a site
/// may remember what it found.
HostObject* Machine::NamedObject(Site& site) {
    if (!site.object) site.object = runtime_.FindObject(site.name);
    return site.object;
}

/// Looks outwards: the procedure, its module, the host's objects, the global module, the language.
Machine::Meaning Machine::MeaningOf(Site& site, const Cursor& at) {
    Meaning meaning;
    const auto take = [&meaning](Value& value) {
        if (value.type() == Type::Procedure)
            meaning.procedure = value.AsProcedure(); // null where its text didn't compile
        else
            meaning.variable = &value;
    };
    if (site.local != kNowhere && at[site.local].type() != Type::Unset) {
        meaning.variable = &at[site.local];
    } else if (at[site.global].type() != Type::Unset) {
        take(at[site.global]);
    } else if (auto* object = NamedObject(site)) {
        meaning.object = object;
    } else if (auto* global = runtime_.global_module->FindGlobal(site.name)) {
        take(*global);
    } else {
        meaning.builtin = site.builtin;
    }
    return meaning;
}

/// The first use of a name that nothing has declared.
Value& Machine::CreateVariable(const Site& site, const Cursor& at) {
    const auto& procedure = *frames_.back().procedure;
    if (procedure.option_explicit)
        Raise(ErrorNumber::VariableUndefined, runtime_.names.Spelling(site.name));
    if (procedure.borrows) {
        const auto scope = ScopeFrame();
        const auto outer = frames_[scope];
        auto& own = at[site.local];
        for (const auto& local : outer.procedure->locals)
            if (local.name == site.name) {
                outer.base[local.place] = Value();
                own = Value::Ref(&outer.base[local.place]);
                return own;
            }
        auto& extra = extras_[scope][site.name];
        if (!extra) extra = std::make_unique<Value>();
        own = Value::Ref(extra.get());
        return own;
    }
    auto& variable = at[site.local != kNowhere ? site.local : site.global];
    variable = Value();
    return variable;
}

void Machine::DoReadName(const Instruction& in, const Cursor& at) {
    auto& site = SiteOf(in);
    const auto meaning = MeaningOf(site, at);
    if (meaning.procedure) {
        Poll();
        Enter(*meaning.procedure, nullptr, site, at);
        return;
    }
    if (meaning.builtin) return CallBuiltin(in, at, *meaning.builtin, site);
    if (meaning.object) {
        at[in.a] = Value::FromObject(meaning.object);
        return;
    }
    auto& variable = meaning.variable ? *meaning.variable : CreateVariable(site, at);
    auto& target = variable.Target();
    const auto is_constant = [&] {
        return frames_.back().procedure->module->IsConstant(site.name);
    };
    const bool by_reference = target.IsArray() || ((in.flags & kWantRef) && !is_constant());
    if (by_reference) {
        at[in.a] = variable.type() == Type::ElementRef ? variable : Value::Ref(&target);
    } else {
        at[in.a] = target;
    }
}

void Machine::DoBindName(const Instruction& in, const Cursor& at) {
    auto& site = SiteOf(in);
    const auto meaning = MeaningOf(site, at);
    auto& own = at[site.local != kNowhere ? site.local : site.global];
    const auto& module = *frames_.back().procedure->module;
    const bool constant = module.IsConstant(site.name) && meaning.variable != &own;
    if (meaning.procedure || meaning.builtin || meaning.object || constant ||
        (site.local == kNowhere && module.IsConstant(site.name)))
        Raise(ErrorNumber::IllegalAssignment, runtime_.names.Spelling(site.name));
    if (!meaning.variable) {
        CreateVariable(site, at);
    } else if (meaning.variable != &own) {
        if (runtime_.global_module->IsConstant(site.name) &&
            meaning.variable == runtime_.global_module->FindGlobal(site.name))
            Raise(ErrorNumber::IllegalAssignment, runtime_.names.Spelling(site.name));
        own = Value::Ref(&meaning.variable->Target());
    }
}

// --- calls ---

void Machine::DoCall(const Instruction& in, const Cursor& at) {
    auto& site = SiteOf(in);
    if (site.local == kNowhere && at[site.global].type() == Type::Procedure)
        if (const auto* procedure = at[site.global].AsProcedure())
            return Enter(*procedure, nullptr, site, at);
    const auto meaning = MeaningOf(site, at);
    if (meaning.procedure) return Enter(*meaning.procedure, nullptr, site, at);
    if (meaning.builtin) return CallBuiltin(in, at, *meaning.builtin, site);
    const auto args = SiteArguments(site, at);
    Value result;
    if (meaning.object) {
        result = IndexValue(Value::FromObject(meaning.object), args);
    } else if (meaning.variable) {
        auto& target = meaning.variable->Target();
        if (!target.IsArray() && !target.IsObject())
            Raise(ErrorNumber::TypeMismatch, runtime_.names.Spelling(site.name));
        result = in.flags & kWantRef ? ReferenceTo(target, args) : IndexValue(target, args);
    } else {
        const bool strict = frames_.back().procedure->option_explicit;
        Raise(strict ? ErrorNumber::VariableUndefined : ErrorNumber::TypeMismatch,
              runtime_.names.Spelling(site.name));
    }
    for (auto& arg : args)
        arg.Clear();
    Store(in, at, std::move(result));
}

void Machine::DoCallBuiltin(const Instruction& in, const Cursor& at) {
    auto& site = SiteOf(in);
    const bool hidden = at[site.global].type() != Type::Unset ||
                        (site.local != kNowhere && at[site.local].type() != Type::Unset) ||
                        runtime_.global_module->FindGlobal(site.name);
    if (hidden) return DoCall(in, at);
    CallBuiltin(in, at, *site.builtin, site);
}

void Machine::CallBuiltin(const Instruction& in, const Cursor& at, const Builtin& builtin,
                          Site& site) {
    const auto count = static_cast<int>(site.count);
    if (count < builtin.min_args || (builtin.max_args >= 0 && count > builtin.max_args))
        Raise(ErrorNumber::WrongArguments, builtin.name);
    const auto args = SiteArguments(site, at);
    BuiltinCall call{runtime_, Arguments(args)};
    auto result = builtin.function(call);
    for (auto& arg : args)
        arg.Clear();
    Store(in, at, std::move(result));
}

// --- elements ---

void Machine::DoIndex(const Instruction& in, const Cursor& at) {
    const auto& base = at[in.b].Target();
    if (!base.IsArray() && !base.IsObject()) {
        if (in.flags & kFreeB) Raise(ErrorNumber::TypeMismatch);
        Raise(ErrorNumber::TypeMismatch, NameOf(in.b));
    }
    auto& index = at[in.c];
    const bool variable = !(in.flags & kFreeC) && index.type() != Type::Ref;
    Value arg = variable ? Value::Ref(&index) : index;
    auto result = IndexValue(base, {&arg, 1});
    Free(in, at);
    Store(in, at, std::move(result));
}

void Machine::DoIndexMany(const Instruction& in, const Cursor& at) {
    const auto args = SiteArguments(SiteOf(in), at);
    const auto& base = at[in.b].Target();
    if (!base.IsArray() && !base.IsObject() && !(in.flags & kFreeB))
        Raise(ErrorNumber::TypeMismatch, NameOf(in.b));
    auto result = IndexValue(base, args);
    for (auto& arg : args)
        arg.Clear();
    if (in.flags & kFreeB) at[in.b].Clear();
    Store(in, at, std::move(result));
}

/// An element on loan, or what a default member gives.
Value Machine::ReferenceTo(Value& base, std::span<Value> args) {
    auto& target = base.Target();
    if (!target.IsArray()) return IndexValue(target, args);
    const auto indices = Indices(args);
    const Handle<ArrayData> array(target.WritableArray());
    const auto place = array->Place(indices);
    return Value::FromElement(Make<ElementReference>(array, place).get());
}

void Machine::DoIndexRef(const Instruction& in, const Cursor& at) {
    const auto args = SiteArguments(SiteOf(in), at);
    auto result = ReferenceTo(at[in.b], args);
    for (auto& arg : args)
        arg.Clear();
    if (in.flags & kFreeB) at[in.b].Clear();
    at[in.a] = std::move(result);
}

void Machine::DoSetIndex(const Instruction& in, const Cursor& at) {
    Value index = at[in.c].Target();
    const Value value = at[in.a].Target();
    SetIndexValue(at[in.b], {&index, 1}, value, in.flags & kSet);
    if (in.flags & kFreeA) at[in.a].Clear();
    Free(in, at);
}

void Machine::DoSetIndexMany(const Instruction& in, const Cursor& at) {
    const auto args = SiteArguments(SiteOf(in), at);
    const Value value = at[in.a].Target();
    SetIndexValue(at[in.b], args, value, in.flags & kSet);
    for (auto& arg : args)
        arg.Clear();
    if (in.flags & kFreeA) at[in.a].Clear();
    if (in.flags & kFreeB) at[in.b].Clear();
}

/// The name of the variable at a place, for messages; empty for anything else.
std::u16string_view Machine::NameOf(Operand operand) const {
    if (operand == kNowhere) return {};
    const auto& procedure = *frames_.back().procedure;
    for (const auto& local : procedure.locals)
        if (local.place == operand) return runtime_.names.Spelling(local.name);
    if (operand >> kPlaceBits == kFieldBank && procedure.owner)
        for (const auto& [name, member] : procedure.owner->members)
            if (member.is_field && member.field == (operand & kMaxPlace))
                return runtime_.names.Spelling(name);
    return runtime_.names.Spelling(procedure.module->NameAt(operand));
}

void Machine::RaiseObjectRequired(Operand operand) const {
    Raise(ErrorNumber::ObjectRequired, NameOf(operand));
}

} // namespace zentrel::vbscript
