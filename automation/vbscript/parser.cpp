#include "automation/vbscript/parser.h"

#include "automation/vbscript/operators.h"
#include "automation/vbscript/vbscript.h"

#include <algorithm>
#include <unordered_set>

namespace zentrel::vbscript {

void RaiseAt(ErrorNumber number, Position at) {
    ScriptError error(static_cast<int>(number));
    error.info.line = at.line;
    error.info.column = at.column;
    throw error;
}

Program ParseProgram(std::u16string_view source, NameTable& names) {
    return Parser(source, names).ParseAll();
}

ExpressionPtr ParseExpressionText(std::u16string_view source, NameTable& names) {
    return Parser(source, names).ParseLoneExpression();
}

void Parser::Fail(ErrorNumber error) const {
    RaiseAt(At(TokenKind::Invalid) ? Here().error : error, Here().at);
}

NameId Parser::TakeName() {
    if (!AtName()) Fail(ErrorNumber::ExpectedIdentifier);
    const auto name = names_.Intern(Here().text);
    Advance();
    return name;
}

ExpressionPtr Parser::ParseLoneExpression() {
    SkipSeparators();
    auto expression = ParseExpression();
    SkipSeparators();
    if (!At(TokenKind::End)) Fail(ErrorNumber::ExpectedEndOfStatement);
    return expression;
}

Program Parser::ParseAll() {
    Program program;
    declarations_ = &program.declarations;
    SkipSeparators();
    ParseOption(program);
    for (SkipSeparators(); !At(TokenKind::End); SkipSeparators()) {
        ParseTopStatement(program);
        ExpectEndOfStatement();
    }
    CheckGlobalNames(program);
    return program;
}

void Parser::ParseOption(Program& program) {
    while (Take(Keyword::Option)) {
        Expect(Keyword::Explicit, ErrorNumber::Syntax);
        program.option_explicit = true;
        ExpectEndOfStatement();
        SkipSeparators();
    }
}

void Parser::ParseTopStatement(Program& program) {
    const auto at = Here().at;
    switch (Here().keyword) {
    case Keyword::Class:
        program.classes.push_back(ParseClass());
        return;
    case Keyword::Loop:
        Fail(ErrorNumber::LoopWithoutDo);
    case Keyword::Next:
        Fail(ErrorNumber::UnexpectedNext);
    case Keyword::Property: {
        const auto next = Ahead().keyword;
        if (next == Keyword::Get || next == Keyword::Let || next == Keyword::Set)
            Fail(ErrorNumber::MustBeInsideClass);
        break;
    }
    case Keyword::Sub:
    case Keyword::Function:
        program.procedures.push_back(ParseProcedure(false));
        return;
    case Keyword::Public:
    case Keyword::Private: {
        Advance();
        if (At(Keyword::Const)) {
            Advance();
            ParseConst(program.declarations);
        } else if (At(Keyword::Sub) || At(Keyword::Function)) {
            program.procedures.push_back(ParseProcedure(false));
        } else {
            program.body.push_back({DimStatement{ParseDim(program.declarations)}, at});
        }
        return;
    }
    default:
        break;
    }
    program.body.push_back(ParseStatement());
}

/// Variables, constants, classes and procedures of a text share one set of names; only a procedure
/// may come again, and the last one counts.
void Parser::CheckGlobalNames(const Program& program) {
    std::unordered_set<NameId> taken;
    for (const auto& v : program.declarations.variables)
        taken.insert(v.name);
    for (const auto& c : program.declarations.constants)
        taken.insert(c.name);
    for (const auto& c : program.classes)
        if (!taken.insert(c.name).second) RaiseAt(ErrorNumber::NameRedefined, c.at);
    for (const auto& p : program.procedures)
        if (taken.contains(p.name)) RaiseAt(ErrorNumber::NameRedefined, p.at);
}

void Parser::AddVariable(Declarations& into, const Declarator& variable) {
    const auto same_name = [&](const auto& other) { return other.name == variable.name; };
    if (std::any_of(into.variables.begin(), into.variables.end(), same_name) ||
        std::any_of(into.constants.begin(), into.constants.end(), same_name))
        RaiseAt(ErrorNumber::NameRedefined, variable.at);
    into.variables.push_back(variable);
}

Declarator Parser::ParseDeclarator() {
    Declarator variable{kNoName, Here().at, false, {}};
    variable.name = TakeName();
    variable.is_array = Take(Symbol::Open);
    if (!variable.is_array || Take(Symbol::Close)) return variable;
    do {
        const auto& bound = Here().value;
        if (!At(TokenKind::Literal) || !bound.IsInteger()) Fail(ErrorNumber::ExpectedInteger);
        variable.bounds.push_back(bound.AsInteger());
        Advance();
    } while (Take(Symbol::Comma));
    Expect(Symbol::Close, ErrorNumber::ExpectedClose);
    return variable;
}

std::vector<Declarator> Parser::ParseDim(Declarations& into) {
    std::vector<Declarator> variables;
    do {
        variables.push_back(ParseDeclarator());
        AddVariable(into, variables.back());
    } while (Take(Symbol::Comma));
    return variables;
}

void Parser::ParseConst(Declarations& into) {
    do {
        const Declarator name{kNoName, Here().at, false, {}};
        ConstantDeclaration constant{TakeName(), {}, name.at};
        Expect(Symbol::Equal, ErrorNumber::ExpectedEquals);
        constant.value = ParseConstantValue();
        AddVariable(into, {constant.name, constant.at, false, {}});
        into.variables.pop_back();
        into.constants.push_back(std::move(constant));
    } while (Take(Symbol::Comma));
}

/// A literal with signs and parentheses around it.
Value Parser::ParseConstantValue() {
    const Nesting nesting(*this);
    if (Take(Symbol::Open)) {
        auto value = ParseConstantValue();
        Expect(Symbol::Close, ErrorNumber::ExpectedClose);
        return value;
    }
    if (Take(Symbol::Minus)) {
        const auto at = Here().at;
        const auto value = ParseConstantValue();
        if (value.IsObject() || value.IsString()) RaiseAt(ErrorNumber::ExpectedLiteral, at);
        return Negate(value);
    }
    if (Take(Symbol::Plus)) return ParseConstantValue();
    const auto at = Here().at;
    const bool name = AtName() || At(Keyword::Me) || At(Keyword::New);
    if (name) Fail(ErrorNumber::ExpectedLiteral);
    const auto literal = ParsePrimary();
    const auto* value = As<LiteralExpression>(*literal);
    if (!value) RaiseAt(ErrorNumber::ExpectedLiteral, at);
    return value->value;
}

std::vector<Parameter> Parser::ParseParameters() {
    std::vector<Parameter> parameters;
    if (!Take(Symbol::Open)) return parameters;
    if (Take(Symbol::Close)) return parameters;
    do {
        const bool by_value = At(Keyword::ByVal);
        if (by_value || At(Keyword::ByRef)) Advance();
        const auto at = Here().at;
        const auto name = TakeName();
        if (Take(Symbol::Open)) Expect(Symbol::Close, ErrorNumber::ExpectedClose);
        for (const auto& other : parameters)
            if (other.name == name) RaiseAt(ErrorNumber::NameRedefined, at);
        parameters.push_back({name, by_value});
    } while (Take(Symbol::Comma));
    Expect(Symbol::Close, ErrorNumber::ExpectedClose);
    return parameters;
}

ProcedureKind Parser::TakePropertyKind() {
    Advance();
    const auto keyword = Here().keyword;
    Advance();
    if (keyword == Keyword::Get) return ProcedureKind::PropertyGet;
    if (keyword == Keyword::Let) return ProcedureKind::PropertyLet;
    if (keyword == Keyword::Set) return ProcedureKind::PropertySet;
    --at_;
    Fail(ErrorNumber::ExpectedLetSetGet);
}

ProcedureDeclaration Parser::ParseProcedure(bool in_class) {
    ProcedureDeclaration procedure{};
    const auto keyword = Here().keyword;
    if (keyword == Keyword::Property && in_class) {
        procedure.kind = TakePropertyKind();
    } else {
        Advance();
        procedure.kind = keyword == Keyword::Sub ? ProcedureKind::Sub : ProcedureKind::Function;
    }
    procedure.at = Here().at;
    procedure.name = TakeName();
    procedure.parameters = ParseParameters();
    const bool setter = procedure.kind == ProcedureKind::PropertyLet ||
                        procedure.kind == ProcedureKind::PropertySet;
    if (setter && procedure.parameters.empty()) Fail(ErrorNumber::PropertyNeedsArgument);

    procedure_ = procedure.kind;
    auto* outer = std::exchange(declarations_, &procedure.declarations);
    for (const auto& p : procedure.parameters)
        procedure.declarations.variables.push_back({p.name, procedure.at, false, {}});
    procedure.body = ParseBlock();
    procedure.declarations.variables.erase(
        procedure.declarations.variables.begin(),
        procedure.declarations.variables.begin() +
            static_cast<std::ptrdiff_t>(procedure.parameters.size()));
    declarations_ = outer;
    procedure_.reset();

    Expect(Keyword::End, ErrorNumber::ExpectedEnd);
    switch (procedure.kind) {
    case ProcedureKind::Sub:
        Expect(Keyword::Sub, ErrorNumber::ExpectedSub);
        break;
    case ProcedureKind::Function:
        Expect(Keyword::Function, ErrorNumber::ExpectedFunction);
        break;
    default:
        Expect(Keyword::Property, ErrorNumber::ExpectedProperty);
    }
    return procedure;
}

} // namespace zentrel::vbscript
