#include "automation/vbscript/parser.h"

#include <algorithm>

namespace zentrel::vbscript {
namespace {

constexpr int kMaxDepth = 300;

struct BinaryRow {
    int level;
    Keyword keyword;
    Symbol symbol;
    Operator op;
};

/// Binary operators from the loosest level to the tightest; Not, comparisons and & stand between
/// these levels.
constexpr BinaryRow kBinary[] = {
    {0, Keyword::Imp, Symbol::None, Operator::Imp},
    {1, Keyword::Eqv, Symbol::None, Operator::Eqv},
    {2, Keyword::Xor, Symbol::None, Operator::Xor},
    {3, Keyword::Or, Symbol::None, Operator::Or},
    {4, Keyword::And, Symbol::None, Operator::And},
    {6, Keyword::None, Symbol::Equal, Operator::Equal},
    {6, Keyword::None, Symbol::NotEqual, Operator::NotEqual},
    {6, Keyword::None, Symbol::Less, Operator::Less},
    {6, Keyword::None, Symbol::Greater, Operator::Greater},
    {6, Keyword::None, Symbol::LessEqual, Operator::LessEqual},
    {6, Keyword::None, Symbol::GreaterEqual, Operator::GreaterEqual},
    {6, Keyword::Is, Symbol::None, Operator::Is},
    {8, Keyword::None, Symbol::Plus, Operator::Add},
    {8, Keyword::None, Symbol::Minus, Operator::Subtract},
    {9, Keyword::Mod, Symbol::None, Operator::Mod},
    {10, Keyword::None, Symbol::IntDivide, Operator::IntDivide},
    {11, Keyword::None, Symbol::Times, Operator::Multiply},
    {11, Keyword::None, Symbol::Divide, Operator::Divide},
    {12, Keyword::None, Symbol::Power, Operator::Power},
};
constexpr int kNotLevel = 5;
constexpr int kConcatLevel = 7;
constexpr int kUnaryLevel = 13;

const BinaryRow* FindBinary(const Token& token, int level) {
    for (const auto& row : kBinary)
        if (row.level == level && (row.symbol != Symbol::None ? token.symbol == row.symbol
                                                              : token.keyword == row.keyword))
            return &row;
    return nullptr;
}

int DepthOf(const std::vector<ExpressionPtr>& expressions) {
    int depth = 0;
    for (const auto& e : expressions)
        depth = std::max(depth, e ? e->depth : 0);
    return depth;
}

} // namespace

ExpressionPtr Parser::MakeNode(Expression::Node node, Position at, int depth_below) {
    if (depth_below >= kMaxDepth) RaiseAt(ErrorNumber::TooComplex, at);
    auto expression = std::make_unique<Expression>();
    expression->node = std::move(node);
    expression->at = at;
    expression->depth = depth_below + 1;
    return expression;
}

ExpressionPtr Parser::ParseExpression() {
    const Nesting nesting(*this);
    return ParseBinary(0);
}

ExpressionPtr Parser::ParseBinary(int level) {
    if (level == kNotLevel) return ParseNot();
    if (level == kConcatLevel) return ParseConcat();
    if (level == kUnaryLevel) return ParseUnary();
    auto left = ParseBinary(level + 1);
    while (const auto* row = FindBinary(Here(), level)) {
        const auto at = left->at;
        Advance();
        auto right = ParseBinary(level + 1);
        const int depth = std::max(left->depth, right->depth);
        left = MakeNode(BinaryExpression{row->op, std::move(left), std::move(right)}, at, depth);
    }
    return left;
}

ExpressionPtr Parser::ParseNot() {
    if (!At(Keyword::Not)) return ParseBinary(kNotLevel + 1);
    const Nesting nesting(*this);
    const auto at = Here().at;
    Advance();
    auto operand = ParseNot();
    const int depth = operand->depth;
    return MakeNode(UnaryExpression{Operator::Not, std::move(operand)}, at, depth);
}

ExpressionPtr Parser::ParseConcat() {
    auto first = ParseBinary(kConcatLevel + 1);
    if (!At(Symbol::Ampersand)) return first;
    const auto at = first->at;
    ConcatExpression chain;
    chain.parts.push_back(std::move(first));
    while (Take(Symbol::Ampersand))
        chain.parts.push_back(ParseBinary(kConcatLevel + 1));
    const int depth = DepthOf(chain.parts);
    return MakeNode(std::move(chain), at, depth);
}

ExpressionPtr Parser::ParseUnary() {
    const auto at = Here().at;
    const bool minus = At(Symbol::Minus);
    if (!minus && !At(Symbol::Plus) && !At(Keyword::Not)) return ParsePostfix();
    const Nesting nesting(*this);
    if (At(Keyword::Not)) return ParseNot();
    Advance();
    auto operand = ParseUnary();
    const int depth = operand->depth;
    return MakeNode(UnaryExpression{minus ? Operator::Negate : Operator::Plus, std::move(operand)},
                    at, depth);
}

ExpressionPtr Parser::ParsePostfix() {
    return ParsePostfixOf(ParsePrimary());
}

ExpressionPtr Parser::ParsePostfixOf(ExpressionPtr base) {
    ends_with_call_ = false;
    for (;;) {
        const auto at = base->at;
        if (At(Symbol::Open)) {
            const auto open = at_;
            Advance();
            auto args = ParseArguments();
            const int depth = std::max(base->depth, DepthOf(args));
            base = MakeNode(CallExpression{std::move(base), std::move(args)}, at, depth);
            last_open_ = open;
            ends_with_call_ = true;
        } else if (At(Symbol::Dot) && !(with_depth_ > 0 && Here().blank_before)) {
            // Inside With, `Show .Name` passes a member of the With's object.
            Advance();
            if (!At(TokenKind::Word)) Fail(ErrorNumber::ExpectedIdentifier);
            const auto name = names_.Intern(Here().text);
            Advance();
            const int depth = base->depth;
            base = MakeNode(MemberExpression{std::move(base), name}, at, depth);
            ends_with_call_ = false;
        } else {
            return base;
        }
    }
}

/// Behind `(`, up to and with `)`.
std::vector<ExpressionPtr> Parser::ParseArguments() {
    std::vector<ExpressionPtr> args;
    if (Take(Symbol::Close)) return args;
    for (;;) {
        const bool left_out = At(Symbol::Comma) || (At(Symbol::Close) && !args.empty());
        args.push_back(left_out ? nullptr : ParseExpression());
        if (Take(Symbol::Comma)) continue;
        Expect(Symbol::Close, ErrorNumber::ExpectedClose);
        return args;
    }
}

/// The arguments of a call statement without parentheses.
std::vector<ExpressionPtr> Parser::ParseBareArguments() {
    std::vector<ExpressionPtr> args;
    if (AtEndOfStatement()) return args;
    for (;;) {
        const bool left_out = At(Symbol::Comma) || (AtEndOfStatement() && !args.empty());
        args.push_back(left_out ? nullptr : ParseExpression());
        if (!Take(Symbol::Comma)) return args;
    }
}

ExpressionPtr Parser::ParsePrimary() {
    const auto at = Here().at;
    switch (Here().kind) {
    case TokenKind::Literal: {
        auto value = Here().value;
        Advance();
        return MakeNode(LiteralExpression{std::move(value)}, at, 0);
    }
    case TokenKind::Word:
        return ParseWord();
    case TokenKind::Invalid:
        Fail(Here().error);
    default:
        break;
    }
    if (Take(Symbol::Open)) {
        auto inner = ParseExpression();
        Expect(Symbol::Close, ErrorNumber::ExpectedClose);
        inner->parenthesized = true;
        return inner;
    }
    if (Take(Symbol::Dot)) {
        if (!At(TokenKind::Word)) Fail(ErrorNumber::ExpectedIdentifier);
        const auto name = names_.Intern(Here().text);
        Advance();
        return MakeNode(MemberExpression{nullptr, name}, at, 0);
    }
    Fail(ErrorNumber::ExpectedExpression);
}

ExpressionPtr Parser::ParseWord() {
    const auto at = Here().at;
    const auto literal = [&](Value value) {
        Advance();
        return MakeNode(LiteralExpression{std::move(value)}, at, 0);
    };
    switch (Here().keyword) {
    case Keyword::True:
        return literal(Value::Boolean(true));
    case Keyword::False:
        return literal(Value::Boolean(false));
    case Keyword::Empty:
        return literal(Value());
    case Keyword::Null:
        return literal(Value::Null());
    case Keyword::Nothing:
        return literal(Value::Nothing());
    case Keyword::Me:
        Advance();
        return MakeNode(MeExpression{}, at, 0);
    case Keyword::New:
        Advance();
        return MakeNode(NewExpression{TakeName()}, at, 0);
    default:
        break;
    }
    if (!AtName()) Fail(ErrorNumber::ExpectedExpression);
    return MakeNode(NameExpression{TakeName()}, at, 0);
}

} // namespace zentrel::vbscript
