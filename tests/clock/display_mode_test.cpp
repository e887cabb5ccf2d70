#include "clock/display_mode.h"

#include "clock/signal_path.h"
#include "tests/clock/clock_rig.h"

namespace zentrel::clock_test {
namespace {

using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

struct Device : ClockRig {
    explicit Device(const std::string& mode = "Engineering") {
        AddInputFields();
        AddPLLBlock("PLL1", 10, 1);
        block = &AddBlock("A", "PLL1", 3, mode);
        Settle();
    }
    cClkDist* block = nullptr;
};

TEST(DisplayMode, each_mode_shows_its_groups) {
    struct Row {
        const char* mode;
        bool pll, vcoDivider, internalFilter, external, inputMux, list;
        const char* vco;
        bool gapBridged, dividerMoved, rowsUp;
    };
    const Row rows[] = {
        {"Engineering", true, true, true, true, true, true, "Internal VCO", false, false, false},
        {"vco_EXTvco", true, true, true, true, true, true, "Internal VCO", false, false, false},
        {"PLL_internalVCO", true, true, true, false, false, false, "Internal VCO", true, true,
         false},
        {"PLL_externalVCO", true, false, false, false, false, false, "External VCO", true, false,
         false},
        {"Distribution", false, false, false, true, false, false, "External VCO", false, false,
         true},
    };
    // From every mode into every other.
    Device device;
    const ClockPanel& panel = device.block->panel;
    for (const Row& from : rows) {
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(from.mode) + " to " + row.mode);
            SetDisplayMode(device.part, from.mode);
            device.calls.clear();
            EXPECT_EQ(SetDisplayMode(device.part, row.mode), 1);
            EXPECT_EQ(device.part.clkdistDisplayMode, row.mode);
            EXPECT_THAT(device.calls, ElementsAreArray(kAllDisplays));
            EXPECT_EQ(panel.shpCLK[clk_shape::kPll].Visible, row.pll);
            EXPECT_EQ(panel.txtCLK_VCOfreq.Visible, row.pll);
            EXPECT_EQ(panel.txtCLK_RefOSCfreq.Visible, row.pll);
            EXPECT_EQ(panel.clkDist_N_value.Visible, row.pll);
            EXPECT_EQ(panel.CB_CLK_Delay_N.Visible, row.pll);
            EXPECT_EQ(panel.CLKtxt_InputDiv.Visible, row.vcoDivider);
            EXPECT_EQ(panel.CLK_VCODIV_bypass.Visible, row.vcoDivider);
            EXPECT_EQ(panel.clkdist_C3.Visible, row.internalFilter);
            EXPECT_EQ(panel.lblCLK[clk_label::kInternalFilter].Visible, row.internalFilter);
            EXPECT_EQ(panel.txtCLK_ExtSRCfreq.Visible, row.external);
            EXPECT_EQ(panel.shpCLK[clk_shape::kExternalSource].Visible, row.external);
            EXPECT_EQ(panel.shpCLK[clk_shape::kReferenceTerminal].Visible, row.inputMux);
            EXPECT_EQ(panel.cbClkInputMux.Visible, row.list);
            EXPECT_EQ(panel.lblCLK[clk_label::kVco].Caption, row.vco);
            EXPECT_EQ(panel.layout.gapBridged, row.gapBridged);
            EXPECT_EQ(panel.layout.dividerMoved, row.dividerMoved);
            EXPECT_EQ(panel.layout.rowsUp, row.rowsUp);
        }
    }
}

TEST(DisplayMode, an_unknown_mode_leaves_the_diagram_as_it_was) {
    Device device("PLL_externalVCO");
    EXPECT_EQ(SetDisplayMode(device.part, "PLL_internal"), -1);
    EXPECT_EQ(device.part.clkdistDisplayMode, "PLL_internal");
    EXPECT_FALSE(device.block->panel.CLKtxt_InputDiv.Visible);
    EXPECT_THAT(device.calls, ElementsAreArray(kAllDisplays));
    EXPECT_THAT(device.messages, testing::ElementsAre("ERROR - GetSourceFrequency"));
    EXPECT_EQ(SetDisplayMode(device.part, "Engineering"), 1);
    EXPECT_TRUE(device.block->panel.CLKtxt_InputDiv.Visible);
}

