#include "transport/monitor/wire_map.h"

#include <algorithm>

#include "device/number_format.h"
#include "device/number_text.h"
#include "device/part.h"
#include "device/pin_numbers.h"
#include "transport/addressed_register.h"

namespace zentrel {
namespace {

template<typename T>
std::vector<T> ListOf(const std::vector<T>& list) {
    return list.size() > 1 ? list : std::vector<T>(); // A list of one element counts as absent.
}

int PositionOf(const cPart& part, const std::string& name) {
    int position = 0;
    for (const cRegister& reg : part.Registers) {
        ++position;
        if (EqualNoCase(reg.ID(), name)) return position;
    }
    return 0;
}

WireMap::Field FieldOf(const cPart& part, const cPrgmBits& from) {
    WireMap::Field field;
    field.name = from.ID;
    field.reg = PositionOf(part, from.Register);
    field.position = from.Position;
    field.length = from.Length;
    field.inverted = from.DataInverted;
    field.bitsOnly = !from.LinkedBits.empty() || !from.StepValueBitName.empty();
    field.zero = from.ZeroValue;
    field.step = from.StepValue;
    field.hasSign = from.Polarity;
    field.signBit = from.PolarityPosition;
    field.signInverted = from.PolarityInverted;
    field.units = from.Units;
    field.format = from.FormatString;
    field.values = ListOf(from.ValueArray());
    field.strings = ListOf(from.StringArray());
    return field;
}

} // namespace

std::string WireMap::Field::Text(const BitWord& word) const {
    const std::uint64_t bits = FieldBits(word, position, length, inverted);
    std::string plain = NumberToText(static_cast<double>(bits));
    if (bitsOnly) return plain;
    if (!values.empty() && !strings.empty()) {
        for (std::size_t i = 0; i < std::min(values.size(), strings.size()); ++i) {
            const auto code = ParseFileNumber(strings[i]);
            if (code && *code == static_cast<double>(bits)) return NumberToText(values[i]);
        }
        return plain;
    }
    if (!values.empty()) return bits < values.size() ? NumberToText(values[bits]) : plain;
    if (!strings.empty()) return bits < strings.size() ? strings[bits] : plain;
    const bool negative = hasSign && word.Test(signBit) == signInverted;
    const double value = (negative ? -1 : 1) * (zero + step * static_cast<double>(bits));
    return format.empty() ? NumberToText(value) + units : FormatNumber(value, format);
}

BitWord WireMap::Field::Mask() const {
    return BitWord::Ones(length).Shifted(position);
}

WireMap::Source WireMap::SourceOf(const cPart& part) {
    Source source;
    source.device = part.journal().device();
    source.registers = part.Registers.Count();
    source.fields = part.PrgmBits.Count();
    source.pins = part.PrgmPins.Count();
    for (const cPrgmPin& pin : part.PrgmPins)
        source.pinPlaces = source.pinPlaces * 31 + static_cast<std::uint32_t>(pin.mask());
    source.clock = part.ClockPositionValue();
    source.data = part.DataPositionValue();
    source.le = part.LEPositionValue();
    source.input = part.InputPinPositionValue();
    source.address = part.PortAddress;
    source.length = part.RegisterLength();
    source.control = part.ControlLength;
    source.invertClock = part.InvertClock;
    source.usb = part.session().isUsb();
    return source;
}

std::shared_ptr<const WireMap> WireMap::Of(const cPart& part) {
    auto map = std::make_shared<WireMap>();
    map->source = SourceOf(part);
    map->device = part.ID;
    for (const cRegister& reg : part.Registers)
        map->registers.push_back(reg.ID());
    for (const cPrgmBits& field : part.PrgmBits) {
        if (field.Position < 0 || field.Length < 1) continue;
        map->fields.push_back(FieldOf(part, field));
    }
    for (const cPrgmPin& pin : part.PrgmPins)
        map->pins.push_back({pin.ID(), static_cast<std::uint16_t>(pin.Value()), pin.ReadBack()});
    if (const cPrgmPin* trigger = part.PrgmPins.Find("Trigger"))
        map->trigger = static_cast<std::uint16_t>(trigger->Value());
    return map;
}

std::string WireMap::PinName(std::uint16_t mask) const {
    for (const Pin& pin : pins) {
        if (!pin.readBack && pin.mask == mask) return pin.name;
    }
    const std::int32_t number = source.usb ? UsbPortValueToPin(mask) : LptPortValueToPin(mask);
    return number > 0 ? "pin " + NumberToText(number) : "line " + HexText(std::int32_t{mask});
}

std::uint16_t WireMap::Outputs() const {
    std::uint16_t outputs = 0;
    for (const Pin& pin : pins) {
        if (!pin.readBack) outputs |= pin.mask;
    }
    return outputs;
}

} // namespace zentrel
