#include "app/program.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QUrl>

#include "partfile/catalogue.h"
#include "screens/qt/clock_view.h"
#include "screens/qt/model_text.h"
#include "screens/qt/pll_view.h"

namespace zentrel {
namespace {

// How far the window lags behind a row of calls, in milliseconds: a frame of the screen.
constexpr int kFollowCalls = 16;

} // namespace

/// Between two passes of a burst: shows what changed and serves what waits.
class Program::BetweenPasses : public EventPause {
  public:
    explicit BetweenPasses(Program& program) : program_(program) {}
    void Pause() override {
        if (program_.window_) program_.window_->Sync();
        QCoreApplication::processEvents();
        program_.frm_.guard.ServePause();
    }

  private:
    Program& program_;
};

class Program::Frame : public WindowFrame {
  public:
    Frame(view::MainWindow& window, const view::MessageBoxes& boxes)
        : window_(window), boxes_(boxes) {}
    void Maximize() override { window_.setWindowState(Qt::WindowMaximized); }
    void Minimize() override { window_.setWindowState(Qt::WindowMinimized); }
    void BringToFront() override {
        window_.setWindowState(window_.windowState() & ~Qt::WindowMinimized);
        window_.Sync();
        if (!boxes_.attended()) return; // There is no other window to be ahead of.
        window_.raise();
        window_.activateWindow();
    }

  private:
    view::MainWindow& window_;
    const view::MessageBoxes& boxes_;
};

Program::Program(const std::string& folder)
    : files_(AppPath(folder)),
      transport_(part_, DriversFor(ReadBoard(files_) == BoardChoice::kSimulated)),
      pause_(std::make_unique<BetweenPasses>(*this)), frm_(part_, files_, boxes_, dialogs_) {
    Upward upward = part_.upward();
    upward.pause = pause_.get();
    part_.Connect(upward);
    ConnectSession();
    MakeWindow();
    WatchDevices();
}

Program::~Program() = default;

Drivers Program::DriversFor(bool simulated) {
    return simulated ? bench_.drivers() : hardware_.drivers();
}

void Program::ConnectSession() {
    Ended = [] { QCoreApplication::quit(); };
    frm_.links.SetBoard = [this](bool simulated) { transport_.Use(DriversFor(simulated)); };
    scripts_.BreakPressed = [this] { return boxes_.attended() && breakKey_.Pressed(); };
    frm_.links.OpenWebPage = [](std::string_view url) {
        QDesktopServices::openUrl(QUrl(view::FromModel(url)));
    };
    frm_.links.Unloaded = [this] {
        if (bus_) bus_->Leave();
        if (Ended) Ended();
    };
}

// The system's notice of the bridge's coming and going. It stays quiet until it is served, since
// a burst or a message box may hold the thread.
void Program::WatchDevices() {
    if (hardware_.watch.fd() < 0) return;
    deviceEvents_ = std::make_unique<QSocketNotifier>(hardware_.watch.fd(), QSocketNotifier::Read);
    QObject::connect(deviceEvents_.get(), &QSocketNotifier::activated, [this] {
        deviceEvents_->setEnabled(false);
        frm_.guard.RunSoon([this] {
            hardware_.watch.Dispatch();
            deviceEvents_->setEnabled(true);
        });
    });
}

void Program::MakeWindow() {
    window_ = std::make_unique<view::MainWindow>(view::WindowModels{
        frm_.guard, frm_.menu, frm_.tabPart, frm_.StatusBar1, frm_.timers, frm_.registers,
        frm_.bits, frm_.port, frm_.burst, frm_.frmErrorList, frm_.frmAbout, frm_.loopFilter,
        frm_.wire, bench_.board, frm_.Caption, frm_.Visible, [this] { frm_.Unload(); }});
    window_->SetPageMaker([this](int tab, QWidget* parent) -> view::ScreenView* {
        if (auto* page = view::MakePllPage(window_->hand(), part_, tab, parent)) return page;
        return view::MakeClockPage(window_->hand(), part_, frm_.loopFilter, tab, parent);
    });
    boxes_.SetWindow(window_.get());
    dialogs_.SetWindow(window_.get());
    boxes_.BeforeShow = [this] { window_->Sync(); };
    frm_.guard.AfterEvent = [this] { FollowModels(); };
    frame_ = std::make_unique<Frame>(*window_, boxes_);
    followCalls_.setSingleShot(true);
    followCalls_.setInterval(kFollowCalls);
    followCalls_.callOnTimeout([this] { FollowModels(); });
    frm_.guard.AfterCall = [this] {
        if (!followCalls_.isActive()) followCalls_.start();
    };
}

void Program::FollowModels() {
    window_->Sync();
    if (service_) service_->Follow();
}

void Program::Start() {
    frm_.guard.Run([this] {
        frm_.Main();
        frm_.menu("mnuBoard").Checked = frm_.SimulatedBoard();
    });
}

dbus::Bus::Joined Program::JoinBus(const QString& address) {
    service_ = std::make_unique<dbus::Service>(frm_, *frame_);
    bus_ = std::make_unique<dbus::Bus>(*service_, address);
    return bus_->Join();
}

} // namespace zentrel