TEST(DisplayMode, only_the_first_block_changes_its_shape) {
    Device device;
    const cClkDist& second = device.AddBlock("B", "PLL1", 1, "Engineering");
    SetDisplayMode(device.part, "PLL_externalVCO");
    EXPECT_TRUE(second.panel.CLKtxt_InputDiv.Visible);
    EXPECT_FALSE(device.block->panel.CLKtxt_InputDiv.Visible);
}

TEST(DisplayMode, what_a_block_lacks_stays_hidden) {
    Device device("Distribution");
    ClockPanel& panel = device.block->panel;
    panel.CB_CLK_Delay_R.Tag.clear();
    panel.CLK_VCODIV_bypass.Tag.clear();
    device.block->LF_R3.clear();
    SetDisplayMode(device.part, "Engineering");
    EXPECT_FALSE(panel.CB_CLK_Delay_N.Visible);
    EXPECT_FALSE(panel.lblCLK[clk_label::kGlobalDelay].Visible);
    EXPECT_FALSE(panel.CLK_VCODIV_bypass.Visible);
    EXPECT_FALSE(panel.clkdist_R3.Visible);
    EXPECT_TRUE(panel.clkdist_R4.Visible);
}

TEST(DisplayMode, a_script_hides_the_whole_diagram_and_brings_back_what_the_block_has) {
    Device device("PLL_internalVCO");
    ClockPanel design;
    ClockPanel& panel = device.block->panel;
    panel.CLK_VCODIV_bypass.Tag.clear();
    const auto visible = [&panel] {
        const Element* const elements[] = {&panel.shpCLK[clk_shape::kPll],
                                           &panel.LineCLK[clk_line::kReferenceOut],
                                           &panel.lblCLK[clk_label::kInputMux],
                                           &panel.lblCLK[clk_label::kFirstHeader],
                                           &panel.txtCLK_RefOSCfreq,
                                           &panel.txtCLK_ExtSRCfreq,
                                           &panel.CB_CLK_Delay_N,
                                           &panel.clkdist_R3,
                                           &panel.channels[2].divCB_CMux,
                                           &panel.channels[3].divCB_CMux, // of three
                                           &panel.CLK_VCODIV_bypass,      // unbound
                                           &panel.cbClkInputMux};         // in this mode
        std::string text;
        for (const Element* element : elements)
            text += element->Visible ? '+' : '-';
        return text;
    };
    Set_CLKDIST_PLL_VCO(design, *device.block, false);
    EXPECT_EQ(visible(), "------------");
    Set_CLKDIST_PLL_VCO(design, *device.block, true);
    EXPECT_EQ(visible(), "+++++++++---");
    EXPECT_FALSE(panel.layout.gapBridged);

    SetDisplayMode(device.part, "Engineering");
    Set_CLKDIST_PLL_VCO(design, *device.block, false);
    Show_CLKDIST_PLL(*device.block);
    EXPECT_EQ(visible(), "+++++++++--+");
    EXPECT_EQ(panel.lblCLK[clk_label::kVco].Caption, "Internal VCO");
    EXPECT_EQ(panel.lblCLK[clk_label::kVcoAtMux].Caption, "Int VCO");
    EXPECT_EQ(panel.lblCLK[clk_label::kExternalSource].Caption, "External VCO");
    EXPECT_EQ(panel.lblCLK[clk_label::kFin].Caption, "Ext VCO");
}

TEST(DisplayMode, showing_the_pll_touches_the_design_drawing_alone) {
    Device device("Distribution");
    ClockPanel design;
    design.shpCLK[clk_shape::kPll].Visible = false;
    design.CB_CLK_Delay_N.Visible = design.clkDist_N_value.Visible = false;
    Show_PLL(design);
    EXPECT_TRUE(design.shpCLK[clk_shape::kPll].Visible);
    EXPECT_TRUE(design.CB_CLK_Delay_N.Visible);
    EXPECT_TRUE(design.clkDist_N_value.Visible);
    EXPECT_FALSE(device.block->panel.shpCLK[clk_shape::kPll].Visible);
}

