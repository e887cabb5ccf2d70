#pragma once

#include <functional>
#include <string_view>

namespace zentrel {

class cClkDist;
class cPart;

/// Runs a change of the model that `element` of a block's tab asks for. One that fails changes
/// nothing and is told; false then. The failure of a hook travels on.
bool ChangeModel(cClkDist& block, std::string_view element, const std::function<void()>& change);

/// Sends what changed, if `mnuAutoReloadChange` is checked.
void LoadIfAutomatic(cPart& part);

} // namespace zentrel
