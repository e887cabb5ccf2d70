#pragma once

#include "clock/clock_panel.h"

namespace zentrel {

class cClkDist;
class cPart;

/// The mouse on a block's diagram.

/// What a click on the diagram asks the window to open.
enum class OpenLoopFilter { No, Modeless, Modal };

/// A click on the terminal of an input, in the modes that show all paths: selects that input.
void ClickTerminal(cClkDist& block, ClockInput terminal);
/// A click on label k: the filter's names open its dialog, the readouts' names lead to the PLL.
OpenLoopFilter ClickClockLabel(cClkDist& block, int k);
/// A click on the PLL's box or its readouts: selects the tab of the linked PLL, not in the mode
/// "Distribution".
void ClickLinkedPLL(const cClkDist& block);
/// A click at a point of the drawing: a terminal, the PLL's box or the loop filter's.
OpenLoopFilter ClickDiagram(cClkDist& block, int x, int y);
/// The mouse moves over the drawing: what reacts to a click there gets the red border.
void HoverDiagram(cClkDist& block, int x, int y);

/// The block whose tab this is, or null.
cClkDist* BlockOfTab(const cPart& part, int tab);

} // namespace zentrel
