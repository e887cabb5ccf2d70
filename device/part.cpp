#include "device/part.h"

#include <limits>

#include "device/pin_numbers.h"

namespace zentrel {
namespace {

constexpr std::int32_t kStateBits = 0xFFFF;

// The state is a 16-bit integer: its highest bit is the sign.
std::int16_t StateMask(std::int32_t mask) {
    if (mask < std::numeric_limits<std::int16_t>::min() ||
        mask > std::numeric_limits<std::int16_t>::max()) {
        throw Overflow("a pin's mask lies beyond the output state");
    }
    return static_cast<std::int16_t>(mask);
}

} // namespace

cPart::cPart(Session& session, Upward upward) : session_(session), upward_(upward) {}
cPart::~cPart() = default;

void cPart::SetRegisterLength(std::int16_t bits) {
    if (bits < 1) throw OutOfRange("RegisterLength " + std::to_string(bits));
    registerLength_ = bits;
    upward_.builder->RegisterLengthChanged(bits);
    portVector_.assign(2 * static_cast<std::size_t>(bits) + 3, 0);
}

void cPart::SetLineMasks(std::int32_t clock, std::int32_t data, std::int32_t le) {
    clock_ = clock;
    data_ = data;
    le_ = le;
}

void cPart::SetInputPinPosition(std::int32_t& pin) {
    pin = CutComposite(session_.CommMode_Select, pin);
    inputPin_ = pin;
    // A device without a read-back pin stores -1, which no table knows and nobody asks about.
    input_ = pin < 0 ? 0 : PinToPortValue(pin);
}

std::int32_t cPart::PinToPortValue(std::int32_t pin) const {
    if (session_.isUsb() && !PinCLHeader2USBLogicalPosition(pin)) {
        upward_.messages->Show("Unknown pin position " + std::to_string(pin) +
                               " in PinCLHeader2USBLogicalPosition");
    }
    return zentrel::PinToPortValue(session_.CommMode_Select, pin);
}

std::int32_t cPart::PortValueToPin(std::int32_t value) const {
    return zentrel::PortValueToPin(session_.CommMode_Select, value);
}

std::int32_t cPart::PinMaskToPortValue(std::int32_t mask) const {
    std::int32_t value = 0;
    for (int pin = 1; pin <= kPinMaskBits; ++pin) {
        if (((static_cast<std::uint32_t>(mask) >> (pin - 1)) & 1U) != 0) {
            value += PinToPortValue(pin);
        }
    }
    return value;
}

std::int32_t cPart::PortValueToPinMask(std::int32_t value) const {
    return zentrel::PortValueToPinMask(session_.CommMode_Select, value);
}

void cPart::SetOutputPinValue(std::int32_t pinNumbers) {
    for (cPrgmPin& pin : PrgmPins) {
        const std::int32_t position = pin.Position();
        pin.SetEnabled(position >= 0 && position < 32 &&
                       ((static_cast<std::uint32_t>(pinNumbers) >> position) & 1U) != 0);
    }
}

void cPart::SetOutPins(std::int32_t mask) {
    outputPins_ = static_cast<std::int16_t>(outputPins_ | StateMask(mask));
}

void cPart::ClearOutPins(std::int32_t mask) {
    outputPins_ = static_cast<std::int16_t>(outputPins_ & ~(mask & kStateBits));
}

void cPart::ToggleOutPins(std::int32_t mask) {
    outputPins_ = static_cast<std::int16_t>(outputPins_ ^ StateMask(mask));
}

void cPart::RefreshPins() {
    ResetOutputPins();
    std::int16_t sum = 0;
    for (const cPrgmPin& pin : PrgmPins) {
        if (!pin.ReadBack() && pin.Enabled()) sum = static_cast<std::int16_t>(sum + pin.Value());
    }
    SetOutputPinValueDirect(sum);
    UpdateDisplays();
}

void cPart::UpdateDisplays() {
    Displays& displays = *upward_.displays;
    displays.UpdatePLLDisplay();
    displays.UpdateCLKDISTDisplay();
    displays.UpdateBitDisplay();
    displays.UpdateRegisterDisplay();
    displays.UpdatePortDisplay();
    displays.UpdateBurstDisplay();
}

void cPart::ClearFieldsAndRegisters() {
    journal_.Forget();
    PrgmBits.Clear();
    PrgmPins.Clear();
    Registers.Clear();
    PLLs.Clear();
    pll_tabnames.Clear();
    BurstCmds.Clear();
    MacroCmds.Clear();
}

} // namespace zentrel
