#include "session/frm_part.h"

#include <optional>

#include "clock/clock_display.h"
#include "clock/clock_setup.h"
#include "partfile/catalogue.h"
#include "partfile/migration.h"
#include "session/part_loader.h"
#include "setups/device_settings.h"
#include "synth/pll_display.h"
#include "synth/pll_setup.h"
#include "transport/auto_reload.h"
#include "transport/lpt_route.h"
#include "transport/usb_presence.h"

namespace zentrel {

// Start, device change and stop. What the menu's entries do stands in frm_menu.cpp.

namespace {

constexpr std::string_view kModeMenu = "mnuMode";
constexpr std::string_view kNoMode = "Mode"; // the hidden entry's caption at start
constexpr std::int16_t kFirstRegisterLength = 20;
constexpr std::int16_t kFirstControlLength = 2;

} // namespace

/// Writes what the device's blocks keep in their part file.
class FrmPart::PartFileKeys : public PartFileWriter {
  public:
    explicit PartFileKeys(FrmPart& frm) : frm_(frm) {}
    void WriteKey(std::string_view partName, std::string_view section, std::string_view key,
                  std::string_view value) override {
        frm_.files.SetPrivateSetting(frm_.files.Folder().PartFilePath(partName), section, key,
                                     value);
        frm_.TellWriteFailures();
    }

