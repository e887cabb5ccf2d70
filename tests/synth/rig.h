#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "device/part.h"
#include "synth/frequency_entry.h"
#include "synth/linked_block.h"
#include "synth/pll.h"
#include "synth/pll_display.h"
#include "synth/pll_setup.h"

namespace zentrel::synth_test {

/// A clock block of a few numbers.
struct FakeBlock : LinkedBlock {
    std::string id = "CLK", pllName = "PLL", divider, binding;
    bool bypassed = false;
    int mux = -1;
    double reference = 1, external = 2, internal = 3;
    int updates = 0;

    const std::string& ID() const override { return id; }
    const std::string& LinkedPLLName() const override { return pllName; }
    const std::string& InputDividerName() const override { return divider; }
    const std::string& InputDividerBinding() const override { return binding; }
    bool VCO_div_bypassed() const override { return bypassed; }
    int InputMuxIndex() const override { return mux; }
    double RefOSC_Freq() const override { return reference; }
    void SetRefOSC_Freq(double mhz) override { reference = mhz; }
    double ExtSRC_Freq() const override { return external; }
    void SetExtSRC_Freq(double mhz) override { external = mhz; }
    double IntVCO_Freq() const override { return internal; }
    void SetIntVCO_Freq(double mhz) override { internal = mhz; }
    void UpdateCLKValues() override { ++updates; }
};

/// The fields of a PLL that a test builds. An empty numerator: an integer PLL.
struct PllParts {
    std::string name = "PLL", n = "N", r = "R", doubler = {}, num = {}, den = {};
    std::string out0 = {}, out1 = {}, prescaler = {}, polarity = {}, gain = {}, state = {};
    std::string oscBit = {};
    double crystal = 10;
};

/// A device made by code: each field in a register of its own, of 32 bits. Watches what is shown
/// and refreshed. `Seed` writes a field without leaving a change to be sent.
class Rig {
  public:
    Rig() : part(session, Connected()) {
        session.raw_tab_tally = 6;
        part.SetRegisterLength(32);
        part.ID = "QVX1";
    }

    cPrgmBits& AddField(const std::string& name, std::int16_t bits = 16, double value = 0) {
        part.Registers.Add(std::make_shared<cRegister>(part, "R_" + name, 0, 0, false),
                           "R_" + name);
        auto field =
            std::make_shared<cPrgmBits>(part, name, "R_" + name, std::int16_t{0}, bits, false);
        part.PrgmBits.Add(field, name);
        Seed(name, value);
        return *field;
    }
    void Seed(const std::string& name, double value) {
        part.PrgmBits(name).SetValue(value);
        Settle();
    }
    double Value(const std::string& name) { return part.PrgmBits(name).Value(); }

    /// Takes all change flags down.
    void Settle() {
        for (cRegister& reg : part.Registers)
            reg.SetChange(false);
    }
    bool Pending() const {
        for (const cRegister& reg : part.Registers) {
            if (reg.changed()) return true;
        }
        return false;
    }
    std::map<std::string, double> Words() const {
        std::map<std::string, double> words;
        for (const cRegister& reg : part.Registers)
            words[reg.ID()] = reg.Value();
        return words;
    }

    /// A block with N 1000 and R 10 where the test hasn't made those fields before.
    cPLL& AddPll(const PllParts& parts = {}) {
        const auto make = [&](const std::string& name, std::int16_t bits, double value) {
            if (!name.empty() && !part.PrgmBits.Contains(name)) AddField(name, bits, value);
        };
        make(parts.n, 20, 1000);
        make(parts.r, 14, 10);
        make(parts.doubler, 1, 0);
        make(parts.num, 20, 0);
        make(parts.den, 20, 1000);
        make(parts.out0, 8, 1);
        make(parts.out1, 8, 1);
        cPLL& pll =
            zentrel::AddPLL(part, parts.name, parts.n, parts.r, parts.doubler, part.PLLs.Count());
        SetupPLL(part, parts.polarity, parts.gain, parts.state, parts.prescaler, parts.doubler,
                 "OSCin", "INTERNAL", "Fin", "CPout");
        SetupPLLFraction(part, parts.name, parts.num, parts.den);
        SetupOutputs(part, parts.name, parts.out0, "OUT0", parts.out1, "OUT1");
        SetupCrystal(part, parts.name, parts.crystal);
        SetupOSCBit(part, parts.oscBit);
        Refresh();
        Settle();
        return pll;
    }

