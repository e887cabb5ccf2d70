#include "clock/clock_entry.h"

#include "clock/clock_click.h"
#include "clock/clock_engine.h"
#include "tests/clock/clock_rig.h"

namespace zentrel::clock_test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

using Calls = std::vector<std::string>;

struct Device : ClockRig {
    explicit Device(const std::string& mode) {
        AddInputFields();
        Field("OSC", 12);
        pll = &AddPLLBlock("PLL1", 10, 1);
        pll->panel.lblPLLOSCBit.Tag = "OSC";
        block = &AddBlock("A", "PLL1", 2, mode);
        part.UpdateDisplays();
        Settle();
    }
    TextBox& Box(ClockBox box) const {
        ClockPanel& panel = block->panel;
        TextBox* boxes[] = {&panel.txtCLK_RefOSCfreq, &panel.txtCLK_VCOfreq,
                            &panel.txtCLK_ExtSRCfreq, &panel.CLKtxt_InputDiv,
                            &panel.channels[1].chDivText};
        return *boxes[static_cast<int>(box)];
    }
    void Type(ClockBox box, const std::string& text) {
        Box(box).Text = text;
        TypeInClockBox(*block, box, 1);
    }
    cPLL* pll = nullptr;
    cClkDist* block = nullptr;
};

TEST(ClockEntry, enter_takes_a_number_and_leaving_keeps_less_of_it) {
    const Calls all = kAllDisplays;
    const Calls clock = {"CLK"};
    struct Row {
        const char* mode;
        ClockBox box;
        bool enter;
        const char* text;
        // Afterwards:
        double crystal, osc, reference, external, vco;
        Calls calls;
        bool loadsIfAsked;
    };
    const Row rows[] = {
        {"PLL_internalVCO", ClockBox::RefOSC, true, "20", 20, 20, 20, 2000, 1200, all, true},
        {"PLL_internalVCO", ClockBox::RefOSC, true, "-20", 20, 20, 20, 2000, 1200, all, true},
        {"PLL_internalVCO", ClockBox::RefOSC, false, "20", 10, 0, 20, 2000, 1200, clock, false},
        {"PLL_internalVCO", ClockBox::VCO, true, "1400", 10, 0, 10, 2000, 1400, all, true},
        {"Engineering", ClockBox::VCO, true, "1405", 10, 0, 10, 2000, 1400, all, true},
        {"PLL_externalVCO", ClockBox::VCO, true, "1400", 10, 0, 10, 1400, 1200, all, true},
        {"Distribution", ClockBox::VCO, true, "1400", 10, 0, 10, 2000, 1200, all, true},
        {"Engineering", ClockBox::VCO, false, "1400", 10, 0, 10, 2000, 1400, all, false},
        {"PLL_externalVCO", ClockBox::VCO, false, "1400", 10, 0, 10, 2000, 1400, all, false},
        {"Distribution", ClockBox::ExtSRC, true, " 500 ", 10, 0, 10, 500, 1200, all, true},
        {"Distribution", ClockBox::ExtSRC, false, "500", 10, 0, 10, 500, 1200, clock, false},
    };
    for (const Row& row : rows) {
        for (const bool autoReload : {true, false}) {
            SCOPED_TRACE(std::string(row.mode) + " " + row.text + (row.enter ? " Enter" : " left"));
            Device device(row.mode);
            device.autoReload = autoReload;
            device.part.Registers(1).SetChange(true); // something waits for a load
            device.Type(row.box, row.text);
            EXPECT_TRUE(device.block->panel.marker.Visible);
            (row.enter ? EnterClockBox : LeaveClockBox)(*device.block, row.box, 0);
            EXPECT_FALSE(device.block->panel.marker.Visible);
            EXPECT_EQ(device.pll->XtalFrequency(), row.crystal);
            EXPECT_EQ(device.Value("OSC"), row.osc);
            EXPECT_EQ(device.block->RefOSC_Freq(), row.reference);
            EXPECT_EQ(device.block->ExtSRC_Freq(), row.external);
            EXPECT_EQ(device.block->IntVCO_Freq(), row.vco);
            EXPECT_EQ(device.calls, row.calls);
            EXPECT_EQ(device.AnyChange(), !(row.loadsIfAsked && autoReload));
        }
    }
}

