#pragma once

#include <cstdint>
#include <span>

#include "device/bit_word.h"
#include "transport/port_driver.h"

/// The LPT route: a word becomes 2 * `RegisterLength` + 3 port states, which are written one after
/// the other. A state's bits 0 to 7 lie on the data port at `PortAddress`, bits 8 to 11 on the
/// control port two addresses above.
namespace zentrel {

class cPart;

/// Fills `PortVector`: for each bit, most significant first, data and then the clock edge that the
/// device shifts on; then all low; then latch enable, with the trigger pin when it is enabled; last
/// latch enable once more if `keepLatch`, else all low. Of a word longer than `RegisterLength` the
/// upper bits go out.
void FillPortVector(cPart& part, const BitWord& word, bool keepLatch);

/// Writes the states over the output pins as they stand. The trigger pin is low until the state
/// that raises it.
void SendPortVector(cPart& part, std::span<const std::int16_t> states);

/// One state: the data port, then the control port, whose bits 0, 1 and 3 the hardware inverts.
inline void WritePortState(PortDriver& port, std::uint16_t address, int state) {
    port.WritePort(address, static_cast<std::uint8_t>(state & 0xFF));
    port.WritePort(static_cast<std::uint16_t>(address + 2),
                   static_cast<std::uint8_t>(((state & 0xF00) >> 8) ^ 0xB));
}

/// Writes the states as they stand, the other pins low: the replay of a burst.
void SendStates(cPart& part, std::span<const std::int16_t> states);

/// The device's `PortAddress` as an address.
std::uint16_t DataPort(const cPart& part);
/// The output pins without the trigger pin's bits, if that pin is enabled.
std::int16_t PinsWithoutTrigger(const cPart& part);

/// The address behind choice `option` of LPT1, LPT2, LPT3 and Other.
constexpr std::int16_t PortAddressOfOption(int option) {
    return static_cast<std::int16_t>(888 - 256 * (option & 1) + 34 * (option & 2));
}

/// Opens the port driver at the program's start: one that is open already is told in a message and
/// closed first. `lpt_port_access` takes the result; a failure shows nothing.
void StartPortDriver(cPart& part);
void StopPortDriver(cPart& part);
/// Closes an open driver and opens it anew; returns and stores whether that worked.
bool ReopenPortDriver(cPart& part);

} // namespace zentrel
