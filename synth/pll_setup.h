#pragma once

#include <string_view>

#include "synth/pll.h"

/// Builds a device's PLL blocks from what its file says, and takes them down. An empty text means
/// that the block lacks the item. Names of fields aren't checked here.
namespace zentrel {

struct PllEntry;

/// A whole block from its entry, in the order in which its parts build on each other: everything
/// below. Throws DuplicateKey, and adds nothing, for a name that stands already.
cPLL& LoadPLL(cPart& part, const PllEntry& entry);

/// Adds a block at the end of `PLLs` with a tab of its own. Throws DuplicateKey, and adds nothing,
/// for a name that stands already. `entry` is the block's index in its file.
cPLL& AddPLL(cPart& part, std::string_view pllname, std::string_view NPrgmBits,
             std::string_view RPrgmBits, std::string_view OSC2XPrgmBits, int entry);

// The rest works on the diagram of the block that was added last.

void SetupPLL(cPart& part, std::string_view PDPol, std::string_view CPGain,
              std::string_view CPState, std::string_view NP, std::string_view Doubler,
              std::string_view OSCinPin, std::string_view FoutPin, std::string_view FinPin,
              std::string_view CPoutPin);

/// With an empty `num` the block is an integer PLL, whatever `den` is.
void SetupPLLFraction(cPart& part, std::string_view pllname, std::string_view num,
                      std::string_view den);

/// The same for the block that was added last, which needs no name then.
void SetupFraction(cPart& part, std::string_view num, std::string_view den);

/// Takes the dividers from their fields; a field that isn't there is told, and the divider is 1.
void SetupOutputs(cPart& part, std::string_view pllname, std::string_view OUT0_DIV,
                  std::string_view Out0Pin, std::string_view OUT1_DIV, std::string_view Out1Pin);

/// The crystal in MHz, which a linked clock block gets too. N stays as the file has it.
void SetupCrystal(cPart& part, std::string_view pllname, double mhz);

/// The field that a device needs the reference frequency in.
void SetupOSCBit(cPart& part, std::string_view name);

/// The ten limits, as texts: they are converted at each use, and an empty one limits nothing.
struct PllRanges {
    std::string_view vcoMin = {}, vcoMax = {}; ///< MHz
    std::string_view oscMin = {}, oscMax = {}; ///< MHz
    std::string_view fpdMin = {}, fpdMax = {}; ///< kHz
    std::string_view nCheckType = {};     ///< "SINGLE", "DUAL" or "QUAD", and a digit for a margin.
    std::string_view npMidFrequency = {}; ///< MHz; the sign: which prescaler bit is the faster.
    std::string_view nCheckLowRange = {}, nCheckHighRange = {}; ///< "100" or "23-24".
};
void SetupRanges(cPart& part, const PllRanges& ranges);

/// When a device is left: the device's tabs, and everything that its file put in.
void ClearPLL(cPart& part);

} // namespace zentrel
