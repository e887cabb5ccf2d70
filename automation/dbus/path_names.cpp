#include "automation/dbus/path_names.h"

#include <charconv>

#include "device/text.h"

namespace zentrel::dbus {
namespace {

constexpr std::string_view kHex = "0123456789abcdef";

bool IsLetter(char c) {
    const char lower = AsciiLower(c);
    return lower >= 'a' && lower <= 'z';
}

} // namespace

std::string PathElement(std::string_view name) {
    if (name.empty()) return "_";
    std::string element;
    for (const char c : name) {
        if (IsLetter(c) || (IsDigit(c) && !element.empty())) {
            element += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        element += {'_', kHex[byte >> 4U], kHex[byte & 0xFU]};
    }
    return element;
}

std::string NameOf(std::string_view element) {
    if (element == "_") return {};
    std::string name;
    for (std::size_t i = 0; i < element.size(); ++i) {
        const bool code = element[i] == '_' && i + 2 < element.size();
        const auto high = code ? kHex.find(element[i + 1]) : std::string_view::npos;
        const auto low = code ? kHex.find(element[i + 2]) : std::string_view::npos;
        if (high == std::string_view::npos || low == std::string_view::npos) {
            name += element[i];
            continue;
        }
        name += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return name;
}

int PositionIn(std::string_view element) {
    int position = 0;
    const char* end = element.data() + element.size();
    const auto [stop, error] = std::from_chars(element.data(), end, position);
    return error == std::errc() && stop == end && position > 0 ? position : 0;
}

} // namespace zentrel::dbus
