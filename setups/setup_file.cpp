#include "setups/setup_file.h"

#include <optional>

#include "burst/burst_list.h"
#include "device/number_text.h"
#include "device/part.h"
#include "setups/restore_steps.h"
#include "synth/pll.h"

namespace zentrel {
namespace {

// One section's keys on their way into a file.
class SectionWriter {
  public:
    SectionWriter(IniFiles& files, std::string_view file, std::string_view section)
        : files_(files), file_(file), section_(section) {}
    void Write(const std::string& key, const std::string& value) {
        files_.SetPrivateSetting(file_, section_, key, value);
    }
    void Write(const std::string& key, double value) { Write(key, NumberToText(value)); }

  private:
    IniFiles& files_;
    std::string_view file_;
    std::string_view section_;
};

// One section's keys on their way out; a value that is no number ends the restore at its key.
class SectionReader {
    template<typename Parse>
    auto Convert(const std::string& key, const std::string& text, Parse parse) {
        const auto value = parse(text);
        if (!value) {
            throw SetupFileError(13, file_, section_, key, text.substr(0, 40),
                                 "this is no number that fits here");
        }
        return *value;
    }

  public:
    SectionReader(IniFiles& files, std::string_view file, std::string_view section)
        : files_(files), file_(file), section_(section) {}

    std::string Text(const std::string& key, std::string_view otherwise) {
        return files_.GetPrivateSetting(file_, section_, key, otherwise);
    }
    double Real(const std::string& key, std::string_view otherwise) {
        return Convert(key, Text(key, otherwise), ParseFileNumber);
    }
    std::int16_t Int16(const std::string& key, std::string_view otherwise) {
        return Convert(key, Text(key, otherwise), ParseFileInt16);
    }
    std::int32_t Int32(const std::string& key, std::string_view otherwise) {
        return Convert(key, Text(key, otherwise), ParseFileInt32);
    }

    // Runs what takes a key's value; a name that the device lacks is told with its key.
    template<typename Step>
    void Take(const std::string& key, Step step) {
        try {
            step();
        } catch (const ScriptFailure&) {
            throw;
        } catch (const SetupFileError&) {
            throw;
        } catch (const Error& error) {
            throw SetupFileError(error.number(), file_, section_, key, Text(key, ""), error.what());
        }
    }

