#pragma once

#include <functional>
#include <memory>
#include <string>

#include <QMainWindow>

#include "screens/qt/hand.h"
#include "screens/qt/tab_strip_view.h"

namespace zentrel {
class AboutDialog;
class BitsScreen;
class BurstScreen;
class Board;
class ErrorList;
class MenuModel;
class PortScreen;
class RegistersScreen;
class StatusBar;
class WireScreen;
class frmLoopFilter;
class TabModel;
struct Timers;
} // namespace zentrel

namespace zentrel::view {

class AboutView;
class BoardDock;
class ErrorListView;
class EventTimer;
class LoopFilterView;
class MenuView;
class StatusBarView;
class WireView;

/// What the window draws. All of it outlives the window.
struct WindowModels {
    Events& events;
    MenuModel& menu;
    TabModel& tabs;
    StatusBar& status;
    Timers& timers;
    RegistersScreen& registers;
    BitsScreen& bits;
    PortScreen& port;
    BurstScreen& burst;
    ErrorList& errors;
    AboutDialog& about;
    frmLoopFilter& loopFilter;
    WireScreen& wire;
    const Board& board;
    const std::string& title;
    const bool& visible;
    std::function<void()> close; ///< The engineer closes the window.
};

/// The one main window. It draws the models and keeps nothing of its own: `Sync` behind each event
/// brings what stands on the screen in line.
class MainWindow : public QMainWindow {
  public:
    explicit MainWindow(const WindowModels& models);
    ~MainWindow() override;

    /// Brings the window in line with the models. Cheap when nothing changed.
    void Sync();
    /// Pages of tabs that other rooms draw: asked ahead of the window's own.
    void SetPageMaker(TabStripView::MakePage maker) { otherPages_ = std::move(maker); }
    const Hand& hand() const { return hand_; }
    /// The wire monitor's window, which stands beside this one.
    WireView& wire() { return *wire_; }

  protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    ScreenView* MakePage(int tab, QWidget* parent);
    void PlaceOnScreen();
    void KeepDockLast();
    void FitFont();

    WindowModels models_;
    Hand hand_;
    TabStripView::MakePage otherPages_;
    std::unique_ptr<MenuView> menu_;
    TabStripView* tabs_ = nullptr;
    StatusBarView* status_ = nullptr;
    BoardDock* dock_ = nullptr;
    std::unique_ptr<AboutView> about_;
    std::unique_ptr<ErrorListView> errors_;
    std::unique_ptr<LoopFilterView> loopFilter_;
    std::unique_ptr<WireView> wire_;
    std::vector<std::unique_ptr<EventTimer>> timers_;
    bool syncing_ = false;
};

} // namespace zentrel::view
