#include "automation/object_model/classes.h"
#include "burst/burst.h"
#include "burst/burst_list.h"
#include "clock/clk_dist.h"
#include "clock/clock_setup.h"
#include "clock/loop_filter.h"
#include "device/bit_string.h"
#include "device/part.h"
#include "session/device_items.h"
#include "synth/clock_link.h"
#include "synth/pll_setup.h"
#include "synth/synth_div.h"
#include "transport/load_path.h"
#include "transport/readback.h"

/// `Part`: the device with its collections, and the operations that its rooms bring along.
namespace zentrel::objects {

namespace {

using std::int16_t;
using std::int32_t;
using Text = std::string_view;
using OptionalText = std::optional<std::string>;

template<auto Collection>
Member Items(std::string_view name) {
    using Shape = detail::FieldShape<std::remove_const_t<decltype(Collection)>>;
    using Item = typename Shape::Content::Item::element_type;
    return Child<[](cPart& part) {
        return ObjectRef::Unowned(*CollectionOf<Item>(), part.*Collection);
    }>(name, &CollectionOf<Item>);
}

template<void (Displays::*Refresh)()>
Member Display(std::string_view name) {
    return Routine<[](cPart& part) { (part.upward().displays->*Refresh)(); }>(name);
}

template<void (BurstPlayer::*Action)()>
Member Player(std::string_view name) {
    return Routine<[](cPart& part) { (part.upward().burst->*Action)(); }>(name);
}

using Rows = std::vector<Member>;

Rows Collections() {
    return {
        Items<&cPart::Registers>("Registers"),
        Items<&cPart::PLLs>("PLLs"),
        Items<&cPart::ClkDists>("ClkDists"),
        Items<&cPart::tabdata>("tabdata"),
        Items<&cPart::pll_tabnames>("pll_tabnames"),
        Items<&cPart::clkdist_tabnames>("clkdist_tabnames"),
        Items<&cPart::tab_id_type>("tab_id_type"),
        Items<&cPart::tab_id_num>("tab_id_num"),
        Items<&cPart::tabnames>("tabnames"),
        Items<&cPart::PrgmBits>("PrgmBits"),
        Items<&cPart::PrgmPins>("PrgmPins"),
        Items<&cPart::BurstCmds>("BurstCmds"),
        Items<&cPart::MacroCmds>("MacroCmds"),
        Items<&cPart::Scripts>("Scripts"),
        Field<&cPart::readback_mode>("readback_mode"),
    };
}

Rows Settings() {
    using P = cPart;
    return {
        Field<&P::ID>("ID"),
        Field<&P::InitFile>("InitFile"),
        Field<&P::Updating>("Updating"),
        ReadOnly<&P::BurstRunning>("BurstRunning"),
        Field<&P::LEModeHigh>("LEModeHigh"),
        Field<&P::InvertClock>("InvertClock"),
        Property<&P::RegisterLength, &P::SetRegisterLength>("RegisterLength"),
        Field<&P::ControlLength>("ControlLength"),
        Field<&P::PortAddress>("PortAddress"),
        Property<&P::DataPosition, &P::SetDataPosition>("DataPosition"),
        Property<&P::ClockPosition, &P::SetClockPosition>("ClockPosition"),
        Property<&P::LEPosition, &P::SetLEPosition>("LEPosition"),
        ReadOnly<&P::DataPositionValue>("DataPositionValue"),
        ReadOnly<&P::ClockPositionValue>("ClockPositionValue"),
        ReadOnly<&P::LEPositionValue>("LEPositionValue"),
        Property<&P::InputPinPosition, [](P& part, int32_t pin) { part.SetInputPinPosition(pin); }>(
            "InputPinPosition"),
        ReadOnly<&P::InputPinPositionValue>("InputPinPositionValue"),
        Field<&P::InputPinPositionINI>("InputPinPositionINI"),
        Property<&P::OutputPinValue, &P::SetOutputPinValue>("OutputPinValue"),
        WriteOnly<&P::SetOutputPinValueDirect>("OutputPinValueDirect"),
        Field<&P::ReadbackAddressRegister>("ReadbackAddressRegister"),
        Field<&P::ReadbackAddressRegisterName>("ReadbackAddressRegisterName"),
        Field<&P::clkdistDisplayMode>("clkdistDisplayMode"),
        Field<&P::Lines>("Lines"),
        ReadOnlyField<&P::Shapes>("Shapes"),
        ReadOnlyField<&P::Labels>("Labels"),
        Field<&P::LinesCLK>("LinesCLK"),
        Field<&P::ShapesCLK>("ShapesCLK"),
        Field<&P::labelsCLK>("labelsCLK"),
        Field<&P::DoneFirstlblCmbBits>("DoneFirstlblCmbBits"),
        Field<&P::DoneFirstlblCntr>("DoneFirstlblCntr"),
        Field<&P::DoneFirstchkPrgmBit>("DoneFirstchkPrgmBit"),
        Field<&P::DoneFirstchkPin>("DoneFirstchkPin"),
        Field<&P::DoneFirstfraExternalPin>("DoneFirstfraExternalPin"),
    };
}

Rows Building() {
    return {
        Routine<[](cPart& part, Text name, Text n, Text r, Text doubler) {
            AddPLL(part, name, n, r, doubler, part.PLLs.Count());
        }>("AddPLL", {"pllname", "NPrgmBits", "RPrgmBits", "OSC2XPrgmBits"}),
        Routine<&SetupPLLFraction>("SetupPLLFraction", {"pllname", "num", "den"}),
        Routine<&SetupOutputs>("SetupOutputs",
                               {"pllname", "OUT0_DIV", "Out0Pin", "OUT1_DIV", "Out1Pin"}),
        Routine<&SetupPLL>("SetupPLL", {"PDPol", "CPGain", "CPState", "NP", "Doubler", "OSCinPin",
                                        "FoutPin", "FinPin", "CPoutPin"}),
        Routine<[](cPart& part, Text name, Text vcos, Text clocks, Text pll, int16_t number) {
            AddClkDist(part, name, vcos, clocks, pll, number);
        }>("AddClkDist",
           {"ClkDistName", "VCOCount", "ClockCount", "sClkPLL_Link", "ClockDistNumber"}),
        Routine<&SetupCLKDIST>("SetupCLKDIST",
                               {"sNDelay", "sRDelay", "sINPUT_DIV", "sINPUT_DIV_BYP", "sINPUT_MUX",
                                "dRefOSC_Freq", "dExtSRC_Freq", "dIntVCO_Freq"}),
        Routine<&AddCLKChannel>("AddCLKChannel", {"which_channel", "sClkDivName", "sClkDelayName",
                                                  "sClkMuxName", "sClkENName"}),
        Routine<[](cPart& part, Text name, int32_t mask, double value, bool lowByte) {
            AddRegister(part, name, mask, value, lowByte);
        }>("AddRegister", {"RegName", "lMask", "value", "bLowByte"}),
        Routine<[](cPart& part, Text name, Text reg, int16_t start, int16_t length, bool display,
                   OptionalText group) {
            AddProgramBit(part, name, reg, start, length, display, group.value_or(std::string()));
        }>("AddProgramBit", {"name", "cReg", "strt", "l", "disp", "group"}),
        Routine<[](cPart& part, Text name, Text reg, int16_t start, int16_t length, bool display,
                   OptionalText group) {
            AddCounter(part, name, reg, start, length, display, group.value_or(std::string()));
        }>("AddCounter", {"name", "cReg", "strt", "l", "disp", "group"}),
        Routine<&AddList>("AddList", {"name", "group"}),
        Routine<[](cPart& part, Text name, int32_t position, bool readBack) {
            AddProgramPin(part, name, position, readBack);
        }>("AddProgramPin", {"PrgmBitName", "position", "aReadBackPin"}),
        Routine<[](cPart& part) { part.upward().port->ApplyPinLabeling(); }>("ApplyPinLabeling"),
    };
}

Rows Refreshes() {
    return {
        Display<&Displays::UpdatePLLDisplay>("UpdatePLLDisplay"),
        Routine<&UpdatePLLandCLKDISTDisplay>("UpdatePLLandCLKDISTDisplay", {"iPLL", "iClkDist"}),
        Display<&Displays::UpdateCLKDISTDisplay>("UpdateCLKDISTDisplay"),
        Display<&Displays::UpdateRegisterDisplay>("UpdateRegisterDisplay"),
        Display<&Displays::UpdatePortDisplay>("UpdatePortDisplay"),
        Routine<&cPart::UpdateDisplays>("UpdateDisplays"),
        Display<&Displays::UpdateBurstDisplay>("UpdateBurstDisplay"),
        Player<&BurstPlayer::DisplayBurstVector>("DisplayBurstVector"),
        Display<&Displays::UpdateBitDisplay>("UpdateBitDisplay"),
        Routine<&ClearPLL>("ClearPLL"),
        Routine<&ClearClkDist>("ClearClkDist"),
    };
}

Rows PinsAndLoads() {
    using P = cPart;
    return {
        Routine<&P::SetOutPins>("SetOutPins", {"v"}),
        Routine<&P::ClearOutPins>("ClearOutPins", {"v"}),
        Routine<&P::ToggleOutPins>("ToggleOutPins", {"v"}),
        Routine<&P::ResetOutputPins>("ResetOutputPins"),
        Routine<&UpdateOutputPins>("UpdateOutputPins"),
        Routine<&P::RefreshPins>("RefreshPins"),
        Routine<&LoadChanges>("LoadChanges"),
        Routine<&LoadRegisterNumber>("LoadRegisterNumber", {"iNum"}),
        Routine<&LoadAll>("LoadAll"),
        Routine<&LoadRegister>("LoadRegister", {"name"}),
        Routine<&LoadValue>("LoadValue", {"val"}),
        Routine<[](P&, double d, Text digits) { return ConvertBase10(d, digits); }>(
            "ConvertBase10", {"d", "sNewBaseDigits"}),
        Routine<[](P&, std::string& binary) { return ConvertBinaryToHex(binary); }>(
            "ConvertBinaryToHex", {"BinaryValue"}),
        Routine<[](P&, Text binary) { return BinaryToDecimal(binary); }>("BinaryToDecimal",
                                                                         {"BinaryValue"}),
        Routine<[](P&, Text one, Text two) { return BinaryStringAnd(one, two); }>("BinaryStringAnd",
                                                                                  {"sOne", "sTwo"}),
        Routine<[](P&, Text one, std::optional<int32_t> length) {
            return BinaryStringNot(one, length);
        }>("BinaryStringNot", {"sOne", "LoopLen"}),
        Routine<[](P&, Text one, Text two) { return BinaryStringOr(one, two); }>("BinaryStringOr",
                                                                                 {"sOne", "sTwo"}),
    };
}

Array Numbers(const std::vector<int16_t>& numbers) {
    return {numbers.begin(), numbers.end()};
}

Rows BurstsAndReadback() {
    return {
        Routine<[](cPart& part, double value) -> Value {
            return Numbers(GenerateBurstRegister(part, value));
        }>("GenerateBurstRegister", {"dReg"}),
        Routine<[](cPart& part, Text name, int16_t command, std::optional<int32_t> before) {
            AddBurstCommand(part, name, command, before);
        }>("AddBurstCommand", {"sRegName", "iCmd", "before"}),
        Routine<&ChangeBurstCommand>("ChangeBurstCommand", {"line", "sRegName", "iCmd"}),
        Routine<&DeleteBurstCommand>("DeleteBurstCommand", {"line"}),
        Routine<&DeleteBurstCommands>("DeleteBurstCommands"),
        Routine<&RestoreBurstCommand>("RestoreBurstCommand", {"line"}),
        Player<&BurstPlayer::RunBurstOnce>("RunBurstOnce"),
        Player<&BurstPlayer::RunBurstCommands>("RunBurstCommands"),
        Player<&BurstPlayer::StopBurstCommands>("StopBurstCommands"),
        Routine<&lptCmd_SendReadBack>("lptCmd_SendReadBack", {"sRegister"}),
        Routine<&QVX4100ReadRegister>("QVX4100ReadRegister", {"sRegister"}),
        Routine<&ReadRegister>("ReadRegister", {"sRegister"}),
        Routine<&ShowHideSynthMuxLogic>("ShowHideSynthMuxLogic", {"i"}),
        Routine<[](cPart& part, int16_t pll) { return GetPreNdivider(part, pll); }>(
            "GetPreNdivider", {"PLLi"}),
    };
}

Rows AllMembers() {
    Rows all;
    for (const auto make :
         {&Collections, &Settings, &Building, &Refreshes, &PinsAndLoads, &BurstsAndReadback}) {
        for (Member& member : make())
            all.push_back(std::move(member));
    }
    return all;
}

} // namespace

template<>
const ClassTable* ClassOf<cPart>() {
    static const ClassTable table("cPart", AllMembers());
    return &table;
}

ObjectRef RefTo(cPart& part) {
    return ObjectRef::Unowned(*ClassOf<cPart>(), part);
}

} // namespace zentrel::objects
