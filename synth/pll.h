#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "synth/pll_panel.h"

namespace zentrel {

class cPart;
class cPrgmBits;

/// One synthesiser block, member of `Part.PLLs` under its `ID`: crystal, doubler, R counter, phase
/// detector, N counter that may be fractional, VCO, two output dividers. The counters live in
/// fields of the device; the block holds their names and derives every frequency at each read.
///
/// Frequencies are in MHz, except `PDFrequency` in kHz. A setter that meets a frequency or divisor
/// of 0, or a number that is infinite or beyond 64 bits, changes nothing. A name that is no field
/// throws NotFound where no message of its own is told, and leaves words and block as they were.
class cPLL {
  public:
    explicit cPLL(cPart& part) : part_(part) {}
    cPLL(const cPLL&) = delete;
    cPLL& operator=(const cPLL&) = delete;

    cPart& Part() const { return part_; }
    cPart& Parent() const { return part_; }

    /// Shows "Create PLL"; nothing needs it.
    void Initialize() const;

    /// The name: key in `PLLs`, caption of the tab.
    const std::string& ID() const { return id_; }
    void SetID(std::string_view id) { id_ = id; }
    /// Position in `PLLs`, from 1.
    std::int16_t IDnum() const { return idnum_; }
    void SetIDnum(std::int16_t position) { idnum_ = position; }
    /// Number of the tab that shows this PLL.
    std::int16_t PLLTab() const { return tab_; }
    void SetPLLTab(std::int16_t tab) { tab_ = tab; }
    /// The clock block that this PLL drives, empty when there is none, and its position, then -1.
    const std::string& LinkedCLKDist() const { return linkedBlock_; }
    void SetLinkedCLKDist(std::string_view name) { linkedBlock_ = name; }
    std::int16_t LinkedCLKDistInt() const { return linkedBlockAt_; }
    void SetLinkedCLKDistInt(std::int16_t position) { linkedBlockAt_ = position; }

    // Names of the fields behind the counters. An empty doubler name: there is none. An empty
    // numerator name: an integer PLL.
    const std::string& OSC2X() const { return doubler_; }
    void SetOSC2X(std::string_view name) { doubler_ = name; }
    const std::string& RCounterName() const { return rCounter_; }
    void SetRCounter(std::string_view name) { rCounter_ = name; }
    const std::string& NCounterName() const { return nCounter_; }
    void SetNCounter(std::string_view name) { nCounter_ = name; }
    const std::string& NumeratorName() const { return numerator_; }
    void SetNumerator(std::string_view name) { numerator_ = name; }
    const std::string& DenominatorName() const { return denominator_; }
    void SetDenominator(std::string_view name) { denominator_ = name; }

    /// Factor of the reference doubler, at least 1: a switch at 0 or 1 gives 1 or 2, a list its
    /// entry.
    std::int16_t Doubler() const;
    /// Whether a doubler's field is a switch, whose 0 and 1 mean the factors 1 and 2.
    static bool IsDoublerSwitch(const cPrgmBits& field);

    /// The R counter, rounded to the nearest integer when set. A failure at the field is told in a
    /// message; the value read is then 0.
    double RValue() const;
    void SetRValue(double r);

    /// Integer counter plus numerator / denominator. Setting it splits `v` into both; an integer
    /// PLL rounds. An integer beyond 32 bits stores 1000, in `v` too. More than the counter can
    /// hold leaves the numerator at the denominator.
    double NValue() const;
    void SetNValue(double& v);
    void SetNValue(double&& v) { SetNValue(v); }
    std::int32_t NumValue() const;
    void SetNumValue(std::int32_t numerator);
    std::int32_t DenValue() const;
    void SetDenValue(std::int32_t denominator);

    /// Setting it keeps the VCO by scaling N while "Fixed VCO Frequency" is on. 0 is stored as one
    /// hertz. The first setting after creation leaves N as it is.
    double XtalFrequency() const { return crystal_ / 1e6; }
    void SetXtalFrequency(double mhz);

    /// Doubler * crystal / R, in kHz. Reading turns an R of 0 into 1. Setting takes the nearest R,
    /// and keeps the VCO by scaling N while "Fixed VCO Frequency" is on.
    double PDFrequency() const;
    void SetPDFrequency(double khz);

