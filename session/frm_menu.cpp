#include <string>
#include <utility>

#include "device/number_text.h"
#include "partfile/catalogue.h"
#include "session/frm_part.h"
#include "synth/stepping.h"
#include "transport/auto_reload.h"
#include "transport/checks.h"
#include "transport/load_path.h"
#include "transport/transport.h"
#include "transport/usb_bridge.h"

namespace zentrel {

// What the entries of the menu bar do. One whose subsystem isn't connected stays disabled.

namespace {

constexpr std::string_view kMakersPage = "https://www.orvane.example/wireless";

} // namespace

void FrmPart::ConnectToggle(std::string_view name, std::function<void(bool)> changed) {
    menu.Connect(name, [this, key = std::string(name), changed = std::move(changed)] {
        MenuItem& entry = menu(key);
        entry.Checked = !entry.Checked;
        changed(entry.Checked);
    });
}

void FrmPart::ConnectMenu() {
    menu.Connect("mnuExit", [this] { Unload(); });
    menu.Connect("mnuLoadPLL", [this] { LoadDevice(part); });
    for (const StepMenuEntry& step : StepMenu())
        menu.Connect(step.name, [this, run = step.run] { run(part); });
    menu.Connect("ResetPort", [this] {
        if (part.ID.empty()) return;
        part.ResetOutputPins();
        part.UpdateDisplays();
    });

    deviceMenus_.Connect(
        [this](const std::string& caption, std::optional<std::string_view> family,
               DeviceMenus::Reorder reorder) { SelectDevice(caption, family, reorder); });

    ConnectToggle("mnuVCOFixed", [this](bool on) { session.bVCOFixed = on; });
    menu.Connect("mnuAutoReload", [this] {
        mnuAutoReload_Click(part, menu("mnuAutoReload"), timers.tmrAutoReload);
    });
    menu.Connect("mnuAutoReloadChange",
                 [this] { mnuAutoReloadChange_Click(part, menu("mnuAutoReloadChange")); });

    menu.Connect("CheckLPT", [this] { CheckLPT(part); });
    menu.Connect("USBVersion", [this] { USBVersion(part); });
    menu.Connect("AdjustTiming", [this] { AdjustTiming(part); });

    menu.Connect("mnuSimulatedBoard", [this] { SetBench(!SimulatedBoard()); });
    ConnectToggle("mnuBoard", [](bool) {});
    menu.Connect("mnuWireMonitor", [this] { wire.Show(); });

    menu.Connect("mnuStatus", [this] { TellStatus(); });
    menu.Connect("mnuShowErrors", [this] { frmErrorList.Show(); });
    menu.Connect("mnuAbout", [this] { frmAbout.Show(); });
}

// The entries whose work is done outside the session.
void FrmPart::ConnectLinks() {
    if (links.OpenWebPage) {
        menu.Connect("mnuORVWireless", [this] { links.OpenWebPage(kMakersPage); });
    }
}

void FrmPart::TellStatus() {
    std::string text = "LPT Status = " + std::to_string(session.lpt_port_access) +
                       "\r\nUSB Status = " + std::to_string(usbGetError(part));
    if (Transport* transport = part.transport()) {
        for (const std::string& reason :
             {transport->port().Diagnosis(), transport->bridge().Diagnosis()}) {
            if (!reason.empty()) text += "\r\n\r\n" + reason;
        }
    }
    messages.Show(text);
}

void FrmPart::SetBench(bool simulated) {
    ShowBench(simulated);
    WriteBoard(files, simulated ? BoardChoice::kSimulated : BoardChoice::kHardware);
    TellWriteFailures();
    if (links.SetBoard) links.SetBoard(simulated);
}

void FrmPart::ShowBench(bool simulated) {
    menu("mnuSimulatedBoard").Checked = simulated;
    StatusBar1.badge.Visible = simulated;
}

} // namespace zentrel
