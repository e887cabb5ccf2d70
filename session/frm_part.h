#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "burst/burst_list.h"
#include "clock/clk_dist.h"
#include "clock/clock_panel.h"
#include "clock/loop_filter.h"
#include "device/part.h"
#include "partfile/ini_file.h"
#include "screens/about.h"
#include "screens/bits_screen.h"
#include "screens/burst_screen.h"
#include "screens/error_list.h"
#include "screens/file_dialogs.h"
#include "screens/menu_model.h"
#include "screens/port_screen.h"
#include "screens/registers_screen.h"
#include "screens/status_bar.h"
#include "screens/tab_model.h"
#include "screens/timers.h"
#include "screens/wire_screen.h"
#include "session/device_menus.h"
#include "session/displays.h"
#include "session/event_guard.h"
#include "session/screen_factory.h"
#include "session/script_host.h"
#include "synth/pll_panel.h"

namespace zentrel {

/// What rooms beside and above the session do at its turning points. An empty place is passed over.
struct SessionLinks {
    ScriptHost* scripts = nullptr; ///< Null: script modules are passed over.
    /// The engineer chose another board: the drivers change places.
    std::function<void(bool simulated)> SetBoard;
    std::function<void(std::string_view url)> OpenWebPage;
    /// The main window has gone: the program may end.
    std::function<void()> Unloaded;
};

/// `frmPart`, the program's one main window without its toolkit: the session's life from start to
/// stop, the change of devices, and the models of all screens. It is never replaced; a device
/// change empties and fills it.
class FrmPart {
  public:
    /// Takes its place as the device's upward side, but for hooks and event pause, which stay as
    /// they are connected.
    FrmPart(cPart& part, IniFiles& files, Messages& messages,
            FileDialogs& dialogs = FileDialogs::None());
    ~FrmPart();
    FrmPart(const FrmPart&) = delete;
    FrmPart& operator=(const FrmPart&) = delete;

    cPart& part;
    Session& session;
    IniFiles& files;
    Messages& messages;
    FileDialogs& dialogs;
    SessionLinks links;

    // The window and its screens.
    std::string Caption; ///< The window's title.
    bool Visible = false;
    MenuModel menu;
    TabModel tabPart;
    StatusBar StatusBar1;
    Timers timers;
    RegistersScreen registers;
    BitsScreen bits;
    PortScreen port;
    BurstScreen burst;
    ErrorList frmErrorList;
    AboutDialog frmAbout;
    frmLoopFilter loopFilter;
    WireScreen wire;
    /// Element 0 of the panels' arrays: the drawings on the two hidden tabs, which nobody sees.
    PllPanel pllDesign;
    ClockPanel clockDesign;

    EventGuard guard;
    SessionDisplays displays;

    // Start.
    /// Prepares everything and shows the window, without a device.
    void Main();
    void Form_Load();

    // Device change.
    /// Makes `sPartName` the device. The name comes back as the path of its file. `vPartType`: the
    /// family; only whether it is given matters.
    void SetupPartForm(std::string& sPartName, std::optional<std::string_view> vPartType = {});
    void CleanUp();
    void ClearForm();

    // Stop.
    /// The window is going away; true in `Cancel` keeps it.
    void Form_Unload(bool& Cancel);
    /// Exit, or closing the window.
    void Unload();

    // What scripts and outside programs call by these names.
    void AddError(std::string_view newerror);
    std::string GetPrivateSetting4Script(std::string_view sSetting, std::string_view sKey,
                                         std::string_view sDefault);
    std::string GetPartType(std::string_view sPartName);
    /// Runs a procedure of a module when scripts may run.
    void ExecuteScript(std::string_view script_name, std::string_view script_proc);
    void Patch_ini_2_2_0_to_2_3_0(std::string_view sFileName);
    /// Takes the device's tabs down.
    void RemoveTabs();
    /// Stores nothing: SaveBurstCommands and the part file's own keys keep a device's state.
    void SavePartForm() {}

    /// Restores a mode twice over, by its number or by the first caption that it matches, letters
    /// in any case; a name that matches none does nothing.
    void RestoreMode(int Index);
    void RestoreModeString(std::string_view name);
    /// The number of the mode that it matches; -1 for none.
    int FindMode(std::string_view name) const;
    /// Merges the setup into a file of that name; restores one.
    void SaveBurstCommands(std::string_view sFileName);
    void LoadBurstCommands(std::string_view sFileName);

    /// The path of the loaded device's part file.
    std::string PartFile() const;

    /// Changes to the simulated board or to the hardware, and keeps it in the catalogue.
    void SetBench(bool simulated);
    bool SimulatedBoard() const { return StatusBar1.badge.Visible; }

    /// Hands out in one message what couldn't be written since the last call.
    void TellWriteFailures();

    /// Loads a device that the engineer picked; a running burst ends first. `reorder` moves it to
    /// the head of the recent list.
    void SelectDevice(const std::string& caption, std::optional<std::string_view> family,
                      DeviceMenus::Reorder reorder = DeviceMenus::Reorder::Yes);

  private:
    class PartFileKeys;

    void ConnectUpward();
    void ConnectMenu();
    void ConnectLinks();
    void ConnectSetups();
    void AddMode();
    void ConnectToggle(std::string_view name, std::function<void(bool checked)> changed);
    void ShowBench(bool simulated);
    void TellStatus();
    bool PartFileStands();
    void SaveOnLeaving();
    void ClearScreens();

    ScreenFactory builder_;
    DeviceMenus deviceMenus_;
    BurstRouteObserver burstRoute_;
    ClockBlocks blocks_;
    std::unique_ptr<PartFileKeys> partFileKeys_;
};

} // namespace zentrel
