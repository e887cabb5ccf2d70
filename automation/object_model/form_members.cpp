#include "automation/object_model/classes.h"
#include "automation/object_model/form_parts.h"
#include "automation/object_model/text_log.h"
#include "clock/clk_dist.h"
#include "clock/clock_engine.h"
#include "clock/display_mode.h"
#include "device/part.h"
#include "partfile/catalogue.h"
#include "session/frm_part.h"
#include "synth/clock_link.h"
#include "synth/frequency_entry.h"
#include "synth/pll.h"
#include "synth/synth_div.h"

/// What `frmPart` declares: the session's fields and the window's routines, in their order.
namespace zentrel::objects {

namespace {

using std::int16_t;
using Text = std::string_view;
using Rows = std::vector<Member>;

template<auto F>
Member SessionField(std::string_view name) {
    using Content = typename detail::FieldShape<std::remove_const_t<decltype(F)>>::Content;
    return Property<[](const FrmPart& frm) { return frm.session.*F; },
                    [](FrmPart& frm, Content value) { frm.session.*F = std::move(value); }>(name);
}

Rows Fields() {
    using S = Session;
    return {
        SessionField<&S::txtINIVersion>("txtINIVersion"),
        SessionField<&S::txtINIVerDescr>("txtINIVerDescr"),
        SessionField<&S::CommMode_Select>("CommMode_Select"),
        SessionField<&S::bOLEServer>("bOLEServer"),
        SessionField<&S::bBitsAndPinsTabTooWide>("bBitsAndPinsTabTooWide"),
        SessionField<&S::lpt_port_access>("lpt_port_access"),
        Property<[](FrmPart& frm) { return RefToTexts(frm.session.logged_errors); },
                 [](FrmPart& frm, const Value& errors) {
                     frm.session.logged_errors = TextsOf(errors);
                 }>("logged_errors"),
        SessionField<&S::msgbox_errors>("msgbox_errors"),
        SessionField<&S::bExecuteScripts>("bExecuteScripts"),
        SessionField<&S::raw_tab_tally>("raw_tab_tally"),
        SessionField<&S::hscPrgmBits_Max>("hscPrgmBits_Max"),
    };
}

// Routines of the rooms below, by what they work on.

template<auto F>
Member OnDevice(std::string_view name) {
    return Routine<[](FrmPart& frm) { F(frm.part); }>(name);
}

// (b, ClkDistNumber): shows or hides a group of a block's diagram.
template<auto F>
Member ShowInBlock(std::string_view name) {
    return Routine<[](FrmPart& frm, bool b, int16_t number) { F(frm.part.ClkDists(number), b); }>(
        name, {"b", "ClkDistNumber"});
}

// (ClkDistNumber). The first block where the number may be left out.
template<auto F>
Member OnBlock(std::string_view name) {
    return Routine<[](FrmPart& frm, int16_t number) { F(frm.part.ClkDists(number)); }>(
        name, {"ClkDistNumber"});
}
template<auto F>
Member OnBlockOrFirst(std::string_view name) {
    return Routine<[](FrmPart& frm, std::optional<int16_t> number) {
        F(frm.part.ClkDists(number.value_or(1)));
    }>(name, {"ClkDistNumber"});
}

// Each group of routines in the order in which the window declares them.

Rows UpToTheStatusBar() {
    return {
        OnDevice<&SetVCO_TM>("SetVCO_TM"),
        OnDevice<&SetExtVCO_TM>("SetExtVCO_TM"),
        OnDevice<&SetDistribution_TM>("SetDistribution_TM"),
        OnDevice<&SetOSCin_TM>("SetOSCin_TM"),
        Routine<[](FrmPart& frm, bool val) { frm.port.EnableLPTOptions(val); }>("EnableLPTOptions",
                                                                                {"val"}),
        Routine<&FrmPart::AddError>("AddError", {"newerror"}),
        Routine<[](FrmPart& frm) { Show_PLL(frm.clockDesign); }>("Show_PLL"),
        OnBlock<&Display_AdjustA2>("Display_AdjustA2"),
        ShowInBlock<&Set_PLL_VCO>("Set_PLL_VCO"),
        OnBlock<&Reset_Display>("Reset_Display"),
        ShowInBlock<&Set_External_VCO_Only>("Set_External_VCO_Only"),
        ShowInBlock<&Set_Internal_VCO_Only>("Set_Internal_VCO_Only"),
        ShowInBlock<&Show_PLL_alt>("Show_PLL_alt"),
        ShowInBlock<&Show_intVCO_alt>("Show_intVCO_alt"),
        Routine<[](FrmPart& frm, Text mode) { frm.StatusBar1.StatusBar_CommMode(mode); }>(
            "StatusBar_CommMode", {"mode"}),
        Routine<[](FrmPart& frm, Text text) { frm.StatusBar1.StatusBar_SetString(text); }>(
            "StatusBar_SetString", {"thestr"}),
        Routine<[](FrmPart& frm) { return frm.StatusBar1.StatusBar_GetString(); }>(
            "StatusBar_GetString"),
    };
}

ObjectRef PllOfCaption(FrmPart& frm, Text caption) {
    const cPLL* pll = GetPLLfromCaption(frm.part, caption);
    for (int i = 1; pll != nullptr && i <= frm.part.PLLs.Count(); ++i) {
        if (&frm.part.PLLs(i) == pll) return {*ClassOf<cPLL>(), frm.part.PLLs.Share(i)};
    }
    return {};
}

Member PllFromCaption() {
    Member member = Routine<&PllOfCaption>("GetPLLfromCaption", {"thecaption"});
    member.gives = &ClassOf<cPLL>;
    return member;
}

Rows UpToThePartType() {
    using F = FrmPart;
    return {
        Routine<&F::GetPrivateSetting4Script>("GetPrivateSetting4Script",
                                              {"sSetting", "sKey", "sDefault"}),
        Routine<&F::CleanUp>("CleanUp"),
        Routine<&F::ClearForm>("ClearForm"),
        Routine<&F::RemoveTabs>("RemoveTabs"),
        Routine<&F::RestoreMode>("RestoreMode", {"Index"}),
        Routine<&F::SavePartForm>("SavePartForm"),
        Routine<&F::SaveBurstCommands>("SaveBurstCommands", {"sFileName"}),
        Routine<&F::LoadBurstCommands>("LoadBurstCommands", {"sFileName"}),
        Routine<[](F& frm, std::string& name, std::optional<Text> family) {
            frm.SetupPartForm(name, family);
        }>("SetupPartForm", {"sPartName", "vPartType"}),
        Routine<&F::RestoreModeString>("RestoreModeString", {"name"}),
        PllFromCaption(),
        Routine<[](F& frm, Text pll) { UpdateCLKforPLL(frm.part, pll); }>("UpdateCLKforPLL",
                                                                          {"pllname"}),
        Routine<[](F& frm, int16_t pll, double mhz) { VCOFrequencySetValue(frm.part, pll, mhz); }>(
            "VCOFrequencySetValue", {"pllIndex", "vcofreq"}),
        Routine<&F::GetPartType>("GetPartType", {"sPartName"}),
    };
}

Rows UpToTheEnd() {
    using F = FrmPart;
    return {
        OnBlock<&UpdateCLKBoldPath>("UpdateCLKBoldPath"),
        Routine<&F::Patch_ini_2_2_0_to_2_3_0>("Patch_ini_2_2_0_to_2_3_0", {"sFileName"}),
        ShowInBlock<&SetVCOInternal>("SetVCOInternal"),
        ShowInBlock<&MoveEverythingUpForDistOnly>("MoveEverythingUpForDistOnly"),
        ShowInBlock<&SetExternalSource>("SetExternalSource"),
        Routine<[](F& frm, Text mode) {
            return static_cast<int16_t>(SetDisplayMode(frm.part, mode));
        }>("SetDisplayMode", {"themode"}),
        Routine<[](F& frm, int16_t count, int16_t number) {
            Show_n_Channels(frm.part.ClkDists(number), count);
        }>("Show_n_Channels", {"N", "ClkDistNumber"}),
        Routine<[](F& frm, bool b, int16_t number) {
            Set_CLKDIST_PLL_VCO(frm.clockDesign, frm.part.ClkDists(number), b);
        }>("Set_CLKDIST_PLL_VCO", {"b", "ClkDistNumber"}),
        OnBlockOrFirst<&Show_CLKDIST_PLL>("Show_CLKDIST_PLL"),
        OnBlockOrFirst<&Show_CLKDIST>("Show_CLKDIST"),
        Routine<[](F& frm, int16_t number, Text path) {
            BoldCLKPath(frm.part.ClkDists(number), path);
        }>("BoldCLKPath", {"ClkDistNumber", "path"}),
        Routine<[](F& frm, int16_t block) { UpdateFreqs(frm.part, block); }>("UpdateFreqs",
                                                                             {"index"}),
        Routine<[](F& frm, int16_t pll) { ShowSynthDiv(frm.part, pll); }>("ShowSynthDiv", {"i"}),
        Routine<[](F& frm, int16_t pll) { HideSynthDiv(frm.part, pll); }>("HideSynthDiv", {"i"}),
        Routine<[](F& frm, bool show, int16_t pll) { SetShowExtraDiv(frm.part, show, pll); }>(
            "SetShowExtraDiv", {"show", "iPLL"}),
        Routine<[](F& frm, bool show, int16_t pll) { SetShowManualDiv(frm.part, show, pll); }>(
            "SetShowManualDiv", {"show", "iPLL"}),
        Routine<&F::ExecuteScript>("ExecuteScript", {"script_name", "script_proc"}),
        Routine<[](F& frm, int16_t block) { return VCO_div_bypassed(frm.part, block); }>(
            "VCO_div_bypassed", {"which"}),
    };
}

} // namespace

std::vector<Member> FormFields() {
    return Fields();
}

std::vector<Member> FormRoutines() {
    return Joined({UpToTheStatusBar(), UpToThePartType(), UpToTheEnd()});
}

} // namespace zentrel::objects
