#include "automation/vbscript/companions.h"
#include "automation/vbscript/convert.h"
#include "automation/vbscript/errors.h"
#include "automation/vbscript/machine.h"
#include "automation/vbscript/runtime.h"
#include "automation/vbscript/text.h"

namespace zentrel::vbscript {
namespace {

bool MayUse(const Procedure& from, const ClassInfo& info) {
    return from.owner == &info;
}

} // namespace

const ClassMember& Machine::FindMember(const Instance& instance, Site& site) {
    const auto& info = instance.info();
    if (site.table != &info) {
        const auto found = info.members.find(site.name);
        if (found == info.members.end())
            Raise(ErrorNumber::NoSuchMember, runtime_.names.Spelling(site.name));
        site.table = &info;
        site.class_member = &found->second;
    }
    const auto& member = *site.class_member;
    if (member.is_private && !MayUse(*frames_.back().procedure, info))
        Raise(ErrorNumber::NoSuchMember, runtime_.names.Spelling(site.name));
    return member;
}

void Machine::DoInvoke(const Instruction& in, const Cursor& at) {
    auto& site = SiteOf(in);
    if (in.flags & kSelf) {
        Poll();
        return InvokeInstance(in, at, *frames_.back().self, site);
    }
    const auto& target = at[in.b].Target();
    if (!target.IsObject() || !target.AsObject()) RaiseObjectRequired(in.b);
    auto& object = *target.AsObject();
    switch (object.kind()) {
    case Object::Kind::Instance:
        Poll();
        return InvokeInstance(in, at, static_cast<Instance&>(object), site);
    case Object::Kind::Host:
        return InvokeHost(in, at, static_cast<HostObject&>(object), site);
    default:
        Raise(ErrorNumber::NoSuchMember, runtime_.names.Spelling(site.name));
    }
}

void Machine::InvokeInstance(const Instruction& in, const Cursor& at, Instance& instance,
                             Site& site) {
    const Handle<Instance> keep(&instance);
    const auto& member = FindMember(instance, site);
    const auto args = SiteArguments(site, at);
    if (member.is_field) {
        auto& field = instance.Fields()[member.field];
        auto result = args.empty() ? field.Target() : IndexValue(field, args);
        for (auto& arg : args)
            arg.Clear();
        if (in.flags & kFreeB) at[in.b].Clear();
        Store(in, at, std::move(result));
        return;
    }
    const auto* procedure = member.get;
    if (!procedure ||
        (procedure->is_private && !MayUse(*frames_.back().procedure, instance.info())))
        Raise(ErrorNumber::NoSuchMember, runtime_.names.Spelling(site.name));
    // A property without parameters gives something that takes the parentheses.
    if (procedure->kind == ProcedureKind::PropertyGet && procedure->parameter_count == 0 &&
        !args.empty()) {
        const auto value = Run(*procedure, &instance, {});
        auto result = IndexValue(value, args);
        for (auto& arg : args)
            arg.Clear();
        if (in.flags & kFreeB) at[in.b].Clear();
        Store(in, at, std::move(result));
        return;
    }
    if (in.flags & kFreeB) at[in.b].Clear();
    Enter(*procedure, &instance, site, at);
}

void Machine::InvokeHost(const Instruction& in, const Cursor& at, HostObject& host, Site& site) {
    const Handle<HostObject> keep(&host);
    const void* table = host.MemberTable();
    if (!table || site.table != table) {
        const auto member = host.FindMember(runtime_.names.Spelling(site.name));
        if (!member) Raise(ErrorNumber::NoSuchMember, runtime_.names.Spelling(site.name));
        site.table = table;
        site.member = *member;
    }
    const auto args = SiteArguments(site, at);
    const auto member = site.member;
    Value result;
    if (!args.empty() && !member.takes_arguments)
        result = IndexValue(host.Get(member.slot, {}), args);
    else if (in.flags & kSet)
        host.Call(member.slot, Arguments(args));
    else
        result = host.Get(member.slot, Arguments(args));
    for (auto& arg : args)
        arg.Clear();
    if (in.flags & kFreeB) at[in.b].Clear();
    Store(in, at, std::move(result));
}

// --- writing ---

void Machine::DoSetMember(const Instruction& in, const Cursor& at) {
    auto& site = SiteOf(in);
    const bool set = in.flags & kSet;
    Value object = in.flags & kSelf ? Value::FromObject(frames_.back().self) : at[in.b].Target();
    if (in.flags & kFreeB) at[in.b].Clear();
    if (!object.IsObject() || !object.AsObject()) RaiseObjectRequired(in.b);
    auto args = std::span<Value>(&at[site.first], site.count + 1);
    if (set && !args.back().Target().IsObject()) Raise(ErrorNumber::ObjectRequired);
    switch (object.AsObject()->kind()) {
    case Object::Kind::Instance:
        if (SetInstanceMember(in, at, static_cast<Instance&>(*object.AsObject()), site)) return;
        break;
    case Object::Kind::Host: {
        auto& host = static_cast<HostObject&>(*object.AsObject());
        const void* table = host.MemberTable();
        if (!table || site.table != table) {
            const auto member = host.FindMember(runtime_.names.Spelling(site.name));
            if (!member) Raise(ErrorNumber::NoSuchMember, runtime_.names.Spelling(site.name));
            site.table = table;
            site.member = *member;
        }
        const auto member = site.member;
        const auto front = args.first(site.count);
        const Value value = args.back().Target();
        if (site.count > 0 && !member.takes_arguments) {
            auto base = host.Get(member.slot, {});
            SetIndexValue(base, front, value, set);
        } else if (set) {
            host.SetRef(member.slot, Arguments(front), value);
        } else {
            host.Set(member.slot, Arguments(front), value);
        }
        break;
    }
    default:
        Raise(ErrorNumber::NoSuchMember, runtime_.names.Spelling(site.name));
    }
    for (auto& arg : args)
        arg.Clear();
}

/// True when it has entered the property's procedure, which takes the arguments over.
bool Machine::SetInstanceMember(const Instruction& in, const Cursor& at, Instance& instance,
                                Site& site) {
    const auto& member = FindMember(instance, site);
    const bool set = in.flags & kSet;
    auto* first = &at[site.first];
    const std::span<Value> args(first, site.count);
    const Value value = first[site.count].Target();
    if (member.is_field) {
        auto& field = instance.Fields()[member.field];
        if (!args.empty())
            SetIndexValue(field, args, value, set);
        else
            field = set ? value : Plain(value);
        return false;
    }
    const auto* procedure = set ? member.set : member.let;
    const bool hidden =
        procedure && procedure->is_private && !MayUse(*frames_.back().procedure, instance.info());
    if (hidden || (!procedure && args.empty()))
        Raise(ErrorNumber::NoSuchMember, runtime_.names.Spelling(site.name));
    if (!procedure || procedure->parameter_count != site.count + 1) {
        // `object.list(1) = x` where list is a property that gives an array or collection.
        if (!member.get || member.get->parameter_count != 0)
            Raise(ErrorNumber::WrongArguments, runtime_.names.Spelling(site.name));
        auto base = Run(*member.get, &instance, {});
        SetIndexValue(base, args, value, set);
        return false;
    }
    Push(*procedure, &instance, first, site.count + 1, false);
    return true;
}

void Machine::DoMe(const Instruction& in, const Cursor& at) {
    at[in.a] = Value::FromObject(frames_.back().self);
}

void Machine::DoNew(const Instruction& in, const Cursor& at) {
    auto& site = SiteOf(in);
    auto& module = *frames_.back().procedure->module;
    const auto* info = module.FindClass(site.name);
    if (!info) info = runtime_.global_module->FindClass(site.name);
    if (!info) {
        const auto& spelling = runtime_.names.Spelling(site.name);
        if (CompareText(spelling, u"RegExp", true) == 0) {
            at[in.a] = Value::FromObject(MakeRegExp(runtime_));
            return;
        }
        const bool known = module.FindGlobal(site.name) || FindBuiltin(spelling);
        Raise(known ? ErrorNumber::ClassNotDefined : ErrorNumber::VariableUndefined, spelling);
    }
    const auto instance = Make<Instance>(runtime_, *info);
    if (info->initialize) Run(*info->initialize, instance.get(), {});
    at[in.a] = Value::FromObject(instance);
}

} // namespace zentrel::vbscript
