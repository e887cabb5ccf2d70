#pragma once

#include <string>
#include <string_view>

#include <QString>

namespace zentrel::view {

/// Text of the model as the toolkit has it. Part files may be UTF-8 or Windows-1252: what isn't
/// valid UTF-8 is read byte by byte.
QString FromModel(std::string_view text);

inline std::string ToModel(const QString& text) {
    return text.toStdString();
}

/// The same for a caption in which "&" is a character of its own and not an access key.
QString Literal(std::string_view text);

/// Text for a tooltip: lines stay, the first of several stands out, long ones wrap, nothing in it
/// is markup.
QString TipText(std::string_view text);

/// An element's name with its index in brackets: "txtRegBits(3)".
QString IndexedName(const char* name, std::size_t index);

} // namespace zentrel::view
