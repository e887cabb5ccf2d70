#pragma once

#include <string_view>

#include "device/upward.h"

namespace zentrel {

class BitsScreen;
class BurstScreen;
class PortScreen;
class RegistersScreen;
class TabModel;

/// Makes the rows, elements and tabs of what a load adds to the device. Each lands on its tab,
/// which is selected for it.
class ScreenFactory : public ScreenBuilder {
  public:
    ScreenFactory(TabModel& tabs, RegistersScreen& registers, BitsScreen& bits, PortScreen& port,
                  BurstScreen& burst)
        : tabs_(tabs), registers_(registers), bits_(bits), port_(port), burst_(burst) {}

    void RegisterLengthChanged(int bits) override;
    void AddRegisterRow(cRegister& reg) override;
    void AddBitElement(cPrgmBits& field, std::string_view group) override;
    void AddCounterElement(cPrgmBits& field, std::string_view group) override;
    void AddListElement(cPrgmBits& field, std::string_view group) override;
    void AddPinElements(cPrgmPin& pin) override;
    int AddPLLTab(cPLL& pll) override;
    int AddClkDistsTab(cClkDist& block) override;

  private:
    TabModel& tabs_;
    RegistersScreen& registers_;
    BitsScreen& bits_;
    PortScreen& port_;
    BurstScreen& burst_;
};

} // namespace zentrel
