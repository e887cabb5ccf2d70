#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "partfile/ini_file.h"
#include "screens/menu_model.h"

namespace zentrel {

/// The catalogue on the menu bar: the devices by family, and the list of recent ones.
class DeviceMenus {
  public:
    /// Loads a device; the family is given for devices of a family menu and for recent ones.
    using Select =
        std::function<void(std::string_view caption, std::optional<std::string_view> family)>;

    DeviceMenus(MenuModel& menu, IniFiles& files) : menu_(menu), files_(files) {}

    /// What a click on a device does.
    void Connect(Select select);

    /// Reads the catalogue, once at start: the nine device sections, then the recent list. Values
    /// that can't be used come back as problems.
    std::vector<Problem> Build();

    /// Moves a device to the head of the recent list.
    void UpdateRecentList(std::string_view partName);
    /// Writes the recent list into the catalogue.
    void SaveRecentList();

  private:
    std::vector<std::string> RecentCaptions() const;
    void BuildDeviceMenus(const struct Catalogue& catalogue);
    void BuildRecentMenu(const std::vector<std::string>& recent);

    MenuModel& menu_;
    IniFiles& files_;
};

} // namespace zentrel
