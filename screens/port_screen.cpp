#include "screens/port_screen.h"

#include <cstddef>
#include <optional>
#include <string>

#include "device/number_text.h"
#include "device/part.h"
#include "device/pin_numbers.h"
#include "device/text.h"
#include "screens/timers.h"
#include "transport/auto_reload.h"
#include "transport/load_path.h"
#include "transport/lpt_route.h"
#include "transport/usb_bridge.h"

namespace zentrel {

// The choices of the Port Setup tab. The drawing of the cable stands in port_diagram.cpp.

namespace {

constexpr std::array<std::string_view, PortScreen::kPinOptions> kPinCaptions{
    "1", "2", "3", "4", "5", "6", "7", "8", "10", "11", "12", "14"};
constexpr std::array<std::string_view, 5> kInputCaptions{"S3", "S4", "S5", "S6", "S7*"};
constexpr std::array<std::string_view, 4> kAddressCaptions{"LPT1", "LPT2", "LPT3", "Other"};
constexpr int kOtherAddress = 3;
constexpr int kUsb = 0;
constexpr int kLpt = 1;

int ChoiceOf(std::int16_t address) {
    for (int choice = 0; choice < kOtherAddress; ++choice) {
        if (PortAddressOfOption(choice) == address) return choice;
    }
    return kOtherAddress;
}

// Selects one option and clears its sisters; true when that option wasn't selected before.
bool Choose(std::span<Option> options, int index) {
    bool changed = false;
    for (std::size_t i = 0; i < options.size(); ++i) {
        const bool on = static_cast<int>(i) == index;
        changed = changed || (on && !options[i].Value);
        options[i].Value = on;
    }
    return changed;
}

// Hexadecimal digits, at most four, with or without a prefix.
std::optional<std::int16_t> ParseAddress(std::string_view text) {
    text = TrimBlanks(text);
    if (text.size() > 2 &&
        (EqualNoCase(text.substr(0, 2), "&H") || EqualNoCase(text.substr(0, 2), "0x"))) {
        text.remove_prefix(2);
    }
    constexpr std::string_view kHexDigits = "0123456789ABCDEFabcdef";
    if (text.empty() || text.find_first_not_of(kHexDigits) != std::string_view::npos) return {};
    return ParseFileInt16("&H" + std::string(text));
}

} // namespace

PortScreen::PortScreen(cPart& part, Timers& timers) : part_(part), timers_(timers) {
    CommunicationSelectFrame.Caption = "Communication Mode";
    CommMode[kUsb].Caption = "USB";
    CommMode[kLpt].Caption = "LPT";
    frameLPTPortSetup.Caption = "LPT Port Setup";
    fraPortAdr.Caption = "Port Address";
    for (std::size_t i = 0; i < optPortAdr.size(); ++i)
        optPortAdr[i].Caption = kAddressCaptions[i];
    lblAutoReload.Caption = "Reload Every";
    txtAutoReload.Text = "10";
    lblAutoRelaodUnits.Caption = "sec";
    fraClockBit.Caption = "Clock Bit";
    fraDataBit.Caption = "Data Bit";
    fraLEBit.Caption = "LE Bit";
    for (std::size_t i = 0; i < kPinCaptions.size(); ++i) {
        optClockBit[i].Caption = kPinCaptions[i];
        optDataBit[i].Caption = kPinCaptions[i];
        optLEBit[i].Caption = kPinCaptions[i];
    }
    Frame2.Caption = "Pin Configuration";
    Frame1.Caption = "LPT Port Setup Diagram";
    DBlabel.Caption = "DB 25 Connector";
    Label11.Caption = "Input";
    Label11.Visible = Label11Sample.Visible = false;
    Label11Sample.BackColor = colors::kYellow;
    Clear();
}

void PortScreen::SelectCommMode(int index) {
    if (index != kUsb && index != kLpt) return;
    Choose(CommMode, index);
    CommMode_Click(part_, static_cast<std::int16_t>(index));
}

void PortScreen::SelectPortAdr(int index) {
    if (index < 0 || index > kOtherAddress) return;
    Choose(optPortAdr, index);
    if (part_.Updating) return;
    const UpdatingScope updating(part_);
    part_.PortAddress = PortAddressOfOption(index);
    txtPortAdr.Text = HexText(part_.PortAddress);
    txtPortAdr.Enabled = index >= kOtherAddress;
    WarnOfBursts();
}

void PortScreen::EnterPortAdr() {
    if (part_.Updating) return;
    const UpdatingScope updating(part_);
    const auto address = ParseAddress(txtPortAdr.Text);
    if (!address) {
        txtPortAdr.Text = HexText(part_.PortAddress);
        return;
    }
    part_.PortAddress = *address;
    txtPortAdr.Text = HexText(part_.PortAddress);
    const int choice = ChoiceOf(part_.PortAddress);
    Choose(optPortAdr, choice);
    txtPortAdr.Enabled = choice == kOtherAddress;
    WarnOfBursts();
}

void PortScreen::EnterAutoReload() {
    txtAutoReload_Enter(part_, txtAutoReload, timers_.tmrAutoReload);
}

void PortScreen::SelectClockBit(int option) {
    const auto pin = OptionToPin(option);
    if (!pin) return;
    Choose(optClockBit, option);
    {
        const UpdatingScope updating(part_);
        part_.SetClockPosition(*pin);
        WarnOfBursts();
    }
    SetUpBridge();
    UpdatePortDiagram();
}

void PortScreen::SelectDataBit(int option) {
    const auto pin = OptionToPin(option);
    if (!pin) return;
    Choose(optDataBit, option);
    part_.SetDataPosition(*pin);
    SetUpBridge();
    UpdatePortDiagram();
}

void PortScreen::SelectLEBit(int option) {
    const auto pin = OptionToPin(option);
    if (!pin) return;
    Choose(optLEBit, option);
    part_.SetLEPosition(*pin);
    SetUpBridge();
    UpdatePortDiagram();
}

void PortScreen::SelectPrgmBit(int number) {
    const int row = number / kPinOptions;
    const int option = number % kPinOptions;
    if (number < 0 || row >= rows_) return;
    for (int n = row * kPinOptions; n < (row + 1) * kPinOptions; ++n)
        optPrgmBit[static_cast<std::size_t>(n)].Value = n == number;
    if (part_.Updating) return;

    const UpdatingScope updating(part_);
    cPrgmPin& pin = part_.PrgmPins(fraExternalPin[static_cast<std::size_t>(row)].Caption);
    if (!pin.ReadBack()) {
        pin.SetPosition(OptionToPin(option).value_or(0));
    } else if (part_.session().isLpt() || part_.session().isUsb()) {
        const bool lpt = part_.session().isLpt();
        const std::int32_t home =
            (lpt ? InputOptionToPin(option) : OptionToPin(option)).value_or(0);
        pin.SetPosition(std::int32_t{home});
        // The pin's other home stays: hundreds for the parallel port, two digits for the bridge.
        const std::int32_t bridge = part_.InputPinPositionINI % 100;
        part_.InputPinPositionINI = lpt ? home + bridge : part_.InputPinPositionINI - bridge + home;
        part_.SetInputPinPosition(std::int32_t{part_.InputPinPositionINI});
    }
    WarnOfBursts();
    SetUpBridge();
    part_.upward().displays->UpdateBitDisplay();
    UpdatePortDiagram();
}

void PortScreen::SetUpBridge() {
    if (part_.session().isUsb()) usbSetupDevice(part_);
}

void PortScreen::WarnOfBursts() {
    if (part_.BurstCmds.Count() < 2) return;
    part_.upward().messages->Show(
        "Changes in the port setup will not be reflected in the Burst Commands. You will have to "
        "delete all Burst Commands and rebuild them.",
        "WARNING", MessageIcon::Exclamation);
}

void PortScreen::UpdatePortDisplay() {
    if (part_.ID.empty()) return;
    const UpdatingScope updating(part_);
    Choose(optPortAdr, ChoiceOf(part_.PortAddress));
    txtPortAdr.Text = HexText(part_.PortAddress);
    const auto orDefault = [](std::int32_t mask, std::int32_t fallback) {
        return mask == 0 ? fallback : mask;
    };
    part_.SetLineMasks(orDefault(part_.ClockPositionValue(), 1),
                       orDefault(part_.DataPositionValue(), 2),
                       orDefault(part_.LEPositionValue(), 4));
    ShowLine(optClockBit, part_.ClockPosition(), &PortScreen::SelectClockBit);
    ShowLine(optDataBit, part_.DataPosition(), &PortScreen::SelectDataBit);
    ShowLine(optLEBit, part_.LEPosition(), &PortScreen::SelectLEBit);

    const Session& session = part_.session();
    if (session.isUsb() || session.isLpt()) {
        const int route = session.isUsb() ? kUsb : kLpt;
        if (!CommMode[static_cast<std::size_t>(route)].Value) SelectCommMode(route);
        EnableLPTOptions(session.isLpt());
    } else {
        part_.upward().status->StatusBar_CommMode(session.CommMode_Select);
    }
    // The route may be the last device's: then no option has changed, and the pins are new.
    ApplyPinLabeling();
    ShowPinOptions();
    UpdatePortDiagram();
}

// A program's selection acts like a click, when it changes anything.
void PortScreen::ShowLine(std::span<Option> options, std::int32_t pin,
                          void (PortScreen::*select)(int)) {
    const int option = PinToOption(pin);
    if (!options[static_cast<std::size_t>(option)].Value) (this->*select)(option);
}

void PortScreen::EnableLPTOptions(bool val) {
    for (Option& choice : optPortAdr)
        choice.Enabled = val;
    txtPortAdr.Enabled = val && optPortAdr[kOtherAddress].Value;
    txtAutoReload.Enabled = lblAutoReload.Enabled = lblAutoRelaodUnits.Enabled = val;
    fraPortAdr.Enabled = frameLPTPortSetup.Enabled = val;
}

void PortScreen::MakePinRow(int row) {
    const auto count = static_cast<std::size_t>(row) + 1;
    if (fraExternalPin.size() < count) fraExternalPin.resize(count);
    const auto options = count * kPinOptions;
    if (optPrgmBit.size() < options) optPrgmBit.resize(options);
    LabelRow(row, false);
}

void PortScreen::LabelRow(int row, bool input) {
    for (std::size_t o = 0; o < kPinCaptions.size(); ++o) {
        Option& option = optPrgmBit[static_cast<std::size_t>(row) * kPinOptions + o];
        option.Visible = !input || o < kInputCaptions.size();
        option.Caption = input && option.Visible ? kInputCaptions[o] : kPinCaptions[o];
    }
}

void PortScreen::AddPinRow(const cPrgmPin& pin) {
    const int row = rows_++;
    MakePinRow(row);
    Frame& frame = fraExternalPin[static_cast<std::size_t>(row)];
    frame.Caption = pin.ID();
    frame.Visible = true;
    LabelRow(row, pin.ReadBack() && !part_.session().isUsb());
    ++layout_;
}

void PortScreen::Clear() {
    rows_ = 0;
    // The next device selects its route anew, which sets the bridge up for its pins and format.
    for (Option& mode : CommMode)
        mode.Value = false;
    fraExternalPin.resize(1);
    optPrgmBit.resize(kPinOptions);
    for (Option& option : optPrgmBit)
        option = {};
    MakePinRow(0);
    fraExternalPin[0].Caption = "Prgm Pin";
    fraExternalPin[0].Visible = false;
    vscPort = {};
    vscPort.Visible = false;
    ++layout_;
}

void PortScreen::ApplyPinLabeling() {
    const bool usb = part_.session().isUsb();
    for (int row = 0; row < rows_; ++row) {
        const cPrgmPin* pin =
            part_.PrgmPins.Find(fraExternalPin[static_cast<std::size_t>(row)].Caption);
        LabelRow(row, pin != nullptr && pin->ReadBack() && !usb);
    }
}

void PortScreen::ShowPinOptions() {
    const UpdatingScope updating(part_);
    for (int row = 0; row < rows_; ++row) {
        const cPrgmPin* pin =
            part_.PrgmPins.Find(fraExternalPin[static_cast<std::size_t>(row)].Caption);
        if (pin != nullptr) SelectPrgmBit(row * kPinOptions + PinToOption(pin->Position()));
    }
}

} // namespace zentrel
