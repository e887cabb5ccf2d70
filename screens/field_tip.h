#pragma once

#include <string>
#include <string_view>

namespace zentrel {

class cPart;

/// What there is to know about a field at a glance, a line each: its name, its register and bits,
/// the present value, the limits, the description. Empty when there is no such field.
std::string FieldTip(const cPart& part, std::string_view field);

/// The same for a register: name, word in hexadecimal, whether it waits to be sent.
std::string RegisterTip(const cPart& part, std::string_view name);

/// What one bit of a register is: its number, and the fields that it belongs to.
std::string BitTip(const cPart& part, std::string_view reg, int bit);

} // namespace zentrel
