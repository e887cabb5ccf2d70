#pragma once

#include <cstdint>
#include <string_view>

namespace zentrel {

class cPart;
class cPrgmBits;
class cPrgmPin;
class cRegister;

/// Registers, fields and pins come into the device, each with its place on the screens. The part
/// loader makes a device of these; scripts may add to it.

/// Adds a register at the end of `Registers`, with its row. Throws DuplicateKey.
cRegister& AddRegister(cPart& part, std::string_view RegName, std::int32_t lMask, double value,
                       bool bLowByte);

/// Adds a field; with `disp` a check box in the frame `group`. Where a field has the name already,
/// a message tells it and that field is given instead.
cPrgmBits& AddProgramBit(cPart& part, std::string_view name, std::string_view cReg,
                         std::int16_t strt, std::int16_t l, bool disp, std::string_view group = {});

/// The same with a box and a spinner. Throws DuplicateKey.
cPrgmBits& AddCounter(cPart& part, std::string_view name, std::string_view cReg, std::int16_t strt,
                      std::int16_t l, bool disp, std::string_view group);

/// Gives a field that stands a drop-down list with its texts. Throws NotFound.
void AddList(cPart& part, std::string_view name, std::string_view group);

/// Adds a pin with its elements on the port screen. Throws DuplicateKey.
cPrgmPin& AddProgramPin(cPart& part, std::string_view PrgmBitName, std::int32_t position,
                        bool aReadBackPin);

} // namespace zentrel
