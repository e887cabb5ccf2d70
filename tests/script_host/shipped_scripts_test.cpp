#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "automation/script_host/script_host.h"
#include "device/number_text.h"
#include "partfile/catalogue.h"
#include "synth/frequency_entry.h"
#include "synth/pll.h"
#include "synth/pll_toggles.h"
#include "tests/setups/bench_desk.h"
#include "transport/load_path.h"

/// The scripts of the shipped part files at work: what an engineer does on the tabs, and the words
/// that arrive on the board for it.
namespace zentrel {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::ResultOf;
using testing::UnorderedElementsAreArray;

struct ShippedScripts : testing::Test {
    BenchDesk desk;
    PartScripts scripts{*desk.frm};
    cPart& part = desk.part;
    BitsScreen& bits = desk.frm->bits;

    void Pick(const std::string& device) {
        desk.Select(device);
        ASSERT_THAT(desk.messages.shown, IsEmpty());
        ASSERT_FALSE(part.Registers.empty()) << device;
    }

    // The engineer's hand on the Bits/Pins tab.
    template<typename Labels>
    static int Find(const Labels& labels, const std::string& field) {
        for (std::size_t i = 0; i < labels.size(); ++i)
            if (labels[i].Caption == field) return static_cast<int>(i);
        ADD_FAILURE() << field << " has no such element";
        return 0;
    }
    void Choose(const std::string& list, int entry) {
        bits.cmbBits[static_cast<std::size_t>(Find(bits.lblCmbBits, list))].SetListIndex(entry);
    }
    void Click(const std::string& box) {
        auto& check = bits.chkPrgmBit[static_cast<std::size_t>(Find(bits.chkPrgmBit, box))];
        check.SetValue(!check.Value);
    }
    void Type(const std::string& counter, const std::string& text) {
        const int index = Find(bits.lblCntr, counter);
        bits.txtCntrVal[static_cast<std::size_t>(index)].Text = text;
        bits.EnterCounter(index);
    }
    void Spin(const std::string& counter) { bits.SpinUp(Find(bits.lblCntr, counter)); }

