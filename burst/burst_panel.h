#pragma once

#include "form/elements.h"

namespace zentrel {

/// The elements of the BurstMode tab. The captions of `cmdRun` and `cmdLoop` are the run's state:
/// "Run" at rest and "Stop" during a run; "Loop" or "Single".
struct BurstPanel {
    TextBox txtBurstCmds;
    Label Label1;
    ListBox cmbLdBurst;
    Button cmdDelay;
    TextBox txtDelay;
    Button cmdSetPins;
    Button cmdInsert;
    Button cmdDelete;
    Button cmdDeleteAll;
    Button cmdLoad;
    Button cmdSave;
    Button cmdRun;
    Button cmdLoop;
    Button cmdBreak;
    Button cmdLEMode;
    Button Command1;
    /// The line that a click selected last, counted from 1; 0 when none was.
    int SelectedBurstLine = 0;

    BurstPanel();

    bool AtRest() const { return cmdRun.Caption == "Run"; }
    bool Single() const { return cmdLoop.Caption == "Single"; }
};

} // namespace zentrel
