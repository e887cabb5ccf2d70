#include "partfile/problems.h"

#include <algorithm>
#include <cstddef>

namespace zentrel {
namespace {

constexpr std::size_t kMaxLines = 20;
constexpr std::size_t kMaxValueLength = 60;

// A value as it can stand in a line of a message: no control characters, not too long.
std::string Shown(std::string_view value) {
    std::string text(value.substr(0, kMaxValueLength));
    // A cut inside a character of several bytes would leave half of it.
    if (text.size() < value.size()) {
        while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0U) == 0x80U) {
            text.pop_back();
        }
        if (!text.empty() && static_cast<unsigned char>(text.back()) >= 0xC0U) text.pop_back();
        text += "...";
    }
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20U; },
        '?');
    return text;
}

std::string LineOf(const Problem& problem) {
    std::string line = problem.file;
    if (problem.key.empty()) {
        line += ": " + problem.value;
    } else {
        line += " [" + problem.section + "] " + Shown(problem.key) + '=' + Shown(problem.value);
    }
    return line + " (used " + problem.used + ')';
}

} // namespace

std::string ProblemsMessage(const std::vector<Problem>& problems) {
    std::string message;
    const std::size_t shown = std::min(problems.size(), kMaxLines);
    for (std::size_t i = 0; i < shown; ++i)
        message += LineOf(problems[i]) + '\n';
    if (shown < problems.size()) {
        message += "... and " + std::to_string(problems.size() - shown) + " more\n";
    }
    if (!message.empty()) message.pop_back();
    return message;
}

std::string WriteFailuresMessage(const std::vector<WriteFailure>& failures) {
    std::string message;
    for (const auto& [file, reason] : failures) {
        if (!message.empty()) message += '\n';
        message.append("Could not write ").append(file).append(": ").append(reason);
    }
    return message;
}

} // namespace zentrel
