#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Ini files in UTF-16, as some editors on Windows store them: little-endian, with a byte order
/// mark. They are read and changed as UTF-8 and stored in UTF-16 again.
namespace zentrel {

/// The text as UTF-8, without the mark; nothing when the mark isn't there. Half a pair of
/// surrogates becomes three bytes of its own, so that nothing is lost on the way back; a single
/// byte at the end counts as a character.
std::optional<std::string> FromUtf16(std::string_view bytes);

/// The way back, with the mark. A byte that is no UTF-8 counts as a Latin-1 character.
std::string ToUtf16(std::string_view text);

} // namespace zentrel
