#include <string>

#include "device/text.h"
#include "partfile/problems.h"
#include "screens/setup_dialogs.h"
#include "session/frm_part.h"
#include "setups/modes.h"
#include "setups/setup_file.h"

namespace zentrel {

// Stored states: the file menu's two entries, the modes' menu, and the routines by name.

namespace {
constexpr std::string_view kModeMenu = "mnuMode";
} // namespace

void FrmPart::ConnectSetups() {
    ConnectToggle("mnuSaveDeviceSettings", [](bool) {});
    menu.Connect("mnuSave", [this] { SaveSetupByDialog(part, files, dialogs, "Save Part Setup"); });
    menu.Connect("mnuRestore",
                 [this] { RestoreSetupByDialog(part, files, dialogs, "Restore Part Setup"); });
    menu.Connect("mnuAddMode", [this] { AddMode(); });
    menu.ConnectArray(kModeMenu, [this](int index) { RestoreMode(index); });
}

void FrmPart::AddMode() {
    if (part.ID.empty()) return; // There is no file to keep it in.
    const auto name =
        messages.Ask("Enter Name of Mode for pulldown menu item", "Menu Name", "Recieve Mode");
    if (!name || name->empty()) return;
    if (StoreMode(part, files, *name) < 0) {
        TellWriteFailures();
        return;
    }
    // The first mode takes the hidden entry; the next ones stand behind it.
    const bool first = !menu(kModeMenu, 0).Visible;
    MenuNode& item = menu.MakeItem(kModeMenu, first ? 0 : menu.ItemCount(kModeMenu));
    item.Caption = *name;
    item.Visible = true;
}

void FrmPart::RestoreMode(int Index) {
    RestoreModeTwice(part, files, Index);
    TellWriteFailures();
}

void FrmPart::RestoreModeString(std::string_view name) {
    const int mode = FindMode(name);
    if (mode >= 0) RestoreMode(mode);
}

// A device without modes has the first entry all the same, hidden, and it answers to its caption.
int FrmPart::FindMode(std::string_view name) const {
    for (int i = 0; i < menu.ItemCount(kModeMenu); ++i) {
        const MenuItem& item = menu(kModeMenu).children[static_cast<std::size_t>(i)];
        if (EqualNoCase(item.Caption, name)) return i;
    }
    return -1;
}

void FrmPart::SaveBurstCommands(std::string_view sFileName) {
    if (zentrel::SaveBurstCommands(part, files, sFileName, OldFile::Merge)) return;
    throw Error(75, WriteFailuresMessage(files.TakeWriteFailures()));
}

void FrmPart::LoadBurstCommands(std::string_view sFileName) {
    zentrel::LoadBurstCommands(part, files, sFileName);
    TellWriteFailures();
}

} // namespace zentrel
