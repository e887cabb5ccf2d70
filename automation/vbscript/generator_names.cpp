#include "automation/vbscript/generator.h"

#include "automation/vbscript/runtime.h"

#include <algorithm>

namespace zentrel::vbscript {

Operand Generator::AddLocal(NameId name, Symbol::Kind kind) {
    const auto place = local_count_++;
    symbols_[name] = {kind, place, {}};
    procedure_->locals.push_back({name, place, kind != Symbol::Kind::Unknown});
    return place;
}

void Generator::DeclareLocals(const Declarations& declarations) {
    for (const auto& variable : declarations.variables)
        AddLocal(variable.name, Symbol::Kind::Variable);
    for (const auto& constant : declarations.constants) {
        symbols_[constant.name] = {Symbol::Kind::Constant, kNowhere, constant.value};
        procedure_->local_constants.push_back(constant);
    }
}

Generator::Symbol Generator::Lookup(NameId name) {
    const auto known = symbols_.find(name);
    if (known != symbols_.end()) return known->second;
    if (inside_)
        if (auto symbol = LookupOutside(name)) return *symbol;
    if (auto symbol = LookupMember(name)) return *symbol;
    return LookupGlobal(name);
}

/// For Execute and Eval: what the procedure around them has declared.
std::optional<Generator::Symbol> Generator::LookupOutside(NameId name) {
    for (const auto& constant : inside_->local_constants)
        if (constant.name == name) return Symbol{Symbol::Kind::Constant, kNowhere, constant.value};
    for (const auto& local : inside_->locals) {
        if (local.name != name || !local.declared) continue;
        const auto place = AddLocal(name, Symbol::Kind::Reference);
        procedure_->borrowed.push_back({name, place, true});
        return symbols_[name];
    }
    return std::nullopt;
}

std::optional<Generator::Symbol> Generator::LookupMember(NameId name) const {
    if (!owner_) return std::nullopt;
    const auto found = owner_->members.find(name);
    if (found == owner_->members.end()) return std::nullopt;
    if (!found->second.is_field) return Symbol{Symbol::Kind::Method, kNowhere, {}};
    return Symbol{Symbol::Kind::Variable, MakeOperand(kFieldBank, found->second.field), {}};
}

Generator::Symbol Generator::LookupGlobal(NameId name) {
    if (const auto* global = module_.FindGlobal(name)) {
        const auto place = module_.GlobalPlace(name);
        if (module_.IsConstant(name)) return {Symbol::Kind::Constant, kNowhere, *global};
        if (global->type() == Type::Procedure) return {Symbol::Kind::Procedure, place, {}};
        if (global->type() != Type::Ref) return {Symbol::Kind::Variable, place, {}};
        return {};
    }
    if (const auto* value = FindBuiltinConstant(names_.Spelling(name)))
        return {Symbol::Kind::Constant, kNowhere, *value};
    return {};
}

/// A name that a procedure uses without declaring it becomes a variable of its own, unless the
/// module has one of that name when it runs.
Operand Generator::UnknownLocal(NameId name) {
    if (procedure_->is_text && !inside_) return kNowhere;
    for (const auto& local : procedure_->locals)
        if (local.name == name) return local.place;
    const auto place = local_count_++;
    procedure_->locals.push_back({name, place, false});
    procedure_->unknown.push_back(place);
    if (inside_) procedure_->borrowed.push_back({name, place, false});
    return place;
}

std::uint32_t Generator::AddSite(NameId name, std::uint32_t first, std::size_t count) {
    Site site;
    site.name = name;
    site.first = first;
    site.count = static_cast<std::uint32_t>(count);
    procedure_->sites.push_back(site);
    return static_cast<std::uint32_t>(procedure_->sites.size() - 1);
}

/// A procedure's site looks past the local variables: its own name inside a function is one.
std::uint32_t Generator::AddNameSite(NameId name, std::uint32_t first, std::size_t count,
                                     bool is_procedure) {
    const auto index = AddSite(name, first, count);
    auto& site = procedure_->sites[index];
    if (!is_procedure) site.local = UnknownLocal(name);
    site.global = module_.GlobalPlace(name);
    site.builtin = FindBuiltin(names_.Spelling(name));
    return index;
}

Generator::Symbol Generator::VariableToWrite(NameId name) {
    auto symbol = Lookup(name);
    if (symbol.kind == Symbol::Kind::Variable || symbol.kind == Symbol::Kind::Reference)
        return symbol;
    if (symbol.kind == Symbol::Kind::Unknown) {
        const auto site = AddNameSite(name);
        Put(Op::BindName, kNowhere, kNowhere, site);
        const auto local = procedure_->sites[site].local;
        symbol.place = local != kNowhere ? local : procedure_->sites[site].global;
        symbol.kind = Symbol::Kind::Reference;
        return symbol;
    }
    PutFail(ErrorNumber::IllegalAssignment, name);
    return {Symbol::Kind::Reference, Temporary(), {}};
}

} // namespace zentrel::vbscript
