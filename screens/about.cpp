#include "screens/about.h"

#include "form/session.h"

namespace zentrel {
namespace {

// The history, newest first. The entry of 2.1.4 runs on into the line of 2.1.3: so it is known.
constexpr std::string_view kHistory =
    "---- Ver 4.0.40 ----\r\n"
    "Upgraded visuals wrt scrollbar in bits/pins\r\n"
    "---- Ver 4.0.38 ----\r\n"
    "Upgraded visuals wrt frame height\r\n"
    "---- Ver 4.0.37 ----\r\n"
    "Added Clock Distribution support\r\n"
    "Added USB support\r\n"
    "---- Ver 2.2.0 ----\r\n"
    "Long Filenames, Long Denominator Bug Fix, Upgraded Register Map (32 Bits) & Selection Menu\r\n"
    "---- Ver 2.1.6 ----\r\n"
    "Made Screen Resizable\r\n"
    "Read back Active X Commands\r\n"
    "---- Ver 2.1.5 ----\r\n"
    "Fixed Long Fraction entry problem\r\n"
    "---- Ver 2.1.4 ----\r\n"
    "Fix bug with fractional N value entry on PLL Screen"
    "---- Ver 2.1.3 ----\r\n"
    "Fixed Zero Denominator Bug\r\n"
    "4 Digit Fractional Denominator\r\n"
    "Fixed N Counter Increment Bug\r\n"
    "Add Xtal ActiveX Command\r\n"
    "---- Ver 2.1.2 ----\r\n"
    "Prescaler Check\r\n"
    "Added Many Active X Commands\r\n"
    "Added Many Menu Commands\r\n"
    "---- Previous  ----\r\n"
    "Added Port Setup Diagram\r\n"
    "Fix Registers Load Button\r\n"
    "Fix Select New Part Bug\r\n"
    "Add Save Part Stup and BurstCommands\r\n"
    "Add Set Pins to BurstMode\r\n"
    "Fix Negative Counters\r\n"
    "Fix Data Entry";

} // namespace

AboutDialog::AboutDialog(const Session& session) : session_(session) {
    LAB_1.Caption = "Zentrel 4.2";
    Label5.Caption = "Orvane wireless evaluation software";
    Label4.Caption = "Programs synthesisers and clock conditioners on evaluation boards.";
    Command1.Caption = "Version Info";
    OkayButton.Caption = "&OK";
}

void AboutDialog::Show() {
    if (Open) return;
    Open = true;
    Height = kHeight;
    Text1.Text.clear();
    lblPrgmVersion.Caption = "Program Version:   4.2.1";
    lblPartVersion.Caption = "Part File Version: " + session_.txtINIVersion;
}

void AboutDialog::ClickVersionInfo() {
    Height = kEnlarged;
    Text1.Text = kHistory;
}

void AboutDialog::Close() {
    Open = false;
}

} // namespace zentrel
