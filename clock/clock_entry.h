#pragma once

#include <string>
#include <string_view>

#include "clock/clock_panel.h"

namespace zentrel {

class cClkDist;
class cPart;

/// What the engineer does on a block's tab. Each operation changes the model, refreshes what is
/// told for it, and loads: always, or only with `mnuAutoReloadChange` checked. Boxes and spinners
/// do nothing while no part is loaded; lists and the bypass box nothing while `Updating` is true.
/// A change that fails is told, and leaves words and frequencies as they were.

/// A key other than Enter in a box: shows the edit marker around it. `channel` is for ChannelDiv.
void TypeInClockBox(cClkDist& block, ClockBox box, int channel = 0);
/// Enter in a box takes its text. A text that is no number, or a number beyond 64 bits, changes
/// nothing and sends nothing; the box shows the model again.
void EnterClockBox(cClkDist& block, ClockBox box, int channel = 0);
/// The focus went to another element of the window. Each box keeps less of its text than with
/// Enter: the reference and the VCO stay within the block, the VCO divider isn't taken at all.
void LeaveClockBox(cClkDist& block, ClockBox box, int channel = 0);

/// The spinners: one step of the divider's field.
void StepInputDivider(cClkDist& block, bool up);
void StepChannelDivider(cClkDist& block, int channel, bool up);

/// Gives the block's lists and its bypass box their click handlers.
void ConnectClockLists(cClkDist& block);
/// The common part of those: `BitValue` of a field becomes the index chosen in `element`.
void ChooseListEntry(cClkDist& block, std::string_view element, const std::string& field,
                     int index);

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
