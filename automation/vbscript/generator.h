#pragma once

#include "automation/vbscript/module.h"
#include "automation/vbscript/operators.h"

#include <memory>
#include <optional>

namespace zentrel::vbscript {

/// What a whole text compiles to.
struct CompiledProgram {
    std::unique_ptr<Procedure> text; ///< what stands outside of procedures
    std::vector<std::unique_ptr<Procedure>> procedures;
    std::vector<std::unique_ptr<ClassInfo>> classes;
};

/// Compiles a program into a module whose variables are declared already. `inside` is the procedure
/// whose scope the text runs in (Execute), or null for the module's own.
CompiledProgram Compile(const Program& program, ScriptModule& module,
                        const std::shared_ptr<const SourceText>& source,
                        const Procedure* inside = nullptr);
/// Compiles one expression; its value is the procedure's result.
std::unique_ptr<Procedure> CompileExpression(const Expression& expression, ScriptModule& module,
                                             const std::shared_ptr<const SourceText>& source,
                                             const Procedure* inside);

/// Generates the code of one procedure. Names, expressions and statements are a file each.
class Generator {
  public:
    Generator(ScriptModule& module, const std::shared_ptr<const SourceText>& source,
              const ClassInfo* owner, const Procedure* inside, bool option_explicit);

    std::unique_ptr<Procedure> GenerateProcedure(const ProcedureDeclaration& declaration);
    std::unique_ptr<Procedure> GenerateText(const Program& program);
    std::unique_ptr<Procedure> GenerateExpression(const Expression& expression);

  private:
    /// A name as this body sees it.
    struct Symbol {
        enum class Kind : std::uint8_t {
            Variable,  ///< at `place`
            Reference, ///< at `place`, which may hold a reference
            Constant,  ///< `value`
            Method,    ///< a procedure of the own class
            Procedure, ///< a procedure of the module, at global `place`
            Unknown,   ///< nobody has declared it when this is compiled
        };
        Kind kind = Kind::Unknown;
        Operand place = kNowhere;
        Value value;
    };
    /// A value's place and whether it is a temporary.
    struct Result {
        Operand place = kNowhere;
        bool temporary = false;
        bool hard = false; ///< a bare literal
    };
    /// A construct that Exit leaves, with the hidden locals to clear on the way.
    struct Scope {
        enum class Kind : std::uint8_t { Do, For, Other } kind;
        Operand hidden = kNowhere;
        std::vector<std::size_t> exits;
    };

    // --- names ---
    void DeclareLocals(const Declarations& declarations);
    Operand AddLocal(NameId name, Symbol::Kind kind);
    Symbol Lookup(NameId name);
    std::optional<Symbol> LookupMember(NameId name) const;
    std::optional<Symbol> LookupOutside(NameId name);
    Symbol LookupGlobal(NameId name);
    Operand UnknownLocal(NameId name);
    std::uint32_t AddSite(NameId name, std::uint32_t first = 0, std::size_t count = 0);
    std::uint32_t AddNameSite(NameId name, std::uint32_t first = 0, std::size_t count = 0,
                              bool is_procedure = false);
    /// A variable to write to; emits what makes sure that it is one.
    Symbol VariableToWrite(NameId name);

    // --- expressions ---
    /// The value somewhere; `wanted` is where it would best be.
    Result Emit(const Expression& expression, Operand wanted = kNowhere);
    void EmitTo(const Expression& expression, Operand temporary);
    Result EmitName(NameId name, Operand wanted, bool statement);
    Result EmitMember(const MemberExpression& member, Operand wanted);
    Result EmitCall(const CallExpression& call, Operand wanted, bool statement);
    Result EmitNamedCall(NameId name, const CallExpression& call, Operand wanted, bool statement);
    Result EmitInvoke(const MemberExpression& member, const std::vector<ExpressionPtr>* args,
                      Operand wanted, bool statement);
    Result EmitSelfCall(NameId name, const std::vector<ExpressionPtr>& args, Operand wanted,
                        bool statement);
    Result EmitIndex(Result base, const std::vector<ExpressionPtr>& args, Operand wanted);
    Result EmitUnary(const UnaryExpression& unary, Operand wanted);
    Result EmitBinary(const BinaryExpression& binary, Operand wanted);
    Result EmitConcat(const ConcatExpression& chain, Operand wanted);
    Result EmitObject(const MemberExpression& member);
    std::uint32_t EmitArguments(const std::vector<ExpressionPtr>& args);
    void EmitArgumentsAt(const std::vector<ExpressionPtr>& args, std::uint32_t first);
    void EmitArgument(const Expression* argument, Operand temporary);
    bool EmitReference(const Expression& expression, Operand temporary);
    /// Jumps when the condition is false; gives the jumps to patch.
    std::size_t EmitJumpUnless(const Expression& condition);
    std::size_t EmitJumpIf(const Expression& condition, bool when);

