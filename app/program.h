#pragma once

#include <memory>
#include <string>

#include <QSocketNotifier>
#include <QTimer>

#include "automation/application/window_frame.h"
#include "automation/dbus/bus.h"
#include "automation/script_host/script_host.h"
#include "device/part.h"
#include "form/session.h"
#include "partfile/ini_file.h"
#include "screens/qt/break_key.h"
#include "screens/qt/main_window.h"
#include "screens/qt/message_boxes.h"
#include "session/frm_part.h"
#include "transport/bench/bench.h"
#include "transport/drivers/hardware.h"

namespace zentrel {

/// The wiring: makes the device, its session, the drivers and the window, and connects them. There
/// is one in the program, and one in each test that drives the real window.
class Program {
  public:
    /// `folder` is the program's own: the catalogue and the part files lie there.
    explicit Program(const std::string& folder);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Shows the window, without a device.
    void Start();
    /// Serves other programs, on the session's bus or on the one at `address`.
    dbus::Bus::Joined JoinBus(const QString& address = {});

    FrmPart& frm() { return frm_; }
    cPart& part() { return part_; }
    SimulatedBench& bench() { return bench_; }
    view::MainWindow& window() { return *window_; }
    view::MessageBoxes& boxes() { return boxes_; }
    dbus::Service& service() { return *service_; }

    /// What runs when the window has gone; quits the toolkit's loop unless told otherwise.
    std::function<void()> Ended;

  private:
    class BetweenPasses;
    class Frame;
    class WireLines;

    Drivers DriversFor(bool simulated);
    void ConnectSession();
    void MakeWindow();
    void FollowModels();
    void WatchDevices();

    Session session_;
    cPart part_{session_};
    IniFiles files_;
    SimulatedBench bench_{part_};
    Hardware hardware_{part_};
    Transport transport_;
    view::MessageBoxes boxes_;
    view::FileDialogBoxes dialogs_{boxes_};
    std::unique_ptr<BetweenPasses> pause_;
    FrmPart frm_;
    PartScripts scripts_{frm_};
    view::BreakKey breakKey_;
    std::unique_ptr<view::MainWindow> window_;
    std::unique_ptr<Frame> frame_;
    QTimer followCalls_;
    std::unique_ptr<dbus::Service> service_;
    std::unique_ptr<dbus::Bus> bus_;
    std::unique_ptr<WireLines> wireLines_;
    std::unique_ptr<QSocketNotifier> deviceEvents_; ///< Of `hardware_.watch`.
};

} // namespace zentrel
