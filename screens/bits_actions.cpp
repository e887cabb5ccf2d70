#include <cstddef>

#include "device/errors.h"
#include "device/number_text.h"
#include "device/part.h"
#include "device/text.h"
#include "screens/bits_screen.h"
#include "screens/field_tip.h"
#include "transport/load_path.h"

namespace zentrel {

// What the elements of the Bits/Pins tab show, and what the user's hand on them does.

namespace {

constexpr std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

// One element that fails doesn't keep the others from showing their values.
template<typename Step>
void PassOver(Step step) {
    try {
        step();
    } catch (const Error&) {
        // The element stays as it is.
    }
}

// A counter shows its units behind the number; a user who edits the number leaves them there.
std::string_view WithoutUnits(std::string_view text, std::string_view units) {
    text = TrimBlanks(text);
    if (!units.empty() && text.ends_with(units)) text.remove_suffix(units.size());
    return text;
}

} // namespace

void BitsScreen::UpdateBitDisplay() {
    if (part_.PrgmBits.empty()) return;
    const UpdatingScope updating(part_);
    ShowBits();
    ShowPins();
    ShowCounters();
    ShowLists();
}

void BitsScreen::ShowBits() {
    for (int i = 0; i < bitsUsed_; ++i) {
        CheckBox& box = chkPrgmBit[At(i)];
        if (!box.Visible) continue;
        PassOver([&] { box.SetValue(part_.PrgmBits(box.Caption).Value() != 0.0); });
    }
}

void BitsScreen::ShowPins() {
    for (int i = 0; i < pinsUsed_; ++i) {
        CheckBox& box = chkPrgmPin[At(i)];
        if (!box.Visible) continue;
        PassOver([&] { box.SetValue(part_.PrgmPins(box.Caption).Enabled()); });
    }
}

void BitsScreen::ShowCounters() {
    for (int i = 0; i < countersUsed_; ++i) {
        TextBox& box = txtCntrVal[At(i)];
        if (!box.Visible) continue;
        PassOver([&] { box.Text = part_.PrgmBits(lblCntr[At(i)].Caption).Text(); });
    }
}

void BitsScreen::ShowLists() {
    for (int i = 0; i < listsUsed_; ++i) {
        ListBox& list = cmbBits[At(i)];
        if (!list.Visible) continue;
        PassOver([&] {
            const std::string& name = lblCmbBits[At(i)].Caption;
            const auto index = ToInt32(part_.PrgmBits(name).BitValue());
            if (!index || !list.SetListIndex(*index)) {
                part_.upward().messages->Show(name + " Unable to set ListIndex");
            }
        });
    }
}

// Runs a user's change. One that fails leaves the words alone, so the elements go back to them.
void BitsScreen::Act(const std::function<void()>& change) {
    part_.upward().status->StatusBar_SetString("");
    try {
        change();
    } catch (...) {
        const UpdatingScope updating(part_);
        ShowBits();
        ShowPins();
        ShowCounters();
        throw;
    }
}

void BitsScreen::ToggleField(int index) {
    if (part_.Updating) return;
    Act([&] {
        part_.PrgmBits(chkPrgmBit[At(index)].Caption).ToggleBit();
        Displays& displays = *part_.upward().displays;
        displays.UpdateRegisterDisplay();
        displays.UpdateBitDisplay();
        displays.UpdatePLLDisplay();
        displays.UpdateCLKDISTDisplay();
        ReloadChanges();
    });
}

void BitsScreen::ChooseListEntry(int index) {
    if (part_.Updating) return;
    Act([&] {
        part_.PrgmBits(lblCmbBits[At(index)].Caption).SetBitValue(cmbBits[At(index)].ListIndex);
        RefreshAfterEdit();
        ReloadChanges();
    });
}

void BitsScreen::SpinDown(int index) {
    Step(index, &cPrgmBits::Decrement);
}

void BitsScreen::SpinUp(int index) {
    Step(index, &cPrgmBits::Increment);
}

void BitsScreen::Step(int index, void (cPrgmBits::*step)()) {
    Act([&] {
        (part_.PrgmBits(lblCntr[At(index)].Caption).*step)();
        RefreshAfterEdit();
        part_.upward().displays->UpdateBitDisplay();
        ReloadChanges();
    });
}

void BitsScreen::EnterCounter(int index) {
    Act([&] {
        cPrgmBits& field = part_.PrgmBits(lblCntr[At(index)].Caption);
        const std::string& typed = txtCntrVal[At(index)].Text;
        const auto number = ParseNumber(WithoutUnits(typed, field.Units));
        if (!number) throw TypeMismatch("\"" + typed + "\"");
        field.SetValue(*number);
        RefreshAfterEdit();
        ReloadChanges();
    });
}

void BitsScreen::TogglePin(int index) {
    if (part_.Updating) return;
    Act([&] {
        part_.PrgmPins(chkPrgmPin[At(index)].Caption).Toggle();
        part_.upward().displays->UpdateBitDisplay();
        if (part_.upward().options->AutoReloadWithChanges()) UpdateOutputPins(part_);
    });
}

void BitsScreen::RefreshAfterEdit() {
    Displays& displays = *part_.upward().displays;
    displays.UpdateBitDisplay();
    displays.UpdateRegisterDisplay();
    displays.UpdatePLLDisplay();
    displays.UpdateCLKDISTDisplay();
}

void BitsScreen::ReloadChanges() {
    if (part_.upward().options->AutoReloadWithChanges()) LoadChanges(part_);
}

void BitsScreen::HelpOnBit(int index) {
    ShowHelp(chkPrgmBit[At(index)].Caption);
}

void BitsScreen::HelpOnCounter(int index) {
    ShowHelp(lblCntr[At(index)].Caption);
}

void BitsScreen::HelpOnList(int index) {
    ShowHelp(lblCmbBits[At(index)].Caption);
}

void BitsScreen::ShowHelp(const std::string& field) {
    Act([&] {
        const std::string& text = part_.PrgmBits(field).Description;
        part_.upward().messages->Show(text.empty() ? "No Description Available" : text, "Help");
    });
}

std::string BitsScreen::TipOn(const std::string& field) const {
    return FieldTip(part_, field);
}

} // namespace zentrel
