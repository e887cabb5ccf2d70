#include <memory>

#include "device/number_text.h"
#include "session/device_items.h"
#include "session/frm_part.h"
#include "session/part_loader.h"

namespace zentrel {

// The setup, pins, registers and fields of a part file become the device's.

namespace {

constexpr std::string_view kSetup = "SETUP";
constexpr std::string_view kPins = "PINS";
constexpr std::string_view kRegisters = "REGISTERS";
constexpr std::string_view kBits = "BITS";

const SetupSection kDefaults;
constexpr std::int16_t kDefaultLocation = 4;

} // namespace

void PartLoader::ApplySetup(const SetupSection& setup) {
    cPart& part = frm_.part;
    Session& session = frm_.session;
    // The route comes first: what a pin's number means depends on it.
    session.CommMode_Select = setup.commMode;
    Set(
        kSetup, "REGISTER_LENGTH", std::to_string(setup.registerLength),
        [&] { part.SetRegisterLength(setup.registerLength); },
        std::to_string(kDefaults.registerLength),
        [&] { part.SetRegisterLength(kDefaults.registerLength); });
    part.ControlLength = setup.controlLength;
    part.PortAddress = setup.address;

    const auto line = [&](std::string_view key, std::int16_t pin, std::int16_t usual,
                          void (cPart::*set)(std::int32_t)) {
        Set(
            kSetup, key, std::to_string(pin), [&] { (part.*set)(pin); }, std::to_string(usual),
            [&] { (part.*set)(usual); });
    };
    line("CLOCK", setup.clock, kDefaults.clock, &cPart::SetClockPosition);
    line("DATA", setup.data, kDefaults.data, &cPart::SetDataPosition);
    line("LE", setup.le, kDefaults.le, &cPart::SetLEPosition);
    part.InvertClock = setup.invertClock;
    session.txtINIVersion = setup.partVersion;
    session.txtINIVerDescr = setup.versionDescription;
    part.ReadbackAddressRegister = setup.readbackAddressRegister;
    part.ReadbackAddressRegisterName = setup.readbackAddressRegisterName;
    part.SetInputPinPosition(-1);
    part.InputPinPositionINI = -1;
}

void PartLoader::AddPin(const PinEntry& entry) {
    cPart& part = frm_.part;
    const std::string number = KeyNumber(entry.entry);
    const std::string name = Named(kPins, "Pin", entry.entry, entry.name);
    if (part.PrgmPins.Contains(name)) return;
    std::int32_t location = entry.location;
    const auto pin = std::make_shared<cPrgmPin>(part, name, entry.readBack);
    pin->entry = entry.entry;
    Set(
        kPins, "LOCATION" + number, std::to_string(location),
        [&] { pin->SetPosition(std::int32_t{location}); }, std::to_string(kDefaultLocation),
        [&] {
            location = kDefaultLocation;
            pin->SetPosition(std::int32_t{location});
        });
    if (entry.readBack) {
        Set(
            kPins, "LOCATION" + number, std::to_string(location),
            [&] { part.SetInputPinPosition(std::int32_t{location}); }, "-1",
            [&] { part.SetInputPinPosition(-1); });
        part.InputPinPositionINI = location;
    }
    part.PrgmPins.Add(pin, name);
    part.upward().builder->AddPinElements(*pin);
    if (!entry.readBack) {
        Set(
            kPins, "ENABLED" + number, entry.enabled ? "True" : "False",
            [&] { pin->SetEnabled(entry.enabled); }, "False", [] {});
    }
}

void PartLoader::AddRegister(const RegisterEntry& entry) {
    cPart& part = frm_.part;
    const std::string name = Named(kRegisters, "Reg", entry.entry, entry.name);
    if (part.Registers.Contains(name)) return;
    zentrel::AddRegister(part, name, entry.mask, entry.value, entry.lowByte).entry = entry.entry;
}

// The field of an entry with its control: a new one, or the one that has the name already. Null
// when the entry is left out.
cPrgmBits* PartLoader::MakeField(const FieldEntry& entry) {
    cPart& part = frm_.part;
    const std::string name = Named(kBits, "Reg", entry.entry, entry.name);
    const bool stands = part.PrgmBits.Contains(name);
    cPrgmBits* field = nullptr;
    if (entry.control == FieldControl::kSpinBox) {
        if (stands) return nullptr;
        field = &AddCounter(part, name, entry.reg, entry.position, entry.length, entry.display,
                            entry.frame);
    } else {
        const bool checkBox = entry.display && entry.control == FieldControl::kCheckBox;
        field = &AddProgramBit(part, name, entry.reg, entry.position, entry.length, checkBox,
                               entry.frame);
    }
    if (!stands) field->entry = entry.entry;
    return field;
}

void PartLoader::AddField(const FieldEntry& entry) {
    cPrgmBits* field = MakeField(entry);
    if (field == nullptr) return;
    if (!entry.strings.empty()) field->SetStringArray(entry.strings);
    if (!entry.values.empty()) field->SetValueArray(entry.values);
    field->MinimumValue = entry.minimumValue;
    field->MaximumValue = entry.maximumValue;
    field->ZeroValue = entry.zeroValue;
    field->StepValue = entry.stepValue;
    field->Units = entry.units;
    field->LinkedBits = entry.linkedBits;
    field->MirrorBits = entry.mirrorBits;
    field->StepValueBitName = entry.stepValueBitName;
    field->script_name = entry.scriptName;
    field->script_on_load = entry.scriptOnLoad;
    field->script_before_prog = entry.scriptBeforeProg;
    field->script_after_prog = entry.scriptAfterProg;
    field->Description = entry.description;
    field->GreaterBitName = entry.greaterBits;
    field->GreaterEqual = entry.greaterThan;
    field->Polarity = entry.polarity;
    field->PolarityPosition = entry.polarityPosition;
    field->PolarityInverted = entry.polarityInverted;
    field->DataInverted = entry.dataInverted;
    if (entry.display && entry.control == FieldControl::kList) {
        AddList(frm_.part, field->ID, entry.frame);
    }
}

} // namespace zentrel
