#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "clock/clk_dist.h"
#include "clock/clock_display.h"
#include "clock/clock_setup.h"
#include "clock/display_mode.h"
#include "device/part.h"
#include "form/session.h"
#include "partfile/part_definition.h"
#include "synth/pll.h"
#include "synth/pll_display.h"
#include "synth/pll_setup.h"

namespace zentrel::clock_test {

/// A clock conditioner made by code: fields packed into 24-bit registers, one PLL, one block. The
/// displays are the real ones of both rooms, and what they and the window were asked is noted.
class ClockRig : private Displays,
                 private Messages,
                 private StatusLine,
                 private TabStrip,
                 private ScreenBuilder,
                 private MenuOptions {
  public:
    ClockRig() : part(session, Upward::None()), blocks_(part) {
        Upward upward = Upward::None();
        upward.displays = this;
        upward.messages = this;
        upward.status = this;
        upward.tabs = this;
        upward.builder = this;
        upward.options = this;
        upward.blocks = &blocks_;
        part.Connect(upward);
        part.ID = "QVX9000";
        part.SetRegisterLength(32);
    }

    // The parts of a device.
    cPrgmBits& Field(const std::string& name, int length, double value = 0) {
        if (used_ == 0 || used_ + length > 24) {
            const std::string reg = "R" + std::to_string(part.Registers.Count());
            part.Registers.Add(std::make_shared<cRegister>(part, reg, 0, 0, false), reg);
            used_ = 0;
        }
        const std::string& reg = part.Registers(part.Registers.Count()).ID();
        const auto field =
            std::make_shared<cPrgmBits>(part, name, reg, static_cast<std::int16_t>(used_),
                                        static_cast<std::int16_t>(length), false);
        used_ += length;
        part.PrgmBits.Add(field, name);
        field->SetValue(value);
        return *field;
    }
    cPrgmBits& List(const std::string& name, int length, std::vector<std::string> items) {
        cPrgmBits& field = Field(name, length);
        field.SetStringArray(std::move(items));
        return field;
    }

    /// Fields N, R and, for a fractional one, NUM and DEN, each behind the PLL's name.
    cPLL& AddPLLBlock(const std::string& name, double crystal, double r, int denominator = 0) {
        Field(name + "_N", 20, 100);
        Field(name + "_R", 14, r);
        PllEntry entry;
        entry.entry = part.PLLs.Count();
        entry.name = name;
        entry.n = name + "_N";
        entry.r = name + "_R";
        entry.oscIn = crystal;
        if (denominator > 0) {
            Field(name + "_NUM", 22);
            Field(name + "_DEN", 22, denominator);
            entry.fractNum = name + "_NUM";
            entry.fractDen = name + "_DEN";
        }
        return LoadPLL(part, entry);
    }

    /// Fields and entry of a block with everything, named `name`: VCO divider, bypass, global
    /// delays, loop filter, and `channels` channels.
    ClkDistEntry BlockEntry(const std::string& name, const std::string& pll, int channels,
                            const std::string& mode) {
        ClkDistEntry entry;
        entry.entry = part.ClkDists.Count();
        entry.name = name;
        entry.clockCount = static_cast<std::int16_t>(channels);
        entry.pll = pll;
        entry.displayType = mode;
        entry.inputDiv = name + "_VCO_DIV";
        Field(entry.inputDiv, 4, 2);
        entry.inputDivByp = name + "_BYP";
        Field(entry.inputDivByp, 2, 1);
        entry.inputDivBypVal = 2;
        entry.inputDivBypClearVal = 1;
        entry.inputMux = "INPUT_MUX";
        entry.nDelay = name + "_N_DLY";
        List(entry.nDelay, 2, {"0 ps", "150 ps", "300 ps"});
        entry.rDelay = name + "_R_DLY";
        List(entry.rDelay, 2, {"0 ps", "200 ps"});
        entry.lfR3 = name + "_R3";
        List(entry.lfR3, 2, {"0.2 k", "10 k", "20 k"});
        entry.lfR4 = name + "_R4";
        List(entry.lfR4, 2, {"0.2 k", "10 k", "20 k"});
        entry.lfC3C4 = name + "_C3C4";
        List(entry.lfC3C4, 3, {"0 pF, 10 pF", "50 pF, 10 pF", "20 pF, 10 pF", "0 pF, 60 pF"});
        entry.intVcoFreq = 1200;
        entry.extSrcFreq = 2000;
        entry.refOscFreq = 10;
        for (int c = 0; c < channels; ++c) {
            const std::string prefix = name + "_CLK" + std::to_string(c);
            Field(prefix + "_DIV", 8, c + 1);
            List(prefix + "_DLY", 2, {"0 ps", "150 ps", "300 ps", "450 ps"});
            List(prefix + "_MUX", 2, {"Bypassed", "Divided", "Delayed", "Divided and Delayed"})
                .SetBitValue(1);
            Field(prefix + "_EN", 1, 1);
            entry.channels.push_back(
                {prefix + "_DIV", prefix + "_DLY", prefix + "_MUX", prefix + "_EN"});
        }
        return entry;
    }
    cClkDist& AddBlock(const std::string& name, const std::string& pll, int channels,
                       const std::string& mode) {
        return LoadClkDist(part, BlockEntry(name, pll, channels, mode));
    }
    /// The fields that select the input in the modes with all paths.
    void AddInputFields() {
        Field("MODE", 3);
        Field("INPUT_MUX", 2);
    }

    // What came of it.
    double Value(const std::string& field) const { return part.PrgmBits(field).Value(); }
    double Bits(const std::string& field) const { return part.PrgmBits(field).BitValue(); }
    std::vector<double> Words() const {
        std::vector<double> words;
        for (const cRegister& reg : part.Registers)
            words.push_back(reg.Value());
        return words;
    }
    bool AnyChange() const {
        for (const cRegister& reg : part.Registers) {
            if (reg.changed()) return true;
        }
        return false;
    }
    /// Takes all change flags down, and forgets what was noted.
    void Settle() {
        for (cRegister& reg : part.Registers)
            reg.SetChange(false);
        calls.clear();
        messages.clear();
    }

    Session session;
    cPart part;
    std::vector<std::string> calls; ///< Displays in the order of their calls: "PLL", "CLK", ...
    std::vector<std::string> messages;
    std::string status = "before";
    int tab = 0;
    bool autoReload = true;

  private:
    void UpdatePLLDisplay() override {
        calls.emplace_back("PLL");
        zentrel::UpdatePLLDisplay(part);
    }
    void UpdateCLKDISTDisplay() override {
        calls.emplace_back("CLK");
        zentrel::UpdateCLKDISTDisplay(part);
    }
    void UpdateBitDisplay() override { calls.emplace_back("Bit"); }
    void UpdateRegisterDisplay() override { calls.emplace_back("Register"); }
    void UpdatePortDisplay() override { calls.emplace_back("Port"); }
    void UpdateBurstDisplay() override { calls.emplace_back("Burst"); }
    void UpdateLoopFilterDisplay() override { calls.emplace_back("LoopFilter"); }
    void Show(std::string_view text, std::string_view, MessageIcon) override {
        messages.emplace_back(text);
    }
    void StatusBar_SetString(std::string_view text) override { status = text; }
    int SelectedTab() const override { return tab; }
    void SelectTab(int number) override { tab = number; }
    int AddPLLTab(cPLL&) override { return tab = ++tabs_; }
    int AddClkDistsTab(cClkDist&) override { return tab = ++tabs_; }
    bool AutoReloadWithChanges() const override { return autoReload; }

    ClockBlocks blocks_;
    int used_ = 0;
    int tabs_ = 5;
};

/// The displays of a whole refresh, in their order.
inline const std::vector<std::string> kAllDisplays = {"PLL",      "CLK",  "Bit",
                                                      "Register", "Port", "Burst"};

} // namespace zentrel::clock_test
