#include "app/program.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QUrl>

#include "partfile/catalogue.h"
#include "screens/qt/clock_view.h"
#include "screens/qt/model_text.h"
#include "screens/qt/pll_view.h"

namespace zentrel {

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
    frm_.guard.AfterEvent = [this] { window_->Sync(); };
}

void Program::Start() {
    frm_.guard.Run([this] {
        frm_.Main();
        frm_.menu("mnuBoard").Checked = frm_.SimulatedBoard();
    });
}

} // namespace zentrel
