#pragma once

#include <string>
#include <string_view>

#include "form/elements.h"

namespace zentrel {

class cPart;

/// What there is to know about a field at a glance, a line each: its name, its register and bits,
/// the present value, the limits, the description. Empty when there is no such field.
std::string FieldTip(const cPart& part, std::string_view field);

/// The same for a register: name, word in hexadecimal, whether it waits to be sent.
std::string RegisterTip(const cPart& part, std::string_view name);

/// What one bit of a register is: its number, and the fields that it belongs to.
std::string BitTip(const cPart& part, std::string_view reg, int bit);

/// What a frequency is, shows and may be: `limits` carries the least as caption, the most as tag.
std::string FrequencyTip(std::string_view name, std::string_view value, std::string_view unit,
                         const Label& limits);

} // namespace zentrel