    /// Links the PLL to a fake block at position 1, in a display mode.
    FakeBlock& Link(cPLL& pll, const std::string& mode) {
        pll.SetLinkedCLKDist("CLK");
        pll.SetLinkedCLKDistInt(1);
        part.clkdistDisplayMode = mode;
        blocks.block = std::make_unique<FakeBlock>();
        blocks.block->pllName = pll.ID();
        return *blocks.block;
    }

    void Refresh() {
        UpdatePLLDisplay(part);
        displays.log.clear();
    }

    /// Types a text into a box and presses Enter, or leaves the box.
    void Enter(const char* box, const std::string& text, int i = 1) {
        Type(box, text, i)->enter(part, i);
    }
    void Leave(const char* box, const std::string& text, int i = 1) {
        const PllBox* entry = Type(box, text, i);
        if (entry->leave != nullptr) entry->leave(part, i);
    }
    const std::string& Shown(const char* box, int i = 1) {
        return (part.PLLs(i).panel.*FindPllBox(box)->element).Text;
    }

    struct RecordedDisplays : Displays {
        void UpdatePLLDisplay() override {
            Note("PLL");
            zentrel::UpdatePLLDisplay(rig->part);
        }
        void UpdateCLKDISTDisplay() override { Note("CLK"); }
        void UpdateBitDisplay() override { Note("BIT"); }
        void UpdateRegisterDisplay() override { Note("REG"); }
        void UpdatePortDisplay() override { Note("PORT"); }
        void UpdateBurstDisplay() override { Note("BURST"); }
        void Note(const char* name) {
            if (log.empty()) pendingAtFirst = rig->Pending();
            if (!log.empty()) log += ' ';
            log += name;
        }
        Rig* rig = nullptr;
        std::string log;
        bool pendingAtFirst = false;
    };
    struct RecordedMessages : Messages {
        void Show(std::string_view text, std::string_view, MessageIcon) override {
            shown.emplace_back(text);
        }
        std::vector<std::string> shown;
    };
    struct Tabs : TabStrip {
        int SelectedTab() const override { return selected; }
        void SelectTab(int tab) override { selected = tab; }
        int TabCount() const override { return static_cast<int>(captions.size()); }
        std::string TabCaption(int tab) const override {
            const auto at = static_cast<std::size_t>(tab);
            return at < captions.size() ? captions[at] : "";
        }
        void KeepTabs(int count) override { captions.resize(static_cast<std::size_t>(count)); }
        void FocusBox(std::string_view name, int index) override {
            focus = std::string(name) + "(" + std::to_string(index) + ")";
        }
        int selected = 0;
        std::vector<std::string> captions = {"Port", "Registers", "Bits/Pins", "Burst", "", ""};
        std::string focus;
    };
    struct Builder : ScreenBuilder {
        int AddPLLTab(cPLL& pll) override {
            tabs->captions.push_back(pll.ID());
            tabs->selected = tabs->TabCount() - 1;
            return tabs->selected;
        }
        Tabs* tabs = nullptr;
    };
    struct Options : MenuOptions {
        bool AutoReloadWithChanges() const override { return autoReload; }
        bool autoReload = true;
    };
    struct Blocks : LinkedBlocks {
        LinkedBlock* At(int position) override { return position == 1 ? block.get() : nullptr; }
        LinkedBlock* WithID(std::string_view id) override {
            return block && block->id == id ? block.get() : nullptr;
        }
        std::unique_ptr<FakeBlock> block;
    };
    struct PartFile : PartFileWriter {
        void WriteKey(std::string_view name, std::string_view section, std::string_view key,
                      std::string_view value) override {
            written = std::string(name) + " [" + std::string(section) + "] " + std::string(key) +
                      "=" + std::string(value);
        }
        std::string written;
    };

    Session session;
    RecordedDisplays displays;
    RecordedMessages messages;
    Tabs tabs;
    Builder builder;
    Options options;
    Blocks blocks;
    PartFile partFile;
    cPart part;

  private:
    Upward Connected() {
        displays.rig = this;
        builder.tabs = &tabs;
        Upward upward = Upward::None();
        upward.displays = &displays;
        upward.messages = &messages;
        upward.tabs = &tabs;
        upward.builder = &builder;
        upward.options = &options;
        upward.blocks = &blocks;
        upward.partFile = &partFile;
        return upward;
    }
    const PllBox* Type(const char* box, const std::string& text, int i) {
        const PllBox* entry = FindPllBox(box);
        (part.PLLs(i).panel.*entry->element).Text = text;
        displays.log.clear();
        return entry;
    }
};

} // namespace zentrel::synth_test
