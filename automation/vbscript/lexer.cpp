#include "automation/vbscript/lexer.h"

#include "automation/vbscript/literals.h"
#include "automation/vbscript/text.h"

#include <unordered_map>

namespace zentrel::vbscript {
namespace {

constexpr std::size_t kMaxIdentifier = 255;

const std::unordered_map<std::u16string, Keyword>& Keywords() {
    using enum Keyword;
    static const std::unordered_map<std::u16string, Keyword> table = {
        {u"and", And},
        {u"byref", ByRef},
        {u"byval", ByVal},
        {u"call", Call},
        {u"case", Case},
        {u"class", Class},
        {u"const", Const},
        {u"dim", Dim},
        {u"do", Do},
        {u"each", Each},
        {u"else", Else},
        {u"elseif", ElseIf},
        {u"empty", Empty},
        {u"end", End},
        {u"eqv", Eqv},
        {u"erase", Erase},
        {u"exit", Exit},
        {u"false", False},
        {u"for", For},
        {u"function", Function},
        {u"get", Get},
        {u"goto", GoTo},
        {u"if", If},
        {u"imp", Imp},
        {u"in", In},
        {u"is", Is},
        {u"let", Let},
        {u"loop", Loop},
        {u"me", Me},
        {u"mod", Mod},
        {u"new", New},
        {u"next", Next},
        {u"not", Not},
        {u"nothing", Nothing},
        {u"null", Null},
        {u"on", On},
        {u"option", Option},
        {u"or", Or},
        {u"preserve", Preserve},
        {u"private", Private},
        {u"public", Public},
        {u"redim", ReDim},
        {u"resume", Resume},
        {u"select", Select},
        {u"set", Set},
        {u"stop", Stop},
        {u"sub", Sub},
        {u"then", Then},
        {u"to", To},
        {u"true", True},
        {u"until", Until},
        {u"wend", Wend},
        {u"while", While},
        {u"with", With},
        {u"xor", Xor},
        {u"default", Default},
        {u"error", Error},
        {u"explicit", Explicit},
        {u"property", Property},
        {u"step", Step},
    };
    return table;
}

bool StartsName(char16_t c) {
    return IsLetter(c) || (c >= 0xAA && c != 0xFEFF && c != 0xFFFE && !IsBlank(c) && c != 0x3000);
}

bool ContinuesName(char16_t c) {
    return StartsName(c) || IsDigit(c) || c == u'_';
}

bool IsBreak(char16_t c) {
    return c == u'\n' || c == u'\r';
}

class Lexer {
  public:
    explicit Lexer(std::u16string_view source) : source_(source) {}

    std::vector<Token> Run() {
        if (Peek() == 0xFEFF) ++at_;
        do {
            tokens_.emplace_back();
            Next(tokens_.back());
        } while (tokens_.back().kind != TokenKind::End);
        return std::move(tokens_);
    }

  private:
    char16_t Peek(std::size_t ahead = 0) const {
        return at_ + ahead < source_.size() ? source_[at_ + ahead] : u'\0';
    }
    bool AtEnd() const { return at_ >= source_.size(); }

    void Next(Token& token) {
        const auto before = at_;
        SkipBlanks();
        token.blank_before = at_ != before;
        token.at = {line_, static_cast<int>(at_ - line_start_) + 1};
        if (AtEnd()) return;
        const auto c = Peek();
        if (IsBreak(c)) {
            TakeBreak();
            token.kind = TokenKind::NewLine;
        } else if (StartsName(c)) {
            TakeWord(token);
        } else if (IsDigit(c) || (c == u'.' && IsDigit(Peek(1)) && !AfterOperand(token))) {
            TakeDecimal(token);
        } else if (c == u'&' && StartsRadix()) {
            TakeRadix(token);
        } else if (c == u'"') {
            TakeString(token);
        } else if (c == u'#') {
            TakeDate(token);
        } else if (c == u'[') {
            TakeBracketed(token);
        } else {
            TakeSymbol(token);
        }
    }

    /// A dot right behind a name or bracket asks for a member, not for a fraction.
    bool AfterOperand(const Token& token) const {
        if (token.blank_before || tokens_.size() < 2) return false;
        const auto& previous = tokens_[tokens_.size() - 2];
        return previous.kind == TokenKind::Word || previous.symbol == Symbol::Close;
    }

    void TakeBreak() {
        if (Peek() == u'\r' && Peek(1) == u'\n') ++at_;
        ++at_;
        ++line_;
        line_start_ = at_;
    }

    void SkipComment() {
        while (!AtEnd() && !IsBreak(Peek()))
            ++at_;
    }

    void SkipBlanks() {
        while (!AtEnd()) {
            const auto c = Peek();
            if (c == u'\'') {
                SkipComment();
            } else if (c == u'_' && ContinuesLine()) {
                TakeBreak();
            } else if ((IsBlank(c) || c == 0x3000) && !IsBreak(c)) {
                ++at_;
            } else {
                return;
            }
        }
    }

    /// `_` with nothing but blanks up to the line's end; leaves `at_` at the break then.
    bool ContinuesLine() {
        auto end = at_ + 1;
        while (end < source_.size() && IsBlank(source_[end]) && !IsBreak(source_[end]))
            ++end;
        if (end >= source_.size() || !IsBreak(source_[end])) return false;
        at_ = end;
        return true;
    }

    void Fail(Token& token, ErrorNumber error) {
        token.kind = TokenKind::Invalid;
        token.error = error;
    }

