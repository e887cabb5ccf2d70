#include "partfile/part_definition.h"

#include "device/number_text.h"
#include "partfile/migration.h"
#include "partfile/part_sections.h"

namespace zentrel {
namespace {

constexpr int kScriptDigits = 3;
constexpr int kScriptLineDigits = 5;

void ReadSetup(const PartReading& reading) {
    SectionReader section = reading.Section("SETUP");
    SetupSection& setup = reading.part.setup;
    setup.version = section.Text("ZENTREL_VERSION", kOldFormat);
    setup.commMode = section.Text("COMM_MODE", "LPT");
    setup.registerLength = section.Int("REGISTER_LENGTH", 24);
    setup.controlLength = section.Int("CONTROL_LENGTH", 3);
    setup.address = section.Int("ADDRESS", 0x378);
    setup.clock = section.Int("CLOCK", 1);
    setup.data = section.Int("DATA", 2);
    setup.le = section.Int("LE", 3);
    setup.invertClock = section.Bool("INVERTCLOCK", false);
    setup.partVersion = section.Text("VERSION", "a");
    setup.versionDescription = section.Text("VERSION_DESCRIPTION", "No ini description");
    setup.readbackAddressRegister = section.Text("READBACK_ADDR_REG");
    setup.readbackAddressRegisterName = section.Text("READBACK_ADDR_REG_NAME");
}

void ReadPins(const PartReading& reading) {
    SectionReader section = reading.Section("PINS");
    EntryNames names("PINS", reading.part);
    const int count = section.Count();
    for (int i = 0; i < count; ++i) {
        section.SetEntry(i);
        PinEntry pin;
        pin.entry = i;
        pin.name = section.Text("NAME", "Pin" + section.EntryText());
        if (names.Repeats(pin.name, i)) {
            names.LeaveOut(section, pin.name, i);
            continue;
        }
        pin.location = section.Int("LOCATION", 4);
        pin.readBack = section.Raw("READBACK") == "True";
        if (!pin.readBack) pin.enabled = section.Bool("ENABLED", false);
        reading.part.pins.push_back(std::move(pin));
    }
}

void ReadRegisters(const PartReading& reading) {
    SectionReader section = reading.Section("REGISTERS");
    EntryNames names("REGISTERS", reading.part);
    const int count = section.Count();
    for (int i = 0; i < count; ++i) {
        section.SetEntry(i);
        RegisterEntry reg;
        reg.entry = i;
        reg.name = section.Text("NAME", "Reg" + section.EntryText());
        if (names.Repeats(reg.name, i)) {
            names.LeaveOut(section, reg.name, i);
            continue;
        }
        reg.mask = section.Long("MASK", 3);
        reg.value = section.Real("VALUE", i);
        reg.lowByte = section.Bool("LOWBYTE", true);
        reading.part.registers.push_back(std::move(reg));
    }
}

void ReadModes(const PartReading& reading) {
    SectionReader section = reading.Section("MODES");
    const int count = section.Count();
    for (int i = 0; i < count; ++i) {
        section.SetEntry(i);
        reading.part.modes.push_back(section.Text("MODE", "CAPTION" + section.EntryText()));
    }
}

void ReadScripts(PartReading& reading) {
    SectionReader section = reading.Section("SCRIPTS");
    reading.part.executeScripts = section.Bool("EXECUTE_SCRIPTS", false);
    const int count = section.Count();
    for (int i = 0; i < count; ++i) {
        section.SetEntry(i, kScriptDigits);
        ScriptModule module;
        module.name = section.Text("SCRIPTNAME");
        module.lastLine = section.Int("SCRIPTLINES", 0);
        const int lines = reading.TakeListed(section, "SCRIPTLINES", module.lastLine + 1);
        for (int line = 0; line < lines; ++line) {
            section.SetEntry(line, kScriptLineDigits);
            module.lines.push_back(section.Text(module.name));
        }
        reading.part.scripts.push_back(std::move(module));
    }
}

} // namespace

int PartReading::TakeListed(SectionReader& section, std::string_view word, int count) {
    if (count <= 0) return 0;
    if (count > listedLeft) {
        section.Note(word, "none: the file lists too many entries");
        return 0;
    }
    listedLeft -= count;
    return count;
}

bool EntryNames::Repeats(const std::string& name, int entry) {
    return !entries_.try_emplace(name, entry).second;
}

void EntryNames::LeaveOut(SectionReader& section, const std::string& name, int entry) {
    const int kept = entries_.at(name);
    section.Note("NAME", "entry " + KeyNumber(kept) + ", which has the name already");
    part_.leftOut.push_back({section_, name, entry, kept});
}

std::string ScriptModule::Code() const {
    std::string code;
    for (const std::string& line : lines)
        code.append(line).append("\r\n");
    return code;
}

PartDefinition ReadPartDefinition(const IniText& text, std::string_view file) {
    PartDefinition part;
    PartReading reading{text, file, part};
    ReadSetup(reading);
    ReadPins(reading);
    ReadRegisters(reading);
    ReadFields(reading);
    ReadPlls(reading);
    ReadClkDists(reading);
    ReadModes(reading);
    ReadScripts(reading);
    return part;
}

PartDefinition ReadPartDefinition(IniFiles& files, std::string_view path) {
    const ReadScope scope(files);
    const std::string realPath = files.RealPath(path);
    PartDefinition part = ReadPartDefinition(files.View(path), realPath);
    if (const auto failure = files.ReadFailure(path)) {
        part.problems.insert(part.problems.begin(),
                             {realPath, "", "", *failure, "the defaults of all keys"});
    }
    return part;
}

PartDefinition LoadPartDefinition(IniFiles& files, std::string_view path) {
    const ReadScope scope(files);
    const std::vector<Problem> ofMigration = MigratePartFile(files, path);
    PartDefinition part = ReadPartDefinition(files, path);
    part.problems.insert(part.problems.end(), ofMigration.begin(), ofMigration.end());
    return part;
}

std::string TwoNumberKey(std::string_view word, int first, int second) {
    return std::string(word) + KeyNumber(first) + KeyNumber(second);
}

} // namespace zentrel
