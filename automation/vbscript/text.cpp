#include "automation/vbscript/text.h"

#include <algorithm>

namespace zentrel::vbscript {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void PutUnits(std::u16string& out, char32_t point) {
    if (point < 0x10000) {
        out += static_cast<char16_t>(point);
        return;
    }
    point -= 0x10000;
    out += static_cast<char16_t>(0xD800 + (point >> 10));
    out += static_cast<char16_t>(0xDC00 + (point & 0x3FF));
}

/// Reads one code point and moves `at` behind it; a malformed byte counts alone.
char32_t TakeUtf8(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80) return lead;
    const int more = lead >= 0xF0 && lead < 0xF5   ? 3
                     : lead >= 0xE0 && lead < 0xF0 ? 2
                     : lead >= 0xC2 && lead < 0xE0 ? 1
                                                   : 0;
    if (more == 0 || at + static_cast<std::size_t>(more) > text.size()) return kReplacement;
    char32_t point = lead & (0x3FU >> more);
    for (int i = 0; i < more; ++i) {
        const auto next = static_cast<unsigned char>(text[at + static_cast<std::size_t>(i)]);
        if ((next & 0xC0) != 0x80) return kReplacement;
        point = point << 6 | (next & 0x3F);
    }
    constexpr char32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
    if (point < kLeast[more] || point > 0x10FFFF || (point >= 0xD800 && point < 0xE000))
        return kReplacement;
    at += static_cast<std::size_t>(more);
    return point;
}

void PutUtf8(std::string& out, char32_t point) {
    const auto put = [&](char32_t byte) { out += static_cast<char>(byte); };
    if (point < 0x80) {
        put(point);
    } else if (point < 0x800) {
        put(0xC0 | point >> 6);
        put(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        put(0xE0 | point >> 12);
        put(0x80 | (point >> 6 & 0x3F));
        put(0x80 | (point & 0x3F));
    } else {
        put(0xF0 | point >> 18);
        put(0x80 | (point >> 12 & 0x3F));
        put(0x80 | (point >> 6 & 0x3F));
        put(0x80 | (point & 0x3F));
    }
}

} // namespace

std::u16string Utf8ToUtf16(std::string_view text) {
    std::u16string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();)
        PutUnits(out, TakeUtf8(text, at));
    return out;
}

std::string Utf16ToUtf8(std::u16string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t point = text[i];
        if (point >= 0xD800 && point < 0xE000) {
            const bool pair = point < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
                              text[i + 1] < 0xE000;
            point =
                pair ? 0x10000 + ((point - 0xD800) << 10) + (text[++i] - 0xDC00U) : kReplacement;
        }
        PutUtf8(out, point);
    }
    return out;
}

char16_t Lower(char16_t c) {
    if (c < 0x80) return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
    const auto shift = [c](int by) { return static_cast<char16_t>(c + by); };
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return shift(32);
    if (c == 0x178) return 0xFF;
    if ((c >= 0x100 && c <= 0x12F) || (c >= 0x132 && c <= 0x137) || (c >= 0x14A && c <= 0x177))
        return c % 2 == 0 ? shift(1) : c;
    if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) return c % 2 ? shift(1) : c;
    if (c >= 0x391 && c <= 0x3AB && c != 0x3A2) return shift(32);
    if (c >= 0x410 && c <= 0x42F) return shift(32);
    if (c >= 0x400 && c <= 0x40F) return shift(80);
    return c;
}

char16_t Upper(char16_t c) {
    if (c < 0x80) return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c;
    const auto shift = [c](int by) { return static_cast<char16_t>(c - by); };
    if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return shift(32);
    if (c == 0xFF) return 0x178;
    if ((c >= 0x100 && c <= 0x12F) || (c >= 0x132 && c <= 0x137) || (c >= 0x14A && c <= 0x177))
        return c % 2 ? shift(1) : c;
    if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) return c % 2 == 0 ? shift(1) : c;
    if (c >= 0x3B1 && c <= 0x3CB && c != 0x3C2) return shift(32);
    if (c >= 0x430 && c <= 0x44F) return shift(32);
    if (c >= 0x450 && c <= 0x45F) return shift(80);
    return c;
}

std::u16string Lower(std::u16string_view text) {
    std::u16string out(text);
    for (auto& c : out)
        c = Lower(c);
    return out;
}

int CompareText(std::u16string_view left, std::u16string_view right, bool ignore_case) {
    if (!ignore_case) return left.compare(right);
    const auto shared = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < shared; ++i) {
        const auto a = Lower(left[i]);
        const auto b = Lower(right[i]);
        if (a != b) return a < b ? -1 : 1;
    }
    return left.size() < right.size() ? -1 : left.size() > right.size() ? 1 : 0;
}

std::size_t FindText(std::u16string_view text, std::u16string_view part, std::size_t from,
                     bool ignore_case) {
    if (!ignore_case) return text.find(part, from);
    if (from > text.size()) return std::u16string_view::npos;
    const auto found =
        std::search(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(), part.begin(),
                    part.end(), [](char16_t a, char16_t b) { return Lower(a) == Lower(b); });
    return found == text.end() && !part.empty() ? std::u16string_view::npos
                                                : static_cast<std::size_t>(found - text.begin());
}

std::u16string Widen(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

} // namespace zentrel::vbscript
