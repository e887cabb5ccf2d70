#pragma once

#include <cstdint>
#include <string_view>

#include "burst/burst_panel.h"
#include "burst/burst_run.h"
#include "device/upward.h"
#include "partfile/ini_file.h"

namespace zentrel {

class cPart;
class FileDialogs;

/// The BurstMode tab: the list as text with a line selected in it, and the buttons that build,
/// replay and store it. Nothing edits the list while a burst runs.
class BurstScreen : public BurstPlayer {
  public:
    BurstScreen(cPart& part, IniFiles& files, FileDialogs& dialogs, Timer& tmrStartBurst);

    BurstPanel panel;
    BurstRun run;
    void RunBurstCommands() override { run.RunBurstCommands(); }
    void RunBurstOnce() override { run.RunBurstOnce(); }
    void StopBurstCommands() override { run.StopBurstCommands(); }

    /// Shows the elements that only a device picked from a family brings into view.
    void ShowElements();
    /// A register that the load added, and taking all of them down again.
    void AddRegister(std::string_view name);
    void Clear();
    /// The list's text from the commands.
    void UpdateBurstDisplay();

    // What a user does.
    /// A click or double click in the list, the caret where it left it.
    void ClickList();
    void DoubleClickList();
    /// A selection that was dragged or made by keys: its first line counts as the selected one.
    void FollowSelection();
    /// A choice in the list of registers: adds a load.
    void ChooseRegister(int index);
    void ClickDelay();
    void ClickSetPins();
    void ClickInsert();
    void ClickDelete();
    void ClickDeleteAll();
    void ClickLoad();
    void ClickSave();
    void ClickLEMode();
    /// "Pattern": the list as digits of the three lines, until the next refresh.
    void DisplayBurstVector() override;

  private:
    void ShowText(std::string text);
    int LineUnderCaret() const;
    void Add(std::string_view regName, std::int16_t cmd);

    cPart& part_;
    IniFiles& files_;
    FileDialogs& dialogs_;
};

} // namespace zentrel
