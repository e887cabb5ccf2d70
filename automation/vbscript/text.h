#pragma once

#include <string>
#include <string_view>

namespace zentrel::vbscript {

/// Malformed bytes become U+FFFD.
std::u16string Utf8ToUtf16(std::string_view text);
/// Lone surrogates become U+FFFD.
std::string Utf16ToUtf8(std::u16string_view text);

/// Case of one unit, for Latin, Greek and Cyrillic letters, without regard to any locale.
char16_t Lower(char16_t unit);
char16_t Upper(char16_t unit);
std::u16string Lower(std::u16string_view text);

/// Less than 0, 0 or more than 0, by unit or without regard to case.
int CompareText(std::u16string_view left, std::u16string_view right, bool ignore_case);

/// Where `part` begins in `text` at or after `from`; npos when nowhere.
std::size_t FindText(std::u16string_view text, std::u16string_view part, std::size_t from,
                     bool ignore_case);

constexpr bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}
constexpr bool IsLetter(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}
/// What may stand around a number in a string.
constexpr bool IsBlank(char16_t c) {
    return c == u' ' || (c >= u'\t' && c <= u'\r') || c == u'\u00A0';
}

/// Widens text that is known to be ASCII.
std::u16string Widen(std::string_view ascii);

} // namespace zentrel::vbscript
