#include "screens/burst_screen.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <utility>

#include "burst/burst_list.h"
#include "device/part.h"
#include "screens/file_dialogs.h"
#include "screens/setup_dialogs.h"

namespace zentrel {
namespace {

// A selection shorter than this, or a line that starts closer to the end of the text, is none.
constexpr int kLeastSelection = 4;
constexpr std::int16_t kLoadRegister = 0;
constexpr std::int16_t kChangePins = 1;
constexpr std::int16_t kDelay = 2;

// What stays hidden until a device was picked from a family.
std::array<Element*, 15> FamilyElements(BurstPanel& panel) {
    return {&panel.txtBurstCmds, &panel.cmdBreak,  &panel.cmdDelay,   &panel.txtDelay,
            &panel.cmdSetPins,   &panel.Label1,    &panel.cmbLdBurst, &panel.cmdDeleteAll,
            &panel.cmdDelete,    &panel.cmdInsert, &panel.cmdLoop,    &panel.cmdLoad,
            &panel.cmdSave,      &panel.cmdLEMode, &panel.Command1};
}

} // namespace

BurstScreen::BurstScreen(cPart& part, IniFiles& files, FileDialogs& dialogs, Timer& tmrStartBurst)
    : run(part, panel, tmrStartBurst), part_(part), files_(files), dialogs_(dialogs) {
    for (Element* element : FamilyElements(panel))
        element->Visible = false;
    panel.cmbLdBurst.Click = [this] {
        if (!part_.Updating) ChooseRegister(panel.cmbLdBurst.ListIndex);
    };
}

void BurstScreen::ShowElements() {
    for (Element* element : FamilyElements(panel))
        element->Visible = true;
}

void BurstScreen::AddRegister(std::string_view name) {
    panel.cmbLdBurst.AddItem(std::string(name));
}

void BurstScreen::Clear() {
    panel.cmbLdBurst.Clear();
    panel.SelectedBurstLine = 0;
    panel.txtBurstCmds.SelStart = panel.txtBurstCmds.SelLength = 0;
}

void BurstScreen::UpdateBurstDisplay() {
    const UpdatingScope updating(part_);
    const DisplayScope display(part_);
    ShowText(BurstText(part_));
}

void BurstScreen::ShowText(std::string text) {
    TextBox& box = panel.txtBurstCmds;
    if (box.Text == text) return;
    // What was selected has moved or gone: the next addition goes to the end.
    box.Text = std::move(text);
    box.SelStart = box.SelLength = 0;
}

void BurstScreen::FollowSelection() {
    const TextBox& box = panel.txtBurstCmds;
    if (box.SelLength > 0) panel.SelectedBurstLine = LineUnderCaret();
}

int BurstScreen::LineUnderCaret() const {
    const TextBox& box = panel.txtBurstCmds;
    const auto caret = std::clamp(box.SelStart, 0, static_cast<int>(box.Text.size()));
    return 1 + static_cast<int>(std::count(box.Text.begin(), box.Text.begin() + caret, '\n'));
}

void BurstScreen::ClickList() {
    TextBox& box = panel.txtBurstCmds;
    if (box.Text.empty()) return;
    const auto length = static_cast<int>(box.Text.size());
    const auto caret = box.Text.begin() + std::clamp(box.SelStart, 0, length);
    panel.SelectedBurstLine = LineUnderCaret();
    const auto before = std::find(std::make_reverse_iterator(caret), box.Text.rend(), '\n');
    const auto start = static_cast<int>(before.base() - box.Text.begin());
    if (start > length - kLeastSelection) return;
    const auto end = box.Text.find("\r\n", static_cast<std::size_t>(start));
    box.SelStart = start;
    box.SelLength = static_cast<int>(std::min(end, box.Text.size())) - start;
}

void BurstScreen::DoubleClickList() {
    ClickList();
    RestoreBurstCommand(part_, panel.SelectedBurstLine);
}

void BurstScreen::Add(std::string_view regName, std::int16_t cmd) {
    if (part_.BurstRunning()) return;
    if (panel.txtBurstCmds.SelLength < kLeastSelection) {
        AddBurstCommand(part_, regName, cmd);
    } else if (panel.cmdInsert.Caption == "Insert") {
        AddBurstCommand(part_, regName, cmd, panel.SelectedBurstLine);
    } else {
        ChangeBurstCommand(part_, panel.SelectedBurstLine, regName, cmd);
    }
    part_.upward().displays->UpdateBurstDisplay();
}

void BurstScreen::ChooseRegister(int index) {
    ListBox& list = panel.cmbLdBurst;
    if (index < 0 || index >= list.ListCount()) return;
    // No selection stays, so that the same register can be chosen again.
    list.ListIndex = -1;
    Add(list.List[static_cast<std::size_t>(index)], kLoadRegister);
}

void BurstScreen::ClickDelay() {
    Add(panel.txtDelay.Text, kDelay);
}
void BurstScreen::ClickSetPins() {
    Add({}, kChangePins);
}

void BurstScreen::ClickInsert() {
    panel.cmdInsert.Caption = panel.cmdInsert.Caption == "Insert" ? "Overwrite" : "Insert";
}

void BurstScreen::ClickDelete() {
    if (!part_.BurstRunning()) DeleteBurstCommand(part_, panel.SelectedBurstLine);
}

void BurstScreen::ClickDeleteAll() {
    if (!part_.BurstRunning()) DeleteBurstCommands(part_);
}

void BurstScreen::ClickLoad() {
    RestoreSetupByDialog(part_, files_, dialogs_, "Load BurstCommands");
}

void BurstScreen::ClickSave() {
    SaveSetupByDialog(part_, files_, dialogs_, "Save BurstCommands");
}

void BurstScreen::ClickLEMode() {
    if (part_.BurstRunning()) return;
    part_.LEModeHigh = !part_.LEModeHigh;
    panel.cmdLEMode.Caption = part_.LEModeHigh ? "LE High" : "LE Low";
}

void BurstScreen::DisplayBurstVector() {
    const UpdatingScope updating(part_);
    ShowText(BurstPatternText(part_));
}

} // namespace zentrel
