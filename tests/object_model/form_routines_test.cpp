#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "clock/clk_dist.h"
#include "tests/object_model/form_rig.h"

namespace zentrel::objects {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;

TEST(FormRoutines, a_caption_leads_to_its_pll) {
    FormRig rig;
    const ObjectRef own = rig.Object(rig.Call("GetPLLfromCaption", {Value("Loop")}));
    const ObjectRef linked = rig.Object(rig.Call("GetPLLfromCaption", {Value("Clocks")}));
    ASSERT_TRUE(own);
    EXPECT_EQ(Read(own, "XtalFrequency"), Value(10.0));
    EXPECT_EQ(own, linked);
    EXPECT_EQ(rig.Call("GetPLLfromCaption", {Value("Port Setup")}), Value(ObjectRef()));
    // It stays whole for whoever holds it.
    rig.window.Load("Plain");
    EXPECT_EQ(Read(own, "ID"), Value("Loop"));
}

TEST(FormRoutines, loading_a_device_gives_the_name_back_as_the_path_of_its_file) {
    FormRig rig;
    std::vector<Value> arguments{Value("Plain")};
    Read(rig.form, rig.form.table().At("SetupPartForm"), arguments);
    EXPECT_EQ(rig.part.ID, "Plain");
    EXPECT_THAT(*arguments[0].If<std::string>(), EndsWith("Plain.ini"));
    EXPECT_FALSE(rig.frm.burst.panel.cmdDelay.Visible);
    rig.Call("SetupPartForm", {Value("Conditioner"), Value("PLLVCO")});
    EXPECT_TRUE(rig.frm.burst.panel.cmdDelay.Visible) << "a family was given";
}

TEST(FormRoutines, arguments_are_counted_and_numbers_checked) {
    FormRig rig;
    EXPECT_THROW(rig.Call("SetDisplayMode"), WrongArguments);
    EXPECT_THROW(rig.Call("CleanUp", {Value(1)}), WrongArguments);
    EXPECT_THROW(rig.Call("SetVCOInternal", {Value(true), Value(2)}), NotFound);
    EXPECT_THROW(rig.Call("ShowSynthDiv", {Value(5)}), NotFound);
    EXPECT_THROW(Write(rig.form, "CleanUp", Value(1)), WrongAccess);
    EXPECT_THROW(Write(rig.form, "logged_errors", Value(1)), WrongType);
}

TEST(FormRoutines, scripts_show_and_hide_what_the_diagrams_have) {
    FormRig rig;
    const struct {
        const char* routine;
        std::vector<Value> arguments;
        const char* element;
        int index;
        bool visible;
    } rows[] = {
        {"SetShowExtraDiv", {true, 1}, "pllExtraDivVal", 1, true},
        {"SetShowManualDiv", {true, 1}, "pllManualDivide", 1, true},
        {"HideSynthDiv", {1}, "pllSynthDiv", 1, false},
        {"ShowSynthDiv", {1}, "pllSynthDiv", 1, true},
        {"Set_PLL_VCO", {false, 1}, "txtCLK_VCOfreq", 1, false},
        {"Show_PLL_alt", {true, 1}, "txtCLK_VCOfreq", 1, true},
        {"SetVCOInternal", {false, 1}, "CLKtxt_InputDiv", 1, false},
        {"SetExternalSource", {true, 1}, "txtCLK_ExtSRCfreq", 1, true},
        {"Show_intVCO_alt", {true, 1}, "txtCLK_ExtSRCfreq", 1, false},
        {"Set_Internal_VCO_Only", {false, 1}, "txtCLK_ExtSRCfreq", 1, true},
        {"Set_External_VCO_Only", {true, 1}, "shpCLK", kClockShapes + 5, false},
        {"MoveEverythingUpForDistOnly", {true, 1}, "txtCLK_RefOSCfreq", 1, false},
        {"Show_n_Channels", {1, 1}, "chDivText", 8 + 1, false},
        {"Set_CLKDIST_PLL_VCO", {false, 1}, "chDivText", 8, false},
        {"Show_CLKDIST", {}, "chDivText", 8 + 1, true},
        {"Show_CLKDIST_PLL", {1}, "cbClkInputMux", 1, true},
    };
    for (const auto& row : rows) {
        rig.Call(row.routine, row.arguments);
        EXPECT_EQ(Read(rig.Element(row.element, row.index), "Visible"), Value(row.visible))
            << row.routine;
    }
    rig.Call("BoldCLKPath", {1, "Fin"});
    EXPECT_EQ(Read(rig.Element("LineCLK", kClockLines + 6), "BorderWidth"), Value(2));
    rig.Call("UpdateCLKBoldPath", {1});
    EXPECT_EQ(Read(rig.Element("LineCLK", kClockLines + 6), "BorderWidth"), Value(1));
    EXPECT_EQ(rig.Call("VCO_div_bypassed", {1}), Value(false));
    EXPECT_EQ(rig.Call("VCO_div_bypassed", {-1}), Value(true));

    // The design drawing has its own elements, as number 0.
    Write(rig.Element("clkDist_R_value", 0), "Visible", false);
    rig.Call("Show_PLL");
    EXPECT_EQ(Read(rig.Element("clkDist_R_value", 0), "Visible"), Value(true));
    for (const char* nothing : {"Reset_Display", "Display_AdjustA2"})
        EXPECT_TRUE(rig.Call(nothing, {1}).IsEmpty());
    EXPECT_TRUE(rig.Call("SavePartForm").IsEmpty());
}

TEST(FormRoutines, scripts_steer_the_plan) {
    FormRig rig;
    EXPECT_EQ(rig.Call("SetDisplayMode", {"PLL_internalVCO"}), Value(std::int16_t{1}));
    EXPECT_EQ(rig.Call("SetDisplayMode", {"sideways"}), Value(std::int16_t{-1}));
    rig.Call("SetDisplayMode", {"Engineering"});
    rig.part.PrgmBits("MODE").SetBitValue(7);
    const std::pair<const char*, double> choices[] = {
        {"SetExtVCO_TM", 1}, {"SetOSCin_TM", 2}, {"SetVCO_TM", 0}, {"SetDistribution_TM", 1}};
    for (const auto& [routine, mux] : choices) {
        rig.Call(routine);
        EXPECT_EQ(rig.part.PrgmBits("INPUT_MUX").BitValue(), mux) << routine;
    }
    rig.part.PrgmBits("MODE").SetBitValue(1);
    rig.part.UpdateDisplays();
    rig.Call("VCOFrequencySetValue", {1, 1500});
    EXPECT_EQ(rig.part.ClkDists(1).ExtSRC_Freq(), 1500);
    EXPECT_EQ(rig.part.PLLs(1).NDivFrequencyInput(), 1500);
    rig.part.PLLs(1).SetNValue(100);
    rig.Call("UpdateCLKforPLL", {"Loop"});
    EXPECT_EQ(rig.part.ClkDists(1).ExtSRC_Freq(), rig.part.PLLs(1).VCOFrequency());
}

TEST(FormRoutines, the_window_speaks_and_keeps_house) {
    FormRig rig;
    rig.Call("StatusBar_CommMode", {"none"});
    rig.Call("StatusBar_SetString", {"ready"});
    EXPECT_EQ(rig.Call("StatusBar_GetString"), Value("ready"));
    EXPECT_EQ(rig.frm.StatusBar1.Panels[0].Text, "COMM Mode: none");
    rig.Call("EnableLPTOptions", {false});
    EXPECT_EQ(Read(rig.Element("fraPortAdr"), "Enabled"), Value(false));
    EXPECT_EQ(rig.Call("GetPrivateSetting4Script", {"PLLS", "NAME00", ""}), Value("Loop"));
    EXPECT_EQ(rig.Call("GetPartType", {"Conditioner"}), Value(""));

    Write(rig.form, "msgbox_errors", true);
    rig.window.boxes.shown.clear();
    rig.Call("AddError", {"It hurts"});
    EXPECT_THAT(rig.window.boxes.shown, ElementsAre("It hurts"));

    const std::string setup = (rig.folder.path() / "kept.mac").string();
    rig.part.PrgmBits("ENABLE").SetValue(1);
    rig.Call("SaveBurstCommands", {setup});
    rig.part.PrgmBits("ENABLE").SetValue(0);
    rig.Call("LoadBurstCommands", {setup});
    EXPECT_EQ(rig.part.PrgmBits("ENABLE").Value(), 1);

    rig.Call("RemoveTabs");
    EXPECT_EQ(rig.frm.tabPart.TabCount(), 6);
    rig.Call("CleanUp");
    EXPECT_TRUE(rig.part.PLLs.empty());
    EXPECT_EQ(rig.part.ID, "");
}

TEST(FormRoutines, the_sessions_fields_read_and_write) {
    FormRig rig;
    EXPECT_EQ(Read(rig.form, "CommMode_Select"), Value("LPT"));
    EXPECT_EQ(Read(rig.form, "raw_tab_tally"), Value(std::int16_t{6}));
    Write(rig.form, "txtINIVersion", "c3");
    EXPECT_EQ(rig.frm.session.txtINIVersion, "c3");
    Write(rig.form, "bExecuteScripts", 1);
    EXPECT_EQ(Read(rig.form, "bExecuteScripts"), Value(true));
    Write(rig.form, "hscPrgmBits_Max", 12.5);
    EXPECT_EQ(rig.frm.session.hscPrgmBits_Max, 12) << "to the even neighbour";
    EXPECT_THROW(Write(rig.form, "hscPrgmBits_Max", 40000), Overflow);
    EXPECT_EQ(Read(rig.form, "Caption"), Value("Conditioner"));
}

} // namespace
} // namespace zentrel::objects
