#pragma once

#include <cstdint>
#include <string_view>

namespace zentrel {

class cClkDist;
class cPart;
struct ClkDistEntry;

/// What a part load does for each clock block, in this order: AddClkDist, SetupCLKDIST,
/// AddCLKChannel for each channel; then the remaining names go straight into the block, and
/// SetDisplayMode comes last. LoadClkDist does it all.

/// Adds block `ClockDistNumber` (from 0) with its tab, links it with the PLL of that exact name,
/// and shows its channels. Counts come as the file's text and are rounded down; a text that is no
/// 16-bit number counts as the key's default. A PLL that isn't there leaves `LinkedPLLInt` 0.
cClkDist& AddClkDist(cPart& part, std::string_view ClkDistName, std::string_view VCOCount,
                     std::string_view ClockCount, std::string_view sClkPLL_Link,
                     std::int16_t ClockDistNumber);

/// Binds the block-level elements of the block last added to their fields and stores its
/// frequencies in MHz. A missing field of the N delay is told, and ends the operation there.
void SetupCLKDIST(cPart& part, std::string_view sNDelay, std::string_view sRDelay,
                  std::string_view sINPUT_DIV, std::string_view sINPUT_DIV_BYP,
                  std::string_view sINPUT_MUX, double dRefOSC_Freq, double dExtSRC_Freq,
                  double dIntVCO_Freq);

/// Binds a channel of the block last added and fills its lists. A missing field of the delay is
/// told, and leaves the other lists empty. Of channels beyond the tab's rows only the names are
/// kept, and those that a block has no room for are left out.
void AddCLKChannel(cPart& part, int which_channel, std::string_view sClkDivName,
                   std::string_view sClkDelayName, std::string_view sClkMuxName,
                   std::string_view sClkENName);

/// Sets nothing up: the filter's fields are names of the block. Scripts may call it.
inline void SetupLoopFilter(const cPart& part) {
    (void)part;
}

/// A whole block from its entry: everything above, the names that the block keeps, and the display
/// mode. A mode that isn't known is told.
cClkDist& LoadClkDist(cPart& part, const ClkDistEntry& entry);

/// Takes all blocks out of the device.
void ClearClkDist(cPart& part);

} // namespace zentrel
