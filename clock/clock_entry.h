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

} // namespace zentrel
