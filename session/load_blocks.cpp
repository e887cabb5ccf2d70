#include "clock/clock_setup.h"
#include "clock/display_mode.h"
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
    cPart& part = frm_.part;
    const auto number = static_cast<std::int16_t>(part.ClkDists.Count());
    cClkDist& block = zentrel::AddClkDist(
        part, Named("CLKDISTS", "CLKDIST", entry.entry, entry.name), std::to_string(entry.vcoCount),
        std::to_string(entry.clockCount), entry.pll, number);
    block.entry = entry.entry;
    SetupCLKDIST(part, entry.nDelay, entry.rDelay, entry.inputDiv, entry.inputDivByp,
                 entry.inputMux, entry.refOscFreq, entry.extSrcFreq, entry.intVcoFreq);
    int channel = 0;
    for (const ClockChannel& names : entry.channels) {
        AddCLKChannel(part, channel++, names.divider, names.delay, names.mux, names.enable);
    }
    block.LF_C3 = entry.lfC3;
    block.LF_R3 = entry.lfR3;
    block.LF_C4 = entry.lfC4;
    block.LF_R4 = entry.lfR4;
    block.LF_C3C4 = entry.lfC3C4;
    block.SetInputDividerName(entry.inputDiv);
    block.InputMuxName = entry.inputMux;
    block.InputDivBypVal = entry.inputDivBypVal;
    block.InputDivBypVal_Clear = entry.inputDivBypClearVal;
    if (SetDisplayMode(part, entry.displayType) == -1) {
        frm_.messages.Show("Failed to set display mode " + entry.displayType);
    }
}

} // namespace zentrel