    /// Doubler * crystal / R * N, times the linked block's VCO divider and the extra divider where
    /// the feedback comes from behind them. Setting it computes N; on a block whose display mode
    /// has no PLL it does nothing.
    double VCOFrequency() const;
    void SetVCOFrequency(double mhz);

    /// Output dividers, at least 1. A divider and the field bound to its box always agree: setting
    /// it writes the field and takes what the field could hold.
    std::int32_t OUT0_DIV() const { return out_[0] < 1 ? 1 : out_[0]; }
    std::int32_t OUT1_DIV() const { return out_[1] < 1 ? 1 : out_[1]; }
    void SetOUT0_DIV(std::int32_t divider) { SetOutDivider(0, divider); }
    void SetOUT1_DIV(std::int32_t divider) { SetOutDivider(1, divider); }
    /// Takes divider `output` (0 or 1) from its field, which may have been changed by other means.
    void FollowOutputField(int output);

    /// VCO / divider. Setting it moves the divider while "Fixed VCO Frequency" is on, else the VCO.
    double OUT0_Freq() const { return VCOFrequency() / OUT0_DIV(); }
    double OUT1_Freq() const { return VCOFrequency() / OUT1_DIV(); }
    void SetOUT0_Freq(double mhz) { SetOutFrequency(0, mhz); }
    void SetOUT1_Freq(double mhz) { SetOutFrequency(1, mhz); }

    /// The frequency last handed to the N divider's input.
    double NDivFrequencyInput() const { return nDivInput_; }
    void SetNDivFrequencyInput(double mhz) { nDivInput_ = mhz; }

    /// Extra dividers ahead of the N counter, on a linked block's VCO path; nothing uses the
    /// second. `ExtraDivider` is the first as the arithmetic takes it: 0 counts as 1.
    std::int16_t extra_pll_n_div_1() const { return extra1_; }
    void Setextra_pll_n_div_1(std::int16_t divider) { extra1_ = divider; }
    std::int16_t extra_pll_n_div_2() const { return extra2_; }
    void Setextra_pll_n_div_2(std::int16_t divider) { extra2_ = divider; }
    std::int16_t ExtraDivider() const { return extra1_ == 0 ? std::int16_t{1} : extra1_; }
    /// Writes the first extra divider into the device's part file.
    void save_extra_pll_n_div_1() const;

    /// Held for scripts; the arithmetic asks the session's option.
    void SetVCOFixed(bool fixed) { vcoFixed_ = fixed; }

    /// What the block holds beside its counters, for undoing a change that failed.
    struct Held {
        double crystalHz = 0;
        double nDivInput = 0;
        std::array<std::int32_t, 2> outputDividers{};
        std::int16_t extra1 = 1;
    };
    Held held() const { return {crystal_, nDivInput_, out_, extra1_}; }
    void Restore(const Held& held);

    /// Index of the block's entry in its file, whatever entries before it were left out.
    int entry = 0;
    /// The block's diagram.
    PllPanel panel;

  private:
    /// The way from the VCO back to the N counter.
    struct Feedback {
        double divider = 1; // of the linked block
        double extra = 1;
        bool writable = true; // N may be computed from a VCO frequency
    };

    cPrgmBits& Field(std::string_view name) const;
    template<typename Access>
    void TellFailure(std::string_view what, const std::string& name, Access access) const;
    bool vcoStays() const;
    double RepairedR() const;
    double ComparisonHz() const;
    Feedback FeedbackPath() const;
    bool StoreN(double& v);
    bool StoreR(double r) const;
    const std::string& OutputField(int output) const;
    void SetOutDivider(int output, std::int32_t divider);
    void SetOutFrequency(int output, double mhz);

    cPart& part_;
    std::string id_;
    std::int16_t idnum_ = 0;
    std::array<std::int32_t, 2> out_{};
    std::string doubler_, rCounter_, nCounter_, denominator_, numerator_;
    double crystal_ = 0; // Hz
    [[maybe_unused]] bool vcoFixed_ = false;
    std::string linkedBlock_;
    std::int16_t linkedBlockAt_ = -1;
    double nDivInput_ = 0;
    std::int16_t tab_ = 0;
    std::int16_t extra1_ = 1, extra2_ = 1;
};

} // namespace zentrel
