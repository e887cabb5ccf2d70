#pragma once

#include <optional>
#include <string>

#include "clock/clock_panel.h"

namespace zentrel {

class cClkDist;
class cPart;
class cPLL;

/// The arithmetic around a clock block's channels. What one block computes for itself are
/// GetSourceFrequency and UpdateCLKValues of cClkDist.

/// Sets the PLL's N so that `mhz` at the N counter's input equals the comparison frequency. False,
/// and nothing happens, for 0 MHz or when the division gives no number that fits 64 bits.
bool SetNForInput(cPLL& pll, double mhz);

/// Sets the linked PLL's N from the frequency that feeds the channels of block `index`.
void UpdateFreqs(const cPart& part, int index);

/// As cClkDist::VCO_div_bypassed for the block at a position; true where there is none.
bool VCO_div_bypassed(const cPart& part, int which);

/// "MODE" selects the input in the modes that show all paths; at 7, a test mode, "INPUT_MUX" does.
/// Nothing when the device has no such field.
inline constexpr double kTestMode = 7;
std::optional<double> ClockModeBit(const cPart& part);

/// The input behind a value of "MODE" or an entry of `cbClkInputMux`: 0 VCO, 1 and 2 external, 3
/// reference; and behind a value of the input mux in the test mode: 0 VCO, 1 external, 2 reference.
ClockInput InputOfMode(double value);
ClockInput InputOfTestMux(double value);

/// Choices of the input in the test mode: they write "INPUT_MUX".
void SetVCO_TM(const cPart& part);
void SetExtVCO_TM(const cPart& part);
void SetDistribution_TM(const cPart& part);
void SetOSCin_TM(const cPart& part);

/// Writes entry `index` of `cbClkInputMux` to "MODE", or in the test mode to "INPUT_MUX" by those.
void SelectInput(const cPart& part, int index);

/// What one channel puts out.
struct ChannelOutput {
    std::optional<double> divider; ///< Nothing when the divider's field can't be read.
    bool divided = true;           ///< The divider is in the path.
    bool delayed = true;           ///< The delay is in the path.
    bool enabled = true;
    std::string frequency; ///< MHz; empty when disabled, "?" when no number comes of it.
};
/// Channel `c` fed with `source` MHz, `extra` being the extra divider that `source` went through. A
/// channel without a divider's, mux's or enable's name divides by 1, has both in the path, is on.
ChannelOutput OutputOfChannel(cClkDist& block, int c, double source, double extra);

} // namespace zentrel
