#include "automation/vbscript/parser.h"

namespace zentrel::vbscript {

bool Parser::AtEndOfStatement() const {
    const auto& token = Here();
    if (token.kind == TokenKind::NewLine || token.kind == TokenKind::Colon ||
        token.kind == TokenKind::End)
        return true;
    if (one_line_if_ > 0 && token.keyword == Keyword::Else) return true;
    if (token.keyword != Keyword::End) return false;
    switch (Ahead().keyword) {
    case Keyword::If:
        return one_line_if_ > 0 || end_if_ != EndIf::Separate;
    case Keyword::Sub:
    case Keyword::Function:
    case Keyword::Property:
        return procedure_.has_value();
    default:
        return false;
    }
}

void Parser::ExpectEndOfStatement() {
    if (At(TokenKind::Invalid)) Fail(Here().error);
    if (!AtEndOfStatement()) Fail(ErrorNumber::ExpectedEndOfStatement);
}

void Parser::SkipSeparators() {
    while (At(TokenKind::NewLine) || At(TokenKind::Colon))
        Advance();
}

/// The words that end the block around them.
bool Parser::AtBlockEnd() const {
    switch (Here().keyword) {
    case Keyword::Else:
    case Keyword::ElseIf:
    case Keyword::Next:
    case Keyword::Loop:
    case Keyword::Wend:
    case Keyword::Case:
    case Keyword::End:
        return true;
    default:
        return At(TokenKind::End);
    }
}

Block Parser::ParseBlock() {
    const Nesting nesting(*this);
    const int outer_line = std::exchange(one_line_if_, 0);
    const auto outer_end_if = std::exchange(end_if_, EndIf::Separate);
    Block block;
    ParseStatementsUpTo(block, false);
    one_line_if_ = outer_line;
    end_if_ = outer_end_if;
    return block;
}

/// One line: up to the line's end or Else; otherwise up to a word that ends a block.
void Parser::ParseStatementsUpTo(Block& block, bool one_line) {
    for (;;) {
        while (At(TokenKind::Colon) || (!one_line && At(TokenKind::NewLine)))
            Advance();
        if (AtBlockEnd() || At(TokenKind::NewLine)) return;
        block.push_back(ParseStatement());
        ExpectEndOfStatement();
        if (end_if_ == EndIf::SameLine && At(TokenKind::NewLine)) end_if_ = EndIf::Separate;
    }
}

Statement Parser::ParseStatement() {
    const Nesting nesting(*this);
    Statement statement;
    statement.at = Here().at;
    statement.node = ParseStatementNode();
    return statement;
}

Statement::Node Parser::ParseStatementNode() {
    switch (Here().keyword) {
    case Keyword::Dim:
        Advance();
        return DimStatement{ParseDim(*declarations_)};
    case Keyword::Const:
        Advance();
        ParseConst(*declarations_);
        return NoStatement{};
    case Keyword::ReDim:
        return ParseReDim();
    case Keyword::Erase:
        return ParseErase();
    case Keyword::If:
        return ParseIf();
    case Keyword::Select:
        return ParseSelect();
    case Keyword::For:
        return ParseFor();
    case Keyword::Do:
        return ParseDo();
    case Keyword::While:
        return ParseWhile();
    case Keyword::With:
        return ParseWith();
    case Keyword::Exit:
        return ParseExit();
    case Keyword::On:
        return ParseOnError();
    case Keyword::Call:
        return ParseCallStatement();
    case Keyword::Set:
        return ParseSet();
    case Keyword::Stop:
        Advance();
        return NoStatement{};
    default:
        return ParseNameStatement();
    }
}

/// An assignment, or a call without the word Call.
Statement::Node Parser::ParseNameStatement() {
    if (At(TokenKind::Invalid)) Fail(Here().error);
    const bool starts = AtName() || At(Symbol::Dot) || At(Keyword::Me);
    if (!starts) Fail(ErrorNumber::ExpectedStatement);
    auto target = ParsePostfix();
    if (Take(Symbol::Equal)) return Assignment{std::move(target), ParseExpression(), false};
    const auto at = target->at;
    if (ends_with_call_) {
        // `f (x) + 1, y`: what stood in parentheses was only the first argument's beginning.
        auto& call = std::get<CallExpression>(target->node);
        const bool complete = AtEndOfStatement();
        if (complete && call.args.size() > 1) Fail(ErrorNumber::CannotUseParentheses);
        if (complete && call.args.empty()) return CallStatement{std::move(target)};
        target = std::move(call.base);
        at_ = last_open_;
    }
    auto args = ParseBareArguments();
    int depth = target->depth;
    for (const auto& arg : args)
        depth = std::max(depth, arg ? arg->depth : 0);
    return CallStatement{MakeNode(CallExpression{std::move(target), std::move(args)}, at, depth)};
}

CallStatement Parser::ParseCallStatement() {
    Advance();
    if (!AtName() && !At(Symbol::Dot) && !At(Keyword::Me)) Fail(ErrorNumber::ExpectedIdentifier);
    auto call = ParsePostfix();
    if (!ends_with_call_) {
        const auto at = call->at;
        const int depth = call->depth;
        call = MakeNode(CallExpression{std::move(call), {}}, at, depth);
    }
    return {std::move(call)};
}

Assignment Parser::ParseSet() {
    Advance();
    if (!AtName() && !At(Symbol::Dot) && !At(Keyword::Me)) Fail(ErrorNumber::ExpectedIdentifier);
    auto target = ParsePostfix();
    Expect(Symbol::Equal, ErrorNumber::ExpectedEquals);
    return {std::move(target), ParseExpression(), true};
}

ReDimStatement Parser::ParseReDim() {
    Advance();
    ReDimStatement statement;
    statement.preserve = Take(Keyword::Preserve);
    do {
        ReDimStatement::Item item{TakeName(), {}};
        Expect(Symbol::Open, ErrorNumber::ExpectedOpen);
        item.bounds = ParseArguments();
        if (item.bounds.empty()) Fail(ErrorNumber::ExpectedExpression);
        for (const auto& bound : item.bounds)
            if (!bound) Fail(ErrorNumber::ExpectedExpression);
        statement.items.push_back(std::move(item));
    } while (Take(Symbol::Comma));
    return statement;
}

EraseStatement Parser::ParseErase() {
    Advance();
    EraseStatement statement;
    do
        statement.targets.push_back(ParsePostfix());
    while (Take(Symbol::Comma));
    return statement;
}

void Parser::ExpectEnd(Keyword what, ErrorNumber error) {
    Expect(Keyword::End, ErrorNumber::ExpectedEnd);
    Expect(what, error);
}

IfStatement Parser::ParseIf() {
    Advance();
    IfStatement statement;
    auto condition = ParseExpression();
    const auto at = condition->at;
    Expect(Keyword::Then, ErrorNumber::ExpectedThen);
    statement.branches.push_back({std::move(condition), at, {}});
    if (At(TokenKind::NewLine) || (At(TokenKind::Colon) && Ahead().kind == TokenKind::NewLine))
        ParseBlockIf(statement);
    else
        ParseOneLineIf(statement);
    return statement;
}

void Parser::ParseOneLineIf(IfStatement& statement) {
    ++one_line_if_;
    auto& body = statement.branches.back().body;
    ParseStatementsUpTo(body, true);
    if (body.empty() && !At(Keyword::Else)) Fail(ErrorNumber::ExpectedStatement);
    if (Take(Keyword::Else)) ParseStatementsUpTo(statement.otherwise.emplace(), true);
    --one_line_if_;
    if (At(Keyword::End) && Ahead().keyword == Keyword::If) {
        Advance();
        Advance();
    }
}

void Parser::ParseBlockIf(IfStatement& statement) {
    // Here an Else or a one-line ElseIf may be followed by its End If without a separator.
    const auto parse_behind = [this](Block& body, EndIf rule) {
        const Nesting nesting(*this);
        const int outer_line = std::exchange(one_line_if_, 0);
        const auto outer = std::exchange(end_if_, rule);
        ParseStatementsUpTo(body, false);
        end_if_ = outer;
        one_line_if_ = outer_line;
    };
    statement.branches.back().body = ParseBlock();
    while (Take(Keyword::ElseIf)) {
        auto condition = ParseExpression();
        const auto at = condition->at;
        Expect(Keyword::Then, ErrorNumber::ExpectedThen);
        statement.branches.push_back({std::move(condition), at, {}});
        parse_behind(statement.branches.back().body,
                     At(TokenKind::NewLine) ? EndIf::Separate : EndIf::SameLine);
    }
    if (Take(Keyword::Else)) parse_behind(statement.otherwise.emplace(), EndIf::AnyLine);
    ExpectEnd(Keyword::If, ErrorNumber::ExpectedIf);
}

SelectStatement Parser::ParseSelect() {
    Advance();
    Expect(Keyword::Case, ErrorNumber::ExpectedCase);
    SelectStatement statement;
    statement.subject = ParseExpression();
    ExpectEndOfStatement();
    SkipSeparators();
    bool had_else = false;
    while (At(Keyword::Case)) {
        if (had_else) Fail(ErrorNumber::ExpectedEnd);
        const auto at = Here().at;
        Advance();
        SelectStatement::Case one{{}, at, {}};
        had_else = Take(Keyword::Else);
        if (!had_else) {
            do
                one.tests.push_back(ParseExpression());
            while (Take(Symbol::Comma));
        }
        one.body = ParseBlock();
        statement.cases.push_back(std::move(one));
    }
    ExpectEnd(Keyword::Select, ErrorNumber::ExpectedSelect);
    return statement;
}

Statement::Node Parser::ParseFor() {
    Advance();
    const bool each = Take(Keyword::Each);
    const auto variable = TakeName();
    if (At(Symbol::Open) || At(Symbol::Dot)) Fail(ErrorNumber::InvalidForVariable);
    ++for_depth_;
    const auto body = [this] {
        ExpectEndOfStatement();
        auto block = ParseBlock();
        Expect(Keyword::Next, ErrorNumber::ExpectedNext);
        --for_depth_;
        return block;
    };
    if (each) {
        Expect(Keyword::In, ErrorNumber::ExpectedIn);
        ForEachStatement statement{variable, ParseExpression(), {}};
        statement.body = body();
        return statement;
    }
    Expect(Symbol::Equal, ErrorNumber::ExpectedEquals);
    ForStatement statement{variable, ParseExpression(), nullptr, nullptr, {}};
    Expect(Keyword::To, ErrorNumber::ExpectedTo);
    statement.to = ParseExpression();
    if (Take(Keyword::Step)) statement.step = ParseExpression();
    statement.body = body();
    return statement;
}

LoopStatement Parser::ParseDo() {
    Advance();
    LoopStatement loop;
    const auto condition = [&] {
        loop.condition_at = Here().at;
        loop.until = At(Keyword::Until);
        Advance();
        loop.condition = ParseExpression();
    };
    loop.test_first = At(Keyword::While) || At(Keyword::Until);
    if (loop.test_first)
        condition();
    else if (!AtEndOfStatement())
        Fail(ErrorNumber::ExpectedWhileUntilEnd);
    ExpectEndOfStatement();
    ++do_depth_;
    loop.body = ParseBlock();
    --do_depth_;
    Expect(Keyword::Loop, ErrorNumber::ExpectedLoop);
    if (At(Keyword::While) || At(Keyword::Until)) {
        if (loop.test_first) Fail(ErrorNumber::ExpectedEndOfStatement);
        condition();
    }
    return loop;
}

LoopStatement Parser::ParseWhile() {
    Advance();
    LoopStatement loop;
    loop.test_first = true;
    loop.is_do = false;
    loop.condition_at = Here().at;
    loop.condition = ParseExpression();
    ExpectEndOfStatement();
    loop.body = ParseBlock();
    Expect(Keyword::Wend, ErrorNumber::ExpectedWend);
    return loop;
}

WithStatement Parser::ParseWith() {
    Advance();
    WithStatement statement{ParseExpression(), {}};
    ExpectEndOfStatement();
    ++with_depth_;
    statement.body = ParseBlock();
    --with_depth_;
    ExpectEnd(Keyword::With, ErrorNumber::ExpectedWith);
    return statement;
}

ExitStatement Parser::ParseExit() {
    Advance();
    const auto exit = [&](bool allowed, ExitKind kind) {
        if (!allowed) Fail(ErrorNumber::InvalidExit);
        Advance();
        return ExitStatement{kind};
    };
    const bool property =
        procedure_ && *procedure_ != ProcedureKind::Sub && *procedure_ != ProcedureKind::Function;
    switch (Here().keyword) {
    case Keyword::Do:
        return exit(do_depth_ > 0, ExitKind::Do);
    case Keyword::For:
        return exit(for_depth_ > 0, ExitKind::For);
    case Keyword::Sub:
        return exit(procedure_ == ProcedureKind::Sub, ExitKind::Procedure);
    case Keyword::Function:
        return exit(procedure_ == ProcedureKind::Function, ExitKind::Procedure);
    case Keyword::Property:
        return exit(property, ExitKind::Procedure);
    default:
        Fail(ErrorNumber::InvalidExit);
    }
}

OnErrorStatement Parser::ParseOnError() {
    Advance();
    Expect(Keyword::Error, ErrorNumber::Syntax);
    if (Take(Keyword::Resume)) {
        Expect(Keyword::Next, ErrorNumber::ExpectedNext);
        return {true};
    }
    Expect(Keyword::GoTo, ErrorNumber::Syntax);
    const bool zero =
        At(TokenKind::Literal) && Here().value.IsInteger() && Here().value.AsInteger() == 0;
    if (!zero) Fail(ErrorNumber::Syntax);
    Advance();
    return {false};
}

} // namespace zentrel::vbscript
