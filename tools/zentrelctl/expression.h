#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace zentrel::ctl {

/// One step of an expression: `PrgmBits("N")` is a name with one argument.
struct Step {
    std::string name;
    bool called = false; ///< Has parentheses, maybe empty ones.
    std::vector<std::string> arguments;
    std::vector<bool> quoted; ///< By argument: a text, not a number.
};

/// What can't be read as an expression; tells where.
class BadExpression : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Reads `Part.PrgmBits("N").Value` as scripts write it: names with points between, arguments in
/// parentheses, texts in double or single quotes (a double one inside is doubled).
std::vector<Step> ParseExpression(std::string_view text);

} // namespace zentrel::ctl
