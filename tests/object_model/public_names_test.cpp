#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "automation/object_model/classes.h"
#include "device/text.h"
#include "tests/session/window.h"

/// Part files and programs of the engineers' own rely on these names. A name that goes is noticed
/// here first.
namespace zentrel::objects {
namespace {

using ::testing::IsEmpty;

std::vector<std::string> Words(const std::string& text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

std::vector<std::string> Missing(const ClassTable& table, const std::string& names) {
    std::vector<std::string> missing;
    for (const std::string& name : Words(names)) {
        const auto found = table.Find(name);
        if (!found || table.members()[*found].name != name) missing.push_back(name);
    }
    return missing;
}

// Whether the names stand in the class in this order, whatever stands between.
bool InOrder(const ClassTable& table, const std::string& names) {
    const std::vector<std::string> wanted = Words(names);
    auto next = wanted.begin();
    for (const Member& member : table.members()) {
        if (next != wanted.end() && member.name == *next) ++next;
    }
    return next == wanted.end();
}

constexpr const char* kPartCollections =
    "Registers PLLs ClkDists tabdata pll_tabnames clkdist_tabnames tab_id_type tab_id_num tabnames "
    "PrgmBits PrgmPins BurstCmds MacroCmds Scripts readback_mode";

constexpr const char* kPartProperties =
    "ID InitFile Updating BurstRunning LEModeHigh InvertClock RegisterLength ControlLength "
    "PortAddress DataPosition ClockPosition LEPosition DataPositionValue ClockPositionValue "
    "LEPositionValue InputPinPosition InputPinPositionValue InputPinPositionINI OutputPinValue "
    "OutputPinValueDirect ReadbackAddressRegister ReadbackAddressRegisterName clkdistDisplayMode "
    "Lines Shapes Labels LinesCLK ShapesCLK labelsCLK DoneFirstlblCmbBits DoneFirstlblCntr "
    "DoneFirstchkPrgmBit DoneFirstchkPin DoneFirstfraExternalPin";

constexpr const char* kPartOperations =
    "AddPLL SetupPLLFraction SetupOutputs SetupPLL SetupFraction AddPLLTab "
    "AddClkDist AddClkDistsTab SetupCLKDIST AddCLKChannel "
    "AddRegister AddProgramBit AddCounter AddList AddProgramPin ApplyPinLabeling "
    "UpdatePLLDisplay UpdatePLLandCLKDISTDisplay UpdateCLKDISTDisplay UpdateRegisterDisplay "
    "UpdatePortDisplay UpdateDisplays UpdateBurstDisplay DisplayBurstVector UpdateBitDisplay "
    "ClearPLL ClearClkDist "
    "SetOutPins ClearOutPins ToggleOutPins ResetOutputPins UpdateOutputPins RefreshPins "
    "LoadChanges LoadRegisterNumber LoadAll LoadRegister LoadValue "
    "ConvertBase10 ConvertBinaryToHex BinaryToDecimal BinaryStringAnd BinaryStringNot "
    "BinaryStringOr "
    "GenerateBurstRegister AddBurstCommand ChangeBurstCommand DeleteBurstCommand "
    "DeleteBurstCommands RestoreBurstCommand RunBurstOnce RunBurstCommands StopBurstCommands "
    "lptCmd_SendReadBack QVX4100ReadRegister ReadRegister "
    "SetupLoopFilter ShowHideSynthMuxLogic GetPreNdivider";

constexpr const char* kRegister =
    "ID Value Mask Change LowByte Address RegisterString Parent SetBits GetBits ClrBit ToggleBit";

constexpr const char* kPrgmBits =
    "ID Register Position Length Display ZeroValue MinimumValue MaximumValue StepValue Polarity "
    "PolarityPosition FormatString DataInverted PolarityInverted LinkedBits Description "
    "script_on_load script_before_prog script_after_prog script_name "
    "MirrorBits StepValueBitName GreaterBitName GreaterEqual Units "
    "BitValue Value Text Increment Decrement ToggleBit SetPositive SetNegative PolarityValue "
    "TotalLength Maximum Minimum ArrayCount SetValueArray SetStringArray InitializeValueArray "
    "InitializeStringArray GetStringArray SetValueText GetValueText Parent Part";

constexpr const char* kPrgmPin = "Value ID Trigger ReadBack Position Enabled Toggle Parent Part";

constexpr const char* kPll =
    "Part Parent ID IDnum PLLTab Initialize LinkedCLKDist LinkedCLKDistInt XtalFrequency OSC2X "
    "Doubler RValue RCounter RCounterName PDFrequency NDivFrequencyInput NCounter NCounterName "
    "NValue NumValue Numerator NumeratorName DenValue Denominator DenominatorName VCOFixed "
    "VCOFrequency OUT0_DIV OUT1_DIV OUT0_Freq OUT1_Freq extra_pll_n_div_1 save_extra_pll_n_div_1 "
    "extra_pll_n_div_2";

constexpr const char* kClkDist =
    "InputDivBypVal InputDivBypVal_Clear InputBusFreq LF_R3 LF_R4 LF_C3 LF_C4 LF_C3C4 IDnum "
    "ClkDistTab RefOSC_Freq ExtSRC_Freq IntVCO_Freq InputDiv_Out_Freq LinkedPLLName LinkedPLLInt "
    "NGlobalDelayName RGlobalDelayName InputDividerName InternalVCOName InputMuxName "
    "SetClkDividerName GetClkDividerName SetClkDelayName GetClkDelayName SetClkMuxName "
    "GetClkMuxName SetClkEnableName GetClkEnableName VCOCount ClockCount Part Parent ID "
    "GetSourceFrequency UpdateCLKValues";

constexpr const char* kBurst =
    "Description Delay Command Register RegisterName OutputPinValue LowByte useTrigger "
    "GetRegLoad_Count GetRegLoad SetRegLoad Pattern Execute Part";

constexpr const char* kFormFields =
    "txtINIVersion txtINIVerDescr CommMode_Select bOLEServer bBitsAndPinsTabTooWide "
    "lpt_port_access logged_errors msgbox_errors bExecuteScripts raw_tab_tally hscPrgmBits_Max";

constexpr const char* kFormRoutines =
    "SetVCO_TM SetExtVCO_TM SetDistribution_TM SetOSCin_TM EnableLPTOptions AddError Show_PLL "
    "Display_AdjustA2 Set_PLL_VCO Reset_Display Set_External_VCO_Only Set_Internal_VCO_Only "
    "Show_PLL_alt Show_intVCO_alt StatusBar_CommMode StatusBar_SetString StatusBar_GetString "
    "GetPrivateSetting4Script CleanUp ClearForm RemoveTabs RestoreMode SavePartForm "
    "SaveBurstCommands LoadBurstCommands SetupPartForm RestoreModeString GetPLLfromCaption "
    "UpdateCLKforPLL VCOFrequencySetValue GetPartType UpdateCLKBoldPath Patch_ini_2_2_0_to_2_3_0 "
    "SetVCOInternal MoveEverythingUpForDistOnly SetExternalSource SetDisplayMode Show_n_Channels "
    "Set_CLKDIST_PLL_VCO Show_CLKDIST_PLL Show_CLKDIST BoldCLKPath UpdateFreqs ShowSynthDiv "
    "HideSynthDiv SetShowExtraDiv SetShowManualDiv ExecuteScript VCO_div_bypassed";

TEST(PublicNames, every_class_has_its_members) {
    struct Row {
        const ClassTable* table;
        const char* names;
    };
    for (const Row& row :
         {Row{ClassOf<cPart>(), kPartCollections}, Row{ClassOf<cPart>(), kPartProperties},
          Row{ClassOf<cPart>(), kPartOperations}, Row{ClassOf<cRegister>(), kRegister},
          Row{ClassOf<cPrgmBits>(), kPrgmBits}, Row{ClassOf<cPrgmPin>(), kPrgmPin},
          Row{ClassOf<cPLL>(), kPll}, Row{ClassOf<cClkDist>(), kClkDist},
          Row{ClassOf<cBurst>(), kBurst}, Row{ClassOf<FrmPart>(), kFormFields},
          Row{ClassOf<FrmPart>(), kFormRoutines}}) {
        EXPECT_THAT(Missing(*row.table, row.names), IsEmpty()) << row.table->name();
    }
}

TEST(PublicNames, the_blocks_and_the_window_keep_their_declared_order) {
    EXPECT_TRUE(InOrder(*ClassOf<cPLL>(), kPll));
    EXPECT_TRUE(InOrder(*ClassOf<cClkDist>(), kClkDist));
    EXPECT_TRUE(InOrder(*ClassOf<cBurst>(), kBurst));
    EXPECT_TRUE(InOrder(*ClassOf<FrmPart>(), std::string(kFormFields) + " " + kFormRoutines));
}

TEST(PublicNames, no_class_has_a_name_twice) {
    for (const ClassTable* table :
         {ClassOf<cPart>(), ClassOf<cRegister>(), ClassOf<cPrgmBits>(), ClassOf<cPrgmPin>(),
          ClassOf<cPLL>(), ClassOf<cClkDist>(), ClassOf<cBurst>(), ClassOf<FrmPart>()}) {
        std::vector<std::string> names;
        for (const Member& member : table->members())
            names.push_back(ToLower(member.name));
        std::sort(names.begin(), names.end());
        const auto twice = std::adjacent_find(names.begin(), names.end());
        EXPECT_EQ(twice, names.end()) << table->name() << "." << *twice;
    }
}

/// The elements of one kind on one screen. Where `at` is given, they are arrays, and the element of
/// that number is there even without a device.
struct Elements {
    const char* table;
    const char* names;
    int at = -1;
};

// Port setup.
constexpr Elements kPort[] = {
    {"Frame",
     "CommunicationSelectFrame frameLPTPortSetup fraPortAdr fraClockBit fraDataBit fraLEBit Frame1 "
     "Frame2"},
    {"OptionButton", "CommMode", 1},
    {"OptionButton", "optPortAdr", 3},
    {"OptionButton", "optClockBit optDataBit optLEBit optPrgmBit", 11},
    {"TextBox", "txtPortAdr txtAutoReload"},
    {"Label", "lblAutoReload lblAutoRelaodUnits DBlabel Label11"},
    {"Frame", "fraExternalPin", 0},
    {"Shape", "DBConn"},
    {"Shape", "Pinheader", 14},
    {"Shape", "DB1", 25},
    {"Line", "linea lineb linec", 9},
    {"Line", "lined linee linef", 14},
    {"ScrollBar", "vscPort"},
};
constexpr Elements kRegisters[] = {
    {"Label", "lblRegName lblRegName2 lblHexRegValue lblTens lblOnes", 0},
    {"TextBox", "txtRegBits", 0},
    {"CommandButton", "cmdLoadReg cmdReadback", 0},
    {"Label", "lblHexValue lblHexDisplay"},
    {"CommandButton", "cmdBitOrder cmdReadRegister cmdBoxRegisters"},
    {"Shape", "shpBitHiLite"},
    {"ScrollBar", "hscRegisters vscRegisters"},
    {"TextBox", "txtReadRegName txtReadbackRegVal"},
    {"OptionButton", "oReadbackBase", 2},
};
constexpr Elements kBits[] = {
    {"CheckBox", "chkPrgmBit chkPrgmPin", 0},
    {"Label", "lblCntr lblCmbBits", 0},
    {"TextBox", "txtCntrVal", 0},
    {"UpDown", "spnCntr", 0},
    {"ComboBox", "cmbBits", 0},
    {"Frame", "fraPrgmBits fraPrgmPins", 0},
    {"ScrollBar", "hscPrgmBits"},
};
constexpr Elements kBurstMode[] = {
    {"TextBox", "txtBurstCmds txtDelay"},
    {"Label", "Label1"},
    {"ComboBox", "cmbLdBurst"},
    {"CommandButton",
     "cmdDelay cmdSetPins cmdInsert cmdDelete cmdDeleteAll cmdLoad cmdSave cmdRun cmdLoop cmdBreak "
     "cmdLEMode Command1"},
};
// Number 0 of the diagrams' elements is the design's.
constexpr Elements kPllTab[] = {
    {"TextBox",
     "txtOsc txtFpd txtVCO txtRCounter txtNCounter txtFractNum txtFractDen txtOUT0_DIV txtOUT1_DIV "
     "txtOUT0 txtOUT1 pllManualDivide",
     0},
    {"UpDown", "SpnFpd spnRCounter spnNCounter SpnFractNum spnFractDen SpnOUT0_DIV SpnOUT1_DIV", 0},
    {"Label",
     "lblDoubler lblNPrescale lblPDPol lblCPGain lblCPState lblPLLOSCBit lblPLLOSCinPin "
     "lblPLLFinPin lblPLLFoutPin lblPLLCPoutPin lblPLLOut0Pin lblPLLOut1Pin pllSynthDivLblHigh "
     "pllSynthDivLblLow pllExtraDivLbl pllExtraDivVal lblOSC_Range lblVCO_Range lblFpd_Range "
     "lblNCheck1 lblNCheck2",
     0},
    {"CommandButton", "txtGetPLLBits", 0},
    {"Shape", "shpPLLintVCO shpPLLintOutputs pllSynthDiv pllExtraDiv", 0},
    {"Line", "linpll", 20},
    {"Shape", "shpPLL", 3},
    {"Label", "lblPLL", 16},
};
constexpr Elements kClockTab[] = {
    {"ComboBox", "cbClkInputMux CB_CLK_Delay_N CB_CLK_Delay_R", 0},
    {"TextBox",
     "txtCLK_RefOSCfreq txtCLK_ExtSRCfreq txtCLK_VCOfreq CLKtxt_InputDiv CLKtxt_InputDivOutFreq",
     0},
    {"UpDown", "CLKspn_InputDiv", 0},
    {"CheckBox", "CLK_VCODIV_bypass", 0},
    {"Label",
     "clkDist_R_value clkDist_N_value clkDist_PDF_value clkdist_R3 clkdist_R4 clkdist_C3 "
     "clkdist_C4",
     0},
    {"TextBox", "chDivText divCHtxt_freq", 7},
    {"UpDown", "chDivSpnFpd", 7},
    {"ComboBox", "divCB_CDelay divCB_CMux divCB_od", 7},
    {"Label", "lblCLKid", 7},
    {"Label", "lblCLK", 38},
    {"Shape", "shpCLK", 18},
    {"Line", "LineCLK", 30},
};
constexpr Elements kFrame[] = {
    {"SSTab", "tabPart"},
    {"StatusBar", "StatusBar1"},
    {"Timer", "tmrAutoReload tmrStartBurst tmrUSBCheck"},
    {"Menu",
     "mnuFile mnuSave mnuRestore mnuLine1 mnuLine2 mnuExit mnuLoad mnuLoadPLL mnuStepFreq mnuIncN "
     "mnuNDec mnuNInc10 mnuNDec10 mnuIncFrac mnuDecFrac mnuVCOFreq mnuFcomp mnuXtal ResetPort "
     "mnuDevice mnuVCO mnuSingPLL mnuDualPLL mnuFracPLL mnuVCOPLL mnuTrans mnuClkDist "
     "mnuEngineering mnuVCOFixed mnuAutoReload mnuAutoReloadChange mnuSaveDeviceSettings mnuModes "
     "mnuAddMode CheckLPT USBVersion AdjustTiming mnuStatus mnuORVWireless mnuShowErrors mnuAbout"},
    {"Menu",
     "mnuRecent mnuQVXxxxx mnuVCOQVXxxxx mnuSingQVXxxxx mnuDualQVXxxxx mnuFracQVXxxxx "
     "mnuPLLVCOQVXxxxx mnuTransQVXxxxx mnuClkDistQVXxxxx mnuEngineeringQVXxxxx mnuMode",
     0},
};
constexpr Elements kErrorList[] = {
    {"Label", "Label1"}, {"TextBox", "Text1"}, {"CommandButton", "Command1 Command2"}};
constexpr Elements kAbout[] = {{"Label", "LAB_1 lblPrgmVersion lblPartVersion Label4 Label5"},
                               {"TextBox", "Text1"},
                               {"CommandButton", "Command1 OkayButton"}};
constexpr Elements kLoopFilter[] = {{"ComboBox", "cbR3 cbR4 cbC3C4"},
                                    {"CommandButton", "cmdClose"}};

void ExpectElements(const ObjectRef& form, std::span<const Elements> screen) {
    for (const Elements& elements : screen) {
        for (const std::string& name : Words(elements.names)) {
            SCOPED_TRACE(std::string(form.table().name()) + "." + name);
            ASSERT_THAT(Missing(form.table(), name), IsEmpty());
            std::vector<Value> number;
            if (elements.at >= 0) number.emplace_back(elements.at);
            const Value element = Read(form, name, number);
            const auto* object = element.If<ObjectRef>();
            ASSERT_NE(object, nullptr);
            EXPECT_EQ(object->table().name(), elements.table);
            const std::string_view property = object->table().members().front().name;
            EXPECT_FALSE(object->table().name() != "StatusBar" && elements.at < 0 &&
                         Read(*object, property).IsEmpty());
        }
    }
}

TEST(PublicNames, every_element_is_there_by_name_and_number_before_any_device) {
    const window::Folder folder;
    window::Window window(folder);
    window.Start();
    const ObjectRef form = RefTo(window.frm);
    for (const std::span<const Elements> screen :
         {std::span<const Elements>(kPort), std::span<const Elements>(kRegisters),
          std::span<const Elements>(kBits), std::span<const Elements>(kBurstMode),
          std::span<const Elements>(kPllTab), std::span<const Elements>(kClockTab),
          std::span<const Elements>(kFrame)}) {
        ExpectElements(form, screen);
    }
    const auto dialog = [&](const char* name) { return *Read(form, name).If<ObjectRef>(); };
    ExpectElements(dialog("frmErrorList"), kErrorList);
    ExpectElements(dialog("frmAbout"), kAbout);
    ExpectElements(dialog("frmLoopFilter"), kLoopFilter);
}

} // namespace
} // namespace zentrel::objects
