#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "device/bit_word.h"
#include "transport/usb_packet.h"

/// The USB route: commands to the bridge and their acknowledgements. A bridge in error is left
/// alone: commands are skipped and replies are empty, without a message. A refusal and an
/// acknowledgement of the wrong command are told in a message, and the next command goes on.
namespace zentrel {

class cPart;

// The library's own entry points, through the device's Transport. Without one: an error, no bridge.
void InitUSBInterface(cPart& part);
std::int16_t usbGetError(cPart& part);
std::int16_t usbConnected(cPart& part);

/// Sends a packet unless the bridge is in error; returns the number of bytes sent.
std::int16_t usbSendCmd(cPart& part, const UsbPacket& packet);
/// Takes the next packet of the bridge's stream and returns its length, -1 when there is none. A
/// packet that is incomplete after a second receive, or too long to be one, counts as none.
int GetNextCmdPacket(cPart& part, std::array<std::uint8_t, kLongestPacket>& packet);
/// Takes the reply to the command `opcode`, whose messages bear `label`.
UsbReply usbGetAck(cPart& part, std::uint8_t opcode, std::string_view label);

/// A whole command: sends it and takes its acknowledgement.
UsbReply usbCommand(cPart& part, const UsbPacket& packet);

/// Opens the bridge and sends pins and format: after every attach and change of pins, and before
/// `LoadAll`.
void usbSetupDevice(cPart& part);
/// The lines' pins, the read-back pins and the trigger. A read-back pin of 10 or above is told in a
/// message and sent as 128.
void usbSetupPins(cPart& part);
/// How a word divides into data and control bits.
void usbSetupFormat(cPart& part);
/// `value` is a mask of the bridge's pins: port 0 in its low byte, port 1 above.
void usbSetTriggerPin(cPart& part, std::int32_t value);
void usbSetTriggerActive(cPart& part, std::int16_t flag);
void usbSetBurstMode(cPart& part, std::int16_t flag);
/// The bridge's timing constant, 0 to 255.
void usb_SetSPIDelay(cPart& part, std::int16_t delay);
UsbReply usbCmd_GetVersion(cPart& part);

void usbClearCmdBuffer(cPart& part, std::int16_t n);
void usbAddCmd(cPart& part, std::int16_t n, const UsbPacket& inner);
void usbExecuteCmdBuffer(cPart& part, std::int16_t n);
/// The packet that puts a byte on output port 0 or 1; only ever sent inside a buffer.
UsbPacket usbMakeCmd_SetWord(int port, int value);

/// A word of `RegisterLength` bits as the bridge takes it, most significant byte first. It doesn't
/// fit a packet beyond 792 bits.
UsbPacket usbMakeCmd_Word(const cPart& part, std::uint8_t opcode, const BitWord& word);

/// Shifts one word out; returns the number of bytes sent. A word too long for a packet isn't sent,
/// which the status line says.
std::int16_t usbSendSPI(cPart& part, const BitWord& word);
std::int16_t usbSendSPI(cPart& part, double value);

/// The word of a burst: pins, trigger and word in one buffer run. Allocates nothing for words of
/// up to 64 bits.
void usbSendSPI_Burst(cPart& part, const BitWord& word, std::int16_t pins, std::int16_t useTrigger);
void usbSendSPI_Burst(cPart& part, double value, std::int16_t pins, std::int16_t useTrigger);
/// Pin states as one buffer run: bits 0 to 7 on port 0, bits 8 to 11 on port 1.
void usbSendPins(cPart& part, std::int16_t pins);

} // namespace zentrel