    std::uint64_t Held(const std::string& reg) const {
        return static_cast<std::uint64_t>(part.Registers(reg).Value());
    }
    // The names of the registers that an action puts on the board, in order.
    template<typename Action>
    std::vector<std::string> SentBy(Action action) {
        const auto before = desk.bench.board.newest();
        action();
        std::vector<std::string> sent;
        for (const LatchedWord& latched : desk.bench.board.Since(before)) {
            sent.push_back(latched.registerName);
            EXPECT_EQ(static_cast<std::uint64_t>(latched.word.ToDouble()),
                      Held(latched.registerName));
        }
        return sent;
    }
    std::vector<std::string> SentByLoadAll() {
        return SentBy([this] { LoadAll(part); });
    }
    void SendAllChanges() { LoadChanges(part); }
};

TEST_F(ShippedScripts, compile_and_run_their_on_load_hooks_without_a_word) {
    for (const auto& family : ReadCatalogue(desk.files).items) {
        for (const std::string& device : family) {
            Pick(device);
            for (const cPrgmBits& field : part.PrgmBits) {
                if (field.script_on_load.empty()) continue;
                EXPECT_NO_THROW(scripts.ExecuteScript(field.script_name, field.script_on_load))
                    << device << ", " << field.ID;
            }
        }
    }
}

// ADF4106 and ADF4002: the initialization latch is the function latch under another address.

TEST_F(ShippedScripts, every_choice_for_the_function_latch_reaches_the_initialization_latch) {
    for (const std::string device : {"ADF4106", "ADF4002"}) {
        SCOPED_TRACE(device);
        Pick(device);
        SendAllChanges();
        const auto alike = [&] { EXPECT_EQ(Held("I"), Held("F") + 1); };
        const std::uint64_t atStart = Held("F");
        EXPECT_THAT(SentBy([&] { Choose("CURRENT1", 3); }), ElementsAre("I", "F"));
        alike();
        EXPECT_EQ(part.PrgmBits("INIT_CURRENT1").BitValue(), 3);
        Choose("MUXOUT", 6);
        alike();
        EXPECT_THAT(SentBy([&] { Click("COUNTER_RESET"); }), ElementsAre("I", "F"));
        alike();
        Type("TIMER", "23");
        alike();
        Spin("TIMER");
        alike();
        EXPECT_EQ(part.PrgmBits("INIT_TIMER").Value(), 27);
        lblPDPol_Click(part, 1);
        alike();
        for (int click = 0; click < 5; ++click)
            lblCPGain_MouseUp(part, 1, false);
        lblCPGain_MouseUp(part, 1, true);
        alike();
        part.PrgmBits("PD2").SetBitValue(1);
        alike();
        EXPECT_NE(Held("F"), atStart);
        // The other latches stay out of it.
        SendAllChanges();
        EXPECT_THAT(SentBy([&] { Choose("LDP", 1); }), ElementsAre("R"));
    }
}

// AD9512: what is received takes effect with a write of UPDATE.

TEST_F(ShippedScripts, ad9512_applies_every_change_with_an_update_behind_it) {
    Pick("AD9512");
    SendAllChanges();
    EXPECT_THAT(SentBy([&] { Choose("LEVEL0", 1); }), ElementsAre("OUT0", "UPDATE"));
    EXPECT_THAT(SentBy([&] { Click("START_HIGH3"); }), ElementsAre("DIV3B", "UPDATE"));
    EXPECT_THAT(SentBy([&] { Type("PHASE1", "9"); }), ElementsAre("DIV1B", "UPDATE"));
    EXPECT_EQ(part.PrgmBits("PHASE1").BitValue(), 9);
    EXPECT_THAT(SentBy([&] { Spin("PHASE1"); }), ElementsAre("DIV1B", "UPDATE"));
    EXPECT_EQ(part.PrgmBits("PHASE1").BitValue(), 10);
    EXPECT_THAT(SentBy([&] {
                    part.PrgmBits("DIV2").SetValue(7);
                    part.PrgmBits("MUX4").SetBitValue(1); // the way past the delay, too
                    LoadChanges(part);
                }),
                ElementsAre("DLY4_BYP", "DIV2A", "DIV4B", "UPDATE"));
    // The serial port isn't buffered.
    EXPECT_THAT(SentBy([&] {
                    part.PrgmBits("SOFT_RESET").ToggleBit();
                    LoadChanges(part);
                }),
                ElementsAre("SERIAL"));
}

TEST_F(ShippedScripts, ad9512_has_a_hook_on_every_buffered_field) {
    Pick("AD9512");
    for (cPrgmBits& field : part.PrgmBits) {
        if (field.Position < 0 || field.Register == "SERIAL" || field.Register == "UPDATE")
            continue;
        SendAllChanges();
        const double other = field.BitValue() == 0 ? 1 : 0;
        // A field that is linked writes the other part's register as well.
        std::vector<std::string> expected{field.Register, "UPDATE"};
        if (!field.LinkedBits.empty()) expected.push_back(part.PrgmBits(field.LinkedBits).Register);
        EXPECT_THAT(SentBy([&] {
                        field.SetBitValue(other);
                        LoadChanges(part);
                    }),
                    AllOf(UnorderedElementsAreArray(expected),
                          ResultOf([](const auto& sent) { return sent.back(); }, "UPDATE")))
            << field.ID;
    }
}

TEST_F(ShippedScripts, ad9512_keeps_the_fine_delay_within_its_25_settings) {
    Pick("AD9512");
    Type("DELAY_FINE", "31");
    EXPECT_EQ(part.PrgmBits("DELAY_FINE").Value(), 24);
    Spin("DELAY_FINE");
    EXPECT_EQ(part.PrgmBits("DELAY_FINE").Value(), 24);
}

// QVX2874: the fraction's own registers are idle while the modulator is off.

TEST_F(ShippedScripts, qvx2874_leaves_the_fraction_out_of_a_full_load_in_integer_order) {
    Pick("QVX2874");
    EXPECT_THAT(SentByLoadAll(), ElementsAre("R5", "R4", "R3", "R2", "R1", "R0"));
    SendAllChanges();
    EXPECT_THAT(SentBy([&] { Choose("ORDER", 0); }), ElementsAre("R2"));
    EXPECT_THAT(SentByLoadAll(), ElementsAre("R5", "R4", "R2", "R0"));
    // Back to fractions: the chip gets what the full load has left out.
    EXPECT_THAT(SentBy([&] { Choose("ORDER", 3); }), ElementsAre("R3", "R2", "R1"));
    EXPECT_THAT(SentByLoadAll(), ElementsAre("R5", "R4", "R3", "R2", "R1", "R0"));
}

// QVX4100: the board's divider ahead of the N counter.

struct ExtraDivider : ShippedScripts {
    void SetUp() override { Pick("QVX4100"); }
    const PllPanel& Panel() const { return part.PLLs(1).panel; }
    void TypeDivider(const std::string& ratio) {
        part.PLLs(1).panel.pllManualDivide.Text = ratio;
        pllManualDivide_Enter(part, 1);
    }
};

TEST_F(ExtraDivider, is_shown_with_its_entry_box) {
    EXPECT_TRUE(Panel().pllExtraDiv.Visible);
    EXPECT_TRUE(Panel().pllExtraDivVal.Visible);
    EXPECT_TRUE(Panel().pllManualDivide.Visible);
    EXPECT_EQ(part.PLLs(1).extra_pll_n_div_1(), 1);
}

TEST_F(ExtraDivider, comes_back_with_the_device) {
    const double n = part.PLLs(1).NValue();
    TypeDivider("2");
    EXPECT_EQ(part.PLLs(1).NValue(), n / 2) << "the VCO stays where the clocks want it";
    EXPECT_EQ(part.PLLs(1).VCOFrequency(), 1200);
    Pick("QVX2691");
    Pick("QVX4100");
    EXPECT_EQ(part.PLLs(1).extra_pll_n_div_1(), 2);
    EXPECT_EQ(Panel().pllExtraDivVal.Caption, " 2");
}

TEST_F(ExtraDivider, is_the_modes_own_after_a_mode_and_the_setups_after_a_setup) {
    const std::string setup = desk.folder / "divided.mac";
    TypeDivider("3");
    desk.messages.answer = "Divided by 3";
    desk.frm->menu.Click("mnuAddMode");
    desk.frm->SaveBurstCommands(setup);
    for (const bool mode : {true, false}) {
        TypeDivider("1");
        mode ? desk.frm->RestoreMode(0) : desk.frm->LoadBurstCommands(setup);
        EXPECT_EQ(part.PLLs(1).extra_pll_n_div_1(), 3);
        EXPECT_TRUE(Panel().pllExtraDiv.Visible);
    }
}

} // namespace
} // namespace zentrel
