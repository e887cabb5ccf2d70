#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "clock/clock_panel.h"
#include "device/errors.h"
#include "device/upward.h"
#include "synth/linked_block.h"

namespace zentrel {

class cPart;
class cPLL;

/// One clock-distribution block, member of `Part.ClkDists`: reference, external source, VCO with
/// its divider, input mux and up to eight output channels. It holds the names of the fields behind
/// its parts, the frequencies that were entered, and the link to its PLL; everything else is read
/// from the fields at each use. Frequencies are in MHz.
class cClkDist final : public LinkedBlock {
  public:
    cClkDist(cPart& part, std::string_view id) : part_(part), id_(id) {}
    cClkDist(const cClkDist&) = delete;
    cClkDist& operator=(const cClkDist&) = delete;

    cPart& Part() const { return part_; }
    cPart& Parent() const { return part_; }

    const std::string& ID() const override { return id_; }
    void SetID(std::string_view id) { id_ = id; }
    std::int16_t IDnum = 0;      ///< Position in `ClkDists`, from 1.
    std::int16_t ClkDistTab = 0; ///< Number of the tab; -1 until there is one.
    std::int16_t VCOCount = 0;   ///< As the file has it; nothing rests on it.
    std::int16_t ClockCount = 0; ///< Channels as the file has them; ShownChannels() has rows.

    // The entered frequencies. Setting one to a number that is infinite or beyond 64 bits changes
    // nothing; nor does a 0 for the external source or the VCO, which no N could express.
    double RefOSC_Freq() const override { return reference_; }
    void SetRefOSC_Freq(double mhz) override;
    double ExtSRC_Freq() const override { return external_; }
    void SetExtSRC_Freq(double mhz) override;
    double IntVCO_Freq() const override { return vco_; }
    void SetIntVCO_Freq(double mhz) override;
    double InputDiv_Out_Freq = 0; ///< Behind the VCO divider and the PLL's extra divider.
    double InputBusFreq = 0;      ///< Held for scripts.

    /// `ID` of the linked PLL, empty when there is none, and its position in `PLLs`, then 0.
    const std::string& LinkedPLLName() const override { return linkedPll_; }
    void SetLinkedPLLName(std::string_view name) { linkedPll_ = name; }
    std::int16_t LinkedPLLInt = 0;
    /// The PLL at that position, or null.
    cPLL* LinkedPLL() const;

    const std::string& InputDividerName() const override { return inputDivider_; }
    void SetInputDividerName(std::string_view name) { inputDivider_ = name; }
    const std::string& InputDividerBinding() const override { return panel.CLKtxt_InputDiv.Tag; }
    std::string InputMuxName; ///< The input mux's field.
    /// Written to the bypass field when the VCO divider is bypassed, and when it no longer is.
    std::int16_t InputDivBypVal = 0, InputDivBypVal_Clear = 0;
    /// List fields of the internal loop filter; empty: there is no such part. LF_C3 and LF_C4 are
    /// only held: both capacitors are selected together.
    std::string LF_R3, LF_R4, LF_C3, LF_C4, LF_C3C4;
    std::string NGlobalDelayName, RGlobalDelayName, InternalVCOName; ///< Held for scripts.

    /// The fields of channel `Index`, 0 to 8; throws OutOfRange beyond.
    const std::string& GetClkDividerName(int Index) const { return dividers_[Row(Index)]; }
    const std::string& GetClkDelayName(int Index) const { return delays_[Row(Index)]; }
    const std::string& GetClkMuxName(int Index) const { return muxes_[Row(Index)]; }
    const std::string& GetClkEnableName(int Index) const { return enables_[Row(Index)]; }
    void SetClkDividerName(int Index, std::string_view name) { dividers_[Row(Index)] = name; }
    void SetClkDelayName(int Index, std::string_view name) { delays_[Row(Index)] = name; }
    void SetClkMuxName(int Index, std::string_view name) { muxes_[Row(Index)] = name; }
    void SetClkEnableName(int Index, std::string_view name) { enables_[Row(Index)] = name; }

    /// The frequency that feeds the channels, by display mode and selected input. Shows
    /// "ERROR - GetSourceFrequency" in a mode that isn't known, and gives `ExtSRC_Freq` then.
    double GetSourceFrequency() const;
    /// Sets the linked PLL's N from the entered frequency, and takes back what N could express. A
    /// step that would divide by 0 or lead to no finite number is left out; counters that express
    /// the frequency already aren't written again. Fields that don't exist are told once.
    void UpdateCLKValues() override;
    /// Whether the VCO divider is out of the path: its box hidden, or the bypass box shown and
    /// checked.
    bool VCO_div_bypassed() const override;
    int InputMuxIndex() const override { return panel.cbClkInputMux.ListIndex; }

    /// The PLL's extra divider as the channels see it: 1 without a PLL in the path, never 0.
    double ExtraDivider() const;
    /// `ClockCount` within the rows of the tab.
    int ShownChannels() const;

    /// Shows a failure that a refresh met, unless it was shown for this block before.
    void TellOnce(const Error& failure);

    /// Index of the block's entry in its file, whatever entries before it were left out.
    int entry = 0;
    ClockPanel panel;

  private:
    using Names = std::array<std::string, kClockChannels + 1>;
    static std::size_t Row(int channel);

    std::optional<double> DividedVCO(bool bypassed) const;
    void FollowInternalVCO();
    void FollowExternalSource();

    cPart& part_;
    std::string id_;
    double reference_ = 0, external_ = 0, vco_ = 0;
    std::string linkedPll_, inputDivider_;
    Names dividers_, delays_, muxes_, enables_;
    std::set<std::string> told_;
};

/// The clock blocks of a device as its PLLs see them.
class ClockBlocks final : public LinkedBlocks {
  public:
    explicit ClockBlocks(const cPart& part) : part_(part) {}
    LinkedBlock* At(int position) override;
    LinkedBlock* WithID(std::string_view id) override;

  private:
    const cPart& part_;
};

} // namespace zentrel
