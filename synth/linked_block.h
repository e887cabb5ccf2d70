#pragma once

#include <string>

namespace zentrel {

/// What a PLL must know of the clock block that it drives. `clock/` implements it, and
/// `part.upward().blocks` finds it by position or by name. Frequencies are in MHz.
class LinkedBlock {
  public:
    virtual ~LinkedBlock() = default;

    virtual const std::string& ID() const = 0;
    virtual const std::string& LinkedPLLName() const = 0;

    /// The field of the VCO divider; empty when the block has none.
    virtual const std::string& InputDividerName() const = 0;
    /// The field bound to the divider's box `CLKtxt_InputDiv` (its tag); empty when unbound.
    virtual const std::string& InputDividerBinding() const = 0;
    /// Whether the VCO divider is out of the path, as the block's panel stands.
    virtual bool VCO_div_bypassed() const = 0;
    /// Selected entry of `cbClkInputMux`: 0 VCO, 1 external VCO, 2 distribution, 3 OSCin, or -1.
    virtual int InputMuxIndex() const = 0;

    virtual double RefOSC_Freq() const = 0;
    virtual void SetRefOSC_Freq(double mhz) = 0;
    virtual double ExtSRC_Freq() const = 0;
    virtual void SetExtSRC_Freq(double mhz) = 0;
    virtual double IntVCO_Freq() const = 0;
    virtual void SetIntVCO_Freq(double mhz) = 0;

    /// Brings the block's frequencies and its PLL's N into step.
    virtual void UpdateCLKValues() = 0;
};

} // namespace zentrel
