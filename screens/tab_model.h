#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>

#include "device/upward.h"
#include "form/elements.h"

namespace zentrel {

/// The fixed tabs by number.
enum FixedTab : int {
    kPortTab = 0,
    kRegistersTab = 1,
    kBitsTab = 2,
    kBurstTab = 3,
    kPllTemplateTab = 4,
    kClkDistTemplateTab = 5,
    kFixedTabs = 6
};

struct TabPage {
    std::string Caption;
    bool Visible = true;
};

/// `tabPart`: the strip that holds all screens. Six fixed tabs, then one for each PLL and clock
/// block, in the order of their creation. Numbers count from 0 and never change while a tab lives.
class TabModel : public TabStrip, public Element {
  public:
    TabModel();

    int SelectedTab() const override { return selected_; }
    /// Selects a tab, as a click on it does; a number that no tab has is ignored.
    void SelectTab(int tab) override;
    int TabCount() const override { return static_cast<int>(pages_.size()); }
    /// Throws OutOfRange for a number that no tab has.
    std::string TabCaption(int tab) const override { return Page(tab).Caption; }
    void FocusBox(std::string_view name, int index) override;

    TabPage& Page(int tab);
    const TabPage& Page(int tab) const;

    /// Adds a tab at the end, selects it and gives its number.
    int AddTab(std::string caption);
    /// A selection among the removed tabs goes to tab 0.
    void KeepTabs(int count) override;
    /// Tabs in one row of the strip: follows the number of tabs.
    int TabsPerRow() const { return TabCount(); }

    /// Hears of each change of the selection: the tab left and the tab now selected.
    std::function<void(int left, int now)> Selected;

    /// An element that asked for the keyboard focus with its text selected.
    struct FocusRequest {
        std::string name;
        int index = 0;
        std::uint64_t number = 0; ///< Counts the requests: a new number is a new request.
    };
    const FocusRequest& Focus() const { return focus_; }

    /// Grows when tabs come or go.
    std::uint64_t layout() const { return layout_; }

  private:
    std::size_t Place(int tab) const;

    std::deque<TabPage> pages_;
    int selected_ = 0;
    FocusRequest focus_;
    std::uint64_t layout_ = 0;
};

/// The number of the last tab with that caption, without regard to case; -1 when there is none.
std::int16_t FindTab(const TabStrip& tabs, std::string_view caption);

} // namespace zentrel
