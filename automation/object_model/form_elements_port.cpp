#include <array>

#include "automation/object_model/element_rows.h"
#include "automation/object_model/form_parts.h"

namespace zentrel::objects {

namespace {

// A wire of the drawing has three names: the first three go with the header pins 1 to 9, the
// others with the rest. Its number is its header pin.
template<int First, int Last>
constexpr ElementRow Wires(std::string_view name) {
    ElementRow row = Numbered<&FrmPart::port, &PortScreen::wires>(name, First);
    row.count = [](const ElementRow&, FrmPart&) { return Last - First + 1; };
    row.find = [](const ElementRow&, FrmPart& frm, int pin) -> void* {
        if (pin < First || pin > Last) return nullptr;
        return &frm.port.wires[static_cast<std::size_t>(pin)];
    };
    return row;
}

} // namespace

std::span<const ElementRow> PortElements() {
    static constexpr auto kRows = std::to_array<ElementRow>({
        Single<&FrmPart::port, &PortScreen::CommunicationSelectFrame>("CommunicationSelectFrame"),
        Options<&FrmPart::port, &PortScreen::CommMode, &PortScreen::SelectCommMode>("CommMode"),
        Single<&FrmPart::port, &PortScreen::frameLPTPortSetup>("frameLPTPortSetup"),
        Single<&FrmPart::port, &PortScreen::fraPortAdr>("fraPortAdr"),
        Options<&FrmPart::port, &PortScreen::optPortAdr, &PortScreen::SelectPortAdr>("optPortAdr"),
        Single<&FrmPart::port, &PortScreen::txtPortAdr>("txtPortAdr"),
        Single<&FrmPart::port, &PortScreen::lblAutoReload>("lblAutoReload"),
        Single<&FrmPart::port, &PortScreen::txtAutoReload>("txtAutoReload"),
        Single<&FrmPart::port, &PortScreen::lblAutoRelaodUnits>("lblAutoRelaodUnits"),
        Single<&FrmPart::port, &PortScreen::fraClockBit>("fraClockBit"),
        Single<&FrmPart::port, &PortScreen::fraDataBit>("fraDataBit"),
        Single<&FrmPart::port, &PortScreen::fraLEBit>("fraLEBit"),
        Options<&FrmPart::port, &PortScreen::optClockBit, &PortScreen::SelectClockBit>(
            "optClockBit"),
        Options<&FrmPart::port, &PortScreen::optDataBit, &PortScreen::SelectDataBit>("optDataBit"),
        Options<&FrmPart::port, &PortScreen::optLEBit, &PortScreen::SelectLEBit>("optLEBit"),
        Single<&FrmPart::port, &PortScreen::Frame2>("Frame2"),
        Numbered<&FrmPart::port, &PortScreen::fraExternalPin>("fraExternalPin"),
        Options<&FrmPart::port, &PortScreen::optPrgmBit, &PortScreen::SelectPrgmBit>("optPrgmBit"),
        Single<&FrmPart::port, &PortScreen::Frame1>("Frame1"),
        Numbered<&FrmPart::port, &PortScreen::Pinheader>("Pinheader", 1),
        Numbered<&FrmPart::port, &PortScreen::DB1>("DB1", 1),
        Single<&FrmPart::port, &PortScreen::DBConn>("DBConn"),
        Single<&FrmPart::port, &PortScreen::DBlabel>("DBlabel"),
        Wires<1, 9>("linea"),
        Wires<1, 9>("lineb"),
        Wires<1, 9>("linec"),
        Wires<10, 14>("lined"),
        Wires<10, 14>("linee"),
        Wires<10, 14>("linef"),
        Single<&FrmPart::port, &PortScreen::Label11>("Label11"),
        Single<&FrmPart::port, &PortScreen::vscPort>("vscPort"),
    });
    return kRows;
}

} // namespace zentrel::objects