  private:
    IniFiles& files_;
    std::string_view file_;
    std::string_view section_;
};

void WritePort(cPart& part, SectionWriter setup) {
    setup.Write("ADDRESS", part.PortAddress);
    setup.Write("CLOCK", part.ClockPosition());
    setup.Write("DATA", part.DataPosition());
    setup.Write("LE", part.LEPosition());
    setup.Write("PART", part.ID);
    int i = 0;
    for (const cPrgmPin& pin : part.PrgmPins) {
        setup.Write("PINPOSITION" + KeyNumber(i++), pin.Position());
    }
}

void WriteState(cPart& part, SectionWriter modes) {
    int i = 0;
    for (const cRegister& reg : part.Registers) {
        modes.Write("NAME" + KeyNumber(i), reg.ID());
        modes.Write("VALUE" + KeyNumber(i++), WordText(reg.Value()));
    }
    i = 0;
    for (const cPLL& pll : part.PLLs) {
        modes.Write("OSCIN" + KeyNumber(i), pll.XtalFrequency());
        modes.Write("EXTRA_PLL_N_DIV_1_" + KeyNumber(i++), pll.extra_pll_n_div_1());
    }
    modes.Write("PINS", part.PortValueToPinMask(part.OutputPinValue()));
}

void WriteBurst(cPart& part, SectionWriter burst) {
    burst.Write("COUNT", part.BurstCmds.Count());
    int i = 0;
    for (const cBurst& command : part.BurstCmds) {
        const std::string nn = KeyNumber(i++);
        const bool delay = command.Command == BurstKind::Delay;
        burst.Write("COMMAND" + nn, static_cast<double>(command.Command));
        burst.Write("REGISTER" + nn,
                    delay ? NumberToText(command.Delay) : WordText(command.Register()));
        if (delay) continue;
        burst.Write("REGISTERNAME" + nn, command.RegisterName);
        burst.Write("PINS" + nn, part.PortValueToPinMask(command.OutputPinValue));
    }
}

void ReadPort(cPart& part, SectionReader setup) {
    part.PortAddress = setup.Int16("ADDRESS", "&H378");
    setup.Take("CLOCK", [&] { part.SetClockPosition(setup.Int16("CLOCK", "1")); });
    setup.Take("DATA", [&] { part.SetDataPosition(setup.Int16("DATA", "2")); });
    setup.Take("LE", [&] { part.SetLEPosition(setup.Int16("LE", "3")); });
    int i = 0;
    for (cPrgmPin& pin : part.PrgmPins) {
        const std::string key = "PINPOSITION" + KeyNumber(i++);
        setup.Take(key, [&] { pin.SetPosition(setup.Int32(key, "1")); });
    }
}

void RestorePins(cPart& part, SectionReader& section, const std::string& key) {
    part.SetOutputPinValueDirect(
        static_cast<std::int16_t>(part.PinMaskToPortValue(section.Int32(key, "0"))));
}

void ReadState(cPart& part, IniFiles& files, SectionReader modes, std::string_view partFile) {
    for (int i = 0; i < part.Registers.Count(); ++i) {
        const std::string key = "NAME" + KeyNumber(i);
        modes.Take(key, [&] {
            cRegister& reg = part.Registers(std::string_view(modes.Text(key, "")));
            reg.SetValue(modes.Real("VALUE" + KeyNumber(i), "0"));
        });
    }
    int i = 0;
    for (cPLL& pll : part.PLLs) {
        const std::string nn = KeyNumber(i++);
        modes.Take("OSCIN" + nn, [&] { RestoreCrystal(pll, modes.Real("OSCIN" + nn, "10")); });
        RestoreExtraDivider(pll, files, partFile, modes.Int16("EXTRA_PLL_N_DIV_1_" + nn, "1"));
    }
    RestorePins(part, modes, "PINS");
}

// Each entry first puts its word and pins into the device: a command captures what it finds there.
void ReadBurstEntry(cPart& part, SectionReader& burst, const std::string& nn) {
    const std::string value = burst.Text("REGISTER" + nn, "1000");
    const auto command = static_cast<BurstKind>(burst.Int16("COMMAND" + nn, "2"));
    if (command == BurstKind::Delay) {
        burst.Take("REGISTER" + nn, [&] { AppendBurstCommand(part, value, 2); });
    } else if (command == BurstKind::LoadRegister) {
        const std::string key = "REGISTERNAME" + nn;
        burst.Take(key, [&] {
            const std::string name = burst.Text(key, "RFN");
            part.Registers(std::string_view(name)).SetValue(burst.Real("REGISTER" + nn, "1000"));
            RestorePins(part, burst, "PINS" + nn);
            AppendBurstCommand(part, name, 0);
        });
    } else if (command == BurstKind::ChangePins) {
        RestorePins(part, burst, "PINS" + nn);
        AppendBurstCommand(part, "", 1);
    }
}

// The list's text is made once, however the reading ends.
class BurstRefresh {
  public:
    explicit BurstRefresh(cPart& part) : part_(part) {}
    ~BurstRefresh() { part_.upward().displays->UpdateBurstDisplay(); }
    BurstRefresh(const BurstRefresh&) = delete;
    BurstRefresh& operator=(const BurstRefresh&) = delete;

  private:
    cPart& part_;
};

void ReadBurst(cPart& part, SectionReader burst) {
    const BurstRefresh refresh(part);
    const int count = burst.Int16("COUNT", "1");
    for (int i = 0; i < count; ++i)
        ReadBurstEntry(part, burst, KeyNumber(i));
}

} // namespace

SetupFileError::SetupFileError(int number, std::string_view file, std::string_view section,
                               std::string_view key, std::string_view value, const std::string& why)
    : Error(number, std::string(file) + ", [" + std::string(section) + "] " + std::string(key) +
                        "=" + std::string(value) + ": " + why),
      section_(section), key_(key) {}

bool SaveBurstCommands(cPart& part, IniFiles& files, std::string_view sFileName, OldFile old) {
    WriteScope scope(files);
    if (old == OldFile::Replace) files.StartAnew(sFileName);
    WritePort(part, {files, sFileName, "SETUP"});
    WriteState(part, {files, sFileName, "MODES"});
    WriteBurst(part, {files, sFileName, "BURST"});
    return scope.Commit();
}

void LoadBurstCommands(cPart& part, IniFiles& files, std::string_view sFileName) {
    const ReadScope reading(files);
    SectionReader setup(files, sFileName, "SETUP");
    const std::string madeFor = setup.Text("PART", "QVX");
    if (madeFor != part.ID) {
        part.upward().messages->Show("This BurstCommand File was built for the " + madeFor +
                                     ". Select the correct device before loading this file.");
        return;
    }
    const WriteScope writing(files);
    const std::string partFile = files.Folder().PartFilePath(madeFor);
    ReadPort(part, setup);
    ReadState(part, files, {files, sFileName, "MODES"}, partFile);
    ReadBurst(part, {files, sFileName, "BURST"});
    RunOnLoadHooks(part, files, partFile);
    RebuildLinkedFrequencies(part);
    part.UpdateDisplays();
}

} // namespace zentrel
