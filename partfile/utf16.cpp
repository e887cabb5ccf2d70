#include "partfile/utf16.h"

#include <array>
#include <cstdint>

namespace zentrel {
namespace {

constexpr std::string_view kMark = "\xFF\xFE";
constexpr std::uint32_t kFirstHigh = 0xD800;
constexpr std::uint32_t kFirstLow = 0xDC00;
constexpr std::uint32_t kLastLow = 0xDFFF;
constexpr std::uint32_t kFirstPaired = 0x10000;
constexpr std::uint32_t kLast = 0x10FFFF;

std::uint32_t ByteAt(std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]);
}

std::uint32_t UnitAt(std::string_view bytes, std::size_t at) {
    return ByteAt(bytes, at) | (at + 1 < bytes.size() ? ByteAt(bytes, at + 1) << 8U : 0U);
}

void AppendUtf8(std::uint32_t character, std::string& text) {
    // The lead byte's mark, and how many bytes of six bits follow it.
    const auto [lead, tail] = character < 0x80           ? std::pair(0x00U, 0)
                              : character < 0x800        ? std::pair(0xC0U, 1)
                              : character < kFirstPaired ? std::pair(0xE0U, 2)
                                                         : std::pair(0xF0U, 3);
    text += static_cast<char>(lead | character >> (6U * static_cast<unsigned>(tail)));
    for (int i = tail - 1; i >= 0; --i) {
        const std::uint32_t bits = character >> (6U * static_cast<unsigned>(i)) & 0x3FU;
        text += static_cast<char>(0x80U | bits);
    }
}

struct Character {
    std::uint32_t code;
    std::size_t length;
};

Character CharacterAt(std::string_view text, std::size_t at) {
    constexpr std::array<std::uint32_t, 5> kSmallest{0, 0, 0x80, 0x800, kFirstPaired};
    const std::uint32_t first = ByteAt(text, at);
    const std::size_t length = first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (length == 1 || first >= 0xF8 || at + length > text.size()) return {first, 1};
    std::uint32_t code = first & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        const std::uint32_t next = ByteAt(text, at + i);
        if ((next & 0xC0U) != 0x80U) return {first, 1};
        code = code << 6U | (next & 0x3FU);
    }
    if (code < kSmallest[length] || code > kLast) return {first, 1};
    return {code, length};
}

void AppendUnit(std::uint32_t unit, std::string& bytes) {
    bytes += static_cast<char>(unit & 0xFFU);
    bytes += static_cast<char>(unit >> 8U);
}

} // namespace

std::optional<std::string> FromUtf16(std::string_view bytes) {
    if (!bytes.starts_with(kMark)) return {};
    std::string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t at = kMark.size(); at < bytes.size(); at += 2) {
        std::uint32_t character = UnitAt(bytes, at);
        if (character >= kFirstHigh && character < kFirstLow && at + 2 < bytes.size()) {
            const std::uint32_t low = UnitAt(bytes, at + 2);
            if (low >= kFirstLow && low <= kLastLow) {
                character = kFirstPaired + ((character - kFirstHigh) << 10U) + (low - kFirstLow);
                at += 2;
            }
        }
        AppendUtf8(character, text);
    }
    return text;
}

std::string ToUtf16(std::string_view text) {
    std::string bytes(kMark);
    bytes.reserve(kMark.size() + text.size() * 2);
    for (std::size_t at = 0; at < text.size();) {
        const auto [code, length] = CharacterAt(text, at);
        at += length;
        if (code < kFirstPaired) {
            AppendUnit(code, bytes);
        } else {
            AppendUnit(kFirstHigh + ((code - kFirstPaired) >> 10U), bytes);
            AppendUnit(kFirstLow + ((code - kFirstPaired) & 0x3FFU), bytes);
        }
    }
    return bytes;
}

} // namespace zentrel