    void TakeWord(Token& token) {
        const auto start = at_;
        while (ContinuesName(Peek()))
            ++at_;
        token.text = source_.substr(start, at_ - start);
        const auto lower = Lower(token.text);
        const bool member = tokens_.size() > 1 && tokens_[tokens_.size() - 2].symbol == Symbol::Dot;
        if (lower == u"rem" && !member) {
            SkipComment();
            Next(token);
            return;
        }
        if (token.text.size() > kMaxIdentifier) return Fail(token, ErrorNumber::IdentifierTooLong);
        token.kind = TokenKind::Word;
        const auto found = Keywords().find(lower);
        if (found != Keywords().end() && !member) token.keyword = found->second;
    }

    void TakeBracketed(Token& token) {
        const auto start = ++at_;
        while (!AtEnd() && Peek() != u']' && !IsBreak(Peek()))
            ++at_;
        if (Peek() != u']') return Fail(token, ErrorNumber::ExpectedBracket);
        token.text = source_.substr(start, at_++ - start);
        token.kind = TokenKind::Word;
        if (token.text.size() > kMaxIdentifier) Fail(token, ErrorNumber::IdentifierTooLong);
    }

    void SetLiteral(Token& token, const std::optional<Value>& value, ErrorNumber error) {
        if (!value) return Fail(token, error);
        token.kind = TokenKind::Literal;
        token.value = *value;
    }

    void TakeDecimal(Token& token) {
        const auto start = at_;
        while (IsDigit(Peek()))
            ++at_;
        if (Peek() == u'.') ++at_;
        while (IsDigit(Peek()))
            ++at_;
        if ((Peek() | 0x20) == u'e') {
            const std::size_t sign = Peek(1) == u'+' || Peek(1) == u'-' ? 1 : 0;
            if (IsDigit(Peek(1 + sign))) {
                at_ += 1 + sign;
                while (IsDigit(Peek()))
                    ++at_;
            }
        }
        if (StartsName(Peek())) return Fail(token, ErrorNumber::ExpectedEndOfStatement);
        SetLiteral(token, DecimalLiteral(source_.substr(start, at_ - start)),
                   ErrorNumber::InvalidNumber);
    }

    bool StartsRadix() const {
        const auto kind = Peek(1) | 0x20;
        const auto digit = Peek(2);
        if (kind == u'o') return digit >= u'0' && digit <= u'7';
        return kind == u'h' &&
               (IsDigit(digit) || ((digit | 0x20) >= u'a' && (digit | 0x20) <= u'f'));
    }

    void TakeRadix(Token& token) {
        const auto start = at_;
        at_ += 2;
        while (IsDigit(Peek()) || IsLetter(Peek()))
            ++at_;
        if (Peek() == u'&') ++at_;
        SetLiteral(token, RadixLiteral(source_.substr(start, at_ - start)), ErrorNumber::Syntax);
    }

    void TakeString(Token& token) {
        std::u16string text;
        for (++at_;; ++at_) {
            if (AtEnd() || IsBreak(Peek())) return Fail(token, ErrorNumber::UnterminatedString);
            if (Peek() == u'"') {
                if (Peek(1) != u'"') break;
                ++at_;
            }
            text += Peek();
        }
        ++at_;
        token.kind = TokenKind::Literal;
        token.value = Value::String(text);
    }

    void TakeDate(Token& token) {
        const auto start = ++at_;
        while (!AtEnd() && Peek() != u'#' && !IsBreak(Peek()))
            ++at_;
        if (Peek() != u'#') return Fail(token, ErrorNumber::Syntax);
        SetLiteral(token, DateLiteral(source_.substr(start, at_ - start)), ErrorNumber::Syntax);
        ++at_;
    }

    void TakeSymbol(Token& token) {
        const auto first = Peek();
        const auto second = Peek(1);
        ++at_;
        token.kind = TokenKind::Symbol;
        const auto pair = [&](Symbol symbol) {
            ++at_;
            token.symbol = symbol;
        };
        if (first == u':') {
            token.kind = TokenKind::Colon;
        } else if ((first == u'<' && second == u'>') || (first == u'>' && second == u'<')) {
            pair(Symbol::NotEqual);
        } else if ((first == u'<' && second == u'=') || (first == u'=' && second == u'<')) {
            pair(Symbol::LessEqual);
        } else if ((first == u'>' && second == u'=') || (first == u'=' && second == u'>')) {
            pair(Symbol::GreaterEqual);
        } else {
            constexpr std::u16string_view kSingles = u"(),.+-*/\\^&=<>";
            constexpr Symbol kSymbols[] = {
                Symbol::Open,      Symbol::Close, Symbol::Comma,  Symbol::Dot,       Symbol::Plus,
                Symbol::Minus,     Symbol::Times, Symbol::Divide, Symbol::IntDivide, Symbol::Power,
                Symbol::Ampersand, Symbol::Equal, Symbol::Less,   Symbol::Greater};
            const auto place = kSingles.find(first);
            if (place == std::u16string_view::npos || first == 0)
                return Fail(token, ErrorNumber::InvalidCharacter);
            token.symbol = kSymbols[place];
        }
    }

    std::u16string_view source_;
    std::vector<Token> tokens_;
    std::size_t at_ = 0;
    std::size_t line_start_ = 0;
    int line_ = 1;
};

} // namespace

std::vector<Token> Tokenize(std::u16string_view source) {
    return Lexer(source).Run();
}

} // namespace zentrel::vbscript
