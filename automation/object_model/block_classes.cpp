#include "automation/object_model/classes.h"
#include "burst/burst.h"
#include "clock/clk_dist.h"
#include "device/part.h"
#include "synth/pll.h"

/// PLL blocks, clock blocks and burst commands as outsiders see them.
namespace zentrel::objects {

namespace {

std::int16_t CommandOf(cBurst& burst) {
    return static_cast<std::int16_t>(burst.Command);
}

void SetCommand(cBurst& burst, std::int16_t command) {
    if (command < 0 || command > static_cast<std::int16_t>(BurstKind::Delay)) {
        throw OutOfRange("Command " + std::to_string(command));
    }
    burst.Command = static_cast<BurstKind>(command);
}

} // namespace

template<>
const ClassTable* ClassOf<cPLL>() {
    using P = cPLL;
    static const ClassTable table(
        "cPLL",
        {
            PartMember<P>("Part"),
            PartMember<P>("Parent"),
            Property<&P::ID, &P::SetID>("ID"),
            Property<&P::IDnum, &P::SetIDnum>("IDnum"),
            Property<&P::PLLTab, &P::SetPLLTab>("PLLTab"),
            Routine<&P::Initialize>("Initialize"),
            Property<&P::LinkedCLKDist, &P::SetLinkedCLKDist>("LinkedCLKDist"),
            Property<&P::LinkedCLKDistInt, &P::SetLinkedCLKDistInt>("LinkedCLKDistInt"),
            Property<&P::XtalFrequency, &P::SetXtalFrequency>("XtalFrequency"),
            Property<&P::OSC2X, &P::SetOSC2X>("OSC2X"),
            ReadOnly<&P::Doubler>("Doubler"),
            Property<&P::RValue, &P::SetRValue>("RValue"),
            WriteOnly<&P::SetRCounter>("RCounter"),
            ReadOnly<&P::RCounterName>("RCounterName"),
            Property<&P::PDFrequency, &P::SetPDFrequency>("PDFrequency"),
            Property<&P::NDivFrequencyInput, &P::SetNDivFrequencyInput>("NDivFrequencyInput"),
            WriteOnly<&P::SetNCounter>("NCounter"),
            ReadOnly<&P::NCounterName>("NCounterName"),
            Property<&P::NValue, [](P& pll, double n) { pll.SetNValue(n); }>("NValue"),
            Property<&P::NumValue, &P::SetNumValue>("NumValue"),
            WriteOnly<&P::SetNumerator>("Numerator"),
            ReadOnly<&P::NumeratorName>("NumeratorName"),
            Property<&P::DenValue, &P::SetDenValue>("DenValue"),
            WriteOnly<&P::SetDenominator>("Denominator"),
            ReadOnly<&P::DenominatorName>("DenominatorName"),
            WriteOnly<&P::SetVCOFixed>("VCOFixed"),
            Property<&P::VCOFrequency, &P::SetVCOFrequency>("VCOFrequency"),
            Property<&P::OUT0_DIV, &P::SetOUT0_DIV>("OUT0_DIV"),
            Property<&P::OUT1_DIV, &P::SetOUT1_DIV>("OUT1_DIV"),
            Property<&P::OUT0_Freq, &P::SetOUT0_Freq>("OUT0_Freq"),
            Property<&P::OUT1_Freq, &P::SetOUT1_Freq>("OUT1_Freq"),
            Property<&P::extra_pll_n_div_1, &P::Setextra_pll_n_div_1>("extra_pll_n_div_1"),
            Routine<&P::save_extra_pll_n_div_1>("save_extra_pll_n_div_1"),
            Property<&P::extra_pll_n_div_2, &P::Setextra_pll_n_div_2>("extra_pll_n_div_2"),
        });
    return &table;
}

template<>
const ClassTable* ClassOf<cClkDist>() {
    using C = cClkDist;
    static const ClassTable table(
        "cClkDist", {
                        Field<&C::InputDivBypVal>("InputDivBypVal"),
                        Field<&C::InputDivBypVal_Clear>("InputDivBypVal_Clear"),
                        Field<&C::InputBusFreq>("InputBusFreq"),
                        Field<&C::LF_R3>("LF_R3"),
                        Field<&C::LF_R4>("LF_R4"),
                        Field<&C::LF_C3>("LF_C3"),
                        Field<&C::LF_C4>("LF_C4"),
                        Field<&C::LF_C3C4>("LF_C3C4"),
                        Field<&C::IDnum>("IDnum"),
                        Field<&C::ClkDistTab>("ClkDistTab"),
                        Property<&C::RefOSC_Freq, &C::SetRefOSC_Freq>("RefOSC_Freq"),
                        Property<&C::ExtSRC_Freq, &C::SetExtSRC_Freq>("ExtSRC_Freq"),
                        Property<&C::IntVCO_Freq, &C::SetIntVCO_Freq>("IntVCO_Freq"),
                        Field<&C::InputDiv_Out_Freq>("InputDiv_Out_Freq"),
                        Property<&C::LinkedPLLName, &C::SetLinkedPLLName>("LinkedPLLName"),
                        Field<&C::LinkedPLLInt>("LinkedPLLInt"),
                        Field<&C::NGlobalDelayName>("NGlobalDelayName"),
                        Field<&C::RGlobalDelayName>("RGlobalDelayName"),
                        Property<&C::InputDividerName, &C::SetInputDividerName>("InputDividerName"),
                        Field<&C::InternalVCOName>("InternalVCOName"),
                        Field<&C::InputMuxName>("InputMuxName"),
                        Routine<&C::SetClkDividerName>("SetClkDividerName", {"Index", "name"}),
                        Routine<&C::GetClkDividerName>("GetClkDividerName", {"Index"}),
                        Routine<&C::SetClkDelayName>("SetClkDelayName", {"Index", "name"}),
                        Routine<&C::GetClkDelayName>("GetClkDelayName", {"Index"}),
                        Routine<&C::SetClkMuxName>("SetClkMuxName", {"Index", "name"}),
                        Routine<&C::GetClkMuxName>("GetClkMuxName", {"Index"}),
                        Routine<&C::SetClkEnableName>("SetClkEnableName", {"Index", "name"}),
                        Routine<&C::GetClkEnableName>("GetClkEnableName", {"Index"}),
                        Field<&C::VCOCount>("VCOCount"),
                        Field<&C::ClockCount>("ClockCount"),
                        PartMember<C>("Part"),
                        PartMember<C>("Parent"),
                        Property<&C::ID, &C::SetID>("ID"),
                        Routine<&C::GetSourceFrequency>("GetSourceFrequency"),
                        Routine<&C::UpdateCLKValues>("UpdateCLKValues"),
                    });
    return &table;
}

template<>
const ClassTable* ClassOf<cBurst>() {
    using B = cBurst;
    static const ClassTable table("cBurst",
                                  {
                                      Field<&B::Description>("Description"),
                                      Field<&B::Delay>("Delay"),
                                      Property<&CommandOf, &SetCommand>("Command"),
                                      Property<&B::Register, &B::SetRegister>("Register"),
                                      Field<&B::RegisterName>("RegisterName"),
                                      Field<&B::OutputPinValue>("OutputPinValue"),
                                      Field<&B::LowByte>("LowByte"),
                                      Field<&B::useTrigger>("useTrigger"),
                                      Routine<&B::GetRegLoad_Count>("GetRegLoad_Count"),
                                      Routine<&B::GetRegLoad>("GetRegLoad", {"i"}),
                                      Routine<&B::SetRegLoad>("SetRegLoad", {"i", "value"}),
                                      Routine<&B::Pattern>("Pattern"),
                                      Routine<&B::Execute>("Execute"),
                                      PartMember<B>("Part"),
                                  });
    return &table;
}

} // namespace zentrel::objects
