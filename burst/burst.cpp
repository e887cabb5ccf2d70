#include "burst/burst.h"

#include <utility>

#include "device/number_text.h"
#include "device/part.h"
#include "device/pin_numbers.h"
#include "transport/load_path.h"
#include "transport/lpt_route.h"
#include "transport/transport.h"
#include "transport/usb_bridge.h"

namespace zentrel {
namespace {

constexpr std::string_view kTriggerPin = "trigger";

std::string PatternRow(std::string_view label, const std::vector<std::int16_t>& states,
                       std::int32_t mask) {
    std::string row(label);
    for (const std::int16_t state : states)
        row += (state & mask) != 0 ? '1' : '0';
    return row;
}

std::int16_t Converted(std::int16_t state, std::string_view from, std::string_view to) {
    return static_cast<std::int16_t>(
        PinMaskToPortValue(to, PortValueToPinMask(from, state & 0xFFFF)));
}

} // namespace

void cBurst::SetRegister(double value) {
    switch (Command) {
    case BurstKind::LoadRegister:
        SetWord(BitWord::FromDouble(value));
        break;
    case BurstKind::ChangePins:
        vector_ = {PinState(), 0};
        break;
    case BurstKind::Delay:
        vector_ = {0};
        Delay = RoundToLong(value);
        break;
    }
    register_ = value;
}

void cBurst::SetWord(const BitWord& word) {
    register_ = word.ToDouble();
    word_ = word;
    vector_ = GenerateBurstRegister(part_, word);
}

std::int16_t cBurst::PinState() const {
    std::int32_t state = part_.OutputPinValue();
    const cPrgmPin* trigger = part_.PrgmPins.Find(kTriggerPin);
    if (trigger != nullptr && trigger->Enabled()) state &= ~trigger->mask();
    if (part_.LEModeHigh) state |= part_.LEPositionValue();
    return static_cast<std::int16_t>(state);
}

std::int16_t cBurst::GetRegLoad(int index) const {
    if (index < 0 || index > GetRegLoad_Count()) {
        throw OutOfRange("port state " + std::to_string(index) + " of a burst command");
    }
    return vector_[static_cast<std::size_t>(index)];
}

void cBurst::SetRegLoad(int index, std::int16_t value) {
    GetRegLoad(index);
    vector_[static_cast<std::size_t>(index)] = value;
}

std::string cBurst::Pattern() const {
    if (Command != BurstKind::LoadRegister) return Description;
    return PatternRow("clk", vector_, part_.ClockPositionValue()) + "\r\n" +
           PatternRow("dat", vector_, part_.DataPositionValue()) + "\r\n" +
           PatternRow("le  ", vector_, part_.LEPositionValue());
}

void cBurst::ConvertRoute(std::string_view from, std::string_view to) {
    for (std::int16_t& state : vector_)
        state = Converted(state, from, to);
    OutputPinValue = Converted(OutputPinValue, from, to);
}

void cBurst::Assign(cBurst&& other) {
    Description = std::move(other.Description);
    Delay = other.Delay;
    Command = other.Command;
    RegisterName = std::move(other.RegisterName);
    OutputPinValue = other.OutputPinValue;
    LowByte = other.LowByte;
    useTrigger = other.useTrigger;
    register_ = other.register_;
    word_ = std::move(other.word_);
    vector_ = std::move(other.vector_);
}

void cBurst::Execute() {
    try {
        switch (Command) {
        case BurstKind::LoadRegister:
            PlayLoad();
            break;
        case BurstKind::ChangePins:
            PlayPins();
            break;
        case BurstKind::Delay:
            PlayDelay();
            break;
        }
    } catch (const Error&) {
        return; // The run goes on with the next command.
    }
}

void cBurst::PlayLoad() const {
    if (part_.session().isUsb()) {
        std::int32_t pins = OutputPinValue;
        if (const cPrgmPin* trigger = part_.PrgmPins.Find(kTriggerPin)) pins &= ~trigger->mask();
        usbSendSPI_Burst(part_, word_, static_cast<std::int16_t>(pins), useTrigger ? 1 : 0);
    } else if (part_.session().isLpt()) {
        SendStates(part_, vector_);
    }
}

void cBurst::PlayPins() const {
    if (vector_.empty()) return;
    const std::int16_t state = vector_.front();
    if (part_.session().isUsb()) {
        usbSendPins(part_, state);
    } else if (part_.session().isLpt()) {
        SendStates(part_, std::span(&state, 1));
    }
}

void cBurst::PlayDelay() const {
    // A count of passes, not a time; reading through the volatile keeps every one of them.
    const volatile std::int64_t last = Delay;
    std::int64_t i = 0;
    while (i <= last)
        ++i;
}

} // namespace zentrel
