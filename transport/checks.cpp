#include "transport/checks.h"

#include <algorithm>
#include <string>

#include "device/number_text.h"
#include "device/part.h"
#include "transport/lpt_route.h"
#include "transport/transport.h"
#include "transport/usb_bridge.h"

namespace zentrel {
namespace {

constexpr const char* kUsbNotSelected = "USB mode not selected";

// The bridge's text has one byte for a character.
std::string TextOf(const UsbReply& reply) {
    std::string text;
    for (int i = 1; i < reply.size() && reply[i] != 0; ++i) {
        const unsigned byte = reply[i];
        if (byte < 0x80) {
            text += static_cast<char>(byte);
        } else {
            text += static_cast<char>(0xC0 | (byte >> 6));
            text += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return text;
}

} // namespace

void CheckLPT(cPart& part) {
    const bool opened = ReopenPortDriver(part);
    std::string text =
        opened ? "Successfully opened LPT driver.\n\n"
                 "This does not confirm proper selection of LPT port."
               : "Failed to open LPT driver\n\n"
                 "* Is another instance of Zentrel open?  Check Task Manager.\n\n"
                 "* In the system BIOS is ECP or Standard output mode selected?  Don't use EPP.\n\n"
                 "* Is the user logged in running with Administrator rights?\n\n"
                 "* Did the user which installed Zentrel have Administrator rights?";
    const std::string reason =
        part.transport() == nullptr ? "" : part.transport()->port().Diagnosis();
    if (!opened && !reason.empty()) text += "\n\n" + reason;
    part.upward().messages->Show(text);
}

void USBVersion(cPart& part) {
    Messages& messages = *part.upward().messages;
    if (!part.session().isUsb()) {
        messages.Show(kUsbNotSelected);
        return;
    }
    messages.Confirm(TextOf(usbCmd_GetVersion(part)), "Firmware Version");
}

void AdjustTiming(cPart& part) {
    Messages& messages = *part.upward().messages;
    if (!part.session().isUsb()) {
        messages.Show(kUsbNotSelected);
        return;
    }
    const auto answer =
        messages.Ask("USB timing constant (10 is power on default, [0-255])", "USB Settings", "10");
    const auto number = answer ? ParseNumber(*answer) : std::nullopt;
    if (!number) return;
    usb_SetSPIDelay(part, RoundToInteger(std::clamp(*number, 0.0, 255.0)));
}

} // namespace zentrel
