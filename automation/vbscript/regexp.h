#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Regular expressions as the RegExp object has them: a pattern becomes a small program that a
/// backtracking matcher runs on a stack of its own.
namespace zentrel::vbscript::regexp {

enum class Code : std::uint8_t {
    Unit, ///< one unit `a`
    Any,  ///< anything but a line break
    Set,  ///< a unit of set `a`
    LineStart,
    LineEnd,
    WordEdge,
    NoWordEdge,
    Split,    ///< tries `a`, then `b`
    Jump,     ///< to `a`
    Save,     ///< the place into capture `a`
    Mark,     ///< the place into loop register `a`
    Progress, ///< fails if nothing was consumed since Mark `a`
    Back,     ///< what group `a` has matched
    Ahead,    ///< what follows up to AheadEnd matches (`b` 0) or doesn't (1); goes on at `a`
    AheadEnd,
    Match,
};

struct Step {
    Code code = Code::Match;
    std::uint32_t a = 0;
    std::uint32_t b = 0;
};

struct Range {
    char16_t first;
    char16_t last;
};

struct Set {
    std::vector<Range> ranges;
    bool negated = false;
};

struct Program {
    std::vector<Step> steps;
    std::vector<Set> sets;
    std::uint32_t groups = 1; ///< the whole match included
    std::uint32_t marks = 0;
};

/// Throws ScriptError 5017 to 5021 for a malformed pattern, 7 for one that grows beyond reason.
Program Compile(std::u16string_view pattern);

struct Options {
    bool ignore_case = false;
    bool multiline = false;
};

inline constexpr std::size_t kUnset = static_cast<std::size_t>(-1);

/// Where groups begin and end: two places each, kUnset for a group that took no part.
using Captures = std::vector<std::size_t>;

/// The first match at or after `from`. `poll` is called now and then and may throw; error 28 when
/// the matcher would need too much memory.
std::optional<Captures> Search(const Program& program, std::u16string_view text, std::size_t from,
                               Options options, const std::function<void()>& poll);

} // namespace zentrel::vbscript::regexp
