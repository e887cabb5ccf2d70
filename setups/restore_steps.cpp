#include "setups/restore_steps.h"

#include <array>
#include <charconv>
#include <cmath>

#include "device/number_text.h"
#include "device/part.h"
#include "synth/clock_link.h"
#include "synth/linked_block.h"
#include "synth/pll.h"

namespace zentrel {
namespace {
// Below this the ordinary text has every digit of a whole number.
constexpr double kFifteenDigits = 1e15;
} // namespace

void RestoreCrystal(cPLL& pll, double mhz) {
    pll.SetXtalFrequency(mhz);
    if (LinkedBlock* block = LinkedBlockOf(pll)) block->SetRefOSC_Freq(pll.XtalFrequency());
}

void RestoreExtraDivider(cPLL& pll, IniFiles& files, std::string_view partFile,
                         std::int16_t divider) {
    pll.Setextra_pll_n_div_1(divider);
    files.SetPrivateSetting(partFile, "PLLS", "EXTRA_PLL_N_DIV_1_" + KeyNumber(pll.entry),
                            NumberToText(divider));
}

void RunOnLoadHooks(cPart& part, IniFiles& files, std::string_view partFile) {
    const auto count = ParseFileInt16(files.GetPrivateSetting(partFile, "BITS", "COUNT", "0"));
    const auto device = part.journal().device();
    for (int i = 1; i <= std::min<int>(count.value_or(0), part.PrgmBits.Count()); ++i) {
        const cPrgmBits& field = part.PrgmBits(i);
        if (field.script_on_load.empty()) continue;
        // Copies: the hook may load another device, and then there is nothing left to restore.
        const std::string id = field.ID, module = field.script_name,
                          procedure = field.script_on_load;
        part.upward().hooks->ExecuteScript(module, procedure);
        if (part.journal().device() != device) throw NotFound(part.PrgmBits.name(), id);
    }
}

void RebuildLinkedFrequencies(cPart& part) {
    for (int i = 1; i <= part.PLLs.Count(); ++i) {
        cPLL& pll = part.PLLs(i);
        if (pll.LinkedCLKDist().empty()) continue;
        pll.SetVCOFrequency((pll.XtalFrequency() / pll.RValue()) * GetPreNdivider(part, i) *
                            pll.NValue());
        UpdateCLKforPLL(part, pll.ID());
    }
}

std::string WordText(double value) {
    if (std::abs(value) < kFifteenDigits || !std::isfinite(value)) return NumberToText(value);
    std::array<char, 400> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::fixed, 0)
                         .ptr;
    return {buffer.data(), end};
}

} // namespace zentrel