TEST(ClockEntry, dividers_load_at_once_and_the_vco_divider_not_when_left) {
    Device device("PLL_internalVCO");
    device.autoReload = false;
    device.Type(ClockBox::InputDiv, "4");
    EnterClockBox(*device.block, ClockBox::InputDiv);
    EXPECT_EQ(device.Value("A_VCO_DIV"), 4);
    EXPECT_EQ(device.Value("PLL1_N"), 30) << "the VCO stays, N follows";
    EXPECT_EQ(device.calls, (Calls{"Register", "PLL", "CLK"}));
    EXPECT_EQ(device.pll->panel.pllSynthDivLblLow.Caption, "4");
    EXPECT_FALSE(device.AnyChange());

    device.Type(ClockBox::InputDiv, "5");
    LeaveClockBox(*device.block, ClockBox::InputDiv);
    EXPECT_EQ(device.Value("A_VCO_DIV"), 4);
    EXPECT_FALSE(device.block->panel.marker.Visible);

    for (void (*apply)(cClkDist&, ClockBox, int) : {EnterClockBox, LeaveClockBox}) {
        device.Settle();
        device.part.PrgmBits("A_CLK1_DIV").SetValue(9);
        device.Type(ClockBox::ChannelDiv, "300");
        apply(*device.block, ClockBox::ChannelDiv, 1);
        EXPECT_EQ(device.Value("A_CLK1_DIV"), 255) << "clipped to the field";
        EXPECT_EQ(device.Box(ClockBox::ChannelDiv).Text, "255");
        EXPECT_EQ(device.calls, (Calls{"Register", "CLK"}));
        EXPECT_FALSE(device.AnyChange());
    }
    device.Type(ClockBox::ChannelDiv, "0");
    EnterClockBox(*device.block, ClockBox::ChannelDiv, 1);
    EXPECT_EQ(device.block->panel.channels[1].divCHtxt_freq.Text, "?");
}

TEST(ClockEntry, a_text_that_is_no_usable_number_changes_and_sends_nothing) {
    const std::string endless(4000, '9');
    for (const char* mode : {"Engineering", "PLL_externalVCO", "Distribution"}) {
        for (const ClockBox box : {ClockBox::RefOSC, ClockBox::VCO, ClockBox::ExtSRC,
                                   ClockBox::InputDiv, ClockBox::ChannelDiv}) {
            for (const std::string& text :
                 {std::string("abc"), std::string(), std::string("1e400"), std::string("1,5"),
                  std::string("&H10"), endless, std::string("1e300"), std::string("-1e25"),
                  std::string("nan"), std::string("inf")}) {
                for (void (*apply)(cClkDist&, ClockBox, int) : {EnterClockBox, LeaveClockBox}) {
                    SCOPED_TRACE(std::string(mode) + " " + text.substr(0, 9));
                    Device device(mode);
                    const auto words = device.Words();
                    const std::string shown = device.Box(box).Text;
                    device.Type(box, text);
                    device.part.Registers(1).SetChange(true);
                    apply(*device.block, box, 1);
                    EXPECT_EQ(device.Words(), words);
                    EXPECT_EQ(device.block->IntVCO_Freq(), 1200);
                    EXPECT_EQ(device.block->ExtSRC_Freq(), 2000);
                    EXPECT_EQ(device.block->RefOSC_Freq(), 10);
                    EXPECT_TRUE(device.part.Registers(1).changed());
                    EXPECT_THAT(device.messages, IsEmpty());
                    // Elements that a mode hides aren't refreshed.
                    if (box == ClockBox::ChannelDiv || box == ClockBox::RefOSC) {
                        if (device.calls.empty()) continue;
                        EXPECT_EQ(device.Box(box).Text, shown);
                    }
                }
            }
        }
    }
}

