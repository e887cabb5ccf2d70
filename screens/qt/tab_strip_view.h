#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <QWidget>

#include "screens/qt/hand.h"
#include "screens/qt/screen_view.h"

class QStackedLayout;
class QTabBar;

namespace zentrel {
class TabModel;
}

namespace zentrel::view {

/// The tabs with their pages. A page is made when its tab is first selected, and only the selected
/// one is brought in line.
class TabStripView : public QWidget {
  public:
    /// Makes the page of a tab by its number; null leaves it empty.
    using MakePage = std::function<ScreenView*(int tab, QWidget* parent)>;

    TabStripView(const Hand& hand, TabModel& model, MakePage makePage, QWidget* parent);

    void Sync();
    ScreenView* page(int tab) const;
    /// Makes the pages anew when they are next shown: for another font.
    void ForgetPages();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void SyncTabs();
    void ShowSelected();
    void ServeFocus();

    const Hand& hand_;
    TabModel& model_;
    MakePage makePage_;
    QWidget* strip_; ///< Holds both, so that hiding them leaves their place empty.
    QTabBar* bar_;
    QStackedLayout* stack_;
    std::vector<ScreenView*> pages_;
    std::uint64_t layout_ = ~0ULL;
    std::uint64_t focusServed_ = 0;
};

} // namespace zentrel::view
