#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "device/bit_word.h"

/// From new register values to the selected route. Registers go in the order of `Registers`. On any
/// route but "LPT" and "USB" nothing is sent.
namespace zentrel {

class cPart;

/// Sends every register whose change flag is up; reading the flag takes it down.
void LoadChanges(cPart& part);
/// Sends register number `iNum`, counted from 1; any other number does nothing.
void LoadRegisterNumber(cPart& part, std::int16_t iNum);
/// Sends all registers, but for those that a module named "Hook_CheckProgramRegister_LoadAll"
/// answers with 0. On USB the bridge is set up first. A failing script ends it with ScriptFailure.
void LoadAll(cPart& part);
/// Sends one register; change flags stay as they are. Throws NotFound for an unknown name.
void LoadRegister(cPart& part, std::string_view name);
/// Shifts a word out of the parallel port; nothing on USB. Bits above the 32nd are 0.
void LoadValue(cPart& part, std::int32_t val);

/// Fills `PortVector` for a value and returns a copy; the port isn't touched.
std::vector<std::int16_t> GenerateBurstRegister(cPart& part, double dReg);
/// The same for a word at its full width.
std::vector<std::int16_t> GenerateBurstRegister(cPart& part, const BitWord& word);

/// Puts `OutputPinValue` on the port or, on USB, on the bridge's two output ports.
void UpdateOutputPins(cPart& part);

/// The port states of the last word that LoadRegister sent by LPT, in decimal, each with a blank
/// behind it. Made when it is asked for.
std::string PortVectorText(const cPart& part);

/// Menu "Load Device": opens the bridge whatever the route is, sends the pins and all registers.
/// The device watch is off meanwhile and on afterwards.
void LoadDevice(cPart& part);

/// Goes over to the route of option `Index`, 0 for USB and 1 for LPT: remaps the device's pins,
/// says so in the status line and refreshes the port screen. Any other index does nothing.
void CommMode_Click(cPart& part, std::int16_t Index);

} // namespace zentrel