TEST(ClockEntry, a_frequency_of_zero_is_refused_and_a_crystal_of_zero_is_one_hertz) {
    for (const char* zero : {"0", "-0", "0.0"}) {
        Device device("Engineering");
        const auto words = device.Words();
        device.Type(ClockBox::VCO, zero);
        EnterClockBox(*device.block, ClockBox::VCO);
        device.Type(ClockBox::ExtSRC, zero);
        EnterClockBox(*device.block, ClockBox::ExtSRC);
        EXPECT_EQ(device.Words(), words);
        EXPECT_EQ(device.Box(ClockBox::VCO).Text, "1200");
        EXPECT_EQ(device.Box(ClockBox::ExtSRC).Text, "2000");
        device.Type(ClockBox::RefOSC, zero);
        EnterClockBox(*device.block, ClockBox::RefOSC);
        EXPECT_EQ(device.pll->XtalFrequency(), 1e-6);
        EXPECT_EQ(device.Box(ClockBox::RefOSC).Text, "0");
    }
}

TEST(ClockEntry, nothing_happens_while_no_part_is_loaded) {
    Device device("Engineering");
    device.part.ID.clear();
    const auto words = device.Words();
    device.Type(ClockBox::VCO, "1400");
    EnterClockBox(*device.block, ClockBox::VCO);
    LeaveClockBox(*device.block, ClockBox::VCO);
    EnterClockBox(*device.block, ClockBox::ChannelDiv, 1);
    StepInputDivider(*device.block, true);
    StepChannelDivider(*device.block, 0, true);
    EXPECT_EQ(device.Words(), words);
    EXPECT_THAT(device.calls, IsEmpty());
    EXPECT_FALSE(device.block->panel.marker.Visible);
}

TEST(ClockEntry, a_failing_entry_is_told_and_changes_nothing) {
    Device device("PLL_internalVCO");
    device.pll->panel.lblPLLOSCBit.Tag = "GONE";
    device.Type(ClockBox::RefOSC, "20");
    EnterClockBox(*device.block, ClockBox::RefOSC);
    EXPECT_THAT(device.messages,
                ElementsAre("Error... No program bit: GONE required for: txtCLK_RefOSCfreq"));
    EXPECT_EQ(device.pll->XtalFrequency(), 10);
    EXPECT_EQ(device.Box(ClockBox::RefOSC).Text, "10");

    device.Settle();
    device.block->SetClkDividerName(1, "NO_DIV");
    device.Type(ClockBox::ChannelDiv, "7");
    EnterClockBox(*device.block, ClockBox::ChannelDiv, 1);
    EXPECT_THAT(device.messages,
                testing::Contains("Error... No program bit: NO_DIV required for: chDivText"));
    EXPECT_FALSE(device.part.Updating);
}

TEST(ClockEntry, spinners_step_their_field) {
    Device device("PLL_internalVCO");
    device.autoReload = false;
    StepInputDivider(*device.block, true);
    EXPECT_EQ(device.Value("A_VCO_DIV"), 3);
    EXPECT_EQ(device.calls, (Calls{"Register", "PLL", "CLK"}));
    EXPECT_FALSE(device.AnyChange());
    StepInputDivider(*device.block, false);
    EXPECT_EQ(device.Value("A_VCO_DIV"), 2);

    device.calls.clear();
    StepChannelDivider(*device.block, 1, true);
    EXPECT_EQ(device.Value("A_CLK1_DIV"), 3);
    EXPECT_EQ(device.calls, (Calls{"Register", "Bit", "CLK"}));
    StepChannelDivider(*device.block, 1, false);
    EXPECT_EQ(device.Box(ClockBox::ChannelDiv).Text, "2");
    EXPECT_FALSE(device.AnyChange());
}

