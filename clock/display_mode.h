#pragma once

#include <string_view>

namespace zentrel {

class cClkDist;
class cPart;
struct ClockPanel;

/// The shape of a block's diagram: which groups of its elements show in which display mode. Where a
/// group only moves, a flag of `panel.layout` says so.

/// Sets the device's display mode and the shape of block 1, and refreshes all displays. Letters in
/// any case. Gives 1, or -1 for a mode that isn't known, which leaves the diagram as it was.
int SetDisplayMode(cPart& part, std::string_view themode);

/// Shows the first N channels and hides the others. More than the block has are told, and then
/// nothing changes.
void Show_n_Channels(cClkDist& block, int N);

/// The PLL and VCO group. The global delay stays hidden on a block without both delays, the bypass
/// box on one without a bypass, the filter's values on one without that component.
void Set_PLL_VCO(cClkDist& block, bool b);
/// VCO divider, internal loop filter and external source; and the VCO's name.
void SetVCOInternal(cClkDist& block, bool b);
/// The external source alone.
void SetExternalSource(cClkDist& block, bool b);
/// A block that only has an external VCO: no input mux.
void Set_External_VCO_Only(cClkDist& block, bool b);
/// A block that only has the internal VCO: no input mux and no external source.
void Set_Internal_VCO_Only(cClkDist& block, bool b);
/// Nothing above the channels: no PLL, VCO, reference and mux.
void MoveEverythingUpForDistOnly(cClkDist& block, bool b);
/// Hides the global delay of a block that hasn't both of them.
void Display_AdjustA2(cClkDist& block);

// For scripts; nothing in the program calls them.
/// Shows the PLL and VCO group of the design drawing, which blocks are made after.
void Show_PLL(ClockPanel& design);
/// Shows or hides all of a block's diagram. What the block lacks stays away.
void Set_CLKDIST_PLL_VCO(ClockPanel& design, cClkDist& block, bool b);
/// Both show all of a block's diagram, and name its two sources "Internal VCO" and "External VCO",
/// in short "Int VCO" and "Ext VCO" where they meet the input mux.
void Show_CLKDIST(cClkDist& block);
void Show_CLKDIST_PLL(cClkDist& block);
/// Other names of Set_PLL_VCO and Set_Internal_VCO_Only.
inline void Show_PLL_alt(cClkDist& block, bool b) {
    Set_PLL_VCO(block, b);
}
inline void Show_intVCO_alt(cClkDist& block, bool b) {
    Set_Internal_VCO_Only(block, b);
}
/// Changes nothing: a refresh leaves no state of the diagram behind that could be put back.
inline void Reset_Display(const cClkDist& block) {
    (void)block;
}

/// Draws the path of the selected input in bold, in the modes that show all paths.
void UpdateCLKBoldPath(cClkDist& block);
/// Draws the path "OSCin", "Fin" or "VCO" in bold, letters in any case; any other none.
void BoldCLKPath(cClkDist& block, std::string_view path);

} // namespace zentrel
