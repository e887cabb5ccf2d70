#include "screens/qt/tab_strip_view.h"

#include <utility>

#include <QLineEdit>
#include <QPainter>
#include <QStackedLayout>
#include <QTabBar>
#include <QVBoxLayout>

#include "screens/qt/brick.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/theme.h"
#include "screens/tab_model.h"

namespace zentrel::view {

namespace {

constexpr int kLongestCaption = 24; // units of the grid, before a caption elides
constexpr int kSelectAll = 50;      // characters that a focus request selects

/// A page for a tab that has nothing to show.
class EmptyPage : public ScreenView {
  public:
    using ScreenView::ScreenView;
    void Sync() override {}

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(rect(), Theme::Now().surface);
    }
};

} // namespace

TabStripView::TabStripView(const Hand& hand, TabModel& model, MakePage makePage, QWidget* parent)
    : QWidget(parent), hand_(hand), model_(model), makePage_(std::move(makePage)),
      strip_(new QWidget(this)), bar_(new QTabBar(strip_)), stack_(new QStackedLayout) {
    setObjectName(QStringLiteral("tabPart"));
    bar_->setExpanding(false);
    bar_->setDrawBase(false);
    bar_->setUsesScrollButtons(true);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(strip_);
    // While it is hidden, the docks don't take its place.
    QSizePolicy policy = strip_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    strip_->setSizePolicy(policy);
    auto* column = new QVBoxLayout(strip_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(bar_);
    column->addLayout(stack_, 1);
    connect(bar_, &QTabBar::currentChanged, this,
            [this](int tab) { hand_.Do([this, tab] { model_.SelectTab(tab); }); });
}

ScreenView* TabStripView::page(int tab) const {
    return tab >= 0 && tab < static_cast<int>(pages_.size()) ? pages_[static_cast<std::size_t>(tab)]
                                                             : nullptr;
}

void TabStripView::ForgetPages() {
    const Hand::Busy busy(hand_);
    for (ScreenView*& page : pages_)
        if (page) Discard(std::exchange(page, nullptr));
}

void TabStripView::Sync() {
    {
        const Hand::Busy busy(hand_);
        SyncFlags(*strip_, model_);
        SyncTabs();
        ShowSelected();
    }
    if (ScreenView* shown = page(model_.SelectedTab())) shown->Sync();
    ServeFocus();
}

void TabStripView::SyncTabs() {
    if (layout_ != model_.layout()) {
        layout_ = model_.layout();
        // Tabs of another device may bear the same numbers: their pages are made anew.
        while (static_cast<int>(pages_.size()) > kFixedTabs) {
            if (pages_.back()) Discard(pages_.back());
            pages_.pop_back();
        }
        while (bar_->count() > model_.TabCount())
            bar_->removeTab(bar_->count() - 1);
    }
    pages_.resize(static_cast<std::size_t>(model_.TabCount()), nullptr);
    for (int tab = 0; tab < model_.TabCount(); ++tab) {
        const TabPage& data = model_.Page(tab);
        if (tab >= bar_->count()) bar_->addTab({});
        const QString whole = FromModel(data.Caption);
        QString caption = bar_->fontMetrics().elidedText(whole, Qt::ElideRight,
                                                         Metrics::Now().Units(kLongestCaption));
        if (bar_->tabToolTip(tab) != whole) bar_->setTabToolTip(tab, whole);
        caption.replace(QLatin1Char('&'), QLatin1String("&&"));
        if (bar_->tabText(tab) != caption) bar_->setTabText(tab, caption);
        if (bar_->isTabVisible(tab) != data.Visible) bar_->setTabVisible(tab, data.Visible);
    }
}

void TabStripView::ShowSelected() {
    const int selected = model_.SelectedTab();
    ScreenView*& page = pages_[static_cast<std::size_t>(selected)];
    if (!page) {
        page = makePage_(selected, this);
        if (!page) page = new EmptyPage(this);
        stack_->addWidget(page);
    }
    if (bar_->currentIndex() != selected) bar_->setCurrentIndex(selected);
    if (stack_->currentWidget() != page) stack_->setCurrentWidget(page);
}

void TabStripView::ServeFocus() {
    const TabModel::FocusRequest& request = model_.Focus();
    if (request.number == focusServed_) return;
    focusServed_ = request.number;
    ScreenView* shown = page(model_.SelectedTab());
    if (!shown) return;
    const auto index = static_cast<std::size_t>(std::max(request.index, 0));
    auto* box = shown->findChild<QWidget*>(IndexedName(request.name.c_str(), index));
    if (!box) box = shown->findChild<QWidget*>(FromModel(request.name));
    if (!box) return;
    box->setFocus(Qt::OtherFocusReason);
    if (auto* line = qobject_cast<QLineEdit*>(box))
        line->setSelection(0, std::min<int>(kSelectAll, static_cast<int>(line->text().size())));
}

void TabStripView::paintEvent(QPaintEvent*) {
    const Theme& theme = Theme::Now();
    QPainter painter(this);
    painter.fillRect(rect(), theme.window);
    painter.fillRect(QRect(0, bar_->geometry().bottom(), width(), 1), theme.line);
}

} // namespace zentrel::view
