#pragma once

#include "automation/vbscript/errors.h"
#include "automation/vbscript/value.h"

#include <string>
#include <string_view>
#include <vector>

namespace zentrel::vbscript {

struct Position {
    int line = 0;
    int column = 0;
};

/// Words with a meaning of their own. Those behind kFirstPlain serve as names wherever their
/// meaning doesn't arise.
enum class Keyword : std::uint8_t {
    None,
    And,
    ByRef,
    ByVal,
    Call,
    Case,
    Class,
    Const,
    Dim,
    Do,
    Each,
    Else,
    ElseIf,
    Empty,
    End,
    Eqv,
    Erase,
    Exit,
    False,
    For,
    Function,
    Get,
    GoTo,
    If,
    Imp,
    In,
    Is,
    Let,
    Loop,
    Me,
    Mod,
    New,
    Next,
    Not,
    Nothing,
    Null,
    On,
    Option,
    Or,
    Preserve,
    Private,
    Public,
    ReDim,
    Resume,
    Select,
    Set,
    Stop,
    Sub,
    Then,
    To,
    True,
    Until,
    Wend,
    While,
    With,
    Xor,
    Default,
    Error,
    Explicit,
    Property,
    Step,
};
inline constexpr Keyword kFirstPlain = Keyword::Default;

enum class TokenKind : std::uint8_t {
    End,
    NewLine,
    Colon,
    Word,    ///< a name or keyword
    Literal, ///< number, string or date
    Symbol,
    Invalid, ///< something that can't be read; tells why when the parser gets there
};

/// Operators and punctuation.
enum class Symbol : std::uint8_t {
    None,
    Open,
    Close,
    Comma,
    Dot,
    Plus,
    Minus,
    Times,
    Divide,
    IntDivide,
    Power,
    Ampersand,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessEqual,
    GreaterEqual,
};

struct Token {
    TokenKind kind = TokenKind::End;
    Keyword keyword = Keyword::None;
    Symbol symbol = Symbol::None;
    bool blank_before = false;
    Position at;
    std::u16string_view text; ///< of a Word, without brackets
    Value value;              ///< of a Literal
    ErrorNumber error = ErrorNumber::Syntax;
};

/// Splits a text into tokens; the last one is End. Never fails: what can't be read becomes a token
/// that says why. `source` must outlive the tokens.
std::vector<Token> Tokenize(std::u16string_view source);

} // namespace zentrel::vbscript
