#include "screens/qt/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLayout>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>

#include "screens/menu_model.h"
#include "screens/qt/about_view.h"
#include "screens/qt/bits_view.h"
#include "screens/qt/board_dock.h"
#include "screens/qt/burst_view.h"
#include "screens/qt/error_list_view.h"
#include "screens/qt/event_timer.h"
#include "screens/qt/loop_filter_view.h"
#include "screens/qt/menu_view.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/port_view.h"
#include "screens/qt/registers_view.h"
#include "screens/qt/status_bar_view.h"
#include "screens/qt/wire_view.h"
#include "screens/tab_model.h"
#include "screens/timers.h"

namespace zentrel::view {

namespace {
constexpr QSize kSmallest(641, 427);
constexpr QSize kUsual(1264, 800);
} // namespace

MainWindow::MainWindow(const WindowModels& models) : models_(models), hand_(models.events) {
    setObjectName(QStringLiteral("frmPart"));
    setMinimumSize(kSmallest);
    menu_ = std::make_unique<MenuView>(hand_, models_.menu, *menuBar());
    tabs_ = new TabStripView(
        hand_, models_.tabs, [this](int tab, QWidget* parent) { return MakePage(tab, parent); },
        this);
    tabs_->setMinimumHeight(Metrics::Now().Units(30));
    setCentralWidget(tabs_);
    status_ = new StatusBarView(models_.status, this);
    statusBar()->setSizeGripEnabled(false);
    statusBar()->addWidget(status_, 1);
    statusBar()->layout()->setContentsMargins(0, 0, 0, 0);
    dock_ = new BoardDock(hand_, models_.menu, models_.board, this);
    addDockWidget(Qt::BottomDockWidgetArea, dock_);
    about_ = std::make_unique<AboutView>(hand_, models_.about, this);
    errors_ = std::make_unique<ErrorListView>(hand_, models_.errors, this);
    loopFilter_ = std::make_unique<LoopFilterView>(hand_, models_.loopFilter, this);
    wire_ = std::make_unique<WireView>(hand_, models_.wire);
    for (TickingTimer* timer : {&models_.timers.tmrAutoReload, &models_.timers.tmrStartBurst,
                                &models_.timers.tmrUSBCheck})
        timers_.push_back(std::make_unique<EventTimer>(hand_, *timer));
    PlaceOnScreen();
}

MainWindow::~MainWindow() = default;

void MainWindow::PlaceOnScreen() {
    QSize size = kUsual;
    if (const QScreen* screen = QApplication::primaryScreen())
        size = size.boundedTo(screen->availableSize() * 0.95);
    resize(size.expandedTo(kSmallest));
    resizeDocks({dock_}, {Metrics::Now().Units(20)}, Qt::Vertical);
}

ScreenView* MainWindow::MakePage(int tab, QWidget* parent) {
    if (otherPages_)
        if (ScreenView* page = otherPages_(tab, parent)) return page;
    switch (tab) {
    case kPortTab:
        return new PortView(hand_, models_.port, parent);
    case kRegistersTab:
        return new RegistersView(hand_, models_.registers, parent);
    case kBitsTab:
        return new BitsView(hand_, models_.bits, parent);
    case kBurstTab:
        return new BurstView(hand_, models_.burst, parent);
    default:
        return nullptr;
    }
}

void MainWindow::Sync() {
    if (syncing_) return;
    syncing_ = true;
    if (const QString title = FromModel(models_.title); windowTitle() != title)
        setWindowTitle(title);
    menu_->Sync();
    tabs_->Sync();
    KeepDockLast();
    status_->Sync();
    dock_->Sync();
    about_->Sync();
    errors_->Sync();
    loopFilter_->Sync();
    wire_->Sync();
    for (const auto& timer : timers_)
        timer->Sync();
    if (isVisible() != models_.visible) setVisible(models_.visible);
    syncing_ = false;
}

// A page that was made since stands at the end of the Tab key's way.
void MainWindow::KeepDockLast() {
    QWidget* last = previousInFocusChain();
    while (last != this && !(last->focusPolicy() & Qt::TabFocus))
        last = last->previousInFocusChain();
    if (last != dock_->table()) setTabOrder(last, dock_->table());
}

// The grid follows the font; pages are laid out on it when they are made.
void MainWindow::FitFont() {
    tabs_->ForgetPages();
    tabs_->setMinimumHeight(Metrics::Now().Units(30));
    status_->FitFont();
    dock_->FitFont();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    event->ignore(); // The session decides: a client or a burst may keep the window.
    hand_.Do(models_.close);
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    const bool font = event->type() == QEvent::FontChange;
    if (!font && event->type() != QEvent::PaletteChange) return;
    if (font && loopFilter_) FitFont();
    if (loopFilter_) Sync();
    update();
}

} // namespace zentrel::view
