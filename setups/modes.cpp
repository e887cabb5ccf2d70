#include "setups/modes.h"

#include <string>

#include "device/number_text.h"
#include "device/part.h"
#include "partfile/part_definition.h"
#include "setups/restore_steps.h"
#include "synth/pll.h"

namespace zentrel {
namespace {

constexpr std::string_view kSection = "MODES";

template<typename Parse>
auto Number(IniFiles& files, const std::string& file, const std::string& key,
            std::string_view otherwise, Parse parse) {
    const std::string text = files.GetPrivateSetting(file, kSection, key, otherwise);
    const auto value = parse(text);
    if (!value) {
        throw TypeMismatch(file + ", [MODES] " + key + "=" + text.substr(0, 40));
    }
    return *value;
}

} // namespace

int StoreMode(cPart& part, IniFiles& files, std::string_view name) {
    const std::string file = files.Folder().PartFilePath(part.ID);
    WriteScope scope(files);
    const int index =
        ParseFileInt16(files.GetPrivateSetting(file, kSection, "COUNT", "0")).value_or(0);
    const std::string mm = KeyNumber(index);
    const auto write = [&](const std::string& key, const std::string& value) {
        files.SetPrivateSetting(file, kSection, key, value);
    };
    write("COUNT", NumberToText(index + 1));
    write("MODE" + mm, std::string(name));
    int i = 0;
    for (const cRegister& reg : part.Registers) {
        write(TwoNumberKey("NAME", index, i), reg.ID());
        write(TwoNumberKey("VALUE", index, i++), WordText(reg.Value()));
    }
    i = 0;
    for (const cPLL& pll : part.PLLs) {
        write(TwoNumberKey("OSCIN", index, i), pll.panel.txtOsc.Text);
        write(TwoNumberKey("EXTRA_PLL_N_DIV_1_", index, i++),
              NumberToText(pll.extra_pll_n_div_1()));
    }
    write("PINS" + mm, NumberToText(part.PortValueToPinMask(part.OutputPinValue())));
    return scope.Commit() ? index : -1;
}

void RestoreMode(cPart& part, IniFiles& files, int Index) {
    const ReadScope reading(files);
    const WriteScope writing(files);
    const std::string file = files.Folder().PartFilePath(part.ID);
    const std::string mm = KeyNumber(Index);
    int i = 0;
    for (cPLL& pll : part.PLLs) {
        RestoreCrystal(pll,
                       Number(files, file, TwoNumberKey("OSCIN", Index, i), "10", ParseFileNumber));
        RestoreExtraDivider(pll, files, file,
                            Number(files, file, TwoNumberKey("EXTRA_PLL_N_DIV_1_", Index, i++), "1",
                                   ParseFileInt16));
    }
    for (i = 0; i < part.Registers.Count(); ++i) {
        const std::string name =
            files.GetPrivateSetting(file, kSection, TwoNumberKey("NAME", Index, i), "");
        cRegister& reg = part.Registers(std::string_view(name));
        reg.SetValue(Number(files, file, TwoNumberKey("VALUE", Index, i), "0", ParseFileNumber));
    }
    RunOnLoadHooks(part, files, file);
    RebuildLinkedFrequencies(part);
    part.SetOutputPinValueDirect(static_cast<std::int16_t>(
        part.PinMaskToPortValue(Number(files, file, "PINS" + mm, "0", ParseFileInt32))));
    part.UpdateDisplays();
}

void RestoreModeTwice(cPart& part, IniFiles& files, int Index) {
    RestoreMode(part, files, Index);
    RestoreMode(part, files, Index);
}

} // namespace zentrel
