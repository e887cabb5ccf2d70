#pragma once

#include "automation/vbscript/ast.h"

#include <string_view>

namespace zentrel::vbscript {

/// Parses a whole text. Throws ScriptError with number, line and column.
Program ParseProgram(std::u16string_view source, NameTable& names);
/// Parses a text that is one expression (Eval).
ExpressionPtr ParseExpressionText(std::u16string_view source, NameTable& names);

/// Throws a compile error at a place.
[[noreturn]] void RaiseAt(ErrorNumber number, Position at);

/// The parser's state and rules, by recursive descent. Statements, declarations and expressions
/// are a file each.
class Parser {
  public:
    Parser(std::u16string_view source, NameTable& names)
        : names_(names), tokens_(Tokenize(source)) {}

    Program ParseAll();
    ExpressionPtr ParseLoneExpression();

  private:
    /// Where End If may follow a statement without a separator.
    enum class EndIf : std::uint8_t { Separate, SameLine, AnyLine };

    // --- tokens ---
    const Token& Here() const { return tokens_[at_]; }
    const Token& Ahead(std::size_t count = 1) const {
        return tokens_[std::min(at_ + count, tokens_.size() - 1)];
    }
    bool At(Keyword keyword) const { return Here().keyword == keyword; }
    bool At(Symbol symbol) const { return Here().symbol == symbol; }
    bool At(TokenKind kind) const { return Here().kind == kind; }
    template<class Sign>
    bool Take(Sign sign) {
        if (!At(sign)) return false;
        Advance();
        return true;
    }
    template<class Sign>
    void Expect(Sign sign, ErrorNumber error) {
        if (!Take(sign)) Fail(error);
    }
    void Advance() {
        if (at_ + 1 < tokens_.size()) ++at_;
    }
    [[noreturn]] void Fail(ErrorNumber error) const;
    bool AtName() const {
        return At(TokenKind::Word) &&
               (Here().keyword == Keyword::None || Here().keyword >= kFirstPlain);
    }
    NameId TakeName();
    bool AtEndOfStatement() const;
    void ExpectEndOfStatement();
    void SkipSeparators();

    // --- declarations ---
    void ParseOption(Program& program);
    void ParseTopStatement(Program& program);
    bool ParseProcedureStart(Program& program);
    ClassDeclaration ParseClass();
    void ParseClassMember(ClassDeclaration& declared);
    void CheckClassMember(const ClassDeclaration& declared, const ProcedureDeclaration& added);
    ProcedureDeclaration ParseProcedure(bool in_class);
    std::vector<Parameter> ParseParameters();
    ProcedureKind TakePropertyKind();
    Declarator ParseDeclarator();
    std::vector<Declarator> ParseDim(Declarations& into);
    void ParseConst(Declarations& into);
    Value ParseConstantValue();
    void AddVariable(Declarations& into, const Declarator& variable);
    void CheckGlobalNames(const Program& program);

    // --- statements ---
    /// Parses statements up to a token that ends the block it stands in; leaves that token.
    Block ParseBlock();
    void ParseStatementsUpTo(Block& block, bool one_line);
    bool AtBlockEnd() const;
    Statement ParseStatement();
    Statement::Node ParseStatementNode();
    Statement::Node ParseNameStatement();
    CallStatement ParseCallStatement();
    Assignment ParseSet();
    ReDimStatement ParseReDim();
    EraseStatement ParseErase();
    IfStatement ParseIf();
    void ParseOneLineIf(IfStatement& statement);
    void ParseBlockIf(IfStatement& statement);
    SelectStatement ParseSelect();
    Statement::Node ParseFor();
    LoopStatement ParseDo();
    LoopStatement ParseWhile();
    WithStatement ParseWith();
    ExitStatement ParseExit();
    OnErrorStatement ParseOnError();
    void ExpectEnd(Keyword what, ErrorNumber error);

    // --- expressions ---
    ExpressionPtr ParseExpression();
    ExpressionPtr ParseBinary(int level);
    ExpressionPtr ParseComparison();
    ExpressionPtr ParseConcat();
    ExpressionPtr ParseNot();
    ExpressionPtr ParseUnary();
    ExpressionPtr ParsePower();
    ExpressionPtr ParsePostfix();
    ExpressionPtr ParsePostfixOf(ExpressionPtr base);
    ExpressionPtr ParsePrimary();
    ExpressionPtr ParseWord();
    std::vector<ExpressionPtr> ParseArguments();
    std::vector<ExpressionPtr> ParseBareArguments();
    ExpressionPtr MakeNode(Expression::Node node, Position at, int depth_below);

    NameTable& names_;
    std::vector<Token> tokens_;
    std::size_t at_ = 0;
    /// Where the last `(` of the chain just parsed stands, and whether the chain ends with it.
    std::size_t last_open_ = 0;
    bool ends_with_call_ = false;

    Declarations* declarations_ = nullptr; ///< of the body being parsed
    std::optional<ProcedureKind> procedure_;
    bool in_class_ = false;
    int do_depth_ = 0;
    int for_depth_ = 0;
    int with_depth_ = 0;
    int one_line_if_ = 0; ///< statements of a one-line If end at Else and End If, too
    EndIf end_if_ = EndIf::Separate;
    int nesting_ = 0;
    friend class Nesting;
};

/// Counts one level of nesting; error 1001 where texts nest beyond all reason.
class Nesting {
  public:
    explicit Nesting(Parser& parser) : parser_(parser) {
        if (++parser_.nesting_ > kMost) {
            --parser_.nesting_;
            parser_.Fail(ErrorNumber::TooComplex);
        }
    }
    ~Nesting() { --parser_.nesting_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

  private:
    static constexpr int kMost = 120;
    Parser& parser_;
};

} // namespace zentrel::vbscript
