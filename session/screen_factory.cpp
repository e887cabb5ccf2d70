#include "session/screen_factory.h"

#include "clock/clk_dist.h"
#include "device/register.h"
#include "screens/bits_screen.h"
#include "screens/burst_screen.h"
#include "screens/port_screen.h"
#include "screens/registers_screen.h"
#include "screens/tab_model.h"
#include "synth/pll.h"

namespace zentrel {

void ScreenFactory::RegisterLengthChanged(int bits) {
    registers_.RegisterLengthChanged(bits);
}

void ScreenFactory::AddRegisterRow(cRegister& reg) {
    tabs_.SelectTab(kRegistersTab);
    registers_.AddRow(reg);
    burst_.AddRegister(reg.ID());
}

void ScreenFactory::AddBitElement(cPrgmBits& field, std::string_view group) {
    tabs_.SelectTab(kBitsTab);
    bits_.AddBit(field, group);
}

void ScreenFactory::AddCounterElement(cPrgmBits& field, std::string_view group) {
    tabs_.SelectTab(kBitsTab);
    bits_.AddCounter(field, group);
}

void ScreenFactory::AddListElement(cPrgmBits& field, std::string_view group) {
    tabs_.SelectTab(kBitsTab);
    bits_.AddList(field, group);
}

void ScreenFactory::AddPinElements(cPrgmPin& pin) {
    tabs_.SelectTab(kBitsTab);
    bits_.AddPin(pin);
    tabs_.SelectTab(kPortTab);
    port_.AddPinRow(pin);
}

int ScreenFactory::AddPLLTab(cPLL& pll) {
    return tabs_.AddTab(pll.ID());
}

int ScreenFactory::AddClkDistsTab(cClkDist& block) {
    return tabs_.AddTab(block.ID());
}

} // namespace zentrel
