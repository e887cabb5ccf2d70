#pragma once

namespace zentrel {

class cPart;

/// Shows or hides, in the diagram of PLL `i`, the VCO divider of the linked clock block.
void ShowSynthDiv(cPart& part, int i);
void HideSynthDiv(cPart& part, int i);
/// Which of the two, by display mode, "MODE" and the input mux. For scripts.
void ShowHideSynthMuxLogic(cPart& part, int i);

/// The elements of the extra divider and its entry box, hidden until a script asks for them.
void SetShowExtraDiv(cPart& part, bool show, int iPLL);
void SetShowManualDiv(cPart& part, bool show, int iPLL);

/// Brings the VCO divider of block `iClkDist` into the diagram of PLL `iPLL`: its number, and
/// whether it shows. Positions that aren't there do nothing.
void UpdatePLLandCLKDISTDisplay(cPart& part, int iPLL, int iClkDist);

} // namespace zentrel