    // --- statements ---
    /// With a mark behind it, so that an error in its last statement goes on there.
    void EmitBlock(const Block& block, Position end);
    void EmitStatement(const Statement& statement);
    void EmitNode(const Assignment& node);
    void EmitNode(const CallStatement& node);
    void EmitNode(const DimStatement& node);
    void EmitNode(const ReDimStatement& node);
    void EmitNode(const EraseStatement& node);
    void EmitNode(const IfStatement& node);
    void EmitNode(const SelectStatement& node);
    void EmitNode(const ForStatement& node);
    void EmitNode(const ForEachStatement& node);
    void EmitNode(const LoopStatement& node);
    void EmitNode(const WithStatement& node);
    void EmitNode(const ExitStatement& node);
    void EmitNode(const OnErrorStatement& node);
    void EmitNode(const NoStatement& node);
    void EmitNameAssignment(NameId name, const Assignment& node);
    void EmitIndexAssignment(const CallExpression& target, const Assignment& node);
    /// `object` null: a member of the own class.
    void EmitMemberAssignment(const MemberExpression* member, NameId name,
                              const std::vector<ExpressionPtr>& args, const Assignment& node);
    void EmitLet(Operand variable, const Expression& value);
    void EmitTests(const SelectStatement::Case& one, Operand subject, bool hard,
                   std::vector<std::size_t>& to_body);
    Operand EmitTargetReference(const Expression& expression);
    void LeaveScopes(std::size_t down_to);
    void CloseLoop();

    // --- code ---
    std::size_t Put(Op op, std::uint32_t a = kNowhere, std::uint32_t b = kNowhere,
                    std::uint32_t c = kNowhere, unsigned flags = 0);
    void PutFail(ErrorNumber error, NameId name);
    std::size_t Here() const { return procedure_->code.size(); }
    void Patch(std::size_t jump) { procedure_->code[jump].a = static_cast<std::uint32_t>(Here()); }
    void PutMark(Position at);
    Operand Constant(const Value& value);
    Operand Temporary();
    std::uint32_t Temporaries(std::size_t count);
    void FreeDownTo(std::uint32_t top) { top_ = top; }
    Operand Hidden();
    /// The place for a result: where it is wanted, or a new temporary.
    Operand Destination(Operand wanted) { return wanted == kNowhere ? Temporary() : wanted; }
    Result Made(Operand place, Operand wanted) const { return {place, wanted == kNowhere}; }
    static unsigned FreeFlag(const Result& result, unsigned flag) {
        return result.temporary ? flag : 0;
    }
    void Finish();

    ScriptModule& module_;
    NameTable& names_;
    const ClassInfo* owner_;
    const Procedure* inside_;
    std::unique_ptr<Procedure> procedure_;
    std::unordered_map<NameId, Symbol> symbols_;
    NameId own_name_ = kNoName; ///< of a function: its result variable
    std::uint32_t local_count_ = 0;
    std::uint32_t top_ = 0; ///< temporaries in use, counted from 0
    std::uint32_t most_ = 0;
    std::vector<Scope> scopes_;
    std::vector<Operand> withs_;
    std::unordered_map<std::int64_t, Operand> integer_constants_;
    Position at_;
};

/// Temporaries are numbered from here while a body is compiled, and moved behind its locals when
/// their count is known.
inline constexpr std::uint32_t kTemporaryBase = 1U << 20;

} // namespace zentrel::vbscript
