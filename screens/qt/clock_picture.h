#pragma once

#include "screens/qt/clock_plan.h"
#include "screens/qt/diagram_scene.h"

namespace zentrel {
class cClkDist;
}

namespace zentrel::view {

/// The drawn part of a clock block's tab: symbols, wires, names and units. The selected path stands
/// in the accent colour down to the enabled channels.
DiagramScene ClockPicture(const cClkDist& block, const ClockPlan& plan);

/// The box around which the edit marker stands.
QRect MarkedBox(const ClockPlan& plan, const ClockEditMarker& marker);

} // namespace zentrel::view
