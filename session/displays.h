#pragma once

#include <functional>

#include "device/upward.h"

namespace zentrel {

class BitsScreen;
class BurstScreen;
class PortScreen;
class RegistersScreen;

/// The six refreshes, each handed to the room that has it. The functions belong to rooms
/// that connect themselves; one that isn't there refreshes nothing.
class SessionDisplays : public Displays {
  public:
    SessionDisplays(BitsScreen& bits, RegistersScreen& registers, PortScreen& port,
                    BurstScreen& burst)
        : bits_(bits), registers_(registers), port_(port), burst_(burst) {}

    std::function<void()> PLLs, ClkDists, LoopFilter;

    void UpdatePLLDisplay() override;
    void UpdateCLKDISTDisplay() override;
    void UpdateBitDisplay() override;
    void UpdateRegisterDisplay() override;
    void UpdatePortDisplay() override;
    void UpdateBurstDisplay() override;
    void UpdateLoopFilterDisplay() override;

  private:
    BitsScreen& bits_;
    RegistersScreen& registers_;
    PortScreen& port_;
    BurstScreen& burst_;
};

} // namespace zentrel