  private:
    FrmPart& frm_;
};

FrmPart::FrmPart(cPart& device, IniFiles& iniFiles, Messages& boxes, FileDialogs& fileDialogs)
    : part(device), session(device.session()), files(iniFiles), messages(boxes),
      dialogs(fileDialogs), registers(device), bits(device), port(device, timers),
      burst(device, iniFiles, fileDialogs, timers.tmrStartBurst), frmErrorList(session),
      frmAbout(session), loopFilter(device), wire(device, fileDialogs), guard(device),
      displays(bits, registers, port, burst), builder_(tabPart, registers, bits, port, burst),
      deviceMenus_(menu, iniFiles), burstRoute_(device), blocks_(device),
      partFileKeys_(std::make_unique<PartFileKeys>(*this)) {
    ConnectUpward();
    ConnectMenu();
    ConnectSetups();
    displays.PLLs = [this] { UpdatePLLDisplay(part); };
    displays.ClkDists = [this] { UpdateCLKDISTDisplay(part); };
    displays.LoopFilter = [this] {
        if (loopFilter.Visible) loopFilter.UpdateLoopFilterDisplay();
    };
    tabPart.Selected = [this](int, int now) { registers.TabSelected(now); };
    timers.tmrStartBurst.Tick = [this] { burst.run.tmrStartBurst_Timer(); };
    timers.tmrAutoReload.Tick = [this] { tmrAutoReload_Timer(part); };
}

FrmPart::~FrmPart() {
    // The device outlives its window: nothing of it may be reached from there.
    const Upward none = Upward::None();
    Upward upward = part.upward();
    upward.displays = none.displays;
    upward.status = none.status;
    upward.tabs = none.tabs;
    upward.builder = none.builder;
    upward.options = none.options;
    upward.port = none.port;
    upward.route = none.route;
    upward.blocks = none.blocks;
    upward.partFile = none.partFile;
    upward.burst = none.burst;
    part.Connect(upward);
}

void FrmPart::ConnectUpward() {
    Upward upward = part.upward();
    upward.displays = &displays;
    upward.messages = &messages;
    upward.status = &StatusBar1;
    upward.tabs = &tabPart;
    upward.builder = &builder_;
    upward.options = &menu;
    upward.port = &port;
    upward.route = &burstRoute_;
    upward.blocks = &blocks_;
    upward.partFile = partFileKeys_.get();
    upward.burst = &burst;
    part.Connect(upward);
}

void FrmPart::Main() {
    Form_Load();
    for (const std::string_view pattern : {"__PLL__", "__CLKDIST__"}) {
        const int tab = FindTab(tabPart, pattern);
        if (tab >= 0) tabPart.Page(tab).Visible = false;
    }
    Visible = true;
}

void FrmPart::Form_Load() {
    ConnectLinks();
    session.logged_errors.clear();
    session.msgbox_errors = session.bExecuteScripts = false;
    StatusBar1.StatusBar_CommMode("");
    StatusBar1.StatusBar_SetString("Zentrel 4");
    Caption = "Zentrel";
    ShowBench(ReadBoard(files) == BoardChoice::kSimulated);
    StartPresence(part);
    port.Label11.Visible = port.Label11Sample.Visible = false;
    part.SetRegisterLength(kFirstRegisterLength);
    part.ControlLength = kFirstControlLength;
    session.CommMode_Select = kRouteNone;

    const std::string problems = ProblemsMessage(deviceMenus_.Build());
    if (!problems.empty()) messages.Show(problems);

    StartPortDriver(part);
    session.raw_tab_tally = static_cast<std::int16_t>(tabPart.TabCount());
    if (links.scripts != nullptr) {
        links.scripts->AddObject("Part");
        links.scripts->AddObject("frmPart");
    }
}

void FrmPart::SetupPartForm(std::string& sPartName, std::optional<std::string_view> vPartType) {
    PartLoader(*this).Load(sPartName, vPartType.has_value());
}

void FrmPart::CleanUp() {
    ClearForm();
    ClearPLL(part);
    ClearClkDist(part);
    part.tab_id_type.Clear();
    part.tab_id_num.Clear();
    part.ID.clear();
    part.UpdateDisplays();
}

void FrmPart::ClearForm() {
    if (!part.ID.empty()) SaveOnLeaving();
    ClearScreens();
}

// A device of no file had nothing to lose.
bool FrmPart::PartFileStands() {
    if (!files.View(PartFile()).Text().empty()) return true;
    if (!part.Registers.empty()) {
        messages.Show(PartFile() + " has gone. The settings of " + part.ID +
                          " couldn't be saved in it.",
                      {}, MessageIcon::Exclamation);
    }
    return false;
}

// Whatever fails here is told, and the device is left all the same: there is no other way on.
void FrmPart::SaveOnLeaving() {
    try {
        if (menu("mnuSaveDeviceSettings").Checked && PartFileStands()) {
            SaveDeviceSettings(part, files);
        }
    } catch (const std::exception& error) {
        messages.Show(error.what(), {}, MessageIcon::Exclamation);
    }
    deviceMenus_.SaveRecentList();
    TellWriteFailures();
}

void FrmPart::ClearScreens() {
    port.Clear();
    bits.Clear();
    registers.Clear();
    burst.Clear();
    loopFilter.cmdClose_Click(); // Its lists are the device's.
    part.tabdata.Clear();
    menu.TrimItems(kModeMenu, 1);
    menu(kModeMenu, 0).Visible = false;
    menu(kModeMenu, 0).Caption = kNoMode;
}

void FrmPart::Form_Unload(bool& Cancel) {
    StopPresence(part);
    if (session.bOLEServer) {
        Cancel = true;
        return;
    }
    if (part.BurstRunning()) {
        burst.run.StopBurstCommands();
        Cancel = true;
        return;
    }
    CleanUp();
    StopPortDriver(part);
}

void FrmPart::Unload() {
    bool cancel = false;
    Form_Unload(cancel);
    if (cancel) return;
    Visible = false;
    wire.Close();
    if (links.Unloaded) links.Unloaded();
}

void FrmPart::SelectDevice(const std::string& caption, std::optional<std::string_view> family,
                           DeviceMenus::Reorder reorder) {
    std::optional<std::string> given;
    if (family) given = std::string(*family);
    const auto change = [this, caption, given, reorder] {
        std::string name = caption;
        SetupPartForm(name, given);
        if (reorder == DeviceMenus::Reorder::Yes) deviceMenus_.UpdateRecentList(part.ID);
    };
    if (!part.BurstRunning()) {
        change();
        return;
    }
    burst.run.StopBurstCommands();
    guard.RunWhenIdle(change);
}

void FrmPart::AddError(std::string_view newerror) {
    zentrel::AddError(session, messages, StatusBar1, newerror);
}

std::string FrmPart::PartFile() const {
    return files.Folder().PartFilePath(part.ID);
}

std::string FrmPart::GetPrivateSetting4Script(std::string_view sSetting, std::string_view sKey,
                                              std::string_view sDefault) {
    return files.GetPrivateSetting(PartFile(), sSetting, sKey, sDefault);
}

std::string FrmPart::GetPartType(std::string_view sPartName) {
    return zentrel::GetPartType(files, sPartName);
}

void FrmPart::ExecuteScript(std::string_view script_name, std::string_view script_proc) {
    part.upward().hooks->ExecuteScript(script_name, script_proc);
}

void FrmPart::Patch_ini_2_2_0_to_2_3_0(std::string_view sFileName) {
    const std::string problems = ProblemsMessage(MigratePartFile(files, sFileName));
    if (!problems.empty()) messages.Show(problems);
    TellWriteFailures();
}

void FrmPart::RemoveTabs() {
    tabPart.KeepTabs(session.raw_tab_tally);
}

void FrmPart::TellWriteFailures() {
    const std::string failures = WriteFailuresMessage(files.TakeWriteFailures());
    if (!failures.empty()) messages.Show(failures, {}, MessageIcon::Exclamation);
}

} // namespace zentrel
