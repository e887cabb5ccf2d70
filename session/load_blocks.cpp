#include "clock/clock_setup.h"
#include "device/number_text.h"
#include "session/frm_part.h"
#include "session/part_loader.h"
#include "synth/pll_setup.h"

namespace zentrel {

// The PLL and clock blocks of a part file, each with its tab. A block that can't be built is left
// out whole.

void PartLoader::AddPLLs() {
    for (const PllEntry& entry : definition_.plls) {
        PllEntry named = entry;
        named.name = Named("PLLS", "PLL", entry.entry, entry.name);
        try {
            LoadPLL(frm_.part, named);
        } catch (const Error&) {
            Note("PLLS", "NAME" + KeyNumber(entry.entry), entry.name, "left out");
        }
    }
}

void PartLoader::AddClkDists() {
    for (const ClkDistEntry& entry : definition_.clkDists) {
        try {
            AddClkDist(entry);
        } catch (const Error&) {
            Note("CLKDISTS", "NAME" + KeyNumber(entry.entry), entry.name, "left out");
        }
    }
}

void PartLoader::AddClkDist(const ClkDistEntry& entry) {
    ClkDistEntry named = entry;
    named.name = Named("CLKDISTS", "CLKDIST", entry.entry, entry.name);
    const cClkDist& block = LoadClkDist(frm_.part, named);
    if (block.LinkedPLLInt == 0 && !block.LinkedPLLName().empty()) {
        Note("CLKDISTS", "PLL" + KeyNumber(entry.entry), entry.pll, "no PLL");
    }
}

} // namespace zentrel
