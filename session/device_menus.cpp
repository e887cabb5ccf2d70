#include "session/device_menus.h"

#include <cstddef>
#include <utility>

#include "partfile/catalogue.h"

namespace zentrel {
namespace {

constexpr std::string_view kRecent = "mnuRecent";

} // namespace

void DeviceMenus::Connect(const Select& select) {
    for (const DeviceFamily& family : kDeviceFamilies) {
        menu_.ConnectArray(family.itemMenu, [this, select, &family](int index) {
            const std::string caption = menu_(family.itemMenu, index).Caption;
            select(caption, family.familyText, Reorder::Yes);
        });
    }
    menu_.ConnectArray(kRecent, [this, select](int index) {
        const std::string caption = menu_(kRecent, index).Caption;
        select(caption, zentrel::GetPartType(files_, caption), Reorder::No);
    });
}

std::vector<Problem> DeviceMenus::Build() {
    const ReadScope scope(files_);
    Catalogue catalogue = ReadCatalogue(files_);
    for (std::size_t i = 0; i < kDeviceFamilies.size(); ++i)
        BuildFamily(i, catalogue.items[i]);
    BuildRecentMenu(catalogue.recent);
    return std::move(catalogue.problems);
}

void DeviceMenus::BuildFamily(std::size_t number, const std::vector<std::string>& names) {
    const DeviceFamily& family = kDeviceFamilies[number];
    if (names.empty()) {
        MenuItem& hidden = family.menu.empty() ? menu_(family.itemMenu, 0) : menu_(family.menu);
        hidden.Visible = false;
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        MenuNode& item = menu_.MakeItem(family.itemMenu, static_cast<int>(i));
        item.Caption = names[i];
        item.Visible = true;
    }
}

void DeviceMenus::BuildRecentMenu(const std::vector<std::string>& recent) {
    for (std::size_t i = 0; i < recent.size(); ++i) {
        MenuNode& item = menu_.MakeItem(kRecent, static_cast<int>(i));
        item.Caption = recent[i];
        item.Visible = true;
    }
}

std::vector<std::string> DeviceMenus::RecentCaptions() const {
    std::vector<std::string> captions;
    for (const MenuNode& item : menu_(kRecent).children)
        captions.push_back(item.Caption);
    return captions;
}

void DeviceMenus::UpdateRecentList(std::string_view partName) {
    std::vector<std::string> captions = RecentCaptions();
    zentrel::UpdateRecentList(files_, partName, captions);
    BuildRecentMenu(captions);
}

void DeviceMenus::SaveRecentList() {
    zentrel::SaveRecentList(files_, RecentCaptions());
}

} // namespace zentrel
