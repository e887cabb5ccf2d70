#include <array>

#include "automation/object_model/element_rows.h"
#include "automation/object_model/form_parts.h"

namespace zentrel::objects {

namespace {

// The bar moves the frames with it.
constexpr ElementRow BitsBar() {
    ElementRow row = Single<&FrmPart::bits, &BitsScreen::hscPrgmBits>("hscPrgmBits");
    row.act = [](const ElementRow&, FrmPart& frm, int, int value) { frm.bits.Scroll(value); };
    return row;
}

template<auto Element>
constexpr ElementRow Burst(std::string_view name) {
    ElementRow row = Alone(name, &ClassOf<detail::ContentOf<Element>>);
    row.find = [](const ElementRow&, FrmPart& frm, int index) -> void* {
        return index == 0 ? AsElement(frm.burst.panel.*Element) : nullptr;
    };
    return row;
}

} // namespace

std::span<const ElementRow> RegistersElements() {
    static constexpr auto kRows = std::to_array<ElementRow>({
        Numbered<&FrmPart::registers, &RegistersScreen::lblRegName>("lblRegName"),
        Numbered<&FrmPart::registers, &RegistersScreen::txtRegBits>("txtRegBits"),
        Numbered<&FrmPart::registers, &RegistersScreen::cmdLoadReg>("cmdLoadReg"),
        Numbered<&FrmPart::registers, &RegistersScreen::lblRegName2>("lblRegName2"),
        Numbered<&FrmPart::registers, &RegistersScreen::lblHexRegValue>("lblHexRegValue"),
        Numbered<&FrmPart::registers, &RegistersScreen::cmdReadback>("cmdReadback"),
        Numbered<&FrmPart::registers, &RegistersScreen::lblTens>("lblTens"),
        Numbered<&FrmPart::registers, &RegistersScreen::lblOnes>("lblOnes"),
        Single<&FrmPart::registers, &RegistersScreen::shpBitHiLite>("shpBitHiLite"),
        Single<&FrmPart::registers, &RegistersScreen::lblHexValue>("lblHexValue"),
        Single<&FrmPart::registers, &RegistersScreen::lblHexDisplay>("lblHexDisplay"),
        Single<&FrmPart::registers, &RegistersScreen::cmdBitOrder>("cmdBitOrder"),
        Single<&FrmPart::registers, &RegistersScreen::hscRegisters>("hscRegisters"),
        Single<&FrmPart::registers, &RegistersScreen::vscRegisters>("vscRegisters"),
        Single<&FrmPart::registers, &RegistersScreen::cmdBoxRegisters>("cmdBoxRegisters"),
        Single<&FrmPart::registers, &RegistersScreen::txtReadRegName>("txtReadRegName"),
        Single<&FrmPart::registers, &RegistersScreen::cmdReadRegister>("cmdReadRegister"),
        Options<&FrmPart::registers, &RegistersScreen::oReadbackBase,
                &RegistersScreen::SelectReadbackBase>("oReadbackBase"),
        Single<&FrmPart::registers, &RegistersScreen::txtReadbackRegVal>("txtReadbackRegVal"),
    });
    return kRows;
}

std::span<const ElementRow> BitsElements() {
    static constexpr auto kRows = std::to_array<ElementRow>({
        Numbered<&FrmPart::bits, &BitsScreen::chkPrgmBit>("chkPrgmBit"),
        Numbered<&FrmPart::bits, &BitsScreen::lblCntr>("lblCntr"),
        Numbered<&FrmPart::bits, &BitsScreen::txtCntrVal>("txtCntrVal"),
        Numbered<&FrmPart::bits, &BitsScreen::spnCntr>("spnCntr"),
        Numbered<&FrmPart::bits, &BitsScreen::lblCmbBits>("lblCmbBits"),
        Numbered<&FrmPart::bits, &BitsScreen::cmbBits>("cmbBits"),
        Numbered<&FrmPart::bits, &BitsScreen::chkPrgmPin>("chkPrgmPin"),
        Numbered<&FrmPart::bits, &BitsScreen::fraPrgmBits>("fraPrgmBits"),
        Lone<&FrmPart::bits, &BitsScreen::fraPrgmPins>("fraPrgmPins"),
        BitsBar(),
    });
    return kRows;
}

std::span<const ElementRow> BurstElements() {
    static constexpr auto kRows = std::to_array<ElementRow>({
        Burst<&BurstPanel::txtBurstCmds>("txtBurstCmds"),
        Burst<&BurstPanel::Label1>("Label1"),
        Burst<&BurstPanel::cmbLdBurst>("cmbLdBurst"),
        Burst<&BurstPanel::cmdDelay>("cmdDelay"),
        Burst<&BurstPanel::txtDelay>("txtDelay"),
        Burst<&BurstPanel::cmdSetPins>("cmdSetPins"),
        Burst<&BurstPanel::cmdInsert>("cmdInsert"),
        Burst<&BurstPanel::cmdDelete>("cmdDelete"),
        Burst<&BurstPanel::cmdDeleteAll>("cmdDeleteAll"),
        Burst<&BurstPanel::cmdLoad>("cmdLoad"),
        Burst<&BurstPanel::cmdSave>("cmdSave"),
        Burst<&BurstPanel::cmdRun>("cmdRun"),
        Burst<&BurstPanel::cmdLoop>("cmdLoop"),
        Burst<&BurstPanel::cmdBreak>("cmdBreak"),
        Burst<&BurstPanel::cmdLEMode>("cmdLEMode"),
        Burst<&BurstPanel::Command1>("Command1"),
    });
    return kRows;
}

} // namespace zentrel::objects
