#include "automation/object_model/classes.h"
#include "device/part.h"

/// Registers, fields and pins as outsiders see them.
namespace zentrel::objects {

template<>
const ClassTable* ClassOf<cRegister>() {
    using R = cRegister;
    static const ClassTable table(
        "cRegister",
        {
            Child<[](R& reg) { return RefTo(reg.Parent()); }>("Parent", &ClassOf<cPart>),
            ReadOnly<&R::ID>("ID"),
            Property<&R::Value, &R::SetValue>("Value"),
            Property<&R::Mask, &R::SetMask>("Mask"),
            Property<&R::Change, &R::SetChange>("Change"),
            Property<&R::LowByte, &R::SetLowByte>("LowByte"),
            ReadOnly<&R::Address>("Address"),
            ReadOnly<&R::RegisterString>("RegisterString"),
            Routine<[](R& reg, double bits, std::int16_t position, std::int16_t length,
                       std::optional<bool> inv) {
                reg.SetBits(bits, position, length, inv.value_or(false));
            }>("SetBits", {"bits", "Position", "Bitlength", "inv"}),
            Routine<[](R& reg, std::int16_t position, std::int16_t length,
                       std::optional<bool> inv) {
                return reg.GetBits(position, length, inv.value_or(false));
            }>("GetBits", {"Position", "Bitlength", "inv"}),
            Routine<&R::ClrBit>("ClrBit", {"Position"}),
            Routine<&R::ToggleBit>("ToggleBit", {"loc"}),
        });
    return &table;
}

template<>
const ClassTable* ClassOf<cPrgmBits>() {
    using B = cPrgmBits;
    static const ClassTable table(
        "cPrgmBits", {
                         Field<&B::ID>("ID"),
                         Field<&B::Register>("Register"),
                         Field<&B::Position>("Position"),
                         Field<&B::Length>("Length"),
                         Field<&B::Display>("Display"),
                         Field<&B::ZeroValue>("ZeroValue"),
                         Field<&B::MinimumValue>("MinimumValue"),
                         Field<&B::MaximumValue>("MaximumValue"),
                         Field<&B::StepValue>("StepValue"),
                         Field<&B::Polarity>("Polarity"),
                         Field<&B::PolarityPosition>("PolarityPosition"),
                         Field<&B::FormatString>("FormatString"),
                         Field<&B::DataInverted>("DataInverted"),
                         Field<&B::PolarityInverted>("PolarityInverted"),
                         Field<&B::LinkedBits>("LinkedBits"),
                         Field<&B::Description>("Description"),
                         Field<&B::script_on_load>("script_on_load"),
                         Field<&B::script_before_prog>("script_before_prog"),
                         Field<&B::script_after_prog>("script_after_prog"),
                         Field<&B::script_name>("script_name"),
                         WriteOnlyField<&B::MirrorBits>("MirrorBits"),
                         WriteOnlyField<&B::StepValueBitName>("StepValueBitName"),
                         WriteOnlyField<&B::GreaterBitName>("GreaterBitName"),
                         WriteOnlyField<&B::GreaterEqual>("GreaterEqual"),
                         WriteOnlyField<&B::Units>("Units"),
                         Property<&B::BitValue, &B::SetBitValue>("BitValue"),
                         Property<&B::Value, &B::SetValue>("Value"),
                         ReadOnly<&B::Text>("Text"),
                         Routine<&B::Increment>("Increment"),
                         Routine<&B::Decrement>("Decrement"),
                         Routine<&B::ToggleBit>("ToggleBit"),
                         Routine<&B::SetPositive>("SetPositive"),
                         Routine<&B::SetNegative>("SetNegative"),
                         ReadOnly<&B::PolarityValue>("PolarityValue"),
                         ReadOnly<&B::TotalLength>("TotalLength"),
                         ReadOnly<&B::Maximum>("Maximum"),
                         ReadOnly<&B::Minimum>("Minimum"),
                         ReadOnly<&B::ArrayCount>("ArrayCount"),
                         Routine<&B::SetValueArray>("SetValueArray", {"d"}),
                         Routine<&B::SetStringArray>("SetStringArray", {"d"}),
                         // Arrays arrive with their elements converted, whatever they were.
                         Routine<&B::SetValueArray>("InitializeValueArray", {"d"}),
                         Routine<&B::SetStringArray>("InitializeStringArray", {"d"}),
                         Routine<&B::GetStringArray>("GetStringArray", {"d"}),
                         Routine<&B::SetValueText>("SetValueText", {"s"}),
                         Routine<&B::GetValueText>("GetValueText"),
                         PartMember<B>("Parent"),
                         PartMember<B>("Part"),
                     });
    return &table;
}

template<>
const ClassTable* ClassOf<cPrgmPin>() {
    using P = cPrgmPin;
    static const ClassTable table(
        "cPrgmPin",
        {
            Property<&P::Value, &P::SetValue>("Value"),
            ReadOnly<&P::ID>("ID"),
            Property<&P::Trigger, &P::SetTrigger>("Trigger"),
            Property<&P::ReadBack, &P::SetReadBack>("ReadBack"),
            Property<&P::Position,
                     [](P& pin, std::int32_t position) { pin.SetPosition(position); }>("Position"),
            Property<&P::Enabled, &P::SetEnabled>("Enabled"),
            Routine<&P::Toggle>("Toggle"),
            PartMember<P>("Parent"),
            PartMember<P>("Part"),
        });
    return &table;
}

} // namespace zentrel::objects
