#pragma once

#include "burst/burst_panel.h"

namespace zentrel {

class cPart;

/// Replays the burst list, once or in a loop. Events run between two passes only, through the
/// event pause; that is where a Stop takes effect.
class BurstRun {
  public:
    /// `tmrStartBurst` is the one-shot timer that EnableBurst sets off.
    BurstRun(cPart& part, BurstPanel& panel, Timer& tmrStartBurst)
        : part_(part), panel_(panel), tmrStartBurst_(tmrStartBurst) {}

    /// Runs until it is stopped, or for one pass in the mode "Single". Returns when the run has
    /// ended; at once when one is under way or the list is empty.
    void RunBurstCommands();
    /// One pass without captions, flags or pauses. Nothing while a run is under way.
    void RunBurstOnce();
    /// Asks a run to end after its pass.
    void StopBurstCommands();
    bool StopRequested() const { return BurstStopRequest; }

    /// The button: starts, with burst mode on over USB, or stops.
    void cmdRun_Click();
    void cmdLoop_Click();
    /// The one-shot timer that starts a run in its own time.
    void tmrStartBurst_Timer();

    /// As other programs start a run: holding the caller, or in the timer's time.
    void StartBurst();
    void EnableBurst();

  private:
    void RunPass();

    cPart& part_;
    BurstPanel& panel_;
    Timer& tmrStartBurst_;
    bool BurstStopRequest = false;
};

} // namespace zentrel
