#include "automation/vbscript/generator.h"

#include "automation/vbscript/parser.h"
#include "automation/vbscript/runtime.h"

#include <algorithm>

namespace zentrel::vbscript {
namespace {

constexpr std::size_t kMaxCode = kTemporaryBase - 1;

bool IsTemporary(std::uint32_t field) {
    return field >= kTemporaryBase && field <= kMaxPlace;
}

void AddMember(ClassInfo& info, std::unique_ptr<Procedure> procedure, bool is_default,
               NameTable& names) {
    auto& member = info.members[procedure->name];
    member.name = procedure->name;
    switch (procedure->kind) {
    case ProcedureKind::PropertyLet:
        member.let = procedure.get();
        break;
    case ProcedureKind::PropertySet:
        member.set = procedure.get();
        break;
    default:
        member.get = procedure.get();
    }
    if (is_default) info.default_member = &member;
    if (procedure->name == names.Intern("Class_Initialize")) info.initialize = procedure.get();
    if (procedure->name == names.Intern("Class_Terminate")) info.terminate = procedure.get();
    info.procedures.push_back(std::move(procedure));
}

std::unique_ptr<ClassInfo> CompileClass(const ClassDeclaration& declaration, ScriptModule& module,
                                        const std::shared_ptr<const SourceText>& source,
                                        bool option_explicit) {
    auto info = std::make_unique<ClassInfo>();
    auto& names = module.runtime().names;
    info->name = declaration.name;
    info->spelling = module.runtime().SpellingOf(declaration.name);
    info->module = &module;
    for (const auto& field : declaration.fields) {
        auto& member = info->members[field.variable.name];
        member.name = field.variable.name;
        member.is_field = true;
        member.is_private = field.is_private;
        member.field = static_cast<std::uint32_t>(info->fields.size());
        info->fields.push_back(field.variable);
    }
    // All names first, so that a body may use members that come behind it.
    for (const auto& procedure : declaration.procedures)
        info->members[procedure.name].name = procedure.name;
    for (const auto& procedure : declaration.procedures)
        AddMember(*info,
                  Generator(module, source, info.get(), nullptr, option_explicit)
                      .GenerateProcedure(procedure),
                  procedure.is_default, names);
    return info;
}

} // namespace

CompiledProgram Compile(const Program& program, ScriptModule& module,
                        const std::shared_ptr<const SourceText>& source, const Procedure* inside) {
    CompiledProgram compiled;
    const bool strict = program.option_explicit;
    for (const auto& declaration : program.classes)
        compiled.classes.push_back(CompileClass(declaration, module, source, strict));
    for (const auto& procedure : program.procedures)
        compiled.procedures.push_back(
            Generator(module, source, nullptr, nullptr, strict).GenerateProcedure(procedure));
    const auto* owner = inside ? inside->owner : nullptr;
    compiled.text = Generator(module, source, owner, inside, strict).GenerateText(program);
    return compiled;
}

std::unique_ptr<Procedure> CompileExpression(const Expression& expression, ScriptModule& module,
                                             const std::shared_ptr<const SourceText>& source,
                                             const Procedure* inside) {
    return Generator(module, source, inside ? inside->owner : nullptr, inside, false)
        .GenerateExpression(expression);
}

Generator::Generator(ScriptModule& module, const std::shared_ptr<const SourceText>& source,
                     const ClassInfo* owner, const Procedure* inside, bool option_explicit)
    : module_(module), names_(module.runtime().names), owner_(owner), inside_(inside),
      procedure_(std::make_unique<Procedure>()) {
    procedure_->module = &module;
    procedure_->owner = owner;
    procedure_->source = source;
    procedure_->option_explicit = option_explicit;
    procedure_->borrows = inside != nullptr;
}

std::unique_ptr<Procedure> Generator::GenerateProcedure(const ProcedureDeclaration& declaration) {
    auto& p = *procedure_;
    p.name = declaration.name;
    p.kind = declaration.kind;
    p.is_private = declaration.is_private;
    p.parameter_count = static_cast<std::uint32_t>(declaration.parameters.size());
    for (const auto& parameter : declaration.parameters) {
        p.by_value.push_back(parameter.by_value);
        AddLocal(parameter.name,
                 parameter.by_value ? Symbol::Kind::Variable : Symbol::Kind::Reference);
    }
    p.result = local_count_++;
    const bool gives_value = declaration.kind == ProcedureKind::Function ||
                             declaration.kind == ProcedureKind::PropertyGet;
    if (gives_value) {
        own_name_ = declaration.name;
        const auto clash = symbols_.find(own_name_);
        if (clash != symbols_.end()) RaiseAt(ErrorNumber::NameRedefined, declaration.at);
        symbols_[own_name_] = {Symbol::Kind::Variable, p.result, {}};
        p.locals.push_back({own_name_, p.result, true});
    }
    DeclareLocals(declaration.declarations);
    PutMark(declaration.at);
    EmitBlock(declaration.body, declaration.at);
    Put(Op::Return);
    Finish();
    return std::move(procedure_);
}

std::unique_ptr<Procedure> Generator::GenerateText(const Program& program) {
    procedure_->is_text = true;
    procedure_->result = local_count_++;
    if (inside_) {
        for (const auto& variable : program.declarations.variables) {
            AddLocal(variable.name, Symbol::Kind::Reference);
            procedure_->declares.push_back(variable.name);
        }
        for (const auto& constant : program.declarations.constants)
            symbols_[constant.name] = {Symbol::Kind::Constant, kNowhere, constant.value};
    }
    PutMark({1, 1});
    EmitBlock(program.body, {1, 1});
    Put(Op::Return);
    Finish();
    return std::move(procedure_);
}

std::unique_ptr<Procedure> Generator::GenerateExpression(const Expression& expression) {
    procedure_->is_text = true;
    procedure_->result = local_count_++;
    PutMark(expression.at);
    const auto result = Emit(expression);
    Put(Op::Copy, procedure_->result, result.place, kNowhere, FreeFlag(result, kFreeB));
    Put(Op::Return);
    Finish();
    return std::move(procedure_);
}

// --- code ---

std::size_t Generator::Put(Op op, std::uint32_t a, std::uint32_t b, std::uint32_t c,
                           unsigned flags) {
    if (Here() >= kMaxCode) RaiseAt(ErrorNumber::TooComplex, at_);
    procedure_->code.push_back({op, static_cast<std::uint8_t>(flags), a, b, c});
    return Here() - 1;
}

void Generator::PutFail(ErrorNumber error, NameId name) {
    Put(Op::Fail, static_cast<std::uint32_t>(error), kNowhere, AddSite(name));
}

void Generator::PutMark(Position at) {
    procedure_->marks.push_back({static_cast<std::uint32_t>(Here()), 0, at});
}

Operand Generator::Constant(const Value& value) {
    auto& constants = procedure_->constants;
    const auto place = MakeOperand(kConstantBank, static_cast<std::uint32_t>(constants.size()));
    if (constants.size() >= kMaxPlace) RaiseAt(ErrorNumber::TooComplex, at_);
    if (value.IsInteger()) {
        const auto key = value.AsInteger() * 2 + (value.type() == Type::Long ? 1 : 0);
        const auto [entry, is_new] = integer_constants_.try_emplace(key, place);
        if (!is_new) return entry->second;
    }
    constants.push_back(value);
    return place;
}

Operand Generator::Temporary() {
    return Temporaries(1);
}

std::uint32_t Generator::Temporaries(std::size_t count) {
    const auto first = kTemporaryBase + top_;
    top_ += static_cast<std::uint32_t>(count);
    most_ = std::max(most_, top_);
    if (most_ >= kTemporaryBase / 2) RaiseAt(ErrorNumber::TooComplex, at_);
    return first;
}

Operand Generator::Hidden() {
    return local_count_++;
}

/// Moves the temporaries behind the locals, whose number is known only now.
void Generator::Finish() {
    auto& p = *procedure_;
    const auto move = [this](std::uint32_t& field) {
        if (IsTemporary(field)) field = field - kTemporaryBase + local_count_;
    };
    for (auto& instruction : p.code) {
        move(instruction.a);
        move(instruction.b);
        move(instruction.c);
    }
    for (auto& site : p.sites)
        move(site.first);
    if (local_count_ >= kTemporaryBase / 2) RaiseAt(ErrorNumber::TooComplex, at_);
    p.local_count = local_count_;
    p.frame_size = local_count_ + most_;
}

} // namespace zentrel::vbscript
