#pragma once

#include <cstdint>
#include <string_view>

#include "transport/usb_packet.h"

/// Reading a register out of the device: the address goes out in a field of a control register, and
/// the device answers with the register's data bits, which are `RegisterLength` - `ControlLength`.
namespace zentrel {

class cPart;

/// Reads one register by its exact name. 0 when the device has no read-back, -1 when there is no
/// such register. The address field keeps the register's address, on the screens too.
double QVX4100ReadRegister(cPart& part, std::string_view sRegister);

/// Reads one field by its key, letters in any case. -2 when the device has no read-back, -1 when
/// there is no such field, -3 when its register is missing. Bits in the control part read 0. Throws
/// Overflow for a field of more than 31 bits that holds more.
std::int32_t ReadRegister(cPart& part, std::string_view sRegister);

/// The exchange on each route: sends the address word, and returns the value. On LPT the device's
/// answer is whatever the status line shows. On USB a missing or short reply gives 0.
double lptCmd_SendReadBack(cPart& part, std::string_view name);
double usbCmd_SendReadBack(cPart& part, std::string_view name);

/// The number of `bits` bits in a read-back reply, low byte first. 0 when the reply has fewer.
double ProcessReadBackValue(const UsbReply& reply, int bits);

} // namespace zentrel
