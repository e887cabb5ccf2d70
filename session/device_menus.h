#pragma once

#include <cstddef>
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
    /// Whether a choice moves the device to the head of the recent list.
    enum class Reorder { No, Yes };
    /// Loads a device; the family is given for devices of a family menu and for recent ones.
    using Select = std::function<void(const std::string& caption,
                                      std::optional<std::string_view> family, Reorder reorder)>;

    DeviceMenus(MenuModel& menu, IniFiles& files) : menu_(menu), files_(files) {}

    /// What a click on a device does.
    void Connect(const Select& select);

    /// Reads the catalogue, once at start: the nine device sections, then the recent list. Values
    /// that can't be used come back as problems.
    std::vector<Problem> Build();

    /// Moves a device to the head of the recent list.
    void UpdateRecentList(std::string_view partName);
    /// Writes the recent list into the catalogue.
    void SaveRecentList();

  private:
    std::vector<std::string> RecentCaptions() const;
    void BuildFamily(std::size_t number, const std::vector<std::string>& names);
    void BuildRecentMenu(const std::vector<std::string>& recent);

    MenuModel& menu_;
    IniFiles& files_;
};

} // namespace zentrel
