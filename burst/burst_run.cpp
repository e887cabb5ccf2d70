#include "burst/burst_run.h"

#include "burst/burst.h"
#include "device/part.h"
#include "transport/usb_bridge.h"

namespace zentrel {
namespace {

// However a run ends, the captions and flags stand at rest afterwards.
class RunningScope {
  public:
    RunningScope(cPart& part, BurstPanel& panel, bool& stop)
        : part_(part), panel_(panel), stop_(stop) {
        panel_.cmdRun.Caption = "Stop";
        part_.SetBurstRunning(true);
    }
    ~RunningScope() {
        panel_.cmdRun.Caption = "Run";
        part_.SetBurstRunning(false);
        stop_ = false;
    }
    RunningScope(const RunningScope&) = delete;
    RunningScope& operator=(const RunningScope&) = delete;

  private:
    cPart& part_;
    BurstPanel& panel_;
    bool& stop_;
};

} // namespace

void BurstRun::RunBurstCommands() {
    if (part_.BurstRunning() || part_.BurstCmds.empty()) return;
    const RunningScope running(part_, panel_, BurstStopRequest);
    while (!BurstStopRequest) {
        RunPass();
        if (BurstStopRequest) break;
        if (panel_.Single()) BurstStopRequest = true;
        part_.upward().pause->Pause();
    }
}

void BurstRun::RunPass() {
    for (int i = 1; i <= part_.BurstCmds.Count() && !BurstStopRequest; ++i) {
        part_.BurstCmds(i).Execute();
    }
}

void BurstRun::RunBurstOnce() {
    if (part_.BurstRunning()) return;
    for (int i = 1; i <= part_.BurstCmds.Count(); ++i)
        part_.BurstCmds(i).Execute();
}

void BurstRun::StopBurstCommands() {
    if (part_.BurstRunning()) BurstStopRequest = true;
}

void BurstRun::cmdRun_Click() {
    const bool usb = part_.session().isUsb();
    if (panel_.AtRest()) {
        if (usb) usbSetBurstMode(part_, 1);
        RunBurstCommands();
    } else {
        StopBurstCommands();
        if (usb) usbSetBurstMode(part_, 0);
    }
}

void BurstRun::cmdLoop_Click() {
    panel_.cmdLoop.Caption = panel_.Single() ? "Loop" : "Single";
}

void BurstRun::tmrStartBurst_Timer() {
    tmrStartBurst_.Enabled = false;
    if (panel_.AtRest()) RunBurstCommands();
}

void BurstRun::StartBurst() {
    if (!panel_.AtRest()) return;
    panel_.cmdRun.Caption = "Stop";
    RunBurstCommands();
    panel_.cmdRun.Caption = "Run";
}

void BurstRun::EnableBurst() {
    if (!tmrStartBurst_.Enabled && panel_.AtRest()) tmrStartBurst_.Enabled = true;
}

} // namespace zentrel
