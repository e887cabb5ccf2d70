#include "tools/zentrelctl/expression.h"

#include "device/text.h"

namespace zentrel::ctl {

namespace {

bool IsNameCharacter(char c) {
    const char lower = AsciiLower(c);
    return (lower >= 'a' && lower <= 'z') || IsDigit(c) || c == '_';
}

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    std::vector<Step> Steps() {
        std::vector<Step> steps{ReadStep()};
        while (Take('.'))
            steps.push_back(ReadStep());
        if (at_ < text_.size()) Fail("a point or the end");
        return steps;
    }

  private:
    Step ReadStep() {
        Step step;
        SkipBlanks();
        while (at_ < text_.size() && IsNameCharacter(text_[at_]))
            step.name += text_[at_++];
        if (step.name.empty()) Fail("a name");
        step.called = Take('(');
        if (step.called && !Take(')')) {
            do {
                ReadArgument(step);
            } while (Take(','));
            if (!Take(')')) Fail("a comma or a closing parenthesis");
        }
        return step;
    }

    void ReadArgument(Step& step) {
        SkipBlanks();
        const char quote = at_ < text_.size() ? text_[at_] : '\0';
        const bool quoted = quote == '"' || quote == '\'';
        std::string argument;
        if (quoted) {
            ++at_;
            while (!EndOfText(quote))
                argument += text_[at_++];
        } else {
            while (at_ < text_.size() && text_[at_] != ',' && text_[at_] != ')')
                argument += text_[at_++];
            argument = TrimBlanks(argument);
            if (argument.empty()) Fail("an argument");
        }
        step.arguments.push_back(std::move(argument));
        step.quoted.push_back(quoted);
    }

    // At the closing quote, which it takes; of a doubled one it leaves the second as a character.
    bool EndOfText(char quote) {
        if (at_ >= text_.size()) Fail("the closing quote");
        if (text_[at_] != quote) return false;
        ++at_;
        return at_ >= text_.size() || text_[at_] != quote;
    }

    bool Take(char wanted) {
        SkipBlanks();
        if (at_ >= text_.size() || text_[at_] != wanted) return false;
        ++at_;
        return true;
    }

    void SkipBlanks() {
        while (at_ < text_.size() && text_[at_] == ' ')
            ++at_;
    }

    [[noreturn]] void Fail(std::string_view wanted) const {
        throw BadExpression("\"" + std::string(text_) + "\": " + std::string(wanted) +
                            " is wanted at character " + std::to_string(at_ + 1));
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

} // namespace

std::vector<Step> ParseExpression(std::string_view text) {
    return Reader(text).Steps();
}

} // namespace zentrel::ctl
