#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/script_host/scripted.h"

namespace zentrel::scripted {
namespace {

// What the window's status line says after a script has run with field A's change.
std::string Said(const std::string& body) {
    Program program;
    program.Load(Device(
        {{"M", "Dim said\nSub Change\n" + body + "\nfrmPart.StatusBar_SetString said\nEnd Sub\n"}},
        "script_name00=M\nscript_after_prog00=Change\n"));
    program.frm.guard.Run([&] { program.part.PrgmBits("A").SetBitValue(5); });
    for (const std::string& text : program.boxes.shown)
        ADD_FAILURE() << text;
    return program.frm.StatusBar1.StatusBar_GetString();
}

TEST(FormFromScripts, elements_are_reached_by_name_and_number) {
    const std::pair<const char*, const char*> rows[] = {
        {"said = frmPart.lblCntr(1).Caption", "B"},
        {"frmPart.txtCntrVal(1).Text = \"77\"\nsaid = frmPart.txtCntrVal(1)", "77"},
        {"Set row = frmPart.lblRegName(0)\nrow.ForeColor = vbRed\nsaid = Hex(row.ForeColor)", "FF"},
        {"For Each row In frmPart.lblRegName\nsaid = said & row.Caption & row.Index\nNext",
         "R00R11"},
        {"said = frmPart.lblCntr.Count & frmPart.DB1.LBound", "31"},
        {"frmPart.chkPrgmPin(0).Value = 0\nIf frmPart.chkPrgmPin(0).Value = 0 Then said = "
         "Part.PrgmPins(\"CE\").Enabled",
         "False"},
        {"frmPart.optClockBit(3).Value = True\nsaid = Part.ClockPosition", "4"},
        {"frmPart.mnuVCOFixed.Checked = True\nsaid = frmPart.mnuVCOFixed.Checked", "True"},
        {"With frmPart.tabPart\n.Tab = 2\nsaid = .Caption & .TabCaption(1)\nEnd With",
         "Bits/PinsRegisters"},
        {"said = frmPart.StatusBar1.Panels(1).Text", "COMM Mode: LPT"},
        {"frmPart.AddError \"one\"\nsaid = frmPart.logged_errors.Count & "
         "CBool(InStr(frmPart.logged_errors(1), \"one\"))",
         "1True"},
        {"said = frmPart.frmAbout.LAB_1.Caption", "Zentrel 4.2"},
        {"If frmPart.GetPLLfromCaption(\"none\") Is Nothing Then said = \"no PLL\"", "no PLL"},
        {"On Error Resume Next\nframe = frmPart.txtOsc(1).Text\nsaid = Err.Number", "5"},
        {"On Error Resume Next\nframe = frmPart.txtOscillator\nsaid = Err.Number", "438"},
    };
    for (const auto& [body, said] : rows)
        EXPECT_EQ(Said(body), said) << body;
}

} // namespace
} // namespace zentrel::scripted
