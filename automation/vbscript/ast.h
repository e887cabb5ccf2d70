#pragma once

#include "automation/vbscript/lexer.h"
#include "automation/vbscript/names.h"

#include <memory>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

/// The tree between parser and code generator.
namespace zentrel::vbscript {

struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;

enum class Operator : std::uint8_t {
    Add,
    Subtract,
    Multiply,
    Divide,
    IntDivide,
    Mod,
    Power,
    And,
    Or,
    Xor,
    Eqv,
    Imp,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessEqual,
    GreaterEqual,
    Is,
    Not,
    Negate,
    Plus,
};

/// A constant written out; what comparisons call a hard operand.
struct LiteralExpression {
    Value value;
};
struct NameExpression {
    NameId name;
};
/// `object.name`; without an object, the innermost With's.
struct MemberExpression {
    ExpressionPtr object;
    NameId name;
};
/// `base(args)`: a call, an element, or a default member. A null argument was left out.
struct CallExpression {
    ExpressionPtr base;
    std::vector<ExpressionPtr> args;
};
struct UnaryExpression {
    Operator op;
    ExpressionPtr operand;
};
struct BinaryExpression {
    Operator op;
    ExpressionPtr left;
    ExpressionPtr right;
};
/// `a & b & c`, a chain at once.
struct ConcatExpression {
    std::vector<ExpressionPtr> parts;
};
struct NewExpression {
    NameId class_name;
};
struct MeExpression {};

struct Expression {
    using Node = std::variant<LiteralExpression, NameExpression, MemberExpression, CallExpression,
                              UnaryExpression, BinaryExpression, ConcatExpression, NewExpression,
                              MeExpression>;
    Node node;
    Position at;
    int depth = 1;              ///< of the tree below, itself included
    bool parenthesized = false; ///< passed by value, then
};

template<class T>
const T* As(const Expression& expression) {
    return std::get_if<T>(&expression.node);
}

struct Statement;
using Block = std::vector<Statement>;

/// `target = value` or `Set target = value`.
struct Assignment {
    ExpressionPtr target;
    ExpressionPtr value;
    bool set = false;
};
struct CallStatement {
    ExpressionPtr call;
};
struct Declarator {
    NameId name;
    Position at;
    bool is_array = false;
    std::vector<std::int64_t> bounds; ///< empty for `name()`
};
struct DimStatement {
    std::vector<Declarator> variables;
};
struct ReDimStatement {
    struct Item {
        NameId name;
        std::vector<ExpressionPtr> bounds;
    };
    std::vector<Item> items;
    bool preserve = false;
};
struct EraseStatement {
    std::vector<ExpressionPtr> targets;
};
struct IfStatement {
    struct Branch {
        ExpressionPtr condition;
        Position at;
        Block body;
    };
    std::vector<Branch> branches;
    std::optional<Block> otherwise;
};
struct SelectStatement {
    struct Case {
        std::vector<ExpressionPtr> tests; ///< empty for Case Else
        Position at;
        Block body;
    };
    ExpressionPtr subject;
    std::vector<Case> cases;
};
struct ForStatement {
    NameId variable;
    ExpressionPtr from;
    ExpressionPtr to;
    ExpressionPtr step; ///< null: 1
    Block body;
};
struct ForEachStatement {
    NameId variable;
    ExpressionPtr collection;
    Block body;
};
/// Do and While: a condition before, behind, or none.
struct LoopStatement {
    ExpressionPtr condition;
    Position condition_at;
    bool until = false;
    bool test_first = false;
    bool is_do = true; ///< Exit Do leaves it
    Block body;
};
struct WithStatement {
    ExpressionPtr object;
    Block body;
};
enum class ExitKind : std::uint8_t { Do, For, Procedure };
struct ExitStatement {
    ExitKind kind;
};
struct OnErrorStatement {
    bool resume_next;
};
/// Const and Stop do nothing when they run.
struct NoStatement {};

struct Statement {
    using Node =
        std::variant<Assignment, CallStatement, DimStatement, ReDimStatement, EraseStatement,
                     IfStatement, SelectStatement, ForStatement, ForEachStatement, LoopStatement,
                     WithStatement, ExitStatement, OnErrorStatement, NoStatement>;
    Node node;
    Position at;
};

struct ConstantDeclaration {
    NameId name;
    Value value;
    Position at;
};

/// What a body of code declares, wherever in it the declarations stand.
struct Declarations {
    std::vector<Declarator> variables;
    std::vector<ConstantDeclaration> constants;
};

enum class ProcedureKind : std::uint8_t { Sub, Function, PropertyGet, PropertyLet, PropertySet };

struct Parameter {
    NameId name;
    bool by_value;
};

struct ProcedureDeclaration {
    ProcedureKind kind;
    NameId name;
    Position at;
    std::vector<Parameter> parameters;
    bool is_private = false;
    bool is_default = false;
    Declarations declarations;
    Block body;
};

struct FieldDeclaration {
    Declarator variable;
    bool is_private = false;
};

struct ClassDeclaration {
    NameId name;
    Position at;
    std::vector<FieldDeclaration> fields;
    std::vector<ProcedureDeclaration> procedures;
};

struct Program {
    bool option_explicit = false;
    Declarations declarations;
    std::vector<ProcedureDeclaration> procedures;
    std::vector<ClassDeclaration> classes;
    Block body;
};

} // namespace zentrel::vbscript