TEST(ClockEntry, a_chosen_input_goes_to_mode_or_in_the_test_mode_to_the_input_mux) {
    struct Row {
        double mode;
        int choice;
        double modeAfter, muxAfter;
        int shown;
    };
    for (const Row& row :
         {Row{1, 0, 0, 3, 0}, Row{0, 1, 1, 3, 1}, Row{0, 2, 2, 3, 2}, Row{0, 3, 3, 3, 3},
          Row{7, 0, 7, 0, -1}, Row{7, 1, 7, 1, -1}, Row{7, 2, 7, 1, -1}, Row{7, 3, 7, 2, -1}}) {
        Device device("VCO_extVCO");
        device.autoReload = false;
        device.part.PrgmBits("MODE").SetBitValue(row.mode);
        device.part.PrgmBits("INPUT_MUX").SetBitValue(3);
        device.part.UpdateDisplays();
        device.Settle();
        device.block->panel.cbClkInputMux.SetListIndex(row.choice);
        EXPECT_EQ(device.Bits("MODE"), row.modeAfter);
        EXPECT_EQ(device.Bits("INPUT_MUX"), row.muxAfter);
        EXPECT_EQ(device.block->panel.cbClkInputMux.ListIndex, row.shown);
        EXPECT_THAT(device.calls, ElementsAreArray(kAllDisplays));
        EXPECT_FALSE(device.AnyChange()) << "loads whatever the menu says";
    }
}

TEST(ClockEntry, chosen_list_entries_reach_their_fields) {
    struct Row {
        ListBox& (*list)(ClockPanel&);
        const char* field;
        int index;
        const char* status;
    };
    for (const Row& row : {
             Row{[](ClockPanel& p) -> ListBox& { return p.CB_CLK_Delay_N; }, "A_N_DLY", 2,
                 "before"},
             Row{[](ClockPanel& p) -> ListBox& { return p.CB_CLK_Delay_R; }, "A_R_DLY", 1,
                 "before"},
             Row{[](ClockPanel& p) -> ListBox& { return p.channels[1].divCB_CDelay; }, "A_CLK1_DLY",
                 3, ""},
             Row{[](ClockPanel& p) -> ListBox& { return p.channels[1].divCB_CMux; }, "A_CLK1_MUX",
                 0, ""},
             Row{[](ClockPanel& p) -> ListBox& { return p.channels[1].divCB_od; }, "A_CLK1_EN", 0,
                 ""},
         }) {
        SCOPED_TRACE(row.field);
        for (const bool autoReload : {true, false}) {
            Device device("PLL_internalVCO");
            device.autoReload = autoReload;
            row.list(device.block->panel).SetListIndex(row.index);
            EXPECT_EQ(device.Bits(row.field), row.index);
            EXPECT_EQ(device.calls, (Calls{"Bit", "Register", "PLL", "CLK"}));
            EXPECT_EQ(device.status, row.status);
            EXPECT_EQ(device.AnyChange(), !autoReload);
        }
        Device device("PLL_internalVCO");
        device.part.Updating = true;
        const auto words = device.Words();
        row.list(device.block->panel).SetListIndex(row.index);
        EXPECT_EQ(device.Words(), words);
    }
}

TEST(ClockEntry, the_bypass_box_writes_its_values_and_loads_nothing) {
    Device device("PLL_internalVCO");
    CheckBox& bypass = device.block->panel.CLK_VCODIV_bypass;
    bypass.SetValue(true);
    EXPECT_EQ(device.Bits("A_BYP"), 2);
    EXPECT_EQ(device.Value("PLL1_N"), 120);
    EXPECT_EQ(device.calls, kAllDisplays);
    EXPECT_TRUE(device.AnyChange());
    bypass.SetValue(false);
    EXPECT_EQ(device.Bits("A_BYP"), 1);
    EXPECT_EQ(device.Value("PLL1_N"), 60);

    device.part.PrgmBits("A_BYP").SetBitValue(3); // neither of the two
    bypass.SetValue(true);
    EXPECT_EQ(device.Bits("A_BYP"), 3);
    device.part.Updating = true;
    bypass.SetValue(false);
    EXPECT_EQ(device.Bits("A_BYP"), 3);
    device.part.Updating = false;
    device.block->InputDivBypVal_Clear = -1; // the file says nothing: the magnitude is written
    bypass.SetValue(true);
    bypass.SetValue(false);
    EXPECT_EQ(device.Bits("A_BYP"), 1);
}

