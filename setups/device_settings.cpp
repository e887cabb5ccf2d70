#include "setups/device_settings.h"

#include <string>

#include "clock/clk_dist.h"
#include "device/number_text.h"
#include "device/part.h"
#include "setups/restore_steps.h"
#include "synth/pll.h"

namespace zentrel {

bool SaveDeviceSettings(cPart& part, IniFiles& files) {
    const std::string file = files.Folder().PartFilePath(part.ID);
    WriteScope scope(files);
    if (files.View(file).Text().empty()) return true;
    const auto write = [&](std::string_view section, const std::string& key,
                           const std::string& value) {
        files.SetPrivateSetting(file, section, key, value);
    };
    const auto number = [](double value) { return NumberToText(value); };

    write("SETUP", "COMM_MODE", part.session().CommMode_Select);
    write("SETUP", "ADDRESS", number(part.PortAddress));
    write("SETUP", "CLOCK", number(part.ClockPosition()));
    write("SETUP", "DATA", number(part.DataPosition()));
    write("SETUP", "LE", number(part.LEPosition()));
    for (const cPrgmPin& pin : part.PrgmPins) {
        const std::string nn = KeyNumber(pin.entry);
        write("PINS", "LOCATION" + nn,
              number(pin.ReadBack() ? part.InputPinPositionINI : pin.Position()));
        write("PINS", "ENABLED" + nn, pin.Enabled() ? "True" : "False");
    }
    for (const cRegister& reg : part.Registers) {
        write("REGISTERS", "VALUE" + KeyNumber(reg.entry), WordText(reg.Value()));
    }
    for (const cPLL& pll : part.PLLs) {
        // A box that no refresh could fill says nothing about the crystal.
        if (pll.panel.txtOsc.Text.empty()) continue;
        write("PLLS", "OSCIN" + KeyNumber(pll.entry), pll.panel.txtOsc.Text);
    }
    for (const cClkDist& block : part.ClkDists) {
        const std::string nn = KeyNumber(block.entry);
        write("CLKDISTS", "RefOSC_Freq" + nn, number(block.RefOSC_Freq()));
        write("CLKDISTS", "ExtSRC_Freq" + nn, number(block.ExtSRC_Freq()));
        write("CLKDISTS", "IntVCO_Freq" + nn, number(block.IntVCO_Freq()));
    }
    return scope.Commit();
}

} // namespace zentrel
