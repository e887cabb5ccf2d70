#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Comparing and trimming text without the machine's locale: letters are A to Z.
namespace zentrel {

constexpr char AsciiUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr char AsciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool EqualNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (AsciiLower(a[i]) != AsciiLower(b[i])) return false;
    }
    return true;
}

/// Below, equal to or above 0 as `a` sorts before, with or behind `b`.
constexpr int CompareNoCase(std::string_view a, std::string_view b) {
    const std::size_t common = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t i = 0; i < common; ++i) {
        const char x = AsciiLower(a[i]);
        const char y = AsciiLower(b[i]);
        if (x != y) return x < y ? -1 : 1;
    }
    return a.size() < b.size() ? -1 : static_cast<int>(a.size() > b.size());
}

/// `text` without the blanks, tabs and line ends around it.
constexpr std::string_view TrimBlanks(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n\v\f";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

inline std::string ToUpper(std::string_view text) {
    std::string result(text);
    for (char& c : result)
        c = AsciiUpper(c);
    return result;
}

inline std::string ToLower(std::string_view text) {
    std::string result(text);
    for (char& c : result)
        c = AsciiLower(c);
    return result;
}

/// Hash and equality for maps whose keys don't regard case; look-ups take a string_view.
struct NoCaseHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
        std::size_t hash = 14695981039346656037ULL;
        for (const char c : text) {
            hash ^= static_cast<unsigned char>(AsciiLower(c));
            hash *= 1099511628211ULL;
        }
        return hash;
    }
};

struct NoCaseEqual {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const { return EqualNoCase(a, b); }
};

} // namespace zentrel
