#include "device/prgmpin.h"

#include <utility>

#include "device/part.h"
#include "device/pin_numbers.h"

namespace zentrel {

cPrgmPin::cPrgmPin(cPart& part, std::string id, bool readBack)
    : part_(part), id_(std::move(id)), readBack_(readBack) {}

std::int32_t cPrgmPin::Position() const {
    return part_.PortValueToPin(mask_);
}

void cPrgmPin::SetPosition(std::int32_t& pin) {
    if (readBack_) pin = CutComposite(part_.session().CommMode_Select, pin);
    mask_ = part_.PinToPortValue(pin);
}

bool cPrgmPin::Enabled() const {
    return (part_.OutputPinValue() & mask_) == mask_;
}

void cPrgmPin::SetEnabled(bool value) {
    if (value) {
        part_.SetOutPins(mask_);
    } else {
        part_.ClearOutPins(mask_);
    }
}

void cPrgmPin::Toggle() {
    part_.ToggleOutPins(mask_);
}

} // namespace zentrel
