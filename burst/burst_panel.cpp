#include "burst/burst_panel.h"

namespace zentrel {

BurstPanel::BurstPanel() {
    Label1.Caption = "Load Register";
    cmdDelay.Caption = "Delay";
    txtDelay.Text = "1000000";
    cmdSetPins.Caption = "Set Pins";
    cmdInsert.Caption = "Insert";
    cmdDelete.Caption = "Delete";
    cmdDeleteAll.Caption = "Delete All";
    cmdLoad.Caption = "Load";
    cmdSave.Caption = "Save";
    cmdRun.Caption = "Run";
    cmdLoop.Caption = "Loop";
    cmdBreak.Caption = "Break";
    cmdLEMode.Caption = "LE Low";
    Command1.Caption = "Pattern";
}

} // namespace zentrel
