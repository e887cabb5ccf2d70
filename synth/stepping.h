#pragma once

#include <span>
#include <string_view>

#include "synth/pll.h"

/// Everything that nudges a PLL: the spinners of its panel, and the menu "Keyboard Controls".
namespace zentrel {

/// One spinner, by what its two buttons do in the diagram of PLL `i`.
struct PllSpinner {
    std::string_view name;
    Spinner PllPanel::*element;
    void (*up)(cPart& part, int i);
    void (*down)(cPart& part, int i);
};
std::span<const PllSpinner> PllSpinners();
/// The spinner of that name, letters in any case; null when there is none.
const PllSpinner* FindPllSpinner(std::string_view name);

/// The change event of an output divider's spinner: the divider takes the field's state again.
void SpnOUT0_DIV_Change(cPart& part, int i);
void SpnOUT1_DIV_Change(cPart& part, int i);

/// One entry of the menu, in its order. They act on the PLL of the selected tab.
struct StepMenuEntry {
    std::string_view name; ///< `mnuIncN`
    std::string_view caption;
    std::string_view shortcut; ///< "F2", "Ctrl+F"
    void (*run)(cPart& part);
};
std::span<const StepMenuEntry> StepMenu();

// The VCO moves by 1 or 10 steps of N, on a PLL's tab and on the tab of the block that it drives.
void mnuIncN(cPart& part);
void mnuNDec(cPart& part);
void mnuNInc10(cPart& part);
void mnuNDec10(cPart& part);
// The numerator by one step, on the PLL's own tab.
void mnuIncFrac(cPart& part);
void mnuDecFrac(cPart& part);
// Move the focus to a box of the selected PLL tab and apply the number in it.
void mnuVCOFreq(cPart& part);
void mnuFcomp(cPart& part);
void mnuXtal(cPart& part);

} // namespace zentrel
