#include "transport/readback.h"

#include <cmath>

#include "device/number_text.h"
#include "device/part.h"
#include "transport/load_path.h"
#include "transport/lpt_route.h"
#include "transport/transport.h"
#include "transport/usb_bridge.h"

namespace zentrel {
namespace {

constexpr int kStatusInverted = 0x80;
constexpr int kFirstDataElement = 2;

int DataBits(const cPart& part) {
    return part.RegisterLength() - part.ControlLength;
}

cRegister* ExactRegister(cPart& part, std::string_view name) {
    for (cRegister& reg : part.Registers) {
        if (reg.ID() == name) return &reg;
    }
    return nullptr;
}

// Sends the address word and leaves latch enable high behind it.
void LoadAddressWord(cPart& part) {
    struct Mode {
        explicit Mode(bool& flag) : flag(flag) { flag = true; }
        ~Mode() { flag = false; }
        Mode(const Mode&) = delete;
        Mode& operator=(const Mode&) = delete;
        bool& flag;
    };
    const Mode mode(part.readback_mode);
    LoadRegister(part, part.ReadbackAddressRegisterName);
}

} // namespace

double QVX4100ReadRegister(cPart& part, std::string_view sRegister) {
    if (part.ReadbackAddressRegister.empty()) return 0;
    const cRegister* reg = ExactRegister(part, sRegister);
    if (reg == nullptr) return -1;
    part.PrgmBits(part.ReadbackAddressRegister).SetBitValue(reg->Address());
    part.UpdateDisplays();
    if (part.session().isUsb()) return usbCmd_SendReadBack(part, sRegister);
    if (part.session().isLpt()) return lptCmd_SendReadBack(part, sRegister);
    return 0;
}

std::int32_t ReadRegister(cPart& part, std::string_view sRegister) {
    if (part.ReadbackAddressRegister.empty()) return -2;
    const cPrgmBits* field = part.PrgmBits.Find(sRegister);
    if (field == nullptr) return -1;
    const cRegister* reg = ExactRegister(part, field->Register);
    if (reg == nullptr) return -3;
    const std::string name = reg->ID();
    const int lowest = field->Position - part.ControlLength;
    const int length = field->Length;
    // What comes back has no control bits, so the field lies lower in it.
    const BitWord value = BitWord::FromDouble(QVX4100ReadRegister(part, name));
    return RoundToLong((value.Shifted(-lowest) & BitWord::Ones(length)).ToDouble());
}

double lptCmd_SendReadBack(cPart& part, std::string_view /*name*/) {
    LoadAddressWord(part);
    Transport* transport = part.transport();
    if (transport == nullptr) return 0;

    PortDriver& port = transport->port();
    const std::uint16_t data = DataPort(part);
    const auto status = static_cast<std::uint16_t>(data + 1);
    const auto latch = static_cast<std::uint8_t>(part.LEPositionValue() & 0xFF);
    const auto clock = static_cast<std::uint8_t>((part.ClockPositionValue() & 0xFF) | latch);
    const int line = part.InputPinPositionValue() / 65536;
    double value = 0;
    for (int i = 0; i < DataBits(part); ++i) {
        port.WritePort(data, clock);
        port.WritePort(data, latch);
        const bool high = ((port.ReadPort(status) ^ kStatusInverted) & line) != 0;
        value = 2 * value + (high ? 1 : 0);
    }
    port.WritePort(
        data, static_cast<std::uint8_t>(PinsWithoutTrigger(part) & ~part.LEPositionValue() & 0xFF));
    return value;
}

double usbCmd_SendReadBack(cPart& part, std::string_view /*name*/) {
    const cRegister& reg = part.Registers(part.ReadbackAddressRegisterName);
    const UsbPacket packet = usbMakeCmd_Word(part, usb::kReadBack, reg.word());
    return ProcessReadBackValue(usbCommand(part, packet), DataBits(part));
}

double ProcessReadBackValue(const UsbReply& reply, int bits) {
    const int bytes = (bits + 7) / 8;
    // The reply ends with a 0 that isn't data.
    if (bits <= 0 || reply.size() - 1 < kFirstDataElement + bytes) return 0;
    BitWord word;
    for (int i = 0; i < bits; ++i) {
        if (((reply[kFirstDataElement + i / 8] >> (i % 8)) & 1) != 0) word.Set(i, true);
    }
    return word.ToDouble();
}

} // namespace zentrel
