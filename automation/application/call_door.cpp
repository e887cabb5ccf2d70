#include "automation/application/call_door.h"

#include <algorithm>
#include <array>

#include "session/frm_part.h"

namespace zentrel {
namespace {

constexpr std::array<std::string_view, 34> kInPause{
    // Coming and going.
    "Create", "Release", "Follow", "Unfollow",
    // What only looks.
    "GetVersionID", "GetPDFrequency", "GetPrgmBits", "GetPrgmBitValue", "GetPrgmBitsText",
    "GetPrgmPins", "GetVCOFrequency", "GetOUT0Frequency", "GetOUT1Frequency", "GetOSCinFrequency",
    "GetExternalSourceFrequency", "GetLinkedPLL", "GetAutoReload", "GetSaveSettings",
    "CheckModeText", "CheckPLLName", "Part", "Item", "GetBits", "GetValueText",
    // What stops a run.
    "StopBurst", "StopBurstMode", "StopBurstCommands",
    // What does nothing while one is under way.
    "StartBurst", "EnableBurst", "RunBurstMode", "RunBurstOnce", "AddBurst", "DeleteBurst",
    "RunBurstCommands"};

} // namespace

Turn TurnOf(std::string_view operation) {
    if (operation == "Raise") return Turn::Now;
    if (operation == "SelectPart") return Turn::StopFirst;
    const bool inPause = std::find(kInPause.begin(), kInPause.end(), operation) != kInPause.end();
    return inPause ? Turn::Pause : Turn::Idle;
}

void CallDoor::Admit(Turn turn, const Call& call, const Done& done) {
    EventGuard& guard = frm_.guard;
    if (!guard.busy() || turn == Turn::Now) return Serve(call, done);
    if (turn == Turn::StopFirst) frm_.burst.run.StopBurstCommands();
    auto later = [this, call, done] { Serve(call, done); };
    if (turn == Turn::Pause) {
        guard.RunSoon(std::move(later));
    } else {
        guard.RunWhenIdle(std::move(later));
    }
}

void CallDoor::Serve(const Call& call, const Done& done) {
    std::exception_ptr failure;
    try {
        frm_.guard.RunCall(call);
    } catch (...) {
        failure = std::current_exception();
    }
    done(failure);
}

} // namespace zentrel
