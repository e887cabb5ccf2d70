#include "screens/tab_model.h"

#include <array>
#include <utility>

#include "device/errors.h"
#include "device/text.h"

namespace zentrel {
namespace {

constexpr std::array<std::string_view, kFixedTabs> kCaptions{
    "Port Setup", "Registers", "Bits/Pins", "BurstMode", "__PLL__", "__CLKDIST__"};

} // namespace

TabModel::TabModel() {
    for (const std::string_view caption : kCaptions)
        pages_.push_back({std::string(caption)});
}

void TabModel::SelectTab(int tab) {
    if (tab < 0 || tab >= TabCount() || tab == selected_) return;
    const int left = std::exchange(selected_, tab);
    if (Selected) Selected(left, tab);
}

void TabModel::FocusBox(std::string_view name, int index) {
    focus_.name = name;
    focus_.index = index;
    ++focus_.number;
}

const TabPage& TabModel::Page(int tab) const {
    return pages_[Place(tab)];
}

TabPage& TabModel::Page(int tab) {
    return pages_[Place(tab)];
}

std::size_t TabModel::Place(int tab) const {
    if (tab < 0 || tab >= TabCount()) throw OutOfRange("tab " + std::to_string(tab));
    return static_cast<std::size_t>(tab);
}

int TabModel::AddTab(std::string caption) {
    pages_.push_back({std::move(caption)});
    ++layout_;
    SelectTab(TabCount() - 1);
    return TabCount() - 1;
}

void TabModel::KeepTabs(int count) {
    if (TabCount() <= count) return;
    if (selected_ >= count) SelectTab(kPortTab);
    pages_.resize(static_cast<std::size_t>(count));
    ++layout_;
}

std::int16_t FindTab(const TabStrip& tabs, std::string_view caption) {
    for (int tab = tabs.TabCount() - 1; tab >= 0; --tab) {
        if (EqualNoCase(tabs.TabCaption(tab), caption)) return static_cast<std::int16_t>(tab);
    }
    return -1;
}

} // namespace zentrel
