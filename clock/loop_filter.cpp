#include "clock/loop_filter.h"

#include <map>
#include <utility>

#include "clock/clk_dist.h"
#include "clock/clock_change.h"
#include "clock/clock_entry.h"
#include "device/errors.h"
#include "device/number_text.h"
#include "device/part.h"
#include "device/text.h"
#include "transport/load_path.h"

namespace zentrel {
namespace {

constexpr char kBetween = ',';

std::optional<std::int16_t> WholeNumber(std::string_view digits) {
    const auto number = ParseNumber(digits);
    return number ? ToInt16(*number) : std::nullopt;
}

// The entry that a click leads to: the values of the clicked capacitor at the other one's present
// value, each with the first entry that has it. A target that isn't there is the entry of 0, or
// the first of the list.
int NextEntry(const cPrgmBits& list, std::int16_t FilterPair::*clicked,
              std::int16_t FilterPair::*kept, MouseButton button) {
    std::map<int, int> entryOf;
    const auto present = ReadC3C4(list.Text());
    const std::vector<std::string>& items = list.StringArray();
    for (std::size_t i = 0; present && i < items.size(); ++i) {
        const auto pair = ReadC3C4(items[i]);
        if (pair && (*pair).*kept == (*present).*kept) {
            entryOf.try_emplace((*pair).*clicked, static_cast<int>(i));
        }
    }
    auto at = present ? entryOf.find((*present).*clicked) : entryOf.end();
    if (at == entryOf.end() || button == MouseButton::Other) {
        const auto zero = entryOf.find(0);
        return zero == entryOf.end() ? 0 : zero->second;
    }
    if (button == MouseButton::Left) {
        if (++at == entryOf.end()) at = entryOf.begin();
    } else {
        if (at == entryOf.begin()) at = entryOf.end();
        --at;
    }
    return at->second;
}

void StepCapacitor(cClkDist& block, std::string_view element, std::int16_t FilterPair::*clicked,
                   std::int16_t FilterPair::*kept, MouseButton button) {
    if (block.LF_C3C4.empty()) return;
    cPart& part = block.Part();
    const bool stepped = ChangeModel(block, element, [&] {
        cPrgmBits& list = part.PrgmBits(block.LF_C3C4);
        list.SetBitValue(NextEntry(list, clicked, kept, button));
    });
    Displays& displays = *part.upward().displays;
    displays.UpdatePLLDisplay();
    displays.UpdateCLKDISTDisplay();
    displays.UpdateRegisterDisplay();
    displays.UpdateBitDisplay();
    displays.UpdateLoopFilterDisplay();
    if (stepped) LoadChanges(part);
}

void StepResistor(cClkDist& block, std::string_view element, const std::string& name,
                  MouseButton button) {
    if (name.empty() || button == MouseButton::Other) return;
    cPart& part = block.Part();
    const bool stepped = ChangeModel(block, element, [&] {
        cPrgmBits& list = part.PrgmBits(name);
        button == MouseButton::Left ? list.Increment() : list.Decrement();
    });
    Displays& displays = *part.upward().displays;
    displays.UpdatePLLDisplay();
    displays.UpdateCLKDISTDisplay();
    displays.UpdateRegisterDisplay();
    if (stepped) LoadChanges(part);
}

// A field's text; what can't be read says so in the field's place.
std::string TextOfFilterPart(const cPart& part, const std::string& name) {
    try {
        return part.PrgmBits(name).Text();
    } catch (const Error&) {
        return "Failed to open register " + name;
    }
}

void ShowResistor(const cPart& part, Label& label, const std::string& name) {
    label.Enabled = !name.empty();
    if (!name.empty()) label.Caption = TextOfFilterPart(part, name);
}

std::string WithUnit(std::string_view value) {
    std::string text(value);
    if (text.find("pF") == std::string::npos) text += " pF";
    return text;
}

cClkDist* LastBlock(const cPart& part) {
    return part.ClkDists.empty() ? nullptr : &part.ClkDists(part.ClkDists.Count());
}

void FillFilterList(const cPart& part, ListBox& list, const std::string& name) {
    list.Clear();
    const cPrgmBits* field = part.PrgmBits.Find(name);
    list.Enabled = field != nullptr;
    if (field != nullptr) list.List = field->StringArray();
}

void SelectPresent(const cPart& part, ListBox& list, const std::string& name) {
    const cPrgmBits* field = part.PrgmBits.Find(name);
    if (field == nullptr || !list.SetListIndex(RoundToInteger(field->BitValue()))) {
        list.SetListIndex(-1);
    }
}

} // namespace

std::string ReducedC3C4(std::string_view text) {
    std::string reduced;
    bool inUnit = false;
    for (const char c : text) {
        if (c == kBetween || c == ' ') {
            inUnit = false;
            if (c == kBetween) reduced += c;
        } else if (!IsDigit(c)) {
            inUnit = true;
        } else if (!inUnit) {
            reduced += c;
        }
    }
    return reduced;
}

std::optional<FilterPair> ReadC3C4(std::string_view text) {
    const std::string reduced = ReducedC3C4(text);
    const auto comma = reduced.find(kBetween);
    if (comma == std::string::npos) return {};
    const auto c3 = WholeNumber(std::string_view(reduced).substr(0, comma));
    const auto c4 = WholeNumber(std::string_view(reduced).substr(comma + 1));
    if (!c3 || !c4) return {};
    return FilterPair{*c3, *c4};
}

void ClickR3(cClkDist& block, MouseButton button) {
    StepResistor(block, "clkdist_R3", block.LF_R3, button);
}
void ClickR4(cClkDist& block, MouseButton button) {
    StepResistor(block, "clkdist_R4", block.LF_R4, button);
}
void ClickC3(cClkDist& block, MouseButton button) {
    StepCapacitor(block, "clkdist_C3", &FilterPair::C3, &FilterPair::C4, button);
}
void ClickC4(cClkDist& block, MouseButton button) {
    StepCapacitor(block, "clkdist_C4", &FilterPair::C4, &FilterPair::C3, button);
}

void ShowLoopFilter(cClkDist& block) {
    const cPart& part = block.Part();
    ClockPanel& panel = block.panel;
    ShowResistor(part, panel.clkdist_R3, block.LF_R3);
    ShowResistor(part, panel.clkdist_R4, block.LF_R4);
    panel.clkdist_C3.Enabled = panel.clkdist_C4.Enabled = !block.LF_C3C4.empty();
    if (block.LF_C3C4.empty()) return;

    const std::string text = TextOfFilterPart(part, block.LF_C3C4);
    const auto comma = text.find(kBetween);
    if (comma == std::string::npos) {
        panel.clkdist_C3.Caption = text;
        panel.clkdist_C4.Caption.clear();
    } else {
        panel.clkdist_C3.Caption = WithUnit(std::string_view(text).substr(0, comma));
        panel.clkdist_C4.Caption = WithUnit(std::string_view(text).substr(comma + 1));
    }
}

frmLoopFilter::frmLoopFilter(cPart& part) : part_(part) {
    cmdClose.Caption = "&Close";
    cbR3.Click = [this] { Choose("cbR3", &cClkDist::LF_R3, cbR3); };
    cbR4.Click = [this] { Choose("cbR4", &cClkDist::LF_R4, cbR4); };
    cbC3C4.Click = [this] { Choose("cbC3C4", &cClkDist::LF_C3C4, cbC3C4); };
}

void frmLoopFilter::Form_Load() {
    Visible = true;
    const cClkDist* block = LastBlock(part_);
    if (block == nullptr) return;
    FillFilterList(part_, cbR3, block->LF_R3);
    FillFilterList(part_, cbR4, block->LF_R4);
    FillFilterList(part_, cbC3C4, block->LF_C3C4);
    UpdateLoopFilterDisplay();
}

void frmLoopFilter::UpdateLoopFilterDisplay() {
    const int tab = part_.upward().tabs->SelectedTab();
    for (const cClkDist& block : part_.ClkDists) {
        if (block.ClkDistTab != tab) continue;
        const UpdatingScope updating(part_);
        SelectPresent(part_, cbR3, block.LF_R3);
        SelectPresent(part_, cbR4, block.LF_R4);
        SelectPresent(part_, cbC3C4, block.LF_C3C4);
        return;
    }
}

void frmLoopFilter::Choose(std::string_view element, std::string cClkDist::*name,
                           const ListBox& list) {
    cClkDist* block = LastBlock(part_);
    if (block != nullptr && !part_.Updating) {
        ChooseListEntry(*block, element, block->*name, list.ListIndex);
    }
}

} // namespace zentrel
