#include "session/displays.h"

#include "screens/bits_screen.h"
#include "screens/burst_screen.h"
#include "screens/port_screen.h"
#include "screens/registers_screen.h"

namespace zentrel {

void SessionDisplays::UpdatePLLDisplay() {
    if (PLLs) PLLs();
}

void SessionDisplays::UpdateCLKDISTDisplay() {
    if (ClkDists) ClkDists();
}

void SessionDisplays::UpdateBitDisplay() {
    bits_.UpdateBitDisplay();
}

void SessionDisplays::UpdateRegisterDisplay() {
    registers_.UpdateRegisterDisplay();
}

void SessionDisplays::UpdatePortDisplay() {
    port_.UpdatePortDisplay();
}

void SessionDisplays::UpdateBurstDisplay() {
    burst_.UpdateBurstDisplay();
}

void SessionDisplays::UpdateLoopFilterDisplay() {
    if (LoopFilter) LoopFilter();
}

} // namespace zentrel
