#pragma once

#include <string_view>

#include "synth/linked_block.h"
#include "synth/pll.h"

/// The coupling of a PLL with the clock block that it drives, seen from the PLL.
namespace zentrel {

/// `clkdistDisplayMode`, letters in any case.
enum class ClockMode {
    AllPaths,    ///< "Engineering" or "VCO_extVCO": the input mux decides.
    InternalVCO, ///< "PLL_internalVCO"
    ExternalVCO, ///< "PLL_externalVCO"
    Distribution,
    Unknown,
};
ClockMode ClockModeOf(const cPart& part);

/// The frequency of a block that its PLL sets: `IntVCO_Freq`, `ExtSRC_Freq` or neither.
enum class DrivenInput { InternalVCO, ExternalSource, None };
/// By display mode; in the modes with all paths by "INPUT_MUX" while "MODE" is 7, else by the
/// selection in `cbClkInputMux`. Throws NotFound when those fields are needed and missing.
DrivenInput DrivenInputOf(const cPart& part, const LinkedBlock* block);
/// Sets that frequency of the block; false when the PLL drives neither.
bool SetDrivenFrequency(const cPart& part, LinkedBlock& block, double mhz);
/// Reads it; 0 for neither.
double DrivenFrequency(const cPart& part, const LinkedBlock& block);

/// The block at the PLL's `LinkedCLKDistInt`, or null.
LinkedBlock* LinkedBlockOf(const cPLL& pll);

/// A tab's caption to a PLL: the one of that ID, else the one that the clock block of that ID
/// names, else null. IDs compare exactly.
cPLL* GetPLLfromCaption(const cPart& part, std::string_view thecaption);

/// Copies the PLL's VCO into its linked block, after N was changed on the PLL's side. Shows
/// "Failed to UpdateCLKforPLL: ..." for a caption that leads to no PLL.
void UpdateCLKforPLL(cPart& part, std::string_view pllname);

/// VCO cycles in one cycle at the N counter's input: the extra divider, times the linked block's
/// VCO divider where the feedback passes it.
double GetPreNdivider(const cPart& part, int PLLi);

} // namespace zentrel