TEST(DisplayMode, the_selected_path_is_drawn_in_bold) {
    struct Row {
        double mode, mux;
        int vco, external, reference;
    };
    for (const Row& row :
         {Row{0, 1, 2, 1, 1}, Row{1, 0, 1, 2, 1}, Row{2, 0, 1, 2, 1}, Row{3, 0, 1, 1, 2},
          Row{7, 0, 2, 1, 1}, Row{7, 1, 1, 2, 1}, Row{7, 2, 1, 1, 2}, Row{4, 0, 1, 1, 1}}) {
        Device device;
        device.part.PrgmBits("MODE").SetBitValue(row.mode);
        device.part.PrgmBits("INPUT_MUX").SetBitValue(row.mux);
        device.part.UpdateDisplays();
        UpdateCLKBoldPath(*device.block);
        const auto& lines = device.block->panel.LineCLK;
        EXPECT_EQ(lines[clk_line::kDividerToMux].BorderWidth, row.vco) << row.mode << row.mux;
        EXPECT_EQ(lines[clk_line::kExternalToMux].BorderWidth, row.external) << row.mode;
        EXPECT_EQ(lines[clk_line::kReferenceToMux].BorderWidth, row.reference) << row.mode;
    }
    Device device;
    const auto& lines = device.block->panel.LineCLK;
    SetDisplayMode(device.part, "PLL_externalVCO");
    BoldCLKPath(*device.block, "FIN");
    EXPECT_EQ(lines[clk_line::kDividerToMux].BorderWidth, 2) << "runs with the external VCO";
    EXPECT_EQ(lines[21].BorderWidth, 1);
    UpdateCLKBoldPath(*device.block);
    EXPECT_EQ(lines[clk_line::kExternalToMux].BorderWidth, 2) << "outside its modes: no change";
    SetDisplayMode(device.part, "Distribution");
    BoldCLKPath(*device.block, "oscin");
    EXPECT_EQ(lines[clk_line::kReferenceDirect].BorderWidth, 2);
    EXPECT_EQ(lines[clk_line::kDividerToMux].BorderWidth, 1);
}

TEST(SignalPath, what_is_out_of_the_path_says_why) {
    Device device;
    device.part.PrgmBits("A_CLK0_MUX").SetBitValue(0);
    device.part.PrgmBits("A_CLK2_EN").SetValue(0);
    device.part.UpdateDisplays();
    const cClkDist& block = *device.block;
    EXPECT_THAT(WhyOutOfPath(block, ClockItem::ChannelDivider, 0), HasSubstr("\"Bypassed\""));
    EXPECT_THAT(WhyOutOfPath(block, ClockItem::ChannelDelay, 1), HasSubstr("\"Divided\""));
    EXPECT_THAT(WhyOutOfPath(block, ClockItem::ChannelDivider, 1), IsEmpty());
    EXPECT_EQ(WhyOutOfPath(block, ClockItem::ChannelOutput, 2), "CLKout2 is disabled.");
    EXPECT_THAT(WhyOutOfPath(block, ClockItem::VcoDivider), IsEmpty());
    EXPECT_EQ(WhyOutOfPath(block, ClockItem::ReferenceInput),
              "The input mux selects the VCO path.");

    device.block->panel.CLK_VCODIV_bypass.SetValue(true);
    EXPECT_EQ(WhyOutOfPath(block, ClockItem::VcoDivider), "The VCO divider is bypassed.");
    SetDisplayMode(device.part, "Distribution");
    EXPECT_THAT(WhyOutOfPath(block, ClockItem::ExternalInput), IsEmpty());
    EXPECT_THAT(WhyOutOfPath(block, ClockItem::VcoInput), HasSubstr("Distribution"));
}

} // namespace
} // namespace zentrel::clock_test
