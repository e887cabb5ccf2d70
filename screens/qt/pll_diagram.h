#pragma once

#include <map>
#include <string_view>

#include <QRect>

#include "screens/qt/diagram_scene.h"
#include "synth/pll.h"

namespace zentrel::view {

/// How one PLL is drawn just now: what it lacks is left out, and the rest moves together.
struct PllDiagram {
    DiagramScene scene;
    /// Where the widgets stand, by the names of their elements; no place, nothing to show.
    std::map<std::string_view, QRect> places;
};

/// Lays a PLL out, left to right: reference, doubler, R, phase detector, charge pump, filter, VCO;
/// below it, right to left, the way back through the dividers; the outputs at the lower right.
PllDiagram LayOutPll(const cPLL& pll);

} // namespace zentrel::view
