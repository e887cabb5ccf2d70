#pragma once

#include <string>

namespace zentrel {

class cPart;

/// Clicks on the labels of PLL `i`'s diagram: each switches the field that its label is bound to.
/// A label without a field does nothing.
void lblDoubler_Click(cPart& part, int i);
void lblNPrescale_Click(cPart& part, int i);
void lblPDPol_Click(cPart& part, int i);
void lblCPState_Click(cPart& part, int i);
/// The left button steps the gain up, any other one down.
void lblCPGain_MouseUp(cPart& part, int i, bool leftButton);

/// "Show Bits": a message that lists the fields behind the diagram.
void txtGetPLLBits_Click(cPart& part, int i);
std::string PLLBitsText(const cPart& part, int i);

} // namespace zentrel
