#pragma once

#include <span>
#include <string_view>

#include "synth/pll.h"

/// What the entry boxes of a PLL's panel do. `i` is the PLL's position. A text that isn't a usable
/// number changes nothing; the displays then put the model's number back. While no part is loaded
/// nothing happens.
namespace zentrel {

/// One entry box: what the Enter key does in it, and what losing the focus does (null: nothing).
/// The view takes the Enter key and shows every other one.
struct PllBox {
    std::string_view name;
    TextBox PllPanel::*element;
    void (*enter)(cPart& part, int i);
    void (*leave)(cPart& part, int i);
};
/// All of them, in the order of the signal path.
std::span<const PllBox> PllBoxes();
/// The box of that name, letters in any case; null when there is none.
const PllBox* FindPllBox(std::string_view name);

/// The one way in for a typed VCO frequency, in MHz: hands it to the linked block's frequency that
/// the PLL drives, if there is one, and computes N. When the block takes none, N is computed from
/// the frequency that was handed over last. All or nothing; no display follows.
void VCOFrequencySetValue(cPart& part, int pllIndex, double vcofreq);
/// The way in for a typed crystal, in MHz: the PLL's and the linked block's reference. False when
/// the PLL didn't take it, and then nothing has changed.
bool OSCinFrequencySetValue(cPart& part, double freq, int pllIndex);
/// VCOFrequencySetValue with the number in `txtVCO`.
void txtVCO_Apply(cPart& part, int pllIndex);

void txtOsc_Enter(cPart& part, int i);
void txtOsc_Leave(cPart& part, int i);
void txtRCounter_Apply(cPart& part, int i); ///< Enter and leaving alike.
void txtFpd_Apply(cPart& part, int i);      ///< The same.
void txtNCounter_Enter(cPart& part, int i);
void txtNCounter_Leave(cPart& part, int i); ///< The whole counter alone, no fraction.
void txtFractNum_Apply(cPart& part, int i);
void txtFractDen_Apply(cPart& part, int i);
void txtVCO_Enter(cPart& part, int i);
void txtVCO_Leave(cPart& part, int i);
void txtOUT0_DIV_Enter(cPart& part, int i);
void txtOUT1_DIV_Enter(cPart& part, int i);
void txtOUT0_Enter(cPart& part, int i);
void txtOUT1_Enter(cPart& part, int i);
/// The extra divider, which goes into the part file too.
void pllManualDivide_Enter(cPart& part, int i);

} // namespace zentrel
