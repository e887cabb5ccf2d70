#pragma once

#include <string>
#include <string_view>

/// Names as elements of object paths, which hold letters, digits and underscores alone.
namespace zentrel::dbus {

/// A name as a path element: every byte that isn't a letter or digit, and a digit at the front,
/// becomes "_" and two small hexadecimal digits. "CLK 0" is "CLK_200", no name at all "_".
std::string PathElement(std::string_view name);

/// The name behind a path element. An underscore that begins no such code stands for itself.
std::string NameOf(std::string_view element);

/// The position that an element of digits alone names, or 0.
int PositionIn(std::string_view element);

} // namespace zentrel::dbus
