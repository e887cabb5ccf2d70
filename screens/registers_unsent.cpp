#include "screens/registers_screen.h"

#include "device/register.h"
#include "screens/field_tip.h"

namespace zentrel {

std::string RegistersScreen::UnsentBits(int row) {
    if (!IsRow(row)) return {};
    ShownRow& shown = shown_[static_cast<std::size_t>(row)];
    const cRegister& reg = RegisterOf(row);
    if (!shown.loaded) shown.loaded = reg.word();
    const BitWord& known = reg.sent() ? *reg.sent() : *shown.loaded;
    if (known == reg.word()) return {};
    const int digits = (TextWidth(row) + 2) / 3;
    std::string marks(static_cast<std::size_t>(digits), '0');
    for (int column = 0; column < digits; ++column) {
        const int bit = msbFirst_ ? digits - 1 - column : column;
        if (known.Test(bit) != reg.word().Test(bit)) marks[static_cast<std::size_t>(column)] = '1';
    }
    return marks;
}

std::string RegistersScreen::TipOn(int row) const {
    return IsRow(row) ? RegisterTip(part_, RegisterOf(row).ID()) : std::string();
}

std::string RegistersScreen::TipOnBit(int row, int bit) const {
    return IsRow(row) ? BitTip(part_, RegisterOf(row).ID(), bit) : std::string();
}

} // namespace zentrel
