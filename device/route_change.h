#pragma once

#include <string_view>

namespace zentrel {

class cPart;

/// Moves a device's stored masks from the route `from` to the route `to`, keeping pin numbers and
/// the pins' states; bursts follow through the route observer. `CommMode_Select` stands afterwards
/// as it stood before: the caller changes it.
void RemapToRoute(cPart& part, std::string_view from, std::string_view to);

} // namespace zentrel