TEST(ClockEntry, terminals_select_their_input_where_all_paths_show) {
    struct Row {
        double mode;
        ClockInput terminal;
        double modeAfter, muxAfter;
        bool synthDivider;
    };
    for (const Row& row : {
             Row{1, ClockInput::VCO, 0, 3, true},
             Row{0, ClockInput::External, 1, 3, false},
             Row{0, ClockInput::Reference, 3, 3, false},
             Row{7, ClockInput::External, 7, 1, false},
             Row{7, ClockInput::Reference, 7, 2, false},
         }) {
        Device device("Engineering");
        device.part.PrgmBits("MODE").SetBitValue(row.mode);
        device.part.PrgmBits("INPUT_MUX").SetBitValue(3);
        device.part.UpdateDisplays();
        device.Settle();
        ClickTerminal(*device.block, row.terminal);
        EXPECT_EQ(device.Bits("MODE"), row.modeAfter);
        EXPECT_EQ(device.Bits("INPUT_MUX"), row.muxAfter);
        EXPECT_EQ(device.pll->panel.pllSynthDiv.Visible, row.synthDivider);
        EXPECT_EQ(device.calls, kAllDisplays);
        EXPECT_TRUE(device.AnyChange()) << "a click on a terminal sends nothing";
    }
    Device device("PLL_internalVCO");
    ClickTerminal(*device.block, ClockInput::Reference);
    EXPECT_THAT(device.calls, IsEmpty());
}

TEST(ClockEntry, clicks_on_the_diagram_lead_to_the_pll_or_open_the_loop_filter) {
    struct Row {
        const char* mode;
        OpenLoopFilter box;
        bool leads;
    };
    for (const Row& row : {Row{"PLL_internalVCO", OpenLoopFilter::Modal, true},
                           Row{"Engineering", OpenLoopFilter::Modal, true},
                           Row{"PLL_externalVCO", OpenLoopFilter::No, true},
                           Row{"Distribution", OpenLoopFilter::No, false}}) {
        Device device(row.mode);
        cClkDist& block = *device.block;
        Shape& filter = block.panel.shpCLK[clk_shape::kLoopFilter];
        filter.Left = 100, filter.Top = 100, filter.Width = 50, filter.Height = 50;
        EXPECT_EQ(ClickDiagram(block, 149, 149), row.box) << row.mode;
        EXPECT_EQ(ClickDiagram(block, 150, 100), OpenLoopFilter::No);
        EXPECT_EQ(ClickClockLabel(block, 31), OpenLoopFilter::Modeless);
        device.tab = block.ClkDistTab;
        EXPECT_EQ(ClickClockLabel(block, 35), OpenLoopFilter::No);
        EXPECT_EQ(device.tab == device.pll->PLLTab(), row.leads) << row.mode;
    }
}

TEST(ClockEntry, what_reacts_to_a_click_lights_up_under_the_mouse) {
    Device device("Engineering");
    cClkDist& block = *device.block;
    Shape& terminal = block.panel.shpCLK[clk_shape::kExternalTerminal];
    terminal.Left = 10, terminal.Top = 20, terminal.Width = 5, terminal.Height = 5;
    for (const auto& [x, y, inside] :
         {std::tuple{10, 20, true}, std::tuple{14, 24, true}, std::tuple{15, 20, false},
          std::tuple{10, 25, false}, std::tuple{9, 20, false}}) {
        HoverDiagram(block, x, y);
        EXPECT_EQ(terminal.BorderColor, inside ? colors::kRed : colors::kBlack) << x << "," << y;
        EXPECT_EQ(terminal.BorderWidth, inside ? 2 : 1);
    }
    ClickDiagram(block, 12, 22);
    EXPECT_EQ(device.Bits("MODE"), 1);
    EXPECT_EQ(BlockOfTab(device.part, block.ClkDistTab), &block);
    EXPECT_EQ(BlockOfTab(device.part, 3), nullptr);
}

TEST(ClockEntry, the_edit_marker_stands_around_its_box) {
    Device device("Engineering");
    TextBox& box = device.Box(ClockBox::VCO);
    box.Left = 600, box.Top = 300, box.Width = 900, box.Height = 240;
    TypeInClockBox(*device.block, ClockBox::VCO);
    const ClockEditMarker& marker = device.block->panel.marker;
    EXPECT_EQ(marker.box, ClockBox::VCO);
    EXPECT_EQ(marker.Width, 900 + 4 * 15);
    EXPECT_EQ(marker.Left, 600 - 2 * 15);
}

} // namespace
} // namespace zentrel::clock_test
