#include "session/device_items.h"

#include <memory>
#include <string>

#include "device/part.h"

namespace zentrel {

namespace {

cPrgmBits& NewField(cPart& part, std::string_view name, std::string_view cReg, std::int16_t strt,
                    std::int16_t l, bool disp) {
    const auto field =
        std::make_shared<cPrgmBits>(part, std::string(name), std::string(cReg), strt, l, disp);
    part.PrgmBits.Add(field, std::string(name));
    return *field;
}

} // namespace

cRegister& AddRegister(cPart& part, std::string_view RegName, std::int32_t lMask, double value,
                       bool bLowByte) {
    const auto reg =
        std::make_shared<cRegister>(part, std::string(RegName), lMask, value, bLowByte);
    part.Registers.Add(reg, std::string(RegName));
    part.upward().builder->AddRegisterRow(*reg);
    return *reg;
}

cPrgmBits& AddProgramBit(cPart& part, std::string_view name, std::string_view cReg,
                         std::int16_t strt, std::int16_t l, bool disp, std::string_view group) {
    cPrgmBits* field = part.PrgmBits.Find(name);
    if (field != nullptr) {
        part.upward().messages->Show("Error adding register: " + std::string(name) +
                                     " this possibly already exists?");
    } else {
        field = &NewField(part, name, cReg, strt, l, disp);
    }
    if (disp) part.upward().builder->AddBitElement(*field, group);
    return *field;
}

cPrgmBits& AddCounter(cPart& part, std::string_view name, std::string_view cReg, std::int16_t strt,
                      std::int16_t l, bool disp, std::string_view group) {
    cPrgmBits& field = NewField(part, name, cReg, strt, l, disp);
    if (disp) part.upward().builder->AddCounterElement(field, group);
    return field;
}

void AddList(cPart& part, std::string_view name, std::string_view group) {
    part.upward().builder->AddListElement(part.PrgmBits(name), group);
}

cPrgmPin& AddProgramPin(cPart& part, std::string_view PrgmBitName, std::int32_t position,
                        bool aReadBackPin) {
    const auto pin = std::make_shared<cPrgmPin>(part, std::string(PrgmBitName), aReadBackPin);
    pin->SetPosition(std::int32_t{position});
    part.PrgmPins.Add(pin, std::string(PrgmBitName));
    part.upward().builder->AddPinElements(*pin);
    return *pin;
}

} // namespace zentrel
