#include "transport/usb_bridge.h"

#include <string>

#include "device/part.h"
#include "transport/transport.h"
#include "transport/usb_presence.h"

namespace zentrel {
namespace {

// The name under which each command's messages appear.
struct CommandLabel {
    std::uint8_t opcode;
    std::string_view label;
};

constexpr CommandLabel kLabels[] = {
    {usb::kAddCmd, "usbAddCmd"},
    {usb::kExecuteBuffer, "ExecuteCmdBuffer"},
    {usb::kClearBuffer, "usbClearCmdBuffer"},
    {usb::kVersion, "CMD_VERSION"},
    {usb::kConfigPins, "cmd_ConfigSPIPINS"},
    {usb::kConfigFormat, "cmd_ConfigSPIFORMAT"},
    {usb::kSendWord, "cmd_SendSPI"},
    {usb::kReadBack, "CMD_RECVSPI"},
    {usb::kSpiDelay, "usb_SetSPIDelay : CMD_SETSPIDELAY"},
    {usb::kTriggerPin, "usbSetTriggerPin : CMD_SETTRIGGERPIN"},
    {usb::kTriggerActive, "usbSetTriggerActive : CMD_SETTRIGGERACTIVE"},
    {usb::kBurstMode, "usbSetBurstMode : CMD_SETBURSTMODE"},
};

std::string_view LabelOf(std::uint8_t opcode) {
    for (const CommandLabel& command : kLabels) {
        if (command.opcode == opcode) return command.label;
    }
    return {};
}

constexpr int kLongestInner = kLongestPacket - 3;
constexpr int kNoInput = 128;
constexpr int kFirstPinBeyondPort0 = 10;

int ReadBackInput(cPart& part) {
    if (part.InputPinPosition() < kFirstPinBeyondPort0) return part.InputPinPositionValue();
    part.upward().messages->Show("Error readback pin must be on first port.  Pins 1 through 8");
    return kNoInput;
}

// A word too long for a packet would be lost without a sign.
bool Fits(cPart& part, const UsbPacket& packet, int limit) {
    if (packet.fits() && static_cast<int>(packet.bytes().size()) <= limit) return true;
    part.upward().status->StatusBar_SetString("A word of " + std::to_string(part.RegisterLength()) +
                                              " bits is too long for USB. Nothing was sent.");
    return false;
}

int ReadBackMask(const cPart& part) {
    int mask = 0;
    for (const cPrgmPin& pin : part.PrgmPins) {
        if (pin.ReadBack()) mask |= pin.Value();
    }
    return mask;
}

} // namespace

UsbReply usbCommand(cPart& part, const UsbPacket& packet) {
    usbSendCmd(part, packet);
    return usbGetAck(part, packet.opcode(), LabelOf(packet.opcode()));
}

void usbSetupDevice(cPart& part) {
    InitUSBInterface(part);
    if (usbGetError(part) != 0) return;
    usbSetupPins(part);
    usbSetupFormat(part);
}

void usbSetupPins(cPart& part) {
    const int readBack = ReadBackMask(part);
    usbCommand(part,
               UsbPacket(usb::kConfigPins, {0, part.ClockPositionValue(), part.DataPositionValue(),
                                            part.LEPositionValue(), 0, ReadBackInput(part),
                                            readBack, readBack >> 8}));
    const cPrgmPin* trigger = part.PrgmPins.Find("Trigger");
    if (trigger != nullptr) usbSetTriggerPin(part, trigger->Value());
    usbSetTriggerActive(part, trigger != nullptr ? 1 : 0);
}

void usbSetupFormat(cPart& part) {
    usbCommand(part, UsbPacket(usb::kConfigFormat,
                               {part.ControlLength, part.RegisterLength() - part.ControlLength}));
}

void usbSetTriggerPin(cPart& part, std::int32_t value) {
    int port = 0;
    for (; value > 128; value /= 256)
        ++port;
    usbCommand(part, UsbPacket(usb::kTriggerPin, {port, value}));
}

void usbSetTriggerActive(cPart& part, std::int16_t flag) {
    usbCommand(part, UsbPacket(usb::kTriggerActive, {flag}));
}

void usbSetBurstMode(cPart& part, std::int16_t flag) {
    usbCommand(part, UsbPacket(usb::kBurstMode, {flag}));
}

void usb_SetSPIDelay(cPart& part, std::int16_t delay) {
    usbCommand(part, UsbPacket(usb::kSpiDelay, {delay}));
}

UsbReply usbCmd_GetVersion(cPart& part) {
    return usbCommand(part, UsbPacket(usb::kVersion));
}

void usbClearCmdBuffer(cPart& part, std::int16_t n) {
    usbCommand(part, UsbPacket(usb::kClearBuffer, {n}));
}

void usbAddCmd(cPart& part, std::int16_t n, const UsbPacket& inner) {
    UsbPacket packet(usb::kAddCmd, {n});
    packet.Append(inner.bytes());
    usbCommand(part, packet);
}

void usbExecuteCmdBuffer(cPart& part, std::int16_t n) {
    usbCommand(part, UsbPacket(usb::kExecuteBuffer, {n}));
}

UsbPacket usbMakeCmd_SetWord(int port, int value) {
    return UsbPacket(usb::kSetWord, {port, value});
}

UsbPacket usbMakeCmd_Word(const cPart& part, std::uint8_t opcode, const BitWord& word) {
    UsbPacket packet(opcode);
    const int bytes = (part.RegisterLength() + 7) / 8;
    if (word.BitCount() <= 64) {
        for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
            packet.Append(shift < 64 ? static_cast<int>((word.low() >> shift) & 0xFF) : 0);
    } else {
        for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
            packet.Append(static_cast<int>(word.Shifted(-shift).low() & 0xFF));
    }
    return packet;
}

std::int16_t usbSendSPI(cPart& part, const BitWord& word) {
    const UsbPacket packet = usbMakeCmd_Word(part, usb::kSendWord, word);
    if (!Fits(part, packet, kLongestPacket)) return 0;
    const std::int16_t sent = usbSendCmd(part, packet);
    usbGetAck(part, packet.opcode(), LabelOf(packet.opcode()));
    if (sent != static_cast<int>(packet.bytes().size()) && usbGetError(part) == 0) Unhook(part);
    return sent;
}

std::int16_t usbSendSPI(cPart& part, double value) {
    return usbSendSPI(part, BitWord::FromDouble(value));
}

void usbSendPins(cPart& part, std::int16_t pins) {
    usbClearCmdBuffer(part, 0);
    usbAddCmd(part, 0, usbMakeCmd_SetWord(0, pins & 0xFF));
    usbAddCmd(part, 0, usbMakeCmd_SetWord(1, (pins & 0xF00) >> 8));
    usbExecuteCmdBuffer(part, 0);
}

void usbSendSPI_Burst(cPart& part, const BitWord& word, std::int16_t pins,
                      std::int16_t useTrigger) {
    const UsbPacket send = usbMakeCmd_Word(part, usb::kSendWord, word);
    const UsbPacket triggerOn(usb::kTriggerActive, {1});
    const UsbPacket triggerOff(usb::kTriggerActive, {0});
    if (!Fits(part, send, kLongestInner)) return;
    usbClearCmdBuffer(part, 0);
    usbAddCmd(part, 0, usbMakeCmd_SetWord(0, pins & 0xFF));
    usbAddCmd(part, 0, usbMakeCmd_SetWord(1, (pins & 0xF00) >> 8));
    usbAddCmd(part, 0, triggerOff);
    if (useTrigger == 1) usbAddCmd(part, 0, triggerOn);
    usbAddCmd(part, 0, send);
    if (useTrigger == 1) usbAddCmd(part, 0, triggerOff);
    usbExecuteCmdBuffer(part, 0);
}

void usbSendSPI_Burst(cPart& part, double value, std::int16_t pins, std::int16_t useTrigger) {
    usbSendSPI_Burst(part, BitWord::FromDouble(value), pins, useTrigger);
}

} // namespace zentrel
